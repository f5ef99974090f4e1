/**
 * @file group.h
 * Groups, their members and quotas, and the questions of identity about groups.
 */
#ifndef QBOBJ_GROUP_H
#define QBOBJ_GROUP_H

#include <qbobj/user.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records ------------------------------------------------------------------------------------------- */

/** A group with its secondary members and quotas. */
struct qbobj_Group {
    qbobj_Group_t *_link; /**< next */
    int resource_id;      /**< key of the group: its id */
    int GroupId;          /**< id; a directory group's is negative. @range 100 to 32767 */
    /** Name; letters, digits, "_", "&" and, not first, "-", "." and "@". @range 1 to 31 bytes @required */
    const char *GroupName;
    const char *OldGroupName;      /**< the name before a modification; null when it stays. @readonly */
    qbobj_User_t *SecondaryMember; /**< list: users who are members beside their primary group */
    qbobj_Quota_t *GroupQuota;     /**< list: quotas on shares */
    int IsDomainMember;            /**< the group comes from the directory service. @words 0, 1 @readonly */
};

/** A group by id and name alone, as owners and access lists name it. */
struct qbobj_SystemGroup {
    qbobj_SystemGroup_t *_link; /**< next */
    int resource_id;            /**< key of the group: its id */
    int GroupId;                /**< id */
    const char *GroupName;      /**< name */
    int _PosixId;               /**< not used */
};

/** A page of groups. */
struct qbobj_GroupCollection {
    qbobj_Group_t *Group; /**< list: the groups */
    int Entries;          /**< groups that match the filter, on all pages. @readonly */
    int TotalEntries;     /**< groups of the kind asked for, whatever the filter. @readonly */
};

/* ---- Operations: groups read --------------------------------------------------------------------------- */

/**
 * Lists groups of one kind, local or directory ones, with quotas and secondary members.
 *
 * System groups, 'guest' and 'nogroup' are never listed. Of the members: ids, names, home, e-mail and the
 * masked password.
 *
 * @param[in,out] collection  the groups are appended to its list, the counts are set
 * @param[in]     query       filter (by the name only), order and page; null lists all of the kind that the
 *                            appliance uses, by name
 * @reads service_cifs, $group, group_quota, _group_quota_stat, share, $group_has_user, $user
 * @error QBOBJ_ERROR_API_ARGS  no collection, or a pattern of more than 256 bytes
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getGroupCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_GroupCollection_t *collection,
                                       qbobj_AccountQuery_t *query, qbobj_error_rec_t *err);

/**
 * Always fails: its statement is not one that the database accepts, and callers rely on that.
 *
 * Use qbobj_getGroupCollection().
 *
 * @param[in,out] group  list keyed by `resource_id`, else `GroupId`
 * @reads $group
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   always
 * @return the error code
 */
QBOBJ_API int qbobj_getGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err);

/**
 * Names groups of any kind by their ids.
 *
 * An unknown id is named by its digits, in directory mode by the directory, which may know no name: null.
 *
 * @param[in,out] group  list keyed by `resource_id`, which is negative only in directory mode; `GroupId` and
 *                       `GroupName` are filled
 * @reads service_cifs, $group
 * @error QBOBJ_ERROR_API_ARGS  no record
 * @error QBOBJ_ERROR_DB_MISC   a statement failed, or a negative key in local mode
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSystemGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_SystemGroup_t *group,
                                   qbobj_error_rec_t *err);

/* ---- Operations: identity. They fill no error record when they find nothing. --------------------------- */

/**
 * Finds the id of a local or privileged group.
 *
 * Groups of the directory are not found by name, in directory mode neither.
 *
 * @param[in]  gname  the name; null is the local group 'guest', or 'nogroup' where there is none
 * @param[out] gid    required; set only with a result of 0
 * @reads $group
 * @error QBOBJ_ERROR_API_ARGS  no `gid`
 * @return 0; -1 unknown or failed; or the error code
 */
QBOBJ_API int qbobj_getGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, int *gid,
                           qbobj_error_rec_t *err);

/**
 * Finds the name of the group of an id.
 *
 * An unknown id is named by its digits, a negative one "guest".
 *
 * @param[in]  gid    the id
 * @param[out] gname  required: a null one ends the process with a failed assertion; "guest" after a failure
 * @reads $group
 * @error none
 * @return 0; -1 failed
 */
QBOBJ_API int qbobj_getGroupName(qbdb_handle_t *qbdb, sqlite3 *db, int gid, char **gname,
                                 qbobj_error_rec_t *err);

/**
 * Finds the id of a user's primary group.
 *
 * @param[in]  uname  the name; null asks as qbobj_getGID() does for null
 * @param[out] gid    required; set only with a result of 0
 * @reads $user, $group
 * @error QBOBJ_ERROR_API_ARGS  no `gid`
 * @return 0; -1 unknown, without a group, or failed; or the error code
 */
QBOBJ_API int qbobj_getPrimaryGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, int *gid,
                                  qbobj_error_rec_t *err);

/**
 * Finds the system's gid of a group.
 *
 * In directory mode a name that is not in the database is asked of the directory.
 *
 * @param[in] gname  the name; null as for qbobj_getGID()
 * @reads service_cifs, $group
 * @error QBOBJ_ERROR_DB_MISC  in the record alone: the directory mode cannot be read, which counts as local
 *                             mode
 * @return the gid, or -1
 */
QBOBJ_API int qbobj_getPosixGID(qbdb_handle_t *qbdb, sqlite3 *db, const char *gname, qbobj_error_rec_t *err);

/**
 * Finds the system's gid of a group's id: the id itself unless it is negative, a directory group's.
 *
 * @param[in] gid  the id
 * @reads nothing
 * @error none
 * @return the gid, or -1
 */
QBOBJ_API int qbobj_getPosixGIDbyGID(qbdb_handle_t *qbdb, sqlite3 *db, int gid, qbobj_error_rec_t *err);

/**
 * Is the user a member of the group, as the primary or a secondary one?
 *
 * @param[in] uname  name of the user
 * @param[in] gname  name of the group
 * @reads $user, $group, $group_has_user
 * @error none
 * @return 0 a member; 1 not a member, also for an unknown user or group; negative: failed
 */
QBOBJ_API int qbobj_isMemberOfGroup(qbdb_handle_t *qbdb, sqlite3 *db, const char *uname, const char *gname,
                                    qbobj_error_rec_t *err);

/* ---- Operations: groups written ------------------------------------------------------------------------ */

/**
 * Creates local groups.
 *
 * Names compare without regard to case. A member or a quota's share listed twice is refused as a failed
 * statement.
 *
 * @param[in,out] group  list: `GroupName`, `GroupId` (below 1 takes the lowest free one), `GroupQuota`
 *                       (`ShareId`, `HardMB`) and `SecondaryMember` (`resource_id`, else `UserId`); `GroupId`
 *                       and `resource_id` are filled. Null is nothing to do
 * @reads  $group, share, account_default
 * @writes $group, group_quota, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS                      no valid name, an id outside 100 to 32767, or a member
 *                                                  without id
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG             the name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS  the name is taken; a deleted group holds its name until
 *                                                  the platform removes it
 * @error QBOBJ_ERROR_UI__GID_ALREADY_EXISTS        the id is taken
 * @error QBOBJ_ERROR_DB_MISC                       a statement failed, no id is free, or a quota's share is
 *                                                  unknown
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group, qbobj_error_rec_t *err);

/**
 * Deletes groups: quotas and memberships go, the group's row is marked for the platform to remove.
 *
 * Rows of access lists stay.
 *
 * @param[in,out] group  list keyed by `resource_id`, else `GroupId`; `GroupName` is filled. Null is nothing
 *                       to do
 * @reads  $group, $user
 * @writes group_quota, _group_quota_stat, $group_has_user, $group
 * @error QBOBJ_ERROR_API_ARGS                       an unknown group
 * @error QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP  it is the primary group of a user
 * @error QBOBJ_ERROR_DB_MISC                        a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS                   no row was marked
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group,
                                qbobj_error_rec_t *err);

/**
 * Changes groups.
 *
 * `GroupName` renames, also when only capitals differ; each entry of `GroupQuota` sets the quota of its
 * share, and 0 MB removes it. `SecondaryMember`, up to the first entry without a `UserName`, always becomes
 * the whole list of members, so that none given leaves none; a member listed twice is refused as a failed
 * statement.
 *
 * @param[in,out] group  list keyed by `resource_id`, else `GroupId`; `OldGroupName` is filled. Null is
 *                       nothing to do
 * @reads  service_cifs, $group, share, account_default
 * @writes $group, group_quota, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS                      an unknown group, an invalid name, or a member without id
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG             the name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS  another group has the name
 * @error QBOBJ_ERROR_DB_MISC                       a statement failed, or a quota's share is unknown
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyGroup(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Group_t *group,
                                qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
