// Workers of the operations on network interfaces.
#pragma once

#include "core/call.h"

#include <qbobj/netif.h>

namespace qbobj
{

int x_qbobj_getNetworkInterfaceCollection(Call &call, qbobj_NetworkInterfaceCollection_t *collection);
int x_qbobj_getNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif);
int x_qbobj_addNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif);
int x_qbobj_deleteNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif);
int x_qbobj_modifyNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif);

// A member that holds an IPv4 address, or nothing.
struct NetifAddress {
    const char *name;
    const char *qbobj_NetworkInterface_t::*member;
};
// The first whose text is no address; null when all are in order.
const NetifAddress *find_wrong_address(const qbobj_NetworkInterface_t &netif);

} // namespace qbobj
