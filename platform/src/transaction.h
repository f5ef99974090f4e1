// What the embedded platform keeps of a connection's transactions: the statements that begin and end one, and
// where the present one stands.
#pragma once

#include "statement.h"

namespace qbdb
{

struct Transaction {
    // They are prepared with the connection, so that a transaction can be ended without memory.
    Statement begin_deferred;
    Statement begin_immediate;
    Statement commit;
    Statement rollback;

    bool open = false;      // qbdb_sql_begin() succeeded, and neither commit nor rollback came yet
    bool left_over = false; // ended for its caller, but SQLite could not end it yet

    // 0 or SQLite's result code.
    int prepare_all(sqlite3 *db);
};

} // namespace qbdb
