// Workers and helpers of the account operations.
#pragma once

#include <qbobj/account.h>
#include <qbobj/env.h>

/* ---- Directory security -------------------------------------------------------------------------------- */

int x_qbobj_getSecurity(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Security_t *o);
int x_qbobj_setSecurity(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Security_t *o);
int x_qbobj_getSecurityAdsProgress(qbobj_env_t *qbobj, sqlite3 *db, qbobj_SecurityAdsProgress_t *o);

// Sets `is_ads_mode` to 1 when accounts come from a directory service, else to 0. Returns an error code,
// which callers ignore: a failure counts as local mode.
qbobj_error_t qbobj_api2_isAdsMode(qbobj_env_t *qbobj, sqlite3 *db, int32_t *is_ads_mode);

/* ---- Users read ---------------------------------------------------------------------------------------- */

int x_qbobj_getUserCollection(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UserCollection_t *collection,
                              qbobj_AccountQuery_t *query, int encrypt_flag);
int x_qbobj_getUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
int x_qbobj_getSystemUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_SystemUser_t *user);
int x_qbobj_getCloudUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_SystemUser_t **user);
int x_qbobj_getUserInGroupName(qbobj_env_t *qbobj, sqlite3 *db, const char *gname, int primaryOnly,
                               qbobj_SystemUser_t **user);

// The details of a user whose `UserId` is set; each replaces what the record holds.
qbobj_error_t qbobj_api2_getUserQuota(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
qbobj_error_t qbobj_api2_getUserHomeFolderSettings(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
qbobj_error_t qbobj_api2_getUserTimeMachineQuota(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);

// Identity look-ups: 0 or the identifier, -1 when unknown or failed; they fill no error record.
int x_qbobj_getUID(qbobj_env_t *qbobj, sqlite3 *db, const char *uname, int *uid);
int x_qbobj_getGID(qbobj_env_t *qbobj, sqlite3 *db, const char *gname, int *gid);
int x_qbobj_getUserName(qbobj_env_t *qbobj, sqlite3 *db, int uid, char **uname);
int x_qbobj_getGroupName(qbobj_env_t *qbobj, sqlite3 *db, int gid, char **gname);
int x_qbobj_getPrimaryGID(qbobj_env_t *qbobj, sqlite3 *db, const char *uname, int *gid);
int x_qbobj_getPosixUID(qbobj_env_t *qbobj, sqlite3 *db, const char *uname);
int x_qbobj_getPosixUIDbyUID(qbobj_env_t *qbobj, sqlite3 *db, int uid);
int x_qbobj_getPosixGID(qbobj_env_t *qbobj, sqlite3 *db, const char *gname);
int x_qbobj_getPosixGIDbyGID(qbobj_env_t *qbobj, sqlite3 *db, int gid);
int x_qbobj_getPosixUIDGID(qbobj_env_t *qbobj, sqlite3 *db, const char *uname, int *uid, int *gid);
int x_qbobj_isMemberOfGroup(qbobj_env_t *qbobj, sqlite3 *db, const char *uname, const char *gname);

/* ---- Users written ------------------------------------------------------------------------------------- */

int x_qbobj_addUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
int x_qbobj_addUserList(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
int x_qbobj_checkUserList(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UserCollection_t *user_collection,
                          qbobj_GroupCollection_t *group_collection,
                          qbobj_UserCollection_t *user_collection_bak,
                          qbobj_GroupCollection_t *group_collection_bak);
int x_qbobj_modifyUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
int x_qbobj_setPrimaryGroupByName(qbobj_env_t *qbobj, sqlite3 *db, const char *UserName,
                                  const char *GroupName);
int x_qbobj_disableEnableLocalUserByName(qbobj_env_t *qbobj, sqlite3 *db, int Enable, const char *UserName);
int x_qbobj_modifyUserVisibleSnapFolder(qbobj_env_t *qbobj, sqlite3 *db, int UserId,
                                        const char *VisibleSnapFolder);
int x_qbobj_deleteUser(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);
int x_qbobj_deleteUserByName(qbobj_env_t *qbobj, sqlite3 *db, qbobj_User_t *user);

/* ---- Groups -------------------------------------------------------------------------------------------- */

int x_qbobj_getGroupCollection(qbobj_env_t *qbobj, sqlite3 *db, qbobj_GroupCollection_t *collection,
                               qbobj_AccountQuery_t *query);
int x_qbobj_getGroup(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);
int x_qbobj_getSystemGroup(qbobj_env_t *qbobj, sqlite3 *db, qbobj_SystemGroup_t *group);
int x_qbobj_addGroup(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);
int x_qbobj_deleteGroup(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);
int x_qbobj_modifyGroup(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);

// The details of a group whose `GroupId` is set; each replaces what the record holds.
qbobj_error_t _getGroupQuota(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);
qbobj_error_t _getSecondaryMember(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Group_t *group);

/* ---- Passwords and defaults ---------------------------------------------------------------------------- */

int x_qbobj_getAdminPassword(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AdminPassword_t *passwd);
int x_qbobj_setAdminPassword(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AdminPassword_t *passwd);
int x_qbobj_setUserPassword(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UserPassword_t *passwd);
int x_qbobj_setMyPassword(qbobj_env_t *qbobj, sqlite3 *db, qbobj_MyPassword_t *passwd);
int x_qbobj_getAccountDefault(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AccountDefault_t *account_default);
int x_qbobj_setAccountDefault(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AccountDefault_t *account_default);

/* ---- What the workers share ---------------------------------------------------------------------------- */

namespace qbobj
{

// Where accounts come from. It cannot change during a call, so a worker asks once and passes the answer on.
struct Directory {
    bool ads = false;     // directory mode
    bool no_sync = false; // directory accounts are not mirrored into the local tables

    // For the statements' "rid IS %sNULL".
    const char *rid_not() const { return ads ? "NOT " : ""; }
};

// The first half of that question alone.
inline bool ads_mode(qbobj_env_t *env, sqlite3 *db)
{
    int32_t ads = 0;
    qbobj_api2_isAdsMode(env, db, &ads);
    return ads != 0;
}

// Asks for both; `no_sync` is only asked for in directory mode, where alone it matters.
Directory directory_of(qbobj_env_t *env, sqlite3 *db);

// Fills `UserId` and `UserName` of the record keyed by `resource_id`, as x_qbobj_getSystemUser() does for
// each record of its list.
int read_system_user(qbobj_env_t *env, sqlite3 *db, const Directory &directory, qbobj_SystemUser_t &user);
// The same for a group.
int read_system_group(qbobj_env_t *env, sqlite3 *db, const Directory &directory, qbobj_SystemGroup_t &group);

} // namespace qbobj
