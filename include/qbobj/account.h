/**
 * @file account.h
 * Users, groups, passwords, the defaults of new accounts, quotas, and the directory service that accounts may
 * come from.
 */
#ifndef QBOBJ_ACCOUNT_H
#define QBOBJ_ACCOUNT_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ---------------------------------------------------------------------------------------------
 */

/** The quota of one user or group on one share. */
struct qbobj_Quota {
    qbobj_Quota_t *_link;    /**< next */
    int AccountId;           /**< id of the user or group */
    const char *AccountName; /**< its name */
    const char *ShareId;     /**< the share's dataset name */
    uint64_t HardMB;         /**< hard limit in MB; 0 is none */
    uint64_t UsedMB;         /**< used now, in MB; read only */
};

/** The size limit and snapshot settings of one user's home. */
struct qbobj_UserHomeFolderSettings {
    qbobj_UserHomeFolderSettings_t *_link; /**< next */
    int UserId;                            /**< id of the user */
    uint64_t SizeLimit;                    /**< size limit as stored; 0 is none */
    uint64_t SizeUsed;                     /**< used now, in the unit of the usage statistics; read only */
    int SnapshotProtectionEnabled;         /**< 0/1: the home is snapshotted */
    int VisibleSnapshot;                   /**< 0/1: snapshots are shown below VisibleSnapFolder */
    const char *VisibleSnapFolder; /**< folder in which snapshots are shown; "" when they are hidden */
};

/** The Time Machine area of one user. */
struct qbobj_UserTimeMachineQuota {
    qbobj_UserTimeMachineQuota_t *_link; /**< next */
    int UserId;                          /**< id of the user */
    int Enabled;                         /**< 0/1: the user may back up to the appliance */
    int CapacityMB;                      /**< size of the area in MB */
    uint64_t UsedMB;                     /**< used now, in MB; read only */
    int Delete;                          /**< 0/1: remove the area; 0 on read */
};

/** A user with everything that is kept for the account. */
struct qbobj_User {
    qbobj_User_t *_link;          /**< next */
    int resource_id;              /**< key of the account: its id */
    int UserId;                   /**< id; 100 to 32767 for ordinary local users */
    const char *UserName;         /**< name */
    const char *OldUserName;      /**< the name before a modification */
    const char *GroupName;        /**< name of the primary group */
    const char *HomeVolumeId;     /**< volume that holds the home */
    const char *HomeDirectory;    /**< path of the home */
    const char *OldHomeDirectory; /**< path of the home before a modification or deletion */
    const char *Email;            /**< e-mail address; "" when there is none */
    const char *FullName;         /**< full name; "" when there is none */
    const char *Password;         /**< plain on a write, masked on a read */
    const char *SmbHash;          /**< password hash for Windows clients */
    const char *SysHash;          /**< password hash of the system */
    int IsDomainMember;           /**< 0/1: the account comes from the directory service; read only */
    int no_invitation;            /**< 0/1: the user is not invited by e-mail */
    int IsLocked;                 /**< 0/1: the account is locked */
    qbobj_Quota_t *UserQuota;     /**< list: quotas on shares */
    qbobj_UserTimeMachineQuota_t *TimeMachineQuota;     /**< Time Machine area; null: none given */
    qbobj_UserHomeFolderSettings_t *HomeFolderSettings; /**< home settings; null: none given */
};

/** A user by id and name alone, as owners and access lists name it. */
struct qbobj_SystemUser {
    qbobj_SystemUser_t *_link; /**< next */
    int resource_id;           /**< key of the account: its id */
    int UserId;                /**< id */
    const char *UserName;      /**< name */
    int _PosixId;              /**< uid of the system */
};

/** A page of users. */
struct qbobj_UserCollection {
    qbobj_User_t *User; /**< list: the users */
    int Entries;        /**< users that match the filter, on all pages */
    int TotalEntries;   /**< users of the kind asked for, whatever the filter */
};

/** Filter, order and page of an account listing. */
struct qbobj_AccountQuery {
    int limit;             /**< page size; 0 is no limit */
    int offset;            /**< rows to skip; only with a limit */
    const char *name_like; /**< LIKE pattern of the name, a user's full name or e-mail; at most 256 bytes */
    const char
        *opt;  /**< users only: "TM_ON", "HF_EXISTS", or an OR of "||HF_SNAPSHOT_PROTECTION==0" or "==1" and
                    "||HF_SNAPSHOT_ACCESS==0" or "==1"; null: all */
    int order; /**< 1 by name, 2 by id, -1 and -2 the same descending; any other by name */
    int ads;   /**< non-zero: accounts of the directory service; 0: local ones */
};

/** A group with its secondary members and quotas. */
struct qbobj_Group {
    qbobj_Group_t *_link;          /**< next */
    int resource_id;               /**< key of the group: its id */
    int GroupId;                   /**< id; 100 to 32767 for ordinary local groups */
    const char *GroupName;         /**< name */
    const char *OldGroupName;      /**< the name before a modification */
    qbobj_User_t *SecondaryMember; /**< list: users who are members beside their primary group */
    qbobj_Quota_t *GroupQuota;     /**< list: quotas on shares */
    int IsDomainMember;            /**< 0/1: the group comes from the directory service; read only */
};

/** A group by id and name alone, as owners and access lists name it. */
struct qbobj_SystemGroup {
    qbobj_SystemGroup_t *_link; /**< next */
    int resource_id;            /**< key of the group: its id */
    int GroupId;                /**< id */
    const char *GroupName;      /**< name */
    int _PosixId;               /**< gid of the system */
};

/** A page of groups. */
struct qbobj_GroupCollection {
    qbobj_Group_t *Group; /**< list: the groups */
    int Entries;          /**< groups that match the filter, on all pages */
    int TotalEntries;     /**< groups of the kind asked for, whatever the filter */
};

/** The administrator's password and the question that recovers it. */
struct qbobj_AdminPassword {
    const char *Password; /**< plain on a write */
    const char *Question; /**< recovery question */
    const char *Answer;   /**< its answer */
    const char *Email;    /**< e-mail address of the recovery */
};

/** A user's new password, set by an administrator. */
struct qbobj_UserPassword {
    qbobj_UserPassword_t *_link; /**< next */
    int UserId;                  /**< id of the user */
    const char *Password;        /**< new password, plain */
};

/** A user's new password, set by the user. */
struct qbobj_MyPassword {
    qbobj_MyPassword_t *_link; /**< next */
    const char *UserName;      /**< name of the user */
    const char *OldPassword;   /**< password so far, plain */
    const char *NewPassword;   /**< new password, plain */
};

/** What a new account gets. */
struct qbobj_AccountDefault {
    const char *HomeVolumeId;         /**< volume that holds the homes */
    int DiskQuotaWarn;                /**< 1 to 99: percentage of the hard quota that is the soft quota */
    int GroupId;                      /**< id of the default primary group */
    int DisallowPasswordChange;       /**< 0/1: users may not change their password */
    uint64_t HomeFolderCapacityLimit; /**< size limit of a new home, as stored; 0 is none */
    const char *GroupMembership;      /**< groups of a new user */
    int PrivateTimeMachine;           /**< 0/1: a new user gets a Time Machine area */
    int PrivateTimeMachineSpace;      /**< size of that area, as stored */
    int SnapshotProtection;           /**< 0/1: a new home is snapshotted */
};

/** The source of accounts: the appliance itself or a directory service. */
struct qbobj_Security {
    const char *Security;            /**< "user" (local accounts) or "ads" (directory service) */
    const char *Realm;               /**< realm of the directory; a host name */
    const char *workGroup;           /**< workgroup or domain name */
    const char *orgUnit;             /**< organisational unit in which the appliance registers */
    const char *restrictOU;          /**< organisational unit that accounts are read from */
    int noSyncADS;                   /**< 0/1: directory accounts are not mirrored into the local tables */
    const char *restrictAccountOu;   /**< not used */
    const char *domainAdministrator; /**< administrator of the domain */
    const char *passWord;            /**< that account's password; masked on read, never stored */
    const char *passWordServer;      /**< login server, a host name or address; "" chooses one */
    int displayTrustedUsers;         /**< 0/1: accounts of trusted domains are accepted */
    const char *domainSid;           /**< security id of the domain; read only */
    int domainGroupAdminGID;         /**< id of the domain's administrator group; read only, 98 when unset */
    int domainAdminUID;              /**< id of the domain's administrator; read only, 98 when unset */
};

/** How far the import of directory accounts is. */
struct qbobj_SecurityAdsProgress {
    const char *State; /**< "idle", "running", "complete" or "error" */
    int Percent;       /**< 0 to 100; users and groups are half the scale each */
    int TotalUser;     /**< users to import */
    int CurrUser;      /**< users imported */
    int TotalGroup;    /**< groups to import */
    int CurrGroup;     /**< groups imported */
    int StartAt;       /**< begin of the import, Unix seconds */
    int DoneAt;        /**< end of the import, Unix seconds */
};

/* ---- Directory security ---------------------------------------------------------------------------------- */

/** Reads how file-sharing users are authenticated, from `service_cifs`.
 *  @param o  filled but for `restrictAccountOu`; `passWord` is always masked
 *  @return 0 or QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err);

/** Stores how file-sharing users are authenticated, in `service_cifs`. The domain's password is not stored.
 *  @param o  `Security` is "user" or "ads"; the realm and the login server are checked for "ads" only
 *  @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP, _REALM or _SEC_SERVER; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err);

/** Reads how far the import of directory accounts is, from `_ads_importer`.
 *  @param o  filled
 *  @return 0 or QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                           qbobj_error_rec_t *err);


#ifdef __cplusplus
}
#endif

#endif
