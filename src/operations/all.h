// The table of operations: every family, in the order of the umbrella header.
#pragma once

#include "operations/account.h"
#include "operations/backup.h"
#include "operations/dictionary.h"
#include "operations/iscsi.h"
#include "operations/log.h"
#include "operations/netif.h"
#include "operations/service.h"
#include "operations/service_device.h"
#include "operations/settings.h"
#include "operations/share.h"
#include "operations/snapshot.h"
#include "operations/storage.h"

namespace qbobj
{

// clang-format off
inline constexpr auto all_operations = std::tuple_cat(
    settings_operations,
    share_operations,
    account_operations,
    protocol_operations,
    service_device_operations,
    storage_operations,
    snapshot_operations,
    backup_operations,
    netif_operations,
    log_operations,
    iscsi_operations,
    dictionary_operations);
// clang-format on

} // namespace qbobj
