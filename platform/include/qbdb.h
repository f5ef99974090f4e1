/**
 * @file qbdb.h
 * The platform interface: what an appliance supplies to libqbobj.
 *
 * libqbobj uses the operations of the first part of this header and no others, so that an appliance may put a
 * platform library of its own with the same names in the place of the embedded default, libqbdb. Those of the
 * part "Optional operations" it calls when they are there. The last part, "Life of a database", belongs to
 * the embedded default alone.
 *
 * Rules that hold everywhere:
 * - Text results and error texts live in the handle's pool until its owner clears it. The pool has no abort
 *   function: without memory an operation fails with 7, and one that returns a text with null.
 * - Result tables have the shape of sqlite3_get_table() and are released with sqlite3_free_table().
 * - A statement operation returns 0 or SQLite's result code (19 is a constraint; qbdb_sql_begin() returns it
 *   with a minus sign), logs a failed statement at
 *   QBDB_LOG_ERROR with the caller's unit name and line, and stores the database's text in `*errmsg` when
 *   `errmsg` is not null (`*errmsg` is never null after a failure and is null after a success).
 * - Statement formats are SQLite's printf formats: %d %u %lld %llu %ld %lu %f for numbers, %Q for a quoted
 *   value (NULL when the pointer is null), %q for text inside quotes, %w for text inside an identifier's
 *   quotes, %s for text taken over as it is, %% for a percent sign. A %Q and a number that stand outside
 * quotes are values, so they cannot name a column (also not by its position, as in ORDER BY 2).
 * - A handle and its connection are used by one thread at a time. Threads may open, use and close handles of
 *   their own at once. (The first qbdb_open() of a process initialises APR; a program that does so itself in
 *   another thread does it before.)
 * - A handle belongs to the process that opened it. In a child that inherited it every operation is refused with
 *   21 and changes nothing, neither for the child nor for its parent; the child opens handles of its own.
 *   qbdb_close() there frees the child's copy and leaves the file alone. A child of a process with other threads
 *   calls nothing of this library before exec().
 * - The pre-update hook of a connection that qbdb_open() made is taken: it counts what an operation changes. A
 *   second user of that hook, such as an SQLite session, ends the process.
 */
#ifndef QBDB_H
#define QBDB_H

#include <sqlite3.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/** An APR memory pool; apr_pools.h declares its operations. */
typedef struct apr_pool_t apr_pool_t;

/** Log levels; a handle logs a line when the line's level is at most the handle's. */
typedef enum _qbdb_loglevel {
    QBDB_LOG_NONE = 0,
    QBDB_LOG_FATAL = 1,
    QBDB_LOG_ERROR = 2,
    QBDB_LOG_WARN = 3,
    QBDB_LOG_INFO = 4,
    QBDB_LOG_DEBUG = 5,
    QBDB_LOG_ALL = 6
} qbdb_loglevel_t;

/** What qbdb_import_nolock() re-reads from the system. */
typedef enum qbdb_category {
    QBDB_CAT_DISK = 1,   /**< block devices into `$disk_info`; those whose slot nobody knows take the
                                      free ports of controller 0 in order, see `disk_port`, and every one has
                                      a row in `_disk_health` */
    QBDB_CAT_VOLUME = 2, /**< sizes of the volumes into `_volume` */
    QBDB_CAT_REPLICATE_SERVICE = 3 /**< state of the replication service into `service_replicate` */
} qbdb_category_t;

/** The embedded platform's private state of an open database. */
typedef struct qbdb_sysinfo qbdb_sysinfo_t;

/** The platform handle: the first argument of every operation. */
typedef struct _qbdb_handle {
    sqlite3_mutex *sq3_mutex; /**< serialises database access of several handles; may be null */
    FILE *log;                /**< log stream; null logs nothing */
    sqlite3_mutex *log_mutex; /**< held while a line is logged; may be null */
    qbdb_loglevel_t loglvl;   /**< most detailed level that is logged */
    FILE *jnl;                /**< journal of the services that want to be refreshed; may be null */
    sqlite3_mutex *jnl_mutex; /**< held while a journal line is written; may be null */
    apr_pool_t *pool;         /**< everything returned is allocated here; never null during a call */
    const char *root; /**< prefix of the absolute paths that are read; null or "/" is the system's own tree */
    qbdb_sysinfo_t *sysinfo; /**< set by qbdb_open(); null in a handle that a caller made itself */
    int readonly;            /**< non-zero: no transaction writes */
} qbdb_handle_t;

/* ---- Transactions -------------------------------------------------------------------------------------- */

/** Begins a transaction: BEGIN IMMEDIATE, or a deferred one, which holds no lock that a writer needs, when the
 *  handle is read only or qbdb_announce() said that the operation only reads. A busy database is waited for.
 *  A file that another program has brought to another schema since it was opened is not written. Returns 0 or
 *  SQLite's result code with a minus sign (-5: busy): look-ups of identifiers hand this value to their caller. */
int qbdb_sql_begin(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line);

/** Commits. When the commit fails the transaction is rolled back, so that nothing of it stays. */
int qbdb_sql_commit(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line);

/** Rolls back. Without an open transaction it does nothing and returns 0. */
int qbdb_sql_rollback(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line);

/* ---- Statements ---------------------------------------------------------------------------------------- */

/** Runs one statement; text after it is an error. */
int qbdb_sql_exec_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line,
                          const char *format, ...);

/** Runs one SELECT. `*table` receives the cells as sqlite3_get_table() lays them out (row 0 holds the column
 *  names, a NULL is a null pointer); with no row at all `*nrow` and `*ncol` are 0. Release `*table` with
 *  sqlite3_free_table() also when it is null. */
int qbdb_sql_get_table_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char ***table, int *nrow, int *ncol,
                               char **errmsg, const char *file, int line, const char *format, ...);

/** Reads the first column of the first row as a 32-bit integer (a NULL is 0). `*found` tells whether there
 * was a row; without one `*value` is 0. */
int qbdb_sql_get_int32_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, int32_t *value, int *found, char **errmsg,
                               const char *file, int line, const char *format, ...);

/** Reads the first column of the first row as text (a NULL is a null pointer). `*found` tells whether there
 * was a row; without one `*value` is null. */
int qbdb_sql_get_scaler_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char **value, int *found, char **errmsg,
                                const char *file, int line, const char *format, ...);

/* ---- Copies of tables, to find out what an operation changed ------------------------------------------- */

/** Copies `table` to the temporary table `copy`, which is replaced when it exists. */
int qbdb_sql_duplicate_table(qbdb_handle_t *qbdb, sqlite3 *db, const char *table, const char *copy,
                             char **errmsg, const char *file, int line);

/** Copies every table of the null-terminated list to a temporary table named `tag` followed by its name. */
int qbdb_sql_duplicate_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                              char **errmsg, const char *file, int line);

/** Compares every table of the list with its copy, as sets of rows in which equal rows count. `*changed`
 * receives the null-terminated list of the names of those that differ. */
int qbdb_sql_compare_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                            const char ***changed, char **errmsg, const char *file, int line);

/** As qbdb_sql_compare_tables(), but `*changed` only becomes 1 when any table differs, else 0. */
int qbdb_sql_compare_tables2(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                             int *changed, char **errmsg, const char *file, int line);

/** Compares the rows of `table` and of its copy that satisfy the SQL condition `where` (SQL text, taken as it
 *  is). `*changed` becomes 1 when they differ, else 0. */
int qbdb_sql_compare_table_row(qbdb_handle_t *qbdb, sqlite3 *db, const char *table, const char *copy,
                               const char *where, int *changed, char **errmsg, const char *file, int line);

/** Drops the copies made by qbdb_sql_duplicate_tables(); a copy that is not there is no error. */
int qbdb_sql_delete_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                           char **errmsg, const char *file, int line);

/* ---- Log, system state, services ----------------------------------------------------------------------- */

/** Logs one line (time, level, unit:line, text) when `level` is at most the handle's. `flag` is 1 on lines
 * that report an error and 0 on traces. A line end at the end of the text is not doubled. */
void qbdb_log(qbdb_handle_t *qbdb, const char *file, int line, qbdb_loglevel_t level, int flag,
              const char *format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 6, 7)))
#endif
    ;

/** Re-reads a category of system state into its tables, inside the open transaction. Returns 0 on success. */
int qbdb_import_nolock(qbdb_handle_t *qbdb, sqlite3 *db, qbdb_category_t category);

/** Refreshes the usage of users' homes in `_hf_zfs_stat`: of those that are file systems of their own. Never
 *  walks a tree. Returns 0 on success. */
int qbdb_hf_stats_import(qbdb_handle_t *qbdb, sqlite3 *db);

/** Tells the service ("cifs", "ftp") that the share configuration changed. The embedded default tells it once for all changes
 *  of a transaction, after their commit. */
int qbdb_service_update_setting_by_share(qbdb_handle_t *qbdb, sqlite3 *db, const char *service);

/** Reads a storage property of a dataset with a scanf format, as scanf() does into the pointers given.
 * Returns 0 when the property was read, non-zero when there is no storage tool or no such property, or the
 * tool did not answer in time (2 s, or as qbdb_open() was told). */
int qbdb_fs_get_attr_scanf(qbdb_handle_t *qbdb, const char *dataset, const char *property, const char *format,
                           ...)
#if defined(__GNUC__)
    __attribute__((format(scanf, 4, 5)))
#endif
    ;

/** The folder in which a snapshot of the file system at `path` can be browsed, or null for no name. */
const char *snapshot_get_path(qbdb_handle_t *qbdb, const char *path, const char *snapshot);

/* ---- Account ids --------------------------------------------------------------------------------------- */

/** The POSIX uid of a directory user's (negative) internal id, or a negative number when unknown. */
int qbdb_util_get_posix_uid(qbdb_handle_t *qbdb, int uid);
/** The POSIX gid of a directory group's (negative) internal id, or a negative number when unknown. */
int qbdb_util_get_posix_gid(qbdb_handle_t *qbdb, int gid);
/** The POSIX uid of a name, or a negative number when unknown. `ads_mode` non-zero: of a directory name, for
 *  which no id below 1 is an answer. */
int qbdb_util_get_posix_uid_by_name(qbdb_handle_t *qbdb, const char *name, int ads_mode);
/** The POSIX gid of a name, as qbdb_util_get_posix_uid_by_name(). */
int qbdb_util_get_posix_gid_by_name(qbdb_handle_t *qbdb, const char *name, int ads_mode);
/** The name of a directory user, or null when unknown. */
const char *qbdb_util_get_domain_uname_by_uid(qbdb_handle_t *qbdb, int uid);
/** The name of a directory group, or null when unknown. */
const char *qbdb_util_get_domain_gname_by_gid(qbdb_handle_t *qbdb, int gid);
/** 1 when directory accounts are not mirrored into the local tables, else 0. */
int qbdb_get_no_sync_ads(qbdb_handle_t *qbdb, sqlite3 *db);

/* ---- Text helpers -------------------------------------------------------------------------------------- */

/** Splits a comma-separated list into a null-terminated array; blanks round an item are trimmed, an empty
 * text is an empty array. `*count` (when not null) receives the number of items. Returns 0, or non-zero when
 * out of memory. */
int qbdb_csv_to_array(qbdb_handle_t *qbdb, const char *csv, const char ***array, int *count);
/** A day set of the form "Sun,Mon,Sat" (any case) as bits, Sunday the lowest; unknown words are ignored. */
int qbdb_dow_to_i(const char *days);
/** The text of a day set, the opposite of qbdb_dow_to_i(). */
const char *qbdb_i_to_dow(qbdb_handle_t *qbdb, int days);
/** 32 random bits from the kernel. */
uint32_t qbdb_rand(void);
/** Appends `src` to the text in `dst`, a buffer of `size` bytes; what does not fit is cut. Returns `dst`. */
char *strncat_safe(char *dst, const char *src, size_t size);

/* ---- Optional operations ------------------------------------------------------------------------------- */

/* A platform library may leave these out. Who calls them without knowing the platform library defines
 * QBDB_OPTIONAL_WEAK before including this header, and tests each name for null before its call. */
#if defined(QBDB_OPTIONAL_WEAK) && defined(__GNUC__)
#define QBDB_OPTIONAL __attribute__((weak))
#else
#define QBDB_OPTIONAL
#endif

/** Says whose transaction qbdb_sql_begin() begins next: `operation` is its name, valid until that transaction
 *  has ended, `reads_only` non-zero that it changes no table (what refreshes system state on its way writes).
 *  The next begin uses the announcement up; without one a transaction is taken to write. */
QBDB_OPTIONAL void qbdb_announce(qbdb_handle_t *qbdb, const char *operation, int reads_only);

/** Receives one row: its cells as text, a NULL as a null pointer, valid until it returns. It runs no statement on the
 *  connection. Non-zero when it wants no further row. */
typedef int (*qbdb_row_visitor_t)(void *context, int columns, const char *const *cells);

/** Runs one SELECT and hands its rows to `visit` as they come, without gathering them in a table as
 *  qbdb_sql_get_table_mprintf() does. A failure may come after some rows. */
QBDB_OPTIONAL int qbdb_sql_visit_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, qbdb_row_visitor_t visit,
                                         void *context, char **errmsg, const char *file, int line,
                                         const char *format, ...);

/** Non-zero when a commit that fails is to be the result of the operation that it belongs to. */
QBDB_OPTIONAL int qbdb_commit_decides(const qbdb_handle_t *qbdb);

/* ---- Life of a database (embedded default only) -------------------------------------------------------- */

/** How qbdb_open() opens. Zero-initialise it and set what differs from the default. */
typedef struct qbdb_options {
    int readonly;           /**< non-zero: open for reading only */
    int busy_timeout_ms;    /**< how long a busy database is waited for; 0 is 5000 */
    int relaxed_durability; /**< non-zero: synchronous=NORMAL; a power cut may lose the last commits, never
                               the file */
    const char *root;       /**< the handle's root; null is "/" */
    qbdb_loglevel_t loglvl; /**< the handle's log level */
    FILE *log;              /**< the handle's log stream, which stays the caller's; may be null */
    FILE *jnl;              /**< the handle's journal, which stays the caller's; may be null */
    int commit_decides;     /**< non-zero: an operation whose commit fails returns that failure; 0: its result
                               stands, and qbdb_last_commit() tells */
    const char
        *storage_tool;   /**< path of the storage tool; null: "zfs" in one of the system's own folders, never
                               by the caller's PATH */
    int tool_timeout_ms; /**< how long the storage tool may take, then it is killed; 0 is 2000 */
} qbdb_options_t;

/** Makes a fresh database. Refused when something stands at `path`. On failure nothing is left at `path` and
 * `message` (of `size` bytes) says why. Returns 0 or SQLite's result code. */
int qbdb_create(const char *path, char *message, size_t size);

/** Opens a database made by qbdb_create(): a handle with its pool, and its connection. A file of an older
 *  schema is migrated; one that is no database, damaged, of a newer schema or unreadable is refused, changed
 * in nothing, and `message` says why. Returns 0 or SQLite's result code. `options` may be null. */
int qbdb_open(const char *path, const qbdb_options_t *options, qbdb_handle_t **qbdb, sqlite3 **db,
              char *message, size_t size);

/** Closes the connection and destroys the handle with its pool. Null is accepted. */
void qbdb_close(qbdb_handle_t *qbdb);

/** Frees everything that calls have returned through this handle. */
void qbdb_clear_pool(qbdb_handle_t *qbdb);

/** What became of the last transaction of the handle's connection: 0 when it was kept, or rolled back because
 *  its operation failed; else SQLite's result code that says why it could not begin, or was not kept (the
 *  commit failed, or SQLite rolled it back by itself). `*message` (when not null) receives the text, "" for
 *  0; it stays until the next transaction begins. */
int qbdb_last_commit(const qbdb_handle_t *qbdb, const char **message);

/** Registers the volume `name`, mounted at "/name" below the handle's root, and reads its sizes; a volume
 * that is registered already has its sizes refreshed. Runs in its own transaction. Returns 0 or SQLite's
 * result code. */
int qbdb_register_volume(qbdb_handle_t *qbdb, sqlite3 *db, const char *name, char **errmsg);

/** Removes the users and groups that are marked as deleted (`is_privileged` -1), with their memberships, quotas,
 * access list entries and home folder settings, so that their names and ids can be given again. The owner of a
 * share stays what it was. Runs in its own transaction. Returns 0 or SQLite's result code. */
int qbdb_remove_deleted_accounts(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg);

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif
