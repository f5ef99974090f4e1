// A whole process of the tool beside one of the sqlite3 shell.
#include "measurements.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace qbobj_bench
{
#ifdef QBCTL
namespace
{

constexpr int shares = 1000;
constexpr int runs = 60;

class Silence
{
  public:
    Silence()
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Silence() { posix_spawn_file_actions_destroy(&actions_); }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;
    const posix_spawn_file_actions_t *actions() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

// Runs a program to its end.
void run(std::vector<std::string> words)
{
    std::vector<char *> argv;
    argv.reserve(words.size() + 1);
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const Silence silence;
    pid_t child = 0;
    int status = -1;
    if (posix_spawnp(&child, argv[0], silence.actions(), nullptr, argv.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error(words[0] + " failed");
}

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
                run(words);
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
