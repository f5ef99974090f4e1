-- Users, groups, memberships and what belongs to a user.
--
-- A row with rid is a directory account, one without is local. A deleted account is only marked (is_privileged -1)
-- and keeps its name and id until the platform removes it. Rows about an account may name an id that has no row here:
-- a directory whose accounts are not mirrored, a removed account. Hence no foreign keys to `$user` and `$group`.

-- Local and directory users. Owner: src/account; the platform adds directory users and removes marked rows.
CREATE TABLE `$user` (
    id INTEGER PRIMARY KEY,
    uname TEXT NOT NULL COLLATE NOCASE,
    passwd TEXT DEFAULT '',                   -- crypt hash; a leading '!' locks it, '!' or '*' alone is no password
    email TEXT,
    home TEXT,                                -- path of the home folder
    group_id INTEGER,                         -- primary group; NULL after it was set to a group that is not there
    shell TEXT DEFAULT '/bin/false',
    is_privileged INTEGER NOT NULL DEFAULT 0, -- 0 ordinary, 1 system account, -1 deleted
    last_changed INTEGER,                     -- day of the last password change, counted from 1970
    is_locked INTEGER DEFAULT 0,              -- 0/1
    rid INTEGER,                              -- relative id in the directory; NULL for local users
    fullname TEXT
);
-- Local names are unique without regard to case, directory names to the letter; a directory account may share the
-- name of a local one. The second column is NULL, and so never equal, for accounts of the other kind.
CREATE UNIQUE INDEX user_local_name ON `$user` (uname, CASE WHEN rid IS NULL THEN 1 END);
CREATE UNIQUE INDEX user_domain_name ON `$user` (uname COLLATE BINARY, CASE WHEN rid IS NOT NULL THEN 1 END);
CREATE INDEX user_group ON `$user` (group_id);
CREATE INDEX user_home ON `$user` (home);
-- Counting the users of a listing, and taking a page of it in order.
CREATE INDEX user_listed ON `$user` (is_privileged, rid, uname, group_id);
CREATE INDEX user_home_folder ON `$user` (home COLLATE NOCASE); -- of what lies below, letters of any case

-- Local and directory groups. Owner: src/account; the platform adds directory groups and removes marked rows.
CREATE TABLE `$group` (
    id INTEGER PRIMARY KEY,
    gname TEXT NOT NULL COLLATE NOCASE,
    is_privileged INTEGER NOT NULL DEFAULT 0, -- 0 ordinary, 1 system group, -1 deleted
    rid INTEGER                               -- relative id in the directory; NULL for local groups
);
-- As for users.
CREATE UNIQUE INDEX group_local_name ON `$group` (gname, CASE WHEN rid IS NULL THEN 1 END);
CREATE UNIQUE INDEX group_domain_name ON `$group` (gname COLLATE BINARY, CASE WHEN rid IS NOT NULL THEN 1 END);

-- Secondary memberships. Owner: src/account.
CREATE TABLE `$group_has_user` (
    user_id INTEGER NOT NULL,
    group_id INTEGER NOT NULL,
    PRIMARY KEY (group_id, user_id)
);
CREATE INDEX group_has_user_user ON `$group_has_user` (user_id, group_id);

-- Settings of a user's home folder. Owner: src/account.
CREATE TABLE `$home_folder` (
    user_id INTEGER PRIMARY KEY,
    snapshot_protection_enabled INTEGER DEFAULT 0, -- 0/1
    quota INTEGER DEFAULT 0,                       -- size limit, 0: none
    visible_snapdir TEXT DEFAULT ''                -- folder that shows the snapshots; empty: not shown
);

-- Space that a home folder takes. Owner: the platform fills it; src/account reads it.
CREATE TABLE _hf_zfs_stat (
    user_id INTEGER PRIMARY KEY,
    used INTEGER DEFAULT 0
);

-- Time Machine space by user; the row of user 96 is the area that all share. Owner: src/account and src/service.
CREATE TABLE `$timemachine_quota` (
    user_id INTEGER PRIMARY KEY,
    enabled INTEGER DEFAULT 0,                -- 0/1
    capacity_mb INTEGER DEFAULT 0
);
CREATE INDEX timemachine_quota_off ON `$timemachine_quota` (user_id) WHERE enabled=0; -- what a change sweeps away
