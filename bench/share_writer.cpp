// Creating shares by hand. Of the words that a record may hold only those that the measured shares hold are
// known.
#include "share_writer.h"

#include <cstring>

namespace qbobj_bench
{
namespace
{

constexpr int all_rights = 7;
constexpr int file_rights = 6;

std::string default_access_of(const char *word)
{
    const std::string proto = word;
    return "SELECT CASE WHEN O." + proto + "_access='writeable' THEN 2 WHEN O." + proto +
           "_access='readonly' THEN 1 ELSE 0 END FROM " + proto + "_share_option O WHERE share_id=%d";
}

int may_write(const char *access)
{
    return std::strcmp(access, "ReadWrite") == 0 ? 1 : 0;
}

// An entry that repeats the default access is not stored.
bool is_stored(int default_access, int write)
{
    constexpr int writeable = 2;
    return default_access != writeable || write == 0;
}

} // namespace

ProtocolLists::ProtocolLists(const Connection &connection, const char *word)
    : proto(word), default_access(connection, default_access_of(word))
{
}

void ShareWriter::add(qbobj_Share_t &share)
{
    transactions_.run([&] {
        finish(directory_mode_());
        check(share);
        const int share_id = insert(share);
        insert_options(share, share_id);
        finish(schedule_(share_id, 1, "0", "*", "*", "*", "*", 0, 0, 0, 0));
        share.resource_id = share.ShareId =
            apr_psprintf(connection_.qbdb->pool, "%s/%s", share.VolumeId, share.ShareName);
    });
}

void ShareWriter::check(qbobj_Share_t &share)
{
    int existing = 0;
    if (auto row = id_of_name_(share.ShareName); row.next())
        row >> existing;
    const char *volume_id = nullptr;
    if (auto row = volume_(share.VolumeId); row.next())
        row >> volume_id;
    if (existing != 0 || volume_id == nullptr)
        throw std::runtime_error("cannot add a share");
}

int ShareWriter::insert(const qbobj_Share_t &share)
{
    int owner = 0;
    int group = 0;
    if (auto row = guest_(); row.next())
        row >> owner;
    if (auto row = guest_group_(); row.next())
        row >> group;
    const char *no_text = nullptr;
    finish(share_(share.ShareName, share.VolumeId, "share", share.ShareName, share.Comment, no_text,
                  share.VolumeId, share.ShareName, share.VolumeId, all_rights, all_rights, all_rights, 1,
                  owner, group));
    const int share_id = static_cast<int>(sqlite3_last_insert_rowid(connection_.db));
    uint64_t free_kb = 0;
    if (auto row = free_space_(share.VolumeId); row.next())
        row >> free_kb;
    if (share.RefQuotaMB > free_kb / 1024)
        throw std::runtime_error("cannot add a share");
    finish(attributes_(share_id, share.QuotaMB, share.ReserveMB, share.RefQuotaMB, share.RefReserveMB,
                       share.Compression, share.BitRotProtection, share.Dedup, share.LogBias, share.Sync));
    return share_id;
}

void ShareWriter::insert_cifs(const qbobj_CifsShareOption_t &option, int share_id)
{
    finish(cifs_(share_id, "writeable", option.AllowGuestAccess, option.ShareDisplayOption, file_rights,
                 file_rights, option.NewFileFolderPermAutoset, all_rights, all_rights,
                 option.AclChangeRestrictionToggle, option.EnableRecycleBin, option.RecycleSizeLimit,
                 option.RecycleAgeLimit, option.EnableOplocks, 1, option.EnableDFS));
    write_hosts(cifs_lists_, option.HostAcl, share_id);
    write_accounts(cifs_lists_, option, share_id);
    finish(no_dfs_links_(share_id));
    finish(dfs_share_(share_id));
}

void ShareWriter::insert_options(const qbobj_Share_t &share, int share_id)
{
    insert_cifs(*share.Cifs, share_id);
    finish(afp_(share_id, 1, "writeable", share.Afp->AllowGuestAccess));
    write_hosts(afp_lists_, share.Afp->HostAcl, share_id);
    write_accounts(afp_lists_, *share.Afp, share_id);
    finish(nfs_(share_id, 1, "writeable"));
    write_hosts(nfs_lists_, share.Nfs->HostAcl, share_id);
    finish(ftp_(share_id, 1, "writeable", share.Ftp->NewFileFolderPermAutoset, 0, 0));
    write_hosts(ftp_lists_, share.Ftp->HostAcl, share_id);
    write_accounts(ftp_lists_, *share.Ftp, share_id);
    finish(rsync_(share_id, 1, "writeable", "disabled"));
    write_hosts(rsync_lists_, share.Rsync->HostAcl, share_id);
    finish(logins_(share_id));
    finish(dlna_(share_id, 1, all_rights));
    finish(daap_(share_id, 1));
    finish(http_(share_id, 1, "writeable", share.Http->EnableWebDav));
    write_hosts(http_lists_, share.Http->HostAcl, share_id);
    write_accounts(http_lists_, *share.Http, share_id);
}

int ShareWriter::read_default_access(const ProtocolLists &lists, int share_id)
{
    int access = 0;
    if (auto row = lists.default_access(share_id); row.next())
        row >> access;
    return access;
}

void ShareWriter::write_hosts(const ProtocolLists &lists, const qbobj_HostAcl_t *list, int share_id)
{
    finish(no_hosts_(share_id, lists.proto));
    read_default_access(lists, share_id);
    for (const qbobj_HostAcl_t *entry = list; entry != nullptr; entry = entry->_link) {
        int host_id = 0;
        finish(new_host_(entry->Host->HostName));
        if (auto row = host_id_(entry->Host->HostName); row.next())
            row >> host_id;
        finish(host_(share_id, host_id, lists.proto, 1, 1, 0));
    }
}

void ShareWriter::write_users(const ProtocolLists &lists, const qbobj_UserAcl_t *list, int share_id)
{
    finish(no_users_(share_id, lists.proto));
    const int access = read_default_access(lists, share_id);
    for (const qbobj_UserAcl_t *entry = list; entry != nullptr; entry = entry->_link)
        if (const int write = may_write(entry->Access); is_stored(access, write))
            finish(user_(share_id, entry->User->resource_id, lists.proto, 1, write));
}

void ShareWriter::write_groups(const ProtocolLists &lists, const qbobj_GroupAcl_t *list, int share_id)
{
    finish(no_groups_(share_id, lists.proto));
    const int access = read_default_access(lists, share_id);
    for (const qbobj_GroupAcl_t *entry = list; entry != nullptr; entry = entry->_link)
        if (const int write = may_write(entry->Access); is_stored(access, write))
            finish(group_(share_id, entry->Group->resource_id, lists.proto, 1, write));
}

template <class Option>
void ShareWriter::write_accounts(const ProtocolLists &lists, const Option &option, int share_id)
{
    write_users(lists, option.UserAcl, share_id);
    write_groups(lists, option.GroupAcl, share_id);
}

} // namespace qbobj_bench
