// Small helpers that several workers share.
#pragma once

#include <apr_hash.h>
#include <qbobj/env.h>

#include <cstddef>
#include <cstdint>

// States of a storage pool, as the disks of the pool record them.
enum pool_state_t : int {
    POOL_STATE_ACTIVE = 0,
    POOL_STATE_EXPORTED = 1,
    POOL_STATE_DESTROYED = 2,
    POOL_STATE_SPARE = 3,
    POOL_STATE_L2CACHE = 4,
    POOL_STATE_UNINITIALIZED = 5,
    POOL_STATE_UNAVAIL = 6,
    POOL_STATE_POTENTIALLY_ACTIVE = 7
};

// n + 1 slots of the pool, not zeroed. When they cannot be had: null, and the error record holds
// QBOBJ_ERROR_OOM and nothing else.
char **qbobj_util_alloc_array_of_string(qbobj_env_t *qbobj, int n);

// Removes every entry.
void qbobj_util_hash_clear(qbobj_env_t *qbobj, apr_hash_t *ht);

// Copies every entry of `hsrc` into `hdst`, replacing equal keys. Keys and values are shared, not copied.
void qbobj_util_hash_append(qbobj_env_t *qbobj, apr_hash_t *hdst, apr_hash_t *hsrc);

// Whether a TCP port is taken on the appliance: never, since conflicts are not looked for.
int qbobj_util_is_port_used(qbobj_env_t *qbobj, int port);

// Copies at most `n` bytes (`n` is at least 1), fills up with NULs, and always ends with a NUL. Returns the
// length of `s`; from `n` on the copy is cut.
std::size_t qbobj_strlcpy(char *d, const char *s, std::size_t n);

// The name of a pool's state: "NEW" for a disk that no pool has taken yet, whatever its state.
const char *qbobj_get_pool_state_str(pool_state_t state, const char *name, uint64_t hostid);
