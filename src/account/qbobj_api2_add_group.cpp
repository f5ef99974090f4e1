// New groups.
#include "account/group_changes.h"
#include "account/queries.h"
#include "account/quotas.h"

namespace qbobj
{
namespace
{

constexpr int lowest_gid = 100;
constexpr int highest_gid = 32767;

constexpr IdQuestions group_ids{"SELECT COUNT(*) FROM `$group` WHERE id BETWEEN %d AND %d",
                                "Failed DB Query for group. %s"};

// Gives the group the lowest free id. None is free below `mark`, which moves on behind it.
int choose_group_id(Call &call, int &mark, qbobj_Group_t &group)
{
    if (const int rc = find_first_gap(call, group_ids, mark, highest_gid, group.GroupId))
        return rc;
    if (group.GroupId > highest_gid)
        return raise(call, QBOBJ_ERROR_DB_MISC, "No more gid available");
    mark = group.GroupId + 1;
    return 0;
}

int check_group_id(Call &call, const qbobj_Group_t &group)
{
    if (group.GroupId < lowest_gid || group.GroupId > highest_gid)
        return raise(call, QBOBJ_ERROR_API_ARGS, "GroupId=%d is out of valid range (%d-%d).", group.GroupId,
                     lowest_gid, highest_gid);
    int taken = 0;
    if (const int rc = call.number("Failed DB Query for group. %s", taken,
                                   "SELECT COUNT(*) FROM `$group` WHERE id=%d", group.GroupId))
        return rc;
    if (taken > 0)
        return raise(call, QBOBJ_ERROR_UI__GID_ALREADY_EXISTS, "GroupId (%d) already exists.", group.GroupId);
    return 0;
}

// A deleted group holds its name until the platform removes it.
int check_name_is_free(Call &call, const char *name)
{
    int namesakes = 0;
    if (const int rc = call.number("Failed DB Query for 'group'. %s", namesakes,
                                   "SELECT COUNT(*) FROM `$group` WHERE gname=%Q", name))
        return rc;
    if (namesakes > 0)
        return raise(call, QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, "Group (%s) already exists.", name);
    return 0;
}

constexpr QuotaInsert new_quota{
    R"(INSERT INTO group_quota (group_id,share_id,mb_soft,mb_hard)
        VALUES(%d,(SELECT S.id FROM share S WHERE zfs_name=%Q),
        %lu*(SELECT diskquota_warn FROM account_default LIMIT 1),%lu))",
    "Failed DB Query for 'INSERT group_quota'. %s",
};

int add_group(Call &call, int &mark, qbobj_Group_t &group)
{
    const char *name = nullptr;
    if (const int rc = check_new_group_name(call, group.GroupName, name))
        return rc;
    if (const int rc = check_name_is_free(call, name))
        return rc;
    if (const int rc = group.GroupId < 1 ? choose_group_id(call, mark, group) : check_group_id(call, group))
        return rc;

    if (const int rc =
            call.exec("Failed DB Query for 'INSERT group'. %s",
                      "INSERT INTO `$group` (id,gname,is_privileged) VALUES(%d,%Q,0)", group.GroupId, name))
        return rc;
    if (const int rc = add_quotas(call, new_quota, group.GroupId, group.GroupQuota))
        return rc;
    for (const qbobj_User_t &member : Chain(group.SecondaryMember))
        if (const int rc = add_secondary_member(call, group, group.GroupId, member))
            return rc;
    group.resource_id = group.GroupId;
    return 0;
}

} // namespace

int x_qbobj_addGroup(Call &call, qbobj_Group_t *group)
{
    int mark = lowest_gid;
    return for_each(group, add_group, call, mark);
}

} // namespace qbobj
