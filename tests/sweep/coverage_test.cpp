// Every operation takes part in the sweeps, and its scenario is what it says.
#include "scenarios.h"

#include <cstdlib>
#include <fstream>
#include <set>

using namespace qbobj_test;

namespace
{

TEST(Scenarios, CoverEveryOperation)
{
    std::set<std::string> covered;
    for (const Scenario &scenario : scenarios())
        covered.insert(scenario.operation);
    for (const qbobj_json::Operation &operation : qbobj_json::operations())
        EXPECT_TRUE(covered.contains(operation.name())) << operation.name() << " needs a scenario";
}

// Hands the statements of a call over to the check of the schema, which asks for them by naming a file.
class StatementLog
{
  public:
    explicit StatementLog(sqlite3 *db) : db_(db)
    {
        sqlite3_trace_v2(db, SQLITE_TRACE_STMT, note, &statements_);
    }
    ~StatementLog()
    {
        sqlite3_trace_v2(db_, 0, nullptr, nullptr);
        const char *path = std::getenv("QBOBJ_STATEMENTS");
        if (path == nullptr)
            return;
        std::ofstream file(path, std::ios::app);
        for (const std::string &statement : statements_)
            file << statement << '\0';
    }
    StatementLog(const StatementLog &) = delete;
    StatementLog &operator=(const StatementLog &) = delete;

  private:
    static int note(unsigned, void *statements, void *statement, void *)
    {
        static_cast<std::set<std::string> *>(statements)
            ->insert(sqlite3_sql(static_cast<sqlite3_stmt *>(statement)));
        return 0;
    }

    sqlite3 *db_;
    std::set<std::string> statements_;
};

class EachScenario : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(EachScenario, EndsAsItSays)
{
    Appliance office;
    furnish(office);
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(GetParam().operation);
    const StatementLog log(office.db);
    const qbobj_json::Outcome outcome = call(office, operation.name(), GetParam().input);
    EXPECT_EQ(GetParam().fails, operation.failed(outcome.result))
        << outcome.result << " " << ::testing::PrintToString(outcome.error);
    EXPECT_TRUE(office.rows("PRAGMA foreign_key_check").empty());
}

INSTANTIATE_TEST_SUITE_P(All, EachScenario, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
