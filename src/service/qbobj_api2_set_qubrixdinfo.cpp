// When the management daemon ran, and its version, written.
#include "core/set_list.h"
#include "service/service_device.h"

namespace qbobj
{

int x_qbobj_setQubrixdInfo(Call &call, int LastStarted, int LastStopped, const char *Version)
{
    SetList<512> set(call, Overflow::refuse);
    if (LastStarted >= 0)
        set.add("started_on=%d", LastStarted);
    if (LastStopped >= 0)
        set.add("stopped_on=%d", LastStopped);
    if (Version != nullptr)
        set.add("version=%Q", Version);
    if (set.refused() != nullptr)
        return raise_refused(call, set);
    if (set.empty())
        return 0;

    const auto fail = [&] { return raise(call, QBOBJ_ERROR_API_ARGS, "Fail 'UPDATE $qubrixd"); };
    const auto update = [&] { return call.run("UPDATE `$qubrixd` SET %s", set.text()) ? 0 : fail(); };
    if (const int rc = update(); rc != 0 || call.changes() != 0)
        return rc;
    if (!call.run("INSERT INTO `$qubrixd` DEFAULT VALUES"))
        return fail();
    return update();
}

} // namespace qbobj
