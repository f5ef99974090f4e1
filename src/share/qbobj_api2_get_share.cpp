// Shares read: whole records, the light list, and what a user may do with a share.
#include "core/set_list.h"
#include "share/share_access.h"
#include "share/share_reading.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

/* ---- The row of a share -------------------------------------------------------------------------------- */

constexpr const char *share_rows = R"(SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,
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
    STRFTIME('%s',S.update_ts),
    (SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),
    ZS.referenced/1048576,
    (SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),
    ZA.bit_rot_protection
    FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id
    LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id
    LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name)";

// A row and the record that it fills.
struct ShareRow {
    qbobj_Share_t *share;
    int id;
    const char *snapshot_usage;
};

// A member that is 0 whatever the column holds.
template <class Record, class Number>
constexpr auto zero(Number Record::*member)
{
    return [member](const qbobj_env_t &, Record &record, const char *) { record.*member = 0; };
}

constexpr auto visible_snapshot = [](const qbobj_env_t &, qbobj_Share_t &share, const char *cell) {
    share.VisibleSnapshot = is_empty(cell) ? 0 : 1;
};

constexpr auto share_columns = std::tuple_cat(
    std::tuple{&ShareRow::id},
    parts(&ShareRow::share, &qbobj_Share_t::ShareName, or_empty(&qbobj_Share_t::Comment),
          &qbobj_Share_t::Path,
          // The folder itself tells its owner and permissions, see read_folder_stat().
          skipped, skipped, skipped, skipped, skipped, skipped, or_empty(&qbobj_Share_t::VolumeId),
          zero(&qbobj_Share_t::AvailableMB), &qbobj_Share_t::UsedMB, zero(&qbobj_Share_t::UsedByChildrenMB),
          &qbobj_Share_t::UsedByDatasetMB, zero(&qbobj_Share_t::UsedByRefReservationMB)),
    std::make_tuple(
        both(&ShareRow::snapshot_usage, of(&ShareRow::share, zero(&qbobj_Share_t::UsedBySnapshotsMB)))),
    parts(&ShareRow::share, &qbobj_Share_t::CompressRatio,
          given<&qbobj_Share_t::_void_QuotaMB, &qbobj_Share_t::QuotaMB>,
          given<&qbobj_Share_t::_void_ReserveMB, &qbobj_Share_t::ReserveMB>,
          given<&qbobj_Share_t::_void_RefQuotaMB, &qbobj_Share_t::RefQuotaMB>,
          given<&qbobj_Share_t::_void_RefReserveMB, &qbobj_Share_t::RefReserveMB>,
          given<&qbobj_Share_t::_void_Compression, &qbobj_Share_t::Compression>,
          given<&qbobj_Share_t::_void_Dedup, &qbobj_Share_t::Dedup>, &qbobj_Share_t::ShareType,
          both(&qbobj_Share_t::ShareId, &qbobj_Share_t::ZfsName), &qbobj_Share_t::NrContinuousSnapshots,
          &qbobj_Share_t::NrManualSnapshots, &qbobj_Share_t::FirstSnapshotCreatedOn,
          &qbobj_Share_t::LastSnapshotCreatedOn, &qbobj_Share_t::MigrateToVolumeId, &qbobj_Share_t::LogBias,
          &qbobj_Share_t::Origin, both(or_empty(&qbobj_Share_t::VisibleSnapFolder), visible_snapshot),
          &qbobj_Share_t::Sync, &qbobj_Share_t::UpdateTS, &qbobj_Share_t::Busy,
          zero(&qbobj_Share_t::ReferencedMB), &qbobj_Share_t::CloneOf,
          given<&qbobj_Share_t::_void_BitRotProtection, &qbobj_Share_t::BitRotProtection>));

ShareRow read_row(const ShareReading &reading, qbobj_Share_t &share, const Row &row)
{
    ShareRow read{.share = &share, .id = 0, .snapshot_usage = nullptr};
    fill(reading.call, read, share_columns, row);
    return read;
}

/* ---- What belongs to a share --------------------------------------------------------------------------- */

constexpr auto schedule_columns = std::tuple{
    &qbobj_Schedule_t::Enabled,        &qbobj_Schedule_t::Minute,
    &qbobj_Schedule_t::Hour,           &qbobj_Schedule_t::DayOfMonth,
    &qbobj_Schedule_t::DayOfWeek,      &qbobj_Schedule_t::Month,
    &qbobj_Schedule_t::LastTaken,      &qbobj_Schedule_t::PurgeManualSnapshot,
    &qbobj_Schedule_t::LastDailyTaken, &qbobj_Schedule_t::LastWeeklyTaken,
};

constexpr auto clone_columns = std::tuple{
    &qbobj_SnapshotClone_t::resource_id,
    &qbobj_SnapshotClone_t::ClonedShareName,
    &qbobj_SnapshotClone_t::ParentSnapshotName,
    &qbobj_SnapshotClone_t::ParentShareName,
};

constexpr auto quota_columns = std::tuple{
    &qbobj_Quota_t::AccountId, &qbobj_Quota_t::ShareId,     &qbobj_Quota_t::HardMB,
    &qbobj_Quota_t::UsedMB,    &qbobj_Quota_t::AccountName,
};

int raise_failed_read(Call &call, const FailedRead &failed)
{
    return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM %s'. %s", failed.table,
                 failed.error);
}

int read_schedule(Call &call, int share_id, qbobj_Schedule_t *&schedule)
{
    schedule = nullptr;
    const Table rows = call.table(R"(SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,
        SS.month,SS.last_taken,SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken
        FROM snapshot_schedule SS WHERE share_id=%d)",
                                  share_id);
    if (!rows)
        return raise_failed_read(call, {"snapshot_schedule", rows.error()});
    if (!rows.empty()) {
        schedule = create<qbobj_Schedule_t>(call.pool());
        fill(call, *schedule, schedule_columns, *rows.begin());
    }
    return 0;
}

int read_used_by(const ShareReading &reading, int share_id, qbobj_UsedBy_t *&list)
{
    list = nullptr;
    const Table rows = reading.call.table(R"(SELECT A.app_name,A.app_data FROM `$application_on_share` A
        WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d))",
                                          share_id);
    if (!rows)
        return raise_failed_read(reading.call, {"$application_on_share", rows.error()});
    append_rows(reading.call, list, used_by_columns, rows);
    return 0;
}

int read_clones(const ShareReading &reading, int share_id, qbobj_SnapshotClone_t *&list)
{
    list = nullptr;
    const Table rows = reading.call.table(R"(SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name
        FROM `$snapshot_clones` WHERE parent_zfs_name=(SELECT S.name FROM share S WHERE S.id=%d))",
                                          share_id);
    if (!rows)
        return raise(reading.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM snapshot_clones %s",
                     rows.error());
    append_rows(reading.call, list, clone_columns, rows);
    return 0;
}

// The quotas of users or of groups. The tables differ only in these words.
struct QuotaKind {
    const char *word;
    const char *name_column;
    const char
        *accounts; // with its quotes: a statement with a splice inside quotes is prepared anew each time
    const char *table;
};
constexpr QuotaKind user_quota{"user", "uname", "`$user`", "user_quota"};
constexpr QuotaKind group_quota{"group", "gname", "`$group`", "group_quota"};

int read_quotas(const ShareReading &reading, int share_id, const QuotaKind &kind, qbobj_Quota_t *&list)
{
    list = nullptr;
    const Table rows = reading.call.table(
        R"(SELECT Q.%s_id,S.zfs_name,Q.mb_hard,QS.mb_used,A.%s FROM %s_quota Q
        INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _%s_quota_stat QS ON QS.share_id=Q.share_id AND QS.%s_id=Q.%s_id
        LEFT JOIN %s A ON A.id=Q.%s_id WHERE Q.share_id=%d)",
        kind.word, kind.name_column, kind.word, kind.word, kind.word, kind.word, kind.accounts, kind.word,
        share_id);
    if (!rows)
        return raise_failed_read(reading.call, {kind.table, rows.error()});
    append_rows(reading.call, list, quota_columns, rows);
    return 0;
}

// Adds to a record, whose row has been read, everything that other tables and the file system hold.
int complete_share(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    share.Stat = create<qbobj_FileStat_t>(reading.call.pool());
    if (const int rc = read_folder_stat(reading, share.Path, *share.Stat); rc != 0)
        return rc;
    if (const int rc = read_schedule(reading.call, share_id, share.SnapshotSchedule); rc != 0)
        return rc;
    if (const FailedRead failed = read_share_options(reading, share_id, share); failed)
        return raise_failed_read(reading.call, failed);
    if (const int rc = read_used_by(reading, share_id, share.UsedBy); rc != 0)
        return rc;
    if (const int rc = read_clones(reading, share_id, share.SnapshotClones); rc != 0)
        return rc;
    if (const int rc = read_quotas(reading, share_id, user_quota, share.UserQuota); rc != 0)
        return rc;
    return read_quotas(reading, share_id, group_quota, share.GroupQuota);
}

int read_share(const ShareReading &reading, qbobj_Share_t &share, const Row &row)
{
    const ShareRow read = read_row(reading, share, row);
    return complete_share(reading, read.id, share);
}

/* ---- Steps that several workers share ------------------------------------------------------------------ */

ShareReading start_reading(Call &call)
{
    // A failing query counts as 0.
    const Number anonymous = call.ask_number(
        "SELECT IFNULL(CASE WHEN auth_mode='anonymous' THEN 1 ELSE 0 END, 0) FROM service_ftp LIMIT 1");
    return {call, anonymous && anonymous.value != 0};
}

// Appends one complete record a row.
int append_shares(const ShareReading &reading, const Table &rows, qbobj_Share_t *&head)
{
    Tail<qbobj_Share_t> tail(head);
    for (const Row row : rows) {
        qbobj_Share_t &share = tail.append(reading.call.pool());
        if (const int rc = read_share(reading, share, row); rc != 0)
            return rc;
        share.resource_id = share.ShareId;
    }
    return 0;
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
    const ShareReading reading = start_reading(call);
    const Table rows =
        reading.call.table("%s WHERE S.type='share' ORDER BY S.name COLLATE NOCASE", share_rows);
    if (!rows)
        return raise_failed_read(call, {"share", rows.error()});
    return append_shares(reading, rows, collection->Share);
}

int x_qbobj_getShareAndZvolCollection(Call &call, qbobj_ShareCollection_t *collection)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    const ShareReading reading = start_reading(call);
    const Table rows = reading.call.table(
        "%s WHERE S.type='share' OR S.type='zvol' ORDER BY S.name COLLATE NOCASE", share_rows);
    if (!rows)
        return raise_failed_read(call, {"share", rows.error()});
    return append_shares(reading, rows, collection->Share);
}

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

    const ShareReading reading = start_reading(call);
    const Table rows =
        reading.call.table("%s WHERE S.type='share' ORDER BY S.name COLLATE NOCASE", share_rows);
    if (!rows)
        return raise_failed_read(call, {"share", rows.error()});
    Tail<qbobj_Share_t> tail(collection->Share);
    for (const Row row : rows) {
        qbobj_Share_t &share = tail.append(call.pool());
        qbobj_Share_t read{};
        const ShareRow key = read_row(reading, read, row);
        // Callers see nothing but this of a share that is denied.
        share.resource_id = read.resource_id = key.snapshot_usage;
        switch (may_read({call, key.id, user_id}, ProtocolName)) {
        case Verdict::denied:
            break;
        case Verdict::granted:
            share = read;
            if (const int rc = complete_share(reading, key.id, share); rc != 0)
                return rc;
            break;
        default:
            return raise(call, QBOBJ_ERROR_OOM, "Failed in access check.");
        }
    }
    return 0;
}

namespace
{

// A light row: its id and the four protocols, each by name or NULL.
struct SimpleRow {
    qbobj_SimpleShare_t *share;
    int id;
};

// Adds a protocol, when the share has it, to the list of names.
constexpr auto common_protocol = [](const qbobj_env_t &env, qbobj_SimpleShare_t &share, const char *cell) {
    if (cell == nullptr)
        return;
    share.CommonProtocolsCSV = share.CommonProtocolsCSV == empty_str
                                   ? copy_text(env.qbdb->pool, cell)
                                   : print(env, "%s,%s", share.CommonProtocolsCSV, cell);
};

constexpr auto simple_columns = std::tuple_cat(
    std::tuple{&SimpleRow::id},
    parts(&SimpleRow::share, both(&qbobj_SimpleShare_t::resource_id, &qbobj_SimpleShare_t::ShareId),
          &qbobj_SimpleShare_t::ShareName, common_protocol, common_protocol, common_protocol,
          common_protocol));

} // namespace

int x_qbobj_getSimpleShareCollection(Call &call, qbobj_SimpleShareCollection_t *collection)
{
    if (collection == nullptr)
        return raise_missing(call, "collection");
    const ShareReading reading{call};
    const Table rows = reading.call.table(R"(SELECT S.id,S.zfs_name,S.name,
        (SELECT 'cifs' FROM cifs_share_option O WHERE O.share_id=S.id AND O.cifs_access<>'disabled' AND O.available<>0),
        (SELECT 'afp' FROM afp_share_option O WHERE O.share_id=S.id AND O.afp_access<>'disabled' AND O.available<>0),
        (SELECT 'ftp' FROM ftp_share_option O WHERE O.share_id=S.id AND O.ftp_access<>'disabled' AND O.available<>0),
        (SELECT 'nfs' FROM nfs_share_option O WHERE O.share_id=S.id AND O.nfs_access<>'disabled' AND O.available<>0)
        FROM share S WHERE S.type='share' ORDER BY S.name COLLATE NOCASE)");
    if (!rows)
        return raise_failed_read(call, {"share", rows.error()});
    Tail<qbobj_SimpleShare_t> tail(collection->SimpleShare);
    for (const Row row : rows) {
        SimpleRow read{.share = &tail.append(call.pool()), .id = 0};
        read.share->CommonProtocolsCSV = empty_str;
        fill(call, read, simple_columns, row);
        if (const int rc = read_used_by(reading, read.id, read.share->UsedBy); rc != 0)
            return rc;
    }
    return 0;
}

/* ---- One share ----------------------------------------------------------------------------------------- */

int x_qbobj_getShare(Call &call, qbobj_Share_t *share)
{
    if (share == nullptr)
        return raise_missing(call, "share");
    const int share_id = identify(call, *share);
    if (share_id < 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid ShareId=%s.", share->ShareId);
    const ShareReading reading = start_reading(call);
    const Table rows =
        reading.call.table("%s WHERE S.id=%d ORDER BY S.name COLLATE NOCASE", share_rows, share_id);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", rows.error());
    if (rows.empty())
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=%d.", share_id);
    if (const int rc = read_share(reading, *share, *rows.begin()); rc != 0)
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

    const ShareReading reading = start_reading(call);
    const Table rows = where.empty() ? reading.call.table("%s", share_rows)
                                     : reading.call.table("%s WHERE %s", share_rows, where.text());
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", rows.error());
    return append_shares(reading, rows, *shares);
}

int x_qbobj_getShareSnapshotSchedule(Call &call, const char *share_name, qbobj_Schedule_t **snapshot_schedule)
{
    if (snapshot_schedule == nullptr)
        return raise_missing(call, "snapshot_schedule");
    const int share_id = x_qbobj_getShareId(call, share_name);
    if (share_id < 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "Share name (%s) may be invalid.", share_name);
    return read_schedule(call, share_id, *snapshot_schedule);
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
    const AccessQuestion question{call, share_id, x_qbobj_getPosixUID(call, user_name)};
    if (share_id < 0 || question.is_guest() || may_read_cifs(question) != Verdict::granted)
        return "Disabled";
    return may_write_cifs(question) == Verdict::granted ? "ReadWrite" : "ReadOnly";
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
