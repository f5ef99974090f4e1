// Snapshots, clones, spares and the schedules of volumes: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "operations/snapshot.h"
#include "storage/snapshot.h"

using namespace qbobj;

/* ---- Snapshots of shares ------------------------------------------------------------------------------- */

int qbobj_getSnapshotCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SnapshotCollection_t *collection,
                                const char *ShareName, const char *VolumeName, int q_type, int q_from,
                                int q_to, const char *OrderBy, int q_order, int q_limit, int q_offset,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_getSnapshotCollection>(
        snapshot_operations, {qbdb, db, err, here()}, x_qbobj_getSnapshotCollection, collection, ShareName,
        VolumeName, q_type, q_from, q_to, OrderBy, q_order, q_limit, q_offset);
}

int qbobj_getSnapshotCollectionCount(qbdb_handle_t *qbdb, sqlite3 *db, int *count, const char *ShareName,
                                     const char *VolumeName, int q_type, int q_from, int q_to,
                                     qbobj_error_rec_t *err)
{
    return framed<qbobj_getSnapshotCollectionCount>(snapshot_operations, {qbdb, db, err, here()},
                                                    x_qbobj_getSnapshotCollectionCount, count, ShareName,
                                                    VolumeName, q_type, q_from, q_to);
}

int qbobj_addSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Snapshot_t *snapshot, qbobj_error_rec_t *err)
{
    return framed<qbobj_addSnapshot>(snapshot_operations, {qbdb, db, err, here()}, x_qbobj_addSnapshot,
                                     snapshot);
}

int qbobj_deleteSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName, const char *ShareName,
                         int DeleteNewer, const char *SnapshotName, int CreatedOn, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteSnapshot>(snapshot_operations, {qbdb, db, err, here()}, x_qbobj_deleteSnapshot,
                                        VolumeName, ShareName, DeleteNewer, SnapshotName, CreatedOn);
}

/* ---- Snapshots of home folders ------------------------------------------------------------------------- */

int qbobj_getHfSnapshotCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HfSnapshotCollection_t *collection,
                                  const char *UserName, const char *HomeDir, int q_type, int q_from, int q_to,
                                  const char *OrderBy, int q_order, int q_limit, int q_offset,
                                  qbobj_error_rec_t *err)
{
    return framed<qbobj_getHfSnapshotCollection>(
        snapshot_operations, {qbdb, db, err, here()}, x_qbobj_getHfSnapshotCollection, collection, UserName,
        HomeDir, q_type, q_from, q_to, OrderBy, q_order, q_limit, q_offset);
}

int qbobj_getHfSnapshotCollectionCount(qbdb_handle_t *qbdb, sqlite3 *db, int *count, const char *UserName,
                                       const char *HomeDir, int q_type, int q_from, int q_to,
                                       qbobj_error_rec_t *err)
{
    return framed<qbobj_getHfSnapshotCollectionCount>(snapshot_operations, {qbdb, db, err, here()},
                                                      x_qbobj_getHfSnapshotCollectionCount, count, UserName,
                                                      HomeDir, q_type, q_from, q_to);
}

int qbobj_addHfSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HfSnapshot_t *snapshot,
                        qbobj_error_rec_t *err)
{
    return framed<qbobj_addHfSnapshot>(snapshot_operations, {qbdb, db, err, here()}, x_qbobj_addHfSnapshot,
                                       snapshot);
}

int qbobj_deleteHfSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName, const char *HomeDir,
                           int DeleteNewer, const char *SnapshotName, int CreatedOn, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteHfSnapshot>(snapshot_operations, {qbdb, db, err, here()},
                                          x_qbobj_deleteHfSnapshot, UserName, HomeDir, DeleteNewer,
                                          SnapshotName, CreatedOn);
}

int qbobj_getHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t **schedule,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_getHfSnapshotSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                               x_qbobj_getHfSnapshotSchedule, schedule);
}

int qbobj_addHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t *schedule,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_addHfSnapshotSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                               x_qbobj_addHfSnapshotSchedule, schedule);
}

int qbobj_modifyHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t *schedule,
                                   qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyHfSnapshotSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                                  x_qbobj_modifyHfSnapshotSchedule, schedule);
}

/* ---- Clones -------------------------------------------------------------------------------------------- */

int qbobj_getSnapshotClones(qbdb_handle_t *qbdb, sqlite3 *db, const char *ParentSnapshotName,
                            const char *ParentShareName,
                            qbobj_SnapshotCloneCollection_t *SnapshotCloneCollection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getSnapshotClones>(snapshot_operations, {qbdb, db, err, here()},
                                           x_qbobj_getSnapshotClones, ParentSnapshotName, ParentShareName,
                                           SnapshotCloneCollection);
}

int qbobj_addSnapshotClone(qbdb_handle_t *qbdb, sqlite3 *db, const char *ClonedShareName,
                           const char *ParentSnapshotName, const char *ParentShareName,
                           qbobj_error_rec_t *err)
{
    return framed<qbobj_addSnapshotClone>(snapshot_operations, {qbdb, db, err, here()},
                                          x_qbobj_addSnapshotClone, ClonedShareName, ParentSnapshotName,
                                          ParentShareName);
}

int qbobj_deleteSnapshotClone(qbdb_handle_t *qbdb, sqlite3 *db, const char *ClonedShareName,
                              const char *ParentSnapshotName, const char *ParentShareName,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteSnapshotClone>(snapshot_operations, {qbdb, db, err, here()},
                                             x_qbobj_deleteSnapshotClone, ClonedShareName, ParentSnapshotName,
                                             ParentShareName);
}

/* ---- Spares and schedules of volumes ------------------------------------------------------------------- */

int qbobj_getVolumeSparesCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskCollection_t *collection,
                                    qbobj_error_rec_t *err)
{
    return framed<qbobj_getVolumeSparesCollection>(snapshot_operations, {qbdb, db, err, here()},
                                                   x_qbobj_getVolumeSparesCollection, collection);
}

int qbobj_addVolumeSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *DevName, qbobj_error_rec_t *err)
{
    return framed<qbobj_addVolumeSpare>(snapshot_operations, {qbdb, db, err, here()}, x_qbobj_addVolumeSpare,
                                        DevName);
}

int qbobj_deleteVolumeSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *DevName, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteVolumeSpare>(snapshot_operations, {qbdb, db, err, here()},
                                           x_qbobj_deleteVolumeSpare, DevName);
}

int qbobj_getVolumeScheduleCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_VolumeScheduleCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getVolumeScheduleCollection>(snapshot_operations, {qbdb, db, err, here()},
                                                     x_qbobj_getVolumeScheduleCollection, collection);
}

int qbobj_addVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_VolumeSchedule_t *volumeschedule,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_addVolumeSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                           x_qbobj_addVolumeSchedule, volumeschedule);
}

int qbobj_updateVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_VolumeSchedule_t *volumeschedule,
                               qbobj_error_rec_t *err)
{
    return framed<qbobj_updateVolumeSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                              x_qbobj_updateVolumeSchedule, volumeschedule);
}

int qbobj_deleteVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_VolumeSchedule_t *volumeschedule,
                               qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteVolumeSchedule>(snapshot_operations, {qbdb, db, err, here()},
                                              x_qbobj_deleteVolumeSchedule, volumeschedule);
}
