// UPS devices, read.
#include "service/service_device.h"
#include "service/ups.h"

namespace qbobj
{
namespace
{

constexpr auto ups_columns = joined(
    R"(SELECT U.name||'@'||U.host,U.port,U.type,U.name,U.description,U.ups_model,U.ups_mfr,U.ups_mfr_date,U.ups_serial,
        U.shutdown_threshold,U.snmp_community,U.snmp_mibs,U.remote_username,U.remote_password,U.enabled,
        REPLACE(IFNULL(UH.ups_status,'?'),' ','_')
        FROM _ups_config U LEFT JOIN _ups_health UH ON UH.name=U.name AND UH.host=U.host)");
constexpr auto one_ups = joined(ups_columns.text, " WHERE %Q=U.name||'@'||U.host");

// The devices of one of the two statements.
template <class... Args>
consteval auto select_ups(Statement<Args...> sql)
{
    return select<Args...>(sql, "SQL Fail for SELECT _ups_config. %s", or_empty(&Ups::resource_id),
                           or_empty(&Ups::Port), or_empty(&Ups::Type), or_empty(&Ups::Name),
                           or_empty(&Ups::Description), or_empty(&Ups::UpsModel), or_empty(&Ups::UpsMfr),
                           or_empty(&Ups::UpsMfrDate), or_empty(&Ups::UpsSerial), &Ups::ShutdownThreshold,
                           or_empty(&Ups::SnmpCommunity), or_empty(&Ups::SnmpMibs),
                           or_empty(&Ups::RemoteUserName), or_empty(&Ups::RemotePassword), &Ups::Enabled,
                           or_empty(&Ups::UpsStatus));
}

constexpr auto every_ups_row = select_ups<>(ups_columns);
constexpr auto one_ups_row = select_ups<const char *>(one_ups);

constexpr auto sharing_row =
    select("SELECT U.enabled,U.listen1 FROM service_upsd U  LIMIT 1", "SQL Fail for SELECT service_upsd. %s",
           &Ups::Share_enabled, or_empty(&Ups::List1));

} // namespace

int x_qbobj_getUpsConfigCollection(Call &call, qbobj_UpsConfigCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    Tail<Ups> tail(collection->UpsConfig);
    return call.each<Ups>(every_ups_row, [&](const Ups &row) {
        Ups &ups = tail.append(call.pool(), row);
        return is_type(ups.Type, "local") ? call.read(sharing_row, ups) : 0;
    });
}

int x_qbobj_getUpsConfigByNameAtHost(Call &call, const char *NameAtHost, qbobj_UpsConfig_t **ups)
{
    if (ups == nullptr)
        return QBOBJ_ERROR_API_ARGS;
    return call.read_new(one_ups_row, *ups, NameAtHost);
}

} // namespace qbobj
