// UPS devices, added.
#include "service/service_device.h"
#include "service/ups.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

constexpr int max_enabled = 6;
constexpr Failure insert_failure("Failed DB Query for 'INSERT _ups_config'. %s");

int add_local(Call &call, Ups &ups)
{
    if (const int rc =
            call.exec(insert_failure,
                      R"(INSERT INTO _ups_config (name,host,port,type,enabled,description,shutdown_threshold)
        VALUES(%Q,'localhost','auto',%Q,%d,%Q,%d))",
                      ups.Name, ups.Type, 1, ups.Description, ups.ShutdownThreshold))
        return rc;
    if (const int rc =
            call.exec("Failed DB Query for 'INSERT service_upsd'. %s",
                      "UPDATE service_upsd SET enabled=%d,listen1=%Q", ups.Share_enabled, ups.List1))
        return rc;
    ups.resource_id = print(call, "%s@localhost", ups.Name);
    return 0;
}

int add_snmp(Call &call, Ups &ups)
{
    const char *mibs = nullptr;
    if (const int rc = check_ups_snmp(call, ups, mibs))
        return rc;
    if (const int rc = call.exec(insert_failure, R"(INSERT INTO _ups_config
        (name,host,port,type,enabled,description,shutdown_threshold,snmp_community,snmp_mibs)
        VALUES(%Q,'localhost',%Q,%Q,%d,%Q,%d,%Q,%Q))",
                                 ups.Name, ups.Port, ups.Type, 1, ups.Description, ups.ShutdownThreshold,
                                 ups.SnmpCommunity, mibs))
        return rc;
    ups.resource_id = print(call, "%s@localhost", ups.Name);
    return 0;
}

int add_remote(Call &call, Ups &ups)
{
    if (const int rc = check_ups_login(call, ups, "Invalid remote NUT passwer (%s)."))
        return rc;
    if (const int rc = call.exec(insert_failure, R"(INSERT INTO _ups_config
        (name,host,port,type,enabled,description,shutdown_threshold,remote_username,remote_password)
        VALUES(%Q,%Q,%Q,%Q,%d,%Q,%d,%Q,%Q))",
                                 ups.Name, ups.Port, ups.Port, ups.Type, 1, ups.Description,
                                 ups.ShutdownThreshold, ups.RemoteUserName, ups.RemotePassword))
        return rc;
    ups.resource_id = print(call, "%s@%s", ups.Name, ups.Port);
    return 0;
}

constexpr TypeWork adders[] = {{"local", add_local}, {"snmp", add_snmp}, {"remote", add_remote}};

int add_ups(Call &call, Ups &ups)
{
    if (const int rc = check_ups_name(call, ups))
        return rc;
    if (qbobj_validate_string(ups.Type, 1, "local", "remote", "snmp", nullptr) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Type (%s), must be either 'remote' or 'snmp'.",
                     ups.Type);
    if (ups.Port != nullptr && qbobj_validate_ipv4(ups.Port) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Port (%s), must be IPv4 address.", ups.Port);
    int32_t enabled = 0;
    if (const int rc = call.number("SQL Fail for SELECT _ups_config. %s", enabled,
                                   "SELECT COUNT(*) FROM _ups_config WHERE enabled=1"))
        return rc;
    if (enabled >= max_enabled)
        return raise(call, QBOBJ_ERROR_UI__TOO_MANY_UPS, "Too many UPS. There are %d UPSs enalbed already.",
                     enabled);
    return do_by_type(call, ups, adders);
}

} // namespace

int x_qbobj_addUpsConfig(Call &call, qbobj_UpsConfig_t *ups)
{
    return for_each_ups(call, ups, add_ups);
}

} // namespace qbobj
