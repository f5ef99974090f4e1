// Refuses the n-th row that an operation writes, for every n, and lets the transaction stand: who ignores the failure
// would commit the rest.
#include "scenarios.h"

#include <map>

using namespace qbobj_test;

namespace
{

// Temporary triggers on every table, which refuse one row that is written.
class RefusedRow
{
  public:
    explicit RefusedRow(Appliance &appliance) : appliance_(appliance)
    {
        sqlite3_create_function(appliance.db, "is_refused", 0, SQLITE_UTF8 | SQLITE_INNOCUOUS, this, count,
                                nullptr, nullptr);
        for (const std::string &table : tables())
            for (const char *event : {"INSERT", "UPDATE", "DELETE"})
                appliance.sql("CREATE TEMP TRIGGER \"refuse " + table + event + "\" BEFORE " + event +
                              " ON main.\"" + table +
                              "\" WHEN is_refused() BEGIN SELECT RAISE(ABORT,'refused'); END");
    }
    RefusedRow(const RefusedRow &) = delete;
    RefusedRow &operator=(const RefusedRow &) = delete;

    void refuse(int n) { left_ = n; }
    // Fewer rows were written.
    bool is_left() const { return left_ > 0; }

  private:
    static void count(sqlite3_context *context, int, sqlite3_value **)
    {
        auto *self = static_cast<RefusedRow *>(sqlite3_user_data(context));
        sqlite3_result_int(context, self->left_ > 0 && --self->left_ == 0 ? 1 : 0);
    }
    std::vector<std::string> tables() const
    {
        return appliance_.rows(
            "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite_%'");
    }

    Appliance &appliance_;
    int left_ = 0;
};

// Operations that are meant to go on without one of their rows.
const std::map<std::string, const char *> survives{
    {"addUser", "the mark of the next id is only a hint"},
    {"deleteUser", "a switch that stays on is told in the error record alone, as callers know it"},
    {"deleteUserByName", "as deleteUser"},
    {"getDiskDiff", "disks that cannot be brought up to date are logged"},
    {"setEnclosureHealthForTest", "the reading of a missing fan may stay"},
};

class RefusedWrites : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(RefusedWrites, AreReportedAndLeaveNothing)
{
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(GetParam().operation);
    Appliance office;
    furnish(office);
    RefusedRow refused(office);
    const std::string before = office.content();
    for (int n = 1;; ++n) {
        SCOPED_TRACE("row " + std::to_string(n));
        refused.refuse(n);
        const qbobj_json::Outcome outcome = call(office, operation.name(), GetParam().input);
        if (refused.is_left())
            break;
        if (operation.failed(outcome.result)) {
            ASSERT_EQ(before, office.content());
            continue;
        }
        EXPECT_TRUE(survives.contains(operation.name())) << "the refusal was not reported";
        break;
    }
}

INSTANTIATE_TEST_SUITE_P(All, RefusedWrites, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
