// Migrating files of older schemas.
#include "migration.h"
#include "statement.h"

namespace qbdb
{

namespace
{

int read_version(sqlite3 *db, int &version)
{
    Statement statement;
    const char *problem = nullptr;
    if (const int rc = prepare(db, "PRAGMA user_version", 0, statement, &problem); rc != SQLITE_OK)
        return rc;
    const int rc = sqlite3_step(statement.get());
    version = sqlite3_column_int(statement.get(), 0);
    return rc == SQLITE_ROW ? SQLITE_OK : rc;
}

int run_steps(sqlite3 *db)
{
    int version = 0; // another process may have migrated the file meanwhile
    if (const int rc = read_version(db, version); rc != SQLITE_OK)
        return rc;
    for (; version < schema_version(); version++) {
        const char *const sql = migrations()[static_cast<std::size_t>(version) - 1];
        if (const int rc = sqlite3_exec(db, sql, nullptr, nullptr, nullptr); rc != SQLITE_OK)
            return rc;
    }
    return run_plain(db, "PRAGMA user_version=%d", schema_version());
}

} // namespace

std::span<const char *const> migrations()
{
    static constexpr const char *steps[] = {
        // 2: a group holds a person once, and snapshots of homes may have equal names
        R"(CREATE TABLE migrated (user_id INTEGER NOT NULL, group_id INTEGER NOT NULL, PRIMARY KEY (group_id, user_id));
INSERT OR IGNORE INTO migrated SELECT user_id, group_id FROM `$group_has_user` ORDER BY rowid;
DROP TABLE `$group_has_user`;
ALTER TABLE migrated RENAME TO `$group_has_user`;
CREATE INDEX group_has_user_user ON `$group_has_user` (user_id, group_id);

CREATE TABLE migrated (id INTEGER PRIMARY KEY, user_name TEXT NOT NULL COLLATE NOCASE, home_dir TEXT,
    name TEXT NOT NULL, type INTEGER, created_on INTEGER);
INSERT INTO migrated SELECT id, user_name, home_dir, name, type, created_on FROM `$home_folder_snapshot`;
DROP TABLE `$home_folder_snapshot`;
ALTER TABLE migrated RENAME TO `$home_folder_snapshot`;
CREATE INDEX home_folder_snapshot_name ON `$home_folder_snapshot` (home_dir, name, user_name);
CREATE INDEX home_folder_snapshot_created ON `$home_folder_snapshot` (created_on);
CREATE INDEX home_folder_snapshot_user ON `$home_folder_snapshot` (user_name, created_on);
CREATE INDEX home_folder_snapshot_home ON `$home_folder_snapshot` (home_dir, created_on);)",
        // 3: the backup jobs of a share
        R"(CREATE INDEX backup_source ON backup (src_type, src_share_proto);
CREATE INDEX backup_destination ON backup (dst_type, dst_share_proto);)",
        // 4: what lies below a folder, and pages of users
        R"(CREATE INDEX share_folder ON share (path COLLATE NOCASE);
CREATE INDEX user_home_folder ON `$user` (home COLLATE NOCASE);
CREATE INDEX user_listed ON `$user` (is_privileged, rid, uname, group_id);
CREATE INDEX timemachine_quota_off ON `$timemachine_quota` (user_id) WHERE enabled=0;)",
    };
    return steps;
}

int migrate(sqlite3 *db)
{
    int rc = run_plain(db, "BEGIN IMMEDIATE");
    if (rc == SQLITE_OK)
        rc = run_steps(db);
    if (rc == SQLITE_OK)
        rc = run_plain(db, "COMMIT");
    if (rc != SQLITE_OK && !sqlite3_get_autocommit(db))
        run_plain(db, "ROLLBACK");
    return rc;
}

} // namespace qbdb
