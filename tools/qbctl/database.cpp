// Opening databases, and what SQLite's codes say.
#include "qbctl/database.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

using qbobj_json::BadInput;

namespace qbctl
{
namespace
{

using Message = std::array<char, 1024>;

qbdb_options_t open_options(const Settings &settings, Access access)
{
    static const std::map<std::string, qbdb_loglevel_t> levels{
        {"none", QBDB_LOG_NONE}, {"error", QBDB_LOG_ERROR}, {"warn", QBDB_LOG_WARN},
        {"info", QBDB_LOG_INFO}, {"debug", QBDB_LOG_DEBUG},
    };
    qbdb_options_t options{};
    options.readonly = access == Access::reads ? 1 : 0;
    options.busy_timeout_ms = std::max(1, static_cast<int>(std::lround(settings.wait_seconds * 1000)));
    options.root = settings.root.empty() ? nullptr : settings.root.c_str();
    options.loglvl = levels.at(settings.log_level);
    options.log = stderr;
    options.commit_decides = 1; // a change that was not kept is a failure
    return options;
}

} // namespace

Access access_of(const qbobj_json::Operation &operation)
{
    return operation.only_reads() ? Access::reads : Access::writes;
}

Failed database_failure(int code, const std::string &text)
{
    const int primary = code & 0xff;
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED)
        return Failed("the database is in use by another program", exit_busy);
    return Failed(text);
}

Database::Database(const Settings &settings, Access access)
{
    if (settings.database.empty())
        throw BadInput("no database: give --db FILE or set QBOBJ_DB");
    const qbdb_options_t options = open_options(settings, access);
    Message message{};
    const int rc =
        qbdb_open(settings.database.c_str(), &options, &qbdb_, &db_, message.data(), message.size());
    if (rc != 0)
        throw database_failure(rc, message.data());
}

void Database::register_volume(const std::string &name) const
{
    char *message = nullptr;
    const int rc = qbdb_register_volume(qbdb_, db_, name.c_str(), &message);
    if (rc != 0)
        throw database_failure(std::abs(rc),
                               "volume " + name + ": " + (message == nullptr ? "failed" : message));
}

void create_database(const std::string &file)
{
    Message message{};
    if (const int rc = qbdb_create(file.c_str(), message.data(), message.size()); rc != 0)
        throw database_failure(rc, message.data());
}

} // namespace qbctl
