// The system log.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple log_operations{
    writes<qbobj_addLog>(optional("TimeStamp"), optional("Severity"), optional("Category"),
                         optional("MessageTag"), optional("MessageArgsXml")),
    reads<qbobj_getLog>(appended("Log"), out("Entries"), out("TotalEntries"), in("query")),
    writes<qbobj_deleteLog>(optional("query")),
    writes<qbobj_truncateLog>(in("n_keep")),
};

} // namespace qbobj
