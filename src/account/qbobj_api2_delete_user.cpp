// Removes users: everything that refers to them goes, their own row is only marked.
#include "account/account.h"
#include "account/user_rows.h"
#include "validate/validate.h"

#include <span>

namespace qbobj
{

namespace
{

// A statement about one user, and the message of its failure.
struct Removal {
    Statement<int> statement;
    Message<const char *> failure;
};

constexpr Removal settings_of_user[] = {
    {"DELETE FROM user_quota WHERE user_id=%d", "Failed DELETE user_quota. %s"},
    {"DELETE FROM user_acl WHERE user_id=%d", "Failed DELETE user_acl. %s"},
    {"DELETE FROM _user_quota_stat WHERE user_id=%d", "Failed DELETE _user_quota_stat. %s"},
    {"DELETE FROM `$home_folder` WHERE user_id=%d", "Failed DELETE $home_folder. %s"},
    {"DELETE FROM `$timemachine_quota` WHERE user_id=%d", "Failed DELETE $timemachine_quota. %s"},
};

// The last one marks the user itself, whose name the one before it needs.
constexpr Removal user_itself[] = {
    {"DELETE FROM `$group_has_user` WHERE user_id=%d", "Failed DELETE group_has_user. %s"},
    {"DELETE FROM `$home_folder_snapshot` WHERE user_name=(SELECT U.uname FROM `$user` U WHERE U.id=%d)",
     "Failed DELETE $home_folder_snapshot. %s"},
    {"UPDATE `$user` SET is_privileged=-1 WHERE id=%d", "Failed DB Query for 'UPDATE user'. %s"},
};

int remove_rows(Call &call, std::span<const Removal> removals, int user_id)
{
    for (const Removal &removal : removals)
        if (const Status removed = call.run(removal.statement, user_id); !removed)
            return raise(call, QBOBJ_ERROR_DB_MISC, removal.failure, removed.error());
    return 0;
}

int _delete_user_core(Call &call, int user_id)
{
    if (const int rc = remove_rows(call, settings_of_user, user_id); rc != 0)
        return rc;

    const Number unused = timemachine_is_unused(call);
    if (!unused)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for $timemachine_quota. %s", unused.error());
    if (unused.value != 0) {
        const Status off = call.run("UPDATE service_afp SET timemachine_enabled=0");
        if (!off) {
            // Reported in the error record, but a success: the deletion ends here and the user's own row
            // stays unmarked. Callers depend on it.
            raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE service_afp'. %s", off.error());
            return 0;
        }
    }

    if (const int rc = remove_rows(call, user_itself, user_id); rc != 0)
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     user_id);
    return 0;
}

// 1 when the user may be deleted, -1 on a failure; 0 would refuse, which no user gives cause for today.
int _is_ok_to_delete_user(Call &call, int user_id, const char *&delete_home,
                          const char *&user_name)
{
    StoredUser stored{};
    if (read_stored_user(call, user_id, stored) != 0)
        return -1;
    delete_home = stored.home;
    user_name = stored.name;
    return 1;
}

// Deletes a user that exists. `refuse` raises the error of one that must stay.
template <class Refuse>
int delete_existing(Call &call, int user_id, qbobj_User_t &user, Refuse refuse)
{
    const char *home = nullptr;
    const char *name = nullptr;
    const int allowed = _is_ok_to_delete_user(call, user_id, home, name);
    if (allowed < 0)
        return QBOBJ_ERROR_DB_MISC;
    if (allowed == 0)
        return refuse();
    if (const int rc = _delete_user_core(call, user_id); rc != 0)
        return rc;
    user.UserName = name;
    user.HomeDirectory = home;
    user.OldHomeDirectory = home;
    return 0;
}

int delete_user(Call &call, qbobj_User_t &user)
{
    const int key = key_of(user.resource_id, user.UserId);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d)", key);
    if (qbobj_validate_db_userid(call, key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", key);
    return delete_existing(call, key, user, [&] {
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot delete user (user_id=%d)", key);
    });
}

int delete_user_by_name(Call &call, qbobj_User_t &user)
{
    int key = 0;
    if (qbobj_validate_db_username(call, user.UserName, nullptr, &key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", user.resource_id);
    return delete_existing(call, key, user, [&] {
        return raise(call, QBOBJ_ERROR_API_ARGS, "Cannot delete user (user_name=%s)", user.UserName);
    });
}

// Runs through a chain.
template <class Delete>
int delete_each(Call &call, qbobj_User_t *chain, Delete remove)
{
    for (qbobj_User_t &user : Chain(chain))
        if (const int rc = remove(call, user); rc != 0)
            return rc;
    return 0;
}

} // namespace

int x_qbobj_deleteUser(Call &call, qbobj_User_t *user)
{
    return delete_each(call, user, delete_user);
}

int x_qbobj_deleteUserByName(Call &call, qbobj_User_t *user)
{
    return delete_each(call, user, delete_user_by_name);
}

} // namespace qbobj
