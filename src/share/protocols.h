// The protocols that shares are offered over.
#pragma once

#include <qbobj/share.h>

namespace qbobj
{

using Cifs = qbobj_CifsShareOption_t;
using Afp = qbobj_AfpShareOption_t;
using Nfs = qbobj_NfsShareOption_t;
using Ftp = qbobj_FtpShareOption_t;
using Http = qbobj_HttpShareOption_t;
using Dlna = qbobj_DlnaShareOption_t;
using Daap = qbobj_DaapShareOption_t;
using Rsync = qbobj_RsyncShareOption_t;

struct Protocol {
    const char *word;     // names the option table, the rows of the access lists and the service
    bool is_told = false; // its service wants to hear of every change to a share
};

// The protocol of an option record.
template <class Option>
inline constexpr Protocol protocol_of{};
template <>
inline constexpr Protocol protocol_of<Cifs>{"cifs", true};
template <>
inline constexpr Protocol protocol_of<Afp>{"afp"};
template <>
inline constexpr Protocol protocol_of<Nfs>{"nfs"};
template <>
inline constexpr Protocol protocol_of<Ftp>{"ftp", true};
template <>
inline constexpr Protocol protocol_of<Http>{"http"};
template <>
inline constexpr Protocol protocol_of<Dlna>{"dlna"};
template <>
inline constexpr Protocol protocol_of<Daap>{"daap"};
template <>
inline constexpr Protocol protocol_of<Rsync>{"rsync"};

} // namespace qbobj
