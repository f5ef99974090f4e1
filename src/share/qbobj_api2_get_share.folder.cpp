// Owner, permissions and POSIX access control lists of a share's folder, read from the file system.
#include "account/account.h"
#include "share/share_reading.h"

#include <acl/libacl.h>
#include <sys/acl.h>
#include <sys/stat.h>

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

void fill_entry(Call &call, acl_entry_t entry, qbobj_PosixAcl_t &record)
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
    char *name = nullptr;
    if (tag == ACL_USER) {
        record.Id = static_cast<int>(*static_cast<const uid_t *>(qualifier.get()));
        x_qbobj_getUserName(call, record.Id, &name);
    } else {
        record.Id = static_cast<int>(*static_cast<const gid_t *>(qualifier.get()));
        x_qbobj_getGroupName(call, record.Id, &name);
    }
    record.Name = name;
}

// What distinguishes the two lists of a folder.
struct AclKind {
    acl_type_t acl_type;
    int type; // of the record
    const char *name;
};
constexpr AclKind access_list{ACL_TYPE_ACCESS, access_type, "access"};
constexpr AclKind default_list{ACL_TYPE_DEFAULT, default_type, "default"};

// False when the list could not be read, or not to its end.
bool append_acl(Call &call, const AclKind &kind, const char *path, Tail<qbobj_PosixAcl_t> &tail)
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
        fill_entry(call, entry, record);
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

void read_acls(Call &call, const char *path, qbobj_FileStat_t &stat)
{
    Tail<qbobj_PosixAcl_t> tail(stat.Acls);
    const bool access_read = append_acl(call, access_list, path, tail);
    const bool default_read = append_acl(call, default_list, path, tail);
    stat.AclInherit = access_read && default_read && inherits(stat.Acls) ? 1 : 0;
}

// The owner of a folder by the system's number. One that no account can have reads like that of an unknown owner.
template <class Account>
int read_owner(Call &call, unsigned number, int (*read)(Call &, Account &), int Account::*id,
               const char *Account::*name, Account *&owner)
{
    owner = create<Account>(call.pool());
    if (number > INT_MAX) {
        owner->resource_id = owner->*id = -1;
        owner->*name = print(call, "%u", number);
        return 0;
    }
    owner->resource_id = static_cast<int>(number);
    return read(call, *owner);
}

} // namespace

int read_folder_stat(Call &call, const char *path, qbobj_FileStat_t &stat)
{
    const char *real_path = path_below_root(call, path);
    struct stat status {
    };
    if (::stat(real_path, &status) == 0) {
        stat._PosixMode = static_cast<int>(status.st_mode);
        stat.NonOwnerDelete = (status.st_mode & S_ISVTX) == 0 ? 1 : 0;
        if (const int rc = read_owner(call, status.st_uid, read_system_user, &qbobj_SystemUser_t::UserId,
                                      &qbobj_SystemUser_t::UserName, stat.User))
            return rc;
        stat.UserAccess = access_word(stat._PosixMode >> 6);
        if (const int rc = read_owner(call, status.st_gid, read_system_group, &qbobj_SystemGroup_t::GroupId,
                                      &qbobj_SystemGroup_t::GroupName, stat.Group))
            return rc;
        stat.GroupAccess = access_word(stat._PosixMode >> 3);
        stat.EveryoneAccess = access_word(stat._PosixMode);
    }
    read_acls(call, real_path, stat);
    return 0;
}

} // namespace qbobj
