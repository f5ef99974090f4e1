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

constexpr auto duration = 1000ms;

// Calls all that only reads; whether none failed, and every share of the workload carries the number of one step.
bool read_all(const std::filesystem::path &file)
{
    const Connection connection(file, true);
    bool done = true;
    for (const Scenario &scenario : scenarios()) {
        const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
        const auto input = arrange_inputs(operation, scenario.input);
        if (operation.only_reads() && !scenario.fails)
            done = done && !operation.failed(
                               operation.call(operation, {connection.qbdb, connection.db}, input).result);
    }
    qbobj_ShareCollection_t collection{};
    qbobj_error_rec_t err{};
    done = done && qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &err) == 0;
    for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link)
        if (const std::string step = share->Comment; *share->ShareName == 'o')
            done = done && step == share->Cifs->DfolderAcl->RemoteShare &&
                   step == share->SnapshotSchedule->Minute &&
                   "h" + step == share->Nfs->HostAcl->Host->HostName;
    return done;
}

// Writers in processes and threads, and a process that reads, on each file.
void work_at_once(Trials &trials, std::size_t files, std::size_t processes, std::size_t threads)
{
    std::deque<Appliance> appliances(files);
    std::deque<Workload> workloads;
    std::vector<pid_t> running;
    for (Appliance &appliance : appliances) {
        Workload &workload = workloads.emplace_back(appliance, processes + threads);
        for (std::size_t owner = 0; owner < processes; ++owner)
            running.push_back(start_process(
                [&, seed = trials.random()()] { return workload.work(owner, seed, duration) ? 0 : 1; }));
        running.push_back(start_process([&] {
            for (const Deadline deadline(duration); !deadline.passed();)
                if (!read_all(appliance.file()))
                    return 2;
            return 0;
        }));
    }
    std::vector<std::jthread> working;
    for (Workload &workload : workloads)
        for (std::size_t owner = processes; owner < processes + threads; ++owner)
            working.emplace_back(
                [&, owner, seed = trials.random()()] { EXPECT_TRUE(workload.work(owner, seed, duration)); });
    working.clear();
    for (const pid_t process : running)
        EXPECT_EQ(0, wait_for(process));
    for (Workload &workload : workloads)
        workload.check();
}

TEST(Many, ProcessesWriteAndReadWithoutFailureOrLoss)
{
    for (Trials trials("processes", 3); trials.next();)
        work_at_once(trials, 1, 8, 0);
}

TEST(Many, ThreadsOpenUseAndCloseHandlesOfTheirOwn)
{
    for (Trials trials("threads", 2); trials.next();) {
        work_at_once(trials, 1, 1, 4);
        work_at_once(trials, 4, 1, 1);
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
