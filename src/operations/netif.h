// Network interfaces.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple netif_operations{
    reads<qbobj_getNetworkInterfaceCollection>(appended("collection")),
    reads<qbobj_getNetworkInterface>(in_out("netif")),

    writes<qbobj_addNetworkInterface>(in("netif")),
    writes<qbobj_deleteNetworkInterface>(in("netif")),
    writes<qbobj_modifyNetworkInterface>(in("netif")),
};

} // namespace qbobj
