// Listing all shares: as the tool's JSON, how much memory it takes, and how others fare beside it.
#include "measurements.h"
#include "process.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <limits>
#include <thread>

namespace qbobj_bench
{
namespace
{

constexpr int many = 10000;
constexpr int most = 100000;
constexpr int calls = 5000; // of which a percentile is taken

int list(const Connection &connection)
{
    qbobj_ShareCollection_t collection{};
    qbobj_error_rec_t err{};
    check(qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &err), err);
    int shares = 0;
    for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link)
        shares++;
    return shares;
}

/* ---- Memory -------------------------------------------------------------------------------------------- */

// The most that this process has had in memory since it was last forgotten, in bytes.
double peak_memory()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes)
            return kilobytes * 1024;
    throw std::runtime_error("this system does not tell a process's memory");
}

// What a process takes at most for one list beyond what it had before, and what the list's pool takes.
void add_memory_figure(Figures &figures)
{
    const Appliance appliance({.shares = most});
    const double growth = Worker([&appliance]() -> Worker::Numbers {
                              const Connection connection = appliance.connect();
                              std::ofstream("/proc/self/clear_refs") << 5; // forgets the peak so far
                              const double before = peak_memory();
                              require_equal("getShareCollection", most, list(connection));
                              return {peak_memory() - before};
                          })
                              .result()
                              .at(0);
    const double pool = Worker([&appliance]() -> Worker::Numbers {
                            const Connection connection = appliance.connect();
                            return {static_cast<double>(pool_bytes(connection, [&] { list(connection); }))};
                        })
                            .result()
                            .at(0);
    figures.value_at_most("getShareCollection-peak-memory-to-pool-of-100000", growth / pool, 1.4);
}

/* ---- Beside a list ------------------------------------------------------------------------------------- */

// The time that 99 of 100 calls of `work` do not exceed.
template <class Work>
double percentile_99(Work work)
{
    std::vector<double> seconds;
    for (int i = 0; i < calls; i++) {
        const auto begin = std::chrono::steady_clock::now();
        work(i);
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    }
    std::ranges::sort(seconds);
    return seconds[seconds.size() * 99 / 100];
}

double id_time(const Connection &connection)
{
    return percentile_99([&](int i) {
        qbobj_error_rec_t err{};
        const int number = i * 7 % many;
        const std::string name = share_name(number);
        require_equal("getShareId", number + 1,
                      qbobj_getShareId(connection.qbdb, connection.db, name.c_str(), &err));
    });
}

// Every modification finds the share as the one before has left it.
double modification_time(const Connection &connection)
{
    const std::string name = "data/" + share_name(many / 2);
    return percentile_99([&](int i) {
        qbobj_CifsShareOption_t cifs{};
        qbobj_clear_CifsShareOption(&cifs);
        cifs.DefaultAccess = i % 2 == 0 ? "ReadWrite" : "Disabled";
        qbobj_Share_t share{};
        qbobj_clear_Share(&share);
        share.resource_id = name.c_str();
        share.Cifs = &cifs;
        qbobj_error_rec_t err{};
        check(qbobj_modifyShare(connection.qbdb, connection.db, &share, 0, &err), err);
        require_equal("Changed", 1, share.Cifs->Changed);
        qbdb_clear_pool(connection.qbdb);
    });
}

struct Times {
    double id = std::numeric_limits<double>::max();
    double modification = std::numeric_limits<double>::max();

    // The quickest counts, as it does of all measurements.
    void take(const Connection &connection)
    {
        id = std::min(id, id_time(connection));
        modification = std::min(modification, modification_time(connection));
    }
};

// Takes times while another process lists all shares over and over, which must always find them all.
void take_beside_lists(const Appliance &appliance, const Connection &connection, Times &times)
{
    const TemporaryFolder folder;
    const std::filesystem::path begun = folder.path() / "begun";
    const std::filesystem::path end = folder.path() / "end";
    Worker lister([&]() -> Worker::Numbers {
        const Connection own = appliance.connect();
        double lists = 0;
        for (; !std::filesystem::exists(end); lists++) {
            require_equal("getShareCollection", many, list(own));
            qbdb_clear_pool(own.qbdb);
            std::ofstream(begun) << "now";
        }
        return {lists};
    });
    while (!std::filesystem::exists(begun))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    times.take(connection);
    std::ofstream(end) << "now";
    if (lister.result().at(0) < 2)
        throw std::runtime_error("nothing was listed meanwhile");
}

void add_neighbour_figures(Figures &figures)
{
    constexpr int turns = 5;
    const Appliance appliance({.shares = many});
    Times idle;
    Times beside;
    {
        const Connection connection = appliance.connect();
        Times{}.take(connection);
        for (int i = 0; i < turns; i++) {
            idle.take(connection);
            take_beside_lists(appliance, connection, beside);
        }
    }
    figures.value_at_most("getShareId-p99-beside-lists-to-idle", beside.id / idle.id, 3);
    figures.value_at_most("modifyShare-p99-beside-lists-to-idle", beside.modification / idle.modification, 3);
}

/* ---- The tool ------------------------------------------------------------------------------------------ */

#ifdef QBCTL
// The whole process, which starts, lists, and writes some tens of megabytes, beside the list alone.
void add_tool_figure(Figures &figures)
{
    constexpr int runs = 15;
    const auto appliance = figures.keep<Appliance>(Contents{.shares = many});
    const auto connection = figures.keep<Connection>(appliance->file(), appliance->root());
    const std::string file = appliance->file();
    figures.measure(
        "listing/qbctl",
        [connection, file](benchmark::State &state) {
            for (auto _ : state)
                run_program({QBCTL, "--db", file, "call", "getShareCollection"});
        },
        runs, Figures::Clock::wall);
    figures.measure("listing/library", timed(*connection, [connection] { list(*connection); }), runs,
                    Figures::Clock::wall);
    figures.ratio_at_most("qbctl-getShareCollection-to-the-call", "listing/qbctl", "listing/library", 2);
}
#else
void add_tool_figure(Figures & /*figures*/) {}
#endif

} // namespace

void add_listing_figures(Figures &figures)
{
    add_memory_figure(figures);
    add_neighbour_figures(figures);
    add_tool_figure(figures);
}

} // namespace qbobj_bench
