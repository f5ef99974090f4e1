// The settings of the services, as callers read them.
#include "database.h"

#include <sstream>

using namespace qbobj_test;

namespace
{

// What a record of a service and its options hold, in the order of the schemas: "ssh ssh 1 0 2222" for identifier, name,
// switch, mark and the port.
std::string shown(qbobj_Protocol_t &protocol)
{
    qbobj_Protocol_t alone = protocol;
    alone._link = nullptr;
    std::string values;
    std::istringstream lines(dump("Protocol", &alone));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find(" = ");
        if (equals != std::string::npos && line.back() != '{' && !line.ends_with("Options = NULL"))
            values += (values.empty() ? "" : " ") + line.substr(equals + 3);
    }
    return values;
}

class ProtocolRead : public Database
{
  protected:
    int get(const char *name)
    {
        protocol = nullptr;
        return qbobj_getProtocol(qbdb, db, name, &protocol, &err);
    }
    qbobj_Protocol_t *protocol = nullptr;
};

TEST_F(ProtocolRead, EveryColumnHasItsField)
{
    const struct {
        const char *id;
        const char *row;   // table, columns and values; empty: as it is
        const char *shown; // after identifier and name
    } cases[] = {
        {"cifs",
         "cifs SET (enabled,user_home_directory,user_home_directory_recycle,"
         "user_home_directory_recycle_max_days,user_home_directory_recycle_max_size)=(1,2,3,4,5)",
         "1 0 2 3 4 5"},
        {"afp", "afp SET enabled=1", "1 0"},
        {"nfs", "nfs SET (enabled,threads,user_home_directory,nfsv4,domain)=(1,2,3,4,'d')", "1 0 0 2 3 4 d"},
        {"nfs", "nfs SET domain=NULL", "1 0 0 2 3 4 "},
        {"ftp",
         "ftp SET (enabled,port,auth_mode,passive_range_min,passive_range_max,enable_masquerade,masquerade,"
         "upload_resume,user_home_directory,ftps,server_transfer_log,max_upload_rate,max_download_rate,"
         "force_ftps)=(1,2,'a',4,5,6,'m',8,9,10,11,12,13,14)",
         "1 0 2 a 4 5 6 m 8 9 10 14 11 12 13"},
        {"daap", "daap SET (enabled,sharename,password,directory)=(1,'s','secret','d')", "1 0 s ●●●●●●●● d"},
        {"daap", "daap SET password=''", "1 0 s  d"},
        {"snmp", "snmp SET (enabled,allow_host,community,trap_destination)=(1,'h','c','t')", "1 0 h c t"},
        {"snmp", "snmp SET allow_host='default'", "1 0  c t"},
        {"ssh", "ssh SET (enabled,port,ui_enabled)=(1,2,0)", "0 0 2"},
        {"ssh", "ssh SET (enabled,port,ui_enabled)=(0,0,1)", "1 0 22"},
        {"ssh", "ssh SET port=NULL", "1 0 22"},
        {"replicate", "replicate SET (enabled,owner,priv_data)=(1,'o','p')", "1 0 o p (null)"},
        {"smartnetwork", "smartnetwork SET enabled=1", "1 0"},
        {"rsync", "rsync SET enabled=1", "1 0"},
        {"dlna", "dlna SET (enabled,inotify,enable_tivo_server,enable_tivo_archiver)=(1,2,3,4)", "1 0 2 3 4"},
        {"http", "http SET (enabled,use_password,share_name,http_admin)=(1,2,'s',4)", "1 0 2 s 4"},
        {"https", "https SET (port,ssl_key_host)=(2,'h')", "1 0 2 h"},
        {"anti-virus", "misc SET val='1' WHERE key='ANTIVIRUS'", "1 0"},
        {"skyport", "misc SET val='1' WHERE key='SKYPORT'", "1 0"},
        {"bonjour", "avahi SET (enabled,cifs,afp,panelview,printer,qubrix,timemachine)=(1,2,3,4,5,6,7)",
         "1 0 2 3 4 5 6 7"},
    };
    for (const auto &c : cases) {
        sql(std::string("UPDATE service_") + c.row);
        ASSERT_OK(get(c.id));
        EXPECT_STREQ(c.id, protocol->resource_id);
        EXPECT_EQ(std::string(c.id) + " " + c.id + " " + c.shown, shown(*protocol)) << c.row;
    }
}

TEST_F(ProtocolRead, ACollectionListsSixteenInOrder)
{
    sql("UPDATE service_upnpd SET enabled=3; UPDATE service_snmp SET community='c'");
    qbobj_ProtocolCollection_t collection{};
    ASSERT_OK(qbobj_getProtocolCollection(qbdb, db, &collection, &err));
    std::string ids;
    for (qbobj_Protocol_t *p = collection.Protocol; p != nullptr; p = p->_link) {
        ids += p->ProtocolId + std::string(" ");
        EXPECT_EQ(p->ProtocolId == std::string("upnpd"), p->Enabled == 3);
        EXPECT_EQ(p->ProtocolId == std::string("snmp"), p->SnmpOptions != nullptr);
    }
    EXPECT_EQ("cifs afp nfs ftp daap snmp ssh replicate smartnetwork upnpd rsync dlna http https anti-virus "
              "skyport ",
              ids);
}

TEST_F(ProtocolRead, WithoutItsRowAServiceIsOff)
{
    for (const char *table : {"cifs", "afp", "nfs", "ftp", "daap", "snmp", "ssh", "replicate", "smartnetwork",
                              "upnpd", "rsync", "dlna", "http", "https", "misc"})
        sql(std::string("DELETE FROM service_") + table);
    qbobj_ProtocolCollection_t collection{};
    ASSERT_OK(qbobj_getProtocolCollection(qbdb, db, &collection, &err));
    for (qbobj_Protocol_t *off = collection.Protocol; off != nullptr; off = off->_link) {
        const std::string id = off->resource_id;
        const bool unnamed = id.starts_with("http") || id == "anti-virus" || id == "skyport";
        EXPECT_EQ((unnamed ? "(null) (null)" : id + " " + id) + " 0 0", shown(*off));
    }
}

TEST_F(ProtocolRead, AFailureEndsTheListAndNamesTheTable)
{
    sql("DROP TABLE service_ftp");
    qbobj_ProtocolCollection_t collection{};
    EXPECT_FAILS(qbobj_getProtocolCollection(qbdb, db, &collection, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query 'SELECT service_ftp'. (no such table: service_ftp)");
    EXPECT_STREQ("qbobj_api2_get_protocol", err.file);
    const qbobj_Protocol_t *third = collection.Protocol->_link->_link;
    EXPECT_STREQ("nfs", third->ProtocolId);
    EXPECT_EQ(nullptr, third->_link->ProtocolId);
    EXPECT_EQ(nullptr, third->_link->_link);
    sql("DROP TABLE service_https");
    EXPECT_FAILS(get("https"), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query 'SELECT service_http'. (no such table: service_https)");
}

TEST_F(ProtocolRead, RefusesAnUnknownName)
{
    for (const char *name : {"upnpd", "CIFS", "", "cifs "}) {
        EXPECT_FAILS(get(name), QBOBJ_ERROR_API_ARGS,
                     (std::string("Unknojwn protocol name ") + name + "\n").c_str());
        EXPECT_EQ(nullptr, protocol);
    }
    EXPECT_EQ(QBOBJ_ERROR_API_ARGS, get(nullptr));
}

TEST_F(ProtocolRead, SnmpOptionsAreThereWhileSnmpIsOn)
{
    qbobj_SnmpOptions_t untouched{};
    for (const char *off : {"UPDATE service_snmp SET enabled=0", "UPDATE service_snmp SET enabled=NULL",
                            "DELETE FROM service_snmp"}) {
        sql(off);
        qbobj_SnmpOptions_t *options = &untouched;
        EXPECT_OK(qbobj_getSnmpOptions(qbdb, db, &options, &err));
        EXPECT_EQ(&untouched, options) << off;
    }
    sql("INSERT INTO service_snmp (enabled,allow_host,community,trap_destination) VALUES(1,'h','c','t')");
    qbobj_SnmpOptions_t *options = nullptr;
    ASSERT_OK(qbobj_getSnmpOptions(qbdb, db, &options, &err));
    ASSERT_NE(nullptr, options);
    EXPECT_STREQ("t", options->TrapDestination);
}

TEST_F(ProtocolRead, HomesAreReadAsTheyWereStored)
{
    qbobj_HomeFolderOptions_t stored{1, 2, 3, 4, 5};
    ASSERT_OK(qbobj_setHomeFolderOptions(qbdb, db, &stored, &err));
    EXPECT_EQ("1|2|3|4|5", rows("SELECT C.user_home_directory,N.user_home_directory,F.user_home_directory,"
                                "D.user_home_directory,A.user_home_directory FROM service_cifs C,"
                                "service_nfs N,service_ftp F,service_dlna D,service_afp A")
                               .front());
    qbobj_HomeFolderOptions_t read{};
    ASSERT_OK(qbobj_getHomeFolderOptions(qbdb, db, &read, &err));
    EXPECT_EQ(dump("HomeFolderOptions", &stored), dump("HomeFolderOptions", &read));

    sql("DROP TABLE service_dlna");
    const std::string before = content();
    EXPECT_FAILS(qbobj_setHomeFolderOptions(qbdb, db, &read, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'UPDATE service_xxx' no such table: service_dlna");
    EXPECT_EQ(before, content());
    EXPECT_FAILS(qbobj_getHomeFolderOptions(qbdb, db, &read, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'SELECT FROM service_xxx'. nrow=0 no such table: service_dlna");
}

} // namespace
