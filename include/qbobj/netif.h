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
    const char *Name;     /**< name, unique: the key of the interface. @range 0 to 16 bytes @required */
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

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
