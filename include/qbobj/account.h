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

/* ---- Records ------------------------------------------------------------------------------------------- */

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

/* ---- Directory security -------------------------------------------------------------------------------- */

/** Reads how file-sharing users are authenticated, from `service_cifs`.
 *  @param o  filled but for `restrictAccountOu`; `passWord` is always masked
 *  @return 0 or QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o,
                                qbobj_error_rec_t *err);

/** Stores how file-sharing users are authenticated, in `service_cifs`. The domain's password is not stored.
 *  @param o  `Security` is "user" or "ads"; the realm and the login server are checked for "ads" only
 *  @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP, _REALM or _SEC_SERVER;
 * QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o,
                                qbobj_error_rec_t *err);

/** Reads how far the import of directory accounts is, from `_ads_importer`.
 *  @param o  filled
 *  @return 0 or QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                           qbobj_error_rec_t *err);

/* ---- Users read ---------------------------------------------------------------------------------------- */

/** Lists users of one kind, local or directory ones, with quotas, home settings and Time Machine area. System
 * accounts, 'nobody', guests and remote users (primary group 98) are never listed. Reads `$user`, `$group`,
 * `user_quota`, `_user_quota_stat`, `share`, `$home_folder`, `_hf_zfs_stat`, `$timemachine_quota`,
 * `account_default`, `service_cifs`; has the platform refresh `_hf_zfs_stat`.
 *  @param collection    the users are appended to its list, the counts are set; `OldUserName`,
 * `HomeVolumeId`, `OldHomeDirectory` and the hashes are not read, and `HomeDirectory` and `GroupName` are
 * null when the account has none
 *  @param query         filter, order and page; null lists all of the kind that the appliance uses, by name.
 * `Entries` counts regardless of the page and of "HF_EXISTS"
 *  @param encrypt_flag  0 masks passwords ("" where there is none), else they are returned as stored
 *  @return 0; QBOBJ_ERROR_API_ARGS for a pattern of more than 256 bytes; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getUserCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *collection,
                                      qbobj_AccountQuery_t *query, int encrypt_flag, qbobj_error_rec_t *err);

/** Reads users as qbobj_getUserCollection() does, remote ones too. The password is always masked, the full
 * name is not read.
 *  @param user  list; each keyed by `resource_id`, else `UserId`, else, in directory mode without mirrored
 * accounts, by `UserName`; filled
 *  @return 0; QBOBJ_ERROR_API_ARGS without a key; QBOBJ_ERROR_UI__NO_LDAP_OBJECT for a name that the
 * directory does not know; QBOBJ_ERROR_DB_NOTEXISTS; QBOBJ_ERROR_DB_MISC, also for a negative key in local
 * mode */
QBOBJ_API int qbobj_getUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/** Names users of any kind by their ids, from `$user`. An unknown id is named by its digits, in directory
 * mode by the directory, which may know no name: null.
 *  @param user  list keyed by `resource_id`, which is negative only in directory mode; `UserId` and
 * `UserName` are filled
 *  @return 0; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSystemUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t *user,
                                  qbobj_error_rec_t *err);

/** Lists the remote users: those whose primary group is 98. Reads `$user`.
 *  @param user  receives the list, by name
 *  @return 0; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getCloudUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t **user,
                                 qbobj_error_rec_t *err);

/** Lists the members of a group. Reads `$user`, `$group`, `$group_has_user`.
 *  @param gname        name of the group; an unknown one has no members
 *  @param primaryOnly  non-zero: only users whose primary group it is. Otherwise a user comes once for each
 * membership row that matches
 *  @param user         receives the list, by name
 *  @return 0; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getUserInGroupName(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int primaryOnly,
                                       qbobj_SystemUser_t **user, qbobj_error_rec_t *err);

/* The look-ups of ids and names below read `$user`, `$group`, `$group_has_user` and `service_cifs`, and fill
 * no error record when they find nothing. */

/** The id of a user: in directory mode of a directory user or a privileged local one, else of a local user.
 *  @param uname  the name; null is the guest
 *  @param uid    required
 *  @return 0; -1 unknown or failed; QBOBJ_ERROR_API_ARGS */
QBOBJ_API int qbobj_getUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid,
                           qbobj_error_rec_t *err);

/** The name of the user of an id. An unknown id is named by its digits, a negative one "guest".
 *  @param uname  required: a null one ends the process with a failed assertion; "guest" after a failure
 *  @return 0; -1 failed */
QBOBJ_API int qbobj_getUserName(qbdb_handle_t *qbdb, sqlite3 *db, int uid, char **uname,
                                qbobj_error_rec_t *err);

/** The system's uid of a user. In directory mode a name that is not in the database is asked of the
 * directory.
 *  @param uname  the name; null is the guest
 *  @return the uid, or -1 */
QBOBJ_API int qbobj_getPosixUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, qbobj_error_rec_t *err);

/** The system's uid of a user's id: the id itself unless it is negative, a directory user's.
 *  @return the uid, or -1 */
QBOBJ_API int qbobj_getPosixUIDbyUID(qbdb_handle_t *qbdb, sqlite3 *db, int uid, qbobj_error_rec_t *err);

/** The system's uid and primary gid of a user.
 *  @param uname  the name; null is the guest
 *  @param uid    required; set only with a result of 0
 *  @param gid    required; set only with a result of 0
 *  @return 0; -1 when either is unknown; QBOBJ_ERROR_API_ARGS */
QBOBJ_API int qbobj_getPosixUIDGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, int *gid,
                                   qbobj_error_rec_t *err);

/* ---- Groups -------------------------------------------------------------------------------------------- */

/** Lists groups of one kind, local or directory ones, with quotas and secondary members. System groups,
 * 'guest' and 'nogroup' are never listed. Reads `$group`, `group_quota`, `_group_quota_stat`, `share`,
 * `$group_has_user`, `$user`, `service_cifs`.
 *  @param collection  the groups are appended to its list, the counts are set. Of the members: ids, names,
 * home, e-mail and the masked password
 *  @param query       filter (by the name only), order and page; null lists all of the kind that the
 * appliance uses, by name
 *  @return 0; QBOBJ_ERROR_API_ARGS for a pattern of more than 256 bytes; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_GroupCollection_t *collection,
                                       qbobj_AccountQuery_t *query, qbobj_error_rec_t *err);

/** Always fails: its statement is not one that the database accepts, and callers rely on that. Use
 * qbobj_getGroupCollection().
 *  @param group  list keyed by `resource_id`, else `GroupId`
 *  @return QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err);

/** Names groups of any kind by their ids, from `$group`. An unknown id is named by its digits, in directory
 * mode by the directory, which may know no name: null.
 *  @param group  list keyed by `resource_id`, which is negative only in directory mode; `GroupId` and
 * `GroupName` are filled
 *  @return 0; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_getSystemGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemGroup_t *group,
                                   qbobj_error_rec_t *err);

/** The id of a local or privileged group; groups of the directory are not found by name, in directory mode
 * neither.
 *  @param gname  the name; null is the local group 'guest', or 'nogroup' where there is none
 *  @param gid    required
 *  @return 0; -1 unknown or failed; QBOBJ_ERROR_API_ARGS */
QBOBJ_API int qbobj_getGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int *gid,
                           qbobj_error_rec_t *err);

/** The name of the group of an id. An unknown id is named by its digits, a negative one "guest".
 *  @param gname  required: a null one ends the process with a failed assertion; "guest" after a failure
 *  @return 0; -1 failed */
QBOBJ_API int qbobj_getGroupName(qbdb_handle_t *qbdb, sqlite3 *db, int gid, char **gname,
                                 qbobj_error_rec_t *err);

/** The id of a user's primary group.
 *  @param uname  the name; null asks as qbobj_getGID() does for null
 *  @param gid    required
 *  @return 0; -1 unknown, without a group, or failed; QBOBJ_ERROR_API_ARGS */
QBOBJ_API int qbobj_getPrimaryGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *gid,
                                  qbobj_error_rec_t *err);

/** The system's gid of a group. In directory mode a name that is not in the database is asked of the
 * directory.
 *  @param gname  the name; null as for qbobj_getGID()
 *  @return the gid, or -1 */
QBOBJ_API int qbobj_getPosixGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, qbobj_error_rec_t *err);

/** The system's gid of a group's id: the id itself unless it is negative, a directory group's.
 *  @return the gid, or -1 */
QBOBJ_API int qbobj_getPosixGIDbyGID(qbdb_handle_t *qbdb, sqlite3 *db, int gid, qbobj_error_rec_t *err);

/** Is the user a member of the group, as the primary or a secondary one?
 *  @return 0 a member; 1 not a member, also for an unknown user or group; -1 failed */
QBOBJ_API int qbobj_isMemberOfGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, const char *gname,
                                    qbobj_error_rec_t *err);

/** Creates local groups. Writes `$group`, `group_quota`, `$group_has_user`; reads `share`, `account_default`.
 *  @param group  list: `GroupName`, `GroupId` (100 to 32767; below 1 takes the lowest free one), `GroupQuota`
 * (`ShareId`, `HardMB`) and `SecondaryMember` (`resource_id`, else `UserId`); `GroupId` and `resource_id` are
 * filled. Null is nothing to do
 *  @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_UI__NAME_TOO_LONG, _GROUPNAME_ALREADY_EXISTS (a deleted group
 * holds its name until the platform removes it) or _GID_ALREADY_EXISTS; QBOBJ_ERROR_DB_MISC, also when no id
 * is free or a share is unknown */
QBOBJ_API int qbobj_addGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err);

/** Deletes groups: quotas and memberships go, the row in `$group` is marked for the platform to remove. Rows
 * of access lists stay. Writes `$group`, `group_quota`, `_group_quota_stat`, `$group_has_user`; reads
 * `$user`.
 *  @param group  list keyed by `resource_id`, else `GroupId`; `GroupName` is filled. Null is nothing to do
 *  @return 0; QBOBJ_ERROR_API_ARGS for an unknown group; QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP while it
 * is any user's primary group; QBOBJ_ERROR_DB_NOTEXISTS; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_deleteGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group,
                                qbobj_error_rec_t *err);

/** Changes groups. Writes `$group`, `group_quota`, `$group_has_user`; reads `share`, `account_default`.
 *  @param group  list keyed by `resource_id`, else `GroupId`. `GroupName` renames; each entry of `GroupQuota`
 * sets the quota of its share, 0 MB removes it; `SecondaryMember`, up to the first entry without a
 * `UserName`, always becomes the whole list of members, so that none given leaves none. `OldGroupName` is
 * filled: null when the name stays. A null list is nothing to do
 *  @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_UI__NAME_TOO_LONG or _GROUPNAME_ALREADY_EXISTS;
 * QBOBJ_ERROR_DB_MISC */
QBOBJ_API int qbobj_modifyGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group,
                                qbobj_error_rec_t *err);

/* ---- Users written ------------------------------------------------------------------------------------- */

/**
 * Creates local users, with their quotas, home settings and Time Machine areas.
 *
 * Writes `$user`, `user_quota`, `$home_folder`, `$timemachine_quota` and the id mark in `account_default`;
 * reads
 * `$group`, `_volume` and `share`. The home directory itself is the caller's to make.
 *
 * @param user  chain of users. `UserName` is required. `SysHash`, a hash that is stored as it is, goes before
 *              `Password`. Without `GroupName` a user gets the group of the nearest user before in the chain
 * who names one, else group 99. Without `HomeVolumeId` the home is "/home/" and the name; an id that is no
 *              volume's, "" included, is an error. A `UserId` below 1 is chosen. Without `HomeFolderSettings`
 * those of the account defaults apply; a `TimeMachineQuota` that is not enabled is passed over. The soft
 *              limit of a quota is stored as `HardMB` times the default percentage, not divided by 100.
 *              `UserId`, `resource_id` and `HomeDirectory` are filled.
 * @return 0; QBOBJ_ERROR_API_ARGS for a missing or invalid value; QBOBJ_ERROR_UI__NAME_TOO_LONG,
 * _USERNAME_RESERVED, _USERNAME_ALREADY_EXISTS, _USERNAME_IS_SAME_AS_REMOTE_USERNAME or _UID_ALREADY_EXISTS;
 * QBOBJ_ERROR_DB_MISC, also when no id is free
 */
QBOBJ_API int qbobj_addUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Inserts users in bulk, as qbobj_checkUserList() prepares them. Of the values only the group's name is
 * checked.
 *
 * Writes `$user`: each id is one above the highest local one, the home is "/home", and `last_changed` is not
 * in days. Reads `$group`. No quotas, home settings or Time Machine areas are made.
 *
 * @param user  chain of users: `UserName`, `Password` as it is to be stored, `Email`, `GroupName` (as in
 *              qbobj_addUser()). `UserId`, `resource_id` and `HomeDirectory` are filled.
 * @return 0; QBOBJ_ERROR_API_ARGS for a group that does not exist; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_addUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Reads and checks the import file, "/tmp/user_list.txt" below the handle's root. The database is not
 * touched.
 *
 * A line has four fields separated by TAB: user name, group name, e-mail address, password; the last two may
 * be empty. A line "export_list" says that the passwords below it are hashes, "import_list" that they are
 * plain, as at the file's start. Empty lines and the header "User_Name", "Group_Name", "Email_Address",
 * "Password" are passed over. Lines end with LF or CR LF; one of more than 1023 bytes is read as several.
 *
 * @param user_collection       the users are appended here, with their passwords as they are to be stored
 * @param group_collection      the groups that do not exist yet are appended here, each once, by `GroupName`
 * alone
 * @param user_collection_bak   the users that exist, filled by the caller
 * @param group_collection_bak  the groups that exist, filled by the caller
 * @return 0; QBOBJ_ERROR_UNKNOWN when the file does not exist or has a line of another form;
 * QBOBJ_ERROR_API_ARGS, QBOBJ_ERROR_UI__NAME_TOO_LONG, _USERNAME_RESERVED or _USERNAME_ALREADY_EXISTS for a
 * line's values. After a failure the collections are as they were. Names compare to the letter; `Entries` and
 * `TotalEntries` are left alone.
 */
QBOBJ_API int qbobj_checkUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *user_collection,
                                  qbobj_GroupCollection_t *group_collection,
                                  qbobj_UserCollection_t *user_collection_bak,
                                  qbobj_GroupCollection_t *group_collection_bak, qbobj_error_rec_t *err);

/**
 * Changes users.
 *
 * Writes `$user`, `user_quota`, `$home_folder`, `$timemachine_quota`, `service_afp` (Time Machine is switched
 * on with its first user and off with its last) and, after a change of name, `$home_folder_snapshot`; reads
 * `$group`, `share` and `account_default`.
 *
 * @param user  chain of users keyed by `resource_id`, else by `UserId`, else, where directory accounts are
 * not mirrored, by `UserName`. A `UserName` renames and sets a local user's home to "/home/" and the name,
 *              even when the name stays. `SysHash` goes before `Password`; both null, or the mask, keep the
 * password. `Email` and `IsLocked` are always written: a null `Email` clears the address. A quota with
 * `HardMB` 0 is removed; the soft limit of another is `HardMB` times the default percentage divided by 100.
 *              Of `HomeFolderSettings` a `VisibleSnapshot` of 0 hides the snapshots and any other value keeps
 * their folder. `TimeMachineQuota` with `Delete` 1 removes the area while the service is on. `OldUserName`
 * and `OldHomeDirectory` are filled (null unless the name changed), and `HomeDirectory` when a name was
 * given; moving the home is the caller's work.
 * @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_UI__NO_LDAP_OBJECT, _NAME_TOO_LONG, _USERNAME_RESERVED or
 * _USERNAME_ALREADY_EXISTS; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_modifyUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Sets the primary group of a user in `$user`, both found by name among the accounts in use (local or
 * directory).
 *
 * @param UserName   the user; an unknown one is no error
 * @param GroupName  the group; an unknown one leaves the user without a primary group
 * @return 0 or QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_setPrimaryGroupByName(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName,
                                          const char *GroupName, qbobj_error_rec_t *err);

/**
 * Locks or unlocks the passwords of local users in `$user`. Users of the cloud group, system accounts and
 * users without a hash are passed over.
 *
 * @param Enable    0 locks, any other value unlocks
 * @param UserName  the user; null: all
 * @return 0 or QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_disableEnableLocalUserByName(qbdb_handle_t *qbdb, sqlite3 *db, int Enable,
                                                 const char *UserName, qbobj_error_rec_t *err);

/**
 * Sets the folder in which a user's snapshots are shown, in `$home_folder`.
 *
 * @param UserId             id of the user; an unknown one is no error
 * @param VisibleSnapFolder  the folder; null or "" hides the snapshots
 * @return 0 or QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_modifyUserVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, int UserId,
                                                const char *VisibleSnapFolder, qbobj_error_rec_t *err);

/**
 * Deletes users: clears every row that refers to them and marks their rows of `$user`, which the platform
 * removes later.
 *
 * Writes `user_quota`, `user_acl`, `_user_quota_stat`, `$home_folder`, `$timemachine_quota`,
 * `$group_has_user`,
 * `$home_folder_snapshot`, `$user` and, with the last Time Machine user, `service_afp`. When that last update
 * fails the call still succeeds, with the failure in the error record and the user not marked.
 *
 * @param user  chain of users keyed by `resource_id`, else by `UserId`; `UserName`, `HomeDirectory` and
 *              `OldHomeDirectory` are filled
 * @return 0; QBOBJ_ERROR_API_ARGS for an id that no user has; QBOBJ_ERROR_DB_MISC; QBOBJ_ERROR_DB_NOTEXISTS
 */
QBOBJ_API int qbobj_deleteUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/** As qbobj_deleteUser(), for users keyed by `UserName`. */
QBOBJ_API int qbobj_deleteUserByName(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user,
                                     qbobj_error_rec_t *err);

/* ---- Passwords and defaults ---------------------------------------------------------------------------- */

/**
 * Reads the recovery data of the administrator's password, from `passwordrecovery`.
 *
 * @param passwd  filled; `Password` is always masked
 * @return 0 or QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_getAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                                     qbobj_error_rec_t *err);

/**
 * Sets the password that users "admin" and "root" share, in `$user`, and its recovery data, in
 * `passwordrecovery`.
 *
 * @param passwd  `Password` must not be empty, and the mask is a password like any other; the recovery data
 * is left as it is unless `Question`, `Answer` and `Email` are all given
 * @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_setAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                                     qbobj_error_rec_t *err);

/**
 * Sets the password of a user, in `$user`.
 *
 * @param passwd  only the first of a chain counts. An unknown `UserId` is no error; an empty `Password`
 * leaves the user without one, and the mask is a password like any other.
 * @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_setUserPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserPassword_t *passwd,
                                    qbobj_error_rec_t *err);

/**
 * Sets the password of a user who proves the old one, in `$user`.
 *
 * @param passwd  only the first of a chain counts; all three texts must be given
 * @return 0; QBOBJ_ERROR_API_ARGS, also for a wrong old password; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_setMyPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_MyPassword_t *passwd,
                                  qbobj_error_rec_t *err);

/**
 * Reads what a new account gets, from `account_default`.
 *
 * @param account_default  filled
 * @return 0 or QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_getAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_AccountDefault_t *account_default, qbobj_error_rec_t *err);

/**
 * Stores what a new account gets, in `account_default`: every field, so read the record first and edit it.
 *
 * @param account_default  `HomeVolumeId` is a volume's id (null: the default volume, "c"), `DiskQuotaWarn` 1
 * to 99, `GroupId` a group's id
 * @return 0; QBOBJ_ERROR_API_ARGS; QBOBJ_ERROR_DB_MISC
 */
QBOBJ_API int qbobj_setAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_AccountDefault_t *account_default, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
