// The steps that bring a file of an older schema to the present one.
#pragma once

#include <sqlite3.h>

#include <span>

namespace qbdb
{

// migrations()[n] is the SQL that makes schema n + 2 of schema n + 1. A step that adds a column with a
// default ends by rewriting the table's rows (UPDATE t SET c = c): change tracking sees rows as they are
// stored.
std::span<const char *const> migrations();

inline int schema_version()
{
    return static_cast<int>(migrations().size()) + 1;
}

// Brings the connection's file to the present schema, in one transaction. 0 or SQLite's result code.
int migrate(sqlite3 *db);

} // namespace qbdb
