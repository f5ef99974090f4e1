// Changes users: everything about one user, or one thing about users by name.
#include "account/queries.h"
#include "account/quotas.h"
#include "account/user_changes.h"
#include "core/set_list.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

using Changes = SetList<512>;

// What the caller needs to move the home on disk.
struct Rename {
    const char *old_name = nullptr; // null while the name stays
    const char *old_home = nullptr; // null while the name stays
    const char *new_home = nullptr; // null when no name was given
};

/* ---- The columns of the user --------------------------------------------------------------------------- */

int check_new_name(Call &call, const char *given, int key, const char *&name)
{
    if (const int rc = check_user_name(call, given, "UserName is too long (%s)", name))
        return rc;
    int owner = 0;
    if (qbobj_validate_db_username(call, name, nullptr, &owner) == 0 && owner != key)
        return raise(call, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS,
                     "Cannot rename to user which already exists (%s).", name);
    return 0;
}

// A local user's home follows the name, also when the name given is the one the user has.
int find_new_home(Call &call, int key, const char *name, const char *&home)
{
    if (call.directory().ads)
        return call.text("Failed DB Query for 'SELECT home FROM `$users`'. %s", home,
                         "SELECT U.home FROM `$user` U WHERE U.id=%d", key);
    return call.text("Failed DB Query for 'SELECT account_default'. %s", home, "SELECT '/home/'||%Q", name);
}

int change_name(Call &call, const qbobj_User_t &user, int key, Changes &changes, Rename &rename)
{
    if (user.UserName == nullptr)
        return 0;
    StoredUser stored{};
    if (const int rc = read_stored_user(call, key, stored))
        return rc;
    const char *name = nullptr;
    if (const int rc = check_new_name(call, user.UserName, key, name))
        return rc;
    changes.add("uname='%q'", name);

    // A change of capitals is a change, though the column does not tell them apart.
    if (const int rc = call.text("Failed DB Query for 'SELECT user'. %s", rename.old_name,
                                 "SELECT U.uname FROM `$user` U WHERE U.id=%d AND U.uname<>%Q COLLATE BINARY",
                                 key, name))
        return rc;
    if (rename.old_name != nullptr)
        rename.old_home = stored.home;
    if (const int rc = find_new_home(call, key, name, rename.new_home))
        return rc;
    changes.add("home=%Q", rename.new_home);
    return 0;
}

// A password that comes back masked, as it was read, stays.
int change_password(Call &call, const qbobj_User_t &user, Changes &changes)
{
    const char *passwd = user.SysHash;
    if (is_empty(passwd)) {
        if (user.Password == nullptr || is_masked(user.Password))
            return 0;
        if (const int rc = encode_password(call, user.Password, passwd))
            return rc;
    }
    changes.add("passwd='%q'", passwd);
    return 0;
}

int change_rest(Call &call, const qbobj_User_t &user, Changes &changes)
{
    // Address and lock are always written: leaving out the address clears it.
    const char *email = nullptr;
    if (const int rc = check_email(call, user.Email, email))
        return rc;
    changes.add("email='%q'", email);
    if (!is_empty(user.GroupName)) {
        int group_id = 0;
        if (const int rc = find_primary_group(call, user.GroupName, group_id))
            return rc;
        changes.add("group_id=%d", group_id);
    }
    changes.add("is_locked=%d", user.IsLocked);
    return 0;
}

int update_user(Call &call, int key, const Changes &changes)
{
    if (changes.refused() != nullptr)
        return raise_refused(call, changes);
    return call.exec_unique({QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "Specified uname already exists'. %s"},
                            "Failed DB Query for 'UPDATE user'. %s", "UPDATE `$user` SET %s WHERE id=%d",
                            changes.text(), key);
}

/* ---- What belongs to the user -------------------------------------------------------------------------- */

constexpr QuotaDelete removed_quota{
    R"(DELETE FROM user_quota WHERE user_id=%d
        AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name=%Q))",
    "Failed DB Query for 'DELETE user_quota. %s",
};
// Divided by 100, as it is not when a user is created: what reads these rows counts on both.
constexpr QuotaInsert changed_quota{
    R"(INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(%d,
        (SELECT S.id FROM share S WHERE zfs_name=%Q),
        %lu*(SELECT diskquota_warn FROM account_default LIMIT 1)/100,%lu))",
    "Failed DB Query for 'UPDATE user_quota. %s",
};

// The folder of the snapshots can be hidden here but not changed.
int update_home_folder(Call &call, int key, const qbobj_UserHomeFolderSettings_t *settings)
{
    if (settings == nullptr)
        return 0;
    const char *folder = nullptr;
    if (const int rc = call.text("Failed DB Query for 'SELECT visible_snapdir'. %s", folder,
                                 "SELECT H.visible_snapdir FROM `$home_folder` H WHERE H.user_id=%d", key))
        return rc;
    return call.exec(
        "Failed DB Query for 'UPDATE $home_folder'. %s",
        R"(INSERT OR REPLACE INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,%d,%lu,%Q))",
        key, settings->SnapshotProtectionEnabled, settings->SizeLimit,
        settings->VisibleSnapshot != 0 ? or_empty(folder) : empty_str);
}

int switch_timemachine(Call &call, int on)
{
    return call.exec("Failed DB Query for 'UPDATE service_afp'. %s",
                     R"(UPDATE service_afp SET timemachine_enabled=%d,
        volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1),
        vol_size_limit_timemachine_mb=(SELECT capacity_mb FROM '$timemachine_quota' WHERE user_id=96))",
                     on);
}

// Takes the user's area away, and Time Machine with the last one.
int delete_timemachine_quota(Call &call, int key)
{
    if (const int rc = call.exec("Failed DB Query for $timemachine_quota. %s",
                                 "DELETE FROM '$timemachine_quota' WHERE user_id=%d", key))
        return rc;
    bool unused = false;
    if (const int rc = timemachine_is_unused(call, unused))
        return rc;
    return unused ? switch_timemachine(call, 0) : 0;
}

int update_timemachine(Call &call, int key, const qbobj_UserTimeMachineQuota_t *quota)
{
    if (quota == nullptr)
        return 0;
    if (const int rc = call.exec(
            "Failed DB Query for 'UPDATE $timemachine_quota'. %s",
            "INSERT OR REPLACE INTO `$timemachine_quota` (user_id,enabled,capacity_mb) VALUES (%d,%d,%d)",
            key, quota->Enabled, quota->CapacityMB))
        return rc;
    if (const int rc = call.exec("Failed DB Query for 'DELETE user from $timemachine_quota. %s",
                                 "DELETE FROM '$timemachine_quota' WHERE user_id<>96 AND enabled=0"))
        return rc;
    int on = 0;
    if (const int rc = call.number("Failed DB Query for service_afp. %s", on,
                                   "SELECT timemachine_enabled FROM service_afp LIMIT 1"))
        return rc;
    if (on == 0)
        return quota->Enabled == 1 ? switch_timemachine(call, 1) : 0;
    return quota->Delete == 1 ? delete_timemachine_quota(call, key) : 0;
}

int rename_snapshots(Call &call, const char *new_name, const Rename &rename)
{
    if (rename.old_name == nullptr || rename.new_home == nullptr)
        return 0;
    return call.exec("Failed DB Query for 'UPDATE $home_folder_snapshot'. %s",
                     "UPDATE `$home_folder_snapshot` SET user_name=%Q,home_dir=%Q WHERE user_name=%Q",
                     new_name, rename.new_home, rename.old_name);
}

// Writes the user's own row. `rename` receives what the caller needs for the home.
int change_user(Call &call, const qbobj_User_t &user, int key, Rename &rename)
{
    Changes changes(call, Overflow::refuse);
    if (const int rc = change_name(call, user, key, changes, rename))
        return rc;
    if (const int rc = change_password(call, user, changes))
        return rc;
    if (const int rc = change_rest(call, user, changes))
        return rc;
    return update_user(call, key, changes);
}

int modify_user(Call &call, qbobj_User_t &user)
{
    int key = 0;
    if (const int rc = find_user_key(call, user, key))
        return rc;
    if (key < 1 && !call.directory().ads)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d).", key);
    if (qbobj_validate_db_userid(call, key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", key);

    Rename rename;
    if (const int rc = change_user(call, user, key, rename))
        return rc;
    if (const int rc = change_quotas(call, changed_quota, removed_quota, key, user.UserQuota))
        return rc;
    if (const int rc = update_home_folder(call, key, user.HomeFolderSettings))
        return rc;
    if (const int rc = update_timemachine(call, key, user.TimeMachineQuota))
        return rc;
    if (const int rc = rename_snapshots(call, user.UserName, rename))
        return rc;

    user.OldUserName = rename.old_name;
    user.OldHomeDirectory = rename.old_home;
    if (rename.new_home != nullptr)
        user.HomeDirectory = rename.new_home;
    return 0;
}

} // namespace

int x_qbobj_modifyUser(Call &call, qbobj_User_t *user)
{
    return for_each(user, modify_user, call);
}

int x_qbobj_setPrimaryGroupByName(Call &call, const char *UserName, const char *GroupName)
{
    const char *rid_not = call.directory().rid_not();
    // A group that does not exist leaves the user without one.
    return call.exec(
        "Failed DB Query for 'UPDATE user'. %s",
        R"(UPDATE `$user` SET group_id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q AND G.rid IS %s NULL)
        WHERE uname=%Q AND rid IS %sNULL)",
        GroupName, rid_not, UserName, rid_not);
}

// A hash is locked by a '!' in front of it.
int x_qbobj_disableEnableLocalUserByName(Call &call, int Enable, const char *UserName)
{
    const char *whose = UserName == nullptr ? "" : sql_text<const char *>(call, "uname=%Q AND ", UserName);
    if (Enable != 0)
        return call.exec(
            "Failed DB Query for 'UPDATE user'. %s",
            R"(UPDATE `$user` SET passwd=substr(passwd,2) WHERE %s is_privileged=0 AND rid IS NULL AND group_id<>98
        AND substr(passwd,1,2)='!$' AND substr(passwd,4,1)='$')",
            whose);
    return call.exec(
        "Failed DB Query for 'UPDATE user'. %s",
        R"(UPDATE `$user` SET passwd='!'||passwd WHERE %s is_privileged=0 AND rid IS NULL AND group_id<>98
        AND substr(passwd,1,1)='$' AND substr(passwd,3,1)='$')",
        whose);
}

int x_qbobj_modifyUserVisibleSnapFolder(Call &call, int UserId, const char *VisibleSnapFolder)
{
    return call.exec("Failed DB Query for 'UPDATE `$home_folder`'. %s",
                     "UPDATE `$home_folder` SET visible_snapdir=%Q WHERE user_id=%d",
                     or_empty(VisibleSnapFolder), UserId);
}

} // namespace qbobj
