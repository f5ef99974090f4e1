// What creating, changing and importing groups have in common: the rules of the name and the secondary members.
#pragma once

#include "account/account.h"

namespace qbobj
{

// `name` receives the name to store.
int check_group_name(Call &call, const char *given, const char *&name, const Site &site = here());
int check_new_group_name(Call &call, const char *given, const char *&name, const Site &site = here());

// Makes a user a secondary member of the group with the id `group_id`, which `group` describes.
int add_secondary_member(Call &call, const qbobj_Group_t &group, int group_id, const qbobj_User_t &member,
                         const Site &site = here());

} // namespace qbobj
