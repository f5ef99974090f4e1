// Shares changed: of each only what the caller's record carries. The protocols' options stand in
// qbobj_api2_modify_share.protocols.cpp.
#include "core/set_list.h"
#include "share/share_writing.h"

#include <qbobj/storage.h>

#include <strings.h>

namespace qbobj
{

namespace
{

using Share = qbobj_Share_t;
using Stat = qbobj_FileStat_t;
using Schedule = qbobj_Schedule_t;
using Pairs = SetList<512>;

// The share as it is stored before the change.
struct StoredShare {
    const char *name;
    const char *path;
    const char *zfs_name;
    int visible_snapshot;
};

constexpr auto stored_share =
    select<int>("SELECT S.name,S.path,S.zfs_name,IFNULL(S.visible_snapdir,'')<>'' FROM share S WHERE S.id=%d",
                "Failed DB Query for 'SELECT share'. %s", or_empty(&StoredShare::name),
                or_empty(&StoredShare::path), &StoredShare::zfs_name, &StoredShare::visible_snapshot);

struct Change {
    Call &call;
    Share &share;
    int32_t share_id = 0;
    StoredShare stored{};
    // What a rename makes of the share; null without one.
    const char *new_path = nullptr;
    const char *new_zfs_name = nullptr;

    const char *zfs_name() const { return new_zfs_name != nullptr ? new_zfs_name : stored.zfs_name; }
};

int read_stored(Change &change)
{
    const char *dataset = change.share.resource_id;
    if (qbobj_validate_db_zfsname(change.call, dataset, nullptr, &change.share_id) != 0)
        return raise(change.call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).", dataset);
    return change.call.require(stored_share,
                               error(QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).", dataset),
                               change.stored, change.share_id);
}

/* ---- The share's row ----------------------------------------------------------------------------------- */

int check_rename(const Change &change)
{
    Call &call = change.call;
    const char *name = change.share.ShareName;
    if (const int rc = check_share_name(call, name))
        return rc;
    int existing = 0;
    if (qbobj_validate_db_sharename(call, name, nullptr, &existing) == 0 && existing != change.share_id)
        return raise(call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                     "Cannot rename to the name which already exist.");
    if (qbobj_validate_protected_sharename(change.stored.name) == 0 ||
        qbobj_validate_protected_sharename(name) == 0)
        return raise(call, QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME, "Cannot rename to/from reserved share name");
    return 0;
}

// Another spelling of the same letters is no rename.
int collect_rename(Change &change, Pairs &set)
{
    const char *name = change.share.ShareName;
    if (name == nullptr || strcasecmp(name, change.stored.name) == 0)
        return 0;
    if (const int rc = check_rename(change))
        return rc;
    if (const int rc = change.call.text("Failed DB Query for 'SELECT share'. %s", change.new_path,
                                        "SELECT '/'||V.lv_name||'/'||%Q FROM share S LEFT JOIN _volume V ON "
                                        "V.id=S.volume_id WHERE S.id=%d",
                                        name, change.share_id))
        return rc;
    if (change.new_path == nullptr)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "The volume of share '%s' does not exist.",
                     change.stored.name);
    change.new_zfs_name = change.new_path + 1;
    set.add("name=%Q", name);
    set.add("zfs_name=%Q", change.new_zfs_name);
    set.add("path=%Q", change.new_path);
    return 0;
}

// The system's id of an owner that is given by an id or by a name.
template <class Account>
int find_owner(Call &call, const Account &owner, const Message<const char *> &unknown,
               const Message<int, const char *> &invalid, int &id)
{
    using Kind = AccountKind<Account>;
    const Directory &directory = call.directory();
    const char *name = owner.*Kind::name;
    id = owner.resource_id != 0 ? owner.resource_id : owner.*Kind::id;
    if (id == 0 && !is_empty(name)) {
        id = directory.no_sync ? Kind::id_in_directory(call.qbdb(), name, directory.ads)
                               : Kind::posix_id_of_name(call, name);
        return id < 0 ? raise(call, QBOBJ_ERROR_API_ARGS, unknown, name) : 0;
    }
    // Only directory accounts have negative ids.
    const bool is_account = id > 0 || (id < 0 && directory.ads);
    id = is_account ? Kind::posix_id_of_id(call, id) : -1;
    return id < 0 ? raise(call, QBOBJ_ERROR_API_ARGS, invalid, owner.resource_id, name) : 0;
}

int collect_owners(Call &call, const Stat &stat, Pairs &set)
{
    int id = 0;
    if (stat.User != nullptr) {
        if (const int rc = find_owner(call, *stat.User, "Unknown User (%s).",
                                      "Invalid stat->User (resource_id=%d, UserName=%s).", id))
            return rc;
        set.add("user_id=%d", id);
    }
    if (stat.Group != nullptr) {
        if (const int rc = find_owner(call, *stat.Group, "Unknown Group (%s).",
                                      "Invalid stat->Group (resource_id=%d, GroupName=%s).", id))
            return rc;
        set.add("group_id=%d", id);
    }
    return 0;
}

// An access word that changes its column when it is given.
struct AccessChange {
    const char *Stat::*member;
    const char *field;
    Statement<int> pair;
};

constexpr AccessChange access_changes[] = {
    {&Stat::UserAccess, "Stat->UserAccess", "user_access=%d"},
    {&Stat::GroupAccess, "Stat->GroupAccess", "group_access=%d"},
    {&Stat::EveryoneAccess, "Stat->EveryoneAccess", "everyone_access=%d"},
};

int collect_stat(Call &call, const Stat &stat, Pairs &set)
{
    if (const int rc = collect_owners(call, stat, set))
        return rc;
    for (const auto &[member, field, pair] : access_changes) {
        if (stat.*member == nullptr)
            continue;
        int bits = 0;
        if (const int rc = read_right(call, qbobj_validate_rights, field, stat.*member, 1, bits))
            return rc;
        set.add(pair, bits);
    }
    static constexpr std::tuple changes{
        change<&Stat::_void_NonOwnerDelete, &Stat::NonOwnerDelete>("non_owner_delete=%d")};
    set.add_given(stat, changes);
    return 0;
}

int modify_row(Change &change)
{
    const Share &share = change.share;
    Pairs set(change.call, Overflow::drop);
    if (const int rc = collect_rename(change, set))
        return rc;
    if (share.Comment != nullptr)
        set.add("comment=%Q", share.Comment);
    if (share.VisibleSnapFolder != nullptr)
        set.add("visible_snapdir=%Q", share.VisibleSnapshot != 0 ? share.VisibleSnapFolder : nullptr);
    if (share.Stat != nullptr)
        if (const int rc = collect_stat(change.call, *share.Stat, set))
            return rc;
    if (set.empty())
        return 0;
    return change.call.exec_unique(
        {QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, "Sharename specified is already exist."},
        "Failed DB Query for 'UPDATE share'. %s", "UPDATE share SET %s WHERE id=%d", set.text(),
        change.share_id);
}

// The tables that know a share by its name, and by which one: the dataset's or the share's.
struct Follower {
    const char *table;
    bool by_dataset;
    Statement<const char *, const char *> update;
};

constexpr Follower followers[] = {
    {"$snapshot", true, "UPDATE `$snapshot` SET zfs_name=%Q WHERE zfs_name=%Q"},
    {"$snapshot_clones", false, "UPDATE `$snapshot_clones` SET parent_zfs_name=%Q WHERE parent_zfs_name=%Q"},
    {"$snapshot_clones", false, "UPDATE `$snapshot_clones` SET cloned_zfs_name=%Q WHERE cloned_zfs_name=%Q"},
    {"backup", false, "UPDATE `backup` SET src_share_proto=%Q WHERE src_type='share' AND src_share_proto=%Q"},
    {"backup", false, "UPDATE `backup` SET dst_share_proto=%Q WHERE dst_type='share' AND dst_share_proto=%Q"},
};

int follow_rename(const Change &change)
{
    if (change.new_path == nullptr)
        return 0;
    for (const Follower &follower : followers) {
        const char *now = follower.by_dataset ? change.new_zfs_name : change.share.ShareName;
        const char *before = follower.by_dataset ? change.stored.zfs_name : change.stored.name;
        if (const int rc = change.call.exec({"Failed DB Query for 'UPDATE %s'. %s", follower.table},
                                            follower.update, now, before))
            return rc;
    }
    return change.call.exec("Failed DB Query for 'UPDATE $application_on_share'. %s",
                            "UPDATE `$application_on_share` SET zfs_name="
                            "(SELECT S.zfs_name FROM share S WHERE S.id=%d) WHERE zfs_name=%Q",
                            change.share_id, change.stored.zfs_name);
}

/* ---- Storage attributes -------------------------------------------------------------------------------- */

// A limit below what is used or above what is free is refused; 0 is no limit.
int check_refquota(const Change &change)
{
    const uint64_t limit_mb = change.share.RefQuotaMB;
    if (change.share._void_RefQuotaMB != 0 || limit_mb == 0)
        return 0;
    const char *free_kb = nullptr;
    if (const int rc = change.call.text(
            "Failed DB Query for 'SELECT share'. %s", free_kb,
            "SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=S.volume_id WHERE S.zfs_name=%Q",
            change.zfs_name()))
        return rc;
    const char *used = nullptr;
    if (const int rc = change.call.text(
            "Failed DB Query for 'SELECT _zfs_stat'. %s", used,
            "SELECT Z.used FROM _zfs_stat Z LEFT JOIN share S ON Z.share_id=S.id WHERE S.zfs_name=%Q",
            change.zfs_name()))
        return rc;
    const bool below_used = used != nullptr && to_uint64(used) >> 20 > limit_mb;
    if (below_used || to_uint64(free_kb) >> 10 < limit_mb)
        return raise(change.call, QBOBJ_ERROR_API_ARGS,
                     "Invalid quota value. Need to be larger than Consumed Space and less than Free Space.");
    return 0;
}

constexpr std::tuple attribute_changes{
    change<&Share::_void_QuotaMB, &Share::QuotaMB>("mb_quota=%llu"),
    change<&Share::_void_ReserveMB, &Share::ReserveMB>("mb_reservation=%llu"),
    change<&Share::_void_RefQuotaMB, &Share::RefQuotaMB>("mb_refquota=%llu"),
    change<&Share::_void_RefReserveMB, &Share::RefReserveMB>("mb_refreservation=%llu"),
    change<&Share::_void_Compression, &Share::Compression>("compression=%d"),
    change<&Share::_void_BitRotProtection, &Share::BitRotProtection>("bit_rot_protection=%d"),
    change<&Share::_void_Dedup, &Share::Dedup>("dedup=%d"),
    change<&Share::LogBias>("logbias=%Q"),
    change<&Share::Sync>("sync=%Q"),
};

int modify_attributes(const Change &change)
{
    if (change.share.Sync != nullptr)
        if (const int rc = check_sync(change.call, change.share.Sync))
            return rc;
    if (const int rc = check_refquota(change))
        return rc;
    Pairs set(change.call, Overflow::drop);
    set.add_given(change.share, attribute_changes);
    if (set.empty())
        return 0;
    return change.call.exec("Failed DB Query for 'UPDATE zfs_attr'. %s",
                            "UPDATE zfs_attr SET %s WHERE share_id=%d", set.text(), change.share_id);
}

/* ---- Block volume, schedule, quotas -------------------------------------------------------------------- */

int modify_zvol(const Change &change)
{
    const qbobj_ZvolShareOption_t *zvol = change.share.Zvol;
    if (zvol == nullptr)
        return 0;
    return change.call.exec(
        "Failed DB Query for zvol share_option. %s",
        "INSERT OR REPLACE INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(%d,%llu,%d)",
        change.share_id, zvol->SizeKB, zvol->IsSparse);
}

constexpr std::tuple schedule_changes{
    change<&Schedule::Minute>("minute=%Q"),
    change<&Schedule::Hour>("hour=%Q"),
    change<&Schedule::DayOfMonth>("day_of_month=%Q"),
    change<&Schedule::DayOfWeek>("day_of_week=%Q"),
    change<&Schedule::Month>("month=%Q"),
};

int modify_schedule(const Change &change)
{
    const Schedule *schedule = change.share.SnapshotSchedule;
    if (schedule == nullptr)
        return 0;
    if (const int rc = change.call.exec(
            "Failed DB Query for 'INSERT snapshot_schedule'. %s",
            R"(INSERT OR IGNORE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,
            last_taken,purge_manual_snapshot,last_daily_taken, last_weekly_taken)
            VALUES(%d,1,'0','*','*','*','*',0,1,0,0))",
            change.share_id))
        return rc;
    Pairs set(change.call, Overflow::drop);
    set.add("enabled=%d", schedule->Enabled);
    set.add_given(*schedule, schedule_changes);
    set.add("last_taken=%d", schedule->LastTaken);
    set.add("purge_manual_snapshot=%d", schedule->PurgeManualSnapshot);
    set.add("last_daily_taken=%d", schedule->LastDailyTaken);
    set.add("last_weekly_taken=%d", schedule->LastWeeklyTaken);
    return change.call.exec("Failed DB Query for 'UPDATE snapstho_schedule'. %s",
                            "UPDATE snapshot_schedule SET %s WHERE share_id=%d", set.text(), change.share_id);
}

// `kind` is "user" or "group". The soft limit is the account default's share of the hard one.
int modify_quotas(const Change &change, qbobj_Quota_t *quotas, const char *kind)
{
    for (const qbobj_Quota_t &quota : Chain(quotas))
        if (const int rc = change.call.exec(
                {"Failed DB Query for 'INSERT %s_quota'. %s", kind},
                "INSERT OR REPLACE INTO %s_quota (%s_id,share_id,mb_soft,mb_hard) VALUES(%d,%d,%llu*"
                "(SELECT diskquota_warn FROM account_default LIMIT 1)/100,%llu)",
                kind, kind, quota.AccountId, change.share_id, quota.HardMB, quota.HardMB))
            return rc;
    return 0;
}

/* ---- One share ----------------------------------------------------------------------------------------- */

int modify_what_hangs_on(const Change &change)
{
    Share &share = change.share;
    if (const int rc = modify_attributes(change))
        return rc;
    if (const int rc = modify_protocols(change.call, share, change.share_id))
        return rc;
    if (const int rc = modify_zvol(change))
        return rc;
    if (share.UsedBy != nullptr)
        if (const int rc = x_qbobj_modifyShareUsedBy(change.call, share.UsedBy, nullptr, change.share_id))
            return rc;
    if (const int rc = modify_schedule(change))
        return rc;
    if (const int rc = modify_quotas(change, share.UserQuota, "user"))
        return rc;
    return modify_quotas(change, share.GroupQuota, "group");
}

int modify_share(Change &change)
{
    if (const int rc = read_stored(change))
        return rc;
    if (const int rc = modify_row(change))
        return rc;
    if (const int rc = follow_rename(change))
        return rc;
    if (const int rc = modify_what_hangs_on(change))
        return rc;
    change.share.OldShareName = change.stored.name;
    change.share.OldPath = change.stored.path;
    change.share.OldVisibleSnapshot = change.stored.visible_snapshot;
    if (change.new_path != nullptr)
        change.share.Path = change.new_path;
    return 0;
}

// What callers that change a whole list get to know beyond their own input.
int read_back(const Change &change)
{
    static constexpr Failure failed = "Failed DB Query for 'SELECT share'. %s";
    Share &share = change.share;
    if (share.Path == nullptr) {
        if (const int rc = change.call.text(failed, share.Path, "SELECT S.path FROM share S WHERE S.id=%d",
                                            change.share_id))
            return rc;
        share.Path = or_empty(share.Path);
    }
    if (share.Stat == nullptr)
        return 0;
    return change.call.number(failed, share.Stat->_PosixMode,
                              "SELECT (S.non_owner_delete << 9)|(S.user_access << 6)|"
                              "(S.group_access << 3)|(S.everyone_access << 0) FROM share S WHERE S.id=%d",
                              change.share_id);
}

} // namespace

int x_qbobj_modifyShare(Call &call, qbobj_Share_t *share, int modifyOneShare)
{
    for (Share &next : Chain(share)) {
        Change change{call, next};
        if (const int rc = modify_share(change))
            return rc;
        if (modifyOneShare != 0)
            break;
        if (const int rc = read_back(change))
            return rc;
    }
    return 0;
}

int x_qbobj_modifyShareVisibleSnapFolder(Call &call, const char *ZfsName, const char *VisibleSnapFolder)
{
    return call.exec("Failed DB Query for 'UPDATE share'. %s",
                     "UPDATE share SET visible_snapdir=%Q WHERE zfs_name=%Q", VisibleSnapFolder, ZfsName);
}

int x_qbobj_modifyZvol(Call &call, const char *ZfsName, const char *ShareName, const char *Comment,
                       uint64_t SizeKB, int IsSparse)
{
    if (const int rc = call.exec("Failed DB Query for 'UPDATE zfs_share_option'. %s",
                                 "UPDATE zvol_share_option SET kb_size=%llu,is_sparse=%d WHERE share_id="
                                 "(SELECT id FROM share S WHERE S.zfs_name=%Q)",
                                 SizeKB, IsSparse, ZfsName))
        return rc;
    return call.exec("Failed DB Query for 'UPDATE share'. %s",
                     "UPDATE share SET name=%Q,comment=%Q,path='/'||%Q WHERE zfs_name=%Q", ShareName, Comment,
                     ZfsName, ZfsName);
}

} // namespace qbobj
