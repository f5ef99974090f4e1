// Snapshots, clones, spares and jobs of volumes: an office's, and a call of every operation on them.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

void furnish_snapshots(Appliance &appliance)
{
    appliance.sql("INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name,type,created_on) "
                  "SELECT uname,home,'daily',1,1000 FROM `$user` WHERE uname='ann';"
                  "INSERT INTO `$volume_spares` VALUES('sdb');"
                  "INSERT INTO volume_schedule (job_id,volume_id,action) VALUES(1,'data',2)");
}

std::vector<Scenario> snapshot_scenarios()
{
    const Json when = Json::parse(R"({"Enabled": 1, "Minute": "5", "Hour": "*", "DayOfMonth": "1"})");
    const Json page = {{"collection", Json::object()}, {"q_to", 2000}, {"OrderBy", "name"}, {"q_limit", 10}};
    const auto with = [](Json given, const Json &more) {
        given.update(more);
        return given;
    };
    const Json share = {{"ShareName", "docs"}, {"VolumeName", "data"}};
    const Json home = {{"UserName", "ann"}, {"HomeDir", "/data/home/ann"}};
    const Json clone = {{"ParentSnapshotName", "daily"}, {"ParentShareName", "docs"}};
    return {
        {"getSnapshotCollection", with(page, share)},
        {"getSnapshotCollectionCount", with({{"q_to", 2000}}, share)},
        {"addSnapshot", with({{"SnapshotName", "now"}, {"Type", 2}}, share)},
        {"deleteSnapshot", with({{"SnapshotName", "daily"}}, share)},
        {"getHfSnapshotCollection", with(page, home)},
        {"getHfSnapshotCollectionCount", with({{"q_to", 2000}}, home)},
        {"addHfSnapshot", with({{"SnapshotName", "now"}}, home)},
        {"deleteHfSnapshot", with({{"DeleteNewer", 1}, {"SnapshotName", ""}}, home)},
        {"getHfSnapshotSchedule", nullptr},
        {"addHfSnapshotSchedule", when},
        {"modifyHfSnapshotSchedule", when},
        {"getSnapshotClones", clone},
        {"addSnapshotClone", with({{"ClonedShareName", "copy"}}, clone)},
        {"deleteSnapshotClone", with({{"ClonedShareName", "plain"}}, clone)},
        {"getVolumeSparesCollection", nullptr},
        {"addVolumeSpare", {{"DevName", "sda"}}},
        {"deleteVolumeSpare", {{"DevName", "sdb"}}},
        {"getVolumeScheduleCollection", nullptr},
        {"addVolumeSchedule",
         Json::parse(R"({"VolumeName": "data", "JobID": 2, "Interval": {"Minute": "0"}})")},
        {"updateVolumeSchedule", Json::parse(R"({"JobID": 1, "Interval": {"Minute": "0"}})")},
        {"deleteVolumeSchedule", {{"JobID", -1}, {"VolumeName", "data"}}},
    };
}

} // namespace qbobj_test
