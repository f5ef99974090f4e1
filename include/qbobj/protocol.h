/**
 * @file protocol.h
 * The settings of the services: read, stored, and switched. Their records stand in service.h.
 *
 * A service is named by its identifier, one of the `protocol_id_` words. Each has one row of settings in a table of its
 * own, `service_<identifier>`, except for "bonjour" (`service_avahi`), and for "anti-virus" and "skyport", which are the
 * entries ANTIVIRUS and SKYPORT of `service_misc`. The rows come with the database; storing never makes one.
 */
#ifndef QBOBJ_PROTOCOL_H
#define QBOBJ_PROTOCOL_H

#include <qbobj/service.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Read ---------------------------------------------------------------------------------------------- */

/**
 * Lists the services with their settings.
 *
 * Sixteen records, always in this order: "cifs", "afp", "nfs", "ftp", "daap", "snmp", "ssh", "replicate",
 * "smartnetwork", "upnpd", "rsync", "dlna", "http", "https", "anti-virus", "skyport". "bonjour" is not among them: see
 * qbobj_getProtocol(). The platform brings the row of "replicate" up to date first, where it can.
 *
 * `resource_id`, `ProtocolId` and `ProtocolName` are the identifier, and the record carries the options of its service.
 * Without its row a service is off and has no options; "http", "https", "anti-virus" and "skyport" have then no
 * `ProtocolId` and `ProtocolName` either. A text that is not stored is null, but for `NfsV4Domain`, which is "".
 *
 * What is not shown as it is stored: "https" is always on; "ssh" is on when its user interface switch is, and its port
 * is 22 when none above 0 is stored; the word "default" of SNMP's `AllowHost` is ""; the password of "daap" is masked
 * when there is one, that of "replicate" is never read.
 *
 * @param[in,out] collection  the records are appended to its list. After a failure it holds those before, and of the
 *                            service that failed the `resource_id` alone
 * @reads  service_cifs, service_afp, service_nfs, service_ftp, service_daap, service_snmp, service_ssh,
 *         service_replicate, service_smartnetwork, service_upnpd, service_rsync, service_dlna, service_http,
 *         service_https, service_misc
 * @writes service_replicate
 * @error QBOBJ_ERROR_API_ARGS  `collection` is null
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getProtocolCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                          qbobj_ProtocolCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Reads the settings of one service.
 *
 * As qbobj_getProtocolCollection() lists them, and of "bonjour".
 *
 * @param[in]  ProtocolName  the identifier, letter by letter; every one but "upnpd", which only the collection shows
 * @param[out] protocol      receives the record; left alone by a failure
 * @reads  service_cifs, service_afp, service_nfs, service_ftp, service_daap, service_snmp, service_ssh,
 *         service_replicate, service_smartnetwork, service_rsync, service_dlna, service_avahi, service_http,
 *         service_https, service_misc
 * @writes service_replicate
 * @error QBOBJ_ERROR_API_ARGS  `protocol` is null, or the identifier is unknown
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getProtocol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ProtocolName,
                                qbobj_Protocol_t **protocol, qbobj_error_rec_t *err);

/**
 * Reads the settings of "snmp" while that service is on.
 *
 * @param[out] snmp_opts  receives the record; left alone while the service is off or has no row, so set it to null
 *                        before the call
 * @reads service_snmp
 * @error QBOBJ_ERROR_API_ARGS  `snmp_opts` is null
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSnmpOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SnmpOptions_t **snmp_opts,
                                   qbobj_error_rec_t *err);

/**
 * Reads which protocols let users reach their home.
 *
 * @param[out] opts  filled; a service without its row counts as 0
 * @reads service_cifs, service_nfs, service_ftp, service_dlna, service_afp
 * @error QBOBJ_ERROR_API_ARGS  `opts` is null
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getHomeFolderOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HomeFolderOptions_t *opts,
                                         qbobj_error_rec_t *err);

/* ---- Written ------------------------------------------------------------------------------------------- */

/**
 * Stores the settings of services and tells which of them changed.
 *
 * A record is that of a service when any of `resource_id`, `ProtocolId` and `ProtocolName` is its identifier; one that
 * names no service is passed over. Whatever a record carries is stored: "ftp", "nfs", "daap", "snmp", "ssh",
 * "replicate", "dlna", "http", "https" and "bonjour" need their options; those of "cifs" and the homes of "ftp" are not
 * stored, nor are the switch of "https", the directory of "daap" and the password of "replicate". A masked password of
 * "daap" leaves the stored one as it is. "bonjour" announces nothing while it is off. "smartnetwork" switches the
 * entry APPSPRITE along.
 *
 * When the platform cannot keep track of changes, the call logs a warning and returns 0 with nothing stored, or, when
 * that shows only afterwards, with everything stored and nothing marked.
 *
 * @param[in,out] collection  the records; `Changed` becomes 1 where the stored settings became others, and stays as it
 *                            is elsewhere
 * @reads  service_ftp, service_https, service_misc
 * @writes service_cifs, service_afp, service_nfs, service_ftp, service_daap, service_snmp, service_ssh,
 *         service_replicate, service_smartnetwork, service_upnpd, service_rsync, service_dlna, service_http,
 *         service_https, service_avahi, service_misc
 * @error QBOBJ_ERROR_API_ARGS                          the options of a service, `MasqueradeAddress`, `AllowHost`,
 *                                                      `TrapDestination` or a text of "daap" is missing, or a text of
 *                                                      "daap" is too long for its update
 * @error QBOBJ_ERROR_UI__FTP_PORT_INVALID              the port is not in 1 to 65535
 * @error QBOBJ_ERROR_UI__FTP_PORT_USED                 another program has the port; the stored one always passes
 * @error QBOBJ_ERROR_UI__FTP_PASSIVE_RANGE             not 32768 <= `PassiveRangeMin` <= `PassiveRangeMax` <= 65535
 * @error QBOBJ_ERROR_UI__FTP_AUTH_MODE                 `AuthMode` is neither "anonymous" nor "user"
 * @error QBOBJ_ERROR_UI__FTP_MASQUERADE                `MasqueradeAddress` is no host while it is to be announced; ""
 *                                                      and "0" are none
 * @error QBOBJ_ERROR_UI__FTP_BANDWIDTH                 a rate is not in 0 to 99999
 * @error QBOBJ_ERROR_UI__SNMP_BAD_ALLOWHOST            `AllowHost` is not "" nor a list of hosts and networks
 * @error QBOBJ_ERROR_UI__SNMP_BAD_COMMUNITY            `Community` is no community name
 * @error QBOBJ_ERROR_UI__SNMP_BAD_TRAPDESTINATION      `TrapDestination` is not "" nor a list of addresses
 * @error QBOBJ_ERROR_UI__SSH_PORT_INVALID              the port is not in 1 to 65535
 * @error QBOBJ_ERROR_UI__HTTPS_CERTIFICATE_KEY_HOST    `SslKeyHost` is no host
 * @error QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT         the port is not 0 and not in 1024 to 65535
 * @error QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT_IN_USE  something listens on the port; the stored one always passes
 * @error QBOBJ_ERROR_DB_MISC                           a statement failed
 * @error QBOBJ_ERROR_SIGSEGV                           the platform could not end keeping track; the error record
 *                                                      stays empty
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setProtocolCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                          qbobj_ProtocolCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Switches one service on or off.
 *
 * "smartnetwork" switches the entry APPSPRITE along. Of "ssh" the switch that the user interface shows stays as it is.
 *
 * @param[in] protocol  the identifier. It names the table that is written, so that one without a table of its own name,
 *                      such as "bonjour", and "https", which is always on, fail at the statement
 * @param[in] enable    0: off; all else: on
 * @writes service_cifs, service_afp, service_nfs, service_ftp, service_daap, service_snmp, service_ssh,
 *         service_replicate, service_smartnetwork, service_upnpd, service_rsync, service_dlna, service_http,
 *         service_misc
 * @error QBOBJ_ERROR_API_ARGS  `protocol` is null
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setProtocolEnable(qbdb_handle_t *qbdb, sqlite3 *db, const char *protocol, int enable,
                                      qbobj_error_rec_t *err);

/**
 * Stores which protocols let users reach their home.
 *
 * @param[in] opts  all five are stored
 * @writes service_cifs, service_nfs, service_ftp, service_dlna, service_afp
 * @error QBOBJ_ERROR_API_ARGS  `opts` is null
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setHomeFolderOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HomeFolderOptions_t *opts,
                                         qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
