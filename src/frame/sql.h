// Statements through the platform: formats checked at compile time, results released by scope.
#pragma once

#include "frame/env.h"

#include <iterator>
#include <utility>

namespace qbobj
{

inline constexpr int constraint_violation = 19; // SQLITE_CONSTRAINT

// How a statement ended; `if (!status)` asks whether it failed.
struct Status {
    int rc = 0;
    const char *message = nullptr; // the database's error text

    explicit operator bool() const { return rc == 0; }
    const char *error() const { return or_empty(message); }
};

struct Int32 : Status {
    int32_t value = 0;
    int found = 0; // non-zero when there was a row
};

struct Text : Status {
    char *value = nullptr; // in the pool; null for a NULL and for no row
    int found = 0;         // non-zero when there was a row
};

// One row of a result: its cells as text, null for NULL.
class Row
{
  public:
    Row(char *const *cells, int columns) : cells_(cells), columns_(columns) {}
    const char *operator[](int column) const { return cells_[column]; }
    int columns() const { return columns_; }

  private:
    char *const *cells_;
    int columns_;
};

// A result table; it owns its cells.
class Table : public Status
{
  public:
    Table() = default;
    Table(Table &&other) noexcept { *this = std::move(other); }
    Table &operator=(Table &&other) noexcept
    {
        std::swap(rc, other.rc);
        std::swap(message, other.message);
        std::swap(cells_, other.cells_);
        std::swap(rows_, other.rows_);
        std::swap(columns_, other.columns_);
        return *this;
    }
    Table(const Table &) = delete;
    Table &operator=(const Table &) = delete;
    ~Table() { sqlite3_free_table(cells_); }

    class Iterator
    {
      public:
        Iterator(char *const *cells, int columns) : cells_(cells), columns_(columns) {}
        Row operator*() const { return {cells_, columns_}; }
        Iterator &operator++()
        {
            cells_ += columns_;
            return *this;
        }
        bool operator==(const Iterator &other) const { return cells_ == other.cells_; }

      private:
        char *const *cells_;
        int columns_;
    };

    int size() const { return rows_; }
    bool empty() const { return rows_ == 0; }
    // Row 0 of the platform's table holds the column names.
    Iterator begin() const { return {cells_ == nullptr ? nullptr : cells_ + columns_, columns_}; }
    Iterator end() const
    {
        return {cells_ == nullptr ? nullptr : cells_ + static_cast<std::ptrdiff_t>(rows_ + 1) * columns_,
                columns_};
    }
    Row front() const { return *begin(); }

  private:
    friend class Sql;
    char **cells_ = nullptr;
    int rows_ = 0;
    int columns_ = 0;
};

// The statements of one call.
class Sql
{
  public:
    Sql(const qbobj_env_t *env, sqlite3 *db) : qbdb_(env->qbdb), db_(db) {}

    // A statement that returns no rows. Refused once the database has rolled the call's transaction back by
    // itself (no space, no memory, an interrupt): on its own it would be committed at once.
    template <class... Args>
    Status exec(Statement<Args...> format, Args... args) const
    {
        Status status;
        if (sqlite3_get_autocommit(db_) != 0) {
            status.rc = SQLITE_ABORT;
            status.message = "the transaction was rolled back by the database";
            return status;
        }
        char *message = nullptr;
        status.rc = qbdb_sql_exec_mprintf(qbdb_, db_, &message, format.site.unit, format.site.line,
                                          format.text, args...);
        status.message = message;
        return status;
    }

    template <class... Args>
    Table table(Statement<Args...> format, Args... args) const
    {
        Table table;
        char *message = nullptr;
        table.rc =
            qbdb_sql_get_table_mprintf(qbdb_, db_, &table.cells_, &table.rows_, &table.columns_, &message,
                                       format.site.unit, format.site.line, format.text, args...);
        table.message = message;
        return table;
    }

    template <class... Args>
    Int32 int32(Statement<Args...> format, Args... args) const
    {
        Int32 result;
        char *message = nullptr;
        result.rc = qbdb_sql_get_int32_mprintf(qbdb_, db_, &result.value, &result.found, &message,
                                               format.site.unit, format.site.line, format.text, args...);
        result.message = message;
        return result;
    }

    template <class... Args>
    Text text(Statement<Args...> format, Args... args) const
    {
        Text result;
        char *message = nullptr;
        result.rc = qbdb_sql_get_scaler_mprintf(qbdb_, db_, &result.value, &result.found, &message,
                                                format.site.unit, format.site.line, format.text, args...);
        result.message = message;
        return result;
    }

    // Rows that the last exec() changed.
    int changes() const { return sqlite3_changes(db_); }
    // The row id of the last INSERT.
    int last_id() const { return static_cast<int>(sqlite3_last_insert_rowid(db_)); }

  private:
    qbdb_handle_t *qbdb_;
    sqlite3 *db_;
};

} // namespace qbobj
