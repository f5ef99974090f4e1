/**
 * @file security.h
 * How file-sharing users are authenticated: by the appliance itself or by a directory service.
 */
#ifndef QBOBJ_SECURITY_H
#define QBOBJ_SECURITY_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** The source of accounts: the appliance itself or a directory service. */
struct qbobj_Security {
    /** Local accounts ("user") or a directory service ("ads"). @words "user", "ads" @required */
    const char *Security;
    const char *Realm; /**< realm of the directory; with "ads" it must be a host name */
    /** Workgroup or domain: letters, digits, "_", "-", "." and blanks. @range 1 to 15 bytes @required */
    const char *workGroup;
    const char *orgUnit;    /**< organisational unit in which the appliance registers */
    const char *restrictOU; /**< organisational unit that accounts are read from */
    int noSyncADS;          /**< directory accounts are not mirrored into the local tables. @words 0, 1 */
    const char *restrictAccountOu;   /**< not used */
    const char *domainAdministrator; /**< administrator of the domain */
    const char *passWord;            /**< that account's password; masked on a read, never stored. @secret */
    const char *passWordServer;      /**< login server, a host name or address; "" chooses one */
    int displayTrustedUsers;         /**< accounts of trusted domains are accepted. @words 0, 1 */
    const char *domainSid;           /**< security id of the domain. @readonly */
    int domainGroupAdminGID;         /**< id of the domain's administrator group; 98 when unset. @readonly */
    int domainAdminUID;              /**< id of the domain's administrator; 98 when unset. @readonly */
};

/** How far the import of directory accounts is. */
struct qbobj_SecurityAdsProgress {
    const char *State; /**< state of the import. @words "idle", "running", "complete", "error" @readonly */
    int Percent;    /**< users and groups are half the scale each. @unit percent @range 0 to 100 @readonly */
    int TotalUser;  /**< users to import. @readonly */
    int CurrUser;   /**< users imported. @readonly */
    int TotalGroup; /**< groups to import. @readonly */
    int CurrGroup;  /**< groups imported. @readonly */
    int StartAt;    /**< begin of the import. @unit Unix seconds @readonly */
    int DoneAt;     /**< end of the import. @unit Unix seconds @readonly */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

/**
 * Reads how file-sharing users are authenticated.
 *
 * @param[out] o  filled but for `restrictAccountOu`; `passWord` is always masked
 * @reads service_cifs
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o,
                                qbobj_error_rec_t *err);

/**
 * Stores how file-sharing users are authenticated.
 *
 * Every field is stored but the read-only ones and the domain's password, so read the record first and edit
 * it. A null text empties its column.
 *
 * @param[in] o  the record; the realm and the login server are checked for "ads" only
 * @writes service_cifs
 * @error QBOBJ_ERROR_API_ARGS               no record, an unknown `Security`, or texts too long together (512
 *                                           bytes)
 * @error QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP  `workGroup` is no name of a workgroup
 * @error QBOBJ_ERROR_UI__ADS_BAD_REALM      `Realm` is no host
 * @error QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER `passWordServer` is given and no host
 * @error QBOBJ_ERROR_DB_MISC                a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o,
                                qbobj_error_rec_t *err);

/**
 * Reads how far the import of directory accounts is.
 *
 * @param[out] o  filled
 * @reads _ads_importer
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                           qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
