// The Time Machine area and the login of the vault, written.
#include "service/service_device.h"
#include "validate/validate.h"

#include <cstring>

namespace qbobj
{
namespace
{

constexpr Failure user_failure("Failed DB Query for 'UPDATE user'. %s");
constexpr Failure afp_failure("Failed DB Query for 'UPDATE service_afp'. %s");
constexpr Failure avahi_failure("Failed DB Query for 'UPDATE service_avahi'. %s");
constexpr Failure quota_failure("Failed DB Query for 'UPDATE $timemachine_quota'. %s");

/* ---- The password of the area: a locked one begins with "!" -------------------------------------------- */

int unlock_password(Call &call)
{
    return call.exec(user_failure, "UPDATE `$user` SET passwd=replace(passwd,'!','') WHERE uname='Qubrix'");
}

int lock_password(Call &call)
{
    return call.exec(user_failure,
                     "UPDATE `$user` SET passwd='!'||replace(passwd,'!','') WHERE uname='Qubrix'");
}

int store_password(Call &call, const char *plain)
{
    if (plain == nullptr || std::strcmp(plain, masked_password) == 0)
        return unlock_password(call);
    const char *encoded = nullptr;
    if (const int rc = qbobj_validate_password(call, plain, &encoded); rc != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password (%s) rc=%d", plain, rc);
    return call.exec(user_failure, "UPDATE `$user` SET passwd=%Q WHERE uname='Qubrix'", encoded);
}

/* ---- The area ------------------------------------------------------------------------------------------ */

int enable_area(Call &call, const qbobj_Timemachine_t &area)
{
    if (const int rc = store_password(call, area.Password))
        return rc;
    if (const int rc = call.exec(afp_failure, R"(UPDATE service_afp SET enabled=1,timemachine_enabled=1,
        vol_size_limit_timemachine_mb=%d,volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1))",
                                 area.CapacityMB))
        return rc;
    if (const int rc = call.exec(avahi_failure, "UPDATE service_avahi SET afp=1,timemachine=1"))
        return rc;
    return call.exec(quota_failure,
                     "UPDATE '$timemachine_quota' SET enabled=1,capacity_mb=%d WHERE user_id=96",
                     area.CapacityMB);
}

int disable_area(Call &call)
{
    if (const int rc = lock_password(call))
        return rc;
    // Reported as a failure of the user table; callers depend on it.
    if (const int rc = call.exec(user_failure, "UPDATE service_avahi SET afp=0,timemachine=0"))
        return rc;
    if (const int rc = call.exec(quota_failure, "UPDATE '$timemachine_quota' SET enabled=0 WHERE user_id=96"))
        return rc;
    int32_t areas = 0;
    if (const int rc = call.number("Failed DB Query for service_afp. %s", areas,
                                   "SELECT COUNT(*) FROM '$timemachine_quota'"))
        return rc;
    // The areas of other accounts are still served.
    if (areas != 1)
        return 0;
    return call.exec(afp_failure, "UPDATE service_afp SET timemachine_enabled=0");
}

/* ---- The vault ----------------------------------------------------------------------------------------- */

int forget_login(Call &call)
{
    return call.exec("Failed DB Delete for service_vault update. %s", "DELETE FROM service_vault");
}

int store_login(Call &call, const qbobj_Vault_t &vault)
{
    const char *email = nullptr;
    if (const int rc = qbobj_validate_email(vault.UserName, &email); rc != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserName (%s) rc=%d", vault.UserName, rc);
    if (vault.UserPassword == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password.");
    if (vault.DefaultJob == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Default Job.");
    return call.exec("Failed DB Query for service_vault update. %s",
                     "INSERT INTO service_vault (enabled,name,password,defaultjob) VALUES(1,%Q,%Q,%Q)", email,
                     vault.UserPassword, vault.DefaultJob);
}

} // namespace

int x_qbobj_setTimemachine(Call &call, qbobj_Timemachine_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    return o->Enabled != 0 ? enable_area(call, *o) : disable_area(call);
}

int x_qbobj_setTimemachineEnable(Call &call, int enable)
{
    const int on = enable != 0 ? 1 : 0;
    if (const int rc = on != 0 ? unlock_password(call) : lock_password(call))
        return rc;
    if (const int rc = call.exec(afp_failure, "UPDATE service_afp SET timemachine_enabled=%d", on))
        return rc;
    return call.exec(avahi_failure, "UPDATE service_avahi SET timemachine=%d", on);
}

int x_qbobj_setVaultSettings(Call &call, qbobj_Vault_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    if (const int rc = forget_login(call))
        return rc;
    if (o->Action == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Action cannot be NULL.");
    // "logout", and any other word, ends with the account forgotten.
    const bool signs_in = qbobj_validate_string(o->Action, 0, "login", "registration", nullptr) == 0;
    return signs_in ? store_login(call, *o) : 0;
}

int x_qbobj_cleanVaultSettings(Call &call, qbobj_Vault_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    const int rc = forget_login(call);
    log(call, QBDB_LOG_DEBUG, "%s() rc=%d in user %s action\n", "x_qbobj_cleanVaultSettings", rc,
        or_empty(o->Action));
    return rc;
}

} // namespace qbobj
