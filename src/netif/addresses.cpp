// The addresses of a network interface.
#include "netif/netif.h"
#include "validate/validate.h"

#include <algorithm>

namespace qbobj
{

const NetifAddress *find_wrong_address(const qbobj_NetworkInterface_t &netif)
{
    using Netif = qbobj_NetworkInterface_t;
    static constexpr NetifAddress addresses[] = {
        {"IP", &Netif::IP}, {"DNS1", &Netif::DNS1}, {"DNS2", &Netif::DNS2}, {"Gateway", &Netif::Gateway}};
    const auto *wrong = std::ranges::find_if(addresses, [&](const NetifAddress &address) {
        const char *text = netif.*address.member;
        return !is_empty(text) && qbobj_validate_ipv4(text) != 0;
    });
    return wrong == std::end(addresses) ? nullptr : wrong;
}

} // namespace qbobj
