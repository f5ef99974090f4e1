// What can be said of a database file without opening it.
#pragma once

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

// Reads the header of the file, and refuses what is no database of ours, is cut short or cannot be read.
Problem inspect_file(const std::string &path, FileFacts &facts);

// The text of errno for what was tried with the path.
Problem system_problem(int code, const std::string &what, const std::string &path);

} // namespace qbdb
