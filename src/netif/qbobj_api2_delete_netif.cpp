// Network interfaces deleted.
#include "netif/netif.h"

namespace qbobj
{
namespace
{

int delete_netif(Call &call, qbobj_NetworkInterface_t &netif)
{
    if (netif.Name == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NetworkInterface Name cannot be NULL.");
    if (const int rc =
            call.exec("Failed DELETE network_if. (%s)", "DELETE FROM network_if WHERE name=%Q", netif.Name))
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS,
                     "None of row is deleted. Specifie Name (%s) is not exist.", netif.Name);
    return 0;
}

} // namespace

int x_qbobj_deleteNetworkInterface(Call &call, qbobj_NetworkInterface_t *netif)
{
    return for_each(netif, delete_netif, call);
}

} // namespace qbobj
