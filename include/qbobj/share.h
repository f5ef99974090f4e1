/**
 * @file share.h
 * Shares: the shared folder or block volume, and what uses it.
 */
#ifndef QBOBJ_SHARE_H
#define QBOBJ_SHARE_H

#include <qbobj/account.h>
#include <qbobj/schema.h>
#include <qbobj/share_option.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: shares ----------------------------------------------------------------------------------- */

/** An application that holds a share. */
struct qbobj_UsedBy {
    qbobj_UsedBy_t *_link; /**< next */
    const char *AppName;   /**< name of the application; one entry a share and application */
    const char *AppData;   /**< the application's own text; null: none */
};

/** A process that works on a share. */
struct qbobj_Process {
    qbobj_Process_t *_link; /**< next */
    int ProcessId;          /**< its pid */
    int Blocking;           /**< blocking level; 0 does not block */
    int Timestamp;          /**< when it was registered, Unix seconds; read only */
};

/** A share with everything that is kept for it. */
struct qbobj_Share {
    qbobj_Share_t *_link;               /**< next */
    const char *resource_id;            /**< key of the share: its dataset name */
    const char *ShareId;                /**< dataset name: volume name, "/", share name */
    const char *ZfsName;                /**< the dataset name again */
    const char *ShareType;              /**< "share" (a folder) or "zvol" (a block volume) */
    const char *ShareName;              /**< name */
    int VisibleSnapshot;                /**< 0/1: snapshots are shown below VisibleSnapFolder */
    int OldVisibleSnapshot;             /**< set by a modification or deletion: VisibleSnapshot so far */
    const char *VisibleSnapFolder;      /**< folder in which snapshots are shown; "" when they are hidden */
    const char *OldShareName;           /**< set by a modification or deletion: the name so far */
    const char *Comment;                /**< description; "" when there is none */
    const char *VolumeId;               /**< volume that holds the share */
    const char *Path;                   /**< path of the folder */
    const char *OldPath;                /**< set by a modification or deletion: the path so far */
    int _void_QuotaMB;                  /**< non-zero: QuotaMB is not given */
    uint64_t QuotaMB;                   /**< size limit with snapshots and children, in MB; 0 is none */
    int _void_ReserveMB;                /**< non-zero: ReserveMB is not given */
    uint64_t ReserveMB;                 /**< space reserved with snapshots and children, in MB; 0 is none */
    int _void_RefQuotaMB;               /**< non-zero: RefQuotaMB is not given */
    uint64_t RefQuotaMB;                /**< size limit of the data alone, in MB; 0 is none */
    int _void_RefReserveMB;             /**< non-zero: RefReserveMB is not given */
    uint64_t RefReserveMB;              /**< space reserved for the data alone, in MB; 0 is none */
    int _void_Compression;              /**< non-zero: Compression is not given */
    int Compression;                    /**< 0/1: data is compressed */
    int _void_BitRotProtection;         /**< non-zero: BitRotProtection is not given */
    int BitRotProtection;               /**< 0/1: data is checked against silent damage */
    int _void_Dedup;                    /**< non-zero: Dedup is not given */
    int Dedup;                          /**< 0/1: equal blocks are stored once */
    const char *LogBias;                /**< how synchronous writes are logged; null: not given */
    const char *Origin;                 /**< snapshot that a clone was made from; null: not given */
    const char *Sync;                   /**< "standard", "always" or "disabled"; null: not given */
    uint64_t AvailableMB;               /**< always 0 */
    uint64_t UsedMB;                    /**< used now, in MB; read only */
    uint64_t UsedByChildrenMB;          /**< always 0 */
    uint64_t UsedByDatasetMB;           /**< used by the data alone, in MB; read only */
    uint64_t UsedByRefReservationMB;    /**< always 0 */
    uint64_t UsedBySnapshotsMB;         /**< always 0 */
    const char *CompressRatio;          /**< achieved compression; null: not known; read only */
    uint64_t ReferencedMB;              /**< always 0 */
    int NrContinuousSnapshots;          /**< number of snapshots made by the schedule; read only */
    int NrManualSnapshots;              /**< number of snapshots made by hand; read only */
    int FirstSnapshotCreatedOn;         /**< oldest snapshot, Unix seconds; read only */
    int LastSnapshotCreatedOn;          /**< newest snapshot, Unix seconds; read only */
    const char *MigrateToVolumeId;      /**< volume that the share is moving to; null when it is not */
    qbobj_FileStat_t *Stat;             /**< owner and permissions of the folder */
    qbobj_ZvolShareOption_t *Zvol;      /**< block volume; null: none */
    qbobj_CifsShareOption_t *Cifs;      /**< options for Windows clients; null: none */
    qbobj_AfpShareOption_t *Afp;        /**< options for Apple clients; null: none */
    qbobj_FtpShareOption_t *Ftp;        /**< options for FTP clients; null: none */
    qbobj_NfsShareOption_t *Nfs;        /**< options for NFS clients; null: none */
    qbobj_DlnaShareOption_t *Dlna;      /**< options for media players; null: none */
    qbobj_DaapShareOption_t *Daap;      /**< options for music players; null: none */
    qbobj_RsyncShareOption_t *Rsync;    /**< options for rsync clients; null: none */
    qbobj_HttpShareOption_t *Http;      /**< options for HTTP clients; null: none */
    qbobj_Schedule_t *SnapshotSchedule; /**< when snapshots are made */
    qbobj_SnapshotClone_t *SnapshotClones; /**< clones made from the share's snapshots, chained; read only */
    qbobj_Quota_t *UserQuota;              /**< list: quotas of users */
    qbobj_Quota_t *GroupQuota;             /**< list: quotas of groups */
    qbobj_UsedBy_t *UsedBy;                /**< list: applications that hold the share */
    int UpdateTS;                          /**< last change, Unix seconds; read only */
    int Busy;            /**< 0: no process; else 1 + the highest blocking level; read only */
    const char *CloneOf; /**< a clone's volume, "/", parent, "@", snapshot; null: no clone */
};

/** A list of shares. */
struct qbobj_ShareCollection {
    qbobj_Share_t *Share; /**< list: the shares */
};

/** A share by name, with the common protocols that offer it. */
struct qbobj_SimpleShare {
    qbobj_SimpleShare_t *_link; /**< next */
    const char *resource_id;    /**< key of the share: its dataset name */
    const char *ShareId;        /**< dataset name */
    const char *ShareName;      /**< name */
    const char
        *CommonProtocolsCSV; /**< those of "cifs", "afp", "ftp" and "nfs" that offer it, joined by commas */
    qbobj_UsedBy_t *UsedBy;  /**< list: applications that hold the share */
};

/** A list of shares by name. */
struct qbobj_SimpleShareCollection {
    qbobj_SimpleShare_t *SimpleShare; /**< list: the shares */
};

/* ---- Operations: shares read --------------------------------------------------------------------------- */

/**
 * Lists the shares of type "share", whole records, by name without regard to case.
 *
 * Owner, permissions and access control list of `Stat` come from the share's folder; they stay empty when it
 * cannot be examined. A protocol without options leaves its record null. User and group lists hold accounts
 * of the kind that the appliance works with; those of FTP are not read while the service takes anonymous
 * clients. `resource_id` is the dataset name.
 *
 * Reads tables share, zfs_attr, _zfs_stat, $snapshot, $snapshot_clones, snapshot_schedule, process_on_share,
 * $application_on_share, every *_share_option and *_acl, host, cifs_dfs_option, user_quota, group_quota,
 * _user_quota_stat, _group_quota_stat, $user, $group, _volume, service_ftp and service_cifs.
 *
 * @param collection  the shares are appended to its list
 * @param err         QBOBJ_ERROR_API_ARGS: no collection; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                       qbobj_error_rec_t *err);

/**
 * Lists the shares of type "share" by name, with the common protocols that offer them: those whose default
 * access is not "Disabled" and that are available.
 *
 * Reads tables share, cifs_share_option, afp_share_option, ftp_share_option, nfs_share_option and
 * $application_on_share.
 *
 * @param collection  the shares are appended to its list
 * @param err         QBOBJ_ERROR_API_ARGS: no collection; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSimpleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                             qbobj_SimpleShareCollection_t *collection,
                                             qbobj_error_rec_t *err);

/**
 * Lists shares and block volumes, otherwise as qbobj_getShareCollection().
 *
 * @param collection  the shares are appended to its list
 * @param err         QBOBJ_ERROR_API_ARGS: no collection; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareAndZvolCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                              qbobj_ShareCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Lists the shares of type "share" that a user may read by one protocol.
 *
 * Every share gets a record, in the order of qbobj_getShareCollection(); only those that the user may read
 * are filled. `resource_id` is not the key here, but the space in MB that the share's snapshots use, as text;
 * null when it is not known.
 *
 * Reads the tables of qbobj_getShareCollection() and $group_has_user.
 *
 * @param collection    the records are appended to its list
 * @param UserName      name of the user; null is a guest
 * @param ProtocolName  "cifs" or "http"
 * @param err           QBOBJ_ERROR_API_ARGS: no collection, an unknown user, no name of a protocol;
 *                      QBOBJ_ERROR_OOM: access by this protocol cannot be asked for, or asking failed;
 *                      QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getAccessibleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                 qbobj_ShareCollection_t *collection, const char *UserName,
                                                 const char *ProtocolName, qbobj_error_rec_t *err);

/**
 * Reads one share of any type, with everything that qbobj_getShareCollection() reads.
 *
 * @param share  found by the first of `resource_id` (a dataset name), `ShareId` and `ShareName` that is a
 * share's; filled, except `_link` and the fields that are input of a modification
 * @param err    QBOBJ_ERROR_API_ARGS: no record; QBOBJ_ERROR_DB_MISC, also when there is no such share;
 *               QBOBJ_ERROR_DB_NOTEXISTS
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err);

/**
 * Lists the shares of any type that meet all criteria given, otherwise as qbobj_getShareCollection(); in no
 * particular order.
 *
 * @param VolumeId       volume of the shares; null: any
 * @param ShareNameLike  SQL LIKE pattern of their names; null: any
 * @param ShareId        dataset name; null: any
 * @param shares         the shares are appended to this list; must not be null
 * @param err            QBOBJ_ERROR_API_ARGS: the criteria are longer than about 500 bytes;
 * QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_queryShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId,
                               const char *ShareNameLike, const char *ShareId, qbobj_Share_t **shares,
                               qbobj_error_rec_t *err);

/**
 * Finds the row id of a share, in table share.
 *
 * @param share_name  name of the share
 * @param err         stays empty
 * @return the id; -1: there is no such share; -2: no share can have this name
 */
QBOBJ_API int qbobj_getShareId(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                               qbobj_error_rec_t *err);

/**
 * Tells what a user may do with a share by the protocol for Windows clients.
 *
 * An unknown user or share, a share without options for Windows clients, and any failure on the way all
 * answer "Disabled". Entries of the user and of their groups only take the right to write away where the
 * default grants it, and only grant it where the default does not.
 *
 * Reads tables share, cifs_share_option, user_acl, group_acl, $user, $group_has_user and service_cifs.
 *
 * @param ShareName  name of the share
 * @param UserName   name of the user; null is the guest account
 * @param Access     receives the access word
 * @param err        QBOBJ_ERROR_API_ARGS: no `Access`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareName,
                                   const char *UserName, char **Access, qbobj_error_rec_t *err);

/**
 * As qbobj_getShareAccess(), for the share whose folder is or holds a path.
 *
 * @param Path      the path
 * @param UserName  name of the user; null is the guest account
 * @param Access    receives the access word
 * @param err       QBOBJ_ERROR_API_ARGS: no `Access`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getPathAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *Path, const char *UserName,
                                  char **Access, qbobj_error_rec_t *err);

/**
 * Reads when snapshots of a share are made, from tables share and snapshot_schedule.
 *
 * @param share_name         name of the share
 * @param snapshot_schedule  receives the schedule, or null when the share has none
 * @param err                QBOBJ_ERROR_API_ARGS: no `snapshot_schedule`; QBOBJ_ERROR_DB_NOTEXISTS: no such
 * share; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                                             qbobj_Schedule_t **snapshot_schedule, qbobj_error_rec_t *err);

/* ---- Operations: who uses a share ---------------------------------------------------------------------- */

/**
 * Lists the processes that work on a share, from table process_on_share.
 *
 * @param ShareId  dataset name; an unknown one has no processes
 * @param procs    receives the list
 * @param err      QBOBJ_ERROR_API_ARGS: no `procs`; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    qbobj_Process_t **procs, qbobj_error_rec_t *err);

/**
 * Registers processes that work on a share, in table process_on_share. A process that is registered already
 * gets the new blocking level and time.
 *
 * @param ShareId  dataset name
 * @param procs    the processes; null registers nothing
 * @param err      QBOBJ_ERROR_DB_MISC, also for an unknown share
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    qbobj_Process_t *procs, qbobj_error_rec_t *err);

/**
 * Forgets processes of a share, in table process_on_share.
 *
 * @param ShareId  dataset name; an unknown one changes nothing
 * @param procs    the processes, by `ProcessId`; null forgets every process of the share
 * @param err      QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                       qbobj_Process_t *procs, qbobj_error_rec_t *err);

/**
 * Lists the applications that hold a dataset, or any dataset of a volume, from table $application_on_share.
 *
 * @param ZfsName  a dataset name, with "/", matches exactly; without "/" it matches every dataset whose name
 *                 begins with it, without regard to case: "data" also matches "data2/x"
 * @param usedby   receives the list
 * @param err      QBOBJ_ERROR_API_ARGS: no `ZfsName` or no `usedby`; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUsedByOn(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                qbobj_UsedBy_t **usedby, qbobj_error_rec_t *err);

/**
 * Marks a dataset as held by an application, in table $application_on_share. The application's marker on it,
 * if there is one, is replaced.
 *
 * @param ShareId  dataset name, which is not checked
 * @param usedby   the marker; only the first record of a list counts
 * @param err      QBOBJ_ERROR_API_ARGS: no record or no `AppName`; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                   qbobj_UsedBy_t *usedby, qbobj_error_rec_t *err);

/**
 * Removes an application's marker from a dataset, in table $application_on_share. A marker that is not there
 * is no error.
 *
 * @param ShareId  dataset name
 * @param usedby   the marker, by `AppName`; only the first record of a list counts
 * @param err      QBOBJ_ERROR_API_ARGS: no record or no `AppName`; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                      qbobj_UsedBy_t *usedby, qbobj_error_rec_t *err);

/**
 * Replaces all markers of a share, in table $application_on_share.
 *
 * @param usedby    the markers from now on; null only removes those that are there
 * @param ShareId   dataset name of the share; null: `share_id` tells the share
 * @param share_id  row id of the share, used without `ShareId`
 * @param err       QBOBJ_ERROR_API_ARGS: an unknown `ShareId`; QBOBJ_ERROR_DB_MISC, also for an unknown
 * `share_id` with markers to store
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                      const char *ShareId, int share_id, qbobj_error_rec_t *err);

/**
 * Moves an application's marker to one share: it is removed from every dataset first.
 *
 * Writes table $application_on_share.
 *
 * @param usedby   the marker; only the first record of a list counts
 * @param ShareId  dataset name of the share; null removes the marker everywhere
 * @param err      QBOBJ_ERROR_API_ARGS: no record; QBOBJ_ERROR_DB_MISC, also for an unknown share or no
 * `AppName` to store
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareUsedByExclusive(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                               const char *ShareId, qbobj_error_rec_t *err);

/* ---- Operations: shares written ------------------------------------------------------------------------ */

/**
 * Creates shares and block volumes.
 *
 * Each record needs `ShareName` and a `VolumeId` (null is the volume named "c"); `ShareType` is "share"
 * unless given. Without `Path` the share lies at "/", the volume's name, "/" and the share's name. Without
 * `Stat` the guest owns it and everyone may read and write; in a `Stat`, `User` and `Group` are required, and
 * their account is the `resource_id`, or the account's id where that is negative. Option records, `UsedBy`,
 * `Zvol` and `SnapshotSchedule` are stored where they are given; without a schedule a snapshot is taken every
 * hour. A protocol whose record is null gets no options.
 *
 * A missing access word or right counts as "ReadWrite" (for DLNA "ReadOnly"), a missing `PasswordProtection`
 * as "Disabled", a missing number of the storage attributes as 0. Missing options for Windows clients: guests
 * enter (not in directory mode), recycle bin on with 25000 MB and no age limit, rights set for new files, no
 * opportunistic locks. Entries of the user and group lists that repeat the protocol's default are not stored,
 * except those of users whose primary group is "admin" or "sky-port"; entries of AFP's host list never are.
 *
 * Writes tables share, zfs_attr, *_share_option, *_acl, host, cifs_dfs_option, rsync_user_password_acl,
 * $application_on_share and snapshot_schedule. The services "cifs" and "ftp" are told of their options.
 *
 * @param share  the records; null creates nothing. On success each record's `resource_id` and `ShareId` are
 *               "VOLUME/NAME"; entries of account lists that were looked up by name carry the account's id
 * @param err    QBOBJ_ERROR_UI__NAME_TOO_LONG, QBOBJ_ERROR_UI__SHARENAME_RESERVED: the name;
 *               QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS;
 *               QBOBJ_ERROR_UI__NO_LDAP_OBJECT: the directory does not know a listed name;
 *               QBOBJ_ERROR_API_ARGS: anything else that is given wrongly, e.g. a `RefQuotaMB` above the
 *               volume's free space; QBOBJ_ERROR_DB_MISC, also for a marker without `AppName`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err);

/**
 * Changes shares: of each record only what it carries (texts and sub-records that are not null, numbers whose
 * `_void_` flag is 0).
 *
 * The share is found by `resource_id`. Another `ShareName` (compared without case) renames it together with
 * its snapshots, clones, backup jobs and markers; `VisibleSnapshot` counts when `VisibleSnapFolder` is given.
 * In a given option record the switches without a `_void_` flag and all lists count: a null list becomes
 * empty. A protocol without options gets them, except the one for Windows clients; a `DefaultAccess` of
 * "Disabled" removes DLNA's and rsync's. FTP's `NotAvailable` is not changed. `Changed` of each option record
 * becomes 1 when something differs afterwards, else 0; for rsync it stays 0.
 *
 * The pairs of one table's update must fit into 512 bytes; a value beyond that is left out and a warning
 * that names its column is logged.
 *
 * Reads tables share, _volume and _zfs_stat; writes those of qbobj_addShare(), and user_quota, group_quota,
 * $snapshot, $snapshot_clones, backup and service_http. The services "cifs" and "ftp" are told of their
 * options.
 *
 * @param share           the records; null changes nothing. Receives `OldShareName`, `OldPath`, `Path` and
 *                        `OldVisibleSnapshot`
 * @param modifyOneShare  0: the whole list is changed, a null `Path` is read and `Stat->_PosixMode`
 *                        receives the share's mode; non-zero: only the first record is changed, and `Path`
 *                        is filled by a rename alone
 * @param err             QBOBJ_ERROR_UI__NAME_TOO_LONG, QBOBJ_ERROR_UI__SHARENAME_RESERVED,
 *                        QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME (a
 *                        protected name): the new name; QBOBJ_ERROR_UI__NO_LDAP_OBJECT: the directory
 *                        does not know a listed name; QBOBJ_ERROR_API_ARGS: anything else that is given
 *                        wrongly; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, int modifyOneShare,
                                qbobj_error_rec_t *err);

/**
 * Shows the snapshots of a share in a folder, or hides them.
 *
 * Writes table share. A dataset that does not exist changes nothing.
 *
 * @param ZfsName            dataset name of the share
 * @param VisibleSnapFolder  the folder; null hides the snapshots
 * @param err                QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                                 const char *VisibleSnapFolder, qbobj_error_rec_t *err);

/**
 * Changes a block volume: its size, name and comment. Its path becomes "/" and `ZfsName`.
 *
 * Writes tables zvol_share_option and share. A dataset that does not exist changes nothing.
 *
 * @param ZfsName    dataset name of the block volume
 * @param ShareName  its name from now on
 * @param Comment    its description from now on
 * @param SizeKB     its size in KB
 * @param IsSparse   0/1: space is taken only when it is written
 * @param err        QBOBJ_ERROR_DB_MISC, also for a name that another share has
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, const char *ShareName,
                               const char *Comment, uint64_t SizeKB, int IsSparse, qbobj_error_rec_t *err);

/**
 * Deletes shares with everything that hangs on them: options, lists, snapshots and clones on record,
 * schedule, quotas, markers of applications, backup jobs from or to them. A share that is the HTTP service's
 * web root stops being it. Process markers and the DLNA, DAAP and rsync rows stay.
 *
 * A share in whose folder another one lies is not deleted. The services "cifs" and "ftp" are told when the
 * record carries their options.
 *
 * Writes tables share, *_share_option, *_acl, cifs_dfs_option, snapshot_schedule, $snapshot,
 * $snapshot_clones, $application_on_share, *_quota, _*_quota_stat, zfs_attr, _zfs_stat, backup and
 * service_http.
 *
 * @param share  the records, found by `resource_id`, else by `ShareId`; null deletes nothing. Receives
 *               `Path`, `OldPath`, `OldShareName` and `OldVisibleSnapshot`
 * @param err    QBOBJ_ERROR_API_ARGS: no such share, or another share lies in it; QBOBJ_ERROR_DB_MISC;
 *               QBOBJ_ERROR_UNKNOWN (the record then stays empty); QBOBJ_ERROR_DB_NOTEXISTS
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share,
                                qbobj_error_rec_t *err);

/**
 * Deletes the share or block volume of a dataset, as qbobj_deleteShare() does but without regard to shares
 * that lie in it, and tells no service. A dataset that does not exist is a success.
 *
 * @param ZfsName  dataset name
 * @param err      QBOBJ_ERROR_DB_MISC, QBOBJ_ERROR_UNKNOWN (the record then stays empty)
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_error_rec_t *err);

/**
 * Deletes every share of a volume, as qbobj_deleteZvol() does.
 *
 * @param VolumeId  the volume
 * @param err       QBOBJ_ERROR_DB_MISC, QBOBJ_ERROR_UNKNOWN (the record then stays empty)
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareOnVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId,
                                        qbobj_error_rec_t *err);

/**
 * Marks a share as moving to another volume. Only one share of the appliance may be moving.
 *
 * Writes table share. A share that does not exist changes nothing.
 *
 * @param ShareId   dataset name of the share
 * @param VolumeId  the destination
 * @param err       QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE: a share is moving already; QBOBJ_ERROR_API_ARGS: the
 *                  share lives on that volume, or an argument is null; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_preMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    const char *VolumeId, qbobj_error_rec_t *err);

/**
 * Ends a share's move to another volume.
 *
 * Committed, the share and its snapshots belong to the destination: the dataset's new name begins with the
 * volume's id, the new path with the volume's name. Given up, only the mark goes away.
 *
 * Reads table _volume; writes tables share and $snapshot. A share that does not exist changes nothing.
 *
 * @param ShareId  dataset name of the share, as it was before the move
 * @param Commit   non-zero: the data has moved; 0: the move is given up
 * @param NewPath  receives "/", the destination's id, "/" and the share's name, or null when the share is not
 *                 moving; may be null
 * @param err      QBOBJ_ERROR_DB_MISC, also when the share to commit is not moving
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_postMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, int Commit,
                                     char **NewPath, qbobj_error_rec_t *err);

/**
 * Clones a share's configuration under a new name on the same volume: its row, quotas, access lists, options,
 * schedule and storage attributes. rsync's options and logins, links to other servers, markers and snapshots
 * are not cloned, and data is not touched.
 *
 * Reads and writes tables share, *_quota, *_acl, *_share_option, snapshot_schedule and zfs_attr.
 *
 * @param VolumeName    volume of the share
 * @param ShareName     name of the share
 * @param SnapshotName  not used
 * @param NewShareName  name of the clone
 * @param err           QBOBJ_ERROR_API_ARGS: no such share, or the new name is not valid;
 *                      QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS; QBOBJ_ERROR_DB_MISC
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_copyShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName, const char *ShareName,
                              const char *SnapshotName, const char *NewShareName, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
