// Storage that fails on demand: SQLite's files stand on it as long as it lives.
#pragma once

#include <sqlite3.h>

namespace qbobj_test
{

// SQLite's default file system, with steps that can be made to fail. One at a time, made before the connections.
class FailingStorage
{
  public:
    enum class Step { write, sync, truncate };

    FailingStorage();
    ~FailingStorage();
    FailingStorage(const FailingStorage &) = delete;
    FailingStorage &operator=(const FailingStorage &) = delete;

    // While it lives, the n-th of these steps from now on and all behind it fail with the code.
    class Failure
    {
      public:
        Failure(Step step, int n, int code);
        ~Failure();
        Failure(const Failure &) = delete;
        Failure &operator=(const Failure &) = delete;
        // How many steps failed so far.
        static int count();
    };
};

} // namespace qbobj_test
