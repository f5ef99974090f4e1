// Backup jobs read, the places that they can copy from and to, and the jobs of the backup button.
#include "backup/backup.h"

namespace qbobj
{

namespace
{

/* ---- Jobs ---------------------------------------------------------------------------------------------- */

using Job = qbobj_BackupJob_t;
using End = qbobj_BackupJob_SourceOrDestination_t;
using Schedule = qbobj_BackupJob_Schedule_t;
using Option = qbobj_BackupJob_Option_t;

constexpr auto day_names = [](const qbobj_env_t &env, Schedule &schedule, const char *cell) {
    schedule.DayOfWeek = qbdb_i_to_dow(env.qbdb, to_int(cell));
    if (schedule.DayOfWeek == nullptr)
        throw std::bad_alloc();
};

constexpr auto columns_of_end(End *Job::*end)
{
    return std::tuple{of(end, or_empty(&End::Type)),     of(end, or_empty(&End::ShareNameOrProtocol)),
                      of(end, or_empty(&End::Path)),     of(end, or_empty(&End::Login)),
                      of(end, or_empty(&End::Password)), of(end, &End::Port)};
}

constexpr char job_columns[] = R"(SELECT B.id,B.name,B.enabled,
    B.src_type,B.src_share_proto,B.src_path,B.src_login,B.src_password,B.src_port,
    B.dst_type,B.dst_share_proto,B.dst_path,B.dst_login,B.dst_password,B.dst_port,
    B.sch_every,B.sch_start,B.sch_end,B.sch_dow,
    B.opt_full_backup_freq,B.opt_remove_previous_backup,B.opt_chown_to_share_owner,B.opt_rsync_options,
    B.opt_rsync_exclude,B.opt_email_this_to_alert_email,B.opt_misc_option,B.wol_addr)";
constexpr auto job_members = std::tuple_cat(
    std::tuple{both(&Job::resource_id, &Job::JobId), or_empty(&Job::JobName),
               of(&Job::Schedule, &Schedule::Enabled)},
    columns_of_end(&Job::Source), columns_of_end(&Job::Destination),
    std::tuple{of(&Job::Schedule, &Schedule::Frequency), of(&Job::Schedule, &Schedule::Start),
               of(&Job::Schedule, &Schedule::End), of(&Job::Schedule, day_names),
               of(&Job::Option, or_empty(&Option::FullBackupFrequency)),
               of(&Job::Option, &Option::RemovePreviousBackup), of(&Job::Option, &Option::ChownToShareOwner),
               of(&Job::Option, &Option::RsyncOption), of(&Job::Option, or_empty(&Option::RsyncExclude)),
               of(&Job::Option, &Option::EmailThisToAlertEmail), of(&Job::Option, &Option::MiscOption),
               of(&Job::Option, or_empty(&Option::WolAddress))});

constexpr auto one_job_text = joined(job_columns, " FROM backup B WHERE id=%d");
constexpr auto one_job = select_into<int>(one_job_text, "Failed DB Query for backup. %s", job_members);

// An end is ejectable when it is a USB port, or a share on removable storage.
constexpr auto all_jobs_text = joined(job_columns, R"(,B.src_eject,B.dst_eject,
    B.src_type='usb' OR B.src_type='share'
        AND EXISTS (SELECT 1 FROM share S WHERE S.name=B.src_share_proto AND S.volume_id='media'),
    B.dst_type='usb' OR B.dst_type='share'
        AND EXISTS (SELECT 1 FROM share S WHERE S.name=B.dst_share_proto AND S.volume_id='media')
    FROM backup B)");
constexpr auto all_jobs = select_into(
    all_jobs_text, "Failed DB Query for backup. %s",
    std::tuple_cat(job_members,
                   std::tuple{of(&Job::Source, &End::Eject), of(&Job::Destination, &End::Eject),
                              of(&Job::Source, &End::Ejectable), of(&Job::Destination, &End::Ejectable)}));

/* ---- Places, a SELECT a kind. The two lists number the kinds differently, and sort homes differently ---- */

constexpr char shares[] = R"(SELECT 1,S.name,'share',NULL,S.name,S.path,S.id,S.volume_id='media'
    FROM share S WHERE S.type='share')";
constexpr char all_homes[] = R"(SELECT 2,'*','home',NULL,'*',(SELECT '/'||V.lv_name||'/home'),0,0
    FROM account_default A INNER JOIN _volume V ON V.id=A.home_volume_id)";
constexpr char homes[] = R"(,'home',NULL,T.uname,T.home,T.id,0
    FROM (SELECT U.uname as uname,U.home as home,U.id as id FROM `$user` U WHERE U.is_privileged=0
        AND U.uname<>'nobody' AND U.uname<>'guest' AND U.rid IS %sNULL
        AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),
            (SELECT id FROM `$group` G WHERE G.gname='nogroup')) LIMIT 500) AS T)";
constexpr char volumes[] = R"(SELECT 4,V.lv_name,'volume',NULL,V.lv_name,'/'||V.lv_name,V.rowid,0
    FROM _volume V WHERE V.lv_name!='USB' AND V.lv_name!='media')";
constexpr char protocols[] = ",P.proto,'remote',NULL,P.proto,'',P.id,0 FROM backup_protocol P";
constexpr char usb_ports[] = R"(,USB.id,'usb','BACKUP_'||USB.descr,'usb_port_'||USB.port,COALESCE(
        (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.port,'_',':')||'%%'),
        (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.alt_port,'_',':')||'%%'),
        ''),USB.id,1 FROM usb_port USB)";
constexpr char time_machine[] =
    R"(SELECT 7,'~timemachine~','timemachine',NULL,'~timemachine~','/c/.timemachine',0,0
    FROM `$user` U WHERE U.id=96 AND U.passwd NOT NULL AND U.passwd NOT LIKE '!%%')";
constexpr char in_order[] = ") ORDER BY 1,2 COLLATE NOCASE";

// The homes of the sources all have the sort name 'T.uname', a text: they keep the database's order.
constexpr auto source_text = joined(
    "SELECT *", " FROM (", shares, " UNION ", all_homes, " UNION SELECT 3,'T.uname'", homes, " UNION ",
    volumes, " UNION SELECT 5", protocols, " UNION SELECT 6", usb_ports, " UNION ", time_machine, in_order);
constexpr auto destination_text =
    joined("SELECT *", " FROM (", shares, " UNION SELECT 2,T.uname", homes, " UNION SELECT 4", protocols,
           " WHERE P.readonly=0 UNION SELECT 5", usb_ports, in_order);

using Target = qbobj_BackupTarget_t;

constexpr std::tuple target_members{skipped,
                                    skipped,
                                    or_empty(&Target::Type),
                                    or_empty(&Target::UsbSubType),
                                    or_empty(&Target::ShareNameOrProtocol),
                                    or_empty(&Target::Path),
                                    &Target::Id,
                                    &Target::Ejectable};
constexpr auto source_targets =
    select_into<const char *>(source_text, "Failed DB Query for backup target. %s", target_members);
constexpr auto destination_targets =
    select_into<const char *>(destination_text, "Failed DB Query for backup target. %s", target_members);

// Replaces the list, but only when it could be read.
template <class Targets>
int read_targets(Call &call, const Targets &targets, Target *&list)
{
    Target *found = nullptr;
    if (const int rc = call.append(targets, found, call.directory().rid_not()))
        return rc;
    list = found;
    return 0;
}

/* ---- The button ---------------------------------------------------------------------------------------- */

constexpr auto button_jobs =
    select(R"(SELECT J.backup_id,B.name FROM backup_button_jobs J
        INNER JOIN backup B ON B.id=J.backup_id ORDER BY J.`order`)",
           "Failed DB Query for (SELECT backup_button_jobs). %s", &qbobj_BackupButtonJob_t::JobId,
           or_empty(&qbobj_BackupButtonJob_t::JobName));

} // namespace

int x_qbobj_getBackupJobCollection(Call &call, qbobj_BackupJobCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(all_jobs, collection->BackupJob);
}

int x_qbobj_getBackupJob(Call &call, qbobj_BackupJob_t *job)
{
    if (job == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "job cannot be NULL.");
    const int key = key_of(*job);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", job->resource_id);
    return call.require(
        one_job, error(QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=%d.", key), *job, key);
}

int x_qbobj_getBackupTargetCollection(Call &call, qbobj_BackupTargetCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    if (const int rc = read_targets(call, source_targets, collection->AvailableSourceTarget))
        return rc;
    return read_targets(call, destination_targets, collection->AvailableDestinationTarget);
}

int x_qbobj_getBackupButtonJobCollection(Call &call, qbobj_BackupButtonJobCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(button_jobs, collection->Jobs);
}

int x_qbobj_getBackupUSBSubType(Call &call, const char *usb_port, char **USBSubType)
{
    if (USBSubType == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "USBSubType cannot be NULL.");
    return call.text("Failed DB Query for usb_port. %s", *USBSubType,
                     R"(SELECT COALESCE(
        (SELECT 'BACKUP_'||USB.descr FROM usb_port USB WHERE 'usb_port_'||USB.port=%Q),
        (SELECT 'BACKUP_'||USB.descr FROM usb_port USB WHERE 'usb_port_'||USB.alt_port=%Q)))",
                     usb_port, usb_port);
}

} // namespace qbobj
