// Gathering a result's cells and laying them out.
#include "result_table.h"

#include <array>
#include <charconv>
#include <cstring>
#include <new>

namespace qbdb
{

namespace
{

// The text that SQLite makes of a number costs an allocation a cell.
std::string_view text_of(sqlite3_int64 number, Digits &digits)
{
    char *const end = std::to_chars(digits.begin(), digits.end() - 1, number).ptr;
    *end = '\0';
    return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

constexpr std::size_t kept_scratch = std::size_t{1} << 20; // a larger buffer is not kept for the next call

} // namespace

ResultTable::ResultTable(Scratch &scratch) : scratch_(scratch)
{
    if (scratch_.cells.capacity() > kept_scratch)
        scratch_.cells = std::string();
    if (scratch_.ends.capacity() > kept_scratch)
        scratch_.ends = {};
    scratch_.cells.clear();
    scratch_.ends.clear();
}

void ResultTable::add(std::string_view text)
{
    if (text.data())
        scratch_.cells.append(text.data(), text.size() + 1); // with its end
    scratch_.ends.push_back(scratch_.cells.size() | (text.data() ? 0 : null_mark));
}

void ResultTable::add_names(sqlite3_stmt *statement, ColumnNames *kept)
{
    // SQLite prepares a statement anew when the schema has changed, which may change its columns.
    const int preparations = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (kept && !kept->ends.empty() && kept->preparations == preparations) {
        scratch_.cells = kept->cells;
        scratch_.ends = kept->ends;
        return;
    }
    const int columns = sqlite3_column_count(statement);
    for (int i = 0; i < columns; i++) {
        const char *name = sqlite3_column_name(statement, i);
        if (!name)
            throw std::bad_alloc();
        add(name);
    }
    if (kept)
        *kept = {scratch_.cells, scratch_.ends, preparations};
}

void ResultTable::add_row(sqlite3_stmt *statement)
{
    const int columns = sqlite3_data_count(statement);
    for (int i = 0; i < columns; i++) {
        sqlite3_value *const cell = sqlite3_column_value(statement, i);
        if (sqlite3_value_type(cell) == SQLITE_INTEGER)
            add_number(sqlite3_value_int64(cell));
        else
            add(cell_text(statement, i));
    }
}

void ResultTable::add_number(sqlite3_int64 number)
{
    Digits digits;
    add(text_of(number, digits));
}

// sqlite3_free_table() finds the number of separately allocated cells, plus 1, in the word before the table,
// frees these, and then the block that begins at that word. All texts stand in the block itself behind the
// pointers, so the word is 1.
char **ResultTable::release() const
{
    const std::size_t words = scratch_.ends.size() + 1;
    const std::size_t size = words * sizeof(char *) + scratch_.cells.size();
    auto **block = static_cast<char **>(sqlite3_malloc64(size));
    if (!block)
        return nullptr;
    const std::uintptr_t cells_that_stand_apart = 0;
    const std::uintptr_t count = cells_that_stand_apart + 1;
    std::memcpy(block, &count, sizeof count);
    char **table = block + 1;
    char *const texts = reinterpret_cast<char *>(block + words);
    std::memcpy(texts, scratch_.cells.data(), scratch_.cells.size());
    std::size_t begin = 0;
    for (std::size_t i = 0; i < scratch_.ends.size(); i++) {
        const std::size_t end = scratch_.ends[i] & ~null_mark;
        table[i] = (scratch_.ends[i] & null_mark) ? nullptr : texts + begin;
        begin = end;
    }
    return table;
}

std::span<const char *const> RowTexts::read(sqlite3_stmt *statement)
{
    const auto columns = static_cast<std::size_t>(sqlite3_data_count(statement));
    scratch_.texts.resize(columns);
    scratch_.digits.resize(columns);
    for (std::size_t i = 0; i < columns; i++) {
        const int column = static_cast<int>(i);
        sqlite3_value *const cell = sqlite3_column_value(statement, column);
        scratch_.texts[i] = sqlite3_value_type(cell) == SQLITE_INTEGER
                                ? text_of(sqlite3_value_int64(cell), scratch_.digits[i]).data()
                                : cell_text(statement, column).data();
    }
    return scratch_.texts;
}

} // namespace qbdb
