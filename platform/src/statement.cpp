// Preparing and running single statements.
#include "statement.h"

#include <climits>
#include <cstdarg>
#include <cstring>
#include <new>

namespace qbdb
{

namespace
{

// True when nothing but blanks, semicolons and comments stands in the text.
bool is_blank_sql(std::string_view text)
{
    while (!text.empty()) {
        if (std::strchr(" \t\r\n\f;", text.front())) {
            text.remove_prefix(1);
        } else if (text.starts_with("--") || text.starts_with("/*")) {
            const std::string_view end = text[0] == '-' ? "\n" : "*/";
            const std::size_t found = text.find(end, 2);
            text.remove_prefix(found == text.npos ? text.size() : found + end.size());
        } else {
            return false;
        }
    }
    return true;
}

} // namespace

int prepare(sqlite3 *db, std::string_view text, unsigned flags, Statement &statement, const char **problem)
{
    *problem = nullptr;
    if (text.size() > INT_MAX)
        return SQLITE_TOOBIG;
    sqlite3_stmt *prepared = nullptr;
    const char *tail = nullptr;
    const int rc =
        sqlite3_prepare_v3(db, text.data(), static_cast<int>(text.size()), flags, &prepared, &tail);
    statement.reset(prepared);
    if (rc != SQLITE_OK)
        return rc;
    if (!statement)
        *problem = no_statement;
    else if (!is_blank_sql(text.substr(static_cast<std::size_t>(tail - text.data()))))
        *problem = text_after_statement;
    if (*problem)
        statement.reset();
    return *problem ? SQLITE_MISUSE : SQLITE_OK;
}

std::string_view cell_text(sqlite3_stmt *row, int column)
{
    if (sqlite3_column_type(row, column) == SQLITE_NULL)
        return {};
    const auto *const text = reinterpret_cast<const char *>(sqlite3_column_text(row, column));
    if (!text)
        throw std::bad_alloc();
    return {text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))};
}

int run_plain(sqlite3 *db, const char *format, ...)
{
    va_list args;
    va_start(args, format);
    const std::unique_ptr<char, void (*)(void *)> text(sqlite3_vmprintf(format, args), sqlite3_free);
    va_end(args);
    return text ? sqlite3_exec(db, text.get(), nullptr, nullptr, nullptr) : SQLITE_NOMEM;
}

std::string quoted(std::string_view name)
{
    std::string out = "\"";
    for (const char c : name)
        out.append(c == '"' ? 2 : 1, c);
    return out + '"';
}

} // namespace qbdb
