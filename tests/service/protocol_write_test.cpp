// The settings of the services, stored.
#include "database.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <functional>
#include <map>

using namespace qbobj_test;

namespace
{

// A valid record of every service in one chain; no two values of a service are the same where that is allowed.
struct Services {
    qbobj_NfsOptions_t nfs{nullptr, 0, 2, 3, 4, "d"};
    qbobj_FtpOptions_t ftp{2, "user", 40000, 40001, 6, "m", 8, 9, 10, 14, 11, 12, 13};
    qbobj_DaapOptions_t daap{"s'", "p'", "kept"};
    qbobj_SnmpOptions_t snmp{"h,10.0.0.0/8", "c", "10.0.0.1"};
    qbobj_SshOptions_t ssh{2222};
    qbobj_ReplicateOptions_t replicate{"o", "p", "kept"};
    qbobj_DlnaOptions_t dlna{2, 3, 4};
    qbobj_HttpOptions_t http{2, "s", 4};
    qbobj_HttpsOptions_t https{0, "host"};
    qbobj_BonjourOptions_t bonjour{2, 0, 4, 0, 6, 7};
    std::map<std::string, qbobj_Protocol_t> records;
    qbobj_ProtocolCollection_t collection{};

    Services()
    {
        for (const char *id :
             {"cifs", "afp", "nfs", "ftp", "daap", "snmp", "ssh", "replicate", "smartnetwork", "upnpd",
              "rsync", "dlna", "http", "https", "bonjour", "anti-virus", "skyport", "unheard-of"}) {
            qbobj_Protocol_t &record = records[id] = {};
            record.ProtocolName = id;
            record.Enabled = 1;
            record._link = collection.Protocol;
            collection.Protocol = &record;
        }
        records["nfs"].NfsOptions = &nfs;
        records["ftp"].FtpOptions = &ftp;
        records["daap"].DaapOptions = &daap;
        records["snmp"].SnmpOptions = &snmp;
        records["ssh"].SshOptions = &ssh;
        records["replicate"].ReplicateOptions = &replicate;
        records["dlna"].DlnaOptions = &dlna;
        records["http"].HttpOptions = &http;
        records["https"].HttpsOptions = &https;
        records["bonjour"].BonjourOptions = &bonjour;
    }
    // Those whose settings became others, and no more marks.
    std::string take_changed()
    {
        std::string ids;
        for (auto &[id, record] : records) {
            ids += record.Changed != 0 ? id + " " : "";
            record.Changed = 0;
        }
        return ids;
    }
};

class ProtocolWrite : public Database
{
  protected:
    ProtocolWrite() { sql("UPDATE service_cifs SET enabled=0"); }
    int set() { return qbobj_setProtocolCollection(qbdb, db, &services.collection, &err); }
    int enable(const char *id, int on) { return qbobj_setProtocolEnable(qbdb, db, id, on, &err); }
    Services services;
};

TEST_F(ProtocolWrite, EveryFieldHasItsColumn)
{
    // The first columns after the id.
    const std::pair<const char *, const char *> tables[] = {
        {"cifs", "1|1|0"},
        {"afp", "1"},
        {"nfs", "1|2|3|4|d"},
        {"ftp", "1|2|user|40000|40001|6|m|8|0|10|14|11|12|13"},
        {"daap", "1|s'|p'|"},
        {"snmp", "1|h,10.0.0.0/8|c|10.0.0.1"},
        {"ssh", "1|2222|1"},
        {"replicate", "1|o|p"},
        {"smartnetwork", "1"},
        {"upnpd", "1"},
        {"rsync", "1"},
        {"dlna", "1|2|3|4|0"},
        {"http", "1|2|s|4"},
        {"https", "0|host"},
        {"avahi", "1|1|0|1|0|1|1"}};
    ASSERT_OK(set());
    for (const auto &[table, stored] : tables) {
        const std::string row = rows(std::string("SELECT * FROM service_") + table).front();
        EXPECT_TRUE(row.starts_with(std::string("1|") + stored)) << table << ": " << row;
    }
    EXPECT_EQ((std::vector<std::string>{"ANTIVIRUS|1", "APPSPRITE|1", "SKYPORT|1"}),
              rows("SELECT key,val FROM service_misc WHERE val='1' ORDER BY key"));

    services.records["bonjour"].Enabled = 0;
    ASSERT_OK(set());
    EXPECT_EQ("1|0|0|0|0|0|0|0", rows("SELECT * FROM service_avahi").front());
}

TEST_F(ProtocolWrite, MarksWhatBecameAnother)
{
    ASSERT_OK(set());
    EXPECT_EQ(
        "afp anti-virus bonjour cifs daap dlna ftp http https nfs replicate rsync skyport smartnetwork snmp "
        "ssh upnpd ",
        services.take_changed());
    services.records["rsync"].Changed = 4; // never cleared
    ASSERT_OK(set());
    EXPECT_EQ("rsync ", services.take_changed());
    services.ftp.MaxUploadRate = 0;
    services.records["anti-virus"].Enabled = 0;
    services.records["upnpd"].Enabled = 0;
    ASSERT_OK(set());
    EXPECT_EQ("anti-virus ftp upnpd ", services.take_changed());
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM sqlite_temp_schema"));
}

TEST_F(ProtocolWrite, RefusesTheFirstValueThatIsWrong)
{
    const std::string long_text(512, 'x');
    const auto port = "Invalid Port (65536), 1-65535.";
    const auto range = "Invalid PassiveRange, 32768-65535 and Min=<Max";
    const auto mode = "Invalid Authenticat Mode, Either 'anonymous' or 'user'";
    const auto rate = "Invalid MAX Bandwidth, 0-99999.";
    using S = Services &;
    const struct {
        const char *id; // the service whose record is wrong
        int code;
        const char *message;
        std::function<void(Services &)> spoil;
    } cases[] = {
        {"ftp", 810, "Invalid Port (0), 1-65535.", [](S s) { s.ftp.Port = s.ftp.PassiveRangeMin = 0; }},
        {"ftp", 810, port, [](S s) { s.ftp.Port = 65536; }},
        {"ftp", 812, range, [](S s) { s.ftp.PassiveRangeMin = 40002, s.ftp.AuthMode = ""; }},
        {"ftp", 812, range, [](S s) { s.ftp.PassiveRangeMin = 32767; }},
        {"ftp", 812, range, [](S s) { s.ftp.PassiveRangeMax = 65536; }},
        {"ftp", 813, mode, [](S s) { s.ftp.AuthMode = s.ftp.MasqueradeAddress = nullptr; }},
        {"ftp", 813, mode, [](S s) { s.ftp.AuthMode = "User"; }},
        {"ftp", 8, "MasqueradeAddress cannot be NULL", [](S s) { s.ftp.MasqueradeAddress = nullptr; }},
        {"ftp", 814, "Invalid Masquerade Address (a b).",
         [](S s) { s.ftp.MasqueradeAddress = "a b", s.ftp.MaxUploadRate = -1; }},
        {"ftp", 830, rate, [](S s) { s.ftp.MaxUploadRate = -1; }},
        {"ftp", 830, rate, [](S s) { s.ftp.MaxDownloadRate = 100000; }},
        {"daap", 8, "DAAP Sharename cannot be NULL",
         [](S s) { s.daap.sharename = "", s.daap.password = nullptr; }},
        {"daap", 8, "DAAP password cannot be NULL", [](S s) { s.daap.password = nullptr; }},
        {"daap", 8, "The value of column 'password' is too long for the update.",
         [&](S s) { s.daap.password = long_text.c_str(); }},
        {"snmp", 8, "AllowHost cannot be NULL", [](S s) { s.snmp.AllowHost = s.snmp.Community = nullptr; }},
        {"snmp", 816, "Invalid AllowHost (h,a b) (rc=-1).",
         [](S s) { s.snmp.AllowHost = "h,a b", s.snmp.Community = ""; }},
        {"snmp", 817, "Invalid Community () (rc=-1).",
         [](S s) { s.snmp.Community = s.snmp.TrapDestination = nullptr; }},
        {"snmp", 8, "TrapDestination cannot be NULL", [](S s) { s.snmp.TrapDestination = nullptr; }},
        {"snmp", 818, "Invalid TrapDestination (::1,h) (rc=1).",
         [](S s) { s.snmp.TrapDestination = "::1,h"; }},
        {"ssh", 821, port, [](S s) { s.ssh.Port = 65536; }},
        {"https", 829, "Invalid SSL Key Host Address (a b)(1 ).",
         [](S s) { s.https.Port = 1, s.https.SslKeyHost = "a b"; }},
        {"https", 827, "Invalid Additional https port (1023)(0 ).", [](S s) { s.https.Port = 1023; }},
        {"https", 827, "Invalid Additional https port (65536)(0 ).", [](S s) { s.https.Port = 65536; }},
    };
    const std::string before = content();
    for (const auto &c : cases) {
        Services wrong;
        c.spoil(wrong);
        wrong.records["cifs"]._link = &wrong.records[c.id]; // what the first one stores must not stay
        wrong.records[c.id]._link = nullptr;
        wrong.collection.Protocol = &wrong.records["cifs"];
        EXPECT_FAILS(qbobj_setProtocolCollection(qbdb, db, &wrong.collection, &err), c.code, c.message);
        EXPECT_STREQ("qbobj_api2_set_protocol", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ProtocolWrite, AServiceWithOptionsNeedsThem)
{
    for (const char *id :
         {"nfs", "ftp", "daap", "snmp", "ssh", "replicate", "dlna", "http", "https", "bonjour"}) {
        qbobj_Protocol_t bare{};
        bare.resource_id = id;
        qbobj_ProtocolCollection_t collection{&bare};
        std::string name = id == std::string("daap") ? "dlna" : id; // callers know it so
        name.front() = static_cast<char>(name.front() - 'a' + 'A');
        EXPECT_FAILS(qbobj_setProtocolCollection(qbdb, db, &collection, &err), QBOBJ_ERROR_API_ARGS,
                     (name + "Options cannot be NULL").c_str());
    }
}

TEST_F(ProtocolWrite, TakesWhatIsJustAllowed)
{
    const char *const stored =
        "SELECT F.port,F.passive_range_min,F.passive_range_max,F.masquerade,F.max_upload_rate,"
        "F.max_download_rate,S.allow_host,S.trap_destination,D.password "
        "FROM service_ftp F,service_snmp S,service_daap D";
    sql("UPDATE service_daap SET password='old'");
    services.ftp = {1, "anonymous", 32768, 32768, 1, "0", 0, 0, 0, 0, 0, 99999, 0};
    services.snmp.AllowHost = services.snmp.TrapDestination = "";
    services.daap.password = masked_password;
    EXPECT_OK(set());
    EXPECT_EQ("1|32768|32768|0|99999|0|||old", rows(stored).front());

    services.ftp = {65535, "user", 32768, 65535, 0, "a b", 0, 0, 0, 0, 0, 0, 99999};
    services.daap.password = "";
    EXPECT_OK(set());
    EXPECT_EQ("65535|32768|65535|a b|0|99999|||", rows(stored).front());

    services.ftp.EnableMasquerade = 1;
    services.records["ftp"].Enabled = 0;
    EXPECT_OK(set());
}

TEST_F(ProtocolWrite, AnAdditionalPortMustBeFreeUnlessItIsTheStoredOne)
{
    const int listening = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(0, bind(listening, reinterpret_cast<sockaddr *>(&address), size));
    ASSERT_EQ(0, listen(listening, 1));
    ASSERT_EQ(0, getsockname(listening, reinterpret_cast<sockaddr *>(&address), &size));
    const std::string port = std::to_string(services.https.Port = ntohs(address.sin_port));
    EXPECT_FAILS(set(), QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT_IN_USE,
                 ("Additional https port in use  (" + port + ")(1 ).").c_str());
    sql("UPDATE service_https SET port=" + port);
    EXPECT_OK(set());
    ::close(listening);
    sql("UPDATE service_https SET port=0");
    EXPECT_OK(set());
    EXPECT_EQ(port, value("SELECT port FROM service_https"));
}

TEST_F(ProtocolWrite, AnyKeyNamesTheServiceTheFirstInOrderWins)
{
    services.records["rsync"].resource_id = "upnpd";
    services.records["upnpd"].ProtocolName = nullptr;
    ASSERT_OK(set());
    EXPECT_EQ("1 0", value("SELECT U.enabled||' '||R.enabled FROM service_upnpd U,service_rsync R"));
}

TEST_F(ProtocolWrite, SwitchesOneService)
{
    const std::pair<const char *, const char *> switches[] = {
        {"cifs", "enabled FROM service_cifs"},
        {"smartnetwork", "enabled FROM service_smartnetwork"},
        {"smartnetwork", "val FROM service_misc WHERE key='APPSPRITE'"},
        {"anti-virus", "val FROM service_misc WHERE key='ANTIVIRUS'"},
        {"skyport", "val FROM service_misc WHERE key='SKYPORT'"}};
    for (const auto &[id, column] : switches)
        for (const int on : {5, 0}) {
            EXPECT_OK(enable(id, on));
            EXPECT_EQ(on != 0 ? "1" : "0", value(std::string("SELECT ") + column)) << id;
        }
    EXPECT_FAILS(enable(nullptr, 1), QBOBJ_ERROR_API_ARGS, "protocol cannot be NULL");
    EXPECT_FAILS(enable("https", 1), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query 'INSERT OR REPLACE service_xxx'. (no such column: enabled)");
    for (const std::string id : {"bonjour", "cifs SET enabled=9 --", "cifs\" SET enabled=9 --"})
        EXPECT_FAILS(
            enable(id.c_str(), 1), QBOBJ_ERROR_DB_MISC,
            ("Failed DB Query 'INSERT OR REPLACE service_xxx'. (no such table: service_" + id + ")").c_str());
    EXPECT_EQ("0", value("SELECT enabled FROM service_cifs"));
}

/* ---- When changes cannot be followed ------------------------------------------------------------------- */

TEST_F(ProtocolWrite, WithoutCopiesNothingIsStoredAndNothingIsSaid)
{
    reopen(QBDB_LOG_WARN);
    sql("DROP TABLE service_avahi");
    const std::string before = content();
    EXPECT_OK(set());
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_EQ(before, content());
    EXPECT_EQ("", services.take_changed());
    EXPECT_NE(std::string::npos, log().find("The settings of the services are not stored"));
}

// On a connection of the caller's own the copies are tables, which the database may refuse to read or to drop.
class OwnConnection : public ProtocolWrite
{
  protected:
    OwnConnection()
    {
        sqlite3_open(file().c_str(), &own_);
        sqlite3_set_authorizer(own_, judge, this);
    }
    ~OwnConnection() { sqlite3_close(own_); }
    int set_refusing(int action)
    {
        refused_ = action;
        return qbobj_setProtocolCollection(qbdb, own_, &services.collection, &err);
    }

  private:
    static int judge(void *self, int action, const char *table, const char *, const char *, const char *)
    {
        const bool copy = table != nullptr && std::string_view(table).starts_with("_setprotocol_");
        return copy && action == static_cast<OwnConnection *>(self)->refused_ ? SQLITE_DENY : SQLITE_OK;
    }
    sqlite3 *own_ = nullptr;
    int refused_ = 0;
};

TEST_F(OwnConnection, AFailedComparisonMarksNothingAndCopiesThatStayUndoTheCall)
{
    EXPECT_EQ(QBOBJ_ERROR_SIGSEGV, set_refusing(SQLITE_DROP_TEMP_TABLE));
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_EQ(nullptr, err.msg);
    EXPECT_NE(std::string::npos, log().find("Error in qbdb_sql_delete_tables()"));
    EXPECT_EQ("0", value("SELECT enabled FROM service_cifs"));
    services.take_changed();

    EXPECT_OK(set_refusing(SQLITE_READ));
    EXPECT_EQ("", services.take_changed());
    EXPECT_EQ("1", value("SELECT enabled FROM service_cifs"));
}

} // namespace
