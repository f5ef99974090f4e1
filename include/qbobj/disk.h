/**
 * @file disk.h
 * Operations on volumes, disks and disk enclosures; storage.h holds their records.
 *
 * The platform keeps the tables of volumes, disks, ports and enclosures. A disk's id is its device name. A
 * disk that was pulled stays in its table as not present. Texts that are not stored are read as null,
 * except where an operation says otherwise.
 */
#ifndef QBOBJ_DISK_H
#define QBOBJ_DISK_H

#include <qbobj/storage.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Operations: volumes ------------------------------------------------------------------------------- */

/**
 * Lists the volumes by name, without regard to case, and the RAID mode of the appliance.
 *
 * The pseudo-volume "USB" is not listed. Sizes are those of the platform's last look.
 *
 * @param[in,out] collection  the volumes are appended to its list; `SystemRaidMode` is set
 * @reads system_config, _volume
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getVolumeCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                        qbobj_VolumeCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Stores the sizes and the state of a volume.
 *
 * Everything but `VolumeName` and `RaidType` is stored as it is given, 0 and null too. A volume that does
 * not exist is nothing to do.
 *
 * @param[in] volume  the volume, by `VolumeId`
 * @writes _volume
 * @error QBOBJ_ERROR_API_ARGS  no volume
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_updateVolume(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Volume_t *volume,
                                 qbobj_error_rec_t *err);

/**
 * Deletes a volume and what depends on it.
 *
 * Its shares go first, as with qbobj_deleteShareOnVolume(). Time Machine is switched off when its area lies
 * on the volume. Whatever volume is deleted, every user's Time Machine quota is deleted, and that of
 * account 96 disabled. When the volume is the default for homes, the first volume left that is not "media"
 * becomes it, or the name "run" when there is none. A volume that does not exist is no error.
 *
 * @param[in] VolumeId  id of the volume
 * @reads  share, _volume, account_default
 * @writes user_acl, group_acl, host_acl, cifs_share_option, afp_share_option, nfs_share_option,
 *         ftp_share_option, http_share_option, zvol_share_option, cifs_dfs_option, service_http,
 *         snapshot_schedule, $snapshot, $snapshot_clones, $application_on_share, user_quota, group_quota,
 *         _user_quota_stat, _group_quota_stat, zfs_attr, _zfs_stat, backup, share, _volume, service_afp,
 *         $timemachine_quota, account_default
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_UNKNOWN       a statement failed on something that hangs on a share; the record then
 *                                  stays empty
 * @error QBOBJ_ERROR_DB_NOTEXISTS  a share's row was not deleted
 * @error QBOBJ_ERROR_SIGSEGV       the homes cannot be given another volume; the record then stays empty
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId,
                                 qbobj_error_rec_t *err);

/* ---- Operations: disks --------------------------------------------------------------------------------- */

/**
 * Lists the disks of controller 0 with its enclosure.
 *
 * As qbobj_getDiskCollectionForController() with controller 0.
 *
 * @param[in,out] collection  the disks are appended to its list; the enclosure's fields are set
 * @reads $disk_info, disk_port, _disk_health, _disk_enclosure, jbod_port
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskCollection_t *collection,
                                      qbobj_error_rec_t *err);

/**
 * Lists the disks of a controller by channel, with the controller's enclosure.
 *
 * Listed are disks that have both a slot and a reading in `_disk_health`, pulled ones too.
 * `ReplacedWithSpare` and `IsSignedByMaltrex` are not read. `DiskState` is "ONLINE" when none is stored. Of
 * the enclosure `EnclosureName`, `DiskEnclosurePort` and `SESDevice` are "" when they are not stored;
 * without an enclosure, or without a port for it, its fields stay as they are.
 *
 * @param[in,out] collection  the disks are appended to its list; the enclosure's fields are set
 * @param[in]     controller  number of the controller
 * @reads $disk_info, disk_port, _disk_health, _disk_enclosure, jbod_port
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskCollectionForController(qbdb_handle_t *qbdb, sqlite3 *db,
                                                   qbobj_DiskCollection_t *collection, int controller,
                                                   qbobj_error_rec_t *err);

/**
 * Reads one disk by its device name.
 *
 * Found are disks that have a slot, with or without readings. `PoolType`, `PoolState`, `PoolHostId` and
 * `DiskState` are not read. A disk that is not found leaves the record as it is, and is no error.
 *
 * @param[in,out] slot  the disk, by `DevName`; filled
 * @reads $disk_info, disk_port, _disk_health
 * @error QBOBJ_ERROR_API_ARGS  no record or no `DevName`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskByDevname(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Disk_t *slot,
                                     qbobj_error_rec_t *err);

/**
 * Records whether a spare has taken a disk's place.
 *
 * A disk that does not exist is nothing to do.
 *
 * @param[in] devname  device name of the disk
 * @param[in] flag     the mark, stored as it is given; 0/1
 * @writes $disk_info
 * @error QBOBJ_ERROR_API_ARGS  no name
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setDiskSpare(qbdb_handle_t *qbdb, sqlite3 *db, const char *devname, int flag,
                                 qbobj_error_rec_t *err);

/**
 * Brings the table of disks up to date and tells which were inserted or pulled since the last look.
 *
 * Inserted disks come first. `Pool` of an inserted disk is the volume of the absent disk that was in its
 * place before ("" when that disk had none), so that the new one can rejoin it; null where there was none,
 * and for pulled disks. `DiskId`, `Model`, `Serial` and `FirmwareVersion` are "" when they are not stored.
 * A look-up of an enclosure's name or of a slot that fails leaves its field null and its error in the
 * record, with a result of 0; failures to compare are only logged, and leave disks out.
 *
 * @param[out] diff  receives the chain of differences; null when there are none
 * @reads  $disk_info, _disk_enclosure, disk_port
 * @writes $disk_info, _disk_enclosure, disk_port, jbod_port, _disk_health
 * @error QBOBJ_ERROR_API_ARGS  no `diff`
 * @error QBOBJ_ERROR_DB_MISC   in the record alone: an enclosure's name or a slot cannot be read
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskDiff(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskDiff_t **diff,
                                qbobj_error_rec_t *err);

/**
 * Finds the absent disk that was in the place of a difference.
 *
 * Of several the first that belongs to a volume is taken, or else the last. `disk` is filled as by
 * qbobj_getDiskByDevname(), and stays as it is when there is none.
 *
 * @param[in]  diff  the place, by `Controller` and `Channel`
 * @param[out] disk  filled
 * @reads $disk_info, disk_port, _disk_health
 * @error QBOBJ_ERROR_API_ARGS  no `diff` or no `disk`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskByDiskDiff(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskDiff_t *diff,
                                      qbobj_Disk_t *disk, qbobj_error_rec_t *err);

/**
 * Forgets a disk.
 *
 * A disk that does not exist is nothing to do; one that is in its slot comes back with the next look.
 *
 * @param[in] disk  the disk, by `DevName`
 * @writes $disk_info
 * @error QBOBJ_ERROR_API_ARGS  no record or no `DevName`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteDiskByDevname(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Disk_t *disk,
                                        qbobj_error_rec_t *err);

/* ---- Operations: enclosures ---------------------------------------------------------------------------- */

/**
 * Lists the enclosures, without their disks.
 *
 * `DiskEnclosurePort`, `SESDevice` and `DeadSlots` are not read.
 *
 * @param[in,out] collection  the enclosures are appended to its list
 * @reads _disk_enclosure
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskEnclosureCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                               qbobj_DiskEnclosureCollection_t *collection,
                                               qbobj_error_rec_t *err);

/**
 * Reads the label of the port that an enclosure is connected to.
 *
 * @param[in]  DiskEnclosureId   number of the enclosure's controller
 * @param[out] DiskEnclosrePort  receives the label; null when there is none
 * @reads jbod_port
 * @error QBOBJ_ERROR_API_ARGS  no `DiskEnclosrePort`
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskEnclosurePort(qbdb_handle_t *qbdb, sqlite3 *db, int DiskEnclosureId,
                                         char **DiskEnclosrePort, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
