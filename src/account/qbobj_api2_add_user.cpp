// Creates local users, one by one with all their settings or in bulk from an imported list.
#include "account/group_changes.h"
#include "account/user_list.h"

#include <string_view>
#include <unordered_set>

namespace qbobj
{

namespace
{

constexpr int min_uid = 100;
constexpr int max_uid = 32767;
constexpr int default_group_id = 99;
constexpr const char *cloud_group = "sky-port";
constexpr const char *user_list_path = "/tmp/user_list.txt";

bool is_local_uid(int uid)
{
    return uid >= min_uid && uid <= max_uid;
}

// ---- What a new account may consist of -----------------------------------------------------------------

// `name` receives the name to store.
int check_user_name(Call &call, const char *given, const char *&name)
{
    if (is_empty(given))
        return raise(call, QBOBJ_ERROR_API_ARGS, "UserName is required for 'add'");
    switch (const int rc = qbobj_validate_username(given, &name)) {
    case 0:
        return 0;
    case 3:
        return raise(call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "UserName (%s) is too long", given);
    case 4:
    case 5:
        return raise(call, QBOBJ_ERROR_UI__USERNAME_RESERVED, "UserName (%s) is reserved", given);
    default:
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserName (%s), rc=%d", given, rc);
    }
}

int check_email(Call &call, const char *given, const char *&email)
{
    email = empty_str;
    if (is_empty(given))
        return 0;
    if (const int rc = qbobj_validate_email(given, &email); rc != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Email (%s) rc=%d", given, rc);
    return 0;
}

int encode_password(Call &call, const char *plain, const char *&passwd)
{
    passwd = empty_str;
    if (is_empty(plain))
        return 0;
    if (const int rc = qbobj_validate_password(call, plain, &passwd); rc != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password (%s) rc=%d", plain, rc);
    return 0;
}

// Leaves `group_id` as it is when the user names no group.
int find_primary_group(Call &call, const qbobj_User_t &user, int &group_id)
{
    if (is_empty(user.GroupName))
        return 0;
    int found = 0;
    if (qbobj_validate_db_groupname(call, user.GroupName, nullptr, &found) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (%s)", user.GroupName);
    group_id = found;
    return 0;
}

int find_home(Call &call, const char *volume_id, const char *name, const char *&home)
{
        Text path;
    if (volume_id != nullptr) {
        path = call.ask_text("SELECT '/'||V.lv_name||'/home/'||%Q FROM _volume V WHERE V.id=%Q", name, volume_id);
        if (!path)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'SELECT _volume'. %s", path.error());
    } else {
        path = call.ask_text("SELECT '/home/'||%Q", name);
        if (!path)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'SELECT /home/%%s'. %s", path.error());
    }
    if (path.value == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HomeVolume or default home volume not exists");
    home = path.value;
    return 0;
}

int check_name_is_free(Call &call, const char *name)
{
        const Number users = call.ask_number("SELECT COUNT(*) FROM `$user` WHERE uname=%Q", name);
    if (!users)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", users.error());
    if (users.value == 0)
        return 0;
    const Number remote = call.ask_number("SELECT COUNT(*) FROM `$user` WHERE uname=%Q AND "
                                   "group_id=(SELECT id FROM `$group` WHERE gname=%Q)",
                                   name, cloud_group);
    if (!remote)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", remote.error());
    if (remote.value > 0)
        return raise(call, QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME,
                     "Username (%s) is the same as existing remote username.", name);
    return raise(call, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "User (%s) already exists.", name);
}

// ---- User ids ------------------------------------------------------------------------------------------

// The first id at or above `mark` that no user has; the one behind the highest when all are taken. Halves the
// range: a part without a gap holds as many users as ids.
Number find_first_gap(Call &call, int mark)
{
    Number taken = call.ask_number("SELECT COUNT(*) FROM `$user` WHERE id=%d", mark);
    if (taken && taken.value != 0) {
        int low = mark + 1;
        for (int high = max_uid + 1; taken && low < high;) {
            const int middle = low + (high - low) / 2;
            taken = call.ask_number("SELECT COUNT(*) FROM `$user` WHERE id BETWEEN %d AND %d", low, middle);
            if (taken.value == middle - low + 1)
                low = middle + 1;
            else
                high = middle;
        }
        mark = low;
    }
    taken.value = mark;
    return taken;
}

// The first free id at or above the mark in account_default, which moves on behind it; -1 when there is none.
Number _get_next_available_uid(Call &call)
{
        Number uid = call.ask_number("SELECT next_uid FROM account_default");
    if (uid)
        uid = find_first_gap(call, uid.value);
    if (!uid || !is_local_uid(uid.value))
        uid.value = -1;
    else
        call.run("UPDATE account_default SET next_uid=%d", uid.value + 1);
    return uid;
}

// Chooses the user's id, or checks the one that is given.
int find_uid(Call &call, qbobj_User_t &user)
{
    if (user.UserId < 1) {
        const Number uid = _get_next_available_uid(call);
        if (uid.value == -1)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Could not get next available uid. %s", uid.error());
        if (!is_local_uid(uid.value))
            return raise(call, QBOBJ_ERROR_DB_MISC, "No more uid available");
        user.UserId = uid.value;
        return 0;
    }
    if (!is_local_uid(user.UserId))
        return raise(call, QBOBJ_ERROR_API_ARGS, "UserId=%d is out of valid range (%d-%d).", user.UserId,
                     min_uid, max_uid);
    const Number taken = call.ask_number("SELECT COUNT(*) FROM `$user` WHERE id=%d", user.UserId);
    if (!taken)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", taken.error());
    if (taken.value != 0)
        return raise(call, QBOBJ_ERROR_UI__UID_ALREADY_EXISTS, "UserId (%d) already exists.", user.UserId);
    return 0;
}

// ---- The rows of a new account -------------------------------------------------------------------------

int insert_quotas(Call &call, const qbobj_User_t &user)
{
    for (const qbobj_Quota_t &quota : Chain(user.UserQuota)) {
        // diskquota_warn is a percentage, and a new user's soft limit is not divided by 100, unlike a changed
        // one: what reads these rows counts on it.
        const Status inserted = call.run(
            R"(INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(%d,
            (SELECT S.id FROM share S WHERE zfs_name=%Q),
            %lu*(SELECT diskquota_warn FROM account_default LIMIT 1),%lu))",
            user.UserId, quota.ShareId, quota.HardMB, quota.HardMB);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT user_quota'. %s",
                         inserted.error());
    }
    return 0;
}

int insert_home_folder(Call &call, const qbobj_User_t &user)
{
    if (const qbobj_UserHomeFolderSettings_t *settings = user.HomeFolderSettings; settings != nullptr) {
        const Status inserted = call.run(
            R"(INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
            VALUES (%d,%d,%lu,%Q))",
            user.UserId, settings->SnapshotProtectionEnabled, settings->SizeLimit,
            settings->VisibleSnapshot != 0 ? or_empty(settings->VisibleSnapFolder) : empty_str);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT $home_folder'. %s",
                         inserted.error());
        return 0;
    }
    const Status inserted = call.run(
        R"(INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,(SELECT snapshot_protection FROM account_default LIMIT 1),
        (SELECT home_folder_capacity_limit FROM account_default LIMIT 1),%Q))",
        user.UserId, empty_str);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC,
                     "Failed DB Query for 'INSERT $home_folder' using account_default. %s", inserted.error());
    return 0;
}

int insert_timemachine_quota(Call &call, const qbobj_User_t &user)
{
    const qbobj_UserTimeMachineQuota_t *quota = user.TimeMachineQuota;
    if (quota == nullptr || quota->Enabled == 0)
        return 0;
    const Status inserted =
        call.run("INSERT INTO '$timemachine_quota' (user_id,enabled,capacity_mb) VALUES (%d,%d,%d)",
                          user.UserId, quota->Enabled, quota->CapacityMB);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT $timemachine_quota'. %s",
                     inserted.error());
    return 0;
}

int read_back(Call &call, qbobj_User_t &user)
{
    const Text home = call.ask_text("SELECT home FROM `$user` WHERE id=%d", user.UserId);
    if (!home)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for (SELECT user). %s", home.error());
    user.HomeDirectory = home.value;
    user.resource_id = user.UserId;
    return 0;
}

int insert_settings(Call &call, qbobj_User_t &user)
{
    int rc = insert_quotas(call, user);
    if (rc == 0)
        rc = insert_home_folder(call, user);
    if (rc == 0)
        rc = insert_timemachine_quota(call, user);
    return rc != 0 ? rc : read_back(call, user);
}

int add_user(Call &call, qbobj_User_t &user, int &group_id)
{
    const char *name = nullptr;
    const char *passwd = nullptr;
    const char *email = nullptr;
    const char *home = nullptr;
    int rc = check_user_name(call, user.UserName, name);
    if (rc == 0 && !is_empty(user.SysHash))
        passwd = user.SysHash;
    else if (rc == 0)
        rc = encode_password(call, user.Password, passwd);
    if (rc == 0)
        rc = check_email(call, user.Email, email);
    if (rc == 0)
        rc = find_primary_group(call, user, group_id);
    if (rc == 0)
        rc = find_home(call, user.HomeVolumeId, name, home);
    if (rc == 0)
        rc = check_name_is_free(call, name);
    if (rc == 0)
        rc = find_uid(call, user);
    if (rc != 0)
        return rc;

    // last_changed is a day number: 60/60/24.
    const Status inserted = call.run(
        R"(INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed,is_locked)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/60/24,%d))",
        user.UserId, name, passwd, email, home, group_id, user.IsLocked);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT user'. %s", inserted.error());
    return insert_settings(call, user);
}

int add_listed_user(Call &call, qbobj_User_t &user, int &group_id)
{
    if (const int rc = find_primary_group(call, user, group_id); rc != 0)
        return rc;
    const Number uid = call.ask_number(R"(SELECT IFNULL(MAX(U.id)+1,100) FROM `$user` U
        WHERE U.is_privileged=0 AND U.rid IS NULL AND U.id<32767)");
    if (!uid)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", uid.error());
    user.UserId = uid.value;
    // Here last_changed is divided by 60/24/24 and so is no day number: callers depend on both divisors.
    const Status inserted = call.run(
        R"(INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/24/24))",
        user.UserId, user.UserName, user.Password, user.Email, "/home", group_id);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT user'. %s", inserted.error());
    return read_back(call, user);
}

// Runs through a chain. A user who names no group gets that of the nearest user before who did.
template <class Add>
int add_each(Call &call, qbobj_User_t *chain, Add add)
{
    int group_id = default_group_id;
    for (qbobj_User_t &user : Chain(chain))
        if (const int rc = add(call, user, group_id); rc != 0)
            return rc;
    return 0;
}

// ---- The import list -----------------------------------------------------------------------------------

using Names = std::unordered_set<std::string_view>;

template <class Record>
void collect(Names &names, Record *chain, const char *Record::*name)
{
    for (const Record &record : Chain(chain))
        if (record.*name != nullptr)
            names.insert(record.*name);
}

// -1: there is such a user; 0: there is such a group; 1: both are new.
int check_user_group_duplicate(const char *user, const char *group, const Names &users, const Names &groups)
{
    if (users.contains(user))
        return -1;
    return groups.contains(group) ? 0 : 1;
}

// The link that ends a list.
template <class Record>
Record *&end_of(Record *&head)
{
    Record **end = &head;
    while (*end != nullptr)
        end = &(*end)->_link;
    return *end;
}

// What an import has found so far.
class Import
{
  public:
    Import(Call &call, qbobj_User_t *&users_end, qbobj_Group_t *&groups_end)
        : call_(call), users_(users_end), groups_(groups_end)
    {
    }
    void knows(const qbobj_UserCollection_t &users)
    {
        collect(user_names_, users.User, &qbobj_User_t::UserName);
    }
    void knows(const qbobj_GroupCollection_t &groups)
    {
        collect(group_names_, groups.Group, &qbobj_Group_t::GroupName);
    }
    int add(const UserListEntry &entry);

  private:
    const char *keep(const char *text) const { return copy_text(call_.pool(), text); }

    Call &call_;
    Tail<qbobj_User_t> users_;
    Tail<qbobj_Group_t> groups_;
    Names user_names_;
    Names group_names_;
};

int Import::add(const UserListEntry &entry)
{
    const char *user_name = nullptr;
    const char *group_name = nullptr;
    const char *email = nullptr;
    const char *passwd = entry.password;
    int rc = check_user_name(call_, entry.user_name, user_name);
    if (rc == 0)
        rc = check_new_group_name(call_, entry.group_name, group_name);
    if (rc == 0)
        rc = check_email(call_, entry.email, email);
    if (rc == 0 && !entry.encoded)
        rc = encode_password(call_, entry.password, passwd);
    if (rc != 0)
        return rc;

    const int duplicate = check_user_group_duplicate(user_name, group_name, user_names_, group_names_);
    if (duplicate < 0)
        return raise(call_, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "User (%s) already exists.", user_name);
    if (duplicate > 0) {
        qbobj_Group_t &group = groups_.append(call_.pool());
        group.GroupName = keep(group_name);
        group_names_.insert(group.GroupName);
    }
    qbobj_User_t &user = users_.append(call_.pool());
    user.UserName = keep(user_name);
    user.GroupName = keep(group_name);
    user.Email = keep(email);
    user.Password = keep(passwd);
    user_names_.insert(user.UserName);
    return 0;
}

int read_user_list(Call &call, Import &import)
{
    UserListReader list(path_below_root(call, user_list_path));
    if (list.missing())
        return raise(call, QBOBJ_ERROR_UNKNOWN, "User file not exist");
    UserListEntry entry{};
    for (;;) {
        switch (list.next(entry)) {
        case UserListReader::Next::end:
            return 0;
        case UserListReader::Next::wrong_format:
            return raise(call, QBOBJ_ERROR_UNKNOWN, "User file wrong format");
        case UserListReader::Next::entry:
            if (const int rc = import.add(entry); rc != 0)
                return rc;
        }
    }
}

} // namespace

int x_qbobj_addUser(Call &call, qbobj_User_t *user)
{
    return add_each(call, user, add_user);
}

int x_qbobj_addUserList(Call &call, qbobj_User_t *user)
{
    return add_each(call, user, add_listed_user);
}

int x_qbobj_checkUserList(Call &call, qbobj_UserCollection_t *user_collection,
                          qbobj_GroupCollection_t *group_collection,
                          qbobj_UserCollection_t *user_collection_bak,
                          qbobj_GroupCollection_t *group_collection_bak)
{
    if (user_collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user_collection cannot be NULL.");
    if (group_collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group_collection cannot be NULL.");
    if (user_collection_bak == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user_collection_bak cannot be NULL.");
    if (group_collection_bak == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group_collection_bak cannot be NULL.");

    qbobj_User_t *&users_end = end_of(user_collection->User);
    qbobj_Group_t *&groups_end = end_of(group_collection->Group);
    Import import(call, users_end, groups_end);
    import.knows(*user_collection);
    import.knows(*user_collection_bak);
    import.knows(*group_collection);
    import.knows(*group_collection_bak);
    const int rc = read_user_list(call, import);
    if (rc != 0) {
        // Nothing of a list with a fault is handed over.
        users_end = nullptr;
        groups_end = nullptr;
    }
    return rc;
}

} // namespace qbobj
