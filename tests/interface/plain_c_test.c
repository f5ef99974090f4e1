/* A caller in plain C with a handle and a connection of its own, on which the platform keeps nothing. usage:
 * FILE */
#include <apr_general.h>
#include <apr_pools.h>
#include <qbobj.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void expect(int holds, const char *what, const qbobj_error_rec_t *err)
{
    if (holds)
        return;
    fprintf(stderr, "%s: error %d, %s\n", what, err->ec, err->msg != NULL ? err->msg : "no message");
    exit(1);
}

static void change_access(qbdb_handle_t *qbdb, sqlite3 *db, const char *access, int changed)
{
    qbobj_error_rec_t err;
    qbobj_CifsShareOption_t cifs;
    qbobj_Share_t share;
    qbobj_clear_CifsShareOption(&cifs);
    qbobj_clear_Share(&share);
    cifs.DefaultAccess = access;
    share.resource_id = "data/own";
    share.Cifs = &cifs;
    expect(qbobj_modifyShare(qbdb, db, &share, 0, &err) == 0, "modifyShare", &err);
    expect(cifs.Changed == changed, "Changed", &err);
}

int main(int argc, char **argv)
{
    qbdb_handle_t handle;
    sqlite3 *db = NULL;
    qbobj_error_rec_t err;
    qbobj_ShareCollection_t collection;
    qbobj_CifsShareOption_t cifs;
    qbobj_Share_t share;
    char message[512] = "";

    memset(&handle, 0, sizeof handle);
    memset(&err, 0, sizeof err);
    remove(argv[argc - 1]);
    expect(argc == 2 && qbdb_create(argv[1], message, sizeof message) == 0, message, &err);
    apr_initialize();
    expect(apr_pool_create(&handle.pool, NULL) == APR_SUCCESS, "apr_pool_create", &err);
    expect(sqlite3_open(argv[1], &db) == SQLITE_OK, "sqlite3_open", &err);
    expect(qbdb_register_volume(&handle, db, "data", NULL) == 0, "qbdb_register_volume", &err);

    qbobj_clear_CifsShareOption(&cifs);
    qbobj_clear_Share(&share);
    share.ShareName = "own";
    share.VolumeId = "data";
    share.Cifs = &cifs;
    expect(qbobj_addShare(&handle, db, &share, &err) == 0, "addShare", &err);
    expect(qbobj_addShare(&handle, db, &share, &err) == QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS, "again",
           &err);
    expect(strcmp(qbobj_error_name(err.ec), "QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS") == 0, "its name",
           &err);
    expect(strcmp(qbobj_error_name(-5), "QBOBJ_ERROR_UNKNOWN") == 0, "no code", &err);
    expect(strcmp(qbobj_version(), QBOBJ_VERSION_STRING) == 0, qbobj_version(), &err);
    change_access(&handle, db, "ReadOnly", 1);
    change_access(&handle, db, "ReadOnly", 0);

    qbobj_clear_ShareCollection(&collection);
    expect(qbobj_getShareCollection(&handle, db, &collection, &err) == 0, "getShareCollection", &err);
    expect(collection.Share != NULL && collection.Share->_link == NULL, "one share", &err);
    expect(strcmp(collection.Share->Cifs->DefaultAccess, "ReadOnly") == 0, "its access", &err);

    /* A statement that was kept would not let the connection close. */
    expect(sqlite3_close(db) == SQLITE_OK, "sqlite3_close", &err);
    apr_pool_destroy(handle.pool);
    apr_terminate();
    return 0;
}
