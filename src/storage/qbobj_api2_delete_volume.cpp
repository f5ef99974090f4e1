// A volume deleted, with everything that lives on it or points to it.
#include "share/share.h"
#include "storage/storage.h"

namespace qbobj
{
namespace
{

int switch_off_time_machine(Call &call, const char *volume_id)
{
    if (const int rc = call.exec("Failed DB Query for 'UPDATE service_afp'. %s",
                                 R"(UPDATE service_afp SET timemachine_enabled=0,volume_timemachine=NULL,
        vol_size_limit_timemachine_mb=0 WHERE volume_timemachine=%Q)",
                                 volume_id))
        return rc;
    // Whatever volume goes, the quotas go with it; 96 is the account of Time Machine itself.
    if (const int rc = call.exec("Failed DB Query for 'UPDATE $timemachine_quota'. %s",
                                 "UPDATE '$timemachine_quota' SET enabled=0,capacity_mb=0 WHERE user_id=96"))
        return rc;
    return call.exec("Failed DB Query for 'DELETE $timemachine_quota'. %s",
                     "DELETE FROM '$timemachine_quota' WHERE user_id<>96");
}

// Failures are only logged: callers know this result, which comes without an error record.
int move_homes(Call &call)
{
    log(call, QBDB_LOG_INFO, "Default share is deleted!!!\n");
    const Text other = call.ask_text("SELECT V.lv_name FROM _volume V WHERE V.lv_name<>'media' LIMIT 1");
    if (!other) {
        log(call, QBDB_LOG_ERROR, "Failed to SELECT _volume.\n");
        return QBOBJ_ERROR_SIGSEGV;
    }
    const char *name = other.value == nullptr ? "run" : other.value;
    log(call, QBDB_LOG_INFO, "Default share is reassign to %s.\n", name);
    if (!call.run("UPDATE account_default SET home_volume_id=%Q", name)) {
        log(call, QBDB_LOG_ERROR, "Failed to UPDATE account_default.\n");
        return QBOBJ_ERROR_SIGSEGV;
    }
    return 0;
}

} // namespace

int x_qbobj_deleteVolume(Call &call, const char *VolumeId)
{
    if (const int rc = x_qbobj_deleteShareOnVolume(call, VolumeId))
        return rc;
    if (const int rc = call.exec("Failed DB Query for 'DELETE _volume'. %s",
                                 "DELETE FROM _volume WHERE id=%Q", VolumeId))
        return rc;
    if (const int rc = switch_off_time_machine(call, VolumeId))
        return rc;
    int holds_homes = 0;
    if (const int rc = call.number("Failed DB Query for 'SELECT account_default'. %s", holds_homes,
                                   "SELECT COUNT(*) FROM account_default WHERE home_volume_id=%Q", VolumeId))
        return rc;
    return holds_homes == 0 ? 0 : move_homes(call);
}

} // namespace qbobj
