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

inline int read_stored_user(Call &call, int user_id, StoredUser &stored)
{
    const Table rows = call.table("SELECT U.home,U.uname FROM `$user` U WHERE U.id=%d", user_id);
    if (!rows)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. %s", rows.error());
    if (!rows.empty())
        fill(call, stored, stored_user_columns, *rows.begin());
    return 0;
}

// 1 when nobody backs up to the appliance with Time Machine: only the row of user 96 is left, which carries
// the size of the area that all users share, and it is not enabled.
inline Number timemachine_is_unused(Call &call)
{
    const Number users = call.ask_number("SELECT COUNT(*) FROM '$timemachine_quota'");
    if (!users)
        return users;
    Number unused = call.ask_number("SELECT enabled FROM '$timemachine_quota' WHERE user_id=96");
    unused.value = users.value == 1 && unused.value == 0 ? 1 : 0;
    return unused;
}

} // namespace

} // namespace qbobj
