// Backup jobs created, and the ends between which none may copy.
#include "backup/backup.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

using Job = qbobj_BackupJob_t;
using End = qbobj_BackupJob_SourceOrDestination_t;

/* ---- Conflicts ----------------------------------------------------------------------------------------- */

using Name = std::string_view;

constexpr bool same_name(Name source, Name destination)
{
    return source == destination;
}
constexpr bool all_homes(Name source, Name)
{
    return source == "*";
}
constexpr bool any_name(Name, Name)
{
    return true;
}

// Two ends of one kind whose names clash. The first that applies is told.
struct Clash {
    std::string_view type;
    bool (*applies)(Name source, Name destination);
    const char *message;
};
constexpr Clash clashes[] = {
    {"share", same_name, "Source/Destination cannot be the same share"},
    {"home", all_homes, "Cannot backup all homes to one's home"},
    {"home", same_name, "Source/Destination cannot be the same user's home"},
    {"volume", same_name, "Source/Destination cannot be the same volume"},
    {"usb", same_name, "Source/Destination cannot be the same usb port"},
    {"remote", any_name, "Source/Destination cannot be remote"},
};

/* ---- One job ------------------------------------------------------------------------------------------- */

int check_parts(Call &call, const Job &job)
{
    if (job.Source == nullptr || job.Destination == nullptr || job.Schedule == nullptr ||
        job.Option == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Source, Destination, Schedule or Option is NULL");
    if (job.Source->Type == nullptr || job.Destination->Type == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Source->Type or  Destination->Type is NULL");
    return 0;
}

// The days as they are stored. A schedule without any is switched off.
int take_days(Call &call, qbobj_BackupJob_Schedule_t &schedule)
{
    const int days = qbdb_dow_to_i(schedule.DayOfWeek);
    if (schedule.Enabled != 0 && days == 0) {
        log(call, QBDB_LOG_WARN,
            "Backup Job is Enabled, but no schedule (DayOfWeek=%s). Force it to Disabled\n",
            or_empty(schedule.DayOfWeek));
        schedule.Enabled = 0;
    }
    return days;
}

int insert_job(Call &call, const Job &job, int days)
{
    const End source = stored(*job.Source);
    const End destination = stored(*job.Destination);
    const qbobj_BackupJob_Schedule_t &schedule = *job.Schedule;
    const qbobj_BackupJob_Option_t option = stored(*job.Option);
    return call.exec("Failed DB Query for backup. %s", R"(INSERT OR REPLACE INTO backup(enabled,name,
        src_type,src_share_proto,src_path,src_login,src_password,src_port,src_eject,
        dst_type,dst_share_proto,dst_path,dst_login,dst_password,dst_port,dst_eject,
        sch_every,sch_start,sch_end,sch_dow,
        opt_full_backup_freq,opt_remove_previous_backup,opt_chown_to_share_owner,opt_rsync_options,
        opt_rsync_exclude,opt_email_this_to_alert_email,opt_misc_option,wol_addr)
        VALUES(%d,%Q,%Q,%Q,%Q,%Q,%Q,%d,%d,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d,%d,%d,%Q,%d,%d,%d,%Q,%d,%d,%Q))",
                     schedule.Enabled, or_empty(job.JobName), source.Type, source.ShareNameOrProtocol,
                     source.Path, source.Login, source.Password, source.Port, source.Eject, destination.Type,
                     destination.ShareNameOrProtocol, destination.Path, destination.Login,
                     destination.Password, destination.Port, destination.Eject, schedule.Frequency,
                     schedule.Start, schedule.End, days, option.FullBackupFrequency,
                     option.RemovePreviousBackup != 0 ? 1 : 0, option.ChownToShareOwner != 0 ? 1 : 0,
                     option.RsyncOption, option.RsyncExclude, option.EmailThisToAlertEmail, option.MiscOption,
                     option.WolAddress);
}

int add_job(Call &call, Job &job)
{
    if (const int rc = check_parts(call, job))
        return rc;
    const int days = take_days(call, *job.Schedule);
    if (const int rc = qbobj_api2_backup_check_src_dst_conflict(call, *job.Source, *job.Destination))
        return rc;
    int holder = 0;
    if (qbobj_validate_db_jobname(call, or_empty(job.JobName), &holder) == 0)
        return raise(call, QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS, "JobName specified is already exist.");
    if (const int rc = insert_job(call, job, days))
        return rc;
    job.resource_id = job.JobId = call.last_id();
    return 0;
}

} // namespace

int qbobj_api2_backup_check_src_dst_conflict(Call &call, const End &src, const End &dst)
{
    const std::string_view type = or_empty(src.Type);
    const std::string_view destination_type = or_empty(dst.Type);
    if (type == "volume" && destination_type == "share") {
        bool is_on_a_volume = false; // even on the source itself a share may be the destination
        return call.exists("Failed DB Query (SELECT share). %s", is_on_a_volume,
                           "SELECT 1 FROM share S INNER JOIN _volume V ON V.id=S.volume_id WHERE S.name=%Q",
                           dst.ShareNameOrProtocol);
    }
    if (type != destination_type)
        return 0;
    for (const Clash &clash : clashes)
        if (clash.type == type &&
            clash.applies(or_empty(src.ShareNameOrProtocol), or_empty(dst.ShareNameOrProtocol)))
            return raise(call, QBOBJ_ERROR_API_ARGS, "%s", clash.message);
    return 0;
}

int x_qbobj_addBackupJob(Call &call, qbobj_BackupJob_t *job)
{
    return for_each(job, add_job, call);
}

} // namespace qbobj
