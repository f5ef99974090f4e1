// Groups, read: listings, single groups with members and quotas, and the questions of identity about groups.
#include "account/queries.h"

namespace qbobj
{

namespace
{

constexpr Orders group_orders{"ORDER BY G.gname", "ORDER BY G.id", "ORDER BY G.gname DESC",
                              "ORDER BY G.id DESC"};

constexpr auto group_columns =
    std::tuple{&qbobj_Group_t::GroupId, &qbobj_Group_t::GroupName, &qbobj_Group_t::IsDomainMember};

constexpr auto member_columns = std::tuple{
    both(&qbobj_User_t::resource_id, &qbobj_User_t::UserId),
    &qbobj_User_t::UserName,
    &qbobj_User_t::GroupName,
    &qbobj_User_t::HomeDirectory,
    or_empty(&qbobj_User_t::Email),
    // Masked also when it is empty, unlike a user's own record.
    [](const qbobj_env_t &, qbobj_User_t &user, const char *cell) {
        user.Password = cell == nullptr ? empty_str : masked_password;
    },
    &qbobj_User_t::IsDomainMember,
};

int fill_group(Call &call, const Row &row, qbobj_Group_t &group)
{
    fill(call, group, group_columns, row);
    if (group.resource_id == 0)
        group.resource_id = group.GroupId;
    if (const int failed = _getGroupQuota(call, &group); failed != 0)
        return failed;
    return _getSecondaryMember(call, &group);
}

int read_group(Call &call, qbobj_Group_t &group)
{
    const int key = key_of(group.resource_id, group.GroupId);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    // There is no U in it, so the database refuses the statement: callers depend on that failure.
    const Table rows = call.table(
        R"(SELECT G.id,G.gname,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G
        WHERE G.is_privileged=0 AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.id=%d
        ORDER BY G.gname COLLATE NOCASE)",
        key);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'group'. %s", rows.error());
    return rows.empty() ? 0 : fill_group(call, *rows.begin(), group);
}

// The group of a guest: the local group 'guest', or 'nogroup' where there is none.
int find_guest_group(Call &call, int *gid)
{
        const Text guest = call.ask_text("SELECT G.id FROM `$group` G WHERE G.gname='guest' AND G.rid IS NULL");
    if (!guest || guest.found != 0)
        return found_id(guest, gid);
    return found_id(call.ask_text("SELECT G.id FROM `$group` G WHERE G.gname='nogroup' AND G.rid IS NULL"), gid);
}

} // namespace

/* ---- Details of one group ------------------------------------------------------------------------------ */

qbobj_error_t _getGroupQuota(Call &call, qbobj_Group_t *group)
{
    const Table rows = call.table(
        R"(SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM group_quota Q INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _group_quota_stat QS ON QS.share_id=Q.share_id AND QS.group_id=Q.group_id WHERE Q.group_id=%d)",
        group->GroupId);
    if (!rows) {
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for group_quota. %s", rows.error());
        return QBOBJ_ERROR_DB_MISC;
    }
    group->GroupQuota = quotas_of(call, group->GroupId, rows);
    return QBOBJ_ERROR_OK;
}

qbobj_error_t _getSecondaryMember(Call &call, qbobj_Group_t *group)
{
    group->SecondaryMember = nullptr;
    const Table rows = call.table(
        R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group_has_user` GU INNER JOIN `$user` U ON U.id=GU.user_id
        WHERE GU.group_id=%d ORDER BY U.uname COLLATE NOCASE)",
        group->GroupId);
    if (!rows) {
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'user' and 'group'. %s", rows.error());
        return QBOBJ_ERROR_DB_MISC;
    }
    append_rows(call, group->SecondaryMember, member_columns, rows);
    return QBOBJ_ERROR_OK;
}

/* ---- Groups -------------------------------------------------------------------------------------------- */

int x_qbobj_getGroupCollection(Call &call, qbobj_GroupCollection_t *collection,
                               qbobj_AccountQuery_t *query)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    const qbobj_AccountQuery_t asked = query_or_all(call, query);
    if (pattern_too_long(asked))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Query string is too long.");

    const char *listable =
        print(call, "G.is_privileged=0 AND G.rid IS %sNULL AND G.gname<>'nogroup' AND G.gname<>'guest'",
              asked.ads != 0 ? "NOT " : "");
    const char *filter =
        is_empty(asked.name_like) ? "" : sql_text(call, "AND G.gname LIKE %Q", asked.name_like);

        const Number total = call.ask_number("SELECT COUNT(*)  FROM `$group` G WHERE %s", listable);
    if (!total)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", total.error());
    const Number matching = call.ask_number("SELECT COUNT(*)  FROM `$group` G WHERE %s %s", listable, filter);
    if (!matching)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", matching.error());
    const Table rows = call.table(
        "SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE %s %s %s %s",
        listable, filter, group_orders.chosen(asked.order), limit_clause(call, asked));
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'group'. %s", rows.error());

    collection->TotalEntries = total.value;
    collection->Entries = matching.value;
    Tail<qbobj_Group_t> tail(collection->Group);
    for (const Row row : rows)
        if (const int failed = fill_group(call, row, tail.append(call.pool())); failed != 0)
            return failed;
    return 0;
}

int x_qbobj_getGroup(Call &call, qbobj_Group_t *group)
{
    if (group == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group cannot be NULL.");
    for (qbobj_Group_t &element : Chain(group))
        if (const int failed = read_group(call, element); failed != 0)
            return failed;
    return 0;
}

int read_system_group(Call &call, const Directory &directory,
                             qbobj_SystemGroup_t &group)
{
    const int key = group.resource_id;
    if (key < 0 && !directory.ads)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    // A directory group may be stored under the id without its sign.
    const Table rows = call.table(
        "SELECT G.id,G.gname FROM `$group` G WHERE G.id=%d OR (%d AND G.id=%lld AND G.rid IS NOT NULL)", key,
        directory.ads ? 1 : 0, -static_cast<long long>(key));
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM group'. %s", rows.error());
    group.GroupId = key;
    if (rows.empty()) {
        log(call, QBDB_LOG_INFO, "None of row selected for resource_id=%d.\n", key);
        group.GroupName =
            directory.ads ? qbdb_util_get_domain_gname_by_gid(call.qbdb(), key) : print(call, "%d", key);
    } else {
        fill(call, group, std::tuple{skipped, &qbobj_SystemGroup_t::GroupName}, *rows.begin());
    }
    return 0;
}

int x_qbobj_getSystemGroup(Call &call, qbobj_SystemGroup_t *group)
{
    if (group == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group cannot be NULL.");
    const Directory directory = call.directory();
    for (qbobj_SystemGroup_t &element : Chain(group))
        if (const int failed = read_system_group(call, directory, element); failed != 0)
            return failed;
    return 0;
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
        call.ask_text(
            "SELECT G.id FROM `$group` G WHERE G.gname=%Q AND (G.rid IS NULL OR G.is_privileged=1)", gname),
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
    return found_name(call, call.ask_text("SELECT G.gname FROM `$group` G WHERE G.id=%d", gid), gid,
                      gname);
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
