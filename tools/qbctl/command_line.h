// The words of the command line and what they start.
#pragma once

#include "qbctl/arguments.h"
#include "qbctl/settings.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace qbctl
{

class CommandLine
{
  public:
    CommandLine();
    // Throws BadInput for wrong usage, and what the command throws.
    void run(int argc, char **argv);

  private:
    void add_settings();
    void add_commands_of_databases();
    void add_commands_of_the_library();
    void add_commands_of_operations();

    CLI::App app_{
        "Reads and changes the configuration database of a storage appliance.\n"
        "Every operation of the library can be called: 'qbctl list' shows them, 'qbctl describe TYPE' shows\n"
        "a record's fields. Results are JSON, or a table when they go to a terminal.\n"
        "Exit status: 0 done, 1 the operation failed, 2 wrong usage, 75 the database is in use: try again."};
    Settings settings_;
    std::string file_;
    std::string operation_;
    std::vector<std::string> volumes_;
    std::vector<std::string> names_;
    InputWords input_;
};

} // namespace qbctl
