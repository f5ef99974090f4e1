// Applications that rely on a dataset.
#include "share/share_reading.h"
#include "validate/validate.h"

#include <cstring>

namespace qbobj
{

namespace
{

int check_marker(Call &call, const qbobj_UsedBy_t *usedby)
{
    if (usedby == nullptr || usedby->AppName == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "usedby and usedby->AppName cannot be NULL");
    return 0;
}

} // namespace

int x_qbobj_getUsedByOn(Call &call, const char *ZfsName, qbobj_UsedBy_t **usedby)
{
    if (ZfsName == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "ZfsName cannot be NULL.");
    if (usedby == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "usedby cannot be NULL.");
    *usedby = nullptr;
    // A volume stands for every dataset whose name begins with its name, which is more than its own.
    const bool is_dataset = std::strchr(ZfsName, '/') != nullptr;
    const Table rows =
        is_dataset
            ? call.table("SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name=%Q",
                         ZfsName)
            : call.table(
                  "SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name like %Q||'%%'",
                  ZfsName);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM $application_on_share'. %s",
                     rows.error());
    append_rows(call, *usedby, used_by_columns, rows);
    return 0;
}

int x_qbobj_addShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby)
{
    if (const int rc = check_marker(call, usedby); rc != 0)
        return rc;
    const Status status = call.run(
        "INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES(%Q,%Q,%Q)",
        ShareId, usedby->AppName, usedby->AppData);
    // The message names another table; callers depend on it.
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT process_on_share'. %s",
                     status.error());
    return 0;
}

int x_qbobj_deleteShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby)
{
    if (const int rc = check_marker(call, usedby); rc != 0)
        return rc;
    const Status status = call.run("DELETE FROM `$application_on_share` WHERE zfs_name=%Q AND app_name=%Q",
                                   ShareId, usedby->AppName);
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE application_on_share'. %s",
                     status.error());
    return 0;
}

int x_qbobj_modifyShareUsedBy(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId, int share_id)
{
    if (ShareId != nullptr && qbobj_validate_db_zfsname(call, ShareId, nullptr, &share_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "ShareId=%s is not a valid ShareId", ShareId);
    const Status deleted = call.run(R"(DELETE FROM `$application_on_share`
        WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d))",
                                    share_id);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE $application_on_share'. %s",
                     deleted.error());
    for (const qbobj_UsedBy_t &marker : Chain(usedby)) {
        const Status inserted =
            call.run(R"(INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data)
            VALUES((SELECT S.zfs_name FROM share S WHERE S.id=%d),%Q,%Q))",
                     share_id, marker.AppName, marker.AppData);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT $application_on_share'. %s",
                         inserted.error());
    }
    return 0;
}

int x_qbobj_modifyShareUsedByExclusive(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId)
{
    if (usedby == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "usedby cannot be NULL.");
    const Status deleted = call.run("DELETE FROM `$application_on_share` WHERE app_name=%Q", usedby->AppName);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE $application_on_share'. %s",
                     deleted.error());
    if (ShareId == nullptr)
        return 0;
    const Status inserted =
        call.run(R"(INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data)
        VALUES((SELECT S.zfs_name FROM share S WHERE S.zfs_name=%Q),%Q,%Q))",
                 ShareId, usedby->AppName, usedby->AppData);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT $application_on_share'. %s",
                     inserted.error());
    return 0;
}

} // namespace qbobj
