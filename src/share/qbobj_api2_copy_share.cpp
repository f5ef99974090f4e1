// A share's configuration cloned under a new name.
#include "share/share.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

// A table whose rows of a share are copied, with its columns but for `share_id`.
struct CopiedTable {
    const char *name;
    const char *columns;
};

// In this order. rsync, links to other servers, markers and snapshots stay with the original.
constexpr CopiedTable copied_tables[] = {
    {"user_quota", "user_id,mb_soft,mb_hard"},
    {"group_quota", "group_id,mb_soft,mb_hard"},
    {"user_acl", "user_id,proto,read,write"},
    {"group_acl", "group_id,proto,read,write"},
    {"host_acl", "host_id,proto,read,write,root"},
    {"cifs_share_option", "available,cifs_access,cifs_guest_access,cifs_hide_share,cifs_recycle,"
                          "cifs_recycle_mb_limit,cifs_recycle_age_limit,cifs_enable_masks,"
                          "cifs_group_create_mask,cifs_everyone_create_mask,cifs_group_directory_mask,"
                          "cifs_everyone_directory_mask,cifs_enable_forced_minimum,oplocks,cifs_enabledfs"},
    {"afp_share_option", "available,afp_access,afp_guest_access,afp_fperm,afp_dperm"},
    {"nfs_share_option", "available,nfs_access,nfs_sync"},
    {"http_share_option", "available,http_access,http_webdav"},
    {"ftp_share_option", "available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask"},
    {"dlna_share_option", "available,access,media_type"},
    {"daap_share_option", "available"},
    {"zvol_share_option", "kb_size,is_sparse"},
    {"snapshot_schedule", "enabled,minute,hour,day_of_month,day_of_week,month,last_taken,"
                          "purge_manual_snapshot,last_daily_taken,last_weekly_taken"},
    {"zfs_attr", "mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,bit_rot_protection,dedup,"
                 "logbias,origin,sync"},
};

int copy_rows(Call &call, const CopiedTable &table, int source_id, int new_id)
{
    return call.exec({"Error in 'INSERT %s'. (%s)", table.name},
                     "INSERT INTO `%s` (share_id,%s) SELECT %d,%s FROM `%s` WHERE share_id=%d", table.name,
                     table.columns, new_id, table.columns, table.name, source_id);
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
    for (const CopiedTable &table : copied_tables)
        if (const int rc = copy_rows(call, table, source_id, new_id))
            return rc;
    return 0;
}

} // namespace qbobj
