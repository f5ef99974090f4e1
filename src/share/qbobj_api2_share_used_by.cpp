// Applications that rely on a dataset.
#include "share/share.h"
#include "validate/validate.h"

#include <cstring>

namespace qbobj
{

namespace
{

constexpr auto markers_of_dataset =
    select<const char *>("SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name=%Q",
                         "Failed DB Query for 'SELECT FROM $application_on_share'. %s",
                         &qbobj_UsedBy_t::AppName, &qbobj_UsedBy_t::AppData);
constexpr auto markers_of_volume = select<const char *>(
    "SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name like %Q||'%%'",
    "Failed DB Query for 'SELECT FROM $application_on_share'. %s", &qbobj_UsedBy_t::AppName,
    &qbobj_UsedBy_t::AppData);

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
    return std::strchr(ZfsName, '/') != nullptr ? call.append(markers_of_dataset, *usedby, ZfsName)
                                                : call.append(markers_of_volume, *usedby, ZfsName);
}

int x_qbobj_addShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby)
{
    if (const int rc = check_marker(call, usedby))
        return rc;
    // The message names another table; callers depend on it.
    return call.exec(
        "Failed DB Query for 'INSERT process_on_share'. %s",
        "INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES(%Q,%Q,%Q)",
        ShareId, usedby->AppName, usedby->AppData);
}

int x_qbobj_deleteShareUsedBy(Call &call, const char *ShareId, qbobj_UsedBy_t *usedby)
{
    if (const int rc = check_marker(call, usedby))
        return rc;
    return call.exec("Failed DB Query for 'DELETE application_on_share'. %s",
                     "DELETE FROM `$application_on_share` WHERE zfs_name=%Q AND app_name=%Q", ShareId,
                     usedby->AppName);
}

int x_qbobj_modifyShareUsedBy(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId, int share_id)
{
    if (ShareId != nullptr && qbobj_validate_db_zfsname(call, ShareId, nullptr, &share_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "ShareId=%s is not a valid ShareId", ShareId);
    if (const int rc = call.exec("Failed DB Query for 'DELETE $application_on_share'. %s",
                                 R"(DELETE FROM `$application_on_share`
            WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d))",
                                 share_id))
        return rc;
    for (const qbobj_UsedBy_t &marker : Chain(usedby))
        if (const int rc =
                call.exec("Failed DB Query for 'INSERT $application_on_share'. %s",
                          R"(INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data)
                VALUES((SELECT S.zfs_name FROM share S WHERE S.id=%d),%Q,%Q))",
                          share_id, marker.AppName, marker.AppData))
            return rc;
    return 0;
}

int x_qbobj_modifyShareUsedByExclusive(Call &call, qbobj_UsedBy_t *usedby, const char *ShareId)
{
    if (usedby == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "usedby cannot be NULL.");
    if (const int rc = call.exec("Failed DB Query for 'DELETE $application_on_share'. %s",
                                 "DELETE FROM `$application_on_share` WHERE app_name=%Q", usedby->AppName))
        return rc;
    if (ShareId == nullptr)
        return 0;
    return call.exec("Failed DB Query for 'INSERT $application_on_share'. %s",
                     R"(INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data)
        VALUES((SELECT S.zfs_name FROM share S WHERE S.zfs_name=%Q),%Q,%Q))",
                     ShareId, usedby->AppName, usedby->AppData);
}

} // namespace qbobj
