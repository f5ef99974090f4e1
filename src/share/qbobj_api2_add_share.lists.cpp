// The access lists of a share: who may use it over a protocol, the links to other servers, rsync's logins.
#include "share/share_writing.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace qbobj
{

namespace
{

using Default = DefaultAccess;

// A share without an option row allows nothing.
int read_default(Call &call, const ListOwner &owner, Default &access)
{
    if (owner.of_new_share) {
        access = *owner.of_new_share;
        return 0;
    }
    const char *proto = owner.proto;
    int32_t stored = 0;
    const int rc = call.number(
        {"Failed DB Query for 'SELECT %s_share_option'. %s", proto}, stored,
        R"(SELECT CASE WHEN O.%s_access='writeable' THEN %d WHEN O.%s_access='readonly' THEN %d ELSE %d END
        FROM %s_share_option O WHERE share_id=%d)",
        proto, Default::read_write, proto, Default::read_only, Default::none, proto, owner.share_id);
    access = static_cast<Default>(stored);
    return rc;
}

// An entry that grants what the default grants anyway. Where the default grants nothing, no entry repeats it.
bool repeats_default(Default access, int read, int write)
{
    switch (access) {
    case Default::read_only:
        return read != 0 && write == 0;
    case Default::read_write:
        return read != 0 && write != 0;
    default:
        return false;
    }
}

/* ---- Users and groups ---------------------------------------------------------------------------------- */

// Members of the cloud-access group and administrators are listed whatever the default is.
bool is_always_listed(Call &call, const qbobj_UserAcl_t &, int user_id)
{
    const Number member = call.ask_number(R"(SELECT DISTINCT 1 FROM `$user` u, `$group` g
        WHERE u.group_id = g.id AND (g.gname = 'sky-port' OR g.gname = 'admin') AND u.id = %d)",
                                          user_id);
    if (!member) {
        const Site site = here();
        log(call, QBDB_LOG_ERROR, "ERROR:%s:%d Failed DB Query error: %s", site.unit.data(), site.line,
            member.error());
    }
    return member.found != 0;
}

bool is_always_listed(Call &, const qbobj_GroupAcl_t &, int)
{
    return false;
}

// The differences between the list of users and that of groups.
template <class Entry>
struct AccountList;

template <>
struct AccountList<qbobj_UserAcl_t> {
    using Account = qbobj_SystemUser_t;
    static constexpr auto account = &qbobj_UserAcl_t::User;
    static constexpr Statement<int, int, const char *, int, int> insert =
        "INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)";
    static constexpr Message<> no_account = "Invalid UserAcl->User cannot be NULL";
    static constexpr Message<int, const char *> bad_account =
        "Invalid UserAcl->User (resource_id=%d, UserName=%s).";
    static constexpr Message<const char *> bad_access = "Invalid UserAcl->Access (%s).";
};

// One of its messages speaks of users; callers depend on the wording.
template <>
struct AccountList<qbobj_GroupAcl_t> {
    using Account = qbobj_SystemGroup_t;
    static constexpr auto account = &qbobj_GroupAcl_t::Group;
    static constexpr Statement<int, int, const char *, int, int> insert =
        "INSERT INTO `group_acl` (share_id,group_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)";
    static constexpr Message<> no_account = "Invalid UserAcl->Group cannot be NULL";
    static constexpr Message<int, const char *> bad_account =
        "Invalid GroupAcl->Group (resource_id=%d, GroupName=%s).";
    static constexpr Message<const char *> bad_access = "Invalid GroupAcl->Access (%s).";
};

// The account's id. An entry that has only a name is looked up where accounts are not mirrored, and its
// record then carries the id.
template <class Entry>
int find_account(Call &call, Entry &entry, int &id)
{
    using List = AccountList<Entry>;
    using Kind = AccountKind<typename List::Account>;
    auto *account = entry.*List::account;
    if (account == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, List::no_account);
    const char *name = account->*Kind::name;
    id = account->resource_id != 0 ? account->resource_id : account->*Kind::id;
    if (id != 0)
        return 0;
    if (!call.directory().no_sync || is_empty(name))
        return raise(call, QBOBJ_ERROR_API_ARGS, List::bad_account, account->resource_id, name);
    id = Kind::id_in_directory(call.qbdb(), name, call.directory().ads);
    if (id < 0)
        return raise(call, QBOBJ_ERROR_UI__NO_LDAP_OBJECT, List::bad_account, account->resource_id, name);
    account->resource_id = account->*Kind::id = id;
    return 0;
}

template <class Entry>
int add_accounts(Call &call, Entry *acl, const ListOwner &owner)
{
    using List = AccountList<Entry>;
    if (acl == nullptr)
        return 0;
    Default access = Default::none;
    if (const int rc = read_default(call, owner, access))
        return rc;
    for (Entry &entry : Chain(acl)) {
        int id = 0;
        int read = 0;
        int write = 0;
        if (const int rc = find_account(call, entry, id))
            return rc;
        if (qbobj_validate_read_write(entry.Access, nullptr, &read, &write) != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, List::bad_access, entry.Access);
        if (repeats_default(access, read, write) && !is_always_listed(call, entry, id))
            continue;
        if (const int rc = call.exec({"Failed DB Query for %s 'INSERT user_acl'. %s", owner.proto},
                                     List::insert, owner.share_id, id, owner.proto, read, write))
            return rc;
    }
    return 0;
}

/* ---- Hosts --------------------------------------------------------------------------------------------- */

// A host that is known by its id, perhaps with its name as a proof.
int check_host(Call &call, int id, const char *name)
{
    static constexpr Failure failed = "Failed SQL 'SELECT host'. %s";
    int32_t count = 0;
    if (const int rc =
            name == nullptr
                ? call.number(failed, count, "SELECT COUNT(*) FROM `host` WHERE id=%d", id)
                : call.number(failed, count, "SELECT COUNT(*) FROM `host` WHERE id=%d AND name=%Q", id, name))
        return rc;
    if (count != 1)
        return raise(call, QBOBJ_ERROR_API_ARGS,
                     "Specified HostId (%d) and/or HostName (%s) conflict with db. ", id, name);
    return 0;
}

// The id of a host given by its name, which is remembered when it is new.
int remember_host(Call &call, const char *name, int &id)
{
    const char *canonical = nullptr;
    if (name == nullptr || qbobj_validate_host_or_net(call.pool(), name, &canonical) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HostName or Network specified (%s).", name);
    // Most hosts are known: looked up first, they cost no write.
    const auto look_up = [&] {
        return call.number("Failed SQL 'SELECT host'. %s", id, "SELECT id FROM `host` WHERE name=%Q",
                           canonical);
    };
    if (const int rc = look_up(); rc != 0 || id != 0)
        return rc;
    if (const int rc = call.exec("Failed SQL 'INSERT host'. %s",
                                 "INSERT OR IGNORE INTO `host` (name) VALUES(%Q)", canonical))
        return rc;
    return look_up();
}

struct HostRights {
    int read;
    int write;
    int root;
};

// What is stored of a host's entry, if anything.
std::optional<HostRights> stored_rights(std::string_view proto, Default access, HostRights given)
{
    const auto [read, write, root] = given;
    if (proto == "cifs")
        return HostRights{1, 1, 0};
    if (proto == "afp")
        return std::nullopt;
    if (proto == "nfs" && root != 0 && read == 0 && write == 0)
        return HostRights{access != Default::none, access == Default::read_write, root};
    if (proto == "nfs")
        return given;
    if (proto == "ftp" && repeats_default(access, read, write))
        return HostRights{0, 0, 0};
    return HostRights{read, write, 0};
}

int add_host(Call &call, const ListOwner &owner, Default access, const qbobj_HostAcl_t &entry)
{
    if (entry.Host == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HostAcl->Host cannot be NULL");
    const char *name = entry.Host->HostName;
    if (name != nullptr && *name == '\0')
        return 0;
    int id = entry.Host->resource_id != 0 ? entry.Host->resource_id : entry.Host->HostId;
    if (const int rc = id != 0 ? check_host(call, id, name) : remember_host(call, name, id))
        return rc;
    HostRights given{0, 0, entry.Root};
    if (qbobj_validate_read_write(entry.Access, nullptr, &given.read, &given.write) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid HostAcl->Access (%s).", entry.Access);

    const std::optional<HostRights> rights = stored_rights(owner.proto, access, given);
    if (!rights)
        return 0;
    return call.exec({"Failed DB Query for %s 'INSERT host_acl'. %s", owner.proto},
                     "INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) "
                     "VALUES(%d,%d,%Q,%d,%d,%d)",
                     owner.share_id, id, owner.proto, rights->read, rights->write, rights->root);
}

/* ---- Links to other servers, and rsync's logins -------------------------------------------------------- */

// Where a share lies, as its links repeat it; null for a share that is gone.
struct Home {
    const char *volume = nullptr;
    const char *name = nullptr;
};

constexpr auto home_of = select<int>("SELECT S.volume_id,S.name FROM share S WHERE S.id=%d",
                                     "Failed DB Query for 'SELECT share'. %s", &Home::volume, &Home::name);

struct Login {
    const char *user;
};

constexpr auto stored_logins =
    select<int>("SELECT U.user FROM rsync_user_password_acl U WHERE share_id=%d",
                "Failed DB Query for 'SELECT rsync_user_password_acl'. %s", &Login::user);

int remove_login(Call &call, int32_t share_id, const char *user)
{
    return call.exec("Failed DB Query for 'DELETE rsync_user_password_acl'. %s",
                     "DELETE FROM `rsync_user_password_acl` WHERE share_id=%d AND user=%Q", share_id, user);
}

// A password that is left out or comes back masked stays as it is stored.
int store_login(Call &call, int32_t share_id, const qbobj_UserPasswordAcl_t &entry)
{
    if (entry.Password == nullptr || std::strcmp(entry.Password, masked_password) == 0)
        return 0;
    if (const int rc = remove_login(call, share_id, entry.UserName))
        return rc;
    return call.exec("Failed DB Query for 'INSERT rsync_user_password_acl'. %s",
                     "INSERT INTO `rsync_user_password_acl` (share_id,user,password) VALUES(%d,%Q,%Q)",
                     share_id, entry.UserName, entry.Password);
}

} // namespace

int qbobj_api2_addHostAcl(Call &call, qbobj_HostAcl_t *acl, const ListOwner &owner)
{
    // The word "cifs" stands for every protocol here.
    if (!owner.of_new_share)
        if (const int rc = call.exec("Failed DB Query for cifs 'DELETE FROM host_acl'. %s",
                                     "DELETE FROM `host_acl` WHERE share_id=%d AND proto=%Q", owner.share_id,
                                     owner.proto))
            return rc;
    if (acl == nullptr)
        return 0;
    Default access = Default::none;
    if (const int rc = read_default(call, owner, access))
        return rc;
    return for_each(acl, add_host, call, owner, access);
}

int qbobj_api2_addUserAcl(Call &call, qbobj_UserAcl_t *acl, const ListOwner &owner)
{
    if (!owner.of_new_share)
        if (const int rc = call.exec({"Failed DB Query for %s 'DELETE FROM user_acl'. %s", owner.proto},
                                     "DELETE FROM `user_acl` WHERE share_id=%d AND proto=%Q", owner.share_id,
                                     owner.proto))
            return rc;
    return add_accounts(call, acl, owner);
}

int qbobj_api2_addGroupAcl(Call &call, qbobj_GroupAcl_t *acl, const ListOwner &owner)
{
    // The word "cifs" stands for every protocol here, too.
    if (!owner.of_new_share)
        if (const int rc = call.exec("Failed DB Query for cifs 'DELETE FROM group_acl'. %s",
                                     "DELETE FROM `group_acl` WHERE share_id=%d AND proto=%Q", owner.share_id,
                                     owner.proto))
            return rc;
    return add_accounts(call, acl, owner);
}

int qbobj_api2_addDfolderAcl(Call &call, qbobj_DfolderAcl_t *acl, const ListOwner &owner)
{
    if (!owner.of_new_share)
        if (const int rc = call.exec("Failed DB Query for 'DELETE FROM cifs_dfs_option'. %s",
                                     "DELETE FROM `cifs_dfs_option` WHERE share_id=%d", owner.share_id))
            return rc;
    if (acl == nullptr)
        return 0;
    Home home;
    if (const int rc = call.read(home_of, home, owner.share_id))
        return rc;
    for (const qbobj_DfolderAcl_t &link : Chain(acl))
        if (const int rc =
                call.exec("Failed DB Query for 'INSERT INTO cifs_dfs_option'. %s",
                          "INSERT INTO `cifs_dfs_option` "
                          "(share_id,volume,share,folder,address,remote_share) "
                          "VALUES(%d,%Q,%Q,%Q,%Q,%Q)",
                          owner.share_id, home.volume, home.name, link.Name, link.Address, link.RemoteShare))
            return rc;
    return 0;
}

int qbobj_api2_addUserPasswordAcl(Call &call, qbobj_UserPasswordAcl_t *acl, const ListOwner &owner)
{
    if (acl != nullptr && acl->UserName == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserPasswordAcl->UserName cannot be NULL");
    std::unordered_set<std::string_view> named;
    for (const qbobj_UserPasswordAcl_t &entry : Chain(acl)) {
        if (is_empty(entry.UserName))
            break;
        if (const int rc = store_login(call, owner.share_id, entry))
            return rc;
        named.insert(entry.UserName);
    }
    if (owner.of_new_share)
        return 0;
    const auto remove_unnamed = [&](const Login &login) {
        return named.contains(or_empty(login.user)) ? 0 : remove_login(call, owner.share_id, login.user);
    };
    return call.each<Login>(stored_logins, remove_unnamed, owner.share_id);
}

} // namespace qbobj
