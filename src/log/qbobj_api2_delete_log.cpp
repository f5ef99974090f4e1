// Entries of the log, deleted: those that a query means, or all but the newest.
#include "log/log.h"

namespace qbobj
{
namespace
{

constexpr Failure failure = "Failed DB Query for 'DELETE $log'. %s";

} // namespace

int x_qbobj_deleteLog(Call &call, qbobj_LogQuery_t *query)
{
    const LogFilter filter(call, query == nullptr ? qbobj_LogQuery_t{} : *query, LogFilter::Use::deleting);
    if (!filter.fits())
        return failure.raise(call, LogFilter::too_long);
    return call.exec(failure, "DELETE FROM `$log` %s%s", filter.where(), filter.text());
}

int x_qbobj_truncateLog(Call &call, int n_keep)
{
    return call.exec(failure,
                     "DELETE FROM `$log` WHERE tstamp < (SELECT tstamp FROM `$log` ORDER BY tstamp DESC "
                     "LIMIT 1 OFFSET %d)",
                     n_keep);
}

} // namespace qbobj
