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
    const char *resource_id;  /**< key of the volume: its id. @readonly */
    const char *VolumeId;     /**< id. @required */
    const char *VolumeName;   /**< name. @readonly */
    const char *RaidType;     /**< RAID type; "QRAID" when none is stored. @readonly */
    int64_t BlockTotal;       /**< size. @unit KB */
    int64_t BlockFree;        /**< free space. @unit KB */
    int BlockSize;            /**< block size of the file system. @unit bytes */
    const char *VolumeHealth; /**< state of the volume */
    int SentResilverEvent;    /**< the running rebuild has been reported. @words 0, 1 */
    int SentScanEnd;          /**< the end of the last scan has been reported. @words 0, 1 */
    int BalanceStatus;        /**< state of the balancing, as stored */
    int DisktestStatus;       /**< state of the disk test, as stored */
    const char *KeyFile;      /**< name of an encrypted volume's key file, not the key */
};

/** The volumes of the appliance. */
struct qbobj_VolumeCollection {
    qbobj_VolumeCollection_t *_link; /**< not used */
    const char *SystemRaidMode; /**< RAID mode of the appliance; "QRAID" when none is stored. @readonly */
    qbobj_Volume_t *Volume;     /**< list: the volumes */
};

/** A disk. */
struct qbobj_Disk {
    qbobj_Disk_t *_link;         /**< next */
    int resource_id;             /**< the id read as a number; 0 for a device name. @readonly */
    const char *DiskId;          /**< id. @readonly */
    int Present;                 /**< the disk is in its slot. @words 0, 1 @readonly */
    const char *DevName;         /**< device name: the id again */
    int Controller;              /**< number of the controller. @readonly */
    int Channel;                 /**< channel of the controller. @readonly */
    const char *Model;           /**< model. @readonly */
    const char *Serial;          /**< serial number. @readonly */
    const char *FirmwareVersion; /**< version of the firmware. @readonly */
    int RPM;                     /**< speed; 0 without moving parts. @unit rotations a minute @readonly */
    int64_t Sectors;             /**< number of sectors. @readonly */
    int64_t Capacity;            /**< size. @unit bytes @readonly */
    int Temperature;             /**< temperature. @unit degrees Celsius @readonly */
    int ATAError;                /**< number of ATA errors. @readonly */
    const char *Pool;            /**< volume that the disk belongs to. @readonly */
    const char *PoolType;        /**< part that the disk plays in the volume. @readonly */
    /** State of that volume.
     *  @words "NEW", "ACTIVE", "EXPORTED", "DESTROYED", "SPARE", "L2CACHE", "UNINITIALIZED", "UNAVAIL",
     *  "POTENTIALLY_ACTIVE", "UNKNOWN" @readonly */
    const char *PoolState;
    uint64_t PoolHostId;           /**< id of the appliance that the volume was last used by. @readonly */
    const char *SlotName;          /**< position in the enclosure: column, "x", row. @readonly */
    const char *HardwareInterface; /**< interface of the disk. @readonly */
    int DiskEnclosureId;           /**< number of the enclosure's controller. @readonly */
    const char *DiskState;         /**< state of the disk in its volume. @readonly */
    int ReplacedWithSpare;         /**< a spare has taken the disk's place. @words 0, 1 @readonly */
    int IsSignedByMaltrex;         /**< the firmware is signed. @words 0, 1 @readonly */
};

/** An enclosure with its disks. */
struct qbobj_DiskCollection {
    qbobj_DiskCollection_t *_link; /**< next */
    const char *resource_id;       /**< key of the enclosure. @readonly */
    int DiskEnclosureId;           /**< number of its controller. @readonly */
    const char *DiskEnclosurePort; /**< label of the port that it is connected to. @readonly */
    const char *SESDevice;         /**< device of its enclosure services. @readonly */
    const char *EnclosureName;     /**< name. @readonly */
    int EnclosureRows;             /**< rows of slots. @readonly */
    int EnclosureCols;             /**< columns of slots. @readonly */
    int IsSlotHorizontal;          /**< disks lie flat. @words 0, 1 @readonly */
    const char *DeadSlots;         /**< slots that cannot hold a disk. @readonly */
    qbobj_Disk_t *Disk;            /**< list: the disks */
};

/** The enclosures of the appliance. */
struct qbobj_DiskEnclosureCollection {
    qbobj_DiskCollection_t *DiskEnclosure; /**< list: the enclosures */
};

/** A disk that was inserted or removed. */
struct qbobj_DiskDiff {
    qbobj_DiskDiff_t *_link;       /**< next */
    int AddOrRemove;               /**< 1 inserted, -1 removed. @words 1, -1 @readonly */
    const char *DiskId;            /**< id. @readonly */
    int Controller;                /**< number of the controller */
    int Channel;                   /**< channel of the controller */
    const char *Model;             /**< model. @readonly */
    const char *Serial;            /**< serial number. @readonly */
    const char *FirmwareVersion;   /**< version of the firmware. @readonly */
    int RPM;                       /**< speed; 0 without moving parts. @unit rotations a minute @readonly */
    int64_t Sectors;               /**< number of sectors. @readonly */
    int64_t Capacity;              /**< size. @unit bytes @readonly */
    const char *DiskEnclosureId;   /**< "controller-" and the controller's number. @readonly */
    const char *DiskEnclosureName; /**< name of the enclosure. @readonly */
    const char *SlotName;          /**< position in the enclosure: column, "x", row. @readonly */
    const char *HardwareInterface; /**< interface of the disk. @readonly */
    const char *Pool;              /**< volume that the disk belongs to. @readonly */
    const char *PoolType;          /**< part that the disk plays in the volume. @readonly */
    const char *PoolState;         /**< as in qbobj_Disk_t. @readonly */
    uint64_t PoolHostId;           /**< id of the appliance that the volume was last used by. @readonly */
    int ReplacedWithSpare;         /**< a spare has taken the disk's place. @words 0, 1 @readonly */
    int IsSignedByMaltrex;         /**< the firmware is signed. @words 0, 1 @readonly */
};

/* ---- Records: snapshots -------------------------------------------------------------------------------- */

/** When snapshots are made: the five fields of a cron line, and what was made last. */
struct qbobj_Schedule {
    int Enabled;             /**< snapshots are made. @words 0, 1 */
    const char *Minute;      /**< minute, in cron's syntax */
    const char *Hour;        /**< hour, in cron's syntax */
    const char *DayOfMonth;  /**< day of the month, in cron's syntax */
    const char *DayOfWeek;   /**< day of the week, in cron's syntax */
    const char *Month;       /**< month, in cron's syntax */
    int LastTaken;           /**< last snapshot. @unit Unix seconds */
    int PurgeManualSnapshot; /**< snapshots made by hand may be removed for space. @words 0, 1 */
    int LastDailyTaken;      /**< last daily snapshot. @unit Unix seconds */
    int LastWeeklyTaken;     /**< last weekly snapshot. @unit Unix seconds */
};

/** A snapshot of a share. */
struct qbobj_Snapshot {
    qbobj_Snapshot_t *_link;  /**< next */
    int resource_id;          /**< key of the snapshot: its row id. @readonly */
    const char *ShareName;    /**< name of the share. @required */
    const char *VolumeName;   /**< name of its volume. @required */
    const char *SnapshotName; /**< name. @required */
    int Type;                 /**< 1 made by the schedule, 2 made by hand. @words 1, 2 */
    int CreatedOn;            /**< when it was made. @unit Unix seconds */
    const char *Path;         /**< where its contents can be seen. @readonly */
};

/** A list of snapshots of shares. */
struct qbobj_SnapshotCollection {
    qbobj_Snapshot_t *Snapshot; /**< list: the snapshots */
};

/** A snapshot of a user's home. */
struct qbobj_HfSnapshot {
    qbobj_HfSnapshot_t *_link; /**< next */
    int resource_id;           /**< key of the snapshot: its row id. @readonly */
    const char *UserName;      /**< name of the user. @required */
    const char *HomeDir;       /**< path of the home. @required */
    const char *SnapshotName;  /**< name. @required */
    int Type;                  /**< 1 made by the schedule, 2 made by hand. @words 1, 2 */
    int CreatedOn;             /**< when it was made. @unit Unix seconds */
    const char *Path;          /**< where its contents can be seen. @readonly */
};

/** A list of snapshots of homes. */
struct qbobj_HfSnapshotCollection {
    qbobj_HfSnapshot_t *HfSnapshot; /**< list: the snapshots */
};

/** A share that was made from a snapshot. */
struct qbobj_SnapshotClone {
    qbobj_SnapshotClone_t *_link;   /**< next */
    int resource_id;                /**< key of the clone: its row id. @readonly */
    const char *ClonedShareName;    /**< name of the share that was made. @readonly */
    const char *ParentSnapshotName; /**< name of the snapshot. @readonly */
    const char *ParentShareName;    /**< name of the share that was snapshotted. @readonly */
};

/** A list of clones. */
struct qbobj_SnapshotCloneCollection {
    qbobj_SnapshotClone_t *SnapshotClone; /**< list: the clones */
};

/* ---- Records: health ----------------------------------------------------------------------------------- */

/** The readings of a disk. */
struct qbobj_DiskHealth {
    qbobj_DiskHealth_t *_link; /**< next */
    const char *resource_id;   /**< "controller-" and the controller's number. @readonly */
    const char *DiskId;        /**< id of the disk. @required */
    int Controller;            /**< number of the controller. @readonly */
    int Channel;               /**< channel of the controller. @readonly */
    int ATAErrors;             /**< ATA errors */
    int ReallocSect;           /**< reallocated sectors */
    int ReallocEvent;          /**< reallocations */
    int SpinRetryCnt;          /**< repeated spin-ups */
    int IOEdc;                 /**< errors of the data path */
    int CmdTimeouts;           /**< commands that timed out */
    int PendingSect;           /**< sectors that wait for their reallocation */
    int UncorrectableErr;      /**< errors that could not be corrected */
    int Temp;                  /**< temperature. @unit degrees Celsius */
    int StartStopCnt;          /**< starts and stops */
    int PowerOnHrs;            /**< time under power. @unit hours */
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
    const char *Name;                   /**< kind of the sensor, such as "Fan". @required */
    const char *DevId;                  /**< number of the sensor. @required */
    int Value;                          /**< reading. @required */
    int ValuePrev1;                     /**< the reading before. @readonly */
    int ValuePrev2;                     /**< the reading before that. @readonly */
    int ValuePrev3;                     /**< the oldest reading. @readonly */
    int Min;                            /**< lowest healthy value. @readonly */
    int Max;                            /**< highest healthy value. @readonly */
    const char *Label;                  /**< label of the sensor. @readonly */
};

/** The sensors of an enclosure. */
struct qbobj_EnclosureHealth {
    qbobj_EnclosureHealth_t *_link; /**< next */
    const char *resource_id;        /**< "controller-" and the controller's number. @readonly */
    int Controller;                 /**< number of the controller. @required */
    const char *PortLabel;          /**< label of the port that the enclosure is connected to. @readonly */
    int NrCpu;                      /**< number of processor sensors. @readonly */
    int NrFan;                      /**< number of fans. @readonly */
    int NrPsu;                      /**< number of power supplies. @readonly */
    int NrVolt;                     /**< number of voltage sensors. @readonly */
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
    const char *resource_id;    /**< key of the device: name, "@", host @readonly */
    const char *UpsName;        /**< name. @required */
    const char *ServerHost;     /**< host that serves it. @required */
    const char *UpsModel;       /**< model. @readonly */
    const char *UpsStatus;      /**< status */
    const char *BatteryCharge;  /**< battery charge; read with its unit, " %" */
    const char *BatteryRunTime; /**< run time left; read with its unit, " min" */
    const char *BatteryVoltage; /**< battery voltage; read with its unit, " V" */
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
    int JobID;                      /**< id, chosen by the caller, unique. @required */
    int Enabled;                    /**< the task runs. @words 0, 1 */
    int Action;                     /**< task, as the scheduler numbers them; stored unchanged */
    qbobj_CronSchedule_t *Interval; /**< when it runs. @required */
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
