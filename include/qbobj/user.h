/**
 * @file user.h
 * Users with their quotas, homes and Time Machine areas, and the questions of identity about users.
 */
#ifndef QBOBJ_USER_H
#define QBOBJ_USER_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** The quota of one user or group on one share. */
struct qbobj_Quota {
    qbobj_Quota_t *_link;    /**< next */
    int AccountId;           /**< id of the user or group; in an account's own record it is not needed */
    const char *AccountName; /**< its name; read with a share alone. @readonly */
    const char *ShareId;     /**< the share's dataset name; in a share's own record it is not needed */
    uint64_t HardMB;         /**< hard limit; 0 is none. @unit MB */
    uint64_t UsedMB;         /**< used now. @unit MB @readonly */
};

/** The size limit and snapshot settings of one user's home. */
struct qbobj_UserHomeFolderSettings {
    qbobj_UserHomeFolderSettings_t *_link; /**< next */
    int UserId;                            /**< id of the user. @readonly */
    uint64_t SizeLimit;                    /**< size limit, as stored; 0 is none */
    uint64_t SizeUsed;                     /**< used now. @unit bytes @readonly */
    int SnapshotProtectionEnabled;         /**< the home is snapshotted. @words 0, 1 */
    int VisibleSnapshot;                   /**< snapshots are shown below VisibleSnapFolder. @words 0, 1 */
    const char *VisibleSnapFolder; /**< folder in which snapshots are shown; "" when they are hidden */
};

/** The Time Machine area of one user. */
struct qbobj_UserTimeMachineQuota {
    qbobj_UserTimeMachineQuota_t *_link; /**< next */
    int UserId;                          /**< id of the user. @readonly */
    int Enabled;                         /**< the user may back up to the appliance. @words 0, 1 */
    int CapacityMB;                      /**< size of the area. @unit MB */
    uint64_t UsedMB;                     /**< used now. @unit MB @readonly */
    int Delete;                          /**< a modification removes the area; 0 on a read. @words 0, 1 */
};

/** A user with everything that is kept for the account. */
struct qbobj_User {
    qbobj_User_t *_link; /**< next */
    int resource_id;     /**< key of the account: its id */
    /** Id; below 1 lets a creation choose one, a directory user's is negative. @range 100 to 32767 */
    int UserId;
    /** Name: letters, digits, "_", "&" and, not first, "-", "." and "@"; names that the appliance uses itself
     *  are reserved. @range 1 to 31 bytes @required */
    const char *UserName;
    const char *OldUserName;      /**< the name before a modification; null when it stays. @readonly */
    const char *GroupName;        /**< name of the primary group */
    const char *HomeVolumeId;     /**< creation only: volume that holds the home; never read */
    const char *HomeDirectory;    /**< path of the home. @readonly */
    const char *OldHomeDirectory; /**< path of the home before a modification or deletion. @readonly */
    const char *Email;            /**< e-mail address; "" when there is none */
    const char *FullName;         /**< full name; "" when there is none; read by listings alone. @readonly */
    const char *Password;         /**< plain on a write, masked on a read, "" when there is none. @secret */
    const char *SmbHash;          /**< password hash for Windows clients; not used. @secret */
    const char *SysHash; /**< password hash, stored as it is in place of `Password`; never read. @secret */
    int IsDomainMember;  /**< the account comes from the directory service. @words 0, 1 @readonly */
    int no_invitation;   /**< for the callers' own use: the user is not invited by e-mail. @words 0, 1 */
    int IsLocked;        /**< the account is locked. @words 0, 1 */
    qbobj_Quota_t *UserQuota;                           /**< list: quotas on shares */
    qbobj_UserTimeMachineQuota_t *TimeMachineQuota;     /**< Time Machine area; null: none */
    qbobj_UserHomeFolderSettings_t *HomeFolderSettings; /**< home settings; null: none given */
};

/** A user by id and name alone, as owners and access lists name it. */
struct qbobj_SystemUser {
    qbobj_SystemUser_t *_link; /**< next */
    int resource_id;           /**< key of the account: its id */
    int UserId;                /**< id */
    const char *UserName;      /**< name */
    int _PosixId;              /**< not used */
};

/** A page of users. */
struct qbobj_UserCollection {
    qbobj_User_t *User; /**< list: the users */
    int Entries;        /**< users that match the filter, on all pages. @readonly */
    int TotalEntries;   /**< users of the kind asked for, whatever the filter. @readonly */
};

/** Filter, order and page of an account listing. */
struct qbobj_AccountQuery {
    int limit;  /**< page size; 0 is no limit */
    int offset; /**< rows to skip; only with a limit */
    /** LIKE pattern of the name, or of a user's full name or e-mail. @range 0 to 256 bytes */
    const char *name_like;
    /** Users only; null lists all. The two words about snapshots may be joined: either of them selects.
     *  @words "TM_ON", "HF_EXISTS", "||HF_SNAPSHOT_PROTECTION==0", "||HF_SNAPSHOT_PROTECTION==1",
     *  "||HF_SNAPSHOT_ACCESS==0", "||HF_SNAPSHOT_ACCESS==1" */
    const char *opt;
    int order; /**< 1 by name, 2 by id, the negatives descending; any other by name. @words 1, 2, -1, -2 */
    int ads;   /**< 0: local accounts; any other: those of the directory service. @words 0, 1 */
};

/* ---- Operations: users read ---------------------------------------------------------------------------- */

/**
 * Lists users of one kind, local or directory ones, with quotas, home settings and Time Machine area.
 *
 * System accounts, 'nobody', guests and remote users (primary group 98) are never listed. Not read:
 * `OldUserName`, `HomeVolumeId`, `OldHomeDirectory` and the hashes; `HomeDirectory` and `GroupName` are null
 * when the account has none. `Entries` counts regardless of the page and of "HF_EXISTS". The platform
 * refreshes the usage of homes first.
 *
 * @param[in,out] collection    the users are appended to its list, the counts are set
 * @param[in]     query         filter, order and page; null lists all of the kind that the appliance uses, by
 *                              name
 * @param[in]     encrypt_flag  0 masks passwords ("" where there is none), else they are returned as stored
 * @reads  service_cifs, $user, $group, user_quota, _user_quota_stat, share, $home_folder, _hf_zfs_stat,
 *         account_default, $timemachine_quota
 * @writes _hf_zfs_stat
 * @error QBOBJ_ERROR_API_ARGS  no collection, or a pattern of more than 256 bytes
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUserCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *collection,
                                      qbobj_AccountQuery_t *query, int encrypt_flag, qbobj_error_rec_t *err);

/**
 * Reads users as qbobj_getUserCollection() does, remote ones too.
 *
 * The password is always masked, the full name is not read, and the usage of the home is not refreshed.
 *
 * @param[in,out] user  list; each keyed by `resource_id`, else `UserId`, else, in directory mode without
 *                      mirrored accounts, by `UserName`; filled
 * @reads service_cifs, $user, $group, user_quota, _user_quota_stat, share, $home_folder, _hf_zfs_stat,
 *        account_default, $timemachine_quota
 * @error QBOBJ_ERROR_API_ARGS           no record, or no key
 * @error QBOBJ_ERROR_UI__NO_LDAP_OBJECT the directory does not know the name
 * @error QBOBJ_ERROR_DB_MISC            a statement failed, or a negative key in local mode
 * @error QBOBJ_ERROR_DB_NOTEXISTS       no such user
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Names users of any kind by their ids.
 *
 * An unknown id is named by its digits, in directory mode by the directory, which may know no name: null.
 *
 * @param[in,out] user  list keyed by `resource_id`, which is negative only in directory mode; `UserId` and
 *                      `UserName` are filled
 * @reads service_cifs, $user
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or a negative key in local mode
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSystemUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t *user,
                                  qbobj_error_rec_t *err);

/**
 * Lists the remote users: those whose primary group is 98.
 *
 * @param[out] user  receives the list, by name
 * @reads $user
 * @error QBOBJ_ERROR_API_ARGS  no `user`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getCloudUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t **user,
                                 qbobj_error_rec_t *err);

/**
 * Lists the members of a group.
 *
 * @param[in]  gname        name of the group; an unknown one has no members
 * @param[in]  primaryOnly  non-zero: only users whose primary group it is. Otherwise a user comes once for
 *                          each membership row that matches
 * @param[out] user         receives the list, by name
 * @reads $user, $group, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS  no `user`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUserInGroupName(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int primaryOnly,
                                       qbobj_SystemUser_t **user, qbobj_error_rec_t *err);

/* ---- Operations: identity. They fill no error record when they find nothing. --------------------------- */

/**
 * Finds the id of a user.
 *
 * In directory mode that is a directory user or a privileged local one, else a local user.
 *
 * @param[in]  uname  the name; null is the guest
 * @param[out] uid    required; set only with a result of 0
 * @reads service_cifs, $user
 * @error QBOBJ_ERROR_API_ARGS  no `uid`
 * @error QBOBJ_ERROR_DB_MISC   in the record alone: the directory mode cannot be read, which counts as local
 *                              mode
 * @return 0; -1 unknown or failed; or the error code
 */
QBOBJ_API int qbobj_getUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid,
                           qbobj_error_rec_t *err);

/**
 * Finds the name of the user of an id.
 *
 * An unknown id is named by its digits, a negative one "guest".
 *
 * @param[in]  uid    the id
 * @param[out] uname  required: a null one ends the process with a failed assertion; "guest" after a failure
 * @reads $user
 * @error none
 * @return 0; -1 failed
 */
QBOBJ_API int qbobj_getUserName(qbdb_handle_t *qbdb, sqlite3 *db, int uid, char **uname,
                                qbobj_error_rec_t *err);

/**
 * Finds the system's uid of a user.
 *
 * In directory mode a name that is not in the database is asked of the directory.
 *
 * @param[in] uname  the name; null is the guest
 * @reads service_cifs, $user
 * @error QBOBJ_ERROR_DB_MISC  in the record alone: the directory mode cannot be read, which counts as local
 *                             mode
 * @return the uid, or -1
 */
QBOBJ_API int qbobj_getPosixUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, qbobj_error_rec_t *err);

/**
 * Finds the system's uid of a user's id: the id itself unless it is negative, a directory user's.
 *
 * @param[in] uid  the id
 * @reads nothing
 * @error none
 * @return the uid, or -1
 */
QBOBJ_API int qbobj_getPosixUIDbyUID(qbdb_handle_t *qbdb, sqlite3 *db, int uid, qbobj_error_rec_t *err);

/**
 * Finds the system's uid and primary gid of a user.
 *
 * @param[in]  uname  the name; null is the guest
 * @param[out] uid    required; set only with a result of 0
 * @param[out] gid    required; set only with a result of 0
 * @reads service_cifs, $user, $group
 * @error QBOBJ_ERROR_API_ARGS  no `uid` or no `gid`
 * @error QBOBJ_ERROR_DB_MISC   in the record alone: the directory mode cannot be read, which counts as local
 *                              mode
 * @return 0; -1 when either is unknown; or the error code
 */
QBOBJ_API int qbobj_getPosixUIDGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, int *gid,
                                   qbobj_error_rec_t *err);

/* ---- Operations: users written ------------------------------------------------------------------------- */

/**
 * Creates local users, with their quotas, home settings and Time Machine areas.
 *
 * `SysHash` goes before `Password`; the mask is no password, there is none to keep. Without `GroupName` a
 * user gets the group of the nearest user before in the chain who names one, else group 99. Without
 * `HomeVolumeId` the home is "/home/" and the name; an id that is no volume's, "" included, is an error.
 * Without `HomeFolderSettings` those of the account defaults apply; a `TimeMachineQuota` that is not enabled
 * is passed over. The soft limit of a quota is stored as `HardMB` times the default percentage, not divided
 * by 100. The home directory itself is the caller's to make.
 *
 * Names compare without regard to case. A deleted user holds name and id until the platform removes it; a
 * quota's share listed twice is refused as a failed statement.
 *
 * @param[in,out] user  chain of users; `UserId`, `resource_id` and `HomeDirectory` are filled. Null is
 *                      nothing to do
 * @reads  service_cifs, $user, $group, _volume, share, account_default
 * @writes account_default, $user, user_quota, $home_folder, $timemachine_quota
 * @error QBOBJ_ERROR_API_ARGS                   a missing or invalid value, e.g. an unknown group, or the
 *                                               mask as password
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG          the name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__USERNAME_RESERVED      the appliance uses the name itself
 * @error QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME  a remote user has the name
 * @error QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS  another user has the name
 * @error QBOBJ_ERROR_UI__UID_ALREADY_EXISTS     the id is taken
 * @error QBOBJ_ERROR_DB_MISC                    a statement failed, no id is free, or a quota's share is
 *                                               unknown
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Inserts users in bulk, as qbobj_checkUserList() prepares them.
 *
 * Of the values only the group's name is checked. Each id is one above the highest local one, the home is
 * "/home", and `last_changed` is not in days. No quotas, home settings or Time Machine areas are made. A name
 * that is taken is refused as a failed statement.
 *
 * @param[in,out] user  chain of users: `UserName`, `Password` as it is to be stored, `Email`, `GroupName` (as
 *                      in qbobj_addUser()); `UserId`, `resource_id` and `HomeDirectory` are filled
 * @reads  service_cifs, $group, $user
 * @writes $user
 * @error QBOBJ_ERROR_API_ARGS  the group does not exist
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or a name is taken
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Reads and checks the import file, "/tmp/user_list.txt" below the handle's root.
 *
 * A line has four fields separated by TAB: user name, group name, e-mail address, password; the last two may
 * be empty. A line "export_list" says that the passwords below it are hashes, "import_list" that they are
 * plain, as at the file's start. Empty lines, a byte order mark and the header "User_Name", "Group_Name",
 * "Email_Address", "Password" are passed over. Lines end with LF or CR LF; one of more than 1023 bytes is
 * read as several. Names compare to the letter. The file must be a plain one, not a link, that belongs to
 * root or the caller.
 *
 * After a failure the collections are as they were; `Entries` and `TotalEntries` are left alone.
 *
 * @param[in,out] user_collection       the users are appended here, with their passwords as they are to be
 *                                      stored
 * @param[in,out] group_collection      the groups that do not exist yet are appended here, each once, by
 *                                      `GroupName` alone
 * @param[in]     user_collection_bak   the users that exist, filled by the caller
 * @param[in]     group_collection_bak  the groups that exist, filled by the caller
 * @reads nothing
 * @error QBOBJ_ERROR_API_ARGS                     a collection is null, or a line's value is not valid, the
 *                                                 mask included
 * @error QBOBJ_ERROR_UNKNOWN                      there is no such file, or it has a line of another form
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG            a user's or group's name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__USERNAME_RESERVED        the appliance uses the name itself
 * @error QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS  the user exists, or stands in the list twice
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_checkUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *user_collection,
                                  qbobj_GroupCollection_t *group_collection,
                                  qbobj_UserCollection_t *user_collection_bak,
                                  qbobj_GroupCollection_t *group_collection_bak, qbobj_error_rec_t *err);

/**
 * Changes users.
 *
 * A `UserName` renames, also when only capitals differ, and sets a local user's home to "/home/" and the
 * name, even when the name stays. `SysHash` goes before `Password`; both null, or the mask, keep the
 * password. `Email` and `IsLocked` are always written: a null `Email` clears the address. A quota with
 * `HardMB` 0 is removed; the soft limit of another is `HardMB` times the default percentage divided by 100.
 * Of `HomeFolderSettings` a `VisibleSnapshot` of 0 hides the snapshots and any other value keeps their
 * folder. `TimeMachineQuota` with `Delete` 1 removes the area while the service is on, which goes on with its
 * first user and off with its last. Moving the home is the caller's work.
 *
 * @param[in,out] user  chain of users keyed by `resource_id`, else by `UserId`, else, where directory
 *                      accounts are not mirrored, by `UserName`. `OldUserName` and `OldHomeDirectory` are
 *                      filled (null unless the name changed), and `HomeDirectory` when a name was given. Null
 *                      is nothing to do
 * @reads  service_cifs, $user, $group, share, account_default, $home_folder, $timemachine_quota, service_afp
 * @writes $user, user_quota, $home_folder, $timemachine_quota, service_afp, $home_folder_snapshot
 * @error QBOBJ_ERROR_API_ARGS                     no such user, a value that is not valid, or values too long
 *                                                 together (512 bytes)
 * @error QBOBJ_ERROR_UI__NO_LDAP_OBJECT           the directory does not know the name
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG            the name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__USERNAME_RESERVED        the appliance uses the name itself
 * @error QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS  another user has the name
 * @error QBOBJ_ERROR_DB_MISC                      a statement failed, or a quota's share is unknown
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Sets the primary group of a user, both found by name among the accounts in use (local or directory).
 *
 * @param[in] UserName   the user; an unknown one is no error
 * @param[in] GroupName  the group; an unknown one leaves the user without a primary group
 * @reads  service_cifs, $group
 * @writes $user
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setPrimaryGroupByName(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName,
                                          const char *GroupName, qbobj_error_rec_t *err);

/**
 * Locks or unlocks the passwords of local users.
 *
 * Users of the cloud group, system accounts and users without a hash are passed over.
 *
 * @param[in] Enable    0 locks, any other value unlocks
 * @param[in] UserName  the user; null: all
 * @writes $user
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_disableEnableLocalUserByName(qbdb_handle_t *qbdb, sqlite3 *db, int Enable,
                                                 const char *UserName, qbobj_error_rec_t *err);

/**
 * Sets the folder in which a user's snapshots are shown.
 *
 * @param[in] UserId             id of the user; an unknown one is no error
 * @param[in] VisibleSnapFolder  the folder; null or "" hides the snapshots
 * @writes $home_folder
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyUserVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, int UserId,
                                                const char *VisibleSnapFolder, qbobj_error_rec_t *err);

/**
 * Deletes users: clears every row that refers to them and marks their own, which the platform removes later.
 *
 * With the last Time Machine user that service goes off. When this update fails the call still succeeds, with
 * the failure in the error record and the user not marked.
 *
 * @param[in,out] user  chain of users keyed by `resource_id`, else by `UserId`; `UserName`, `HomeDirectory`
 *                      and `OldHomeDirectory` are filled. Null is nothing to do
 * @reads  $user, $timemachine_quota
 * @writes user_quota, user_acl, _user_quota_stat, $home_folder, $timemachine_quota, service_afp,
 *         $group_has_user, $home_folder_snapshot, $user
 * @error QBOBJ_ERROR_API_ARGS      no user has the id
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was marked
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);

/**
 * Deletes users as qbobj_deleteUser() does, by name.
 *
 * @param[in,out] user  chain of users keyed by `UserName`; filled as by qbobj_deleteUser(). Null is nothing
 *                      to do
 * @reads  service_cifs, $user, $timemachine_quota
 * @writes user_quota, user_acl, _user_quota_stat, $home_folder, $timemachine_quota, service_afp,
 *         $group_has_user, $home_folder_snapshot, $user
 * @error QBOBJ_ERROR_API_ARGS      no user has the name
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was marked
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteUserByName(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user,
                                     qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
