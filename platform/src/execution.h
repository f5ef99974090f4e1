// One call of a statement operation: its caller, its error, and the run of its statement.
#pragma once

#include "connection.h"

#include <new>
#include <utility>

namespace qbdb
{

// The arguments that all statement operations share.
struct Call {
    qbdb_handle_t *qbdb;
    sqlite3 *db;
    char **errmsg;
    const char *file;
    int line;

    qbdb_sysinfo *state() const { return state_of(qbdb, db); }
    // The same call for a step after the one whose failure the caller gets.
    Call silently() const { return {qbdb, db, nullptr, file, line}; }
    // 0, or the reported refusal of a handle that another process opened.
    int check_owner() const;
    // Reports the failure of what `subject` names, and returns SQLite's primary code.
    int fail(int rc, const char *text, const char *subject) const;
    // The same with the connection's own text; 0 and SQLITE_DONE are no failure.
    int result(int rc, const char *subject) const;
};

// Runs an operation's body; the C interface lets no exception through.
template <class Body>
int guarded(const Call &call, Body &&body)
{
    if (call.errmsg)
        *call.errmsg = nullptr;
    if (const int rc = call.check_owner(); rc != SQLITE_OK)
        return rc;
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc &) {
        return call.fail(SQLITE_NOMEM, "out of memory", "statement");
    }
}

// Runs the body, which returns 0 or a code that was reported, in a transaction of its own.
template <class Body>
int in_transaction(const Call &call, Body &&body)
{
    if (const int rc = qbdb_sql_begin(call.qbdb, call.db, call.errmsg, call.file, call.line); rc != SQLITE_OK)
        return -rc;
    if (const int rc = guarded(call, std::forward<Body>(body)); rc != SQLITE_OK) {
        qbdb_sql_rollback(call.qbdb, call.db, nullptr, call.file, call.line);
        return rc;
    }
    return qbdb_sql_commit(call.qbdb, call.db, call.errmsg, call.file, call.line);
}

class Execution
{
  public:
    explicit Execution(const Call &call);
    ~Execution();
    Execution(const Execution &) = delete;
    Execution &operator=(const Execution &) = delete;

    // Makes the statement and its first step: SQLITE_ROW, SQLITE_DONE or an error that was reported.
    int start(const char *format, va_list arguments);
    // The next step, of the same results.
    int step();

    sqlite3_stmt *statement() const { return statement_; }
    // Where a kept statement's column names are remembered; null for one that is not kept.
    ColumnNames *names() const { return names_; }
    Scratch &scratch() { return scratch_; }

  private:
    int find_statement(va_list arguments);
    int prepare_into(Statement &owner, std::string_view text, bool keep);
    int run(va_list arguments);
    int report(int rc);

    const Call &call_;
    qbdb_sysinfo *state_;
    Scratch local_scratch_;
    Scratch &scratch_;
    const char *format_text_ = nullptr;
    const char *problem_ = nullptr;
    StatementFormat local_format_;
    const StatementFormat *format_ = nullptr;
    Statement local_statement_; // a statement that is not kept
    sqlite3_stmt *statement_ = nullptr;
    ColumnNames *names_ = nullptr;
};

// Runs a statement without results.
int execute(const Call &call, const char *format, ...);

// Reads the first column of every row as text. Rows are read whole before the next statement runs: there is
// one Execution at a time.
int read_texts(const Call &call, std::vector<std::string> &texts, const char *format, ...);

} // namespace qbdb
