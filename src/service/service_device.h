// Workers of Time Machine, the vault, the daemon's record, UPS devices and the TiVo archiver.
#pragma once

#include "core/call.h"

#include <qbobj/service.h>

namespace qbobj
{

/* ---- Time Machine, vault, daemon ----------------------------------------------------------------------- */

int x_qbobj_getTimemachine(Call &call, qbobj_Timemachine_t *o);
int x_qbobj_setTimemachine(Call &call, qbobj_Timemachine_t *o);
int x_qbobj_setTimemachineEnable(Call &call, int enable);

int x_qbobj_getVaultSettings(Call &call, qbobj_Vault_t *o);
int x_qbobj_setVaultSettings(Call &call, qbobj_Vault_t *o);
int x_qbobj_cleanVaultSettings(Call &call, qbobj_Vault_t *o);

int x_qbobj_getQubrixdInfo(Call &call, int *LastStarted, int *LastStopped, char **Version);
int x_qbobj_setQubrixdInfo(Call &call, int LastStarted, int LastStopped, const char *Version);

/* ---- UPS devices --------------------------------------------------------------------------------------- */

int x_qbobj_getUpsConfigCollection(Call &call, qbobj_UpsConfigCollection_t *collection);
int x_qbobj_getUpsConfigByNameAtHost(Call &call, const char *NameAtHost, qbobj_UpsConfig_t **ups);
int x_qbobj_addUpsConfig(Call &call, qbobj_UpsConfig_t *ups);
int x_qbobj_setUpsConfig(Call &call, qbobj_UpsConfig_t *ups);
int x_qbobj_setUpsInfo(Call &call, qbobj_UpsConfig_t *ups);
int x_qbobj_deleteUpsConfig(Call &call, qbobj_UpsConfig_t *ups);

/* ---- TiVo archiver ------------------------------------------------------------------------------------- */

int x_qbobj_getTIVOSettings(Call &call, qbobj_TivoOptions_t *o);
int x_qbobj_setTIVOSettings(Call &call, qbobj_TivoOptions_t *o);
int x_qbobj_setTIVOMak(Call &call, qbobj_TivoMak_t *o);

/* ---- Helpers ------------------------------------------------------------------------------------------- */

// As Call::find(), but only of a row that is the only one: with several the record stays as it is, too.
template <class Columns, class Record>
int find_only(Call &call, const Select<Columns> &select, Record &record, bool &found)
{
    const Table rows = call.table(select.sql);
    if (!rows)
        return select.failure.raise(call, rows.error());
    found = rows.size() == 1;
    if (found)
        fill(call, record, select.columns, *rows.begin());
    return 0;
}

} // namespace qbobj
