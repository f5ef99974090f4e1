// What the creation and the modification of a share's protocol options have in common: words, rights, lists.
#pragma once

#include "core/call.h"
#include "share/share.h"
#include "validate/validate.h"

#include <array>

namespace qbobj
{

// The protocol's word: it names the option table, the rows of the access lists and the service.
template <class Option>
inline constexpr const char *protocol_of = nullptr;
template <>
inline constexpr const char *protocol_of<qbobj_CifsShareOption_t> = "cifs";
template <>
inline constexpr const char *protocol_of<qbobj_AfpShareOption_t> = "afp";
template <>
inline constexpr const char *protocol_of<qbobj_NfsShareOption_t> = "nfs";
template <>
inline constexpr const char *protocol_of<qbobj_FtpShareOption_t> = "ftp";
template <>
inline constexpr const char *protocol_of<qbobj_HttpShareOption_t> = "http";
template <>
inline constexpr const char *protocol_of<qbobj_DlnaShareOption_t> = "dlna";
template <>
inline constexpr const char *protocol_of<qbobj_DaapShareOption_t> = "daap";
template <>
inline constexpr const char *protocol_of<qbobj_RsyncShareOption_t> = "rsync";

// Services that want to hear of every change to a share.
template <class Option>
inline constexpr bool is_refreshed = false;
template <>
inline constexpr bool is_refreshed<qbobj_CifsShareOption_t> = true;
template <>
inline constexpr bool is_refreshed<qbobj_FtpShareOption_t> = true;

template <class Option>
void refresh_service(Call &call)
{
    if constexpr (is_refreshed<Option>)
        qbdb_service_update_setting_by_share(call.qbdb(), call.db(), protocol_of<Option>);
}

// Replaces every list that the protocol has by the record's; a null list becomes empty.
template <class Option>
int write_lists(Call &call, const Option &option, int32_t share_id)
{
    const char *proto = protocol_of<Option>;
    int rc = 0;
    if constexpr (requires { option.HostAcl; })
        rc = qbobj_api2_addHostAcl(call, option.HostAcl, share_id, proto);
    if constexpr (requires { option.UserAcl; })
        rc = rc != 0 ? rc
                     : qbobj_api2_addUserAcl(call, option.UserAcl, share_id, proto, call.directory().ads,
                                             call.directory().no_sync);
    if constexpr (requires { option.GroupAcl; })
        rc = rc != 0 ? rc
                     : qbobj_api2_addGroupAcl(call, option.GroupAcl, share_id, proto, call.directory().ads,
                                              call.directory().no_sync);
    if constexpr (requires { option.DfolderAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addDfolderAcl(call, option.DfolderAcl, share_id);
    if constexpr (requires { option.UserPasswordAcl; })
        rc = rc != 0 ? rc : qbobj_api2_addUserPasswordAcl(call, option.UserPasswordAcl, share_id);
    return rc;
}

// Applies every option record that the share carries; sets their `Changed`.
int modify_protocols(Call &call, qbobj_Share_t &share, int32_t share_id);

// Rights of new files and folders: permission bits, or the bits of a umask.
struct Rights {
    int file_group = 0;
    int file_everyone = 0;
    int folder_group = 0;
    int folder_everyone = 0;

    int file() const { return file_group << 3 | file_everyone; }
    int folder() const { return folder_group << 3 | folder_everyone; }
};

using RightValidator = int (*)(const char *str, const char *defstr, int *bits, int is_dir);

// The names of the four fields in messages, in the order of Rights.
using RightNames = std::array<const char *, 4>;

// Every source file has its own copy of what follows, so that errors carry its name.
namespace
{

inline int read_right(Call &call, RightValidator validate, const char *field, const char *word, int is_dir,
                      int &bits)
{
    if (validate(word, "ReadWrite", &bits, is_dir) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid %s (%s).", field, word);
    return 0;
}

// A missing right counts as "ReadWrite".
template <class Option>
int read_rights(Call &call, const Option &option, RightValidator validate, const RightNames &names,
                Rights &rights)
{
    const auto [file_group, file_everyone, folder_group, folder_everyone] = names;
    if (const int rc =
            read_right(call, validate, file_group, option.FileCreateGroupRights, 0, rights.file_group))
        return rc;
    if (const int rc = read_right(call, validate, file_everyone, option.FileCreateEveryoneRights, 0,
                                  rights.file_everyone))
        return rc;
    if (const int rc =
            read_right(call, validate, folder_group, option.FolderCreateGroupRights, 1, rights.folder_group))
        return rc;
    return read_right(call, validate, folder_everyone, option.FolderCreateEveryoneRights, 1,
                      rights.folder_everyone);
}

// The stored word of an access word; a missing one counts as `otherwise`.
inline int read_access(Call &call, const char *field, const char *word, const char *otherwise,
                       const char *&stored)
{
    if (qbobj_validate_access(word, otherwise, &stored) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid %s (%s).", field, word);
    return 0;
}

// The name of a share that is made or renamed.
inline int check_share_name(Call &call, const char *name)
{
    switch (const int rc = qbobj_validate_sharename(name, nullptr)) {
    case 0:
        return 0;
    case 3:
        return raise(call, QBOBJ_ERROR_UI__NAME_TOO_LONG, "ShareName is too long (%s)", name);
    case 4:
    case 5:
        return raise(call, QBOBJ_ERROR_UI__SHARENAME_RESERVED, "ShareName (%s) is reserved", name);
    default:
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid ShareName (%s), rc=%d", name, rc);
    }
}

inline int check_sync(Call &call, const char *sync)
{
    if (qbobj_validate_string(sync, 0, "standard", "always", "disabled", nullptr) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS,
                     "Invalid Sync (%s). One of 'standard', 'always', 'disabled'.", sync);
    return 0;
}

} // namespace

} // namespace qbobj
