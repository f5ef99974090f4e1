// Network interfaces changed.
#include "core/set_list.h"
#include "netif/netif.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

using Netif = qbobj_NetworkInterface_t;

// The network mask is not among them: it stays as it was created.
constexpr std::tuple netif_changes{change<&Netif::Mac>("mac=%Q"),   change<&Netif::Protocol>("protocol=%Q"),
                                   change<&Netif::IP>("ip=%Q"),     change<&Netif::DNS1>("dns1=%Q"),
                                   change<&Netif::DNS2>("dns2=%Q"), change<&Netif::Gateway>("gateway=%Q")};

int check_netif(Call &call, const Netif &netif)
{
    if (netif.Name == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NetworkInterface Name cannot be NULL.");
    if (netif.Mac != nullptr && qbobj_validate_mac(netif.Mac) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NetworkInterface Mac (%s) is invalid.", netif.Mac);
    if (const NetifAddress *wrong = find_wrong_address(netif); wrong != nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NetworkInterface %s (%s) is invalid.", wrong->name,
                     netif.*wrong->member);
    return 0;
}

int modify_netif(Call &call, Netif &netif)
{
    if (const int rc = check_netif(call, netif))
        return rc;
    SetList<512> set(call, Overflow::refuse);
    set.add_given(netif, netif_changes);
    if (set.refused() != nullptr)
        return raise_refused(call, set);
    if (set.empty())
        return raise(call, QBOBJ_ERROR_API_ARGS, "Nothing to change of NetworkInterface (%s).", netif.Name);
    return call.exec("Failed 'UPDATE network_if'. %s", "UPDATE network_if SET %s WHERE Name=%Q", set.text(),
                     netif.Name);
}

} // namespace

int x_qbobj_modifyNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif)
{
    return for_each(netif, modify_netif, call);
}

} // namespace qbobj
