/**
 * @file snapshot.h
 * Operations on snapshots of shares and of home folders, and on the clones made from them; storage.h holds
 * their records.
 *
 * The storage side takes snapshots and removes them; these operations record, list and forget them.
 */
#ifndef QBOBJ_SNAPSHOT_H
#define QBOBJ_SNAPSHOT_H

#include <qbobj/storage.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Operations: snapshots of shares ------------------------------------------------------------------- */

/**
 * Lists snapshots of shares, a page at a time.
 *
 * Snapshots of a dataset that is no share are not listed. `Path` is "" when the platform knows of none.
 *
 * @param[in,out] collection  the snapshots are appended to its list
 * @param[in]     ShareName   only those of this share; null for every share
 * @param[in]     VolumeName  only those of this volume; null for every volume
 * @param[in]     q_type      only those of this type, 1 to 3; any other number for all three
 * @param[in]     q_from      made then or later; Unix seconds
 * @param[in]     q_to        made then or earlier; Unix seconds
 * @param[in]     OrderBy     column of `$snapshot` to sort by; null for "created_on"
 * @param[in]     q_order     0 ascending, anything else descending
 * @param[in]     q_limit     how many at most; 0 for all
 * @param[in]     q_offset    how many to leave out at the beginning
 * @reads $snapshot, share, _volume
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed, as it does when `OrderBy` is no column
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSnapshotCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                          qbobj_SnapshotCollection_t *collection, const char *ShareName,
                                          const char *VolumeName, int q_type, int q_from, int q_to,
                                          const char *OrderBy, int q_order, int q_limit, int q_offset,
                                          qbobj_error_rec_t *err);

/**
 * Counts the snapshots that qbobj_getSnapshotCollection() lists without a limit.
 *
 * @param[out] count       the number
 * @param[in]  ShareName   only those of this share; null for every share
 * @param[in]  VolumeName  only those of this volume; null for every volume
 * @param[in]  q_type      only those of this type, 1 to 3; any other number for all three
 * @param[in]  q_from      made then or later; Unix seconds
 * @param[in]  q_to        made then or earlier; Unix seconds
 * @reads $snapshot, share, _volume
 * @error QBOBJ_ERROR_API_ARGS  no `count`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSnapshotCollectionCount(qbdb_handle_t *qbdb, sqlite3 *db, int *count,
                                               const char *ShareName, const char *VolumeName, int q_type,
                                               int q_from, int q_to, qbobj_error_rec_t *err);

/**
 * Records a snapshot of a share.
 *
 * One snapshot is recorded, whatever is chained to it. A share has a snapshot's name once.
 *
 * @param[in] snapshot  the snapshot
 * @reads  share, _volume
 * @writes $snapshot
 * @error QBOBJ_ERROR_API_ARGS  no snapshot, no such share or volume, the share is not on the volume, the
 *                              snapshot has no name, or the share has one of that name
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Snapshot_t *snapshot,
                                qbobj_error_rec_t *err);

/**
 * Forgets snapshots of a share, or of every dataset of a volume.
 *
 * The datasets of a volume are those whose name begins with the volume's name and a slash, compared as LIKE
 * does. Of several snapshots of the name, any counts for `DeleteNewer` 2.
 *
 * @param[in] VolumeName    the volume
 * @param[in] ShareName     a share on it; null for the whole volume
 * @param[in] DeleteNewer   1 those newer than `CreatedOn`, 2 those newer than the named one, 3 those made at
 *                          `CreatedOn`; any other number: the named one, or all when none is named
 * @param[in] SnapshotName  name of a snapshot
 * @param[in] CreatedOn     a time; Unix seconds
 * @reads  _volume, share
 * @writes $snapshot
 * @error QBOBJ_ERROR_API_ARGS     no such volume or share, or the share is not on the volume
 * @error QBOBJ_ERROR_DB_MISC      a statement failed, or `DeleteNewer` 2 comes without a name
 * @error QBOBJ_ERROR_DB_NOTEXISTS no snapshot was deleted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName,
                                   const char *ShareName, int DeleteNewer, const char *SnapshotName,
                                   int CreatedOn, qbobj_error_rec_t *err);

/* ---- Operations: snapshots of home folders ------------------------------------------------------------- */

/**
 * Lists snapshots of home folders, a page at a time.
 *
 * Snapshots whose user is gone are not listed. `Path` is "" when the platform knows of none.
 *
 * @param[in,out] collection  the snapshots are appended to its list
 * @param[in]     UserName    only those of this user; null for every user
 * @param[in]     HomeDir     only those of the users whose home this is now; null for every home
 * @param[in]     q_type      only those of this type, 1 to 3; any other number for all three
 * @param[in]     q_from      made then or later; Unix seconds
 * @param[in]     q_to        made then or earlier; Unix seconds
 * @param[in]     OrderBy     column of `$home_folder_snapshot` to sort by; null for "created_on"
 * @param[in]     q_order     0 ascending, anything else descending
 * @param[in]     q_limit     how many at most; 0 for all
 * @param[in]     q_offset    how many to leave out at the beginning
 * @reads $home_folder_snapshot, $user
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed, as it does when `OrderBy` is no column
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getHfSnapshotCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                            qbobj_HfSnapshotCollection_t *collection, const char *UserName,
                                            const char *HomeDir, int q_type, int q_from, int q_to,
                                            const char *OrderBy, int q_order, int q_limit, int q_offset,
                                            qbobj_error_rec_t *err);

/**
 * Counts the snapshots that qbobj_getHfSnapshotCollection() lists without a limit.
 *
 * @param[out] count     the number
 * @param[in]  UserName  only those of this user; null for every user
 * @param[in]  HomeDir   only those of the users whose home this is now; null for every home
 * @param[in]  q_type    only those of this type, 1 to 3; any other number for all three
 * @param[in]  q_from    made then or later; Unix seconds
 * @param[in]  q_to      made then or earlier; Unix seconds
 * @reads $home_folder_snapshot, $user
 * @error QBOBJ_ERROR_API_ARGS  no `count`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getHfSnapshotCollectionCount(qbdb_handle_t *qbdb, sqlite3 *db, int *count,
                                                 const char *UserName, const char *HomeDir, int q_type,
                                                 int q_from, int q_to, qbobj_error_rec_t *err);

/**
 * Records a snapshot of a home folder.
 *
 * One snapshot is recorded, whatever is chained to it. `HomeDir` is stored as it is given. A snapshot may be
 * recorded more than once.
 *
 * @param[in] snapshot  the snapshot
 * @reads  service_cifs, $user
 * @writes $home_folder_snapshot
 * @error QBOBJ_ERROR_API_ARGS  no snapshot, no such user, or the snapshot has no name
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addHfSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HfSnapshot_t *snapshot,
                                  qbobj_error_rec_t *err);

/**
 * Forgets snapshots of a user's home folder.
 *
 * Those of the folder that is the user's home now are meant.
 *
 * @param[in] UserName      the user
 * @param[in] HomeDir       not used
 * @param[in] DeleteNewer   as for qbobj_deleteSnapshot()
 * @param[in] SnapshotName  name of a snapshot
 * @param[in] CreatedOn     a time; Unix seconds
 * @reads  service_cifs, $user
 * @writes $home_folder_snapshot
 * @error QBOBJ_ERROR_API_ARGS     no such user
 * @error QBOBJ_ERROR_DB_MISC      a statement failed, or `DeleteNewer` 2 comes without a name
 * @error QBOBJ_ERROR_DB_NOTEXISTS no snapshot was deleted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteHfSnapshot(qbdb_handle_t *qbdb, sqlite3 *db, const char *UserName,
                                     const char *HomeDir, int DeleteNewer, const char *SnapshotName,
                                     int CreatedOn, qbobj_error_rec_t *err);

/**
 * Reads when the snapshots of home folders are taken.
 *
 * @param[out] schedule  the schedule; null when there is none
 * @reads $home_folder_snapshot_schedule
 * @error QBOBJ_ERROR_API_ARGS  no `schedule`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t **schedule,
                                          qbobj_error_rec_t *err);

/**
 * Stores when the snapshots of home folders are taken, in the place of what was stored.
 *
 * @param[in] schedule  the schedule; everything is stored as it is given
 * @writes $home_folder_snapshot_schedule
 * @error QBOBJ_ERROR_API_ARGS  no schedule
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t *schedule,
                                          qbobj_error_rec_t *err);

/**
 * Changes when the snapshots of home folders are taken.
 *
 * Where none is stored, every hour is changed. Numbers are always stored, texts where they are given.
 *
 * @param[in] schedule  the changes
 * @writes $home_folder_snapshot_schedule
 * @error QBOBJ_ERROR_API_ARGS  no schedule, or its texts are too long for one update
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyHfSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Schedule_t *schedule,
                                             qbobj_error_rec_t *err);

/* ---- Operations: clones -------------------------------------------------------------------------------- */

/**
 * Lists the shares that were made from snapshots.
 *
 * @param[in]     ParentSnapshotName       only those made from snapshots of this name; null for every one
 * @param[in]     ParentShareName          only those made from this share; null for every one
 * @param[in,out] SnapshotCloneCollection  the clones are appended to its list
 * @reads $snapshot_clones
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSnapshotClones(qbdb_handle_t *qbdb, sqlite3 *db, const char *ParentSnapshotName,
                                      const char *ParentShareName,
                                      qbobj_SnapshotCloneCollection_t *SnapshotCloneCollection,
                                      qbobj_error_rec_t *err);

/**
 * Records that a share was made from a snapshot.
 *
 * None of the names needs to exist. A share is recorded once: a second entry gets QBOBJ_ERROR_DB_MISC.
 *
 * @param[in] ClonedShareName     the share that was made
 * @param[in] ParentSnapshotName  the snapshot
 * @param[in] ParentShareName     the share that was snapshotted
 * @writes $snapshot_clones
 * @error QBOBJ_ERROR_DB_MISC  the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addSnapshotClone(qbdb_handle_t *qbdb, sqlite3 *db, const char *ClonedShareName,
                                     const char *ParentSnapshotName, const char *ParentShareName,
                                     qbobj_error_rec_t *err);

/**
 * Forgets that shares were made from snapshots.
 *
 * Forgotten are those made from the snapshot of the share when both parents are given, else the clone, else
 * those made from the parent share. A snapshot's name alone forgets none. That there is nothing to forget is
 * no error.
 *
 * @param[in] ClonedShareName     the share that was made
 * @param[in] ParentSnapshotName  the snapshot
 * @param[in] ParentShareName     the share that was snapshotted
 * @writes $snapshot_clones
 * @error QBOBJ_ERROR_API_ARGS  no name at all
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteSnapshotClone(qbdb_handle_t *qbdb, sqlite3 *db, const char *ClonedShareName,
                                        const char *ParentSnapshotName, const char *ParentShareName,
                                        qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
