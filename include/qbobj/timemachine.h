/**
 * @file timemachine.h
 * The appliance-wide Time Machine area, the login of the vault, and the run record of the management
 * daemon.
 *
 * The area is served over AFP and reached with the system account "Qubrix" (id 96), whose password unlocks
 * it. The vault is a backup service on the net; signing in to it is not part of this library.
 */
#ifndef QBOBJ_TIMEMACHINE_H
#define QBOBJ_TIMEMACHINE_H

#include <qbobj/service.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Time Machine -------------------------------------------------------------------------------------- */

/**
 * Reads the Time Machine area.
 *
 * `Password` is "" while the account has none and masked otherwise, also when it is locked.
 *
 * @param[out] o  filled but for `HomeEnabled`
 * @reads service_afp, _volume, $timemachine_quota, account_default, $user
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  the area has no quota entry, or its volume is not there
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getTimemachine(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Timemachine_t *o,
                                   qbobj_error_rec_t *err);

/**
 * Switches the Time Machine area on with its settings, or off.
 *
 * Switching on also switches AFP on, has both announced, and puts the area on the home volume. Switching
 * off locks the password, so that the same one is there when the area is switched on again; AFP goes on
 * serving Time Machine while other accounts have areas of their own.
 *
 * @param[in] o  `Enabled`; to switch on also `CapacityMB` and `Password` (null or masked: the stored one)
 * @reads  $timemachine_quota, account_default
 * @writes $user, service_afp, service_avahi, $timemachine_quota
 * @error QBOBJ_ERROR_API_ARGS  no record, or a password that cannot be hashed
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setTimemachine(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Timemachine_t *o,
                                   qbobj_error_rec_t *err);

/**
 * Switches the Time Machine area on or off and leaves its settings.
 *
 * @param[in] enable  0 or not 0
 * @writes $user, service_afp, service_avahi
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setTimemachineEnable(qbdb_handle_t *qbdb, sqlite3 *db, int enable,
                                         qbobj_error_rec_t *err);

/* ---- Vault --------------------------------------------------------------------------------------------- */

/**
 * Reads the login of the vault.
 *
 * @param[out] o  filled but for `Action` and `UserPassword`; `Volume` is null unless `Enabled` is "1",
 *                `UserName` and `DefaultJob` are null without an account
 * @reads service_misc, service_vault
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o,
                                     qbobj_error_rec_t *err);

/**
 * Stores the account of the vault, or forgets it.
 *
 * @param[in] o  with the `Action` "login" or "registration" the account replaces the stored one, and
 *               `UserName`, `UserPassword` and `DefaultJob` are needed; any other word, "logout" among
 *               them, forgets it
 * @writes service_vault
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @error QBOBJ_ERROR_API_ARGS  no record or no `Action`; a `UserName` that is no e-mail address; no
 *                              `UserPassword` or `DefaultJob`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o,
                                     qbobj_error_rec_t *err);

/**
 * Forgets the account of the vault.
 *
 * @param[in] o  only its `Action` is used, for the log
 * @writes service_vault
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_cleanVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o,
                                       qbobj_error_rec_t *err);

/* ---- Management daemon --------------------------------------------------------------------------------- */

/**
 * Reads when the management daemon last started and stopped, and its version.
 *
 * @param[out] LastStarted  receives Unix seconds, 0 before the first start; may be null
 * @param[out] LastStopped  receives Unix seconds, 0 before the first stop; may be null
 * @param[out] Version      receives the version, "1.0.0" as long as nothing is recorded; may be null
 * @reads $qubrixd
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getQubrixdInfo(qbdb_handle_t *qbdb, sqlite3 *db, int *LastStarted, int *LastStopped,
                                   char **Version, qbobj_error_rec_t *err);

/**
 * Records when the management daemon started or stopped, and its version.
 *
 * @param[in] LastStarted  Unix seconds; a negative number leaves what is recorded
 * @param[in] LastStopped  Unix seconds; a negative number leaves what is recorded
 * @param[in] Version      the version; null leaves what is recorded
 * @writes $qubrixd
 * @error QBOBJ_ERROR_API_ARGS  a version of about 450 bytes or more, or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setQubrixdInfo(qbdb_handle_t *qbdb, sqlite3 *db, int LastStarted, int LastStopped,
                                   const char *Version, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
