// Quotas on shares, read and written with the statements of the units.
#include "account/quotas.h"

namespace qbobj
{
namespace
{

int store(Call &call, const QuotaInsert &insert, int account_id, const qbobj_Quota_t &quota)
{
    return call.exec(insert.failure, insert.sql, account_id, quota.ShareId, quota.HardMB, quota.HardMB);
}

} // namespace

int read_quotas(Call &call, const QuotaSelect &select, int account_id, qbobj_Quota_t *&quotas)
{
    quotas = nullptr;
    if (const int rc = call.append(select, quotas, account_id))
        return rc;
    for (qbobj_Quota_t &quota : Chain(quotas))
        quota.AccountId = account_id;
    return 0;
}

int add_quotas(Call &call, const QuotaInsert &insert, int account_id, qbobj_Quota_t *quotas)
{
    for (const qbobj_Quota_t &quota : Chain(quotas))
        if (const int rc = store(call, insert, account_id, quota))
            return rc;
    return 0;
}

int change_quotas(Call &call, const QuotaInsert &replace, const QuotaDelete &remove, int account_id,
                  qbobj_Quota_t *quotas)
{
    for (const qbobj_Quota_t &quota : Chain(quotas)) {
        const int rc = quota.HardMB == 0 ? call.exec(remove.failure, remove.sql, account_id, quota.ShareId)
                                         : store(call, replace, account_id, quota);
        if (rc != 0)
            return rc;
    }
    return 0;
}

} // namespace qbobj
