// Changes of groups: name, quotas, secondary members.
#include "account/group_changes.h"
#include "account/queries.h"
#include "account/quotas.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

// Renames the group. `old_name` receives its name so far, or null when that stays.
int rename_group(Call &call, int id, const char *given, const char *&old_name)
{
    const char *name = nullptr;
    if (const int rc = check_group_name(call, given, name))
        return rc;
    int holder = 0;
    if (qbobj_validate_db_groupname(call, name, nullptr, &holder) == 0 && holder != id)
        return raise(call, QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS,
                     "Cannot rename to group which already exists (%s).", name);

    // A change of capitals is a change, though the column does not tell them apart.
    if (const int rc = call.text(
            "Failed DB Query for 'SELECT group'. %s", old_name,
            "SELECT G.gname FROM `$group` G WHERE G.id=%d AND G.gname<>%Q COLLATE BINARY", id, name))
        return rc;
    if (old_name == nullptr)
        return 0;
    return call.exec_unique({QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, "Specified group name already exists"},
                            "Failed DB Query for 'UPDATE group'. %s",
                            "UPDATE `$group` SET gname=%Q WHERE id=%d", name, id);
}

// The messages name the users' table.
constexpr QuotaDelete removed_quota{
    "DELETE FROM group_quota WHERE group_id=%d AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name=%Q)",
    "Failed DB Query for 'DELETE user_quota. %s",
};
constexpr QuotaInsert changed_quota{
    R"(INSERT OR REPLACE INTO group_quota (group_id,share_id,mb_soft,mb_hard)
        VALUES(%d,(SELECT S.id FROM share S WHERE zfs_name=%Q),
        (%lu*(SELECT diskquota_warn FROM account_default LIMIT 1)),%lu))",
    "Failed DB Query for 'UPDATE user_quota. %s",
};

// The members given, up to the first without a name, become the group's only ones.
int replace_members(Call &call, int id, const qbobj_Group_t &group)
{
    if (const int rc = call.exec("Failed DB Query for 'DELETE group_has_user. %s",
                                 "DELETE FROM `$group_has_user` WHERE group_id=%d", id))
        return rc;
    for (const qbobj_User_t &member : Chain(group.SecondaryMember)) {
        if (member.UserName == nullptr)
            break;
        if (const int rc = add_secondary_member(call, group, id, member))
            return rc;
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
        if (const int rc = rename_group(call, id, group.GroupName, old_name))
            return rc;
    if (const int rc = change_quotas(call, changed_quota, removed_quota, id, group.GroupQuota))
        return rc;
    if (const int rc = replace_members(call, id, group))
        return rc;
    group.OldGroupName = old_name;
    return 0;
}

} // namespace

int x_qbobj_modifyGroup(Call &call, qbobj_Group_t *group)
{
    return for_each(group, modify_group, call);
}

} // namespace qbobj
