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

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
