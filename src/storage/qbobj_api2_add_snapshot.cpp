// A snapshot of a share, recorded.
#include "storage/snapshot.h"
#include "storage/snapshot_rows.h"
#include "validate/validate.h"

namespace qbobj
{

int find_share(Call &call, SnapshotShare &share, const Site &site)
{
    if (qbobj_validate_db_sharename(call, share.share_name, nullptr, &share.share_id) != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Specified ShareName(%s) is not exist.",
                        share.share_name);
    return 0;
}

int find_volume(Call &call, SnapshotShare &share, const Site &site)
{
    if (qbobj_validate_db_volumename(call, share.volume_name, nullptr, &share.volume_id) != 0 ||
        share.volume_id == nullptr)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Specified VolumeName(%s) is not exist.",
                        share.volume_name);
    return 0;
}

int check_share_on_volume(Call &call, const SnapshotShare &share, const Site &site)
{
    bool found = false;
    if (const int rc =
            call.exists(Failure("Error in DB query.").at(site), found,
                        "SELECT 1 FROM share WHERE id=%d AND volume_id=%Q", share.share_id, share.volume_id))
        return rc;
    if (!found)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Specified ShareName(%s) is not on VolumeName(%s).",
                        share.share_name, share.volume_name);
    return 0;
}

int x_qbobj_addSnapshot(Call &call, qbobj_Snapshot_t *snapshot)
{
    if (snapshot == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "snapshot cannot be NULL.");
    SnapshotShare share{snapshot->ShareName, snapshot->VolumeName};
    if (const int rc = find_share(call, share))
        return rc;
    if (const int rc = find_volume(call, share))
        return rc;
    if (const int rc = check_share_on_volume(call, share))
        return rc;
    const Status status =
        call.run(R"(INSERT INTO `$snapshot`(zfs_name,name,type,created_on)
        VALUES((SELECT S.zfs_name FROM share S WHERE S.id=%d),%Q,%d,%d))",
                 share.share_id, snapshot->SnapshotName, snapshot->Type, snapshot->CreatedOn);
    if (status.rc == constraint_violation)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Probably share_id=%d is invalid or name is NULL",
                     share.share_id);
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO $snapshot'. %s",
                     status.error());
    return 0;
}

} // namespace qbobj
