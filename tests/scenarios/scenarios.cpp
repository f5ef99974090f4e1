// The office, and a call of every operation.
#include "scenarios.h"

#include "operations/texts.h"
#include "json/record_json.h"

#include <algorithm>
#include <fstream>

using qbobj_json::Json;

namespace qbobj_test
{
namespace
{

constexpr const char *import_list = "import_list\r\n"
                                    "User_Name\tGroup_Name\tEmail_Address\tPassword\r\n"
                                    "carl\tstaff\tcarl@office.example\tpw-carl\r\n"
                                    "dörte\tsales\t\tpw-doerte\r\n";

// A code that the operation's header names, or one that any operation may report.
bool is_documented(const std::string &operation, const qbobj_error_rec_t &error)
{
    const auto errors = qbobj::texts::find_operation(operation)->errors;
    return error.ec == QBOBJ_ERROR_OK || error.ec == QBOBJ_ERROR_OOM ||
           std::ranges::find(errors, error.ec, &qbobj::texts::Error::code) != errors.end() ||
           std::string_view(error.msg).starts_with("The transaction was rolled back") ||
           std::string_view(error.msg).starts_with("Failed DB Query for 'COMMIT'.");
}

} // namespace

void PrintTo(const Scenario &scenario, std::ostream *out)
{
    *out << scenario.operation;
}

std::string name_of(const ::testing::TestParamInfo<Scenario> &info)
{
    return info.param.operation;
}

qbobj_json::Outcome call(Appliance &appliance, const std::string &name, const Json &input)
{
    const qbobj_json::Operation *operation = qbobj_json::find_operation(name);
    if (operation == nullptr)
        throw std::logic_error("no operation " + name);
    const qbobj_json::Outcome outcome = operation->call(*operation, {appliance.qbdb, appliance.db},
                                                        qbobj_json::arrange_inputs(*operation, input));
    if (!operation->failed(outcome.result))
        static_cast<void>(qbobj_json::to_json(outcome.output)); // every field that the call filled is read
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
    furnish_service_devices(appliance);
    furnish_storage(appliance);
    furnish_snapshots(appliance);
    furnish_netifs(appliance);
    furnish_log(appliance);
    furnish_iscsi(appliance);
}

const std::vector<Scenario> &scenarios()
{
    static const std::vector<Scenario> all = [] {
        std::vector<Scenario> whole;
        for (const auto family :
             {settings_scenarios, account_scenarios, share_scenarios, protocol_scenarios,
              service_device_scenarios, storage_scenarios, snapshot_scenarios, backup_scenarios,
              netif_scenarios, log_scenarios, iscsi_scenarios, dictionary_scenarios})
            for (Scenario &scenario : family())
                whole.push_back(std::move(scenario));
        return whole;
    }();
    return all;
}

} // namespace qbobj_test
