// Many at once on one file: nobody fails because others are at work, nothing that was acknowledged is lost, and
// readers see whole records only.
#include "processes.h"
#include "scenarios.h"
#include "trials.h"
#include "workload.h"

#include <csignal>
#include <deque>
#include <optional>
#include <thread>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

// Calls all that only reads; whether none failed, and every share of the workload carries the number of one step.
bool read_all(const std::filesystem::path &file)
{
    const Connection connection(file, true);
    for (const Scenario &scenario : scenarios()) {
        const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
        if (operation.only_reads() && !scenario.fails &&
            operation.failed(operation
                                 .call(operation, {connection.qbdb, connection.db},
                                       arrange_inputs(operation, scenario.input))
                                 .result))
            return false;
    }
    qbobj_ShareCollection_t collection{};
    qbobj_error_rec_t err{};
    bool whole = qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &err) == 0;
    for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link)
        if (const std::string step = share->Comment; *share->ShareName == 'o')
            whole = whole && step == share->Cifs->DfolderAcl->RemoteShare &&
                    step == share->SnapshotSchedule->Minute &&
                    "h" + step == share->Nfs->HostAcl->Host->HostName;
    return whole;
}

int read_for(std::chrono::milliseconds time, const std::filesystem::path &file)
{
    bool done = true;
    for (const Deadline deadline(time); done && !deadline.passed();)
        done = read_all(file);
    return done ? 0 : 1;
}

TEST(Many, ProcessesWriteAndReadWithoutFailureOrLoss)
{
    constexpr std::size_t owners = 8;
    constexpr auto time = 1500ms;
    Appliance appliance;
    Workload workload(appliance, owners);
    for (Trials trials("processes", 2); trials.next();) {
        std::vector<pid_t> processes;
        for (std::size_t owner = 0; owner < owners; ++owner)
            processes.push_back(start_process(
                [&, seed = trials.random()()] { return workload.work(owner, seed, time) ? 0 : 9; }));
        for (int reader = 0; reader < 2; ++reader)
            processes.push_back(start_process([&] { return read_for(time, appliance.file()); }));
        for (const pid_t process : processes)
            EXPECT_EQ(0, wait_for(process));
        workload.check();
    }
}

// Threads with handles of their own on one file, and on a file each; a process works on each file besides.
TEST(Many, ThreadsOpenUseAndCloseHandlesOfTheirOwn)
{
    for (Trials trials("threads", 2); trials.next();)
        for (const std::size_t files : {1, 4}) {
            const std::size_t threads = 4 / files;
            std::deque<Appliance> appliances(files);
            std::deque<Workload> workloads;
            for (Appliance &appliance : appliances)
                workloads.emplace_back(appliance, threads + 1);
            std::vector<pid_t> processes;
            for (Workload &workload : workloads)
                processes.push_back(start_process(
                    [&, seed = trials.random()()] { return workload.work(threads, seed, 500ms) ? 0 : 1; }));
            std::vector<std::jthread> running;
            for (Workload &workload : workloads)
                for (std::size_t owner = 0; owner < threads; ++owner)
                    running.emplace_back([&, owner, seed = trials.random()()] {
                        EXPECT_TRUE(workload.work(owner, seed, 500ms));
                    });
            running.clear();
            for (const pid_t process : processes)
                EXPECT_EQ(0, wait_for(process));
            for (Workload &workload : workloads)
                workload.check();
        }
}

bool is_refused(Connection &inherited)
{
    return add_share(inherited, "x") == -SQLITE_MISUSE &&
           qbdb_last_commit(inherited.qbdb, nullptr) == SQLITE_MISUSE &&
           qbdb_sql_exec_mprintf(inherited.qbdb, inherited.db, nullptr, "", 0, "SELECT 1") == SQLITE_MISUSE;
}

// A child works with its own handle, or only closes the inherited one, when its parent has closed it and another
// process has come and died.
TEST(Many, ChildrenDoNoHarmToWhatTheyInherit)
{
    Appliance appliance;
    Workload workload(appliance, 3);
    for (Trials trials("forks", 10); trials.next();) {
        const std::size_t seed = trials.random()();
        const pid_t other =
            start_process([&] { return raise(SIGSTOP) + (workload.work(2, seed, 1h) ? 0 : 1); });
        std::optional<Connection> mine(appliance.file());
        const pid_t child = start_process([&] {
            bool done = is_refused(*mine);
            if (seed % 2 == 0)
                done = done && workload.work(1, seed, 50ms) && is_refused(*mine);
            raise(SIGSTOP);
            qbdb_close(mine->qbdb);
            return done && workload.work(1, seed, 20ms) ? 0 : 1;
        });
        for (int step = 0; step < 5; ++step)
            EXPECT_TRUE(workload.step(0, trials.random()(), {mine->qbdb, mine->db}));
        mine.reset();
        waitpid(other, nullptr, WUNTRACED);
        kill(other, SIGCONT);
        std::this_thread::sleep_for(40ms);
        waitpid(child, nullptr, WUNTRACED);
        kill(other, SIGKILL);
        EXPECT_EQ(-1, wait_for(other));
        kill(child, SIGCONT);
        EXPECT_EQ(0, wait_for(child));
        workload.check();
    }
}

} // namespace
