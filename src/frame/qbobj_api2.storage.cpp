// Volumes, disks, enclosures and health readings: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "operations/storage.h"
#include "storage/storage.h"

using namespace qbobj;

/* ---- Volumes ------------------------------------------------------------------------------------------- */

int qbobj_getVolumeCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_VolumeCollection_t *collection,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_getVolumeCollection>(storage_operations, {qbdb, db, err, here()},
                                             x_qbobj_getVolumeCollection, collection);
}

int qbobj_updateVolume(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Volume_t *volume, qbobj_error_rec_t *err)
{
    return framed<qbobj_updateVolume>(storage_operations, {qbdb, db, err, here()}, x_qbobj_updateVolume,
                                      volume);
}

int qbobj_deleteVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteVolume>(storage_operations, {qbdb, db, err, here()}, x_qbobj_deleteVolume,
                                      VolumeId);
}

/* ---- Disks --------------------------------------------------------------------------------------------- */

int qbobj_getDiskCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskCollection_t *collection,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskCollection>(storage_operations, {qbdb, db, err, here()},
                                           x_qbobj_getDiskCollection, collection);
}

int qbobj_getDiskCollectionForController(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskCollection_t *collection,
                                         int controller, qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskCollectionForController>(storage_operations, {qbdb, db, err, here()},
                                                        x_qbobj_getDiskCollectionForController, collection,
                                                        controller);
}

int qbobj_getDiskByDevname(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Disk_t *slot, qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskByDevname>(storage_operations, {qbdb, db, err, here()},
                                          x_qbobj_getDiskByDevname, slot);
}

int qbobj_setDiskSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *devname, int flag,
                       qbobj_error_rec_t *err)
{
    return framed<qbobj_setDiskSpare>(storage_operations, {qbdb, db, err, here()}, x_qbobj_setDiskSpare,
                                      devname, flag);
}

int qbobj_getDiskDiff(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskDiff_t **diff, qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskDiff>(storage_operations, {qbdb, db, err, here()}, x_qbobj_getDiskDiff, diff);
}

int qbobj_getDiskByDiskDiff(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskDiff_t *diff, qbobj_Disk_t *disk,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskByDiskDiff>(storage_operations, {qbdb, db, err, here()},
                                           x_qbobj_getDiskByDiskDiff, diff, disk);
}

int qbobj_deleteDiskByDevname(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Disk_t *disk, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteDiskByDevname>(storage_operations, {qbdb, db, err, here()},
                                             x_qbobj_deleteDiskByDevname, disk);
}

/* ---- Enclosures ---------------------------------------------------------------------------------------- */

int qbobj_getDiskEnclosureCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                     qbobj_DiskEnclosureCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskEnclosureCollection>(storage_operations, {qbdb, db, err, here()},
                                                    x_qbobj_getDiskEnclosureCollection, collection);
}

int qbobj_getDiskEnclosurePort(qbdb_handle_t *qbdb, sqlite3 *db, int DiskEnclosureId, char **DiskEnclosrePort,
                               qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskEnclosurePort>(storage_operations, {qbdb, db, err, here()},
                                              x_qbobj_getDiskEnclosurePort, DiskEnclosureId,
                                              DiskEnclosrePort);
}

/* ---- Health of disks ----------------------------------------------------------------------------------- */

int qbobj_getDiskHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskHealthCollection_t *collection,
                                  qbobj_error_rec_t *err)
{
    return framed<qbobj_getDiskHealthCollection>(storage_operations, {qbdb, db, err, here()},
                                                 x_qbobj_getDiskHealthCollection, collection);
}

int qbobj_setDiskHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskHealth_t *health, qbobj_error_rec_t *err)
{
    return framed<qbobj_setDiskHealth>(storage_operations, {qbdb, db, err, here()}, x_qbobj_setDiskHealth,
                                       health);
}

/* ---- Health of enclosures ------------------------------------------------------------------------------ */

int qbobj_getEnclosureHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_EnclosureHealth_t *enc_health,
                             qbobj_error_rec_t *err)
{
    return framed<qbobj_getEnclosureHealth>(storage_operations, {qbdb, db, err, here()},
                                            x_qbobj_getEnclosureHealth, enc_health);
}

int qbobj_getEnclosureHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                       qbobj_EnclosureHealthCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getEnclosureHealthCollection>(storage_operations, {qbdb, db, err, here()},
                                                      x_qbobj_getEnclosureHealthCollection, collection);
}

int qbobj_setEnclosureHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_EnclosureHealth_t *enc_health,
                             qbobj_error_rec_t *err)
{
    return framed<qbobj_setEnclosureHealth>(storage_operations, {qbdb, db, err, here()},
                                            x_qbobj_setEnclosureHealth, enc_health);
}

int qbobj_setEnclosureHealthForTest(qbdb_handle_t *qbdb, sqlite3 *db, const char *path,
                                    qbobj_error_rec_t *err)
{
    return framed<qbobj_setEnclosureHealthForTest>(storage_operations, {qbdb, db, err, here()},
                                                   x_qbobj_setEnclosureHealthForTest, path);
}

/* ---- Health of UPS devices ----------------------------------------------------------------------------- */

int qbobj_getUpsHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsHealthCollection_t *collection,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_getUpsHealthCollection>(storage_operations, {qbdb, db, err, here()},
                                                x_qbobj_getUpsHealthCollection, collection);
}

int qbobj_setUpsHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsHealth_t *ups_health,
                       qbobj_error_rec_t *err)
{
    return framed<qbobj_setUpsHealth>(storage_operations, {qbdb, db, err, here()}, x_qbobj_setUpsHealth,
                                      ups_health);
}
