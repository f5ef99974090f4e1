-- Settings of the network services. Each table is one row (id is fixed to 1) unless it says otherwise; the defaults of
-- the columns are those of a fresh appliance. Switches are 0/1.

-- SMB service and the directory domain that accounts come from. Owner: src/service; the security columns src/account.
CREATE TABLE service_cifs (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 1,
    user_home_directory INTEGER DEFAULT 1,
    user_home_directory_recycle INTEGER DEFAULT 0,
    user_home_directory_recycle_max_days INTEGER DEFAULT 0,
    user_home_directory_recycle_max_size INTEGER DEFAULT 0,
    security TEXT DEFAULT 'user',             -- user: local accounts, ads: directory accounts
    workgroup TEXT DEFAULT 'WORKGROUP',
    realm TEXT DEFAULT '',
    orgunit TEXT DEFAULT '',
    restrict_ou TEXT DEFAULT '',
    no_sync_ads INTEGER DEFAULT 0,            -- 1: directory accounts are not mirrored into `$user` and `$group`
    domain_admin_user TEXT DEFAULT '',
    password_server TEXT DEFAULT '',
    allow_trusted_domains INTEGER DEFAULT 0,
    domain_sid TEXT DEFAULT '',
    domain_admin_gid INTEGER,
    domain_admin_uid INTEGER
);

-- AFP service and the Time Machine area that it serves. Owner: src/service.
CREATE TABLE service_afp (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    user_home_directory INTEGER DEFAULT 0,
    timemachine_enabled INTEGER DEFAULT 0,
    volume_timemachine TEXT,                  -- volume of the area; NULL: the home volume
    vol_size_limit_timemachine_mb INTEGER DEFAULT 0
);

-- NFS service. Owner: src/service.
CREATE TABLE service_nfs (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    threads INTEGER DEFAULT 8,
    user_home_directory INTEGER DEFAULT 0,
    nfsv4 INTEGER DEFAULT 0,
    domain TEXT DEFAULT ''                    -- NFSv4 domain
);

-- FTP service. Owner: src/service.
CREATE TABLE service_ftp (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    port INTEGER DEFAULT 21,
    auth_mode TEXT DEFAULT 'user',            -- anonymous or user
    passive_range_min INTEGER DEFAULT 49152,
    passive_range_max INTEGER DEFAULT 65534,
    enable_masquerade INTEGER DEFAULT 0,
    masquerade TEXT DEFAULT '',               -- address announced in passive mode
    upload_resume INTEGER DEFAULT 0,
    user_home_directory INTEGER DEFAULT 0,
    ftps INTEGER DEFAULT 0,
    force_ftps INTEGER DEFAULT 0,
    server_transfer_log INTEGER DEFAULT 0,
    max_upload_rate INTEGER DEFAULT 0,        -- 0: no limit
    max_download_rate INTEGER DEFAULT 0
);

-- DAAP (music streaming) service. Owner: src/service.
CREATE TABLE service_daap (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    sharename TEXT DEFAULT 'Music',
    password TEXT DEFAULT '',                 -- plain
    directory TEXT DEFAULT ''
);

-- SNMP service. Owner: src/service.
CREATE TABLE service_snmp (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    allow_host TEXT DEFAULT 'default',        -- hosts and networks, separated by commas; default: everyone
    community TEXT DEFAULT 'public',
    trap_destination TEXT DEFAULT ''          -- addresses, separated by commas
);

-- SSH service. Owner: src/service.
CREATE TABLE service_ssh (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    port INTEGER DEFAULT 22,
    ui_enabled INTEGER DEFAULT 0              -- the switch that the user interface shows
);

-- Replication service. Owner: src/service; the platform refreshes it.
CREATE TABLE service_replicate (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    owner TEXT DEFAULT '',
    priv_data TEXT DEFAULT ''
);

-- Smart network service. Owner: src/service.
CREATE TABLE service_smartnetwork (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0
);

-- UPnP service. Owner: src/service.
CREATE TABLE service_upnpd (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0
);

-- rsync service. Owner: src/service.
CREATE TABLE service_rsync (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0
);

-- DLNA service and the TiVo services beside it. Owner: src/service.
CREATE TABLE service_dlna (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    inotify INTEGER DEFAULT 1,                -- rescan when files change
    enable_tivo_server INTEGER DEFAULT 0,
    enable_tivo_archiver INTEGER DEFAULT 0,
    user_home_directory INTEGER DEFAULT 0
);

-- HTTP service. Owner: src/service; src/share clears the name of a share that goes.
CREATE TABLE service_http (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    use_password INTEGER DEFAULT 1,
    share_name TEXT COLLATE NOCASE DEFAULT '', -- share served as the web root
    http_admin INTEGER DEFAULT 1
);

-- HTTPS service, always on. Owner: src/service.
CREATE TABLE service_https (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    port INTEGER DEFAULT 0,                   -- additional port, 0: none
    ssl_key_host TEXT DEFAULT 'localhost'     -- host name of the certificate
);

-- What is advertised over multicast DNS. Owner: src/service.
CREATE TABLE service_avahi (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 1,
    cifs INTEGER DEFAULT 1,
    afp INTEGER DEFAULT 0,
    panelview INTEGER DEFAULT 1,
    printer INTEGER DEFAULT 0,
    qubrix INTEGER DEFAULT 1,
    timemachine INTEGER DEFAULT 0
);

-- Login to the off-site backup service, no or one row; replaced as a whole. Owner: src/service.
CREATE TABLE service_vault (
    enabled INTEGER,
    name TEXT,                                -- e-mail address
    password TEXT,                            -- plain
    defaultjob TEXT
);

-- Schedule and target folder of the TiVo archiver, no or one row; replaced as a whole. Owner: src/service.
CREATE TABLE service_tivo (
    hour TEXT,
    minute TEXT,
    path TEXT,
    days TEXT
);

-- Media access keys of the TiVo devices. Owner: src/service.
CREATE TABLE tivo_mak (
    name TEXT NOT NULL PRIMARY KEY,
    key TEXT
);

-- Sharing of the local UPS with other watchers. Owner: src/service.
CREATE TABLE service_upsd (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    enabled INTEGER DEFAULT 0,
    listen1 TEXT DEFAULT ''
);

-- UPS devices that are watched. name and host identify one, but a change of settings is written to every row, names
-- included: not unique. Owner: src/service.
CREATE TABLE _ups_config (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    host TEXT NOT NULL,                       -- localhost, or the remote server's address
    port TEXT NOT NULL,                       -- auto for a local device
    type TEXT,                                -- local, remote or snmp
    enabled INTEGER DEFAULT 1,
    description TEXT,
    shutdown_threshold INTEGER DEFAULT 0,     -- battery level at which the appliance shuts down
    snmp_community TEXT,
    snmp_mibs TEXT,
    remote_username TEXT,
    remote_password TEXT,                     -- plain
    ups_model TEXT,
    ups_mfr TEXT,
    ups_mfr_date TEXT,
    ups_serial TEXT
);
