// Storage that fails on demand, and forgets what was not synced: SQLite's files stand on it as long as it lives.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

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
        // How many steps failed so far.
        static int count();
        // How many there were of any step so far.
        static int asked(Step step);
    };

    // A step that changes a file, or syncs it.
    struct Change {
        Step step;
        std::string file;
        sqlite3_int64 at; // of a truncation, the size; a deletion is one to nothing
        std::string bytes;
    };

    // While it lives, the changes of a database and its log are kept, so that the power can be cut at each.
    class Recording
    {
      public:
        explicit Recording(const std::filesystem::path &database);
        ~Recording();
        Recording(const Recording &) = delete;
        Recording &operator=(const Recording &) = delete;
        // How many there are so far.
        std::size_t size() const { return changes_.size(); }
        // Leaves at the path what is there when the power is cut after so many changes, in the midst of the next:
        // all that was synced, and of the rest the sectors that luck has kept.
        void cut(std::size_t after, const std::filesystem::path &survivor, Trials &trials) const;

      private:
        std::string database_;
        std::map<std::string, std::string> files_; // as they were
        std::vector<Change> changes_;
    };
};

} // namespace qbobj_test
