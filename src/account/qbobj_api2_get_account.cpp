// The defaults of new accounts, read.
#include "account/account.h"
#include "frame/rows.h"

using namespace qbobj;

namespace
{

constexpr auto default_columns = std::tuple{
    &qbobj_AccountDefault_t::HomeVolumeId,
    &qbobj_AccountDefault_t::DiskQuotaWarn,
    &qbobj_AccountDefault_t::GroupId,
    &qbobj_AccountDefault_t::DisallowPasswordChange,
    &qbobj_AccountDefault_t::HomeFolderCapacityLimit,
    or_empty(&qbobj_AccountDefault_t::GroupMembership),
    &qbobj_AccountDefault_t::PrivateTimeMachine,
    &qbobj_AccountDefault_t::PrivateTimeMachineSpace,
    &qbobj_AccountDefault_t::SnapshotProtection,
};

} // namespace

int x_qbobj_getAccountDefault(qbobj_env_t *qbobj, sqlite3 *db, qbobj_AccountDefault_t *account_default)
{
    if (account_default == nullptr)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "account_default cannot be NULL.");
    const Table rows = Sql(qbobj, db).table(R"(SELECT A.home_volume_id,A.diskquota_warn,A.group_id,
        A.disallow_password_change,A.home_folder_capacity_limit,A.group_membership,A.private_time_machine,
        A.private_time_machine_space,A.snapshot_protection FROM account_default A LIMIT 1)");
    if (!rows)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for account_default. %s", rows.error());
    if (rows.empty())
        return raise(qbobj, QBOBJ_ERROR_DB_MISC,
                     "DB may be corrupted? 'account_default' table is not populated.");
    fill(qbobj, *account_default, default_columns, rows.front());
    return 0;
}
