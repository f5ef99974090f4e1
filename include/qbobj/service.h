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

/** Settings of "cifs", which a write of the service leaves alone. */
struct qbobj_CifsOptions {
    qbobj_CifsOptions_t *_link;          /**< not used */
    int UserHomeDirectory;               /**< users reach their home. @words 0, 1 @readonly */
    int UserHomeDirectoryRecycle;        /**< homes have a recycle bin. @words 0, 1 @readonly */
    int UserHomeDirectoryRecycleMaxDays; /**< how long a deleted file is kept. @unit days @readonly */
    int UserHomeDirectoryRecycleMaxSize; /**< size limit of a home's recycle bin, as stored. @readonly */
};

/** Settings of "nfs". */
struct qbobj_NfsOptions {
    qbobj_NfsOptions_t *_link; /**< not used */
    int Changed;               /**< not used; 0 on a read. @readonly */
    int Threads;               /**< number of server threads */
    int UserHomeDirectory;     /**< users reach their home. @words 0, 1 */
    int NfsV4Enable;           /**< version 4 is served. @words 0, 1 */
    const char *NfsV4Domain;   /**< domain of version 4's names */
};

/** Settings of "ftp". */
struct qbobj_FtpOptions {
    int Port;             /**< port of the service. @range 1 to 65535 @required */
    const char *AuthMode; /**< who may enter. @words "anonymous", "user" @required */
    int PassiveRangeMin;  /**< first passive port. @range 32768 to 65535 @required */
    int PassiveRangeMax;  /**< last passive port, not below the first. @range 32768 to 65535 @required */
    int EnableMasquerade; /**< MasqueradeAddress is announced. @words 0, 1 */
    /** Host or address announced in passive mode; "" or "0" is none. @required */
    const char *MasqueradeAddress;
    int AllowUploadResume; /**< an interrupted upload may be continued. @words 0, 1 */
    int UserHomeDirectory; /**< users reach their home. @words 0, 1 @readonly */
    int Ftps;              /**< encrypted connections are accepted. @words 0, 1 */
    int ForceFtps;         /**< only encrypted connections are accepted. @words 0, 1 */
    int ServerTransferLog; /**< transfers are logged. @words 0, 1 */
    int MaxUploadRate;     /**< upload limit, as stored; 0 is none. @range 0 to 99999 */
    int MaxDownloadRate;   /**< download limit, as stored; 0 is none. @range 0 to 99999 */
};

/** Settings of "dlna". */
struct qbobj_DlnaOptions {
    int AutoScan;           /**< changed folders are scanned at once. @words 0, 1 */
    int EnableTivoServer;   /**< media is served to TiVo devices. @words 0, 1 */
    int EnableTivoArchiver; /**< recordings of TiVo devices are archived. @words 0, 1 */
};

/** Settings of "bonjour": which services are announced. */
struct qbobj_BonjourOptions {
    int CifsEnabled;        /**< "cifs" is announced. @words 0, 1 */
    int AfpEnabled;         /**< "afp" is announced. @words 0, 1 */
    int PanelviewEnabled;   /**< the administration pages are announced. @words 0, 1 */
    int PrinterEnabled;     /**< printers are announced. @words 0, 1 */
    int QubrixEnabled;      /**< the appliance itself is announced. @words 0, 1 */
    int TimemachineEnabled; /**< Time Machine is announced. @words 0, 1 */
};

/** Settings of "snmp". */
struct qbobj_SnmpOptions {
    /** Hosts and networks, joined by commas; "" or "default": no restriction. @required */
    const char *AllowHost;
    /** Community name: letters, digits, "_", "-", "." and "!". @range 1 to 31 bytes @required @secret */
    const char *Community;
    const char *TrapDestination; /**< addresses that traps go to, joined by commas; "" is none. @required */
};

/** Settings of "ssh". */
struct qbobj_SshOptions {
    int Port; /**< port of the service; 22 when none is stored. @range 1 to 65535 @required */
};

/** Settings of "replicate". */
struct qbobj_ReplicateOptions {
    const char *Owner;    /**< account that the appliance is registered with */
    const char *PrivData; /**< private data of the service, its key included. @secret */
    const char *Password; /**< password of the account; neither stored nor read. @secret */
};

/** Settings of "http". */
struct qbobj_HttpOptions {
    int LoginEnabled;      /**< the web root asks for a login. @words 0, 1 */
    const char *ShareName; /**< share served as the web root */
    int HttpAdmin;         /**< the administration pages are served without encryption. @words 0, 1 */
};

/** Settings of "https". */
struct qbobj_HttpsOptions {
    int Port;               /**< additional port; 0 is none. @range 1024 to 65535 */
    const char *SslKeyHost; /**< host name or address of the certificate. @required */
};

/** Settings of "daap". */
struct qbobj_DaapOptions {
    const char *sharename; /**< name that players show. @required */
    /** Password of the library, stored plain, masked on a read; "" is none. @required @secret */
    const char *password;
    const char *directory; /**< folder that is served. @readonly */
};

/** Which protocols let users reach their home. */
struct qbobj_HomeFolderOptions {
    int UserHomeDirectory;     /**< by "cifs". @words 0, 1 */
    int NfsUserHomeDirectory;  /**< by "nfs". @words 0, 1 */
    int FtpUserHomeDirectory;  /**< by "ftp". @words 0, 1 */
    int DlnaUserHomeDirectory; /**< by "dlna". @words 0, 1 */
    int AfpUserHomeDirectory;  /**< by "afp". @words 0, 1 */
};

/** A service: its switch and its settings. */
struct qbobj_Protocol {
    qbobj_Protocol_t *_link;  /**< next */
    const char *resource_id;  /**< key of the service: its identifier */
    const char *ProtocolId;   /**< identifier: one of the protocol_id_ words. @required */
    const char *ProtocolName; /**< the identifier again */
    int Enabled;              /**< the service is on. @words 0, 1 */
    int Changed;              /**< set by a write: the stored settings became others. @words 0, 1 @readonly */
    qbobj_CifsOptions_t *CifsOptions;           /**< "cifs" only */
    qbobj_NfsOptions_t *NfsOptions;             /**< "nfs" only */
    qbobj_FtpOptions_t *FtpOptions;             /**< "ftp" only */
    qbobj_DlnaOptions_t *DlnaOptions;           /**< "dlna" only */
    qbobj_BonjourOptions_t *BonjourOptions;     /**< "bonjour" only */
    qbobj_SnmpOptions_t *SnmpOptions;           /**< "snmp" only */
    qbobj_SshOptions_t *SshOptions;             /**< "ssh" only */
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
    int Enabled;          /**< the area is served. @words 0, 1 */
    const char *UserName; /**< login name: "Qubrix". @readonly */
    const char *Password; /**< plain on a write; masked, or "" without one, on a read. @secret */
    int CapacityMB;       /**< size limit of the area. @unit MB */
    int MaxCapacityMB;    /**< free space of the volume. @unit MB @readonly */
    int HomeEnabled;      /**< not used */
};

/** The login of the vault, a backup service on the net. */
struct qbobj_Vault {
    const char *Enabled; /**< the switch, as stored. @words "0", "1" @readonly */
    const char *Volume;  /**< volume of the temporary folder, as stored. @readonly */
    /** What to do; any other word forgets the account. @words "login", "registration", "logout" @required */
    const char *Action;
    const char *UserName;     /**< e-mail address of the account; needed for a login */
    const char *UserPassword; /**< its password, stored plain, never read; needed for a login. @secret */
    const char *DefaultJob;   /**< name of the default job; needed for a login */
};

/* ---- Records: UPS devices ------------------------------------------------------------------------------ */

/** A UPS device: how it is reached, and what it reports. */
struct qbobj_UpsConfig {
    qbobj_UpsConfig_t *_link; /**< next */
    const char *resource_id;  /**< key of the device: name, "@", host */
    const char *Port;         /**< "remote", "snmp": IPv4 address of the server or device; "local": "auto" */
    /** How it is reached; fixed by its creation. @words "local", "remote", "snmp" @required */
    const char *Type;
    int Enabled;               /**< the device is watched; at most six are. @words 0, 1 */
    const char *Name;          /**< name: a letter, then letters and digits. @range 1 to 15 bytes @required */
    const char *Description;   /**< description */
    const char *UpsModel;      /**< model, as the device reports it */
    const char *UpsMfr;        /**< manufacturer, as the device reports it */
    const char *UpsMfrDate;    /**< date of manufacture, as the device reports it */
    const char *UpsSerial;     /**< serial number, as the device reports it */
    int ShutdownThreshold;     /**< battery level at which the appliance shuts down. @unit percent */
    int Share_enabled;         /**< "local": served to other appliances. @words 0, 1 */
    const char *List1;         /**< "local": address that it is served on */
    const char *SnmpCommunity; /**< "snmp": community name. @range 1 to 31 bytes @secret */
    /** "snmp": the device's tables; null is "auto". @words "auto", "mge", "apcc", "netvision", "pw",
     *  "aphel_genesisII", "aphel_revelation", "raritan", "baytech", "cpqpower", "cyberpower" */
    const char *SnmpMibs;
    const char *RemoteUserName; /**< "remote": login name, as `Name` */
    const char *RemotePassword; /**< "remote": password, as `Name`; stored and read plain. @secret */
    const char *UpsStatus;      /**< status. @readonly */
    const char *BatteryCharge;  /**< battery charge. @readonly */
    int BatteryRunTime;         /**< run time left. @unit minutes @readonly */
    const char *BatteryVoltage; /**< battery voltage. @readonly */
};

/** A list of UPS devices. */
struct qbobj_UpsConfigCollection {
    qbobj_UpsConfig_t *UpsConfig; /**< list: the devices */
};

/* ---- Records: TiVo archiver ---------------------------------------------------------------------------- */

/** A TiVo device that the bridge service reports. */
struct qbobj_TIVOhostsAcl {
    qbobj_TIVOhostsAcl_t *_link; /**< next */
    const char *name;            /**< name of the device. @readonly */
    const char *status;          /**< its status text. @readonly */
    const char *active;          /**< whether it records; null: not known. @words "true", "false" @readonly */
};

/** When and where recordings are archived. */
struct qbobj_TivoOptions {
    const char *DLNAfolderlist;         /**< paths of the shares that DLNA serves, joined by ";". @readonly */
    const char *TIVOfolder;             /**< folder that recordings go to; one of DLNAfolderlist. @required */
    const char *hour;                   /**< hour of the archiving, as text. @required */
    const char *minute;                 /**< minute of the archiving, as text. @required */
    const char *days;                   /**< days of the archiving, as the caller gives them. @required */
    qbobj_TIVOhostsAcl_t *TIVOhostsAcl; /**< list: the devices. @readonly */
};

/** The media access key of a TiVo device. */
struct qbobj_TivoMak {
    const char *name;   /**< name of the device. @required */
    const char *status; /**< "true" stores the key, any other word removes it. @required */
    const char *key;    /**< the key. @secret */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
