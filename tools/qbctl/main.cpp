// qbctl: every operation of the library, for people and scripts.
#include "qbctl/render.h"
#include "json/operations.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>

using qbobj_json::Argument;
using qbobj_json::ArgumentKind;
using qbobj_json::BadInput;
using qbobj_json::Connection;
using qbobj_json::Json;
using qbobj_json::Operation;
using qbobj_json::Outcome;

namespace
{

constexpr int exit_failed = 1;
constexpr int exit_usage = 2;

struct Settings {
    std::string database;
    std::string root;
    std::string log_level = "none";
    bool json = false;
    bool table = false;
    std::vector<std::string> columns;
};

// The operation, or the file, could not do what was asked.
class Failed : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

class Database
{
  public:
    explicit Database(const Settings &settings)
    {
        if (settings.database.empty())
            throw BadInput("no database: give --db FILE or set QBOBJ_DB");
        static const std::map<std::string, qbdb_loglevel_t> levels{
            {"none", QBDB_LOG_NONE}, {"error", QBDB_LOG_ERROR}, {"warn", QBDB_LOG_WARN},
            {"info", QBDB_LOG_INFO}, {"debug", QBDB_LOG_DEBUG},
        };
        qbdb_options_t options{};
        options.root = settings.root.empty() ? nullptr : settings.root.c_str();
        options.loglvl = levels.at(settings.log_level);
        options.log = stderr;
        std::array<char, 1024> message{};
        if (qbdb_open(settings.database.c_str(), &options, &qbdb_, &db_, message.data(), message.size()) != 0)
            throw Failed(message.data());
    }
    ~Database() { qbdb_close(qbdb_); }
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    Connection connection() const { return {qbdb_, db_}; }
    void clear() const { qbdb_clear_pool(qbdb_); }
    void register_volume(const std::string &name) const
    {
        char *message = nullptr;
        if (qbdb_register_volume(qbdb_, db_, name.c_str(), &message) != 0)
            throw Failed("volume " + name + ": " + (message == nullptr ? "failed" : message));
    }

  private:
    qbdb_handle_t *qbdb_ = nullptr;
    sqlite3 *db_ = nullptr;
};

const Operation &operation_named(const std::string &name)
{
    const Operation *operation = qbobj_json::find_operation(name);
    if (operation == nullptr)
        throw BadInput("there is no operation '" + name + "': see 'qbctl list'");
    return *operation;
}

std::string read_all(std::istream &in)
{
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

Json parse_json(const std::string &text)
{
    try {
        return Json::parse(text);
    } catch (const Json::parse_error &error) {
        throw BadInput(std::string("the input is no JSON: ") + error.what());
    }
}

// A JSON text, "-" for standard input, "@FILE" for a file.
Json read_input(const std::string &text)
{
    if (text == "-")
        return parse_json(read_all(std::cin));
    if (text.starts_with('@')) {
        std::ifstream file(text.substr(1));
        if (!file)
            throw BadInput("cannot read " + text.substr(1));
        return parse_json(read_all(file));
    }
    return parse_json(text);
}

bool is_pair(const std::string &text)
{
    const std::size_t equals = text.find('=');
    return equals != std::string::npos && equals > 0 &&
           std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(equals),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; });
}

// Adds NAME=VALUE to the arguments: a text, or a number where the operation takes one, or the JSON of a
// record.
void add_pair(const Operation &operation, Json &given, const std::string &pair)
{
    const std::size_t equals = pair.find('=');
    const std::string name = pair.substr(0, equals);
    const std::string value = pair.substr(equals + 1);
    const auto takes = [&](const Argument &argument) { return argument.is_input() && argument.name == name; };
    const auto argument = std::find_if(operation.arguments.begin(), operation.arguments.end(), takes);
    if (argument == operation.arguments.end())
        throw BadInput(operation.name + " has no argument '" + name + "'");
    given[name] = argument->kind == ArgumentKind::text ? Json(value) : read_input(value);
}

Json gather_inputs(const Operation &operation, const std::vector<std::string> &words)
{
    Json given = nullptr;
    for (const std::string &word : words) {
        if (is_pair(word))
            add_pair(operation, given, word);
        else if (given.is_null())
            given = read_input(word);
        else
            throw BadInput("only one JSON input can be given: " + word);
    }
    return qbobj_json::arrange_inputs(operation, given);
}

// The code's name and number, and the administrator's message.
std::string failure_text(const Operation &operation, const Outcome &outcome)
{
    const int code = outcome.error.ec != QBOBJ_ERROR_OK ? outcome.error.ec : outcome.result;
    std::string text = operation.name + ": ";
    if (code < 0)
        return text + "not found or not valid (" + std::to_string(code) + ")";
    text += qbobj_error_name(code);
    text += " (" + std::to_string(code) + ")";
    if (outcome.error.msg != nullptr)
        text += std::string(": ") + outcome.error.msg;
    return text;
}

void show(const Settings &settings, const Json &value)
{
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    if (settings.table || (terminal && !settings.json))
        qbctl::print_table(std::cout, value, settings.columns);
    else
        std::cout << qbctl::json_text(value, 2) << '\n';
}

void run_call(const Settings &settings, const std::string &name, const std::vector<std::string> &words)
{
    const Operation &operation = operation_named(name);
    const Json inputs = gather_inputs(operation, words);
    const Database database(settings);
    const Outcome outcome = operation.call(operation, database.connection(), inputs);
    if (operation.failed(outcome.result))
        throw Failed(failure_text(operation, outcome));
    show(settings, outcome.value());
}

/* ---- Batch --------------------------------------------------------------------------------------------- */

// Shows on a terminal how far a batch is.
class Progress
{
  public:
    explicit Progress(std::size_t total) : total_(total), shown_(isatty(STDERR_FILENO) != 0 && total > 0) {}
    ~Progress()
    {
        if (shown_)
            std::cerr << "\r\033[K" << std::flush;
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;
    void advance()
    {
        constexpr std::size_t bar = 40;
        ++done_;
        const std::size_t filled = done_ * bar / std::max<std::size_t>(total_, 1);
        if (!shown_ || filled == filled_)
            return;
        filled_ = filled;
        std::cerr << "\r[" << std::string(filled, '#') << std::string(bar - filled, ' ') << "] " << done_
                  << "/" << total_ << std::flush;
    }

  private:
    std::size_t total_;
    std::size_t done_ = 0;
    std::size_t filled_ = 0;
    bool shown_;
};

// Each line: the operation's name and, behind a blank, its JSON. Empty lines and lines beginning with '#' are
// skipped. Stops at the first failure: what stood before it stays done.
void run_batch(const Settings &settings, const std::string &file)
{
    std::ifstream opened;
    if (file != "-")
        opened.open(file);
    std::istream &in = file == "-" ? std::cin : opened;
    if (!in)
        throw BadInput("cannot read " + file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);

    const Database database(settings);
    Progress progress(lines.size());
    for (std::size_t number = 1; number <= lines.size(); ++number) {
        progress.advance();
        const std::string &line = lines[number - 1];
        const std::size_t start = line.find_first_not_of(" \t\r");
        if (start == std::string::npos || line[start] == '#')
            continue;
        const std::string at = file + ":" + std::to_string(number) + ": ";
        try {
            const std::size_t blank = line.find_first_of(" \t\r", start);
            const Operation &operation = operation_named(line.substr(start, blank - start));
            const std::size_t input =
                blank == std::string::npos ? blank : line.find_first_not_of(" \t\r", blank);
            const Json given = input == std::string::npos ? Json(nullptr) : parse_json(line.substr(input));
            const Outcome outcome = operation.call(operation, database.connection(),
                                                   qbobj_json::arrange_inputs(operation, given));
            if (operation.failed(outcome.result))
                throw Failed(failure_text(operation, outcome));
            if (!operation.writes())
                std::cout << qbctl::json_text(outcome.value(), -1) << '\n';
        } catch (const BadInput &error) {
            throw BadInput(at + error.what());
        } catch (const Failed &error) {
            throw Failed(at + error.what());
        }
        database.clear();
    }
}

/* ---- Init, list, describe ------------------------------------------------------------------------------ */

void run_init(Settings settings, const std::string &file, const std::vector<std::string> &volumes)
{
    std::array<char, 1024> message{};
    if (qbdb_create(file.c_str(), message.data(), message.size()) != 0)
        throw Failed(message.data());
    settings.database = file;
    const Database database(settings);
    for (const std::string &volume : volumes)
        database.register_volume(volume);
}

std::string argument_text(const Argument &argument)
{
    std::string text = argument.name;
    if (argument.spec != nullptr)
        text += std::string(":") + argument.spec->name;
    return argument.optional ? "[" + text + "]" : text;
}

void run_list()
{
    for (const Operation &operation : qbobj_json::operations()) {
        std::cout << operation.name << '(';
        std::string separator;
        for (const Argument &argument : operation.arguments)
            if (argument.is_input()) {
                std::cout << separator << argument_text(argument);
                separator = ", ";
            }
        std::cout << ')';
        separator = " -> ";
        if (operation.result != qbobj_json::ResultKind::code) {
            std::cout << separator << (operation.result == qbobj_json::ResultKind::answer ? "answer" : "id");
            separator = ", ";
        }
        for (const Argument &argument : operation.arguments)
            if (argument.is_output()) {
                std::cout << separator << argument_text(argument);
                separator = ", ";
            }
        std::cout << '\n';
    }
}

void run_describe(const std::vector<std::string> &types)
{
    if (types.empty())
        for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
            std::cout << entry->name << '\n';
    for (const std::string &type : types) {
        const qbobj_spec_t *spec = qbobj_json::find_spec(type);
        if (spec == nullptr)
            throw BadInput("there is no record type '" + type + "': 'qbctl describe' lists them");
        qbctl::print_description(std::cout, spec);
    }
}

/* ---- The command line ---------------------------------------------------------------------------------- */

class CommandLine
{
  public:
    CommandLine();
    int run(int argc, char **argv);

  private:
    void add_settings();
    void add_commands_of_databases();
    void add_commands_of_the_library();
    void add_commands_of_operations();

    CLI::App app_{
        "Reads and changes the configuration database of a storage appliance.\n"
        "Every operation of the library can be called: 'qbctl list' shows them, 'qbctl describe TYPE' shows\n"
        "a record's fields. Results are JSON, or a table when they go to a terminal.\n"
        "Exit status: 0 done, 1 the operation failed, 2 wrong usage."};
    Settings settings_;
    std::string file_;
    std::string operation_;
    std::vector<std::string> volumes_;
    std::vector<std::string> types_;
    std::vector<std::string> words_;
};

CommandLine::CommandLine()
{
    app_.name("qbctl");
    app_.require_subcommand(1);
    app_.fallthrough();
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
        const Database database(settings_);
        for (const std::string &name : volumes_)
            database.register_volume(name);
    });
}

void CommandLine::add_commands_of_the_library()
{
    app_.add_subcommand("list", "Lists the operations with their arguments and results.")->callback(run_list);
    CLI::App *describe =
        app_.add_subcommand("describe", "Shows the fields of a record type, their kinds, and which may be\n"
                                        "left out; without a type, lists the types.");
    describe->add_option("TYPE", types_, "A record type, e.g. Share");
    describe->callback([this] { run_describe(types_); });
}

void CommandLine::add_commands_of_operations()
{
    CLI::App *call = app_.add_subcommand(
        "call",
        "Calls an operation. Its input is JSON: an object of the arguments by name or, for an operation of\n"
        "one argument, that argument itself; '-' reads it from standard input, '@FILE' from a file.\n"
        "Scalar arguments can be given as NAME=VALUE.\n"
        "Examples: qbctl call getShareId share_name=docs\n"
        "          qbctl call addShare '{\"ShareName\":\"docs\",\"VolumeId\":\"data\"}'");
    call->add_option("OPERATION", operation_, "The operation, e.g. getShareCollection")->required();
    call->add_option("INPUT", words_, "JSON, '-', '@FILE', or NAME=VALUE");
    call->callback([this] { run_call(settings_, operation_, words_); });

    CLI::App *batch = app_.add_subcommand(
        "batch", "Runs one call a line in one process: OPERATION JSON. Results of reading operations are\n"
                 "written one a line. Stops at the first failure.");
    batch->add_option("FILE", file_, "The file of calls, or '-'")->required();
    batch->callback([this] { run_batch(settings_, file_); });
}

int CommandLine::run(int argc, char **argv)
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
        return app_.exit(error) == 0 ? EXIT_SUCCESS : exit_usage;
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return CommandLine().run(argc, argv);
    } catch (const BadInput &error) {
        std::cerr << "qbctl: " << error.what() << '\n';
        return exit_usage;
    } catch (const std::exception &error) {
        std::cerr << "qbctl: " << error.what() << '\n';
        return exit_failed;
    }
}
