// The defaults of new accounts, written.
#include "account/account.h"
#include "validate/validate.h"

namespace qbobj
{

int x_qbobj_setAccountDefault(Call &call, qbobj_AccountDefault_t *account_default)
{
    if (account_default == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "account_default cannot be NULL.");
    const qbobj_AccountDefault_t &defaults = *account_default;
    const char *volume_id = nullptr;
    if (qbobj_validate_db_volumeid(call, defaults.HomeVolumeId, &volume_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HomeVolumeId.");
    if (defaults.DiskQuotaWarn < 1 || defaults.DiskQuotaWarn > 99)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid DiskQuotaWarn. 1-99.");
    if (qbobj_validate_db_groupid(call, defaults.GroupId) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid GroupId.");
    return call.exec("Failed update account_default table. (%s)",
                     R"(UPDATE account_default SET home_volume_id=%Q,diskquota_warn=%d,group_id=%d,
        disallow_password_change=%d,home_folder_capacity_limit=%lu,group_membership=%Q,
        private_time_machine=%d,private_time_machine_space=%d,snapshot_protection=%d)",
                     volume_id, defaults.DiskQuotaWarn, defaults.GroupId, defaults.DisallowPasswordChange,
                     defaults.HomeFolderCapacityLimit, defaults.GroupMembership, defaults.PrivateTimeMachine,
                     defaults.PrivateTimeMachineSpace, defaults.SnapshotProtection);
}

} // namespace qbobj
