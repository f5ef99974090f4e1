-- Every statement that the library runs, one a line, with sample values in the place of its conversions. check_schema.sh prepares each
-- of them; a line that begins with /*indexed*/ may not scan a table, one with /*setup*/ makes a temporary table for those after it.

-- src/frame
INSERT OR REPLACE INTO service_misc (key,val) VALUES('ANTIVIRUS','1')
/*indexed*/SELECT val FROM service_misc WHERE key='x'
/*indexed*/SELECT 1 FROM service_misc WHERE key='LANGUAGES_SUPPORTED' AND (val='x/utf-8' OR val LIKE 'x/utf-8,%' OR val LIKE '%,en-us/utf-8' OR val LIKE '%,en-us/utf-8,%')
/*indexed*/SELECT table_name,column_name FROM service_misc WHERE key='x'
/*indexed*/UPDATE service_misc SET val='x' WHERE key='x'
UPDATE service_snmp SET community='x'
/*indexed*/UPDATE service_misc SET val=NULL,table_name=NULL,column_name=NULL WHERE key='x'
UPDATE service_snmp SET community=NULL
INSERT OR IGNORE INTO service_misc (key,val,table_name,column_name) VALUES('x','x',NULL,NULL)
/*indexed*/DELETE FROM service_misc WHERE key='x'
/*indexed*/SELECT value FROM `$registry` WHERE key='x'
INSERT OR IGNORE INTO `$registry` (value,key) VALUES('x','x')
/*indexed*/UPDATE `$registry` SET value='x' WHERE key='x'
/*indexed*/SELECT CASE WHEN CIFS.share_id NOT NULL THEN 1 ELSE 0 END|CASE WHEN CIFS.cifs_hide_share THEN 2 ELSE 0 END,IFNULL(DLNA.media_type,0),S.comment FROM share S LEFT JOIN cifs_share_option CIFS ON CIFS.share_id=S.id LEFT JOIN dlna_share_option DLNA ON DLNA.share_id=S.id WHERE S.path='x'
SELECT CASE WHEN CIFS.share_id NOT NULL THEN 1 ELSE 0 END|CASE WHEN CIFS.cifs_hide_share THEN 2 ELSE 0 END,IFNULL(DLNA.media_type,0),S.comment FROM share S LEFT JOIN cifs_share_option CIFS ON CIFS.share_id=S.id LEFT JOIN dlna_share_option DLNA ON DLNA.share_id=S.id WHERE 'x' LIKE S.path||'/%'
/*indexed*/SELECT 1 FROM `$user` U WHERE U.home='x'
SELECT 1 FROM `$user` U WHERE 'x' LIKE U.home||'/%'

-- src/validate
/*indexed*/SELECT id FROM share WHERE name='x'
/*indexed*/SELECT id FROM share WHERE zfs_name='x'
/*indexed*/SELECT id FROM _volume WHERE lv_name='x'
/*indexed*/SELECT id FROM _volume WHERE id='x'
/*indexed*/SELECT id FROM `$user` WHERE id=1
/*indexed*/SELECT id FROM `$group` WHERE id=1
/*indexed*/SELECT id FROM backup WHERE name='x'
/*indexed*/SELECT rowid FROM `$iscsi_lun` WHERE name='x'
/*indexed*/SELECT rowid FROM `$iscsi_lun_group` WHERE name='x'
/*indexed*/SELECT rowid FROM `$iscsi_initiator` WHERE name='x'
SELECT id FROM share WHERE 'x'=path OR 'x' LIKE path||'/%'
/*indexed*/SELECT id FROM `$user` WHERE uname='x' COLLATE BINARY AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC
/*indexed*/SELECT id FROM `$user` WHERE uname='x' AND rid IS NULL
/*indexed*/SELECT id FROM `$group` WHERE gname='x' COLLATE BINARY AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC
/*indexed*/SELECT id FROM `$group` WHERE gname='x' AND rid IS NULL

-- src/share
SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.type='share' ORDER BY S.name COLLATE NOCASE
SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.type='share' OR S.type='zvol' ORDER BY S.name COLLATE NOCASE
/*indexed*/SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.id=1 ORDER BY S.name COLLATE NOCASE
SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name
/*indexed*/SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.volume_id='x'
/*indexed*/SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.name LIKE 'x%'
/*indexed*/SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.zfs_name='x'
/*indexed*/SELECT S.id,S.name,S.comment,S.path,S.non_owner_delete,IFNULL((SELECT U.id FROM `$user` U WHERE U.id=S.user_id),S.user_id),CASE WHEN S.user_access&2=2 THEN 'ReadWrite' WHEN S.user_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,(SELECT G.id FROM `$group` G WHERE G.id=S.group_id),CASE WHEN S.group_access&2=2 THEN 'ReadWrite' WHEN S.group_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN S.everyone_access&2=2 THEN 'ReadWrite' WHEN S.everyone_access&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,S.volume_id,ZS.available/1048576,ZS.used/1048576,ZS.usedbychildren/1048576,ZS.usedbydataset/1048576,ZS.usedbyrefreservation/1048576,ZS.usedbysnapshots/1048576,ZS.compressratio,ZA.mb_quota,ZA.mb_reservation,ZA.mb_refquota,ZA.mb_refreservation,ZA.compression,ZA.dedup,S.type,S.zfs_name,(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=1),(SELECT COUNT(*) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name AND SN.type=2),(SELECT MIN(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),(SELECT MAX(SN.created_on) FROM `$snapshot` SN WHERE SN.zfs_name=S.zfs_name),S.migrate_to_volume_id,ZA.logbias,ZA.origin,S.visible_snapdir,IFNULL(ZA.sync,'standard'),STRFTIME('%s',S.update_ts),(SELECT IFNULL(MAX(PS.blocking)+1,0) FROM `process_on_share` PS WHERE PS.share_id=S.id),ZS.referenced/1048576,(SELECT S.volume_id||'/'||SC.parent_zfs_name||'@'||SC.parent_snapshot_name),ZA.bit_rot_protection FROM share S LEFT JOIN cifs_share_option CIFS ON S.id=CIFS.share_id LEFT JOIN _zfs_stat ZS ON ZS.share_id=S.id LEFT JOIN zfs_attr ZA ON ZA.share_id=S.id LEFT JOIN `$snapshot_clones` SC ON SC.cloned_zfs_name=S.name WHERE S.volume_id='x' AND S.name LIKE '%x%' AND S.zfs_name='x'
SELECT IFNULL(CASE WHEN auth_mode='anonymous' THEN 1 ELSE 0 END, 0) FROM service_ftp LIMIT 1
/*indexed*/SELECT S.cifs_access,S.cifs_guest_access FROM cifs_share_option S WHERE S.share_id=1
/*indexed*/SELECT S.http_access FROM http_share_option S WHERE S.share_id=1
/*indexed*/SELECT COUNT(*) FROM user_acl A WHERE A.share_id=1 AND A.proto='http'
/*indexed*/SELECT COUNT(*) FROM group_acl A WHERE A.share_id=1 AND A.proto='http'
INSERT INTO cifs_share_option (share_id,cifs_access,cifs_guest_access,cifs_hide_share,cifs_group_create_mask,cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,cifs_everyone_directory_mask,cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,cifs_recycle_age_limit,oplocks,available,cifs_enabledfs) VALUES(1,'x',1,1,1,1,1,1,1,1,1,1,1,1,1,1)
/*indexed*/SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,SS.last_taken,SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken FROM snapshot_schedule SS WHERE share_id=1
/*indexed*/SELECT CASE WHEN CIFS.cifs_access='writeable' THEN 'ReadWrite' WHEN CIFS.cifs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,CIFS.cifs_guest_access,CIFS.cifs_hide_share,CIFS.cifs_recycle,CIFS.cifs_recycle_age_limit,CIFS.cifs_recycle_mb_limit,CIFS.cifs_enable_masks,CIFS.cifs_enable_forced_minimum,CASE WHEN CIFS.cifs_group_create_mask&2=2 THEN 'ReadWrite' WHEN CIFS.cifs_group_create_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN CIFS.cifs_everyone_create_mask&2=2 THEN 'ReadWrite' WHEN CIFS.cifs_everyone_create_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN CIFS.cifs_group_directory_mask&2=2 THEN 'ReadWrite' WHEN CIFS.cifs_group_directory_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CASE WHEN CIFS.cifs_everyone_directory_mask&2=2 THEN 'ReadWrite' WHEN CIFS.cifs_everyone_directory_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,CIFS.oplocks,CIFS.available,CIFS.cifs_enabledfs FROM cifs_share_option CIFS WHERE share_id=1
/*indexed*/SELECT D.folder,D.address,D.remote_share FROM cifs_dfs_option D WHERE  D.share_id=1
/*indexed*/SELECT CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite' WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,AFP.afp_guest_access,AFP.afp_fperm,AFP.afp_dperm,AFP.available FROM afp_share_option AFP WHERE share_id=1
/*indexed*/SELECT CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite' WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,NFS.available,NFS.nfs_sync FROM nfs_share_option NFS WHERE share_id=1
/*indexed*/SELECT CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite' WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,FTP.ftp_mask,FTP.ftp_create_mask,FTP.ftp_directory_mask,FTP.available FROM ftp_share_option FTP WHERE share_id=1
/*indexed*/SELECT CASE WHEN DLNA.access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,DLNA.media_type,DLNA.available FROM dlna_share_option DLNA WHERE DLNA.share_id=1 AND DLNA.access='readonly'
/*indexed*/SELECT DAAP.available FROM daap_share_option DAAP WHERE DAAP.share_id=1
/*indexed*/SELECT CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly' ELSE 'ReadWrite' END,CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled' ELSE 'Disabled' END,RSYNC.available FROM rsync_share_option RSYNC WHERE RSYNC.share_id=1
/*indexed*/SELECT UP.user,UP.password FROM rsync_user_password_acl UP WHERE UP.share_id=1
/*indexed*/SELECT CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite' WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,HTTP.available,HTTP.http_webdav FROM http_share_option HTTP WHERE share_id=1
/*indexed*/SELECT ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name FROM zvol_share_option ZVOL INNER JOIN share S ON S.id=ZVOL.share_id INNER JOIN _volume V ON V.id=S.volume_id WHERE share_id=1
/*indexed*/SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=1)
/*indexed*/SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones` WHERE parent_zfs_name=(SELECT S.name FROM share S WHERE S.id=1)
/*indexed*/SELECT Q.user_id,S.zfs_name,Q.mb_hard,QS.mb_used,A.uname FROM user_quota Q INNER JOIN share S ON S.id=Q.share_id LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id LEFT JOIN `$user` A ON A.id=Q.user_id WHERE Q.share_id=1
/*indexed*/SELECT Q.group_id,S.zfs_name,Q.mb_hard,QS.mb_used,A.gname FROM group_quota Q INNER JOIN share S ON S.id=Q.share_id LEFT JOIN _group_quota_stat QS ON QS.share_id=Q.share_id AND QS.group_id=Q.group_id LEFT JOIN `$group` A ON A.id=Q.group_id WHERE Q.share_id=1
/*indexed*/SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite' WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$user` U INNER JOIN user_acl UA ON UA.user_id=U.id AND UA.share_id=1 AND UA.proto='x' WHERE U.rid IS NULL ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite' WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$group` G INNER JOIN group_acl GA ON GA.group_id=G.id AND GA.share_id=1 AND GA.proto='x' WHERE G.rid IS NULL ORDER BY G.gname COLLATE NOCASE
/*indexed*/SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite' WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$user` U INNER JOIN user_acl UA ON UA.user_id=U.id AND UA.share_id=1 AND UA.proto='x' WHERE U.rid IS NOT NULL ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite' WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$group` G INNER JOIN group_acl GA ON GA.group_id=G.id AND GA.share_id=1 AND GA.proto='x' WHERE G.rid IS NOT NULL ORDER BY G.gname COLLATE NOCASE
/*indexed*/SELECT H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite' WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,HA.root FROM host H INNER JOIN host_acl HA ON HA.host_id=H.id AND HA.share_id=1 AND HA.proto='x'
SELECT S.id,S.zfs_name,S.name,(SELECT 'cifs' FROM cifs_share_option O WHERE O.share_id=S.id AND O.cifs_access<>'disabled' AND O.available<>0),(SELECT 'afp' FROM afp_share_option O WHERE O.share_id=S.id AND O.afp_access<>'disabled' AND O.available<>0),(SELECT 'ftp' FROM ftp_share_option O WHERE O.share_id=S.id AND O.ftp_access<>'disabled' AND O.available<>0),(SELECT 'nfs' FROM nfs_share_option O WHERE O.share_id=S.id AND O.nfs_access<>'disabled' AND O.available<>0) FROM share S WHERE S.type='share' ORDER BY S.name COLLATE NOCASE
/*indexed*/SELECT 1 FROM user_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.user_id=1 AND A.read<>0
/*indexed*/SELECT 1 FROM group_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.read<>0 AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=1 AND U.group_id=A.group_id)OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=1)) LIMIT 1
/*indexed*/SELECT 1 FROM group_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.write=0 AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=1 AND U.group_id=A.group_id)OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=1)) LIMIT 1
/*indexed*/SELECT 1 FROM group_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.write<>0 AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=1 AND U.group_id=A.group_id)OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=1)) LIMIT 1
/*indexed*/SELECT 1 FROM group_acl A WHERE A.share_id=1 AND A.proto='http' AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=1 AND U.group_id=A.group_id)OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=1)) LIMIT 1
/*indexed*/SELECT 1 FROM user_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.user_id=1 AND A.write=0
/*indexed*/SELECT 1 FROM user_acl A WHERE A.share_id=1 AND A.proto='cifs' AND A.user_id=1 AND A.write<>0
/*indexed*/SELECT 1 FROM user_acl A WHERE A.share_id=1 AND A.proto='http' AND A.user_id=1
/*indexed*/SELECT 1 FROM group_acl A WHERE A.share_id=1 AND A.proto='http' AND EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=1)
/*indexed*/SELECT CASE WHEN O.cifs_access='writeable' THEN 1 WHEN O.cifs_access='readonly' THEN 1 ELSE 1 END FROM cifs_share_option O WHERE share_id=1
/*indexed*/SELECT CASE WHEN O.afp_access='writeable' THEN 1 WHEN O.afp_access='readonly' THEN 1 ELSE 1 END FROM afp_share_option O WHERE share_id=1
/*indexed*/SELECT CASE WHEN O.nfs_access='writeable' THEN 1 WHEN O.nfs_access='readonly' THEN 1 ELSE 1 END FROM nfs_share_option O WHERE share_id=1
/*indexed*/SELECT CASE WHEN O.ftp_access='writeable' THEN 1 WHEN O.ftp_access='readonly' THEN 1 ELSE 1 END FROM ftp_share_option O WHERE share_id=1
/*indexed*/SELECT CASE WHEN O.http_access='writeable' THEN 1 WHEN O.http_access='readonly' THEN 1 ELSE 1 END FROM http_share_option O WHERE share_id=1
/*indexed*/SELECT CASE WHEN O.rsync_access='writeable' THEN 1 WHEN O.rsync_access='readonly' THEN 1 ELSE 1 END FROM rsync_share_option O WHERE share_id=1
INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,user_access,group_access,everyone_access,non_owner_delete,user_id,group_id) VALUES('x','x','x','x','x','x','x',1,1,1,1,1,1)
/*indexed*/INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,user_access,group_access,everyone_access,non_owner_delete,user_id,group_id) VALUES((SELECT lv_name||'/'||'x' FROM _volume WHERE id='x'),'x','x','x','x','x',(SELECT '/'||lv_name||'/'||'x' FROM _volume WHERE id='x'),1,1,1,1,1,1)
SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id='x' LIMIT 1
INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,bit_rot_protection,dedup,logbias,sync) VALUES(1,1,1,1,1,1,1,1,'x','x')
INSERT INTO afp_share_option (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(1,1,'x',1,1,1)
INSERT INTO afp_share_option (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(1,1,'x',1,NULL,NULL)
INSERT INTO nfs_share_option (share_id,available,nfs_access,nfs_sync) VALUES(1,1,'x',1)
INSERT INTO ftp_share_option (share_id,available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask) VALUES(1,1,'x',1,1,1)
INSERT INTO http_share_option (share_id,available,http_access,http_webdav) VALUES(1,1,'x',1)
INSERT INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(1,1,1)
/*indexed*/DELETE FROM `$application_on_share` WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=1)
/*indexed*/INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES((SELECT S.zfs_name FROM share S WHERE S.id=1),'x','x')
INSERT OR REPLACE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken) VALUES(1,1,'x','x','x','x','x',1,1,1,1)
/*indexed*/DELETE FROM `user_acl` WHERE share_id=1 AND proto='x'
/*indexed*/DELETE FROM `group_acl` WHERE share_id=1 AND proto='x'
/*indexed*/SELECT DISTINCT 1 FROM '$user' u, '$group' g WHERE u.group_id = g.id AND (g.gname = 'sky-port' OR g.gname = 'admin') AND u.id = '1'
INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(1,1,'x',1,1)
INSERT INTO `group_acl` (share_id,group_id,proto,read,write) VALUES(1,1,'x',1,1)
/*indexed*/DELETE FROM `host_acl` WHERE share_id=1 AND proto='x'
/*indexed*/SELECT COUNT(*) FROM `host` WHERE id=1
/*indexed*/SELECT COUNT(*) FROM `host` WHERE id=1 AND name='x'
INSERT OR IGNORE INTO `host` (name) VALUES('x')
/*indexed*/SELECT id FROM `host` WHERE name='x'
INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) VALUES(1,1,'x',1,1,1)
/*indexed*/DELETE FROM `cifs_dfs_option` WHERE share_id=1
/*indexed*/SELECT S.volume_id,S.name FROM share S WHERE S.id=1
INSERT INTO `cifs_dfs_option` (share_id,volume,share,folder,address,remote_share) VALUES(1,'x','x','x','x','x')
/*indexed*/DELETE FROM `rsync_user_password_acl` WHERE share_id=1 AND user='x'
INSERT INTO `rsync_user_password_acl` (share_id,user,password) VALUES(1,'x','x')
/*indexed*/SELECT U.user FROM rsync_user_password_acl U WHERE share_id=1
INSERT INTO dlna_share_option (share_id,available,access,media_type) VALUES(1,1,'readonly',1)
INSERT INTO daap_share_option (share_id,available) VALUES(1,1)
INSERT INTO rsync_share_option (share_id,available,rsync_access,passwordprotection) VALUES(1,1,'x','x')
/*indexed*/UPDATE share SET visible_snapdir='x' WHERE zfs_name='x'
/*indexed*/UPDATE zvol_share_option SET kb_size=1,is_sparse=1 WHERE share_id=(SELECT id FROM share S WHERE S.zfs_name='x')
/*indexed*/UPDATE share SET name='x',comment='x',path='/'||'x' WHERE zfs_name='x'
/*indexed*/UPDATE share SET name='x',zfs_name='x',path='x',comment='x',visible_snapdir='x',user_id=1,group_id=1,user_access=1,group_access=1,everyone_access=1,non_owner_delete=1 WHERE id=1
/*indexed*/UPDATE zfs_attr SET mb_quota=1,mb_reservation=1,mb_refquota=1,mb_refreservation=1,compression=1,bit_rot_protection=1,dedup=1,logbias='x',sync='x' WHERE share_id=1
/*indexed*/SELECT '/'||V.lv_name||'/'||'x' FROM share S LEFT JOIN _volume V ON V.id=S.volume_id WHERE S.id=1
/*indexed*/SELECT S.name FROM share S WHERE S.id=1
/*indexed*/SELECT S.path FROM share S WHERE S.id=1
/*indexed*/SELECT S.zfs_name FROM share S WHERE S.id=1
/*indexed*/UPDATE `$snapshot` SET zfs_name='x' WHERE zfs_name='x'
/*indexed*/UPDATE `$snapshot_clones` SET parent_zfs_name='x' WHERE parent_zfs_name='x'
/*indexed*/UPDATE `$snapshot_clones` SET cloned_zfs_name='x' WHERE cloned_zfs_name='x'
UPDATE `backup` SET src_share_proto='x' WHERE src_type='share' AND src_share_proto='x'
UPDATE `backup` SET dst_share_proto='x' WHERE dst_type='share' AND dst_share_proto='x'
/*indexed*/UPDATE `$application_on_share` SET zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=1) WHERE zfs_name='x'
/*indexed*/SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=S.volume_id WHERE S.zfs_name='x'
/*indexed*/SELECT Z.used FROM _zfs_stat Z LEFT JOIN share S ON Z.share_id=S.id WHERE S.zfs_name='x'
INSERT OR IGNORE INTO afp_share_option (share_id,afp_access,afp_guest_access) VALUES(1,'writeable',1)
INSERT OR IGNORE INTO nfs_share_option (share_id,nfs_access) VALUES(1,'writeable')
INSERT OR IGNORE INTO ftp_share_option VALUES(1,0,'writeable',0,0,0)
INSERT OR IGNORE INTO http_share_option (share_id,http_access) VALUES(1,'writeable')
/*indexed*/SELECT 1 FROM dlna_share_option WHERE share_id=1
/*indexed*/SELECT 1 FROM daap_share_option WHERE share_id=1
/*indexed*/SELECT 1 FROM rsync_share_option WHERE share_id=1
/*indexed*/UPDATE service_http SET share_name='' WHERE share_name=(select S.name from share S WHERE S.id=1)
/*indexed*/UPDATE cifs_share_option SET cifs_access='x',cifs_guest_access=1,cifs_hide_share=1,cifs_recycle=1,cifs_recycle_mb_limit=1,cifs_recycle_age_limit=1,cifs_enable_masks=1,cifs_enable_forced_minimum=1,cifs_group_create_mask=1,cifs_everyone_create_mask=1,cifs_group_directory_mask=1,cifs_everyone_directory_mask=1,oplocks=1,cifs_enabledfs=1,available=1 WHERE share_id=1
/*indexed*/UPDATE afp_share_option SET afp_access='x',afp_guest_access=1,afp_fperm=1,afp_dperm=1,available=1 WHERE share_id=1
/*indexed*/UPDATE afp_share_option SET afp_fperm=NULL,afp_dperm=NULL WHERE share_id=1
/*indexed*/UPDATE nfs_share_option SET nfs_access='x',available=1,nfs_sync=1 WHERE share_id=1
/*indexed*/UPDATE ftp_share_option SET ftp_access='x',ftp_mask=1,ftp_create_mask=1,ftp_directory_mask=1,available=1 WHERE share_id=1
/*indexed*/UPDATE http_share_option SET http_access='x',available=1,http_webdav=1 WHERE share_id=1
/*indexed*/UPDATE dlna_share_option SET media_type=1,available=1 WHERE share_id=1
/*indexed*/UPDATE daap_share_option SET available=1 WHERE share_id=1
/*indexed*/UPDATE rsync_share_option SET rsync_access='x',passwordprotection='x',available=1 WHERE share_id=1
/*indexed*/DELETE FROM dlna_share_option WHERE share_id=1
/*indexed*/DELETE FROM daap_share_option WHERE share_id=1
/*indexed*/DELETE FROM rsync_share_option WHERE share_id=1
INSERT OR REPLACE INTO zvol_share_option (share_id,kb_size,is_sparse) VALUES(1,1,1)
INSERT OR IGNORE INTO snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken, last_weekly_taken) VALUES(1,1,'0','*','*','*','*',0,1,0,0)
/*indexed*/UPDATE snapshot_schedule SET enabled=1,minute='x',hour='x',day_of_month='x',day_of_week='x',month='x',last_taken=1,purge_manual_snapshot=1,last_daily_taken=1,last_weekly_taken=1 WHERE share_id=1
INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(1,1,1*(SELECT diskquota_warn FROM account_default LIMIT 1)/100,1)
INSERT OR REPLACE INTO group_quota (group_id,share_id,mb_soft,mb_hard) VALUES(1,1,1*(SELECT diskquota_warn FROM account_default LIMIT 1)/100,1)
/*indexed*/SELECT (S.non_owner_delete << 9)|(S.user_access << 6)|(S.group_access << 3)|(S.everyone_access << 0) FROM share S WHERE S.id=1
/*indexed*/SELECT CASE WHEN S.visible_snapdir IS NULL THEN 0 ELSE 1 END FROM share S WHERE S.id=1
/*indexed*/DELETE FROM user_acl WHERE share_id=1 AND proto='x'
/*indexed*/DELETE FROM group_acl WHERE share_id=1 AND proto='x'
/*indexed*/DELETE FROM host_acl WHERE share_id=1 AND proto='x'
/*indexed*/DELETE FROM `cifs_share_option` WHERE share_id=1
/*indexed*/DELETE FROM `afp_share_option` WHERE share_id=1
/*indexed*/DELETE FROM `nfs_share_option` WHERE share_id=1
/*indexed*/DELETE FROM `ftp_share_option` WHERE share_id=1
/*indexed*/DELETE FROM `http_share_option` WHERE share_id=1
/*indexed*/DELETE FROM `zvol_share_option` WHERE share_id=1
/*indexed*/DELETE FROM cifs_dfs_option WHERE share_id=1
/*indexed*/DELETE FROM snapshot_schedule WHERE share_id=1
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=1)
/*indexed*/DELETE FROM `$snapshot_clones` WHERE cloned_zfs_name=(SELECT S.name FROM share S WHERE S.id=1) OR parent_zfs_name=(SELECT S1.name FROM share S1 WHERE S1.id=1)
/*indexed*/DELETE FROM user_quota WHERE share_id=1
/*indexed*/DELETE FROM group_quota WHERE share_id=1
/*indexed*/DELETE FROM _user_quota_stat WHERE share_id=1
/*indexed*/DELETE FROM _group_quota_stat WHERE share_id=1
/*indexed*/DELETE FROM zfs_attr WHERE share_id=1
/*indexed*/DELETE FROM _zfs_stat WHERE share_id=1
DELETE FROM backup WHERE (src_type='share' AND src_share_proto=(SELECT S.name FROM share S WHERE S.id==1)) OR (dst_type='share' AND dst_share_proto=(SELECT S.name FROM share S WHERE S.id==1))
/*indexed*/DELETE FROM share WHERE id=1
SELECT 1 FROM share S WHERE S.path LIKE (SELECT path FROM share WHERE id=1)||'/%'
/*indexed*/SELECT path FROM share S WHERE id=1
/*indexed*/SELECT S.id FROM share S WHERE S.volume_id='x'
/*indexed*/SELECT S.id FROM share S WHERE S.zfs_name='x'
/*indexed*/SELECT COUNT(*) FROM share S WHERE S.migrate_to_volume_id IS NOT NULL
/*indexed*/UPDATE share SET migrate_to_volume_id='x' WHERE zfs_name='x'
/*indexed*/SELECT '/'||migrate_to_volume_id||'/'||name FROM share S WHERE zfs_name='x'
/*indexed*/UPDATE `$snapshot` SET zfs_name=(SELECT migrate_to_volume_id||'/'||name FROM share WHERE zfs_name='x') WHERE zfs_name='x'
/*indexed*/UPDATE share SET migrate_to_volume_id=NULL WHERE zfs_name='x'
/*indexed*/UPDATE share SET volume_id=migrate_to_volume_id,path=(SELECT '/'||V.lv_name||'/'||name FROM _volume V WHERE V.id=migrate_to_volume_id),zfs_name=migrate_to_volume_id||'/'||name,migrate_to_volume_id=NULL WHERE zfs_name='x'
/*indexed*/INSERT INTO share(zfs_name,type,volume_id,usb_storage_id,name,path,comment,user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)SELECT 'x'||'/'||'x',type,volume_id,usb_storage_id,'x','/'||'x'||'/'||'x',comment,user_access,group_access,everyone_access,non_owner_delete,user_id,group_id FROM share WHERE id=1
/*setup*/CREATE TEMPORARY TABLE `_user_quota` AS SELECT * FROM `user_quota` WHERE share_id=1
/*indexed*/SELECT * FROM `user_quota` WHERE share_id=1
UPDATE `_user_quota` SET share_id=1
INSERT INTO `user_quota` SELECT * FROM `_user_quota`
DROP TABLE IF EXISTS `_user_quota`
/*setup*/CREATE TEMPORARY TABLE `_group_quota` AS SELECT * FROM `group_quota` WHERE share_id=1
/*indexed*/SELECT * FROM `group_quota` WHERE share_id=1
UPDATE `_group_quota` SET share_id=1
INSERT INTO `group_quota` SELECT * FROM `_group_quota`
DROP TABLE IF EXISTS `_group_quota`
/*setup*/CREATE TEMPORARY TABLE `_user_acl` AS SELECT * FROM `user_acl` WHERE share_id=1
/*indexed*/SELECT * FROM `user_acl` WHERE share_id=1
UPDATE `_user_acl` SET share_id=1
INSERT INTO `user_acl` SELECT * FROM `_user_acl`
DROP TABLE IF EXISTS `_user_acl`
/*setup*/CREATE TEMPORARY TABLE `_group_acl` AS SELECT * FROM `group_acl` WHERE share_id=1
/*indexed*/SELECT * FROM `group_acl` WHERE share_id=1
UPDATE `_group_acl` SET share_id=1
INSERT INTO `group_acl` SELECT * FROM `_group_acl`
DROP TABLE IF EXISTS `_group_acl`
/*setup*/CREATE TEMPORARY TABLE `_host_acl` AS SELECT * FROM `host_acl` WHERE share_id=1
/*indexed*/SELECT * FROM `host_acl` WHERE share_id=1
UPDATE `_host_acl` SET share_id=1
INSERT INTO `host_acl` SELECT * FROM `_host_acl`
DROP TABLE IF EXISTS `_host_acl`
/*setup*/CREATE TEMPORARY TABLE `_cifs_share_option` AS SELECT * FROM `cifs_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `cifs_share_option` WHERE share_id=1
UPDATE `_cifs_share_option` SET share_id=1
INSERT INTO `cifs_share_option` SELECT * FROM `_cifs_share_option`
DROP TABLE IF EXISTS `_cifs_share_option`
/*setup*/CREATE TEMPORARY TABLE `_afp_share_option` AS SELECT * FROM `afp_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `afp_share_option` WHERE share_id=1
UPDATE `_afp_share_option` SET share_id=1
INSERT INTO `afp_share_option` SELECT * FROM `_afp_share_option`
DROP TABLE IF EXISTS `_afp_share_option`
/*setup*/CREATE TEMPORARY TABLE `_nfs_share_option` AS SELECT * FROM `nfs_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `nfs_share_option` WHERE share_id=1
UPDATE `_nfs_share_option` SET share_id=1
INSERT INTO `nfs_share_option` SELECT * FROM `_nfs_share_option`
DROP TABLE IF EXISTS `_nfs_share_option`
/*setup*/CREATE TEMPORARY TABLE `_http_share_option` AS SELECT * FROM `http_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `http_share_option` WHERE share_id=1
UPDATE `_http_share_option` SET share_id=1
INSERT INTO `http_share_option` SELECT * FROM `_http_share_option`
DROP TABLE IF EXISTS `_http_share_option`
/*setup*/CREATE TEMPORARY TABLE `_ftp_share_option` AS SELECT * FROM `ftp_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `ftp_share_option` WHERE share_id=1
UPDATE `_ftp_share_option` SET share_id=1
INSERT INTO `ftp_share_option` SELECT * FROM `_ftp_share_option`
DROP TABLE IF EXISTS `_ftp_share_option`
/*setup*/CREATE TEMPORARY TABLE `_dlna_share_option` AS SELECT * FROM `dlna_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `dlna_share_option` WHERE share_id=1
UPDATE `_dlna_share_option` SET share_id=1
INSERT INTO `dlna_share_option` SELECT * FROM `_dlna_share_option`
DROP TABLE IF EXISTS `_dlna_share_option`
/*setup*/CREATE TEMPORARY TABLE `_daap_share_option` AS SELECT * FROM `daap_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `daap_share_option` WHERE share_id=1
UPDATE `_daap_share_option` SET share_id=1
INSERT INTO `daap_share_option` SELECT * FROM `_daap_share_option`
DROP TABLE IF EXISTS `_daap_share_option`
/*setup*/CREATE TEMPORARY TABLE `_zvol_share_option` AS SELECT * FROM `zvol_share_option` WHERE share_id=1
/*indexed*/SELECT * FROM `zvol_share_option` WHERE share_id=1
UPDATE `_zvol_share_option` SET share_id=1
INSERT INTO `zvol_share_option` SELECT * FROM `_zvol_share_option`
DROP TABLE IF EXISTS `_zvol_share_option`
/*setup*/CREATE TEMPORARY TABLE `_snapshot_schedule` AS SELECT * FROM `snapshot_schedule` WHERE share_id=1
/*indexed*/SELECT * FROM `snapshot_schedule` WHERE share_id=1
UPDATE `_snapshot_schedule` SET share_id=1
INSERT INTO `snapshot_schedule` SELECT * FROM `_snapshot_schedule`
DROP TABLE IF EXISTS `_snapshot_schedule`
/*setup*/CREATE TEMPORARY TABLE `_zfs_attr` AS SELECT * FROM `zfs_attr` WHERE share_id=1
/*indexed*/SELECT * FROM `zfs_attr` WHERE share_id=1
UPDATE `_zfs_attr` SET share_id=1
INSERT INTO `zfs_attr` SELECT * FROM `_zfs_attr`
DROP TABLE IF EXISTS `_zfs_attr`
/*indexed*/INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking) VALUES((SELECT S.id FROM `share` S WHERE S.zfs_name='x'),1,1)
/*indexed*/SELECT PS.pid,PS.blocking,STRFTIME('%s',PS.ts) FROM `process_on_share` PS WHERE PS.share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name='x')
/*indexed*/DELETE FROM `process_on_share` WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name='x') AND pid=1
/*indexed*/DELETE FROM `process_on_share` WHERE share_id=(SELECT S.id FROM `share` S WHERE S.zfs_name='x')
INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES('x','x','x')
/*indexed*/DELETE FROM `$application_on_share` WHERE zfs_name='x' AND app_name='x'
/*indexed*/DELETE FROM `$application_on_share` WHERE app_name='x'
/*indexed*/INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES((SELECT S.zfs_name FROM share S WHERE S.zfs_name='x'),'x','x')
/*indexed*/SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name='x'
SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE zfs_name like 'x'||'%'

-- src/account
SELECT COUNT(*)  FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup'))
SELECT COUNT(*)  FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup'))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup'))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND id IN (SELECT T.user_id from '$timemachine_quota' T WHERE T.enabled=1)
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND ( U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=0) OR U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir=''))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND ( U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=1) OR U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir<>''))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup'))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND id IN (SELECT T.user_id from '$timemachine_quota' T WHERE T.enabled=1)
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND ( U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=0) OR U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir=''))
SELECT COUNT(*) FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND ( U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.snapshot_protection_enabled=1) OR U.id IN (SELECT H.user_id FROM '$home_folder' H WHERE H.visible_snapdir<>''))
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.uname
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.id LIMIT 1
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.id DESC LIMIT 1,1
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND id IN (SELECT T.user_id from '$timemachine_quota' T WHERE T.enabled=1) ORDER BY U.uname DESC
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.uname
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.id LIMIT 1
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) ORDER BY U.id DESC LIMIT 1,1
SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NOT NULL AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND (U.uname LIKE 'x' OR U.fullname LIKE 'x' OR U.email LIKE 'x') AND id IN (SELECT T.user_id from '$timemachine_quota' T WHERE T.enabled=1) ORDER BY U.uname DESC
/*indexed*/SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.is_locked,U.group_id FROM `$user` U WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) AND U.id=1 ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT U.uname FROM `$user` U WHERE U.id=1 OR (1 AND U.id=1 AND U.rid IS NOT NULL)
/*indexed*/SELECT U.id,U.uname FROM `$user` U WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id=98 ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT U.id,U.uname FROM `$user` U WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.group_id=(SELECT G.id FROM `$group` G WHERE G.gname='x') ORDER BY U.uname COLLATE NOCASE
SELECT U.id,U.uname FROM `$user` U LEFT JOIN `$group_has_user` GU ON GU.user_id=U.id WHERE U.is_privileged<>1 AND U.uname<>'nobody' AND U.uname<>'guest' AND (U.group_id=(SELECT G1.id FROM `$group` G1 WHERE G1.gname='x')OR GU.group_id=(SELECT G2.id FROM `$group` G2 WHERE G2.gname='x')) ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT U.id FROM `$user` U WHERE U.uname='guest' AND U.rid IS NULL
/*indexed*/SELECT U.id FROM `$user` U WHERE U.uname='x' AND (U.rid IS NULL OR U.is_privileged=1)
/*indexed*/SELECT U.id FROM `$user` U WHERE U.uname='x' AND (U.rid IS NOT NULL OR U.is_privileged=1)
/*indexed*/SELECT G.id FROM `$group` G WHERE G.gname='guest' AND G.rid IS NULL
/*indexed*/SELECT G.id FROM `$group` G WHERE G.gname='nogroup' AND G.rid IS NULL
/*indexed*/SELECT G.id FROM `$group` G WHERE G.gname='x' AND (G.rid IS NULL OR G.is_privileged=1)
/*indexed*/SELECT U.group_id FROM `$user` U WHERE U.uname='x'
/*indexed*/SELECT U.uname FROM `$user` U WHERE U.id=1
/*indexed*/SELECT G.gname FROM `$group` G WHERE G.id=1
/*indexed*/SELECT 1 FROM `$user` U INNER JOIN `$group` G ON G.id=U.group_id WHERE U.uname='x' AND G.gname='x'
/*indexed*/SELECT 1 FROM `$user` U INNER JOIN `$group_has_user` GU ON GU.user_id=U.id INNER JOIN `$group` G ON G.id=GU.group_id WHERE U.uname='x' AND G.gname='x'
/*indexed*/SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM user_quota Q INNER JOIN share S ON S.id=Q.share_id LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id WHERE Q.user_id=1
SELECT H.snapshot_protection_enabled,H.quota,(SELECT S.used FROM `_hf_zfs_stat` S WHERE S.user_id=H.user_id),H.visible_snapdir FROM `$home_folder` H WHERE H.user_id=1
SELECT A.home_volume_id || '/.timemachine/' || U.uname FROM account_default A, '$user' U WHERE U.id=1
/*indexed*/SELECT T.enabled,T.capacity_mb FROM '$timemachine_quota' T WHERE T.user_id=1
/*indexed*/SELECT '/'||V.lv_name||'/home/x' FROM _volume V WHERE V.id='x'
SELECT '/home/x'
/*indexed*/SELECT COUNT(*) FROM `$user` WHERE uname='x'
/*indexed*/SELECT COUNT(*) FROM `$user` WHERE uname='x' AND group_id=(SELECT id FROM `$group` WHERE gname='x')
/*indexed*/SELECT COUNT(*) FROM `$user` WHERE id=1
INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed,is_locked) VALUES(1,'x','x','x','x',1,'/bin/false',0,STRFTIME('%s',DATETIME('NOW'))/60/60/24,1)
/*indexed*/INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(1,(SELECT S.id FROM share S WHERE zfs_name='x'),1*(SELECT diskquota_warn FROM account_default LIMIT 1),1)
INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir) VALUES (1,1,1,'x')
INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir) VALUES (1,(SELECT snapshot_protection FROM account_default LIMIT 1),(SELECT home_folder_capacity_limit FROM account_default LIMIT 1),'x')
INSERT INTO '$timemachine_quota' (user_id,enabled,capacity_mb) VALUES (1,1,1)
/*indexed*/SELECT home FROM `$user` WHERE id=1
SELECT next_uid FROM account_default
/*indexed*/SELECT id FROM `$user` WHERE id >= 1 ORDER BY id
UPDATE account_default SET next_uid=1
/*indexed*/SELECT IFNULL(MAX(U.id)+1,100) FROM `$user` U WHERE U.is_privileged=0 AND U.rid IS NULL AND U.id<32767
INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed) VALUES(1,'x','x','x','x',1,'/bin/false',0,STRFTIME('%s',DATETIME('NOW'))/60/24/24)
/*indexed*/SELECT U.home,U.uname FROM `$user` U WHERE U.id=1
/*indexed*/SELECT U.uname FROM `$user` U WHERE U.id=1 AND U.uname<>'x'
/*indexed*/SELECT U.home FROM `$user` U WHERE U.id=1 AND U.uname<>'x'
SELECT '/home/'||'x'
/*indexed*/SELECT U.home FROM `$user` U WHERE U.id=1
/*indexed*/UPDATE `$user` SET uname='x',home='x',passwd='x',email='x',group_id=1,is_locked=1 WHERE id=1
/*indexed*/DELETE FROM user_quota WHERE user_id=1 AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name='x')
/*indexed*/INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(1,(SELECT S.id FROM share S WHERE zfs_name='x'),1*(SELECT diskquota_warn FROM account_default LIMIT 1)/100,1)
/*indexed*/SELECT H.visible_snapdir FROM `$home_folder` H WHERE H.user_id=1
INSERT OR REPLACE INTO `$home_folder` (user_id,snapshot_protection_enabled,quota,visible_snapdir) VALUES (1,1,1,'x')
INSERT OR REPLACE INTO `$timemachine_quota` (user_id,enabled,capacity_mb) VALUES (1,1,1)
DELETE FROM '$timemachine_quota' WHERE user_id<>96 AND enabled=0
SELECT timemachine_enabled FROM service_afp LIMIT 1
UPDATE service_afp SET timemachine_enabled=1,volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1),vol_size_limit_timemachine_mb=(SELECT capacity_mb FROM '$timemachine_quota' WHERE user_id=96)
/*indexed*/DELETE FROM '$timemachine_quota' WHERE user_id=1
SELECT COUNT(*) FROM '$timemachine_quota'
/*indexed*/SELECT enabled FROM '$timemachine_quota' WHERE user_id=96
UPDATE service_afp SET timemachine_enabled=0,volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1),vol_size_limit_timemachine_mb=(SELECT capacity_mb FROM '$timemachine_quota' WHERE user_id=96)
/*indexed*/UPDATE `$home_folder_snapshot` SET user_name='x',home_dir='x' WHERE user_name='x'
/*indexed*/UPDATE `$user` SET group_id=(SELECT G.id FROM `$group` G WHERE G.gname='x' AND G.rid IS  NULL) WHERE uname='x' AND rid IS NULL
/*indexed*/UPDATE `$user` SET group_id=(SELECT G.id FROM `$group` G WHERE G.gname='x' AND G.rid IS NOT  NULL) WHERE uname='x' AND rid IS NOT NULL
UPDATE `$user` SET passwd=substr(passwd,2) WHERE (1 OR uname='x') AND is_privileged=0 AND rid IS NULL AND group_id<>98 AND substr(passwd,1,2)='!$' AND substr(passwd,4,1)='$'
UPDATE `$user` SET passwd='!'||passwd WHERE (1 OR uname='x') AND is_privileged=0 AND rid IS NULL AND group_id<>98 AND substr(passwd,1,1)='$' AND substr(passwd,3,1)='$'
/*indexed*/UPDATE `$home_folder` SET visible_snapdir='x' WHERE user_id=1
/*indexed*/DELETE FROM user_quota WHERE user_id=1
/*indexed*/DELETE FROM user_acl WHERE user_id=1
/*indexed*/DELETE FROM _user_quota_stat WHERE user_id=1
/*indexed*/DELETE FROM `$home_folder` WHERE user_id=1
/*indexed*/DELETE FROM `$timemachine_quota` WHERE user_id=1
UPDATE service_afp SET timemachine_enabled=0
/*indexed*/DELETE FROM `$group_has_user` WHERE user_id=1
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE user_name=(SELECT U.uname FROM `$user` U WHERE U.id=1)
/*indexed*/UPDATE `$user` SET is_privileged=-1 WHERE id=1
SELECT COUNT(*)  FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest'
SELECT COUNT(*)  FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest'
/*indexed*/SELECT COUNT(*)  FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x'
/*indexed*/SELECT COUNT(*)  FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x'
SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest'
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.gname
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.id
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.id DESC LIMIT 1
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.gname DESC LIMIT 1,1
SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest'
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.gname
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.id
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.id DESC LIMIT 1
/*indexed*/SELECT G.id,G.gname,CASE WHEN G.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.rid IS NOT NULL AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.gname LIKE 'x' ORDER BY G.gname DESC LIMIT 1,1
/*indexed*/SELECT G.id,G.gname FROM `$group` G WHERE G.id=1 OR (1 AND G.id=1 AND G.rid IS NOT NULL)
/*indexed*/SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM group_quota Q INNER JOIN share S ON S.id=Q.share_id LEFT JOIN _group_quota_stat QS ON QS.share_id=Q.share_id AND QS.group_id=Q.group_id WHERE Q.group_id=1
/*indexed*/SELECT U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group_has_user` GU INNER JOIN `$user` U ON U.id=GU.user_id WHERE GU.group_id=1 ORDER BY U.uname COLLATE NOCASE
/*indexed*/SELECT COUNT(*) FROM `$group` WHERE gname='x'
/*indexed*/SELECT 100 WHERE NOT EXISTS (SELECT * FROM `$group` WHERE id=100)
/*indexed*/SELECT G1.id+1 FROM `$group` G1 WHERE G1.id>=100-1 AND G1.id<32767 AND NOT EXISTS (SELECT * FROM `$group` G2 WHERE G2.id=G1.id+1) LIMIT 1
/*indexed*/SELECT COUNT(*) FROM `$group` WHERE id=1
INSERT INTO `$group` (id,gname,is_privileged) VALUES(1,'x',0)
/*indexed*/INSERT INTO group_quota (group_id,share_id,mb_soft,mb_hard) VALUES(1,(SELECT S.id FROM share S WHERE zfs_name='x'),1*(SELECT diskquota_warn FROM account_default LIMIT 1),1)
INSERT INTO `$group_has_user` (user_id,group_id) VALUES(1,1)
/*indexed*/SELECT EXISTS(SELECT * FROM `$user` U WHERE U.group_id=1)
/*indexed*/SELECT gname FROM `$group` WHERE id=1
/*indexed*/DELETE FROM group_quota WHERE group_id=1
/*indexed*/DELETE FROM _group_quota_stat WHERE group_id=1
/*indexed*/DELETE FROM `$group_has_user` WHERE group_id=1
/*indexed*/UPDATE `$group` SET is_privileged=-1 WHERE id=1
/*indexed*/SELECT G.gname FROM `$group` G WHERE G.id=1 AND G.gname<>'x'
/*indexed*/UPDATE `$group` SET gname='x' WHERE id=1
/*indexed*/DELETE FROM group_quota WHERE group_id=1 AND share_id=(SELECT S.id FROM share S WHERE S.zfs_name='x')
/*indexed*/INSERT OR REPLACE INTO group_quota (group_id,share_id,mb_soft,mb_hard) VALUES(1,(SELECT S.id FROM share S WHERE zfs_name='x'),(1*(SELECT diskquota_warn FROM account_default LIMIT 1)),1)
SELECT PR.question,PR.answer,PR.email FROM passwordrecovery PR LIMIT 1
DELETE FROM passwordrecovery
INSERT INTO passwordrecovery (email,question,answer) VALUES('x','x','x')
/*indexed*/UPDATE `$user` SET passwd='x' WHERE uname='admin'
/*indexed*/UPDATE `$user` SET passwd='x' WHERE uname='root'
/*indexed*/UPDATE `$user` SET passwd='x' WHERE id=1
/*indexed*/SELECT U.passwd FROM `$user` U WHERE id=1
SELECT A.home_volume_id,A.diskquota_warn,A.group_id,A.disallow_password_change,A.home_folder_capacity_limit,A.group_membership,A.private_time_machine,A.private_time_machine_space,A.snapshot_protection FROM account_default A LIMIT 1
UPDATE account_default SET home_volume_id='x',diskquota_warn=1,group_id=1,disallow_password_change=1,home_folder_capacity_limit=1,group_membership='x',private_time_machine=1,private_time_machine_space=1,snapshot_protection=1
SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END FROM service_cifs S LIMIT 1
SELECT S.security,S.workgroup,S.realm,S.orgunit,S.restrict_ou,S.no_sync_ads,S.domain_admin_user,S.password_server,S.allow_trusted_domains,S.domain_sid,IFNULL(S.domain_admin_gid,98),IFNULL(S.domain_admin_uid,98) FROM service_cifs S LIMIT 1
UPDATE service_cifs SET security='x',workgroup='x',realm='x',orgunit='x',restrict_ou='x',no_sync_ads=1,domain_admin_user='x',password_server='x',allow_trusted_domains=1
SELECT CASE WHEN I.state=0 THEN 'idle' WHEN I.state=1 THEN 'running' WHEN I.state=2 THEN 'complete' ELSE 'error' END,I.total_user,I.curr_user,I.total_group,I.curr_group,I.start_at,I.done_at,CASE WHEN I.total_user>0 THEN 50*I.curr_user/I.total_user ELSE 0 END + CASE WHEN I.total_group>0 THEN 50*I.curr_group/I.total_group ELSE 0 END FROM _ads_importer I LIMIT 1

-- src/service
SELECT S.enabled,S.user_home_directory,S.user_home_directory_recycle,S.user_home_directory_recycle_max_days,S.user_home_directory_recycle_max_size FROM service_cifs S LIMIT 1
SELECT S.enabled FROM service_afp S LIMIT 1
SELECT S.enabled,S.threads,S.user_home_directory,S.nfsv4,S.domain FROM service_nfs S LIMIT 1
SELECT S.enabled,S.port,S.auth_mode,S.passive_range_min,S.passive_range_max,S.enable_masquerade,S.masquerade,S.upload_resume,S.user_home_directory,S.ftps,S.server_transfer_log,S.max_upload_rate,S.max_download_rate,S.force_ftps FROM service_ftp S LIMIT 1
SELECT S.enabled,S.sharename,S.password,S.directory FROM service_daap S LIMIT 1
SELECT S.enabled,CASE WHEN S.allow_host='default' THEN '' ELSE S.allow_host END,S.community,S.trap_destination FROM service_snmp S LIMIT 1
SELECT S.enabled,IFNULL(S.port,22),S.ui_enabled FROM service_ssh S LIMIT 1
SELECT S.enabled,S.owner,S.priv_data FROM service_replicate S LIMIT 1
SELECT S.enabled FROM service_smartnetwork S LIMIT 1
SELECT S.enabled FROM service_upnpd S LIMIT 1
SELECT S.enabled FROM service_rsync S LIMIT 1
SELECT S.enabled,S.inotify,S.enable_tivo_server,S.enable_tivo_archiver FROM service_dlna S LIMIT 1
SELECT H.enabled,H.use_password,H.share_name,H.http_admin FROM service_http H LIMIT 1
SELECT H.port,H.ssl_key_host FROM service_https H LIMIT 1
/*indexed*/SELECT S.val FROM service_misc S WHERE key='ANTIVIRUS'
/*indexed*/SELECT S.val FROM service_misc S WHERE key='SKYPORT'
SELECT S.enabled,S.cifs,S.afp,S.panelview,S.printer,S.qubrix,S.timemachine FROM service_avahi S LIMIT 1
SELECT (SELECT CIFS.user_home_directory FROM service_cifs CIFS LIMIT 1),(SELECT NFS.user_home_directory FROM service_nfs NFS LIMIT 1),(SELECT FTP.user_home_directory FROM service_ftp FTP LIMIT 1),(SELECT DLNA.user_home_directory FROM service_dlna DLNA LIMIT 1),(SELECT AFP.user_home_directory FROM service_afp AFP LIMIT 1)
UPDATE service_cifs SET enabled=1
UPDATE service_afp SET enabled=1
UPDATE service_nfs SET enabled=1,threads=1,user_home_directory=1,nfsv4=1,domain='x'
SELECT port FROM service_ftp
UPDATE service_ftp SET enabled=1,port=1,auth_mode='x',passive_range_min=1,passive_range_max=1,enable_masquerade=1,masquerade='x',upload_resume=1,ftps=1,force_ftps=1,server_transfer_log=1,max_upload_rate=1,max_download_rate=1
UPDATE service_daap SET enabled=1,sharename='x',password='x'
UPDATE service_snmp SET enabled=1,allow_host='x',community='x',trap_destination='x'
UPDATE service_ssh SET enabled=1,port=1,ui_enabled=1
UPDATE service_replicate SET enabled=1,owner='x',priv_data='x'
/*indexed*/UPDATE service_misc SET val=1 WHERE key='APPSPRITE'
UPDATE service_smartnetwork SET enabled=1
UPDATE service_upnpd SET enabled=1
UPDATE service_rsync SET enabled=1
UPDATE service_dlna SET enabled=1,inotify=1,enable_tivo_server=1,enable_tivo_archiver=1
UPDATE service_http SET enabled=1,use_password=1,http_admin=1,share_name='x'
SELECT port FROM service_https
UPDATE service_https SET port=1,ssl_key_host='x'
UPDATE service_avahi SET enabled=1,cifs=1,afp=1,panelview=1,printer=1,qubrix=1,timemachine=1
INSERT OR REPLACE INTO service_misc (key,val) VALUES('SKYPORT','1')
INSERT OR REPLACE INTO service_misc (key,val) VALUES('APPSPRITE','1')
UPDATE service_nfs SET enabled=1
UPDATE service_ftp SET enabled=1
UPDATE service_http SET enabled=1
UPDATE service_daap SET enabled=1
UPDATE service_dlna SET enabled=1
UPDATE service_snmp SET enabled=1
UPDATE service_ssh SET enabled=1
UPDATE service_replicate SET enabled=1
UPDATE service_avahi SET enabled=1
UPDATE service_cifs SET user_home_directory=1
UPDATE service_nfs SET user_home_directory=1
UPDATE service_ftp SET user_home_directory=1
UPDATE service_dlna SET user_home_directory=1
UPDATE service_afp SET user_home_directory=1
SELECT T.enabled,S.vol_size_limit_timemachine_mb,IFNULL(V.blk_free*V.blk_size,0)/1000/1000 FROM service_afp S, _volume V, '$timemachine_quota' T WHERE V.id=IFNULL(S.volume_timemachine,(SELECT AD.home_volume_id FROM account_default AD LIMIT 1)) AND T.user_id=96
/*indexed*/SELECT CASE WHEN U.passwd='!' OR U.passwd='*' THEN 1 ELSE 0 END FROM `$user` U WHERE U.uname='Qubrix'
/*indexed*/UPDATE `$user` SET passwd=replace(passwd,'!','') WHERE uname='Qubrix'
/*indexed*/UPDATE `$user` SET passwd='x' WHERE uname='Qubrix'
UPDATE service_afp SET enabled=1,timemachine_enabled=1,vol_size_limit_timemachine_mb=1,volume_timemachine=(SELECT AD.home_volume_id FROM account_default AD LIMIT 1)
UPDATE service_avahi SET afp=1,timemachine=1
/*indexed*/UPDATE '$timemachine_quota' SET enabled=1,capacity_mb=1 WHERE user_id=96
/*indexed*/UPDATE `$user` SET passwd='!'||replace(passwd,'!','') WHERE uname='Qubrix'
UPDATE service_avahi SET afp=0,timemachine=0
/*indexed*/UPDATE '$timemachine_quota' SET enabled=0 WHERE user_id=96
UPDATE service_afp SET timemachine_enabled=1
UPDATE service_avahi SET timemachine=1
UPDATE service_avahi SET timemachine=0
/*indexed*/SELECT val FROM service_misc WHERE key='QUBRIXVAULT'
/*indexed*/SELECT val FROM service_misc WHERE key='QUBRIXVAULT_TEP_FOLDER'
SELECT V.name,V.password,V.defaultjob FROM service_vault V
DELETE FROM service_vault
INSERT INTO service_vault (enabled,name,password,defaultjob) VALUES(1,'x','x','x')
SELECT started_on,stopped_on,version FROM `$qubrixd` LIMIT 1
UPDATE `$qubrixd` SET started_on=1,stopped_on=1,version='x'
INSERT INTO `$qubrixd` DEFAULT VALUES
SELECT U.name||'@'||U.host,U.port,U.type,U.name,U.description,U.ups_model,U.ups_mfr,U.ups_mfr_date,U.ups_serial,U.shutdown_threshold,U.snmp_community,U.snmp_mibs,U.remote_username,U.remote_password,U.enabled,REPLACE(IFNULL(UH.ups_status,'?'),' ','_') FROM _ups_config U LEFT JOIN _ups_health UH ON UH.name=U.name AND UH.host=U.host
SELECT U.name||'@'||U.host,U.port,U.type,U.name,U.description,U.ups_model,U.ups_mfr,U.ups_mfr_date,U.ups_serial,U.shutdown_threshold,U.snmp_community,U.snmp_mibs,U.remote_username,U.remote_password,U.enabled,REPLACE(IFNULL(UH.ups_status,'?'),' ','_') FROM _ups_config U LEFT JOIN _ups_health UH ON UH.name=U.name AND UH.host=U.host WHERE 'x'=U.name||'@'||U.host
SELECT U.enabled,U.listen1 FROM service_upsd U  LIMIT 1
SELECT COUNT(*) FROM _ups_config WHERE enabled=1
INSERT INTO _ups_config (name,host,port,type,enabled,description,shutdown_threshold) VALUES('x','localhost','auto','x',1,'x',1)
UPDATE service_upsd SET enabled=1,listen1='x'
INSERT INTO _ups_config (name,host,port,type,enabled,description,shutdown_threshold,snmp_community,snmp_mibs) VALUES('x','localhost','x','x',1,'x',1,'x','x')
INSERT INTO _ups_config (name,host,port,type,enabled,description,shutdown_threshold,remote_username,remote_password) VALUES('x','x','x','x',1,'x',1,'x','x')
SELECT U.type FROM _ups_config U WHERE U.name||'@'||U.host='x'
UPDATE _ups_config SET enabled=1,name='x',description='x',shutdown_threshold=1
UPDATE _ups_config SET enabled=1,name='x',description='x',shutdown_threshold=1,snmp_community='x',snmp_mibs='x'
UPDATE _ups_config SET ups_model='x',ups_mfr='x',ups_mfr_date='x',ups_serial='x' WHERE name||'@'||host='x'
UPDATE _ups_config SET shutdown_threshold=1 WHERE name||'@'||host='x'
SELECT U.type FROM _ups_config U  WHERE name||'@'||host='x' LIMIT 1
UPDATE service_upsd SET enabled=0
DELETE FROM _ups_config WHERE name||'@'||host='x'
SELECT T.hour,T.minute,T.path,T.days FROM service_tivo T
SELECT S.path FROM share S INNER JOIN dlna_share_option D ON D.share_id=S.id
DELETE FROM service_tivo
INSERT INTO service_tivo (hour,minute,path,days) VALUES('x','x','x','x')
/*indexed*/DELETE FROM tivo_mak WHERE name='x'
INSERT INTO tivo_mak (name,key) VALUES('x','x')

-- src/storage
SELECT IFNULL(raid_mode, 'QRAID') FROM system_config
SELECT V.id,V.lv_name,IFNULL(V.raid_type,'QRAID'),V.blk_total,V.blk_free,V.blk_size,V.volume_health,V.sent_resilver_event,V.sent_scan_end,V.keyfile,V.balance_status,V.disk_test_status FROM _volume V WHERE V.lv_name<>'USB' ORDER BY V.lv_name COLLATE NOCASE
/*indexed*/UPDATE _volume SET blk_total=1,blk_free=1,blk_size=1,volume_health='x',sent_resilver_event=1,sent_scan_end=1,keyfile='x',balance_status=1,disk_test_status=1 WHERE id='x'
/*indexed*/SELECT D.id,D.present,D.model,D.serial,D.fw_version,D.rpm,D.sectors,D.capacity,H.temp,H.ata_errors,D.volume_id,P.slot_col||'x'||P.slot_row,D.hwif,D.pool_type,D.pool_state,D.pool_hostid,P.controller,IFNULL(H.zpool_state,'ONLINE'),D.controller,D.channel FROM `$disk_info` D INNER JOIN disk_port P ON P.controller=D.controller AND P.port=D.port INNER JOIN _disk_health H ON H.disk_id=D.id WHERE D.controller=1 ORDER BY 20 COLLATE NOCASE
SELECT E.controller,E.nr_column,E.nr_row,E.disk_horizontal,E.name,J.label,E.ses_device,E.dead_slots FROM _disk_enclosure E INNER JOIN jbod_port J ON J.controller=E.controller WHERE E.controller=1
SELECT E.controller,E.name,E.nr_row,E.nr_column,E.disk_horizontal FROM _disk_enclosure E
SELECT label FROM jbod_port WHERE controller=1
/*indexed*/SELECT D.id,D.present,D.model,D.serial,D.fw_version,D.rpm,D.sectors,D.capacity,H.temp,H.ata_errors,D.volume_id,P.slot_col||'x'||P.slot_row,D.hwif,P.controller,D.controller,D.channel,D.replaced_with_spare,D.is_signed_by_mltx FROM `$disk_info` D INNER JOIN disk_port P ON P.controller=D.controller AND P.port=D.port LEFT JOIN _disk_health H ON H.disk_id=D.id WHERE D.id='x'
/*indexed*/UPDATE `$disk_info` SET replaced_with_spare=1 WHERE id='x'
/*indexed*/DELETE FROM `$disk_info` WHERE id='x'
/*setup*/CREATE TEMP TABLE `_old_$disk_info` AS SELECT * FROM `$disk_info`
SELECT id,model,serial,fw_version,rpm,sectors,capacity,controller,port,hwif,volume_id,pool_type,pool_state,pool_hostid,controller,channel,replaced_with_spare,is_signed_by_mltx,present FROM `$disk_info` WHERE id NOT IN (SELECT id FROM _old_$disk_info WHERE present=1)
SELECT volume_id FROM _old_$disk_info WHERE controller=1 AND channel=1 AND present=0
SELECT id,model,serial,fw_version,rpm,sectors,capacity,controller,port,hwif,volume_id,pool_type,pool_state,pool_hostid,controller,channel,replaced_with_spare,is_signed_by_mltx,present FROM _old_$disk_info WHERE id NOT IN (SELECT id FROM `$disk_info` WHERE present=1)
SELECT name FROM _disk_enclosure WHERE controller=1
SELECT slot_col||'x'||slot_row FROM disk_port WHERE controller=1 AND port=1
/*indexed*/SELECT D.id FROM `$disk_info` D WHERE D.controller=1 AND D.channel=1 AND D.present=0
/*indexed*/DELETE FROM _volume WHERE id='x'
UPDATE service_afp SET timemachine_enabled=0,volume_timemachine=NULL,vol_size_limit_timemachine_mb=0 WHERE volume_timemachine='x'
/*indexed*/UPDATE '$timemachine_quota' SET enabled=0,capacity_mb=0 WHERE user_id=96
DELETE FROM '$timemachine_quota' WHERE user_id<>96
/*indexed*/SELECT COUNT(*) FROM account_default WHERE home_volume_id='x'
SELECT V.lv_name FROM _volume V WHERE V.lv_name<>'media' LIMIT 1
UPDATE account_default SET home_volume_id='x'
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND SH.name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND SH.name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x' AND SH.name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x' AND SH.name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND SH.name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND SH.name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x' AND SH.name='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x' AND SH.name='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND SH.name='x'
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x'
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND V.lv_name='x' AND SH.name='x'
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND SH.name='x'
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x'
/*indexed*/SELECT COUNT(*) FROM `$snapshot` S INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND V.lv_name='x' AND SH.name='x'
/*indexed*/SELECT 1 FROM share WHERE id=1 AND volume_id='x'
/*indexed*/INSERT INTO `$snapshot`(zfs_name,name,type,created_on)VALUES((SELECT S.zfs_name FROM share S WHERE S.id=1),'x',1,1)
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name='x' AND created_on>1
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name LIKE 'x'||'/%' AND created_on>1
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE home_dir='x' AND created_on>1
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name='x' AND created_on > (SELECT S2.created_on FROM `$snapshot` S2 WHERE zfs_name='x' AND S2.name = 'x')
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name LIKE 'x'||'/%' AND created_on > (SELECT S2.created_on FROM `$snapshot` S2 WHERE zfs_name LIKE 'x'||'/%' AND S2.name = 'x')
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE home_dir='x' AND created_on > (SELECT S2.created_on FROM `$home_folder_snapshot` S2 WHERE home_dir='x' AND S2.name = 'x')
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name='x' AND created_on=1
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name LIKE 'x'||'/%' AND created_on=1
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE home_dir='x' AND created_on=1
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name='x' AND name='x'
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name LIKE 'x'||'/%' AND name='x'
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE home_dir='x' AND name='x'
/*indexed*/DELETE FROM `$snapshot` WHERE zfs_name='x'
DELETE FROM `$snapshot` WHERE zfs_name LIKE 'x'||'/%'
/*indexed*/DELETE FROM `$home_folder_snapshot` WHERE home_dir='x'
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.home='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.home='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x' AND U.home='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x' AND U.home='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.home='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.home='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x' AND U.home='x' ORDER BY S.created_on DESC LIMIT 1 OFFSET 1
/*indexed*/SELECT S.id,S.user_name,S.home_dir,S.name,S.type,S.created_on FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x' AND U.home='x' ORDER BY S.name ASC LIMIT 1 OFFSET 1
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.home='x'
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x'
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type=1 AND U.uname='x' AND U.home='x'
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.home='x'
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x'
/*indexed*/SELECT COUNT(*) FROM `$home_folder_snapshot` S INNER JOIN `$user` U ON U.uname=S.user_name WHERE S.created_on>=1 AND S.created_on<=1 AND S.type>0 AND S.type<4 AND U.uname='x' AND U.home='x'
INSERT INTO `$home_folder_snapshot`(user_name,home_dir,name,type,created_on)VALUES('x','x','x',1,1)
/*indexed*/SELECT S.home FROM `$user` S WHERE S.id=1
SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,SS.last_taken,SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken FROM `$home_folder_snapshot_schedule` SS
INSERT OR REPLACE INTO `$home_folder_snapshot_schedule` (share_id,enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken) VALUES(0,1,'x','x','x','x','x',1,1,1,1)
INSERT OR IGNORE INTO `$home_folder_snapshot_schedule` (share_id,enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken, last_weekly_taken) VALUES(0,1,'0','*','*','*','*',0,1,0,0)
UPDATE `$home_folder_snapshot_schedule` SET enabled=1,minute='x',hour='x',day_of_month='x',day_of_week='x',month='x',last_taken=1,purge_manual_snapshot=1,last_daily_taken=1,last_weekly_taken=1
/*indexed*/SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones` WHERE parent_snapshot_name='x' AND parent_zfs_name='x'
/*indexed*/SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones` WHERE parent_snapshot_name='x'
/*indexed*/SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones` WHERE parent_zfs_name='x'
SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name FROM `$snapshot_clones`
INSERT INTO `$snapshot_clones`(cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES ('x','x','x')
/*indexed*/DELETE FROM `$snapshot_clones` WHERE parent_snapshot_name='x' AND parent_zfs_name='x'
/*indexed*/DELETE FROM `$snapshot_clones` WHERE cloned_zfs_name='x'
/*indexed*/DELETE FROM `$snapshot_clones` WHERE parent_zfs_name='x'
SELECT D.disk_id,D.ata_errors,D.realloc_sect,D.realloc_event,D.spin_retry_cnt,D.ioedc,D.cmd_timeouts,D.pending_sect,D.uncorrectable_err,D.temp,D.start_stop_cnt,D.power_on_hrs,D.power_cycle_cnt,D.load_cycle_cnt,IFNULL(D.zpool_state,'UNKNOWN'),D.zpool_read_error_cnt,D.zpool_write_error_cnt, D.zpool_cksum_error_cnt,DI.controller,DI.channel FROM _disk_health D INNER JOIN `$disk_info` DI ON DI.id=D.disk_id
INSERT OR REPLACE INTO _disk_health(disk_id,ata_errors,realloc_sect,realloc_event,spin_retry_cnt,ioedc,cmd_timeouts,pending_sect,uncorrectable_err,temp,start_stop_cnt,power_on_hrs,power_cycle_cnt,load_cycle_cnt,zpool_state,zpool_read_error_cnt,zpool_write_error_cnt,zpool_cksum_error_cnt) VALUES('x',1,1,1,1,1,1,1,1,1,1,1,1,1,'x',1,1,1)
DELETE FROM _enclosure_health WHERE controller=1 AND name='x' AND devid='x'
INSERT OR IGNORE INTO _enclosure_health(controller,name,devid,value,value_prev1,value_prev2,value_prev3) VALUES(1,'x','x',1,1,1,1)
UPDATE _enclosure_health SET value=1,value_prev1=value,value_prev2=value_prev1,value_prev3=value_prev2 WHERE controller=1 AND name='x' AND devid='x'
INSERT OR IGNORE INTO _enclosure_health(controller,name,devid,value,value_prev1,value_prev2,value_prev3) SELECT controller,name,devid,(min+max)/2,(min+max)/2,(min+max)/2,(min+max)/2 FROM enclosure_health_spec
SELECT E.name,E.devid,E.value,E.value_prev1,E.value_prev2,E.value_prev3,IFNULL(S.min,0),IFNULL(S.max,0),S.label FROM enclosure_health_spec S LEFT JOIN _enclosure_health E ON E.controller=S.controller AND E.name=S.name AND E.devid=S.devid WHERE S.controller=1 ORDER BY E.name,S.Label
SELECT DE.controller,DE.nr_cpu,DE.nr_fan,DE.nr_psu,DE.nr_volt,JP.label FROM _disk_enclosure DE INNER JOIN jbod_port JP ON JP.controller=DE.controller
SELECT UC.name||'@'||UC.host,UC.name,UC.host,REPLACE(IFNULL(UH.ups_status,'?'),' ','_'),IFNULL(UC.ups_model,'?'),IFNULL(UH.battery_charge,'?')||' %',IFNULL(UH.battery_runtime,'?')||' min',IFNULL(UH.battery_voltage,'?')||' V' FROM _ups_config UC LEFT JOIN _ups_health UH ON UH.name=UC.name AND UH.host=UC.host
INSERT OR REPLACE INTO _ups_health(name,host,ups_status,battery_charge,battery_runtime,battery_voltage)VALUES('x','x','x','x','x','x')
/*indexed*/SELECT job_id from volume_schedule WHERE job_id=1
SELECT D.id,D.present,D.model,D.serial,D.fw_version,D.rpm,D.sectors,D.capacity,D.volume_id,D.hwif,D.pool_type,D.pool_state,D.pool_hostid,D.controller,D.channel FROM `$disk_info` D INNER JOIN '$volume_spares' VS ON VS.disk_info_id=D.id
INSERT INTO `$volume_spares`(disk_info_id)VALUES('x')
/*indexed*/DELETE FROM `$volume_spares` WHERE disk_info_id='x'
SELECT job_id,volume_id,enabled,action,minute,hour,dayofmonth,month,dayofweek FROM volume_schedule
INSERT INTO volume_schedule(job_id,volume_id,enabled,action,minute,hour,dayofmonth,month,dayofweek)VALUES(1,'x',1,1,'x','x','x','x','x')
/*indexed*/UPDATE volume_schedule SET enabled=1,action=1,minute='x',hour='x',dayofmonth='x',month='x',dayofweek='x' WHERE job_id=1
/*indexed*/DELETE FROM volume_schedule WHERE volume_id='x'
/*indexed*/DELETE FROM volume_schedule WHERE job_id=1

-- src/backup
SELECT B.id,B.name,B.enabled,B.src_type,B.src_share_proto,B.src_path,B.src_login,B.src_password,B.src_port,B.dst_type,B.dst_share_proto,B.dst_path,B.dst_login,B.dst_password,B.dst_port,B.sch_every,B.sch_start,B.sch_end,B.sch_dow,B.opt_full_backup_freq,B.opt_remove_previous_backup,B.opt_chown_to_share_owner,B.opt_rsync_options,B.opt_rsync_exclude,B.opt_email_this_to_alert_email,B.opt_misc_option,B.wol_addr,B.src_eject,B.dst_eject,B.src_type='usb' OR B.src_type='share' AND EXISTS (SELECT 1 FROM share S WHERE S.name=B.src_share_proto AND S.volume_id='media'),B.dst_type='usb' OR B.dst_type='share' AND EXISTS (SELECT 1 FROM share S WHERE S.name=B.dst_share_proto AND S.volume_id='media') FROM backup B
/*indexed*/SELECT B.id,B.name,B.enabled,B.src_type,B.src_share_proto,B.src_path,B.src_login,B.src_password,B.src_port,B.dst_type,B.dst_share_proto,B.dst_path,B.dst_login,B.dst_password,B.dst_port,B.sch_every,B.sch_start,B.sch_end,B.sch_dow,B.opt_full_backup_freq,B.opt_remove_previous_backup,B.opt_chown_to_share_owner,B.opt_rsync_options,B.opt_rsync_exclude,B.opt_email_this_to_alert_email,B.opt_misc_option,B.wol_addr FROM backup B WHERE id=1
SELECT * FROM (SELECT 1,S.name,'share',NULL,S.name,S.path,S.id,S.volume_id='media' FROM share S WHERE S.type='share' UNION SELECT 2,'*','home',NULL,'*',(SELECT '/'||V.lv_name||'/home'),0,0 FROM account_default A INNER JOIN _volume V ON V.id=A.home_volume_id UNION SELECT 3,'T.uname','home',NULL,T.uname,T.home,T.id,0 FROM (SELECT U.uname as uname,U.home as home,U.id as id FROM `$user` U WHERE U.is_privileged=0 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.rid IS NULL AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) LIMIT 500) AS T UNION SELECT 4,V.lv_name,'volume',NULL,V.lv_name,'/'||V.lv_name,V.rowid,0 FROM _volume V WHERE V.lv_name!='USB' AND V.lv_name!='media' UNION SELECT 5,P.proto,'remote',NULL,P.proto,'',P.id,0 FROM backup_protocol P UNION SELECT 6,USB.id,'usb','BACKUP_'||USB.descr,'usb_port_'||USB.port,COALESCE( (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.port,'_',':')||'%'),(SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.alt_port,'_',':')||'%'),''),USB.id,1 FROM usb_port USB UNION SELECT 7,'~timemachine~','timemachine',NULL,'~timemachine~','/c/.timemachine',0,0 FROM `$user` U WHERE U.id=96 AND U.passwd NOT NULL AND U.passwd NOT LIKE '!%') ORDER BY 1,2 COLLATE NOCASE
SELECT * FROM (SELECT 1,S.name,'share',NULL,S.name,S.path,S.id,S.volume_id='media' FROM share S WHERE S.type='share' UNION SELECT 2,T.uname,'home',NULL,T.uname,T.home,T.id,0 FROM (SELECT U.uname as uname,U.home as home,U.id as id FROM `$user` U WHERE U.is_privileged=0 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.rid IS NULL AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) LIMIT 500) AS T UNION SELECT 4,P.proto,'remote',NULL,P.proto,'',P.id,0 FROM backup_protocol P WHERE P.readonly=0 UNION SELECT 5,USB.id,'usb','BACKUP_'||USB.descr,'usb_port_'||USB.port,COALESCE( (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.port,'_',':')||'%'),(SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.alt_port,'_',':')||'%'),''),USB.id,1 FROM usb_port USB) ORDER BY 1,2 COLLATE NOCASE
SELECT * FROM (SELECT 1,S.name,'share',NULL,S.name,S.path,S.id,S.volume_id='media' FROM share S WHERE S.type='share' UNION SELECT 2,'*','home',NULL,'*',(SELECT '/'||V.lv_name||'/home'),0,0 FROM account_default A INNER JOIN _volume V ON V.id=A.home_volume_id UNION SELECT 3,'T.uname','home',NULL,T.uname,T.home,T.id,0 FROM (SELECT U.uname as uname,U.home as home,U.id as id FROM `$user` U WHERE U.is_privileged=0 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.rid IS NOT NULL AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) LIMIT 500) AS T UNION SELECT 4,V.lv_name,'volume',NULL,V.lv_name,'/'||V.lv_name,V.rowid,0 FROM _volume V WHERE V.lv_name!='USB' AND V.lv_name!='media' UNION SELECT 5,P.proto,'remote',NULL,P.proto,'',P.id,0 FROM backup_protocol P UNION SELECT 6,USB.id,'usb','BACKUP_'||USB.descr,'usb_port_'||USB.port,COALESCE( (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.port,'_',':')||'%'),(SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.alt_port,'_',':')||'%'),''),USB.id,1 FROM usb_port USB UNION SELECT 7,'~timemachine~','timemachine',NULL,'~timemachine~','/c/.timemachine',0,0 FROM `$user` U WHERE U.id=96 AND U.passwd NOT NULL AND U.passwd NOT LIKE '!%') ORDER BY 1,2 COLLATE NOCASE
SELECT * FROM (SELECT 1,S.name,'share',NULL,S.name,S.path,S.id,S.volume_id='media' FROM share S WHERE S.type='share' UNION SELECT 2,T.uname,'home',NULL,T.uname,T.home,T.id,0 FROM (SELECT U.uname as uname,U.home as home,U.id as id FROM `$user` U WHERE U.is_privileged=0 AND U.uname<>'nobody' AND U.uname<>'guest' AND U.rid IS NOT NULL AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),(SELECT id FROM `$group` G WHERE G.gname='nogroup')) LIMIT 500) AS T UNION SELECT 4,P.proto,'remote',NULL,P.proto,'',P.id,0 FROM backup_protocol P WHERE P.readonly=0 UNION SELECT 5,USB.id,'usb','BACKUP_'||USB.descr,'usb_port_'||USB.port,COALESCE( (SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.port,'_',':')||'%'),(SELECT US.mount_point FROM usb_storage US WHERE US.usbpath LIKE REPLACE(USB.alt_port,'_',':')||'%'),''),USB.id,1 FROM usb_port USB) ORDER BY 1,2 COLLATE NOCASE
SELECT J.backup_id,B.name FROM backup_button_jobs J INNER JOIN backup B ON B.id=J.backup_id ORDER BY J.`order`
DELETE FROM backup_button_jobs
INSERT INTO backup_button_jobs (`order`,backup_id) VALUES((SELECT IFNULL(MAX(`order`),0)+1 FROM backup_button_jobs),1)
SELECT COALESCE((SELECT 'BACKUP_'||USB.descr FROM usb_port USB WHERE 'usb_port_'||USB.port='x'),(SELECT 'BACKUP_'||USB.descr FROM usb_port USB WHERE 'usb_port_'||USB.alt_port='x'))
/*indexed*/SELECT 1 FROM share S INNER JOIN _volume V ON V.id=S.volume_id WHERE S.name='x'
INSERT OR REPLACE INTO backup(enabled,name,src_type,src_share_proto,src_path,src_login,src_password,src_port,src_eject,dst_type,dst_share_proto,dst_path,dst_login,dst_password,dst_port,dst_eject,sch_every,sch_start,sch_end,sch_dow,opt_full_backup_freq,opt_remove_previous_backup,opt_chown_to_share_owner,opt_rsync_options,opt_rsync_exclude,opt_email_this_to_alert_email,opt_misc_option,wol_addr)VALUES(1,'x','x','x','x','x','x',1,1,'x','x','x','x','x',1,1,1,1,1,1,'x',1,1,1,'x',1,1,'x')
/*indexed*/SELECT B.dst_type,B.dst_path FROM backup B WHERE id=1
/*indexed*/UPDATE backup SET name='x',src_type='x',src_share_proto='x',src_path='x',src_login='x',src_password='x',src_port=1,src_eject=1,dst_type='x',dst_share_proto='x',dst_path='x',dst_login='x',dst_password='x',dst_port=1,dst_eject=1,enabled=1,sch_every=1,sch_start=1,sch_end=1,sch_dow=1,opt_full_backup_freq='x',opt_remove_previous_backup=1,opt_chown_to_share_owner=1,opt_rsync_options=1,opt_rsync_exclude='x',opt_email_this_to_alert_email=1,opt_misc_option=1,wol_addr='x' WHERE id=1
/*indexed*/SELECT B.name FROM backup B WHERE id=1
/*indexed*/DELETE FROM backup WHERE id=1
DELETE FROM backup_button_jobs WHERE backup_id=1

-- src/netif
SELECT N.name,N.mac,N.protocol,N.ip,N.dns1,N.dns2,N.gateway,N.subnet FROM network_if N ORDER BY N.name COLLATE NOCASE
/*indexed*/SELECT N.name,N.mac,N.protocol,N.ip,N.dns1,N.dns2,N.gateway,N.subnet FROM network_if N WHERE N.name='x'
INSERT INTO network_if (name,mac,protocol,ip,dns1,dns2,gateway,subnet) VALUES('x','x','x','x','x','x','x','x')
/*indexed*/UPDATE network_if SET mac='x',protocol='x',ip='x',dns1='x',dns2='x',gateway='x' WHERE Name='x'
/*indexed*/DELETE FROM network_if WHERE name='x'

-- src/log
INSERT INTO `$log`(tstamp,severity,category,msg_tag,msg_args_xml)VALUES(1,'x','x','x','x')
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE 1<tstamp AND tstamp<2
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE 1<tstamp
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE tstamp<1
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE severity IN ('warning','err','crit','alert','emerg')
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE category IN ('share','account')
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE 1<tstamp AND tstamp<2 AND severity IN ('err','crit','alert','emerg') AND category IN ('disk')
/*indexed*/SELECT COUNT(*) FROM `$log` L WHERE msg_tag='x'
SELECT COUNT(*) FROM `$log` L
/*indexed*/SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE 1<tstamp AND tstamp<2 ORDER BY L.id DESC LIMIT 10,20
SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE 1<tstamp ORDER BY L.id DESC LIMIT 10,20
SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE tstamp<1 ORDER BY L.id DESC LIMIT 10,20
/*indexed*/SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE severity IN ('warning','err','crit','alert','emerg') ORDER BY L.id DESC LIMIT 10,20
/*indexed*/SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE category IN ('share','account') ORDER BY L.id DESC LIMIT 10,20
/*indexed*/SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE 1<tstamp AND tstamp<2 AND severity IN ('err','crit','alert','emerg') AND category IN ('disk') ORDER BY L.id DESC LIMIT 10,20
/*indexed*/SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L WHERE msg_tag='x' ORDER BY L.id DESC LIMIT 10,20
SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L ORDER BY L.id ASC
SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L ORDER BY L.id DESC LIMIT 10,20
/*indexed*/DELETE FROM `$log` WHERE 1<tstamp AND tstamp<2
/*indexed*/DELETE FROM `$log` WHERE 1<tstamp
/*indexed*/DELETE FROM `$log` WHERE tstamp<1
/*indexed*/DELETE FROM `$log` WHERE severity IN ('warning','err','crit','alert','emerg')
/*indexed*/DELETE FROM `$log` WHERE category IN ('share','account')
/*indexed*/DELETE FROM `$log` WHERE 1<tstamp AND tstamp<2 AND severity IN ('err','crit','alert','emerg') AND category IN ('disk')
DELETE FROM `$log`
DELETE FROM `$log` WHERE tstamp < (SELECT tstamp FROM `$log` ORDER BY tstamp DESC LIMIT 1 OFFSET 1)

-- src/iscsi
/*indexed*/SELECT DISTINCT L.initiator FROM `$iscsi_lun_group_access` L WHERE L.lun_group='x'
INSERT INTO `$iscsi_lun_group_access` VALUES ('x','x')
/*indexed*/DELETE FROM `$iscsi_lun_group_access` WHERE lun_group='x'
/*indexed*/DELETE FROM `$iscsi_lun_group_access` WHERE initiator='x'
SELECT L.name,L.target,L.all_hosts,L.chap_auth,L.chap_secret FROM `$iscsi_lun_group` L ORDER BY L.name COLLATE NOCASE
/*indexed*/SELECT L.name,L.target,L.all_hosts,L.chap_auth,L.chap_secret FROM `$iscsi_lun_group` L WHERE L.name='x'
INSERT INTO `$iscsi_lun_group` (name,target,all_hosts,chap_auth,chap_secret) VALUES ('x','x',1,1,'x')
/*indexed*/UPDATE `$iscsi_lun_group` SET target='x',all_hosts=1,chap_auth=1,chap_secret='x' WHERE name='x'
/*indexed*/DELETE FROM `$iscsi_lun_group` WHERE name='x'
SELECT I.name,I.chap_auth,I.chap_secret FROM `$iscsi_initiator` I ORDER BY I.name COLLATE NOCASE
/*indexed*/SELECT I.name,I.chap_auth,I.chap_secret FROM `$iscsi_initiator` I WHERE I.name='x'
INSERT INTO `$iscsi_initiator` (name,chap_auth,chap_secret) VALUES ('x',1,'x')
/*indexed*/UPDATE `$iscsi_initiator` SET chap_auth=1,chap_secret='x' WHERE name='x'
/*indexed*/DELETE FROM `$iscsi_initiator` WHERE name='x'
/*indexed*/SELECT LUN.name,LUN.lun_group,LUN.lun_n FROM `$iscsi_lun` LUN WHERE LUN.name='x'
INSERT INTO `$iscsi_lun` (name,lun_group,lun_n) VALUES ('x','x',1)
/*indexed*/DELETE FROM `$iscsi_lun` WHERE name='x'

-- src/dictionary
/*indexed*/SELECT CASE WHEN val='auto' THEN IFNULL('x','en-us') ELSE val END FROM service_misc WHERE key='PANELVIEWLOCALE'
SELECT lang,spell FROM _lang_supported ORDER BY id
/*indexed*/SELECT EN.id,IFNULL(D.str,EN.str) FROM (SELECT id,str FROM _dictionary WHERE lang_id=(SELECT id FROM _lang_supported WHERE lang='en-us')) AS EN LEFT JOIN _dictionary D ON D.id=EN.id AND D.lang_id=(SELECT id FROM _lang_supported WHERE lang='x')
SELECT IFNULL((SELECT id FROM _lang_supported WHERE lang='x'),(SELECT id FROM _lang_supported WHERE lang='en-us'))
/*indexed*/SELECT COALESCE((SELECT D.str FROM _dictionary D WHERE D.lang_id=1 AND D.id='x'),(SELECT EN.str FROM _dictionary EN WHERE EN.lang_id=(SELECT L.id FROM _lang_supported L WHERE L.lang='en-us') AND EN.id='x'),'x')
