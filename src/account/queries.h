// What the queries of users and of groups have in common: filter, order and page of a listing, keys, accounts by id and
// name alone, and the mapping of ids to those of the system.
#pragma once

#include "account/account.h"

#include <memory>
#include <span>

namespace qbobj
{

/* ---- Listings ------------------------------------------------------------------------------------------ */

// The four orders of a listing.
struct Orders {
    const char *by_name;
    const char *by_id;
    const char *by_name_descending;
    const char *by_id_descending;

    const char *chosen(int order) const;
};

// Checks the caller's query; without one, it is for every account of the kind that the appliance uses.
int read_query(Call &call, const qbobj_AccountQuery_t *given, qbobj_AccountQuery_t &query,
               const Site &site = here());

// "LIMIT ...", or "".
const char *limit_clause(Call &call, const qbobj_AccountQuery_t &query);

// Part of a statement, its values already quoted. In the pool.
template <class... Args>
const char *sql_text(Call &call, const Statement<Args...> &format, Args... args)
{
    const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_mprintf(format.text, args...),
                                                              sqlite3_free);
    if (text == nullptr)
        throw std::bad_alloc();
    return copy_text(call.pool(), text.get());
}

/* ---- Keys ---------------------------------------------------------------------------------------------- */

// The key of a record that gives it twice.
inline int key_of(int resource_id, int id)
{
    return resource_id >= 1 ? resource_id : id;
}

// The key of a user's record: `resource_id`, else `UserId`; else, where directory accounts are not mirrored, the id of
// `UserName`, which is then written into both. Fails when there is none; a key that is given may be negative.
int find_user_key(Call &call, qbobj_User_t &user, int &key, const Site &site = here());

// Statements about one account, each with its failure.
struct AccountStatement {
    Statement<int> sql;
    Failure failure;
};
int exec_each(Call &call, std::span<const AccountStatement> statements, int id);

/* ---- Free ids ------------------------------------------------------------------------------------------ */

// How many accounts of one kind have an id of a range.
struct IdQuestions {
    Statement<int, int> range;
    Failure failure;
};

// The first id from `mark` on that none has; one behind `last` when all are taken.
int find_first_gap(Call &call, const IdQuestions &questions, int mark, int last, int &gap);

/* ---- Identity ------------------------------------------------------------------------------------------ */

// How accounts of one kind, users or groups, are mapped to the ids of the system. -1 for what it does not know.
struct PosixIds {
    int (*by_id)(qbdb_handle_t *qbdb, int id);
    int (*by_name)(qbdb_handle_t *qbdb, const char *name, int ads_mode);

    // Only directory accounts, which have negative ids, need the platform.
    int of_id(Call &call, int id) const;
    int of_domain_name(Call &call, const char *name) const;
};

inline constexpr PosixIds posix_users{qbdb_util_get_posix_uid, qbdb_util_get_posix_uid_by_name};
inline constexpr PosixIds posix_groups{qbdb_util_get_posix_gid, qbdb_util_get_posix_gid_by_name};

// The result of an identity look-up: 0, or -1 when there is no row, or no value in it.
int found_id(const Text &row, int *id);

// The result of a look-up of the name of `id`. A negative id without a row is a directory account that is gone.
int found_name(Call &call, const Text &row, int id, char **name);

/* ---- Accounts by id and name alone --------------------------------------------------------------------- */

// How those of one kind are read. A directory account may be stored under the id without its sign: the arguments of
// the statement are the key, whether the appliance is in directory mode, and the key with its sign changed.
template <class Record, class Columns>
struct SystemAccounts {
    Select<Columns, int, int, long long> stored;
    int Record::*id;
    const char *Record::*name;
    const char *(*name_in_domain)(qbdb_handle_t *qbdb, int id);
};
template <class Record, class Columns>
SystemAccounts(Select<Columns, int, int, long long>, int Record::*, const char *Record::*,
               const char *(*)(qbdb_handle_t *, int)) -> SystemAccounts<Record, Columns>;

// Fills the record that is keyed by `resource_id`. An account that is not stored is named by its number, or by the
// directory.
template <class Record, class Columns>
int read_system_account(Call &call, const SystemAccounts<Record, Columns> &accounts, Record &account,
                        const Site &site = here())
{
    const int key = account.resource_id;
    const bool ads = call.directory().ads;
    if (key < 0 && !ads)
        return raise_at(site, call, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=%d.", key);
    bool found = false;
    if (const int rc =
            call.find(accounts.stored, account, found, key, ads ? 1 : 0, -static_cast<long long>(key)))
        return rc;
    account.*accounts.id = key;
    if (!found) {
        log_at(site, call, QBDB_LOG_INFO, "None of row selected for resource_id=%d.\n", key);
        account.*accounts.name = ads ? accounts.name_in_domain(call.qbdb(), key) : print(call, "%d", key);
    }
    return 0;
}

} // namespace qbobj
