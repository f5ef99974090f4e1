// Running processes that work on a share.
#include "core/call.h"
#include "share/share_reading.h"

namespace qbobj
{

namespace
{

constexpr auto process_columns = std::tuple{
    &qbobj_Process_t::ProcessId,
    &qbobj_Process_t::Blocking,
    &qbobj_Process_t::Timestamp,
};

} // namespace

int x_qbobj_getShareProcess(Call &call, const char *ShareId, qbobj_Process_t **procs)
{
    if (procs == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "procs cannot be NULL.");
    *procs = nullptr;
    const Table rows = call.table(R"(SELECT PS.pid,PS.blocking,STRFTIME('%%s',PS.ts)
        FROM `process_on_share` PS WHERE PS.share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                                  ShareId);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT process_on_share'. %s",
                     rows.error());
    append_rows(call, *procs, process_columns, rows);
    return 0;
}

int x_qbobj_addShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs)
{
    for (const qbobj_Process_t &process : Chain(procs)) {
        // An unknown share has no row id, which the table refuses.
        const Status status = call.run(R"(INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking)
            VALUES((SELECT S.id FROM `share` S WHERE S.zfs_name=%Q),%d,%d))",
                                       ShareId, process.ProcessId, process.Blocking);
        if (!status)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT process_on_share'. %s",
                         status.error());
    }
    return 0;
}

int x_qbobj_deleteShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs)
{
    Status status;
    if (procs == nullptr)
        status = call.run(R"(DELETE FROM `process_on_share`
            WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                          ShareId);
    for (const qbobj_Process_t &process : Chain(procs)) {
        status = call.run(R"(DELETE FROM `process_on_share`
            WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q) AND pid=%d)",
                          ShareId, process.ProcessId);
        if (!status)
            break;
    }
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE process_on_share'. %s",
                     status.error());
    return 0;
}

} // namespace qbobj
