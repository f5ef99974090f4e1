// Volumes, disks and their enclosures, and the readings of their health.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple storage_operations{
    reads<qbobj_getVolumeCollection>(appended("collection")),
    writes<qbobj_updateVolume>(in("volume")),
    writes<qbobj_deleteVolume>(in("VolumeId")),

    reads<qbobj_getDiskCollection>(appended("collection")),
    reads<qbobj_getDiskCollectionForController>(appended("collection"), in("controller")),
    reads<qbobj_getDiskByDevname>(in_out("slot")),
    writes<qbobj_setDiskSpare>(in("devname"), in("flag")),
    refreshes<qbobj_getDiskDiff>(out("diff")),
    reads<qbobj_getDiskByDiskDiff>(in("diff"), out("disk")),
    writes<qbobj_deleteDiskByDevname>(in("disk")),
    reads<qbobj_getDiskEnclosureCollection>(appended("collection")),
    reads<qbobj_getDiskEnclosurePort>(in("DiskEnclosureId"), out("DiskEnclosrePort")),

    reads<qbobj_getDiskHealthCollection>(appended("collection")),
    writes<qbobj_setDiskHealth>(in("health")),
    reads<qbobj_getEnclosureHealth>(in_out("enc_health")),
    reads<qbobj_getEnclosureHealthCollection>(appended("collection")),
    writes<qbobj_setEnclosureHealth>(in("enc_health")),
    writes<qbobj_setEnclosureHealthForTest>(optional("path")),
    reads<qbobj_getUpsHealthCollection>(appended("collection")),
    writes<qbobj_setUpsHealth>(in("ups_health")),
};

} // namespace qbobj
