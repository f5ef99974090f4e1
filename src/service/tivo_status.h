// The status file of the TiVo bridge service.
#pragma once

#include "core/call.h"

#include <qbobj/service.h>

namespace qbobj
{

enum class TivoBridge {
    finished, // or there is no file
    busy      // still looking for devices
};

// Reads the file once, and appends its devices to the list. A device that the bridge waits for empties the list.
TivoBridge read_tivo_status(Call &call, const char *path, qbobj_TIVOhostsAcl_t *&devices);

} // namespace qbobj
