// Shares: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "operations/share.h"
#include "share/share.h"

using namespace qbobj;

/* ---- Shares read --------------------------------------------------------------------------------------- */

int qbobj_getShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                             qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareCollection>(share_operations, {qbdb, db, err, here()},
                                            x_qbobj_getShareCollection, collection);
}

int qbobj_getSimpleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                   qbobj_SimpleShareCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getSimpleShareCollection>(share_operations, {qbdb, db, err, here()},
                                                  x_qbobj_getSimpleShareCollection, collection);
}

int qbobj_getShareAndZvolCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                    qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareAndZvolCollection>(share_operations, {qbdb, db, err, here()},
                                                   x_qbobj_getShareAndZvolCollection, collection);
}

int qbobj_getAccessibleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                       const char *UserName, const char *ProtocolName, qbobj_error_rec_t *err)
{
    return framed<qbobj_getAccessibleShareCollection>(share_operations, {qbdb, db, err, here()},
                                                      x_qbobj_getAccessibleShareCollection, collection,
                                                      UserName, ProtocolName);
}

int qbobj_getShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed<qbobj_getShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_getShare, share);
}

int qbobj_queryShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId, const char *ShareNameLike,
                     const char *ShareId, qbobj_Share_t **shares, qbobj_error_rec_t *err)
{
    return framed<qbobj_queryShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_queryShare, VolumeId,
                                    ShareNameLike, ShareId, shares);
}

int qbobj_getShareId(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name, qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareId>(share_operations, {qbdb, db, err, here()}, x_qbobj_getShareId,
                                    share_name);
}

int qbobj_getShareAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareName, const char *UserName,
                         char **Access, qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareAccess>(share_operations, {qbdb, db, err, here()}, x_qbobj_getShareAccess,
                                        ShareName, UserName, Access);
}

int qbobj_getPathAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *Path, const char *UserName,
                        char **Access, qbobj_error_rec_t *err)
{
    return framed<qbobj_getPathAccess>(share_operations, {qbdb, db, err, here()}, x_qbobj_getPathAccess, Path,
                                       UserName, Access);
}

int qbobj_getShareSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                                   qbobj_Schedule_t **snapshot_schedule, qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareSnapshotSchedule>(share_operations, {qbdb, db, err, here()},
                                                  x_qbobj_getShareSnapshotSchedule, share_name,
                                                  snapshot_schedule);
}

/* ---- Who uses a share ---------------------------------------------------------------------------------- */

int qbobj_getShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t **procs,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_getShareProcess>(share_operations, {qbdb, db, err, here()}, x_qbobj_getShareProcess,
                                         ShareId, procs);
}

int qbobj_addShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_addShareProcess>(share_operations, {qbdb, db, err, here()}, x_qbobj_addShareProcess,
                                         ShareId, procs);
}

int qbobj_deleteShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs,
                             qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteShareProcess>(share_operations, {qbdb, db, err, here()},
                                            x_qbobj_deleteShareProcess, ShareId, procs);
}

int qbobj_getUsedByOn(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_UsedBy_t **usedby,
                      qbobj_error_rec_t *err)
{
    return framed<qbobj_getUsedByOn>(share_operations, {qbdb, db, err, here()}, x_qbobj_getUsedByOn, ZfsName,
                                     usedby);
}

int qbobj_addShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby,
                         qbobj_error_rec_t *err)
{
    return framed<qbobj_addShareUsedBy>(share_operations, {qbdb, db, err, here()}, x_qbobj_addShareUsedBy,
                                        ShareId, usedby);
}

int qbobj_deleteShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, qbobj_UsedBy_t *usedby,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteShareUsedBy>(share_operations, {qbdb, db, err, here()},
                                           x_qbobj_deleteShareUsedBy, ShareId, usedby);
}

int qbobj_modifyShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby, const char *ShareId,
                            int share_id, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyShareUsedBy>(share_operations, {qbdb, db, err, here()},
                                           x_qbobj_modifyShareUsedBy, usedby, ShareId, share_id);
}

int qbobj_modifyShareUsedByExclusive(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                     const char *ShareId, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyShareUsedByExclusive>(share_operations, {qbdb, db, err, here()},
                                                    x_qbobj_modifyShareUsedByExclusive, usedby, ShareId);
}

/* ---- Shares written ------------------------------------------------------------------------------------ */

int qbobj_addShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed<qbobj_addShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_addShare, share);
}

int qbobj_modifyShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, int modifyOneShare,
                      qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_modifyShare, share,
                                     modifyOneShare);
}

int qbobj_modifyShareVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                       const char *VisibleSnapFolder, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyShareVisibleSnapFolder>(share_operations, {qbdb, db, err, here()},
                                                      x_qbobj_modifyShareVisibleSnapFolder, ZfsName,
                                                      VisibleSnapFolder);
}

int qbobj_modifyZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, const char *ShareName,
                     const char *Comment, uint64_t SizeKB, int IsSparse, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyZvol>(share_operations, {qbdb, db, err, here()}, x_qbobj_modifyZvol, ZfsName,
                                    ShareName, Comment, SizeKB, IsSparse);
}

int qbobj_deleteShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_deleteShare, share);
}

int qbobj_deleteZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteZvol>(share_operations, {qbdb, db, err, here()}, x_qbobj_deleteZvol, ZfsName);
}

int qbobj_deleteShareOnVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteShareOnVolume>(share_operations, {qbdb, db, err, here()},
                                             x_qbobj_deleteShareOnVolume, VolumeId);
}

int qbobj_preMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, const char *VolumeId,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_preMigrateShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_preMigrateShare,
                                         ShareId, VolumeId);
}

int qbobj_postMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, int Commit, char **NewPath,
                           qbobj_error_rec_t *err)
{
    return framed<qbobj_postMigrateShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_postMigrateShare,
                                          ShareId, Commit, NewPath);
}

int qbobj_copyShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName, const char *ShareName,
                    const char *SnapshotName, const char *NewShareName, qbobj_error_rec_t *err)
{
    return framed<qbobj_copyShare>(share_operations, {qbdb, db, err, here()}, x_qbobj_copyShare, VolumeName,
                                   ShareName, SnapshotName, NewShareName);
}
