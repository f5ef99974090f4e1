-- The rows of a fresh appliance. Values that are not named are the columns' defaults.

INSERT INTO service_misc (key, val) VALUES
    ('LANGUAGE', 'en-us'),
    ('LANGUAGES_SUPPORTED', 'en-us/utf-8,de-de/utf-8,es-es/utf-8,fr-fr/utf-8,it-it/utf-8,ja-jp/utf-8'),
    ('PANELVIEWLOCALE', 'auto'),
    ('ANTIVIRUS', '0'),
    ('SKYPORT', '0'),
    ('APPSPRITE', '0'),
    ('QUBRIXVAULT', '0'),
    ('QUBRIXVAULT_TEP_FOLDER', NULL);

INSERT INTO system_config DEFAULT VALUES;
INSERT INTO account_default DEFAULT VALUES;
INSERT INTO passwordrecovery DEFAULT VALUES;
INSERT INTO _ads_importer DEFAULT VALUES;

INSERT INTO service_cifs DEFAULT VALUES;
INSERT INTO service_afp DEFAULT VALUES;
INSERT INTO service_nfs DEFAULT VALUES;
INSERT INTO service_ftp DEFAULT VALUES;
INSERT INTO service_daap DEFAULT VALUES;
INSERT INTO service_snmp DEFAULT VALUES;
INSERT INTO service_ssh DEFAULT VALUES;
INSERT INTO service_replicate DEFAULT VALUES;
INSERT INTO service_smartnetwork DEFAULT VALUES;
INSERT INTO service_upnpd DEFAULT VALUES;
INSERT INTO service_rsync DEFAULT VALUES;
INSERT INTO service_dlna DEFAULT VALUES;
INSERT INTO service_http DEFAULT VALUES;
INSERT INTO service_https DEFAULT VALUES;
INSERT INTO service_avahi DEFAULT VALUES;
INSERT INTO service_upsd DEFAULT VALUES;

-- Fixed groups. 99 is the primary group of people and listed like a group of theirs; 98 is the cloud-access group.
INSERT INTO `$group` (id, gname, is_privileged) VALUES
    (0, 'root', 1),
    (94, 'nogroup', 1),
    (95, 'admin', 1),
    (97, 'guest', 1),
    (98, 'sky-port', 1),
    (99, 'users', 0);

-- Fixed accounts, none with a password. 96 is the account of the shared Time Machine area.
INSERT INTO `$user` (id, uname, passwd, email, home, group_id, shell, is_privileged, last_changed, fullname) VALUES
    (0, 'root', '!', '', '/root', 0, '/bin/sh', 1, STRFTIME('%s', 'now') / 86400, ''),
    (94, 'nobody', '!', '', '/', 94, '/bin/false', 1, STRFTIME('%s', 'now') / 86400, ''),
    (95, 'admin', '!', '', '/', 95, '/bin/false', 1, STRFTIME('%s', 'now') / 86400, ''),
    (96, 'Qubrix', '!', '', '/', 94, '/bin/false', 1, STRFTIME('%s', 'now') / 86400, ''),
    (97, 'guest', '!', '', '/', 97, '/bin/false', 1, STRFTIME('%s', 'now') / 86400, '');

INSERT INTO `$timemachine_quota` (user_id) VALUES (96);
INSERT INTO `$home_folder_snapshot_schedule` (share_id) VALUES (0);

INSERT INTO backup_protocol (id, proto, readonly) VALUES
    (1, 'rsync', 0),
    (2, 'cifs', 0),
    (3, 'nfs', 0),
    (4, 'ftp', 0),
    (5, 'http', 1);

INSERT INTO _lang_supported (id, lang, spell) VALUES (1, 'en-us', 'English');

INSERT INTO _dictionary (lang_id, id, str) VALUES
    (1, 'LOGMSG_UNKNOWN', 'Unknown event.'),
    (1, 'LOGMSG_SYSTEM_STARTED', 'The system has started.'),
    (1, 'LOGMSG_SYSTEM_STOPPED', 'The system is shutting down.'),
    (1, 'LOGMSG_SHARE_CREATED', 'A share was created.'),
    (1, 'LOGMSG_SHARE_DELETED', 'A share was deleted.'),
    (1, 'LOGMSG_USER_CREATED', 'A user was created.'),
    (1, 'LOGMSG_USER_DELETED', 'A user was deleted.'),
    (1, 'LOGMSG_BACKUP_DONE', 'A backup job has ended.'),
    (1, 'LOGMSG_BACKUP_FAILED', 'A backup job has failed.'),
    (1, 'LOGMSG_DISK_FAILED', 'A disk has failed.');
