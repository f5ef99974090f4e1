/**
 * @file share_write.h
 * Shares written: created, changed, deleted, moved to another volume, copied.
 */
#ifndef QBOBJ_SHARE_WRITE_H
#define QBOBJ_SHARE_WRITE_H

#include <qbobj/share_record.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Creates shares and block volumes.
 *
 * Each record needs `ShareName` and a `VolumeId` (null is the volume named "c"); `ShareType` is "share"
 * unless given. Without `Path` the share lies at "/", the volume's name, "/" and the share's name. Without
 * `Stat` the guest owns it and everyone may read and write; in a `Stat`, `User` and `Group` are required, and
 * their account is the `resource_id`, or the account's id where that is negative. Option records, `UsedBy`,
 * `Zvol` and `SnapshotSchedule` are stored where they are given; without a schedule a snapshot is taken every
 * hour. A protocol whose record is null gets no options.
 *
 * A missing access word or right counts as "ReadWrite" (for DLNA "ReadOnly"), a missing `PasswordProtection`
 * as "Disabled", a missing number of the storage attributes as 0. Missing options for Windows clients: guests
 * enter (not in directory mode), recycle bin on with 25000 MB and no age limit, rights set for new files, no
 * opportunistic locks. Entries of the user and group lists that repeat the protocol's default are not stored,
 * except those of users whose primary group is "admin" or "sky-port"; entries of AFP's host list never are.
 *
 * Names of shares and datasets are unique on the appliance, names without regard to case. An account listed
 * twice for one protocol is refused as a failed statement; of two entries of one host, application or rsync
 * login the later counts. The services "cifs" and "ftp" are told of their options.
 *
 * @param[in,out] share  the records; null creates nothing. On success each record's `resource_id` and
 *                       `ShareId` are "VOLUME/NAME"; entries of account lists that were looked up by name
 *                       carry the account's id
 * @reads  service_cifs, share, _volume, $user, $group, host, cifs_share_option, afp_share_option,
 *         nfs_share_option, ftp_share_option, rsync_share_option, http_share_option, rsync_user_password_acl
 * @writes share, zfs_attr, cifs_share_option, afp_share_option, nfs_share_option, ftp_share_option,
 *         rsync_share_option, dlna_share_option, daap_share_option, http_share_option, host, host_acl,
 *         user_acl, group_acl, cifs_dfs_option, rsync_user_password_acl, zvol_share_option,
 *         $application_on_share, snapshot_schedule
 * @error QBOBJ_ERROR_API_ARGS                     anything that is given wrongly and has no code of its own,
 *                                                 e.g. an unknown volume or a `RefQuotaMB` above its free
 *                                                 space
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG            the name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__SHARENAME_RESERVED       the appliance uses the name itself
 * @error QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS another share has the name, or the dataset's
 * @error QBOBJ_ERROR_DB_MISC                      a statement failed, or a marker has no `AppName`
 * @error QBOBJ_ERROR_UI__NO_LDAP_OBJECT           the directory does not know a listed name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_addShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, qbobj_error_rec_t *err);

/**
 * Changes shares: of each record only what it carries.
 *
 * It carries texts and sub-records that are not null, and numbers whose `_void_` flag is 0. The share is
 * found by `resource_id`. Another `ShareName` (compared without case) renames it together with its snapshots,
 * clones, backup jobs and markers; `VisibleSnapshot` counts when `VisibleSnapFolder` is given. In a given
 * option record the switches without a `_void_` flag and all lists count: a null list becomes empty. A
 * protocol without options gets them, except the one for Windows clients; a `DefaultAccess` of "Disabled"
 * removes DLNA's and rsync's. FTP's `NotAvailable` is not changed. `Changed` of each option record becomes 1
 * when something differs afterwards, else 0; for rsync it stays 0.
 *
 * The pairs of one table's update must fit into 512 bytes; a value beyond that is left out and a warning that
 * names its column is logged. Second entries fare as in qbobj_addShare(), a second quota of an account
 * replaces the first. The services "cifs" and "ftp" are told of their options.
 *
 * @param[in,out] share           the records; null changes nothing. Receives `OldShareName`, `OldPath`,
 *                                `Path` and `OldVisibleSnapshot`
 * @param[in]     modifyOneShare  0: the whole list is changed, a null `Path` is read and `Stat->_PosixMode`
 *                                receives the share's mode; non-zero: only the first record is changed, and
 *                                `Path` is filled by a rename alone
 * @reads  service_cifs, share, _volume, $user, $group, _zfs_stat, host, cifs_share_option, afp_share_option,
 *         nfs_share_option, ftp_share_option, http_share_option, dlna_share_option, daap_share_option,
 *         rsync_share_option, rsync_user_password_acl, account_default
 * @writes share, $snapshot, $snapshot_clones, backup, $application_on_share, zfs_attr, cifs_share_option,
 *         afp_share_option, nfs_share_option, ftp_share_option, http_share_option, dlna_share_option,
 *         daap_share_option, rsync_share_option, host, host_acl, user_acl, group_acl, cifs_dfs_option,
 *         rsync_user_password_acl, service_http, zvol_share_option, snapshot_schedule, user_quota,
 *         group_quota
 * @error QBOBJ_ERROR_API_ARGS                      no such share, or anything that is given wrongly and has
 *                                                  no code of its own, e.g. a `RefQuotaMB` below the used or
 *                                                  above the free space
 * @error QBOBJ_ERROR_UI__NAME_TOO_LONG             the new name is longer than 31 bytes
 * @error QBOBJ_ERROR_UI__SHARENAME_RESERVED        the appliance uses the new name itself
 * @error QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS  another share has the new name
 * @error QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME       the old or the new name is protected
 * @error QBOBJ_ERROR_DB_MISC                       a statement failed, or the share's volume does not exist
 * @error QBOBJ_ERROR_UI__NO_LDAP_OBJECT            the directory does not know a listed name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share, int modifyOneShare,
                                qbobj_error_rec_t *err);

/**
 * Shows the snapshots of a share in a folder, or hides them.
 *
 * @param[in] ZfsName            dataset name of the share; an unknown one changes nothing
 * @param[in] VisibleSnapFolder  the folder; null hides the snapshots
 * @writes share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyShareVisibleSnapFolder(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName,
                                                 const char *VisibleSnapFolder, qbobj_error_rec_t *err);

/**
 * Changes a block volume: its size, name and comment.
 *
 * Its path becomes "/" and `ZfsName`.
 *
 * @param[in] ZfsName    dataset name of the block volume; an unknown one changes nothing
 * @param[in] ShareName  its name from now on
 * @param[in] Comment    its description from now on
 * @param[in] SizeKB     its size in KB
 * @param[in] IsSparse   0/1: space is taken only when it is written
 * @reads  share
 * @writes zvol_share_option, share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed, or another share has the name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_modifyZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, const char *ShareName,
                               const char *Comment, uint64_t SizeKB, int IsSparse, qbobj_error_rec_t *err);

/**
 * Deletes shares with everything that hangs on them.
 *
 * That is options, lists, snapshots and clones on record, schedule, quotas, markers of applications, backup
 * jobs from or to them. A share that is the HTTP service's web root stops being it. Process markers and the
 * DLNA, DAAP and rsync rows stay. A share in whose folder another one lies is not deleted. The services
 * "cifs" and "ftp" are told when the record carries their options.
 *
 * @param[in,out] share  the records, found by `resource_id`, else by `ShareId`; null deletes nothing.
 *                       Receives `Path`, `OldPath`, `OldShareName` and `OldVisibleSnapshot`
 * @reads  share
 * @writes user_acl, group_acl, host_acl, cifs_share_option, afp_share_option, nfs_share_option,
 *         ftp_share_option, http_share_option, zvol_share_option, cifs_dfs_option, service_http,
 *         snapshot_schedule, $snapshot, $snapshot_clones, $application_on_share, user_quota, group_quota,
 *         _user_quota_stat, _group_quota_stat, zfs_attr, _zfs_stat, backup, share
 * @error QBOBJ_ERROR_API_ARGS      no such share, or another share lies in it
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_UNKNOWN       a statement failed on something that hangs on the share; the record then
 *                                  stays empty
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was deleted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShare(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Share_t *share,
                                qbobj_error_rec_t *err);

/**
 * Deletes the share or block volume of a dataset.
 *
 * As qbobj_deleteShare(), but without regard to shares that lie in it, and no service is told.
 *
 * @param[in] ZfsName  dataset name; one that does not exist is a success
 * @reads  share
 * @writes user_acl, group_acl, host_acl, cifs_share_option, afp_share_option, nfs_share_option,
 *         ftp_share_option, http_share_option, zvol_share_option, cifs_dfs_option, service_http,
 *         snapshot_schedule, $snapshot, $snapshot_clones, $application_on_share, user_quota, group_quota,
 *         _user_quota_stat, _group_quota_stat, zfs_attr, _zfs_stat, backup, share
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_UNKNOWN       a statement failed on something that hangs on the share; the record then
 *                                  stays empty
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was deleted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteZvol(qbdb_handle_t *qbdb, sqlite3 *db, const char *ZfsName, qbobj_error_rec_t *err);

/**
 * Deletes every share of a volume, as qbobj_deleteZvol() does.
 *
 * @param[in] VolumeId  the volume; one that does not exist is a success
 * @reads  share
 * @writes user_acl, group_acl, host_acl, cifs_share_option, afp_share_option, nfs_share_option,
 *         ftp_share_option, http_share_option, zvol_share_option, cifs_dfs_option, service_http,
 *         snapshot_schedule, $snapshot, $snapshot_clones, $application_on_share, user_quota, group_quota,
 *         _user_quota_stat, _group_quota_stat, zfs_attr, _zfs_stat, backup, share
 * @error QBOBJ_ERROR_DB_MISC       a statement failed
 * @error QBOBJ_ERROR_UNKNOWN       a statement failed on something that hangs on the share; the record then
 *                                  stays empty
 * @error QBOBJ_ERROR_DB_NOTEXISTS  no row was deleted
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_deleteShareOnVolume(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeId,
                                        qbobj_error_rec_t *err);

/**
 * Marks a share as moving to another volume.
 *
 * Only one share of the appliance may be moving.
 *
 * @param[in] ShareId   dataset name of the share; an unknown one changes nothing
 * @param[in] VolumeId  the destination
 * @reads  share
 * @writes share
 * @error QBOBJ_ERROR_API_ARGS                  an argument is null, or the share lives on that volume
 * @error QBOBJ_ERROR_DB_MISC                   a statement failed
 * @error QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE  a share is moving already
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_preMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId,
                                    const char *VolumeId, qbobj_error_rec_t *err);

/**
 * Ends a share's move to another volume.
 *
 * Committed, the share and its snapshots belong to the destination: the dataset's new name begins with the
 * volume's id, the new path with the volume's name. Given up, only the mark goes away.
 *
 * @param[in]  ShareId  dataset name of the share, as it was before the move; an unknown one changes nothing
 * @param[in]  Commit   non-zero: the data has moved; 0: the move is given up
 * @param[out] NewPath  receives "/", the destination's id, "/" and the share's name, or null when the share
 *                      is not moving; may be null
 * @reads  share, _volume
 * @writes $snapshot, share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed, or the share to commit is not moving
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_postMigrateShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *ShareId, int Commit,
                                     char **NewPath, qbobj_error_rec_t *err);

/**
 * Clones a share's configuration under a new name on the same volume.
 *
 * That is its row, quotas, access lists, options, schedule and storage attributes. rsync's options and
 * logins, links to other servers, markers and snapshots are not cloned, and data is not touched.
 *
 * @param[in] VolumeName    volume of the share
 * @param[in] ShareName     name of the share
 * @param[in] SnapshotName  not used
 * @param[in] NewShareName  name of the clone
 * @reads  share, user_quota, group_quota, user_acl, group_acl, host_acl, cifs_share_option, afp_share_option,
 *         nfs_share_option, http_share_option, ftp_share_option, dlna_share_option, daap_share_option,
 *         zvol_share_option, snapshot_schedule, zfs_attr
 * @writes share, user_quota, group_quota, user_acl, group_acl, host_acl, cifs_share_option, afp_share_option,
 *         nfs_share_option, http_share_option, ftp_share_option, dlna_share_option, daap_share_option,
 *         zvol_share_option, snapshot_schedule, zfs_attr
 * @error QBOBJ_ERROR_API_ARGS                      no such share, or the new name is not valid
 * @error QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS  another share has the new name
 * @error QBOBJ_ERROR_DB_MISC                       a statement failed, or another share has the dataset's
 *                                                  name
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_copyShare(qbdb_handle_t *qbdb, sqlite3 *db, const char *VolumeName, const char *ShareName,
                              const char *SnapshotName, const char *NewShareName, qbobj_error_rec_t *err);

#ifdef __cplusplus
}
#endif

#endif
