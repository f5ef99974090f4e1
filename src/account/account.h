// Workers and helpers of the account operations.
#pragma once

#include "core/call.h"

#include <qbobj/account.h>

namespace qbobj
{

/* ---- Directory security -------------------------------------------------------------------------------- */

int x_qbobj_getSecurity(Call &call, qbobj_Security_t *o);
int x_qbobj_setSecurity(Call &call, qbobj_Security_t *o);
int x_qbobj_getSecurityAdsProgress(Call &call, qbobj_SecurityAdsProgress_t *o);

/* ---- Users read ---------------------------------------------------------------------------------------- */

int x_qbobj_getUserCollection(Call &call, qbobj_UserCollection_t *collection, qbobj_AccountQuery_t *query,
                              int encrypt_flag);
int x_qbobj_getUser(Call &call, qbobj_User_t *user);
int x_qbobj_getSystemUser(Call &call, qbobj_SystemUser_t *user);
int x_qbobj_getCloudUser(Call &call, qbobj_SystemUser_t **user);
int x_qbobj_getUserInGroupName(Call &call, const char *gname, int primaryOnly, qbobj_SystemUser_t **user);

// The details of a user whose `UserId` is set; each replaces what the record holds.
int qbobj_api2_getUserQuota(Call &call, qbobj_User_t *user);
int qbobj_api2_getUserHomeFolderSettings(Call &call, qbobj_User_t *user);
int qbobj_api2_getUserTimeMachineQuota(Call &call, qbobj_User_t *user);

// Identity look-ups: 0 or the identifier, -1 when unknown or failed; they fill no error record.
int x_qbobj_getUID(Call &call, const char *uname, int *uid);
int x_qbobj_getGID(Call &call, const char *gname, int *gid);
int x_qbobj_getUserName(Call &call, int uid, char **uname);
int x_qbobj_getGroupName(Call &call, int gid, char **gname);
int x_qbobj_getPrimaryGID(Call &call, const char *uname, int *gid);
int x_qbobj_getPosixUID(Call &call, const char *uname);
int x_qbobj_getPosixUIDbyUID(Call &call, int uid);
int x_qbobj_getPosixGID(Call &call, const char *gname);
int x_qbobj_getPosixGIDbyGID(Call &call, int gid);
int x_qbobj_getPosixUIDGID(Call &call, const char *uname, int *uid, int *gid);
int x_qbobj_isMemberOfGroup(Call &call, const char *uname, const char *gname);

/* ---- Users written ------------------------------------------------------------------------------------- */

int x_qbobj_addUser(Call &call, qbobj_User_t *user);
int x_qbobj_addUserList(Call &call, qbobj_User_t *user);
int x_qbobj_checkUserList(Call &call, qbobj_UserCollection_t *user_collection,
                          qbobj_GroupCollection_t *group_collection,
                          qbobj_UserCollection_t *user_collection_bak,
                          qbobj_GroupCollection_t *group_collection_bak);
int x_qbobj_modifyUser(Call &call, qbobj_User_t *user);
int x_qbobj_setPrimaryGroupByName(Call &call, const char *UserName, const char *GroupName);
int x_qbobj_disableEnableLocalUserByName(Call &call, int Enable, const char *UserName);
int x_qbobj_modifyUserVisibleSnapFolder(Call &call, int UserId, const char *VisibleSnapFolder);
int x_qbobj_deleteUser(Call &call, qbobj_User_t *user);
int x_qbobj_deleteUserByName(Call &call, qbobj_User_t *user);

/* ---- Groups -------------------------------------------------------------------------------------------- */

int x_qbobj_getGroupCollection(Call &call, qbobj_GroupCollection_t *collection, qbobj_AccountQuery_t *query);
int x_qbobj_getGroup(Call &call, qbobj_Group_t *group);
int x_qbobj_getSystemGroup(Call &call, qbobj_SystemGroup_t *group);
int x_qbobj_addGroup(Call &call, qbobj_Group_t *group);
int x_qbobj_deleteGroup(Call &call, qbobj_Group_t *group);
int x_qbobj_modifyGroup(Call &call, qbobj_Group_t *group);

/* ---- Passwords and defaults ---------------------------------------------------------------------------- */

int x_qbobj_getAdminPassword(Call &call, qbobj_AdminPassword_t *passwd);
int x_qbobj_setAdminPassword(Call &call, qbobj_AdminPassword_t *passwd);
int x_qbobj_setUserPassword(Call &call, qbobj_UserPassword_t *passwd);
int x_qbobj_setMyPassword(Call &call, qbobj_MyPassword_t *passwd);
int x_qbobj_getAccountDefault(Call &call, qbobj_AccountDefault_t *account_default);
int x_qbobj_setAccountDefault(Call &call, qbobj_AccountDefault_t *account_default);

/* ---- What the workers share ---------------------------------------------------------------------------- */

// Fills `UserId` and `UserName` of the record keyed by `resource_id`, as x_qbobj_getSystemUser() does for each record of
// its list.
int read_system_user(Call &call, qbobj_SystemUser_t &user);
// The same for a group.
int read_system_group(Call &call, qbobj_SystemGroup_t &group);

} // namespace qbobj
