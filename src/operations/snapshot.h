// Snapshots, clones, spares and the schedules of volumes.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple snapshot_operations{
    reads<qbobj_getSnapshotCollection>(appended("collection"), optional("ShareName"), optional("VolumeName"),
                                       optional("q_type"), optional("q_from"), in("q_to"),
                                       optional("OrderBy"), optional("q_order"), optional("q_limit"),
                                       optional("q_offset")),
    reads<qbobj_getSnapshotCollectionCount>(out("count"), optional("ShareName"), optional("VolumeName"),
                                            optional("q_type"), optional("q_from"), in("q_to")),
    writes<qbobj_addSnapshot>(in("snapshot")),
    writes<qbobj_deleteSnapshot>(in("VolumeName"), optional("ShareName"), optional("DeleteNewer"),
                                 optional("SnapshotName"), optional("CreatedOn")),

    reads<qbobj_getHfSnapshotCollection>(appended("collection"), optional("UserName"), optional("HomeDir"),
                                         optional("q_type"), optional("q_from"), in("q_to"),
                                         optional("OrderBy"), optional("q_order"), optional("q_limit"),
                                         optional("q_offset")),
    reads<qbobj_getHfSnapshotCollectionCount>(out("count"), optional("UserName"), optional("HomeDir"),
                                              optional("q_type"), optional("q_from"), in("q_to")),
    writes<qbobj_addHfSnapshot>(in("snapshot")),
    writes<qbobj_deleteHfSnapshot>(in("UserName"), optional("HomeDir"), optional("DeleteNewer"),
                                   optional("SnapshotName"), optional("CreatedOn")),
    reads<qbobj_getHfSnapshotSchedule>(out("schedule")),
    writes<qbobj_addHfSnapshotSchedule>(in("schedule")),
    writes<qbobj_modifyHfSnapshotSchedule>(in("schedule")),

    reads<qbobj_getSnapshotClones>(optional("ParentSnapshotName"), optional("ParentShareName"),
                                   appended("SnapshotCloneCollection")),
    writes<qbobj_addSnapshotClone>(in("ClonedShareName"), in("ParentSnapshotName"), in("ParentShareName")),
    writes<qbobj_deleteSnapshotClone>(optional("ClonedShareName"), optional("ParentSnapshotName"),
                                      optional("ParentShareName")),

    reads<qbobj_getVolumeSparesCollection>(appended("collection")),
    writes<qbobj_addVolumeSpare>(in("DevName")),
    writes<qbobj_deleteVolumeSpare>(in("DevName")),
    reads<qbobj_getVolumeScheduleCollection>(appended("collection")),
    writes<qbobj_addVolumeSchedule>(in("volumeschedule")),
    writes<qbobj_updateVolumeSchedule>(in("volumeschedule")),
    writes<qbobj_deleteVolumeSchedule>(in("volumeschedule")),
};

} // namespace qbobj
