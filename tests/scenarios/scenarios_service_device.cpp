// A call of every operation on Time Machine, the vault, the daemon's record, UPS devices and the TiVo archiver.
#include "scenarios.h"

#include <fstream>

using qbobj_json::Json;

namespace qbobj_test
{

void furnish_service_devices(Appliance &appliance)
{
    appliance.sql("UPDATE account_default SET home_volume_id='data';"
                  "UPDATE service_misc SET val='1' WHERE key='QUBRIXVAULT';"
                  "INSERT INTO service_vault VALUES (1,'ann@office.example','pw','nightly');"
                  "INSERT INTO service_tivo VALUES ('1','30','/data/docs','Sun');"
                  "INSERT INTO _ups_config (name,host,port,type) VALUES ('desk','localhost','auto','local'),"
                  "('rack','localhost','10.0.0.9','snmp'),('far','10.0.0.8','10.0.0.8','remote')");
    const std::filesystem::path bridge = appliance.root() / "var/lib/tivobridge";
    std::filesystem::create_directories(bridge);
    std::ofstream(bridge / "status") << "[info]\nstatus=ok\n[Den]\nstatus=ready\n";
}

std::vector<Scenario> service_device_scenarios()
{
    return {
        {"getTimemachine", nullptr},
        {"setTimemachine", {{"Enabled", 1}, {"Password", "apple"}, {"CapacityMB", 700}}},
        {"setTimemachineEnable", {{"enable", 1}}},
        {"getVaultSettings", nullptr},
        {"setVaultSettings",
         {{"Action", "login"}, {"UserName", "a@b.example"}, {"UserPassword", "x"}, {"DefaultJob", "y"}}},
        {"cleanVaultSettings", {{"Action", "logout"}}},
        {"getQubrixdInfo", nullptr},
        {"setQubrixdInfo", {{"LastStarted", 7}, {"LastStopped", 8}, {"Version", "2"}}},

        {"getUpsConfigCollection", nullptr},
        {"getUpsConfigByNameAtHost", {{"NameAtHost", "rack@localhost"}}},
        {"addUpsConfig",
         Json::parse(
             R"([{"Name": "a", "Type": "local", "Description": "d", "Share_enabled": 1, "List1": "10.0.0.1"},
            {"Name": "b", "Type": "snmp", "Port": "10.0.0.9", "SnmpCommunity": "public", "SnmpMibs": "apcc"},
            {"Name": "c", "Type": "remote", "Port": "10.0.0.8", "RemoteUserName": "u", "RemotePassword": "p"}])")},
        {"setUpsConfig",
         {{"resource_id", "desk@localhost"}, {"Type", "local"}, {"Name", "x"}, {"List1", "10.0.0.1"}}},
        {"setUpsInfo", {{"resource_id", "far@10.0.0.8"}, {"UpsModel", "m"}, {"ShutdownThreshold", 10}}},
        {"deleteUpsConfig", {{"resource_id", "desk@localhost"}}},

        {"getTIVOSettings", nullptr},
        {"setTIVOSettings", {{"TIVOfolder", "/data/docs"}, {"hour", "2"}, {"minute", "0"}, {"days", "Mon"}}},
        {"setTIVOMak", {{"name", "Den"}, {"status", "true"}, {"key", "k"}}},
    };
}

} // namespace qbobj_test
