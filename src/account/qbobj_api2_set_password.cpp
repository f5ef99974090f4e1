// Passwords, set by the administrator or by the users themselves.
#include "account/account.h"
#include "validate/validate.h"

#include <string>
#include <string_view>

namespace qbobj
{
namespace
{

constexpr std::size_t salt_length = 12; // "$1$", eight characters and "$"

// Takes the same time wherever the texts differ.
bool same_hash(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    int difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        difference |= a[i] ^ b[i];
    return difference == 0;
}

// Is `plain` the password that `stored` was made from? Never for an account that is locked or has none.
bool proves(Call &call, const char *plain, const char *stored)
{
    const std::string_view hash = or_empty(stored);
    if (hash.size() < salt_length)
        return false;
    const std::string salt(hash.substr(0, salt_length));
    const char *made = crypt_password(call, plain, salt.c_str());
    return made != nullptr && same_hash(made, hash);
}

// The recovery data is replaced as a whole or not at all.
int store_recovery(Call &call, const qbobj_AdminPassword_t &passwd)
{
    if (passwd.Question == nullptr || passwd.Answer == nullptr || passwd.Email == nullptr)
        return 0;
    constexpr Failure failure("Failed DB Query for passwordrecovery update. %s");
    if (const int rc = call.exec(failure, "DELETE FROM passwordrecovery"))
        return rc;
    return call.exec(failure, "INSERT INTO passwordrecovery (email,question,answer) VALUES(%Q,%Q,%Q)",
                     passwd.Email, passwd.Question, passwd.Answer);
}

// The administrator and the superuser always share one password.
int store_admin_password(Call &call, const char *encoded)
{
    constexpr Failure failure("Failed DB Query for user update. %s");
    if (const int rc = call.exec(failure, "UPDATE `$user` SET passwd=%Q WHERE uname='admin'", encoded))
        return rc;
    return call.exec(failure, "UPDATE `$user` SET passwd=%Q WHERE uname='root'", encoded);
}

} // namespace

int x_qbobj_setAdminPassword(Call &call, qbobj_AdminPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (is_empty(passwd->Password))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Admin password cannot be empty.");
    if (is_masked(passwd->Password))
        return store_recovery(call, *passwd);
    const char *encoded = nullptr;
    if (qbobj_validate_password(call, passwd->Password, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password.");
    if (const int rc = store_recovery(call, *passwd))
        return rc;
    return store_admin_password(call, encoded);
}

int x_qbobj_setUserPassword(Call &call, qbobj_UserPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (is_masked(passwd->Password))
        return 0;
    const char *encoded = nullptr;
    if (qbobj_validate_password(call, passwd->Password, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password. %s.", passwd->Password);
    return call.exec("Failed DB Query for user table update. %s", "UPDATE `$user` SET passwd=%Q WHERE id=%d",
                     encoded, passwd->UserId);
}

int x_qbobj_setMyPassword(Call &call, qbobj_MyPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (is_empty(passwd->UserName) || is_empty(passwd->OldPassword) || is_empty(passwd->NewPassword))
        return raise(call, QBOBJ_ERROR_API_ARGS, "My password cannot be empty.");
    // The mask leaves the password, but to whom proves it only.
    const bool stays = is_masked(passwd->NewPassword);
    const char *encoded = nullptr;
    if (!stays && qbobj_validate_password(call, passwd->NewPassword, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid NewPassword.");
    int user_id = 0;
    if (qbobj_validate_db_username(call, passwd->UserName, nullptr, &user_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserName.");

    const char *stored = nullptr;
    if (const int rc =
            call.text("SQL Query fail. %s", stored, "SELECT U.passwd FROM `$user` U WHERE id=%d", user_id))
        return rc;
    if (!proves(call, passwd->OldPassword, stored))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Bad Credential.");
    if (stays)
        return 0;
    return call.exec("Failed DB Query for user update. %s", "UPDATE `$user` SET passwd=%Q WHERE id=%d",
                     encoded, user_id);
}

} // namespace qbobj
