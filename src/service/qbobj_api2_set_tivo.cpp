// The TiVo archiver's schedule and the devices' media access keys, written.
#include "service/service_device.h"

#include <cstring>

namespace qbobj
{
namespace
{

int store_schedule(Call &call, const qbobj_TivoOptions_t &options)
{
    if (const int rc = call.exec("Failed DB Delete for service_tivo update. %s", "DELETE FROM service_tivo"))
        return rc;
    for (const char *text : {options.hour, options.minute, options.TIVOfolder, options.days})
        if (text == nullptr)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Invalid TIVO settings!");
    return call.exec("Failed DB Query for service_tivo update. %s",
                     "INSERT INTO service_tivo (hour,minute,path,days) VALUES(%Q,%Q,%Q,%Q)", options.hour,
                     options.minute, options.TIVOfolder, options.days);
}

int store_key(Call &call, const qbobj_TivoMak_t &mak)
{
    if (const int rc = call.exec("Failed DB Delete for tivo_mak update. %s",
                                 "DELETE FROM tivo_mak WHERE name=%Q", mak.name))
        return rc;
    if (std::strcmp(mak.status, "true") != 0 || mak.key == nullptr)
        return 0;
    return call.exec("Failed DB Query for tivo_mak update. %s",
                     "INSERT INTO tivo_mak (name,key) VALUES(%Q,%Q)", mak.name, mak.key);
}

// A failure to store is -1; its code is in the error record alone. Callers depend on it.
int stored(int rc)
{
    return rc == 0 ? 0 : -1;
}

} // namespace

int x_qbobj_setTIVOSettings(Call &call, qbobj_TivoOptions_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    return stored(store_schedule(call, *o));
}

int x_qbobj_setTIVOMak(Call &call, qbobj_TivoMak_t *o)
{
    if (o == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "o cannot be NULL.");
    if (o->status == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "status cannot be NULL.");
    return stored(store_key(call, *o));
}

} // namespace qbobj
