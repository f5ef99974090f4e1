// Volumes, and the state that the storage daemon writes back.
#include "storage/storage.h"

namespace qbobj
{
namespace
{

using Volume = qbobj_Volume_t;

constexpr auto volumes = select(
    R"(SELECT V.id,V.lv_name,IFNULL(V.raid_type,'QRAID'),V.blk_total,V.blk_free,V.blk_size,V.volume_health,
        V.sent_resilver_event,V.sent_scan_end,V.keyfile,V.balance_status,V.disk_test_status
        FROM _volume V WHERE V.lv_name<>'USB' ORDER BY V.lv_name COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM _volume'. %s", both(&Volume::resource_id, &Volume::VolumeId),
    &Volume::VolumeName, &Volume::RaidType, &Volume::BlockTotal, &Volume::BlockFree, &Volume::BlockSize,
    &Volume::VolumeHealth, &Volume::SentResilverEvent, &Volume::SentScanEnd, &Volume::KeyFile,
    &Volume::BalanceStatus, &Volume::DisktestStatus);

} // namespace

int x_qbobj_getVolumeCollection(Call &call, qbobj_VolumeCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    if (const int rc =
            call.text("Failed DB Query for 'SELECT FROM system_config'. %s", collection->SystemRaidMode,
                      "SELECT IFNULL(raid_mode, 'QRAID') FROM system_config"))
        return rc;
    if (collection->SystemRaidMode == nullptr)
        collection->SystemRaidMode = "QRAID";
    return call.append(volumes, collection->Volume);
}

int x_qbobj_updateVolume(Call &call, qbobj_Volume_t *volume)
{
    if (volume == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "volume is null. caller should specify volume.");
    return call.exec("Failed DB Query for 'UPDATE _volume'. %s",
                     R"(UPDATE _volume SET blk_total=%lld,blk_free=%lld,blk_size=%d,volume_health=%Q,
        sent_resilver_event=%d,sent_scan_end=%d,keyfile=%Q,balance_status=%d,disk_test_status=%d WHERE id=%Q)",
                     volume->BlockTotal, volume->BlockFree, volume->BlockSize, volume->VolumeHealth,
                     volume->SentResilverEvent, volume->SentScanEnd, volume->KeyFile, volume->BalanceStatus,
                     volume->DisktestStatus, volume->VolumeId);
}

} // namespace qbobj
