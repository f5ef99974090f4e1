-- Quotas on shares and the markers of who uses a share.

-- Limits of a user on a share. Owner: src/share and src/account.
CREATE TABLE user_quota (
    user_id INTEGER NOT NULL,
    share_id INTEGER NOT NULL REFERENCES share (id),
    mb_soft INTEGER,
    mb_hard INTEGER,
    PRIMARY KEY (user_id, share_id)
);
CREATE INDEX user_quota_share ON user_quota (share_id);

-- Limits of a group on a share. Owner: src/share and src/account.
CREATE TABLE group_quota (
    group_id INTEGER NOT NULL,
    share_id INTEGER NOT NULL REFERENCES share (id),
    mb_soft INTEGER,
    mb_hard INTEGER,
    PRIMARY KEY (group_id, share_id)
);
CREATE INDEX group_quota_share ON group_quota (share_id);

-- Space that a user takes on a share. Owner: the storage side fills it; src/share and src/account read it.
CREATE TABLE _user_quota_stat (
    share_id INTEGER NOT NULL,
    user_id INTEGER NOT NULL,
    mb_used INTEGER,
    PRIMARY KEY (share_id, user_id)
);
CREATE INDEX user_quota_stat_user ON _user_quota_stat (user_id);

-- Space that a group takes on a share. Owner: the storage side fills it; src/share and src/account read it.
CREATE TABLE _group_quota_stat (
    share_id INTEGER NOT NULL,
    group_id INTEGER NOT NULL,
    mb_used INTEGER,
    PRIMARY KEY (share_id, group_id)
);
CREATE INDEX group_quota_stat_group ON _group_quota_stat (group_id);

-- Running processes that hold a share; outlives its share. Owner: src/share.
CREATE TABLE process_on_share (
    share_id INTEGER NOT NULL,
    pid INTEGER NOT NULL,
    blocking INTEGER DEFAULT 0,                -- level, 0: the holder blocks nobody
    ts TEXT NOT NULL DEFAULT CURRENT_TIMESTAMP, -- UTC time at which the row was written
    PRIMARY KEY (share_id, pid)
);

-- Applications that rely on a dataset. Owner: src/share.
CREATE TABLE `$application_on_share` (
    zfs_name TEXT NOT NULL,
    app_name TEXT NOT NULL,
    app_data TEXT,
    PRIMARY KEY (app_name, zfs_name)
);
CREATE INDEX application_on_share_zfs_name ON `$application_on_share` (zfs_name);
