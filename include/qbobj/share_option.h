/**
 * @file share_option.h
 * The parts of a share's record: its access lists, its folder's ownership, and its options for each protocol.
 *
 * An access is "ReadWrite", "ReadOnly" or "Disabled", compared with regard to case.
 */
#ifndef QBOBJ_SHARE_OPTION_H
#define QBOBJ_SHARE_OPTION_H

#include <qbobj/group.h>
#include <qbobj/user.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: access lists ----------------------------------------------------------------------------- */

/** A host or network that access lists name. */
struct qbobj_Host {
    qbobj_Host_t *_link;  /**< next */
    int resource_id;      /**< key of the host: its id */
    int HostId;           /**< id */
    const char *HostName; /**< host name, address or network; needed without an id. A new one is remembered */
};

/** One host's access to a share by one protocol. */
struct qbobj_HostAcl {
    qbobj_HostAcl_t *_link; /**< next */
    qbobj_Host_t *Host;     /**< the host; without an id it is found by its name. @required */
    const char *Access;     /**< what it may do. @words "ReadWrite", "ReadOnly", "Disabled" @required */
    int Root;               /**< the host's root user keeps its rights (NFS). @words 0, 1 */
};

/** One user's access to a share by one protocol. */
struct qbobj_UserAcl {
    qbobj_UserAcl_t *_link;   /**< next */
    qbobj_SystemUser_t *User; /**< the user. @required */
    const char *Access;       /**< what it may do. @words "ReadWrite", "ReadOnly", "Disabled" @required */
};

/** One group's access to a share by one protocol. */
struct qbobj_GroupAcl {
    qbobj_GroupAcl_t *_link;    /**< next */
    qbobj_SystemGroup_t *Group; /**< the group. @required */
    const char *Access;         /**< what it may do. @words "ReadWrite", "ReadOnly", "Disabled" @required */
};

/** A folder of a share that leads to a share of another server (DFS). */
struct qbobj_DfolderAcl {
    qbobj_DfolderAcl_t *_link; /**< next */
    const char *Name;          /**< name of the folder */
    const char *Address;       /**< the other server */
    const char *RemoteShare;   /**< share on that server */
};

/** The login of an rsync client. A written list ends at the first empty name. */
struct qbobj_UserPasswordAcl {
    qbobj_UserPasswordAcl_t *_link; /**< next */
    const char *UserName;           /**< name. @required */
    const char *Password; /**< stored and returned plain; null and the mask keep the stored one. @secret */
};

/** One entry of a folder's POSIX access control list. */
struct qbobj_PosixAcl {
    qbobj_PosixAcl_t *_link; /**< next */
    int Type;                /**< 0 access list, 1 default list. @words 0, 1 @readonly */
    int Tag;                 /**< tag of the entry, as libacl numbers it. @readonly */
    int Perm;                /**< permission bits: 4 read, 2 write, 1 execute. @range 0 to 7 @readonly */
    int Id;                  /**< uid or gid of an entry for a named user or group; else -1. @readonly */
    const char *Name;        /**< name of that user or group; else null. @readonly */
};

/** Owner and permissions of a share's folder. */
struct qbobj_FileStat {
    qbobj_SystemUser_t *User;   /**< owner; a creation needs one */
    qbobj_SystemGroup_t *Group; /**< owning group; a creation needs one */
    const char *UserAccess;     /**< access of the owner. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *GroupAccess;    /**< access of the group. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *EveryoneAccess; /**< access of everyone else. @words "ReadWrite", "ReadOnly", "Disabled" */
    int _void_NonOwnerDelete;   /**< non-zero: NonOwnerDelete is not given */
    int NonOwnerDelete; /**< users may delete what others own (the sticky bit is clear). @words 0, 1 */
    int AclInherit;     /**< the default list gives the rights of the access list. @words 0, 1 @readonly */
    qbobj_PosixAcl_t *Acls; /**< list: the folder's POSIX access control list. @readonly */
    int _PosixMode;         /**< mode of the folder, as stat() gives it. @readonly */
};

/* ---- Records: options of the protocols ----------------------------------------------------------------- */

/** A block volume. */
struct qbobj_ZvolShareOption {
    const char *ZfsName; /**< dataset name: volume name, "/", share name. @readonly */
    uint64_t SizeKB;     /**< size. @unit KB */
    uint64_t UsedKB;     /**< used now. @unit KB @readonly */
    int IsSparse;        /**< space is taken only when it is written. @words 0, 1 */
};

/** A share's options for Windows clients. */
struct qbobj_CifsShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for those whom no list names. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    int _void_AllowGuestAccess;           /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;                 /**< guests may enter. @words 0, 1 */
    int _void_ShareDisplayOption;         /**< non-zero: ShareDisplayOption is not given */
    int ShareDisplayOption;               /**< non-zero: the share is hidden when browsing; kept as given */
    int _void_EnableRecycleBin;           /**< non-zero: EnableRecycleBin is not given */
    int EnableRecycleBin;                 /**< deleted files go to a recycle bin. @words 0, 1 */
    int _void_RecycleSizeLimit;           /**< non-zero: RecycleSizeLimit is not given */
    int RecycleSizeLimit;                 /**< size limit of the recycle bin. @unit MB */
    int _void_RecycleAgeLimit;            /**< non-zero: RecycleAgeLimit is not given */
    int RecycleAgeLimit;                  /**< age limit of the recycle bin, as stored; 0 is none */
    int _void_NewFileFolderPermAutoset;   /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;         /**< new files and folders get the rights below. @words 0, 1 */
    int _void_AclChangeRestrictionToggle; /**< non-zero: AclChangeRestrictionToggle is not given */
    int AclChangeRestrictionToggle;       /**< permission bits that clients cannot take away, as stored */
    /** The group's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateGroupRights;
    /** Everyone's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateEveryoneRights;
    /** The group's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateGroupRights;
    /** Everyone's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateEveryoneRights;
    int _void_EnableOplocks;        /**< non-zero: EnableOplocks is not given */
    int EnableOplocks;              /**< opportunistic locks. @words 0, 1 */
    int EnableDFS;                  /**< the share holds links to other servers. @words 0, 1 */
    qbobj_HostAcl_t *HostAcl;       /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;       /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;     /**< list: access of groups */
    qbobj_DfolderAcl_t *DfolderAcl; /**< list: links to other servers */
};

/** A share's options for Apple clients. */
struct qbobj_AfpShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for those whom no list names. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    int _void_AllowGuestAccess;         /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;               /**< guests may enter. @words 0, 1 */
    int _void_NewFileFolderPermAutoset; /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;       /**< new files and folders get the rights below. @words 0, 1 */
    /** The group's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateGroupRights;
    /** Everyone's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateEveryoneRights;
    /** The group's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateGroupRights;
    /** Everyone's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateEveryoneRights;
    qbobj_HostAcl_t *HostAcl;   /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;   /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl; /**< list: access of groups */
};

/** A share's options for FTP clients. */
struct qbobj_FtpShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for those whom no list names. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    int _void_NewFileFolderPermAutoset; /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;       /**< new files and folders get the rights below. @words 0, 1 */
    /** The group's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateGroupRights;
    /** Everyone's right to a new file. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FileCreateEveryoneRights;
    /** The group's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateGroupRights;
    /** Everyone's right to a new folder. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *FolderCreateEveryoneRights;
    qbobj_HostAcl_t *HostAcl;   /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;   /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl; /**< list: access of groups */
};

/** A share's options for NFS clients. */
struct qbobj_NfsShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for hosts that the list does not name. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    int Sync; /**< writes are answered when they are on disk; a creation stores 1. @words 0, 1 */
    qbobj_HostAcl_t *HostAcl; /**< list: access of hosts */
};

/** A share's options for media players (DLNA). */
struct qbobj_DlnaShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Players never write: "ReadWrite" counts as "ReadOnly", at a creation "Disabled" too; a modification to
     *  it removes the options. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    /** Kinds of media that are shown; null is "All".
     *  @words "", "Audio", "Video", "Video,Audio", "Images", "Images,Audio", "Images,Video", "All" */
    const char *MediaType;
};

/** A share's options for music players (DAAP). */
struct qbobj_DaapShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
};

/** A share's options for rsync clients. */
struct qbobj_RsyncShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for hosts that the list does not name. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    const char *PasswordProtection;           /**< clients must log in. @words "Enabled", "Disabled" */
    qbobj_HostAcl_t *HostAcl;                 /**< list: access of hosts */
    qbobj_UserPasswordAcl_t *UserPasswordAcl; /**< list: logins of clients */
};

/** A share's options for HTTP clients. */
struct qbobj_HttpShareOption {
    int NotAvailable; /**< the share is not offered by the protocol. @words 0, 1 */
    int Changed;      /**< set by a modification: something differs now. @words 0, 1 @readonly */
    /** Access for those whom no list names. @words "ReadWrite", "ReadOnly", "Disabled" */
    const char *DefaultAccess;
    qbobj_HostAcl_t *HostAcl;   /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;   /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl; /**< list: access of groups */
    int _void_EnableWebDav;     /**< non-zero: EnableWebDav is not given */
    int EnableWebDav;           /**< clients may write with WebDAV. @words 0, 1 */
};

#ifdef __cplusplus
}
#endif

#endif
