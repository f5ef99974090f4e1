// The access lists of a share: who may use it over a protocol, the links to other servers, rsync's logins.
#include "core/call.h"
#include "share/share.h"
#include "validate/validate.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace qbobj
{

namespace
{

// What a protocol allows those whom no list names.
enum default_access_t : int { _ACC_NO = 0, _ACC_RO = 1, _ACC_RW = 2 };

// A share without an option row allows nothing.
int read_default_access(Call &call, int32_t share_id, const char *proto, default_access_t &access)
{
    const Number stored = call.ask_number(
        R"(SELECT CASE WHEN O.%s_access='writeable' THEN %d WHEN O.%s_access='readonly' THEN %d ELSE %d END
        FROM %s_share_option O WHERE share_id=%d)",
        proto, _ACC_RW, proto, _ACC_RO, _ACC_NO, proto, share_id);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT %s_share_option'. %s", proto,
                     stored.error());
    access = static_cast<default_access_t>(stored.value);
    return 0;
}

// An entry that grants what the default grants anyway. Where the default grants nothing, no entry repeats it.
bool repeats_default(default_access_t access, int read, int write)
{
    switch (access) {
    case _ACC_RO:
        return read != 0 && write == 0;
    case _ACC_RW:
        return read != 0 && write != 0;
    default:
        return false;
    }
}

/* ---- Users and groups ---------------------------------------------------------------------------------- */

// Members of the cloud-access group and administrators are listed whatever the default is.
bool is_always_listed(Call &call, int user_id)
{
    const Number member = call.ask_number(R"(SELECT DISTINCT 1 FROM `$user` u, `$group` g
        WHERE u.group_id = g.id AND (g.gname = 'sky-port' OR g.gname = 'admin') AND u.id = %d)",
                                          user_id);
    if (!member)
        log(call, QBDB_LOG_ERROR, "ERROR:%s:%d Failed DB Query error: %s", here().unit.data(), here().line,
            member.error());
    return member.found != 0;
}

// The differences between the list of users and that of groups.
template <class Entry>
struct AccountList;

template <>
struct AccountList<qbobj_UserAcl_t> {
    static constexpr auto account = &qbobj_UserAcl_t::User;
    static constexpr auto id = &qbobj_SystemUser_t::UserId;
    static constexpr auto name = &qbobj_SystemUser_t::UserName;
    static constexpr auto id_of_name = qbdb_util_get_posix_uid_by_name;
    static constexpr auto is_always_listed = qbobj::is_always_listed;

    static constexpr Statement<int, const char *> remove =
        "DELETE FROM `user_acl` WHERE share_id=%d AND proto=%Q";
    static constexpr Statement<int, int, const char *, int, int> insert =
        "INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)";

    static constexpr Message<const char *, const char *> remove_failed =
        "Failed DB Query for %s 'DELETE FROM user_acl'. %s";
    static const char *remove_word(const char *proto) { return proto; }
    static constexpr Message<> no_account = "Invalid UserAcl->User cannot be NULL";
    static constexpr Message<int, const char *> bad_account =
        "Invalid UserAcl->User (resource_id=%d, UserName=%s).";
    static constexpr Message<const char *> bad_access = "Invalid UserAcl->Access (%s).";
};

// Its messages speak of cifs and of users in places; callers depend on the wording.
template <>
struct AccountList<qbobj_GroupAcl_t> {
    static constexpr auto account = &qbobj_GroupAcl_t::Group;
    static constexpr auto id = &qbobj_SystemGroup_t::GroupId;
    static constexpr auto name = &qbobj_SystemGroup_t::GroupName;
    static constexpr auto id_of_name = qbdb_util_get_posix_gid_by_name;
    static bool is_always_listed(Call &, int) { return false; }

    static constexpr Statement<int, const char *> remove =
        "DELETE FROM `group_acl` WHERE share_id=%d AND proto=%Q";
    static constexpr Statement<int, int, const char *, int, int> insert =
        "INSERT INTO `group_acl` (share_id,group_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)";

    static constexpr Message<const char *, const char *> remove_failed =
        "Failed DB Query for %s 'DELETE FROM group_acl'. %s";
    static const char *remove_word(const char *) { return "cifs"; }
    static constexpr Message<> no_account = "Invalid UserAcl->Group cannot be NULL";
    static constexpr Message<int, const char *> bad_account =
        "Invalid GroupAcl->Group (resource_id=%d, GroupName=%s).";
    static constexpr Message<const char *> bad_access = "Invalid GroupAcl->Access (%s).";
};

// The account's id. An entry that has only a name is looked up where accounts are not mirrored, and its
// record then carries the id.
template <class Entry>
int find_account(Call &call, Entry &entry, const Directory &directory, int &id)
{
    using List = AccountList<Entry>;
    auto *account = entry.*List::account;
    if (account == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, List::no_account);
    const char *name = account->*List::name;
    id = account->resource_id != 0 ? account->resource_id : account->*List::id;
    if (id != 0)
        return 0;
    if (!directory.no_sync || is_empty(name))
        return raise(call, QBOBJ_ERROR_API_ARGS, List::bad_account, account->resource_id, name);
    id = List::id_of_name(call.qbdb(), name, directory.ads);
    if (id < 0)
        return raise(call, QBOBJ_ERROR_UI__NO_LDAP_OBJECT, List::bad_account, account->resource_id, name);
    account->resource_id = account->*List::id = id;
    return 0;
}

template <class Entry>
int replace_accounts(Call &call, Entry *acl, int32_t share_id, const char *proto, const Directory &directory)
{
    using List = AccountList<Entry>;
    const Status removed = call.run(List::remove, share_id, proto);
    if (!removed)
        return raise(call, QBOBJ_ERROR_DB_MISC, List::remove_failed, List::remove_word(proto),
                     removed.error());
    default_access_t access = _ACC_NO;
    if (const int rc = read_default_access(call, share_id, proto, access))
        return rc;

    for (Entry &entry : Chain(acl)) {
        int id = 0;
        int read = 0;
        int write = 0;
        if (const int rc = find_account(call, entry, directory, id))
            return rc;
        if (qbobj_validate_read_write(entry.Access, nullptr, &read, &write) != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, List::bad_access, entry.Access);
        if (repeats_default(access, read, write) && !List::is_always_listed(call, id))
            continue;
        const Status inserted = call.run(List::insert, share_id, id, proto, read, write);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for %s 'INSERT user_acl'. %s", proto,
                         inserted.error());
    }
    return 0;
}

/* ---- Hosts --------------------------------------------------------------------------------------------- */

// A host that is known by its id, perhaps with its name as a proof.
int check_host(Call &call, int id, const char *name)
{
    const Number count =
        name == nullptr ? call.ask_number("SELECT COUNT(*) FROM `host` WHERE id=%d", id)
                        : call.ask_number("SELECT COUNT(*) FROM `host` WHERE id=%d AND name=%Q", id, name);
    if (!count)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed SQL 'SELECT host'. %s", count.error());
    if (count.value != 1)
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
    const Status inserted = call.run("INSERT OR IGNORE INTO `host` (name) VALUES(%Q)", canonical);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed SQL 'INSERT host'. %s", inserted.error());
    const Number found = call.ask_number("SELECT id FROM `host` WHERE name=%Q", canonical);
    if (!found)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed SQL 'SELECT host'. %s", found.error());
    id = found.value;
    return 0;
}

struct HostRights {
    int read;
    int write;
    int root;
};

// What is stored of a host's entry, if anything.
std::optional<HostRights> stored_rights(std::string_view proto, default_access_t access, HostRights given)
{
    const auto [read, write, root] = given;
    if (proto == "cifs")
        return HostRights{1, 1, 0};
    if (proto == "afp")
        return std::nullopt;
    if (proto == "nfs" && root != 0 && read == 0 && write == 0)
        return HostRights{access != _ACC_NO, access == _ACC_RW, root};
    if (proto == "nfs")
        return given;
    if (proto == "ftp" && repeats_default(access, read, write))
        return HostRights{0, 0, 0};
    return HostRights{read, write, 0};
}

int add_host(Call &call, const qbobj_HostAcl_t &entry, int32_t share_id, const char *proto,
             default_access_t access)
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

    const std::optional<HostRights> rights = stored_rights(proto, access, given);
    if (!rights)
        return 0;
    const Status inserted = call.run("INSERT OR REPLACE INTO `host_acl` "
                                     "(share_id,host_id,proto,read,write,root) "
                                     "VALUES(%d,%d,%Q,%d,%d,%d)",
                                     share_id, id, proto, rights->read, rights->write, rights->root);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for %s 'INSERT host_acl'. %s", proto,
                     inserted.error());
    return 0;
}

/* ---- rsync's logins ------------------------------------------------------------------------------------ */

int remove_login(Call &call, int32_t share_id, const char *user)
{
    const Status removed =
        call.run("DELETE FROM `rsync_user_password_acl` WHERE share_id=%d AND user=%Q", share_id, user);
    if (!removed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE rsync_user_password_acl'. %s",
                     removed.error());
    return 0;
}

// A password that is left out or comes back masked stays as it is stored.
int store_login(Call &call, int32_t share_id, const qbobj_UserPasswordAcl_t &entry)
{
    if (entry.Password == nullptr || std::strcmp(entry.Password, masked_password) == 0)
        return 0;
    if (const int rc = remove_login(call, share_id, entry.UserName))
        return rc;
    const Status inserted =
        call.run("INSERT INTO `rsync_user_password_acl` (share_id,user,password) VALUES(%d,%Q,%Q)", share_id,
                 entry.UserName, entry.Password);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT rsync_user_password_acl'. %s",
                     inserted.error());
    return 0;
}

} // namespace

int qbobj_api2_addHostAcl(Call &call, qbobj_HostAcl_t *acl, int32_t share_id, const char *proto)
{
    const Status removed = call.run("DELETE FROM `host_acl` WHERE share_id=%d AND proto=%Q", share_id, proto);
    // The word "cifs" stands for every protocol here.
    if (!removed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for cifs 'DELETE FROM host_acl'. %s",
                     removed.error());
    default_access_t access = _ACC_NO;
    if (const int rc = read_default_access(call, share_id, proto, access))
        return rc;
    for (const qbobj_HostAcl_t &entry : Chain(acl)) {
        if (const int rc = add_host(call, entry, share_id, proto, access))
            return rc;
    }
    return 0;
}

int qbobj_api2_addUserAcl(Call &call, qbobj_UserAcl_t *acl, int32_t share_id, const char *proto, int ads_mode,
                          int no_sync_ads)
{
    return replace_accounts(call, acl, share_id, proto, {ads_mode != 0, ads_mode != 0 && no_sync_ads != 0});
}

int qbobj_api2_addGroupAcl(Call &call, qbobj_GroupAcl_t *acl, int32_t share_id, const char *proto,
                           int ads_mode, int no_sync_ads)
{
    return replace_accounts(call, acl, share_id, proto, {ads_mode != 0, ads_mode != 0 && no_sync_ads != 0});
}

int qbobj_api2_addDfolderAcl(Call &call, qbobj_DfolderAcl_t *acl, int32_t share_id)
{
    const Status removed = call.run("DELETE FROM `cifs_dfs_option` WHERE share_id=%d", share_id);
    if (!removed)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'DELETE FROM cifs_dfs_option'. %s",
                     removed.error());
    const Table share = call.table("SELECT S.volume_id,S.name FROM share S WHERE S.id=%d", share_id);
    if (!share)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT share'. %s", share.error());
    const auto [volume, name] =
        share.empty() ? std::pair<const char *, const char *>()
                      : std::pair<const char *, const char *>((*share.begin())[0], (*share.begin())[1]);
    for (const qbobj_DfolderAcl_t &link : Chain(acl)) {
        const Status inserted = call.run("INSERT INTO `cifs_dfs_option` "
                                         "(share_id,volume,share,folder,address,remote_share) "
                                         "VALUES(%d,%Q,%Q,%Q,%Q,%Q)",
                                         share_id, volume, name, link.Name, link.Address, link.RemoteShare);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO cifs_dfs_option'. %s",
                         inserted.error());
    }
    return 0;
}

int qbobj_api2_addUserPasswordAcl(Call &call, qbobj_UserPasswordAcl_t *acl, int32_t share_id)
{
    if (acl != nullptr && acl->UserName == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid UserPasswordAcl->UserName cannot be NULL");
    std::unordered_set<std::string_view> named;
    for (const qbobj_UserPasswordAcl_t &entry : Chain(acl)) {
        if (is_empty(entry.UserName))
            break;
        if (const int rc = store_login(call, share_id, entry))
            return rc;
        named.insert(entry.UserName);
    }

    const Table stored =
        call.table("SELECT U.user FROM rsync_user_password_acl U WHERE share_id=%d", share_id);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT rsync_user_password_acl'. %s",
                     stored.error());
    for (const Row row : stored) {
        if (named.contains(row[0]))
            continue;
        if (const int rc = remove_login(call, share_id, row[0]))
            return rc;
    }
    return 0;
}

} // namespace qbobj
