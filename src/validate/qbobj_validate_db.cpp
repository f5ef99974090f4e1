// Names and ids of rows that must exist: each validator turns one into the row's id.
#include "account/account.h"
#include "frame/sql.h"
#include "validate/validate.h"

#include <span>

using namespace qbobj;

namespace
{

// What a lookup of one id found. No name at all finds nothing, since nothing equals NULL.
int found(const Int32 &row, int *id)
{
    if (!row || row.found == 0)
        return 1;
    *id = row.value;
    return 0;
}

// Whether a row with an id is there; a failed statement is told apart.
int exists(const Int32 &row)
{
    if (!row)
        return 2;
    return row.found == 0 ? 1 : 0;
}

const char *given(const char *str, const char *defstr)
{
    return str != nullptr ? str : defstr;
}

// In directory mode: accounts of the directory and privileged local ones, which win.
int find_user(const Sql &sql, bool ads, const char *name, int *id)
{
    if (ads)
        return found(sql.int32("SELECT id FROM `$user` WHERE uname=%Q COLLATE BINARY "
                               "AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC",
                               name),
                     id);
    return found(sql.int32("SELECT id FROM `$user` WHERE uname=%Q AND rid IS NULL", name), id);
}

int find_group(const Sql &sql, bool ads, const char *name, int *id)
{
    if (ads)
        return found(sql.int32("SELECT id FROM `$group` WHERE gname=%Q COLLATE BINARY "
                               "AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC",
                               name),
                     id);
    return found(sql.int32("SELECT id FROM `$group` WHERE gname=%Q AND rid IS NULL", name), id);
}

using Finder = int (*)(const Sql &sql, bool ads, const char *name, int *id);

int find_name(qbobj_env_t *env, sqlite3 *db, Finder find, const char *name, int *id)
{
    if (name == nullptr)
        return 1;
    return find(Sql(env, db), ads_mode(env, db), name, id);
}

// The ids of a list of names, at the names' positions. Ids behind the first unknown name are not filled.
int find_names(qbobj_env_t *env, sqlite3 *db, Finder find, std::span<const char *const> names, int **ids)
{
    constexpr int out_of_memory = 12;
    *ids = static_cast<int *>(apr_pcalloc(env->qbdb->pool, names.size_bytes()));
    if (*ids == nullptr)
        return out_of_memory;
    if (names.empty())
        return 0;
    const Sql sql(env, db);
    const bool ads = ads_mode(env, db);
    int *next = *ids;
    for (const char *name : names)
        if (const int unknown = find(sql, ads, name, next++); unknown != 0)
            return unknown;
    return 0;
}

int find_array(qbobj_env_t *env, sqlite3 *db, Finder find, const char **array, int **ids, int *length)
{
    std::size_t count = 0;
    while (array != nullptr && array[count] != nullptr)
        ++count;
    if (length != nullptr)
        *length = static_cast<int>(count);
    if (array == nullptr) {
        *ids = nullptr;
        return 0;
    }
    return find_names(env, db, find, {array, count}, ids);
}

int find_csv(qbobj_env_t *env, sqlite3 *db, Finder find, const char *csv, int **ids, int *length)
{
    const char **names = nullptr;
    if (csv != nullptr)
        if (const int failed = qbdb_csv_to_array(env->qbdb, csv, &names, length); failed != 0)
            return failed;
    return find_array(env, db, find, names, ids, length);
}

} // namespace

/* ---- Accounts ------------------------------------------------------------------------------------------ */

int qbobj_validate_db_username(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                               int *user_id)
{
    return find_name(qbobj, db, find_user, given(str, defstr), user_id);
}

int qbobj_validate_db_groupname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                int *group_id)
{
    return find_name(qbobj, db, find_group, given(str, defstr), group_id);
}

int qbobj_validate_db_userid(qbobj_env_t *qbobj, sqlite3 *db, int user_id)
{
    return exists(Sql(qbobj, db).int32("SELECT id FROM `$user` WHERE id=%d", user_id));
}

int qbobj_validate_db_groupid(qbobj_env_t *qbobj, sqlite3 *db, int group_id)
{
    return exists(Sql(qbobj, db).int32("SELECT id FROM `$group` WHERE id=%d", group_id));
}

int qbobj_validate_db_username_csv(qbobj_env_t *qbobj, sqlite3 *db, const char *csv, int **user_id_list,
                                   int *user_id_list_len)
{
    return find_csv(qbobj, db, find_user, csv, user_id_list, user_id_list_len);
}

int qbobj_validate_db_username_array(qbobj_env_t *qbobj, sqlite3 *db, const char **array, int **user_id_list,
                                     int *user_id_list_len)
{
    return find_array(qbobj, db, find_user, array, user_id_list, user_id_list_len);
}

int qbobj_validate_db_groupname_csv(qbobj_env_t *qbobj, sqlite3 *db, const char *csv, int **group_id_list,
                                    int *group_id_list_len)
{
    return find_csv(qbobj, db, find_group, csv, group_id_list, group_id_list_len);
}

int qbobj_validate_db_groupname_array(qbobj_env_t *qbobj, sqlite3 *db, const char **array,
                                      int **group_id_list, int *group_id_list_len)
{
    return find_array(qbobj, db, find_group, array, group_id_list, group_id_list_len);
}

/* ---- Shares, volumes, jobs ----------------------------------------------------------------------------- */

int qbobj_validate_db_sharename(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                int *share_id)
{
    return found(Sql(qbobj, db).int32("SELECT id FROM share WHERE name=%Q", given(str, defstr)), share_id);
}

int qbobj_validate_db_zfsname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                              int *share_id)
{
    return found(Sql(qbobj, db).int32("SELECT id FROM share WHERE zfs_name=%Q", given(str, defstr)),
                 share_id);
}

int qbobj_validate_db_path_in_share(qbobj_env_t *qbobj, sqlite3 *db, const char *path, int *share_id)
{
    return found(
        Sql(qbobj, db).int32("SELECT id FROM share WHERE %Q=path OR %Q LIKE path||'/%%'", path, path),
        share_id);
}

int qbobj_validate_db_volumename(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                 char **volume_id)
{
    const char *name = given(str, defstr);
    if (name == nullptr)
        return 1;
    const Text id = Sql(qbobj, db).text("SELECT id FROM _volume WHERE lv_name=%Q", name);
    *volume_id = id.value;
    return id ? 0 : 1;
}

int qbobj_validate_db_volumeid(qbobj_env_t *qbobj, sqlite3 *db, const char *volume_id_in,
                               const char **volume_id)
{
    const Sql sql(qbobj, db);
    const Text id = volume_id_in != nullptr ? sql.text("SELECT id FROM _volume WHERE id=%Q", volume_id_in)
                                            : sql.text("SELECT id FROM _volume WHERE lv_name=%Q", "c");
    if (!id || id.found == 0)
        return 1;
    *volume_id = id.value;
    return 0;
}

int qbobj_validate_db_jobname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, int *job_id)
{
    return found(Sql(qbobj, db).int32("SELECT id FROM backup WHERE name=%Q", str), job_id);
}

/* ---- iSCSI --------------------------------------------------------------------------------------------- */

int qbobj_validate_db_lunname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                              int *lun_id)
{
    return found(Sql(qbobj, db).int32("SELECT rowid FROM `$iscsi_lun` WHERE name=%Q", given(str, defstr)),
                 lun_id);
}

int qbobj_validate_db_lungroupname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                   int *lun_group_id)
{
    return found(
        Sql(qbobj, db).int32("SELECT rowid FROM `$iscsi_lun_group` WHERE name=%Q", given(str, defstr)),
        lun_group_id);
}

int qbobj_validate_db_initiatorname(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                    int *initiator_id)
{
    return found(
        Sql(qbobj, db).int32("SELECT rowid FROM `$iscsi_initiator` WHERE name=%Q", given(str, defstr)),
        initiator_id);
}
