// Backup jobs: every exported operation with its arguments and its worker.
#include "backup/backup.h"
#include "frame/frame.h"
#include "operations/backup.h"

using namespace qbobj;

int qbobj_getBackupJobCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJobCollection_t *collection,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_getBackupJobCollection>(backup_operations, {qbdb, db, err, here()},
                                                x_qbobj_getBackupJobCollection, collection);
}

int qbobj_getBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job, qbobj_error_rec_t *err)
{
    return framed<qbobj_getBackupJob>(backup_operations, {qbdb, db, err, here()}, x_qbobj_getBackupJob, job);
}

int qbobj_getBackupTargetCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                    qbobj_BackupTargetCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getBackupTargetCollection>(backup_operations, {qbdb, db, err, here()},
                                                   x_qbobj_getBackupTargetCollection, collection);
}

int qbobj_getBackupButtonJobCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                       qbobj_BackupButtonJobCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_getBackupButtonJobCollection>(backup_operations, {qbdb, db, err, here()},
                                                      x_qbobj_getBackupButtonJobCollection, collection);
}

int qbobj_setBackupButtonJobCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                       qbobj_BackupButtonJobCollection_t *collection, qbobj_error_rec_t *err)
{
    return framed<qbobj_setBackupButtonJobCollection>(backup_operations, {qbdb, db, err, here()},
                                                      x_qbobj_setBackupButtonJobCollection, collection);
}

int qbobj_getBackupUSBSubType(qbdb_handle_t *qbdb, sqlite3 *db, const char *usb_port, char **USBSubType,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_getBackupUSBSubType>(backup_operations, {qbdb, db, err, here()},
                                             x_qbobj_getBackupUSBSubType, usb_port, USBSubType);
}

int qbobj_addBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job, qbobj_error_rec_t *err)
{
    return framed<qbobj_addBackupJob>(backup_operations, {qbdb, db, err, here()}, x_qbobj_addBackupJob, job);
}

int qbobj_modifyBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyBackupJob>(backup_operations, {qbdb, db, err, here()}, x_qbobj_modifyBackupJob,
                                         job);
}

int qbobj_deleteBackupJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_BackupJob_t *job, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteBackupJob>(backup_operations, {qbdb, db, err, here()}, x_qbobj_deleteBackupJob,
                                         job);
}
