// Owner, permissions and POSIX access control lists of a share's folder, read from the file system.
#include "account/account.h"
#include "share/share_reading.h"

#include <acl/libacl.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <climits>
#include <memory>

namespace qbobj
{

namespace
{

struct FreeAcl {
    void operator()(void *object) const { acl_free(object); }
};
using Acl = std::unique_ptr<std::remove_pointer_t<acl_t>, FreeAcl>;
using Qualifier = std::unique_ptr<void, FreeAcl>;

constexpr int access_type = 0;
constexpr int default_type = 1;

int permissions(acl_entry_t entry)
{
    acl_permset_t permset = nullptr;
    if (acl_get_permset(entry, &permset) != 0)
        return 0;
    const auto bit = [permset](acl_perm_t permission, int value) {
        return acl_get_perm(permset, permission) == 1 ? value : 0;
    };
    return bit(ACL_READ, 4) + bit(ACL_WRITE, 2) + bit(ACL_EXECUTE, 1);
}

// Without memory a list would seem shorter than it is.
void check_memory(const void *result)
{
    if (result == nullptr && errno == ENOMEM)
        throw std::bad_alloc();
}

void fill_entry(FolderReader &reader, acl_entry_t entry, qbobj_PosixAcl_t &record)
{
    acl_tag_t tag = ACL_UNDEFINED_TAG;
    acl_get_tag_type(entry, &tag);
    record.Tag = tag;
    record.Perm = permissions(entry);
    record.Id = -1;
    if (tag != ACL_USER && tag != ACL_GROUP)
        return;
    const Qualifier qualifier(acl_get_qualifier(entry));
    check_memory(qualifier.get());
    if (qualifier == nullptr)
        return;
    // uid_t and gid_t are of one type.
    record.Id = static_cast<int>(*static_cast<const uid_t *>(qualifier.get()));
    record.Name = tag == ACL_USER ? reader.user_name(record.Id) : reader.group_name(record.Id);
}

// What distinguishes the two lists of a folder.
struct AclKind {
    acl_type_t acl_type;
    int type; // of the record
    const char *name;
    const char *attribute; // where the kernel keeps it
};
constexpr AclKind access_list{ACL_TYPE_ACCESS, access_type, "access", "system.posix_acl_access"};
constexpr AclKind default_list{ACL_TYPE_DEFAULT, default_type, "default", "system.posix_acl_default"};

// False when the list could not be read, or not to its end.
bool append_acl(Call &call, FolderReader &reader, const AclKind &kind, const char *path,
                Tail<qbobj_PosixAcl_t> &tail)
{
    const Acl acl(acl_get_file(path, kind.acl_type));
    check_memory(acl.get());
    if (acl == nullptr) {
        log(call, QBDB_LOG_WARN, "Cannot get %s ACL from %s. errno=%d\n", kind.name, path, errno);
        return false;
    }
    acl_entry_t entry = nullptr;
    int found = acl_get_entry(acl.get(), ACL_FIRST_ENTRY, &entry);
    for (; found == 1; found = acl_get_entry(acl.get(), ACL_NEXT_ENTRY, &entry)) {
        qbobj_PosixAcl_t &record = tail.append(call.pool());
        record.Type = kind.type;
        fill_entry(reader, entry, record);
    }
    if (found < 0)
        log(call, QBDB_LOG_WARN, "Error reading %s acl entry from %s. errno=%d\n", kind.name, path, errno);
    return found == 0;
}

// New files inherit the folder's own permissions: every entry of the access list stands in the default list,
// whomever it names, and the lists are of the same length.
bool inherits(qbobj_PosixAcl_t *acls)
{
    const Chain<qbobj_PosixAcl_t> entries(acls);
    int matched = 0;
    int defaults = 0;
    for (const qbobj_PosixAcl_t &entry : entries) {
        if (entry.Type == default_type) {
            ++defaults;
            continue;
        }
        bool inherited = false;
        for (const qbobj_PosixAcl_t &other : entries)
            inherited = inherited ||
                        (other.Type == default_type && other.Tag == entry.Tag && other.Perm == entry.Perm);
        if (!inherited)
            return false;
        ++matched;
    }
    return matched == defaults;
}

// A list without entries beyond the mode's is not kept: then the mode is the list.
bool is_not_kept(const AclKind &kind, const char *path)
{
    return ::getxattr(path, kind.attribute, nullptr, 0) < 0 && errno == ENODATA;
}

void append_mode(Call &call, mode_t mode, Tail<qbobj_PosixAcl_t> &tail)
{
    constexpr std::pair<acl_tag_t, int> entries[] = {{ACL_USER_OBJ, 6}, {ACL_GROUP_OBJ, 3}, {ACL_OTHER, 0}};
    for (const auto &[tag, shift] : entries) {
        qbobj_PosixAcl_t &record = tail.append(call.pool());
        record.Type = access_type;
        record.Tag = tag;
        record.Perm = static_cast<int>(mode >> shift) & 7;
        record.Id = -1;
    }
}

// `status` is null when the folder could not be examined.
void read_acls(Call &call, FolderReader &reader, const char *path, const struct stat *status,
               qbobj_FileStat_t &stat)
{
    Tail<qbobj_PosixAcl_t> tail(stat.Acls);
    bool access_read = true;
    if (status != nullptr && is_not_kept(access_list, path))
        append_mode(call, status->st_mode, tail);
    else
        access_read = append_acl(call, reader, access_list, path, tail);
    const bool no_defaults = status != nullptr && S_ISDIR(status->st_mode) && is_not_kept(default_list, path);
    const bool default_read = no_defaults || append_acl(call, reader, default_list, path, tail);
    stat.AclInherit = access_read && default_read && inherits(stat.Acls) ? 1 : 0;
}

// The owner of a folder by the system's number. One that no account can have reads like that of an unknown owner.
template <class Account>
int read_owner(Call &call, std::map<unsigned, Account> &known, unsigned number,
               int (*read)(Call &, Account &), int Account::*id, const char *Account::*name, Account *&owner)
{
    owner = create<Account>(call.pool());
    if (const auto found = known.find(number); found != known.end()) {
        *owner = found->second;
        return 0;
    }
    if (number > INT_MAX) {
        owner->resource_id = owner->*id = -1;
        owner->*name = print(call, "%u", number);
    } else {
        owner->resource_id = static_cast<int>(number);
        if (const int rc = read(call, *owner))
            return rc;
    }
    known.emplace(number, *owner);
    return 0;
}

const char *name_of(Call &call, std::map<int, const char *> &known, int id,
                    int (*look_up)(Call &, int, char **))
{
    const auto [entry, is_new] = known.try_emplace(id, nullptr);
    if (is_new) {
        char *name = nullptr;
        look_up(call, id, &name); // a failure is named, too
        entry->second = name;
    }
    return entry->second;
}

} // namespace

const char *FolderReader::user_name(int id)
{
    return name_of(call_, user_names_, id, x_qbobj_getUserName);
}

const char *FolderReader::group_name(int id)
{
    return name_of(call_, group_names_, id, x_qbobj_getGroupName);
}

int FolderReader::read(const char *path, qbobj_FileStat_t &stat)
{
    const char *real_path = path_below_root(call_, path);
    struct stat status {
    };
    const bool examined = ::stat(real_path, &status) == 0;
    if (examined) {
        stat._PosixMode = static_cast<int>(status.st_mode);
        stat.NonOwnerDelete = (status.st_mode & S_ISVTX) == 0 ? 1 : 0;
        if (const int rc = read_owner(call_, users_, status.st_uid, read_system_user,
                                      &qbobj_SystemUser_t::UserId, &qbobj_SystemUser_t::UserName, stat.User))
            return rc;
        stat.UserAccess = access_word(stat._PosixMode >> 6);
        if (const int rc =
                read_owner(call_, groups_, status.st_gid, read_system_group, &qbobj_SystemGroup_t::GroupId,
                           &qbobj_SystemGroup_t::GroupName, stat.Group))
            return rc;
        stat.GroupAccess = access_word(stat._PosixMode >> 3);
        stat.EveryoneAccess = access_word(stat._PosixMode);
    }
    read_acls(call_, *this, real_path, examined ? &status : nullptr, stat);
    return 0;
}

} // namespace qbobj
