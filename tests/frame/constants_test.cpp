// The exported words, which stored rows and other programs depend on.
#include <gtest/gtest.h>
#include <qbobj.h>

namespace
{

TEST(Constants, HaveTheWordsThatAreStored)
{
    struct Word {
        const char *exported;
        const char *text;
    };
    const Word words[] = {
        {QBLOG_SEVERITY_DEBUG, "debug"},
        {QBLOG_SEVERITY_INFO, "info"},
        {QBLOG_SEVERITY_NOTICE, "notice"},
        {QBLOG_SEVERITY_WARNING, "warning"},
        {QBLOG_SEVERITY_ERR, "err"},
        {QBLOG_SEVERITY_CRIT, "crit"},
        {QBLOG_SEVERITY_ALERT, "alert"},
        {QBLOG_SEVERITY_EMERG, "emerge"},
        {QBLOG_CATEGORY_MISC, "misc"},
        {QBLOG_CATEGORY_SYSTEM, "system"},
        {QBLOG_CATEGORY_DISK, "disk"},
        {QBLOG_CATEGORY_VOLUME, "volume"},
        {QBLOG_CATEGORY_SHARE, "share"},
        {QBLOG_CATEGORY_ACCOUNT, "account"},
        {QBLOG_CATEGORY_BACKUP, "backup"},
        {QBLOG_CATEGORY_SNAPSHOT, "snapshot"},
        {protocol_id_cifs, "cifs"},
        {protocol_id_afp, "afp"},
        {protocol_id_nfs, "nfs"},
        {protocol_id_ftp, "ftp"},
        {protocol_id_http, "http"},
        {protocol_id_https, "https"},
        {protocol_id_rsync, "rsync"},
        {protocol_id_daap, "daap"},
        {protocol_id_dlna, "dlna"},
        {protocol_id_snmp, "snmp"},
        {protocol_id_ssh, "ssh"},
        {protocol_id_replicate, "replicate"},
        {protocol_id_bonjour, "bonjour"},
        {protocol_id_smartnetwork, "smartnetwork"},
        {protocol_id_upnpd, "upnpd"},
        {protocol_id_antivirus, "anti-virus"},
        {protocol_id_skyport, "skyport"},
        {masked_password,
         "\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F\xE2\x97\x8F"},
        {empty_str, ""},
        {guest_str, "guest"},
    };
    for (const Word &word : words)
        EXPECT_STREQ(word.text, word.exported);
}

} // namespace
