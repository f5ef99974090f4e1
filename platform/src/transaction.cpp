// Beginning and ending transactions, and what became of them.
#include "transaction.h"
#include "execution.h"
#include "journal.h"
#include "migration.h"

#include <cstdio>
#include <utility>

using namespace qbdb;

void Outcome::fail(int rc, const char *why)
{
    if (code != SQLITE_OK)
        return;
    code = rc;
    std::snprintf(text.data(), text.size(), "%s", why);
}

std::optional<unsigned> qbdb::data_mark(sqlite3 *db)
{
    unsigned mark = 0;
    const int rc = sqlite3_file_control(db, "main", SQLITE_FCNTL_DATA_VERSION, &mark);
    return rc == SQLITE_OK ? std::optional(mark) : std::nullopt;
}

int Transaction::prepare_all(sqlite3 *db)
{
    const std::pair<Statement *, const char *> statements[] = {{&begin_deferred, "BEGIN"},
                                                               {&begin_immediate, "BEGIN IMMEDIATE"},
                                                               {&commit, "COMMIT"},
                                                               {&rollback, "ROLLBACK"},
                                                               {&read_version, "PRAGMA user_version"}};
    int rc = SQLITE_OK;
    for (const auto &[statement, text] : statements) {
        const char *no_text = nullptr;
        if (rc == SQLITE_OK)
            rc = prepare(db, text, SQLITE_PREPARE_PERSISTENT, *statement, &no_text);
    }
    return rc;
}

const char *Transaction::problem(sqlite3 *db) const
{
    if (left_over)
        return "the last transaction could not be ended";
    return open && sqlite3_get_autocommit(db) ? "the transaction was rolled back" : nullptr;
}

void Transaction::failed(sqlite3 *db, int rc, const char *text)
{
    if (deciding || (open && sqlite3_get_autocommit(db)))
        outcome.fail(rc, text);
}

namespace
{

// The log names the operation whose transaction it was, when that is known.
int run(const Call &call, const Transaction &transaction, const Statement &statement)
{
    sqlite3_step(statement.get());
    const int rc = sqlite3_reset(statement.get());
    if (rc == SQLITE_OK)
        return rc;
    const char *const text = sqlite3_sql(statement.get());
    if (!transaction.operation)
        return call.result(rc, text);
    std::array<char, 128> subject{};
    std::snprintf(subject.data(), subject.size(), "%s of %s", text, transaction.operation);
    return call.result(rc, subject.data());
}

// The platform's part of a transaction ends here. SQLite's may stay open when a ROLLBACK failed.
void forget(qbdb_sysinfo &state)
{
    Transaction &transaction = state.transaction;
    transaction.open = false;
    transaction.left_over = sqlite3_get_autocommit(state.db.get()) == 0;
    transaction.operation = nullptr;
    state.copies.forget_all();
    state.journal.clear();
}

int end(const Call &call, qbdb_sysinfo &state)
{
    const Transaction &transaction = state.transaction;
    const int rc = sqlite3_get_autocommit(call.db) ? SQLITE_OK : run(call, transaction, transaction.rollback);
    forget(state);
    return rc;
}

// Another program may have brought the file to another schema since it was opened.
int check_schema(const Call &call, Transaction &transaction)
{
    const std::optional<unsigned> mark = data_mark(call.db);
    if (mark && mark == transaction.version_read_at)
        return SQLITE_OK;
    sqlite3_step(transaction.read_version.get());
    const int version = sqlite3_column_int(transaction.read_version.get(), 0);
    if (const int rc = sqlite3_reset(transaction.read_version.get()); rc != SQLITE_OK)
        return call.result(rc, "schema");
    if (version == schema_version()) {
        transaction.version_read_at = mark;
        return SQLITE_OK;
    }
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(),
                  "another program has brought the database to schema %d (this is %d)", version,
                  schema_version());
    return call.fail(SQLITE_SCHEMA, text.data(), "BEGIN");
}

int begin_kept(const Call &call, qbdb_sysinfo &state, const char *operation, bool reads)
{
    Transaction &transaction = state.transaction;
    transaction.outcome = {};
    if (transaction.left_over)
        if (const int rc = end(call, state); rc != SQLITE_OK)
            return rc;
    const char *const outer = std::exchange(transaction.operation, operation);
    int rc = run(call, transaction, reads ? transaction.begin_deferred : transaction.begin_immediate);
    if (rc == SQLITE_OK && !reads && (rc = check_schema(call, transaction)) != SQLITE_OK)
        end(call.silently(), state);
    if (rc == SQLITE_OK)
        transaction.open = true;
    else
        transaction.operation = outer;
    return rc;
}

int begin(const Call &call)
{
    // The announcement is the handle's, whichever connection the transaction is on.
    qbdb_sysinfo *const owner = call.qbdb->sysinfo;
    const Announcement announced = owner ? std::exchange(owner->transaction.next, {}) : Announcement{};
    const bool reads = announced.reads_only || call.qbdb->readonly != 0;
    if (qbdb_sysinfo *state = call.state())
        return begin_kept(call, *state, announced.operation, reads);
    return execute(call, reads ? "BEGIN" : "BEGIN IMMEDIATE");
}

int commit_kept(const Call &call, qbdb_sysinfo &state)
{
    Transaction &transaction = state.transaction;
    if (!transaction.open)
        return call.fail(SQLITE_MISUSE, "no transaction was begun", "COMMIT");
    if (const char *problem = transaction.problem(call.db))
        return call.fail(SQLITE_ABORT, problem, "COMMIT");
    // The copies that an operation leaves behind are there afterwards.
    const int rc = call.result(state.copies.materialise_all(), "COMMIT");
    return rc == SQLITE_OK ? run(call, transaction, transaction.commit) : rc;
}

int commit(const Call &call)
{
    qbdb_sysinfo *const state = call.state();
    return state ? commit_kept(call, *state) : execute(call, "COMMIT");
}

// As guarded(), for what decides whether a transaction is kept.
int deciding(const Call &call, int (*step)(const Call &))
{
    qbdb_sysinfo *const state = call.state();
    if (state)
        state->transaction.deciding = true;
    const int rc = guarded(call, [&] { return step(call); });
    if (state)
        state->transaction.deciding = false;
    return rc;
}

} // namespace

int qbdb_sql_begin(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line)
{
    // Look-ups hand a failed begin's value on, and a positive one would read as an id.
    return -deciding({qbdb, db, errmsg, file, line}, begin);
}

int qbdb_sql_commit(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    if (const int refused = call.check_owner(); refused != SQLITE_OK)
        return refused;
    const int rc = deciding(call, commit);
    qbdb_sysinfo *const state = call.state();
    if (!state && rc != SQLITE_OK && !sqlite3_get_autocommit(db))
        run_plain(db, "ROLLBACK");
    if (!state || !state->transaction.open)
        return rc;
    if (rc == SQLITE_OK) {
        state->transaction.outcome = {};
        for (const std::string &journal_line : state->journal)
            write_journal(qbdb, journal_line);
    }
    // Nothing of a transaction stays whose commit failed.
    end(call.silently(), *state);
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

void qbdb_announce(qbdb_handle_t *qbdb, const char *operation, int reads_only)
{
    if (qbdb->sysinfo)
        qbdb->sysinfo->transaction.next = {operation, reads_only != 0};
}

int qbdb_commit_decides(const qbdb_handle_t *qbdb)
{
    return qbdb->sysinfo && qbdb->sysinfo->commit_decides ? 1 : 0;
}

int qbdb_last_commit(const qbdb_handle_t *qbdb, const char **message)
{
    static constexpr Outcome unknown;
    const Outcome &outcome = qbdb->sysinfo ? qbdb->sysinfo->transaction.outcome : unknown;
    if (message)
        *message = outcome.text.data();
    return outcome.code;
}
