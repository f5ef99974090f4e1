/**
 * @file tivo.h
 * The TiVo archiver: when and where recordings are archived, the devices, and their media access keys.
 */
#ifndef QBOBJ_TIVO_H
#define QBOBJ_TIVO_H

#include <qbobj/service.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Reads the schedule, the folders that it may use, and the devices that the TiVo bridge service sees.
 *
 * The devices come from the status file "/var/lib/tivobridge/status" below the handle's root; without the
 * file there are none. While the bridge is still looking for devices the call asks again every second, 15
 * times at most; it holds no lock that a writer needs, and sqlite3_interrupt() ends it.
 *
 * @param[in,out] o  clear it first. Without a stored schedule its fields are left. `TIVOfolder` is emptied
 *                   when it is in none of the folders of `DLNAfolderlist`; the devices are appended to
 *                   `TIVOhostsAcl`
 * @reads service_tivo, share, dlna_share_option
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or the wait was interrupted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getTIVOSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoOptions_t *o,
                                    qbobj_error_rec_t *err);

/**
 * Stores the schedule and the folder.
 *
 * The texts are stored as they are; hour, minute, days and folder are not checked.
 *
 * @param[in] o  `hour`, `minute`, `days` and `TIVOfolder`, all needed; the other fields are ignored
 * @writes service_tivo
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a text is missing, or a statement failed; the result is -1
 * @return 0, -1 or the error code
 */
QBOBJ_API int qbobj_setTIVOSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoOptions_t *o,
                                    qbobj_error_rec_t *err);

/**
 * Stores the media access key of a device, or removes it.
 *
 * @param[in] o  with the `status` "true" and a `key`, that is the device's key from now on; otherwise it
 *               has none
 * @writes tivo_mak
 * @error QBOBJ_ERROR_API_ARGS  no record or no `status`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, e.g. since the name is missing; the result is -1
 * @return 0, -1 or the error code
 */
QBOBJ_API int qbobj_setTIVOMak(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoMak_t *o, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
