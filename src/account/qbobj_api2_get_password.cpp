// The recovery data of the administrator's password, read.
#include "account/account.h"
#include "core/call.h"

namespace qbobj
{

namespace
{

constexpr auto recovery_columns = std::tuple{
    or_empty(&qbobj_AdminPassword_t::Question),
    or_empty(&qbobj_AdminPassword_t::Answer),
    or_empty(&qbobj_AdminPassword_t::Email),
};

} // namespace

int x_qbobj_getAdminPassword(Call &call, qbobj_AdminPassword_t *passwd)
{
    if (passwd == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "passwd cannot be NULL.");
    const Table rows =
        call.table("SELECT PR.question,PR.answer,PR.email FROM passwordrecovery PR LIMIT 1");
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for backup. %s", rows.error());
    if (rows.empty())
        return raise(call, QBOBJ_ERROR_DB_MISC,
                     "DB may be corrupted? 'passwordrecovery' table is not populated.");
    fill(call, *passwd, recovery_columns, *rows.begin());
    passwd->Password = masked_password;
    return 0;
}

} // namespace qbobj
