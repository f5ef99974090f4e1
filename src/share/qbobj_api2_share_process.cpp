// Running processes that work on a share.
#include "frame/rows.h"
#include "share/share.h"

using namespace qbobj;

namespace
{

constexpr auto process_columns = std::tuple{
    &qbobj_Process_t::ProcessId,
    &qbobj_Process_t::Blocking,
    &qbobj_Process_t::Timestamp,
};

} // namespace

int x_qbobj_getShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t **procs)
{
    if (procs == nullptr)
        return raise(qbobj, QBOBJ_ERROR_API_ARGS, "procs cannot be NULL.");
    *procs = nullptr;
    const Table rows = Sql(qbobj, db).table(R"(SELECT PS.pid,PS.blocking,STRFTIME('%%s',PS.ts)
        FROM `process_on_share` PS WHERE PS.share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                                            ShareId);
    if (!rows)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT process_on_share'. %s",
                     rows.error());
    append_rows(qbobj, *procs, process_columns, rows);
    return 0;
}

int x_qbobj_addShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs)
{
    const Sql sql(qbobj, db);
    for (const qbobj_Process_t &process : Chain(procs)) {
        // An unknown share has no row id, which the table refuses.
        const Status status = sql.exec(R"(INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking)
            VALUES((SELECT S.id FROM `share` S WHERE S.zfs_name=%Q),%d,%d))",
                                       ShareId, process.ProcessId, process.Blocking);
        if (!status)
            return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT process_on_share'. %s",
                         status.error());
    }
    return 0;
}

int x_qbobj_deleteShareProcess(qbobj_env_t *qbobj, sqlite3 *db, const char *ShareId, qbobj_Process_t *procs)
{
    const Sql sql(qbobj, db);
    Status status;
    if (procs == nullptr)
        status = sql.exec(R"(DELETE FROM `process_on_share`
            WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q))",
                          ShareId);
    for (const qbobj_Process_t &process : Chain(procs)) {
        status = sql.exec(R"(DELETE FROM `process_on_share`
            WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name=%Q) AND pid=%d)",
                          ShareId, process.ProcessId);
        if (!status)
            break;
    }
    if (!status)
        return raise(qbobj, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE process_on_share'. %s",
                     status.error());
    return 0;
}
