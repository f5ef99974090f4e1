// Names and ids of rows that must exist: each validator turns one into the row's id.
#include "core/folders.h"
#include "validate/validate.h"

#include <span>
#include <string>

namespace qbobj
{
namespace
{

// What a look-up of one id found. No name at all finds nothing, since nothing equals NULL.
int found(const Number &row, int *id)
{
    if (!row || row.found == 0)
        return 1;
    *id = row.value;
    return 0;
}

// Whether a row with an id is there; a failed statement is told apart.
int exists(const Number &row)
{
    if (!row)
        return 2;
    return row.found == 0 ? 1 : 0;
}

const char *name_or(const char *str, const char *defstr)
{
    return str != nullptr ? str : defstr;
}

/* ---- Names of accounts --------------------------------------------------------------------------------- */

// How accounts of one kind are found by name. In directory mode these are the accounts of the directory and privileged
// local ones, which win.
struct AccountNames {
    Statement<const char *> in_directory;
    Statement<const char *> local;

    int find(Call &call, const char *name, int *id) const
    {
        if (name == nullptr)
            return 1;
        return found(call.ask_number(call.directory().ads ? in_directory : local, name), id);
    }
};

constexpr AccountNames users{
    "SELECT id FROM `$user` WHERE uname=%Q COLLATE BINARY "
    "AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC",
    "SELECT id FROM `$user` WHERE uname=%Q AND rid IS NULL",
};
constexpr AccountNames groups{
    "SELECT id FROM `$group` WHERE gname=%Q COLLATE BINARY "
    "AND (rid IS NOT NULL OR is_privileged=1) ORDER BY is_privileged DESC",
    "SELECT id FROM `$group` WHERE gname=%Q AND rid IS NULL",
};

// The ids of a list of names, at the names' positions. Ids behind the first unknown name are not filled.
int find_array(Call &call, const AccountNames &accounts, const char **array, int **ids, int *length)
{
    std::size_t count = 0;
    while (array != nullptr && array[count] != nullptr)
        ++count;
    if (length != nullptr)
        *length = static_cast<int>(count);
    *ids = nullptr;
    if (array == nullptr)
        return 0;
    int *next = *ids = create_array<int>(call.pool(), count);
    for (const char *name : std::span(array, count))
        if (const int unknown = accounts.find(call, name, next++))
            return unknown;
    return 0;
}

int find_csv(Call &call, const AccountNames &accounts, const char *csv, int **ids, int *length)
{
    const char **names = nullptr;
    if (csv != nullptr)
        if (const int rc = qbdb_csv_to_array(call.qbdb(), csv, &names, length))
            return rc;
    return find_array(call, accounts, names, ids, length);
}

} // namespace

/* ---- Accounts ------------------------------------------------------------------------------------------ */

int qbobj_validate_db_username(Call &call, const char *str, const char *defstr, int *user_id)
{
    return users.find(call, name_or(str, defstr), user_id);
}

int qbobj_validate_db_groupname(Call &call, const char *str, const char *defstr, int *group_id)
{
    return groups.find(call, name_or(str, defstr), group_id);
}

int qbobj_validate_db_userid(Call &call, int user_id)
{
    return exists(call.ask_number("SELECT id FROM `$user` WHERE id=%d", user_id));
}

int qbobj_validate_db_groupid(Call &call, int group_id)
{
    return exists(call.ask_number("SELECT id FROM `$group` WHERE id=%d", group_id));
}

int qbobj_validate_db_username_csv(Call &call, const char *csv, int **user_id_list, int *user_id_list_len)
{
    return find_csv(call, users, csv, user_id_list, user_id_list_len);
}

int qbobj_validate_db_username_array(Call &call, const char **array, int **user_id_list,
                                     int *user_id_list_len)
{
    return find_array(call, users, array, user_id_list, user_id_list_len);
}

int qbobj_validate_db_groupname_csv(Call &call, const char *csv, int **group_id_list, int *group_id_list_len)
{
    return find_csv(call, groups, csv, group_id_list, group_id_list_len);
}

int qbobj_validate_db_groupname_array(Call &call, const char **array, int **group_id_list,
                                      int *group_id_list_len)
{
    return find_array(call, groups, array, group_id_list, group_id_list_len);
}

/* ---- Shares, volumes, jobs ----------------------------------------------------------------------------- */

int qbobj_validate_db_sharename(Call &call, const char *str, const char *defstr, int *share_id)
{
    return found(call.ask_number("SELECT id FROM share WHERE name=%Q", name_or(str, defstr)), share_id);
}

int qbobj_validate_db_zfsname(Call &call, const char *str, const char *defstr, int *share_id)
{
    return found(call.ask_number("SELECT id FROM share WHERE zfs_name=%Q", name_or(str, defstr)), share_id);
}

// The share itself by its letters, one above it by letters of any case; of several the one with the lowest id. A look-up a
// folder is quicker than one for all of them, which SQLite would have to sort first.
int qbobj_validate_db_path_in_share(Call &call, const char *path, int *share_id)
{
    if (path == nullptr)
        return 1;
    Number lowest = call.ask_number("SELECT id FROM share WHERE path=%Q", path);
    std::string folder = path;
    if (folder.size() > longest_path)
        folder.clear();
    for (std::size_t end; lowest && (end = folder.rfind('/')) != folder.npos;) {
        folder.resize(end);
        const Number above = call.ask_number(
            "SELECT id FROM share WHERE path=%Q COLLATE NOCASE ORDER BY id LIMIT 1", folder.c_str());
        if (!above || (above.found != 0 && (lowest.found == 0 || above.value < lowest.value)))
            lowest = above;
    }
    return found(lowest, share_id);
}

int qbobj_validate_db_volumename(Call &call, const char *str, const char *defstr, char **volume_id)
{
    const char *name = name_or(str, defstr);
    if (name == nullptr)
        return 1;
    const Text id = call.ask_text("SELECT id FROM _volume WHERE lv_name=%Q", name);
    *volume_id = id.value;
    return id ? 0 : 1;
}

int qbobj_validate_db_volumeid(Call &call, const char *volume_id_in, const char **volume_id)
{
    const Text id = volume_id_in != nullptr
                        ? call.ask_text("SELECT id FROM _volume WHERE id=%Q", volume_id_in)
                        : call.ask_text("SELECT id FROM _volume WHERE lv_name=%Q", "c");
    if (!id || id.found == 0)
        return 1;
    *volume_id = id.value;
    return 0;
}

int qbobj_validate_db_jobname(Call &call, const char *str, int *job_id)
{
    return found(call.ask_number("SELECT id FROM backup WHERE name=%Q", str), job_id);
}

/* ---- iSCSI --------------------------------------------------------------------------------------------- */

int qbobj_validate_db_lunname(Call &call, const char *str, const char *defstr, int *lun_id)
{
    return found(call.ask_number("SELECT rowid FROM `$iscsi_lun` WHERE name=%Q", name_or(str, defstr)),
                 lun_id);
}

int qbobj_validate_db_lungroupname(Call &call, const char *str, const char *defstr, int *lun_group_id)
{
    return found(call.ask_number("SELECT rowid FROM `$iscsi_lun_group` WHERE name=%Q", name_or(str, defstr)),
                 lun_group_id);
}

int qbobj_validate_db_initiatorname(Call &call, const char *str, const char *defstr, int *initiator_id)
{
    return found(call.ask_number("SELECT rowid FROM `$iscsi_initiator` WHERE name=%Q", name_or(str, defstr)),
                 initiator_id);
}

} // namespace qbobj

int qbobj_validate_db_sharename(qbobj_env_t *qbobj, sqlite3 *db, const char *str, const char *defstr,
                                int *share_id)
{
    qbobj::Call call(*qbobj, db);
    return qbobj::qbobj_validate_db_sharename(call, str, defstr, share_id);
}
