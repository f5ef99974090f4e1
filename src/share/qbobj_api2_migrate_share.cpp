// A share's move to another volume: marked before its data moves, settled or given up afterwards.
#include "share/share.h"

#include <string_view>

namespace qbobj
{

namespace
{

// Whether the dataset `share_id` is one of the volume's.
bool lives_on(std::string_view share_id, std::string_view volume_id)
{
    return share_id.starts_with(volume_id) && share_id.substr(volume_id.size()).starts_with('/');
}

} // namespace

int x_qbobj_preMigrateShare(Call &call, const char *ShareId, const char *VolumeId)
{
    if (ShareId == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "ShareId cannot be NULL.");
    if (VolumeId == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "VolumeId cannot be NULL.");
    int32_t pending = 0;
    if (const int rc = call.number("Error in 'SELECT FROM share'. (%s)", pending,
                                   "SELECT COUNT(*) FROM share S WHERE S.migrate_to_volume_id IS NOT NULL"))
        return rc;
    if (pending > 0)
        return raise(call, QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE, "Only one migration at a time");
    if (lives_on(ShareId, VolumeId))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Destination VolumeId is the same as source");
    return call.exec("Error in 'UPDATE share'.", "UPDATE share SET migrate_to_volume_id=%Q WHERE zfs_name=%Q",
                     VolumeId, ShareId);
}

int x_qbobj_postMigrateShare(Call &call, const char *ShareId, int Commit, char **NewPath)
{
    if (NewPath != nullptr)
        if (const int rc = call.text(
                "Error in 'SELECT share'.", *NewPath,
                "SELECT '/'||migrate_to_volume_id||'/'||name FROM share S WHERE zfs_name=%Q", ShareId))
            return rc;
    const char *moves = "";
    if (Commit != 0) {
        // The snapshots are found by the dataset's old name, so they go first.
        if (const int rc = call.exec("Error in 'UPDATE `$snapshot`'.",
                                     "UPDATE `$snapshot` SET zfs_name="
                                     "(SELECT migrate_to_volume_id||'/'||name FROM share WHERE zfs_name=%Q) "
                                     "WHERE zfs_name=%Q",
                                     ShareId, ShareId))
            return rc;
        moves = "volume_id=migrate_to_volume_id,"
                "path=(SELECT '/'||V.lv_name||'/'||name FROM _volume V WHERE V.id=migrate_to_volume_id),"
                "zfs_name=migrate_to_volume_id||'/'||name,";
    }
    return call.exec("Error in 'UPDATE share'.",
                     "UPDATE share SET %smigrate_to_volume_id=NULL WHERE zfs_name=%Q", moves, ShareId);
}

} // namespace qbobj
