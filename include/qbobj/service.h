/**
 * @file service.h
 * The services of the appliance and their settings, the Time Machine target, the vault login, UPS devices and
 * the TiVo archiver.
 */
#ifndef QBOBJ_SERVICE_H
#define QBOBJ_SERVICE_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: settings of a service -------------------------------------------------------------------- */

/** Settings of "cifs". */
struct qbobj_CifsOptions {
    qbobj_CifsOptions_t *_link;          /**< not used */
    int UserHomeDirectory;               /**< 0/1: users reach their home */
    int UserHomeDirectoryRecycle;        /**< 0/1: homes have a recycle bin */
    int UserHomeDirectoryRecycleMaxDays; /**< days that a deleted file is kept */
    int UserHomeDirectoryRecycleMaxSize; /**< size limit of a home's recycle bin, as stored */
};

/** Settings of "nfs". */
struct qbobj_NfsOptions {
    qbobj_NfsOptions_t *_link; /**< not used */
    int Changed;               /**< 0 on read */
    int Threads;               /**< number of server threads */
    int UserHomeDirectory;     /**< 0/1: users reach their home */
    int NfsV4Enable;           /**< 0/1: version 4 is served */
    const char *NfsV4Domain;   /**< domain of version 4's names */
};

/** Settings of "ftp". */
struct qbobj_FtpOptions {
    int Port;                      /**< 1 to 65535 */
    const char *AuthMode;          /**< "anonymous" or "user" */
    int PassiveRangeMin;           /**< first passive port, 32768 to 65535 */
    int PassiveRangeMax;           /**< last passive port, not below the first */
    int EnableMasquerade;          /**< 0/1: MasqueradeAddress is announced */
    const char *MasqueradeAddress; /**< address announced in passive mode */
    int AllowUploadResume;         /**< 0/1: an interrupted upload may be continued */
    int UserHomeDirectory;         /**< 0/1: users reach their home */
    int Ftps;                      /**< 0/1: encrypted connections are accepted */
    int ForceFtps;                 /**< 0/1: only encrypted connections are accepted */
    int ServerTransferLog;         /**< 0/1: transfers are logged */
    int MaxUploadRate;             /**< upload limit, as stored; 0 is none */
    int MaxDownloadRate;           /**< download limit, as stored; 0 is none */
};

/** Settings of "dlna". */
struct qbobj_DlnaOptions {
    int AutoScan;           /**< 0/1: changed folders are scanned at once */
    int EnableTivoServer;   /**< 0/1: media is served to TiVo devices */
    int EnableTivoArchiver; /**< 0/1: recordings of TiVo devices are archived */
};

/** Settings of "bonjour": which services are announced. */
struct qbobj_BonjourOptions {
    int CifsEnabled;        /**< 0/1 */
    int AfpEnabled;         /**< 0/1 */
    int PanelviewEnabled;   /**< 0/1: the administration pages */
    int PrinterEnabled;     /**< 0/1 */
    int QubrixEnabled;      /**< 0/1: the appliance itself */
    int TimemachineEnabled; /**< 0/1 */
};

/** Settings of "snmp". */
struct qbobj_SnmpOptions {
    const char *AllowHost;       /**< hosts and networks, joined by commas; "default": no restriction */
    const char *Community;       /**< community name */
    const char *TrapDestination; /**< addresses that traps go to, joined by commas */
};

/** Settings of "ssh". */
struct qbobj_SshOptions {
    int Port; /**< 1 to 65535; 22 when none is stored */
};

/** Settings of "replicate". */
struct qbobj_ReplicateOptions {
    const char *Owner;    /**< account that the appliance is registered with */
    const char *PrivData; /**< private data of the service */
    const char *Password; /**< password of the account; masked on read */
};

/** Settings of "http". */
struct qbobj_HttpOptions {
    int LoginEnabled;      /**< 0/1: the web root asks for a login */
    const char *ShareName; /**< share served as the web root */
    int HttpAdmin;         /**< 0/1: the administration pages are served without encryption */
};

/** Settings of "https". */
struct qbobj_HttpsOptions {
    int Port;               /**< additional port; 0 is none */
    const char *SslKeyHost; /**< host name of the certificate */
};

/** Settings of "daap". */
struct qbobj_DaapOptions {
    const char *sharename; /**< name that players show */
    const char *password;  /**< password of the library, stored plain; masked on read */
    const char *directory; /**< folder that is served */
};

/** Which protocols let users reach their home. */
struct qbobj_HomeFolderOptions {
    int UserHomeDirectory;     /**< 0/1: "cifs" */
    int NfsUserHomeDirectory;  /**< 0/1: "nfs" */
    int FtpUserHomeDirectory;  /**< 0/1: "ftp" */
    int DlnaUserHomeDirectory; /**< 0/1: "dlna" */
    int AfpUserHomeDirectory;  /**< 0/1: "afp" */
};

/** A service: its switch and its settings. */
struct qbobj_Protocol {
    qbobj_Protocol_t *_link;                /**< next */
    const char *resource_id;                /**< key of the service: its identifier */
    const char *ProtocolId;                 /**< identifier: one of the protocol_id_ words */
    const char *ProtocolName;               /**< the identifier again */
    int Enabled;                            /**< 0/1: the service is on */
    int Changed;                            /**< output of a write, 0/1: the stored settings became others */
    qbobj_CifsOptions_t *CifsOptions;       /**< "cifs" only */
    qbobj_NfsOptions_t *NfsOptions;         /**< "nfs" only */
    qbobj_FtpOptions_t *FtpOptions;         /**< "ftp" only */
    qbobj_DlnaOptions_t *DlnaOptions;       /**< "dlna" only */
    qbobj_BonjourOptions_t *BonjourOptions; /**< "bonjour" only */
    qbobj_SnmpOptions_t *SnmpOptions;       /**< "snmp" only */
    qbobj_SshOptions_t *SshOptions;         /**< "ssh" only */
    qbobj_ReplicateOptions_t *ReplicateOptions; /**< "replicate" only */
    qbobj_HttpOptions_t *HttpOptions;           /**< "http" only */
    qbobj_HttpsOptions_t *HttpsOptions;         /**< "https" only */
    qbobj_DaapOptions_t *DaapOptions;           /**< "daap" only */
};

/** A list of services. */
struct qbobj_ProtocolCollection {
    qbobj_Protocol_t *Protocol; /**< list: the services */
};

/* ---- Records: Time Machine and vault ------------------------------------------------------------------- */

/** The appliance-wide Time Machine target. */
struct qbobj_Timemachine {
    int Enabled;          /**< 0/1 */
    const char *UserName; /**< login name: "Qubrix" on read */
    const char *Password; /**< plain on a write; masked or "" on a read */
    int CapacityMB;       /**< size limit of the area in MB */
    int MaxCapacityMB;    /**< free space of the volume in MB; read only */
    int HomeEnabled;      /**< not used */
};

/** The login of the vault, a backup service on the net. */
struct qbobj_Vault {
    const char *Enabled;      /**< the switch, as stored */
    const char *Volume;       /**< volume of the temporary folder, as stored */
    const char *Action;       /**< "login", "registration" or "logout" */
    const char *UserName;     /**< e-mail address of the account */
    const char *UserPassword; /**< its password, stored plain */
    const char *DefaultJob;   /**< name of the default job */
};

/* ---- Records: UPS devices ------------------------------------------------------------------------------ */

/** A UPS device: how it is reached, and what it reports. */
struct qbobj_UpsConfig {
    qbobj_UpsConfig_t *_link; /**< next */
    const char *resource_id;  /**< key of the device: name, "@", host */
    const char *Port; /**< "remote" and "snmp": IPv4 address of the server or device; "local": "auto" */
    const char *Type; /**< "local", "remote" or "snmp" */
    int Enabled;      /**< 0/1: the device is watched; at most six are */
    const char *Name; /**< name */
    const char *Description;    /**< description */
    const char *UpsModel;       /**< model; reported by the device */
    const char *UpsMfr;         /**< manufacturer; reported by the device */
    const char *UpsMfrDate;     /**< date of manufacture; reported by the device */
    const char *UpsSerial;      /**< serial number; reported by the device */
    int ShutdownThreshold;      /**< battery level in percent at which the appliance shuts down */
    int Share_enabled;          /**< "local", 0/1: served to other appliances */
    const char *List1;          /**< "local": address that it is served on */
    const char *SnmpCommunity;  /**< "snmp": community name */
    const char *SnmpMibs;       /**< "snmp": "auto", "mge", "apcc", "netvision", "pw", "aphel_genesisII",
                                   "aphel_revelation", "raritan", "baytech", "cpqpower" or "cyberpower" */
    const char *RemoteUserName; /**< "remote": login name */
    const char *RemotePassword; /**< "remote": password, stored plain */
    const char *UpsStatus;      /**< status; read only */
    const char *BatteryCharge;  /**< battery charge; read only */
    int BatteryRunTime;         /**< run time left; read only */
    const char *BatteryVoltage; /**< battery voltage; read only */
};

/** A list of UPS devices. */
struct qbobj_UpsConfigCollection {
    qbobj_UpsConfig_t *UpsConfig; /**< list: the devices */
};

/* ---- Records: TiVo archiver ---------------------------------------------------------------------------- */

/** A TiVo device that the bridge service reports. */
struct qbobj_TIVOhostsAcl {
    qbobj_TIVOhostsAcl_t *_link; /**< next */
    const char *name;            /**< name of the device */
    const char *status;          /**< its status text */
    const char *active;          /**< "true", "false" or null */
};

/** When and where recordings are archived. */
struct qbobj_TivoOptions {
    const char *DLNAfolderlist;         /**< paths of the shares that DLNA serves, joined by ";"; read only */
    const char *TIVOfolder;             /**< folder that recordings go to; one of DLNAfolderlist */
    const char *hour;                   /**< hour of the archiving, as text */
    const char *minute;                 /**< minute of the archiving, as text */
    const char *days;                   /**< days of the archiving, as the caller gives them */
    qbobj_TIVOhostsAcl_t *TIVOhostsAcl; /**< list: the devices; read only */
};

/** The media access key of a TiVo device. */
struct qbobj_TivoMak {
    const char *name;   /**< name of the device */
    const char *status; /**< "true" to store the key */
    const char *key;    /**< the key */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
