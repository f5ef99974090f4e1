// A prepared statement's owner, and preparing exactly one statement.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace qbdb
{

struct FinalizeStatement {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

inline constexpr const char *text_after_statement = "text after the end of the statement";
inline constexpr const char *no_statement = "no statement";

// Prepares the one statement of `text`. SQLITE_MISUSE with `*problem` set when there is none or more than
// one, any other failure is the connection's.
int prepare(sqlite3 *db, std::string_view text, unsigned flags, Statement &statement, const char **problem);

// The text of a cell of the present row; with a null pointer for a NULL. Without memory std::bad_alloc.
std::string_view cell_text(sqlite3_stmt *row, int column);

// A name as an identifier.
std::string quoted(std::string_view name);

// Runs a statement of this library's own that yields no rows, in the form of a printf format.
int run_plain(sqlite3 *db, const char *format, ...);

} // namespace qbdb
