-- Volumes, disks, enclosures and their health, spares and volume schedules.

-- Data volumes. nr is what callers see as the number of a volume: a rowid with a name, so that it lasts. Owner: the
-- storage side fills it; src/storage updates the status columns.
CREATE TABLE _volume (
    nr INTEGER PRIMARY KEY,
    id TEXT NOT NULL UNIQUE,
    lv_name TEXT NOT NULL UNIQUE,             -- mounted at "/" and this name
    raid_type TEXT,                           -- NULL: the appliance's raid mode
    blk_total INTEGER,                        -- blocks, as blk_free
    blk_free INTEGER,
    blk_size INTEGER,                         -- bytes
    volume_health TEXT,
    sent_resilver_event INTEGER DEFAULT 0,
    sent_scan_end INTEGER DEFAULT 0,
    keyfile TEXT,                             -- key file of an encrypted volume
    balance_status INTEGER DEFAULT 0,
    disk_test_status INTEGER DEFAULT 0
);

-- Physical disks; a disk that was pulled stays with present 0. Owner: the platform's import fills it; src/storage
-- marks spares.
CREATE TABLE `$disk_info` (
    id TEXT NOT NULL PRIMARY KEY,             -- device name
    present INTEGER DEFAULT 0,                -- 0/1
    model TEXT,
    serial TEXT,
    fw_version TEXT,
    rpm INTEGER,
    sectors INTEGER,
    capacity INTEGER,                         -- bytes
    controller INTEGER,
    port INTEGER,
    channel INTEGER,
    hwif TEXT,                                -- hardware interface
    volume_id TEXT,
    pool_type TEXT,
    pool_state INTEGER,
    pool_hostid INTEGER,                      -- 0: the disk was never in a pool
    replaced_with_spare INTEGER DEFAULT 0,
    is_signed_by_mltx INTEGER DEFAULT 0       -- 0/1: firmware-signed disk
);
CREATE INDEX disk_info_slot ON `$disk_info` (controller, channel);

-- The slot that a controller's port leads to. Owner: the platform.
CREATE TABLE disk_port (
    controller INTEGER NOT NULL,
    port INTEGER NOT NULL,
    slot_col INTEGER,
    slot_row INTEGER,
    PRIMARY KEY (controller, port)
);

-- Disk enclosures, one a controller. Owner: the platform.
CREATE TABLE _disk_enclosure (
    controller INTEGER PRIMARY KEY,
    name TEXT,
    nr_row INTEGER,
    nr_column INTEGER,
    disk_horizontal INTEGER DEFAULT 0,        -- 0/1
    ses_device TEXT,
    dead_slots TEXT,
    nr_cpu INTEGER DEFAULT 0,                 -- sensors of each kind
    nr_fan INTEGER DEFAULT 0,
    nr_psu INTEGER DEFAULT 0,
    nr_volt INTEGER DEFAULT 0
);

-- Label of the port that an enclosure hangs on. Owner: the platform.
CREATE TABLE jbod_port (
    controller INTEGER PRIMARY KEY,
    label TEXT
);

-- Latest reading of a disk. Owner: src/storage.
CREATE TABLE _disk_health (
    disk_id TEXT NOT NULL PRIMARY KEY,
    ata_errors INTEGER,
    realloc_sect INTEGER,
    realloc_event INTEGER,
    spin_retry_cnt INTEGER,
    ioedc INTEGER,
    cmd_timeouts INTEGER,
    pending_sect INTEGER,
    uncorrectable_err INTEGER,
    temp INTEGER,                             -- degrees Celsius
    start_stop_cnt INTEGER,
    power_on_hrs INTEGER,
    power_cycle_cnt INTEGER,
    load_cycle_cnt INTEGER,
    zpool_state TEXT,
    zpool_read_error_cnt INTEGER,
    zpool_write_error_cnt INTEGER,
    zpool_cksum_error_cnt INTEGER
);

-- Latest reading of an enclosure's sensor and the three before it, newest first. Owner: src/storage.
CREATE TABLE _enclosure_health (
    controller INTEGER NOT NULL,
    name TEXT NOT NULL,                       -- kind of the sensor
    devid TEXT NOT NULL,                      -- its number
    value INTEGER,
    value_prev1 INTEGER,
    value_prev2 INTEGER,
    value_prev3 INTEGER,
    PRIMARY KEY (controller, name, devid)
);

-- The sensors that an enclosure has, and their limits. Owner: the platform.
CREATE TABLE enclosure_health_spec (
    controller INTEGER NOT NULL,
    name TEXT NOT NULL,
    devid TEXT NOT NULL,
    min INTEGER,
    max INTEGER,
    label TEXT,
    PRIMARY KEY (controller, name, devid)
);

-- Latest reading of a UPS. Owner: src/storage.
CREATE TABLE _ups_health (
    name TEXT NOT NULL,
    host TEXT NOT NULL,
    ups_status TEXT,
    battery_charge TEXT,                      -- percent
    battery_runtime TEXT,                     -- minutes
    battery_voltage TEXT,                     -- volts
    PRIMARY KEY (name, host)
);

-- Disks held as hot spares. Owner: src/storage.
CREATE TABLE `$volume_spares` (
    disk_info_id TEXT NOT NULL PRIMARY KEY
);

-- Timed jobs of a volume, in cron's notation. Owner: src/storage.
CREATE TABLE volume_schedule (
    job_id INTEGER PRIMARY KEY,               -- chosen by the caller
    volume_id TEXT,                           -- the volume's name
    enabled INTEGER DEFAULT 1,                -- 0/1
    action INTEGER,                           -- which task the job runs
    minute TEXT,
    hour TEXT,
    dayofmonth TEXT,
    month TEXT,
    dayofweek TEXT
);
CREATE INDEX volume_schedule_volume ON volume_schedule (volume_id);
