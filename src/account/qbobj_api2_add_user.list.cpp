// The list that users are imported from: read, checked, and handed over as records.
#include "account/group_changes.h"
#include "account/user_changes.h"
#include "account/user_list.h"
#include "validate/validate.h"

#include <string_view>
#include <unordered_set>

namespace qbobj
{
namespace
{

constexpr const char *user_list_path = "/tmp/user_list.txt";

using Names = std::unordered_set<std::string_view>;

template <class Record>
void collect(Names &names, Record *chain, const char *Record::*name)
{
    for (const Record &record : Chain(chain))
        if (record.*name != nullptr)
            names.insert(record.*name);
}

// -1: there is such a user; 0: there is such a group; 1: both are new.
int check_user_group_duplicate(const char *user, const char *group, const Names &users, const Names &groups)
{
    if (users.contains(user))
        return -1;
    return groups.contains(group) ? 0 : 1;
}

// What an import has found so far.
class Import
{
  public:
    Import(Call &call, qbobj_User_t *&users_end, qbobj_Group_t *&groups_end)
        : call_(call), users_(users_end), groups_(groups_end)
    {
    }
    void knows(const qbobj_UserCollection_t &users)
    {
        collect(user_names_, users.User, &qbobj_User_t::UserName);
    }
    void knows(const qbobj_GroupCollection_t &groups)
    {
        collect(group_names_, groups.Group, &qbobj_Group_t::GroupName);
    }
    int add(const UserListEntry &entry);

  private:
    int stored_password(const UserListEntry &entry, const char *&passwd) const;
    const char *keep(const char *text) const { return copy_text(call_.pool(), text); }

    Call &call_;
    Tail<qbobj_User_t> users_;
    Tail<qbobj_Group_t> groups_;
    Names user_names_;
    Names group_names_;
};

int Import::stored_password(const UserListEntry &entry, const char *&passwd) const
{
    if (!entry.encoded)
        return encode_password(call_, entry.password, passwd);
    passwd = entry.password;
    return is_masked(passwd) ? raise_invalid_password(call_, passwd, 1) : 0;
}

int Import::add(const UserListEntry &entry)
{
    const char *user_name = nullptr;
    if (const int rc = check_new_user_name(call_, entry.user_name, user_name))
        return rc;
    const char *group_name = nullptr;
    if (const int rc = check_new_group_name(call_, entry.group_name, group_name))
        return rc;
    const char *email = nullptr;
    if (const int rc = check_email(call_, entry.email, email))
        return rc;
    const char *passwd = nullptr;
    if (const int rc = stored_password(entry, passwd))
        return rc;

    const int duplicate = check_user_group_duplicate(user_name, group_name, user_names_, group_names_);
    if (duplicate < 0)
        return raise(call_, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS, "User (%s) already exists.", user_name);
    if (duplicate > 0) {
        qbobj_Group_t &group = groups_.append(call_.pool());
        group.GroupName = keep(group_name);
        group_names_.insert(group.GroupName);
    }
    qbobj_User_t &user = users_.append(call_.pool());
    user.UserName = keep(user_name);
    user.GroupName = keep(group_name);
    user.Email = keep(email);
    user.Password = keep(passwd);
    user_names_.insert(user.UserName);
    return 0;
}

int read_user_list(Call &call, Import &import)
{
    UserListReader list(path_below_root(call, user_list_path));
    if (list.missing())
        return raise(call, QBOBJ_ERROR_UNKNOWN, "User file not exist");
    UserListEntry entry{};
    for (;;) {
        switch (list.next(entry)) {
        case UserListReader::Next::end:
            return 0;
        case UserListReader::Next::wrong_format:
            return raise(call, QBOBJ_ERROR_UNKNOWN, "User file wrong format");
        case UserListReader::Next::entry:
            if (const int rc = import.add(entry))
                return rc;
        }
    }
}

} // namespace

int x_qbobj_checkUserList(Call &call, qbobj_UserCollection_t *user_collection,
                          qbobj_GroupCollection_t *group_collection,
                          qbobj_UserCollection_t *user_collection_bak,
                          qbobj_GroupCollection_t *group_collection_bak)
{
    if (user_collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user_collection cannot be NULL.");
    if (group_collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group_collection cannot be NULL.");
    if (user_collection_bak == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "user_collection_bak cannot be NULL.");
    if (group_collection_bak == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "group_collection_bak cannot be NULL.");

    qbobj_User_t *&users_end = end_of(user_collection->User);
    qbobj_Group_t *&groups_end = end_of(group_collection->Group);
    Import import(call, users_end, groups_end);
    import.knows(*user_collection);
    import.knows(*user_collection_bak);
    import.knows(*group_collection);
    import.knows(*group_collection_bak);
    const int rc = read_user_list(call, import);
    if (rc != 0) {
        // Nothing of a list with a fault is handed over.
        users_end = nullptr;
        groups_end = nullptr;
    }
    return rc;
}

} // namespace qbobj
