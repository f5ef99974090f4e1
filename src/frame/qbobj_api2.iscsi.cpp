// iSCSI targets: every exported operation with its arguments and its worker.
#include "frame/frame.h"
#include "iscsi/iscsi.h"
#include "operations/iscsi.h"

using namespace qbobj;

int qbobj_getLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup, char **Initiators,
                                unsigned int *Entries, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLunGroupAccessList>(iscsi_operations, {qbdb, db, err, here()},
                                               x_qbobj_getLunGroupAccessList, LunGroup, Initiators, Entries);
}

int qbobj_addLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup, const char *Initiator,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_addLunGroupAccessList>(iscsi_operations, {qbdb, db, err, here()},
                                               x_qbobj_addLunGroupAccessList, LunGroup, Initiator);
}

int qbobj_deleteLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroup,
                                   qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteLunGroupAccessList>(iscsi_operations, {qbdb, db, err, here()},
                                                  x_qbobj_deleteLunGroupAccessList, LunGroup);
}

int qbobj_deleteIniFromLunGroupAccessList(qbdb_handle_t *qbdb, sqlite3 *db, const char *Initiator,
                                          qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteIniFromLunGroupAccessList>(iscsi_operations, {qbdb, db, err, here()},
                                                         x_qbobj_deleteIniFromLunGroupAccessList, Initiator);
}

int qbobj_getLunGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroupCollection_t *collection,
                                qbobj_error_rec_t *err)
{
    return framed<qbobj_getLunGroupCollection>(iscsi_operations, {qbdb, db, err, here()},
                                               x_qbobj_getLunGroupCollection, collection);
}

int qbobj_getLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLunGroup>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getLunGroup,
                                     LunGroup);
}

int qbobj_addLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup, qbobj_error_rec_t *err)
{
    return framed<qbobj_addLunGroup>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_addLunGroup,
                                     LunGroup);
}

int qbobj_modifyLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_LunGroup_t *LunGroup, qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyLunGroup>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_modifyLunGroup,
                                        LunGroup);
}

int qbobj_deleteLunGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *LunGroupName, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteLunGroup>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_deleteLunGroup,
                                        LunGroupName);
}

int qbobj_getInitiatorCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_InitiatorCollection_t *collection,
                                 qbobj_error_rec_t *err)
{
    return framed<qbobj_getInitiatorCollection>(iscsi_operations, {qbdb, db, err, here()},
                                                x_qbobj_getInitiatorCollection, collection);
}

int qbobj_getInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator, qbobj_error_rec_t *err)
{
    return framed<qbobj_getInitiator>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getInitiator,
                                      Initiator);
}

int qbobj_addInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator, qbobj_error_rec_t *err)
{
    return framed<qbobj_addInitiator>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_addInitiator,
                                      Initiator);
}

int qbobj_modifyInitiator(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Initiator_t *Initiator,
                          qbobj_error_rec_t *err)
{
    return framed<qbobj_modifyInitiator>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_modifyInitiator,
                                         Initiator);
}

int qbobj_deleteInitiator(qbdb_handle_t *qbdb, sqlite3 *db, const char *Name, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteInitiator>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_deleteInitiator,
                                         Name);
}

int qbobj_getLun(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Lun_t *Lun, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLun>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getLun, Lun);
}

int qbobj_addLun(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Lun_t *Lun, qbobj_error_rec_t *err)
{
    return framed<qbobj_addLun>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_addLun, Lun);
}

int qbobj_deleteLun(qbdb_handle_t *qbdb, sqlite3 *db, const char *Name, qbobj_error_rec_t *err)
{
    return framed<qbobj_deleteLun>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_deleteLun, Name);
}

int qbobj_getLunId(qbdb_handle_t *qbdb, sqlite3 *db, const char *lun_name, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLunId>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getLunId, lun_name);
}

int qbobj_getLunGroupId(qbdb_handle_t *qbdb, sqlite3 *db, const char *lun_group_name, qbobj_error_rec_t *err)
{
    return framed<qbobj_getLunGroupId>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getLunGroupId,
                                       lun_group_name);
}

int qbobj_getInitiatorId(qbdb_handle_t *qbdb, sqlite3 *db, const char *initiator_name, qbobj_error_rec_t *err)
{
    return framed<qbobj_getInitiatorId>(iscsi_operations, {qbdb, db, err, here()}, x_qbobj_getInitiatorId,
                                        initiator_name);
}
