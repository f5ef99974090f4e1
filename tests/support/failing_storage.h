// Storage that fails on demand, and forgets what was not synced: SQLite's files stand on it as long as it lives.
#pragma once

#include <sqlite3.h>

#include <filesystem>

namespace qbobj_test
{

class Trials;

// SQLite's default file system, with steps that can be made to fail. One at a time, made before the connections.
class FailingStorage
{
  public:
    enum class Step { read, write, sync, truncate, lock };

    FailingStorage();
    ~FailingStorage();
    FailingStorage(const FailingStorage &) = delete;
    FailingStorage &operator=(const FailingStorage &) = delete;

    // While it lives, the n-th of these steps from now on fails with the code, and all behind it unless once.
    class Failure
    {
      public:
        Failure(Step step, int n, int code, bool once = false);
        ~Failure();
        Failure(const Failure &) = delete;
        Failure &operator=(const Failure &) = delete;
        // How many there were of any step so far.
        static int asked(Step step);
    };

    // Keeps the changes that a database and its log go through from now on, sector by sector.
    static void record(const std::filesystem::path &database);
    // How many there are so far.
    static std::size_t changes();
    // Leaves at the path what is there when the power is cut after so many changes, in the midst of the next: all
    // that was synced, and of the rest what luck has kept.
    static void cut(std::size_t after, const std::filesystem::path &survivor, Trials &trials);
};

} // namespace qbobj_test
