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

/** Every error code: X(name, number). 0 to 9 are generic; from 800 on, conditions that a user interface
 * translates for the person at the screen. */
#define QBOBJ_ERRORS(X)                                                                                      \
    X(QBOBJ_ERROR_OK, 0)                  /* success */                                                      \
    X(QBOBJ_ERROR_UNKNOWN, 1)             /* a failure of no other kind */                                   \
    X(QBOBJ_ERROR_OOM, 2)                 /* no memory */                                                    \
    X(QBOBJ_ERROR_SIGSEGV, 3)             /* the call was broken off by a fault of the program */            \
    X(QBOBJ_ERROR_DB_CONSTRAINT, 4)       /* the database refuses what is not unique or not there */         \
    X(QBOBJ_ERROR_DB_MISC, 5)             /* a statement failed; the message names it */                     \
    X(QBOBJ_ERROR_DB_NOTEXISTS, 6)        /* what is named is not there */                                   \
    X(QBOBJ_ERROR_API_COMMAND, 7)         /* no such command */                                              \
    X(QBOBJ_ERROR_API_ARGS, 8)            /* an argument is missing or not valid */                          \
    X(QBOBJ_ERROR_API_NOT_IMPLEMENTED, 9) /* not available */                                                \
    X(QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, 800)     /* a share of this name exists */                   \
    X(QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, 801)      /* a user of this name exists */                    \
    X(QBOBJ_ERROR_UI__UID_ALREADY_EXISTS, 802)           /* a user of this number exists */                  \
    X(QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, 803)     /* a group of this name exists */                   \
    X(QBOBJ_ERROR_UI__GID_ALREADY_EXISTS, 804)           /* a group of this number exists */                 \
    X(QBOBJ_ERROR_UI__DEPENDANT_EXISTS, 805)             /* something else still needs it */                 \
    X(QBOBJ_ERROR_UI__NAME_TOO_LONG, 806)                /* the name is too long */                          \
    X(QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS, 807)       /* a backup job of this name exists */              \
    X(QBOBJ_ERROR_UI__SHARENAME_RESERVED, 808)           /* the share name is reserved */                    \
    X(QBOBJ_ERROR_UI__USERNAME_RESERVED, 809)            /* the user name is reserved */                     \
    X(QBOBJ_ERROR_UI__FTP_PORT_INVALID, 810)             /* the FTP port is not valid */                     \
    X(QBOBJ_ERROR_UI__FTP_PORT_USED, 811)                /* the FTP port is in use */                        \
    X(QBOBJ_ERROR_UI__FTP_PASSIVE_RANGE, 812)            /* the range of passive FTP ports is not valid */   \
    X(QBOBJ_ERROR_UI__FTP_AUTH_MODE, 813)                /* the FTP way of logging in is not valid */        \
    X(QBOBJ_ERROR_UI__FTP_MASQUERADE, 814)               /* the FTP masquerade address is not valid */       \
    X(QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE, 815)         /* the share cannot move to another volume */       \
    X(QBOBJ_ERROR_UI__SNMP_BAD_ALLOWHOST, 816)           /* the SNMP host is not valid */                    \
    X(QBOBJ_ERROR_UI__SNMP_BAD_COMMUNITY, 817)           /* the SNMP community is not valid */               \
    X(QBOBJ_ERROR_UI__SNMP_BAD_TRAPDESTINATION, 818)     /* the SNMP trap destination is not valid */        \
    X(QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP, 819)            /* the directory's workgroup is not valid */        \
    X(QBOBJ_ERROR_UI__ADS_BAD_REALM, 820)                /* the directory's realm is not valid */            \
    X(QBOBJ_ERROR_UI__SSH_PORT_INVALID, 821)             /* the SSH port is not valid */                     \
    X(QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP, 822)    /* the group is somebody's primary group */         \
    X(QBOBJ_ERROR_UI__USERNAME_NOT_EXIST, 823)           /* there is no such user */                         \
    X(QBOBJ_ERROR_UI__GROUPNAME_NOT_EXIST, 824)          /* there is no such group */                        \
    X(QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR, 825)   /* the name holds a forbidden character */          \
    X(QBOBJ_ERROR_UI__TOO_MANY_UPS, 826)                 /* there are too many UPS devices */                \
    X(QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT, 827)        /* the added HTTPS port is not valid */             \
    X(QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT_IN_USE, 828) /* the additional HTTPS port is in use */           \
    X(QBOBJ_ERROR_UI__HTTPS_CERTIFICATE_KEY_HOST, 829)   /* certificate, key and host do not fit */          \
    X(QBOBJ_ERROR_UI__FTP_BANDWIDTH, 830)                /* the FTP bandwidth is not valid */                \
    X(QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME, 831)          /* the share cannot be renamed */                   \
    X(QBOBJ_ERROR_UI__NO_LDAP_OBJECT, 832)               /* the directory has no such object */              \
    X(QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER, 833)           /* the security server is not valid */              \
    X(QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME, 834) /* both users have one name */

#define QBOBJ_ERROR_CODE(name, number) name = (number),
/** Error codes; see QBOBJ_ERRORS. */
typedef enum qbobj_error { QBOBJ_ERRORS(QBOBJ_ERROR_CODE) } qbobj_error_t;
#undef QBOBJ_ERROR_CODE

/**
 * The name of an error code.
 *
 * @param[in] code  the number, e.g. 8
 * @reads nothing
 * @error none
 * @return the name, e.g. "QBOBJ_ERROR_API_ARGS"; "QBOBJ_ERROR_UNKNOWN" for a number that is no code
 */
QBOBJ_API const char *qbobj_error_name(int code);

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
