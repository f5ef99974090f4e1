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
    const char *Type;                /**< "share", "home", "volume", "remote", "usb" or "timemachine" */
    const char *ShareNameOrProtocol; /**< name of the share, user ("*": all homes) or volume; the remote
                                        protocol; "usb_port_" and the port's name */
    const char *Path;                /**< path inside it; the remote host and path */
    const char *Login;               /**< login of the remote host */
    const char *Password;            /**< its password, stored and returned plain */
    int Port;                        /**< port of the remote host */
    int Ejectable;                   /**< 0/1: the end is removable storage; read only */
    int Eject;                       /**< 0/1: the medium is ejected when the job is done */
};

/** When a backup job runs. The backup engine fixes the unit of the three numbers. */
struct qbobj_BackupJob_Schedule {
    int Enabled;           /**< 0/1: the job runs by itself */
    int Frequency;         /**< interval between two runs */
    int Start;             /**< begin of the time in which it may run */
    int End;               /**< end of that time */
    const char *DayOfWeek; /**< days on which it runs, such as "Mon,Fri" */
};

/** How a backup job runs. The backup engine fixes the meaning of the bits and of FullBackupFrequency. */
struct qbobj_BackupJob_Option {
    const char *FullBackupFrequency; /**< how often a full backup is made */
    int RemovePreviousBackup;        /**< 0/1: a full backup first removes what is there */
    int ChownToShareOwner;           /**< 0/1: files are given to the share's owner */
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
    const char *JobName;                                /**< name, unique */
    qbobj_BackupJob_SourceOrDestination_t *Source;      /**< where data is read */
    qbobj_BackupJob_SourceOrDestination_t *Destination; /**< where data is written */
    qbobj_BackupJob_Schedule_t *Schedule;               /**< when it runs */
    qbobj_BackupJob_Option_t *Option;                   /**< how it runs */
    int Changed; /**< output of a modification, 0/1: the stored job became another */
};

/** A list of backup jobs. */
struct qbobj_BackupJobCollection {
    qbobj_BackupJob_t *BackupJob; /**< list: the jobs */
};

/** A place that a backup job can read or write. */
struct qbobj_BackupTarget {
    qbobj_BackupTarget_t *_link;     /**< next */
    const char *Type;                /**< as in qbobj_BackupJob_SourceOrDestination_t */
    const char *UsbSubType;          /**< "usb": "BACKUP_" and the port's description; else "" */
    const char *ShareNameOrProtocol; /**< as in qbobj_BackupJob_SourceOrDestination_t */
    const char *Path;                /**< where it is */
    int Id;                          /**< id of the share, user, volume or port */
    int Ejectable;                   /**< 0/1: removable storage */
};

/** The places that backup jobs can read and write. */
struct qbobj_BackupTargetCollection {
    qbobj_BackupTarget_t *AvailableSourceTarget;      /**< list: places to read */
    qbobj_BackupTarget_t *AvailableDestinationTarget; /**< list: places to write */
};

/** A job that the backup button starts. */
struct qbobj_BackupButtonJob {
    qbobj_BackupButtonJob_t *_link; /**< next, in the order in which they run */
    int JobId;                      /**< id of the job */
    const char *JobName;            /**< its name; read only */
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
