// Copies of tables inside a transaction that are not made until somebody reads them: what changes in the
// tables is counted instead, which costs nothing for the rows that stay.
#pragma once

#include "row_bag.h"
#include "statement.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qbdb
{

class TableCopies
{
  public:
    // Starts to listen to the connection's changes. Where SQLite lacks the hook, available() stays false.
    void attach(sqlite3 *db);
    bool available() const { return available_; }
    // False when a change could not be counted for want of memory.
    bool reliable() const { return !broken_; }

    // From now on `copy`, which is not watched yet, stands for the table's present content.
    void watch(std::string_view table, std::string_view copy);
    // What changed in the watched table since; null for a copy that is not watched.
    const RowBag *changes(std::string_view copy) const;
    // False when the copy was not watched.
    bool forget(std::string_view copy);
    void forget_all();

    // A statement that fails takes its changes back, and so does the count.
    void statement_begins() { clear_journal(); }
    void statement_ends(bool succeeded) noexcept;

    // Makes the watched copy real that a statement misses by this error text. SQLITE_NOTFOUND when it misses
    // something else.
    int materialise_missing(std::string_view error_text);
    int materialise_all();

  private:
    struct Watch {
        std::string table;
        std::string copy;
        RowBag changes;
    };
    struct Change {
        Watch *watch;
        RowImage row;
        long count;
    };

    static void changed(void *self, sqlite3 *db, int operation, const char *schema, const char *table,
                        sqlite3_int64 old_rowid, sqlite3_int64 new_rowid);
    void record(const char *table, int (*cell)(sqlite3 *, int, sqlite3_value **), long count);
    int materialise(std::size_t index);
    int fill_copy(const Watch &watch);

    sqlite3 *db_ = nullptr;
    bool available_ = false;
    bool broken_ = false; // a change was missed; the counts are worth nothing
    std::vector<std::unique_ptr<Watch>> watches_;
    void clear_journal() noexcept;

    std::vector<Change> journal_; // the first `journaled_` are the changes of the present statement
    std::size_t journaled_ = 0;
    RowImage row_;
};

// True when the temporary table exists.
bool has_temp_table(sqlite3 *db, const char *name);

} // namespace qbdb
