// The handle's journal of services that want to be refreshed.
#pragma once

#include "qbdb.h"

#include <string>

namespace qbdb
{

// Writes one whole line to the handle's journal, if it has one.
void write_journal(qbdb_handle_t *qbdb, const std::string &line);

} // namespace qbdb
