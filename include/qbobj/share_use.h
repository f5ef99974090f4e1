/**
 * @file share_use.h
 * Who uses a share: processes that work on it, and applications that hold it.
 */
#ifndef QBOBJ_SHARE_USE_H
#define QBOBJ_SHARE_USE_H

#include <qbobj/share_record.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Processes ----------------------------------------------------------------------------------------- */

/**
 * Lists the processes that work on a share.
 *
 * @param[in]  ShareId  dataset name; an unknown one has no processes
 * @param[out] procs    receives the list
 * @reads process_on_share, share
 * @error QBOBJ_ERROR_API_ARGS  no `procs`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    qbobj_Process_t **procs, qbobj_error_rec_t *err);

/**
 * Registers processes that work on a share.
 *
 * There is one entry a share and process: a second one replaces it, with the new blocking level and time.
 *
 * @param[in] ShareId  dataset name
 * @param[in] procs    the processes; null registers nothing
 * @reads  share
 * @writes process_on_share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed, or the share is unknown
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    qbobj_Process_t *procs, qbobj_error_rec_t *err);

/**
 * Forgets processes of a share.
 *
 * @param[in] ShareId  dataset name; an unknown one changes nothing
 * @param[in] procs    the processes, by `ProcessId`; null forgets every process of the share
 * @reads  share
 * @writes process_on_share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareProcess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                       qbobj_Process_t *procs, qbobj_error_rec_t *err);

/* ---- Applications -------------------------------------------------------------------------------------- */

/**
 * Lists the applications that hold a dataset, or any dataset of a volume.
 *
 * @param[in]  ZfsName  a dataset name, with "/", matches exactly; without "/" it matches every dataset whose
 *                      name begins with it, without regard to case: "data" also matches "data2/x"
 * @param[out] usedby   receives the list
 * @reads $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  no `ZfsName` or no `usedby`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUsedByOn(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                qbobj_UsedBy_t **usedby, qbobj_error_rec_t *err);

/**
 * Marks a dataset as held by an application.
 *
 * There is one marker a dataset and application: a second one replaces it.
 *
 * @param[in] ShareId  dataset name, which is not checked
 * @param[in] usedby   the marker; only the first record of a list counts
 * @writes $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  no record or no `AppName`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or `ShareId` is null
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                   qbobj_UsedBy_t *usedby, qbobj_error_rec_t *err);

/**
 * Removes an application's marker from a dataset.
 *
 * A marker that is not there is no error.
 *
 * @param[in] ShareId  dataset name
 * @param[in] usedby   the marker, by `AppName`; only the first record of a list counts
 * @writes $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  no record or no `AppName`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                      qbobj_UsedBy_t *usedby, qbobj_error_rec_t *err);

/**
 * Replaces all markers of a share.
 *
 * Of two markers of one application the later counts.
 *
 * @param[in] usedby    the markers from now on; null only removes those that are there
 * @param[in] ShareId   dataset name of the share; null: `share_id` tells the share
 * @param[in] share_id  row id of the share, used without `ShareId`
 * @reads  share
 * @writes $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  an unknown `ShareId`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or there is a marker to store without `AppName` or for an
 *                              unknown `share_id`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareUsedBy(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                      const char *ShareId, int share_id, qbobj_error_rec_t *err);

/**
 * Moves an application's marker to one share: it is removed from every dataset first.
 *
 * @param[in] usedby   the marker; only the first record of a list counts
 * @param[in] ShareId  dataset name of the share; null removes the marker everywhere
 * @reads  share
 * @writes $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, the share is unknown, or there is no `AppName` to store
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareUsedByExclusive(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UsedBy_t *usedby,
                                               const char *ShareId, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
