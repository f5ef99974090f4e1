// The rules of what an account consists of, and what several units ask about users. Errors carry their caller's place.
#include "account/user_changes.h"
#include "validate/validate.h"

namespace qbobj
{

int check_user_name(Call &call, const char *given, const Message<const char *> &too_long, const char *&name,
                    const Site &site)
{
    switch (const int rc = qbobj_validate_username(given, &name)) {
    case 0:
        return 0;
    case 3:
        return raise_at(site, call, QBOBJ_ERROR_UI__NAME_TOO_LONG, too_long, given);
    case 4:
    case 5:
        return raise_at(site, call, QBOBJ_ERROR_UI__USERNAME_RESERVED, "UserName (%s) is reserved", given);
    default:
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid UserName (%s), rc=%d", given, rc);
    }
}

int check_new_user_name(Call &call, const char *given, const char *&name, const Site &site)
{
    if (is_empty(given))
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "UserName is required for 'add'");
    return check_user_name(call, given, "UserName (%s) is too long", name, site);
}

int check_email(Call &call, const char *given, const char *&email, const Site &site)
{
    email = empty_str;
    if (is_empty(given))
        return 0;
    if (const int rc = qbobj_validate_email(given, &email))
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid Email (%s) rc=%d", given, rc);
    return 0;
}

int encode_password(Call &call, const char *plain, const char *&stored, const Site &site)
{
    stored = empty_str;
    if (is_empty(plain))
        return 0;
    if (const int rc = is_masked(plain) ? 1 : qbobj_validate_password(call, plain, &stored))
        return raise_invalid_password(call, plain, rc, site);
    return 0;
}

int raise_invalid_password(Call &call, const char *password, int rc, const Site &site)
{
    return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid Password (%s) rc=%d", password, rc);
}

int find_primary_group(Call &call, const char *name, int &group_id, const Site &site)
{
    if (is_empty(name))
        return 0;
    int found = 0;
    if (qbobj_validate_db_groupname(call, name, nullptr, &found) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (%s)", name);
    group_id = found;
    return 0;
}

int read_stored_user(Call &call, int user_id, StoredUser &stored, const Site &site)
{
    constexpr auto home_and_name =
        select<int>("SELECT U.home,U.uname FROM `$user` U WHERE U.id=%d", "Failed DB Query for user. %s",
                    &StoredUser::home, &StoredUser::name);
    return call.read(home_and_name.at(site), stored, user_id);
}

int timemachine_is_unused(Call &call, bool &unused, const Site &site)
{
    constexpr Failure failure("Failed DB Query for $timemachine_quota. %s");
    int users = 0;
    if (const int rc = call.number(failure.at(site), users,
                                   "SELECT COUNT(*) FROM (SELECT 1 FROM '$timemachine_quota' LIMIT 2)"))
        return rc;
    int enabled = 0;
    if (const int rc = call.number(failure.at(site), enabled,
                                   "SELECT enabled FROM '$timemachine_quota' WHERE user_id=96"))
        return rc;
    unused = users == 1 && enabled == 0;
    return 0;
}

} // namespace qbobj
