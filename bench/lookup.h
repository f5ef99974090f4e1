// The statements of a hand-written program, in both of its ways: on a statement that it keeps, or formatting
// and preparing it anew each time. Both read a row's columns from left to right into the fields of a record:
//
//     for (auto row = hosts(share_id, "cifs"); row.next();)
//         row >> host.HostId >> host.HostName;
#pragma once

#include "appliance.h"

#include <apr_pools.h>
#include <apr_strings.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>

namespace qbobj_bench
{

template <class Record>
Record *create(apr_pool_t *pool)
{
    return static_cast<Record *>(apr_pcalloc(pool, sizeof(Record)));
}

// Appends records to a list, at its end.
template <class Record>
class Tail
{
  public:
    Tail(apr_pool_t *pool, Record *&head) : pool_(pool), end_(&head) {}
    Record &append()
    {
        Record *record = *end_ = create<Record>(pool_);
        end_ = &record->_link;
        return *record;
    }

  private:
    apr_pool_t *pool_;
    Record **end_;
};

// A text that is "" when the column is NULL.
struct OrEmpty {
    const char *&field;
};

// Reads columns from left to right. `Rows` gives the cell of a column as text, int or uint64_t.
template <class Rows>
class Columns
{
  public:
    explicit Columns(apr_pool_t *pool) : pool_(pool) {}

    Rows &operator>>(const char *&field)
    {
        field = apr_pstrdup(pool_, rows().text(column_++));
        return rows();
    }
    Rows &operator>>(OrEmpty text)
    {
        const char *cell = rows().text(column_++);
        text.field = cell == nullptr ? empty_str : apr_pstrdup(pool_, cell);
        return rows();
    }
    Rows &operator>>(int &field)
    {
        field = rows().integer(column_++);
        return rows();
    }
    Rows &operator>>(uint64_t &field)
    {
        field = rows().size(column_++);
        return rows();
    }
    Rows &skip(int columns)
    {
        column_ += columns;
        return rows();
    }

  protected:
    void first_column() { column_ = 0; }

  private:
    Rows &rows() { return static_cast<Rows &>(*this); }

    apr_pool_t *pool_;
    int column_ = 0;
};

/* ---- Kept statements ----------------------------------------------------------------------------------- */

class KeptRows : public Columns<KeptRows>
{
  public:
    KeptRows(apr_pool_t *pool, sqlite3_stmt *statement) : Columns(pool), statement_(statement) {}
    ~KeptRows() { sqlite3_reset(statement_); }
    KeptRows(const KeptRows &) = delete;
    KeptRows &operator=(const KeptRows &) = delete;

    bool next()
    {
        first_column();
        const int rc = sqlite3_step(statement_);
        if (rc != SQLITE_ROW && rc != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
        return rc == SQLITE_ROW;
    }
    const char *text(int column) const
    {
        return reinterpret_cast<const char *>(sqlite3_column_text(statement_, column));
    }
    int integer(int column) const { return sqlite3_column_int(statement_, column); }
    uint64_t size(int column) const
    {
        return static_cast<uint64_t>(sqlite3_column_int64(statement_, column));
    }

  private:
    sqlite3_stmt *statement_;
};

class Kept
{
  public:
    // Each conversion of the format becomes a parameter.
    Kept(const Connection &connection, const std::string &format) : pool_(connection.qbdb->pool)
    {
        std::string text;
        for (std::size_t i = 0; i < format.size(); i++) {
            if (format[i] != '%') {
                text += format[i];
                continue;
            }
            text += format[++i] == '%' ? '%' : '?';
            while (format[i] == 'l')
                i++;
        }
        sqlite3_stmt *prepared = nullptr;
        if (sqlite3_prepare_v3(connection.db, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &prepared,
                               nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(connection.db)) + ": " + text);
        statement_.reset(prepared);
    }

    template <class... Values>
    KeptRows operator()(Values... values) const
    {
        int index = 0;
        (bind(++index, values), ...);
        return {pool_, statement_.get()};
    }

  private:
    void bind(int index, int value) const { sqlite3_bind_int(statement_.get(), index, value); }
    void bind(int index, uint64_t value) const
    {
        sqlite3_bind_int64(statement_.get(), index, static_cast<sqlite3_int64>(value));
    }
    void bind(int index, const char *value) const
    {
        sqlite3_bind_text(statement_.get(), index, value, -1, SQLITE_STATIC);
    }

    struct Finalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    apr_pool_t *pool_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/* ---- Statements prepared anew -------------------------------------------------------------------------- */

class FreshRows : public Columns<FreshRows>
{
  public:
    FreshRows(apr_pool_t *pool, sqlite3 *db, const char *text) : Columns(pool)
    {
        if (sqlite3_get_table(db, text, &cells_, &rows_, &columns_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db));
    }
    ~FreshRows() { sqlite3_free_table(cells_); }
    FreshRows(const FreshRows &) = delete;
    FreshRows &operator=(const FreshRows &) = delete;

    bool next()
    {
        first_column();
        return row_++ < rows_;
    }
    // Row 0 holds the names.
    const char *text(int column) const { return cells_[row_ * columns_ + column]; }
    int integer(int column) const
    {
        const char *cell = text(column);
        return cell == nullptr ? 0 : std::atoi(cell);
    }
    uint64_t size(int column) const
    {
        const char *cell = text(column);
        return cell == nullptr ? 0 : std::strtoull(cell, nullptr, 0);
    }

  private:
    char **cells_ = nullptr;
    int rows_ = 0;
    int columns_ = 0;
    int row_ = 0;
};

class Fresh
{
  public:
    Fresh(const Connection &connection, std::string format)
        : connection_(connection), format_(std::move(format))
    {
    }

    template <class... Values>
    FreshRows operator()(Values... values) const
    {
        const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_mprintf(format_.c_str(), values...),
                                                                  sqlite3_free);
        if (text == nullptr)
            throw std::bad_alloc();
        return {connection_.qbdb->pool, connection_.db, text.get()};
    }

  private:
    const Connection &connection_;
    std::string format_;
};

// Runs a statement that returns no rows, or whose rows do not matter.
template <class Rows>
void finish(Rows &&rows)
{
    while (rows.next()) {
    }
}

// One transaction, as the library begins it: one that reads only holds no lock.
template <class Lookup>
class Transactions
{
  public:
    explicit Transactions(const Connection &connection, const char *begin = "BEGIN IMMEDIATE")
        : begin_(connection, begin), commit_(connection, "COMMIT")
    {
    }
    template <class Work>
    void run(Work work) const
    {
        finish(begin_());
        work();
        finish(commit_());
    }

  private:
    Lookup begin_;
    Lookup commit_;
};

} // namespace qbobj_bench
