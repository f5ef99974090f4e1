// Disks and their enclosures.
#include "storage/disk_rows.h"
#include "storage/storage.h"

namespace qbobj
{
namespace
{

using Disk = qbobj_Disk_t;
using Enclosure = qbobj_DiskCollection_t;

/* ---- Disks ---------------------------------------------------------------------------------------------
 * A controller's disks and a single disk differ in this: the list leaves out disks without readings and tells the
 * state of the pool; the single disk is found without readings too, and tells of spare and signature. */

constexpr char readings_and_slot[] = ",H.temp,H.ata_errors,D.volume_id,P.slot_col||'x'||P.slot_row,D.hwif";
constexpr char in_its_slot[] =
    " FROM `$disk_info` D INNER JOIN disk_port P ON P.controller=D.controller AND P.port=D.port";

constexpr auto controller_text =
    joined(disk_columns, readings_and_slot,
           ",D.pool_type,D.pool_state,D.pool_hostid,P.controller,IFNULL(H.zpool_state,'ONLINE'),D.controller,"
           "D.channel",
           in_its_slot,
           " INNER JOIN _disk_health H ON H.disk_id=D.id WHERE D.controller=%d ORDER BY 20 COLLATE NOCASE");
constexpr auto disks_of_controller = select_disks<int>(
    controller_text, "Failed DB Query for 'SELECT FROM disk_info'. %s", &Disk::Temperature, &Disk::ATAError,
    &Disk::Pool, &Disk::SlotName, &Disk::HardwareInterface, &Disk::PoolType, pool_state, pool_host,
    &Disk::DiskEnclosureId, &Disk::DiskState, &Disk::Controller, &Disk::Channel);

constexpr auto one_disk_text =
    joined(disk_columns, readings_and_slot,
           ",P.controller,D.controller,D.channel,D.replaced_with_spare,D.is_signed_by_mltx", in_its_slot,
           " LEFT JOIN _disk_health H ON H.disk_id=D.id WHERE D.id=%Q");
constexpr auto one_disk = select_disks<const char *>(
    one_disk_text, "Failed DB Query for 'SELECT FROM disk_info'. %s", &Disk::Temperature, &Disk::ATAError,
    &Disk::Pool, &Disk::SlotName, &Disk::HardwareInterface, &Disk::DiskEnclosureId, &Disk::Controller,
    &Disk::Channel, &Disk::ReplacedWithSpare, &Disk::IsSignedByMaltrex);

constexpr auto absent_from_slot =
    select<int, int>("SELECT D.id FROM `$disk_info` D WHERE D.controller=%d AND D.channel=%d AND D.present=0",
                     "Failed DB Query for 'SELECT FROM disk_info'. %s", &Disk::DevName);

// Several operations take a disk by its device name.
int check_device_name(Call &call, const Disk *disk, const Site &site = here())
{
    if (disk == nullptr || disk->DevName == nullptr)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS,
                        "disk or disk->DevName is null. caller should specify devname.");
    return 0;
}

/* ---- Enclosures ---------------------------------------------------------------------------------------- */

constexpr auto enclosures = select(
    "SELECT E.controller,E.name,E.nr_row,E.nr_column,E.disk_horizontal FROM _disk_enclosure E",
    "Failed DB Query for 'SELECT FROM _disk_enclosure'. %s",
    controller_and_key(&Enclosure::DiskEnclosureId, &Enclosure::resource_id), &Enclosure::EnclosureName,
    &Enclosure::EnclosureRows, &Enclosure::EnclosureCols, &Enclosure::IsSlotHorizontal);

constexpr auto one_enclosure = select<int>(
    R"(SELECT E.controller,E.nr_column,E.nr_row,E.disk_horizontal,E.name,J.label,E.ses_device,E.dead_slots
        FROM _disk_enclosure E INNER JOIN jbod_port J ON J.controller=E.controller WHERE E.controller=%d)",
    "Failed DB Query for 'SELECT FROM _disk_enclosure'. %s", &Enclosure::DiskEnclosureId,
    &Enclosure::EnclosureCols, &Enclosure::EnclosureRows, &Enclosure::IsSlotHorizontal,
    or_empty(&Enclosure::EnclosureName), or_empty(&Enclosure::DiskEnclosurePort),
    or_empty(&Enclosure::SESDevice), &Enclosure::DeadSlots);

} // namespace

int x_qbobj_getDiskCollection(Call &call, qbobj_DiskCollection_t *collection)
{
    return x_qbobj_getDiskCollectionForController(call, collection, 0);
}

int x_qbobj_getDiskCollectionForController(Call &call, qbobj_DiskCollection_t *collection, int controller)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    if (const int rc = call.append(disks_of_controller, collection->Disk, controller))
        return rc;
    return call.read(one_enclosure, *collection, controller);
}

int x_qbobj_getDiskEnclosureCollection(Call &call, qbobj_DiskEnclosureCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(enclosures, collection->DiskEnclosure);
}

int x_qbobj_getDiskEnclosurePort(Call &call, int DiskEnclosureId, char **DiskEnclosrePort)
{
    if (DiskEnclosrePort == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "DiskEnclosrePort cannot be NULL.");
    return call.text("Query faile for 'SELECT jbod_port'. %s", *DiskEnclosrePort,
                     "SELECT label FROM jbod_port WHERE controller=%d", DiskEnclosureId);
}

int x_qbobj_getDiskByDevname(Call &call, qbobj_Disk_t *slot)
{
    if (const int rc = check_device_name(call, slot))
        return rc;
    return call.read(one_disk, *slot, slot->DevName);
}

int x_qbobj_getDiskByDiskDiff(Call &call, qbobj_DiskDiff_t *diff, qbobj_Disk_t *disk)
{
    if (diff == nullptr || disk == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "disk or diff is null.");
    bool in_pool = false;
    const auto try_disk = [&](const Disk &absent) {
        if (in_pool)
            return 0;
        disk->DevName = absent.DevName;
        bool found = false;
        const int rc = call.find(one_disk, *disk, found, disk->DevName);
        in_pool = found && !is_empty(disk->Pool);
        return rc;
    };
    return call.each<Disk>(absent_from_slot, try_disk, diff->Controller, diff->Channel);
}

int x_qbobj_setDiskSpare(Call &call, const char *devname, int flag)
{
    if (devname == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "devname is null. caller should specify devname.");
    return call.exec("Failed DB Query for 'UPDATE FROM disk_info'. %s",
                     "UPDATE `$disk_info` SET replaced_with_spare=%d WHERE id=%Q", flag, devname);
}

int x_qbobj_deleteDiskByDevname(Call &call, qbobj_Disk_t *disk)
{
    if (const int rc = check_device_name(call, disk))
        return rc;
    return call.exec("Failed DB Query for DELETE disk_info. %s", "DELETE FROM `$disk_info` WHERE id=%Q",
                     disk->DevName);
}

} // namespace qbobj
