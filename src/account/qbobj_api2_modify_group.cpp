// Changes of groups: name, quotas, secondary members.
#include "account/group_changes.h"

namespace qbobj
{

namespace
{

// Renames the group. `old_name` receives its name so far, or null when that stays.
int rename_group(Call &call, int id, const char *given, const char *&old_name)
{
    const char *name = nullptr;
    if (const int failed = check_group_name(call, given, name); failed != 0)
        return failed;
    int holder = 0;
    if (qbobj_validate_db_groupname(call, name, nullptr, &holder) == 0 && holder != id)
        return raise(call, QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS,
                     "Cannot rename to group which already exists (%s).", name);

    const Text other = call.ask_text("SELECT G.gname FROM `$group` G WHERE G.id=%d AND G.gname<>%Q", id, name);
    if (!other)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT group'. %s", other.error());
    old_name = other.value;
    if (other.found == 0)
        return 0;
    const Status renamed = call.run("UPDATE `$group` SET gname=%Q WHERE id=%d", name, id);
    if (renamed.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, "Specified group name already exists");
    if (!renamed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE group'. %s", renamed.error());
    return 0;
}

// Sets the group's quota on one share; a limit of 0 takes it away. The messages name the users' table.
int set_group_quota(Call &call, int id, const qbobj_Quota_t &quota)
{
    if (quota.HardMB == 0) {
        const Status removed = call.run("DELETE FROM group_quota WHERE group_id=%d "
                                        "AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name=%Q)",
                                        id, quota.ShareId);
        if (!removed)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE user_quota. %s",
                         removed.error());
        return 0;
    }
    const Status set = call.run(
        R"(INSERT OR REPLACE INTO group_quota (group_id,share_id,mb_soft,mb_hard)
        VALUES(%d,(SELECT S.id FROM share S WHERE zfs_name=%Q),
        (%lu*(SELECT diskquota_warn FROM account_default LIMIT 1)),%lu))",
        id, quota.ShareId, quota.HardMB, quota.HardMB);
    if (!set)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE user_quota. %s", set.error());
    return 0;
}

// The members given, up to the first without a name, become the group's only ones.
int replace_members(Call &call, int id, const qbobj_Group_t &group)
{
    const Status emptied = call.run("DELETE FROM `$group_has_user` WHERE group_id=%d", id);
    if (!emptied)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE group_has_user. %s",
                     emptied.error());
    for (const qbobj_User_t &member : Chain(group.SecondaryMember)) {
        if (member.UserName == nullptr)
            break;
        if (const int failed = add_secondary_member(call, group, id, member); failed != 0)
            return failed;
    }
    return 0;
}

int modify_group(Call &call, qbobj_Group_t &group)
{
    const int id = key_of(group.resource_id, group.GroupId);
    if (id < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d).", id);
    if (qbobj_validate_db_groupid(call, id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", id);

    const char *old_name = nullptr;
    if (group.GroupName != nullptr)
        if (const int failed = rename_group(call, id, group.GroupName, old_name); failed != 0)
            return failed;
    for (const qbobj_Quota_t &quota : Chain(group.GroupQuota))
        if (const int failed = set_group_quota(call, id, quota); failed != 0)
            return failed;
    if (const int failed = replace_members(call, id, group); failed != 0)
        return failed;
    group.OldGroupName = old_name;
    return 0;
}

} // namespace

int x_qbobj_modifyGroup(Call &call, qbobj_Group_t *group)
{
    for (qbobj_Group_t &element : Chain(group))
        if (const int failed = modify_group(call, element); failed != 0)
            return failed;
    return 0;
}

} // namespace qbobj
