// The workers of snapshots, clones, spares and the schedules of volumes.
#pragma once

#include "core/call.h"

#include <qbobj/snapshot.h>
#include <qbobj/spare.h>

namespace qbobj
{

/* ---- Snapshots of shares ------------------------------------------------------------------------------- */

int x_qbobj_getSnapshotCollection(Call &call, qbobj_SnapshotCollection_t *collection, const char *ShareName,
                                  const char *VolumeName, int q_type, int q_from, int q_to,
                                  const char *OrderBy, int q_order, int q_limit, int q_offset);
int x_qbobj_getSnapshotCollectionCount(Call &call, int *count, const char *ShareName, const char *VolumeName,
                                       int q_type, int q_from, int q_to);
int x_qbobj_addSnapshot(Call &call, qbobj_Snapshot_t *snapshot);
int x_qbobj_deleteSnapshot(Call &call, const char *VolumeName, const char *ShareName, int DeleteNewer,
                           const char *SnapshotName, int CreatedOn);

/* ---- Snapshots of home folders ------------------------------------------------------------------------- */

int x_qbobj_getHfSnapshotCollection(Call &call, qbobj_HfSnapshotCollection_t *collection,
                                    const char *UserName, const char *HomeDir, int q_type, int q_from,
                                    int q_to, const char *OrderBy, int q_order, int q_limit, int q_offset);
int x_qbobj_getHfSnapshotCollectionCount(Call &call, int *count, const char *UserName, const char *HomeDir,
                                         int q_type, int q_from, int q_to);
int x_qbobj_addHfSnapshot(Call &call, qbobj_HfSnapshot_t *snapshot);
int x_qbobj_deleteHfSnapshot(Call &call, const char *UserName, const char *HomeDir, int DeleteNewer,
                             const char *SnapshotName, int CreatedOn);
int x_qbobj_getHfSnapshotSchedule(Call &call, qbobj_Schedule_t **schedule);
int x_qbobj_addHfSnapshotSchedule(Call &call, qbobj_Schedule_t *schedule);
int x_qbobj_modifyHfSnapshotSchedule(Call &call, qbobj_Schedule_t *schedule);

/* ---- Clones -------------------------------------------------------------------------------------------- */

int x_qbobj_getSnapshotClones(Call &call, const char *ParentSnapshotName, const char *ParentShareName,
                              qbobj_SnapshotCloneCollection_t *SnapshotCloneCollection);
int x_qbobj_addSnapshotClone(Call &call, const char *ClonedShareName, const char *ParentSnapshotName,
                             const char *ParentShareName);
int x_qbobj_deleteSnapshotClone(Call &call, const char *ClonedShareName, const char *ParentSnapshotName,
                                const char *ParentShareName);

/* ---- Spares and schedules of volumes ------------------------------------------------------------------- */

int x_qbobj_getVolumeSparesCollection(Call &call, qbobj_DiskCollection_t *collection);
int x_qbobj_addVolumeSpare(Call &call, const char *DevName);
int x_qbobj_deleteVolumeSpare(Call &call, const char *DevName);
int x_qbobj_getVolumeScheduleCollection(Call &call, qbobj_VolumeScheduleCollection_t *collection);
int x_qbobj_addVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule);
int x_qbobj_updateVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule);
int x_qbobj_deleteVolumeSchedule(Call &call, qbobj_VolumeSchedule_t *volumeschedule);

} // namespace qbobj
