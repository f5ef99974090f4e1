-- Records of snapshots, of the clones made from them, and the schedules by which they are taken.

-- Snapshots of share datasets. Owner: src/storage; src/share moves and deletes them with their share.
CREATE TABLE `$snapshot` (
    id INTEGER PRIMARY KEY,
    zfs_name TEXT NOT NULL,                   -- the share's dataset
    name TEXT NOT NULL,
    type INTEGER,                             -- 1 continuous, 2 manual
    created_on INTEGER,                       -- Unix seconds
    UNIQUE (name, zfs_name)
);
CREATE INDEX snapshot_created ON `$snapshot` (created_on);
CREATE INDEX snapshot_share ON `$snapshot` (zfs_name, created_on, type);

-- Shares that are clones of a snapshot. A share has one origin. Despite their names the columns hold share names,
-- which compare without case. Owner: src/storage; src/share renames and deletes them with their share.
CREATE TABLE `$snapshot_clones` (
    id INTEGER PRIMARY KEY,
    cloned_zfs_name TEXT COLLATE NOCASE UNIQUE,
    parent_snapshot_name TEXT,
    parent_zfs_name TEXT COLLATE NOCASE
);
CREATE INDEX snapshot_clones_parent ON `$snapshot_clones` (parent_zfs_name, parent_snapshot_name);
CREATE INDEX snapshot_clones_snapshot ON `$snapshot_clones` (parent_snapshot_name);

-- When the snapshots of a share are taken, in cron's notation. Owner: src/share.
CREATE TABLE snapshot_schedule (
    share_id INTEGER PRIMARY KEY REFERENCES share (id),
    enabled INTEGER DEFAULT 1,                -- 0/1
    minute TEXT DEFAULT '0',
    hour TEXT DEFAULT '*',
    day_of_month TEXT DEFAULT '*',
    day_of_week TEXT DEFAULT '*',
    month TEXT DEFAULT '*',
    last_taken INTEGER DEFAULT 0,             -- Unix seconds, as last_daily_taken and last_weekly_taken
    purge_manual_snapshot INTEGER DEFAULT 0,  -- 0/1
    last_daily_taken INTEGER DEFAULT 0,
    last_weekly_taken INTEGER DEFAULT 0
);

-- Snapshots of users' home folders; a user's new name may bring equal rows together. Owner: src/storage; src/account
-- renames and deletes them with their user.
CREATE TABLE `$home_folder_snapshot` (
    id INTEGER PRIMARY KEY,
    user_name TEXT NOT NULL COLLATE NOCASE,
    home_dir TEXT,
    name TEXT NOT NULL,
    type INTEGER,                             -- 1 continuous, 2 manual
    created_on INTEGER                        -- Unix seconds
);
CREATE INDEX home_folder_snapshot_name ON `$home_folder_snapshot` (home_dir, name, user_name);
CREATE INDEX home_folder_snapshot_created ON `$home_folder_snapshot` (created_on);
CREATE INDEX home_folder_snapshot_user ON `$home_folder_snapshot` (user_name, created_on);
CREATE INDEX home_folder_snapshot_home ON `$home_folder_snapshot` (home_dir, created_on);

-- When the snapshots of home folders are taken: one row, share_id 0. Owner: src/storage.
CREATE TABLE `$home_folder_snapshot_schedule` (
    share_id INTEGER PRIMARY KEY CHECK (share_id = 0),
    enabled INTEGER DEFAULT 1,                -- 0/1
    minute TEXT DEFAULT '0',
    hour TEXT DEFAULT '*',
    day_of_month TEXT DEFAULT '*',
    day_of_week TEXT DEFAULT '*',
    month TEXT DEFAULT '*',
    last_taken INTEGER DEFAULT 0,
    purge_manual_snapshot INTEGER DEFAULT 1,
    last_daily_taken INTEGER DEFAULT 0,
    last_weekly_taken INTEGER DEFAULT 0
);
