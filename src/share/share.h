// Workers and helpers of the share operations.
#pragma once

#include "core/call.h"

#include <qbobj/share.h>

#include <optional>

namespace qbobj
{

/* ---- Shares read --------------------------------------------------------------------------------------- */

int x_qbobj_getShareCollection(Call &call, qbobj_ShareCollection_t *collection);
int x_qbobj_getSimpleShareCollection(Call &call, qbobj_SimpleShareCollection_t *collection);
int x_qbobj_getShareAndZvolCollection(Call &call, qbobj_ShareCollection_t *collection);
int x_qbobj_getAccessibleShareCollection(Call &call, qbobj_ShareCollection_t *collection,
                                         const char *UserName, const char *ProtocolName);
int x_qbobj_getShare(Call &call, qbobj_Share_t *share);
int x_qbobj_queryShare(Call &call, const char *VolumeId, const char *ShareNameLike, const char *ShareId,
                       qbobj_Share_t **shares);
// The share's row id; -2 when the name is malformed, -1 when there is no such share.
int x_qbobj_getShareId(Call &call, const char *share_name);
// The row id of the share that contains `path`, or -2.
int x_qbobj_getShareIdFromPath(Call &call, const char *path);
int x_qbobj_getShareAccess(Call &call, const char *ShareName, const char *UserName, char **Access);
int x_qbobj_getPathAccess(Call &call, const char *Path, const char *UserName, char **Access);
int x_qbobj_getShareSnapshotSchedule(Call &call, const char *share_name,
                                     qbobj_Schedule_t **snapshot_schedule);

/* ---- Shares written ------------------------------------------------------------------------------------ */

int x_qbobj_addShare(Call &call, qbobj_Share_t *share);
int x_qbobj_modifyShare(Call &call, qbobj_Share_t *share, int modifyOneShare);
int x_qbobj_modifyShareVisibleSnapFolder(Call &call, const char *ZfsName, const char *VisibleSnapFolder);
int x_qbobj_modifyZvol(Call &call, const char *ZfsName, const char *ShareName, const char *Comment,
                       uint64_t SizeKB, int IsSparse);
int x_qbobj_deleteShare(Call &call, qbobj_Share_t *share);
int x_qbobj_deleteZvol(Call &call, const char *ZfsName);
int x_qbobj_deleteShareOnVolume(Call &call, const char *VolumeId);
int x_qbobj_preMigrateShare(Call &call, const char *ShareId, const char *VolumeId);
int x_qbobj_postMigrateShare(Call &call, const char *ShareId, int Commit, char **NewPath);
int x_qbobj_copyShare(Call &call, const char *VolumeName, const char *ShareName, const char *SnapshotName,
                      const char *NewShareName);

/* ---- Who uses a share ---------------------------------------------------------------------------------- */

int x_qbobj_getShareProcess(Call &call, const char *ShareId, qbobj_Process_t **procs);
int x_qbobj_addShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs);
int x_qbobj_deleteShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs);
int x_qbobj_getUsedByOn(Call &call, const char *ZfsName, qbobj_UsedBy_t **usedby);
int x_qbobj_addShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby);
int x_qbobj_deleteShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby);
int x_qbobj_modifyShareUsedBy(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId, int share_id);
int x_qbobj_modifyShareUsedByExclusive(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId);

/* ---- Writers of access lists and option rows, shared by creation and modification ---------------------- */

// What a protocol allows those whom no list names.
enum class DefaultAccess : int { none = 0, read_only = 1, read_write = 2 };

// Whose list is written. A share that is new has no rows to take away, and its default access is known.
struct ListOwner {
    int32_t share_id;
    const char *proto;
    std::optional<DefaultAccess> of_new_share = std::nullopt;
};

// Each replaces the owner's list with `acl`, which may be null: an empty list.
int qbobj_api2_addHostAcl(Call &call, qbobj_HostAcl_t *acl, const ListOwner &owner);
int qbobj_api2_addUserAcl(Call &call, qbobj_UserAcl_t *acl, const ListOwner &owner);
int qbobj_api2_addGroupAcl(Call &call, qbobj_GroupAcl_t *acl, const ListOwner &owner);
int qbobj_api2_addDfolderAcl(Call &call, qbobj_DfolderAcl_t *acl, const ListOwner &owner);
int qbobj_api2_addUserPasswordAcl(Call &call, qbobj_UserPasswordAcl_t *acl, const ListOwner &owner);

// Each inserts the option row of a share that has none.
int qbobj_api2_addDlnaShareOption(Call &call, qbobj_DlnaShareOption_t *option, int32_t share_id);
int qbobj_api2_addDaapShareOption(Call &call, qbobj_DaapShareOption_t *option, int32_t share_id);
int qbobj_api2_addRsyncShareOption(Call &call, qbobj_RsyncShareOption_t *option, int32_t share_id);
int qbobj_api2_deleteDlnaShareOption(Call &call, int32_t share_id);
int qbobj_api2_deleteDaapShareOption(Call &call, int32_t share_id);
int qbobj_api2_deleteRsyncShareOption(Call &call, int32_t share_id);

} // namespace qbobj
