// Disks that are held as spares for the volumes.
#include "storage/disk_rows.h"
#include "storage/snapshot.h"

namespace qbobj
{
namespace
{

using Disk = qbobj_Disk_t;

constexpr auto spares_text =
    joined(disk_columns, ",D.volume_id,D.hwif,D.pool_type,D.pool_state,D.pool_hostid,D.controller,D.channel"
                         " FROM `$disk_info` D INNER JOIN '$volume_spares' VS ON VS.disk_info_id=D.id");
constexpr auto spares = select_disks(spares_text, "Failed DB Query for 'SELECT FROM disk_info'. %s",
                                     &Disk::Pool, &Disk::HardwareInterface, &Disk::PoolType, pool_state,
                                     pool_host, &Disk::Controller, &Disk::Channel);

} // namespace

int x_qbobj_getVolumeSparesCollection(Call &call, qbobj_DiskCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(spares, collection->Disk);
}

int x_qbobj_addVolumeSpare(Call &call, const char *DevName)
{
    return call.exec("Failed DB Query for 'INSERT INTO $volume_spares'. %s",
                     "INSERT INTO `$volume_spares`(disk_info_id)VALUES(%Q)", DevName);
}

int x_qbobj_deleteVolumeSpare(Call &call, const char *DevName)
{
    return call.exec("Failed DB Query for 'DELETE $volumespares'. %s",
                     "DELETE FROM `$volume_spares` WHERE disk_info_id=%Q", DevName);
}

} // namespace qbobj
