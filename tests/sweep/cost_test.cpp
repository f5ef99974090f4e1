// What a call costs does not grow with the database: the steps of SQLite's virtual machine are counted, which are the
// same in every run, on few and on many objects of every kind. And no call prepares a statement that it has prepared
// before.
#include "scenarios.h"

#include <map>

using namespace qbobj_test;

namespace
{

// The statements of one call: their steps, and how many were prepared for it. No COMMIT of the connection is kept, so
// that a call may be repeated on the same content.
class Meter
{
  public:
    explicit Meter(sqlite3 *db) : db_(db)
    {
        sqlite3_set_authorizer(db, prepare, this);
        sqlite3_trace_v2(db, SQLITE_TRACE_PROFILE, finish, this);
        sqlite3_commit_hook(
            db, [](void *) { return 1; }, nullptr);
    }
    ~Meter()
    {
        sqlite3_set_authorizer(db_, nullptr, nullptr);
        sqlite3_trace_v2(db_, 0, nullptr, nullptr);
        sqlite3_commit_hook(db_, nullptr, nullptr);
    }
    Meter(const Meter &) = delete;
    Meter &operator=(const Meter &) = delete;

    void restart() { steps = preparations = 0; }

    int steps = 0;
    int preparations = 0; // the actions that preparing asks about: 0 when nothing was prepared

  private:
    static int prepare(void *self, int, const char *, const char *, const char *, const char *)
    {
        ++static_cast<Meter *>(self)->preparations;
        return SQLITE_OK;
    }
    static int finish(unsigned, void *self, void *statement, void *)
    {
        static_cast<Meter *>(self)->steps +=
            sqlite3_stmt_status(static_cast<sqlite3_stmt *>(statement), SQLITE_STMTSTATUS_VM_STEP, 1);
        return 0;
    }

    sqlite3 *db_;
};

struct Crowded {
    Appliance appliance;
    Meter meter;

    explicit Crowded(int count) : meter((furnish(appliance), crowd(appliance, count), appliance.db)) {}

    // The third call has nothing left to prepare.
    void measure(const Scenario &scenario)
    {
        for (int i = 0; i < 3; i++) {
            meter.restart();
            call(appliance, scenario.operation, scenario.input);
        }
    }
};

// Operations whose work is the objects' number.
const std::map<std::string, const char *> grows{
    {"getUserCollection", "lists and counts the users"},
    {"getGroupCollection", "lists and counts the groups"},
    {"getShareCollection", "lists the shares"},
    {"getSimpleShareCollection", "lists the shares"},
    {"getShareAndZvolCollection", "lists the shares"},
    {"getAccessibleShareCollection", "lists the shares"},
    {"deleteShareOnVolume", "deletes the shares of a volume"},
    {"deleteVolume", "deletes the shares of a volume"},
    {"modifyShareUsedByExclusive", "takes an application's markers off the shares"},
    {"getTIVOSettings", "lists the shares that media players see"},
    {"getBackupJobCollection", "lists the jobs"},
    {"getBackupTargetCollection", "lists the shares and homes"},
    {"modifyBackupJob", "compares the jobs with a copy of their table"},
    {"getLog", "counts the entries"},
    {"deleteLog", "deletes entries by what they say"},
    {"truncateLog", "walks to the first entry that goes"},
    {"getLunGroupCollection", "lists the groups"},
    {"getInitiatorCollection", "lists the initiators"},
    {"getDictionary", "lists the texts"},
};

// Operations that prepare a statement each time.
const std::map<std::string, const char *> prepares{
    {"getGroup", "its only statement is refused"},
    {"getDiskDiff", "reads a copy of the disks, which is a table made for it"},
};

TEST(Cost, DoesNotGrowWithTheDatabaseNorPrepareAnew)
{
    Crowded few(100);
    Crowded many(10000);
    for (const Scenario &scenario : scenarios()) {
        if (grows.contains(scenario.operation))
            continue;
        SCOPED_TRACE(scenario.operation);
        few.measure(scenario);
        many.measure(scenario);
        EXPECT_LE(many.meter.steps, 1.2 * few.meter.steps + 20) << "from " << few.meter.steps;
        EXPECT_EQ(prepares.contains(scenario.operation), many.meter.preparations != 0);
    }
}

/* ---- Chains --------------------------------------------------------------------------------------------- */

// An operation that takes a chain, and an element of it with its number in the place of each '#'.
struct ChainOf {
    const char *operation;
    const char *element;
};
constexpr ChainOf chains[] = {
    {"addShare", R"({"ShareName": "new#", "VolumeId": "data", "Cifs": {}, "Nfs": {}})"},
    {"modifyShare",
     R"({"resource_id": "data/share0#", "Comment": "new#", "Cifs": {"DefaultAccess": "ReadOnly"}})"},
    {"deleteShare", R"({"resource_id": "data/share0#"})"},
    {"addUser", R"({"UserName": "new#", "SysHash": "*"})"},
    {"addUserList", R"({"UserName": "new#"})"},
    {"getUser", R"({"UserId": #})"},
    {"getSystemUser", R"({"resource_id": #})"},
    {"modifyUser", R"({"UserId": #, "FullName": "new#"})"},
    {"deleteUser", R"({"UserId": #})"},
    {"deleteUserByName", R"({"UserName": "user0#"})"},
    {"addGroup", R"({"GroupName": "new#"})"},
    {"getSystemGroup", R"({"resource_id": #})"},
    {"modifyGroup", R"({"GroupId": #, "GroupName": "new#"})"},
    {"deleteGroup", R"({"GroupId": #})"},
    {"addBackupJob", R"({"JobName": "new#", "Source": {"Type": "share", "ShareNameOrProtocol": "docs"},
        "Destination": {"Type": "remote", "ShareNameOrProtocol": "rsync", "Path": "vault:/#"}, "Option": {},
        "Schedule": {"Enabled": 0}})"},
    {"deleteBackupJob", R"({"JobId": #})"},
    {"addNetworkInterface", R"({"Name": "eth#", "Mac": "00:1b:21:0a:0b:0c"})"},
    {"addLunGroup", R"({"Name": "new#"})"},
    {"modifyLunGroup", R"({"Name": "luns0#", "Target": "new#"})"},
    {"addInitiator", R"({"Name": "new#"})"},
    {"modifyInitiator", R"({"Name": "iqn.host0#", "ChapAuth": 1})"},
    {"addLun", R"({"Name": "new#"})"},
};

qbobj_json::Json chain_of(const std::string &operation, const char *element, int length)
{
    std::string text = "[";
    for (int number = 1000; number < 1000 + length; number++) {
        text += number > 1000 ? "," : "";
        for (const char *c = element; *c != '\0'; c++)
            text += *c == '#' ? std::to_string(number) : std::string(1, *c);
    }
    const qbobj_json::Json chain = qbobj_json::Json::parse(text + "]");
    return operation == "modifyShare" ? qbobj_json::Json{{"share", chain}, {"modifyOneShare", 0}} : chain;
}

// An element costs the same in a long chain as in a short one.
TEST(Cost, OfAChainIsThatOfItsElements)
{
    constexpr int shorter = 400;
    constexpr int longer = 4000;
    Crowded office(longer);
    for (const auto &[operation, element] : chains) {
        SCOPED_TRACE(operation);
        const auto steps_of = [&](int length) {
            office.meter.restart();
            const qbobj_json::Outcome outcome =
                call(office.appliance, operation, chain_of(operation, element, length));
            EXPECT_EQ(0, outcome.result) << ::testing::PrintToString(outcome.error);
            return office.meter.steps;
        };
        steps_of(1); // what is asked once a call
        EXPECT_LE(steps_of(longer), 1.2 * longer / shorter * steps_of(shorter));
    }
}

} // namespace
