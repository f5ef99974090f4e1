// Memory runs out in every operation: the call fails as it should, the handle goes on, nothing stays.
#include "memory/failing_memory.h"
#include "scenarios.h"
#include "trials.h"

#include <string_view>
#include <utility>

using namespace qbobj_test;

namespace
{

// A furnished office that no call changes: its commits are refused, so that a call may be repeated. A plan holds from the
// begin of the call's transaction to its end, so that the tool's own part of a call is spared.
class Office : public Appliance
{
  public:
    Office()
    {
        furnish(*this);
        watch();
    }

    // With a handle that has nothing prepared yet.
    void cool()
    {
        reopen();
        watch();
    }

    // Lets memory be there again.
    void spare() { failed |= std::exchange(memory_plan, {}).failed; }

    MemoryPlan plan;
    bool failed = false; // an allocation did

  private:
    void watch()
    {
        sqlite3_commit_hook(
            db, [](void *) { return 1; }, nullptr);
        sqlite3_trace_v2(db, SQLITE_TRACE_STMT, follow, this);
        sqlite3_rollback_hook(
            db, [](void *self) { static_cast<Office *>(self)->spare(); }, this);
    }
    static int follow(unsigned, void *self, void *, void *sql)
    {
        const std::string_view text = static_cast<const char *>(sql);
        auto &office = *static_cast<Office *>(self);
        if (text.starts_with("BEGIN"))
            memory_plan = office.plan;
        else if (text.starts_with("COMMIT") || text.starts_with("ROLLBACK"))
            office.spare();
        return 0;
    }
};

class NoMemory : public ::testing::TestWithParam<Scenario>
{
  protected:
    // The result of a call with the plan; `failed` tells whether an allocation failed.
    int run(const MemoryPlan &plan, bool &failed)
    {
        office_.plan = plan;
        office_.failed = false;
        int result = -1;
        try {
            result = operation_.call(operation_, {office_.qbdb, office_.db}, input_).result;
        } catch (const std::bad_alloc &) {
            // Of the JSON around the operation, when the transaction could not be ended; operations let none through.
        }
        office_.spare();
        failed = office_.failed;
        return result;
    }

    const qbobj_json::Operation &operation_ = *qbobj_json::find_operation(GetParam().operation);
    const qbobj_json::Json input_ = qbobj_json::arrange_inputs(operation_, GetParam().input);
    Office office_;
};

TEST_P(NoMemory, IsAFailureLikeAnyOther)
{
    ASSERT_TRUE(watches_sqlite());
    Tally tally("memory");
    const std::string before = office_.content();
    bool failed = false;
    const int usual = run({}, failed);
    for (const bool cold : {false, true})
        for (const Memory kind : failing_memory)
            for (const bool lasting : {false, true}) {
                failed = true;
                for (int n = 1; failed && !HasFailure(); n += Tally::is_long() ? 1 : 1 + n / (cold ? 1 : 4)) {
                    SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", allocation " +
                                 std::to_string(n));
                    if (cold)
                        office_.cool();
                    const int result = run({kind, n, lasting, false}, failed);
                    tally.count();
                    EXPECT_TRUE(failed || result == usual) << result;
                    // Where memory never comes back a ROLLBACK may lack it, too; the next begin ends the transaction.
                    EXPECT_TRUE(lasting || sqlite3_get_autocommit(office_.db) != 0)
                        << "a transaction was left open";
                    qbdb_clear_pool(office_.qbdb);
                }
                EXPECT_EQ(operation_.failed(usual), operation_.failed(run({}, failed)))
                    << "the handle is spoilt";
                EXPECT_NE(0, sqlite3_get_autocommit(office_.db)) << "a transaction was left open";
                EXPECT_EQ(before, office_.content());
            }
}

INSTANTIATE_TEST_SUITE_P(All, NoMemory, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
