// Shares changed: of each only what the caller's record carries. The protocols' options stand in
// qbobj_api2_modify_share.protocols.cpp.
#include "core/call.h"
#include "core/set_list.h"
#include "share/share_writing.h"

#include <qbobj/storage.h>

#include <strings.h>

namespace qbobj
{

namespace
{

using Pairs = SetList<512>;

// The share as it is stored before the change.
struct StoredShare {
    const char *name;
    const char *path;
    const char *zfs_name;
    int visible_snapshot;
};

constexpr auto stored_columns = std::tuple{&StoredShare::name, &StoredShare::path, &StoredShare::zfs_name,
                                           &StoredShare::visible_snapshot};

struct Change {
    Call &call;
    qbobj_Share_t &share;
    int32_t share_id = 0;
    StoredShare stored{};
    // What a rename makes of the share; null without one.
    const char *new_path = nullptr;
    const char *new_zfs_name = nullptr;

    const char *zfs_name() const { return new_zfs_name != nullptr ? new_zfs_name : stored.zfs_name; }
};

int read_stored(Change &change)
{
    if (qbobj_validate_db_zfsname(change.call, change.share.resource_id, nullptr, &change.share_id) != 0)
        return raise(change.call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).",
                     change.share.resource_id);
    const Table rows = change.call.table("SELECT S.name,S.path,S.zfs_name,IFNULL(S.visible_snapdir,'')<>'' "
                                         "FROM share S WHERE S.id=%d",
                                         change.share_id);
    if (!rows)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s",
                     rows.error());
    if (rows.empty())
        return raise(change.call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%s).",
                     change.share.resource_id);
    fill(change.call, change.stored, stored_columns, *rows.begin());
    return 0;
}

/* ---- The share's row ----------------------------------------------------------------------------------- */

int check_rename(const Change &change)
{
    const char *name = change.share.ShareName;
    if (const int rc = check_share_name(change.call, name))
        return rc;
    int existing = 0;
    if (qbobj_validate_db_sharename(change.call, name, nullptr, &existing) == 0 &&
        existing != change.share_id)
        return raise(change.call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                     "Cannot rename to the name which already exist.");
    if (qbobj_validate_protected_sharename(change.stored.name) == 0 ||
        qbobj_validate_protected_sharename(name) == 0)
        return raise(change.call, QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME,
                     "Cannot rename to/from reserved share name");
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
    const Text path =
        change.call.ask_text("SELECT '/'||V.lv_name||'/'||%Q FROM share S LEFT JOIN _volume V ON "
                             "V.id=S.volume_id WHERE S.id=%d",
                             name, change.share_id);
    if (!path)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s",
                     path.error());
    if (path.value == nullptr)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "The volume of share '%s' does not exist.",
                     change.stored.name);
    change.new_path = path.value;
    change.new_zfs_name = path.value + 1;
    set.add("name=%Q", name);
    set.add("zfs_name=%Q", change.new_zfs_name);
    set.add("path=%Q", change.new_path);
    return 0;
}

int find_owner(const Change &change, const qbobj_SystemUser_t &user, int &id)
{
    id = user.resource_id != 0 ? user.resource_id : user.UserId;
    if (id == 0 && !is_empty(user.UserName)) {
        id = change.call.directory().no_sync
                 ? qbdb_util_get_posix_uid_by_name(change.call.qbdb(), user.UserName,
                                                   change.call.directory().ads)
                 : x_qbobj_getPosixUID(change.call, user.UserName);
        if (id < 0)
            return raise(change.call, QBOBJ_ERROR_API_ARGS, "Unknown User (%s).", user.UserName);
        return 0;
    }
    // Only directory accounts have negative ids.
    const bool is_account = id > 0 || (id < 0 && change.call.directory().ads);
    id = is_account ? x_qbobj_getPosixUIDbyUID(change.call, id) : -1;
    if (id < 0)
        return raise(change.call, QBOBJ_ERROR_API_ARGS, "Invalid stat->User (resource_id=%d, UserName=%s).",
                     user.resource_id, user.UserName);
    return 0;
}

int find_owning_group(const Change &change, const qbobj_SystemGroup_t &group, int &id)
{
    id = group.resource_id != 0 ? group.resource_id : group.GroupId;
    if (id == 0 && !is_empty(group.GroupName)) {
        id = change.call.directory().no_sync
                 ? qbdb_util_get_posix_gid_by_name(change.call.qbdb(), group.GroupName,
                                                   change.call.directory().ads)
                 : x_qbobj_getPosixGID(change.call, group.GroupName);
        if (id < 0)
            return raise(change.call, QBOBJ_ERROR_API_ARGS, "Unknown Group (%s).", group.GroupName);
        return 0;
    }
    const bool is_group = id > 0 || (id < 0 && change.call.directory().ads);
    id = is_group ? x_qbobj_getPosixGIDbyGID(change.call, id) : -1;
    if (id < 0)
        return raise(change.call, QBOBJ_ERROR_API_ARGS, "Invalid stat->Group (resource_id=%d, GroupName=%s).",
                     group.resource_id, group.GroupName);
    return 0;
}

int add_right(const Change &change, Pairs &set, Statement<int> pair, const char *field, const char *word)
{
    if (word == nullptr)
        return 0;
    int bits = 0;
    if (const int rc = read_right(change.call, qbobj_validate_rights, field, word, 1, bits))
        return rc;
    set.add(pair, bits);
    return 0;
}

int collect_stat(const Change &change, Pairs &set)
{
    const qbobj_FileStat_t *stat = change.share.Stat;
    if (stat == nullptr)
        return 0;
    int id = 0;
    if (stat->User != nullptr) {
        if (const int rc = find_owner(change, *stat->User, id))
            return rc;
        set.add("user_id=%d", id);
    }
    if (stat->Group != nullptr) {
        if (const int rc = find_owning_group(change, *stat->Group, id))
            return rc;
        set.add("group_id=%d", id);
    }
    if (const int rc = add_right(change, set, "user_access=%d", "Stat->UserAccess", stat->UserAccess))
        return rc;
    if (const int rc = add_right(change, set, "group_access=%d", "Stat->GroupAccess", stat->GroupAccess))
        return rc;
    if (const int rc =
            add_right(change, set, "everyone_access=%d", "Stat->EveryoneAccess", stat->EveryoneAccess))
        return rc;
    if (stat->_void_NonOwnerDelete == 0)
        set.add("non_owner_delete=%d", stat->NonOwnerDelete);
    return 0;
}

int modify_row(Change &change)
{
    const qbobj_Share_t &share = change.share;
    Pairs set(change.call, Overflow::drop);
    if (const int rc = collect_rename(change, set))
        return rc;
    if (share.Comment != nullptr)
        set.add("comment=%Q", share.Comment);
    if (share.VisibleSnapFolder != nullptr)
        set.add("visible_snapdir=%Q", share.VisibleSnapshot != 0 ? share.VisibleSnapFolder : nullptr);
    if (const int rc = collect_stat(change, set))
        return rc;
    if (set.empty())
        return 0;
    const Status updated = change.call.run("UPDATE share SET %s WHERE id=%d", set.text(), change.share_id);
    if (updated.rc == constraint_violation)
        return raise(change.call, QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                     "Sharename specified is already exist.");
    if (!updated)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE share'. %s",
                     updated.error());
    return 0;
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
        const Status updated = change.call.run(follower.update, now, before);
        if (!updated)
            return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE %s'. %s",
                         follower.table, updated.error());
    }
    const Status updated = change.call.run("UPDATE `$application_on_share` SET zfs_name="
                                           "(SELECT S.zfs_name FROM share S WHERE S.id=%d) WHERE zfs_name=%Q",
                                           change.share_id, change.stored.zfs_name);
    if (!updated)
        return raise(change.call, QBOBJ_ERROR_DB_MISC,
                     "Failed DB Query for 'UPDATE $application_on_share'. %s", updated.error());
    return 0;
}

/* ---- Storage attributes -------------------------------------------------------------------------------- */

// A limit below what is used or above what is free is refused; 0 is no limit.
int check_refquota(const Change &change)
{
    const uint64_t limit_mb = change.share.RefQuotaMB;
    if (change.share._void_RefQuotaMB != 0 || limit_mb == 0)
        return 0;
    const Text free_kb =
        change.call.ask_text("SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=S.volume_id "
                             "WHERE S.zfs_name='%q'",
                             change.zfs_name());
    if (!free_kb)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s",
                     free_kb.error());
    const Text used =
        change.call.ask_text("SELECT Z.used FROM _zfs_stat Z LEFT JOIN share S ON Z.share_id=S.id "
                             "WHERE S.zfs_name='%q'",
                             change.zfs_name());
    if (!used)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT _zfs_stat'. %s",
                     used.error());
    const bool below_used = used.value != nullptr && to_uint64(used.value) >> 20 > limit_mb;
    if (below_used || to_uint64(free_kb.value) >> 10 < limit_mb)
        return raise(change.call, QBOBJ_ERROR_API_ARGS,
                     "Invalid quota value. Need to be larger than Consumed Space and less than Free Space.");
    return 0;
}

int modify_attributes(const Change &change)
{
    const qbobj_Share_t &share = change.share;
    Pairs set(change.call, Overflow::drop);
    if (share._void_QuotaMB == 0)
        set.add("mb_quota=%llu", share.QuotaMB);
    if (share._void_ReserveMB == 0)
        set.add("mb_reservation=%llu", share.ReserveMB);
    if (const int rc = check_refquota(change))
        return rc;
    if (share._void_RefQuotaMB == 0)
        set.add("mb_refquota=%llu", share.RefQuotaMB);
    if (share._void_RefReserveMB == 0)
        set.add("mb_refreservation=%llu", share.RefReserveMB);
    if (share._void_Compression == 0)
        set.add("compression=%d", share.Compression);
    if (share._void_BitRotProtection == 0)
        set.add("bit_rot_protection=%d", share.BitRotProtection);
    if (share._void_Dedup == 0)
        set.add("dedup=%d", share.Dedup);
    if (share.LogBias != nullptr)
        set.add("logbias=%Q", share.LogBias);
    if (share.Sync != nullptr) {
        if (const int rc = check_sync(change.call, share.Sync))
            return rc;
        set.add("sync=%Q", share.Sync);
    }
    if (set.empty())
        return 0;
    const Status updated =
        change.call.run("UPDATE zfs_attr SET %s WHERE share_id=%d", set.text(), change.share_id);
    if (!updated)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE zfs_attr'. %s",
                     updated.error());
    return 0;
}

/* ---- Block volume, schedule, quotas -------------------------------------------------------------------- */

int modify_zvol(const Change &change)
{
    const qbobj_ZvolShareOption_t *zvol = change.share.Zvol;
    if (zvol == nullptr)
        return 0;
    const Status stored = change.call.run(
        "INSERT OR REPLACE INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(%d,%llu,%d)",
        change.share_id, zvol->SizeKB, zvol->IsSparse);
    if (!stored)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for zvol share_option. %s",
                     stored.error());
    return 0;
}

int modify_schedule(const Change &change)
{
    const qbobj_Schedule_t *schedule = change.share.SnapshotSchedule;
    if (schedule == nullptr)
        return 0;
    const Status inserted = change.call.run(
        R"(INSERT OR IGNORE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,
        last_taken,purge_manual_snapshot,last_daily_taken, last_weekly_taken)
        VALUES(%d,1,'0','*','*','*','*',0,1,0,0))",
        change.share_id);
    if (!inserted)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT snapshot_schedule'. %s",
                     inserted.error());
    Pairs set(change.call, Overflow::drop);
    const auto add_field = [&set](Statement<const char *> pair, const char *field) {
        if (field != nullptr)
            set.add(pair, field);
    };
    set.add("enabled=%d", schedule->Enabled);
    add_field("minute=%Q", schedule->Minute);
    add_field("hour=%Q", schedule->Hour);
    add_field("day_of_month=%Q", schedule->DayOfMonth);
    add_field("day_of_week=%Q", schedule->DayOfWeek);
    add_field("month=%Q", schedule->Month);
    set.add("last_taken=%d", schedule->LastTaken);
    set.add("purge_manual_snapshot=%d", schedule->PurgeManualSnapshot);
    set.add("last_daily_taken=%d", schedule->LastDailyTaken);
    set.add("last_weekly_taken=%d", schedule->LastWeeklyTaken);
    const Status updated =
        change.call.run("UPDATE snapshot_schedule SET %s WHERE share_id=%d", set.text(), change.share_id);
    if (!updated)
        return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE snapstho_schedule'. %s",
                     updated.error());
    return 0;
}

// `kind` is "user" or "group". The soft limit is the account default's share of the hard one.
int modify_quotas(const Change &change, qbobj_Quota_t *quotas, const char *kind)
{
    for (const qbobj_Quota_t &quota : Chain(quotas)) {
        const Status stored =
            change.call.run("INSERT OR REPLACE INTO %s_quota (%s_id,share_id,mb_soft,mb_hard) "
                            "VALUES(%d,%d,%llu*"
                            "(SELECT diskquota_warn FROM account_default LIMIT 1)/100,%llu)",
                            kind, kind, quota.AccountId, change.share_id, quota.HardMB, quota.HardMB);
        if (!stored)
            return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT %s_quota'. %s", kind,
                         stored.error());
    }
    return 0;
}

/* ---- One share ----------------------------------------------------------------------------------------- */

int modify_what_hangs_on(const Change &change)
{
    qbobj_Share_t &share = change.share;
    if (const int rc = modify_attributes(change))
        return rc;
    if (const int rc = modify_protocols(change.call, share, change.share_id))
        return rc;
    if (const int rc = modify_zvol(change))
        return rc;
    if (share.UsedBy != nullptr) {
        if (const int rc = x_qbobj_modifyShareUsedBy(change.call, share.UsedBy, nullptr, change.share_id))
            return rc;
    }
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
    qbobj_Share_t &share = change.share;
    if (share.Path == nullptr) {
        const Text path = change.call.ask_text("SELECT S.path FROM share S WHERE S.id=%d", change.share_id);
        if (!path)
            return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s",
                         path.error());
        share.Path = path.value;
    }
    if (share.Stat != nullptr) {
        const Number mode = change.call.ask_number("SELECT (S.non_owner_delete << 9)|(S.user_access << 6)|"
                                                   "(S.group_access << 3)|(S.everyone_access << 0) "
                                                   "FROM share S WHERE S.id=%d",
                                                   change.share_id);
        if (!mode)
            return raise(change.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s",
                         mode.error());
        share.Stat->_PosixMode = mode.value;
    }
    return 0;
}

} // namespace

int x_qbobj_modifyShare(Call &call, qbobj_Share_t *share, int modifyOneShare)
{
    for (qbobj_Share_t &next : Chain(share)) {
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
    const Status updated =
        call.run("UPDATE share SET visible_snapdir=%Q WHERE zfs_name=%Q", VisibleSnapFolder, ZfsName);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE share'. %s", updated.error());
    return 0;
}

int x_qbobj_modifyZvol(Call &call, const char *ZfsName, const char *ShareName, const char *Comment,
                       uint64_t SizeKB, int IsSparse)
{
    const Status sized = call.run("UPDATE zvol_share_option SET kb_size=%llu,is_sparse=%d WHERE share_id="
                                  "(SELECT id FROM share S WHERE S.zfs_name=%Q)",
                                  SizeKB, IsSparse, ZfsName);
    if (!sized)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE zfs_share_option'. %s",
                     sized.error());
    const Status named = call.run("UPDATE share SET name=%Q,comment=%Q,path='/'||%Q WHERE zfs_name=%Q",
                                  ShareName, Comment, ZfsName, ZfsName);
    if (!named)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE share'. %s", named.error());
    return 0;
}

} // namespace qbobj
