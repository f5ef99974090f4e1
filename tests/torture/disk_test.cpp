// The n-th step of the storage fails under every operation.
#include "failing_storage.h"
#include "scenarios.h"
#include "trials.h"

#include <algorithm>
#include <map>

using namespace qbobj_test;
using Step = FailingStorage::Step;

namespace
{

constexpr std::pair<Step, int> faults[] = {
    {Step::write, SQLITE_FULL},      {Step::write, SQLITE_IOERR_WRITE},
    {Step::read, SQLITE_IOERR_READ}, {Step::sync, SQLITE_IOERR_FSYNC},
    {Step::lock, SQLITE_BUSY},       {Step::truncate, SQLITE_IOERR_TRUNCATE}};

// The handle goes on behind the fault, or is closed while it lasts.
enum Lasting { once, for_the_call, beyond_the_handle };

// Salts and the present time are not the same twice.
bool is_alike(const std::string &a, const std::string &b)
{
    const auto varies = [&](const char &at) {
        const auto cell = a.find_last_of("|\n", static_cast<std::size_t>(&at - a.data())) + 1;
        return a.compare(cell, 3, "$1$") == 0 || a.find_first_not_of("0123456789-: ", cell) - cell >= 10;
    };
    return std::ranges::equal(a, b, [&](const char &x, char y) { return x == y || varies(x); });
}

class Disk : public FailingStorage, public Appliance, public ::testing::TestWithParam<Scenario>
{
  protected:
    Disk()
    {
        open_options.relaxed_durability = 0;
        open_options.busy_timeout_ms = 1;
        furnish(*this);
        close();
        std::filesystem::copy_file(file(), root() / "furnished");
    }
    // A large cache writes when it commits; a tiny one before, and reads again.
    void restore(bool tiny)
    {
        close();
        write_file(file(), read_file(root() / "furnished"));
        open_options.commit_decides = tiny ? 1 : 0;
        reopen();
        sql(tiny ? "PRAGMA cache_size=5; PRAGMA wal_autocheckpoint=1" : "");
    }
    bool call_fails()
    {
        const Scenario &scenario = GetParam();
        return qbobj_json::find_operation(scenario.operation)
            ->failed(qbobj_test::call(*this, scenario.operation, scenario.input).result);
    }
    void fail(Step step, int n, int code, Lasting lasting, const std::string &after)
    {
        const std::string before = content();
        const bool is_reopened = lasting == beyond_the_handle;
        bool told = false;
        {
            const Failure failure(step, n, code, lasting == once);
            const bool failed = call_fails();
            const int kept = qbdb_last_commit(qbdb, nullptr);
            EXPECT_TRUE(kept == SQLITE_OK || kept == (code & 0xff) || kept == SQLITE_PROTOCOL) << kept;
            EXPECT_TRUE(kept == SQLITE_OK || failed || open_options.commit_decides == 0);
            told = failed || kept != SQLITE_OK;
            EXPECT_EQ(SQLITE_TXN_NONE, sqlite3_txn_state(db, nullptr));
            if (is_reopened)
                close();
        }
        if (is_reopened)
            reopen();
        std::string now = content();
        // A commit that failed may have come as far as the log, which is read anew.
        EXPECT_TRUE((told && now == before) || ((!told || is_reopened) && is_alike(now, after)))
            << (told ? "told" : "not told") << (now == before ? ", as before" : ", not as before");
        if (told && now == before) {
            EXPECT_EQ(GetParam().fails, call_fails());
            now = content();
            EXPECT_TRUE(is_alike(now, after)) << "the next call";
        }
        reopen();
        EXPECT_EQ(now, content());
    }
};

TEST_P(Disk, FailureIsToldAndLeavesTheContentWhole)
{
    Tally tally("disk");
    int turn = 0;
    for (const bool tiny : {false, true}) {
        restore(tiny);
        std::map<Step, int> steps;
        {
            const Failure none(Step::read, 1, SQLITE_OK);
            call_fails();
            for (const auto &[step, code] : faults)
                steps[step] = Failure::asked(step);
        }
        const std::string after = content();
        for (const auto &[step, code] : faults)
            for (int n = 1; n <= steps[step]; n = Tally::is_long() ? n + 1 : 3 * n)
                for (const Lasting lasting : {once, for_the_call, beyond_the_handle}) {
                    if (HasFailure() || (!Tally::is_long() && turn++ % 4 != 0))
                        continue;
                    SCOPED_TRACE(testing::Message() << "code " << code << ", step " << n << ", lasting "
                                                    << lasting << (tiny ? ", tiny cache" : ""));
                    tally.count();
                    restore(tiny);
                    fail(step, n, code, lasting, after);
                }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Disk, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
