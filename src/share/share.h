// Workers and helpers of the share operations.
#pragma once

#include "account/account.h"

#include <qbobj/env.h>
#include <qbobj/share.h>

/* ---- Shares read --------------------------------------------------------------------------------------- */

int x_qbobj_getShareCollection(qbobj_env_t *qbobj, sqlite3 *db, qbobj_ShareCollection_t *collection);
int x_qbobj_getSimpleShareCollection(qbobj_env_t *qbobj, sqlite3 *db,
                                     qbobj_SimpleShareCollection_t *collection);
int x_qbobj_getShareAndZvolCollection(qbobj_env_t *qbobj, sqlite3 *db, qbobj_ShareCollection_t *collection);
int x_qbobj_getAccessibleShareCollection(qbobj_env_t *qbobj, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                         const char *UserName, const char *ProtocolName);
int x_qbobj_getShare(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Share_t *share);
int x_qbobj_queryShare(qbobj_env_t *qbobj, sqlite3 *db, const char *VolumeId, const char *ShareNameLike,
                       const char *ShareId, qbobj_Share_t **shares);
// The share's row id; -2 when the name is malformed, -1 when there is no such share.
int x_qbobj_getShareId(qbobj_env_t *qbobj, sqlite3 *db, const char *share_name);
// The row id of the share that contains `path`, or -2.
int x_qbobj_getShareIdFromPath(qbobj_env_t *qbobj, sqlite3 *db, const char *path);
int x_qbobj_getShareAccess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareName, const char *UserName,
                           char **Access);
int x_qbobj_getPathAccess(qbobj_env_t *qbobj, sqlite3 *db, const char *Path, const char *UserName,
                          char **Access);
int x_qbobj_getShareSnapshotSchedule(qbobj_env_t *qbobj, sqlite3 *db, const char *share_name,
                                     qbobj_Schedule_t **snapshot_schedule);

/* ---- Shares written ------------------------------------------------------------------------------------ */

int x_qbobj_addShare(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Share_t *share);
int x_qbobj_modifyShare(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Share_t *share, int modifyOneShare);
int x_qbobj_modifyShareVisibleSnapFolder(qbobj_env_t *qbobj, sqlite3 *db, const char *ZfsName,
                                         const char *VisibleSnapFolder);
int x_qbobj_modifyZvol(qbobj_env_t *qbobj, sqlite3 *db, const char *ZfsName, const char *ShareName,
                       const char *Comment, uint64_t SizeKB, int IsSparse);
int x_qbobj_deleteShare(qbobj_env_t *qbobj, sqlite3 *db, qbobj_Share_t *share);
int x_qbobj_deleteZvol(qbobj_env_t *qbobj, sqlite3 *db, const char *ZfsName);
int x_qbobj_deleteShareOnVolume(qbobj_env_t *qbobj, sqlite3 *db, const char *VolumeId);
int x_qbobj_preMigrateShare(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, const char *VolumeId);
int x_qbobj_postMigrateShare(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, int Commit,
                             char **NewPath);
int x_qbobj_copyShare(qbobj_env_t *qbobj, sqlite3 *db, const char *VolumeName, const char *ShareName,
                      const char *SnapshotName, const char *NewShareName);

/* ---- Who uses a share ---------------------------------------------------------------------------------- */

int x_qbobj_getShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t **procs);
int x_qbobj_addShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs);
int x_qbobj_deleteShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs);
int x_qbobj_getUsedByOn(qbobj_env_t *qbobj, sqlite3 *db, const char *ZfsName, qbobj_UsedBy_t **usedby);
int x_qbobj_addShareUsedBy(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby);
int x_qbobj_deleteShareUsedBy(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby);
int x_qbobj_modifyShareUsedBy(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UsedBy_t *usedby, const char *ShareId,
                              int share_id);
int x_qbobj_modifyShareUsedByExclusive(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                       const char *ShareId);

/* ---- Writers of access lists and option rows, shared by creation and modification ---------------------- */

// Each replaces the list of the share (for one protocol) with `acl`, which may be null: an empty list.
int qbobj_api2_addHostAcl(qbobj_env_t *qbobj, sqlite3 *db, qbobj_HostAcl_t *acl, int32_t share_id,
                          const char *proto);
int qbobj_api2_addUserAcl(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UserAcl_t *acl, int32_t share_id,
                          const char *proto, int ads_mode, int no_sync_ads);
int qbobj_api2_addGroupAcl(qbobj_env_t *qbobj, sqlite3 *db, qbobj_GroupAcl_t *acl, int32_t share_id,
                           const char *proto, int ads_mode, int no_sync_ads);
int qbobj_api2_addDfolderAcl(qbobj_env_t *qbobj, sqlite3 *db, qbobj_DfolderAcl_t *acl, int32_t share_id);
int qbobj_api2_addUserPasswordAcl(qbobj_env_t *qbobj, sqlite3 *db, qbobj_UserPasswordAcl_t *acl,
                                  int32_t share_id);

// Each inserts the option row of a share that has none.
int qbobj_api2_addDlnaShareOption(qbobj_env_t *qbobj, sqlite3 *db, qbobj_DlnaShareOption_t *option,
                                  int32_t share_id);
int qbobj_api2_addDaapShareOption(qbobj_env_t *qbobj, sqlite3 *db, qbobj_DaapShareOption_t *option,
                                  int32_t share_id);
int qbobj_api2_addRsyncShareOption(qbobj_env_t *qbobj, sqlite3 *db, qbobj_RsyncShareOption_t *option,
                                   int32_t share_id);
int qbobj_api2_deleteDlnaShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id);
int qbobj_api2_deleteDaapShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id);
int qbobj_api2_deleteRsyncShareOption(qbobj_env_t *qbobj, sqlite3 *db, int32_t share_id);
