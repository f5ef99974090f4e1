// What the creation and the modification of shares have in common: words, rights, lists.
#pragma once

#include "account/account.h"
#include "share/protocols.h"
#include "share/share.h"
#include "validate/validate.h"

#include <array>

namespace qbobj
{

/* ---- Option records ------------------------------------------------------------------------------------ */

// Calls `write` for each of the records that is there, in the order given; the first failure ends it.
template <class Write, class... Options>
int each_option(Write write, Options *...options)
{
    int rc = 0;
    const auto goes_on = [&](auto *option) { return option == nullptr || (rc = write(*option)) == 0; };
    static_cast<void>((... && goes_on(options)));
    return rc;
}

// Tells the protocol's service of a change when it wants to hear of it.
template <class Option>
void tell_service(Call &call)
{
    if constexpr (protocol_of<Option>.is_told)
        qbdb_service_update_setting_by_share(call.qbdb(), call.db(), protocol_of<Option>.word);
}

// Replaces every list that the protocol has by the record's; a null list becomes empty.
template <class Option>
int write_lists(Call &call, const Option &option, const ListOwner &owner)
{
    int rc = 0;
    if constexpr (requires { option.HostAcl; })
        rc = qbobj_api2_addHostAcl(call, option.HostAcl, owner);
    if constexpr (requires { option.UserAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addUserAcl(call, option.UserAcl, owner);
    if constexpr (requires { option.GroupAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addGroupAcl(call, option.GroupAcl, owner);
    if constexpr (requires { option.DfolderAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addDfolderAcl(call, option.DfolderAcl, owner);
    if constexpr (requires { option.UserPasswordAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addUserPasswordAcl(call, option.UserPasswordAcl, owner);
    return rc;
}

// Applies every option record that the share carries; sets their `Changed`.
int modify_protocols(Call &call, qbobj_Share_t &share, int32_t share_id);

/* ---- Users and groups, which differ in names only ------------------------------------------------------ */

template <class Account>
struct AccountKind;

template <>
struct AccountKind<qbobj_SystemUser_t> {
    static constexpr auto id = &qbobj_SystemUser_t::UserId;
    static constexpr auto name = &qbobj_SystemUser_t::UserName;
    static constexpr auto id_in_directory = qbdb_util_get_posix_uid_by_name;
    static constexpr auto posix_id_of_name = x_qbobj_getPosixUID;
    static constexpr auto posix_id_of_id = x_qbobj_getPosixUIDbyUID;
};

template <>
struct AccountKind<qbobj_SystemGroup_t> {
    static constexpr auto id = &qbobj_SystemGroup_t::GroupId;
    static constexpr auto name = &qbobj_SystemGroup_t::GroupName;
    static constexpr auto id_in_directory = qbdb_util_get_posix_gid_by_name;
    static constexpr auto posix_id_of_name = x_qbobj_getPosixGID;
    static constexpr auto posix_id_of_id = x_qbobj_getPosixGIDbyGID;
};

/* ---- Words that are checked; `field` names them in messages -------------------------------------------- */

// Rights of new files and folders: permission bits, or the bits of a umask.
struct Rights {
    int file_group = 0;
    int file_everyone = 0;
    int folder_group = 0;
    int folder_everyone = 0;

    int file() const { return file_group << 3 | file_everyone; }
    int folder() const { return folder_group << 3 | folder_everyone; }
};

// Four words, or the names of their fields, in the order of Rights.
using RightWords = std::array<const char *, 4>;

template <class Option>
RightWords right_words(const Option &option)
{
    return {option.FileCreateGroupRights, option.FileCreateEveryoneRights, option.FolderCreateGroupRights,
            option.FolderCreateEveryoneRights};
}

using RightValidator = int (*)(const char *str, const char *defstr, int *bits, int is_dir);

// A missing right counts as "ReadWrite".
int read_right(Call &call, RightValidator validate, const char *field, const char *word, int is_dir,
               int &bits, const Site &site = here());
int read_rights(Call &call, RightValidator validate, const RightWords &fields, const RightWords &words,
                Rights &rights, const Site &site = here());

// The stored word of an access word; a missing one counts as `otherwise`.
int read_access(Call &call, const char *field, const char *word, const char *otherwise, const char *&stored,
                const Site &site = here());

// What media players are offered. Their access is fixed, its word only checked.
int read_media(Call &call, const qbobj_DlnaShareOption_t &option, int &media_type, const Site &site = here());

// The name of a share that is made or renamed.
int check_share_name(Call &call, const char *name, const Site &site = here());

int check_sync(Call &call, const char *sync, const Site &site = here());

} // namespace qbobj
