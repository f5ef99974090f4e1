// Time Machine, the vault, the daemon's record, UPS devices and the TiVo archiver.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple service_device_operations{
    reads<qbobj_getTimemachine>(out("o")),
    writes<qbobj_setTimemachine>(in("o")),
    writes<qbobj_setTimemachineEnable>(in("enable")),
    reads<qbobj_getVaultSettings>(out("o")),
    writes<qbobj_setVaultSettings>(in("o")),
    writes<qbobj_cleanVaultSettings>(in("o")),
    reads<qbobj_getQubrixdInfo>(out("LastStarted"), out("LastStopped"), out("Version")),
    writes<qbobj_setQubrixdInfo>(in("LastStarted"), in("LastStopped"), optional("Version")),

    reads<qbobj_getUpsConfigCollection>(appended("collection")),
    reads<qbobj_getUpsConfigByNameAtHost>(in("NameAtHost"), out("ups")),
    writes<qbobj_addUpsConfig>(in_out("ups")),
    writes<qbobj_setUpsConfig>(in("ups")),
    writes<qbobj_setUpsInfo>(in("ups")),
    writes<qbobj_deleteUpsConfig>(in("ups")),

    reads<qbobj_getTIVOSettings>(appended("o")),
    writes<qbobj_setTIVOSettings>(in("o")),
    writes<qbobj_setTIVOMak>(in("o")),
};

} // namespace qbobj
