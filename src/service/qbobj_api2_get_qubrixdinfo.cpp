// When the management daemon ran, and its version, read.
#include "service/service_device.h"

namespace qbobj
{
namespace
{

struct DaemonRecord {
    int started = 0;
    int stopped = 0;
    const char *version = "1.0.0";
};

// The table's name in the message is as callers know it.
constexpr auto daemon_row = select("SELECT started_on,stopped_on,version FROM `$qubrixd` LIMIT 1",
                                   "Failed DB Query for 'SELECT $lqubrixd'. %s", &DaemonRecord::started,
                                   &DaemonRecord::stopped, or_empty(&DaemonRecord::version));

} // namespace

int x_qbobj_getQubrixdInfo(Call &call, int *LastStarted, int *LastStopped, char **Version)
{
    DaemonRecord daemon;
    if (const int rc = call.read(daemon_row, daemon))
        return rc;
    if (LastStarted != nullptr)
        *LastStarted = daemon.started;
    if (LastStopped != nullptr)
        *LastStopped = daemon.stopped;
    if (Version != nullptr)
        *Version = copy_text(call.pool(), daemon.version);
    return 0;
}

} // namespace qbobj
