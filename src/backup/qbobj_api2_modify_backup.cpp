// Backup jobs changed.
#include "backup/backup.h"
#include "core/change_tracking.h"
#include "core/set_list.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

using Job = qbobj_BackupJob_t;
using End = qbobj_BackupJob_SourceOrDestination_t;
using Schedule = qbobj_BackupJob_Schedule_t;
using Option = qbobj_BackupJob_Option_t;
using JobSet = SetList<2048>;

constexpr const char *copy_of_jobs = "x_modify_backup";

/* ---- What may not be ----------------------------------------------------------------------------------- */

int check_schedule(Call &call, const Job &job, int &days)
{
    if (job.Schedule == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Schedule cannot be NULL.");
    Schedule &schedule = *job.Schedule;
    days = qbdb_dow_to_i(schedule.DayOfWeek);
    if (schedule.Enabled != 0 && days == 0) {
        log(call, QBDB_LOG_WARN, "Backup Job is Enabled, but no schedule. Force it to Disabled\n");
        schedule.Enabled = 0;
    }
    if (schedule.Start > schedule.End)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid schedule time of Backup job %s.",
                     or_empty(job.JobName));
    return 0;
}

// The stored destination, named by its path, as callers have always had it.
constexpr auto destination_of_job =
    select<int>("SELECT B.dst_type,B.dst_path FROM backup B WHERE id=%d", "Failed DB Query for backup. %s",
                &End::Type, &End::ShareNameOrProtocol);

bool is_given(const End *end)
{
    return end != nullptr && end->Type != nullptr;
}

// One end alone, even the destination, is checked against the stored destination.
int check_ends(Call &call, const Job &job, int key)
{
    const bool source = is_given(job.Source);
    const bool destination = is_given(job.Destination);
    if (source && destination)
        return qbobj_api2_backup_check_src_dst_conflict(call, *job.Source, *job.Destination);
    if (!source && !destination)
        return 0;
    End other{};
    if (const int rc = call.read(destination_of_job, other, key))
        return rc;
    return qbobj_api2_backup_check_src_dst_conflict(call, source ? *job.Source : other,
                                                    source ? other : *job.Destination);
}

int check_name(Call &call, const Job &job, int key)
{
    int holder = 0;
    if (qbobj_validate_db_jobname(call, or_empty(job.JobName), &holder) == 0 && holder != key)
        return raise(call, QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS, "JobName specified is already exist.");
    return 0;
}

/* ---- What changes -------------------------------------------------------------------------------------- */

// `which` is "src" or "dst".
void add_end(JobSet &set, const char *which, const End *given)
{
    if (given == nullptr)
        return;
    const End end = stored(*given);
    set.add("%s_type=%Q", which, end.Type);
    set.add("%s_share_proto=%Q", which, end.ShareNameOrProtocol);
    set.add("%s_path=%Q", which, end.Path);
    set.add("%s_login=%Q", which, end.Login);
    set.add("%s_password=%Q", which, end.Password);
    set.add("%s_port=%d", which, end.Port);
    set.add("%s_eject=%d", which, end.Eject);
}

void add_schedule(JobSet &set, const Schedule &schedule, int days)
{
    set.add("enabled=%d", schedule.Enabled);
    set.add("sch_every=%d", schedule.Frequency);
    set.add("sch_start=%d", schedule.Start);
    set.add("sch_end=%d", schedule.End);
    set.add("sch_dow=%d", days);
}

void add_option(JobSet &set, const Option *given)
{
    if (given == nullptr)
        return;
    const Option option = stored(*given);
    set.add("opt_full_backup_freq=%Q", option.FullBackupFrequency);
    set.add("opt_remove_previous_backup=%d", option.RemovePreviousBackup);
    set.add("opt_chown_to_share_owner=%d", option.ChownToShareOwner);
    set.add("opt_rsync_options=%d", option.RsyncOption);
    set.add("opt_rsync_exclude=%Q", option.RsyncExclude);
    set.add("opt_email_this_to_alert_email=%d", option.EmailThisToAlertEmail);
    set.add("opt_misc_option=%d", option.MiscOption);
    set.add("wol_addr=%Q", option.WolAddress);
}

int update_job(Call &call, const Job &job, int key, int days)
{
    JobSet set(call, Overflow::drop);
    set.add("name=%Q", or_empty(job.JobName));
    add_end(set, "src", job.Source);
    add_end(set, "dst", job.Destination);
    add_schedule(set, *job.Schedule, days);
    add_option(set, job.Option);
    return call.exec("Failed DB Query for backup. %s", "UPDATE backup SET %s WHERE id=%d", set.text(), key);
}

int set_changed(Call &call, Job &job, int key)
{
    const char *problem = nullptr;
    if (compare_rows(call, "backup", copy_of_jobs, print(call, "id=%d", key), job.Changed, &problem) != 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for backup. %s", problem);
    return 0;
}

int modify_job(Call &call, const bool &is_copied, Job &job)
{
    const int key = key_of(job);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", job.resource_id);
    int days = 0;
    if (const int rc = check_schedule(call, job, days))
        return rc;
    if (const int rc = check_ends(call, job, key))
        return rc;
    if (const int rc = check_name(call, job, key))
        return rc;
    if (const int rc = update_job(call, job, key, days))
        return rc;
    return is_copied ? set_changed(call, job, key) : 0;
}

} // namespace

int x_qbobj_modifyBackupJob(Call &call, qbobj_BackupJob_t *job)
{
    if (job == nullptr)
        return 0;
    // Without the copy the jobs are changed all the same; only what changed is not told.
    const char *problem = nullptr;
    const bool is_copied = copy_table(call, "backup", copy_of_jobs, &problem) == 0;
    return for_each(job, modify_job, call, is_copied);
}

} // namespace qbobj
