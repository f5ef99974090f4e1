// The defaults of new accounts, read.
#include "account/account.h"

namespace qbobj
{
namespace
{

using Default = qbobj_AccountDefault_t;

constexpr auto account_default_row = select(
    R"(SELECT A.home_volume_id,A.diskquota_warn,A.group_id,A.disallow_password_change,A.home_folder_capacity_limit,
        A.group_membership,A.private_time_machine,A.private_time_machine_space,A.snapshot_protection
        FROM account_default A LIMIT 1)",
    "Failed DB Query for account_default. %s", &Default::HomeVolumeId, &Default::DiskQuotaWarn,
    &Default::GroupId, &Default::DisallowPasswordChange, &Default::HomeFolderCapacityLimit,
    or_empty(&Default::GroupMembership), &Default::PrivateTimeMachine, &Default::PrivateTimeMachineSpace,
    &Default::SnapshotProtection);

} // namespace

int x_qbobj_getAccountDefault(Call &call, qbobj_AccountDefault_t *account_default)
{
    if (account_default == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "account_default cannot be NULL.");
    return call.require(
        account_default_row,
        error(QBOBJ_ERROR_DB_MISC, "DB may be corrupted? 'account_default' table is not populated."),
        *account_default);
}

} // namespace qbobj
