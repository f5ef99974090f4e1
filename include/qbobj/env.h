/**
 * @file env.h
 * The environment of one call, as workers and validators with database access receive it.
 */
#ifndef QBOBJ_ENV_H
#define QBOBJ_ENV_H

#include <qbobj/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The per-call environment; it lives on the stack of the call. */
typedef struct qbobj_env {
    qbdb_handle_t *qbdb;    /**< the platform handle of the call */
    qbobj_error_rec_t *err; /**< the caller's error record */
} qbobj_env_t;

#ifdef __cplusplus
}
#endif

#endif
