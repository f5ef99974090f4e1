// Processes, and pipes from them.
#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace qbobj_bench
{
namespace
{

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

// The exit status of the process that did the work.
int send(const std::function<Worker::Numbers()> &work, int to)
{
    try {
        for (const double number : work())
            if (write(to, &number, sizeof number) != sizeof number)
                return 1;
        return 0;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

} // namespace

Worker::Worker(const std::function<Numbers()> &work)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("cannot make a pipe");
    child_ = fork();
    if (child_ == 0)
        _exit(send(work, ends[1]));
    close(ends[1]);
    from_child_ = ends[0];
    if (child_ < 0)
        throw std::runtime_error("cannot make a process");
}

Worker::~Worker()
{
    if (child_ > 0) {
        kill(child_, SIGKILL);
        waitpid(child_, nullptr, 0);
    }
    close(from_child_);
}

Worker::Numbers Worker::result()
{
    Numbers numbers;
    for (double number = 0; read(from_child_, &number, sizeof number) == sizeof number;)
        numbers.push_back(number);
    int status = -1;
    if (waitpid(child_, &status, 0) != child_ || status != 0)
        throw std::runtime_error("a process beside the benchmark failed");
    child_ = -1;
    return numbers;
}

void run_program(std::vector<std::string> words)
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

} // namespace qbobj_bench
