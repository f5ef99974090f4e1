/**
 * @file share_option.h
 * The parts of a share's record: its access lists, its folder's ownership, and its options for each protocol.
 *
 * An access word is "ReadWrite", "ReadOnly" or "Disabled", compared with regard to case.
 */
#ifndef QBOBJ_SHARE_OPTION_H
#define QBOBJ_SHARE_OPTION_H

#include <qbobj/account.h>
#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: access lists ----------------------------------------------------------------------------- */

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

/** The login of an rsync client. A written list ends at the first empty name. */
struct qbobj_UserPasswordAcl {
    qbobj_UserPasswordAcl_t *_link; /**< next */
    const char *UserName;           /**< name */
    const char
        *Password; /**< password, stored and returned plain; null or `masked_password`: stays as stored */
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

/* ---- Records: options of the protocols ----------------------------------------------------------------- */

/** A block volume. */
struct qbobj_ZvolShareOption {
    const char *ZfsName; /**< dataset name: volume name, "/", share name */
    uint64_t SizeKB;     /**< size in KB */
    uint64_t UsedKB;     /**< used now, in KB; read only */
    int IsSparse;        /**< 0/1: space is taken only when it is written */
};

/** A share's options for Windows clients. */
struct qbobj_CifsShareOption {
    int NotAvailable;                       /**< 0/1: the share is not offered by the protocol */
    int Changed;                            /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess;              /**< access word for those whom no list names */
    int _void_AllowGuestAccess;             /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;                   /**< 0/1: guests may enter */
    int _void_ShareDisplayOption;           /**< non-zero: ShareDisplayOption is not given */
    int ShareDisplayOption;                 /**< non-zero: the share is hidden when browsing; kept as given */
    int _void_EnableRecycleBin;             /**< non-zero: EnableRecycleBin is not given */
    int EnableRecycleBin;                   /**< 0/1: deleted files go to a recycle bin */
    int _void_RecycleSizeLimit;             /**< non-zero: RecycleSizeLimit is not given */
    int RecycleSizeLimit;                   /**< size limit of the recycle bin in MB */
    int _void_RecycleAgeLimit;              /**< non-zero: RecycleAgeLimit is not given */
    int RecycleAgeLimit;                    /**< age limit of the recycle bin; 0 is none */
    int _void_NewFileFolderPermAutoset;     /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;           /**< 0/1: new files and folders get the rights below */
    int _void_AclChangeRestrictionToggle;   /**< non-zero: AclChangeRestrictionToggle is not given */
    int AclChangeRestrictionToggle;         /**< permission bits that clients cannot take away */
    const char *FileCreateGroupRights;      /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights;   /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;    /**< access word: the group's right to a new folder */
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
    int NotAvailable;                       /**< 0/1: the share is not offered by the protocol */
    int Changed;                            /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess;              /**< access word for those whom no list names */
    int _void_AllowGuestAccess;             /**< non-zero: AllowGuestAccess is not given */
    int AllowGuestAccess;                   /**< 0/1: guests may enter */
    int _void_NewFileFolderPermAutoset;     /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;           /**< 0/1: new files and folders get the rights below */
    const char *FileCreateGroupRights;      /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights;   /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;    /**< access word: the group's right to a new folder */
    const char *FolderCreateEveryoneRights; /**< access word: everyone's right to a new folder */
    qbobj_HostAcl_t *HostAcl;               /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;               /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;             /**< list: access of groups */
};

/** A share's options for FTP clients. */
struct qbobj_FtpShareOption {
    int NotAvailable;                       /**< 0/1: the share is not offered by the protocol */
    int Changed;                            /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess;              /**< access word for those whom no list names */
    int _void_NewFileFolderPermAutoset;     /**< non-zero: NewFileFolderPermAutoset is not given */
    int NewFileFolderPermAutoset;           /**< 0/1: new files and folders get the rights below */
    const char *FileCreateGroupRights;      /**< access word: the group's right to a new file */
    const char *FileCreateEveryoneRights;   /**< access word: everyone's right to a new file */
    const char *FolderCreateGroupRights;    /**< access word: the group's right to a new folder */
    const char *FolderCreateEveryoneRights; /**< access word: everyone's right to a new folder */
    qbobj_HostAcl_t *HostAcl;               /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;               /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl;             /**< list: access of groups */
};

/** A share's options for NFS clients. */
struct qbobj_NfsShareOption {
    int NotAvailable;          /**< 0/1: the share is not offered by the protocol */
    int Changed;               /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess; /**< access word for hosts that the list does not name */
    int Sync;                  /**< 0/1: writes are answered when they are on disk */
    qbobj_HostAcl_t *HostAcl;  /**< list: access of hosts */
};

/** A share's options for media players (DLNA). */
struct qbobj_DlnaShareOption {
    int NotAvailable;          /**< 0/1: the share is not offered by the protocol */
    int Changed;               /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess; /**< "ReadOnly" or "Disabled" */
    const char *MediaType; /**< "", "Audio", "Video", "Video,Audio", "Images", "Images,Audio", "Images,Video",
                              "All" */
};

/** A share's options for music players (DAAP). */
struct qbobj_DaapShareOption {
    int NotAvailable; /**< 0/1: the share is not offered by the protocol */
    int Changed;      /**< 0/1: set by a modification: something differs now */
};

/** A share's options for rsync clients. */
struct qbobj_RsyncShareOption {
    int NotAvailable;                         /**< 0/1: the share is not offered by the protocol */
    int Changed;                              /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess;                /**< access word for hosts that the list does not name */
    const char *PasswordProtection;           /**< "Enabled" or "Disabled": clients must log in */
    qbobj_HostAcl_t *HostAcl;                 /**< list: access of hosts */
    qbobj_UserPasswordAcl_t *UserPasswordAcl; /**< list: logins of clients */
};

/** A share's options for HTTP clients. */
struct qbobj_HttpShareOption {
    int NotAvailable;           /**< 0/1: the share is not offered by the protocol */
    int Changed;                /**< 0/1: set by a modification: something differs now */
    const char *DefaultAccess;  /**< access word for those whom no list names */
    qbobj_HostAcl_t *HostAcl;   /**< list: access of hosts */
    qbobj_UserAcl_t *UserAcl;   /**< list: access of users */
    qbobj_GroupAcl_t *GroupAcl; /**< list: access of groups */
    int _void_EnableWebDav;     /**< non-zero: EnableWebDav is not given */
    int EnableWebDav;           /**< 0/1: clients may write with WebDAV */
};

#ifdef __cplusplus
}
#endif

#endif
