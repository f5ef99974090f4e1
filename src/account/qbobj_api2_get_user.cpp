// Users, read: listings, single accounts with all their details, and the small questions of identity.
#include "account/queries.h"
#include "account/quotas.h"
#include "core/time_machine.h"

#include <cstring>
#include <filesystem>

namespace qbobj
{
namespace
{

using User = qbobj_User_t;
using SystemUser = qbobj_SystemUser_t;
using HomeFolder = qbobj_UserHomeFolderSettings_t;
using TimeMachine = qbobj_UserTimeMachineQuota_t;

/* ---- Columns ------------------------------------------------------------------------------------------- */

// The password column: as it is stored, or only whether there is one.
constexpr auto password(bool as_stored)
{
    return [as_stored](const qbobj_env_t &env, User &user, const char *cell) {
        if (is_empty(cell))
            user.Password = empty_str;
        else
            user.Password = as_stored ? copy_text(env.qbdb->pool, cell) : masked_password;
    };
}

// The column of the primary group's id, behind that of its name: a group that is only in the directory has no name
// here.
constexpr auto group_name_if_missing = [](const qbobj_env_t &env, User &user, const char *cell) {
    if (user.GroupName == nullptr)
        user.GroupName = qbdb_util_get_domain_gname_by_gid(env.qbdb, to_int(cell));
};

/* ---- Details of one user ------------------------------------------------------------------------------- */

constexpr auto user_quotas = select_quotas(
    R"(SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM user_quota Q INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id WHERE Q.user_id=%d)",
    "Failed DB Query for user_quota. %s");

constexpr auto visible_snapshot = [](const qbobj_env_t &, HomeFolder &settings, const char *cell) {
    settings.VisibleSnapshot = is_empty(cell) ? 0 : 1;
};

constexpr auto home_folder = select<int>(
    R"(SELECT H.snapshot_protection_enabled,H.quota,
        (SELECT S.used FROM `_hf_zfs_stat` S WHERE S.user_id=H.user_id),H.visible_snapdir
        FROM `$home_folder` H WHERE H.user_id=%d)",
    "Failed DB Query for $home_folder. %s", &HomeFolder::SnapshotProtectionEnabled, &HomeFolder::SizeLimit,
    &HomeFolder::SizeUsed, both(or_empty(&HomeFolder::VisibleSnapFolder), visible_snapshot));

constexpr auto time_machine = select<int>(
    "SELECT T.enabled,T.capacity_mb FROM '$timemachine_quota' T WHERE T.user_id=%d",
    "Failed DB Query for $timemachine_quota. %s", &TimeMachine::Enabled, &TimeMachine::CapacityMB);

// The details of a user whose own row has been read.
int read_details(Call &call, User &user)
{
    for (const auto reader :
         {qbobj_api2_getUserQuota, qbobj_api2_getUserHomeFolderSettings, qbobj_api2_getUserTimeMachineQuota})
        if (const int rc = reader(call, &user))
            return rc;
    return 0;
}

/* ---- Listings ------------------------------------------------------------------------------------------ */

constexpr Orders user_orders{"ORDER BY U.uname", "ORDER BY U.id", "ORDER BY U.uname DESC",
                             "ORDER BY U.id DESC"};

// By condition, filter, order and page.
consteval auto select_users(bool stored_passwords)
{
    return select<const char *, const char *, const char *, const char *>(
        R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U
        WHERE %s%s %s %s)",
        "Failed DB Query for user. %s", both(&User::resource_id, &User::UserId), &User::UserName,
        &User::GroupName, &User::HomeDirectory, or_empty(&User::Email), password(stored_passwords),
        &User::IsDomainMember, or_empty(&User::FullName), &User::IsLocked, group_name_if_missing);
}
constexpr auto listed_users = select_users(false);
constexpr auto listed_users_with_passwords = select_users(true);

// The part of the query's option word that selects by snapshot settings. Its two terms widen the selection.
const char *snapshot_clause(Call &call, std::string_view option)
{
    const auto has = [option](std::string_view word) { return option.find(word) != option.npos; };
    if (!has("||HF_SNAPSHOT_PROTECTION") && !has("||HF_SNAPSHOT_ACCESS"))
        return "";
    const char *protection = "";
    if (has("HF_SNAPSHOT_PROTECTION==0"))
        protection =
            " U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=0)";
    else if (has("HF_SNAPSHOT_PROTECTION"))
        protection =
            " U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=1)";
    const char *access = "";
    if (has("HF_SNAPSHOT_ACCESS==0"))
        access = " U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir='')";
    else if (has("HF_SNAPSHOT_ACCESS"))
        access = " U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir<>'')";
    const bool two_terms = !is_empty(protection) && !is_empty(access);
    return print(call, " AND (%s%s%s)", protection, two_terms ? " OR" : "", access);
}

// What the query's name pattern and option word add to the condition of a listing.
const char *filter_clause(Call &call, const qbobj_AccountQuery_t &query, std::string_view option)
{
    const char *name = "";
    if (!is_empty(query.name_like))
        name = sql_text(call, " AND (U.uname LIKE %Q OR U.fullname LIKE %Q OR U.email LIKE %Q)",
                        query.name_like, query.name_like, query.name_like);
    const char *selected = snapshot_clause(call, option);
    if (option == "TM_ON")
        selected = " AND id IN (SELECT T.user_id from '$timemachine_quota' T WHERE T.enabled=1)";
    return print(call, "%s%s", name, selected);
}

bool is_folder(Call &call, const char *path)
{
    std::error_code ignored;
    return !is_empty(path) && std::filesystem::is_directory(path_below_root(call, path), ignored);
}

// Leaves only those of a chain whose home exists.
void keep_existing_homes(Call &call, User *&users)
{
    for (User **next = &users; *next != nullptr;) {
        if (is_folder(call, (*next)->HomeDirectory))
            next = &(*next)->_link;
        else
            *next = (*next)->_link;
    }
}

/* ---- Single users -------------------------------------------------------------------------------------- */

constexpr auto one_user = select<int>(
    R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.is_locked,U.group_id FROM `$user` U
        WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),
        (SELECT id FROM `$group` G WHERE G.gname='nogroup'))
        AND U.id=%d ORDER BY U.uname COLLATE NOCASE)",
    "Failed DB Query for user. %s", &User::UserId, &User::UserName, &User::GroupName, &User::HomeDirectory,
    or_empty(&User::Email), password(false), &User::IsDomainMember, &User::IsLocked, group_name_if_missing);

int read_user(Call &call, User &user)
{
    int key = 0;
    if (const int rc = find_user_key(call, user, key))
        return rc;
    if (key < 1 && !call.directory().ads)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    if (const int rc = call.require(
            one_user, error(QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=%d.", key), user,
            key))
        return rc;
    if (user.resource_id == 0)
        user.resource_id = key;
    return read_details(call, user);
}

/* ---- Users by id and name alone ------------------------------------------------------------------------ */

constexpr SystemAccounts system_users{
    select<int, int, long long>(
        "SELECT U.uname FROM `$user` U WHERE U.id=%d OR (%d AND U.id=%lld AND U.rid IS NOT NULL)",
        "Failed DB Query for 'SELECT FROM user'. %s", &SystemUser::UserName),
    &SystemUser::UserId,
    &SystemUser::UserName,
    qbdb_util_get_domain_uname_by_uid,
};

constexpr auto cloud_users = select(
    R"(SELECT U.id,U.uname FROM `$user` U WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id=98 ORDER BY U.uname COLLATE NOCASE)",
    "Failed DB Query for user. %s", both(&SystemUser::resource_id, &SystemUser::UserId),
    &SystemUser::UserName);

constexpr auto primary_members = select<const char *>(
    R"(SELECT U.id,U.uname FROM `$user` U
        WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q) ORDER BY U.uname COLLATE NOCASE)",
    "Failed DB Query for user. %s", both(&SystemUser::resource_id, &SystemUser::UserId),
    &SystemUser::UserName);

// A user of that primary group stands here once a membership in whatever group, if there is any.
constexpr auto all_members = select<const char *, const char *>(
    R"(SELECT * FROM (SELECT U.id,U.uname FROM `$user` U LEFT JOIN `$group_has_user` GU ON GU.user_id=U.id
        WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q)
        UNION ALL SELECT U.id,U.uname FROM `$group` G CROSS JOIN `$group_has_user` GU ON GU.group_id=G.id
        CROSS JOIN `$user` U ON U.id=GU.user_id AND U.group_id IS NOT G.id
        WHERE G.id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q)
        AND U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest') ORDER BY 2 COLLATE NOCASE)",
    "Failed DB Query for user. %s", both(&SystemUser::resource_id, &SystemUser::UserId),
    &SystemUser::UserName);

// The id of the user of a name, which in directory mode is a directory user or a privileged local one.
int find_user(Call &call, bool ads, const char *uname, int *uid)
{
    if (uname == nullptr)
        return found_id(call.ask_text("SELECT U.id FROM `$user` U WHERE U.uname='guest' AND U.rid IS NULL"),
                        uid);
    return found_id(
        call.ask_text(
            "SELECT U.id FROM `$user` U WHERE U.uname=%Q AND (U.rid IS %sNULL OR U.is_privileged=1)", uname,
            ads ? "NOT " : ""),
        uid);
}

} // namespace

/* ---- Details of one user ------------------------------------------------------------------------------- */

int qbobj_api2_getUserQuota(Call &call, qbobj_User_t *user)
{
    return read_quotas(call, user_quotas, user->UserId, user->UserQuota);
}

int qbobj_api2_getUserHomeFolderSettings(Call &call, qbobj_User_t *user)
{
    if (const int rc = call.read_new(home_folder, user->HomeFolderSettings, user->UserId))
        return rc;
    if (user->HomeFolderSettings != nullptr)
        user->HomeFolderSettings->UserId = user->UserId;
    return 0;
}

int qbobj_api2_getUserTimeMachineQuota(Call &call, qbobj_User_t *user)
{
    user->TimeMachineQuota = nullptr;
    const char *path = nullptr;
    // Reported, but no reason to end a listing: the user is shown without a Time Machine area.
    if (call.text(
            "Failed DB Query for 'SELECT account_default and $user'.", path,
            R"(SELECT A.home_volume_id || '/.timemachine/' || U.uname FROM account_default A, '$user' U WHERE U.id=%d)",
            user->UserId) != 0)
        return 0;
    if (const int rc = call.read_new(time_machine, user->TimeMachineQuota, user->UserId))
        return rc;
    if (user->TimeMachineQuota == nullptr)
        return 0;
    user->TimeMachineQuota->UserId = user->UserId;
    if (path != nullptr)
        user->TimeMachineQuota->UsedMB = time_machine_mb(path_below_root(call, path));
    return 0;
}

/* ---- Users --------------------------------------------------------------------------------------------- */

int x_qbobj_getUserCollection(Call &call, qbobj_UserCollection_t *collection, qbobj_AccountQuery_t *query,
                              int encrypt_flag)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    qbobj_AccountQuery_t asked;
    if (const int rc = read_query(call, query, asked))
        return rc;
    const std::string_view option(or_empty(asked.opt), strnlen(or_empty(asked.opt), 256));

    const char *listable = print(
        call,
        "U.is_privileged=0 AND U.group_id<>98 AND U.rid IS %sNULL AND U.uname<>'nobody' AND U.uname<>'guest' "
        "AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),"
        "(SELECT id FROM `$group` G WHERE G.gname='nogroup'))",
        asked.ads != 0 ? "NOT " : "");
    const char *filter = filter_clause(call, asked, option);

    if (const int rc = call.number("Failed DB Query for user. %s", collection->TotalEntries,
                                   "SELECT COUNT(*)  FROM `$user` U WHERE %s", listable))
        return rc;
    collection->Entries = collection->TotalEntries;
    if (!is_empty(filter))
        if (const int rc = call.number("Failed DB Query for user. %s", collection->Entries,
                                       "SELECT COUNT(*) FROM `$user` U WHERE %s%s", listable, filter))
            return rc;
    User *&users = end_of(collection->User);
    if (const int rc =
            call.append(encrypt_flag != 0 ? listed_users_with_passwords : listed_users, users, listable,
                        filter, user_orders.chosen(asked.order), limit_clause(call, asked)))
        return rc;

    qbdb_hf_stats_import(call.qbdb(), call.db());
    if (option == "HF_EXISTS")
        keep_existing_homes(call, users);
    return for_each(users, read_details, call);
}

int x_qbobj_getUser(Call &call, qbobj_User_t *user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    return for_each(user, read_user, call);
}

/* ---- Users by id and name alone ------------------------------------------------------------------------ */

int read_system_user(Call &call, qbobj_SystemUser_t &user)
{
    return read_system_account(call, system_users, user);
}

int x_qbobj_getSystemUser(Call &call, qbobj_SystemUser_t *user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    return for_each(user, read_system_user, call);
}

int x_qbobj_getCloudUser(Call &call, qbobj_SystemUser_t **user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    *user = nullptr;
    return call.append(cloud_users, *user);
}

int x_qbobj_getUserInGroupName(Call &call, const char *gname, int primaryOnly, qbobj_SystemUser_t **user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    *user = nullptr;
    return primaryOnly != 0 ? call.append(primary_members, *user, gname)
                            : call.append(all_members, *user, gname, gname);
}

/* ---- Identity ------------------------------------------------------------------------------------------ */

int x_qbobj_getUID(Call &call, const char *uname, int *uid)
{
    if (uid == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "uid cannot be NULL.");
    return find_user(call, uname != nullptr && call.directory().ads, uname, uid);
}

int x_qbobj_getUserName(Call &call, int uid, char **uname)
{
    require(uname != nullptr, "uname", __func__);
    return found_name(call, call.ask_text("SELECT U.uname FROM `$user` U WHERE U.id=%d", uid), uid, uname);
}

int x_qbobj_getPosixUID(Call &call, const char *uname)
{
    const bool ads = call.directory().ads;
    int uid = -1;
    if (find_user(call, ads, uname, &uid) == 0)
        return posix_users.of_id(call, uid);
    return ads ? posix_users.of_domain_name(call, uname) : -1;
}

int x_qbobj_getPosixUIDbyUID(Call &call, int uid)
{
    return posix_users.of_id(call, uid);
}

int x_qbobj_getPosixUIDGID(Call &call, const char *uname, int *uid, int *gid)
{
    if (uid == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "uid cannot be NULL.");
    if (gid == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "gid cannot be NULL.");
    int user_id = -1;
    int group_id = -1;
    if (x_qbobj_getUID(call, uname, &user_id) != 0 || x_qbobj_getPrimaryGID(call, uname, &group_id) != 0)
        return -1;
    user_id = posix_users.of_id(call, user_id);
    group_id = posix_groups.of_id(call, group_id);
    if (user_id < 0 || group_id < 0)
        return -1;
    *uid = user_id;
    *gid = group_id;
    return 0;
}

} // namespace qbobj
