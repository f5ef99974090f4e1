// Shares.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple share_operations{
    reads<qbobj_getShareCollection>(appended("collection")),
    reads<qbobj_getSimpleShareCollection>(appended("collection")),
    reads<qbobj_getShareAndZvolCollection>(appended("collection")),
    reads<qbobj_getAccessibleShareCollection>(appended("collection"), optional("UserName"),
                                              in("ProtocolName")),
    reads<qbobj_getShare>(in_out("share")),
    reads<qbobj_queryShare>(optional("VolumeId"), optional("ShareNameLike"), optional("ShareId"),
                            appended("shares")),
    identifies<qbobj_getShareId>(in("share_name")),
    reads<qbobj_getShareAccess>(in("ShareName"), in("UserName"), out("Access")),
    reads<qbobj_getPathAccess>(in("Path"), in("UserName"), out("Access")),
    reads<qbobj_getShareSnapshotSchedule>(in("share_name"), out("snapshot_schedule")),

    reads<qbobj_getShareProcess>(in("ShareId"), out("procs")),
    writes<qbobj_addShareProcess>(in("ShareId"), optional("procs")),
    writes<qbobj_deleteShareProcess>(in("ShareId"), optional("procs")),
    reads<qbobj_getUsedByOn>(in("ZfsName"), out("usedby")),
    writes<qbobj_addShareUsedBy>(in("ShareId"), in("usedby")),
    writes<qbobj_deleteShareUsedBy>(in("ShareId"), in("usedby")),
    writes<qbobj_modifyShareUsedBy>(optional("usedby"), optional("ShareId"), optional("share_id")),
    writes<qbobj_modifyShareUsedByExclusive>(in("usedby"), optional("ShareId")),

    writes<qbobj_addShare>(in_out("share")),
    writes<qbobj_modifyShare>(in_out("share"), optional("modifyOneShare")),
    writes<qbobj_modifyShareVisibleSnapFolder>(in("ZfsName"), optional("VisibleSnapFolder")),
    writes<qbobj_modifyZvol>(in("ZfsName"), in("ShareName"), optional("Comment"), in("SizeKB"),
                             in("IsSparse")),
    writes<qbobj_deleteShare>(in_out("share")),
    writes<qbobj_deleteZvol>(in("ZfsName")),
    writes<qbobj_deleteShareOnVolume>(in("VolumeId")),
    writes<qbobj_preMigrateShare>(in("ShareId"), in("VolumeId")),
    writes<qbobj_postMigrateShare>(in("ShareId"), in("Commit"), out("NewPath")),
    writes<qbobj_copyShare>(in("VolumeName"), in("ShareName"), optional("SnapshotName"), in("NewShareName")),
};

} // namespace qbobj
