// The exported words.
#include <qbobj/types.h>

const char *const QBLOG_SEVERITY_DEBUG = "debug";
const char *const QBLOG_SEVERITY_INFO = "info";
const char *const QBLOG_SEVERITY_NOTICE = "notice";
const char *const QBLOG_SEVERITY_WARNING = "warning";
const char *const QBLOG_SEVERITY_ERR = "err";
const char *const QBLOG_SEVERITY_CRIT = "crit";
const char *const QBLOG_SEVERITY_ALERT = "alert";
const char *const QBLOG_SEVERITY_EMERG = "emerge"; // stored rows depend on this spelling

const char *const QBLOG_CATEGORY_MISC = "misc";
const char *const QBLOG_CATEGORY_SYSTEM = "system";
const char *const QBLOG_CATEGORY_DISK = "disk";
const char *const QBLOG_CATEGORY_VOLUME = "volume";
const char *const QBLOG_CATEGORY_SHARE = "share";
const char *const QBLOG_CATEGORY_ACCOUNT = "account";
const char *const QBLOG_CATEGORY_BACKUP = "backup";
const char *const QBLOG_CATEGORY_SNAPSHOT = "snapshot";

const char *const protocol_id_cifs = "cifs";
const char *const protocol_id_afp = "afp";
const char *const protocol_id_nfs = "nfs";
const char *const protocol_id_ftp = "ftp";
const char *const protocol_id_http = "http";
const char *const protocol_id_https = "https";
const char *const protocol_id_rsync = "rsync";
const char *const protocol_id_daap = "daap";
const char *const protocol_id_dlna = "dlna";
const char *const protocol_id_snmp = "snmp";
const char *const protocol_id_ssh = "ssh";
const char *const protocol_id_replicate = "replicate";
const char *const protocol_id_bonjour = "bonjour";
const char *const protocol_id_smartnetwork = "smartnetwork";
const char *const protocol_id_upnpd = "upnpd";
const char *const protocol_id_antivirus = "anti-virus";
const char *const protocol_id_skyport = "skyport";

const char *const masked_password = "●●●●●●●●";
const char *const empty_str = "";
const char *const guest_str = "guest";
