/**
 * @file iscsi.h
 * iSCSI: groups of LUNs, the LUNs in them, and the initiators that may connect. They refer to each other by
 * name.
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

/* ---- Operations ---------------------------------------------------------------------------------------- */

#ifdef __cplusplus
}
#endif

#endif
