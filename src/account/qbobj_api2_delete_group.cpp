// Removal of groups: what hangs on a group goes, its own row is marked for the platform.
#include "account/queries.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

struct Removal {
    Statement<int> statement;
    const char *what;
};

constexpr std::array removals{
    Removal{"DELETE FROM group_quota WHERE group_id=%d", "group_quota"},
    Removal{"DELETE FROM _group_quota_stat WHERE group_id=%d", "_group_quota_stat"},
    Removal{"DELETE FROM `$group_has_user` WHERE group_id=%d", "group_has_user"},
};

int delete_group(Call &call, qbobj_Group_t &group)
{
    const int id = key_of(group.resource_id, group.GroupId);
    if (id < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d)", id);
    if (qbobj_validate_db_groupid(call, id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", id);

    const Number has_users = call.ask_number("SELECT EXISTS(SELECT * FROM `$user` U WHERE U.group_id=%d)", id);
    if (!has_users)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT user'. %s", has_users.error());
    if (has_users.value != 0)
        return raise(call, QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP, "Cannot remove group, has users.");
    const Text name = call.ask_text("SELECT gname FROM `$group` WHERE id=%d", id);
    if (!name)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT group'. %s", name.error());

    for (const Removal &removal : removals)
        if (const Status removed = call.run(removal.statement, id); !removed)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'DELETE %s'. %s", removal.what, removed.error());
    const Status marked = call.run("UPDATE `$group` SET is_privileged=-1 WHERE id=%d", id);
    if (!marked)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE FROM group'. %s", marked.error());
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'", id);
    group.GroupName = name.value;
    return 0;
}

} // namespace

int x_qbobj_deleteGroup(Call &call, qbobj_Group_t *group)
{
    for (qbobj_Group_t &element : Chain(group))
        if (const int failed = delete_group(call, element); failed != 0)
            return failed;
    return 0;
}

} // namespace qbobj
