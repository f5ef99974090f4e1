// Processes are killed in the midst of mixed changes: what was acknowledged is there, and all that is there is whole.
#include "processes.h"
#include "trials.h"
#include "workload.h"

#include <csignal>
#include <thread>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

TEST(Kill, KeepsWhatWasAcknowledged)
{
    constexpr std::size_t owners = 2;
    Appliance appliance;
    Workload workload(appliance, owners);
    for (Trials trials("kill", 60); trials.next();) {
        std::array<pid_t, owners> processes{};
        for (std::size_t owner = 0; owner < owners; ++owner)
            processes[owner] = start_process(
                [&, seed = trials.random()()] { return workload.work(owner, seed, 1h) ? 0 : 1; });
        for (const pid_t process : processes) {
            // One in three dies while it opens the database, or soon after.
            std::this_thread::sleep_for(1us * trials.below(trials.one_in(3) ? 8'000 : 60'000));
            kill(process, SIGKILL);
            EXPECT_EQ(-1, wait_for(process)) << "the process ended by itself";
        }
        workload.check();
    }
}

} // namespace
