/**
 * @file settings.h
 * Single settings by key, and what a directory path is to the file services.
 *
 * These operations keep no frame of records: each begins and ends a transaction of its own. `qbdb`, `err` and
 * the arguments marked "required" must not be null: a null one ends the process with a failed assertion.
 */
#ifndef QBOBJ_SETTINGS_H
#define QBOBJ_SETTINGS_H

#include <qbobj/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** How the file services show a directory. */
typedef struct qbobj_folder_attribute {
    int cifs_flags;      /**< 1 = shared over SMB, 2 = hidden share, or-ed */
    int dlna_flags;      /**< the share's media types: 1 audio, 2 video, 4 images, or-ed */
    const char *comment; /**< the share's comment; null when the path is in no share */
    int is_homeshare;    /**< 1 for a user's home folder or a path in it */
    int is_subfolder;    /**< 1 when the path lies below the shared folder rather than being it */
} qbobj_folder_attribute_t;

/** Reads an entry of `service_misc`.
 *  @param key  required
 *  @param val  required; the value, or null when the entry stands with no value
 *  @return 0; QBOBJ_ERROR_DB_NOTEXISTS when there is no such entry; QBOBJ_ERROR_DB_MISC */
QBOBJ_API int getServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, char **val,
                              qbobj_error_rec_t *err);

/** Writes an entry of `service_misc` and, when the entry names a column of another table, that column in
 * every row.
 *  @param key  required; "LANGUAGE" takes only a language listed in the entry "LANGUAGES_SUPPORTED"
 *  @param val  the new value; null empties the entry and its column, and ends the link between them
 *  @return 0; QBOBJ_ERROR_API_ARGS for an unsupported language; QBOBJ_ERROR_DB_MISC; or the commit's result
 */
QBOBJ_API int setServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                              qbobj_error_rec_t *err);

/** Reads an entry of `$registry`; arguments and results as for getServiceEntry(). */
QBOBJ_API int getRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char **val,
                               qbobj_error_rec_t *err);

/** Creates or replaces an entry of `$registry`.
 *  @param key  required
 *  @param val  the value. Entries cannot be removed: null always fails with QBOBJ_ERROR_DB_MISC and changes
 * nothing
 *  @return 0; QBOBJ_ERROR_DB_MISC; or the commit's result */
QBOBJ_API int setRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                               qbobj_error_rec_t *err);

/** Tells what the directory `path` is: a share, a folder in a share, a user's home or a folder in one. A path
 * that is none of these succeeds with every field empty. Reads `share`, `cifs_share_option`,
 * `dlna_share_option`, `$user`.
 *  @param attr  required; filled
 *  @return 0 or QBOBJ_ERROR_DB_MISC */
QBOBJ_API int getFolderAttribute(qbdb_handle_t *qbdb, sqlite3 *db, const char *path,
                                 qbobj_folder_attribute_t *attr, qbobj_error_rec_t *err);

/** The space that the first Time Machine sparse bundle in the directory `path` takes, in MB of 1,000,000
 * bytes; 0 when there is none. Reads the file system only. */
QBOBJ_API uint64_t get_tm_used_mb(const char *path);

#ifdef __cplusplus
}
#endif

#endif
