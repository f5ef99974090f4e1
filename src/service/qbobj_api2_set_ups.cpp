// UPS devices, changed: their settings, and what they report of themselves.
#include "service/service_device.h"
#include "service/ups.h"

namespace qbobj
{
namespace
{

constexpr auto type_row =
    select<const char *>("SELECT U.type FROM _ups_config U WHERE U.name||'@'||U.host=%Q",
                         "Error 'SELECT _ups_config. %s'.", or_empty(&Ups::Type));

int read_stored(Call &call, const char *resource_id, Ups &stored)
{
    return call.require(type_row, error(QBOBJ_ERROR_API_ARGS, "No UPS for resource-id='%s'.", resource_id),
                        stored, resource_id);
}

/* ---- Settings. These updates change every device; with a single one, that is it ------------------------ */

int set_local(Call &call, Ups &ups)
{
    if (const int rc =
            call.exec("Failed DB Query for 'UPDATE _ups_config' for LOCAL ups. %s",
                      "UPDATE _ups_config SET enabled=%d,name=%Q,description=%Q,shutdown_threshold=%d",
                      ups.Enabled, ups.Name, ups.Description, ups.ShutdownThreshold))
        return rc;
    return call.exec("Failed DB Query for 'INSERT service_upsd'. %s",
                     "UPDATE service_upsd SET enabled=%d,listen1=%Q", ups.Share_enabled, ups.List1);
}

// The statement lacks its last value, so that the database refuses it: a remote device cannot be changed, and callers
// depend on this failure.
int set_remote(Call &call, Ups &ups)
{
    if (const int rc = check_ups_login(call, ups, "Invalid remote NUT password (%s)."))
        return rc;
    return call.exec(
        "Failed DB Query for 'UPDATE _ups_config' for REMOTE ups. %s",
        "UPDATE _ups_config SET enabled=1,name=%Q,description='',remote_username=%Q,remote_password",
        ups.Name, ups.RemoteUserName);
}

int set_snmp(Call &call, Ups &ups)
{
    const char *mibs = nullptr;
    if (const int rc = check_ups_snmp(call, ups, mibs))
        return rc;
    return call.exec("Failed DB Query for 'UPDATE _ups_config' for SNMP ups. %s",
                     R"(UPDATE _ups_config SET enabled=1,name=%Q,description=%Q,shutdown_threshold=%d,
        snmp_community=%Q,snmp_mibs=%Q)",
                     ups.Name, ups.Description, ups.ShutdownThreshold, ups.SnmpCommunity, mibs);
}

constexpr TypeWork setters[] = {{"local", set_local}, {"remote", set_remote}, {"snmp", set_snmp}};

int set_ups(Call &call, Ups &ups)
{
    if (ups.resource_id == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource-id (%s)", ups.resource_id);
    Ups stored{};
    if (const int rc = read_stored(call, ups.resource_id, stored))
        return rc;
    if (!is_type(ups.Type, stored.Type))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot change UPS type %s-->%s.", stored.Type, ups.Type);
    if (const int rc = check_ups_name(call, ups))
        return rc;
    return do_by_type(call, ups, setters);
}

/* ---- What the device reports --------------------------------------------------------------------------- */

int set_info(Call &call, Ups &ups)
{
    if (ups.resource_id == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "NULL resource_id");
    Ups stored{};
    if (const int rc = read_stored(call, ups.resource_id, stored))
        return rc;
    constexpr Failure failure("Failed DB Query for 'UPDATE _ups_config'. %s");
    if (const int rc = call.exec(failure, R"(UPDATE _ups_config
        SET ups_model=%Q,ups_mfr=%Q,ups_mfr_date=%Q,ups_serial=%Q WHERE name||'@'||host=%Q)",
                                 ups.UpsModel, ups.UpsMfr, ups.UpsMfrDate, ups.UpsSerial, ups.resource_id))
        return rc;
    // The threshold of a remote device is its server's.
    if (!is_type(stored.Type, "remote"))
        return 0;
    return call.exec(failure, "UPDATE _ups_config SET shutdown_threshold=%d WHERE name||'@'||host=%Q",
                     ups.ShutdownThreshold, ups.resource_id);
}

} // namespace

int x_qbobj_setUpsConfig(Call &call, qbobj_UpsConfig_t *ups)
{
    return for_each_ups(call, ups, set_ups);
}

int x_qbobj_setUpsInfo(Call &call, qbobj_UpsConfig_t *ups)
{
    return for_each_ups(call, ups, set_info);
}

} // namespace qbobj
