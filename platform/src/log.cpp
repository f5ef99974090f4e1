// The handle's two streams: the log and the journal of services.
#include "connection.h"
#include "journal.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>

namespace
{

constexpr const char *level_names[] = {"NONE", "FATAL", "ERROR", "WARN", "INFO", "DEBUG", "ALL"};

class MutexHold
{
  public:
    explicit MutexHold(sqlite3_mutex *mutex) : mutex_(mutex) { sqlite3_mutex_enter(mutex_); }
    ~MutexHold() { sqlite3_mutex_leave(mutex_); }
    MutexHold(const MutexHold &) = delete;
    MutexHold &operator=(const MutexHold &) = delete;

  private:
    sqlite3_mutex *mutex_; // null is no mutex
};

// The whole line in one write, so that lines of several processes do not mix.
void write_line(FILE *stream, sqlite3_mutex *mutex, const std::string &line)
{
    const MutexHold hold(mutex);
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

std::string line_head(const char *level, const char *file, int line)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char time_text[32];
    std::strftime(time_text, sizeof time_text, "%Y-%m-%dT%H:%M:%S", &local);
    return std::string(time_text) + ' ' + level + ' ' + (file ? file : "") + ':' + std::to_string(line) + ' ';
}

// A value must not be able to begin a line of its own.
void flatten(std::string &line)
{
    if (!line.empty() && line.back() == '\n')
        line.pop_back();
    for (char &c : line)
        if (c == '\n' || c == '\r')
            c = ' ';
    line += '\n';
}

} // namespace

void qbdb_log(qbdb_handle_t *qbdb, const char *file, int line, qbdb_loglevel_t level, int /*flag*/,
              const char *format, ...)
{
    if (!qbdb->log || level <= QBDB_LOG_NONE || level > QBDB_LOG_ALL || level > qbdb->loglvl)
        return;
    va_list arguments;
    va_start(arguments, format);
    char *formatted = nullptr;
    const int length = vasprintf(&formatted, format, arguments);
    va_end(arguments);
    const std::unique_ptr<char, void (*)(void *)> text(length < 0 ? nullptr : formatted, std::free);
    try {
        std::string whole = line_head(level_names[level], file, line) + (text ? text.get() : format);
        flatten(whole);
        write_line(qbdb->log, qbdb->log_mutex, whole);
    } catch (const std::bad_alloc &) {
        std::fputs("a log line was lost: out of memory\n", qbdb->log);
    }
}

void qbdb::write_journal(qbdb_handle_t *qbdb, const std::string &line)
{
    if (qbdb->jnl)
        write_line(qbdb->jnl, qbdb->jnl_mutex, line);
}

int qbdb_service_update_setting_by_share(qbdb_handle_t *qbdb, sqlite3 *db, const char *service)
{
    if (!service || *service == 0)
        return SQLITE_MISUSE;
    try {
        const std::string told = std::string(1, ' ') + service + '\n';
        qbdb_sysinfo *const state = qbdb::state_of(qbdb, db);
        const bool later = state && state->transaction.open;
        if (later &&
            std::ranges::any_of(state->journal, [&](const auto &line) { return line.ends_with(told); }))
            return 0;
        const std::string line = std::to_string(std::time(nullptr)) + told;
        // A service must not read its settings before they are there.
        if (later)
            state->journal.push_back(line);
        else
            qbdb::write_journal(qbdb, line);
    } catch (const std::bad_alloc &) {
        return SQLITE_NOMEM;
    }
    return 0;
}
