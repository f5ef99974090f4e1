// Reading the parts of a share's record.
#pragma once

#include "core/call.h"

#include <qbobj/share.h>

namespace qbobj
{

// The share that is read.
struct ShareReading {
    Call &call;
    int share_id;
    bool ftp_anonymous; // FTP knows no users and groups
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

// Owner, permissions and access control list of the folder at `path`. A folder that cannot be examined leaves
// them empty; only a failing account look-up is an error.
int read_folder_stat(Call &call, const char *path, qbobj_FileStat_t &stat);

// The options of every protocol that the share has a row for, with their access lists, and its block volume.
int read_share_options(const ShareReading &reading, qbobj_Share_t &share);

} // namespace qbobj
