// Passwords, set by the administrator or by the users themselves.
#include "account/account.h"
#include "core/call.h"
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

int store_recovery(Call &call, const qbobj_AdminPassword_t &passwd)
{
    if (passwd.Question == nullptr || passwd.Answer == nullptr || passwd.Email == nullptr)
        return 0;
    Status stored = call.run("DELETE FROM passwordrecovery");
    if (stored)
        stored = call.run("INSERT INTO passwordrecovery (email,question,answer) VALUES(%Q,%Q,%Q)",
                          passwd.Email, passwd.Question, passwd.Answer);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for passwordrecovery update. %s",
                     stored.error());
    return 0;
}

} // namespace

int x_qbobj_setAdminPassword(Call &call, qbobj_AdminPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (is_empty(passwd->Password))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Admin password cannot be empty.");
    const char *encoded = nullptr;
    if (qbobj_validate_password(call, passwd->Password, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password.");
    if (const int rc = store_recovery(call, *passwd); rc != 0)
        return rc;

    // The administrator and the superuser always share one password.
    Status updated = call.run("UPDATE `$user` SET passwd=%Q WHERE uname='admin'", encoded);
    if (updated)
        updated = call.run("UPDATE `$user` SET passwd=%Q WHERE uname='root'", encoded);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user update. %s", updated.error());
    return 0;
}

int x_qbobj_setUserPassword(Call &call, qbobj_UserPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    const char *encoded = nullptr;
    if (qbobj_validate_password(call, passwd->Password, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Password. %s.", passwd->Password);
    const Status updated =
        call.run("UPDATE `$user` SET passwd=%Q WHERE id=%d", encoded, passwd->UserId);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user table update. %s",
                     updated.error());
    return 0;
}

int x_qbobj_setMyPassword(Call &call, qbobj_MyPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (is_empty(passwd->UserName) || is_empty(passwd->OldPassword) || is_empty(passwd->NewPassword))
        return raise(call, QBOBJ_ERROR_API_ARGS, "My password cannot be empty.");
    const char *encoded = nullptr;
    if (qbobj_validate_password(call, passwd->NewPassword, &encoded) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid NewPassword.");
    int user_id = 0;
    if (qbobj_validate_db_username(call, passwd->UserName, nullptr, &user_id) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserName.");

    const Text stored = call.ask_text("SELECT U.passwd FROM `$user` U WHERE id=%d", user_id);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "SQL Query fail. %s", stored.error());
    if (!proves(call, passwd->OldPassword, stored.value))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Bad Credential.");
    const Status updated = call.run("UPDATE `$user` SET passwd=%Q WHERE id=%d", encoded, user_id);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user update. %s", updated.error());
    return 0;
}

} // namespace qbobj
