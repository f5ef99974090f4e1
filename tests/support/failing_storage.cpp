// SQLite's own file system with its steps replaced by ones that ask the plan first, and tell who listens.
#include "failing_storage.h"
#include "trials.h"

#include <algorithm>
#include <array>
#include <climits>
#include <fstream>
#include <stdexcept>

namespace qbobj_test
{
namespace
{

using Step = FailingStorage::Step;

struct Plan {
    Step step{};
    int first = 0; // 0 is no plan
    int last = 0;
    int code = SQLITE_OK;
    int failed = 0;
    std::map<Step, int> asked{};

    int ask(Step which)
    {
        const int n = first == 0 ? 0 : ++asked[which];
        if (which != step || n == 0 || n < first || n > last)
            return SQLITE_OK;
        failed++;
        return code;
    }
};

// What listens: the changes of the files whose names begin so.
struct Listener {
    std::string database;
    std::vector<FailingStorage::Change> *changes = nullptr;

    void hear(Step step, const char *file, sqlite3_int64 at, std::string bytes = {}) const
    {
        if (changes != nullptr && file != nullptr && std::string_view(file).starts_with(database))
            changes->push_back({step, file, at, std::move(bytes)});
    }
};

// The methods of a kind of file (SQLite locks databases, not logs), some of them replaced.
struct Kind : sqlite3_io_methods {
    const sqlite3_io_methods *real = nullptr;
};

Plan plan;
Listener listener;
sqlite3_vfs *real_vfs = nullptr;
sqlite3_vfs failing_vfs{};
std::array<Kind, 4> kinds;

const sqlite3_io_methods &real_methods(const sqlite3_file *file)
{
    return *static_cast<const Kind *>(file->pMethods)->real;
}

// A file's name stands behind the real file's own state.
const char *&name_of(sqlite3_file *file)
{
    return *reinterpret_cast<const char **>(reinterpret_cast<char *>(file) + real_vfs->szOsFile);
}

int read(sqlite3_file *file, void *to, int amount, sqlite3_int64 at)
{
    const int rc = plan.ask(Step::read);
    return rc != SQLITE_OK ? rc : real_methods(file).xRead(file, to, amount, at);
}

// A write that fails has come half the way.
int write(sqlite3_file *file, const void *from, int amount, sqlite3_int64 at)
{
    if (const int rc = plan.ask(Step::write); rc != SQLITE_OK) {
        real_methods(file).xWrite(file, from, amount / 2, at);
        return rc;
    }
    const auto size = static_cast<std::size_t>(amount);
    listener.hear(Step::write, name_of(file), at, {static_cast<const char *>(from), size});
    return real_methods(file).xWrite(file, from, amount, at);
}

// No test outlives the power of its machine.
int sync(sqlite3_file *file, int)
{
    listener.hear(Step::sync, name_of(file), 0);
    return plan.ask(Step::sync);
}

int truncate(sqlite3_file *file, sqlite3_int64 size)
{
    if (const int rc = plan.ask(Step::truncate); rc != SQLITE_OK)
        return rc;
    listener.hear(Step::truncate, name_of(file), size);
    return real_methods(file).xTruncate(file, size);
}

int lock(sqlite3_file *file, int offset, int count, int flags)
{
    const int rc = (flags & SQLITE_SHM_LOCK) != 0 ? plan.ask(Step::lock) : SQLITE_OK;
    return rc != SQLITE_OK ? rc : real_methods(file).xShmLock(file, offset, count, flags);
}

const Kind &kind_of(const sqlite3_io_methods *real)
{
    for (Kind &kind : kinds) {
        if (kind.real == nullptr) {
            static_cast<sqlite3_io_methods &>(kind) = *real;
            kind.real = real;
            kind.xRead = read;
            kind.xWrite = write;
            kind.xSync = sync;
            kind.xTruncate = truncate;
            kind.xShmLock = lock;
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
    name_of(file) = name;
    return rc;
}

int delete_file(sqlite3_vfs *, const char *name, int sync_folder)
{
    listener.hear(Step::truncate, name, 0);
    return real_vfs->xDelete(real_vfs, name, sync_folder);
}

// Nobody holds what is said to be locked.
int do_not_sleep(sqlite3_vfs *, int microseconds)
{
    return microseconds;
}

std::string read_file(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Makes a part of a change.
void make(const FailingStorage::Change &change, std::string &file, std::size_t from, std::size_t amount)
{
    const std::size_t at = static_cast<std::size_t>(change.at) + from;
    if (change.step == Step::truncate)
        return file.resize(at);
    file.resize(std::max(file.size(), at + amount));
    file.replace(at, amount, change.bytes, from, amount);
}

} // namespace

FailingStorage::FailingStorage()
{
    real_vfs = sqlite3_vfs_find(nullptr);
    failing_vfs = *real_vfs;
    failing_vfs.zName = "failing";
    failing_vfs.pNext = nullptr;
    failing_vfs.szOsFile += static_cast<int>(sizeof(const char *));
    failing_vfs.xOpen = open_file;
    failing_vfs.xDelete = delete_file;
    failing_vfs.xSleep = do_not_sleep;
    sqlite3_vfs_register(&failing_vfs, 1);
}

FailingStorage::~FailingStorage()
{
    sqlite3_vfs_unregister(&failing_vfs);
    sqlite3_vfs_register(real_vfs, 1);
}

FailingStorage::Failure::Failure(Step step, int n, int code, bool once)
{
    plan = {step, n, once ? n : INT_MAX, code, 0, {}};
}

FailingStorage::Failure::~Failure()
{
    plan = {};
}

int FailingStorage::Failure::count()
{
    return plan.failed;
}

int FailingStorage::Failure::asked(Step step)
{
    return plan.asked[step];
}

FailingStorage::Recording::Recording(const std::filesystem::path &database) : database_(database)
{
    for (const std::string &file : {database_, database_ + "-wal"})
        files_[file] = read_file(file);
    listener = {database_, &changes_};
}

FailingStorage::Recording::~Recording()
{
    listener = {};
}

void FailingStorage::Recording::cut(std::size_t after, const std::filesystem::path &survivor,
                                    Trials &trials) const
{
    auto files = files_;
    std::map<std::string, std::vector<std::size_t>> unsynced;
    for (std::size_t i = 0; i < std::min(after + 1, changes_.size()); ++i) {
        const Change &change = changes_[i];
        std::vector<std::size_t> &pending = unsynced[change.file];
        pending.push_back(i);
        if (i == after || change.step != Step::sync)
            continue;
        for (const std::size_t synced : pending)
            make(changes_[synced], files[change.file], 0, changes_[synced].bytes.size());
        pending.clear();
    }
    const std::size_t sector = std::size_t{512} << trials.below(4);
    for (const auto &[name, pending] : unsynced) {
        const std::size_t kept = trials.below(3); // of two sectors
        for (const std::size_t i : pending) {
            const std::size_t whole = changes_[i].bytes.size();
            const std::size_t size = i == after ? trials.below(whole + 1) : whole;
            std::size_t from = 0;
            do {
                const std::size_t at = static_cast<std::size_t>(changes_[i].at) + from;
                const std::size_t amount = std::min(size - from, sector - at % sector);
                if (trials.below(2) < kept)
                    make(changes_[i], files[name], from, amount);
                from += amount;
            } while (from < size);
        }
    }
    for (const auto &[name, content] : files)
        std::ofstream(survivor.string() + name.substr(database_.size()), std::ios::binary) << content;
}

} // namespace qbobj_test
