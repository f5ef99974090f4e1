// Quotas on shares, which users and groups have alike. Statements and messages stand in the units.
#pragma once

#include "account/account.h"

namespace qbobj
{

// The rows of (dataset name, limit, usage) of one account.
consteval auto select_quotas(Statement<int> sql, Failure failure)
{
    return select<int>(sql, failure, &qbobj_Quota_t::ShareId, &qbobj_Quota_t::HardMB, &qbobj_Quota_t::UsedMB);
}
using QuotaSelect = decltype(select_quotas("SELECT 1,2,3 WHERE %d", ""));
int read_quotas(Call &call, const QuotaSelect &select, int account_id, qbobj_Quota_t *&quotas);

// Stores a quota: the account's id, the share's dataset name, and the limit for the soft and for the hard one.
struct QuotaInsert {
    Statement<int, const char *, uint64_t, uint64_t> sql;
    Failure failure;
};
int add_quotas(Call &call, const QuotaInsert &insert, int account_id, qbobj_Quota_t *quotas);

// Takes the quota of an account on a share away.
struct QuotaDelete {
    Statement<int, const char *> sql;
    Failure failure;
};
// A limit of 0 takes the quota away.
int change_quotas(Call &call, const QuotaInsert &replace, const QuotaDelete &remove, int account_id,
                  qbobj_Quota_t *quotas);

} // namespace qbobj
