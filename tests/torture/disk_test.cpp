// The n-th step of the storage fails under every operation.
#include "failing_storage.h"
#include "scenarios.h"
#include "trials.h"

#include <climits>
#include <regex>

using namespace qbobj_test;
using Step = FailingStorage::Step;

namespace
{

struct Fault {
    const char *name;
    Step step;
    int code;
};
constexpr Fault faults[] = {{"full", Step::write, SQLITE_FULL},
                            {"unwritable", Step::write, SQLITE_IOERR_WRITE},
                            {"unreadable", Step::read, SQLITE_IOERR_READ},
                            {"unsynced", Step::sync, SQLITE_IOERR_FSYNC},
                            {"not truncated", Step::truncate, SQLITE_IOERR_TRUNCATE},
                            {"busy", Step::lock, SQLITE_BUSY}};

// How long a fault lasts: the handle goes on behind it, or is closed while it lasts.
enum Lasting { once, for_the_call, beyond_the_handle };

// A large cache writes when it commits; a tiny one before, and reads again. The one leaves the result of a commit to
// be asked for.
struct Setting {
    int commit_decides;
    const char *pragmas;
};
constexpr Setting settings[] = {{0, ""}, {1, "PRAGMA cache_size=5; PRAGMA wal_autocheckpoint=1"}};

// Salts and the present time are not the same twice.
bool is_alike(const std::string &a, const std::string &b)
{
    static const std::regex varying(R"(\$1\$[^|]*|\d{4}-\d\d-\d\d \d\d:\d\d:\d\d|\b\d{10}\b)");
    return a == b || std::regex_replace(a, varying, "*") == std::regex_replace(b, varying, "*");
}

// The office as it was furnished, as often as it is wanted.
class Office : public Appliance
{
  public:
    Office()
    {
        options.relaxed_durability = 0;
        options.busy_timeout_ms = 1;
        furnish(*this);
        close();
        std::filesystem::copy_file(file(), root() / "furnished");
    }
    void restore(const Setting &setting)
    {
        close();
        std::filesystem::copy_file(root() / "furnished", file(),
                                   std::filesystem::copy_options::overwrite_existing);
        options.commit_decides = setting.commit_decides;
        reopen();
        sql(setting.pragmas);
    }
};

class Disk : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(Disk, FailureIsToldAndLeavesTheContentWhole)
{
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(GetParam().operation);
    Tally tally("disk");
    const FailingStorage storage;
    Office office;
    int turn = 0;
    const auto try_fault = [&](const Setting &setting, const Fault &fault, int n, Lasting lasting,
                               const std::string &after) {
        office.restore(setting);
        const std::string before = office.content();
        bool failed = false;
        bool told = false;
        {
            const FailingStorage::Failure failure(fault.step, n, fault.code, lasting == once);
            failed = operation.failed(call(office, operation.name(), GetParam().input).result);
            told = failed || qbdb_last_commit(office.qbdb, nullptr) != SQLITE_OK;
            EXPECT_EQ(SQLITE_TXN_NONE, sqlite3_txn_state(office.db, nullptr));
            EXPECT_TRUE(failed || !told || setting.commit_decides == 0);
            if (lasting == beyond_the_handle)
                office.close();
        }
        if (lasting == beyond_the_handle)
            office.reopen();
        std::string now = office.content();
        // What the log holds of a commit that failed may come back when the log is read anew.
        EXPECT_TRUE(told ? now == before || (lasting == beyond_the_handle && is_alike(now, after))
                         : is_alike(now, after))
            << (told ? "told" : "not told") << (now == before ? ", as before" : ", not as before");
        if (told && now == before) {
            const int again = call(office, operation.name(), GetParam().input).result;
            EXPECT_EQ(GetParam().fails, operation.failed(again));
            now = office.content();
            EXPECT_TRUE(is_alike(now, after)) << "the next call";
        }
        office.reopen();
        EXPECT_EQ(now, office.content());
    };
    for (const Setting &setting : settings) {
        office.restore(setting);
        std::map<Step, int> steps;
        {
            const FailingStorage::Failure none(Step::read, INT_MAX, SQLITE_OK);
            call(office, operation.name(), GetParam().input);
            for (const Fault &fault : faults)
                steps[fault.step] = FailingStorage::Failure::asked(fault.step);
        }
        const std::string after = office.content();
        for (const Fault &fault : faults)
            for (int n = 1; n <= steps[fault.step]; n = Tally::is_long() ? n + 1 : 3 * n)
                for (const Lasting lasting : {once, for_the_call, beyond_the_handle}) {
                    if (!Tally::is_long() && turn++ % 3 != 0)
                        continue;
                    SCOPED_TRACE(std::string(fault.name) + ' ' + std::to_string(n) + ' ' +
                                 std::to_string(lasting) + ' ' + setting.pragmas);
                    tally.count();
                    try_fault(setting, fault, n, lasting, after);
                    if (HasFailure())
                        return;
                }
    }
}

std::string name_of(const ::testing::TestParamInfo<Scenario> &info)
{
    return info.param.operation;
}

INSTANTIATE_TEST_SUITE_P(All, Disk, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
