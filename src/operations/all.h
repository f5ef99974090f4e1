// The table of operations: every family, in the order of the umbrella header.
#pragma once

#include "operations/account.h"
#include "operations/backup.h"
#include "operations/settings.h"
#include "operations/share.h"

namespace qbobj
{

inline constexpr auto all_operations =
    std::tuple_cat(settings_operations, share_operations, account_operations, backup_operations);

} // namespace qbobj
