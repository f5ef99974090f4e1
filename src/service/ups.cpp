// Checks of UPS devices.
#include "service/ups.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

constexpr std::size_t max_name = 15; // of a device, a login and its password

} // namespace

int check_ups_name(Call &call, const Ups &ups, const Site &site)
{
    switch (const int rc = qbobj_validate_simplename(ups.Name, max_name)) {
    case 0:
        return 0;
    case 3:
        return raise_at(site, call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "UPS Name (%s) is too long", ups.Name);
    case 2:
    case 4:
        return raise_at(site, call, QBOBJ_ERROR_UI__NAME_CONTAINS_INVALID_CHAR,
                        "UPS Name (%s) contains invalid char. Must be '[a-zA-Z][0-9a-zA-Z]*'.", ups.Name);
    default:
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid UPS Name (%s), rc=%d", ups.Name, rc);
    }
}

int check_ups_snmp(Call &call, const Ups &ups, const char *&mibs, const Site &site)
{
    mibs = is_empty(ups.SnmpMibs) ? "auto" : ups.SnmpMibs;
    if (qbobj_validate_string_array(mibs, 0, valid_snmp_ups_mibs) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid mibs (%s).", mibs);
    if (qbobj_validate_community(ups.SnmpCommunity) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid community (%s).", ups.SnmpCommunity);
    return 0;
}

int check_ups_login(Call &call, const Ups &ups, const Message<const char *> &wrong_password)
{
    const Site &site = wrong_password.site;
    if (ups.RemoteUserName == nullptr)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Need to specify RemoteUserName.");
    if (qbobj_validate_simplename(ups.RemoteUserName, max_name) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid remote NUT user name (%s).",
                        ups.RemoteUserName);
    if (ups.RemotePassword == nullptr)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Need to specify RemotePassword.");
    if (qbobj_validate_simplename(ups.RemotePassword, max_name) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, wrong_password, ups.RemotePassword);
    return 0;
}

} // namespace qbobj
