// The protocols that shares are offered over.
#pragma once

#include <qbobj/share.h>

namespace qbobj
{

struct Protocol {
    const char *word;     // names the option table, the rows of the access lists and the service
    bool is_told = false; // its service wants to hear of every change to a share
};

// The protocol of an option record.
template <class Option>
inline constexpr Protocol protocol_of{};
template <>
inline constexpr Protocol protocol_of<qbobj_CifsShareOption_t>{"cifs", true};
template <>
inline constexpr Protocol protocol_of<qbobj_AfpShareOption_t>{"afp"};
template <>
inline constexpr Protocol protocol_of<qbobj_NfsShareOption_t>{"nfs"};
template <>
inline constexpr Protocol protocol_of<qbobj_FtpShareOption_t>{"ftp", true};
template <>
inline constexpr Protocol protocol_of<qbobj_HttpShareOption_t>{"http"};
template <>
inline constexpr Protocol protocol_of<qbobj_DlnaShareOption_t>{"dlna"};
template <>
inline constexpr Protocol protocol_of<qbobj_DaapShareOption_t>{"daap"};
template <>
inline constexpr Protocol protocol_of<qbobj_RsyncShareOption_t>{"rsync"};

} // namespace qbobj
