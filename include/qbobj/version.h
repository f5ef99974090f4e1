/**
 * @file version.h
 * The library's version: of the headers that a caller is compiled with, and of the library that it runs with.
 */
#ifndef QBOBJ_VERSION_H
#define QBOBJ_VERSION_H

#include <qbobj/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The build takes the project's version from here. */
#define QBOBJ_VERSION_MAJOR 1 /**< grows when callers must change */
#define QBOBJ_VERSION_MINOR 0 /**< grows with what is new */
#define QBOBJ_VERSION_PATCH 0 /**< grows with what is mended */
#define QBOBJ_VERSION_STRING "1.0.0"

/**
 * The version of the library that runs.
 *
 * @reads nothing
 * @error none
 * @return the text, as QBOBJ_VERSION_STRING says it of the headers
 */
QBOBJ_API const char *qbobj_version(void);

#ifdef __cplusplus
}
#endif

#endif
