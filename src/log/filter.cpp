// From a query to the conditions that reading and deleting share.
#include "log/log.h"
#include "validate/word_table.h"

#include <cstring>

namespace qbobj
{
namespace
{

// Each threshold means its own word and those behind it. Emergencies are stored as "emerge", which none of them means:
// readers depend on both spellings.
constexpr const char *severities = "'info','notice','warning','err','crit','alert','emerg'";
constexpr string_len thresholds[] = {{"info", 0}, {"notice", 0}, {"warning", 4}, {"err", 3},
                                     {"crit", 4}, {"alert", 0},  {"emerg", 0}};

} // namespace

LogFilter::LogFilter(Call &call, const qbobj_LogQuery_t &query, Use use)
    : conditions_(call, Overflow::refuse, " AND ")
{
    add_time(query);
    add_severity(query, use);
    if (query.category_in != nullptr)
        conditions_.add("category IN (%s)", query.category_in);
    if (query.msg_tag != nullptr && use == Use::reading)
        conditions_.add("msg_tag=%Q", query.msg_tag);
}

void LogFilter::add_time(const qbobj_LogQuery_t &query)
{
    if (query.timestamp_min != 0)
        conditions_.add("%d<tstamp", query.timestamp_min);
    if (query.timestamp_max != 0)
        conditions_.add("tstamp<%d", query.timestamp_max);
}

void LogFilter::add_severity(const qbobj_LogQuery_t &query, Use use)
{
    if (query.severity != nullptr) {
        if (const string_len *threshold = find_word(thresholds, query.severity); threshold != nullptr)
            conditions_.add("severity IN (%s)", std::strstr(severities, threshold->word) - 1);
    } else if (query.severity_in != nullptr && use == Use::reading) {
        conditions_.add("severity IN (%s)", query.severity_in);
    }
}

} // namespace qbobj
