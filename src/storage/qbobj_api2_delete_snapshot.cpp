// Snapshots of shares, forgotten.
#include "storage/snapshot.h"
#include "storage/snapshot_rows.h"

namespace qbobj
{
namespace
{

struct OfShare {
    static constexpr char table[] = "`$snapshot`";
    static constexpr char scope[] = "zfs_name=%Q";
};
struct OfVolume {
    static constexpr char table[] = "`$snapshot`";
    static constexpr char scope[] = "zfs_name LIKE %Q||'/%%'";
};

template <class Scope>
constexpr SnapshotDeletions deletions = snapshot_deletions<Scope>("Failed to DELETE snapshot. %s",
                                                                  "Failed to DELETE for $snapshot. %s",
                                                                  here());

} // namespace

int x_qbobj_deleteSnapshot(Call &call, const char *VolumeName, const char *ShareName, int DeleteNewer,
                           const char *SnapshotName, int CreatedOn)
{
    const SnapshotDeletion deletion{DeleteNewer, SnapshotName, CreatedOn};
    SnapshotShare share{ShareName, VolumeName};
    if (const int rc = find_volume(call, share))
        return rc;
    if (ShareName == nullptr)
        return delete_snapshots(call, deletions<OfVolume>, VolumeName, deletion);
    if (const int rc = find_share(call, share))
        return rc;
    if (const int rc = check_share_on_volume(call, share))
        return rc;
    char *dataset = nullptr;
    if (const int rc = call.text("Error in DB query for zfs_name.", dataset,
                                 "SELECT S.zfs_name FROM share S WHERE S.id=%d", share.share_id))
        return rc;
    return delete_snapshots(call, deletions<OfShare>, dataset, deletion);
}

int delete_snapshots(Call &call, const SnapshotDeletions &deletions, const char *scope,
                     const SnapshotDeletion &deletion, const Site &site)
{
    const auto &[newer, name, created_on] = deletion;
    if (newer == 2 && name == nullptr)
        return raise_at(site, call, QBOBJ_ERROR_DB_MISC, "SnapshotName cannot be NULL when DeleteNewer==2.");
    int rc = 0;
    if (newer == 1)
        rc = call.exec(deletions.thinning_failure, deletions.newer, scope, created_on);
    else if (newer == 2)
        rc = call.exec(deletions.thinning_failure, deletions.newer_than_named, scope, scope, name);
    else if (newer == 3)
        rc = call.exec(deletions.thinning_failure, deletions.made_on, scope, created_on);
    else if (name != nullptr)
        rc = call.exec(deletions.failure, deletions.named, scope, name);
    else
        rc = call.exec(deletions.failure, deletions.all, scope);
    if (rc != 0)
        return rc;
    return call.changes() > 0 ? 0 : raise_at(site, call, QBOBJ_ERROR_DB_NOTEXISTS, "None of row is deleted.");
}

} // namespace qbobj
