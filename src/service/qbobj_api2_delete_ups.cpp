// UPS devices, removed.
#include "service/service_device.h"
#include "service/ups.h"

namespace qbobj
{
namespace
{

constexpr auto type_row =
    select<const char *>("SELECT U.type FROM _ups_config U  WHERE name||'@'||host=%Q LIMIT 1",
                         "Failed DB Query for 'get _ups_config'. %s", or_empty(&Ups::Type));

int delete_ups(Call &call, Ups &ups)
{
    if (ups.resource_id == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NULL resource_id");
    Ups stored{};
    if (const int rc = call.require(
            type_row,
            error(QBOBJ_ERROR_API_ARGS, "Specified resource-id='%s' does not exist.", ups.resource_id),
            stored, ups.resource_id))
        return rc;
    if (is_type(stored.Type, "local"))
        if (const int rc = call.exec("Failed DB Query for 'UPDATE service_upsd'. %s",
                                     "UPDATE service_upsd SET enabled=0"))
            return rc;
    return call.exec("Failed DB Query for 'DELETE _ups_config'. %s",
                     "DELETE FROM _ups_config WHERE name||'@'||host=%Q", ups.resource_id);
}

} // namespace

int x_qbobj_deleteUpsConfig(Call &call, qbobj_UpsConfig_t *ups)
{
    return for_each_ups(call, ups, delete_ups);
}

} // namespace qbobj
