// Network interfaces: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "netif/netif.h"
#include "operations/netif.h"

using namespace qbobj;

int qbobj_getNetworkInterfaceCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                        qbobj_NetworkInterfaceCollection_t *collection,
                                        qbobj_error_rec_t *err)
{
    return framed<qbobj_getNetworkInterfaceCollection>(netif_operations, {qbdb, db, err, here()},
                                                       x_qbobj_getNetworkInterfaceCollection, collection);
}

int qbobj_getNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_getNetworkInterface>(netif_operations, {qbdb, db, err, here()},
                                             x_qbobj_getNetworkInterface, netif);
}

int qbobj_addNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_addNetworkInterface>(netif_operations, {qbdb, db, err, here()},
                                             x_qbobj_addNetworkInterface, netif);
}

int qbobj_deleteNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteNetworkInterface>(netif_operations, {qbdb, db, err, here()},
                                                x_qbobj_deleteNetworkInterface, netif);
}

int qbobj_modifyNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyNetworkInterface>(netif_operations, {qbdb, db, err, here()},
                                                x_qbobj_modifyNetworkInterface, netif);
}
