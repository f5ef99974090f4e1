// Where accounts come from.
#include "core/call.h"

namespace qbobj
{

qbobj_error_t qbobj_api2_isAdsMode(Call &call, int32_t *is_ads_mode)
{
    return static_cast<qbobj_error_t>(
        call.number("Failed DB Query 'SELECT service_cifs'. (%s)", *is_ads_mode,
                    "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END FROM service_cifs S LIMIT 1"));
}

const Directory &Call::directory()
{
    if (!directory_asked_) {
        int32_t ads = 0;
        qbobj_api2_isAdsMode(*this, &ads);
        directory_ = {ads != 0, ads != 0 && qbdb_get_no_sync_ads(qbdb(), db_) != 0};
        directory_asked_ = true;
    }
    return directory_;
}

} // namespace qbobj
