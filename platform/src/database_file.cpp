// Looking at a database file from outside.
#include "database_file.h"
#include "file_descriptor.h"

#include <sqlite3.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace qbdb
{

namespace
{

constexpr std::size_t header_size = 100;
using Header = std::array<unsigned char, header_size>;

std::uint32_t big_endian(const Header &header, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; i++)
        value = value << 8 | header[i];
    return value;
}

std::int64_t page_size(const Header &header)
{
    const int size = header[16] << 8 | header[17];
    return size == 1 ? 65536 : size;
}

// With a log beside it the file may be in the midst of being brought up to date.
bool is_cut_short(const Header &header, std::int64_t size)
{
    const std::int64_t page = page_size(header);
    return page < 512 || size % page != 0 || size / page < big_endian(header, 28);
}

} // namespace

Problem system_problem(int code, const std::string &what, const std::string &path)
{
    return {code, "cannot " + what + " \"" + path + "\": " + std::strerror(errno)};
}

Problem inspect_file(const std::string &path, FileFacts &facts)
{
    struct stat status {
    };
    if (stat(path.c_str(), &status) != 0)
        return system_problem(SQLITE_CANTOPEN, "open", path);
    if (S_ISDIR(status.st_mode))
        return {SQLITE_CANTOPEN, "\"" + path + "\" is a directory"};
    if (!S_ISREG(status.st_mode))
        return {SQLITE_CANTOPEN, "\"" + path + "\" is not a regular file"};
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file)
        return system_problem(SQLITE_CANTOPEN, "read", path);

    constexpr char magic[] = "SQLite format 3";
    Header header{};
    const ssize_t got = pread(file.get(), header.data(), header.size(), 0);
    if (got < 0)
        return system_problem(SQLITE_IOERR, "read", path);
    if (std::memcmp(header.data(), magic, sizeof magic) != 0)
        return {SQLITE_NOTADB, "\"" + path + "\" is not a database"};
    if (static_cast<std::size_t>(got) < header.size())
        return {SQLITE_CORRUPT, "\"" + path + "\" is damaged: it is cut short"};
    if (big_endian(header, 68) != static_cast<std::uint32_t>(application_id))
        return {SQLITE_NOTADB, "\"" + path + "\" is a database of another application"};

    struct stat wal {
    };
    facts.pending_wal = stat((path + "-wal").c_str(), &wal) == 0 && wal.st_size > 0;
    if (!facts.pending_wal && is_cut_short(header, status.st_size))
        return {SQLITE_CORRUPT, "\"" + path + "\" is damaged: it is cut short"};
    struct statvfs place {
    };
    facts.readonly_place = fstatvfs(file.get(), &place) == 0 && (place.f_flag & ST_RDONLY) != 0;
    facts.schema_version = static_cast<int>(big_endian(header, 60));
    facts.wal = header[18] == 2;
    return {};
}

} // namespace qbdb
