// Shares and block volumes deleted, with the rows that hang on them. Process markers and the DLNA, DAAP and
// rsync rows stay: they outlive their share.
#include "core/call.h"
#include "share/share_writing.h"

namespace qbobj
{

namespace
{

// What a share was, read while it is removed.
struct RemovedShare {
    const char *name = nullptr;
    const char *path = nullptr;
    int visible_snapshot = 0;
};

int read_removed_share(Call &call, int share_id, RemovedShare &removed)
{
    const Text name = call.ask_text("SELECT S.name FROM share S WHERE S.id=%d", share_id);
    if (!name)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", name.error());
    const Text path = call.ask_text("SELECT S.path FROM share S WHERE S.id=%d", share_id);
    if (!path)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", path.error());
    const Number visible = call.ask_number(
        "SELECT CASE WHEN S.visible_snapdir IS NULL THEN 0 ELSE 1 END FROM share S WHERE S.id=%d", share_id);
    if (!visible)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", visible.error());
    removed = {name.value, path.value, visible.value};
    return 0;
}

int remove_protocol(Call &call, int share_id, const char *proto)
{
    const Status users = call.run("DELETE FROM user_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!users)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM user_acl'. %s",
                     users.error());
    const Status groups = call.run("DELETE FROM group_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!groups)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM group_acl'. %s",
                     groups.error());
    const Status hosts = call.run("DELETE FROM host_acl WHERE share_id=%d AND proto=%Q", share_id, proto);
    if (!hosts)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM host_acl'. %s",
                     hosts.error());
    const Status option = call.run("DELETE FROM `%s_share_option` WHERE share_id=%d", proto, share_id);
    if (!option)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM %s_share_option'. %s",
                     proto, option.error());
    const Status links = call.run("DELETE FROM cifs_dfs_option WHERE share_id=%d", share_id);
    if (!links)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM cifs_dfs_option'. %s",
                     links.error());
    return 0;
}

// Everything else that hangs on the share, in this order; false at the first failure.
bool remove_dependants(Call &call, int id)
{
    return call.run("UPDATE service_http SET share_name='' WHERE share_name="
                    "(select S.name from share S WHERE S.id=%d)",
                    id) &&
           call.run("DELETE FROM snapshot_schedule WHERE share_id=%d", id) &&
           call.run("DELETE FROM `$snapshot` WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                    id) &&
           call.run("DELETE FROM `$snapshot_clones` WHERE "
                    "cloned_zfs_name=(SELECT S.name FROM share S WHERE S.id=%d) OR "
                    "parent_zfs_name=(SELECT S1.name FROM share S1 WHERE S1.id=%d)",
                    id, id) &&
           call.run("DELETE FROM `$application_on_share` WHERE "
                    "zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                    id) &&
           call.run("DELETE FROM user_quota WHERE share_id=%d", id) &&
           call.run("DELETE FROM group_quota WHERE share_id=%d", id) &&
           call.run("DELETE FROM _user_quota_stat WHERE share_id=%d", id) &&
           call.run("DELETE FROM _group_quota_stat WHERE share_id=%d", id) &&
           call.run("DELETE FROM zfs_attr WHERE share_id=%d", id) &&
           call.run("DELETE FROM _zfs_stat WHERE share_id=%d", id) &&
           call.run("DELETE FROM backup WHERE "
                    "(src_type='share' AND src_share_proto=(SELECT S.name FROM share S WHERE S.id==%d)) OR "
                    "(dst_type='share' AND dst_share_proto=(SELECT S.name FROM share S WHERE S.id==%d))",
                    id, id);
}

// Removes one share; `removed` may be null.
int remove_share(Call &call, int share_id, RemovedShare *removed)
{
    if (removed != nullptr) {
        if (const int rc = read_removed_share(call, share_id, *removed))
            return rc;
    }
    for (const char *proto : {"cifs", "afp", "nfs", "ftp", "http", "zvol"}) {
        if (const int rc = remove_protocol(call, share_id, proto))
            return rc;
    }
    // The only failure that leaves the error record empty; the log has the statement.
    if (!remove_dependants(call, share_id))
        return QBOBJ_ERROR_UNKNOWN;
    const Status deleted = call.run("DELETE FROM share WHERE id=%d", share_id);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", deleted.error());
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     share_id);
    return 0;
}

int delete_share(Call &call, qbobj_Share_t &share)
{
    int share_id = 0;
    if (qbobj_validate_db_zfsname(call, share.resource_id, nullptr, &share_id) != 0 &&
        qbobj_validate_db_zfsname(call, share.ShareId, nullptr, &share_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).", share.resource_id);
    const Number nested = call.ask_number(
        "SELECT 1 FROM share S WHERE S.path LIKE (SELECT path FROM share WHERE id=%d)||'/%%'", share_id);
    if (!nested)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", nested.error());
    if (nested.found != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot delete share (share_id=%d).", share_id);
    const Text path = call.ask_text("SELECT path FROM share S WHERE id=%d", share_id);
    if (!path)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for share. %s", path.error());
    if (path.found == 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Share (share_id=%d) not exist.", share_id);
    share.Path = path.value;

    RemovedShare removed;
    if (const int rc = remove_share(call, share_id, &removed))
        return rc;
    share.OldShareName = removed.name;
    share.OldPath = removed.path;
    share.OldVisibleSnapshot = removed.visible_snapshot;
    if (share.Cifs != nullptr)
        refresh_service<qbobj_CifsShareOption_t>(call);
    if (share.Ftp != nullptr)
        refresh_service<qbobj_FtpShareOption_t>(call);
    return 0;
}

// Removes the shares whose ids a SELECT found.
int remove_shares(Call &call, const Table &ids)
{
    if (!ids)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Error in 'SELECT FROM share'.");
    for (const Row row : ids) {
        if (const int rc = remove_share(call, to_int(row[0]), nullptr))
            return rc;
    }
    return 0;
}

} // namespace

int x_qbobj_deleteShare(Call &call, qbobj_Share_t *share)
{
    for (qbobj_Share_t &next : Chain(share)) {
        if (const int rc = delete_share(call, next))
            return rc;
    }
    return 0;
}

int x_qbobj_deleteShareOnVolume(Call &call, const char *VolumeId)
{
    return remove_shares(call, call.table("SELECT S.id FROM share S WHERE S.volume_id=%Q", VolumeId));
}

int x_qbobj_deleteZvol(Call &call, const char *ZfsName)
{
    return remove_shares(call, call.table("SELECT S.id FROM share S WHERE S.zfs_name=%Q", ZfsName));
}

int qbobj_api2_deleteDlnaShareOption(Call &call, int32_t share_id)
{
    const Status deleted = call.run("DELETE FROM dlna_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM dlna_share_option'. %s",
                     deleted.error());
    return 0;
}

int qbobj_api2_deleteDaapShareOption(Call &call, int32_t share_id)
{
    const Status deleted = call.run("DELETE FROM daap_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM daap_share_option'. %s",
                     deleted.error());
    return 0;
}

int qbobj_api2_deleteRsyncShareOption(Call &call, int32_t share_id)
{
    const Status deleted = call.run("DELETE FROM rsync_share_option WHERE share_id=%d", share_id);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM rsync_share_option'. %s",
                     deleted.error());
    return 0;
}

} // namespace qbobj
