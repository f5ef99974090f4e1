// What creating, changing and importing groups have in common: the rules of the name and the secondary
// members.
#pragma once

#include "account/queries.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

// `name` receives the name to store.
inline int check_group_name(Call &call, const char *given, const char *&name)
{
    constexpr int too_long = 3;
    const int invalid = qbobj_validate_groupname(given, &name);
    if (invalid == too_long)
        return raise(call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "GroupName is too long (%s)", given);
    if (invalid != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (%s)", given);
    return 0;
}

inline int check_new_group_name(Call &call, const char *given, const char *&name)
{
    if (is_empty(given))
        return raise(call, QBOBJ_ERROR_API_ARGS, "GroupName is required for 'add'");
    return check_group_name(call, given, name);
}

// Makes a user a secondary member of the group with the id `group_id`, which `group` describes.
inline int add_secondary_member(Call &call, const qbobj_Group_t &group, int group_id,
                                const qbobj_User_t &member)
{
    const int user_id = key_of(member.resource_id, member.UserId);
    if (user_id < 1)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d) in SecondaryMember.",
                     group.resource_id);
    const Status added = call.run("INSERT INTO `$group_has_user` (user_id,group_id) VALUES(%d,%d)",
                                           user_id, group_id);
    if (!added)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT group_has_user. %s",
                     added.error());
    return 0;
}

} // namespace

} // namespace qbobj
