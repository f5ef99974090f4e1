// Removal of groups: what hangs on a group goes, its own row is marked for the platform.
#include "account/queries.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

constexpr AccountStatement removals[] = {
    {"DELETE FROM group_quota WHERE group_id=%d", "Failed 'DELETE group_quota'. %s"},
    {"DELETE FROM _group_quota_stat WHERE group_id=%d", "Failed 'DELETE _group_quota_stat'. %s"},
    {"DELETE FROM `$group_has_user` WHERE group_id=%d", "Failed 'DELETE group_has_user'. %s"},
    {"UPDATE `$group` SET is_privileged=-1 WHERE id=%d", "Failed DB Query for 'UPDATE FROM group'. %s"},
};

int delete_group(Call &call, qbobj_Group_t &group)
{
    const int id = key_of(group.resource_id, group.GroupId);
    if (id < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d)", id);
    if (qbobj_validate_db_groupid(call, id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", id);

    int has_users = 0;
    if (const int rc = call.number("Failed DB Query for 'SELECT user'. %s", has_users,
                                   "SELECT EXISTS(SELECT * FROM `$user` U WHERE U.group_id=%d)", id))
        return rc;
    if (has_users != 0)
        return raise(call, QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP, "Cannot remove group, has users.");
    const char *name = nullptr;
    if (const int rc = call.text("Failed DB Query for 'SELECT group'. %s", name,
                                 "SELECT gname FROM `$group` WHERE id=%d", id))
        return rc;

    if (const int rc = exec_each(call, removals, id))
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     id);
    group.GroupName = name;
    return 0;
}

} // namespace

int x_qbobj_deleteGroup(Call &call, qbobj_Group_t *group)
{
    return for_each(group, delete_group, call);
}

} // namespace qbobj
