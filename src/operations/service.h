// Settings of the services.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple protocol_operations{
    refreshes<qbobj_getProtocolCollection>(appended("collection")),
    refreshes<qbobj_getProtocol>(in("ProtocolName"), out("protocol")),
    reads<qbobj_getSnmpOptions>(out("snmp_opts")),
    reads<qbobj_getHomeFolderOptions>(out("opts")),

    writes<qbobj_setProtocolCollection>(in_out("collection")),
    writes<qbobj_setProtocolEnable>(in("protocol"), in("enable")),
    writes<qbobj_setHomeFolderOptions>(in("opts")),
};

} // namespace qbobj
