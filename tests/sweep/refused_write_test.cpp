// Refuses the n-th row that an operation writes, and the n-th statement that writes, for every n, and lets the transaction
// stand: who ignores the failure would commit the rest.
#include "scenarios.h"
#include "trials.h"

#include <algorithm>

using namespace qbobj_test;

namespace
{

// What refuses the n-th of the writes that it sees.
class Refusal
{
  public:
    explicit Refusal(Appliance &appliance) : appliance_(appliance) {}
    Refusal(const Refusal &) = delete;
    Refusal &operator=(const Refusal &) = delete;

    // Fewer were seen.
    bool is_left() const { return left_ > 0; }
    // The table whose write was refused.
    const std::string &table() const { return table_; }

  protected:
    bool refuses(const char *table)
    {
        if (left_ == 0 || --left_ > 0)
            return false;
        table_ = table;
        return true;
    }

    Appliance &appliance_;
    int left_ = 0;

  private:
    std::string table_;
};

// Temporary triggers on every table, which refuse one row that is written.
class RefusedRow : public Refusal
{
  public:
    explicit RefusedRow(Appliance &appliance) : Refusal(appliance)
    {
        sqlite3_create_function(appliance.db, "is_refused", 1, SQLITE_UTF8 | SQLITE_INNOCUOUS, this, count,
                                nullptr, nullptr);
        for (const std::string &table : tables())
            for (const char *event : {"INSERT", "UPDATE", "DELETE"})
                appliance.sql("CREATE TEMP TRIGGER \"refuse " + table + event + "\" BEFORE " + event +
                              " ON main.\"" + table + "\" WHEN is_refused('" + table +
                              "') BEGIN SELECT RAISE(ABORT,'refused'); END");
    }
    void refuse(int n) { left_ = n; }

  private:
    static void count(sqlite3_context *context, int, sqlite3_value **arguments)
    {
        const auto *table = reinterpret_cast<const char *>(sqlite3_value_text(*arguments));
        auto *self = static_cast<RefusedRow *>(sqlite3_user_data(context));
        sqlite3_result_int(context, self->refuses(table) ? 1 : 0);
    }
    std::vector<std::string> tables() const
    {
        return appliance_.rows(
            "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite_%'");
    }
};

// A connection that is not authorised to prepare one statement that writes, also when it finds no row to write. All
// kept statements are prepared again.
class RefusedStatement : public Refusal
{
  public:
    using Refusal::Refusal;
    ~RefusedStatement() { sqlite3_set_authorizer(appliance_.db, nullptr, nullptr); }

    void refuse(int n)
    {
        left_ = n;
        sqlite3_set_authorizer(appliance_.db, ask, this);
    }

  private:
    static int ask(void *self, int action, const char *table, const char *, const char *, const char *)
    {
        const bool writes = action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE;
        return writes && static_cast<RefusedStatement *>(self)->refuses(table) ? SQLITE_DENY : SQLITE_OK;
    }
};

// Operations that are meant to go on without a write to one of their tables.
struct Survived {
    const char *operation;
    const char *table; // or a part of its name
    const char *reason;
};
constexpr Survived survived[] = {
    {"addUser", "account_default", "the mark of the next id is only a hint"},
    {"deleteUser", "service_afp",
     "a switch that stays on is told in the error record alone, as callers know it"},
    {"deleteUserByName", "service_afp", "as deleteUser"},
    {"getDiskDiff", "disk", "disks that cannot be brought up to date are logged"},
    {"getDiskDiff", "sqlite_temp_master", "as the disks"},
    {"modifyBackupJob", "sqlite_temp_master", "without the copy the jobs are changed all the same"},
    {"setEnclosureHealthForTest", "_enclosure_health", "the reading of a missing fan may stay"},
};

bool may_survive(const std::string &operation, const std::string &table)
{
    return std::ranges::any_of(survived, [&](const Survived &entry) {
        return operation == entry.operation && table.find(entry.table) != table.npos;
    });
}

class RefusedWrites : public ::testing::TestWithParam<Scenario>
{
};

template <class Refused>
void refuse_each(const Scenario &scenario, const char *kind)
{
    Tally tally(kind);
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
    for (int n = 1; !::testing::Test::HasFailure();) {
        Appliance office;
        furnish(office);
        Refused refused(office);
        const std::string before = office.content();
        for (bool is_furnished = true; is_furnished && !::testing::Test::HasFailure(); ++n, tally.count()) {
            refused.refuse(n);
            const qbobj_json::Outcome outcome = call(office, operation.name(), scenario.input);
            if (refused.is_left())
                return;
            SCOPED_TRACE(kind + (" " + std::to_string(n)) + ", of " + refused.table());
            refused.refuse(0);
            is_furnished = operation.failed(outcome.result);
            if (is_furnished)
                EXPECT_EQ(before, office.content());
            else
                EXPECT_TRUE(may_survive(operation.name(), refused.table())) << "the refusal was not reported";
        }
    }
}

TEST_P(RefusedWrites, AreReportedAndLeaveNothing)
{
    refuse_each<RefusedRow>(GetParam(), "refused row");
    refuse_each<RefusedStatement>(GetParam(), "refused statement");
}

INSTANTIATE_TEST_SUITE_P(All, RefusedWrites, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
