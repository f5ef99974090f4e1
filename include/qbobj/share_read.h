/**
 * @file share_read.h
 * Shares read: whole records, the light list, and what a user may do with a share.
 */
#ifndef QBOBJ_SHARE_READ_H
#define QBOBJ_SHARE_READ_H

#include <qbobj/share_record.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Lists the shares of type "share", whole records, by name without regard to case.
 *
 * Owner, permissions and access control list of `Stat` come from the share's folder; they stay empty when it
 * cannot be examined. A protocol without options leaves its record null. User and group lists hold accounts
 * of the kind that the appliance works with; those of FTP are not read while the service takes anonymous
 * clients. `resource_id` is the dataset name.
 *
 * @param[in,out] collection  the shares are appended to its list
 * @reads service_ftp, service_cifs, share, cifs_share_option, _zfs_stat, zfs_attr, $snapshot_clones,
 *        $snapshot, process_on_share, $user, $group, snapshot_schedule, host, host_acl, user_acl, group_acl,
 *        cifs_dfs_option, afp_share_option, nfs_share_option, ftp_share_option, dlna_share_option,
 *        daap_share_option, rsync_share_option, rsync_user_password_acl, http_share_option,
 *        zvol_share_option, _volume, $application_on_share, user_quota, _user_quota_stat, group_quota,
 *        _group_quota_stat
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareCollection(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_ShareCollection_t *collection,
                                       qbobj_error_rec_t *err);

/**
 * Lists the shares of type "share" by name, with the common protocols that offer them.
 *
 * A protocol offers a share when its default access is not "Disabled" and it is available.
 *
 * @param[in,out] collection  the shares are appended to its list
 * @reads share, cifs_share_option, afp_share_option, ftp_share_option, nfs_share_option,
 *        $application_on_share
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getSimpleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                             qbobj_SimpleShareCollection_t *collection,
                                             qbobj_error_rec_t *err);

/**
 * Lists shares and block volumes, otherwise as qbobj_getShareCollection().
 *
 * @param[in,out] collection  the shares are appended to its list
 * @reads service_ftp, service_cifs, share, cifs_share_option, _zfs_stat, zfs_attr, $snapshot_clones,
 *        $snapshot, process_on_share, $user, $group, snapshot_schedule, host, host_acl, user_acl, group_acl,
 *        cifs_dfs_option, afp_share_option, nfs_share_option, ftp_share_option, dlna_share_option,
 *        daap_share_option, rsync_share_option, rsync_user_password_acl, http_share_option,
 *        zvol_share_option, _volume, $application_on_share, user_quota, _user_quota_stat, group_quota,
 *        _group_quota_stat
 * @error QBOBJ_ERROR_API_ARGS  no collection
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareAndZvolCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                              qbobj_ShareCollection_t *collection, qbobj_error_rec_t *err);

/**
 * Lists the shares of type "share" that a user may read by one protocol.
 *
 * Every share gets a record, in the order of qbobj_getShareCollection(); only those that the user may read
 * are filled. `resource_id` is not the key here, but the space in MB that the share's snapshots use, as text;
 * null when it is not known.
 *
 * @param[in,out] collection    the records are appended to its list
 * @param[in]     UserName      name of the user; null is a guest
 * @param[in]     ProtocolName  "cifs" or "http"
 * @reads service_ftp, service_cifs, share, cifs_share_option, _zfs_stat, zfs_attr, $snapshot_clones,
 *        $snapshot, process_on_share, $user, $group, snapshot_schedule, host, host_acl, user_acl, group_acl,
 *        cifs_dfs_option, afp_share_option, nfs_share_option, ftp_share_option, dlna_share_option,
 *        daap_share_option, rsync_share_option, rsync_user_password_acl, http_share_option,
 *        zvol_share_option, _volume, $application_on_share, user_quota, _user_quota_stat, group_quota,
 *        _group_quota_stat, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS  no collection, an unknown user, or no name of a protocol
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @error QBOBJ_ERROR_OOM       access by this protocol cannot be asked for, or asking failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getAccessibleShareCollection(qbdb_handle_t *qbdb, sqlite3 *db,
                                                 qbobj_ShareCollection_t *collection, const char *UserName,
                                                 const char *ProtocolName, qbobj_error_rec_t *err);

/**
 * Reads one share of any type, with everything that qbobj_getShareCollection() reads.
 *
 * @param[in,out] share  found by the first of `resource_id` (a dataset name), `ShareId` and `ShareName` that
 *                       is a share's; filled, except `_link` and the fields that are input of a modification
 * @reads service_ftp, service_cifs, share, cifs_share_option, _zfs_stat, zfs_attr, $snapshot_clones,
 *        $snapshot, process_on_share, $user, $group, snapshot_schedule, host, host_acl, user_acl, group_acl,
 *        cifs_dfs_option, afp_share_option, nfs_share_option, ftp_share_option, dlna_share_option,
 *        daap_share_option, rsync_share_option, rsync_user_password_acl, http_share_option,
 *        zvol_share_option, _volume, $application_on_share, user_quota, _user_quota_stat, group_quota,
 *        _group_quota_stat
 * @error QBOBJ_ERROR_API_ARGS      no record
 * @error QBOBJ_ERROR_DB_MISC       no such share, or a statement failed
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was selected
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err);

/**
 * Lists the shares of any type that meet all criteria given, in no particular order.
 *
 * Otherwise as qbobj_getShareCollection().
 *
 * @param[in]     VolumeId       volume of the shares; null: any
 * @param[in]     ShareNameLike  SQL LIKE pattern of their names; null: any
 * @param[in]     ShareId        dataset name; null: any
 * @param[in,out] shares         the shares are appended to this list; required: a null one ends the process
 *                               with a failed assertion
 * @reads service_ftp, service_cifs, share, cifs_share_option, _zfs_stat, zfs_attr, $snapshot_clones,
 *        $snapshot, process_on_share, $user, $group, snapshot_schedule, host, host_acl, user_acl, group_acl,
 *        cifs_dfs_option, afp_share_option, nfs_share_option, ftp_share_option, dlna_share_option,
 *        daap_share_option, rsync_share_option, rsync_user_password_acl, http_share_option,
 *        zvol_share_option, _volume, $application_on_share, user_quota, _user_quota_stat, group_quota,
 *        _group_quota_stat
 * @error QBOBJ_ERROR_API_ARGS  the criteria are longer than about 500 bytes
 * @error QBOBJ_ERROR_DB_MISC   a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_queryShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId,
                               const char *ShareNameLike, const char *ShareId, qbobj_Share_t **shares,
                               qbobj_error_rec_t *err);

/**
 * Finds the row id of a share.
 *
 * @param[in] share_name  name of the share
 * @reads share
 * @error none
 * @return the id; -1: there is no such share; -2: no share can have this name
 */
QBOBJ_API int qbobj_getShareId(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                               qbobj_error_rec_t *err);

/**
 * Tells what a user may do with a share by the protocol for Windows clients.
 *
 * An unknown user or share, a share without options for Windows clients, and any failure on the way all
 * answer "Disabled". Entries of the user and of their groups only take the right to write away where the
 * default grants it, and only grant it where the default does not.
 *
 * @param[in]  ShareName  name of the share
 * @param[in]  UserName   name of the user; null is the guest account
 * @param[out] Access     receives the access word
 * @reads share, service_cifs, $user, cifs_share_option, user_acl, group_acl, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS  no `Access`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareName,
                                   const char *UserName, char **Access, qbobj_error_rec_t *err);

/**
 * Tells as qbobj_getShareAccess() does, for the share whose folder is or holds a path.
 *
 * @param[in]  Path      the path
 * @param[in]  UserName  name of the user; null is the guest account
 * @param[out] Access    receives the access word
 * @reads share, service_cifs, $user, cifs_share_option, user_acl, group_acl, $group_has_user
 * @error QBOBJ_ERROR_API_ARGS  no `Access`
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getPathAccess(qbdb_handle_t *qbdb, sqlite3 *db, const char *Path, const char *UserName,
                                  char **Access, qbobj_error_rec_t *err);

/**
 * Reads when snapshots of a share are made.
 *
 * @param[in]  share_name         name of the share
 * @param[out] snapshot_schedule  receives the schedule, or null when the share has none
 * @reads share, snapshot_schedule
 * @error QBOBJ_ERROR_API_ARGS      no `snapshot_schedule`
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no such share
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_getShareSnapshotSchedule(qbdb_handle_t *qbdb, sqlite3 *db, const char *share_name,
                                             qbobj_Schedule_t **snapshot_schedule, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
