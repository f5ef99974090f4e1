// Snapshots of users' home folders, and the schedule by which they are taken.
#include "core/set_list.h"
#include "storage/snapshot.h"
#include "storage/snapshot_rows.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

using Snapshot = qbobj_HfSnapshot_t;
using Schedule = qbobj_Schedule_t;

/* ---- Words --------------------------------------------------------------------------------------------- */

// Comes behind the columns that it needs.
constexpr auto path = [](const qbobj_env_t &env, Snapshot &snapshot, const char *) {
    snapshot.Path = snapshot_path(env, snapshot.HomeDir, snapshot.SnapshotName);
};

struct Words {
    static constexpr Site site = here();
    static constexpr char columns[] = "SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on";
    static constexpr char source[] =
        " FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name"
        " WHERE S.created_on>=%d AND S.created_on<=%d%s";
    static constexpr char first[] = " AND U.uname=%Q";
    static constexpr char second[] = " AND U.home=%Q";
    static constexpr Failure failure = "Failed DB Query for 'SELECT FROM $home_folder_snapshot'. %s";

    template <class... Args>
    static consteval auto list(Statement<Args...> sql)
    {
        return select<Args...>(sql, failure, &Snapshot::resource_id, &Snapshot::UserName,
                               or_empty(&Snapshot::HomeDir), &Snapshot::SnapshotName, &Snapshot::Type,
                               both(&Snapshot::CreatedOn, path));
    }
};

struct OfHome {
    static constexpr char table[] = "`$home_folder_snapshot`";
    static constexpr char scope[] = "home_dir=%Q";
};
constexpr SnapshotDeletions deletions =
    snapshot_deletions<OfHome>("Failed to DELETE snapshot from $home_folder_snapshot. %s",
                               "Failed to DELETE for snapshot from $home_folder_snapshot. %s");

/* ---- The schedule -------------------------------------------------------------------------------------- */

constexpr auto schedule_row = select(
    R"(SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,SS.last_taken,
        SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken FROM `$home_folder_snapshot_schedule` SS)",
    "Failed DB Query for 'SELECT FROM $home_folder_snapshot_schedule'. %s", &Schedule::Enabled,
    or_empty(&Schedule::Minute), or_empty(&Schedule::Hour), or_empty(&Schedule::DayOfMonth),
    or_empty(&Schedule::DayOfWeek), or_empty(&Schedule::Month), &Schedule::LastTaken,
    &Schedule::PurgeManualSnapshot, &Schedule::LastDailyTaken, &Schedule::LastWeeklyTaken);

constexpr std::tuple texts_of_schedule{
    change<&Schedule::Minute>("minute=%Q"),
    change<&Schedule::Hour>("hour=%Q"),
    change<&Schedule::DayOfMonth>("day_of_month=%Q"),
    change<&Schedule::DayOfWeek>("day_of_week=%Q"),
    change<&Schedule::Month>("month=%Q"),
};

int check_user(Call &call, const char *user_name, int &user_id, const Site &site = here())
{
    if (qbobj_validate_db_username(call, user_name, nullptr, &user_id) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Specified UserName(%s) is not exist.", user_name);
    return 0;
}

} // namespace

int x_qbobj_getHfSnapshotCollection(Call &call, qbobj_HfSnapshotCollection_t *collection,
                                    const char *UserName, const char *HomeDir, int q_type, int q_from,
                                    int q_to, const char *OrderBy, int q_order, int q_limit, int q_offset)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return append_snapshots<Words>(call, collection->HfSnapshot, {UserName, HomeDir, q_type, q_from, q_to},
                                   {OrderBy, q_order, q_limit, q_offset});
}

int x_qbobj_getHfSnapshotCollectionCount(Call &call, int *count, const char *UserName, const char *HomeDir,
                                         int q_type, int q_from, int q_to)
{
    if (count == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "count cannot be NULL.");
    return count_snapshots<Words>(call, *count, {UserName, HomeDir, q_type, q_from, q_to});
}

int x_qbobj_addHfSnapshot(Call &call, qbobj_HfSnapshot_t *snapshot)
{
    if (snapshot == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "snapshot cannot be NULL.");
    int user_id = 0;
    if (const int rc = check_user(call, snapshot->UserName, user_id))
        return rc;
    const Status status = call.run(
        "INSERT INTO `$home_folder_snapshot`(user_name,home_dir,name,type,created_on)VALUES(%Q,%Q,%Q,%d,%d)",
        snapshot->UserName, snapshot->HomeDir, snapshot->SnapshotName, snapshot->Type, snapshot->CreatedOn);
    if (status.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Probably user_id=%d is invalid", user_id);
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO $home_folder_snapshot'. %s",
                     status.error());
    return 0;
}

int x_qbobj_deleteHfSnapshot(Call &call, const char *UserName, const char *, int DeleteNewer,
                             const char *SnapshotName, int CreatedOn)
{
    int user_id = 0;
    if (const int rc = check_user(call, UserName, user_id))
        return rc;
    char *home = nullptr;
    if (const int rc = call.text("Error in DB query for home.", home,
                                 "SELECT S.home FROM `$user` S WHERE S.id=%d", user_id))
        return rc;
    return delete_snapshots(call, deletions, home, {DeleteNewer, SnapshotName, CreatedOn});
}

int x_qbobj_getHfSnapshotSchedule(Call &call, qbobj_Schedule_t **schedule)
{
    if (schedule == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "schedule cannot be NULL.");
    return call.read_new(schedule_row, *schedule);
}

int x_qbobj_addHfSnapshotSchedule(Call &call, qbobj_Schedule_t *schedule)
{
    if (schedule == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "schedule cannot be NULL.");
    return call.exec(
        "Failed DB Query for 'INSERT $home_folder_snapshot_schedule'. %s",
        R"(INSERT OR REPLACE INTO `$home_folder_snapshot_schedule` (share_id,enabled,minute,hour,day_of_month,
        day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken)
        VALUES(0,%d,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d))",
        schedule->Enabled, schedule->Minute, schedule->Hour, schedule->DayOfMonth, schedule->DayOfWeek,
        schedule->Month, schedule->LastTaken, schedule->PurgeManualSnapshot, schedule->LastDailyTaken,
        schedule->LastWeeklyTaken);
}

int x_qbobj_modifyHfSnapshotSchedule(Call &call, qbobj_Schedule_t *schedule)
{
    if (schedule == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "schedule cannot be NULL.");
    if (const int rc = call.exec(
            "Failed DB Query for 'INSERT $home_folder_snapshot_schedule'. %s",
            R"(INSERT OR IGNORE INTO `$home_folder_snapshot_schedule` (share_id,enabled,minute,hour,day_of_month,
            day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken, last_weekly_taken)
            VALUES(0,1,'0','*','*','*','*',0,1,0,0))"))
        return rc;
    SetList<512> set(call, Overflow::refuse);
    set.add("enabled=%d", schedule->Enabled);
    set.add_given(*schedule, texts_of_schedule);
    set.add("last_taken=%d", schedule->LastTaken);
    set.add("purge_manual_snapshot=%d", schedule->PurgeManualSnapshot);
    set.add("last_daily_taken=%d", schedule->LastDailyTaken);
    set.add("last_weekly_taken=%d", schedule->LastWeeklyTaken);
    if (set.refused() != nullptr)
        return raise_refused(call, set);
    return call.exec("Failed DB Query for 'UPDATE $home_folder_snapshot_schedule'. %s",
                     "UPDATE `$home_folder_snapshot_schedule` SET %s", set.text());
}

} // namespace qbobj
