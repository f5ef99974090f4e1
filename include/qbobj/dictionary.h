/**
 * @file dictionary.h
 * The texts that people read, by language: labels of the interface and messages of the log.
 *
 * The current language is the setting PANELVIEWLOCALE. With "auto" it is the caller's, and English ("en-us")
 * when the caller has none or there is no setting. English has every text; other languages may lack some.
 */
#ifndef QBOBJ_DICTIONARY_H
#define QBOBJ_DICTIONARY_H

#include <qbobj/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A node of libxml2, whose <libxml/tree.h> declares its operations. */
typedef struct _xmlNode *xmlNodePtr;

/**
 * Builds the tree of the languages, and of every text in the current one.
 *
 * The element "Dictionary" holds an element "Language" with the attributes "code" and "spell" (the language's
 * own name) for each language. Below the one whose code is exactly the current language stands an element
 * "item" for each key that English has: attribute "key", and the text as a CDATA section, in English where
 * the language lacks it. A current language that is not among them has no items.
 *
 * @param[in]  code  the caller's preferred language, e.g. "de-de", which counts when the setting is "auto";
 *                   may be null
 * @param[out] node  receives the element "Dictionary", which belongs to no document. It is the caller's, who
 *                   frees it with xmlFreeNode() of libxml2. After a failure there is nothing to free
 * @reads _lang_supported, service_misc, _dictionary
 * @error QBOBJ_ERROR_API_ARGS  no `node`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getDictionary(qbdb_handle_t *qbdb, sqlite3 *db, const char *code, xmlNodePtr *node,
                                  qbobj_error_rec_t *err);

/**
 * Reads one text in the current language.
 *
 * A language that is not supported counts as English.
 *
 * @param[in]  code  the caller's preferred language, which counts when the setting is "auto"; may be null
 * @param[in]  key   key of the text, e.g. the tag of a log entry
 * @param[out] str   receives the text, else the English one, else the key itself; null without a key
 * @reads service_misc, _lang_supported, _dictionary
 * @error QBOBJ_ERROR_API_ARGS  no `str`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getTranslatedString(qbdb_handle_t *qbdb, sqlite3 *db, const char *code, const char *key,
                                        char **str, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
