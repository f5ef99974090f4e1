// Shares read: whole records, the light list, and what a user may do with a share.
#include "account/account.h"
#include "core/set_list.h"
#include "share/share.h"
#include "share/share_access.h"
#include "share/share_reading.h"
#include "validate/validate.h"

#include <qbobj/storage.h>

namespace qbobj
{

namespace
{

/* ---- The row of a share -------------------------------------------------------------------------------- */

// A share's record with what the row tells beyond it.
struct ShareRow : qbobj_Share_t {
    int id;
    const char *snapshot_usage;
};

// A member that is 0 whatever the column holds.
template <class Number>
constexpr auto zero(Number qbobj_Share_t::*member)
{
    return [member](const qbobj_env_t &, qbobj_Share_t &share, const char *) { share.*member = 0; };
}

constexpr auto visible_snapshot = [](const qbobj_env_t &, qbobj_Share_t &share, const char *cell) {
    share.VisibleSnapshot = is_empty(cell) ? 0 : 1;
};

constexpr char share_rows[] = R"(SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,
    IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),
    CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
    (SELECT G.id FROM `$group` G WHERE G.id=S.group_id),
    CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
    CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
    S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,
    ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,
    ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,
    (SELECT COUNT(*) FROM `$snapshot` SS WHERE SS.zfs_name=S.zfs_name AND SS.type=1),
    (SELECT COUNT(*) FROM `$snapshot` SS WHERE SS.zfs_name=S.zfs_name AND SS.type=2),
    (SELECT MIN(SS.created_on) FROM `$snapshot` SS WHERE SS.zfs_name=S.zfs_name),
    (SELECT MAX(SS.created_on) FROM `$snapshot` SS WHERE SS.zfs_name=S.zfs_name),
    S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),
    STRFTIME('%%s',S.update_ts),
    (SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),
    ZS.referenced/1048576,
    (SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),
    ZA.bit_rot_protection
    FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id
    LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id
    LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name)";

// The rows of shares, as a SELECT of `text`, which begins with share_rows.
template <class... Args>
consteval auto select_shares(std::type_identity_t<Statement<Args...>> text, Failure failure)
{
    using Share = qbobj_Share_t;
    return select<Args...>(
        text, failure, &ShareRow::id, or_empty(&Share::ShareName), or_empty(&Share::Comment),
        or_empty(&Share::Path),
        // The folder itself tells its owner and permissions, see FolderReader.
        skipped, skipped, skipped, skipped, skipped, skipped, or_empty(&Share::VolumeId),
        zero(&Share::AvailableMB), &Share::UsedMB, zero(&Share::UsedByChildrenMB), &Share::UsedByDatasetMB,
        zero(&Share::UsedByRefReservationMB),
        both(&ShareRow::snapshot_usage, zero(&Share::UsedBySnapshotsMB)), &Share::CompressRatio,
        given<&Share::_void_QuotaMB, &Share::QuotaMB>, given<&Share::_void_ReserveMB, &Share::ReserveMB>,
        given<&Share::_void_RefQuotaMB, &Share::RefQuotaMB>,
        given<&Share::_void_RefReserveMB, &Share::RefReserveMB>,
        given<&Share::_void_Compression, &Share::Compression>, given<&Share::_void_Dedup, &Share::Dedup>,
        &Share::ShareType, both(&Share::ShareId, &Share::ZfsName), &Share::NrContinuousSnapshots,
        &Share::NrManualSnapshots, &Share::FirstSnapshotCreatedOn, &Share::LastSnapshotCreatedOn,
        &Share::MigrateToVolumeId, &Share::LogBias, &Share::Origin,
        both(or_empty(&Share::VisibleSnapFolder), visible_snapshot), &Share::Sync, &Share::UpdateTS,
        &Share::Busy, zero(&Share::ReferencedMB), &Share::CloneOf,
        given<&Share::_void_BitRotProtection, &Share::BitRotProtection>);
}

constexpr auto listed_text = joined(share_rows, " WHERE S.type='share' ORDER BY S.name COLLATE NOCASE");
constexpr auto listed_shares = select_shares<>(listed_text, "Failed DB Query for 'SELECT FROM share'. %s");

constexpr auto zvols_too_text =
    joined(share_rows, " WHERE S.type='share' OR S.type='zvol' ORDER BY S.name COLLATE NOCASE");
constexpr auto shares_and_zvols =
    select_shares<>(zvols_too_text, "Failed DB Query for 'SELECT FROM share'. %s");

constexpr auto one_text = joined(share_rows, " WHERE S.id=%d ORDER BY S.name COLLATE NOCASE");
constexpr auto one_share = select_shares<int>(one_text, "Failed DB Query for 'SELECT share'. %s");

constexpr auto all_shares = select_shares<>(share_rows, "Failed DB Query for 'SELECT share'. %s");
constexpr auto matching_text = joined(share_rows, " WHERE %s");
constexpr auto matching_shares =
    select_shares<const char *>(matching_text, "Failed DB Query for 'SELECT share'. %s");

/* ---- What belongs to a share --------------------------------------------------------------------------- */

constexpr auto schedules = select_of_shares(
    R"(SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,SS.last_taken,
    SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken,SS.share_id
    FROM snapshot_schedule SS WHERE SS.share_id BETWEEN %d AND %d ORDER BY SS.share_id)",
    "Failed DB Query for 'SELECT FROM snapshot_schedule'. %s", &qbobj_Schedule_t::Enabled,
    &qbobj_Schedule_t::Minute, &qbobj_Schedule_t::Hour, &qbobj_Schedule_t::DayOfMonth,
    &qbobj_Schedule_t::DayOfWeek, &qbobj_Schedule_t::Month, &qbobj_Schedule_t::LastTaken,
    &qbobj_Schedule_t::PurgeManualSnapshot, &qbobj_Schedule_t::LastDailyTaken,
    &qbobj_Schedule_t::LastWeeklyTaken);

constexpr auto markers = select_of_shares(
    R"(SELECT A.app_name,A.app_data,S.id FROM share S CROSS JOIN `$application_on_share` A
    ON A.zfs_name=S.zfs_name WHERE S.id BETWEEN %d AND %d ORDER BY S.id)",
    "Failed DB Query for 'SELECT FROM $application_on_share'. %s", &qbobj_UsedBy_t::AppName,
    &qbobj_UsedBy_t::AppData);

constexpr auto clones = select_of_shares(
    R"(SELECT SC.id,SC.cloned_zfs_name,SC.parent_snapshot_name,SC.parent_zfs_name,S.id
    FROM share S CROSS JOIN `$snapshot_clones` SC ON SC.parent_zfs_name=S.name
    WHERE S.id BETWEEN %d AND %d ORDER BY S.id)",
    "Failed DB Query for 'SELECT FROM snapshot_clones %s", &qbobj_SnapshotClone_t::resource_id,
    &qbobj_SnapshotClone_t::ClonedShareName, &qbobj_SnapshotClone_t::ParentSnapshotName,
    &qbobj_SnapshotClone_t::ParentShareName);

constexpr auto user_quotas = select_of_shares(
    R"(SELECT Q.user_id,S.zfs_name,Q.mb_hard,QS.mb_used,A.uname,Q.share_id FROM user_quota Q
    CROSS JOIN share S ON S.id=Q.share_id
    LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id
    LEFT JOIN `$user` A ON A.id=Q.user_id WHERE Q.share_id BETWEEN %d AND %d ORDER BY Q.share_id)",
    "Failed DB Query for 'SELECT FROM user_quota'. %s", &qbobj_Quota_t::AccountId, &qbobj_Quota_t::ShareId,
    &qbobj_Quota_t::HardMB, &qbobj_Quota_t::UsedMB, &qbobj_Quota_t::AccountName);

constexpr auto group_quotas = select_of_shares(
    R"(SELECT Q.group_id,S.zfs_name,Q.mb_hard,QS.mb_used,A.gname,Q.share_id FROM group_quota Q
    CROSS JOIN share S ON S.id=Q.share_id
    LEFT JOIN _group_quota_stat QS ON QS.share_id=Q.share_id AND QS.group_id=Q.group_id
    LEFT JOIN `$group` A ON A.id=Q.group_id WHERE Q.share_id BETWEEN %d AND %d ORDER BY Q.share_id)",
    "Failed DB Query for 'SELECT FROM group_quota'. %s", &qbobj_Quota_t::AccountId, &qbobj_Quota_t::ShareId,
    &qbobj_Quota_t::HardMB, &qbobj_Quota_t::UsedMB, &qbobj_Quota_t::AccountName);

// What a call reads into all its shares.
struct ShareReader {
    FolderReader folders;
    bool ftp_anonymous;

    explicit ShareReader(Call &call);
    // Adds to records whose rows have been read everything that other tables and the file system hold.
    int complete(const ShareBatch &batch);
};

// Asked once a call; a failing query counts as no.
bool is_ftp_anonymous(Call &call)
{
    const Number anonymous = call.ask_number(
        "SELECT IFNULL(CASE WHEN auth_mode='anonymous' THEN 1 ELSE 0 END, 0) FROM service_ftp LIMIT 1");
    return anonymous && anonymous.value != 0;
}

ShareReader::ShareReader(Call &call) : folders(call), ftp_anonymous(is_ftp_anonymous(call)) {}

int ShareReader::complete(const ShareBatch &batch)
{
    for (const ShareBatch::Entry &entry : batch.entries()) {
        qbobj_Share_t &share = *entry.share;
        share.Stat = create<qbobj_FileStat_t>(batch.call().pool());
        if (const int rc = folders.read(share.Path, *share.Stat))
            return rc;
    }
    if (const int rc = batch.read_new(schedules, &qbobj_Share_t::SnapshotSchedule))
        return rc;
    if (const int rc = read_share_options(batch, ftp_anonymous))
        return rc;
    if (const int rc = batch.read_list(markers, &qbobj_Share_t::UsedBy))
        return rc;
    if (const int rc = batch.read_list(clones, &qbobj_Share_t::SnapshotClones))
        return rc;
    if (const int rc = batch.read_list(user_quotas, &qbobj_Share_t::UserQuota))
        return rc;
    return batch.read_list(group_quotas, &qbobj_Share_t::GroupQuota);
}

/* ---- Steps that several workers share ------------------------------------------------------------------ */

// Appends one record a row, and tells the rows' ids.
template <class Columns, class... Args>
int append_rows(Call &call, const Select<Columns, Args...> &select, qbobj_Share_t *&list,
                std::vector<ShareEntry<qbobj_Share_t>> &shares, std::type_identity_t<Args>... args)
{
    Tail<qbobj_Share_t> tail(list);
    const auto append = [&](ShareRow &row) {
        row.resource_id = row.snapshot_usage;
        shares.push_back({row.id, &tail.append(call.pool(), row)});
    };
    return call.scan<ShareRow>(select, append, args...);
}

// Appends one complete record a row.
template <class Columns, class... Args>
int append_shares(Call &call, const Select<Columns, Args...> &select, qbobj_Share_t *&list,
                  std::type_identity_t<Args>... args)
{
    ShareReader reader(call);
    std::vector<ShareEntry<qbobj_Share_t>> shares;
    if (const int rc = append_rows(call, select, list, shares, args...))
        return rc;
    return for_each_batch(call, shares, [&](const ShareBatch &batch) {
        for (const ShareBatch::Entry &entry : batch.entries())
            entry.share->resource_id = entry.share->ShareId;
        return reader.complete(batch);
    });
}

int raise_missing(Call &call, const char *argument)
{
    return raise(call, QBOBJ_ERROR_API_ARGS, "%s cannot be NULL.", argument);
}

// The row id of the share that the record names, by the first of its keys that leads to one; else negative.
int identify(Call &call, const qbobj_Share_t &share)
{
    int share_id = 0;
    if (qbobj_validate_db_zfsname(call, share.resource_id, nullptr, &share_id) == 0 ||
        qbobj_validate_db_zfsname(call, share.ShareId, nullptr, &share_id) == 0 ||
        qbobj_validate_db_sharename(call, share.ShareName, nullptr, &share_id) == 0)
        return share_id;
    return -1;
}

} // namespace

/* ---- Collections --------------------------------------------------------------------------------------- */

int x_qbobj_getShareCollection(Call &call, qbobj_ShareCollection_t *collection)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    return append_shares(call, listed_shares, collection->Share);
}

int x_qbobj_getShareAndZvolCollection(Call &call, qbobj_ShareCollection_t *collection)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    return append_shares(call, shares_and_zvols, collection->Share);
}

namespace
{

// Completes the shares that the user may read. Of the others callers see nothing but the usage of their snapshots, which
// stands in `resource_id` of them all.
int keep_readable(const ShareBatch &batch, ShareReader &reader, const char *protocol, int user_id)
{
    Call &call = batch.call();
    ShareIds readable;
    if (may_read({call, batch.entries().front().id, batch.entries().back().id, user_id}, protocol,
                 readable) != 0)
        return raise(call, QBOBJ_ERROR_OOM, "Failed in access check.");
    std::vector<ShareBatch::Entry> granted;
    for (const ShareBatch::Entry &entry : batch.entries()) {
        if (readable.contains(entry.id)) {
            granted.push_back(entry);
            continue;
        }
        qbobj_Share_t nothing{};
        nothing._link = entry.share->_link;
        nothing.resource_id = entry.share->resource_id;
        *entry.share = nothing;
    }
    return granted.empty() ? 0 : reader.complete({call, granted});
}

} // namespace

int x_qbobj_getAccessibleShareCollection(Call &call, qbobj_ShareCollection_t *collection,
                                         const char *UserName, const char *ProtocolName)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    int user_id = -1;
    if (UserName != nullptr && qbobj_validate_db_username(call, UserName, nullptr, &user_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "User (%s) is invalid.", UserName);
    if (qbobj_validate_protocol_name(ProtocolName) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "ProtocolName (%s) is invalid", ProtocolName);

    ShareReader reader(call);
    std::vector<ShareEntry<qbobj_Share_t>> shares;
    if (const int rc = append_rows(call, listed_shares, collection->Share, shares))
        return rc;
    if (!shares.empty() && !can_be_asked_about(ProtocolName)) {
        shares.front().share->_link = nullptr;
        return raise(call, QBOBJ_ERROR_OOM, "Failed in access check.");
    }
    return for_each_batch(call, shares, [&](const ShareBatch &batch) {
        return keep_readable(batch, reader, ProtocolName, user_id);
    });
}

namespace
{

// A light record with the id of its row.
struct SimpleRow : qbobj_SimpleShare_t {
    int id;
};

// Adds a protocol, when the share has it, to the list of names.
constexpr auto common_protocol = [](const qbobj_env_t &env, qbobj_SimpleShare_t &share, const char *cell) {
    if (cell == nullptr)
        return;
    share.CommonProtocolsCSV = is_empty(share.CommonProtocolsCSV)
                                   ? copy_text(env.qbdb->pool, cell)
                                   : print(env, "%s,%s", share.CommonProtocolsCSV, cell);
};

constexpr auto simple_shares = select<>(
    R"(SELECT S.id,S.zfs_name,S.name,
    (SELECT 'cifs' FROM cifs_share_option O WHERE O.share_id=S.id AND O.cifs_access<>'disabled' AND O.available<>0),
    (SELECT 'afp' FROM afp_share_option O WHERE O.share_id=S.id AND O.afp_access<>'disabled' AND O.available<>0),
    (SELECT 'ftp' FROM ftp_share_option O WHERE O.share_id=S.id AND O.ftp_access<>'disabled' AND O.available<>0),
    (SELECT 'nfs' FROM nfs_share_option O WHERE O.share_id=S.id AND O.nfs_access<>'disabled' AND O.available<>0)
    FROM share S WHERE S.type='share' ORDER BY S.name COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM share'. %s", &SimpleRow::id,
    both(&qbobj_SimpleShare_t::resource_id, &qbobj_SimpleShare_t::ShareId),
    or_empty(&qbobj_SimpleShare_t::ShareName), common_protocol, common_protocol, common_protocol,
    common_protocol);

} // namespace

int x_qbobj_getSimpleShareCollection(Call &call, qbobj_SimpleShareCollection_t *collection)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    Tail<qbobj_SimpleShare_t> tail(collection->SimpleShare);
    std::vector<ShareEntry<qbobj_SimpleShare_t>> shares;
    if (const int rc = call.scan<SimpleRow>(simple_shares, [&](const SimpleRow &row) {
            qbobj_SimpleShare_t &share = tail.append(call.pool(), row);
            share.CommonProtocolsCSV = or_empty(row.CommonProtocolsCSV);
            shares.push_back({row.id, &share});
        }))
        return rc;
    return for_each_batch(call, shares, [](const Batch<qbobj_SimpleShare_t> &batch) {
        return batch.read_list(markers, &qbobj_SimpleShare_t::UsedBy);
    });
}

/* ---- One share ----------------------------------------------------------------------------------------- */

int x_qbobj_getShare(Call &call, qbobj_Share_t *share)
{
    if (share == nullptr)
        return raise_missing(call, "share");
    const int share_id = identify(call, *share);
    if (share_id < 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid ShareId=%s.", share->ShareId);
    ShareReader reader(call);
    ShareRow row{*share, 0, nullptr};
    if (const int rc = call.require(
            one_share, error(QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=%d.", share_id),
            row, share_id))
        return rc;
    *share = row;
    const ShareBatch::Entry entry{share_id, share};
    if (const int rc = reader.complete({call, {&entry, 1}}))
        return rc;
    share->resource_id = share->ShareId;
    return 0;
}

int x_qbobj_queryShare(Call &call, const char *VolumeId, const char *ShareNameLike, const char *ShareId,
                       qbobj_Share_t **shares)
{
    require(shares != nullptr, "shares", __func__);
    SetList<512> where(call, Overflow::refuse, " AND ");
    if (VolumeId != nullptr)
        where.add("S.volume_id=%Q", VolumeId);
    if (ShareNameLike != nullptr)
        where.add("S.name LIKE %Q", ShareNameLike);
    if (ShareId != nullptr)
        where.add("S.zfs_name=%Q", ShareId);
    if (where.refused() != nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "The value of column '%s' is too long for the query.",
                     where.refused());

    return where.empty() ? append_shares(call, all_shares, *shares)
                         : append_shares(call, matching_shares, *shares, where.text());
}

int x_qbobj_getShareSnapshotSchedule(Call &call, const char *share_name, qbobj_Schedule_t **snapshot_schedule)
{
    if (snapshot_schedule == nullptr)
        return raise_missing(call, "snapshot_schedule");
    const int share_id = x_qbobj_getShareId(call, share_name);
    if (share_id < 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "Share name (%s) may be invalid.", share_name);
    return call.read_new(schedules, *snapshot_schedule, share_id, share_id);
}

/* ---- Identity and access ------------------------------------------------------------------------------- */

int x_qbobj_getShareId(Call &call, const char *share_name)
{
    const char *name = nullptr;
    if (qbobj_validate_sharename(share_name, &name) != 0) {
        log(call, QBDB_LOG_ERROR, "Share name '%s' is invalid.", share_name);
        return -2;
    }
    int share_id = -1;
    return qbobj_validate_db_sharename(call, name, nullptr, &share_id) == 0 ? share_id : -1;
}

int x_qbobj_getShareIdFromPath(Call &call, const char *path)
{
    int share_id = -1;
    if (qbobj_validate_db_path_in_share(call, path, &share_id) != 0) {
        log(call, QBDB_LOG_DEBUG, "Path '%s' is not in share.", path);
        return -2;
    }
    return share_id;
}

namespace
{

const char *cifs_access(Call &call, int share_id, const char *user_name)
{
    const AccessQuestion question{call, share_id, share_id, x_qbobj_getPosixUID(call, user_name)};
    ShareIds readable;
    ShareIds writeable;
    if (share_id < 0 || question.is_guest() || may_use_cifs(question, readable, &writeable) != 0 ||
        readable.empty())
        return "Disabled";
    return writeable.empty() ? "ReadOnly" : "ReadWrite";
}

// Stores the answer. A failure on the way is an answer too, and no error of the operation.
int answer(Call &call, const char *access, char **result)
{
    *call.env().err = {};
    *result = copy_text(call.pool(), access);
    return 0;
}

} // namespace

int x_qbobj_getShareAccess(Call &call, const char *ShareName, const char *UserName, char **Access)
{
    if (Access == nullptr)
        return raise_missing(call, "Access");
    const int share_id = x_qbobj_getShareId(call, ShareName);
    return answer(call, cifs_access(call, share_id, UserName), Access);
}

int x_qbobj_getPathAccess(Call &call, const char *Path, const char *UserName, char **Access)
{
    if (Access == nullptr)
        return raise_missing(call, "Access");
    const int share_id = x_qbobj_getShareIdFromPath(call, Path);
    return answer(call, cifs_access(call, share_id, UserName), Access);
}

} // namespace qbobj
