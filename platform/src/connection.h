// What the embedded platform keeps with a connection that qbdb_open() made.
#pragma once

#include "lru_map.h"
#include "process_mark.h"
#include "qbdb.h"
#include "statement.h"
#include "statement_format.h"
#include "table_copies.h"
#include "transaction.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qbdb
{

// The names of a kept statement's columns, laid out as a result's first row.
struct ColumnNames {
    std::string cells;
    std::vector<std::size_t> ends;
    int preparations = 0; // of the statement when the names were taken
};

struct KeptStatement {
    Statement statement;
    ColumnNames names;
};

// A format without splices has one text, and so one statement.
struct KeptFormat {
    StatementFormat format;
    KeptStatement kept;
};

// Statements are kept by their text. Texts that were spliced together stand apart, so that a flood of them
// does not push out the look-ups that every operation repeats.
struct StatementCache {
    LruMap<KeptFormat> formats{256};
    LruMap<KeptStatement> spliced{64};
};

using Digits = std::array<char, 24>; // a 64-bit number as text

// Buffers that calls use again.
struct Scratch {
    std::string text;
    std::vector<Literal> literals;
    std::string cells;
    std::vector<std::size_t> ends;
    std::vector<const char *> texts;
    std::vector<Digits> digits;
};

// Waits for a busy database in short sleeps of random length, so that nobody waits longer and longer while
// others overtake it.
class BusyWait
{
  public:
    void attach(sqlite3 *db, int timeout_ms);

  private:
    static int wait(void *self, int attempts);

    std::chrono::milliseconds timeout_{0};
    std::chrono::steady_clock::time_point deadline_;
    std::uint32_t random_ = 0;
};

struct CloseConnection {
    void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

} // namespace qbdb

struct qbdb_sysinfo {
    qbdb::ProcessMark process; // whose the handle is; its locks are not a child's
    qbdb_sysinfo *next = nullptr;
    qbdb_handle_t handle{};
    std::string root; // the handle's, when it was given
    bool commit_decides = false;
    std::string storage_tool; // empty: wherever it is
    std::chrono::milliseconds tool_timeout{0};
    qbdb::BusyWait busy;
    qbdb::TableCopies copies;
    qbdb::Connection db;
    qbdb::StatementCache statements; // finalized before the connection is closed, as the transaction's
    qbdb::Transaction transaction;
    qbdb::Scratch scratch;
    std::vector<std::string> journal; // lines for the handle's journal once the transaction is committed

    bool inherited() const { return !process.is_ours(); }
};

namespace qbdb
{

// What is kept for the connection, or null when the caller opened it itself.
inline qbdb_sysinfo *state_of(const qbdb_handle_t *qbdb, const sqlite3 *db)
{
    return qbdb->sysinfo && qbdb->sysinfo->db.get() == db ? qbdb->sysinfo : nullptr;
}

} // namespace qbdb
