// The system log: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "log/log.h"
#include "operations/log.h"

using namespace qbobj;

int qbobj_addLog(qbdb_handle_t *qbdb, sqlite3 *db, int TimeStamp, const char *Severity, const char *Category,
                 const char *MessageTag, const char *MessageArgsXml, qbobj_error_rec_t *err)
{
    return framed<qbobj_addLog>(log_operations, {qbdb, db, err, here()}, x_qbobj_addLog, TimeStamp, Severity,
                                Category, MessageTag, MessageArgsXml);
}

int qbobj_getLog(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LogEntry_t **Log, int *Entries, int *TotalEntries,
                 qbobj_LogQuery_t *query, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLog>(log_operations, {qbdb, db, err, here()}, x_qbobj_getLog, Log, Entries,
                                TotalEntries, query);
}

int qbobj_deleteLog(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LogQuery_t *query, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteLog>(log_operations, {qbdb, db, err, here()}, x_qbobj_deleteLog, query);
}

int qbobj_truncateLog(qbdb_handle_t *qbdb, sqlite3 *db, int n_keep, qbobj_error_rec_t *err)
{
    return framed<qbobj_truncateLog>(log_operations, {qbdb, db, err, here()}, x_qbobj_truncateLog, n_keep);
}
