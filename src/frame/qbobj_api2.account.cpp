// Accounts: every exported operation with its arguments and its worker.
#include "account/account.h"
#include "frame/frame.h"
#include "operations/account.h"

using namespace qbobj;

/* ---- Directory security -------------------------------------------------------------------------------- */

int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_getSecurity>(account_operations, {qbdb, db, err, here()}, x_qbobj_getSecurity, o);
}

int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_setSecurity>(account_operations, {qbdb, db, err, here()}, x_qbobj_setSecurity, o);
}

int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_getSecurityAdsProgress>(account_operations, {qbdb, db, err, here()},
                                                x_qbobj_getSecurityAdsProgress, o);
}

/* ---- Users read ---------------------------------------------------------------------------------------- */

int qbobj_getUserCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *collection,
                            qbobj_AccountQuery_t *query, int encrypt_flag, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUserCollection>(account_operations, {qbdb, db, err, here()},
                                           x_qbobj_getUserCollection, collection, query, encrypt_flag);
}

int qbobj_getUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_getUser, user);
}

int qbobj_getSystemUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_getSystemUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_getSystemUser,
                                       user);
}

int qbobj_getCloudUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t **user, qbobj_error_rec_t *err)
{
    return framed<qbobj_getCloudUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_getCloudUser,
                                      user);
}

int qbobj_getUserInGroupName(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int primaryOnly,
                             qbobj_SystemUser_t **user, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUserInGroupName>(account_operations, {qbdb, db, err, here()},
                                            x_qbobj_getUserInGroupName, gname, primaryOnly, user);
}

int qbobj_getUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getUID, uname, uid);
}

int qbobj_getUserName(qbdb_handle_t *qbdb, sqlite3 *db, int uid, char **uname, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUserName>(account_operations, {qbdb, db, err, here()}, x_qbobj_getUserName, uid,
                                     uname);
}

int qbobj_getPosixUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPosixUID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getPosixUID, uname);
}

int qbobj_getPosixUIDbyUID(qbdb_handle_t *qbdb, sqlite3 *db, int uid, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPosixUIDbyUID>(account_operations, {qbdb, db, err, here()},
                                          x_qbobj_getPosixUIDbyUID, uid);
}

int qbobj_getPosixUIDGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, int *gid,
                         qbobj_error_rec_t *err)
{
    return framed<qbobj_getPosixUIDGID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getPosixUIDGID,
                                        uname, uid, gid);
}

/* ---- Groups -------------------------------------------------------------------------------------------- */

int qbobj_getGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_GroupCollection_t *collection,
                             qbobj_AccountQuery_t *query, qbobj_error_rec_t *err)
{
    return framed<qbobj_getGroupCollection>(account_operations, {qbdb, db, err, here()},
                                            x_qbobj_getGroupCollection, collection, query);
}

int qbobj_getGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed<qbobj_getGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_getGroup, group);
}

int qbobj_getSystemGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemGroup_t *group, qbobj_error_rec_t *err)
{
    return framed<qbobj_getSystemGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_getSystemGroup,
                                        group);
}

int qbobj_getGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int *gid, qbobj_error_rec_t *err)
{
    return framed<qbobj_getGID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getGID, gname, gid);
}

int qbobj_getGroupName(qbdb_handle_t *qbdb, sqlite3 *db, int gid, char **gname, qbobj_error_rec_t *err)
{
    return framed<qbobj_getGroupName>(account_operations, {qbdb, db, err, here()}, x_qbobj_getGroupName, gid,
                                      gname);
}

int qbobj_getPrimaryGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *gid, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPrimaryGID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getPrimaryGID,
                                       uname, gid);
}

int qbobj_getPosixGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPosixGID>(account_operations, {qbdb, db, err, here()}, x_qbobj_getPosixGID, gname);
}

int qbobj_getPosixGIDbyGID(qbdb_handle_t *qbdb, sqlite3 *db, int gid, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPosixGIDbyGID>(account_operations, {qbdb, db, err, here()},
                                          x_qbobj_getPosixGIDbyGID, gid);
}

int qbobj_isMemberOfGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, const char *gname,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_isMemberOfGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_isMemberOfGroup,
                                         uname, gname);
}

int qbobj_addGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed<qbobj_addGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_addGroup, group);
}

int qbobj_deleteGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_deleteGroup, group);
}

int qbobj_modifyGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyGroup>(account_operations, {qbdb, db, err, here()}, x_qbobj_modifyGroup, group);
}

/* ---- Users written ------------------------------------------------------------------------------------- */

int qbobj_addUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_addUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_addUser, user);
}

int qbobj_addUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_addUserList>(account_operations, {qbdb, db, err, here()}, x_qbobj_addUserList, user);
}

int qbobj_checkUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *user_collection,
                        qbobj_GroupCollection_t *group_collection,
                        qbobj_UserCollection_t *user_collection_bak,
                        qbobj_GroupCollection_t *group_collection_bak, qbobj_error_rec_t *err)
{
    return framed<qbobj_checkUserList>(account_operations, {qbdb, db, err, here()}, x_qbobj_checkUserList,
                                       user_collection, group_collection, user_collection_bak,
                                       group_collection_bak);
}

int qbobj_modifyUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_modifyUser, user);
}

int qbobj_setPrimaryGroupByName(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName, const char *GroupName,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_setPrimaryGroupByName>(account_operations, {qbdb, db, err, here()},
                                               x_qbobj_setPrimaryGroupByName, UserName, GroupName);
}

int qbobj_disableEnableLocalUserByName(qbdb_handle_t *qbdb, sqlite3 *db, int Enable, const char *UserName,
                                       qbobj_error_rec_t *err)
{
    return framed<qbobj_disableEnableLocalUserByName>(account_operations, {qbdb, db, err, here()},
                                                      x_qbobj_disableEnableLocalUserByName, Enable, UserName);
}

int qbobj_modifyUserVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, int UserId,
                                      const char *VisibleSnapFolder, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyUserVisibleSnapFolder>(account_operations, {qbdb, db, err, here()},
                                                     x_qbobj_modifyUserVisibleSnapFolder, UserId,
                                                     VisibleSnapFolder);
}

int qbobj_deleteUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteUser>(account_operations, {qbdb, db, err, here()}, x_qbobj_deleteUser, user);
}

int qbobj_deleteUserByName(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteUserByName>(account_operations, {qbdb, db, err, here()},
                                          x_qbobj_deleteUserByName, user);
}

/* ---- Passwords and defaults ---------------------------------------------------------------------------- */

int qbobj_getAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                           qbobj_error_rec_t *err)
{
    return framed<qbobj_getAdminPassword>(account_operations, {qbdb, db, err, here()},
                                          x_qbobj_getAdminPassword, passwd);
}

int qbobj_setAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                           qbobj_error_rec_t *err)
{
    return framed<qbobj_setAdminPassword>(account_operations, {qbdb, db, err, here()},
                                          x_qbobj_setAdminPassword, passwd);
}

int qbobj_setUserPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserPassword_t *passwd,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_setUserPassword>(account_operations, {qbdb, db, err, here()}, x_qbobj_setUserPassword,
                                         passwd);
}

int qbobj_setMyPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_MyPassword_t *passwd, qbobj_error_rec_t *err)
{
    return framed<qbobj_setMyPassword>(account_operations, {qbdb, db, err, here()}, x_qbobj_setMyPassword,
                                       passwd);
}

int qbobj_getAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AccountDefault_t *account_default,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_getAccountDefault>(account_operations, {qbdb, db, err, here()},
                                           x_qbobj_getAccountDefault, account_default);
}

int qbobj_setAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AccountDefault_t *account_default,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_setAccountDefault>(account_operations, {qbdb, db, err, here()},
                                           x_qbobj_setAccountDefault, account_default);
}
