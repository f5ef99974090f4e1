// The log, read page by page.
#include "log/log.h"

namespace qbobj
{
namespace
{

using Entry = qbobj_LogEntry_t;

constexpr Failure failure = "Failed DB Query for 'SELECT $log'. %s";

constexpr auto entries = select<const char *, const char *, const char *, const char *>(
    "SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L %s%s ORDER BY L.id %s "
    "%s",
    failure, &Entry::LogId, &Entry::TimeStamp, or_empty(&Entry::Severity), or_empty(&Entry::Category),
    or_empty(&Entry::MessageTag), or_empty(&Entry::MessageArgsXml));

// Stores a count for whom asks for it, once it is known.
template <class... Args>
int count(Call &call, int *counted, const Statement<Args...> &sql, Args... args)
{
    int32_t number = 0;
    if (const int rc = call.number(failure, number, sql, args...))
        return rc;
    if (counted != nullptr)
        *counted = number;
    return 0;
}

const char *page_of(Call &call, const qbobj_LogQuery_t &query)
{
    if (query.limit == 0)
        return "";
    return query.offset == 0 ? print(call, "LIMIT %d", query.limit)
                             : print(call, "LIMIT %d,%d", query.offset, query.limit);
}

} // namespace

int x_qbobj_getLog(Call &call, qbobj_LogEntry_t **Log, int *Entries, int *TotalEntries,
                   qbobj_LogQuery_t *query)
{
    if (Log == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Log cannot be NULL.");
    if (query == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "query cannot be NULL.");
    const LogFilter filter(call, *query, LogFilter::Use::reading);
    if (!filter.fits())
        return failure.raise(call, LogFilter::too_long);
    if (const int rc =
            count(call, Entries, "SELECT COUNT(*) FROM `$log` L %s%s", filter.where(), filter.text()))
        return rc;
    if (const int rc = count(call, TotalEntries, "SELECT COUNT(*) FROM `$log` L"))
        return rc;
    return call.append(entries, *Log, filter.where(), filter.text(), query->order != 0 ? "DESC" : "ASC",
                       page_of(call, *query));
}

} // namespace qbobj
