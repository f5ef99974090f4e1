// A result in the layout of sqlite3_get_table(), in one block of memory.
#pragma once

#include "connection.h"

#include <span>

namespace qbdb
{

class ResultTable
{
  public:
    // The cells are gathered in the scratch buffers.
    explicit ResultTable(Scratch &scratch);

    // `kept` remembers the names for the next time; null for a statement that is not kept.
    void add_names(sqlite3_stmt *statement, ColumnNames *kept);
    void add_row(sqlite3_stmt *statement);

    // The table, to be released with sqlite3_free_table(); null when out of memory.
    char **release() const;

  private:
    static constexpr std::size_t null_mark = static_cast<std::size_t>(1) << (8 * sizeof(std::size_t) - 1);

    void add(std::string_view text);
    void add_number(sqlite3_int64 number);

    Scratch &scratch_;
};

// The texts of one row after the other.
class RowTexts
{
  public:
    explicit RowTexts(Scratch &scratch) : scratch_(scratch) {}
    // Valid until the statement's next step.
    std::span<const char *const> read(sqlite3_stmt *statement);

  private:
    Scratch &scratch_;
};

} // namespace qbdb
