// Users, read: listings, single accounts with all their details, and the small questions of identity.
#include "account/queries.h"

#include <qbobj/settings.h>

#include <filesystem>
#include <string_view>

namespace qbobj
{

namespace
{

constexpr Orders user_orders{"ORDER BY U.uname", "ORDER BY U.id", "ORDER BY U.uname DESC",
                             "ORDER BY U.id DESC"};

constexpr auto system_user_columns = std::tuple{
    both(&qbobj_SystemUser_t::resource_id, &qbobj_SystemUser_t::UserId), &qbobj_SystemUser_t::UserName};

constexpr auto home_folder_columns = std::tuple{
    &qbobj_UserHomeFolderSettings_t::SnapshotProtectionEnabled,
    &qbobj_UserHomeFolderSettings_t::SizeLimit,
    &qbobj_UserHomeFolderSettings_t::SizeUsed,
    both(or_empty(&qbobj_UserHomeFolderSettings_t::VisibleSnapFolder),
         [](const qbobj_env_t &, qbobj_UserHomeFolderSettings_t &settings, const char *cell) {
             settings.VisibleSnapshot = is_empty(cell) ? 0 : 1;
         }),
};

constexpr auto time_machine_columns =
    std::tuple{&qbobj_UserTimeMachineQuota_t::Enabled, &qbobj_UserTimeMachineQuota_t::CapacityMB};

// The password column: as it is stored, or only whether there is one.
constexpr auto password(bool as_stored)
{
    return [as_stored](const qbobj_env_t &env, qbobj_User_t &user, const char *cell) {
        if (is_empty(cell))
            user.Password = empty_str;
        else
            user.Password = as_stored ? copy_text(env.qbdb->pool, cell) : masked_password;
    };
}

// The column of the primary group's id, behind that of its name: a group that is only in the directory has
// no name here.
constexpr auto group_name_if_missing = [](const qbobj_env_t &env, qbobj_User_t &user, const char *cell) {
    if (user.GroupName == nullptr)
        user.GroupName = qbdb_util_get_domain_gname_by_gid(env.qbdb, to_int(cell));
};

constexpr auto user_columns = std::tuple{
    &qbobj_User_t::UserId,         &qbobj_User_t::UserName,        &qbobj_User_t::GroupName,
    &qbobj_User_t::HomeDirectory,  or_empty(&qbobj_User_t::Email), password(false),
    &qbobj_User_t::IsDomainMember, &qbobj_User_t::IsLocked,        group_name_if_missing,
};

constexpr auto listed_user_columns(bool as_stored)
{
    return std::tuple{
        &qbobj_User_t::UserId,         &qbobj_User_t::UserName,           &qbobj_User_t::GroupName,
        &qbobj_User_t::HomeDirectory,  or_empty(&qbobj_User_t::Email),    password(as_stored),
        &qbobj_User_t::IsDomainMember, or_empty(&qbobj_User_t::FullName), &qbobj_User_t::IsLocked,
        group_name_if_missing,
    };
}

// The details of a user whose own row has been read.
int read_details(Call &call, qbobj_User_t &user)
{
    for (const auto reader :
         {qbobj_api2_getUserQuota, qbobj_api2_getUserHomeFolderSettings, qbobj_api2_getUserTimeMachineQuota})
        if (const int failed = reader(call, &user); failed != 0)
            return failed;
    return 0;
}

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

// The users of a listing's rows.
int read_listed_users(Call &call, const Table &rows, bool stored_password,
                      bool existing_homes_only, qbobj_User_t *&users)
{
    const auto columns = listed_user_columns(stored_password);
    Tail<qbobj_User_t> tail(users);
    for (const Row row : rows) {
        qbobj_User_t listed{};
        fill(call, listed, columns, row);
        if (existing_homes_only && !is_folder(call, listed.HomeDirectory))
            continue;
        qbobj_User_t &user = tail.append(call.pool(), listed);
        user.resource_id = user.UserId;
        if (const int failed = read_details(call, user); failed != 0)
            return failed;
    }
    return 0;
}

int read_user(Call &call, const Directory &directory, qbobj_User_t &user)
{
    int key = 0;
    if (const int failed = find_user_key(call, directory, user, key); failed != 0)
        return failed;
    if (key < 1 && !directory.ads)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);

    const Table rows = call.table(
        R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.is_locked,U.group_id FROM `$user` U
        WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),
        (SELECT id FROM `$group` G WHERE G.gname='nogroup'))
        AND U.id=%d ORDER BY U.uname COLLATE NOCASE)",
        key);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());
    if (rows.empty())
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=%d.", key);
    fill(call, user, user_columns, *rows.begin());
    if (user.resource_id == 0)
        user.resource_id = key;
    return read_details(call, user);
}

// The id of the user of a name, which in directory mode is a directory user or a privileged local one.
int find_user(Call &call, bool ads, const char *uname, int *uid)
{
    if (uname == nullptr)
        return found_id(call.ask_text("SELECT U.id FROM `$user` U WHERE U.uname='guest' AND U.rid IS NULL"), uid);
    return found_id(
        call.ask_text("SELECT U.id FROM `$user` U WHERE U.uname=%Q AND (U.rid IS %sNULL OR U.is_privileged=1)",
                 uname, ads ? "NOT " : ""),
        uid);
}

} // namespace

/* ---- Details of one user ------------------------------------------------------------------------------- */

qbobj_error_t qbobj_api2_getUserQuota(Call &call, qbobj_User_t *user)
{
    const Table rows = call.table(
        R"(SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM user_quota Q INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id WHERE Q.user_id=%d)",
        user->UserId);
    if (!rows) {
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user_quota. %s", rows.error());
        return QBOBJ_ERROR_DB_MISC;
    }
    user->UserQuota = quotas_of(call, user->UserId, rows);
    return QBOBJ_ERROR_OK;
}

qbobj_error_t qbobj_api2_getUserHomeFolderSettings(Call &call, qbobj_User_t *user)
{
    user->HomeFolderSettings = nullptr;
    const Table rows = call.table(
        R"(SELECT H.snapshot_protection_enabled,H.quota,
        (SELECT S.used FROM `_hf_zfs_stat` S WHERE S.user_id=H.user_id),H.visible_snapdir
        FROM `$home_folder` H WHERE H.user_id=%d)",
        user->UserId);
    if (!rows) {
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for $home_folder. %s", rows.error());
        return QBOBJ_ERROR_DB_MISC;
    }
    if (rows.empty())
        return QBOBJ_ERROR_OK;
    user->HomeFolderSettings = create<qbobj_UserHomeFolderSettings_t>(call.pool());
    user->HomeFolderSettings->UserId = user->UserId;
    fill(call, *user->HomeFolderSettings, home_folder_columns, *rows.begin());
    return QBOBJ_ERROR_OK;
}

qbobj_error_t qbobj_api2_getUserTimeMachineQuota(Call &call, qbobj_User_t *user)
{
    user->TimeMachineQuota = nullptr;
        const Text path = call.ask_text(
        R"(SELECT A.home_volume_id || '/.timemachine/' || U.uname FROM account_default A, '$user' U WHERE U.id=%d)",
        user->UserId);
    if (!path) {
        // Reported, but no reason to end a listing: the user is shown without a Time Machine area.
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT account_default and $user'.");
        return QBOBJ_ERROR_OK;
    }
    const Table rows = call.table(
        "SELECT T.enabled,T.capacity_mb FROM '$timemachine_quota' T WHERE T.user_id=%d", user->UserId);
    if (!rows) {
        raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for $timemachine_quota. %s", rows.error());
        return QBOBJ_ERROR_DB_MISC;
    }
    if (rows.empty())
        return QBOBJ_ERROR_OK;
    user->TimeMachineQuota = create<qbobj_UserTimeMachineQuota_t>(call.pool());
    user->TimeMachineQuota->UserId = user->UserId;
    fill(call, *user->TimeMachineQuota, time_machine_columns, *rows.begin());
    if (path.value != nullptr)
        user->TimeMachineQuota->UsedMB = get_tm_used_mb(path_below_root(call, path.value));
    return QBOBJ_ERROR_OK;
}

/* ---- Users --------------------------------------------------------------------------------------------- */

int x_qbobj_getUserCollection(Call &call, qbobj_UserCollection_t *collection,
                              qbobj_AccountQuery_t *query, int encrypt_flag)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    const qbobj_AccountQuery_t asked = query_or_all(call, query);
    if (pattern_too_long(asked))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Query string is too long.");
    const std::string_view option(or_empty(asked.opt), strnlen(or_empty(asked.opt), 256));

    const char *listable = print(
        call,
        "U.is_privileged=0 AND U.group_id<>98 AND U.rid IS %sNULL AND U.uname<>'nobody' AND U.uname<>'guest' "
        "AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),"
        "(SELECT id FROM `$group` G WHERE G.gname='nogroup'))",
        asked.ads != 0 ? "NOT " : "");
    const char *filter = filter_clause(call, asked, option);

        const Number total = call.ask_number("SELECT COUNT(*)  FROM `$user` U WHERE %s", listable);
    if (!total)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", total.error());
    const Number matching = call.ask_number("SELECT COUNT(*) FROM `$user` U WHERE %s%s", listable, filter);
    if (!matching)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", matching.error());
    const Table rows = call.table(
        R"(SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,
        CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U
        WHERE %s%s %s %s)",
        listable, filter, user_orders.chosen(asked.order), limit_clause(call, asked));
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());

    collection->TotalEntries = total.value;
    collection->Entries = matching.value;
    qbdb_hf_stats_import(call.qbdb(), call.db());
    return read_listed_users(call, rows, encrypt_flag != 0, option == "HF_EXISTS", collection->User);
}

int x_qbobj_getUser(Call &call, qbobj_User_t *user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    const Directory directory = call.directory();
    for (qbobj_User_t &element : Chain(user))
        if (const int failed = read_user(call, directory, element); failed != 0)
            return failed;
    return 0;
}

/* ---- Users by id and name alone ------------------------------------------------------------------------ */

int read_system_user(Call &call, const Directory &directory,
                            qbobj_SystemUser_t &user)
{
    const int key = user.resource_id;
    if (key < 0 && !directory.ads)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    // A directory user may be stored under the id without its sign.
    const Text name = call.ask_text(
        "SELECT U.uname FROM `$user` U WHERE U.id=%d OR (%d AND U.id=%lld AND U.rid IS NOT NULL)", key,
        directory.ads ? 1 : 0, -static_cast<long long>(key));
    if (!name)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM user'. %s", name.error());
    user.UserId = key;
    user.UserName = name.value;
    if (name.found == 0) {
        log(call, QBDB_LOG_INFO, "None of row selected for resource_id=%d.\n", key);
        user.UserName =
            directory.ads ? qbdb_util_get_domain_uname_by_uid(call.qbdb(), key) : print(call, "%d", key);
    }
    return 0;
}

int x_qbobj_getSystemUser(Call &call, qbobj_SystemUser_t *user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    const Directory directory = call.directory();
    for (qbobj_SystemUser_t &element : Chain(user))
        if (const int failed = read_system_user(call, directory, element); failed != 0)
            return failed;
    return 0;
}

int x_qbobj_getCloudUser(Call &call, qbobj_SystemUser_t **user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    *user = nullptr;
    const Table rows = call.table(
        R"(SELECT U.id,U.uname FROM `$user` U WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
        AND U.group_id=98 ORDER BY U.uname COLLATE NOCASE)");
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());
    append_rows(call, *user, system_user_columns, rows);
    return 0;
}

int x_qbobj_getUserInGroupName(Call &call, const char *gname, int primaryOnly,
                               qbobj_SystemUser_t **user)
{
    if (user == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
    *user = nullptr;
        const Table rows =
        primaryOnly != 0
            ? call.table(R"(SELECT U.id,U.uname FROM `$user` U
                WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
                AND U.group_id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q) ORDER BY U.uname COLLATE NOCASE)",
                        gname)
            : call.table(
                  R"(SELECT U.id,U.uname FROM `$user` U LEFT JOIN `$group_has_user` GU ON GU.user_id=U.id
                WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest'
                AND (U.group_id=(SELECT G1.id FROM `$group` G1 WHERE G1.gname=%Q)
                OR GU.group_id=(SELECT G2.id FROM `$group` G2 WHERE G2.gname=%Q)) ORDER BY U.uname COLLATE NOCASE)",
                  gname, gname);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());
    append_rows(call, *user, system_user_columns, rows);
    return 0;
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
    return found_name(call, call.ask_text("SELECT U.uname FROM `$user` U WHERE U.id=%d", uid), uid,
                      uname);
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
    if (x_qbobj_getUID(call, uname, &user_id) != 0 ||
        x_qbobj_getPrimaryGID(call, uname, &group_id) != 0)
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
