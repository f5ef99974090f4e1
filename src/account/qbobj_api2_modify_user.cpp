// Changes users: everything about one user, or one thing about users by name.
#include "account/account.h"
#include "account/user_rows.h"
#include "core/set_list.h"
#include "validate/validate.h"

#include <cstring>

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

// ---- The columns of the user ---------------------------------------------------------------------------

int check_new_name(Call &call, const char *given, int key, const char *&name)
{
    switch (const int rc = qbobj_validate_username(given, &name)) {
    case 0:
        break;
    case 3:
        return raise(call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "UserName is too long (%s)", given);
    case 4:
    case 5:
        return raise(call, QBOBJ_ERROR_UI__USERNAME_RESERVED, "UserName (%s) is reserved", given);
    default:
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserName (%s), rc=%d", given, rc);
    }
    int owner = 0;
    if (qbobj_validate_db_username(call, name, nullptr, &owner) == 0 && owner != key)
        return raise(call, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS,
                     "Cannot rename to user which already exists (%s).", name);
    return 0;
}

// A local user's home follows the name, also when the name given is the one the user has.
int find_new_home(Call &call, const Directory &directory, int key,
                  const char *name, const char *&home)
{
    Text found;
    if (directory.ads) {
        found = call.ask_text("SELECT U.home FROM `$user` U WHERE U.id=%d", key);
        if (!found)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT home FROM `$users`'. %s",
                         found.error());
    } else {
        found = call.ask_text("SELECT '/home/'||%Q", name);
        if (!found)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT account_default'. %s",
                         found.error());
    }
    home = found.value;
    return 0;
}

int change_name(Call &call, const Directory &directory, const qbobj_User_t &user, int key,
                Changes &changes, Rename &rename)
{
    if (user.UserName == nullptr)
        return 0;
    StoredUser stored{};
    const char *name = nullptr;
    int rc = read_stored_user(call, key, stored);
    if (rc == 0)
        rc = check_new_name(call, user.UserName, key, name);
    if (rc != 0)
        return rc;
    changes.add("uname='%q'", name);

    // The column decides whether the names differ: a new spelling in capitals is no new name.
    const Text old_name = call.ask_text("SELECT U.uname FROM `$user` U WHERE U.id=%d AND U.uname<>%Q", key, name);
    if (!old_name)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT user'. %s", old_name.error());
    if (old_name.found != 0) {
        rename.old_name = old_name.value;
        rename.old_home = stored.home;
    }
    rc = find_new_home(call, directory, key, name, rename.new_home);
    if (rc == 0)
        changes.add("home=%Q", rename.new_home);
    return rc;
}

// A password that comes back masked, as it was read, stays.
int change_password(Call &call, const qbobj_User_t &user, Changes &changes)
{
    const char *passwd = user.SysHash;
    if (is_empty(passwd)) {
        if (user.Password == nullptr || std::strcmp(user.Password, masked_password) == 0)
            return 0;
        if (const int rc = qbobj_validate_password(call, user.Password, &passwd); rc != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password (%s) rc=%d", user.Password, rc);
    }
    changes.add("passwd='%q'", passwd);
    return 0;
}

int change_rest(Call &call, const qbobj_User_t &user, Changes &changes)
{
    // Address and lock are always written: leaving out the address clears it.
    const char *email = empty_str;
    if (!is_empty(user.Email))
        if (const int rc = qbobj_validate_email(user.Email, &email); rc != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Email (%s) rc=%d", user.Email, rc);
    changes.add("email='%q'", email);
    if (!is_empty(user.GroupName)) {
        int group_id = 0;
        if (qbobj_validate_db_groupname(call, user.GroupName, nullptr, &group_id) != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (%s)", user.GroupName);
        changes.add("group_id=%d", group_id);
    }
    changes.add("is_locked=%d", user.IsLocked);
    return 0;
}

int update_user(Call &call, int key, const Changes &changes)
{
    if (changes.refused() != nullptr)
        return raise_refused(call, changes);
    const Status updated = call.run("UPDATE `$user` SET %s WHERE id=%d", changes.text(), key);
    if (updated.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "Specified uname already exists'. %s",
                     updated.error());
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE user'. %s", updated.error());
    return 0;
}

// ---- What belongs to the user --------------------------------------------------------------------------

int update_quotas(Call &call, int key, qbobj_Quota_t *quotas)
{
    for (const qbobj_Quota_t &quota : Chain(quotas)) {
        if (quota.HardMB == 0) {
            const Status deleted = call.run(R"(DELETE FROM user_quota WHERE user_id=%d
                AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name=%Q))",
                                            key, quota.ShareId);
            if (!deleted)
                return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE user_quota. %s",
                             deleted.error());
            continue;
        }
        // Divided by 100, as it is not when a user is created: what reads these rows counts on both.
        const Status stored = call.run(
            R"(INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(%d,
            (SELECT S.id FROM share S WHERE zfs_name=%Q),
            %lu*(SELECT diskquota_warn FROM account_default LIMIT 1)/100,%lu))",
            key, quota.ShareId, quota.HardMB, quota.HardMB);
        if (!stored)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE user_quota. %s",
                         stored.error());
    }
    return 0;
}

// The folder of the snapshots can be hidden here but not changed.
int update_home_folder(Call &call, int key,
                       const qbobj_UserHomeFolderSettings_t *settings)
{
    if (settings == nullptr)
        return 0;
    const Text folder = call.ask_text("SELECT H.visible_snapdir FROM `$home_folder` H WHERE H.user_id=%d", key);
    if (!folder)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT visible_snapdir'. %s",
                     folder.error());
    const Status stored = call.run(
        R"(INSERT OR REPLACE INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,%d,%lu,%Q))",
        key, settings->SnapshotProtectionEnabled, settings->SizeLimit,
        settings->VisibleSnapshot != 0 ? or_empty(folder.value) : empty_str);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE $home_folder'. %s",
                     stored.error());
    return 0;
}

int switch_timemachine(Call &call, int on)
{
    const Status updated = call.run(R"(UPDATE service_afp SET timemachine_enabled=%d,
        volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1),
        vol_size_limit_timemachine_mb=(SELECT capacity_mb FROM '$timemachine_quota' WHERE user_id=96))",
                                    on);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE service_afp'. %s",
                     updated.error());
    return 0;
}

// Takes the user's area away, and Time Machine with the last one.
int delete_timemachine_quota(Call &call, int key)
{
    const Status deleted = call.run("DELETE FROM '$timemachine_quota' WHERE user_id=%d", key);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for $timemachine_quota. %s", deleted.error());
    const Number unused = timemachine_is_unused(call);
    if (!unused)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for $timemachine_quota. %s", unused.error());
    return unused.value != 0 ? switch_timemachine(call, 0) : 0;
}

int update_timemachine(Call &call, int key,
                       const qbobj_UserTimeMachineQuota_t *quota)
{
    if (quota == nullptr)
        return 0;
    const Status stored = call.run(
        "INSERT OR REPLACE INTO `$timemachine_quota` (user_id,enabled,capacity_mb) VALUES (%d,%d,%d)", key,
        quota->Enabled, quota->CapacityMB);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE $timemachine_quota'. %s",
                     stored.error());
    const Status cleaned = call.run("DELETE FROM '$timemachine_quota' WHERE user_id<>96 AND enabled=0");
    if (!cleaned)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE user from $timemachine_quota. %s",
                     cleaned.error());
    const Number on = call.ask_number("SELECT timemachine_enabled FROM service_afp LIMIT 1");
    if (!on)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for service_afp. %s", on.error());
    if (on.value == 0)
        return quota->Enabled == 1 ? switch_timemachine(call, 1) : 0;
    return quota->Delete == 1 ? delete_timemachine_quota(call, key) : 0;
}

int rename_snapshots(Call &call, const char *new_name, const Rename &rename)
{
    if (rename.old_name == nullptr || rename.new_home == nullptr)
        return 0;
    const Status renamed =
        call.run("UPDATE `$home_folder_snapshot` SET user_name=%Q,home_dir=%Q WHERE user_name=%Q", new_name,
                 rename.new_home, rename.old_name);
    if (!renamed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE $home_folder_snapshot'. %s",
                     renamed.error());
    return 0;
}

int modify_user(Call &call, const Directory &directory, qbobj_User_t &user)
{
    int key = 0;
    if (const int rc = find_user_key(call, directory, user, key); rc != 0)
        return rc;
    if (key < 1 && !directory.ads)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d).", key);
    if (qbobj_validate_db_userid(call, key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", key);

    Changes changes(call, Overflow::refuse);
    Rename rename;
    int rc = change_name(call, directory, user, key, changes, rename);
    if (rc == 0)
        rc = change_password(call, user, changes);
    if (rc == 0)
        rc = change_rest(call, user, changes);
    if (rc == 0)
        rc = update_user(call, key, changes);
    if (rc == 0)
        rc = update_quotas(call, key, user.UserQuota);
    if (rc == 0)
        rc = update_home_folder(call, key, user.HomeFolderSettings);
    if (rc == 0)
        rc = update_timemachine(call, key, user.TimeMachineQuota);
    if (rc == 0)
        rc = rename_snapshots(call, user.UserName, rename);
    if (rc != 0)
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
    const Directory directory = call.directory();
    for (qbobj_User_t &modified : Chain(user))
        if (const int rc = modify_user(call, directory, modified); rc != 0)
            return rc;
    return 0;
}

int x_qbobj_setPrimaryGroupByName(Call &call, const char *UserName,
                                  const char *GroupName)
{
    const Directory directory = call.directory();
    // A group that does not exist leaves the user without one.
    const Status updated = call.run(
        R"(UPDATE `$user` SET group_id=(SELECT G.id FROM `$group` G WHERE G.gname=%Q AND G.rid IS %s NULL)
        WHERE uname=%Q AND rid IS %sNULL)",
        GroupName, directory.rid_not(), UserName, directory.rid_not());
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE user'. %s", updated.error());
    return 0;
}

// A hash is locked by a '!' in front of it.
int x_qbobj_disableEnableLocalUserByName(Call &call, int Enable, const char *UserName)
{
    const int all = UserName == nullptr ? 1 : 0;
    const Status updated = Enable != 0
                               ? call.run(R"(UPDATE `$user` SET passwd=substr(passwd,2) WHERE (%d OR uname=%Q)
            AND is_privileged=0 AND rid IS NULL AND group_id<>98
            AND substr(passwd,1,2)='!$' AND substr(passwd,4,1)='$')",
                                          all, or_empty(UserName))
                               : call.run(R"(UPDATE `$user` SET passwd='!'||passwd WHERE (%d OR uname=%Q)
            AND is_privileged=0 AND rid IS NULL AND group_id<>98
            AND substr(passwd,1,1)='$' AND substr(passwd,3,1)='$')",
                                          all, or_empty(UserName));
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE user'. %s", updated.error());
    return 0;
}

int x_qbobj_modifyUserVisibleSnapFolder(Call &call, int UserId,
                                        const char *VisibleSnapFolder)
{
    const Status updated = call.run(
        "UPDATE `$home_folder` SET visible_snapdir=%Q WHERE user_id=%d", or_empty(VisibleSnapFolder), UserId);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE `$home_folder`'. %s",
                     updated.error());
    return 0;
}

} // namespace qbobj
