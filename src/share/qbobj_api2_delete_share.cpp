// Shares and block volumes deleted, with the rows that hang on them. Process markers and the DLNA, DAAP and
// rsync rows stay: they outlive their share.
#include "share/share_writing.h"

namespace qbobj
{

namespace
{

// What a share was, read while it is removed.
struct RemovedShare {
    char *name = nullptr;
    char *path = nullptr;
    int32_t visible_snapshot = 0;
};

int read_removed_share(Call &call, int share_id, RemovedShare &removed)
{
    static constexpr Failure failed = "Failed DB Query for 'SELECT share'. %s";
    if (const int rc = call.text(failed, removed.name, "SELECT S.name FROM share S WHERE S.id=%d", share_id))
        return rc;
    if (const int rc = call.text(failed, removed.path, "SELECT S.path FROM share S WHERE S.id=%d", share_id))
        return rc;
    return call.number(
        failed, removed.visible_snapshot,
        "SELECT CASE WHEN S.visible_snapdir IS NULL THEN 0 ELSE 1 END FROM share S WHERE S.id=%d", share_id);
}

int remove_protocol(Call &call, int share_id, const char *proto)
{
    if (const int rc = call.exec("Failed DB Query for 'DELETE FROM user_acl'. %s",
                                 "DELETE FROM user_acl WHERE share_id=%d AND proto=%Q", share_id, proto))
        return rc;
    if (const int rc = call.exec("Failed DB Query for 'DELETE FROM group_acl'. %s",
                                 "DELETE FROM group_acl WHERE share_id=%d AND proto=%Q", share_id, proto))
        return rc;
    if (const int rc = call.exec("Failed DB Query for 'DELETE FROM host_acl'. %s",
                                 "DELETE FROM host_acl WHERE share_id=%d AND proto=%Q", share_id, proto))
        return rc;
    if (const int rc = call.exec({"Failed DB Query for 'DELETE FROM %s_share_option'. %s", proto},
                                 "DELETE FROM `%s_share_option` WHERE share_id=%d", proto, share_id))
        return rc;
    return call.exec("Failed DB Query for 'DELETE FROM cifs_dfs_option'. %s",
                     "DELETE FROM cifs_dfs_option WHERE share_id=%d", share_id);
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
    if (removed != nullptr)
        if (const int rc = read_removed_share(call, share_id, *removed))
            return rc;
    for (const char *proto : {"cifs", "afp", "nfs", "ftp", "http", "zvol"})
        if (const int rc = remove_protocol(call, share_id, proto))
            return rc;
    // The only failure that leaves the error record empty; the log has the statement.
    if (!remove_dependants(call, share_id))
        return QBOBJ_ERROR_UNKNOWN;
    if (const int rc = call.exec("Failed DB Query for share. %s", "DELETE FROM share WHERE id=%d", share_id))
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     share_id);
    return 0;
}

constexpr auto stored_path = select<int>("SELECT path FROM share S WHERE id=%d",
                                         "Failed DB Query for share. %s", or_empty(&qbobj_Share_t::Path));

int delete_share(Call &call, qbobj_Share_t &share)
{
    int share_id = 0;
    if (qbobj_validate_db_zfsname(call, share.resource_id, nullptr, &share_id) != 0 &&
        qbobj_validate_db_zfsname(call, share.ShareId, nullptr, &share_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).", share.resource_id);
    bool holds_another = false;
    if (const int rc =
            call.exists("Failed DB Query for share. %s", holds_another,
                        R"(SELECT 1 FROM share D CROSS JOIN share S ON S.path COLLATE NOCASE>=D.path||'/'
            AND S.path COLLATE NOCASE<D.path||'0' WHERE D.id=%d)", // '0' comes next after '/'
                        share_id))
        return rc;
    if (holds_another)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot delete share (share_id=%d).", share_id);
    if (const int rc =
            call.require(stored_path, error(QBOBJ_ERROR_API_ARGS, "Share (share_id=%d) not exist.", share_id),
                         share, share_id))
        return rc;

    RemovedShare removed;
    if (const int rc = remove_share(call, share_id, &removed))
        return rc;
    share.OldShareName = or_empty(removed.name);
    share.OldPath = or_empty(removed.path);
    share.OldVisibleSnapshot = removed.visible_snapshot;
    each_option([&]<class Option>(Option &) { return tell_service<Option>(call), 0; }, share.Cifs, share.Ftp);
    return 0;
}

struct ShareKey {
    int id;
};

constexpr auto shares_on_volume = select<const char *>("SELECT S.id FROM share S WHERE S.volume_id=%Q",
                                                       "Error in 'SELECT FROM share'.", &ShareKey::id);
constexpr auto shares_of_dataset = select<const char *>("SELECT S.id FROM share S WHERE S.zfs_name=%Q",
                                                        "Error in 'SELECT FROM share'.", &ShareKey::id);

template <class Select>
int remove_shares(Call &call, const Select &select, const char *key)
{
    return call.each<ShareKey>(
        select, [&](const ShareKey &share) { return remove_share(call, share.id, nullptr); }, key);
}

} // namespace

int x_qbobj_deleteShare(Call &call, qbobj_Share_t *share)
{
    return for_each(share, delete_share, call);
}

int x_qbobj_deleteShareOnVolume(Call &call, const char *VolumeId)
{
    return remove_shares(call, shares_on_volume, VolumeId);
}

int x_qbobj_deleteZvol(Call &call, const char *ZfsName)
{
    return remove_shares(call, shares_of_dataset, ZfsName);
}

int qbobj_api2_deleteDlnaShareOption(Call &call, int32_t share_id)
{
    return call.exec("Failed DB Query for 'DELETE FROM dlna_share_option'. %s",
                     "DELETE FROM dlna_share_option WHERE share_id=%d", share_id);
}

int qbobj_api2_deleteDaapShareOption(Call &call, int32_t share_id)
{
    return call.exec("Failed DB Query for 'DELETE FROM daap_share_option'. %s",
                     "DELETE FROM daap_share_option WHERE share_id=%d", share_id);
}

int qbobj_api2_deleteRsyncShareOption(Call &call, int32_t share_id)
{
    return call.exec("Failed DB Query for 'DELETE FROM rsync_share_option'. %s",
                     "DELETE FROM rsync_share_option WHERE share_id=%d", share_id);
}

} // namespace qbobj
