-- What the schema itself must refuse or let pass. The lines run in this order on one fresh database, foreign keys on. /*refused*/: the
-- statement must break a constraint; /*accepted*/: it must succeed; /*true*/: its one value must be 1.

-- A setting is one row
/*refused*/INSERT INTO service_ftp DEFAULT VALUES
/*refused*/INSERT INTO account_default DEFAULT VALUES
/*true*/SELECT COUNT(*)=0 FROM `$qubrixd`
/*accepted*/INSERT INTO `$qubrixd` DEFAULT VALUES
/*refused*/INSERT INTO `$qubrixd` DEFAULT VALUES

-- Factory values satisfy the checks that guard them
/*true*/SELECT passive_range_min BETWEEN 32768 AND passive_range_max AND passive_range_max<=65535 AND port=21 AND auth_mode='user' FROM service_ftp
/*true*/SELECT diskquota_warn BETWEEN 1 AND 99 AND next_uid=100 AND EXISTS (SELECT 1 FROM `$group` G WHERE G.id=A.group_id AND G.is_privileged=0) FROM account_default A
/*true*/SELECT MAX(id)<100 AND COUNT(*)=SUM(is_privileged=1) AND COUNT(*)=SUM(substr(passwd,1,1)='!') FROM `$user`
/*true*/SELECT COUNT(*)=0 FROM `$user` U WHERE NOT EXISTS (SELECT 1 FROM `$group` G WHERE G.id=U.group_id)
/*true*/SELECT (SELECT COUNT(*) FROM `$user` WHERE id=96 AND uname='Qubrix')+(SELECT COUNT(*) FROM `$timemachine_quota` WHERE user_id=96 AND enabled=0)=2
/*true*/SELECT (SELECT group_id FROM `$user` WHERE uname='guest')=(SELECT id FROM `$group` WHERE gname='guest')

-- Share names are unique without regard to case; a share needs its volume
/*accepted*/INSERT INTO _volume (id,lv_name) VALUES('data','data')
/*accepted*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/Docs','Docs','data','/data/Docs')
/*refused*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/docs','docs','data','/data/docs')
/*refused*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/Docs','Other','data','/data/Docs')
/*refused*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES((SELECT lv_name||'/x' FROM _volume WHERE id='none'),'x','none',(SELECT '/'||lv_name||'/x' FROM _volume WHERE id='none'))
/*refused*/UPDATE share SET volume_id=migrate_to_volume_id,path=(SELECT '/'||V.lv_name||'/'||name FROM _volume V WHERE V.id=migrate_to_volume_id),zfs_name=migrate_to_volume_id||'/'||name,migrate_to_volume_id=NULL WHERE zfs_name='data/Docs'
/*true*/SELECT COUNT(*)=1 FROM share WHERE name='DOCS'

-- The time of the last change follows every change, and only the change itself is counted
/*accepted*/UPDATE share SET update_ts='2000-01-01 00:00:00'
/*true*/SELECT update_ts='2000-01-01 00:00:00' FROM share
/*accepted*/UPDATE share SET comment='new' WHERE id=1
/*true*/SELECT changes()=1
/*true*/SELECT update_ts>'2001' FROM share

-- Rows that name a share which is not there
/*refused*/INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(100,(SELECT S.id FROM share S WHERE zfs_name='none'),1,1)
/*refused*/INSERT OR REPLACE INTO group_quota (group_id,share_id,mb_soft,mb_hard) VALUES(100,(SELECT S.id FROM share S WHERE zfs_name='none'),1,1)
/*refused*/INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking) VALUES((SELECT S.id FROM `share` S WHERE S.zfs_name='none'),1,1)
/*refused*/INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES((SELECT S.zfs_name FROM share S WHERE S.zfs_name='none'),'app','x')
/*refused*/INSERT INTO `$snapshot`(zfs_name,name,type,created_on)VALUES((SELECT S.zfs_name FROM share S WHERE S.id=77),'s',1,1)
/*refused*/INSERT INTO `$snapshot`(zfs_name,name,type,created_on)VALUES('data/Docs',NULL,1,1)

-- Options that are made on the way of a change
/*accepted*/INSERT OR IGNORE INTO afp_share_option (share_id,afp_access,afp_guest_access) VALUES(1,'writeable',1)
/*true*/SELECT available=1 AND afp_fperm IS NULL FROM afp_share_option WHERE share_id=1
/*accepted*/INSERT OR IGNORE INTO ftp_share_option VALUES(1,0,'writeable',0,0,0)
/*true*/SELECT available=0 AND ftp_access='writeable' AND ftp_mask=0 FROM ftp_share_option WHERE share_id=1
/*accepted*/INSERT OR IGNORE INTO nfs_share_option (share_id,nfs_access) VALUES(1,'writeable')
/*true*/SELECT available=1 AND nfs_sync=1 FROM nfs_share_option WHERE share_id=1

-- What OR REPLACE replaces
/*accepted*/INSERT OR IGNORE INTO `host` (name) VALUES('10.0.0.1')
/*accepted*/INSERT OR IGNORE INTO `host` (name) VALUES('10.0.0.1')
/*accepted*/INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) VALUES(1,1,'nfs',1,0,0)
/*accepted*/INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) VALUES(1,1,'nfs',1,1,1)
/*accepted*/INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) VALUES(1,1,'rsync',1,0,0)
/*true*/SELECT COUNT(*)=2 AND SUM(root)=1 FROM host_acl
/*accepted*/INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking) VALUES(1,7,0)
/*accepted*/INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking) VALUES(1,7,2)
/*true*/SELECT COUNT(*)=1 AND SUM(blocking)=2 AND ABS(STRFTIME('%s','now')-STRFTIME('%s',ts))<60 FROM process_on_share
/*accepted*/INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES('data/Docs','app','1')
/*accepted*/INSERT OR REPLACE INTO `$application_on_share` (zfs_name,app_name,app_data) VALUES('data/Docs','app','2')
/*true*/SELECT COUNT(*)=1 AND MAX(app_data)='2' FROM `$application_on_share`
/*accepted*/INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(100,1,1,1)
/*accepted*/INSERT OR REPLACE INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES(100,1,2,2)
/*true*/SELECT COUNT(*)=1 AND SUM(mb_hard)=2 FROM user_quota
/*accepted*/INSERT OR REPLACE INTO backup(enabled,name) VALUES(1,'nightly')
/*refused*/INSERT OR REPLACE INTO backup(enabled,name) VALUES(0,'nightly')
/*accepted*/INSERT OR REPLACE INTO backup(enabled,name) VALUES(1,'weekly')
/*refused*/UPDATE backup SET name='nightly' WHERE name='weekly'
/*true*/SELECT COUNT(*)=2 AND SUM(enabled)=2 FROM backup

-- Rows are copied from one share to another
/*accepted*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/Copy','Copy','data','/data/Copy')
/*accepted*/CREATE TEMPORARY TABLE `_host_acl` AS SELECT * FROM `host_acl` WHERE share_id=1
/*accepted*/UPDATE `_host_acl` SET share_id=2
/*accepted*/INSERT INTO `host_acl` SELECT * FROM `_host_acl`
/*accepted*/CREATE TEMPORARY TABLE `_user_quota` AS SELECT * FROM `user_quota` WHERE share_id=1
/*accepted*/UPDATE `_user_quota` SET share_id=2
/*accepted*/INSERT INTO `user_quota` SELECT * FROM `_user_quota`
/*true*/SELECT (SELECT COUNT(*) FROM host_acl WHERE share_id=2)=2 AND (SELECT mb_hard FROM user_quota WHERE share_id=2)=2

-- Account names: local ones without regard to case, directory ones to the letter, one of each kind side by side
/*accepted*/INSERT INTO `$user` (id,uname,is_privileged) VALUES(100,'bob',0)
/*refused*/INSERT INTO `$user` (id,uname,is_privileged) VALUES(101,'BOB',0)
/*refused*/INSERT INTO `$user` (id,uname,is_privileged) VALUES(100,'ann',0)
/*accepted*/INSERT INTO `$user` (id,uname,is_privileged,rid) VALUES(-5,'bob',0,1105)
/*accepted*/INSERT INTO `$user` (id,uname,is_privileged,rid) VALUES(-6,'Bob',0,1106)
/*refused*/INSERT INTO `$user` (id,uname,is_privileged,rid) VALUES(-7,'bob',0,1107)
/*accepted*/UPDATE `$user` SET is_privileged=-1 WHERE id=100
/*refused*/INSERT INTO `$user` (id,uname,is_privileged) VALUES(102,'bob',0)
/*accepted*/UPDATE `$user` SET group_id=(SELECT G.id FROM `$group` G WHERE G.gname='none' AND G.rid IS NULL) WHERE uname='bob' AND rid IS NULL
/*true*/SELECT group_id IS NULL FROM `$user` WHERE id=100
/*refused*/INSERT INTO `$group` (id,gname,is_privileged) VALUES(100,'USERS',0)
/*accepted*/INSERT INTO `$group` (id,gname,is_privileged,rid) VALUES(-9,'users',0,513)
/*accepted*/INSERT INTO `$group_has_user` (user_id,group_id) VALUES(100,99)
/*refused*/INSERT INTO `$group_has_user` (user_id,group_id) VALUES(100,99)
/*accepted*/INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(1,20000,'cifs',1,0)
/*refused*/INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(1,20000,'cifs',1,1)

-- Rows that may stand twice, and rows that may not
/*accepted*/INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) VALUES('bob','/home/bob','s')
/*accepted*/INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) VALUES('bob','/home/bob','s')
/*accepted*/INSERT INTO `$iscsi_lun_group_access` VALUES ('g','i')
/*accepted*/INSERT INTO `$iscsi_lun_group_access` VALUES ('g','i')
/*accepted*/INSERT INTO _ups_config (name,host,port,type) VALUES('a','localhost','auto','local')
/*accepted*/INSERT INTO _ups_config (name,host,port,type) VALUES('b','localhost','10.0.0.9','snmp')
/*refused*/INSERT INTO _ups_config (name,host,port,type) VALUES('c','localhost',NULL,'snmp')
/*accepted*/UPDATE _ups_config SET enabled=1,name='c',description='',shutdown_threshold=5
/*accepted*/INSERT INTO `$snapshot_clones`(cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES ('Copy','s1','Docs')
/*refused*/INSERT INTO `$snapshot_clones`(cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES ('copy','s2','Docs')
/*refused*/INSERT INTO network_if (name) SELECT 'eth0' UNION ALL SELECT 'eth0'

-- A share goes after its options; what outlives it cannot come back with a later share
/*accepted*/INSERT INTO dlna_share_option (share_id,available,access,media_type) VALUES(2,1,'readonly',7)
/*accepted*/INSERT OR REPLACE INTO `process_on_share` (share_id,pid,blocking) VALUES(2,8,0)
/*refused*/DELETE FROM share WHERE id=2
/*accepted*/DELETE FROM user_quota WHERE share_id=2
/*accepted*/DELETE FROM share WHERE id=2
/*true*/SELECT (SELECT COUNT(*) FROM dlna_share_option)+(SELECT COUNT(*) FROM process_on_share WHERE share_id=2)=2
/*accepted*/INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/Copy','Copy','data','/data/Copy')
/*true*/SELECT id>2 FROM share WHERE name='Copy'
