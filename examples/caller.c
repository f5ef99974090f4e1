/* Lists the shares of a database: the smallest caller. usage: caller FILE */
#include <qbobj.h>
#include <stdio.h>

int main(int argc, char **argv)
{
    qbdb_handle_t *qbdb = NULL;
    sqlite3 *db = NULL;
    char message[512];
    const qbdb_options_t options = {.commit_decides = 1}; /* a change that was not kept is a failure */
    if (argc != 2 || qbdb_open(argv[1], &options, &qbdb, &db, message, sizeof message) != 0) {
        fprintf(stderr, "%s\n", argc != 2 ? "usage: caller FILE" : message);
        return 1;
    }

    qbobj_error_rec_t err;
    qbobj_ShareCollection_t collection;
    qbobj_clear_ShareCollection(&collection);
    const int rc = qbobj_getShareCollection(qbdb, db, &collection, &err);
    if (rc != 0)
        fprintf(stderr, "error %d: %s\n", rc, err.msg ? err.msg : "");
    for (const qbobj_Share_t *share = collection.Share; share != NULL; share = share->_link)
        printf("%s\t%s\t%s\n", share->ShareName, share->Path, share->Comment);

    qbdb_close(qbdb); /* frees everything that the call returned */
    return rc != 0;
}
