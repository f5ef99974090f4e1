-- Shares, their options by protocol, access lists, quotas and in-use markers.
--
-- The remover of a share deletes the rows of the tables that refer to it with a foreign key before the share itself.
-- Process markers and the DLNA, DAAP and rsync rows outlive their share and therefore have no foreign key; share ids
-- are never given twice, so such a row cannot attach itself to a later share.

-- Shared folders and block volumes. Owner: src/share.
CREATE TABLE share (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    zfs_name TEXT NOT NULL UNIQUE,            -- dataset: volume, "/", share name; the share's outside identifier
    type TEXT NOT NULL DEFAULT 'share',       -- share, zvol or replicate
    name TEXT NOT NULL COLLATE NOCASE UNIQUE,
    comment TEXT DEFAULT '',
    visible_snapdir TEXT,                     -- folder that shows the snapshots; NULL: not shown
    volume_id TEXT NOT NULL,
    usb_storage_id INTEGER,                   -- set when the share lies on a USB storage
    path TEXT NOT NULL,
    user_access INTEGER DEFAULT 7,            -- owner's permission bits: 4 read, 2 write, 1 enter
    group_access INTEGER DEFAULT 7,
    everyone_access INTEGER DEFAULT 7,
    non_owner_delete INTEGER DEFAULT 1,       -- 0/1: others may delete what they do not own
    user_id INTEGER,                          -- owner
    group_id INTEGER,
    migrate_to_volume_id TEXT,                -- destination of a pending migration, else NULL
    update_ts TEXT NOT NULL DEFAULT CURRENT_TIMESTAMP -- UTC time of the row's last change
);
CREATE INDEX share_volume ON share (volume_id);
CREATE INDEX share_path ON share (path);
CREATE INDEX share_folder ON share (path COLLATE NOCASE); -- of what lies below or above, letters of any case
CREATE INDEX share_migrating ON share (migrate_to_volume_id) WHERE migrate_to_volume_id IS NOT NULL;

-- update_ts is not among the columns that fire it, so the trigger cannot fire itself.
CREATE TRIGGER share_touch AFTER UPDATE OF zfs_name, type, name, comment, visible_snapdir, volume_id, usb_storage_id,
    path, user_access, group_access, everyone_access, non_owner_delete, user_id, group_id, migrate_to_volume_id ON share
BEGIN
    UPDATE share SET update_ts = CURRENT_TIMESTAMP WHERE id = NEW.id;
END;

-- Storage attributes of a share's dataset. Owner: src/share.
CREATE TABLE zfs_attr (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    mb_quota INTEGER,                         -- MB, as the three below
    mb_reservation INTEGER,
    mb_refquota INTEGER,
    mb_refreservation INTEGER,
    compression INTEGER,
    bit_rot_protection INTEGER,
    dedup INTEGER,
    logbias TEXT,
    origin TEXT,
    sync TEXT                                 -- standard, always or disabled; NULL is standard
);

-- Space figures of a share's dataset, in bytes. Owner: the storage side fills it; src/share reads it.
CREATE TABLE _zfs_stat (
    share_id INTEGER PRIMARY KEY,
    available INTEGER,
    used INTEGER,
    usedbychildren INTEGER,
    usedbydataset INTEGER,
    usedbyrefreservation INTEGER,
    usedbysnapshots INTEGER,
    compressratio TEXT,
    referenced INTEGER
);

-- SMB options. Access columns of all protocols hold writeable, readonly or disabled. Owner: src/share.
CREATE TABLE cifs_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    available INTEGER DEFAULT 1,              -- 0/1
    cifs_access TEXT DEFAULT 'writeable',
    cifs_guest_access INTEGER DEFAULT 1,      -- 0/1
    cifs_hide_share INTEGER DEFAULT 0,
    cifs_recycle INTEGER DEFAULT 1,           -- 0/1
    cifs_recycle_mb_limit INTEGER DEFAULT 25000,
    cifs_recycle_age_limit INTEGER DEFAULT 0,
    cifs_enable_masks INTEGER DEFAULT 1,      -- 0/1
    cifs_group_create_mask INTEGER DEFAULT 6, -- permission bits given to new files and folders
    cifs_everyone_create_mask INTEGER DEFAULT 6,
    cifs_group_directory_mask INTEGER DEFAULT 7,
    cifs_everyone_directory_mask INTEGER DEFAULT 7,
    cifs_enable_forced_minimum INTEGER DEFAULT 1023,
    oplocks INTEGER DEFAULT 0,                -- 0/1
    cifs_enabledfs INTEGER DEFAULT 0          -- 0/1
);

-- DFS links of a share: a folder that leads to a share of another server, or of several. Owner: src/share.
CREATE TABLE cifs_dfs_option (
    share_id INTEGER NOT NULL REFERENCES share (id),
    volume TEXT,
    share TEXT,
    folder TEXT,
    address TEXT,
    remote_share TEXT
);
CREATE INDEX cifs_dfs_option_share ON cifs_dfs_option (share_id);

-- AFP options. Owner: src/share.
CREATE TABLE afp_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    available INTEGER DEFAULT 1,              -- 0/1
    afp_access TEXT DEFAULT 'writeable',
    afp_guest_access INTEGER DEFAULT 1,       -- 0/1
    afp_fperm INTEGER,                        -- mode bits of new files, NULL: not set
    afp_dperm INTEGER                         -- mode bits of new folders, NULL: not set
);

-- NFS options. Owner: src/share.
CREATE TABLE nfs_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    available INTEGER DEFAULT 1,              -- 0/1
    nfs_access TEXT DEFAULT 'writeable',
    nfs_sync INTEGER DEFAULT 1                -- 0/1
);

-- FTP options. One statement inserts by position: the number and the order of the columns are fixed. Owner: src/share.
CREATE TABLE ftp_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    available INTEGER DEFAULT 1,              -- 0/1
    ftp_access TEXT DEFAULT 'writeable',
    ftp_mask INTEGER DEFAULT 0,               -- 0/1: the two umasks below apply
    ftp_create_mask INTEGER DEFAULT 0,
    ftp_directory_mask INTEGER DEFAULT 0
);

-- HTTP options. Owner: src/share.
CREATE TABLE http_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    available INTEGER DEFAULT 1,              -- 0/1
    http_access TEXT DEFAULT 'writeable',
    http_webdav INTEGER DEFAULT 0             -- 0/1
);

-- Size of a block volume. Owner: src/share.
CREATE TABLE zvol_share_option (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    kb_size INTEGER,
    is_sparse INTEGER DEFAULT 0               -- 0/1
);

-- DLNA options; outlives its share. Owner: src/share.
CREATE TABLE dlna_share_option (
    share_id INTEGER PRIMARY KEY,
    available INTEGER DEFAULT 1,              -- 0/1
    access TEXT DEFAULT 'readonly',
    media_type INTEGER DEFAULT 7              -- 1 audio, 2 video, 4 images, added up
);

-- DAAP options; outlives its share. Owner: src/share.
CREATE TABLE daap_share_option (
    share_id INTEGER PRIMARY KEY,
    available INTEGER DEFAULT 1               -- 0/1
);

-- rsync options; outlives its share. Owner: src/share.
CREATE TABLE rsync_share_option (
    share_id INTEGER PRIMARY KEY,
    available INTEGER DEFAULT 1,              -- 0/1
    rsync_access TEXT DEFAULT 'writeable',
    passwordprotection TEXT DEFAULT 'disabled' -- enabled or disabled
);

-- rsync credentials of a share; outlives its share. Owner: src/share. The key ends with the share, here and below, so
-- that a share's rows are read by the second index, in the order of their insertion.
CREATE TABLE rsync_user_password_acl (
    share_id INTEGER NOT NULL,
    user TEXT NOT NULL,
    password TEXT,
    PRIMARY KEY (user, share_id)
);
CREATE INDEX rsync_user_password_acl_share ON rsync_user_password_acl (share_id);

-- What a user may do on a share over a protocol; proto is the protocol's word. Owner: src/share.
CREATE TABLE user_acl (
    share_id INTEGER NOT NULL,
    user_id INTEGER NOT NULL,
    proto TEXT NOT NULL,
    read INTEGER,                             -- 0/1
    write INTEGER,                            -- 0/1
    PRIMARY KEY (share_id, proto, user_id)
);
CREATE INDEX user_acl_user ON user_acl (user_id);

-- What a group may do on a share over a protocol; stays when the group is deleted. Owner: src/share.
CREATE TABLE group_acl (
    share_id INTEGER NOT NULL,
    group_id INTEGER NOT NULL,
    proto TEXT NOT NULL,
    read INTEGER,                             -- 0/1
    write INTEGER,                            -- 0/1
    PRIMARY KEY (share_id, proto, group_id)
);

-- Hosts and networks that access lists name; never deleted. Owner: src/share.
CREATE TABLE host (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
);

-- What a host may do on a share over a protocol; rsync rows outlive their share. Owner: src/share.
CREATE TABLE host_acl (
    share_id INTEGER NOT NULL,
    host_id INTEGER NOT NULL REFERENCES host (id),
    proto TEXT NOT NULL,
    read INTEGER,                             -- 0/1
    write INTEGER,                            -- 0/1
    root INTEGER DEFAULT 0,                   -- 0/1
    PRIMARY KEY (host_id, share_id, proto)
);
CREATE INDEX host_acl_share ON host_acl (share_id, proto);
