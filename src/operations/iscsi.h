// iSCSI targets.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple iscsi_operations{
    reads<qbobj_getLunGroupAccessList>(in("LunGroup"), out_array("Initiators", "Entries"), out("Entries")),
    writes<qbobj_addLunGroupAccessList>(in("LunGroup"), in("Initiator")),
    writes<qbobj_deleteLunGroupAccessList>(in("LunGroup")),
    writes<qbobj_deleteIniFromLunGroupAccessList>(in("Initiator")),

    reads<qbobj_getLunGroupCollection>(appended("collection")),
    reads<qbobj_getLunGroup>(in_out("LunGroup")),
    writes<qbobj_addLunGroup>(in("LunGroup")),
    writes<qbobj_modifyLunGroup>(in("LunGroup")),
    writes<qbobj_deleteLunGroup>(in("LunGroupName")),

    reads<qbobj_getInitiatorCollection>(appended("collection")),
    reads<qbobj_getInitiator>(in_out("Initiator")),
    writes<qbobj_addInitiator>(in("Initiator")),
    writes<qbobj_modifyInitiator>(in("Initiator")),
    writes<qbobj_deleteInitiator>(in("Name")),

    reads<qbobj_getLun>(in_out("Lun")),
    writes<qbobj_addLun>(in("Lun")),
    writes<qbobj_deleteLun>(in("Name")),

    identifies<qbobj_getLunId>(in("lun_name")),
    identifies_plainly<qbobj_getLunGroupId>(in("lun_group_name")),
    identifies_plainly<qbobj_getInitiatorId>(in("initiator_name")),
};

} // namespace qbobj
