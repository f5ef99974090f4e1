// Making a fresh database file.
#include "connection.h"
#include "database_file.h"
#include "file_descriptor.h"
#include "message.h"
#include "migration.h"
#include "schema_text.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>

using namespace qbdb;

namespace
{

// A file under a passing name, which goes away unless it is put in its place.
class PassingFile
{
  public:
    explicit PassingFile(const std::string &beside)
        : path_(beside + ".XXXXXX"), made_(FileDescriptor(mkostemp(path_.data(), O_CLOEXEC)))
    {
    }
    ~PassingFile()
    {
        if (!made_)
            return;
        unlink(path_.c_str());
        for (const char *suffix : {"-wal", "-shm", "-journal"})
            unlink((path_ + suffix).c_str());
    }
    PassingFile(const PassingFile &) = delete;
    PassingFile &operator=(const PassingFile &) = delete;

    explicit operator bool() const { return made_; }
    const std::string &path() const { return path_; }

  private:
    std::string path_;
    bool made_;
};

bool stands(const std::string &path)
{
    struct stat status {
    };
    return lstat(path.c_str(), &status) == 0;
}

Problem refuse_what_stands(const std::string &path)
{
    if (path.empty())
        return {SQLITE_MISUSE, "no path of the database was given"};
    if (stands(path))
        return {SQLITE_CANTOPEN, "\"" + path + "\" exists already"};
    // SQLite would take a log of that name for the new file's own.
    for (const char *suffix : {"-wal", "-journal"})
        if (stands(path + suffix))
            return {SQLITE_CANTOPEN, "\"" + path + suffix + "\" is left over from another database"};
    return {};
}

int fill(sqlite3 *db)
{
    // Nobody sees the file before it is complete, so that its making needs no journal of its own.
    int rc = run_plain(db, "PRAGMA journal_mode=MEMORY");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA synchronous=OFF");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "BEGIN IMMEDIATE");
    for (const char *const *text = schema_text; rc == SQLITE_OK && *text; text++)
        rc = sqlite3_exec(db, *text, nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA application_id=%d", application_id);
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA user_version=%d", schema_version());
    if (rc == SQLITE_OK)
        rc = run_plain(db, "COMMIT");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA journal_mode=WAL");
    return rc;
}

Problem build(const std::string &path, const std::string &wanted)
{
    sqlite3 *opened = nullptr;
    int rc = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    Connection db(opened);
    if (rc == SQLITE_OK)
        rc = fill(opened);
    if (rc != SQLITE_OK)
        return {rc, "cannot create \"" + wanted + "\": " + sqlite3_errmsg(opened)};
    return {};
}

bool sync(const std::string &path)
{
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file && fsync(file.get()) == 0;
}

std::string folder_of(const std::string &path)
{
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, slash + 1);
}

Problem create(const std::string &path)
{
    if (Problem problem = refuse_what_stands(path))
        return problem;
    const PassingFile file(path);
    if (!file)
        return system_problem(SQLITE_CANTOPEN, "create", path);
    if (Problem problem = build(file.path(), path))
        return problem;
    // Nothing of ours is open any more when others can open it: closing it would drop this process's locks.
    if (!sync(file.path()))
        return system_problem(SQLITE_IOERR, "write", path);
    // A link never replaces what another process has put there meanwhile.
    if (link(file.path().c_str(), path.c_str()) != 0)
        return system_problem(SQLITE_CANTOPEN, "create", path);
    sync(folder_of(path));
    return {};
}

} // namespace

int qbdb_create(const char *path, char *message, size_t size)
{
    return answer(message, size, [&] { return create(path ? path : ""); });
}
