// What the embedded platform keeps of a connection's transactions: the statements that begin and end one, and
// where the present one stands.
#pragma once

#include "statement.h"

#include <array>
#include <optional>

namespace qbdb
{

// What became of a transaction; the text needs no memory of its own when it is set.
struct Outcome {
    int code = SQLITE_OK;
    std::array<char, 256> text{};

    // The first failure is the one that counts.
    void fail(int rc, const char *why);
};

// Whose transaction begins next.
struct Announcement {
    const char *operation = nullptr;
    bool reads_only = false;
};

// SQLite's mark of the state that the connection has read: it moves when another connection has written.
std::optional<unsigned> data_mark(sqlite3 *db);

struct Transaction {
    // They are prepared with the connection, so that a transaction can be ended without memory.
    Statement begin_deferred;
    Statement begin_immediate;
    Statement commit;
    Statement rollback;
    Statement read_version;
    std::optional<unsigned> version_read_at; // data_mark() when the version was read and found right

    bool open = false;      // qbdb_sql_begin() succeeded, and neither commit nor rollback came yet
    bool left_over = false; // ended for its caller, but SQLite could not end it yet

    const char *operation = nullptr; // whose transaction it is; null when nobody said it
    Announcement next;

    bool deciding = false; // its begin or its commit is under way
    Outcome outcome;       // of the last one

    // 0 or SQLite's result code.
    int prepare_all(sqlite3 *db);
    // Why no statement of an operation may run now, or null.
    const char *problem(sqlite3 *db) const;
    // Takes note of a failure that was reported.
    void failed(sqlite3 *db, int rc, const char *text);
};

} // namespace qbdb
