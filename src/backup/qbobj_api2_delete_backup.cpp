// Backup jobs deleted.
#include "backup/backup.h"

namespace qbobj
{

namespace
{

int delete_job(Call &call, qbobj_BackupJob_t &job)
{
    const int key = key_of(job);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d)", job.resource_id);
    if (job.JobName == nullptr)
        if (const int rc = call.text("Failed DB Query for backup. %s", job.JobName,
                                     "SELECT B.name FROM backup B WHERE id=%d", key))
            return rc;
    if (const int rc = call.exec("Failed DB Query for backup. %s", "DELETE FROM backup WHERE id=%d", key))
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     key);
    return call.exec("Failed DB Query for backup_button_jobs. %s",
                     "DELETE FROM backup_button_jobs WHERE backup_id=%d", key);
}

} // namespace

int x_qbobj_deleteBackupJob(Call &call, qbobj_BackupJob_t *job)
{
    return for_each(job, delete_job, call);
}

} // namespace qbobj
