// The jobs of the backup button, written.
#include "backup/backup.h"

namespace qbobj
{

int x_qbobj_setBackupButtonJobCollection(Call &call, qbobj_BackupButtonJobCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    if (const int rc =
            call.exec("Failed DB Query (DELETE backup_button_jobs). %s", "DELETE FROM backup_button_jobs"))
        return rc;
    for (const qbobj_BackupButtonJob_t &job : Chain(collection->Jobs))
        if (const int rc = call.exec("Failed DB Query for (INSERT backup_button_jobs). %s",
                                     R"(INSERT INTO backup_button_jobs (`order`,backup_id)
            VALUES((SELECT IFNULL(MAX(`order`),0)+1 FROM backup_button_jobs),%d))",
                                     job.JobId))
            return rc;
    return 0;
}

} // namespace qbobj
