// Shares.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

Json full_share(const std::string &name)
{
    Json share = Json::parse(R"({
        "VolumeId": "data", "Comment": "all protocols", "QuotaMB": 1000, "RefQuotaMB": 500, "Sync": "standard",
        "Cifs": {"DefaultAccess": "ReadOnly", "EnableDFS": 1,
                 "UserAcl": [{"User": {"UserId": 100}, "Access": "ReadWrite"}],
                 "GroupAcl": [{"Group": {"GroupId": 100}, "Access": "ReadWrite"}],
                 "HostAcl": [{"Host": {"HostName": "pc1.office"}, "Access": "ReadOnly"}],
                 "DfolderAcl": [{"Name": "link", "Address": "10.0.0.9", "RemoteShare": "far"}]},
        "Afp": {"DefaultAccess": "ReadOnly", "NewFileFolderPermAutoset": 1,
                "UserAcl": [{"User": {"UserId": 101}, "Access": "ReadWrite"}]},
        "Nfs": {"DefaultAccess": "ReadOnly",
                "HostAcl": [{"Host": {"HostName": "10.0.0.0/24"}, "Access": "ReadWrite", "Root": 1}]},
        "Ftp": {"DefaultAccess": "ReadOnly",
                "GroupAcl": [{"Group": {"GroupId": 100}, "Access": "ReadWrite"}]},
        "Rsync": {"DefaultAccess": "ReadOnly", "PasswordProtection": "Enabled",
                  "HostAcl": [{"Host": {"HostName": "backup.office"}, "Access": "ReadOnly"}],
                  "UserPasswordAcl": [{"UserName": "mirror", "Password": "secret"}]},
        "Dlna": {"DefaultAccess": "ReadOnly", "MediaType": "Video,Audio"},
        "Daap": {},
        "Http": {"DefaultAccess": "ReadOnly", "EnableWebDav": 1,
                 "UserAcl": [{"User": {"UserId": 101}, "Access": "Disabled"}]},
        "UsedBy": [{"AppName": "photos", "AppData": "index"}]})");
    share["ShareName"] = name;
    return share;
}

namespace
{

Json full_change(const std::string &id)
{
    Json share = full_share("docs");
    share["resource_id"] = id;
    share["ShareName"] = "papers";
    share["Comment"] = "changed";
    share["RefQuotaMB"] = 600;
    share["Cifs"]["DefaultAccess"] = "ReadWrite";
    share["Stat"] =
        Json::parse(R"({"User": {"UserId": 100}, "Group": {"GroupId": 100}, "UserAccess": "ReadWrite"})");
    share["SnapshotSchedule"] = Json::parse(R"({"Enabled": 1, "Minute": "5", "Hour": "*", "DayOfMonth": "*",
                                                "DayOfWeek": "*", "Month": "*"})");
    share["UserQuota"] = Json::parse(R"([{"AccountId": 100, "HardMB": 200}])");
    share["GroupQuota"] = Json::parse(R"([{"AccountId": 100, "HardMB": 300}])");
    return share;
}

} // namespace

std::vector<Scenario> share_scenarios()
{
    return {
        {"getShareCollection", nullptr},
        {"getSimpleShareCollection", nullptr},
        {"getShareAndZvolCollection", nullptr},
        {"getAccessibleShareCollection",
         {{"collection", Json::object()}, {"UserName", "ann"}, {"ProtocolName", "cifs"}}},
        {"getShare", {{"ShareName", "docs"}}},
        {"queryShare", {{"VolumeId", "data"}, {"ShareNameLike", "d%"}, {"ShareId", "data/docs"}}},
        {"getShareId", {{"share_name", "docs"}}},
        {"getShareAccess", {{"ShareName", "docs"}, {"UserName", "ann"}}},
        {"getPathAccess", {{"Path", "/data/docs/x"}, {"UserName", "ann"}}},
        {"getShareSnapshotSchedule", {{"share_name", "docs"}}},
        {"addShare", Json::array({full_share("films"), full_share("music")})},
        {"modifyShare", {{"share", full_change("data/docs")}, {"modifyOneShare", 0}}},
        {"modifyShareVisibleSnapFolder", {{"ZfsName", "data/docs"}, {"VisibleSnapFolder", "snaps"}}},
        {"modifyZvol",
         {{"ZfsName", "data/plain"},
          {"ShareName", "plain"},
          {"Comment", "c"},
          {"SizeKB", 9},
          {"IsSparse", 1}}},
        {"deleteShare", Json::parse(R"([{"resource_id": "data/docs", "Cifs": {}, "Ftp": {}}])")},
        {"deleteZvol", {{"ZfsName", "data/docs"}}},
        {"deleteShareOnVolume", {{"VolumeId", "data"}}},
        {"preMigrateShare", {{"ShareId", "data/docs"}, {"VolumeId", "backup"}}},
        {"postMigrateShare", {{"ShareId", "data/docs"}, {"Commit", 0}}},
        {"copyShare",
         {{"VolumeName", "data"},
          {"ShareName", "docs"},
          {"SnapshotName", "daily"},
          {"NewShareName", "copy"}}},

        {"getShareProcess", {{"ShareId", "data/docs"}}},
        {"addShareProcess",
         Json::parse(R"({"ShareId": "data/docs", "procs": [{"ProcessId": 7}, {"ProcessId": 8}]})")},
        {"deleteShareProcess", Json::parse(R"({"ShareId": "data/docs", "procs": [{"ProcessId": 7}]})")},
        {"getUsedByOn", {{"ZfsName", "data/docs"}}},
        {"addShareUsedBy",
         Json::parse(R"({"ShareId": "data/docs", "usedby": {"AppName": "app", "AppData": "x"}})")},
        {"deleteShareUsedBy", Json::parse(R"({"ShareId": "data/docs", "usedby": {"AppName": "photos"}})")},
        {"modifyShareUsedBy",
         Json::parse(R"({"usedby": [{"AppName": "a"}, {"AppName": "b"}], "ShareId": "data/docs",
            "share_id": 0})")},
        {"modifyShareUsedByExclusive",
         Json::parse(R"({"usedby": {"AppName": "photos"}, "ShareId": "data/plain"})")},
    };
}

} // namespace qbobj_test
