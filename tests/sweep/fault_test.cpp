// Fails the n-th statement of every operation, for every n: the call reports it, and the database is what it
// was.
#include "scenarios.h"
#include "trials.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

using namespace qbobj_test;

namespace
{

// Lets the n-th statement that the connection starts fail, as a statement does that runs out of space: with
// the loss of the transaction when it writes.
class FailingStatement
{
  public:
    FailingStatement(sqlite3 *db, int n) : db_(db), left_(n)
    {
        sqlite3_trace_v2(db, SQLITE_TRACE_STMT, started, this);
    }
    ~FailingStatement() { sqlite3_trace_v2(db_, 0, nullptr, nullptr); }
    FailingStatement(const FailingStatement &) = delete;
    FailingStatement &operator=(const FailingStatement &) = delete;
    // The statement that failed; empty when the call ran fewer statements.
    const std::string &failed() const { return failed_; }

  private:
    static int started(unsigned, void *self, void *, void *text)
    {
        return static_cast<FailingStatement *>(self)->count(static_cast<const char *>(text));
    }
    int count(const char *text)
    {
        const bool inner = std::strncmp(text, "--", 2) == 0; // a trigger of the statement that was counted
        const bool transaction = std::strncmp(text, "BEGIN", 5) == 0 ||
                                 std::strncmp(text, "COMMIT", 6) == 0 ||
                                 std::strncmp(text, "ROLLBACK", 8) == 0;
        if (inner || transaction || --left_ != 0)
            return 0;
        failed_ = text;
        sqlite3_interrupt(db_);
        return 0;
    }

    sqlite3 *db_;
    int left_;
    std::string failed_;
};

// The few statements whose failure an operation is meant to survive. (A statement that writes can't be among
// them here: its failure loses the transaction.)
struct Survived {
    const char *operation;
    const char *statement;
    const char *reason;
};
constexpr const char *any_operation = "";
constexpr Survived survived[] = {
    {any_operation, "S.security='ads'", "an unknown directory mode counts as local mode"},
    {any_operation, "no_sync_ads", "the platform's flag counts as clear when it cannot be read"},
    {any_operation, "FROM service_ftp", "an unknown anonymous mode counts as off"},
    {any_operation, "account_default A, '$user' U", "a user without a backup path is still read"},
    {any_operation, "g.gname = 'sky-port'", "whether the entry is exempt is only logged"},
    {any_operation, "SELECT id FROM share WHERE",
     "a name that cannot be looked up counts as not there; the row's uniqueness stands behind it"},
    {any_operation, "SELECT id FROM backup WHERE name=", "as for shares"},
    {"modifyUser", "SELECT id FROM `$user` WHERE uname=", "as for shares"},
    {"modifyGroup", "SELECT id FROM `$group` WHERE gname=", "as for shares"},
    {"setProtocolCollection", "SELECT val FROM service_misc",
     "a switch that cannot be read counts as off when the changes are marked"},
    {"setProtocolCollection", "temp.sqlite_schema", "without copies nothing is stored, as callers know it"},
    {"getShareAccess", "", "what cannot be resolved is denied"},
    {"getPathAccess", "", "what cannot be resolved is denied"},
    {"getDiskDiff", "", "what cannot be compared or looked up is logged, and left out"},
    {"getUserCollection", "$user` ", "the platform refreshes the usage as far as it can"},
};

// They ask the database for nothing; getGroup's only statement is refused before it starts.
const std::set<std::string> run_no_statement{"getPosixUIDbyUID", "getPosixGIDbyGID", "checkUserList",
                                             "getGroup"};

// An error's place: a line with code in a file of its unit. Units are named after the operations that callers know.
bool is_a_place(const char *unit, int line)
{
    if (unit == nullptr || std::string(unit).rfind("qbobj_", 0) != 0)
        return false;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(QBOBJ_SOURCES)) {
        const std::string name = entry.path().filename();
        if (name.substr(0, name.find('.')) != unit || entry.path().extension() != ".cpp")
            continue;
        std::ifstream source(entry.path());
        std::string text;
        int at = 0;
        while (at < line && std::getline(source, text))
            ++at;
        const std::size_t code = text.find_first_not_of(" \t");
        if (at == line && code != text.npos && text.compare(code, 2, "//") != 0)
            return true;
    }
    return false;
}

bool may_survive(const std::string &operation, const std::string &statement)
{
    for (const Survived &entry : survived)
        if ((entry.operation == any_operation || operation == entry.operation) &&
            statement.find(entry.statement) != std::string::npos)
            return true;
    return false;
}

class FaultSweep : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(FaultSweep, FailedStatementIsReportedAndLeavesNothing)
{
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(GetParam().operation);
    constexpr int more_than_any_call_needs = 2000;
    auto office = std::make_unique<Appliance>();
    furnish(*office);
    std::string before = office->content();
    Tally tally("interrupted statement");
    int n = 1;
    for (; n < more_than_any_call_needs; ++n, tally.count()) {
        qbobj_json::Outcome outcome;
        std::string statement;
        {
            const FailingStatement failing(office->db, n);
            outcome = call(*office, operation.name(), GetParam().input);
            statement = failing.failed();
        }
        if (statement.empty())
            break;
        SCOPED_TRACE("statement " + std::to_string(n) + ": " + statement);
        ASSERT_NE(0, sqlite3_get_autocommit(office->db)) << "a transaction was left open";
        if (operation.failed(outcome.result)) {
            ASSERT_EQ(before, office->content());
            if (outcome.error.ec != QBOBJ_ERROR_OK) {
                EXPECT_TRUE(is_a_place(outcome.error.file, outcome.error.lineno))
                    << ::testing::PrintToString(outcome.error);
            }
            continue;
        }
        EXPECT_TRUE(may_survive(operation.name(), statement)) << "the failure was not reported";
        office = std::make_unique<Appliance>();
        furnish(*office);
        before = office->content();
    }
    EXPECT_EQ(run_no_statement.contains(operation.name()), n == 1) << "statements run: " << n - 1;
    EXPECT_LT(n, more_than_any_call_needs);
}

INSTANTIATE_TEST_SUITE_P(All, FaultSweep, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
