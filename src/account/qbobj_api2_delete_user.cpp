// Removes users: everything that refers to them goes, their own row is only marked.
#include "account/queries.h"
#include "account/user_changes.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

constexpr AccountStatement settings_of_user[] = {
    {"DELETE FROM user_quota WHERE user_id=%d", "Failed DELETE user_quota. %s"},
    {"DELETE FROM user_acl WHERE user_id=%d", "Failed DELETE user_acl. %s"},
    {"DELETE FROM _user_quota_stat WHERE user_id=%d", "Failed DELETE _user_quota_stat. %s"},
    {"DELETE FROM `$home_folder` WHERE user_id=%d", "Failed DELETE $home_folder. %s"},
    {"DELETE FROM `$timemachine_quota` WHERE user_id=%d", "Failed DELETE $timemachine_quota. %s"},
};

// The last one marks the user itself, whose name the one before it needs.
constexpr AccountStatement user_itself[] = {
    {"DELETE FROM `$group_has_user` WHERE user_id=%d", "Failed DELETE group_has_user. %s"},
    {"DELETE FROM `$home_folder_snapshot` WHERE user_name=(SELECT U.uname FROM `$user` U WHERE U.id=%d)",
     "Failed DELETE $home_folder_snapshot. %s"},
    {"UPDATE `$user` SET is_privileged=-1 WHERE id=%d", "Failed DB Query for 'UPDATE user'. %s"},
};

int delete_user_core(Call &call, int user_id)
{
    if (const int rc = exec_each(call, settings_of_user, user_id))
        return rc;

    bool unused = false;
    if (const int rc = timemachine_is_unused(call, unused))
        return rc;
    // A failure is reported in the error record, but a success: the deletion ends here and the user's own row stays
    // unmarked. Callers depend on it.
    if (unused && call.exec("Failed DB Query for 'UPDATE service_afp'. %s",
                            "UPDATE service_afp SET timemachine_enabled=0") != 0)
        return 0;

    if (const int rc = exec_each(call, user_itself, user_id))
        return rc;
    if (call.changes() == 0)
        return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted. May be bad resource_id=%d'",
                     user_id);
    return 0;
}

// Reads what the user is, and whether the user may be deleted: today everyone may.
int is_ok_to_delete_user(Call &call, int user_id, StoredUser &stored, bool &ok)
{
    ok = true;
    return read_stored_user(call, user_id, stored);
}

// Deletes a user that exists. `refusal` is the error of one that must stay.
template <class Word>
int delete_existing(Call &call, int user_id, const Error<Word> &refusal, qbobj_User_t &user)
{
    StoredUser stored{};
    bool ok = false;
    if (const int rc = is_ok_to_delete_user(call, user_id, stored, ok))
        return rc;
    if (!ok)
        return refusal.raise(call);
    if (const int rc = delete_user_core(call, user_id))
        return rc;
    user.UserName = stored.name;
    user.HomeDirectory = stored.home;
    user.OldHomeDirectory = stored.home;
    return 0;
}

int delete_user(Call &call, qbobj_User_t &user)
{
    const int key = key_of(user.resource_id, user.UserId);
    if (key < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d)", key);
    if (qbobj_validate_db_userid(call, key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", key);
    return delete_existing(call, key, error(QBOBJ_ERROR_API_ARGS, "Cannot delete user (user_id=%d)", key),
                           user);
}

int delete_user_by_name(Call &call, qbobj_User_t &user)
{
    int key = 0;
    if (qbobj_validate_db_username(call, user.UserName, nullptr, &key) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d). Not exist.", user.resource_id);
    return delete_existing(
        call, key, error(QBOBJ_ERROR_API_ARGS, "Cannot delete user (user_name=%s)", user.UserName), user);
}

} // namespace

int x_qbobj_deleteUser(Call &call, qbobj_User_t *user)
{
    return for_each(user, delete_user, call);
}

int x_qbobj_deleteUserByName(Call &call, qbobj_User_t *user)
{
    return for_each(user, delete_user_by_name, call);
}

} // namespace qbobj
