/**
 * @file spare.h
 * Operations on the spare disks and on the timed jobs of volumes; storage.h holds their records.
 */
#ifndef QBOBJ_SPARE_H
#define QBOBJ_SPARE_H

#include <qbobj/storage.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Operations: spares -------------------------------------------------------------------------------- */

/**
 * Lists the disks that are held as spares for the volumes.
 *
 * A spare that is not among the disks is not listed. `SlotName`, `Temperature`, `ATAError`,
 * `DiskEnclosureId`, `DiskState`, `ReplacedWithSpare` and `IsSignedByMaltrex` are not read; texts that are
 * not stored are read as null.
 *
 * @param[in,out] collection  the disks are appended to its list
 * @reads $disk_info, $volume_spares
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getVolumeSparesCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                              qbobj_DiskCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Makes a disk a spare.
 *
 * The disk needs not be there. A disk is a spare once: a second entry gets QBOBJ_ERROR_DB_MISC.
 *
 * @param[in] DevName  device name of the disk
 * @writes $volume_spares
 * @error QBOBJ_ERROR_DB_MISC  the statement failed, as it does without a name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addVolumeSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *DevName,
                                   qbobj_error_rec_t *err);

/**
 * Makes a disk no spare any more.
 *
 * A disk that is no spare is nothing to do.
 *
 * @param[in] DevName  device name of the disk
 * @writes $volume_spares
 * @error QBOBJ_ERROR_DB_MISC  the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteVolumeSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *DevName,
                                      qbobj_error_rec_t *err);

/* ---- Operations: schedules of volumes ------------------------------------------------------------------ */

/**
 * Lists the timed jobs of every volume.
 *
 * @param[in,out] collection  the jobs are appended to its list
 * @reads volume_schedule
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getVolumeScheduleCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                qbobj_VolumeScheduleCollection_t *collection,
                                                qbobj_error_rec_t *err);

/**
 * Adds a timed job.
 *
 * The volume needs not exist. One job is added, whatever is chained to it. An id is taken once: a second
 * entry gets QBOBJ_ERROR_DB_MISC. The job with the id 0 can be added and listed, and deleted only with its
 * volume's jobs.
 *
 * @param[in] volumeschedule  the job
 * @writes volume_schedule
 * @error QBOBJ_ERROR_DB_MISC  no job, no `Interval` or an id that is taken, where the record stays empty;
 *                             or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_VolumeSchedule_t *volumeschedule, qbobj_error_rec_t *err);

/**
 * Changes a timed job.
 *
 * Everything but the volume is stored as it is given, 0 and null too.
 *
 * @param[in] volumeschedule  the job, by `JobID`
 * @writes volume_schedule
 * @error QBOBJ_ERROR_DB_MISC  no job, no `Interval` or no such id, where the record stays empty; or a
 *                             statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_updateVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db,
                                         qbobj_VolumeSchedule_t *volumeschedule, qbobj_error_rec_t *err);

/**
 * Deletes a timed job, or all those of a volume.
 *
 * @param[in] volumeschedule  the job, by `JobID`; -1 and a `VolumeName` for all jobs of that volume, of which
 *                            there may be none
 * @writes volume_schedule
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   no such id, where the record stays empty; or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteVolumeSchedule(qbdb_handle_t *qbdb, sqlite3 *db,
                                         qbobj_VolumeSchedule_t *volumeschedule, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
