// Time Machine, the vault, UPS devices, TiVo: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "operations/service_device.h"
#include "service/service_device.h"

using namespace qbobj;

/* ---- Time Machine, vault, daemon ----------------------------------------------------------------------- */

int qbobj_getTimemachine(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Timemachine_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_getTimemachine>(service_device_operations, {qbdb, db, err, here()},
                                        x_qbobj_getTimemachine, o);
}

int qbobj_setTimemachine(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Timemachine_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_setTimemachine>(service_device_operations, {qbdb, db, err, here()},
                                        x_qbobj_setTimemachine, o);
}

int qbobj_setTimemachineEnable(qbdb_handle_t *qbdb, sqlite3 *db, int enable, qbobj_error_rec_t *err)
{
    return framed<qbobj_setTimemachineEnable>(service_device_operations, {qbdb, db, err, here()},
                                              x_qbobj_setTimemachineEnable, enable);
}

int qbobj_getVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_getVaultSettings>(service_device_operations, {qbdb, db, err, here()},
                                          x_qbobj_getVaultSettings, o);
}

int qbobj_setVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_setVaultSettings>(service_device_operations, {qbdb, db, err, here()},
                                          x_qbobj_setVaultSettings, o);
}

int qbobj_cleanVaultSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Vault_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_cleanVaultSettings>(service_device_operations, {qbdb, db, err, here()},
                                            x_qbobj_cleanVaultSettings, o);
}

int qbobj_getQubrixdInfo(qbdb_handle_t *qbdb, sqlite3 *db, int *LastStarted, int *LastStopped, char **Version,
                         qbobj_error_rec_t *err)
{
    return framed<qbobj_getQubrixdInfo>(service_device_operations, {qbdb, db, err, here()},
                                        x_qbobj_getQubrixdInfo, LastStarted, LastStopped, Version);
}

int qbobj_setQubrixdInfo(qbdb_handle_t *qbdb, sqlite3 *db, int LastStarted, int LastStopped,
                         const char *Version, qbobj_error_rec_t *err)
{
    return framed<qbobj_setQubrixdInfo>(service_device_operations, {qbdb, db, err, here()},
                                        x_qbobj_setQubrixdInfo, LastStarted, LastStopped, Version);
}

/* ---- UPS devices --------------------------------------------------------------------------------------- */

int qbobj_getUpsConfigCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfigCollection_t *collection,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_getUpsConfigCollection>(service_device_operations, {qbdb, db, err, here()},
                                                x_qbobj_getUpsConfigCollection, collection);
}

int qbobj_getUpsConfigByNameAtHost(qbdb_handle_t *qbdb, sqlite3 *db, const char *NameAtHost,
                                   qbobj_UpsConfig_t **ups, qbobj_error_rec_t *err)
{
    return framed<qbobj_getUpsConfigByNameAtHost>(service_device_operations, {qbdb, db, err, here()},
                                                  x_qbobj_getUpsConfigByNameAtHost, NameAtHost, ups);
}

int qbobj_addUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups, qbobj_error_rec_t *err)
{
    return framed<qbobj_addUpsConfig>(service_device_operations, {qbdb, db, err, here()},
                                      x_qbobj_addUpsConfig, ups);
}

int qbobj_setUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups, qbobj_error_rec_t *err)
{
    return framed<qbobj_setUpsConfig>(service_device_operations, {qbdb, db, err, here()},
                                      x_qbobj_setUpsConfig, ups);
}

int qbobj_setUpsInfo(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups, qbobj_error_rec_t *err)
{
    return framed<qbobj_setUpsInfo>(service_device_operations, {qbdb, db, err, here()}, x_qbobj_setUpsInfo,
                                    ups);
}

int qbobj_deleteUpsConfig(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_UpsConfig_t *ups, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteUpsConfig>(service_device_operations, {qbdb, db, err, here()},
                                         x_qbobj_deleteUpsConfig, ups);
}

/* ---- TiVo archiver ------------------------------------------------------------------------------------- */

int qbobj_getTIVOSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoOptions_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_getTIVOSettings>(service_device_operations, {qbdb, db, err, here()},
                                         x_qbobj_getTIVOSettings, o);
}

int qbobj_setTIVOSettings(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoOptions_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_setTIVOSettings>(service_device_operations, {qbdb, db, err, here()},
                                         x_qbobj_setTIVOSettings, o);
}

int qbobj_setTIVOMak(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_TivoMak_t *o, qbobj_error_rec_t *err)
{
    return framed<qbobj_setTIVOMak>(service_device_operations, {qbdb, db, err, here()}, x_qbobj_setTIVOMak,
                                    o);
}
