/**
 * @file backup.h
 * Backup jobs, the places that they can read and write, and the jobs of the backup button.
 */
#ifndef QBOBJ_BACKUP_H
#define QBOBJ_BACKUP_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** One end of a backup job. */
struct qbobj_BackupJob_SourceOrDestination {
    /** Kind of the end. @words "share", "home", "volume", "remote", "usb", "timemachine" @required */
    const char *Type;
    /** Name of the share, user ("*": all homes) or volume; the remote protocol; "usb_port_" and the port's
     *  name. @required */
    const char *ShareNameOrProtocol;
    const char *Path;     /**< path inside it; the remote host and path */
    const char *Login;    /**< login of the remote host */
    const char *Password; /**< its password, stored and returned plain. @secret */
    int Port;             /**< port of the remote host */
    int Ejectable;        /**< the end is removable storage. @words 0, 1 @readonly */
    int Eject;            /**< the medium is ejected when the job is done. @words 0, 1 */
};

/** When a backup job runs. The backup engine fixes the unit of the three numbers. */
struct qbobj_BackupJob_Schedule {
    int Enabled;   /**< the job runs by itself. @words 0, 1 */
    int Frequency; /**< interval between two runs, as the engine counts it */
    int Start;     /**< begin of the time in which it may run */
    int End;       /**< end of that time */
    /** Days on which it runs, joined by commas. @words "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat" */
    const char *DayOfWeek;
};

/** How a backup job runs. The backup engine fixes the meaning of the bits and of FullBackupFrequency. */
struct qbobj_BackupJob_Option {
    const char *FullBackupFrequency; /**< how often a full backup is made */
    int RemovePreviousBackup;        /**< a full backup first removes what is there. @words 0, 1 */
    int ChownToShareOwner;           /**< files are given to the share's owner. @words 0, 1 */
    int RsyncOption;                 /**< bit set: options of rsync */
    const char *RsyncExclude;        /**< patterns that rsync leaves out */
    int EmailThisToAlertEmail;       /**< what is mailed to the alert address */
    int MiscOption;                  /**< bit set: other options */
    const char *WolAddress;          /**< hardware address of the host to wake before the job; "" is none */
};

/** A backup job. */
struct qbobj_BackupJob {
    qbobj_BackupJob_t *_link;                           /**< next */
    int resource_id;                                    /**< key of the job: its id */
    int JobId;                                          /**< id */
    const char *JobName;                                /**< name, unique. @required */
    qbobj_BackupJob_SourceOrDestination_t *Source;      /**< where data is read; a creation needs one */
    qbobj_BackupJob_SourceOrDestination_t *Destination; /**< where data is written; a creation needs one */
    qbobj_BackupJob_Schedule_t *Schedule;               /**< when it runs. @required */
    qbobj_BackupJob_Option_t *Option;                   /**< how it runs; a creation needs one */
    int Changed; /**< set by a modification: the stored job became another. @words 0, 1 @readonly */
};

/** A list of backup jobs. */
struct qbobj_BackupJobCollection {
    qbobj_BackupJob_t *BackupJob; /**< list: the jobs */
};

/** A place that a backup job can read or write. */
struct qbobj_BackupTarget {
    qbobj_BackupTarget_t *_link; /**< next */
    /** Kind of the place. @words "share", "home", "volume", "remote", "usb", "timemachine" @readonly */
    const char *Type;
    const char *UsbSubType;          /**< "usb": "BACKUP_" and the port's description; else "". @readonly */
    const char *ShareNameOrProtocol; /**< as in qbobj_BackupJob_SourceOrDestination_t. @readonly */
    const char *Path;                /**< where it is. @readonly */
    int Id;                          /**< id of the share, user, volume or port. @readonly */
    int Ejectable;                   /**< removable storage. @words 0, 1 @readonly */
};

/** The places that backup jobs can read and write. */
struct qbobj_BackupTargetCollection {
    qbobj_BackupTarget_t *AvailableSourceTarget;      /**< list: places to read */
    qbobj_BackupTarget_t *AvailableDestinationTarget; /**< list: places to write */
};

/** A job that the backup button starts. */
struct qbobj_BackupButtonJob {
    qbobj_BackupButtonJob_t *_link; /**< next, in the order in which they run */
    int JobId;                      /**< id of the job. @required */
    const char *JobName;            /**< its name. @readonly */
};

/** The jobs that the backup button starts. */
struct qbobj_BackupButtonJobCollection {
    qbobj_BackupButtonJobCollection_t *_link; /**< not used */
    qbobj_BackupButtonJob_t *Jobs;            /**< list: the jobs */
};

/* ---- Jobs read ----------------------------------------------------------------------------------------- */

/**
 * Lists all backup jobs.
 *
 * An end is `Ejectable` when it is a USB port, or a share on removable storage (the volume "media").
 *
 * @param[in,out] collection  the jobs are appended to its list
 * @reads backup, share
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getBackupJobCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                           qbobj_BackupJobCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Reads one backup job.
 *
 * Records that hang in the job are reused. `Eject` and `Ejectable` of the ends are not filled: they keep what
 * they hold, 0 in new records.
 *
 * @param[in,out] job  found by `resource_id`, or by `JobId` where that is below 1
 * @reads backup
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       neither id is 1 or more, or a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no job has the id
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job,
                                 qbobj_error_rec_t *err);

/**
 * Lists the places that backup jobs can read, and those that they can write.
 *
 * Sources are the shares, "*" for all homes, the homes of at most 500 users, the volumes, the protocols of
 * remote hosts, the USB ports, and the Time Machine area while its account has a password; in this order, by
 * name without regard to case, except that homes are not sorted. Destinations are shares, homes, protocols
 * that can write, and USB ports, all sorted. Homes are those of directory users where accounts come from a
 * directory, else of local users.
 *
 * @param[out] collection  both lists; what they held is dropped
 * @reads service_cifs, share, account_default, _volume, $user, $group, backup_protocol, usb_port, usb_storage
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getBackupTargetCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                              qbobj_BackupTargetCollection_t *collection,
                                              qbobj_error_rec_t *err);

/**
 * Finds the kind of a USB port.
 *
 * @param[in]  usb_port    "usb_port_" and the name of the port, or of its alternative
 * @param[out] USBSubType  "BACKUP_" and the description of the port; null when no port has the name
 * @reads usb_port
 * @error QBOBJ_ERROR_API_ARGS  no `USBSubType`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getBackupUSBSubType(qbdb_handle_t *qbdb, sqlite3 *db, const char *usb_port,
                                        char **USBSubType, qbobj_error_rec_t *err);

/* ---- The button ---------------------------------------------------------------------------------------- */

/**
 * Lists the jobs that the backup button starts, in their order; those that were deleted are left out.
 *
 * @param[in,out] collection  the jobs are appended to its list
 * @reads backup_button_jobs, backup
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getBackupButtonJobCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                 qbobj_BackupButtonJobCollection_t *collection,
                                                 qbobj_error_rec_t *err);

/**
 * Replaces the jobs that the backup button starts.
 *
 * Only `JobId` counts, and whether there is such a job is not checked. A job listed twice runs twice.
 *
 * @param[in] collection  the jobs in their order; an empty list leaves the button without jobs
 * @writes backup_button_jobs
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setBackupButtonJobCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                 qbobj_BackupButtonJobCollection_t *collection,
                                                 qbobj_error_rec_t *err);

/* ---- Jobs written -------------------------------------------------------------------------------------- */

/**
 * Creates backup jobs.
 *
 * Each record needs `Source`, `Destination`, `Schedule` and `Option`, and both ends a `Type`. An enabled job
 * without a day is switched off, in the record too. Data cannot be copied from a share, home, volume or USB
 * port to itself, from all homes to a home, nor from a remote host to a remote host; the names are not looked
 * up. Job names are unique; a missing one is "".
 *
 * @param[in,out] job  the records; null creates nothing. On success each record's `resource_id` and `JobId`
 *                     are the new id
 * @reads  share, _volume
 * @writes backup
 * @error QBOBJ_ERROR_API_ARGS                    a record or type is missing, or the ends are in conflict
 * @error QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS  another job has the name
 * @error QBOBJ_ERROR_DB_MISC                     a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job,
                                 qbobj_error_rec_t *err);

/**
 * Changes backup jobs: name and schedule, and of the other records those that are given.
 *
 * `Schedule` is required, and a missing `JobName` renames the job to "". What is given is written whole. An
 * enabled job without a day is switched off, in the record too. Two ends with a `Type` are checked as in
 * qbobj_addBackupJob(); one alone, even a destination, is checked against the stored destination, whose path
 * counts as its name. A job that does not exist is not an error. The new values together take at most about
 * 2000 bytes; those that do not fit are left out, with a warning in the log.
 *
 * @param[in,out] job  the records, found by `resource_id`, or by `JobId` where that is below 1; null changes
 *                     nothing. Each record's `Changed` tells whether the stored job became another
 * @reads  share, _volume
 * @writes backup
 * @error QBOBJ_ERROR_API_ARGS                    no schedule, or the ends are in conflict
 * @error QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS  another job has the name
 * @error QBOBJ_ERROR_DB_MISC                     neither id is 1 or more, the schedule starts after its end,
 *                                                or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job,
                                    qbobj_error_rec_t *err);

/**
 * Deletes backup jobs, also from the list of the backup button.
 *
 * @param[in,out] job  the records, found by `resource_id`, or by `JobId` where that is below 1; null deletes
 *                     nothing. A missing `JobName` becomes the name of the deleted job
 * @writes backup, backup_button_jobs
 * @error QBOBJ_ERROR_API_ARGS      neither id is 1 or more
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no job has the id
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job,
                                    qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
