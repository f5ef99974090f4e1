// The net difference of two sets of rows in which equal rows count.
#pragma once

#include <sqlite3.h>

#include <string>
#include <unordered_map>

namespace qbdb
{

// The cells of a row as bytes. Two rows have one key when SQL's IS finds all their cells equal, texts being
// compared byte by byte; a row's content can be bound again with its exact types. It is empty where it is the key.
struct RowImage {
    std::string key;
    std::string content;

    void clear();
    void add_null();
    void add_integer(sqlite3_int64 value);
    void add_real(double value);
    void add_bytes(char type, const void *bytes, int size); // SQLITE_TEXT or SQLITE_BLOB
    void add(sqlite3_value *value);
    // The statement's present row.
    void read(sqlite3_stmt *statement);

    // Binds the cells to the parameters from 1 on.
    static int bind(const std::string &exact, sqlite3_stmt *statement);

  private:
    void append(char type, sqlite3_int64 value, const void *bytes = nullptr, std::size_t size = 0);
};

class RowBag
{
  public:
    struct Entry {
        long count = 0;
        std::string content; // empty where it is the key
    };

    // Adds `count` rows (a negative number takes some away).
    void add(const RowImage &row, long count);

    bool empty() const { return entries_.empty(); }
    const std::unordered_map<std::string, Entry> &entries() const { return entries_; }

  private:
    std::unordered_map<std::string, Entry> entries_; // never with a count of 0
};

} // namespace qbdb
