// SQLite's own file system with its steps replaced by ones that ask the plan first, and tell who listens.
#include "failing_storage.h"
#include "temporary_folder.h"
#include "trials.h"

#include <algorithm>
#include <climits>

namespace qbobj_test
{
namespace
{

using Step = FailingStorage::Step;

struct Plan {
    Step step{};
    int first = 0;
    int last = 0; // 0 is no plan
    int code = SQLITE_OK;
    std::map<Step, int> asked{};

    int ask(Step which)
    {
        const int n = ++asked[which];
        return which == step && n >= first && n <= last ? code : SQLITE_OK;
    }
};

// What changes a file, a sector at most, or syncs it.
struct Change {
    Step step;
    std::string file;
    std::size_t at; // of a truncation, the size; a deletion is one to nothing
    std::string bytes;

    void make(std::string &content) const
    {
        content.resize(step == Step::truncate ? at : std::max(content.size(), at + bytes.size()));
        content.replace(at, bytes.size(), bytes);
    }
};

struct Recording {
    std::string database;
    std::map<std::string, std::string> files; // as they were
    std::vector<Change> changes;

    void hear(Step step, const char *file, sqlite3_int64 offset, std::string_view bytes = {})
    {
        constexpr std::size_t sector = 512;
        if (database.empty() || file == nullptr || !std::string_view(file).starts_with(database))
            return;
        auto at = static_cast<std::size_t>(offset);
        do {
            const std::size_t amount = std::min(bytes.size(), sector - at % sector);
            changes.push_back({step, file, at, std::string(bytes.substr(0, amount))});
            bytes.remove_prefix(amount);
            at += amount;
        } while (!bytes.empty());
    }
};

// A file's methods, some of them replaced, stand behind the real file's own state.
struct Methods : sqlite3_io_methods {
    const sqlite3_io_methods *real;
    const char *name;
};

Plan plan;
Recording recording;
sqlite3_vfs *real_vfs = nullptr;
sqlite3_vfs failing_vfs{};

Methods &methods_of(sqlite3_file *file)
{
    return *reinterpret_cast<Methods *>(reinterpret_cast<char *>(file) + real_vfs->szOsFile);
}

int read(sqlite3_file *file, void *to, int amount, sqlite3_int64 at)
{
    const int rc = plan.ask(Step::read);
    return rc != SQLITE_OK ? rc : methods_of(file).real->xRead(file, to, amount, at);
}

// A write that fails has come half the way.
int write(sqlite3_file *file, const void *from, int amount, sqlite3_int64 at)
{
    const int rc = plan.ask(Step::write);
    const auto size = static_cast<std::size_t>(amount);
    recording.hear(Step::write, methods_of(file).name, at, {static_cast<const char *>(from), size});
    const int done = methods_of(file).real->xWrite(file, from, rc == SQLITE_OK ? amount : amount / 2, at);
    return rc == SQLITE_OK ? done : rc;
}

// No test outlives the power of its machine.
int sync(sqlite3_file *file, int)
{
    recording.hear(Step::sync, methods_of(file).name, 0);
    return plan.ask(Step::sync);
}

int truncate(sqlite3_file *file, sqlite3_int64 size)
{
    recording.hear(Step::truncate, methods_of(file).name, size);
    const int rc = plan.ask(Step::truncate);
    return rc != SQLITE_OK ? rc : methods_of(file).real->xTruncate(file, size);
}

int lock(sqlite3_file *file, int offset, int count, int flags)
{
    const int rc = (flags & SQLITE_SHM_LOCK) != 0 ? plan.ask(Step::lock) : SQLITE_OK;
    return rc != SQLITE_OK ? rc : methods_of(file).real->xShmLock(file, offset, count, flags);
}

int open_file(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *out_flags)
{
    const int rc = real_vfs->xOpen(real_vfs, name, file, flags, out_flags);
    if (file->pMethods == nullptr)
        return rc;
    Methods &methods = methods_of(file);
    methods = {*file->pMethods, file->pMethods, name};
    methods.xRead = read;
    methods.xWrite = write;
    methods.xSync = sync;
    methods.xTruncate = truncate;
    methods.xShmLock = lock;
    file->pMethods = &methods;
    return rc;
}

int delete_file(sqlite3_vfs *, const char *name, int sync_folder)
{
    recording.hear(Step::truncate, name, 0);
    return real_vfs->xDelete(real_vfs, name, sync_folder);
}

// Nobody holds what is said to be locked.
int do_not_sleep(sqlite3_vfs *, int microseconds)
{
    return microseconds;
}

} // namespace

FailingStorage::FailingStorage()
{
    real_vfs = sqlite3_vfs_find(nullptr);
    failing_vfs = *real_vfs;
    failing_vfs.zName = "failing";
    failing_vfs.pNext = nullptr;
    failing_vfs.szOsFile += static_cast<int>(sizeof(Methods));
    failing_vfs.xOpen = open_file;
    failing_vfs.xDelete = delete_file;
    failing_vfs.xSleep = do_not_sleep;
    sqlite3_vfs_register(&failing_vfs, 1);
}

FailingStorage::~FailingStorage()
{
    recording = {};
    sqlite3_vfs_unregister(&failing_vfs);
    sqlite3_vfs_register(real_vfs, 1);
}

FailingStorage::Failure::Failure(Step step, int n, int code, bool once)
{
    plan = {step, n, once ? n : INT_MAX, code, {}};
}

FailingStorage::Failure::~Failure()
{
    plan = {};
}

int FailingStorage::Failure::asked(Step step)
{
    return plan.asked[step];
}

void FailingStorage::record(const std::filesystem::path &database)
{
    recording = {database, {}, {}};
    for (const std::string &file : {recording.database, recording.database + "-wal"})
        recording.files[file] = read_file(file);
}

std::size_t FailingStorage::changes()
{
    return recording.changes.size();
}

void FailingStorage::cut(std::size_t after, const std::filesystem::path &survivor, Trials &trials)
{
    auto files = recording.files;
    std::map<std::string, std::vector<Change>> unsynced;
    for (std::size_t i = 0; i < std::min(after + 1, changes()); ++i) {
        Change change = recording.changes[i];
        std::vector<Change> &pending = unsynced[change.file];
        if (i < after && change.step == Step::sync) {
            for (const Change &synced : pending)
                synced.make(files[change.file]);
            pending.clear();
        } else {
            change.bytes.resize(i < after ? change.bytes.size() : trials.below(change.bytes.size() + 1));
            pending.push_back(std::move(change));
        }
    }
    for (const auto &[file, pending] : unsynced) {
        const std::size_t kept = trials.below(3); // of two
        for (const Change &change : pending)
            if (trials.below(2) < kept)
                change.make(files[file]);
    }
    for (const auto &[file, content] : files)
        write_file(survivor.string() + file.substr(recording.database.size()), content);
}

} // namespace qbobj_test
