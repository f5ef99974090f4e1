-- Backup jobs and the places that they may copy from and to.

-- Backup jobs. Ids are never given twice: a button entry can outlive its job. Owner: src/backup; src/share renames
-- the ends of jobs and deletes jobs with their share.
CREATE TABLE backup (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL UNIQUE,
    enabled INTEGER,                          -- 0/1
    src_type TEXT,                            -- share, home, volume, remote, usb or timemachine
    src_share_proto TEXT COLLATE NOCASE,      -- name of the share, user, volume, protocol or USB port
    src_path TEXT,
    src_login TEXT,
    src_password TEXT,                        -- plain
    src_port INTEGER,
    src_eject INTEGER,                        -- 1: eject the medium when the job is done
    dst_type TEXT,                            -- the destination's columns are as the source's
    dst_share_proto TEXT COLLATE NOCASE,
    dst_path TEXT,
    dst_login TEXT,
    dst_password TEXT,
    dst_port INTEGER,
    dst_eject INTEGER,
    sch_every INTEGER,                        -- interval between two runs
    sch_start INTEGER,
    sch_end INTEGER,
    sch_dow INTEGER,                          -- days of the week, Sunday the lowest bit
    opt_full_backup_freq TEXT,
    opt_remove_previous_backup INTEGER,       -- 0/1
    opt_chown_to_share_owner INTEGER,         -- 0/1
    opt_rsync_options INTEGER,                -- bit set
    opt_rsync_exclude TEXT,
    opt_email_this_to_alert_email INTEGER,
    opt_misc_option INTEGER,
    wol_addr TEXT                             -- hardware address to wake before the job
);

CREATE INDEX backup_source ON backup (src_type, src_share_proto);
CREATE INDEX backup_destination ON backup (dst_type, dst_share_proto);

-- Jobs are stored with OR REPLACE, which would take another job of the same name away without a word.
CREATE TRIGGER backup_keep_named BEFORE INSERT ON backup
WHEN EXISTS (SELECT 1 FROM backup WHERE name = NEW.name)
BEGIN
    SELECT RAISE(ABORT, 'UNIQUE constraint failed: backup.name');
END;

-- Jobs that the backup button starts, in this order; the ids are not checked. Owner: src/backup.
CREATE TABLE backup_button_jobs (
    `order` INTEGER PRIMARY KEY,
    backup_id INTEGER
);
CREATE INDEX backup_button_jobs_backup ON backup_button_jobs (backup_id);

-- Protocols by which remote hosts are reached; readonly ones are sources only. Owner: the platform; src/backup
-- reads it.
CREATE TABLE backup_protocol (
    id INTEGER PRIMARY KEY,
    proto TEXT NOT NULL UNIQUE,
    readonly INTEGER NOT NULL DEFAULT 0       -- 0/1
);

-- USB ports of the appliance. Owner: the platform; src/backup reads it.
CREATE TABLE usb_port (
    id INTEGER PRIMARY KEY,
    port TEXT,                                -- bus path with underscores for colons
    alt_port TEXT,                            -- its other bus path, e.g. of a faster bus
    descr TEXT
);

-- Storages that are plugged into USB ports. Owner: the platform; src/backup reads it.
CREATE TABLE usb_storage (
    id INTEGER PRIMARY KEY,
    usbpath TEXT,                             -- begins with the bus path of its port
    mount_point TEXT
);
