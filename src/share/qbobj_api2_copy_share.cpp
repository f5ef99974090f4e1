// A share's configuration cloned under a new name.
#include "share/share.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

// Copied in this order. rsync, links to other servers, markers and snapshots stay with the original.
constexpr const char *copied_tables[] = {
    "user_quota",        "group_quota",       "user_acl",          "group_acl",         "host_acl",
    "cifs_share_option", "afp_share_option",  "nfs_share_option",  "http_share_option", "ftp_share_option",
    "dlna_share_option", "daap_share_option", "zvol_share_option", "snapshot_schedule", "zfs_attr",
};

// Repeats a share's rows of a table for another share, whatever the table's other columns are.
int copy_rows(Call &call, const char *table, int source_id, int new_id)
{
    if (const int rc = call.exec({"Error in 'COPY %s'. (%s)", table},
                                 "CREATE TEMPORARY TABLE `_%s` AS SELECT * FROM `%s` WHERE share_id=%d",
                                 table, table, source_id))
        return rc;
    if (const int rc =
            call.exec({"Error in 'UPDATE _%s'. (%s)", table}, "UPDATE `_%s` SET share_id=%d", table, new_id))
        return rc;
    if (const int rc = call.exec({"Error in 'INSERT %s'. (%s)", table},
                                 "INSERT INTO `%s` SELECT * FROM `_%s`", table, table))
        return rc;
    return call.exec({"Error in 'DROP _%s'. (%s)", table}, "DROP TABLE IF EXISTS `_%s`", table);
}

} // namespace

// Snapshots belong to the data, so `SnapshotName` has nothing to choose here.
int x_qbobj_copyShare(Call &call, const char *VolumeName, const char *ShareName, const char *,
                      const char *NewShareName)
{
    int source_id = 0;
    const char *source = print(call, "%s/%s", VolumeName, ShareName);
    if (qbobj_validate_db_zfsname(call, source, nullptr, &source_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "VolumeName/ShareName %s/%s is not exists.", VolumeName,
                     ShareName);
    if (qbobj_validate_sharename(NewShareName, nullptr) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NewShareName %s is not valid.", NewShareName);
    int existing = 0;
    if (qbobj_validate_db_sharename(call, NewShareName, nullptr, &existing) == 0)
        return raise(call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, "Sharename specified is already exist.");

    if (const int rc = call.exec(
            "Error in 'INSERT share'. (%s)",
            R"(INSERT INTO share(zfs_name,type,volume_id,usb_storage_id,name,path,comment,user_access,group_access,
            everyone_access,non_owner_delete,user_id,group_id)
            SELECT %Q||'/'||%Q,type,volume_id,usb_storage_id,%Q,'/'||%Q||'/'||%Q,comment,user_access,group_access,
            everyone_access,non_owner_delete,user_id,group_id FROM share WHERE id=%d)",
            VolumeName, NewShareName, NewShareName, VolumeName, NewShareName, source_id))
        return rc;
    const int new_id = call.last_id();
    for (const char *table : copied_tables)
        if (const int rc = copy_rows(call, table, source_id, new_id))
            return rc;
    return 0;
}

} // namespace qbobj
