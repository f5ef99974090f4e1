-- The event log, the iSCSI target and the translation dictionary.

-- Events for the administrator; ids ascend for ever and are the order of display. Owner: src/log.
CREATE TABLE `$log` (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    tstamp INTEGER,                           -- Unix seconds
    severity TEXT,
    category TEXT,
    msg_tag TEXT,                             -- key of the text in the dictionary
    msg_args_xml TEXT
);
CREATE INDEX log_tstamp ON `$log` (tstamp);
CREATE INDEX log_severity ON `$log` (severity);
CREATE INDEX log_category ON `$log` (category);
CREATE INDEX log_msg_tag ON `$log` (msg_tag);

-- LUN groups, each exported as one target. The iSCSI tables refer to each other by name. Owner: src/iscsi.
CREATE TABLE `$iscsi_lun_group` (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    target TEXT,
    all_hosts INTEGER,                        -- 0/1: any initiator may connect
    chap_auth INTEGER,                        -- 0/1
    chap_secret TEXT
);

-- LUNs; a LUN outlives its group. Owner: src/iscsi.
CREATE TABLE `$iscsi_lun` (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    lun_group TEXT,
    lun_n INTEGER
);

-- Known initiators. Owner: src/iscsi.
CREATE TABLE `$iscsi_initiator` (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    chap_auth INTEGER,                        -- 0/1
    chap_secret TEXT
);

-- Initiators that may reach a LUN group. Rows are inserted by position, and the same pair may stand here twice:
-- exactly these two columns, no key. Owner: src/iscsi.
CREATE TABLE `$iscsi_lun_group_access` (
    lun_group TEXT,
    initiator TEXT
);
CREATE INDEX iscsi_lun_group_access_group ON `$iscsi_lun_group_access` (lun_group, initiator);
CREATE INDEX iscsi_lun_group_access_initiator ON `$iscsi_lun_group_access` (initiator);

-- Languages that have texts; en-us is the reference. Owner: the platform; src/dictionary reads it.
CREATE TABLE _lang_supported (
    id INTEGER PRIMARY KEY,
    lang TEXT NOT NULL UNIQUE,
    spell TEXT                                -- the language's own name
);

-- Texts by language and key. Owner: the platform; src/dictionary reads it.
CREATE TABLE _dictionary (
    id TEXT NOT NULL,                         -- key of the text
    lang_id INTEGER NOT NULL,
    str TEXT,
    PRIMARY KEY (lang_id, id)
) WITHOUT ROWID;
