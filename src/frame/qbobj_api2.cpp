// The index of the library: every exported operation with its arguments, the records it dumps and its worker.
#include "account/account.h"
#include "frame/frame.h"
#include "share/share.h"

#include <qbobj.h>

using namespace qbobj;

/* ---- Directory security -------------------------------------------------------------------------------- */

int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSecurity, dumped(o));
}

int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setSecurity, dumped(o));
}

int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                 qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSecurityAdsProgress, dumped(o));
}

/* ---- Users read ---------------------------------------------------------------------------------------- */

int qbobj_getUserCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *collection,
                            qbobj_AccountQuery_t *query, int encrypt_flag, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUserCollection, dumped(collection),
                  dumped(query), encrypt_flag);
}

int qbobj_getUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUser, dumped(user));
}

int qbobj_getSystemUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSystemUser, dumped(user));
}

int qbobj_getCloudUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemUser_t **user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getCloudUser, dumped(user));
}

int qbobj_getUserInGroupName(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int primaryOnly,
                             qbobj_SystemUser_t **user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUserInGroupName, gname, primaryOnly,
                  dumped(user));
}

int qbobj_getUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUID, uname, uid);
}

int qbobj_getUserName(qbdb_handle_t *qbdb, sqlite3 *db, int uid, char **uname, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUserName, uid, uname);
}

int qbobj_getPosixUID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, qbobj_error_rec_t *err)
{
    return framed_lookup({__func__, qbdb, db, err, here()}, x_qbobj_getPosixUID, uname);
}

int qbobj_getPosixUIDbyUID(qbdb_handle_t *qbdb, sqlite3 *db, int uid, qbobj_error_rec_t *err)
{
    return framed_lookup({__func__, qbdb, db, err, here()}, x_qbobj_getPosixUIDbyUID, uid);
}

int qbobj_getPosixUIDGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *uid, int *gid,
                         qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getPosixUIDGID, uname, uid, gid);
}

/* ---- Groups -------------------------------------------------------------------------------------------- */

int qbobj_getGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_GroupCollection_t *collection,
                             qbobj_AccountQuery_t *query, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getGroupCollection, dumped(collection),
                  dumped(query));
}

int qbobj_getGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getGroup, dumped(group));
}

int qbobj_getSystemGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemGroup_t *group, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSystemGroup, dumped(group));
}

int qbobj_getGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int *gid, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getGID, gname, gid);
}

int qbobj_getGroupName(qbdb_handle_t *qbdb, sqlite3 *db, int gid, char **gname, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getGroupName, gid, gname);
}

int qbobj_getPrimaryGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *gid, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getPrimaryGID, uname, gid);
}

int qbobj_getPosixGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, qbobj_error_rec_t *err)
{
    return framed_lookup({__func__, qbdb, db, err, here()}, x_qbobj_getPosixGID, gname);
}

int qbobj_getPosixGIDbyGID(qbdb_handle_t *qbdb, sqlite3 *db, int gid, qbobj_error_rec_t *err)
{
    return framed_lookup({__func__, qbdb, db, err, here()}, x_qbobj_getPosixGIDbyGID, gid);
}

int qbobj_isMemberOfGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, const char *gname,
                          qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_isMemberOfGroup, uname, gname);
}

int qbobj_addGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addGroup, dumped(group));
}

int qbobj_deleteGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteGroup, dumped(group));
}

int qbobj_modifyGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyGroup, dumped(group));
}

/* ---- Users written ------------------------------------------------------------------------------------- */

int qbobj_addUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addUser, dumped(user));
}

int qbobj_addUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addUserList, dumped(user));
}

int qbobj_checkUserList(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserCollection_t *user_collection,
                        qbobj_GroupCollection_t *group_collection,
                        qbobj_UserCollection_t *user_collection_bak,
                        qbobj_GroupCollection_t *group_collection_bak, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_checkUserList, dumped(user_collection),
                  dumped(group_collection), dumped(user_collection_bak), dumped(group_collection_bak));
}

int qbobj_modifyUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyUser, dumped(user));
}

int qbobj_setPrimaryGroupByName(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName, const char *GroupName,
                                qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setPrimaryGroupByName, UserName, GroupName);
}

int qbobj_disableEnableLocalUserByName(qbdb_handle_t *qbdb, sqlite3 *db, int Enable, const char *UserName,
                                       qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_disableEnableLocalUserByName, Enable, UserName);
}

int qbobj_modifyUserVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, int UserId,
                                      const char *VisibleSnapFolder, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyUserVisibleSnapFolder, UserId,
                  VisibleSnapFolder);
}

int qbobj_deleteUser(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteUser, dumped(user));
}

int qbobj_deleteUserByName(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteUserByName, dumped(user));
}

/* ---- Passwords and defaults ---------------------------------------------------------------------------- */

int qbobj_getAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                           qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getAdminPassword, dumped(passwd));
}

int qbobj_setAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                           qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setAdminPassword, dumped(passwd));
}

int qbobj_setUserPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserPassword_t *passwd,
                          qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setUserPassword, dumped(passwd));
}

int qbobj_setMyPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_MyPassword_t *passwd, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setMyPassword, dumped(passwd));
}

int qbobj_getAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AccountDefault_t *account_default,
                            qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getAccountDefault, dumped(account_default));
}

int qbobj_setAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AccountDefault_t *account_default,
                            qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setAccountDefault, dumped(account_default));
}

/* ---- Shares read --------------------------------------------------------------------------------------- */

int qbobj_getShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                             qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShareCollection, dumped(collection));
}

int qbobj_getSimpleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                   qbobj_SimpleShareCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSimpleShareCollection, dumped(collection));
}

int qbobj_getShareAndZvolCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                    qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShareAndZvolCollection, dumped(collection));
}

int qbobj_getAccessibleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                       const char *UserName, const char *ProtocolName, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getAccessibleShareCollection, dumped(collection),
                  UserName, ProtocolName);
}

int qbobj_getShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShare, dumped(share));
}

int qbobj_queryShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId, const char *ShareNameLike,
                     const char *ShareId, qbobj_Share_t **shares, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_queryShare, VolumeId, ShareNameLike, ShareId,
                  dumped(shares));
}

int qbobj_getShareId(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name, qbobj_error_rec_t *err)
{
    return framed_lookup({__func__, qbdb, db, err, here()}, x_qbobj_getShareId, share_name);
}

int qbobj_getShareAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareName, const char *UserName,
                         char **Access, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShareAccess, ShareName, UserName, Access);
}

int qbobj_getPathAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *Path, const char *UserName,
                        char **Access, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getPathAccess, Path, UserName, Access);
}

int qbobj_getShareSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                                   qbobj_Schedule_t **snapshot_schedule, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShareSnapshotSchedule, share_name,
                  dumped(snapshot_schedule));
}

/* ---- Who uses a share ---------------------------------------------------------------------------------- */

int qbobj_getShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t **procs,
                          qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getShareProcess, ShareId, dumped(procs));
}

int qbobj_addShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs,
                          qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addShareProcess, ShareId, dumped(procs));
}

int qbobj_deleteShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs,
                             qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteShareProcess, ShareId, dumped(procs));
}

int qbobj_getUsedByOn(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_UsedBy_t **usedby,
                      qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getUsedByOn, ZfsName, dumped(usedby));
}

int qbobj_addShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby,
                         qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addShareUsedBy, ShareId, dumped(usedby));
}

int qbobj_deleteShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby,
                            qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteShareUsedBy, ShareId, dumped(usedby));
}

int qbobj_modifyShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby, const char *ShareId,
                            int share_id, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyShareUsedBy, dumped(usedby), ShareId,
                  share_id);
}

int qbobj_modifyShareUsedByExclusive(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                     const char *ShareId, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyShareUsedByExclusive, dumped(usedby),
                  ShareId);
}

/* ---- Shares written ------------------------------------------------------------------------------------ */

int qbobj_addShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_addShare, dumped(share));
}

int qbobj_modifyShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, int modifyOneShare,
                      qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyShare, dumped(share), modifyOneShare);
}

int qbobj_modifyShareVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                       const char *VisibleSnapFolder, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyShareVisibleSnapFolder, ZfsName,
                  VisibleSnapFolder);
}

int qbobj_modifyZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, const char *ShareName,
                     const char *Comment, uint64_t SizeKB, int IsSparse, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_modifyZvol, ZfsName, ShareName, Comment, SizeKB,
                  IsSparse);
}

int qbobj_deleteShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteShare, dumped(share));
}

int qbobj_deleteZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteZvol, ZfsName);
}

int qbobj_deleteShareOnVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_deleteShareOnVolume, VolumeId);
}

int qbobj_preMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, const char *VolumeId,
                          qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_preMigrateShare, ShareId, VolumeId);
}

int qbobj_postMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, int Commit, char **NewPath,
                           qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_postMigrateShare, ShareId, Commit, NewPath);
}

int qbobj_copyShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName, const char *ShareName,
                    const char *SnapshotName, const char *NewShareName, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_copyShare, VolumeName, ShareName, SnapshotName,
                  NewShareName);
}
