/**
 * @file iscsi.h
 * iSCSI: groups of LUNs, the LUNs in them, and the initiators that may connect. They refer to each other by
 * name.
 *
 * Reading an access list takes two calls: one counts the names, which need not be those of initiators that
 * have a record, and one writes them into the caller's array. The 100 here are room for names that other
 * programs add in between.
 *
 *     unsigned int count = 0;
 *     qbobj_getLunGroupAccessList(qbdb, db, "vault", NULL, &count, &err);
 *     char **names = calloc(count + 100, sizeof *names);
 *     qbobj_getLunGroupAccessList(qbdb, db, "vault", names, &count, &err);
 */
#ifndef QBOBJ_ISCSI_H
#define QBOBJ_ISCSI_H

#include <qbobj/schema.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** A group of LUNs that is offered as one target. */
struct qbobj_LunGroup {
    qbobj_LunGroup_t *_link; /**< next */
    const char *resource_id; /**< not filled by reads */
    const char *Name;        /**< name, unique: the key of the group. @required */
    const char *Target;      /**< name of the target */
    int AnyInitiator;        /**< any initiator may connect. @words 0, 1 */
    int ChapAuth;            /**< initiators must log in (CHAP). @words 0, 1 */
    const char *ChapSecret;  /**< secret of the login, stored and read plain. @secret */
};

/** A list of LUN groups. */
struct qbobj_LunGroupCollection {
    qbobj_LunGroup_t *LunGroup; /**< list: the groups */
};

/** An initiator that may be let in. */
struct qbobj_Initiator {
    qbobj_Initiator_t *_link; /**< next */
    const char *resource_id;  /**< not filled by reads */
    const char *Name;         /**< name, unique: the key of the initiator. @required */
    int ChapAuth;             /**< the target must log in to the initiator (CHAP). @words 0, 1 */
    const char *ChapSecret;   /**< secret of that login, stored and read plain. @secret */
};

/** A list of initiators. */
struct qbobj_InitiatorCollection {
    qbobj_Initiator_t *Initiator; /**< list: the initiators */
};

/** A LUN. */
struct qbobj_Lun {
    qbobj_Lun_t *_link;      /**< next */
    const char *resource_id; /**< not filled by reads */
    const char *Name;        /**< name, unique: the key of the LUN. @required */
    const char *LunGroup;    /**< name of its group, which is not checked */
    int LunN;                /**< number in the group */
};

/* ---- Access lists -------------------------------------------------------------------------------------- */

/**
 * Reads the names of the initiators that may reach a LUN group.
 *
 * Each name stands there once, even when it was added several times. The call cannot see how large the
 * caller's array is; without it the names are only counted, so that the caller can make room.
 *
 * @param[in]  LunGroup    name of the group, which need not exist
 * @param[out] Initiators  the caller's array, whose first `Entries` elements receive the names; an absent
 *                         name is "". Null: the names are only counted
 * @param[out] Entries     receives the number of names
 * @reads $iscsi_lun_group_access
 * @error QBOBJ_ERROR_API_ARGS  no `Entries`
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup,
                                          char **Initiators, unsigned int *Entries, qbobj_error_rec_t *err);

/**
 * Lets an initiator reach a LUN group.
 *
 * Neither name is looked up, and a pair that is already there is stored again.
 *
 * @param[in] LunGroup   name of the group
 * @param[in] Initiator  name of the initiator
 * @writes $iscsi_lun_group_access
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup,
                                          const char *Initiator, qbobj_error_rec_t *err);

/**
 * Empties the access list of a LUN group.
 *
 * @param[in] LunGroup  name of the group; a name without a list is no error
 * @writes $iscsi_lun_group_access
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup,
                                             qbobj_error_rec_t *err);

/**
 * Takes an initiator off the access lists of all LUN groups.
 *
 * @param[in] Initiator  name of the initiator; a name on no list is no error
 * @writes $iscsi_lun_group_access
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteIniFromLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *Initiator,
                                                    qbobj_error_rec_t *err);

/* ---- LUN groups ---------------------------------------------------------------------------------------- */

/**
 * Reads every LUN group, sorted by name without regard to case.
 *
 * @param[in,out] collection  the LUN groups are appended to its list. `ChapSecret` is as stored, not masked
 * @reads $iscsi_lun_group
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getLunGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                          qbobj_LunGroupCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Reads one LUN group.
 *
 * @param[in,out] LunGroup  the record, found by its `Name` and filled. `ChapSecret` is as stored, not masked
 * @reads $iscsi_lun_group
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no LUN group has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup,
                                qbobj_error_rec_t *err);

/**
 * Creates LUN groups.
 *
 * Texts that are left out are stored as none.
 *
 * @param[in] LunGroup  the records
 * @writes $iscsi_lun_group
 * @error QBOBJ_ERROR_API_ARGS  no record, or one without a `Name`
 * @error QBOBJ_ERROR_DB_MISC   the name is in use, or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup,
                                qbobj_error_rec_t *err);

/**
 * Changes LUN groups.
 *
 * Everything but the name is rewritten: a text that is left out is lost, a number that is left out becomes 0.
 *
 * @param[in] LunGroup  the records, found by their `Name`; one that does not exist is no error
 * @writes $iscsi_lun_group
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup,
                                   qbobj_error_rec_t *err);

/**
 * Deletes a LUN group by its name.
 *
 * Its LUNs and its access list stay.
 *
 * @param[in] LunGroupName  the name; one that does not exist is no error
 * @writes $iscsi_lun_group
 * @error QBOBJ_ERROR_API_ARGS  no name
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroupName,
                                   qbobj_error_rec_t *err);

/* ---- Initiators ---------------------------------------------------------------------------------------- */

/**
 * Reads every initiator, sorted by name without regard to case.
 *
 * @param[in,out] collection  the initiators are appended to its list. `ChapSecret` is as stored, not masked
 * @reads $iscsi_initiator
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getInitiatorCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                           qbobj_InitiatorCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Reads one initiator.
 *
 * @param[in,out] Initiator  the record, found by its `Name` and filled. `ChapSecret` is as stored, not masked
 * @reads $iscsi_initiator
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no initiator has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator,
                                 qbobj_error_rec_t *err);

/**
 * Creates initiators.
 *
 * Any text may be a name; those with ":", as in "iqn.2001-04.com.example:host", have no id to look up.
 *
 * @param[in] Initiator  the records
 * @writes $iscsi_initiator
 * @error QBOBJ_ERROR_API_ARGS  no record, or one without a `Name`
 * @error QBOBJ_ERROR_DB_MISC   the name is in use, or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator,
                                 qbobj_error_rec_t *err);

/**
 * Changes initiators.
 *
 * Everything but the name is rewritten: a secret that is left out is lost, a switch that is left out becomes 0.
 *
 * @param[in] Initiator  the records, found by their `Name`; one that does not exist is no error
 * @writes $iscsi_initiator
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator,
                                    qbobj_error_rec_t *err);

/**
 * Deletes an initiator by its name.
 *
 * It stays on the access lists; see qbobj_deleteIniFromLunGroupAccessList().
 *
 * @param[in] Name  the name; one that does not exist is no error
 * @writes $iscsi_initiator
 * @error QBOBJ_ERROR_API_ARGS  no name
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteInitiator(qbdb_handle_t *qbdb, sqlite3 *db, const char *Name,
                                    qbobj_error_rec_t *err);

/* ---- LUNs ---------------------------------------------------------------------------------------------- */

/**
 * Reads one LUN.
 *
 * @param[in,out] Lun  the record, found by its `Name` and filled.
 * @reads $iscsi_lun
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no LUN has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getLun(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Lun_t *Lun, qbobj_error_rec_t *err);

/**
 * Creates LUNs.
 *
 * The group is not looked up, nor is its number compared with those of others.
 *
 * @param[in] Lun  the records
 * @writes $iscsi_lun
 * @error QBOBJ_ERROR_API_ARGS  no record, or one without a `Name`
 * @error QBOBJ_ERROR_DB_MISC   the name is in use, or a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addLun(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Lun_t *Lun, qbobj_error_rec_t *err);

/**
 * Deletes a LUN by its name.
 *
 * @param[in] Name  the name; one that does not exist is no error
 * @writes $iscsi_lun
 * @error QBOBJ_ERROR_API_ARGS  no name
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteLun(qbdb_handle_t *qbdb, sqlite3 *db, const char *Name, qbobj_error_rec_t *err);

/* ---- Ids of names -------------------------------------------------------------------------------------- */

/**
 * Finds the row id of a LUN.
 *
 * @param[in] lun_name  name of the LUN
 * @reads $iscsi_lun
 * @error none
 * @return the id; -1: there is no such LUN; -2: the name is none that qbobj_validate_sharename() accepts
 */
QBOBJ_API int qbobj_getLunId(qbdb_handle_t *qbdb, sqlite3 *db, const char *lun_name, qbobj_error_rec_t *err);

/**
 * Finds the row id of a LUN group, whatever its name looks like.
 *
 * @param[in] lun_group_name  name of the group
 * @reads $iscsi_lun_group
 * @error none
 * @return the id; -1: there is no such group
 */
QBOBJ_API int qbobj_getLunGroupId(qbdb_handle_t *qbdb, sqlite3 *db, const char *lun_group_name,
                                  qbobj_error_rec_t *err);

/**
 * Finds the row id of an initiator.
 *
 * A name with ":" is never accepted, though an initiator may have it and is read, changed and deleted by it.
 *
 * @param[in] initiator_name  name of the initiator
 * @reads $iscsi_initiator
 * @error none
 * @return the id; -1: there is no such initiator; -2: the name is none that qbobj_validate_sharename()
 * accepts
 */
QBOBJ_API int qbobj_getInitiatorId(qbdb_handle_t *qbdb, sqlite3 *db, const char *initiator_name,
                                   qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
