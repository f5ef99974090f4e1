// What creating, changing, importing and deleting users have in common: the rules of what an account consists of, and
// what is asked of the database.
#pragma once

#include "account/account.h"

namespace qbobj
{

// `name` receives the name to store; `too_long` is the message for one that is too long.
int check_user_name(Call &call, const char *given, const Message<const char *> &too_long, const char *&name,
                    const Site &site = here());
// The same for a new user, who must have one.
int check_new_user_name(Call &call, const char *given, const char *&name, const Site &site = here());
// `email` receives the address to store, "" for none.
int check_email(Call &call, const char *given, const char *&email, const Site &site = here());
// `stored` receives the stored form, "" for no password. The mask that reads return is none.
int encode_password(Call &call, const char *plain, const char *&stored, const Site &site = here());
int raise_invalid_password(Call &call, const char *password, int rc, const Site &site = here());
// `group_id` stays as it is when no group is named.
int find_primary_group(Call &call, const char *name, int &group_id, const Site &site = here());

struct StoredUser {
    const char *home;
    const char *name;
};
int read_stored_user(Call &call, int user_id, StoredUser &stored, const Site &site = here());

// Whether nobody backs up to the appliance with Time Machine any more: only the row of user 96 is left, which carries the
// size of the area that all users share, and it is not enabled.
int timemachine_is_unused(Call &call, bool &unused, const Site &site = here());

} // namespace qbobj
