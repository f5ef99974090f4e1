// Shares that were made from snapshots.
#include "storage/snapshot.h"

namespace qbobj
{
namespace
{

using Clone = qbobj_SnapshotClone_t;

constexpr char clones[] =
    "SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones`";
constexpr auto of_both_text = joined(clones, " WHERE parent_snapshot_name=%Q AND parent_zfs_name=%Q");
constexpr auto of_snapshot_text = joined(clones, " WHERE parent_snapshot_name=%Q");
constexpr auto of_share_text = joined(clones, " WHERE parent_zfs_name=%Q");

template <class... Args>
consteval auto select_clones(std::type_identity_t<Statement<Args...>> sql)
{
    return select<Args...>(sql, "Failed DB Query for 'SELECT FROM snapshot_clones'. %s", &Clone::resource_id,
                           or_empty(&Clone::ClonedShareName), or_empty(&Clone::ParentSnapshotName),
                           or_empty(&Clone::ParentShareName));
}
constexpr auto all_clones = select_clones(clones);
constexpr auto clones_of_both = select_clones<const char *, const char *>(of_both_text);
constexpr auto clones_of_snapshot = select_clones<const char *>(of_snapshot_text);
constexpr auto clones_of_share = select_clones<const char *>(of_share_text);

} // namespace

int x_qbobj_getSnapshotClones(Call &call, const char *ParentSnapshotName, const char *ParentShareName,
                              qbobj_SnapshotCloneCollection_t *SnapshotCloneCollection)
{
    if (SnapshotCloneCollection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "SnapshotCloneCollection cannot be NULL.");
    Clone *&list = SnapshotCloneCollection->SnapshotClone;
    if (ParentSnapshotName != nullptr && ParentShareName != nullptr)
        return call.append(clones_of_both, list, ParentSnapshotName, ParentShareName);
    if (ParentSnapshotName != nullptr)
        return call.append(clones_of_snapshot, list, ParentSnapshotName);
    if (ParentShareName != nullptr)
        return call.append(clones_of_share, list, ParentShareName);
    return call.append(all_clones, list);
}

int x_qbobj_addSnapshotClone(Call &call, const char *ClonedShareName, const char *ParentSnapshotName,
                             const char *ParentShareName)
{
    return call.exec("Failed DB Query for 'INSERT INTO $snapshot_clones'. %s",
                     R"(INSERT INTO `$snapshot_clones`(cloned_zfs_name,parent_snapshot_name,parent_zfs_name)
        VALUES (%Q,%Q,%Q))",
                     ClonedShareName, ParentSnapshotName, ParentShareName);
}

int x_qbobj_deleteSnapshotClone(Call &call, const char *ClonedShareName, const char *ParentSnapshotName,
                                const char *ParentShareName)
{
    constexpr Failure failure = "Failed DB Query for 'DELETE $snapshot_clones'. %s";
    if (ClonedShareName == nullptr && ParentSnapshotName == nullptr && ParentShareName == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS,
                     "ClonedShareName, ParentSnapshotName and ParentShareName cannot all be NULL.");
    if (ParentSnapshotName != nullptr && ParentShareName != nullptr)
        return call.exec(
            failure, "DELETE FROM `$snapshot_clones` WHERE parent_snapshot_name=%Q AND parent_zfs_name=%Q",
            ParentSnapshotName, ParentShareName);
    if (ClonedShareName != nullptr)
        return call.exec(failure, "DELETE FROM `$snapshot_clones` WHERE cloned_zfs_name=%Q", ClonedShareName);
    return call.exec(failure, "DELETE FROM `$snapshot_clones` WHERE parent_zfs_name=%Q", ParentShareName);
}

} // namespace qbobj
