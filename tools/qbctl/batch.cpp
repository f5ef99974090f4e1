// The lines of a batch, and how far it is.
#include "qbctl/batch.h"

#include "qbctl/call.h"
#include "qbctl/input.h"
#include "json/parse.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <sstream>

using qbobj_json::BadInput;
using qbobj_json::Json;
using qbobj_json::Operation;
using qbobj_json::Value;

namespace qbctl
{
namespace
{

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

struct Line {
    std::size_t number;
    std::string operation;
    std::string input; // JSON, or nothing
};

std::vector<Line> lines_of(const std::string &text)
{
    constexpr const char *blanks = " \t\r";
    std::vector<Line> lines;
    std::istringstream in(text);
    std::size_t number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        const std::size_t start = line.find_first_not_of(blanks);
        if (start == std::string::npos || line[start] == '#')
            continue;
        const std::size_t end = std::min(line.find_first_of(blanks, start), line.size());
        const std::size_t input = std::min(line.find_first_not_of(blanks, end), line.size());
        lines.push_back({number, line.substr(start, end - start), line.substr(input)});
    }
    return lines;
}

Access access_of_all(const std::vector<Line> &lines)
{
    const auto reads = [](const Line &line) {
        const Operation *operation = qbobj_json::find_operation(line.operation);
        return operation != nullptr && access_of(*operation) == Access::reads;
    };
    return std::all_of(lines.begin(), lines.end(), reads) ? Access::reads : Access::writes;
}

void run_line(const Line &line, const Database &database)
{
    const Operation &operation = operation_named(line.operation);
    const Json given = line.input.empty() ? Json(nullptr) : qbobj_json::parse(line.input);
    Secrets secrets;
    secrets.add_all(given);
    const Value value = call(operation, database, qbobj_json::arrange_inputs(operation, given), secrets);
    if (operation.entry->effect != qbobj::Effect::writes)
        qbobj_json::write_json(std::cout, value, qbobj_json::Layout::one_line, secrets.hides());
    database.clear();
}

} // namespace

void run_batch(const Settings &settings, const std::string &file)
{
    const std::vector<Line> lines = lines_of(read_file(file));
    const Database database(settings, access_of_all(lines));
    Progress progress(lines.size());
    for (const Line &line : lines) {
        progress.advance();
        const std::string at = file + ":" + std::to_string(line.number) + ": ";
        try {
            run_line(line, database);
        } catch (const BadInput &error) {
            throw BadInput(at + error.what());
        } catch (const Failed &error) {
            throw Failed(at + error.what(), error.status());
        }
    }
}

} // namespace qbctl
