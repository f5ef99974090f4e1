// The rules of a group's name and its secondary members. Errors carry their caller's place.
#include "account/group_changes.h"
#include "account/queries.h"
#include "validate/validate.h"

namespace qbobj
{

int check_group_name(Call &call, const char *given, const char *&name, const Site &site)
{
    constexpr int too_long = 3;
    const int invalid = qbobj_validate_groupname(given, &name);
    if (invalid == too_long)
        return raise_at(site, call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "GroupName is too long (%s)", given);
    if (invalid != 0)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (%s)", given);
    return 0;
}

int check_new_group_name(Call &call, const char *given, const char *&name, const Site &site)
{
    if (is_empty(given))
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "GroupName is required for 'add'");
    return check_group_name(call, given, name, site);
}

int add_secondary_member(Call &call, const qbobj_Group_t &group, int group_id, const qbobj_User_t &member,
                         const Site &site)
{
    const int user_id = key_of(member.resource_id, member.UserId);
    if (user_id < 1)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (%d) in SecondaryMember.",
                        group.resource_id);
    return call.exec(Failure("Failed DB Query for 'INSERT group_has_user. %s").at(site),
                     "INSERT INTO `$group_has_user` (user_id,group_id) VALUES(%d,%d)", user_id, group_id);
}

} // namespace qbobj
