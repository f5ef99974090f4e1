// Finding or preparing the statement of a call, running it, and reporting its failure.
#include "execution.h"
#include "common/pool.h"

namespace qbdb
{

namespace
{

// The text may stand in the connection, where the next call overwrites it.
char *lasting_text(apr_pool_t *pool, const char *text)
{
    try {
        return qb::copy_text(pool, text);
    } catch (const std::bad_alloc &) {
        return const_cast<char *>("out of memory"); // nobody writes into error texts
    }
}

} // namespace

int Call::check_owner() const
{
    qbdb_sysinfo *const owner = qbdb->sysinfo;
    if (!owner || !owner->inherited())
        return SQLITE_OK;
    const char *const text = "the handle belongs to the process that opened it";
    owner->transaction.outcome = {};
    owner->transaction.outcome.fail(SQLITE_MISUSE, text);
    return fail(SQLITE_MISUSE, text, "handle");
}

int Call::fail(int rc, const char *text, const char *subject) const
{
    if (qbdb_sysinfo *own = state())
        own->transaction.failed(db, rc & 0xff, text);
    qbdb_log(qbdb, file, line, QBDB_LOG_ERROR, 1, "%s (%d): %s", text, rc & 0xff, subject);
    if (errmsg)
        *errmsg = lasting_text(qbdb->pool, text);
    return rc & 0xff;
}

int Call::result(int rc, const char *subject) const
{
    if (rc == SQLITE_OK || rc == SQLITE_DONE)
        return SQLITE_OK;
    // A failure that did not come from the connection is not in its text.
    const bool known = (sqlite3_errcode(db) & 0xff) == (rc & 0xff);
    return fail(rc, known ? sqlite3_errmsg(db) : sqlite3_errstr(rc), subject);
}

Execution::Execution(const Call &call)
    : call_(call), state_(call.state()), scratch_(state_ ? state_->scratch : local_scratch_)
{
}

Execution::~Execution()
{
    if (!statement_)
        return;
    const int rc = sqlite3_reset(statement_);
    if (state_)
        state_->copies.statement_ends(rc == SQLITE_OK);
    if (!local_statement_)
        sqlite3_clear_bindings(statement_);
}

int Execution::start(const char *format, va_list arguments)
{
    format_text_ = format;
    if (const char *problem = state_ ? state_->transaction.problem(call_.db) : nullptr)
        return call_.fail(SQLITE_ABORT, problem, format);
    int rc = run(arguments);
    // A statement may name a copy that is not made yet.
    while ((rc & 0xff) == SQLITE_ERROR && !problem_ && state_) {
        const int made = state_->copies.materialise_missing(sqlite3_errmsg(call_.db));
        if (made == SQLITE_NOTFOUND)
            break;
        rc = made == SQLITE_OK ? run(arguments) : made;
        if (made != SQLITE_OK)
            break;
    }
    return report(rc);
}

int Execution::step()
{
    return report(sqlite3_step(statement_));
}

int Execution::report(int rc)
{
    if (rc == SQLITE_ROW || rc == SQLITE_DONE)
        return rc;
    return problem_ ? call_.fail(rc, problem_, format_text_) : call_.result(rc, format_text_);
}

int Execution::run(va_list arguments)
{
    if (statement_)
        sqlite3_reset(statement_);
    if (const int rc = find_statement(arguments); rc != SQLITE_OK)
        return rc;
    Arguments values(arguments);
    if (const int rc = format_->bind(statement_, values, scratch_.literals); rc != SQLITE_OK)
        return rc;
    if (state_)
        state_->copies.statement_begins();
    return sqlite3_step(statement_);
}

int Execution::find_statement(va_list arguments)
{
    KeptFormat *kept = state_ ? state_->statements.formats.find(format_text_) : nullptr;
    if (!kept) {
        if (!format_ && !local_format_.compile(format_text_)) {
            problem_ = local_format_.error().c_str();
            return SQLITE_MISUSE;
        }
        format_ = &local_format_;
        if (state_) {
            kept = &state_->statements.formats.insert(format_text_, {std::move(local_format_), {}});
        }
    }
    if (kept)
        format_ = &kept->format;
    scratch_.literals.clear();
    if (!format_->has_splices()) {
        Statement &owner = kept ? kept->kept.statement : local_statement_;
        names_ = kept ? &kept->kept.names : nullptr;
        return prepare_into(owner, format_->text(), kept != nullptr);
    }

    Arguments values(arguments);
    format_->build(values, scratch_.text, scratch_.literals);
    if (!state_ || format_->has_value_splices()) {
        local_statement_.reset();
        return prepare_into(local_statement_, scratch_.text, false);
    }
    KeptStatement *found = state_->statements.spliced.find(scratch_.text);
    if (!found) {
        KeptStatement fresh;
        const int rc =
            prepare(call_.db, scratch_.text, SQLITE_PREPARE_PERSISTENT, fresh.statement, &problem_);
        if (rc != SQLITE_OK)
            return rc;
        found = &state_->statements.spliced.insert(scratch_.text, std::move(fresh));
    }
    statement_ = found->statement.get();
    names_ = &found->names;
    return SQLITE_OK;
}

int Execution::prepare_into(Statement &owner, std::string_view text, bool keep)
{
    const unsigned flags = keep ? SQLITE_PREPARE_PERSISTENT : 0;
    const int rc = owner ? SQLITE_OK : prepare(call_.db, text, flags, owner, &problem_);
    statement_ = owner.get();
    return rc;
}

int execute(const Call &call, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    Execution execution(call);
    int rc = execution.start(format, arguments);
    va_end(arguments);
    while (rc == SQLITE_ROW)
        rc = execution.step();
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

int read_texts(const Call &call, std::vector<std::string> &texts, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    Execution execution(call);
    int rc = execution.start(format, arguments);
    va_end(arguments);
    for (; rc == SQLITE_ROW; rc = execution.step())
        if (const std::string_view text = cell_text(execution.statement(), 0); text.data())
            texts.emplace_back(text);
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

} // namespace qbdb
