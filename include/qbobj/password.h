/**
 * @file password.h
 * Passwords, and the defaults of new accounts.
 */
#ifndef QBOBJ_PASSWORD_H
#define QBOBJ_PASSWORD_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** The administrator's password and the question that recovers it. */
struct qbobj_AdminPassword {
    const char *Password; /**< plain on a write; always masked on a read. @required @secret */
    const char *Question; /**< recovery question */
    const char *Answer;   /**< its answer; read and written plain. @secret */
    const char *Email;    /**< e-mail address of the recovery */
};

/** A user's new password, set by an administrator. */
struct qbobj_UserPassword {
    qbobj_UserPassword_t *_link; /**< next */
    int UserId;                  /**< id of the user. @required */
    const char *Password; /**< new password, plain; "" leaves the user without one. @required @secret */
};

/** A user's new password, set by the user. */
struct qbobj_MyPassword {
    qbobj_MyPassword_t *_link; /**< next */
    const char *UserName;      /**< name of the user. @required */
    const char *OldPassword;   /**< password so far, plain. @required @secret */
    const char *NewPassword;   /**< new password, plain. @required @secret */
};

/** What a new account gets. */
struct qbobj_AccountDefault {
    const char *HomeVolumeId; /**< volume that holds the homes; null is the volume named "c" */
    /** Share of the hard quota that is the soft quota. @unit percent @range 1 to 99 @required */
    int DiskQuotaWarn;
    int GroupId;                      /**< id of the default primary group. @required */
    int DisallowPasswordChange;       /**< users may not change their password. @words 0, 1 */
    uint64_t HomeFolderCapacityLimit; /**< size limit of a new home, as stored; 0 is none */
    const char *GroupMembership;      /**< groups of a new user, as stored */
    int PrivateTimeMachine;           /**< a new user gets a Time Machine area. @words 0, 1 */
    int PrivateTimeMachineSpace;      /**< size of that area, as stored */
    int SnapshotProtection;           /**< a new home is snapshotted. @words 0, 1 */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

/**
 * Reads the recovery data of the administrator's password.
 *
 * @param[out] passwd  filled; `Password` is always masked
 * @reads passwordrecovery
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or there is no recovery data
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                                     qbobj_error_rec_t *err);

/**
 * Sets the password that users "admin" and "root" share, and its recovery data.
 *
 * With the mask as `Password` both keep theirs, and only the recovery data is stored.
 *
 * @param[in] passwd  `Password` must not be empty; the recovery data stays as it is unless `Question`,
 *                    `Answer` and `Email` are all given
 * @writes passwordrecovery, $user
 * @error QBOBJ_ERROR_API_ARGS  no record, or the password is missing or cannot be hashed
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setAdminPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_AdminPassword_t *passwd,
                                     qbobj_error_rec_t *err);

/**
 * Sets the password of a user.
 *
 * The mask changes nothing and succeeds. An unknown `UserId` is no error.
 *
 * @param[in] passwd  the user and the password; only the first of a chain counts
 * @writes $user
 * @error QBOBJ_ERROR_API_ARGS  no record, or the password is null or cannot be hashed
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setUserPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UserPassword_t *passwd,
                                    qbobj_error_rec_t *err);

/**
 * Sets the password of a user who proves the old one.
 *
 * With the mask as `NewPassword` the old one is proved and nothing changes. An account that is locked or has
 * no password proves none.
 *
 * @param[in] passwd  only the first of a chain counts; all three texts must be given
 * @reads  service_cifs, $user
 * @writes $user
 * @error QBOBJ_ERROR_API_ARGS  no record, a missing text, an unknown user, or a wrong old password
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setMyPassword(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_MyPassword_t *passwd,
                                  qbobj_error_rec_t *err);

/**
 * Reads what a new account gets.
 *
 * @param[out] account_default  filled
 * @reads account_default
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or there are no defaults
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_AccountDefault_t *account_default, qbobj_error_rec_t *err);

/**
 * Stores what a new account gets: every field, so read the record first and edit it.
 *
 * @param[in] account_default  the record
 * @reads  _volume, $group
 * @writes account_default
 * @error QBOBJ_ERROR_API_ARGS  no record, an unknown volume or group, or a percentage outside its range
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setAccountDefault(qbdb_handle_t *qbdb, sqlite3 *db,
                                      qbobj_AccountDefault_t *account_default, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
