// Network interfaces added.
#include "netif/netif.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

using Netif = qbobj_NetworkInterface_t;

int check_netif(Call &call, const Netif &netif)
{
    if (qbobj_validate_netif_name(netif.Name) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid NetworkInterface Name (%s)", netif.Name);
    if (netif.Mac == nullptr || qbobj_validate_mac(netif.Mac) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid NetworkInterface Mac (%s)", netif.Mac);
    if (const NetifAddress *wrong = find_wrong_address(netif); wrong != nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid NetworkInterface %s (%s)", wrong->name,
                     netif.*wrong->member);
    return 0;
}

int add_netif(Call &call, Netif &netif)
{
    if (const int rc = check_netif(call, netif))
        return rc;
    const Status status = call.run("INSERT INTO network_if (name,mac,protocol,ip,dns1,dns2,gateway,subnet) "
                                   "VALUES(%Q,%Q,%Q,%Q,%Q,%Q,%Q,%Q)",
                                   netif.Name, netif.Mac, netif.Protocol, netif.IP, netif.DNS1, netif.DNS2,
                                   netif.Gateway, netif.Subnet);
    if (status.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NetworkInterface Name (%s) is already exist.", netif.Name);
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO network_if'. %s",
                     status.error());
    return 0;
}

} // namespace

int x_qbobj_addNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif)
{
    return for_each(netif, add_netif, call);
}

} // namespace qbobj
