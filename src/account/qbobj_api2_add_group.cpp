// New groups.
#include "account/group_changes.h"

namespace qbobj
{

namespace
{

constexpr int lowest_gid = 100;
constexpr int highest_gid = 32767;

// Gives the group the lowest free id.
int choose_group_id(Call &call, qbobj_Group_t &group)
{
        Number id = call.ask_number("SELECT 100 WHERE NOT EXISTS (SELECT * FROM `$group` WHERE id=100)");
    if (id && id.found == 0)
        id = call.ask_number("SELECT G1.id+1 FROM `$group` G1 WHERE G1.id>=100-1 AND G1.id<32767 "
                       "AND NOT EXISTS (SELECT * FROM `$group` G2 WHERE G2.id=G1.id+1) LIMIT 1");
    if (!id)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for group. %s", id.error());
    if (id.value < lowest_gid || id.value > highest_gid)
        return raise(call, QBOBJ_ERROR_DB_MISC, "No more gid available");
    group.GroupId = id.value;
    return 0;
}

int check_group_id(Call &call, const qbobj_Group_t &group)
{
    if (group.GroupId < lowest_gid || group.GroupId > highest_gid)
        return raise(call, QBOBJ_ERROR_API_ARGS, "GroupId=%d is out of valid range (%d-%d).", group.GroupId,
                     lowest_gid, highest_gid);
    const Number taken = call.ask_number("SELECT COUNT(*) FROM `$group` WHERE id=%d", group.GroupId);
    if (!taken)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for group. %s", taken.error());
    if (taken.value > 0)
        return raise(call, QBOBJ_ERROR_UI__GID_ALREADY_EXISTS, "GroupId (%d) already exists.", group.GroupId);
    return 0;
}

int add_group_quota(Call &call, int group_id, const qbobj_Quota_t &quota)
{
    const Status added = call.run(
        R"(INSERT INTO group_quota (group_id,share_id,mb_soft,mb_hard)
        VALUES(%d,(SELECT S.id FROM share S WHERE zfs_name=%Q),
        %lu*(SELECT diskquota_warn FROM account_default LIMIT 1),%lu))",
        group_id, quota.ShareId, quota.HardMB, quota.HardMB);
    if (!added)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT group_quota'. %s", added.error());
    return 0;
}

int add_group(Call &call, qbobj_Group_t &group)
{
    const char *name = nullptr;
    if (const int failed = check_new_group_name(call, group.GroupName, name); failed != 0)
        return failed;

    // A deleted group holds its name until the platform removes it.
        const Number namesakes = call.ask_number("SELECT COUNT(*) FROM `$group` WHERE gname=%Q", name);
    if (!namesakes)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'group'. %s", namesakes.error());
    if (namesakes.value > 0)
        return raise(call, QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, "Group (%s) already exists.", name);

    const int refused = group.GroupId < 1 ? choose_group_id(call, group) : check_group_id(call, group);
    if (refused != 0)
        return refused;

    const Status added =
        call.run("INSERT INTO `$group` (id,gname,is_privileged) VALUES(%d,%Q,0)", group.GroupId, name);
    if (!added)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT group'. %s", added.error());
    for (const qbobj_Quota_t &quota : Chain(group.GroupQuota))
        if (const int failed = add_group_quota(call, group.GroupId, quota); failed != 0)
            return failed;
    for (const qbobj_User_t &member : Chain(group.SecondaryMember))
        if (const int failed = add_secondary_member(call, group, group.GroupId, member); failed != 0)
            return failed;
    group.resource_id = group.GroupId;
    return 0;
}

} // namespace

int x_qbobj_addGroup(Call &call, qbobj_Group_t *group)
{
    for (qbobj_Group_t &element : Chain(group))
        if (const int failed = add_group(call, element); failed != 0)
            return failed;
    return 0;
}

} // namespace qbobj
