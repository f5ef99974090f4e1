// Settings of the services: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "operations/service.h"
#include "service/service.h"

using namespace qbobj;

int qbobj_getProtocolCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ProtocolCollection_t *collection,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_getProtocolCollection>(protocol_operations, {qbdb, db, err, here()},
                                               x_qbobj_getProtocolCollection, collection);
}

int qbobj_getProtocol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ProtocolName, qbobj_Protocol_t **protocol,
                      qbobj_error_rec_t *err)
{
    return framed<qbobj_getProtocol>(protocol_operations, {qbdb, db, err, here()}, x_qbobj_getProtocol,
                                     ProtocolName, protocol);
}

int qbobj_getSnmpOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SnmpOptions_t **snmp_opts,
                         qbobj_error_rec_t *err)
{
    return framed<qbobj_getSnmpOptions>(protocol_operations, {qbdb, db, err, here()}, x_qbobj_getSnmpOptions,
                                        snmp_opts);
}

int qbobj_getHomeFolderOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HomeFolderOptions_t *opts,
                               qbobj_error_rec_t *err)
{
    return framed<qbobj_getHomeFolderOptions>(protocol_operations, {qbdb, db, err, here()},
                                              x_qbobj_getHomeFolderOptions, opts);
}

int qbobj_setProtocolCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ProtocolCollection_t *collection,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_setProtocolCollection>(protocol_operations, {qbdb, db, err, here()},
                                               x_qbobj_setProtocolCollection, collection);
}

int qbobj_setProtocolEnable(qbdb_handle_t *qbdb, sqlite3 *db, const char *protocol, int enable,
                            qbobj_error_rec_t *err)
{
    return framed<qbobj_setProtocolEnable>(protocol_operations, {qbdb, db, err, here()},
                                           x_qbobj_setProtocolEnable, protocol, enable);
}

int qbobj_setHomeFolderOptions(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_HomeFolderOptions_t *opts,
                               qbobj_error_rec_t *err)
{
    return framed<qbobj_setHomeFolderOptions>(protocol_operations, {qbdb, db, err, here()},
                                              x_qbobj_setHomeFolderOptions, opts);
}
