// What the queries of users and of groups have in common: filter, order and page of a listing, keys, quotas,
// and the mapping of ids to those of the system.
#pragma once

#include "account/account.h"
#include "core/call.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace qbobj
{

// The four orders of a listing.
struct Orders {
    const char *by_name;
    const char *by_id;
    const char *by_name_descending;
    const char *by_id_descending;

    constexpr const char *chosen(int order) const
    {
        switch (order) {
        case 2:
            return by_id;
        case -1:
            return by_name_descending;
        case -2:
            return by_id_descending;
        default:
            return by_name;
        }
    }
};

// How accounts of one kind, users or groups, are mapped to the ids of the system.
struct PosixIds {
    int (*by_id)(qbdb_handle_t *qbdb, int id);
    int (*by_name)(qbdb_handle_t *qbdb, const char *name, int ads_mode);

    // Only directory accounts, which have negative ids, need the platform. -1 when it does not know them.
    int of_id(Call &call, int id) const
    {
        return id < 0 ? std::max(by_id(call.qbdb(), id), -1) : id;
    }
    int of_domain_name(Call &call, const char *name) const
    {
        return name == nullptr ? -1 : std::max(by_name(call.qbdb(), name, 1), -1);
    }
};

inline constexpr PosixIds posix_users{qbdb_util_get_posix_uid, qbdb_util_get_posix_uid_by_name};
inline constexpr PosixIds posix_groups{qbdb_util_get_posix_gid, qbdb_util_get_posix_gid_by_name};

// The caller's query; without one, every account of the kind that the appliance uses.
inline qbobj_AccountQuery_t query_or_all(Call &call, const qbobj_AccountQuery_t *query)
{
    if (query != nullptr)
        return *query;
    qbobj_AccountQuery_t all{};
    all.ads = call.directory().ads ? 1 : 0;
    return all;
}

inline bool pattern_too_long(const qbobj_AccountQuery_t &query)
{
    return !is_empty(query.name_like) && std::strlen(query.name_like) > 256;
}

// The key of a record that gives it twice.
inline int key_of(int resource_id, int id)
{
    return resource_id >= 1 ? resource_id : id;
}

inline constexpr auto quota_columns =
    std::tuple{&qbobj_Quota_t::ShareId, &qbobj_Quota_t::HardMB, &qbobj_Quota_t::UsedMB};

template <class Record, class... Columns>
void append_rows(Call &call, Record *&list, const std::tuple<Columns...> &columns, const Table &rows)
{
    Tail<Record> tail(list);
    for (const Row row : rows)
        fill(call, tail.append(call.pool()), columns, row);
}

// The quotas of one account from the rows of (dataset name, limit, usage).
inline qbobj_Quota_t *quotas_of(Call &call, int account_id, const Table &rows)
{
    qbobj_Quota_t *quotas = nullptr;
    append_rows(call, quotas, quota_columns, rows);
    for (qbobj_Quota_t &quota : Chain(quotas))
        quota.AccountId = account_id;
    return quotas;
}

namespace
{

// Part of a statement, its values already quoted. In the pool.
template <class... Args>
const char *sql_text(Call &call, Statement<Args...> format, Args... args)
{
    const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_mprintf(format.text, args...),
                                                              sqlite3_free);
    if (text == nullptr)
        throw std::bad_alloc();
    return copy_text(call.pool(), text.get());
}

inline const char *limit_clause(Call &call, const qbobj_AccountQuery_t &query)
{
    if (query.limit == 0)
        return "";
    if (query.offset == 0)
        return sql_text(call, "LIMIT %d", query.limit);
    return sql_text(call, "LIMIT %d,%d", query.offset, query.limit);
}

// The key of a user's record: `resource_id`, else `UserId`; else, where directory accounts are not mirrored,
// the id of `UserName`, which is then written into both. Fails when there is none; it may be negative.
inline int find_user_key(Call &call, const Directory &directory, qbobj_User_t &user, int &key)
{
    key = key_of(user.resource_id, user.UserId);
    if (key != 0)
        return 0;
    qbobj_error_t code = QBOBJ_ERROR_API_ARGS;
    if (directory.ads && directory.no_sync && user.UserName != nullptr) {
        key = posix_users.of_domain_name(call, user.UserName);
        if (key >= 0) {
            user.resource_id = key;
            user.UserId = key;
            return 0;
        }
        code = QBOBJ_ERROR_UI__NO_LDAP_OBJECT;
    }
    return raise(call, code, "Invalid User (resource_id=%d, UserName=%s).", user.resource_id, user.UserName);
}

// The result of an identity look-up: 0, or -1 when there is no row, or no value in it.
inline int found_id(const Text &row, int *id)
{
    if (!row || row.value == nullptr)
        return -1;
    *id = to_int(row.value);
    return 0;
}

// The result of a look-up of the name of `id`. A negative id without a row is a directory account that is
// gone.
inline int found_name(Call &call, const Text &row, int id, char **name)
{
    if (row && row.found != 0)
        *name = row.value;
    else if (row && id >= 0)
        *name = print(call, "%d", id);
    else
        *name = copy_text(call.pool(), guest_str);
    return row ? 0 : -1;
}

} // namespace

} // namespace qbobj
