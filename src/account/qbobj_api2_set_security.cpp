// How the appliance authenticates file-sharing users, written.
#include "account/account.h"
#include "core/set_list.h"
#include "validate/validate.h"

#include <strings.h>

namespace qbobj
{

int x_qbobj_setSecurity(Call &call, qbobj_Security_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    SetList<512> set(call, Overflow::refuse);
    if (o->Security == nullptr || qbobj_validate_string(o->Security, 0, "user", "ads", nullptr) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Security is not valid");
    set.add("security=%Q", o->Security);
    if (qbobj_validate_workgroup(o->workGroup) != 0)
        return raise(call, QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP, "Bad workgroup");
    set.add("workgroup=%Q", o->workGroup);
    if (strcasecmp(o->Security, "ads") == 0) {
        if (qbobj_validate_host(o->Realm) != 0)
            return raise(call, QBOBJ_ERROR_UI__ADS_BAD_REALM, "Bad realm (%s)", o->Realm);
        if (!is_empty(o->passWordServer) && qbobj_validate_host(o->passWordServer) != 0)
            return raise(call, QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER, "Bad login server (%s)",
                         o->passWordServer);
    }
    // Written in local mode too, where the realm is not checked. The domain's password is never stored.
    set.add("realm=%Q", o->Realm);
    set.add("orgunit=%Q", o->orgUnit);
    set.add("restrict_ou=%Q", o->restrictOU);
    set.add("no_sync_ads=%d", o->noSyncADS);
    set.add("domain_admin_user=%Q", o->domainAdministrator);
    set.add("password_server=%Q", o->passWordServer);
    set.add("allow_trusted_domains=%d", o->displayTrustedUsers);
    if (set.refused() != nullptr)
        return raise_refused(call, set);
    return call.exec("Failed DB Query 'UPDATE service_cifs'. (%s)", "UPDATE service_cifs SET %s", set.text());
}

} // namespace qbobj
