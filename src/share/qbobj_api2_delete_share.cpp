// Shares and block volumes deleted, with the rows that hang on them. Process markers and the DLNA, DAAP and
// rsync rows stay: they outlive their share.
#include "frame/rows.h"
#include "share/share_writing.h"

using namespace qbobj;

namespace
{

// What a share was, read while it is removed.
struct RemovedShare {
    const char *name = nullptr;
    const char *path = nullptr;
    int visible_snapshot = 0;
};

int read_removed_share(qbobj_env_t *env, sqlite3 *db, int share_id, RemovedShare &removed)
{
    const Sql sql(env, db);
    const Text name = sql.text("SELECT S.name FROM share S WHERE S.id=%d", share_id);
    if (!name)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", name.error());
    const Text path = sql.text("SELECT S.path FROM share S WHERE S.id=%d", share_id);
    if (!path)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", path.error());
    const Int32 visible = sql.int32(
        "SELECT CASE WHEN S.visible_snapdir IS NULL THEN 0 ELSE 1 END FROM share S WHERE S.id=%d", share_id);
    if (!visible)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", visible.error());
    removed = {name.value, path.value, visible.value};
    return 0;
}

int remove_protocol(qbobj_env_t *env, sqlite3 *db, int share_id, const char *proto)
{
    const Sql sql(env, db);
    const Status users = sql.exec("DELETE FROM user_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!users)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM user_acl'. %s",
                     users.error());
    const Status groups = sql.exec("DELETE FROM group_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!groups)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM group_acl'. %s",
                     groups.error());
    const Status hosts = sql.exec("DELETE FROM host_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!hosts)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM host_acl'. %s",
                     hosts.error());
    const Status option = sql.exec("DELETE FROM `%s_share_option` WHERE share_id=%d", proto, share_id);
    if (!option)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM %s_share_option'. %s", proto,
                     option.error());
    const Status links = sql.exec("DELETE FROM cifs_dfs_option WHERE share_id=%d", share_id);
    if (!links)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM cifs_dfs_option'. %s",
                     links.error());
    return 0;
}

// Everything else that hangs on the share, in this order; false at the first failure.
bool remove_dependants(const Sql &sql, int id)
{
    return sql.exec("UPDATE service_http SET share_name='' WHERE share_name="
                    "(select S.name from share S WHERE S.id=%d)",
                    id) &&
           sql.exec("DELETE FROM snapshot_schedule WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM `$snapshot` WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                    id) &&
           sql.exec("DELETE FROM `$snapshot_clones` WHERE "
                    "cloned_zfs_name=(SELECT S.name FROM share S WHERE S.id=%d) OR "
                    "parent_zfs_name=(SELECT S1.name FROM share S1 WHERE S1.id=%d)",
                    id, id) &&
           sql.exec("DELETE FROM `$application_on_share` WHERE "
                    "zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                    id) &&
           sql.exec("DELETE FROM user_quota WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM group_quota WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM _user_quota_stat WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM _group_quota_stat WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM zfs_attr WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM _zfs_stat WHERE share_id=%d", id) &&
           sql.exec("DELETE FROM backup WHERE "
                    "(src_type='share' AND src_share_proto=(SELECT S.name FROM share S WHERE S.id==%d)) OR "
                    "(dst_type='share' AND dst_share_proto=(SELECT S.name FROM share S WHERE S.id==%d))",
                    id, id);
}

// Removes one share; `removed` may be null.
int remove_share(qbobj_env_t *env, sqlite3 *db, int share_id, RemovedShare *removed)
{
    if (removed != nullptr) {
        if (const int rc = read_removed_share(env, db, share_id, *removed))
            return rc;
    }
    for (const char *proto : {"cifs", "afp", "nfs", "ftp", "http", "zvol"}) {
        if (const int rc = remove_protocol(env, db, share_id, proto))
            return rc;
    }
    const Sql sql(env, db);
    // The only failure that leaves the error record empty; the log has the statement.
    if (!remove_dependants(sql, share_id))
        return QBOBJ_ERROR_UNKNOWN;
    const Status deleted = sql.exec("DELETE FROM share WHERE id=%d", share_id);
    if (!deleted)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", deleted.error());
    if (sql.changes() == 0)
        return raise(env, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     share_id);
    return 0;
}

int delete_share(qbobj_env_t *env, sqlite3 *db, qbobj_Share_t &share)
{
    int share_id = 0;
    if (qbobj_validate_db_zfsname(env, db, share.resource_id, nullptr, &share_id) != 0 &&
        qbobj_validate_db_zfsname(env, db, share.ShareId, nullptr, &share_id) != 0)
        return raise(env, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).", share.resource_id);
    const Sql sql(env, db);
    const Int32 nested = sql.int32(
        "SELECT 1 FROM share S WHERE S.path LIKE (SELECT path FROM share WHERE id=%d)||'/%%'", share_id);
    if (!nested)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", nested.error());
    if (nested.found != 0)
        return raise(env, QBOBJ_ERROR_API_ARGS, "Cannot delete share (share_id=%d).", share_id);
    const Text path = sql.text("SELECT path FROM share S WHERE id=%d", share_id);
    if (!path)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", path.error());
    if (path.found == 0)
        return raise(env, QBOBJ_ERROR_API_ARGS, "Share (share_id=%d) not exist.", share_id);
    share.Path = path.value;

    RemovedShare removed;
    if (const int rc = remove_share(env, db, share_id, &removed))
        return rc;
    share.OldShareName = removed.name;
    share.OldPath = removed.path;
    share.OldVisibleSnapshot = removed.visible_snapshot;
    if (share.Cifs != nullptr)
        refresh_service<qbobj_CifsShareOption_t>(env, db);
    if (share.Ftp != nullptr)
        refresh_service<qbobj_FtpShareOption_t>(env, db);
    return 0;
}

// Removes the shares whose ids a SELECT found.
int remove_shares(qbobj_env_t *env, sqlite3 *db, const Table &ids)
{
    if (!ids)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Error in 'SELECT FROM share'.");
    for (const Row row : ids) {
        if (const int rc = remove_share(env, db, to_int(row[0]), nullptr))
            return rc;
    }
    return 0;
}

} // namespace

int x_qbobj_deleteShare(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Share_t *share)
{
    for (qbobj_Share_t &next : Chain(share)) {
        if (const int rc = delete_share(qbobj, db, next))
            return rc;
    }
    return 0;
}

int x_qbobj_deleteShareOnVolume(qbobj_env_t *qbobj, sqlite3 *db, const char *VolumeId)
{
    return remove_shares(qbobj, db,
                         Sql(qbobj, db).table("SELECT S.id FROM share S WHERE S.volume_id=%Q", VolumeId));
}

int x_qbobj_deleteZvol(qbobj_env_t *qbobj, sqlite3 *db, const char *ZfsName)
{
    return remove_shares(qbobj, db,
                         Sql(qbobj, db).table("SELECT S.id FROM share S WHERE S.zfs_name=%Q", ZfsName));
}

int qbobj_api2_deleteDlnaShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id)
{
    const Status deleted = Sql(qbobj, db).exec("DELETE FROM dlna_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM dlna_share_option'. %s",
                     deleted.error());
    return 0;
}

int qbobj_api2_deleteDaapShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id)
{
    const Status deleted = Sql(qbobj, db).exec("DELETE FROM daap_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM daap_share_option'. %s",
                     deleted.error());
    return 0;
}

int qbobj_api2_deleteRsyncShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id)
{
    const Status deleted = Sql(qbobj, db).exec("DELETE FROM rsync_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM rsync_share_option'. %s",
                     deleted.error());
    return 0;
}
