// Network interfaces read.
#include "netif/netif.h"

namespace qbobj
{
namespace
{

using Netif = qbobj_NetworkInterface_t;

constexpr char netifs[] =
    "SELECT N.name,N.mac,N.protocol,N.ip,N.dns1,N.dns2,N.gateway,N.subnet FROM network_if N";
constexpr std::tuple netif_members{
    or_empty(&Netif::Name), or_empty(&Netif::Mac),  or_empty(&Netif::Protocol), or_empty(&Netif::IP),
    or_empty(&Netif::DNS1), or_empty(&Netif::DNS2), or_empty(&Netif::Gateway),  or_empty(&Netif::Subnet)};

constexpr auto all_netifs_text = joined(netifs, " ORDER BY N.name COLLATE NOCASE");
constexpr auto all_netifs =
    select_into(all_netifs_text, "Failed DB Query for 'SELECT FROM network_interface'. %s", netif_members);

constexpr auto one_netif_text = joined(netifs, " WHERE N.name=%Q");
constexpr auto one_netif =
    select_into<const char *>(one_netif_text, "Failed DB Query for 'SELECT network_if'. %s", netif_members);

int get_netif(Call &call, Netif &netif)
{
    if (netif.Name == nullptr)
        return raise(call, QBOBJ_ERROR_DB_MISC, "NetworkInterface Name cannot be NULL.");
    return call.require(one_netif,
                        error(QBOBJ_ERROR_DB_NOTEXISTS, "NetworkInterface Name=%s not exist.", netif.Name),
                        netif, netif.Name);
}

} // namespace

int x_qbobj_getNetworkInterfaceCollection(Call &call, qbobj_NetworkInterfaceCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(all_netifs, collection->NetworkInterface);
}

int x_qbobj_getNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif)
{
    return for_each(netif, get_netif, call);
}

} // namespace qbobj
