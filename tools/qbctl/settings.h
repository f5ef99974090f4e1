// What the command line says of every command, and how a command fails.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace qbctl
{

constexpr int exit_failed = 1;
constexpr int exit_usage = 2;
constexpr int exit_busy = 75; // as sysexits.h has it: a failure that passes

struct Settings {
    std::string database;
    std::string root;
    std::string log_level = "none";
    double wait_seconds = 5;
    bool json = false;
    bool table = false;
    std::vector<std::string> columns;
};

// The operation, or the file, could not do what was asked.
class Failed : public std::runtime_error
{
  public:
    explicit Failed(const std::string &text, int status = exit_failed)
        : std::runtime_error(text), status_(status)
    {
    }
    int status() const { return status_; } // what the program exits with

  private:
    int status_;
};

} // namespace qbctl
