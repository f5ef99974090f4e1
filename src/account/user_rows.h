// What changing and deleting a user both ask of the database.
#pragma once

#include "account/queries.h"

namespace qbobj
{

struct StoredUser {
    const char *home;
    const char *name;
};
inline constexpr auto stored_user_columns = std::tuple{&StoredUser::home, &StoredUser::name};

namespace
{

inline int read_stored_user(const qbobj_env_t *env, const Sql &sql, int user_id, StoredUser &stored)
{
    const Table rows = sql.table("SELECT U.home,U.uname FROM `$user` U WHERE U.id=%d", user_id);
    if (!rows)
        return raise(env, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());
    if (!rows.empty())
        fill(env, stored, stored_user_columns, rows.front());
    return 0;
}

// 1 when nobody backs up to the appliance with Time Machine: only the row of user 96 is left, which carries
// the size of the area that all users share, and it is not enabled.
inline Int32 timemachine_is_unused(const Sql &sql)
{
    const Int32 users = sql.int32("SELECT COUNT(*) FROM '$timemachine_quota'");
    if (!users)
        return users;
    Int32 unused = sql.int32("SELECT enabled FROM '$timemachine_quota' WHERE user_id=96");
    unused.value = users.value == 1 && unused.value == 0 ? 1 : 0;
    return unused;
}

} // namespace

} // namespace qbobj
