// SQLite's own file system with its writing steps replaced by ones that ask the plan first.
#include "failing_storage.h"

#include <array>
#include <stdexcept>

namespace qbobj_test
{
namespace
{

struct Plan {
    FailingStorage::Step step{};
    int left = 0; // steps until the first failure; 0 is no plan
    int code = SQLITE_OK;
    int failed = 0;

    int ask(FailingStorage::Step asked)
    {
        if (left == 0 || asked != step)
            return SQLITE_OK;
        if (left > 1) {
            left--;
            return SQLITE_OK;
        }
        failed++;
        return code;
    }
};

// The methods of a kind of file (SQLite locks databases, not logs), some of them replaced.
struct Kind : sqlite3_io_methods {
    const sqlite3_io_methods *real = nullptr;
};

Plan plan;
sqlite3_vfs *real_vfs = nullptr;
sqlite3_vfs failing_vfs{};
std::array<Kind, 4> kinds;

// Runs the real step unless the plan has it fail.
template <auto Method, FailingStorage::Step Step, class... Value>
int planned(sqlite3_file *file, Value... value)
{
    const int rc = plan.ask(Step);
    return rc != SQLITE_OK ? rc : (static_cast<const Kind *>(file->pMethods)->real->*Method)(file, value...);
}

const Kind &kind_of(const sqlite3_io_methods *real)
{
    using Step = FailingStorage::Step;
    for (Kind &kind : kinds) {
        if (kind.real == nullptr) {
            static_cast<sqlite3_io_methods &>(kind) = *real;
            kind.real = real;
            kind.xWrite = planned<&sqlite3_io_methods::xWrite, Step::write>;
            kind.xSync = planned<&sqlite3_io_methods::xSync, Step::sync>;
            kind.xTruncate = planned<&sqlite3_io_methods::xTruncate, Step::truncate>;
        }
        if (kind.real == real)
            return kind;
    }
    throw std::logic_error("more kinds of files than expected");
}

int open_file(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *out_flags)
{
    const int rc = real_vfs->xOpen(real_vfs, name, file, flags, out_flags);
    if (rc == SQLITE_OK && file->pMethods != nullptr)
        file->pMethods = &kind_of(file->pMethods);
    return rc;
}

} // namespace

FailingStorage::FailingStorage()
{
    real_vfs = sqlite3_vfs_find(nullptr);
    failing_vfs = *real_vfs;
    failing_vfs.zName = "failing";
    failing_vfs.pNext = nullptr;
    failing_vfs.xOpen = open_file;
    sqlite3_vfs_register(&failing_vfs, 1);
}

FailingStorage::~FailingStorage()
{
    sqlite3_vfs_unregister(&failing_vfs);
    sqlite3_vfs_register(real_vfs, 1);
}

FailingStorage::Failure::Failure(Step step, int n, int code)
{
    plan = {step, n, code, 0};
}

FailingStorage::Failure::~Failure()
{
    plan.left = 0;
}

int FailingStorage::Failure::count()
{
    return plan.failed;
}

} // namespace qbobj_test
