// Waiting inside a call.
#include "service/interruptible_wait.h"

#include <algorithm>
#include <new>
#include <thread>

namespace qbobj
{

InterruptibleWait::InterruptibleWait(sqlite3 *db)
{
    constexpr char endless[] =
        "WITH RECURSIVE tick(n) AS (SELECT 1 UNION ALL SELECT n FROM tick) SELECT n FROM tick";
    if (sqlite3_prepare_v2(db, endless, sizeof endless, &statement_, nullptr) == SQLITE_NOMEM)
        throw std::bad_alloc();
}

bool InterruptibleWait::wait(std::chrono::milliseconds duration)
{
    using std::chrono::milliseconds;
    for (constexpr milliseconds slice(50); duration > milliseconds(0); duration -= slice) {
        if (sqlite3_step(statement_) != SQLITE_ROW)
            return false;
        std::this_thread::sleep_for(std::min(slice, duration));
    }
    return sqlite3_step(statement_) == SQLITE_ROW;
}

} // namespace qbobj
