// The bracket round everything that touches the database: begin, the body, commit or rollback.
#pragma once

#include "core/call.h"
#include "operations/operation.h"

namespace qbobj
{

// What becomes of the commit's own result.
enum class CommitResult {
    left_to_the_platform, // the call's result stands, unless the handle was opened for it to decide
    returned
};

struct Transaction {
    const char *operation; // its exported name
    Effect effect;
    ResultKind result;
    CommitResult commit;
    Site site; // of begin, commit and rollback
};

// Whether a result undoes the call.
constexpr bool fails(ResultKind kind, int result)
{
    return kind == ResultKind::identifier ? result < 0 : result != 0;
}

// Runs `body` in a transaction of its own. Whatever it throws becomes an error code. The error record is cleared first.
int in_transaction(const Transaction &transaction, qbdb_handle_t *qbdb, sqlite3 *db, qbobj_error_rec_t &err,
                   int (*body)(void *context, Call &call), void *context) noexcept;

template <class Body>
int in_transaction(const Transaction &transaction, qbdb_handle_t *qbdb, sqlite3 *db, qbobj_error_rec_t &err,
                   Body body) noexcept
{
    return in_transaction(
        transaction, qbdb, db, err,
        [](void *context, Call &call) -> int { return (*static_cast<Body *>(context))(call); }, &body);
}

} // namespace qbobj
