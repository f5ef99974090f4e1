// What can be said of a database file before it is used.
#pragma once

#include <sqlite3.h>

#include <string>

namespace qbdb
{

inline constexpr int application_id = 0x51424442; // "QBDB", marks a file as ours
inline constexpr const char *application_id_text = "1363297346";
static_assert(application_id == 1363297346);

// A failure with the text that a person reads; code 0 is none.
struct Problem {
    int code = 0;
    std::string text;

    explicit operator bool() const { return code != 0; }
};

struct FileFacts {
    int schema_version = 0;
    bool wal = false;            // the header asks for a write-ahead log
    bool pending_wal = false;    // a log with content stands beside the file
    bool readonly_place = false; // the file system is mounted for reading only
};

// Looks at the file without opening it, and refuses what is no file.
Problem inspect_place(const std::string &path, FileFacts &facts);

// Reads the header of the file that the connection has opened, and refuses what is no database of ours or cut short.
// The system would drop all locks that the process holds on the file if it were closed again after a look of our own.
Problem inspect_header(sqlite3 *db, const std::string &path, FileFacts &facts);

// The text of errno for what was tried with the path.
Problem system_problem(int code, const std::string &what, const std::string &path);

} // namespace qbdb
