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
    /** How grave it is; null is "info", beginnings of words are completed.
     *  @words "debug", "info", "notice", "warning", "err", "crit", "alert", "emerge" */
    const char *Severity;
    /** What it is about; null is "misc".
     *  @words "misc", "system", "disk", "volume", "share", "account", "backup", "apps", "snapshot" */
    const char *Category;
    const char *MessageTag;     /**< tag of the message, begins with "LOGMSG_"; null is "LOGMSG_UNKNOWN" */
    const char *MessageArgsXml; /**< arguments of the message as XML; may be "" */
};

/** Which entries are meant, in which order. 0 or null restricts nothing. */
struct qbobj_LogQuery {
    int limit;         /**< largest number of entries */
    int offset;        /**< matching entries to skip; only with a limit */
    int order;         /**< 0: oldest first; any other: newest first. @words 0, 1 */
    int timestamp_min; /**< only later entries. @unit Unix seconds */
    int timestamp_max; /**< only earlier entries. @unit Unix seconds */
    /** Only entries of this word and graver ones; any other word restricts nothing.
     *  @words "info", "notice", "warning", "err", "crit", "alert", "emerg" */
    const char *severity;
    /** Reading, without `severity`: only these. SQL text taken as it is, e.g. 'err','crit' */
    const char *severity_in;
    const char *category_in; /**< only these categories. SQL text taken as it is */
    const char *msg_tag;     /**< only entries with this tag; reading only */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
