// Where accounts come from. It cannot change during a call, so it is asked once.
#pragma once

#include <qbobj/types.h>

namespace qbobj
{

class Call;

// Sets `is_ads_mode` to 1 when accounts come from a directory service, else to 0. Returns an error code, which callers
// ignore: a failure counts as local mode.
qbobj_error_t qbobj_api2_isAdsMode(Call &call, int32_t *is_ads_mode);

struct Directory {
    bool ads = false;     // directory mode
    bool no_sync = false; // directory accounts are not mirrored into the local tables; only in directory mode

    // For the statements' "rid IS %sNULL".
    const char *rid_not() const { return ads ? "NOT " : ""; }
};

} // namespace qbobj
