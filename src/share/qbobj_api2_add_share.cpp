// Shares and block volumes created: the share's row and every row that hangs on it.
#include "core/call.h"
#include "share/share_writing.h"

#include <qbobj/storage.h>

namespace qbobj
{

namespace
{

// A number that the record may leave out.
template <class Number>
Number given_or(int is_void, Number value, std::type_identity_t<Number> otherwise)
{
    return is_void != 0 ? otherwise : value;
}

/* ---- The options of the protocols ---------------------------------------------------------------------- */

int insert_option(Call &call, const Directory &directory, qbobj_CifsShareOption_t &option, int32_t share_id)
{
    static constexpr RightNames names{"Cifs->FileCreateGroupRights", "Cifs->FileCreateEveryoneRights",
                                      "Cifs->FolderCreateGroupRights", "Cifs->FolderCreateEveryoneRights"};
    const char *access = nullptr;
    if (qbobj_validate_access(option.DefaultAccess, "ReadWrite", &access) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS,
                     "Invalid Cifs->DefaultAccess (%s). Valid value is ReadWrite, ReadOnly or DIsabled.",
                     option.DefaultAccess);
    Rights rights;
    if (const int rc = read_rights(call, option, qbobj_validate_rights, names, rights))
        return rc;
    const Status inserted = call.run(
        R"(INSERT INTO cifs_share_option (share_id,cifs_access,cifs_guest_access,cifs_hide_share,
        cifs_group_create_mask,cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,
        cifs_everyone_directory_mask,cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,
        cifs_recycle_age_limit,oplocks,available,cifs_enabledfs)
        VALUES(%d,%Q,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d))",
        share_id, access, given_or(option._void_AllowGuestAccess, option.AllowGuestAccess, !directory.ads),
        given_or(option._void_ShareDisplayOption, option.ShareDisplayOption, 0), rights.file_group,
        rights.file_everyone,
        given_or(option._void_NewFileFolderPermAutoset, option.NewFileFolderPermAutoset, 1),
        rights.folder_group, rights.folder_everyone,
        given_or(option._void_AclChangeRestrictionToggle, option.AclChangeRestrictionToggle, 1023),
        given_or(option._void_EnableRecycleBin, option.EnableRecycleBin, 1),
        given_or(option._void_RecycleSizeLimit, option.RecycleSizeLimit, 25000),
        given_or(option._void_RecycleAgeLimit, option.RecycleAgeLimit, 0),
        given_or(option._void_EnableOplocks, option.EnableOplocks, 0), !option.NotAvailable,
        option.EnableDFS);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for cifs share_option. %s",
                     inserted.error());
    return 0;
}

int insert_option(Call &call, const Directory &directory, qbobj_AfpShareOption_t &option, int32_t share_id)
{
    // One name stands for both rights of a kind.
    static constexpr RightNames names{"Afp->FileCreateGroupRights", "Afp->FileCreateGroupRights",
                                      "Afp->FolderCreateGroupRights", "Afp->FolderCreateGroupRights"};
    const char *access = nullptr;
    if (const int rc = read_access(call, "Afp->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    const int guest = given_or(option._void_AllowGuestAccess, option.AllowGuestAccess, !directory.ads);
    Status inserted;
    if (given_or(option._void_NewFileFolderPermAutoset, option.NewFileFolderPermAutoset, 0) != 0) {
        Rights rights;
        if (const int rc = read_rights(call, option, qbobj_validate_rights, names, rights))
            return rc;
        inserted = call.run(R"(INSERT INTO afp_share_option
            (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(%d,%d,%Q,%d,%d,%d))",
                            share_id, !option.NotAvailable, access, guest, rights.file(), rights.folder());
    } else {
        inserted = call.run(R"(INSERT INTO afp_share_option
            (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(%d,%d,%Q,%d,NULL,NULL))",
                            share_id, !option.NotAvailable, access, guest);
    }
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for afp share_option. %s", inserted.error());
    return 0;
}

int insert_option(Call &call, const Directory &, qbobj_NfsShareOption_t &option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Nfs->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    // A new share always answers writes when they are on disk, whatever the record says.
    const Status inserted =
        call.run("INSERT INTO nfs_share_option (share_id,available,nfs_access,nfs_sync) VALUES(%d,%d,%Q,1)",
                 share_id, !option.NotAvailable, access);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for nfs share_option. %s", inserted.error());
    return 0;
}

int insert_option(Call &call, const Directory &, qbobj_FtpShareOption_t &option, int32_t share_id)
{
    static constexpr RightNames names{"Ftp->FileCreateGroupRights", "Ftp->FileCreateGroupRights",
                                      "Ftp->FolderCreateGroupRights", "Ftp->FolderCreateGroupRights"};
    const char *access = nullptr;
    if (const int rc = read_access(call, "Ftp->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    Rights umasks;
    if (const int rc = read_rights(call, option, qbobj_validate_umask, names, umasks))
        return rc;
    const Status inserted =
        call.run(R"(INSERT INTO ftp_share_option
        (share_id,available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask) VALUES(%d,%d,%Q,%d,%d,%d))",
                 share_id, !option.NotAvailable, access,
                 given_or(option._void_NewFileFolderPermAutoset, option.NewFileFolderPermAutoset, 0),
                 umasks.file(), umasks.folder());
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for ftp share_option. %s", inserted.error());
    return 0;
}

int insert_option(Call &call, const Directory &, qbobj_HttpShareOption_t &option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Http->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    const Status inserted = call.run(
        "INSERT INTO http_share_option (share_id,available,http_access,http_webdav) VALUES(%d,%d,%Q,%d)",
        share_id, !option.NotAvailable, access, given_or(option._void_EnableWebDav, option.EnableWebDav, 0));
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for http share_option. %s",
                     inserted.error());
    return 0;
}

int insert_option(Call &call, const Directory &, qbobj_RsyncShareOption_t &option, int32_t share_id)
{
    return qbobj_api2_addRsyncShareOption(call, &option, share_id);
}

int insert_option(Call &call, const Directory &, qbobj_DlnaShareOption_t &option, int32_t share_id)
{
    return qbobj_api2_addDlnaShareOption(call, &option, share_id);
}

int insert_option(Call &call, const Directory &, qbobj_DaapShareOption_t &option, int32_t share_id)
{
    return qbobj_api2_addDaapShareOption(call, &option, share_id);
}

template <class Option>
int add_option(Call &call, const Directory &directory, Option *option, int32_t share_id)
{
    if (option == nullptr)
        return 0;
    if (const int rc = insert_option(call, directory, *option, share_id))
        return rc;
    if (const int rc = write_lists(call, *option, share_id))
        return rc;
    refresh_service<Option>(call);
    return 0;
}

// In the order given; the first failure ends it.
template <class... Options>
int add_options(Call &call, const Directory &directory, int32_t share_id, Options *...options)
{
    int rc = 0;
    static_cast<void>((... || ((rc = add_option(call, directory, options, share_id)) != 0)));
    return rc;
}

/* ---- The share itself ---------------------------------------------------------------------------------- */

struct Ownership {
    int user = 0;
    int group = 0;
    int user_access = 0;
    int group_access = 0;
    int everyone_access = 0;
    int non_owner_delete = 1;
};

// A negative resource_id leaves the choice to the account's id; 0 is the administrator.
int read_owner(Call &call, const qbobj_SystemUser_t *user, int &id)
{
    id = user == nullptr ? -1 : user->resource_id >= 0 ? user->resource_id : user->UserId;
    if (id < 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Stat->User (resource_id=%d).",
                     user == nullptr ? -1 : user->resource_id);
    return 0;
}

int read_owning_group(Call &call, const qbobj_SystemGroup_t *group, int &id)
{
    id = group == nullptr ? -1 : group->resource_id >= 0 ? group->resource_id : group->GroupId;
    if (id < 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Stat->Group (resource_id=%d).",
                     group == nullptr ? -1 : group->resource_id);
    return 0;
}

// Without a Stat the guest owns the share and everyone may do everything.
int read_ownership(Call &call, const qbobj_FileStat_t *stat, Ownership &ownership)
{
    if (x_qbobj_getUID(call, nullptr, &ownership.user) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot get UID for guest");
    if (x_qbobj_getGID(call, nullptr, &ownership.group) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot get GID for guest");
    if (stat != nullptr) {
        if (const int rc = read_owner(call, stat->User, ownership.user))
            return rc;
        if (const int rc = read_owning_group(call, stat->Group, ownership.group))
            return rc;
        ownership.non_owner_delete = given_or(stat->_void_NonOwnerDelete, stat->NonOwnerDelete, 1);
    }
    if (const int rc = read_right(call, qbobj_validate_rights, "Stat->UserAccess",
                                  stat == nullptr ? nullptr : stat->UserAccess, 1, ownership.user_access))
        return rc;
    if (const int rc = read_right(call, qbobj_validate_rights, "Stat->GroupAccess",
                                  stat == nullptr ? nullptr : stat->GroupAccess, 1, ownership.group_access))
        return rc;
    return read_right(call, qbobj_validate_rights, "Stat->EveryoneAccess",
                      stat == nullptr ? nullptr : stat->EveryoneAccess, 1, ownership.everyone_access);
}

// What is the matter with a share that could not be stored.
int raise_insert_failed(Call &call, const Status &inserted)
{
    if (inserted.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                     "Sharename specified is already exist. Or specified volume is not exist.");
    return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO share'. %s", inserted.error());
}

int insert_share(Call &call, const qbobj_Share_t &share, const char *type, const char *volume_id,
                 const Ownership &owned, int32_t &share_id)
{
    const char *snapdir = share.VisibleSnapshot != 0 ? share.VisibleSnapFolder : nullptr;
    Status inserted;
    if (!is_empty(share.Path)) {
        const char *zfs_name = *share.Path == '/' ? share.Path + 1 : share.Path;
        inserted = call.run(R"(INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,
            user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
            VALUES(%Q,%Q,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d,%d,%d))",
                            zfs_name, type, share.ShareName, share.Comment, snapdir, volume_id, share.Path,
                            owned.user_access, owned.group_access, owned.everyone_access,
                            owned.non_owner_delete, owned.user, owned.group);
    } else {
        inserted = call.run(R"(INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,
            user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
            VALUES((SELECT lv_name||'/'||%Q FROM _volume WHERE id=%Q),%Q,%Q,%Q,%Q,%Q,
            (SELECT '/'||lv_name||'/'||%Q FROM _volume WHERE id=%Q),%d,%d,%d,%d,%d,%d))",
                            share.ShareName, volume_id, type, share.ShareName, share.Comment, snapdir,
                            volume_id, share.ShareName, volume_id, owned.user_access, owned.group_access,
                            owned.everyone_access, owned.non_owner_delete, owned.user, owned.group);
    }
    if (!inserted)
        return raise_insert_failed(call, inserted);
    share_id = call.last_id();
    return 0;
}

// Sizes that the record leaves out are stored as 0, which is no limit.
int insert_attributes(Call &call, const qbobj_Share_t &share, const char *volume_id, int32_t share_id)
{
    const Text free_kb =
        call.ask_text("SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=%Q LIMIT 1", volume_id);
    if (!free_kb)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", free_kb.error());
    const uint64_t refquota = given_or(share._void_RefQuotaMB, share.RefQuotaMB, 0);
    // Compared in 32 bits; QuotaMB is not compared at all.
    if (static_cast<uint32_t>(refquota) > static_cast<uint32_t>(to_uint64(free_kb.value) / 1024))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid quota value. Need to be less than Free Space.");
    const Status inserted = call.run(
        R"(INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,
        bit_rot_protection,dedup,logbias,sync) VALUES(%d,%llu,%llu,%llu,%llu,%d,%d,%d,%Q,%Q))",
        share_id, given_or(share._void_QuotaMB, share.QuotaMB, 0),
        given_or(share._void_ReserveMB, share.ReserveMB, 0), refquota,
        given_or(share._void_RefReserveMB, share.RefReserveMB, 0),
        given_or(share._void_Compression, share.Compression, 0),
        given_or(share._void_BitRotProtection, share.BitRotProtection, 0),
        given_or(share._void_Dedup, share.Dedup, 0), share.LogBias, share.Sync);
    if (!inserted)
        return raise_insert_failed(call, inserted);
    return 0;
}

int insert_zvol(Call &call, const qbobj_ZvolShareOption_t *zvol, int32_t share_id)
{
    if (zvol == nullptr)
        return 0;
    const Status inserted =
        call.run("INSERT INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(%d,%llu,%d)", share_id,
                 zvol->SizeKB, zvol->IsSparse);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for zvol share_option. %s",
                     inserted.error());
    return 0;
}

int insert_used_by(Call &call, qbobj_UsedBy_t *used_by, int32_t share_id)
{
    if (used_by == nullptr)
        return 0;
    const Status removed = call.run("DELETE FROM `$application_on_share` WHERE zfs_name="
                                    "(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                                    share_id);
    if (!removed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DELETE $application_on_share. (%s)", removed.error());
    for (const qbobj_UsedBy_t &entry : Chain(used_by)) {
        const Status inserted = call.run("INSERT OR REPLACE INTO `$application_on_share` "
                                         "(zfs_name,app_name,app_data) "
                                         "VALUES((SELECT S.zfs_name FROM share S WHERE S.id=%d),%Q,%Q)",
                                         share_id, entry.AppName, entry.AppData);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed INSERT $application_on_share. (%s)",
                         inserted.error());
    }
    return 0;
}

// Every hour on the hour.
constexpr qbobj_Schedule_t default_schedule{
    .Enabled = 1,
    .Minute = "0",
    .Hour = "*",
    .DayOfMonth = "*",
    .DayOfWeek = "*",
    .Month = "*",
    .LastTaken = 0,
    .PurgeManualSnapshot = 0,
    .LastDailyTaken = 0,
    .LastWeeklyTaken = 0,
};

int insert_schedule(Call &call, const qbobj_Schedule_t &schedule, int32_t share_id)
{
    const Status inserted = call.run(
        R"(INSERT OR REPLACE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,
        last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken)
        VALUES(%d,%d,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d))",
        share_id, schedule.Enabled, schedule.Minute, schedule.Hour, schedule.DayOfMonth, schedule.DayOfWeek,
        schedule.Month, schedule.LastTaken, schedule.PurgeManualSnapshot, schedule.LastDailyTaken,
        schedule.LastWeeklyTaken);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed INSERT snapshot_schedule. (%s)", inserted.error());
    return 0;
}

int check_new_share(Call &call, const qbobj_Share_t &share, const char *&type)
{
    if (qbobj_validate_sharetype(share.ShareType, &type) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid ShareType (%s)", share.ShareType);
    if (const int rc = check_share_name(call, share.ShareName))
        return rc;
    int existing = 0;
    if (qbobj_validate_db_sharename(call, share.ShareName, nullptr, &existing) == 0)
        return raise(call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, "Sharename specified is already exist.");
    if (!is_empty(share.Sync))
        return check_sync(call, share.Sync);
    return 0;
}

int add_share(Call &call, const Directory &directory, qbobj_Share_t &share)
{
    const char *type = nullptr;
    if (const int rc = check_new_share(call, share, type))
        return rc;
    share.Comment = or_empty(share.Comment);
    const char *volume_id = nullptr;
    if (qbobj_validate_db_volumeid(call, share.VolumeId, &volume_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Specified VolumeId (%s) is not valid.", share.VolumeId);
    Ownership ownership;
    if (const int rc = read_ownership(call, share.Stat, ownership))
        return rc;

    int32_t share_id = 0;
    if (const int rc = insert_share(call, share, type, volume_id, ownership, share_id))
        return rc;
    if (const int rc = insert_attributes(call, share, volume_id, share_id))
        return rc;
    if (const int rc = add_options(call, directory, share_id, share.Cifs, share.Afp, share.Nfs, share.Ftp,
                                   share.Rsync, share.Dlna, share.Daap, share.Http))
        return rc;
    if (const int rc = insert_zvol(call, share.Zvol, share_id))
        return rc;
    if (const int rc = insert_used_by(call, share.UsedBy, share_id))
        return rc;
    if (const int rc = insert_schedule(
            call, share.SnapshotSchedule == nullptr ? default_schedule : *share.SnapshotSchedule, share_id))
        return rc;
    share.resource_id = share.ShareId = print(call, "%s/%s", volume_id, share.ShareName);
    return 0;
}

} // namespace

int x_qbobj_addShare(Call &call, qbobj_Share_t *share)
{
    const Directory directory = call.directory();
    for (qbobj_Share_t &next : Chain(share)) {
        if (const int rc = add_share(call, directory, next))
            return rc;
    }
    return 0;
}

int qbobj_api2_addDlnaShareOption(Call &call, qbobj_DlnaShareOption_t *option, int32_t share_id)
{
    const char *access = nullptr; // only checked: media players never write
    if (const int rc = read_access(call, "Dlna->DefaultAccess", option->DefaultAccess, "ReadOnly", access))
        return rc;
    int media_type = 0;
    if (qbobj_validate_media_type(option->MediaType, "All", &media_type) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Dlna->MediaType (%s).", option->MediaType);
    const Status inserted = call.run("INSERT INTO dlna_share_option "
                                     "(share_id,available,access,media_type) "
                                     "VALUES(%d,%d,'readonly',%d)",
                                     share_id, !option->NotAvailable, media_type);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO dlna_share_option'. %s",
                     inserted.error());
    return 0;
}

int qbobj_api2_addDaapShareOption(Call &call, qbobj_DaapShareOption_t *option, int32_t share_id)
{
    const Status inserted = call.run("INSERT INTO daap_share_option (share_id,available) VALUES(%d,%d)",
                                     share_id, !option->NotAvailable);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO daap_share_option'. %s",
                     inserted.error());
    return 0;
}

int qbobj_api2_addRsyncShareOption(Call &call, qbobj_RsyncShareOption_t *option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Rsync->DefaultAccess", option->DefaultAccess, "ReadWrite", access))
        return rc;
    const char *protection = nullptr;
    if (qbobj_validate_enable_disable(option->PasswordProtection, "Disabled", &protection) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Rsync->PasswordProtection (%s).",
                     option->PasswordProtection);
    const Status inserted = call.run("INSERT INTO rsync_share_option "
                                     "(share_id,available,rsync_access,passwordprotection) "
                                     "VALUES(%d,%d,%Q,%Q)",
                                     share_id, !option->NotAvailable, access, protection);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO rsync_share_option'. %s",
                     inserted.error());
    return 0;
}

} // namespace qbobj
