// The six duties of the frame: error record, trace, transaction, dump, worker, commit or rollback.
#include "frame/frame.h"

#include <ctime>

namespace qbobj
{
namespace
{

constexpr const char *frame_unit = "qbobj_api2";

bool logs(const qbdb_handle_t *qbdb, qbdb_loglevel_t level)
{
    return static_cast<unsigned>(qbdb->loglvl) >= static_cast<unsigned>(level);
}

void dump(const Operation &operation, std::span<const DumpedRecord> records)
{
    for (const DumpedRecord &dumped : records) {
        void *record = dumped.record;
        if (dumped.indirect) {
            record = record == nullptr ? nullptr : *static_cast<void **>(record);
            if (record == nullptr)
                continue;
        }
        qbobj_api2_utils_dump_object(operation.qbdb, dumped.spec, record, 0, frame_unit, operation.site.line);
    }
}

int call_worker(const Operation &operation, qbobj_env_t &env, RollbackOn rollback, const BoundWorker &worker)
{
    int result = 0;
    try {
        result = worker.invoke(worker.bound, &env);
    } catch (const std::bad_alloc &) {
        result = report_error(&env, operation.site, QBOBJ_ERROR_OOM, "Failed to allocate resource.");
        if (rollback == RollbackOn::negative)
            result = -1;
    }
    if (logs(operation.qbdb, QBDB_LOG_DEBUG))
        qbdb_log(operation.qbdb, frame_unit, operation.site.line, QBDB_LOG_DEBUG, 0, "x_%s() rc=%d\n",
                 operation.name, result);
    return result;
}

} // namespace

int run_framed(const Operation &operation, RollbackOn rollback, std::span<const DumpedRecord> records,
               BoundWorker worker)
{
    const std::time_t start = std::time(nullptr);
    if (operation.err == nullptr)
        assertion_failed("err", {frame_unit, operation.site.line}, operation.name);
    *operation.err = {};
    qbobj_env_t env{operation.qbdb, operation.err};
    qbdb_handle_t *qbdb = operation.qbdb;
    const int line = operation.site.line;
    const auto fails = [rollback](int result) {
        return rollback == RollbackOn::negative ? result < 0 : result != 0;
    };

    if (logs(qbdb, QBDB_LOG_INFO))
        qbdb_log(qbdb, frame_unit, line, QBDB_LOG_INFO, 0, ">>>> %s()\n", operation.name);
    // Log readers depend on this figure: two readings of whole seconds, both taken before the transaction, so
    // that it is nearly always 0 and says nothing about the worker's time.
    const std::time_t second = std::time(nullptr);

    int result = qbdb_sql_begin(qbdb, operation.db, nullptr, frame_unit, line);
    if (result == 0) {
        if (logs(qbdb, QBDB_LOG_DEBUG))
            dump(operation, records);
        result = call_worker(operation, env, rollback, worker);
        // Success must not be reported for a transaction that the database has rolled back by itself.
        if (!fails(result) && sqlite3_get_autocommit(operation.db) != 0) {
            report_error(&env, {frame_unit, line}, QBOBJ_ERROR_DB_MISC, "The transaction was rolled back. %s",
                         sqlite3_errmsg(operation.db));
            result = rollback == RollbackOn::negative ? -1 : QBOBJ_ERROR_DB_MISC;
        }
        if (result == 0 && logs(qbdb, QBDB_LOG_DEBUG))
            dump(operation, records);
    }

    // The result stands whatever becomes of the commit; a commit that fails is logged and undone by the
    // platform.
    if (fails(result))
        qbdb_sql_rollback(qbdb, operation.db, nullptr, frame_unit, line);
    else
        qbdb_sql_commit(qbdb, operation.db, nullptr, frame_unit, line);

    if (logs(qbdb, QBDB_LOG_INFO))
        qbdb_log(qbdb, frame_unit, line, QBDB_LOG_INFO, 0, "<<<< %s() ==> rc=%d (%llums)\n", operation.name,
                 result, static_cast<unsigned long long>(second - start));
    return result;
}

} // namespace qbobj
