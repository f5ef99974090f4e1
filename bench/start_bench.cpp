// A whole process of the tool beside one of the sqlite3 shell.
#include "measurements.h"
#include "process.h"

namespace qbobj_bench
{
#ifdef QBCTL
namespace
{

constexpr int shares = 1000;
constexpr int runs = 60;

} // namespace

void add_start_figures(Figures &figures)
{
    const auto appliance = figures.keep<Appliance>(Contents{.shares = shares});
    // An open database keeps its log, so that neither process has to clean up behind itself.
    const auto connection = figures.keep<Connection>(appliance->file(), appliance->root());
    const std::string name = share_name(shares / 2);
    const std::string file = appliance->file();
    const auto measure = [&figures, connection](const char *program, const std::vector<std::string> &words) {
        const auto run_once = [connection, words](benchmark::State &state) {
            for (auto _ : state)
                run_program(words);
        };
        figures.measure(program, run_once, runs, Figures::Clock::wall);
    };
    measure("start/qbctl", {QBCTL, "--db", file, "call", "getShareId", "share_name=" + name});
    measure("start/sqlite3", {"sqlite3", file, "SELECT id FROM share WHERE name='" + name + "'"});
    figures.ratio_at_most("qbctl-getShareId-to-sqlite3-shell", "start/qbctl", "start/sqlite3", 3);
}
#else
void add_start_figures(Figures & /*figures*/) {}
#endif

} // namespace qbobj_bench
