// The index of the library: every exported operation with its arguments, the records it dumps and its worker.
#include "account/account.h"
#include "frame/frame.h"

#include <qbobj.h>

using namespace qbobj;

/* ---- Directory security ----------------------------------------------------------------------------------
 */

int qbobj_getSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSecurity, dumped(o));
}

int qbobj_setSecurity(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Security_t *o, qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_setSecurity, dumped(o));
}

int qbobj_getSecurityAdsProgress(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SecurityAdsProgress_t *o,
                                 qbobj_error_rec_t *err)
{
    return framed({__func__, qbdb, db, err, here()}, x_qbobj_getSecurityAdsProgress, dumped(o));
}
