// Reading shares by hand.
#include "share_floor.h"

#include <acl/libacl.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

namespace qbobj_bench
{
namespace
{

const char *access_word(int bits)
{
    if ((bits & 2) != 0)
        return "ReadWrite";
    return (bits & 4) != 0 ? "ReadOnly" : "Disabled";
}

const char *umask_word(int bits)
{
    if ((bits & 2) == 0)
        return "ReadWrite";
    return (bits & 4) != 0 ? "Disabled" : "ReadOnly";
}

struct FreeAcl {
    void operator()(void *object) const { acl_free(object); }
};
using Acl = std::unique_ptr<std::remove_pointer_t<acl_t>, FreeAcl>;

// The folders of a measured appliance name no users or groups.
void append_acl(const char *path, acl_type_t acl_type, int type, Tail<qbobj_PosixAcl_t> &tail)
{
    const Acl acl(acl_get_file(path, acl_type));
    acl_entry_t entry = nullptr;
    for (int found = acl_get_entry(acl.get(), ACL_FIRST_ENTRY, &entry); found == 1;
         found = acl_get_entry(acl.get(), ACL_NEXT_ENTRY, &entry)) {
        qbobj_PosixAcl_t &record = tail.append();
        acl_tag_t tag = ACL_UNDEFINED_TAG;
        acl_permset_t permissions = nullptr;
        acl_get_tag_type(entry, &tag);
        acl_get_permset(entry, &permissions);
        const auto bit = [permissions](acl_perm_t permission, int value) {
            return acl_get_perm(permissions, permission) == 1 ? value : 0;
        };
        record.Type = type;
        record.Tag = tag;
        record.Perm = bit(ACL_READ, 4) + bit(ACL_WRITE, 2) + bit(ACL_EXECUTE, 1);
        record.Id = -1;
    }
}

void append_mode(int mode, Tail<qbobj_PosixAcl_t> &tail)
{
    constexpr std::pair<acl_tag_t, int> entries[]{{ACL_USER_OBJ, 6}, {ACL_GROUP_OBJ, 3}, {ACL_OTHER, 0}};
    for (const auto &[tag, shift] : entries) {
        qbobj_PosixAcl_t &record = tail.append();
        record.Tag = tag;
        record.Perm = mode >> shift & 7;
        record.Id = -1;
    }
}

// Whether the folder has a list beyond its mode.
bool is_kept(const char *path, const char *attribute)
{
    return ::getxattr(path, attribute, nullptr, 0) >= 0 || errno != ENODATA;
}

} // namespace

template <class Lookup>
std::string ShareReader<Lookup>::shares(const char *condition)
{
    return std::string(R"(SELECT S.id,S.name,S.comment,S.path,S.volume_id,ZS.used/1048576,
    ZS.usedbydataset/1048576,ZS.compressratio,
    ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,
    S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),
    STRFTIME('%%s',S.update_ts),
    (SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),
    ZA.bit_rot_protection
    FROM share S LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id
    LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE )") +
           condition + " ORDER BY S.name COLLATE NOCASE";
}

template <class Lookup>
ShareRows ShareReader<Lookup>::quotas(const std::string &account, const std::string &name)
{
    return {"Q." + account + "_id,S.zfs_name,Q.mb_hard,QS.mb_used,A." + name,
            account + "_quota Q CROSS JOIN share S ON S.id=Q.share_id LEFT JOIN _" + account +
                "_quota_stat QS ON QS.share_id=Q.share_id AND QS." + account + "_id=Q." + account +
                "_id LEFT JOIN `$" + account + "` A ON A.id=Q." + account + "_id",
            "Q.share_id"};
}

template <class Lookup>
ShareRows ShareReader<Lookup>::accounts(const std::string &account, const std::string &name)
{
    return {"A.id,A." + name +
                ",CASE WHEN L.write THEN 'ReadWrite' WHEN L.read THEN 'ReadOnly' ELSE 'Disabled' END",
            account + "_acl L CROSS JOIN `$" + account + "` A ON A.id=L." + account + "_id",
            "L.share_id",
            "L.proto",
            "A.rid IS NULL",
            "A." + name + " COLLATE NOCASE"};
}

template <class Lookup>
void ShareReader<Lookup>::read_settings()
{
    if (auto row = ftp_mode_(); row.next())
        row >> ftp_anonymous_;
    finish(directory_mode_()); // a measured appliance is in no directory
    owner_ = {};
    group_ = {};
}

template <class Lookup>
void ShareReader<Lookup>::read_all(qbobj_ShareCollection_t &collection, bool with_folders)
{
    transactions_.run([&] {
        read_settings();
        std::vector<std::pair<int, qbobj_Share_t *>> shares;
        Tail<qbobj_Share_t> tail(pool(), collection.Share);
        for (auto row = all_(); row.next();) {
            qbobj_Share_t &share = tail.append();
            shares.emplace_back(read_row(row, share), &share);
        }
        std::ranges::sort(shares);
        for (const auto &[share_id, share] : shares) {
            if (with_folders)
                read_folder(*share);
            complete(share_id, *share);
        }
    });
}

template <class Lookup>
void ShareReader<Lookup>::read_named(const char *name, qbobj_Share_t &share)
{
    transactions_.run([&] {
        int share_id = 0;
        if (auto row = id_of_name_(name); row.next())
            row >> share_id;
        read_settings();
        if (auto row = one_(share_id); row.next())
            read_row(row, share);
        read_folder(share);
        complete(share_id, share);
    });
}

template <class Lookup>
int ShareReader<Lookup>::id_of(const char *name)
{
    int share_id = -1;
    transactions_.run([&] {
        if (auto row = id_of_name_(name); row.next())
            row >> share_id;
    });
    return share_id;
}

template <class Lookup>
int ShareReader<Lookup>::read_row(Row &row, qbobj_Share_t &share)
{
    int share_id = 0;
    row >> share_id >> share.ShareName >> OrEmpty{share.Comment} >> share.Path >> OrEmpty{share.VolumeId} >>
        share.UsedMB >> share.UsedByDatasetMB >> share.CompressRatio >> share.QuotaMB >> share.ReserveMB >>
        share.RefQuotaMB >> share.RefReserveMB >> share.Compression >> share.Dedup >> share.ShareType >>
        share.ShareId >> share.MigrateToVolumeId >> share.LogBias >> share.Origin >>
        OrEmpty{share.VisibleSnapFolder} >> share.Sync >> share.UpdateTS >> share.CloneOf >>
        share.BitRotProtection;
    share.VisibleSnapshot = *share.VisibleSnapFolder != '\0' ? 1 : 0;
    share.ZfsName = apr_pstrdup(pool(), share.ShareId);
    share.resource_id = share.ShareId;
    return share_id;
}

template <class Lookup>
void ShareReader<Lookup>::complete(int share_id, qbobj_Share_t &share)
{
    read_schedule(share_id, share);
    // The protocols with access lists in the order of their words, which is that of a scan.
    read_afp(share_id, share);
    read_cifs(share_id, share);
    read_ftp(share_id, share);
    read_http(share_id, share);
    read_nfs(share_id, share);
    read_rsync(share_id, share);
    read_media(share_id, share);
    read_zvol(share_id, share);
    read_snapshots(share_id, share);
    read_use(share_id, share);
    read_quotas(user_quotas_, share_id, share.UserQuota);
    read_quotas(group_quotas_, share_id, share.GroupQuota);
}

/* ---- The folder ---------------------------------------------------------------------------------------- */

template <class Lookup>
void ShareReader<Lookup>::read_folder(qbobj_Share_t &share)
{
    qbobj_FileStat_t &stat = *(share.Stat = create<qbobj_FileStat_t>(pool()));
    const char *const path = apr_pstrcat(pool(), connection_.qbdb->root, share.Path, nullptr);
    struct stat status {
    };
    if (::stat(path, &status) != 0)
        return;
    stat._PosixMode = static_cast<int>(status.st_mode);
    stat.NonOwnerDelete = (status.st_mode & S_ISVTX) == 0 ? 1 : 0;
    stat.UserAccess = access_word(stat._PosixMode >> 6);
    stat.GroupAccess = access_word(stat._PosixMode >> 3);
    stat.EveryoneAccess = access_word(stat._PosixMode);
    read_owners(stat, static_cast<int>(status.st_uid), static_cast<int>(status.st_gid));

    Tail<qbobj_PosixAcl_t> tail(pool(), stat.Acls);
    if (is_kept(path, "system.posix_acl_access"))
        append_acl(path, ACL_TYPE_ACCESS, 0, tail);
    else
        append_mode(stat._PosixMode, tail);
    if (is_kept(path, "system.posix_acl_default"))
        append_acl(path, ACL_TYPE_DEFAULT, 1, tail);
}

template <class Lookup>
void ShareReader<Lookup>::read_owners(qbobj_FileStat_t &stat, int uid, int gid)
{
    if (owner_.UserName == nullptr || owner_.UserId != uid) {
        owner_.resource_id = owner_.UserId = uid;
        owner_.UserName = apr_psprintf(pool(), "%d", uid);
        if (auto row = user_name_(uid, 0, -uid); row.next())
            row >> owner_.UserName;
    }
    if (group_.GroupName == nullptr || group_.GroupId != gid) {
        group_.resource_id = group_.GroupId = gid;
        group_.GroupName = apr_psprintf(pool(), "%d", gid);
        if (auto row = group_name_(gid, 0, -gid); row.next())
            row >> group_.GroupName;
    }
    *(stat.User = create<qbobj_SystemUser_t>(pool())) = owner_;
    *(stat.Group = create<qbobj_SystemGroup_t>(pool())) = group_;
}

/* ---- Schedule, markers, quotas ------------------------------------------------------------------------- */

template <class Lookup>
void ShareReader<Lookup>::read_schedule(int share_id, qbobj_Share_t &share)
{
    auto row = schedule_(share_id);
    if (!row.next())
        return;
    qbobj_Schedule_t &schedule = *(share.SnapshotSchedule = create<qbobj_Schedule_t>(pool()));
    row >> schedule.Enabled >> schedule.Minute >> schedule.Hour >> schedule.DayOfMonth >>
        schedule.DayOfWeek >> schedule.Month >> schedule.LastTaken >> schedule.PurgeManualSnapshot >>
        schedule.LastDailyTaken >> schedule.LastWeeklyTaken;
}

template <class Lookup>
void ShareReader<Lookup>::read_snapshots(int share_id, qbobj_Share_t &share)
{
    constexpr int continuous = 1;
    for (auto row = snapshots_(share_id); row.next();) {
        int type = 0;
        int created_on = 0;
        row >> type >> created_on;
        if (share.NrContinuousSnapshots + share.NrManualSnapshots == 0)
            share.FirstSnapshotCreatedOn = share.LastSnapshotCreatedOn = created_on;
        ++(type == continuous ? share.NrContinuousSnapshots : share.NrManualSnapshots);
        share.FirstSnapshotCreatedOn = std::min(share.FirstSnapshotCreatedOn, created_on);
        share.LastSnapshotCreatedOn = std::max(share.LastSnapshotCreatedOn, created_on);
    }
}

template <class Lookup>
void ShareReader<Lookup>::read_use(int share_id, qbobj_Share_t &share)
{
    for (auto row = processes_(share_id); row.next();) {
        int blocking = 0;
        row >> blocking;
        share.Busy = std::max(share.Busy, blocking + 1);
    }
    Tail<qbobj_UsedBy_t> markers(pool(), share.UsedBy);
    for (auto row = used_by_(share_id); row.next();) {
        qbobj_UsedBy_t &marker = markers.append();
        row >> marker.AppName >> marker.AppData;
    }
    Tail<qbobj_SnapshotClone_t> clones(pool(), share.SnapshotClones);
    for (auto row = clones_(share_id); row.next();) {
        qbobj_SnapshotClone_t &clone = clones.append();
        row >> clone.resource_id >> clone.ClonedShareName >> clone.ParentSnapshotName >>
            clone.ParentShareName;
    }
}

template <class Lookup>
void ShareReader<Lookup>::read_quotas(Lookup &quotas, int share_id, qbobj_Quota_t *&list)
{
    Tail<qbobj_Quota_t> tail(pool(), list);
    for (auto row = quotas(share_id); row.next();) {
        qbobj_Quota_t &quota = tail.append();
        row >> quota.AccountId >> quota.ShareId >> quota.HardMB >> quota.UsedMB >> quota.AccountName;
    }
}

/* ---- Access lists -------------------------------------------------------------------------------------- */

template <class Lookup>
template <class Option>
void ShareReader<Lookup>::read_hosts(int share_id, const char *proto, Option &option)
{
    Tail<qbobj_HostAcl_t> tail(pool(), option.HostAcl);
    for (auto row = hosts_(share_id, proto); row.next();) {
        qbobj_HostAcl_t &entry = tail.append();
        entry.Host = create<qbobj_Host_t>(pool());
        row >> entry.Host->HostId >> entry.Host->HostName >> entry.Access >> entry.Root;
        entry.Host->resource_id = entry.Host->HostId;
    }
}

template <class Lookup>
template <class Option>
void ShareReader<Lookup>::read_accounts(int share_id, const char *proto, Option &option)
{
    Tail<qbobj_UserAcl_t> users(pool(), option.UserAcl);
    for (auto row = users_(share_id, proto); row.next();) {
        qbobj_UserAcl_t &entry = users.append();
        entry.User = create<qbobj_SystemUser_t>(pool());
        row >> entry.User->UserId >> entry.User->UserName >> entry.Access;
        entry.User->resource_id = entry.User->UserId;
    }
    Tail<qbobj_GroupAcl_t> groups(pool(), option.GroupAcl);
    for (auto row = groups_(share_id, proto); row.next();) {
        qbobj_GroupAcl_t &entry = groups.append();
        entry.Group = create<qbobj_SystemGroup_t>(pool());
        row >> entry.Group->GroupId >> entry.Group->GroupName >> entry.Access;
        entry.Group->resource_id = entry.Group->GroupId;
    }
}

/* ---- Options ------------------------------------------------------------------------------------------- */

template <class Lookup>
void ShareReader<Lookup>::read_cifs(int share_id, qbobj_Share_t &share)
{
    {
        auto row = cifs_(share_id);
        if (!row.next())
            return;
        qbobj_CifsShareOption_t &option = *(share.Cifs = create<qbobj_CifsShareOption_t>(pool()));
        row >> option.DefaultAccess >> option.AllowGuestAccess >> option.ShareDisplayOption >>
            option.EnableRecycleBin >> option.RecycleAgeLimit >> option.RecycleSizeLimit >>
            option.NewFileFolderPermAutoset >> option.AclChangeRestrictionToggle >>
            option.FileCreateGroupRights >> option.FileCreateEveryoneRights >>
            option.FolderCreateGroupRights >> option.FolderCreateEveryoneRights >> option.EnableOplocks >>
            option.NotAvailable >> option.EnableDFS;
    }
    read_hosts(share_id, "cifs", *share.Cifs);
    read_accounts(share_id, "cifs", *share.Cifs);
    Tail<qbobj_DfolderAcl_t> links(pool(), share.Cifs->DfolderAcl);
    for (auto row = dfs_links_(share_id); row.next();) {
        qbobj_DfolderAcl_t &link = links.append();
        row >> link.Name >> link.Address >> link.RemoteShare;
    }
}

template <class Lookup>
void ShareReader<Lookup>::read_afp(int share_id, qbobj_Share_t &share)
{
    {
        auto row = afp_(share_id);
        if (!row.next())
            return;
        qbobj_AfpShareOption_t &option = *(share.Afp = create<qbobj_AfpShareOption_t>(pool()));
        int file_mode = 0;
        int folder_mode = 0;
        row >> option.DefaultAccess >> option.AllowGuestAccess >> option.NotAvailable >>
            option.NewFileFolderPermAutoset >> file_mode >> folder_mode;
        option.FileCreateGroupRights = access_word(file_mode >> 3);
        option.FileCreateEveryoneRights = access_word(file_mode);
        option.FolderCreateGroupRights = access_word(folder_mode >> 3);
        option.FolderCreateEveryoneRights = access_word(folder_mode);
    }
    read_hosts(share_id, "afp", *share.Afp);
    read_accounts(share_id, "afp", *share.Afp);
}

template <class Lookup>
void ShareReader<Lookup>::read_nfs(int share_id, qbobj_Share_t &share)
{
    {
        auto row = nfs_(share_id);
        if (!row.next())
            return;
        share.Nfs = create<qbobj_NfsShareOption_t>(pool());
        row >> share.Nfs->DefaultAccess >> share.Nfs->NotAvailable >> share.Nfs->Sync;
    }
    read_hosts(share_id, "nfs", *share.Nfs);
}

template <class Lookup>
void ShareReader<Lookup>::read_ftp(int share_id, qbobj_Share_t &share)
{
    {
        auto row = ftp_(share_id);
        if (!row.next())
            return;
        qbobj_FtpShareOption_t &option = *(share.Ftp = create<qbobj_FtpShareOption_t>(pool()));
        int file_mask = 0;
        int folder_mask = 0;
        row >> option.DefaultAccess >> option.NewFileFolderPermAutoset >> option.NotAvailable >> file_mask >>
            folder_mask;
        if (option.NewFileFolderPermAutoset != 0) {
            option.FileCreateGroupRights = umask_word(file_mask >> 3);
            option.FileCreateEveryoneRights = umask_word(file_mask);
            option.FolderCreateGroupRights = umask_word(folder_mask >> 3);
            option.FolderCreateEveryoneRights = umask_word(folder_mask);
        }
    }
    read_hosts(share_id, "ftp", *share.Ftp);
    if (ftp_anonymous_ == 0)
        read_accounts(share_id, "ftp", *share.Ftp);
}

template <class Lookup>
void ShareReader<Lookup>::read_media(int share_id, qbobj_Share_t &share)
{
    static constexpr std::array media_words{"",       "Audio",        "Video",        "Video,Audio",
                                            "Images", "Images,Audio", "Images,Video", "All"};
    if (auto row = dlna_(share_id); row.next()) {
        int media_type = 0;
        share.Dlna = create<qbobj_DlnaShareOption_t>(pool());
        row >> share.Dlna->DefaultAccess >> share.Dlna->NotAvailable >> media_type;
        share.Dlna->MediaType = media_words[static_cast<std::size_t>(media_type) % media_words.size()];
    }
    if (auto row = daap_(share_id); row.next()) {
        share.Daap = create<qbobj_DaapShareOption_t>(pool());
        row >> share.Daap->NotAvailable;
    }
}

template <class Lookup>
void ShareReader<Lookup>::read_rsync(int share_id, qbobj_Share_t &share)
{
    {
        auto row = rsync_(share_id);
        if (!row.next())
            return;
        share.Rsync = create<qbobj_RsyncShareOption_t>(pool());
        row >> share.Rsync->DefaultAccess >> share.Rsync->PasswordProtection >> share.Rsync->NotAvailable;
    }
    read_hosts(share_id, "rsync", *share.Rsync);
    Tail<qbobj_UserPasswordAcl_t> logins(pool(), share.Rsync->UserPasswordAcl);
    for (auto row = logins_(share_id); row.next();) {
        qbobj_UserPasswordAcl_t &login = logins.append();
        row >> login.UserName >> login.Password;
    }
}

template <class Lookup>
void ShareReader<Lookup>::read_http(int share_id, qbobj_Share_t &share)
{
    {
        auto row = http_(share_id);
        if (!row.next())
            return;
        share.Http = create<qbobj_HttpShareOption_t>(pool());
        row >> share.Http->DefaultAccess >> share.Http->NotAvailable >> share.Http->EnableWebDav;
    }
    read_hosts(share_id, "http", *share.Http);
    read_accounts(share_id, "http", *share.Http);
}

template <class Lookup>
void ShareReader<Lookup>::read_zvol(int share_id, qbobj_Share_t &share)
{
    auto row = zvol_(share_id);
    if (!row.next())
        return;
    share.Zvol = create<qbobj_ZvolShareOption_t>(pool());
    row >> share.Zvol->SizeKB >> share.Zvol->IsSparse >> share.Zvol->ZfsName;
}

template class ShareReader<EachShare>;
template class ShareReader<InOneScan>;

} // namespace qbobj_bench
