// Work in processes beside the benchmark's.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace qbobj_bench
{

// A process that does `work` and sends what it returns; it ends when this object does.
class Worker
{
  public:
    using Numbers = std::vector<double>;

    explicit Worker(const std::function<Numbers()> &work);
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    // What the work returned. Throws when it failed.
    Numbers result();

  private:
    pid_t child_ = -1;
    int from_child_ = -1;
};

// Runs a program to its end; its output goes nowhere.
void run_program(std::vector<std::string> words);

} // namespace qbobj_bench
