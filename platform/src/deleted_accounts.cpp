// Removing the accounts that were marked as deleted.
#include "execution.h"

using namespace qbdb;

namespace
{

constexpr const char *unit = "deleted accounts";

// A place where an account's id stands.
struct Place {
    const char *table;
    const char *column;
    const char *accounts; // where the account itself is
};

// Ids are given again, so that nothing that grants or limits may stay behind. The owner of a share stays: a
// share says whose it was. The accounts themselves go last.
constexpr Place places[] = {
    {"user_quota", "user_id", "$user"},
    {"_user_quota_stat", "user_id", "$user"},
    {"user_acl", "user_id", "$user"},
    {"$home_folder", "user_id", "$user"},
    {"_hf_zfs_stat", "user_id", "$user"},
    {"$timemachine_quota", "user_id", "$user"},
    {"$group_has_user", "user_id", "$user"},
    {"$group_has_user", "group_id", "$group"},
    {"group_quota", "group_id", "$group"},
    {"_group_quota_stat", "group_id", "$group"},
    {"group_acl", "group_id", "$group"},
    {"$user", "id", "$user"},
    {"$group", "id", "$group"},
};

} // namespace

int qbdb_remove_deleted_accounts(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg)
{
    const Call call{qbdb, db, errmsg, unit, __LINE__};
    return in_transaction(call, [&] {
        for (const Place &place : places) {
            const int rc = execute(
                call, "DELETE FROM \"%w\" WHERE \"%w\" IN (SELECT id FROM \"%w\" WHERE is_privileged=-1)",
                place.table, place.column, place.accounts);
            if (rc != SQLITE_OK)
                return rc;
        }
        return static_cast<int>(SQLITE_OK);
    });
}
