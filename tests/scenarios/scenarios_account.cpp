// Single settings, users, groups, passwords, defaults and directory security.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

std::vector<Scenario> settings_scenarios()
{
    return {
        {"getServiceEntry", {{"key", "LANGUAGE"}}},
        {"setServiceEntry", {{"key", "LANGUAGE"}, {"val", "en-us"}}},
        {"setRegistryEntry", {{"key", "model"}, {"val", "x"}}},
        {"getRegistryEntry", {{"key", "missing"}}, true},
        {"getFolderAttribute", {{"path", "/data/docs/a"}}},
    };
}

std::vector<Scenario> account_scenarios()
{
    return {
        {"getSecurity", nullptr},
        {"setSecurity", Json::parse(R"({"Security": "ads", "workGroup": "OFFICE", "Realm": "office.example",
            "orgUnit": "ou", "restrictOU": "", "domainAdministrator": "admin", "passWordServer": "dc1.office"})")},
        {"getSecurityAdsProgress", nullptr},

        {"getUserCollection", {{"collection", Json::object()}, {"encrypt_flag", 0}}},
        {"getUser", {{"UserId", 100}}},
        {"getSystemUser", {{"resource_id", 100}}},
        {"getCloudUser", nullptr},
        {"getUserInGroupName", {{"gname", "staff"}, {"primaryOnly", 0}}},
        {"getUID", {{"uname", "ann"}}},
        {"getUserName", {{"uid", 100}}},
        {"getPosixUID", {{"uname", "ann"}}},
        {"getPosixUIDbyUID", {{"uid", 100}}},
        {"getPosixUIDGID", {{"uname", "ann"}}},
        {"getGID", nullptr},
        {"getGroupName", {{"gid", 100}}},
        {"getPrimaryGID", {{"uname", "ann"}}},
        {"getPosixGID", nullptr},
        {"getPosixGIDbyGID", {{"gid", 100}}},
        {"isMemberOfGroup", {{"uname", "ann"}, {"gname", "staff"}}},
        {"addUser", Json::parse(R"([
            {"UserName": "eve", "Password": "pw-eve", "Email": "eve@office.example", "GroupName": "staff",
             "UserQuota": [{"ShareId": "data/docs", "HardMB": 10}],
             "HomeFolderSettings": {"SizeLimit": 5, "VisibleSnapshot": 1, "VisibleSnapFolder": "snaps"},
             "TimeMachineQuota": {"Enabled": 1, "CapacityMB": 100}},
            {"UserName": "fay"}])")},
        {"addUserList", Json::parse(R"([{"UserName": "gus", "GroupName": "staff"}, {"UserName": "hal"}])")},
        {"checkUserList", Json::parse(R"({"user_collection_bak": {}, "group_collection_bak": {}})")},
        {"modifyUser",
         Json::parse(R"({"UserId": 100, "UserName": "anna", "Password": "new", "Email": "anna@office.example",
            "GroupName": "board", "UserQuota": [{"ShareId": "data/docs", "HardMB": 100},
            {"ShareId": "data/plain", "HardMB": 0}], "HomeFolderSettings": {"SizeLimit": 9, "VisibleSnapshot": 1},
            "TimeMachineQuota": {"Enabled": 1, "CapacityMB": 10}})")},
        {"setPrimaryGroupByName", {{"UserName", "ann"}, {"GroupName", "board"}}},
        {"disableEnableLocalUserByName", {{"Enable", 0}, {"UserName", "ann"}}},
        {"modifyUserVisibleSnapFolder", {{"UserId", 100}, {"VisibleSnapFolder", "snaps"}}},
        {"deleteUser", {{"UserId", 101}}},
        {"deleteUserByName", {{"UserName", "bob"}}},

        {"getGroupCollection", {{"collection", Json::object()}}},
        {"getGroup", {{"GroupId", 100}}, true},
        {"getSystemGroup", {{"resource_id", 100}}},
        {"addGroup",
         Json::parse(R"([{"GroupName": "guests2", "GroupQuota": [{"ShareId": "data/docs", "HardMB": 10}],
            "SecondaryMember": [{"UserId": 100}, {"UserId": 101}]}])")},
        {"modifyGroup", Json::parse(R"({"GroupId": 101, "GroupName": "directors",
            "GroupQuota": [{"ShareId": "data/docs", "HardMB": 10}, {"ShareId": "data/plain", "HardMB": 0}],
            "SecondaryMember": [{"UserId": 100, "UserName": "ann"}]})")},
        {"deleteGroup", {{"GroupId", 101}}},

        {"getAdminPassword", nullptr},
        {"setAdminPassword",
         Json::parse(R"({"Password": "new", "Question": "q", "Answer": "a", "Email": "e@x.y"})")},
        {"setUserPassword", {{"UserId", 100}, {"Password", "new"}}},
        {"setMyPassword", {{"UserName", "ann"}, {"OldPassword", "pw-ann"}, {"NewPassword", "new"}}},
        {"getAccountDefault", nullptr},
        {"setAccountDefault", {{"HomeVolumeId", "data"}, {"DiskQuotaWarn", 80}, {"GroupId", 99}}},
    };
}

} // namespace qbobj_test
