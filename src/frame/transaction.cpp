// The bracket round everything that touches the database.
#include "frame/transaction.h"

namespace qbobj
{
namespace
{

// A failure in the operation's own way: the code, or for look-ups of an identifier a negative number.
int failure(ResultKind kind, int code)
{
    return kind == ResultKind::code ? code : -1;
}

// Without memory for a text the record still holds the code and the place.
int report_exception(const Transaction &transaction, qbobj_error_rec_t &err, qbobj_error_t code,
                     const char *text)
{
    static constexpr Site frame("qbobj_api2.cpp", 0);
    err = {code, frame.unit.data(), transaction.site.line, text};
    return failure(transaction.result, code);
}

int run_body(const Transaction &transaction, Call &call, int (*body)(void *, Call &), void *context)
{
    qbobj_error_rec_t &err = *call.env().err;
    int result = 0;
    try {
        result = body(context, call);
    } catch (const std::bad_alloc &) {
        result = report_exception(transaction, err, QBOBJ_ERROR_OOM, "Failed to allocate resource.");
    } catch (...) {
        result =
            report_exception(transaction, err, QBOBJ_ERROR_UNKNOWN, "The operation failed unexpectedly.");
    }
    // Success must not be reported for a transaction that the database has rolled back by itself.
    if (!fails(transaction.result, result) && sqlite3_get_autocommit(call.db()) != 0) {
        report_exception(transaction, err, QBOBJ_ERROR_DB_MISC,
                         "The transaction was rolled back by the database.");
        result = failure(transaction.result, QBOBJ_ERROR_DB_MISC);
    }
    return result;
}

int commit(const Transaction &transaction, Call &call, int result)
{
    char *text = nullptr;
    const int rc =
        qbdb_sql_commit(call.qbdb(), call.db(), &text, transaction.site.unit.data(), transaction.site.line);
    if (transaction.commit == CommitResult::returned)
        return rc;
    if (rc == 0 || qbdb_commit_decides == nullptr || qbdb_commit_decides(call.qbdb()) == 0)
        return result;
    try {
        raise_at(transaction.site, call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'COMMIT'. %s",
                 or_empty(text));
    } catch (const std::bad_alloc &) {
        report_exception(transaction, *call.env().err, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'COMMIT'.");
    }
    return failure(transaction.result, QBOBJ_ERROR_DB_MISC);
}

} // namespace

int in_transaction(const Transaction &transaction, qbdb_handle_t *qbdb, sqlite3 *db, qbobj_error_rec_t &err,
                   int (*body)(void *context, Call &call), void *context) noexcept
{
    const char *unit = transaction.site.unit.data();
    const int line = transaction.site.line;
    err = {};
    if (qbdb_announce != nullptr)
        qbdb_announce(qbdb, transaction.operation, transaction.effect == Effect::reads ? 1 : 0);
    Call call({qbdb, &err}, db);
    int result = qbdb_sql_begin(qbdb, db, nullptr, unit, line);
    if (result == 0)
        result = run_body(transaction, call, body, context);
    if (!fails(transaction.result, result))
        return commit(transaction, call, result);
    qbdb_sql_rollback(qbdb, db, nullptr, unit, line);
    return result;
}

} // namespace qbobj
