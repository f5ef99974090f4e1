// Waiting inside a call.
#pragma once

#include <sqlite3.h>

#include <chrono>

namespace qbobj
{

// Waits that an interrupt of the connection ends. SQLite forgets an interrupt that meets no running statement, so one
// runs from the first wait on; it reads no table and holds no lock.
class InterruptibleWait
{
  public:
    explicit InterruptibleWait(sqlite3 *db);
    ~InterruptibleWait() { sqlite3_finalize(statement_); }
    InterruptibleWait(const InterruptibleWait &) = delete;
    InterruptibleWait &operator=(const InterruptibleWait &) = delete;

    // False when the connection was interrupted during this wait or since the one before.
    bool wait(std::chrono::milliseconds duration);

  private:
    sqlite3_stmt *statement_ = nullptr;
};

} // namespace qbobj
