// The dictionary: every exported operation with its arguments and its worker.
#include "dictionary/dictionary.h"
#include "frame/frame.h"
#include "operations/dictionary.h"

using namespace qbobj;

int qbobj_getDictionary(qbdb_handle_t *qbdb, sqlite3 *db, const char *code, xmlNodePtr *node,
                        qbobj_error_rec_t *err)
{
    return framed<qbobj_getDictionary>(dictionary_operations, {qbdb, db, err, here()}, x_qbobj_getDictionary,
                                       code, node);
}

int qbobj_getTranslatedString(qbdb_handle_t *qbdb, sqlite3 *db, const char *code, const char *key, char **str,
                              qbobj_error_rec_t *err)
{
    return framed<qbobj_getTranslatedString>(dictionary_operations, {qbdb, db, err, here()},
                                             x_qbobj_getTranslatedString, code, key, str);
}
