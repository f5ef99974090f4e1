// What the storage tool knows: properties of datasets, and where snapshots are browsed.
#include "common/pool.h"
#include "connection.h"
#include "file_descriptor.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>

using namespace qbdb;

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Files and attributes that a program starts with. It leads a process group of its own, so that what it starts
// can be ended with it.
class SpawnSetup
{
  public:
    explicit SpawnSetup(const FileDescriptor &output)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, output.get(), STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
        posix_spawnattr_setpgroup(&attributes_, 0);
    }
    ~SpawnSetup()
    {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSetup(const SpawnSetup &) = delete;
    SpawnSetup &operator=(const SpawnSetup &) = delete;

    // False when the program cannot be run.
    bool run(const char *const *arguments, pid_t &child) const
    {
        // Nothing of the caller's environment decides what runs.
        static constexpr const char *environment[] = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C",
                                                      nullptr};
        return posix_spawn(&child, arguments[0], &actions_, &attributes_,
                           const_cast<char *const *>(arguments), const_cast<char *const *>(environment)) == 0;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

// Reads to the end of the program's output; false when that does not come in time or is too far away.
bool read_output(const FileDescriptor &from, Clock::time_point deadline, std::string &output)
{
    constexpr std::size_t longest = 65536; // no property is as long
    std::array<char, 512> part;
    while (output.size() < longest) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
        pollfd ready{from.get(), POLLIN, 0};
        const int polled = left > 0 ? poll(&ready, 1, static_cast<int>(left)) : 0;
        if (polled < 0 && errno == EINTR)
            continue;
        if (polled <= 0)
            return false;
        const ssize_t got = read(from.get(), part.data(), part.size());
        if (got == 0)
            return true;
        if (got > 0)
            output.append(part.data(), static_cast<std::size_t>(got));
        else if (errno != EINTR)
            return false;
    }
    return false;
}

// Waits for the end of the program, which is not reaped yet.
bool ends(pid_t child, Clock::time_point deadline)
{
    siginfo_t info{};
    while (waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0) {
        if (Clock::now() >= deadline)
            return false;
        std::this_thread::sleep_for(milliseconds(1));
    }
    return true;
}

// Reaps the program, which has ended or was killed.
bool succeeded(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// What the program prints; false when it cannot be run, fails, or has not ended in time. Then it is killed with
// all that it started.
bool run_program(const char *const *arguments, milliseconds timeout, std::string &output)
{
    const Clock::time_point deadline = Clock::now() + timeout;
    int pipe_ends[2];
    if (pipe2(pipe_ends, O_CLOEXEC) != 0)
        return false;
    const FileDescriptor from(pipe_ends[0]);
    pid_t child = 0;
    {
        const FileDescriptor to(pipe_ends[1]);
        if (!SpawnSetup(to).run(arguments, child))
            return false;
    }
    bool in_time = false;
    try {
        in_time = read_output(from, deadline, output) && ends(child, deadline);
    } catch (const std::bad_alloc &) {
        in_time = false;
    }
    if (!in_time)
        kill(-child, SIGKILL);
    return succeeded(child) && in_time;
}

// The tool's path: the one that the handle was opened with, or where systems have it; null where there is none.
const char *tool_path(const qbdb_sysinfo *state)
{
    if (state && !state->storage_tool.empty())
        return state->storage_tool.c_str();
    for (const char *path : {"/usr/sbin/zfs", "/sbin/zfs", "/usr/local/sbin/zfs", "/usr/bin/zfs"})
        if (access(path, X_OK) == 0)
            return path;
    return nullptr;
}

milliseconds tool_timeout(const qbdb_sysinfo *state)
{
    constexpr milliseconds usual(2000);
    return state && state->tool_timeout.count() > 0 ? state->tool_timeout : usual;
}

// A name that the tool would take for an option is no name.
bool is_name(const char *text)
{
    return text && *text != 0 && *text != '-';
}

} // namespace

int qbdb_fs_get_attr_scanf(qbdb_handle_t *qbdb, const char *dataset, const char *property, const char *format,
                           ...)
{
    if (!is_name(dataset) || !is_name(property))
        return SQLITE_MISUSE;
    const char *const tool = tool_path(qbdb->sysinfo);
    const char *const command[] = {tool, "get", "-Hp", "-o", "value", property, dataset, nullptr};
    std::string output;
    if (!tool || !run_program(command, tool_timeout(qbdb->sysinfo), output))
        return SQLITE_NOTFOUND;
    va_list arguments;
    va_start(arguments, format);
    const int taken = std::vsscanf(output.c_str(), format, arguments);
    va_end(arguments);
    return taken > 0 ? 0 : SQLITE_NOTFOUND;
}

const char *snapshot_get_path(qbdb_handle_t *qbdb, const char *path, const char *snapshot)
{
    if (!path || !snapshot || *snapshot == 0)
        return nullptr;
    try {
        return qb::print(qbdb->pool, "%s/.zfs/snapshot/%s", path, snapshot);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
