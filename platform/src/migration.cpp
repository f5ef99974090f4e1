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
    return {};
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
