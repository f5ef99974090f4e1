/**
 * @file types.h
 * The ground of the interface: error codes and record, exported words, and small utilities.
 */
#ifndef QBOBJ_TYPES_H
#define QBOBJ_TYPES_H

#include <qbdb.h>
#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define QBOBJ_API __attribute__((visibility("default")))
#else
#define QBOBJ_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Error codes. 0 to 9 are generic; from 800 on, conditions that a user interface translates for the person
 * at the screen. */
typedef enum qbobj_error {
    QBOBJ_ERROR_OK = 0,
    QBOBJ_ERROR_UNKNOWN = 1,
    QBOBJ_ERROR_OOM = 2,
    QBOBJ_ERROR_SIGSEGV = 3,
    QBOBJ_ERROR_DB_CONSTRAINT = 4,
    QBOBJ_ERROR_DB_MISC = 5,
    QBOBJ_ERROR_DB_NOTEXISTS = 6,
    QBOBJ_ERROR_API_COMMAND = 7,
    QBOBJ_ERROR_API_ARGS = 8,
    QBOBJ_ERROR_API_NOT_IMPLEMENTED = 9,
    QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS = 800,
    QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS = 801,
    QBOBJ_ERROR_UI__UID_ALREADY_EXISTS = 802,
    QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS = 803,
    QBOBJ_ERROR_UI__GID_ALREADY_EXISTS = 804,
    QBOBJ_ERROR_UI__DEPENDANT_EXISTS = 805,
    QBOBJ_ERROR_UI__NAME_TOO_LONG = 806,
    QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS = 807,
    QBOBJ_ERROR_UI__SHARENAME_RESERVED = 808,
    QBOBJ_ERROR_UI__USERNAME_RESERVED = 809,
    QBOBJ_ERROR_UI__FTP_PORT_INVALID = 810,
    QBOBJ_ERROR_UI__FTP_PORT_USED = 811,
    QBOBJ_ERROR_UI__FTP_PASSIVE_RANGE = 812,
    QBOBJ_ERROR_UI__FTP_AUTH_MODE = 813,
    QBOBJ_ERROR_UI__FTP_MASQUERADE = 814,
    QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE = 815,
    QBOBJ_ERROR_UI__SNMP_BAD_ALLOWHOST = 816,
    QBOBJ_ERROR_UI__SNMP_BAD_COMMUNITY = 817,
    QBOBJ_ERROR_UI__SNMP_BAD_TRAPDESTINATION = 818,
    QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP = 819,
    QBOBJ_ERROR_UI__ADS_BAD_REALM = 820,
    QBOBJ_ERROR_UI__SSH_PORT_INVALID = 821,
    QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP = 822,
    QBOBJ_ERROR_UI__USERNAME_NOT_EXIST = 823,
    QBOBJ_ERROR_UI__GROUPNAME_NOT_EXIST = 824,
    QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR = 825,
    QBOBJ_ERROR_UI__TOO_MANY_UPS = 826,
    QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT = 827,
    QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT_IN_USE = 828,
    QBOBJ_ERROR_UI__HTTPS_CERTIFICATE_KEY_HOST = 829,
    QBOBJ_ERROR_UI__FTP_BANDWIDTH = 830,
    QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME = 831,
    QBOBJ_ERROR_UI__NO_LDAP_OBJECT = 832,
    QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER = 833,
    QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME = 834
} qbobj_error_t;

/** The error record: owned by the caller, filled by the operation that fails. */
typedef struct qbobj_error_rec {
    qbobj_error_t ec; /**< the code; QBOBJ_ERROR_OK after a success */
    const char *file; /**< source unit that raised the error; null when none did */
    int lineno;       /**< line in that unit; 0 when no error was raised */
    const char *msg;  /**< message for the administrator, in the handle's pool; may be null */
} qbobj_error_rec_t;

/* Words of the system log's severity column. */
QBOBJ_API extern const char *const QBLOG_SEVERITY_DEBUG;   /**< "debug" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_INFO;    /**< "info" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_NOTICE;  /**< "notice" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_WARNING; /**< "warning" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_ERR;     /**< "err" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_CRIT;    /**< "crit" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_ALERT;   /**< "alert" */
QBOBJ_API extern const char *const QBLOG_SEVERITY_EMERG; /**< "emerge": stored rows depend on this spelling */

/* Words of the system log's category column. */
QBOBJ_API extern const char *const QBLOG_CATEGORY_MISC;     /**< "misc" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_SYSTEM;   /**< "system" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_DISK;     /**< "disk" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_VOLUME;   /**< "volume" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_SHARE;    /**< "share" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_ACCOUNT;  /**< "account" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_BACKUP;   /**< "backup" */
QBOBJ_API extern const char *const QBLOG_CATEGORY_SNAPSHOT; /**< "snapshot" */

/* Identifiers of the services. */
QBOBJ_API extern const char *const protocol_id_cifs;         /**< "cifs" */
QBOBJ_API extern const char *const protocol_id_afp;          /**< "afp" */
QBOBJ_API extern const char *const protocol_id_nfs;          /**< "nfs" */
QBOBJ_API extern const char *const protocol_id_ftp;          /**< "ftp" */
QBOBJ_API extern const char *const protocol_id_http;         /**< "http" */
QBOBJ_API extern const char *const protocol_id_https;        /**< "https" */
QBOBJ_API extern const char *const protocol_id_rsync;        /**< "rsync" */
QBOBJ_API extern const char *const protocol_id_daap;         /**< "daap" */
QBOBJ_API extern const char *const protocol_id_dlna;         /**< "dlna" */
QBOBJ_API extern const char *const protocol_id_snmp;         /**< "snmp" */
QBOBJ_API extern const char *const protocol_id_ssh;          /**< "ssh" */
QBOBJ_API extern const char *const protocol_id_replicate;    /**< "replicate" */
QBOBJ_API extern const char *const protocol_id_bonjour;      /**< "bonjour" */
QBOBJ_API extern const char *const protocol_id_smartnetwork; /**< "smartnetwork" */
QBOBJ_API extern const char *const protocol_id_upnpd;        /**< "upnpd" */
QBOBJ_API extern const char *const protocol_id_antivirus;    /**< "anti-virus" */
QBOBJ_API extern const char *const protocol_id_skyport;      /**< "skyport" */

/** Eight U+25CF characters (UTF-8): returned in the place of every stored password; a write that receives it
 *  back leaves the stored password as it is. */
QBOBJ_API extern const char *const masked_password;
QBOBJ_API extern const char *const empty_str; /**< "": what a result holds in the place of a missing text */
QBOBJ_API extern const char *const guest_str; /**< "guest": the name of the guest account */

#ifdef __cplusplus
}
#endif

#endif
