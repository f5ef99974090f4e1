// What the storage tool knows: properties of datasets, and where snapshots are browsed.
#include "common/pool.h"
#include "file_descriptor.h"
#include "qbdb.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <new>
#include <spawn.h>
#include <string>
#include <sys/wait.h>

using namespace qbdb;

namespace
{

class SpawnActions
{
  public:
    SpawnActions() { posix_spawn_file_actions_init(&actions_); }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
    posix_spawn_file_actions_t *get() { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

std::string read_all(const FileDescriptor &from)
{
    std::string text;
    std::array<char, 512> part;
    while (true) {
        const ssize_t got = read(from.get(), part.data(), part.size());
        if (got > 0)
            text.append(part.data(), static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            return text;
    }
}

bool succeeded(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// What the program prints; false when it cannot be run or fails.
bool run_program(const char *const *arguments, std::string &output)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    const FileDescriptor from(ends[0]);
    pid_t child = 0;
    {
        const FileDescriptor to(ends[1]);
        SpawnActions actions;
        posix_spawn_file_actions_adddup2(actions.get(), to.get(), STDOUT_FILENO);
        posix_spawn_file_actions_addopen(actions.get(), STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&child, arguments[0], actions.get(), nullptr, const_cast<char *const *>(arguments),
                         environ) != 0)
            return false;
    }
    output = read_all(from);
    return succeeded(child);
}

// A name that the tool would take for an option is no name.
bool is_name(const char *text)
{
    return text && *text != 0 && *text != '-';
}

} // namespace

int qbdb_fs_get_attr_scanf(qbdb_handle_t * /*qbdb*/, const char *dataset, const char *property,
                           const char *format, ...)
{
    if (!is_name(dataset) || !is_name(property))
        return SQLITE_MISUSE;
    std::string output;
    try {
        const char *const command[] = {"zfs", "get", "-Hp", "-o", "value", property, dataset, nullptr};
        if (!run_program(command, output))
            return SQLITE_NOTFOUND;
    } catch (const std::bad_alloc &) {
        return SQLITE_NOMEM;
    }
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
