// The sizes of volumes, read from their file systems.
#pragma once

#include "execution.h"

#include <optional>

namespace qbdb
{

// A path of the appliance as the handle's root shows it.
std::string below_root(const qbdb_handle_t *qbdb, std::string_view path);

// Reads the sizes of all registered volumes again; one whose folder is not there keeps those it had.
int refresh_volumes(const Call &call);

} // namespace qbdb
