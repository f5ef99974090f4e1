/**
 * @file storage.h
 * Volumes, disks and enclosures, snapshots and their clones, health readings, and the schedules of volumes.
 */
#ifndef QBOBJ_STORAGE_H
#define QBOBJ_STORAGE_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: volumes and disks ------------------------------------------------------------------------ */

/** The id of an object, as operations on mixed objects take it. */
struct qbobj_ResourceId {
    qbobj_ResourceId_t *_link; /**< next */
    int ResourceId;            /**< the id */
};

/** A volume. */
struct qbobj_Volume {
    qbobj_Volume_t *_link;    /**< next */
    const char *resource_id;  /**< key of the volume: its id */
    const char *VolumeId;     /**< id */
    const char *VolumeName;   /**< name */
    const char *RaidType;     /**< RAID type; "QRAID" when none is stored */
    int64_t BlockTotal;       /**< size in KB */
    int64_t BlockFree;        /**< free space in KB */
    int BlockSize;            /**< block size of the file system, in bytes */
    const char *VolumeHealth; /**< state of the volume */
    int SentResilverEvent;    /**< 0/1: the running rebuild has been reported */
    int SentScanEnd;          /**< 0/1: the end of the last scan has been reported */
    int BalanceStatus;        /**< state of the balancing, as stored */
    int DisktestStatus;       /**< state of the disk test, as stored */
    const char *KeyFile;      /**< key file of an encrypted volume */
};

/** The volumes of the appliance. */
struct qbobj_VolumeCollection {
    qbobj_VolumeCollection_t *_link; /**< not used */
    const char *SystemRaidMode;      /**< RAID mode of the appliance; "QRAID" when none is stored */
    qbobj_Volume_t *Volume;          /**< list: the volumes */
};

/** A disk. */
struct qbobj_Disk {
    qbobj_Disk_t *_link;         /**< next */
    int resource_id;             /**< the id read as a number; 0 for a device name */
    const char *DiskId;          /**< id */
    int Present;                 /**< 0/1: the disk is in its slot */
    const char *DevName;         /**< device name: the id again */
    int Controller;              /**< number of the controller */
    int Channel;                 /**< channel of the controller */
    const char *Model;           /**< model */
    const char *Serial;          /**< serial number */
    const char *FirmwareVersion; /**< version of the firmware */
    int RPM;                     /**< rotations a minute; 0 without moving parts */
    int64_t Sectors;             /**< number of sectors */
    int64_t Capacity;            /**< size, as stored */
    int Temperature;             /**< temperature in degrees Celsius */
    int ATAError;                /**< number of ATA errors */
    const char *Pool;            /**< volume that the disk belongs to */
    const char *PoolType;        /**< part that the disk plays in the volume */
    const char *PoolState; /**< "NEW", "ACTIVE", "EXPORTED", "DESTROYED", "SPARE", "L2CACHE", "UNINITIALIZED",
                                "UNAVAIL", "POTENTIALLY_ACTIVE" or "UNKNOWN" */
    uint64_t PoolHostId;   /**< id of the appliance that the volume was last used by */
    const char *SlotName;  /**< position in the enclosure: column, "x", row */
    const char *HardwareInterface; /**< interface of the disk */
    int DiskEnclosureId;           /**< number of the enclosure's controller */
    const char *DiskState;         /**< state of the disk in its volume */
    int ReplacedWithSpare;         /**< 0/1: a spare has taken the disk's place */
    int IsSignedByMaltrex;         /**< 0/1: the firmware is signed */
};

/** An enclosure with its disks. */
struct qbobj_DiskCollection {
    qbobj_DiskCollection_t *_link; /**< next */
    const char *resource_id;       /**< key of the enclosure */
    int DiskEnclosureId;           /**< number of its controller */
    const char *DiskEnclosurePort; /**< label of the port that it is connected to */
    const char *SESDevice;         /**< device of its enclosure services */
    const char *EnclosureName;     /**< name */
    int EnclosureRows;             /**< rows of slots */
    int EnclosureCols;             /**< columns of slots */
    int IsSlotHorizontal;          /**< 0/1: disks lie flat */
    const char *DeadSlots;         /**< slots that cannot hold a disk */
    qbobj_Disk_t *Disk;            /**< list: the disks */
};

/** The enclosures of the appliance. */
struct qbobj_DiskEnclosureCollection {
    qbobj_DiskCollection_t *DiskEnclosure; /**< list: the enclosures */
};

/** A disk that was inserted or removed. */
struct qbobj_DiskDiff {
    qbobj_DiskDiff_t *_link;       /**< next */
    int AddOrRemove;               /**< 1 inserted, -1 removed */
    const char *DiskId;            /**< id */
    int Controller;                /**< number of the controller */
    int Channel;                   /**< channel of the controller */
    const char *Model;             /**< model */
    const char *Serial;            /**< serial number */
    const char *FirmwareVersion;   /**< version of the firmware */
    int RPM;                       /**< rotations a minute; 0 without moving parts */
    int64_t Sectors;               /**< number of sectors */
    int64_t Capacity;              /**< size, as stored */
    const char *DiskEnclosureId;   /**< "controller-" and the controller's number */
    const char *DiskEnclosureName; /**< name of the enclosure */
    const char *SlotName;          /**< position in the enclosure: column, "x", row */
    const char *HardwareInterface; /**< interface of the disk */
    const char *Pool;              /**< volume that the disk belongs to */
    const char *PoolType;          /**< part that the disk plays in the volume */
    const char *PoolState;         /**< as in qbobj_Disk_t */
    uint64_t PoolHostId;           /**< id of the appliance that the volume was last used by */
    int ReplacedWithSpare;         /**< 0/1: a spare has taken the disk's place */
    int IsSignedByMaltrex;         /**< 0/1: the firmware is signed */
};

/* ---- Records: snapshots -------------------------------------------------------------------------------- */

/** When snapshots are made: the five fields of a cron line, and what was made last. */
struct qbobj_Schedule {
    int Enabled;             /**< 0/1 */
    const char *Minute;      /**< cron field */
    const char *Hour;        /**< cron field */
    const char *DayOfMonth;  /**< cron field */
    const char *DayOfWeek;   /**< cron field */
    const char *Month;       /**< cron field */
    int LastTaken;           /**< last snapshot, Unix seconds */
    int PurgeManualSnapshot; /**< 0/1: snapshots made by hand may be removed for space */
    int LastDailyTaken;      /**< last daily snapshot, Unix seconds */
    int LastWeeklyTaken;     /**< last weekly snapshot, Unix seconds */
};

/** A snapshot of a share. */
struct qbobj_Snapshot {
    qbobj_Snapshot_t *_link;  /**< next */
    int resource_id;          /**< key of the snapshot: its row id */
    const char *ShareName;    /**< name of the share */
    const char *VolumeName;   /**< name of its volume */
    const char *SnapshotName; /**< name */
    int Type;                 /**< 1 made by the schedule, 2 made by hand */
    int CreatedOn;            /**< Unix seconds */
    const char *Path;         /**< where its contents can be seen */
};

/** A list of snapshots of shares. */
struct qbobj_SnapshotCollection {
    qbobj_Snapshot_t *Snapshot; /**< list: the snapshots */
};

/** A snapshot of a user's home. */
struct qbobj_HfSnapshot {
    qbobj_HfSnapshot_t *_link; /**< next */
    int resource_id;           /**< key of the snapshot: its row id */
    const char *UserName;      /**< name of the user */
    const char *HomeDir;       /**< path of the home */
    const char *SnapshotName;  /**< name */
    int Type;                  /**< 1 made by the schedule, 2 made by hand */
    int CreatedOn;             /**< Unix seconds */
    const char *Path;          /**< where its contents can be seen */
};

/** A list of snapshots of homes. */
struct qbobj_HfSnapshotCollection {
    qbobj_HfSnapshot_t *HfSnapshot; /**< list: the snapshots */
};

/** A share that was made from a snapshot. */
struct qbobj_SnapshotClone {
    qbobj_SnapshotClone_t *_link;   /**< next */
    int resource_id;                /**< key of the clone: its row id */
    const char *ClonedShareName;    /**< name of the share that was made */
    const char *ParentSnapshotName; /**< name of the snapshot */
    const char *ParentShareName;    /**< name of the share that was snapshotted */
};

/** A list of clones. */
struct qbobj_SnapshotCloneCollection {
    qbobj_SnapshotClone_t *SnapshotClone; /**< list: the clones */
};

/* ---- Records: health ----------------------------------------------------------------------------------- */

/** The readings of a disk. */
struct qbobj_DiskHealth {
    qbobj_DiskHealth_t *_link; /**< next */
    const char *resource_id;   /**< "controller-" and the controller's number */
    const char *DiskId;        /**< id of the disk */
    int Controller;            /**< number of the controller */
    int Channel;               /**< channel of the controller */
    int ATAErrors;             /**< ATA errors */
    int ReallocSect;           /**< reallocated sectors */
    int ReallocEvent;          /**< reallocations */
    int SpinRetryCnt;          /**< repeated spin-ups */
    int IOEdc;                 /**< errors of the data path */
    int CmdTimeouts;           /**< commands that timed out */
    int PendingSect;           /**< sectors that wait for their reallocation */
    int UncorrectableErr;      /**< errors that could not be corrected */
    int Temp;                  /**< temperature in degrees Celsius */
    int StartStopCnt;          /**< starts and stops */
    int PowerOnHrs;            /**< hours under power */
    int PowerCycleCnt;         /**< power cycles */
    int LoadCycleCnt;          /**< load cycles of the heads */
    const char *ZpoolState;    /**< state of the disk in its volume */
    int ZpoolReadErrorCnt;     /**< read errors in the volume */
    int ZpoolWriteErrorCnt;    /**< write errors in the volume */
    int ZpoolCksumErrorCnt;    /**< checksum errors in the volume */
};

/** The readings of disks. */
struct qbobj_DiskHealthCollection {
    qbobj_DiskHealthCollection_t *_link; /**< not used */
    qbobj_DiskHealth_t *Health;          /**< list: one a disk */
};

/** The reading of one sensor. */
struct qbobj_EnclosureHealthItem {
    qbobj_EnclosureHealthItem_t *_link; /**< next */
    const char *Name;                   /**< kind of the sensor, such as "Fan" */
    const char *DevId;                  /**< number of the sensor */
    int Value;                          /**< reading */
    int ValuePrev1;                     /**< the reading before */
    int ValuePrev2;                     /**< the reading before that */
    int ValuePrev3;                     /**< the oldest reading */
    int Min;                            /**< lowest healthy value */
    int Max;                            /**< highest healthy value */
    const char *Label;                  /**< label of the sensor */
};

/** The sensors of an enclosure. */
struct qbobj_EnclosureHealth {
    qbobj_EnclosureHealth_t *_link;      /**< next */
    const char *resource_id;             /**< "controller-" and the controller's number */
    int Controller;                      /**< number of the controller */
    const char *PortLabel;               /**< label of the port that the enclosure is connected to */
    int NrCpu;                           /**< number of processor sensors */
    int NrFan;                           /**< number of fans */
    int NrPsu;                           /**< number of power supplies */
    int NrVolt;                          /**< number of voltage sensors */
    qbobj_EnclosureHealthItem_t *Health; /**< list: the readings */
};

/** The sensors of enclosures. */
struct qbobj_EnclosureHealthCollection {
    qbobj_EnclosureHealthCollection_t *_link; /**< not used */
    qbobj_EnclosureHealth_t *Health;          /**< list: one an enclosure */
};

/** The readings of a UPS device. */
struct qbobj_UpsHealth {
    qbobj_UpsHealth_t *_link;   /**< next */
    const char *resource_id;    /**< key of the device: name, "@", host */
    const char *UpsName;        /**< name */
    const char *ServerHost;     /**< host that serves it */
    const char *UpsModel;       /**< model */
    const char *UpsStatus;      /**< status */
    const char *BatteryCharge;  /**< battery charge */
    const char *BatteryRunTime; /**< run time left */
    const char *BatteryVoltage; /**< battery voltage */
};

/** The readings of UPS devices. */
struct qbobj_UpsHealthCollection {
    qbobj_UpsHealthCollection_t *_link; /**< not used */
    qbobj_UpsHealth_t *Health;          /**< list: one a device */
};

/* ---- Records: schedules of volumes --------------------------------------------------------------------- */

/** The five fields of a cron line, each in cron's syntax. */
struct qbobj_CronSchedule {
    const char *Minute;     /**< minute */
    const char *Hour;       /**< hour */
    const char *DayOfMonth; /**< day of the month */
    const char *Month;      /**< month */
    const char *DayOfWeek;  /**< day of the week */
};

/** A task that runs on a volume now and then. */
struct qbobj_VolumeSchedule {
    qbobj_VolumeSchedule_t *_link;  /**< next */
    const char *resource_id;        /**< key of the job: its id as text */
    const char *VolumeName;         /**< name of the volume */
    int JobID;                      /**< id, chosen by the caller */
    int Enabled;                    /**< 0/1 */
    int Action;                     /**< task, as the scheduler numbers them; stored unchanged */
    qbobj_CronSchedule_t *Interval; /**< when it runs */
};

/** A list of tasks of volumes. */
struct qbobj_VolumeScheduleCollection {
    qbobj_VolumeSchedule_t *VolumeSchedule; /**< list: the tasks */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
