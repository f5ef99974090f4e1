// Creates local users, one by one with all their settings or in bulk from what an imported list held.
#include "account/queries.h"
#include "account/quotas.h"
#include "account/user_changes.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

constexpr int min_uid = 100;
constexpr int max_uid = 32767;
constexpr int default_group_id = 99;
constexpr const char *cloud_group = "sky-port";

bool is_local_uid(int uid)
{
    return uid >= min_uid && uid <= max_uid;
}

/* ---- What a new account may consist of ----------------------------------------------------------------- */

// `passwd` receives what is stored.
int choose_password(Call &call, const qbobj_User_t &user, const char *&passwd)
{
    if (is_empty(user.SysHash))
        return encode_password(call, user.Password, passwd);
    passwd = user.SysHash;
    return 0;
}

int find_home(Call &call, const char *volume_id, const char *name, const char *&home)
{
    const int rc =
        volume_id != nullptr
            ? call.text("Failed 'SELECT _volume'. %s", home,
                        "SELECT '/'||V.lv_name||'/home/'||%Q FROM _volume V WHERE V.id=%Q", name, volume_id)
            : call.text("Failed 'SELECT /home/%%s'. %s", home, "SELECT '/home/'||%Q", name);
    if (rc != 0)
        return rc;
    if (home == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HomeVolume or default home volume not exists");
    return 0;
}

int check_name_is_free(Call &call, const char *name)
{
    constexpr Failure failure("Failed DB Query for user. %s");
    int users = 0;
    if (const int rc = call.number(failure, users, "SELECT COUNT(*) FROM `$user` WHERE uname=%Q", name))
        return rc;
    if (users == 0)
        return 0;
    int remote = 0;
    if (const int rc = call.number(failure, remote,
                                   "SELECT COUNT(*) FROM `$user` WHERE uname=%Q AND "
                                   "group_id=(SELECT id FROM `$group` WHERE gname=%Q)",
                                   name, cloud_group))
        return rc;
    if (remote > 0)
        return raise(call, QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME,
                     "Username (%s) is the same as existing remote username.", name);
    return raise(call, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "User (%s) already exists.", name);
}

/* ---- User ids ------------------------------------------------------------------------------------------ */

constexpr Failure no_next_uid("Could not get next available uid. %s");

constexpr IdQuestions user_ids{"SELECT COUNT(*) FROM `$user` WHERE id BETWEEN %d AND %d", no_next_uid};

// The first free id at or above the mark in account_default, which moves on behind it; -1 when there is none.
int get_next_available_uid(Call &call, int &uid)
{
    int mark = 0;
    if (const int rc = call.number(no_next_uid, mark, "SELECT next_uid FROM account_default"))
        return rc;
    if (const int rc = find_first_gap(call, user_ids, mark, max_uid, uid))
        return rc;
    if (!is_local_uid(uid))
        uid = -1;
    else
        call.run("UPDATE account_default SET next_uid=%d", uid + 1);
    return 0;
}

int choose_uid(Call &call, int &uid)
{
    if (const int rc = get_next_available_uid(call, uid))
        return rc;
    if (uid == -1)
        return no_next_uid.raise(call, "");
    if (!is_local_uid(uid))
        return raise(call, QBOBJ_ERROR_DB_MISC, "No more uid available");
    return 0;
}

int check_uid(Call &call, int uid)
{
    if (!is_local_uid(uid))
        return raise(call, QBOBJ_ERROR_API_ARGS, "UserId=%d is out of valid range (%d-%d).", uid, min_uid,
                     max_uid);
    int taken = 0;
    if (const int rc = call.number("Failed DB Query for user. %s", taken,
                                   "SELECT COUNT(*) FROM `$user` WHERE id=%d", uid))
        return rc;
    if (taken != 0)
        return raise(call, QBOBJ_ERROR_UI__UID_ALREADY_EXISTS, "UserId (%d) already exists.", uid);
    return 0;
}

/* ---- The rows of a new account ------------------------------------------------------------------------- */

// diskquota_warn is a percentage, and a new user's soft limit is not divided by 100, unlike a changed one: what reads
// these rows counts on it.
constexpr QuotaInsert new_quota{
    R"(INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(%d,
        (SELECT S.id FROM share S WHERE zfs_name=%Q),
        %lu*(SELECT diskquota_warn FROM account_default LIMIT 1),%lu))",
    "Failed DB Query for 'INSERT user_quota'. %s",
};

int insert_home_folder(Call &call, const qbobj_User_t &user)
{
    const qbobj_UserHomeFolderSettings_t *settings = user.HomeFolderSettings;
    if (settings == nullptr)
        return call.exec(
            "Failed DB Query for 'INSERT $home_folder' using account_default. %s",
            R"(INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,(SELECT snapshot_protection FROM account_default LIMIT 1),
        (SELECT home_folder_capacity_limit FROM account_default LIMIT 1),%Q))",
            user.UserId, empty_str);
    return call.exec("Failed DB Query for 'INSERT $home_folder'. %s",
                     R"(INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,%d,%lu,%Q))",
                     user.UserId, settings->SnapshotProtectionEnabled, settings->SizeLimit,
                     settings->VisibleSnapshot != 0 ? or_empty(settings->VisibleSnapFolder) : empty_str);
}

int insert_timemachine_quota(Call &call, const qbobj_User_t &user)
{
    const qbobj_UserTimeMachineQuota_t *quota = user.TimeMachineQuota;
    if (quota == nullptr || quota->Enabled == 0)
        return 0;
    return call.exec("Failed DB Query for 'INSERT $timemachine_quota'. %s",
                     "INSERT INTO '$timemachine_quota' (user_id,enabled,capacity_mb) VALUES (%d,%d,%d)",
                     user.UserId, quota->Enabled, quota->CapacityMB);
}

int read_back(Call &call, qbobj_User_t &user)
{
    if (const int rc = call.text("Failed DB Query for (SELECT user). %s", user.HomeDirectory,
                                 "SELECT home FROM `$user` WHERE id=%d", user.UserId))
        return rc;
    user.resource_id = user.UserId;
    return 0;
}

int insert_settings(Call &call, qbobj_User_t &user)
{
    if (const int rc = add_quotas(call, new_quota, user.UserId, user.UserQuota))
        return rc;
    if (const int rc = insert_home_folder(call, user))
        return rc;
    if (const int rc = insert_timemachine_quota(call, user))
        return rc;
    return read_back(call, user);
}

/* ---- Users --------------------------------------------------------------------------------------------- */

// `group_id` is that of the nearest user before who named a group.
int add_user(Call &call, int &group_id, qbobj_User_t &user)
{
    const char *name = nullptr;
    if (const int rc = check_new_user_name(call, user.UserName, name))
        return rc;
    const char *passwd = nullptr;
    if (const int rc = choose_password(call, user, passwd))
        return rc;
    const char *email = nullptr;
    if (const int rc = check_email(call, user.Email, email))
        return rc;
    if (const int rc = find_primary_group(call, user.GroupName, group_id))
        return rc;
    const char *home = nullptr;
    if (const int rc = find_home(call, user.HomeVolumeId, name, home))
        return rc;
    if (const int rc = check_name_is_free(call, name))
        return rc;
    if (const int rc = user.UserId < 1 ? choose_uid(call, user.UserId) : check_uid(call, user.UserId))
        return rc;

    // last_changed is a day number: 60/60/24.
    if (const int rc = call.exec(
            "Failed DB Query for 'INSERT user'. %s",
            R"(INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed,is_locked)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/60/24,%d))",
            user.UserId, name, passwd, email, home, group_id, user.IsLocked))
        return rc;
    return insert_settings(call, user);
}

// The password is in its stored form.
int add_listed_user(Call &call, int &group_id, qbobj_User_t &user)
{
    if (is_masked(user.Password))
        return raise_invalid_password(call, user.Password, 1);
    if (const int rc = find_primary_group(call, user.GroupName, group_id))
        return rc;
    if (const int rc = call.number("Failed DB Query for user. %s", user.UserId,
                                   R"(SELECT IFNULL((SELECT U.id+1 FROM `$user` U NOT INDEXED
        WHERE U.is_privileged=0 AND U.rid IS NULL AND U.id<32767 ORDER BY U.id DESC LIMIT 1),100))"))
        return rc;
    // Here last_changed is divided by 60/24/24 and so is no day number: callers depend on both divisors.
    if (const int rc = call.exec(
            "Failed DB Query for 'INSERT user'. %s",
            R"(INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/24/24))",
            user.UserId, user.UserName, user.Password, user.Email, "/home", group_id))
        return rc;
    return read_back(call, user);
}

} // namespace

int x_qbobj_addUser(Call &call, qbobj_User_t *user)
{
    int group_id = default_group_id;
    return for_each(user, add_user, call, group_id);
}

int x_qbobj_addUserList(Call &call, qbobj_User_t *user)
{
    int group_id = default_group_id;
    return for_each(user, add_listed_user, call, group_id);
}

} // namespace qbobj
