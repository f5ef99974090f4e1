// Workers and helpers of the service operations.
#pragma once

#include "core/call.h"

#include <qbobj/service.h>

namespace qbobj
{

/* ---- Settings of the services, read -------------------------------------------------------------------- */

int x_qbobj_getProtocolCollection(Call &call, qbobj_ProtocolCollection_t *collection);
int x_qbobj_getProtocol(Call &call, const char *ProtocolName, qbobj_Protocol_t **protocol);
int x_qbobj_getSnmpOptions(Call &call, qbobj_SnmpOptions_t **snmp_opts);
int x_qbobj_getHomeFolderOptions(Call &call, qbobj_HomeFolderOptions_t *opts);

/* ---- Settings of the services, written ----------------------------------------------------------------- */

int x_qbobj_setProtocolCollection(Call &call, qbobj_ProtocolCollection_t *collection);
int x_qbobj_setProtocolEnable(Call &call, const char *protocol, int enable);
int x_qbobj_setHomeFolderOptions(Call &call, qbobj_HomeFolderOptions_t *opts);

// Checks one record and stores it; one that names no service is passed over.
int store_protocol(Call &call, const qbobj_Protocol_t &protocol);
// Whether the record is that of the service: any of its three keys may say so.
bool is_protocol(const qbobj_Protocol_t &protocol, const char *id);
// Stores the switch of a service that is a settings entry.
int store_entry(Call &call, const Failure &failure, const char *key, int value);

} // namespace qbobj
