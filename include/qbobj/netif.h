/**
 * @file netif.h
 * The network interfaces of the appliance.
 */
#ifndef QBOBJ_NETIF_H
#define QBOBJ_NETIF_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** A network interface. Addresses are IPv4. */
struct qbobj_NetworkInterface {
    qbobj_NetworkInterface_t *_link; /**< next */
    const char *resource_id;         /**< not filled by reads */
    /** name, unique: the key of the interface; letters, digits, "_", "." and "-". @range 0 to 16 bytes @required */
    const char *Name;
    const char *Mac;      /**< hardware address: six hexadecimal fields, joined by ":". @required */
    const char *Protocol; /**< how the address is obtained, as stored */
    const char *IP;       /**< address; may be "" */
    const char *DNS1;     /**< first name server; may be "" */
    const char *DNS2;     /**< second name server; may be "" */
    const char *Gateway;  /**< gateway; may be "" */
    const char *Subnet;   /**< network mask, as stored; fixed by its creation */
};

/** A list of network interfaces. */
struct qbobj_NetworkInterfaceCollection {
    qbobj_NetworkInterface_t *NetworkInterface; /**< list: the interfaces */
};

/* ---- Interfaces read ----------------------------------------------------------------------------------- */

/**
 * Lists all network interfaces.
 *
 * They stand by name, without regard to case.
 *
 * @param[in,out] collection  the interfaces are appended to its list
 * @reads network_if
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getNetworkInterfaceCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                  qbobj_NetworkInterfaceCollection_t *collection,
                                                  qbobj_error_rec_t *err);

/**
 * Reads network interfaces.
 *
 * @param[in,out] netif  the interfaces, each found by `Name`; null reads nothing
 * @reads network_if
 * @error QBOBJ_ERROR_DB_MISC       a record without a name, or a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no interface has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                        qbobj_error_rec_t *err);

/* ---- Interfaces written -------------------------------------------------------------------------------- */

/**
 * Adds network interfaces.
 *
 * `Protocol` and `Subnet` are stored as they are given.
 *
 * @param[in] netif  the interfaces; null adds nothing
 * @writes network_if
 * @error QBOBJ_ERROR_API_ARGS  `Name` or `Mac` is missing or malformed, an address is no IPv4 address, or an
 *                              interface of the name exists
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                        qbobj_error_rec_t *err);

/**
 * Removes network interfaces.
 *
 * @param[in] netif  the interfaces, each found by `Name`; null removes nothing
 * @writes network_if
 * @error QBOBJ_ERROR_API_ARGS      a record without a name
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no interface has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                           qbobj_error_rec_t *err);

/**
 * Changes what is given of network interfaces.
 *
 * An address "" removes what is stored. `Subnet` is never changed: to give an interface another, remove it and
 * add it again. A name that no interface has changes nothing, and is no error.
 *
 * @param[in] netif  the interfaces, each found by `Name`; null changes nothing
 * @writes network_if
 * @error QBOBJ_ERROR_API_ARGS  a record without a name, a malformed `Mac` or address, nothing to change, or
 *                              more than one update can hold (511 bytes)
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyNetworkInterface(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_NetworkInterface_t *netif,
                                           qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
