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
    qbobj_LogEntry_t *_link;    /**< next */
    int LogId;                  /**< id; rises with every entry */
    int TimeStamp;              /**< Unix seconds */
    const char *Severity;       /**< one of the QBLOG_SEVERITY_ words */
    const char *Category;       /**< one of the QBLOG_CATEGORY_ words, or "apps" */
    const char *MessageTag;     /**< tag of the message; begins with "LOGMSG_" */
    const char *MessageArgsXml; /**< arguments of the message as XML; may be "" */
};

/** Which entries are meant, in which order. 0 or null restricts nothing. */
struct qbobj_LogQuery {
    int limit;            /**< largest number of entries */
    int offset;           /**< matching entries to skip; only with a limit */
    int order;            /**< non-zero: newest first; 0: oldest first */
    int timestamp_min;    /**< only later entries, Unix seconds */
    int timestamp_max;    /**< only earlier entries, Unix seconds */
    const char *severity; /**< only entries of this QBLOG_SEVERITY_ word and graver ones */
    const char
        *severity_in; /**< without `severity`: only these. SQL text taken as it is, such as 'err','crit' */
    const char *category_in; /**< only these categories. SQL text taken as it is */
    const char *msg_tag;     /**< only entries with this tag; reading only */
};

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
