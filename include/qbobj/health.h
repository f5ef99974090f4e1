/**
 * @file health.h
 * Operations on the latest readings of disks, enclosures and UPS devices; storage.h holds their records.
 *
 * Texts that are not stored are read as null, except where an operation says otherwise.
 */
#ifndef QBOBJ_HEALTH_H
#define QBOBJ_HEALTH_H

#include <qbobj/storage.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Operations: disks --------------------------------------------------------------------------------- */

/**
 * Lists the readings of all disks.
 *
 * `ZpoolState` is "UNKNOWN" when none is stored. Readings of disks that are forgotten are not listed.
 *
 * @param[in,out] collection  the readings are appended to its list
 * @reads _disk_health, $disk_info
 * @error QBOBJ_ERROR_API_ARGS      no collection
 * @error QBOBJ_ERROR_DB_MISC       the statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  there are no readings
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDiskHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                            qbobj_DiskHealthCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Stores the readings of disks, each in the place of the disk's last ones.
 *
 * @param[in] health  chain of readings, by `DiskId`; `Controller` and `Channel` are not stored. Null is
 *                    nothing to do
 * @writes _disk_health
 * @error QBOBJ_ERROR_API_ARGS  a statement failed, e.g. for want of a `DiskId`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setDiskHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_DiskHealth_t *health,
                                  qbobj_error_rec_t *err);

/* ---- Operations: enclosures ---------------------------------------------------------------------------- */

/**
 * Lists the sensors of one enclosure with their readings, by name and label.
 *
 * A sensor that has no reading yet is listed with a null `Name` and `DevId`.
 *
 * @param[in,out] enc_health  the enclosure, by `Controller`; the sensors are appended to its list
 * @reads enclosure_health_spec, _enclosure_health
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       the statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  the enclosure has no sensors
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getEnclosureHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_EnclosureHealth_t *enc_health,
                                       qbobj_error_rec_t *err);

/**
 * Lists the enclosures, each with its sensors as qbobj_getEnclosureHealth() lists them.
 *
 * Listed are enclosures that are connected to a port; one without sensors has an empty list.
 *
 * @param[in,out] collection  the enclosures are appended to its list
 * @reads _disk_enclosure, jbod_port, enclosure_health_spec, _enclosure_health
 * @error QBOBJ_ERROR_API_ARGS      no collection
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  there is no enclosure
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getEnclosureHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                 qbobj_EnclosureHealthCollection_t *collection,
                                                 qbobj_error_rec_t *err);

/**
 * Stores readings of an enclosure's sensors; the three readings before stay as its history.
 *
 * The first reading of a sensor is its history too. The value -481 for fan "1" of controller 0 says that
 * the fan is not there, and removes its readings.
 *
 * @param[in] enc_health  the enclosure, by `Controller`, with `Name`, `DevId` and `Value` of each sensor
 * @writes _enclosure_health
 * @error QBOBJ_ERROR_API_ARGS  no record, or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setEnclosureHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_EnclosureHealth_t *enc_health,
                                       qbobj_error_rec_t *err);

/**
 * Stores the sensor readings of a file, or where there is none those of healthy sensors.
 *
 * Without a file every sensor that has no reading gets one in the middle of its range.
 *
 * A line of the file is a controller, a sensor's name and number, and a value, separated by commas:
 * "0,Fan,1,4200". Names and numbers have up to 31 characters; what follows the value is passed over. The
 * first line that is not so ends the file. Readings are stored as by qbobj_setEnclosureHealth().
 *
 * @param[in] path  the file, below the handle's root when it is absolute; null, or what is no readable
 *                  file, is none
 * @reads  enclosure_health_spec
 * @writes _enclosure_health
 * @error QBOBJ_ERROR_API_ARGS  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setEnclosureHealthForTest(qbdb_handle_t *qbdb, sqlite3 *db, const char *path,
                                              qbobj_error_rec_t *err);

/* ---- Operations: UPS devices --------------------------------------------------------------------------- */

/**
 * Lists the UPS devices that are set up, with their readings as they are shown.
 *
 * A status or model that is not known is "?"; blanks in a status are underscores. The battery's values end
 * in their units: " %", " min" and " V", behind "?" when they are not known.
 *
 * @param[in,out] collection  the devices are appended to its list
 * @reads _ups_config, _ups_health
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUpsHealthCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                           qbobj_UpsHealthCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Stores the readings of UPS devices, each in the place of the device's last ones.
 *
 * @param[in] ups_health  chain of readings, by `UpsName` and `ServerHost`; `UpsModel` is not stored, the
 *                        battery's values go without their units. Null is nothing to do
 * @writes _ups_health
 * @error QBOBJ_ERROR_API_ARGS  a statement failed, e.g. for want of a name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setUpsHealth(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsHealth_t *ups_health,
                                 qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
