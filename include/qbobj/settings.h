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
    int cifs_flags; /**< 1 shared over SMB, 2 hidden share, or-ed. @range 0 to 3 @readonly */
    /** The share's media types: 1 audio, 2 video, 4 images, or-ed. @range 0 to 7 @readonly */
    int dlna_flags;
    const char *comment; /**< the share's comment; null when the path is in no share. @readonly */
    int is_homeshare;    /**< a user's home folder or a path in it. @words 0, 1 @readonly */
    /** The path lies below the shared folder rather than being it. @words 0, 1 @readonly */
    int is_subfolder;
} qbobj_folder_attribute_t;

/**
 * Reads an entry of the settings.
 *
 * @param[in]  key  required
 * @param[out] val  required; the value, or null when the entry stands with no value
 * @reads service_misc
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  there is no such entry
 * @return 0 or the error code
 */
QBOBJ_API int getServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, char **val,
                              qbobj_error_rec_t *err);

/**
 * Writes an entry of the settings.
 *
 * When the entry names a column of another table, that column is written too, in every row; a fresh database
 * has no such entry. There is one entry a key: an existing one gets the new value.
 *
 * @param[in] key  required; "LANGUAGE" takes only a language listed in the entry "LANGUAGES_SUPPORTED"
 * @param[in] val  the new value; null empties the entry and its column, and ends the link between them
 * @reads  service_misc
 * @writes service_misc
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @error QBOBJ_ERROR_API_ARGS  the language is not supported
 * @return 0, the error code, or what a failed commit returned
 */
QBOBJ_API int setServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                              qbobj_error_rec_t *err);

/**
 * Reads an entry of the registry.
 *
 * @param[in]  key  required
 * @param[out] val  required; the value
 * @reads $registry
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  there is no such entry, or it has no value
 * @return 0 or the error code
 */
QBOBJ_API int getRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char **val,
                               qbobj_error_rec_t *err);

/**
 * Creates or replaces an entry of the registry.
 *
 * @param[in] key  required
 * @param[in] val  the value. Entries cannot be removed: null always fails and changes nothing
 * @writes $registry
 * @error QBOBJ_ERROR_DB_MISC  a statement failed, or `val` is null
 * @return 0, the error code, or what a failed commit returned
 */
QBOBJ_API int setRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                               qbobj_error_rec_t *err);

/**
 * Tells what a directory is: a share, a folder in a share, a user's home or a folder in one.
 *
 * A path that is none of these succeeds with every field empty.
 *
 * @param[in]  path  the path
 * @param[out] attr  required; filled
 * @reads share, cifs_share_option, dlna_share_option, $user
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int getFolderAttribute(qbdb_handle_t *qbdb, sqlite3 *db, const char *path,
                                 qbobj_folder_attribute_t *attr, qbobj_error_rec_t *err);

/**
 * Finds the space that the first Time Machine sparse bundle in a directory takes.
 *
 * Reads the file system only, and the path as it is, not below a handle's root.
 *
 * @param[in] path  the directory; may be null
 * @reads nothing
 * @error none
 * @return the space in MB of 1,000,000 bytes; 0 when there is no bundle
 */
QBOBJ_API uint64_t get_tm_used_mb(const char *path);

#ifdef __cplusplus
}
#endif

#endif
