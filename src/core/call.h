// One call of an operation: its environment, its connection, and the statements that it runs.
#pragma once

#include "core/columns.h"
#include "core/directory.h"
#include "core/list.h"
#include "core/statement.h"

namespace qbobj
{

// Hands rows on, and no exception through the platform.
template <class Take>
struct RowVisitor {
    Take &take;
    bool out_of_memory = false;

    static int visit(void *self, int, const char *const *cells) noexcept
    {
        auto &visitor = *static_cast<RowVisitor *>(self);
        try {
            return visitor.take(cells) ? 0 : 1;
        } catch (const std::bad_alloc &) {
            visitor.out_of_memory = true;
            return 1;
        }
    }
};

class Call
{
  public:
    Call(const qbobj_env_t &env, sqlite3 *db) : env_(env), db_(db) {}
    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    // To raise, log and print with a call.
    operator const qbobj_env_t &() const { return env_; }
    const qbobj_env_t &env() const { return env_; }
    sqlite3 *db() const { return db_; }
    qbdb_handle_t *qbdb() const { return env_.qbdb; }
    apr_pool_t *pool() const { return env_.qbdb->pool; }

    // Where accounts come from, asked at the first use. A question that fails counts as local mode.
    const Directory &directory();

    /* ---- Statements that write ------------------------------------------------------------------------- */

    // Runs one statement; raises `failure` when it fails. Returns 0 or the error code.
    template <class... Args>
    int exec(const Failure &failure, const Statement<Args...> &sql, Args... args)
    {
        const Status status = run(sql, args...);
        return status ? 0 : failure.raise(env_, status.error());
    }

    // As exec(), but a violated constraint raises `taken`.
    template <class... Args>
    int exec_unique(const Failure &taken, const Failure &failure, const Statement<Args...> &sql, Args... args)
    {
        const Status status = run(sql, args...);
        if (status)
            return 0;
        return (status.rc == constraint_violation ? taken : failure).raise(env_, status.error());
    }

    // Rows that the last statement changed.
    int changes() const { return sqlite3_changes(db_); }
    // The row id of the last INSERT.
    int last_id() const { return static_cast<int>(sqlite3_last_insert_rowid(db_)); }

    /* ---- Rows into records ----------------------------------------------------------------------------- */

    // Fills `record` from the first row, and tells whether there was one; without one it stays as it is.
    template <class Columns, class Record, class... Args>
    int find(const Select<Columns, Args...> &select, Record &record, bool &found,
             std::type_identity_t<Args>... args)
    {
        found = false;
        const auto fill_first = [&](Row row) {
            fill(*this, record, select.columns, row);
            found = true;
            return false;
        };
        const Status status = visit(select.sql, fill_first, args...);
        return status ? 0 : select.failure.raise(env_, status.error());
    }

    // As find(), for whom a missing row is nothing special.
    template <class Columns, class Record, class... Args>
    int read(const Select<Columns, Args...> &select, Record &record, std::type_identity_t<Args>... args)
    {
        bool found = false;
        return find(select, record, found, args...);
    }

    // As find(); a missing row raises `missing`, made by error().
    template <class... Words, class Columns, class Record, class... Args>
    int require(const Select<Columns, Args...> &select, const Error<Words...> &missing, Record &record,
                std::type_identity_t<Args>... args)
    {
        bool found = false;
        const int rc = find(select, record, found, args...);
        return rc != 0 || found ? rc : missing.raise(env_);
    }

    // A record of its own for the first row; null without one.
    template <class Columns, class Record, class... Args>
    int read_new(const Select<Columns, Args...> &select, Record *&record, std::type_identity_t<Args>... args)
    {
        record = nullptr;
        const auto fill_first = [&](Row row) {
            fill(*this, *(record = create<Record>(pool())), select.columns, row);
            return false;
        };
        const Status status = visit(select.sql, fill_first, args...);
        return status ? 0 : select.failure.raise(env_, status.error());
    }

    // Appends one record a row to the list.
    template <class Columns, class Record, class... Args>
    int append(const Select<Columns, Args...> &select, Record *&list, std::type_identity_t<Args>... args)
    {
        Tail<Record> tail(list);
        return scan<Record>(
            select, [&](const Record &row) { tail.append(pool(), row); }, args...);
    }

    // Hands every row as a record of its own to take(record), which runs no statement: the rows are not gathered first.
    template <class Record, class Columns, class Take, class... Args>
    int scan(const Select<Columns, Args...> &select, Take take, std::type_identity_t<Args>... args)
    {
        const auto fill_each = [&](Row row) {
            Record record{};
            fill(*this, record, select.columns, row);
            take(record);
            return true;
        };
        const Status status = visit(select.sql, fill_each, args...);
        return status ? 0 : select.failure.raise(env_, status.error());
    }

    // Visits every row as a record of its own; the first visit that returns non-zero ends it with that result. A visit may
    // run statements.
    template <class Record, class Columns, class Visit, class... Args>
    int each(const Select<Columns, Args...> &select, Visit visit, std::type_identity_t<Args>... args)
    {
        const Table rows = table(select.sql, args...);
        if (!rows)
            return select.failure.raise(env_, rows.error());
        for (const Row row : rows) {
            Record record{};
            fill(*this, record, select.columns, row);
            if (const int rc = visit(record); rc != 0)
                return rc;
        }
        return 0;
    }

    /* ---- Single values --------------------------------------------------------------------------------- */

    // The first column of the first row: 0 or null for a NULL and without a row.
    template <class... Args>
    int number(const Failure &failure, int32_t &value, const Statement<Args...> &sql, Args... args)
    {
        const Number result = ask_number(sql, args...);
        value = result.value;
        return result ? 0 : failure.raise(env_, result.error());
    }
    template <class Value, class... Args>
    int text(const Failure &failure, Value *&value, const Statement<Args...> &sql, Args... args)
    {
        const Text result = ask_text(sql, args...);
        value = result.value;
        return result ? 0 : failure.raise(env_, result.error());
    }
    // Whether there is a row.
    template <class... Args>
    int exists(const Failure &failure, bool &found, const Statement<Args...> &sql, Args... args)
    {
        const Number result = ask_number(sql, args...);
        found = result.found != 0;
        return result ? 0 : failure.raise(env_, result.error());
    }

    /* ---- For whom a failure is an answer of its own ---------------------------------------------------- */

    // A statement that returns no rows. Refused once the database has rolled the call's transaction back by
    // itself (no space, no memory, an interrupt): on its own it would be committed at once.
    template <class... Args>
    Status run(const Statement<Args...> &sql, Args... args)
    {
        if (sqlite3_get_autocommit(db_) != 0)
            return {SQLITE_ABORT, "the transaction was rolled back by the database"};
        char *message = nullptr;
        const int rc = qbdb_sql_exec_mprintf(qbdb(), db_, &message, sql.site.unit.data(), sql.site.line,
                                             sql.text, args...);
        return checked(Status{rc, message});
    }

    template <class... Args>
    Number ask_number(const Statement<Args...> &sql, Args... args)
    {
        Number result;
        char *message = nullptr;
        result.rc = qbdb_sql_get_int32_mprintf(qbdb(), db_, &result.value, &result.found, &message,
                                               sql.site.unit.data(), sql.site.line, sql.text, args...);
        result.message = message;
        return checked(result);
    }

    template <class... Args>
    Text ask_text(const Statement<Args...> &sql, Args... args)
    {
        Text result;
        char *message = nullptr;
        result.rc = qbdb_sql_get_scaler_mprintf(qbdb(), db_, &result.value, &result.found, &message,
                                                sql.site.unit.data(), sql.site.line, sql.text, args...);
        result.message = message;
        return checked(result);
    }

    template <class... Args>
    Table table(const Statement<Args...> &sql, Args... args)
    {
        Table table;
        char *message = nullptr;
        table.rc =
            qbdb_sql_get_table_mprintf(qbdb(), db_, &table.cells_, &table.rows_, &table.columns_, &message,
                                       sql.site.unit.data(), sql.site.line, sql.text, args...);
        table.message = message;
        return checked(std::move(table));
    }

  private:
    // Hands the rows to take(row) until it returns false.
    template <class Take, class... Args>
    Status visit(const Statement<Args...> &sql, Take take, Args... args)
    {
        if (qbdb_sql_visit_mprintf == nullptr) {
            const Table rows = table(sql, args...);
            for (const Row row : rows)
                if (!take(row))
                    break;
            return {rows.rc, rows.message};
        }
        RowVisitor<Take> visitor{take};
        char *message = nullptr;
        const int rc = qbdb_sql_visit_mprintf(qbdb(), db_, visitor.visit, &visitor, &message,
                                              sql.site.unit.data(), sql.site.line, sql.text, args...);
        if (visitor.out_of_memory)
            throw std::bad_alloc();
        return checked(Status{rc, message});
    }

    // Without memory no operation goes on, whatever it makes of other failures.
    template <class Result>
    static Result checked(Result result)
    {
        if (result.rc == SQLITE_NOMEM)
            throw std::bad_alloc();
        return result;
    }

    qbobj_env_t env_;
    sqlite3 *db_;
    Directory directory_;
    bool directory_asked_ = false;
};

} // namespace qbobj
