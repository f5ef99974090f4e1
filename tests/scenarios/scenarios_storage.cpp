// Volumes, disks, enclosures and health readings: an office's, and a call of every operation on them.
#include "scenarios.h"

#include <fstream>

using qbobj_json::Json;

namespace qbobj_test
{

// A shelf of three disks: one in its slot, one that came since the last look, one that was pulled before it.
void furnish_storage(Appliance &appliance)
{
    appliance.sql(
        "INSERT INTO _disk_enclosure (controller,name,nr_row,nr_column,nr_fan) VALUES(0,'Shelf',1,4,1);"
        "INSERT INTO jbod_port VALUES(0,'Port 0'); INSERT INTO disk_port VALUES(0,1,1,1),(0,2,2,1);"
        "INSERT INTO `$disk_info` (id,present,controller,port,channel,volume_id,pool_state,pool_hostid) "
        "VALUES"
        "('sda',1,0,1,1,'data',0,7),('sdb',NULL,0,2,2,NULL,0,0),('sdc',0,0,2,2,'data',0,7),"
        "('sdd',1,0,1,1,NULL,0,0);"
        "INSERT INTO _disk_health (disk_id,temp) VALUES('sda',40);"
        "INSERT INTO enclosure_health_spec VALUES(0,'Fan','1',100,900,'rear');"
        "INSERT INTO _enclosure_health VALUES(0,'Fan','1',500,500,500,500)");
    for (const char *name : {"sda", "sdb"}) {
        std::filesystem::create_directories(appliance.root() / "sys/block" / name / "device");
        std::ofstream(appliance.root() / "sys/block" / name / "size") << "2048\n";
    }
    std::ofstream(appliance.root() / "readings") << "0,Fan,1,600\n0,Fan,1,-481\n";
}

std::vector<Scenario> storage_scenarios()
{
    return {
        {"getVolumeCollection", nullptr},
        {"updateVolume", Json::parse(R"({"VolumeId": "data", "BlockTotal": 9, "VolumeHealth": "FAULTED"})")},
        {"deleteVolume", {{"VolumeId", "data"}}},
        {"getDiskCollection", nullptr},
        {"getDiskCollectionForController", {{"collection", Json::object()}, {"controller", 0}}},
        {"getDiskByDevname", {{"DevName", "sda"}}},
        {"setDiskSpare", {{"devname", "sda"}, {"flag", 1}}},
        {"getDiskDiff", nullptr},
        {"getDiskByDiskDiff", Json::parse(R"({"Controller": 0, "Channel": 2})")},
        {"deleteDiskByDevname", {{"DevName", "sda"}}},
        {"getDiskEnclosureCollection", nullptr},
        {"getDiskEnclosurePort", {{"DiskEnclosureId", 0}}},
        {"getDiskHealthCollection", nullptr},
        {"setDiskHealth", Json::parse(R"([{"DiskId": "sda", "Temp": 41}, {"DiskId": "sdb"}])")},
        {"getEnclosureHealth", {{"Controller", 0}}},
        {"getEnclosureHealthCollection", nullptr},
        {"setEnclosureHealth", Json::parse(R"({"Controller": 0, "Health": [
            {"Name": "Fan", "DevId": "1", "Value": 700}, {"Name": "Volt", "DevId": "1", "Value": 12}]})")},
        {"setEnclosureHealthForTest", {{"path", "/readings"}}},
        {"getUpsHealthCollection", nullptr},
        {"setUpsHealth", Json::parse(R"([{"UpsName": "desk", "ServerHost": "localhost", "UpsStatus": "OL",
            "BatteryCharge": "93"}])")},
    };
}

} // namespace qbobj_test
