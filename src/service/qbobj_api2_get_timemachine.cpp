// The Time Machine area and the login of the vault, read.
#include "service/service_device.h"

#include <cstring>

namespace qbobj
{
namespace
{

using Area = qbobj_Timemachine_t;
using Vault = qbobj_Vault_t;

constexpr auto area_row = select(
    R"(SELECT T.enabled,S.vol_size_limit_timemachine_mb,IFNULL(V.blk_free*V.blk_size,0)/1000/1000
        FROM service_afp S, _volume V, '$timemachine_quota' T
        WHERE V.id=IFNULL(S.volume_timemachine,(SELECT AD.home_volume_id FROM account_default AD LIMIT 1))
        AND T.user_id=96)",
    "Failed DB Query 'SELECT service_afp'. (%s)", &Area::Enabled, &Area::CapacityMB, &Area::MaxCapacityMB);

// The password stays in the database.
constexpr auto vault_row = select("SELECT V.name,V.password,V.defaultjob FROM service_vault V",
                                  "Failed 'SELECT service_vault'. (%s)", or_empty(&Vault::UserName), skipped,
                                  or_empty(&Vault::DefaultJob));

constexpr Failure misc_failure("Failed 'SELECT service_misc'. (%s)");

} // namespace

int x_qbobj_getTimemachine(Call &call, qbobj_Timemachine_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    bool found = false;
    if (const int rc = find_only(call, area_row, *o, found))
        return rc;
    if (!found)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "Qubrix system user not exist.");
    int32_t without_password = 0;
    if (const int rc = call.number("Failed DB Query 'SELECT user'. (%s)", without_password,
                                   R"(SELECT CASE WHEN U.passwd='!' OR U.passwd='*' THEN 1 ELSE 0 END
        FROM `$user` U WHERE U.uname='Qubrix')"))
        return rc;
    o->UserName = "Qubrix";
    o->Password = without_password != 0 ? empty_str : masked_password;
    return 0;
}

int x_qbobj_getVaultSettings(Call &call, qbobj_Vault_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    *o = {};
    if (const int rc =
            call.text(misc_failure, o->Enabled, "SELECT val FROM service_misc WHERE key='QUBRIXVAULT'"))
        return rc;
    o->Enabled = or_empty(o->Enabled);
    if (std::strcmp(o->Enabled, "1") == 0) {
        if (const int rc = call.text(misc_failure, o->Volume,
                                     "SELECT val FROM service_misc WHERE key='QUBRIXVAULT_TEP_FOLDER'"))
            return rc;
        o->Volume = or_empty(o->Volume);
    }
    bool found = false;
    return find_only(call, vault_row, *o, found);
}

} // namespace qbobj
