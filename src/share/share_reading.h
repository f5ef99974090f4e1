// Reading the parts of a share's record: what the readers need, and how they report.
#pragma once

#include "core/call.h"
#include "share/share.h"

#include <qbobj/storage.h>

namespace qbobj
{

// The call, and the answers that cannot change while it reads shares.
struct ShareReading {
    Call &call;
    bool ftp_anonymous = false; // FTP knows no users and groups
};

// The table that could not be read, as messages name it, with the database's message.
struct FailedRead {
    const char *table = nullptr;
    const char *error = nullptr;

    explicit operator bool() const { return table != nullptr; }
};

// The access word of permission bits.
constexpr const char *access_word(int bits)
{
    constexpr int may_write = 2;
    constexpr int may_read = 4;
    if ((bits & may_write) != 0)
        return "ReadWrite";
    return (bits & may_read) != 0 ? "ReadOnly" : "Disabled";
}

// Several columns of a record's part.
template <class Record, class Part, class... Columns>
constexpr auto parts(Part *Record::*member, Columns... columns)
{
    return std::make_tuple(of(member, columns)...);
}

// Appends one record a row to the list.
template <class Record, class... Columns>
void append_rows(Call &call, Record *&list, const std::tuple<Columns...> &columns, const Table &rows)
{
    Tail<Record> tail(list);
    for (const Row row : rows)
        fill(call, tail.append(call.pool()), columns, row);
}

inline constexpr auto used_by_columns = std::tuple{&qbobj_UsedBy_t::AppName, &qbobj_UsedBy_t::AppData};

// Owner, permissions and access control list of the folder at `path`. A folder that cannot be examined leaves
// them empty; only a failing account look-up is an error.
int read_folder_stat(const ShareReading &reading, const char *path, qbobj_FileStat_t &stat);

// The options of every protocol that the share has a row for, with their access lists, and its block volume.
FailedRead read_share_options(const ShareReading &reading, int share_id, qbobj_Share_t &share);

} // namespace qbobj
