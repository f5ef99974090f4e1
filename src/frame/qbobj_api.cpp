// Single settings by key, and folder attributes: operations with a trace of their own and no records.
#include "core/call.h"
#include "core/folders.h"
#include "core/time_machine.h"
#include "frame/transaction.h"
#include "operations/settings.h"

#include <cstring>
#include <ctime>

using namespace qbobj;

namespace
{

/* ---- The frame of a setting ---------------------------------------------------------------------------- */

// Traces the end of a call when it is left.
class ExitTrace
{
  public:
    ExitTrace(qbdb_handle_t *qbdb, const char *name) : qbdb_(qbdb), name_(name) {}

    int of_read(const char *key, int result, const Site &site = here()) const
    {
        if (logs(qbdb_, QBDB_LOG_INFO))
            qbdb_log(qbdb_, site.unit.data(), site.line, QBDB_LOG_INFO, 0, "<<<< %s(%s) .. rc=%d (%llums)\n",
                     name_, key, result, elapsed());
        return result;
    }
    int of_write(const char *key, const char *val, int result, const Site &site = here()) const
    {
        if (logs(qbdb_, QBDB_LOG_INFO))
            qbdb_log(qbdb_, site.unit.data(), site.line, QBDB_LOG_INFO, 0,
                     "<<<< %s(%s,%s) .. rc=%d (%llums)\n", name_, key, val == nullptr ? "(null)" : val,
                     result, elapsed());
        return result;
    }

  private:
    // The difference of two readings of whole seconds, as in the trace of every operation.
    unsigned long long elapsed() const { return static_cast<unsigned long long>(second_ - start_); }

    qbdb_handle_t *qbdb_;
    const char *name_;
    std::time_t start_ = std::time(nullptr);
    std::time_t second_ = std::time(nullptr);
};

// The transaction of an operation of the table. Who writes learns what became of the commit.
template <auto Function, class Body>
int in_own_transaction(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_error_rec_t *err, Body body,
                       const Site &site = here()) noexcept
{
    const auto &operation = std::get<Operation<Function>>(settings_operations);
    const CommitResult commit =
        operation.effect == Effect::writes ? CommitResult::returned : CommitResult::left_to_the_platform;
    return in_transaction({operation.exported(), operation.effect, operation.result, commit, site}, qbdb, db,
                          *err, body);
}

/* ---- Entries ------------------------------------------------------------------------------------------- */

int check_language(Call &call, const char *language)
{
    bool supported = false;
    if (const int rc = call.exists("Failed 'SELECT service_misc'. %s", supported,
                                   R"(SELECT 1 FROM service_misc WHERE key='LANGUAGES_SUPPORTED' AND
        (val=%Q||'/utf-8' OR val LIKE %Q||'/utf-8,%%' OR val LIKE '%%,'||%Q||'/utf-8'
        OR val LIKE '%%,'||%Q||'/utf-8,%%'))",
                                   language, language, language, language))
        return rc;
    if (!supported)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Specified LANGUAGE=%s is not supported by system.",
                     language);
    return 0;
}

// The column that an entry is mirrored into, in every row of its table.
struct Mirror {
    const char *table;
    const char *column;
};

constexpr auto mirror_of =
    select<const char *>("SELECT table_name,column_name FROM service_misc WHERE key=%Q",
                         "Failed 'SELECT service_misc'. %s", &Mirror::table, &Mirror::column);

int write_mirror(Call &call, const Mirror &mirror, const char *val)
{
    if (mirror.table == nullptr || mirror.column == nullptr)
        return 0;
    return call.exec({"Failed 'UPDATE %s'. %s", mirror.table}, R"(UPDATE "%w" SET "%w"=%Q)", mirror.table,
                     mirror.column, val);
}

int write_existing_entry(Call &call, const char *key, const char *val, const Mirror &mirror)
{
    const int rc =
        val != nullptr
            ? call.exec("Failed 'INSERT service_misc'. %s", "UPDATE service_misc SET val=%Q WHERE key=%Q",
                        val, key)
            : call.exec("Failed 'INSERT service_misc'. %s",
                        "UPDATE service_misc SET val=NULL,table_name=NULL,column_name=NULL WHERE key=%Q",
                        key);
    return rc != 0 ? rc : write_mirror(call, mirror, val);
}

int write_service_entry(Call &call, const char *key, const char *val)
{
    if (std::strcmp(key, "LANGUAGE") == 0 && val != nullptr) {
        if (const int rc = check_language(call, val))
            return rc;
    }
    Mirror mirror{};
    bool exists = false;
    if (const int rc = call.find(mirror_of, mirror, exists, key))
        return rc;
    if (exists)
        return write_existing_entry(call, key, val, mirror);
    if (val != nullptr)
        return call.exec(
            "Failed 'INSERT service_misc'. %s",
            "INSERT OR IGNORE INTO service_misc (key,val,table_name,column_name) VALUES(%Q,%Q,NULL,NULL)",
            key, val);
    return call.exec("Failed 'DELETE service_misc'. %s", "DELETE FROM service_misc WHERE key=%Q", key);
}

int write_registry_entry(Call &call, const char *key, const char *val)
{
    // Not valid SQL: entries cannot be removed through this interface, and callers depend on the failure.
    if (val == nullptr)
        return call.exec("Failed 'UPDATE $registry'. %s", "DELETE FROM `$registry` SET value=%Q WHERE key=%Q",
                         val, key);
    if (const int rc = call.exec("Failed 'INSERT $registry'. %s",
                                 "INSERT OR IGNORE INTO `$registry` (value,key) VALUES(%Q,%Q)", val, key))
        return rc;
    return call.exec("Failed 'UPDATE $registry'. %s", "UPDATE `$registry` SET value=%Q WHERE key=%Q", val,
                     key);
}

// The two tables of entries.
struct EntryTable {
    Statement<const char *> select;
    Failure select_failed;
    Message<const char *> missing;
    bool null_is_missing;
};
constexpr EntryTable service_entries{"SELECT val FROM service_misc WHERE key=%Q",
                                     "Failed 'SELECT service_misc'. %s", "ServiceEntry='%s' not exist.",
                                     false};
constexpr EntryTable registry_entries{"SELECT value FROM `$registry` WHERE key=%Q",
                                      "Failed 'SELECT $registry'. %s", "RegistryEntry='%s' not exist.", true};

// `function` is the exported one, and `Function` too.
template <auto Function, class Value>
int read_entry(const EntryTable &table, qbdb_handle_t *qbdb, sqlite3 *db, const char *key, Value **val,
               qbobj_error_rec_t *err)
{
    constexpr const char *function = Operation<Function>::exported();
    require(qbdb != nullptr, "qbdb", function);
    require(err != nullptr, "err", function);
    require(key != nullptr, "key", function);
    require(val != nullptr, "val", function);
    const ExitTrace trace(qbdb, function);
    const auto read = [&](Call &call) {
        const Text entry = call.ask_text(table.select, key);
        if (!entry)
            return table.select_failed.raise(call, entry.error());
        if (entry.found == 0 || (entry.value == nullptr && table.null_is_missing))
            return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, table.missing, key);
        *val = entry.value;
        return 0;
    };
    return trace.of_read(key, in_own_transaction<Function>(qbdb, db, err, read));
}

template <auto Function, class Write>
int write_entry(Write write, qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                qbobj_error_rec_t *err)
{
    constexpr const char *function = Operation<Function>::exported();
    require(qbdb != nullptr, "qbdb", function);
    require(err != nullptr, "err", function);
    require(key != nullptr, "key", function);
    const ExitTrace trace(qbdb, function);
    const auto body = [&](Call &call) { return write(call, key, val); };
    return trace.of_write(key, val, in_own_transaction<Function>(qbdb, db, err, body));
}

/* ---- Folder attributes --------------------------------------------------------------------------------- */

using Attribute = qbobj_folder_attribute_t;

constexpr char share_flags[] = R"(SELECT CASE WHEN CIFS.share_id NOT NULL THEN 1 ELSE 0 END|
    CASE WHEN CIFS.cifs_hide_share THEN 2 ELSE 0 END,IFNULL(DLNA.media_type,0),S.comment FROM share S
    LEFT JOIN cifs_share_option CIFS ON CIFS.share_id=S.id LEFT JOIN dlna_share_option DLNA ON DLNA.share_id=S.id)";
constexpr auto share_at = joined(share_flags, " WHERE S.path=%Q");
constexpr auto share_above =
    joined(share_flags, " WHERE S.id=(", folders_above,
           "MIN(A.id) FROM share A WHERE A.path COLLATE NOCASE IN (SELECT path FROM above WHERE n>0))");

constexpr auto shared_folder =
    select<const char *>(share_at, "Failed DB Query for cifs share. sq3rc=%s", &Attribute::cifs_flags,
                         &Attribute::dlna_flags, &Attribute::comment);
constexpr auto folder_in_share =
    select<const char *>(share_above, "Failed DB Query for cifs share. sq3rc=%s", &Attribute::cifs_flags,
                         &Attribute::dlna_flags, &Attribute::comment);
constexpr auto home = select<const char *>("SELECT 1 FROM `$user` U WHERE U.home=%Q",
                                           "Failed DB Query for user. sq3rc=%s", &Attribute::is_homeshare);
constexpr auto home_above =
    joined("SELECT 1 FROM (", folders_above,
           "A.id FROM `$user` A WHERE A.home COLLATE NOCASE IN (SELECT path FROM above WHERE n>0) LIMIT 1)");
constexpr auto folder_in_home =
    select<const char *>(home_above, "Failed DB Query for user. sq3rc=%s", &Attribute::is_homeshare);

// The attributes of the four kinds of places, tried in order: the first query that returns a row decides. `marks` is what
// a kind means beside what its query reads.
int read_folder_attribute(Call &call, const char *path, Attribute &attr)
{
    attr = {};
    int result = 0;
    const auto decides = [&](const auto &place, const Attribute &marks) {
        const Table rows = call.table(place.sql, path);
        if (!rows)
            result = place.failure.raise(
                call, print(call, "%d:%d (%s)", rows.rc, sqlite3_extended_errcode(call.db()), rows.error()));
        if (!rows || rows.empty())
            return result != 0;
        attr = marks;
        fill(call, attr, place.columns, *rows.begin());
        return true;
    };
    constexpr Attribute itself{0, 0, nullptr, 0, 0};
    constexpr Attribute below{0, 0, nullptr, 0, 1};
    constexpr Attribute home_itself{1, 0, nullptr, 0, 0};
    const Attribute below_home{0, 0, empty_str, 0, 1};
    static_cast<void>(decides(shared_folder, itself) || decides(folder_in_share, below) ||
                      decides(home, home_itself) || decides(folder_in_home, below_home));
    return result;
}

} // namespace

int getServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, char **val, qbobj_error_rec_t *err)
{
    return read_entry<getServiceEntry>(service_entries, qbdb, db, key, val, err);
}

int setServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                    qbobj_error_rec_t *err)
{
    return write_entry<setServiceEntry>(write_service_entry, qbdb, db, key, val, err);
}

int getRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char **val,
                     qbobj_error_rec_t *err)
{
    return read_entry<getRegistryEntry>(registry_entries, qbdb, db, key, val, err);
}

int setRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                     qbobj_error_rec_t *err)
{
    return write_entry<setRegistryEntry>(write_registry_entry, qbdb, db, key, val, err);
}

int getFolderAttribute(qbdb_handle_t *qbdb, sqlite3 *db, const char *path, qbobj_folder_attribute_t *attr,
                       qbobj_error_rec_t *err)
{
    require(qbdb != nullptr, "qbdb", __func__);
    require(err != nullptr, "err", __func__);
    require(attr != nullptr, "attr", __func__);
    const ExitTrace trace(qbdb, __func__);
    const auto read = [&](Call &call) { return read_folder_attribute(call, path, *attr); };
    return trace.of_read(path == nullptr ? "(null)" : path,
                         in_own_transaction<getFolderAttribute>(qbdb, db, err, read));
}

uint64_t get_tm_used_mb(const char *path)
{
    return path == nullptr ? 0 : qbobj::time_machine_mb(path);
}
