// Groups, read: listings, single groups with members and quotas, and the questions of identity about groups.
#include "account/queries.h"
#include "account/quotas.h"

namespace qbobj
{
namespace
{

using Group = qbobj_Group_t;
using User = qbobj_User_t;
using SystemGroup = qbobj_SystemGroup_t;

/* ---- Details of one group ------------------------------------------------------------------------------ */

constexpr auto group_quotas = select_quotas(
    R"(SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM group_quota Q INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _group_quota_stat QS ON QS.share_id=Q.share_id AND QS.group_id=Q.group_id WHERE Q.group_id=%d)",
    "Failed DB Query for group_quota. %s");

// Masked also when it is empty, unlike a user's own record.
constexpr auto member_password = [](const qbobj_env_t &, User &user, const char *cell) {
    user.Password = cell == nullptr ? empty_str : masked_password;
};

constexpr auto secondary_members = select<int>(
    R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group_has_user` GU INNER JOIN `$user` U ON U.id=GU.user_id
        WHERE GU.group_id=%d ORDER BY U.uname COLLATE NOCASE)",
    "Failed DB Query for 'user' and 'group'. %s", both(&User::resource_id, &User::UserId), &User::UserName,
    &User::GroupName, &User::HomeDirectory, or_empty(&User::Email), member_password, &User::IsDomainMember);

int read_details(Call &call, Group &group)
{
    if (const int rc = read_quotas(call, group_quotas, group.GroupId, group.GroupQuota))
        return rc;
    group.SecondaryMember = nullptr;
    return call.append(secondary_members, group.SecondaryMember, group.GroupId);
}

/* ---- Groups -------------------------------------------------------------------------------------------- */

constexpr Orders group_orders{"ORDER BY G.gname", "ORDER BY G.id", "ORDER BY G.gname DESC",
                              "ORDER BY G.id DESC"};

// By condition, filter, order and page.
constexpr auto listed_groups = select<const char *, const char *, const char *, const char *>(
    "SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE %s %s %s %s",
    "Failed DB Query for 'group'. %s", both(&Group::resource_id, &Group::GroupId), &Group::GroupName,
    &Group::IsDomainMember);

// There is no U in it, so the database refuses the statement: callers depend on that failure.
constexpr auto one_group = select<int>(
    R"(SELECT G.id,G.gname,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G
        WHERE G.is_privileged=0 AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.id=%d
        ORDER BY G.gname COLLATE NOCASE)",
    "Failed DB Query for 'group'. %s", &Group::GroupId, &Group::GroupName, &Group::IsDomainMember);

int read_group(Call &call, Group &group)
{
    const int key = key_of(group.resource_id, group.GroupId);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    bool found = false;
    if (const int rc = call.find(one_group, group, found, key); rc != 0 || !found)
        return rc;
    if (group.resource_id == 0)
        group.resource_id = group.GroupId;
    return read_details(call, group);
}

constexpr SystemAccounts system_groups{
    select<int, int, long long>(
        "SELECT G.id,G.gname FROM `$group` G WHERE G.id=%d OR (%d AND G.id=%lld AND G.rid IS NOT NULL)",
        "Failed DB Query for 'SELECT FROM group'. %s", skipped, &SystemGroup::GroupName),
    &SystemGroup::GroupId,
    &SystemGroup::GroupName,
    qbdb_util_get_domain_gname_by_gid,
};

// The group of a guest: the local group 'guest', or 'nogroup' where there is none.
int find_guest_group(Call &call, int *gid)
{
    const Text guest = call.ask_text("SELECT G.id FROM `$group` G WHERE G.gname='guest' AND G.rid IS NULL");
    if (!guest || guest.found != 0)
        return found_id(guest, gid);
    return found_id(call.ask_text("SELECT G.id FROM `$group` G WHERE G.gname='nogroup' AND G.rid IS NULL"),
                    gid);
}

} // namespace

int x_qbobj_getGroupCollection(Call &call, qbobj_GroupCollection_t *collection, qbobj_AccountQuery_t *query)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    qbobj_AccountQuery_t asked;
    if (const int rc = read_query(call, query, asked))
        return rc;

    const char *listable =
        print(call, "G.is_privileged=0 AND G.rid IS %sNULL AND G.gname<>'nogroup' AND G.gname<>'guest'",
              asked.ads != 0 ? "NOT " : "");
    const char *filter =
        is_empty(asked.name_like) ? "" : sql_text(call, "AND G.gname LIKE %Q", asked.name_like);

    if (const int rc = call.number("Failed DB Query for user. %s", collection->TotalEntries,
                                   "SELECT COUNT(*)  FROM `$group` G WHERE %s", listable))
        return rc;
    collection->Entries = collection->TotalEntries;
    if (!is_empty(filter))
        if (const int rc = call.number("Failed DB Query for user. %s", collection->Entries,
                                       "SELECT COUNT(*)  FROM `$group` G WHERE %s %s", listable, filter))
            return rc;
    Group *&groups = end_of(collection->Group);
    if (const int rc = call.append(listed_groups, groups, listable, filter, group_orders.chosen(asked.order),
                                   limit_clause(call, asked)))
        return rc;
    return for_each(groups, read_details, call);
}

int x_qbobj_getGroup(Call &call, qbobj_Group_t *group)
{
    if (group == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group cannot be NULL.");
    return for_each(group, read_group, call);
}

int read_system_group(Call &call, qbobj_SystemGroup_t &group)
{
    return read_system_account(call, system_groups, group);
}

int x_qbobj_getSystemGroup(Call &call, qbobj_SystemGroup_t *group)
{
    if (group == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group cannot be NULL.");
    return for_each(group, read_system_group, call);
}

/* ---- Identity ------------------------------------------------------------------------------------------ */

int x_qbobj_getGID(Call &call, const char *gname, int *gid)
{
    if (gid == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "gid cannot be NULL.");
    if (gname == nullptr)
        return find_guest_group(call, gid);
    // Local and privileged groups only, in directory mode too, unlike users.
    return found_id(
        call.ask_text("SELECT G.id FROM `$group` G WHERE G.gname=%Q AND (G.rid IS NULL OR G.is_privileged=1)",
                      gname),
        gid);
}

int x_qbobj_getPrimaryGID(Call &call, const char *uname, int *gid)
{
    if (gid == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "gid cannot be NULL.");
    if (uname == nullptr)
        return find_guest_group(call, gid);
    return found_id(call.ask_text("SELECT U.group_id FROM `$user` U WHERE U.uname=%Q", uname), gid);
}

int x_qbobj_getGroupName(Call &call, int gid, char **gname)
{
    require(gname != nullptr, "gname", __func__);
    return found_name(call, call.ask_text("SELECT G.gname FROM `$group` G WHERE G.id=%d", gid), gid, gname);
}

int x_qbobj_getPosixGID(Call &call, const char *gname)
{
    int gid = -1;
    if (x_qbobj_getGID(call, gname, &gid) == 0)
        return posix_groups.of_id(call, gid);
    return call.directory().ads ? posix_groups.of_domain_name(call, gname) : -1;
}

int x_qbobj_getPosixGIDbyGID(Call &call, int gid)
{
    return posix_groups.of_id(call, gid);
}

int x_qbobj_isMemberOfGroup(Call &call, const char *uname, const char *gname)
{
    const Number primary = call.ask_number("SELECT 1 FROM `$user` U INNER JOIN `$group` G ON G.id=U.group_id "
                                           "WHERE U.uname=%Q AND G.gname=%Q",
                                           uname, gname);
    if (!primary)
        return -1;
    if (primary.value == 1)
        return 0;
    const Number secondary = call.ask_number(
        R"(SELECT 1 FROM `$user` U INNER JOIN `$group_has_user` GU ON GU.user_id=U.id
        INNER JOIN `$group` G ON G.id=GU.group_id WHERE U.uname=%Q AND G.gname=%Q)",
        uname, gname);
    if (!secondary)
        return -1;
    return secondary.value == 1 ? 0 : 1;
}

} // namespace qbobj
