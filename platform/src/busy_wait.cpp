// Waiting for a busy database.
#include "connection.h"

#include <algorithm>
#include <thread>

namespace qbdb
{

void BusyWait::attach(sqlite3 *db, int timeout_ms)
{
    constexpr int default_timeout_ms = 5000;
    timeout_ = std::chrono::milliseconds(timeout_ms > 0 ? timeout_ms : default_timeout_ms);
    random_ = qbdb_rand();
    sqlite3_busy_handler(db, wait, this);
}

int BusyWait::wait(void *self, int attempts)
{
    using namespace std::chrono;
    auto &busy = *static_cast<BusyWait *>(self);
    const auto now = steady_clock::now();
    if (attempts == 0)
        busy.deadline_ = now + busy.timeout_;
    if (now >= busy.deadline_)
        return 0;
    busy.random_ = busy.random_ * 1664525u + 1013904223u;
    const microseconds pause(1000 + (busy.random_ >> 8) % 2000);
    std::this_thread::sleep_for(std::min(pause, duration_cast<microseconds>(busy.deadline_ - now)));
    return 1;
}

} // namespace qbdb
