// Timed jobs of a volume.
#include "storage/snapshot.h"

namespace qbobj
{
namespace
{

using Job = qbobj_VolumeSchedule_t;
using Cron = qbobj_CronSchedule_t;

constexpr auto jobs = select(
    "SELECT job_id,volume_id,enabled,action,minute,hour,dayofmonth,month,dayofweek FROM volume_schedule",
    "Failed DB Query for 'SELECT FROM volume_schedule'. %s", both(&Job::resource_id, &Job::JobID),
    or_empty(&Job::VolumeName), &Job::Enabled, &Job::Action, of(&Job::Interval, or_empty(&Cron::Minute)),
    of(&Job::Interval, or_empty(&Cron::Hour)), of(&Job::Interval, or_empty(&Cron::DayOfMonth)),
    of(&Job::Interval, or_empty(&Cron::Month)), of(&Job::Interval, or_empty(&Cron::DayOfWeek)));

// How many jobs have the id: none or one. The id 0 counts as absent.
int get_volume_schedule_jobid(Call &call, int job_id, int &nrow)
{
    nrow = 0;
    if (job_id == 0)
        return 0;
    bool found = false;
    const int rc = call.exists("Failed DB Query for get_volume_schedule_jobid. %s", found,
                               "SELECT job_id from volume_schedule WHERE job_id=%d", job_id);
    nrow = found ? 1 : 0;
    log(call, QBDB_LOG_DEBUG, "%s() rc=%d nrow=%d\n", __func__, rc, nrow);
    return rc;
}

// Callers know a job that is there when it must not be, or the other way round, as a result without a message.
int require_jobs(Call &call, int job_id, int expected)
{
    int nrow = 0;
    if (const int rc = get_volume_schedule_jobid(call, job_id, nrow))
        return rc;
    return nrow == expected ? 0 : QBOBJ_ERROR_DB_MISC;
}

} // namespace

int x_qbobj_getVolumeScheduleCollection(Call &call, qbobj_VolumeScheduleCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(jobs, collection->VolumeSchedule);
}

int x_qbobj_addVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule)
{
    if (volumeschedule == nullptr || volumeschedule->Interval == nullptr)
        return QBOBJ_ERROR_DB_MISC;
    const Job &job = *volumeschedule;
    const Cron &when = *job.Interval;
    if (const int rc = require_jobs(call, job.JobID, 0))
        return rc;
    return call.exec(
        "Failed DB Query for 'INSERT INTO volume_schedule'. %s",
        R"(INSERT INTO volume_schedule(job_id,volume_id,enabled,action,minute,hour,dayofmonth,month,
        dayofweek)VALUES(%d,%Q,%d,%d,%Q,%Q,%Q,%Q,%Q))",
        job.JobID, job.VolumeName, job.Enabled, job.Action, when.Minute, when.Hour, when.DayOfMonth,
        when.Month, when.DayOfWeek);
}

int x_qbobj_updateVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule)
{
    if (volumeschedule == nullptr || volumeschedule->Interval == nullptr)
        return QBOBJ_ERROR_DB_MISC;
    const Job &job = *volumeschedule;
    const Cron &when = *job.Interval;
    if (const int rc = require_jobs(call, job.JobID, 1))
        return rc;
    return call.exec(
        "Failed DB Query for 'Update volume_schedule'. %s",
        R"(UPDATE volume_schedule SET enabled=%d,action=%d,minute=%Q,hour=%Q,dayofmonth=%Q,month=%Q,
        dayofweek=%Q WHERE job_id=%d)",
        job.Enabled, job.Action, when.Minute, when.Hour, when.DayOfMonth, when.Month, when.DayOfWeek,
        job.JobID);
}

int x_qbobj_deleteVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule)
{
    if (volumeschedule == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "volumeschedule cannot be NULL.");
    constexpr Failure failure = "Failed DB Query for 'DELETE FROM volume_schedule'. %s";
    const Job &job = *volumeschedule;
    if (job.JobID == -1 && job.VolumeName != nullptr)
        return call.exec(failure, "DELETE FROM volume_schedule WHERE volume_id=%Q", job.VolumeName);
    if (const int rc = require_jobs(call, job.JobID, 1))
        return rc;
    return call.exec(failure, "DELETE FROM volume_schedule WHERE job_id=%d", job.JobID);
}

} // namespace qbobj
