// Backup jobs.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple backup_operations{
    reads<qbobj_getBackupJobCollection>(appended("collection")),
    reads<qbobj_getBackupJob>(in_out("job")),
    reads<qbobj_getBackupTargetCollection>(out("collection")),
    reads<qbobj_getBackupButtonJobCollection>(appended("collection")),
    writes<qbobj_setBackupButtonJobCollection>(in("collection")),
    reads<qbobj_getBackupUSBSubType>(in("usb_port"), out("USBSubType")),

    writes<qbobj_addBackupJob>(in_out("job")),
    writes<qbobj_modifyBackupJob>(in_out("job")),
    writes<qbobj_deleteBackupJob>(in_out("job")),
};

} // namespace qbobj
