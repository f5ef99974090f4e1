// Running processes that work on a share.
#include "share/share.h"

namespace qbobj
{

namespace
{

constexpr auto processes =
    select<const char *>(R"(SELECT PS.pid,PS.blocking,STRFTIME('%%s',PS.ts)
    FROM `process_on_share` PS WHERE PS.share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                         "Failed DB Query for 'SELECT process_on_share'. %s", &qbobj_Process_t::ProcessId,
                         &qbobj_Process_t::Blocking, &qbobj_Process_t::Timestamp);

} // namespace

int x_qbobj_getShareProcess(Call &call, const char *ShareId, qbobj_Process_t **procs)
{
    if (procs == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "procs cannot be NULL.");
    *procs = nullptr;
    return call.append(processes, *procs, ShareId);
}

int x_qbobj_addShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs)
{
    // An unknown share has no row id, which the table refuses.
    for (const qbobj_Process_t &process : Chain(procs))
        if (const int rc = call.exec("Failed DB Query for 'INSERT process_on_share'. %s",
                                     R"(INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking)
                VALUES((SELECT S.id FROM `share` S WHERE S.zfs_name=%Q),%d,%d))",
                                     ShareId, process.ProcessId, process.Blocking))
            return rc;
    return 0;
}

int x_qbobj_deleteShareProcess(Call &call, const char *ShareId, qbobj_Process_t *procs)
{
    static constexpr Failure failed = "Failed DB Query for 'DELETE process_on_share'. %s";
    if (procs == nullptr)
        return call.exec(failed, R"(DELETE FROM `process_on_share`
            WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                         ShareId);
    for (const qbobj_Process_t &process : Chain(procs))
        if (const int rc = call.exec(failed, R"(DELETE FROM `process_on_share`
                WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q) AND pid=%d)",
                                     ShareId, process.ProcessId))
            return rc;
    return 0;
}

} // namespace qbobj
