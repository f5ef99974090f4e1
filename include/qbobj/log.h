/**
 * @file log.h
 * The system log.
 */
#ifndef QBOBJ_LOG_H
#define QBOBJ_LOG_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** An entry of the system log. */
struct qbobj_LogEntry {
    qbobj_LogEntry_t *_link; /**< next */
    int LogId;               /**< id; rises with every entry. @readonly */
    int TimeStamp;           /**< when it was made; below 1 is now. @unit Unix seconds */
    /** How grave it is; null is "info". Whatever the case; a word but "notice" is known by its beginning, e.g.
     *  "warn", "error", "emergency".
     *  @words "debug", "info", "notice", "warning", "err", "crit", "alert", "emerge" */
    const char *Severity;
    /** What it is about, whatever the case; null is "misc".
     *  @words "misc", "system", "disk", "volume", "share", "account", "backup", "apps", "snapshot" */
    const char *Category;
    const char *MessageTag;     /**< tag of the message, begins with "LOGMSG_"; null is "LOGMSG_UNKNOWN" */
    const char *MessageArgsXml; /**< arguments of the message as XML; may be "" */
};

/** Which entries are meant, in which order; 0 or null restricts nothing. Two fields, which say so, are SQL TEXT,
 *  NEVER A CALLER'S VALUE. */
struct qbobj_LogQuery {
    int limit;         /**< largest number of entries; reading only */
    int offset;        /**< matching entries to skip; only with a limit; reading only */
    int order;         /**< 0: oldest first; any other: newest first; reading only. @words 0, 1 */
    int timestamp_min; /**< only later entries. @unit Unix seconds */
    int timestamp_max; /**< only earlier entries. @unit Unix seconds */
    /** Only entries of this word and graver ones, whatever the case. "warn", "err" and "crit" may be longer;
     *  any other word restricts nothing. Entries stored as "emerge" match no word.
     *  @words "info", "notice", "warning", "err", "crit", "alert", "emerg" */
    const char *severity;
    /** SQL TEXT, NEVER A CALLER'S VALUE, that becomes part of the statement as it is: only these severities,
     *  e.g. 'err','crit'. Only without `severity`; reading only. @sql */
    const char *severity_in;
    /** SQL TEXT, NEVER A CALLER'S VALUE, that becomes part of the statement as it is: only these categories,
     *  e.g. 'disk','volume'. @sql */
    const char *category_in;
    const char *msg_tag; /**< only entries with exactly this tag; reading only */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

/**
 * Adds an entry to the log.
 *
 * Ids ascend with every entry, and none comes back.
 *
 * @param[in] TimeStamp       when it was made, in Unix seconds; below 1 is now
 * @param[in] Severity        as qbobj_LogEntry_t::Severity; null is "info"
 * @param[in] Category        as qbobj_LogEntry_t::Category, whatever the case; null is "misc"
 * @param[in] MessageTag      tag of the message, begins with "LOGMSG_"; null or "" is "LOGMSG_UNKNOWN"
 * @param[in] MessageArgsXml  arguments of the message as XML, stored as given; null is ""
 * @writes $log
 * @error QBOBJ_ERROR_API_ARGS  a severity or category that is no word of theirs (both messages show the
 *                              severity), or a tag that begins otherwise
 * @error QBOBJ_ERROR_DB_MISC   the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addLog(qbdb_handle_t *qbdb, sqlite3 *db, int TimeStamp, const char *Severity,
                           const char *Category, const char *MessageTag, const char *MessageArgsXml,
                           qbobj_error_rec_t *err);

/**
 * Reads the log, or a page of it, in the order of the ids.
 *
 * @param[in,out] Log           head of a list: the entries are appended to it
 * @param[out]    Entries       receives how many entries match, on whatever page; may be null
 * @param[out]    TotalEntries  receives how many entries there are; may be null
 * @param[in]     query         which entries, in which order; two of its fields are SQL TEXT, NEVER A CALLER'S
 *                              VALUE
 * @reads $log
 * @error QBOBJ_ERROR_API_ARGS  no head of a list, or no query
 * @error QBOBJ_ERROR_DB_MISC   the conditions do not fit into 255 bytes (nothing is read then), or a statement
 *                              failed (a count that was made before is kept)
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getLog(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LogEntry_t **Log, int *Entries,
                           int *TotalEntries, qbobj_LogQuery_t *query, qbobj_error_rec_t *err);

/**
 * Deletes entries of the log: all of them, unless the query restricts it.
 *
 * @param[in] query  the entries; fields that are for reading only are not looked at, and one that remains is
 *                   SQL TEXT, NEVER A CALLER'S VALUE. Null deletes all
 * @writes $log
 * @error QBOBJ_ERROR_DB_MISC  the conditions do not fit into 255 bytes (nothing is deleted then), or the
 *                             statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteLog(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LogQuery_t *query,
                              qbobj_error_rec_t *err);

/**
 * Trims the log to its newest entries.
 *
 * Entries go that are older than the newest one but `n_keep`; those of the same second all stay, so that at
 * least `n_keep` + 1 do. A shorter log stays as it is.
 *
 * @param[in] n_keep  position, counted from 0 at the newest, of the oldest entry that stays
 * @writes $log
 * @error QBOBJ_ERROR_DB_MISC  the statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_truncateLog(qbdb_handle_t *qbdb, sqlite3 *db, int n_keep, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
