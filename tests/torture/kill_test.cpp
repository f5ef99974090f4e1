// A process that is killed in the middle of additions leaves whole shares only.
#include "processes.h"
#include "trials.h"

#include <csignal>
#include <thread>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

[[noreturn]] void add_for_ever(const std::filesystem::path &file, int round)
{
    Connection connection(file);
    for (int number = 0;; ++number) {
        if (add_share(connection, "r" + std::to_string(round) + "n" + std::to_string(number)) != 0)
            _exit(1);
        qbdb_clear_pool(connection.qbdb);
    }
}

TEST(Kill, LeavesWholeSharesOnly)
{
    const Appliance appliance;
    int last = 0;
    int round = 0;
    for (Trials trials("kill", 30); trials.next(); ++round) {
        const pid_t process = start_process([&]() -> int { add_for_ever(appliance.file(), round); });
        std::this_thread::sleep_for(20ms + 1ms * trials.below(30));
        kill(process, SIGKILL);
        ASSERT_EQ(-1, wait_for(process)) << "the process ended by itself";

        Connection survivor(appliance.file());
        ASSERT_TRUE(survivor.is_open());
        qbobj_ShareCollection_t collection{};
        ASSERT_EQ(0, qbobj_getShareCollection(survivor.qbdb, survivor.db, &collection, &survivor.err));
        int shares = 0;
        for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link, ++shares)
            ASSERT_TRUE(is_whole(*share)) << share->ShareName;
        EXPECT_GE(shares, last);
        last = shares;
    }
    EXPECT_GT(last, 0) << "no process lived long enough to add a share";
    EXPECT_EQ("ok", appliance.value("PRAGMA integrity_check"));
    EXPECT_TRUE(appliance.rows("PRAGMA foreign_key_check").empty());
}

} // namespace
