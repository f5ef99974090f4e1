// The recovery data of the administrator's password, read.
#include "account/account.h"

namespace qbobj
{
namespace
{

using Admin = qbobj_AdminPassword_t;

constexpr auto recovery_data =
    select("SELECT PR.question,PR.answer,PR.email FROM passwordrecovery PR LIMIT 1",
           "Failed DB Query for backup. %s", or_empty(&Admin::Question), or_empty(&Admin::Answer),
           or_empty(&Admin::Email));

} // namespace

int x_qbobj_getAdminPassword(Call &call, qbobj_AdminPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    if (const int rc = call.require(
            recovery_data,
            error(QBOBJ_ERROR_DB_MISC, "DB may be corrupted? 'passwordrecovery' table is not populated."),
            *passwd))
        return rc;
    passwd->Password = masked_password;
    return 0;
}

} // namespace qbobj
