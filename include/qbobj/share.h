/**
 * @file share.h
 * Shares: the shared folder or block volume, its options for each protocol, its access lists, and what uses
 * it.
 *
 * An access word is "ReadWrite", "ReadOnly" or "Disabled", compared with regard to case.
 */
#ifndef QBOBJ_SHARE_H
#define QBOBJ_SHARE_H

#include <qbobj/account.h>
#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: access lists -------------------------------------------------------------------------------
 */

/** A host or network that access lists name. */
struct qbobj_Host {
    qbobj_Host_t *_link;  /**< next */
    int resource_id;      /**< key of the host: its id */
    int HostId;           /**< id */
    const char *HostName; /**< host name, address or network */
};

/** One host's access to a share by one protocol. */
struct qbobj_HostAcl {
    qbobj_HostAcl_t *_link; /**< next */
    qbobj_Host_t *Host;     /**< the host */
    const char *Access;     /**< access word */
    int Root;               /**< 0/1: the host's root user keeps its rights (NFS) */
};

/** One user's access to a share by one protocol. */
struct qbobj_UserAcl {
    qbobj_UserAcl_t *_link;   /**< next */
    qbobj_SystemUser_t *User; /**< the user */
    const char *Access;       /**< access word */
};

/** One group's access to a share by one protocol. */
struct qbobj_GroupAcl {
    qbobj_GroupAcl_t *_link;    /**< next */
    qbobj_SystemGroup_t *Group; /**< the group */
    const char *Access;         /**< access word */
};

/** A folder of a share that leads to a share of another server (DFS). */
struct qbobj_DfolderAcl {
    qbobj_DfolderAcl_t *_link; /**< next */
    const char *Name;          /**< name of the folder */
    const char *Address;       /**< the other server */
    const char *RemoteShare;   /**< share on that server */
};

/** The login of an rsync client. */
struct qbobj_UserPasswordAcl {
    qbobj_UserPasswordAcl_t *_link; /**< next */
    const char *UserName;           /**< name */
    const char *Password;           /**< password, stored and returned plain */
};

/** One entry of a folder's POSIX access control list. */
struct qbobj_PosixAcl {
    qbobj_PosixAcl_t *_link; /**< next */
    int Type;                /**< 0 access list, 1 default list */
    int Tag;                 /**< tag of the entry, as libacl numbers it */
    int Perm;                /**< permission bits: 4 read, 2 write, 1 execute */
    int Id;                  /**< uid or gid of an entry for a named user or group */
    const char *Name;        /**< name of that user or group */
};

/** Owner and permissions of a share's folder. */
struct qbobj_FileStat {
    qbobj_SystemUser_t *User;   /**< owner */
    qbobj_SystemGroup_t *Group; /**< owning group */
    const char *UserAccess;     /**< access word of the owner */
    const char *GroupAccess;    /**< access word of the group */
    const char *EveryoneAccess; /**< access word of everyone else */
    int _void_NonOwnerDelete;   /**< non-zero: NonOwnerDelete is not given */
    int NonOwnerDelete;         /**< 0/1: users may delete what others own (the sticky bit is clear) */
    int AclInherit;             /**< 0/1: the default list gives the rights of the access list */
    qbobj_PosixAcl_t *Acls;     /**< list: the folder's POSIX access control list */
    int _PosixMode;             /**< mode of the folder, as stat() gives it */
};

/* ---- Records: options of the protocols -------------------------------------------------------------------
 */

/** A block volume. */
struct qbobj_ZvolShareOption {
    const char *ZfsName; /**< dataset name: volume name, "/", share name */
    uint64_t SizeKB;     /**< size in KB */
    uint64_t UsedKB;     /**< used now, in KB; read only */
    int IsSparse;        /**< 0/1: space is taken only when it is written */
};

/** A share's options for Windows clients. */
struct qbobj_CifsShareOption {
    int NotAvailable;                     /**< 0/1: the share is not offered by the protocol */
    int Changed;                          /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess;            /**< access word for those whom no list names */
    int _void_AllowGuestAccess;           /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;                 /**< 0/1: guests may enter */
    int _void_ShareDisplayOption;         /**< non-zero: ShareDisplayOption is not given */
    int ShareDisplayOption;               /**< non-zero: the share is hidden when browsing; kept as given */
    int _void_EnableRecycleBin;           /**< non-zero: EnableRecycleBin is not given */
    int EnableRecycleBin;                 /**< 0/1: deleted files go to a recycle bin */
    int _void_RecycleSizeLimit;           /**< non-zero: RecycleSizeLimit is not given */
    int RecycleSizeLimit;                 /**< size limit of the recycle bin in MB */
    int _void_RecycleAgeLimit;            /**< non-zero: RecycleAgeLimit is not given */
    int RecycleAgeLimit;                  /**< age limit of the recycle bin; 0 is none */
    int _void_NewFileFolderPermAutoset;   /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;         /**< 0/1: new files and folders get the rights below */
    int _void_AclChangeRestrictionToggle; /**< non-zero: AclChangeRestrictionToggle is not given */
    int AclChangeRestrictionToggle;       /**< permission bits that clients cannot take away */
    const char *FileCreateGroupRights;    /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights; /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;  /**< access word: the group's right to a new folder */
    const char *FolderCreateEveryoneRights; /**< access word: everyone's right to a new folder */
    int _void_EnableOplocks;                /**< non-zero: EnableOplocks is not given */
    int EnableOplocks;                      /**< 0/1: opportunistic locks */
    int EnableDFS;                          /**< 0/1: the share holds links to other servers */
    qbobj_HostAcl_t *HostAcl;               /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;               /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;             /**< list: access of groups */
    qbobj_DfolderAcl_t *DfolderAcl;         /**< list: links to other servers */
};

/** A share's options for Apple clients. */
struct qbobj_AfpShareOption {
    int NotAvailable;                     /**< 0/1: the share is not offered by the protocol */
    int Changed;                          /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess;            /**< access word for those whom no list names */
    int _void_AllowGuestAccess;           /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;                 /**< 0/1: guests may enter */
    int _void_NewFileFolderPermAutoset;   /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;         /**< 0/1: new files and folders get the rights below */
    const char *FileCreateGroupRights;    /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights; /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;  /**< access word: the group's right to a new folder */
    const char *FolderCreateEveryoneRights; /**< access word: everyone's right to a new folder */
    qbobj_HostAcl_t *HostAcl;               /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;               /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;             /**< list: access of groups */
};

/** A share's options for FTP clients. */
struct qbobj_FtpShareOption {
    int NotAvailable;                     /**< 0/1: the share is not offered by the protocol */
    int Changed;                          /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess;            /**< access word for those whom no list names */
    int _void_NewFileFolderPermAutoset;   /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;         /**< 0/1: new files and folders get the rights below */
    const char *FileCreateGroupRights;    /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights; /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;  /**< access word: the group's right to a new folder */
    const char *FolderCreateEveryoneRights; /**< access word: everyone's right to a new folder */
    qbobj_HostAcl_t *HostAcl;               /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;               /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;             /**< list: access of groups */
};

/** A share's options for NFS clients. */
struct qbobj_NfsShareOption {
    int NotAvailable;          /**< 0/1: the share is not offered by the protocol */
    int Changed;               /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess; /**< access word for hosts that the list does not name */
    int Sync;                  /**< 0/1: writes are answered when they are on disk */
    qbobj_HostAcl_t *HostAcl;  /**< list: access of hosts */
};

/** A share's options for media players (DLNA). */
struct qbobj_DlnaShareOption {
    int NotAvailable;          /**< 0/1: the share is not offered by the protocol */
    int Changed;               /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess; /**< "ReadOnly" or "Disabled" */
    const char *MediaType; /**< "", "Audio", "Video", "Video,Audio", "Images", "Images,Audio", "Images,Video",
                              "All" */
};

/** A share's options for music players (DAAP). */
struct qbobj_DaapShareOption {
    int NotAvailable; /**< 0/1: the share is not offered by the protocol */
    int Changed;      /**< 0/1: input of a modification, the options are to be written */
};

/** A share's options for rsync clients. */
struct qbobj_RsyncShareOption {
    int NotAvailable;               /**< 0/1: the share is not offered by the protocol */
    int Changed;                    /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess;      /**< access word for hosts that the list does not name */
    const char *PasswordProtection; /**< "Enabled" or "Disabled": clients must log in */
    qbobj_HostAcl_t *HostAcl;       /**< list: access of hosts */
    qbobj_UserPasswordAcl_t *UserPasswordAcl; /**< list: logins of clients */
};

/** A share's options for HTTP clients. */
struct qbobj_HttpShareOption {
    int NotAvailable;           /**< 0/1: the share is not offered by the protocol */
    int Changed;                /**< 0/1: input of a modification, the options are to be written */
    const char *DefaultAccess;  /**< access word for those whom no list names */
    qbobj_HostAcl_t *HostAcl;   /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;   /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl; /**< list: access of groups */
    int _void_EnableWebDav;     /**< non-zero: EnableWebDav is not given */
    int EnableWebDav;           /**< 0/1: clients may write with WebDAV */
};

/* ---- Records: shares -------------------------------------------------------------------------------------
 */

/** An application that holds a share. */
struct qbobj_UsedBy {
    qbobj_UsedBy_t *_link; /**< next */
    const char *AppName;   /**< name of the application; one entry a share and application */
    const char *AppData;   /**< the application's own text */
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
    int OldVisibleSnapshot;             /**< input of a modification: VisibleSnapshot so far */
    const char *VisibleSnapFolder;      /**< folder in which snapshots are shown; "" when they are hidden */
    const char *OldShareName;           /**< input of a modification: the name so far */
    const char *Comment;                /**< description; "" when there is none */
    const char *VolumeId;               /**< volume that holds the share */
    const char *Path;                   /**< path of the folder */
    const char *OldPath;                /**< input of a migration: the path so far */
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
    const char *CompressRatio;          /**< achieved compression; read only */
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

/* ---- Operations ------------------------------------------------------------------------------------------
 */

#ifdef __cplusplus
}
#endif

#endif
