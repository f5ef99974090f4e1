// Workers and helpers of the operations on backup jobs.
#pragma once

#include "core/call.h"

#include <qbobj/backup.h>

namespace qbobj
{

int x_qbobj_getBackupJobCollection(Call &call, qbobj_BackupJobCollection_t *collection);
int x_qbobj_getBackupJob(Call &call, qbobj_BackupJob_t *job);
int x_qbobj_getBackupTargetCollection(Call &call, qbobj_BackupTargetCollection_t *collection);
int x_qbobj_getBackupButtonJobCollection(Call &call, qbobj_BackupButtonJobCollection_t *collection);
int x_qbobj_setBackupButtonJobCollection(Call &call, qbobj_BackupButtonJobCollection_t *collection);
int x_qbobj_getBackupUSBSubType(Call &call, const char *usb_port, char **USBSubType);
int x_qbobj_addBackupJob(Call &call, qbobj_BackupJob_t *job);
int x_qbobj_modifyBackupJob(Call &call, qbobj_BackupJob_t *job);
int x_qbobj_deleteBackupJob(Call &call, qbobj_BackupJob_t *job);

// Refuses two ends between which no job may copy. Missing texts count as empty.
int qbobj_api2_backup_check_src_dst_conflict(Call &call, const qbobj_BackupJob_SourceOrDestination_t &src,
                                             const qbobj_BackupJob_SourceOrDestination_t &dst);

// The id that a job is found by; below 1 when it gives none.
inline int key_of(const qbobj_BackupJob_t &job)
{
    return job.resource_id > 0 ? job.resource_id : job.JobId;
}

// As it is stored: a missing text is empty.
qbobj_BackupJob_SourceOrDestination_t stored(const qbobj_BackupJob_SourceOrDestination_t &end);
qbobj_BackupJob_Option_t stored(const qbobj_BackupJob_Option_t &option);

} // namespace qbobj
