// The duties of the frame: error record, trace, transaction, dump, worker.
#include "frame/frame.h"

#include <ctime>

namespace qbobj
{
namespace
{

enum class Moment { before, after };

void dump(const Caller &caller, std::span<const DumpedRecord> records, Moment moment)
{
    if (!logs(caller.qbdb, QBDB_LOG_DEBUG))
        return;
    for (const DumpedRecord &dumped : records) {
        if (moment == Moment::before && !dumped.is_given)
            continue;
        void *record = dumped.record;
        if (dumped.indirect) {
            record = record == nullptr ? nullptr : *static_cast<void **>(record);
            if (record == nullptr)
                continue;
        }
        qbobj_api2_utils_dump_object(caller.qbdb, dumped.spec, record, 0, caller.site.unit.data(),
                                     caller.site.line);
    }
}

template <class... Args>
void trace(const Caller &caller, qbdb_loglevel_t level, const char *format, Args... args)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    if (logs(caller.qbdb, level))
        qbdb_log(caller.qbdb, caller.site.unit.data(), caller.site.line, level, 0, format, args...);
#pragma GCC diagnostic pop
}

} // namespace

int run_framed(const FramedOperation &operation, const Caller &caller, std::span<const DumpedRecord> records,
               BoundWorker worker) noexcept
{
    const std::time_t start = std::time(nullptr);
    if (caller.err == nullptr)
        assertion_failed("err", caller.site, operation.name);
    *caller.err = {};
    trace(caller, QBDB_LOG_INFO, ">>>> %s()\n", operation.name);
    // Log readers depend on this figure: two readings of whole seconds, both taken before the transaction, so
    // that it is nearly always 0 and says nothing about the worker's time.
    const std::time_t second = std::time(nullptr);

    const auto body = [&](Call &call) {
        dump(caller, records, Moment::before);
        const int result = worker.invoke(worker.bound, call);
        trace(caller, QBDB_LOG_DEBUG, "x_%s() rc=%d\n", operation.name, result);
        if (result == 0)
            dump(caller, records, Moment::after);
        return result;
    };
    const Transaction transaction{operation.name, operation.effect, operation.result,
                                  CommitResult::left_to_the_platform, caller.site};
    const int result = in_transaction(transaction, caller.qbdb, caller.db, *caller.err, body);

    trace(caller, QBDB_LOG_INFO, "<<<< %s() ==> rc=%d (%llums)\n", operation.name, result,
          static_cast<unsigned long long>(second - start));
    return result;
}

} // namespace qbobj
