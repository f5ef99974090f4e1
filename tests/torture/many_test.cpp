// Many at once on one file: nobody fails because others are at work, nothing that was acknowledged is lost, and
// readers see whole records only.
#include "processes.h"
#include "scenarios.h"
#include "trials.h"
#include "workload.h"

#include <deque>
#include <thread>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

// As the workload makes shares.
bool is_torn(const qbobj_Share_t &share)
{
    const std::string step = share.Comment;
    return step != share.Cifs->DfolderAcl->RemoteShare || step != share.SnapshotSchedule->Minute ||
           "h" + step != share.Nfs->HostAcl->Host->HostName;
}

// Calls all that only reads; 0 when none failed and the shares are whole.
int read_all(const std::filesystem::path &file)
{
    const Connection connection(file, true);
    qbobj_error_rec_t err{};
    for (const Scenario &scenario : scenarios()) {
        const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
        if (!operation.only_reads() || scenario.fails)
            continue;
        const auto outcome = operation.call(operation, {connection.qbdb, connection.db},
                                            qbobj_json::arrange_inputs(operation, scenario.input));
        if (operation.failed(outcome.result)) {
            std::fprintf(stderr, "%s: %s\n", scenario.operation.c_str(), outcome.error.msg);
            return 1;
        }
    }
    qbobj_ShareCollection_t collection{};
    if (qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &err) != 0)
        return 2;
    for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link)
        if (*share->ShareName == 'o' && is_torn(*share))
            return 3;
    return 0;
}

int read_for(std::chrono::milliseconds time, const std::filesystem::path &file)
{
    int result = 0;
    for (const Deadline deadline(time); result == 0 && !deadline.passed();)
        result = read_all(file);
    return result;
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

} // namespace
