// The defaults of new accounts, written.
#include "account/account.h"
#include "frame/sql.h"
#include "validate/validate.h"

using namespace qbobj;

int x_qbobj_setAccountDefault(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AccountDefault_t *account_default)
{
    if (account_default == nullptr)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "account_default cannot be NULL.");
    const qbobj_AccountDefault_t &defaults = *account_default;
    const char *volume_id = nullptr;
    if (qbobj_validate_db_volumeid(qbobj, db, defaults.HomeVolumeId, &volume_id) != 0)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "Invalid HomeVolumeId.");
    if (defaults.DiskQuotaWarn < 1 || defaults.DiskQuotaWarn > 99)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "Invalid DiskQuotaWarn. 1-99.");
    if (qbobj_validate_db_groupid(qbobj, db, defaults.GroupId) != 0)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "Invalid GroupId.");

    const Status updated = Sql(qbobj, db).exec(
        R"(UPDATE account_default SET home_volume_id=%Q,diskquota_warn=%d,group_id=%d,
        disallow_password_change=%d,home_folder_capacity_limit=%lu,group_membership=%Q,
        private_time_machine=%d,private_time_machine_space=%d,snapshot_protection=%d)",
        volume_id, defaults.DiskQuotaWarn, defaults.GroupId, defaults.DisallowPasswordChange,
        defaults.HomeFolderCapacityLimit, defaults.GroupMembership, defaults.PrivateTimeMachine,
        defaults.PrivateTimeMachineSpace, defaults.SnapshotProtection);
    if (!updated)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed update account_default table. (%s)",
                     updated.error());
    return 0;
}
