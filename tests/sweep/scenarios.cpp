// The office, and a call of every operation.
#include "scenarios.h"

#include "operations/texts.h"

#include <algorithm>
#include <fstream>

using qbobj_json::Json;

namespace qbobj_test
{
namespace
{

// A share with every protocol and an entry in every list.
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

// A code that the operation's header names, or one that any operation may report.
bool is_documented(const std::string &operation, const qbobj_error_rec_t &error)
{
    const auto errors = qbobj::texts::find_operation(operation)->errors;
    return error.ec == QBOBJ_ERROR_OK || error.ec == QBOBJ_ERROR_OOM ||
           std::ranges::find(errors, error.ec, &qbobj::texts::Error::code) != errors.end() ||
           std::string_view(error.msg).starts_with("The transaction was rolled back.");
}

constexpr const char *import_list = "import_list\r\n"
                                    "User_Name\tGroup_Name\tEmail_Address\tPassword\r\n"
                                    "carl\tstaff\tcarl@office.example\tpw-carl\r\n"
                                    "dörte\tsales\t\tpw-doerte\r\n";

} // namespace

void PrintTo(const Scenario &scenario, std::ostream *out)
{
    *out << scenario.operation;
}

qbobj_json::Outcome call(Appliance &appliance, const std::string &name, const Json &input)
{
    const qbobj_json::Operation *operation = qbobj_json::find_operation(name);
    if (operation == nullptr)
        throw std::logic_error("no operation " + name);
    const qbobj_json::Outcome outcome = operation->call(*operation, {appliance.qbdb, appliance.db},
                                                        qbobj_json::arrange_inputs(*operation, input));
    EXPECT_TRUE(is_documented(name, outcome.error))
        << name << " does not document " << ::testing::PrintToString(outcome.error);
    return outcome;
}

void furnish(Appliance &appliance)
{
    const auto must = [&](const std::string &operation, const Json &input) {
        const qbobj_json::Outcome outcome = call(appliance, operation, input);
        if (outcome.result != 0)
            throw std::runtime_error(operation + ": " +
                                     (outcome.error.msg == nullptr ? "" : outcome.error.msg));
    };
    must("addGroup", Json::parse(R"([{"GroupName": "staff", "GroupId": 100}])"));
    must("addUser", Json::parse(R"([
        {"UserName": "ann", "UserId": 100, "Password": "pw-ann", "GroupName": "staff", "Email": "ann@office.example"},
        {"UserName": "bob", "UserId": 101, "Password": "pw-bob", "HomeVolumeId": "data"}])"));
    must("addGroup",
         Json::parse(R"([{"GroupName": "board", "GroupId": 101, "SecondaryMember": [{"UserId": 101}]}])"));
    must("addShare", Json::array({full_share("docs"), {{"ShareName", "plain"}, {"VolumeId", "data"}}}));
    appliance.sql(
        "INSERT INTO `$snapshot` (zfs_name,name,type,created_on) VALUES('data/docs','daily',1,1000);"
        "INSERT INTO `$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name)"
        " VALUES('plain','daily','docs');"
        "INSERT INTO backup (name,enabled,src_type,src_share_proto,dst_type,dst_share_proto)"
        " VALUES('nightly',1,'share','docs','share','plain')");
    std::filesystem::create_directories(appliance.root() / "tmp");
    std::ofstream(appliance.root() / "tmp/user_list.txt") << import_list;
}

const std::vector<Scenario> &scenarios()
{
    static const std::vector<Scenario> all{
        {"getServiceEntry", {{"key", "LANGUAGE"}}},
        {"setServiceEntry", {{"key", "LANGUAGE"}, {"val", "en-us"}}},
        {"setRegistryEntry", {{"key", "model"}, {"val", "x"}}},
        {"getRegistryEntry", {{"key", "missing"}}, true},
        {"getFolderAttribute", {{"path", "/data/docs/a"}}},

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
        {"checkUserList", nullptr},
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
    return all;
}

} // namespace qbobj_test
