// Workers of the operations on the system log.
#pragma once

#include "core/call.h"
#include "core/set_list.h"

#include <qbobj/log.h>

namespace qbobj
{

int x_qbobj_addLog(Call &call, int TimeStamp, const char *Severity, const char *Category,
                   const char *MessageTag, const char *MessageArgsXml);
int x_qbobj_getLog(Call &call, qbobj_LogEntry_t **Log, int *Entries, int *TotalEntries,
                   qbobj_LogQuery_t *query);
int x_qbobj_deleteLog(Call &call, qbobj_LogQuery_t *query);
int x_qbobj_truncateLog(Call &call, int n_keep);

// Which entries a query means: the conditions of a WHERE, none for all entries. Without one that did not fit the rest
// would mean more entries than the caller did, so that such a filter is never run: see fits().
class LogFilter
{
  public:
    enum class Use { reading, deleting }; // deleting takes no notice of `severity_in` and `msg_tag`
    LogFilter(Call &call, const qbobj_LogQuery_t &query, Use use);

    bool fits() const { return conditions_.refused() == nullptr; }
    const char *where() const { return conditions_.empty() ? "" : "WHERE "; }
    const char *text() const { return conditions_.text(); }

    static constexpr const char *too_long = "The conditions do not fit into 255 bytes.";

  private:
    void add_time(const qbobj_LogQuery_t &query);
    void add_severity(const qbobj_LogQuery_t &query, Use use);

    SetList<256> conditions_;
};

} // namespace qbobj
