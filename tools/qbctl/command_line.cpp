// Commands and options, by CLI11.
#include "qbctl/command_line.h"

#include "qbctl/batch.h"
#include "qbctl/call.h"
#include "qbctl/database.h"
#include "qbctl/describe.h"
#include "json/nearest.h"

#include <algorithm>

using qbobj_json::BadInput;

namespace qbctl
{
namespace
{

void run_init(Settings settings, const std::string &file, const std::vector<std::string> &volumes)
{
    create_database(file);
    settings.database = file;
    const Database database(settings, Access::writes);
    for (const std::string &volume : volumes)
        database.register_volume(volume);
}

// Names a word that stands where none belongs. What is no name is not repeated: it may hold a password.
std::string misplaced(const CLI::App &app, const std::string &word)
{
    std::vector<std::string> names;
    const bool option = word.starts_with('-');
    if (option) {
        for (const CLI::App *level = &app; level != nullptr;
             level = level->get_subcommands().empty() ? nullptr : level->get_subcommands().front())
            for (const CLI::Option *known : level->get_options())
                for (const std::string &name : known->get_lnames())
                    names.push_back("--" + name);
    } else if (app.get_subcommands().empty()) {
        for (const CLI::App *command : app.get_subcommands({}))
            names.push_back(command->get_name());
    }
    const std::string name = option ? word.substr(0, word.find('=')) : word;
    if (!is_name(name))
        return "a word too many";
    if (names.empty())
        return "a word too many: " + name;
    return std::string(option ? "there is no option '" : "there is no command '") + name + "'" +
           qbobj_json::suggestion(name, names);
}

} // namespace

CommandLine::CommandLine()
{
    app_.name("qbctl");
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.set_version_flag("--version", qbobj_version(), "Show the library's version and exit");
    add_settings();
    add_commands_of_databases();
    add_commands_of_the_library();
    add_commands_of_operations();
}

void CommandLine::add_settings()
{
    app_.add_option("--db", settings_.database, "The database file")->envname("QBOBJ_DB")->type_name("FILE");
    app_.add_option("--root", settings_.root,
                    "Folder below which absolute paths (volumes, homes, import lists) are read")
        ->envname("QBOBJ_ROOT")
        ->type_name("FOLDER");
    app_.add_option("--log", settings_.log_level, "What is logged to standard error")
        ->check(CLI::IsMember({"none", "error", "warn", "info", "debug"}))
        ->capture_default_str();
    app_.add_option("--wait", settings_.wait_seconds, "How long a database in use is waited for")
        ->check(CLI::Range(0.0, 3600.0))
        ->type_name("SECONDS")
        ->capture_default_str();
    app_.add_flag("--json", settings_.json, "Show results as JSON also on a terminal");
    app_.add_flag("--table", settings_.table, "Show results as a table");
    app_.add_option("--columns", settings_.columns, "The table's columns, e.g. ShareName,Path")
        ->delimiter(',')
        ->type_name("FIELD,...");
}

void CommandLine::add_commands_of_databases()
{
    CLI::App *init =
        app_.add_subcommand("init", "Makes a fresh database; refused when the file exists.\n"
                                    "Example: qbctl --root /mnt init appliance.db --volume data");
    init->add_option("FILE", file_, "The file to make")->required();
    init->add_option("--volume", volumes_,
                     "Registers the volume mounted at /NAME (below --root); may be repeated")
        ->type_name("NAME");
    init->callback([this] { run_init(settings_, file_, volumes_); });

    CLI::App *volume = app_.add_subcommand("volume", "Registers volumes, or refreshes their sizes.");
    volume->add_option("NAME", volumes_, "A volume mounted at /NAME (below --root)")->required();
    volume->callback([this] {
        const Database database(settings_, Access::writes);
        for (const std::string &name : volumes_)
            database.register_volume(name);
    });
}

void CommandLine::add_commands_of_the_library()
{
    app_.add_subcommand("list", "Lists the operations: their arguments and results, and what they do.")
        ->callback([] { print_operations(std::cout); });
    CLI::App *describe = app_.add_subcommand(
        "describe",
        "Shows what an operation does, or a record type's fields; without a name, lists the types.\n"
        "Examples: qbctl describe addShare\n"
        "          qbctl describe Share\n"
        "          qbctl describe Share.Cifs.UserAcl");
    describe->add_option("NAME", names_, "An operation, a record type, or a path of fields in one");
    describe->callback([this] {
        if (names_.empty())
            print_record_types(std::cout);
        for (const std::string &name : names_)
            qbctl::describe(std::cout, name);
    });
}

void CommandLine::add_commands_of_operations()
{
    CLI::App *call = app_.add_subcommand(
        "call",
        "Calls an operation. Its input is JSON: an object of the arguments by name or, for an operation of\n"
        "one argument, that argument itself; '-' reads it from standard input, '@FILE' from a file.\n"
        "Scalar arguments can be given as NAME=VALUE.\n"
        "No password belongs on the command line: every user of the machine can read it there while the\n"
        "command runs, and the shell keeps it. Give it with --ask or --from-fd, or in '-' or '@FILE'.\n"
        "Examples: qbctl call getShareId share_name=docs\n"
        "          qbctl call addShare '{\"ShareName\":\"docs\",\"VolumeId\":\"data\"}'\n"
        "          qbctl call addUser '{\"UserName\":\"ann\"}' --ask Password");
    call->add_option("OPERATION", operation_, "The operation, e.g. getShareCollection")->required();
    call->add_option("INPUT", input_.words, "JSON, '-', '@FILE', or NAME=VALUE");
    call->add_option("--ask", input_.asked,
                     "Asks at the terminal, without an echo, for the text at PATH in the input, such as\n"
                     "Password or user.Password; may be repeated")
        ->type_name("PATH")
        ->allow_extra_args(false);
    call->add_option(
            "--from-fd", input_.from_descriptors,
            "Reads the text at PATH from the open descriptor N, less a last line end; may be repeated.\n"
            "Example: --from-fd Password=3 3<secret")
        ->type_name("PATH=N")
        ->allow_extra_args(false);
    call->callback([this] { run_call(settings_, operation_, input_); });

    CLI::App *batch = app_.add_subcommand(
        "batch", "Runs one call a line in one process: OPERATION JSON. Results of reading operations are\n"
                 "written one a line. Stops at the first failure.");
    batch->add_option("FILE", file_, "The file of calls, or '-'")->required();
    batch->callback([this] { run_batch(settings_, file_); });
}

void CommandLine::run(int argc, char **argv)
{
    // The parser would take a JSON array apart as a list of values; a leading blank hides it. It wants its
    // words in reverse.
    std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::string &argument : arguments)
        if (argument.starts_with('['))
            argument.insert(0, " ");
    std::reverse(arguments.begin(), arguments.end());
    try {
        app_.parse(std::move(arguments));
    } catch (const CLI::ParseError &error) {
        if (error.get_exit_code() == 0) { // help was asked for
            app_.exit(error);
            return;
        }
        const std::vector<std::string> words = app_.remaining(true);
        throw BadInput(words.empty() ? std::string(error.what()) + "; 'qbctl --help' helps"
                                     : misplaced(app_, words.front()));
    }
}

} // namespace qbctl
