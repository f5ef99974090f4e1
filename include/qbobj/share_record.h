/**
 * @file share_record.h
 * The records of shares and of what uses them.
 */
#ifndef QBOBJ_SHARE_RECORD_H
#define QBOBJ_SHARE_RECORD_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An application that holds a share. */
struct qbobj_UsedBy {
    qbobj_UsedBy_t *_link; /**< next */
    const char *AppName;   /**< name of the application; one entry a share and application. @required */
    const char *AppData;   /**< the application's own text; null: none */
};

/** A process that works on a share. */
struct qbobj_Process {
    qbobj_Process_t *_link; /**< next */
    int ProcessId;          /**< its pid. @required */
    int Blocking;           /**< blocking level; 0 does not block */
    int Timestamp;          /**< when it was registered. @unit Unix seconds @readonly */
};

/** A share with everything that is kept for it. */
struct qbobj_Share {
    qbobj_Share_t *_link;    /**< next */
    const char *resource_id; /**< key of the share: its dataset name */
    const char *ShareId;     /**< dataset name: volume, "/", share name */
    const char *ZfsName;     /**< the dataset name again. @readonly */
    /** A folder ("share") or a block volume ("zvol"). @words "share", "zvol", "replicate" */
    const char *ShareType;
    /** Name: letters, digits, "$" and, not first, "_", "-" and "."; names that the appliance uses itself are
     *  reserved. @range 1 to 31 bytes @required */
    const char *ShareName;
    int VisibleSnapshot; /**< snapshots are shown below VisibleSnapFolder. @words 0, 1 */
    /** Set by a modification or deletion: VisibleSnapshot so far. @words 0, 1 @readonly */
    int OldVisibleSnapshot;
    const char *VisibleSnapFolder; /**< folder in which snapshots are shown; "" when they are hidden */
    const char *OldShareName;      /**< set by a modification or deletion: the name so far. @readonly */
    const char *Comment;           /**< description; "" when there is none */
    /** Volume that holds the share, fixed by its creation; null is the volume named "c" */
    const char *VolumeId;
    /** Path of the folder, fixed by its creation; null is "/", the volume's name, "/", the share's */
    const char *Path;
    const char *OldPath;  /**< set by a modification or deletion: the path so far. @readonly */
    int _void_QuotaMB;    /**< non-zero: QuotaMB is not given */
    uint64_t QuotaMB;     /**< size limit with snapshots and children; 0 is none. @unit MB */
    int _void_ReserveMB;  /**< non-zero: ReserveMB is not given */
    uint64_t ReserveMB;   /**< space reserved with snapshots and children; 0 is none. @unit MB */
    int _void_RefQuotaMB; /**< non-zero: RefQuotaMB is not given */
    /** Size limit of the data alone, not above the volume's free space; 0 is none. @unit MB */
    uint64_t RefQuotaMB;
    int _void_RefReserveMB;     /**< non-zero: RefReserveMB is not given */
    uint64_t RefReserveMB;      /**< space reserved for the data alone; 0 is none. @unit MB */
    int _void_Compression;      /**< non-zero: Compression is not given */
    int Compression;            /**< data is compressed. @words 0, 1 */
    int _void_BitRotProtection; /**< non-zero: BitRotProtection is not given */
    int BitRotProtection;       /**< data is checked against silent damage. @words 0, 1 */
    int _void_Dedup;            /**< non-zero: Dedup is not given */
    int Dedup;                  /**< equal blocks are stored once. @words 0, 1 */
    const char *LogBias;        /**< how synchronous writes are logged, as stored; null: not given */
    const char *Origin;         /**< snapshot that a clone was made from; null: none. @readonly */
    /** When writes are answered; null: not given. @words "standard", "always", "disabled" */
    const char *Sync;
    uint64_t AvailableMB;            /**< always 0. @unit MB @readonly */
    uint64_t UsedMB;                 /**< used now. @unit MB @readonly */
    uint64_t UsedByChildrenMB;       /**< always 0. @unit MB @readonly */
    uint64_t UsedByDatasetMB;        /**< used by the data alone. @unit MB @readonly */
    uint64_t UsedByRefReservationMB; /**< always 0. @unit MB @readonly */
    uint64_t UsedBySnapshotsMB;      /**< always 0. @unit MB @readonly */
    const char *CompressRatio;       /**< achieved compression; null: not known. @readonly */
    uint64_t ReferencedMB;           /**< always 0. @unit MB @readonly */
    int NrContinuousSnapshots;       /**< number of snapshots made by the schedule. @readonly */
    int NrManualSnapshots;           /**< number of snapshots made by hand. @readonly */
    int FirstSnapshotCreatedOn;      /**< oldest snapshot; 0 without any. @unit Unix seconds @readonly */
    int LastSnapshotCreatedOn;       /**< newest snapshot; 0 without any. @unit Unix seconds @readonly */
    const char *MigrateToVolumeId; /**< volume that the share is moving to; null when it is not. @readonly */
    qbobj_FileStat_t *Stat;        /**< owner and permissions of the folder */
    qbobj_ZvolShareOption_t *Zvol; /**< block volume; null: none */
    qbobj_CifsShareOption_t *Cifs; /**< options for Windows clients; null: none */
    qbobj_AfpShareOption_t *Afp;   /**< options for Apple clients; null: none */
    qbobj_FtpShareOption_t *Ftp;   /**< options for FTP clients; null: none */
    qbobj_NfsShareOption_t *Nfs;   /**< options for NFS clients; null: none */
    qbobj_DlnaShareOption_t *Dlna; /**< options for media players; null: none */
    qbobj_DaapShareOption_t *Daap; /**< options for music players; null: none */
    qbobj_RsyncShareOption_t *Rsync;       /**< options for rsync clients; null: none */
    qbobj_HttpShareOption_t *Http;         /**< options for HTTP clients; null: none */
    qbobj_Schedule_t *SnapshotSchedule;    /**< when snapshots are made */
    qbobj_SnapshotClone_t *SnapshotClones; /**< clones made from the share's snapshots, chained. @readonly */
    qbobj_Quota_t *UserQuota;              /**< list: quotas of users; a creation takes none */
    qbobj_Quota_t *GroupQuota;             /**< list: quotas of groups; a creation takes none */
    qbobj_UsedBy_t *UsedBy;                /**< list: applications that hold the share */
    int UpdateTS;                          /**< last change. @unit Unix seconds @readonly */
    int Busy;            /**< 0: no process works on it; else 1 + the highest blocking level. @readonly */
    const char *CloneOf; /**< a clone's volume, "/", parent, "@", snapshot; null: no clone. @readonly */
};

/** A list of shares. */
struct qbobj_ShareCollection {
    qbobj_Share_t *Share; /**< list: the shares */
};

/** A share by name, with the common protocols that offer it. */
struct qbobj_SimpleShare {
    qbobj_SimpleShare_t *_link; /**< next */
    const char *resource_id;    /**< key of the share: its dataset name. @readonly */
    const char *ShareId;        /**< dataset name. @readonly */
    const char *ShareName;      /**< name. @readonly */
    /** Those that offer it, joined by commas. @words "cifs", "afp", "ftp", "nfs" @readonly */
    const char *CommonProtocolsCSV;
    qbobj_UsedBy_t *UsedBy; /**< list: applications that hold the share. @readonly */
};

/** A list of shares by name. */
struct qbobj_SimpleShareCollection {
    qbobj_SimpleShare_t *SimpleShare; /**< list: the shares */
};

#ifdef __cplusplus
}
#endif

#endif
