/**
 * @file ups.h
 * The UPS devices that the appliance watches: attached to it ("local"), on another server ("remote"), or
 * asked over SNMP ("snmp").
 *
 * A device's key is its name, "@" and its host: "localhost", or the address of the remote server. What a
 * device reports of its health stands in storage.h.
 */
#ifndef QBOBJ_UPS_H
#define QBOBJ_UPS_H

#include <qbobj/service.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Reads every UPS device.
 *
 * @param[in,out] collection  receives the devices. `UpsStatus` is "?" before the first report;
 *                            `Share_enabled` and `List1` are filled for local devices; the battery's values
 *                            are not filled. `RemotePassword` and `SnmpCommunity` are as stored, not masked
 * @reads _ups_config, _ups_health, service_upsd
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUpsConfigCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                           qbobj_UpsConfigCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Reads one UPS device.
 *
 * @param[in]  NameAtHost  its key
 * @param[out] ups         receives the device, as in the collection but without `Share_enabled` and
 *                         `List1`; null when there is none
 * @reads _ups_config, _ups_health
 * @error QBOBJ_ERROR_API_ARGS  nowhere to put the device; without a message
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getUpsConfigByNameAtHost(qbdb_handle_t *qbdb, sqlite3 *db, const char *NameAtHost,
                                             qbobj_UpsConfig_t **ups, qbobj_error_rec_t *err);

/**
 * Adds UPS devices; they are watched at once.
 *
 * A local device also stores `Share_enabled` and `List1`, which are one setting of the appliance.
 *
 * @param[in,out] ups  the devices, each with `Name` and `Type`; "remote" and "snmp" need `Port`, "remote"
 *                     also `RemoteUserName` and `RemotePassword`, "snmp" also `SnmpCommunity`.
 *                     `resource_id` receives the key
 * @reads  _ups_config
 * @writes _ups_config, service_upsd
 * @error QBOBJ_ERROR_API_ARGS                        no record (without a message), no name, an unknown
 *                                                    type, a port that is no IPv4 address; unknown tables
 *                                                    of "snmp" or no valid community; no valid login of
 *                                                    "remote"
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG               a name of more than 15 bytes
 * @error QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR  a name with other than letters and digits, or that
 *                                                    begins with a digit
 * @error QBOBJ_ERROR_DB_MISC                         a statement failed, e.g. since a port is missing
 * @error QBOBJ_ERROR_UI__TOO_MANY_UPS                six devices are watched already
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups,
                                 qbobj_error_rec_t *err);

/**
 * Changes the settings of a UPS device.
 *
 * The settings are written to every stored device, their names included: use it while there is a single
 * one. Every setting of the type is written, so read the record first and edit it. A remote device cannot
 * be changed; remove it and add it again.
 *
 * @param[in] ups  the device, found by `resource_id`; `Type` must be the stored one. `Enabled` is used for
 *                 a local device; the others become watched
 * @reads  _ups_config
 * @writes _ups_config, service_upsd
 * @error QBOBJ_ERROR_API_ARGS                        no record (without a message), no key or an unknown
 *                                                    one, another type, no name, or settings that adding
 *                                                    would refuse
 * @error QBOBJ_ERROR_DB_MISC                         a statement failed; always for a remote device
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG               as for adding
 * @error QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR  as for adding
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups,
                                 qbobj_error_rec_t *err);

/**
 * Stores what a UPS device reports of itself.
 *
 * @param[in] ups  the device, found by `resource_id`: `UpsModel`, `UpsMfr`, `UpsMfrDate`, `UpsSerial`, and
 *                 for a remote device `ShutdownThreshold`, which is its server's
 * @reads  _ups_config
 * @writes _ups_config
 * @error QBOBJ_ERROR_API_ARGS  no record (without a message), no key or an unknown one
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setUpsInfo(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups,
                               qbobj_error_rec_t *err);

/**
 * Removes UPS devices; with a local one, sharing it ends.
 *
 * @param[in] ups  the devices, found by `resource_id`
 * @reads  _ups_config
 * @writes _ups_config, service_upsd
 * @error QBOBJ_ERROR_API_ARGS  no record (without a message), no key or an unknown one
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups,
                                    qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
