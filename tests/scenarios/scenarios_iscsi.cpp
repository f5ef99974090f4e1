// LUN groups, LUNs, initiators and access lists.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

std::vector<Scenario> iscsi_scenarios()
{
    return {
        {"getLunGroupAccessList", {{"LunGroup", "vault"}}},
        {"addLunGroupAccessList", {{"LunGroup", "vault"}, {"Initiator", "laptop"}}},
        {"deleteLunGroupAccessList", {{"LunGroup", "vault"}}},
        {"deleteIniFromLunGroupAccessList", {{"Initiator", "desk"}}},
        {"getLunGroupCollection", nullptr},
        {"getLunGroup", {{"Name", "vault"}}},
        {"addLunGroup", Json::parse(R"([{"Name": "tapes", "Target": "iqn.x:tapes", "AnyInitiator": 1},
            {"Name": "safe", "ChapAuth": 1, "ChapSecret": "twelve chars"}])")},
        {"modifyLunGroup",
         Json::parse(R"([{"Name": "vault", "Target": "iqn.x:new", "ChapSecret": "other"}])")},
        {"deleteLunGroup", {{"LunGroupName", "vault"}}},
        {"getInitiatorCollection", nullptr},
        {"getInitiator", {{"Name", "desk"}}},
        {"addInitiator",
         Json::parse(R"([{"Name": "iqn.x:laptop", "ChapAuth": 1, "ChapSecret": "twelve chars"},
            {"Name": "any"}])")},
        {"modifyInitiator", Json::parse(R"([{"Name": "desk", "ChapAuth": 1, "ChapSecret": "other"}])")},
        {"deleteInitiator", {{"Name", "desk"}}},
        {"getLun", {{"Name", "disk"}}},
        {"addLun", Json::parse(R"([{"Name": "disk2", "LunGroup": "vault", "LunN": 2}, {"Name": "disk3"}])")},
        {"deleteLun", {{"Name", "disk"}}},
        {"getLunId", {{"lun_name", "disk"}}},
        {"getLunGroupId", {{"lun_group_name", "vault"}}},
        {"getInitiatorId", {{"initiator_name", "desk"}}},
    };
}

void furnish_iscsi(Appliance &appliance)
{
    appliance.sql("INSERT INTO `$iscsi_lun_group` (name,target,all_hosts,chap_auth,chap_secret)"
                  " VALUES('vault','iqn.x:vault',0,1,'secret of vault');"
                  "INSERT INTO `$iscsi_lun` (name,lun_group,lun_n) VALUES('disk','vault',1);"
                  "INSERT INTO `$iscsi_initiator` (name,chap_auth,chap_secret) VALUES('desk',0,'');"
                  "INSERT INTO `$iscsi_lun_group_access` VALUES('vault','desk'),('vault','iqn.x:unknown')");
}

} // namespace qbobj_test
