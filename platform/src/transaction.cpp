// Beginning and ending transactions.
#include "transaction.h"
#include "execution.h"
#include "journal.h"

#include <utility>

using namespace qbdb;

int Transaction::prepare_all(sqlite3 *db)
{
    const std::pair<Statement *, const char *> statements[] = {{&begin_deferred, "BEGIN"},
                                                               {&begin_immediate, "BEGIN IMMEDIATE"},
                                                               {&commit, "COMMIT"},
                                                               {&rollback, "ROLLBACK"}};
    int rc = SQLITE_OK;
    for (const auto &[statement, text] : statements) {
        const char *problem = nullptr;
        if (rc == SQLITE_OK)
            rc = prepare(db, text, SQLITE_PREPARE_PERSISTENT, *statement, &problem);
    }
    return rc;
}

namespace
{

int run(const Call &call, const Statement &statement)
{
    sqlite3_step(statement.get());
    return call.result(sqlite3_reset(statement.get()), sqlite3_sql(statement.get()));
}

// The platform's part of a transaction ends here. SQLite's may stay open when a ROLLBACK failed.
void forget(qbdb_sysinfo &state)
{
    state.transaction.open = false;
    state.transaction.left_over = sqlite3_get_autocommit(state.db.get()) == 0;
    state.copies.forget_all();
    state.journal.clear();
}

int end(const Call &call, qbdb_sysinfo &state)
{
    const int rc = sqlite3_get_autocommit(call.db) ? SQLITE_OK : run(call, state.transaction.rollback);
    forget(state);
    return rc;
}

int begin(const Call &call)
{
    qbdb_sysinfo *const state = call.state();
    const bool reads = call.qbdb->readonly != 0;
    if (!state)
        return execute(call, reads ? "BEGIN" : "BEGIN IMMEDIATE");
    Transaction &transaction = state->transaction;
    if (transaction.left_over)
        if (const int rc = end(call, *state); rc != SQLITE_OK)
            return rc;
    const int rc = run(call, reads ? transaction.begin_deferred : transaction.begin_immediate);
    if (rc == SQLITE_OK)
        transaction.open = true;
    return rc;
}

int commit(const Call &call, qbdb_sysinfo &state)
{
    if (!state.transaction.open)
        return call.fail(SQLITE_MISUSE, "no transaction was begun", "COMMIT");
    if (sqlite3_get_autocommit(call.db))
        return call.fail(SQLITE_ABORT, "the transaction was rolled back", "COMMIT");
    // The copies that an operation leaves behind are there afterwards.
    const int rc = call.result(state.copies.materialise_all(), "COMMIT");
    return rc == SQLITE_OK ? run(call, state.transaction.commit) : rc;
}

} // namespace

int qbdb_sql_begin(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    // Look-ups hand a failed begin's value on, and a positive one would read as an id.
    return -guarded(call, [&] { return begin(call); });
}

int qbdb_sql_commit(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    qbdb_sysinfo *const state = call.state();
    const int rc = guarded(call, [&] { return state ? commit(call, *state) : execute(call, "COMMIT"); });
    // The failure has been reported already; nothing of the transaction may stay.
    const Call silent{qbdb, db, nullptr, file, line};
    if (!state) {
        if (rc != SQLITE_OK && !sqlite3_get_autocommit(db))
            run_plain(db, "ROLLBACK");
        return rc;
    }
    if (!state->transaction.open)
        return rc;
    if (rc == SQLITE_OK)
        for (const std::string &journal_line : state->journal)
            write_journal(qbdb, journal_line);
    end(silent, *state);
    return rc;
}

int qbdb_sql_rollback(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    return guarded(call, [&] {
        qbdb_sysinfo *const state = call.state();
        if (!state)
            return sqlite3_get_autocommit(db) ? SQLITE_OK : execute(call, "ROLLBACK");
        // A transaction that the caller began itself, so that qbdb_sql_begin() failed, stays the caller's.
        const bool ours = state->transaction.open || state->transaction.left_over;
        return ours ? end(call, *state) : SQLITE_OK;
    });
}
