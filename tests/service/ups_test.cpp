// UPS devices: which are watched, how they are reached, and what they report.
#include "database.h"

#include <cstring>
#include <string_view>
#include <utility>

using namespace qbobj_test;

namespace
{

using Ups = qbobj_UpsConfig_t;
constexpr qbobj_error_t args = QBOBJ_ERROR_API_ARGS;
constexpr qbobj_error_t misc = QBOBJ_ERROR_DB_MISC;
constexpr qbobj_error_t too_long = QBOBJ_ERROR_UI__NAME_TOO_LONG;
constexpr qbobj_error_t wrong_char = QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR;

class UpsConfig : public Database
{
  protected:
    static Ups device(std::string_view type, const char *name, const char *key = nullptr)
    {
        const char *port = type == "local" ? nullptr : "10.0.0.9";
        return {nullptr,   key,      port,    type.data(), 1, name,       "it's",   "M",
                "it's",    "2020",   "7",     20,          1, "10.0.0.1", "public", "apcc",
                "watcher", "secret", nullptr, nullptr,     0, nullptr};
    }
    int add(Ups ups) { return qbobj_addUpsConfig(qbdb, db, &ups, &err); }
    int set(Ups ups) { return qbobj_setUpsConfig(qbdb, db, &ups, &err); }
    int report(Ups ups) { return qbobj_setUpsInfo(qbdb, db, &ups, &err); }
    int remove(Ups ups) { return qbobj_deleteUpsConfig(qbdb, db, &ups, &err); }
    std::string stored()
    {
        return value("SELECT group_concat(name||'@'||host||' '||port||' '||type||' '||enabled||' '||"
                     "shutdown_threshold||ifnull(' '||snmp_community||' '||snmp_mibs,'')||"
                     "ifnull(' '||remote_username||' '||remote_password,''),'; ') FROM _ups_config");
    }
    std::string sharing() { return rows("SELECT enabled,listen1 FROM service_upsd").at(0); }

    // A value of one type of device that is refused; "%" in the message stands for it.
    struct Refusal {
        std::string_view type;
        const char *Ups::*field;
        const char *value;
        qbobj_error_t code;
        std::string message;
    };
    // A type's cases stand against the order of the checks: each is found before those that are wrong already.
    void expect_refused(decltype(qbobj_addUpsConfig) operation, const char *unit,
                        const std::vector<Refusal> &cases)
    {
        const std::string before = content();
        std::string_view type;
        Ups ups{};
        for (const Refusal &c : cases) {
            if (std::exchange(type, c.type) != c.type)
                ups = device(c.type, "x", c.type == "remote" ? "b@10.0.0.9" : "a@localhost");
            ups.*c.field = c.value;
            std::string message = c.message;
            if (const std::size_t at = message.find('%'); at != message.npos)
                message.replace(at, 1, c.value);
            EXPECT_FAILS(operation(qbdb, db, &ups, &err), c.code, message.c_str());
            EXPECT_STREQ(unit, err.file);
            EXPECT_EQ(before, content());
        }
        EXPECT_EQ(args, operation(qbdb, db, nullptr, &err));
        EXPECT_EQ(nullptr, err.msg);
    }
};

TEST_F(UpsConfig, EachTypeIsStoredAndReadInItsOwnWay)
{
    Ups chain[] = {device("local", "a"), device("SNMP", "b"), device("remote", "c123456789abcde")};
    chain[0]._link = &chain[1];
    chain[1]._link = &chain[2];
    chain[1].SnmpMibs = "";
    EXPECT_OK(add(chain[0]));
    EXPECT_STREQ("b@localhost", chain[1].resource_id);
    EXPECT_STREQ("c123456789abcde@10.0.0.9", chain[2].resource_id);
    EXPECT_EQ("a@localhost auto local 1 20; b@localhost 10.0.0.9 SNMP 1 20 public auto; "
              "c123456789abcde@10.0.0.9 10.0.0.9 remote 1 20 watcher secret",
              stored());
    EXPECT_EQ("1|10.0.0.1", sharing());

    sql("INSERT INTO _ups_health (name,host,ups_status) VALUES('b','localhost','OL LB RB')");
    qbobj_UpsConfigCollection_t collection{};
    EXPECT_OK(qbobj_getUpsConfigCollection(qbdb, db, &collection, &err));
    Ups expected[] = {
        {&expected[1],
         "a@localhost",
         "auto",
         "local",
         1,
         "a",
         "it's",
         "",
         "",
         "",
         "",
         20,
         1,
         "10.0.0.1",
         "",
         "",
         "",
         "",
         "?",
         nullptr,
         0,
         nullptr},
        {&expected[2], "b@localhost", "10.0.0.9", "SNMP", 1,  "b",        "it's",  "", "",     "", "", 20, 0,
         nullptr,      "public",      "auto",     "",     "", "OL_LB_RB", nullptr, 0,  nullptr},
        {nullptr,    "c123456789abcde@10.0.0.9",
         "10.0.0.9", "remote",
         1,          "c123456789abcde",
         "it's",     "",
         "",         "",
         "",         20,
         0,          nullptr,
         "",         "",
         "watcher",  "secret",
         "?",        nullptr,
         0,          nullptr},
    };
    EXPECT_EQ(dump("UpsConfig", expected), dump("UpsConfig", collection.UpsConfig));
    Ups *one = nullptr;
    EXPECT_OK(qbobj_getUpsConfigByNameAtHost(qbdb, db, expected[2].resource_id, &one, &err));
    EXPECT_EQ(dump("UpsConfig", &expected[2]), dump("UpsConfig", one));
    EXPECT_OK(qbobj_getUpsConfigByNameAtHost(qbdb, db, "a", &one, &err));
    EXPECT_EQ(nullptr, one);
}

TEST_F(UpsConfig, AddingRefusesWhatIsWrong)
{
    const std::string bad_char = "UPS Name (%) contains invalid char. Must be '[a-zA-Z][0-9a-zA-Z]*'.";
    const std::string missing =
        "Failed DB Query for 'INSERT _ups_config'. NOT NULL constraint failed: _ups_config.";
    const std::vector<Refusal> cases{
        {"local", &Ups::Port, "auto", args, "Invalid Port (%), must be IPv4 address."},
        {"local", &Ups::Type, "usb", args, "Invalid Type (%), must be either 'remote' or 'snmp'."},
        {"local", &Ups::Name, "a123456789abcdef", too_long, "UPS Name (%) is too long"},
        {"local", &Ups::Name, "1a", wrong_char, bad_char},
        {"local", &Ups::Name, "a@b", wrong_char, bad_char},
        {"local", &Ups::Name, "", args, "Invalid UPS Name (%), rc=1"},
        {"snmp", &Ups::Port, nullptr, misc, missing + "port"},
        {"snmp", &Ups::SnmpCommunity, "a b", args, "Invalid community (%)."},
        {"snmp", &Ups::SnmpMibs, "APCC", args, "Invalid mibs (%)."},
        {"remote", &Ups::Port, nullptr, misc, missing + "host"},
        {"remote", &Ups::RemotePassword, "47", args, "Invalid remote NUT passwer (%)."},
        {"remote", &Ups::RemotePassword, nullptr, args, "Need to specify RemotePassword."},
        {"remote", &Ups::RemoteUserName, "a b", args, "Invalid remote NUT user name (%)."},
        {"remote", &Ups::RemoteUserName, nullptr, args, "Need to specify RemoteUserName."},
    };
    expect_refused(qbobj_addUpsConfig, "qbobj_api2_add_ups", cases);

    for (const char *name : {"a", "b", "c", "d", "e", "f"})
        EXPECT_OK(add(device("snmp", name)));
    EXPECT_FAILS(add(device("snmp", "g")), QBOBJ_ERROR_UI__TOO_MANY_UPS,
                 "Too many UPS. There are 6 UPSs enalbed already.");
    sql("UPDATE _ups_config SET enabled=0 WHERE name='c'");
    EXPECT_OK(add(device("snmp", "g")));
}

TEST_F(UpsConfig, ChangingAndRemovingRefuseWhatIsWrong)
{
    EXPECT_OK(add(device("snmp", "a")));
    EXPECT_OK(add(device("remote", "b")));
    const std::string remote = "Failed DB Query for 'UPDATE _ups_config' for REMOTE ups. incomplete input";
    const std::vector<Refusal> changes{
        {"snmp", &Ups::SnmpMibs, "x", args, "Invalid mibs (%)."},
        {"snmp", &Ups::Name, "a123456789abcdef", too_long, "UPS Name (%) is too long"},
        {"snmp", &Ups::Type, "local", args, "Cannot change UPS type snmp-->%."},
        {"snmp", &Ups::Type, nullptr, args, "Cannot change UPS type snmp-->(null)."},
        {"snmp", &Ups::resource_id, "a", args, "No UPS for resource-id='%'."},
        {"snmp", &Ups::resource_id, nullptr, args, "Invalid resource-id ((null))"},
        {"remote", &Ups::Name, "fine", misc, remote},
        {"remote", &Ups::RemotePassword, "a b", args, "Invalid remote NUT password (%)."},
    };
    expect_refused(qbobj_setUpsConfig, "qbobj_api2_set_ups", changes);
    expect_refused(qbobj_setUpsInfo, "qbobj_api2_set_ups",
                   {{"snmp", &Ups::resource_id, "a", args, "No UPS for resource-id='%'."},
                    {"snmp", &Ups::resource_id, nullptr, args, "NULL resource_id"}});
    expect_refused(qbobj_deleteUpsConfig, "qbobj_api2_delete_ups",
                   {{"snmp", &Ups::resource_id, "a", args, "Specified resource-id='%' does not exist."},
                    {"snmp", &Ups::resource_id, nullptr, args, "NULL resource_id"}});
}

TEST_F(UpsConfig, SettingsAreWrittenToEveryDeviceAndReportsToOne)
{
    EXPECT_OK(add(device("local", "a")));
    EXPECT_OK(add(device("remote", "b")));
    Ups local = device("LOCAL", "x", "a@localhost");
    local.Enabled = local.Share_enabled = 0;
    local.ShutdownThreshold = 30;
    EXPECT_OK(set(local));
    EXPECT_EQ("x@localhost auto local 0 30; x@10.0.0.9 10.0.0.9 remote 0 30 watcher secret", stored());
    EXPECT_EQ("0|10.0.0.1", sharing());

    for (const char *key : {"x@localhost", "x@10.0.0.9"}) // only the remote one reports its threshold
        EXPECT_OK(report(device("", nullptr, key)));
    EXPECT_EQ((std::vector<std::string>{"M|it's|2020|7|30", "M|it's|2020|7|20"}),
              rows("SELECT ups_model,ups_mfr,ups_mfr_date,ups_serial,shutdown_threshold FROM _ups_config"));

    sql("UPDATE service_upsd SET enabled=1");
    EXPECT_OK(remove(device("", nullptr, "x@10.0.0.9")));
    EXPECT_EQ("1|10.0.0.1", sharing());
    EXPECT_OK(remove(device("", nullptr, "x@localhost")));
    EXPECT_EQ("0|10.0.0.1", sharing());
    EXPECT_EQ("NULL", stored());

    EXPECT_OK(add(device("snmp", "b")));
    Ups snmp = device("snmp", "y", "b@localhost");
    snmp.SnmpMibs = nullptr;
    EXPECT_OK(set(snmp));
    EXPECT_EQ("y@localhost 10.0.0.9 snmp 1 20 public auto", stored());
}

} // namespace
