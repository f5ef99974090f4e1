-- Single values by key, and the account, directory and system settings that are one row each.
--
-- A table of one row has the column id, fixed to 1, so that a second row is refused. Settings columns carry no
-- NOT NULL: a mirrored service entry may clear them.

-- Service entries by key; a value is also written to column_name of table_name when both are set. Owner: src/frame.
CREATE TABLE service_misc (
    key TEXT NOT NULL PRIMARY KEY,
    val TEXT,
    table_name TEXT,
    column_name TEXT
);

-- Registry entries by key, private to the programs that write them. Owner: src/frame.
CREATE TABLE `$registry` (
    key TEXT NOT NULL PRIMARY KEY,
    value TEXT
);

-- Appliance-wide settings of the storage side, one row. Owner: the storage side; src/storage reads it.
CREATE TABLE system_config (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    raid_mode TEXT DEFAULT 'QRAID'
);

-- Defaults of new accounts and the user id mark, one row. Owner: src/account.
CREATE TABLE account_default (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    home_volume_id TEXT DEFAULT 'c',              -- volume that holds the home folders
    diskquota_warn INTEGER DEFAULT 80,            -- soft quota in percent of the hard quota, 1 to 99
    group_id INTEGER DEFAULT 99,                  -- primary group of a new user
    disallow_password_change INTEGER DEFAULT 0,   -- 0/1
    home_folder_capacity_limit INTEGER DEFAULT 0, -- size limit of a new home folder, 0: none
    group_membership TEXT DEFAULT '',
    private_time_machine INTEGER DEFAULT 0,       -- 0/1
    private_time_machine_space INTEGER DEFAULT 0,
    snapshot_protection INTEGER DEFAULT 0,        -- 0/1, of a new home folder
    next_uid INTEGER DEFAULT 100                  -- lowest id that the next new user may get
);

-- The administrator's password recovery data, one row. Owner: src/account.
CREATE TABLE passwordrecovery (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    email TEXT DEFAULT '',
    question TEXT DEFAULT '',
    answer TEXT DEFAULT ''
);

-- Progress of the import of directory accounts, one row. Owner: the platform's importer; src/account reads it.
CREATE TABLE _ads_importer (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    state INTEGER DEFAULT 0,                      -- 0 idle, 1 running, 2 complete, other: error
    total_user INTEGER DEFAULT 0,
    curr_user INTEGER DEFAULT 0,
    total_group INTEGER DEFAULT 0,
    curr_group INTEGER DEFAULT 0,
    start_at INTEGER DEFAULT 0,                   -- Unix seconds
    done_at INTEGER DEFAULT 0                     -- Unix seconds
);

-- Run record of the management daemon, at most one row, made by its first write. Owner: src/service.
CREATE TABLE `$qubrixd` (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    started_on INTEGER DEFAULT 0,                 -- Unix seconds
    stopped_on INTEGER DEFAULT 0,                 -- Unix seconds
    version TEXT
);
