// Snapshots of shares, listed and counted.
#include "storage/snapshot.h"
#include "storage/snapshot_rows.h"

#include <cstdio>
#include <memory>

namespace qbobj
{
namespace
{

using Snapshot = qbobj_Snapshot_t;

constexpr std::size_t folder_size = 4096;

// Comes behind the columns that it needs.
constexpr auto path = [](const qbobj_env_t &env, Snapshot &snapshot, const char *) {
    std::array<char, folder_size> folder;
    std::snprintf(folder.data(), folder.size(), "/%s/%s", snapshot.VolumeName, snapshot.ShareName);
    snapshot.Path = snapshot_path(env, folder.data(), snapshot.SnapshotName);
};

struct Words {
    static constexpr Site site = here();
    static constexpr char columns[] = "SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on";
    static constexpr char source[] =
        " FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name"
        " INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=%d AND S.created_on<=%d%s";
    static constexpr char first[] = " AND V.lv_name=%Q";
    static constexpr char second[] = " AND SH.name=%Q";
    static constexpr Failure failure = "Failed DB Query for 'SELECT FROM $snapshot'. %s";

    template <class... Args>
    static consteval auto list(Statement<Args...> sql)
    {
        return select<Args...>(sql, failure, &Snapshot::resource_id, &Snapshot::ShareName,
                               &Snapshot::VolumeName, &Snapshot::SnapshotName, &Snapshot::Type,
                               both(&Snapshot::CreatedOn, path));
    }
};

} // namespace

int x_qbobj_getSnapshotCollection(Call &call, qbobj_SnapshotCollection_t *collection, const char *ShareName,
                                  const char *VolumeName, int q_type, int q_from, int q_to,
                                  const char *OrderBy, int q_order, int q_limit, int q_offset)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return append_snapshots<Words>(call, collection->Snapshot, {VolumeName, ShareName, q_type, q_from, q_to},
                                   {OrderBy, q_order, q_limit, q_offset});
}

int x_qbobj_getSnapshotCollectionCount(Call &call, int *count, const char *ShareName, const char *VolumeName,
                                       int q_type, int q_from, int q_to)
{
    if (count == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "count cannot be NULL.");
    return count_snapshots<Words>(call, *count, {VolumeName, ShareName, q_type, q_from, q_to});
}

/* ---- For the lists of home folders too ----------------------------------------------------------------- */

const char *snapshot_column(const Call &call, const char *name)
{
    const std::unique_ptr<char, decltype(&sqlite3_free)> quoted(sqlite3_mprintf("\"%w\"", name),
                                                                sqlite3_free);
    if (quoted == nullptr)
        throw std::bad_alloc();
    return copy_text(call.pool(), quoted.get());
}

const char *snapshot_path(const qbobj_env_t &env, const char *folder, const char *snapshot)
{
    return or_empty(snapshot_get_path(env.qbdb, folder, snapshot));
}

} // namespace qbobj
