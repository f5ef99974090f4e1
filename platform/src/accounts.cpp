// Account ids and names, from the system's name service.
#include "common/pool.h"
#include "connection.h"

#include <cerrno>
#include <climits>
#include <grp.h>
#include <pwd.h>

using namespace qbdb;

namespace
{

constexpr int unknown = -1;

struct Account {
    int id = unknown;
    const char *name = nullptr; // in the pool
};

// Runs one of the name service's reentrant look-ups with a buffer that is large enough.
template <class Record, class Key>
Account look_up(qbdb_handle_t *qbdb, int (*get)(Key, Record *, char *, std::size_t, Record **), Key key)
{
    constexpr std::size_t largest = std::size_t{1} << 20;
    Account account;
    try {
        std::vector<char> buffer(1024);
        Record record{};
        Record *found = nullptr;
        while (get(key, &record, buffer.data(), buffer.size(), &found) == ERANGE && buffer.size() < largest)
            buffer.resize(buffer.size() * 2);
        if (!found)
            return account;
        if constexpr (std::is_same_v<Record, passwd>) {
            account.id = static_cast<int>(found->pw_uid);
            account.name = qb::copy_text(qbdb->pool, found->pw_name);
        } else {
            account.id = static_cast<int>(found->gr_gid);
            account.name = qb::copy_text(qbdb->pool, found->gr_name);
        }
    } catch (const std::bad_alloc &) {
        return {};
    }
    return account;
}

// Inside, a directory account is known by its POSIX id with a minus sign.
unsigned posix_id(int id)
{
    return id < 0 ? 0u - static_cast<unsigned>(id) : static_cast<unsigned>(id);
}

// The name service knows the system's own accounts too; what has an id below 1 is no directory account.
template <class Record>
int id_by_name(qbdb_handle_t *qbdb, int (*get)(const char *, Record *, char *, std::size_t, Record **),
               const char *name, bool directory)
{
    const int id = name && *name != 0 ? look_up(qbdb, get, name).id : unknown;
    return directory && id < 1 ? unknown : id;
}

Account user_by_id(qbdb_handle_t *qbdb, int uid)
{
    return look_up(qbdb, getpwuid_r, posix_id(uid));
}
Account group_by_id(qbdb_handle_t *qbdb, int gid)
{
    return look_up(qbdb, getgrgid_r, posix_id(gid));
}

} // namespace

int qbdb_util_get_posix_uid(qbdb_handle_t *qbdb, int uid)
{
    return uid >= 0 ? uid : user_by_id(qbdb, uid).id;
}

int qbdb_util_get_posix_gid(qbdb_handle_t *qbdb, int gid)
{
    return gid >= 0 ? gid : group_by_id(qbdb, gid).id;
}

int qbdb_util_get_posix_uid_by_name(qbdb_handle_t *qbdb, const char *name, int ads_mode)
{
    return id_by_name(qbdb, getpwnam_r, name, ads_mode != 0);
}

int qbdb_util_get_posix_gid_by_name(qbdb_handle_t *qbdb, const char *name, int ads_mode)
{
    return id_by_name(qbdb, getgrnam_r, name, ads_mode != 0);
}

const char *qbdb_util_get_domain_uname_by_uid(qbdb_handle_t *qbdb, int uid)
{
    return user_by_id(qbdb, uid).name;
}

const char *qbdb_util_get_domain_gname_by_gid(qbdb_handle_t *qbdb, int gid)
{
    return group_by_id(qbdb, gid).name;
}

int qbdb_get_no_sync_ads(qbdb_handle_t *qbdb, sqlite3 *db)
{
    int32_t flag = 0;
    const int rc = qbdb_sql_get_int32_mprintf(qbdb, db, &flag, nullptr, nullptr, "accounts", __LINE__,
                                              "SELECT no_sync_ads FROM service_cifs LIMIT 1");
    return rc == SQLITE_OK && flag != 0 ? 1 : 0;
}
