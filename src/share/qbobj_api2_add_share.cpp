// Shares and block volumes created: the share's row and every row that hangs on it.
#include "share/share_writing.h"

#include <qbobj/storage.h>

#include <optional>
#include <string>
#include <string_view>

namespace qbobj
{

namespace
{

using Share = qbobj_Share_t;

/* ---- The options of the protocols ---------------------------------------------------------------------- */

// Guests are welcome where accounts are the appliance's own.
template <class Option>
int guest_access(Call &call, const Option &option)
{
    return given_or<&Option::_void_AllowGuestAccess, &Option::AllowGuestAccess>(option,
                                                                                !call.directory().ads);
}

int insert_option(Call &call, const Cifs &option, int32_t share_id)
{
    const char *access = nullptr;
    if (qbobj_validate_access(option.DefaultAccess, "ReadWrite", &access) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS,
                     "Invalid Cifs->DefaultAccess (%s). Valid value is ReadWrite, ReadOnly or DIsabled.",
                     option.DefaultAccess);
    Rights rights;
    if (const int rc = read_rights(call, qbobj_validate_rights,
                                   {"Cifs->FileCreateGroupRights", "Cifs->FileCreateEveryoneRights",
                                    "Cifs->FolderCreateGroupRights", "Cifs->FolderCreateEveryoneRights"},
                                   right_words(option), rights))
        return rc;
    return call.exec(
        "Failed DB Query for cifs share_option. %s",
        R"(INSERT INTO cifs_share_option (share_id,cifs_access,cifs_guest_access,cifs_hide_share,
        cifs_group_create_mask,cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,
        cifs_everyone_directory_mask,cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,
        cifs_recycle_age_limit,oplocks,available,cifs_enabledfs)
        VALUES(%d,%Q,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d))",
        share_id, access, guest_access(call, option),
        given_or<&Cifs::_void_ShareDisplayOption, &Cifs::ShareDisplayOption>(option, 0), rights.file_group,
        rights.file_everyone,
        given_or<&Cifs::_void_NewFileFolderPermAutoset, &Cifs::NewFileFolderPermAutoset>(option, 1),
        rights.folder_group, rights.folder_everyone,
        given_or<&Cifs::_void_AclChangeRestrictionToggle, &Cifs::AclChangeRestrictionToggle>(option, 1023),
        given_or<&Cifs::_void_EnableRecycleBin, &Cifs::EnableRecycleBin>(option, 1),
        given_or<&Cifs::_void_RecycleSizeLimit, &Cifs::RecycleSizeLimit>(option, 25000),
        given_or<&Cifs::_void_RecycleAgeLimit, &Cifs::RecycleAgeLimit>(option, 0),
        given_or<&Cifs::_void_EnableOplocks, &Cifs::EnableOplocks>(option, 0), !option.NotAvailable,
        option.EnableDFS);
}

int insert_option(Call &call, const Afp &option, int32_t share_id)
{
    static constexpr Failure failed = "Failed DB Query for afp share_option. %s";
    const char *access = nullptr;
    if (const int rc = read_access(call, "Afp->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    const int guest = guest_access(call, option);
    if (given_or<&Afp::_void_NewFileFolderPermAutoset, &Afp::NewFileFolderPermAutoset>(option, 0) == 0)
        return call.exec(failed, R"(INSERT INTO afp_share_option
            (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(%d,%d,%Q,%d,NULL,NULL))",
                         share_id, !option.NotAvailable, access, guest);
    Rights rights;
    // One name stands for both rights of a kind.
    if (const int rc = read_rights(call, qbobj_validate_rights,
                                   {"Afp->FileCreateGroupRights", "Afp->FileCreateGroupRights",
                                    "Afp->FolderCreateGroupRights", "Afp->FolderCreateGroupRights"},
                                   right_words(option), rights))
        return rc;
    return call.exec(failed, R"(INSERT INTO afp_share_option
        (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(%d,%d,%Q,%d,%d,%d))",
                     share_id, !option.NotAvailable, access, guest, rights.file(), rights.folder());
}

int insert_option(Call &call, const Nfs &option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Nfs->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    // A new share always answers writes when they are on disk, whatever the record says.
    return call.exec(
        "Failed DB Query for nfs share_option. %s",
        "INSERT INTO nfs_share_option (share_id,available,nfs_access,nfs_sync) VALUES(%d,%d,%Q,1)", share_id,
        !option.NotAvailable, access);
}

int insert_option(Call &call, const Ftp &option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Ftp->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    Rights umasks;
    if (const int rc = read_rights(call, qbobj_validate_umask,
                                   {"Ftp->FileCreateGroupRights", "Ftp->FileCreateGroupRights",
                                    "Ftp->FolderCreateGroupRights", "Ftp->FolderCreateGroupRights"},
                                   right_words(option), umasks))
        return rc;
    return call.exec(
        "Failed DB Query for ftp share_option. %s", R"(INSERT INTO ftp_share_option
        (share_id,available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask) VALUES(%d,%d,%Q,%d,%d,%d))",
        share_id, !option.NotAvailable, access,
        given_or<&Ftp::_void_NewFileFolderPermAutoset, &Ftp::NewFileFolderPermAutoset>(option, 0),
        umasks.file(), umasks.folder());
}

int insert_option(Call &call, const Http &option, int32_t share_id)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Http->DfefaultAccess", option.DefaultAccess, "ReadWrite", access))
        return rc;
    return call.exec(
        "Failed DB Query for http share_option. %s",
        "INSERT INTO http_share_option (share_id,available,http_access,http_webdav) VALUES(%d,%d,%Q,%d)",
        share_id, !option.NotAvailable, access,
        given_or<&Http::_void_EnableWebDav, &Http::EnableWebDav>(option, 0));
}

int insert_option(Call &call, Rsync &option, int32_t share_id)
{
    return qbobj_api2_addRsyncShareOption(call, &option, share_id);
}

int insert_option(Call &call, Dlna &option, int32_t share_id)
{
    return qbobj_api2_addDlnaShareOption(call, &option, share_id);
}

int insert_option(Call &call, Daap &option, int32_t share_id)
{
    return qbobj_api2_addDaapShareOption(call, &option, share_id);
}

// What was stored for the access word of a new row.
DefaultAccess default_of(const char *word)
{
    const char *stored = nullptr;
    qbobj_validate_access(word, "ReadWrite", &stored);
    const std::string_view access = or_empty(stored);
    if (access == "writeable")
        return DefaultAccess::read_write;
    return access == "readonly" ? DefaultAccess::read_only : DefaultAccess::none;
}

template <class Option>
int add_option(Call &call, Option &option, int32_t share_id)
{
    if (const int rc = insert_option(call, option, share_id))
        return rc;
    ListOwner owner{share_id, protocol_of<Option>.word, DefaultAccess::none};
    if constexpr (requires { option.DefaultAccess; })
        owner.of_new_share = default_of(option.DefaultAccess);
    if (const int rc = write_lists(call, option, owner))
        return rc;
    tell_service<Option>(call);
    return 0;
}

int add_options(Call &call, const Share &share, int32_t share_id)
{
    return each_option([&](auto &option) { return add_option(call, option, share_id); }, share.Cifs,
                       share.Afp, share.Nfs, share.Ftp, share.Rsync, share.Dlna, share.Daap, share.Http);
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
template <class Account>
int read_owner(Call &call, const Account *owner, const Message<int> &invalid, int &id)
{
    const int resource_id = owner == nullptr ? -1 : owner->resource_id;
    id = owner == nullptr || resource_id >= 0 ? resource_id : owner->*AccountKind<Account>::id;
    return id < 0 ? raise(call, QBOBJ_ERROR_API_ARGS, invalid, resource_id) : 0;
}

// What the shares of a chain find around them, asked once for all that name the same volume.
struct Surroundings {
    std::optional<Ownership> guest;
    std::optional<std::string> asked; // the volume that `volume_id` answers
    const char *volume_id = nullptr;
    std::optional<uint32_t> free_mb;
};

int find_guest(Call &call, std::optional<Ownership> &guest)
{
    if (guest)
        return 0;
    Ownership found;
    if (x_qbobj_getUID(call, nullptr, &found.user) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot get UID for guest");
    if (x_qbobj_getGID(call, nullptr, &found.group) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot get GID for guest");
    guest = found;
    return 0;
}

int find_volume(Call &call, const char *volume_id, Surroundings &around)
{
    if (volume_id != nullptr && around.asked == volume_id)
        return 0;
    around.asked.reset();
    around.free_mb.reset();
    if (qbobj_validate_db_volumeid(call, volume_id, &around.volume_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Specified VolumeId (%s) is not valid.", volume_id);
    if (volume_id != nullptr)
        around.asked = volume_id;
    return 0;
}

int find_free_space(Call &call, Surroundings &around)
{
    if (around.free_mb)
        return 0;
    const char *free_kb = nullptr;
    if (const int rc = call.text("Failed DB Query for 'SELECT share'. %s", free_kb,
                                 "SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=%Q LIMIT 1",
                                 around.volume_id))
        return rc;
    around.free_mb = static_cast<uint32_t>(to_uint64(free_kb) / 1024);
    return 0;
}

// Without a Stat the guest owns the share and everyone may do everything.
int read_ownership(Call &call, const qbobj_FileStat_t *given, Ownership &ownership)
{
    using Stat = qbobj_FileStat_t;
    Stat stat{};
    stat._void_NonOwnerDelete = 1;
    if (given != nullptr) {
        stat = *given;
        if (const int rc =
                read_owner(call, stat.User, "Invalid Stat->User (resource_id=%d).", ownership.user))
            return rc;
        if (const int rc =
                read_owner(call, stat.Group, "Invalid Stat->Group (resource_id=%d).", ownership.group))
            return rc;
    }
    ownership.non_owner_delete = given_or<&Stat::_void_NonOwnerDelete, &Stat::NonOwnerDelete>(stat, 1);
    if (const int rc = read_right(call, qbobj_validate_rights, "Stat->UserAccess", stat.UserAccess, 1,
                                  ownership.user_access))
        return rc;
    if (const int rc = read_right(call, qbobj_validate_rights, "Stat->GroupAccess", stat.GroupAccess, 1,
                                  ownership.group_access))
        return rc;
    return read_right(call, qbobj_validate_rights, "Stat->EveryoneAccess", stat.EveryoneAccess, 1,
                      ownership.everyone_access);
}

// What is the matter with a share that could not be stored.
constexpr Failure taken{QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                        "Sharename specified is already exist. Or specified volume is not exist."};
constexpr Failure not_stored = "Failed DB Query for 'INSERT INTO share'. %s";

int insert_share(Call &call, const Share &share, const char *type, const char *volume_id,
                 const Ownership &owned)
{
    const char *snapdir = share.VisibleSnapshot != 0 ? share.VisibleSnapFolder : nullptr;
    if (!is_empty(share.Path)) {
        const char *zfs_name = *share.Path == '/' ? share.Path + 1 : share.Path;
        return call.exec_unique(
            taken, not_stored,
            R"(INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,
            user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
            VALUES(%Q,%Q,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d,%d,%d))",
            zfs_name, type, share.ShareName, share.Comment, snapdir, volume_id, share.Path, owned.user_access,
            owned.group_access, owned.everyone_access, owned.non_owner_delete, owned.user, owned.group);
    }
    return call.exec_unique(taken, not_stored,
                            R"(INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,
        user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
        VALUES((SELECT lv_name||'/'||%Q FROM _volume WHERE id=%Q),%Q,%Q,%Q,%Q,%Q,
        (SELECT '/'||lv_name||'/'||%Q FROM _volume WHERE id=%Q),%d,%d,%d,%d,%d,%d))",
                            share.ShareName, volume_id, type, share.ShareName, share.Comment, snapdir,
                            volume_id, share.ShareName, volume_id, owned.user_access, owned.group_access,
                            owned.everyone_access, owned.non_owner_delete, owned.user, owned.group);
}

// Sizes that the record leaves out are stored as 0, which is no limit.
int insert_attributes(Call &call, const Share &share, Surroundings &around, int32_t share_id)
{
    if (const int rc = find_free_space(call, around))
        return rc;
    const uint64_t refquota = given_or<&Share::_void_RefQuotaMB, &Share::RefQuotaMB>(share, 0);
    // Compared in 32 bits; QuotaMB is not compared at all.
    if (static_cast<uint32_t>(refquota) > *around.free_mb)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid quota value. Need to be less than Free Space.");
    return call.exec_unique(
        taken, not_stored,
        R"(INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,
        bit_rot_protection,dedup,logbias,sync) VALUES(%d,%llu,%llu,%llu,%llu,%d,%d,%d,%Q,%Q))",
        share_id, given_or<&Share::_void_QuotaMB, &Share::QuotaMB>(share, 0),
        given_or<&Share::_void_ReserveMB, &Share::ReserveMB>(share, 0), refquota,
        given_or<&Share::_void_RefReserveMB, &Share::RefReserveMB>(share, 0),
        given_or<&Share::_void_Compression, &Share::Compression>(share, 0),
        given_or<&Share::_void_BitRotProtection, &Share::BitRotProtection>(share, 0),
        given_or<&Share::_void_Dedup, &Share::Dedup>(share, 0), share.LogBias, share.Sync);
}

int insert_zvol(Call &call, const qbobj_ZvolShareOption_t *zvol, int32_t share_id)
{
    if (zvol == nullptr)
        return 0;
    return call.exec("Failed DB Query for zvol share_option. %s",
                     "INSERT INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(%d,%llu,%d)",
                     share_id, zvol->SizeKB, zvol->IsSparse);
}

int insert_used_by(Call &call, qbobj_UsedBy_t *used_by, int32_t share_id)
{
    if (used_by == nullptr)
        return 0;
    if (const int rc = call.exec("Failed DELETE $application_on_share. (%s)",
                                 "DELETE FROM `$application_on_share` WHERE zfs_name="
                                 "(SELECT S.zfs_name FROM share S WHERE S.id=%d)",
                                 share_id))
        return rc;
    for (const qbobj_UsedBy_t &entry : Chain(used_by))
        if (const int rc = call.exec("Failed INSERT $application_on_share. (%s)",
                                     "INSERT OR REPLACE INTO `$application_on_share` "
                                     "(zfs_name,app_name,app_data) "
                                     "VALUES((SELECT S.zfs_name FROM share S WHERE S.id=%d),%Q,%Q)",
                                     share_id, entry.AppName, entry.AppData))
            return rc;
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
    return call.exec(
        "Failed INSERT snapshot_schedule. (%s)",
        R"(INSERT OR REPLACE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,
        last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken)
        VALUES(%d,%d,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d))",
        share_id, schedule.Enabled, schedule.Minute, schedule.Hour, schedule.DayOfMonth, schedule.DayOfWeek,
        schedule.Month, schedule.LastTaken, schedule.PurgeManualSnapshot, schedule.LastDailyTaken,
        schedule.LastWeeklyTaken);
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

int add_share(Call &call, Surroundings &around, Share &share)
{
    const char *type = nullptr;
    if (const int rc = check_new_share(call, share, type))
        return rc;
    share.Comment = or_empty(share.Comment);
    if (const int rc = find_volume(call, share.VolumeId, around))
        return rc;
    if (const int rc = find_guest(call, around.guest))
        return rc;
    Ownership ownership = *around.guest;
    if (const int rc = read_ownership(call, share.Stat, ownership))
        return rc;

    if (const int rc = insert_share(call, share, type, around.volume_id, ownership))
        return rc;
    const int32_t share_id = call.last_id();
    if (const int rc = insert_attributes(call, share, around, share_id))
        return rc;
    if (const int rc = add_options(call, share, share_id))
        return rc;
    if (const int rc = insert_zvol(call, share.Zvol, share_id))
        return rc;
    if (const int rc = insert_used_by(call, share.UsedBy, share_id))
        return rc;
    if (const int rc = insert_schedule(
            call, share.SnapshotSchedule == nullptr ? default_schedule : *share.SnapshotSchedule, share_id))
        return rc;
    share.resource_id = share.ShareId = print(call, "%s/%s", around.volume_id, share.ShareName);
    return 0;
}

} // namespace

int x_qbobj_addShare(Call &call, qbobj_Share_t *share)
{
    Surroundings around;
    return for_each(share, add_share, call, around);
}

int qbobj_api2_addDlnaShareOption(Call &call, qbobj_DlnaShareOption_t *option, int32_t share_id)
{
    int media_type = 0;
    if (const int rc = read_media(call, *option, media_type))
        return rc;
    return call.exec("Failed DB Query for 'INSERT INTO dlna_share_option'. %s",
                     "INSERT INTO dlna_share_option (share_id,available,access,media_type) "
                     "VALUES(%d,%d,'readonly',%d)",
                     share_id, !option->NotAvailable, media_type);
}

int qbobj_api2_addDaapShareOption(Call &call, qbobj_DaapShareOption_t *option, int32_t share_id)
{
    return call.exec("Failed DB Query for 'INSERT INTO daap_share_option'. %s",
                     "INSERT INTO daap_share_option (share_id,available) VALUES(%d,%d)", share_id,
                     !option->NotAvailable);
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
    return call.exec("Failed DB Query for 'INSERT INTO rsync_share_option'. %s",
                     "INSERT INTO rsync_share_option (share_id,available,rsync_access,passwordprotection) "
                     "VALUES(%d,%d,%Q,%Q)",
                     share_id, !option->NotAvailable, access, protection);
}

} // namespace qbobj
