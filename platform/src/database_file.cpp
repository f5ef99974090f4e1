// Looking at a database file from outside.
#include "database_file.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace qbdb
{

namespace
{

constexpr int header_size = 100;
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

Problem inspect_place(const std::string &path, FileFacts &facts)
{
    struct stat status {
    };
    if (stat(path.c_str(), &status) != 0)
        return system_problem(SQLITE_CANTOPEN, "open", path);
    if (S_ISDIR(status.st_mode))
        return {SQLITE_CANTOPEN, "\"" + path + "\" is a directory"};
    if (!S_ISREG(status.st_mode))
        return {SQLITE_CANTOPEN, "\"" + path + "\" is not a regular file"};
    struct stat wal {
    };
    facts.pending_wal = stat((path + "-wal").c_str(), &wal) == 0 && wal.st_size > 0;
    struct statvfs place {
    };
    facts.readonly_place = statvfs(path.c_str(), &place) == 0 && (place.f_flag & ST_RDONLY) != 0;
    return {};
}

Problem inspect_header(sqlite3 *db, const std::string &path, FileFacts &facts)
{
    constexpr char magic[] = "SQLite format 3";
    Header header{};
    sqlite3_int64 size = 0;
    sqlite3_file *file = nullptr;
    sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    int rc = file->pMethods->xFileSize(file, &size);
    if (rc == SQLITE_OK)
        rc = file->pMethods->xRead(file, header.data(), header_size, 0);
    if (rc != SQLITE_OK && rc != SQLITE_IOERR_SHORT_READ)
        return {SQLITE_IOERR, "cannot read \"" + path + "\": " + sqlite3_errstr(rc)};
    if (std::memcmp(header.data(), magic, sizeof magic) != 0)
        return {SQLITE_NOTADB, "\"" + path + "\" is not a database"};
    if (rc == SQLITE_IOERR_SHORT_READ)
        return {SQLITE_CORRUPT, "\"" + path + "\" is damaged: it is cut short"};
    if (big_endian(header, 68) != static_cast<std::uint32_t>(application_id))
        return {SQLITE_NOTADB, "\"" + path + "\" is a database of another application"};
    if (!facts.pending_wal && is_cut_short(header, size))
        return {SQLITE_CORRUPT, "\"" + path + "\" is damaged: it is cut short"};
    facts.schema_version = static_cast<int>(big_endian(header, 60));
    facts.wal = header[18] == 2;
    return {};
}

} // namespace qbdb
