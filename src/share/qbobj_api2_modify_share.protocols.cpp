// The options of a share's eight protocols changed. All follow one shape, modify_option(); what tells them
// apart stands before it, side by side.
#include "core/change_tracking.h"
#include "core/set_list.h"
#include "share/share_writing.h"

#include <cstring>

namespace qbobj
{

namespace
{

using Pairs = SetList<512>;

/* ---- The tables that tell whether something changed ---------------------------------------------------- */

constexpr const char *cifs_tables[] = {"cifs_share_option", "host_acl",        "user_acl",
                                       "group_acl",         "cifs_dfs_option", nullptr};
constexpr const char *afp_tables[] = {"afp_share_option", "host_acl", "user_acl", "group_acl", nullptr};
constexpr const char *nfs_tables[] = {"nfs_share_option", "host_acl", nullptr};
constexpr const char *ftp_tables[] = {"ftp_share_option", "host_acl", "user_acl", "group_acl", nullptr};
constexpr const char *http_tables[] = {"http_share_option", "host_acl", "user_acl", "group_acl", nullptr};
constexpr const char *dlna_tables[] = {"dlna_share_option", nullptr};
constexpr const char *daap_tables[] = {"daap_share_option", nullptr};

template <class Option>
constexpr WatchedTables watched{};
template <>
constexpr WatchedTables watched<Cifs>{"_modify_cifs_", cifs_tables, "cifs"};
template <>
constexpr WatchedTables watched<Afp>{"_modify_afp_", afp_tables, "afp"};
template <>
constexpr WatchedTables watched<Nfs>{"_modify_nfs_", nfs_tables, "nfs"};
template <>
constexpr WatchedTables watched<Ftp>{"_modify_ftp_", ftp_tables, "ftp"};
template <>
constexpr WatchedTables watched<Http>{"_modify_http_", http_tables, "http"};
template <>
constexpr WatchedTables watched<Dlna>{"_modify_dlna_", dlna_tables, "dlna"};
template <>
constexpr WatchedTables watched<Daap>{"_modify_daap_", daap_tables, "daap"};
// rsync watches DLNA's table, so its own changes never show; callers have always seen it so.
template <>
constexpr WatchedTables watched<Rsync>{"_modify_dlna_", dlna_tables, "rsync"};

/* ---- The option row, made when it is missing ----------------------------------------------------------- */

// Windows options are never made here: without a row only the lists are written.
int ensure_row(Call &, Cifs &, int32_t)
{
    return 0;
}

int ensure_row(Call &call, Afp &, int32_t share_id)
{
    return call.exec("Failed DB Query for 'INSERT INTO afp_share_option'. %s",
                     "INSERT OR IGNORE INTO afp_share_option (share_id,afp_access,afp_guest_access) "
                     "VALUES(%d,'writeable',1)",
                     share_id);
}

int ensure_row(Call &call, Nfs &, int32_t share_id)
{
    return call.exec("Failed DB Query for 'INSERT INTO nfs_share_option'. %s",
                     "INSERT OR IGNORE INTO nfs_share_option (share_id,nfs_access) VALUES(%d,'writeable')",
                     share_id);
}

// A row that is made here is not available, and nothing here makes it so.
int ensure_row(Call &call, Ftp &, int32_t share_id)
{
    return call.exec("Failed DB Query for 'INSERT INTO ftp_share_option'. %s",
                     "INSERT OR IGNORE INTO ftp_share_option VALUES(%d,0,'writeable',0,0,0)", share_id);
}

int ensure_row(Call &call, Http &, int32_t share_id)
{
    return call.exec("Failed DB Query for 'INSERT INTO http_share_option'. %s",
                     "INSERT OR IGNORE INTO http_share_option (share_id,http_access) VALUES(%d,'writeable')",
                     share_id);
}

template <class Option>
int ensure_by_writer(Call &call, Option &option, int32_t share_id, int (*writer)(Call &, Option *, int32_t))
{
    const char *proto = protocol_of<Option>.word;
    bool exists = false;
    const int rc = call.exists({"Failed DB Query for 'SELECT %s_share_option'. %s", proto}, exists,
                               "SELECT 1 FROM %s_share_option WHERE share_id=%d", proto, share_id);
    return rc != 0 || exists ? rc : writer(call, &option, share_id);
}

bool is_disabled(const char *access)
{
    return access != nullptr && std::strcmp(access, "Disabled") == 0;
}

int ensure_row(Call &call, Dlna &option, int32_t share_id)
{
    return is_disabled(option.DefaultAccess)
               ? qbobj_api2_deleteDlnaShareOption(call, share_id)
               : ensure_by_writer(call, option, share_id, qbobj_api2_addDlnaShareOption);
}

int ensure_row(Call &call, Daap &option, int32_t share_id)
{
    return ensure_by_writer(call, option, share_id, qbobj_api2_addDaapShareOption);
}

int ensure_row(Call &call, Rsync &option, int32_t share_id)
{
    return is_disabled(option.DefaultAccess)
               ? qbobj_api2_deleteRsyncShareOption(call, share_id)
               : ensure_by_writer(call, option, share_id, qbobj_api2_addRsyncShareOption);
}

/* ---- The columns that the record carries --------------------------------------------------------------- */

// The share whose option is changed, and the pairs of its update.
struct Update {
    Call &call;
    int32_t share_id;
    Pairs &set;

    template <class Option>
    void add_available(const Option &option) const
    {
        set.add("available=%d", option.NotAvailable == 0);
    }
};

int add_access(const Update &update, Statement<const char *> pair, const char *field, const char *word)
{
    if (word == nullptr)
        return 0;
    const char *stored = nullptr;
    if (const int rc = read_access(update.call, field, word, nullptr, stored))
        return rc;
    update.set.add(pair, stored);
    return 0;
}

// The recycle bin's limits are written while it is on: by this record or, where that leaves it open, as
// stored.
int is_recycling(const Update &update, const Cifs &option, bool &recycling)
{
    int32_t stored = option.EnableRecycleBin;
    int rc = 0;
    if (option._void_EnableRecycleBin != 0)
        rc = update.call.number("Failed DB Query for 'SELECT cifs_share_option'. %s", stored,
                                "SELECT cifs_recycle FROM cifs_share_option WHERE share_id=%d",
                                update.share_id);
    recycling = stored != 0;
    return rc;
}

constexpr std::tuple cifs_limits{
    change<&Cifs::_void_RecycleSizeLimit, &Cifs::RecycleSizeLimit>("cifs_recycle_mb_limit=%d"),
    change<&Cifs::_void_RecycleAgeLimit, &Cifs::RecycleAgeLimit>("cifs_recycle_age_limit=%d"),
};

int collect_limits(const Update &update, const Cifs &option)
{
    if (option._void_RecycleSizeLimit != 0 && option._void_RecycleAgeLimit != 0)
        return 0;
    bool recycling = false;
    if (const int rc = is_recycling(update, option, recycling))
        return rc;
    if (recycling)
        update.set.add_given(option, cifs_limits);
    return 0;
}

int collect_masks(const Update &update, const Cifs &option)
{
    Rights rights;
    if (const int rc = read_rights(update.call, qbobj_validate_rights,
                                   {"Cifs->FileCreateGroupRights", "Cifs->FileCreateEveryoneRights",
                                    "Cifs->FolderCreateGroupRights", "Cifs->FolderCreateEveryoneRights"},
                                   right_words(option), rights))
        return rc;
    if (option.FileCreateGroupRights != nullptr)
        update.set.add("cifs_group_create_mask=%d", rights.file_group);
    if (option.FileCreateEveryoneRights != nullptr)
        update.set.add("cifs_everyone_create_mask=%d", rights.file_everyone);
    if (option.FolderCreateGroupRights != nullptr)
        update.set.add("cifs_group_directory_mask=%d", rights.folder_group);
    if (option.FolderCreateEveryoneRights != nullptr)
        update.set.add("cifs_everyone_directory_mask=%d", rights.folder_everyone);
    return 0;
}

constexpr std::tuple cifs_switches{
    change_switch<&Cifs::_void_AllowGuestAccess, &Cifs::AllowGuestAccess>("cifs_guest_access=%d"),
    change<&Cifs::_void_ShareDisplayOption, &Cifs::ShareDisplayOption>("cifs_hide_share=%d"),
    change_switch<&Cifs::_void_EnableRecycleBin, &Cifs::EnableRecycleBin>("cifs_recycle=%d"),
};
constexpr std::tuple cifs_mask_switches{
    change_switch<&Cifs::_void_NewFileFolderPermAutoset, &Cifs::NewFileFolderPermAutoset>(
        "cifs_enable_masks=%d"),
    change<&Cifs::_void_AclChangeRestrictionToggle, &Cifs::AclChangeRestrictionToggle>(
        "cifs_enable_forced_minimum=%d"),
};
constexpr std::tuple cifs_locks{
    change_switch<&Cifs::_void_EnableOplocks, &Cifs::EnableOplocks>("oplocks=%d"),
};

int collect(const Update &update, const Cifs &option)
{
    if (const int rc = add_access(update, "cifs_access=%Q", "Cifs->DefaultAccess", option.DefaultAccess))
        return rc;
    update.set.add_given(option, cifs_switches);
    if (const int rc = collect_limits(update, option))
        return rc;
    update.set.add_given(option, cifs_mask_switches);
    if (const int rc = collect_masks(update, option))
        return rc;
    update.set.add_given(option, cifs_locks);
    update.set.add("cifs_enabledfs=%d", option.EnableDFS != 0);
    update.add_available(option);
    return 0;
}

// A pair of rights is written when one of them is given, and the other then counts as "ReadWrite".
template <class Option>
bool carries_file_rights(const Option &option)
{
    return option.FileCreateGroupRights != nullptr || option.FileCreateEveryoneRights != nullptr;
}

template <class Option>
bool carries_folder_rights(const Option &option)
{
    return option.FolderCreateGroupRights != nullptr || option.FolderCreateEveryoneRights != nullptr;
}

// The switch given up takes the rights away; set without any rights, it sets them all.
int collect_rights(const Update &update, const Afp &option)
{
    Rights rights;
    if (const int rc = read_rights(update.call, qbobj_validate_rights,
                                   {"Afp->FileCreateGroupRights", "Afp->FileCreateEveryoneRights",
                                    "Afp->FolderCreateGroupRights", "Afp->FolderCreateEveryoneRights"},
                                   right_words(option), rights))
        return rc;
    const bool switched = option._void_NewFileFolderPermAutoset == 0;
    if (switched && option.NewFileFolderPermAutoset == 0) {
        update.set.add("afp_fperm=NULL,afp_dperm=%s", "NULL");
        return 0;
    }
    const bool alone = switched && !carries_file_rights(option) && !carries_folder_rights(option);
    if (alone || carries_file_rights(option))
        update.set.add("afp_fperm=%d", rights.file());
    if (alone || carries_folder_rights(option))
        update.set.add("afp_dperm=%d", rights.folder());
    return 0;
}

constexpr std::tuple afp_switches{
    change_switch<&Afp::_void_AllowGuestAccess, &Afp::AllowGuestAccess>("afp_guest_access=%d"),
};

int collect(const Update &update, const Afp &option)
{
    if (const int rc = add_access(update, "afp_access=%Q", "Afp->DefaultAccess", option.DefaultAccess))
        return rc;
    update.set.add_given(option, afp_switches);
    if (const int rc = collect_rights(update, option))
        return rc;
    update.add_available(option);
    return 0;
}

int collect(const Update &update, const Nfs &option)
{
    if (const int rc = add_access(update, "nfs_access=%Q", "Nfs->DefaultAccess", option.DefaultAccess))
        return rc;
    update.add_available(option);
    update.set.add("nfs_sync=%d", option.Sync != 0);
    return 0;
}

constexpr std::tuple ftp_switches{
    change_switch<&Ftp::_void_NewFileFolderPermAutoset, &Ftp::NewFileFolderPermAutoset>("ftp_mask=%d"),
};

// NotAvailable is not written: what FTP offers is decided when the share is created.
int collect(const Update &update, const Ftp &option)
{
    if (const int rc = add_access(update, "ftp_access=%Q", "Ftp->DefaultAccess", option.DefaultAccess))
        return rc;
    Rights umasks;
    if (const int rc = read_rights(update.call, qbobj_validate_umask,
                                   {"Ftp->FileCreateGroupRights", "Ftp->FileCreateEveryoneRights",
                                    "Ftp->FolderCreateGroupRights", "Ftp->FolderCreateEveryoneRights"},
                                   right_words(option), umasks))
        return rc;
    update.set.add_given(option, ftp_switches);
    if (carries_file_rights(option))
        update.set.add("ftp_create_mask=%d", umasks.file());
    if (carries_folder_rights(option))
        update.set.add("ftp_directory_mask=%d", umasks.folder());
    return 0;
}

constexpr std::tuple http_switches{
    change_switch<&Http::_void_EnableWebDav, &Http::EnableWebDav>("http_webdav=%d"),
};

int collect(const Update &update, const Http &option)
{
    if (const int rc = add_access(update, "http_access=%Q", "Http->DefaultAccess", option.DefaultAccess))
        return rc;
    // A share that nobody reaches cannot be the web root.
    if (is_disabled(option.DefaultAccess))
        if (const int rc = update.call.exec("Failed DB Query for 'UPDATE service_http'. %s",
                                            "UPDATE service_http SET share_name='' WHERE share_name="
                                            "(select S.name from share S WHERE S.id=%d)",
                                            update.share_id))
            return rc;
    update.add_available(option);
    update.set.add_given(option, http_switches);
    return 0;
}

int collect(const Update &update, const Dlna &option)
{
    int media_type = 0;
    if (const int rc = read_media(update.call, option, media_type))
        return rc;
    update.set.add("media_type=%d", media_type);
    update.add_available(option);
    return 0;
}

int collect(const Update &update, const Daap &option)
{
    update.add_available(option);
    return 0;
}

int collect(const Update &update, const Rsync &option)
{
    if (const int rc = add_access(update, "rsync_access=%Q", "Rsync->DefaultAccess", option.DefaultAccess))
        return rc;
    if (option.PasswordProtection != nullptr) {
        const char *protection = nullptr;
        if (qbobj_validate_enable_disable(option.PasswordProtection, nullptr, &protection) != 0)
            return raise(update.call, QBOBJ_ERROR_API_ARGS, "Invalid Rsync->PasswordProtection (%s).",
                         option.PasswordProtection);
        update.set.add("passwordprotection=%Q", protection);
    }
    update.add_available(option);
    return 0;
}

/* ---- The shape ----------------------------------------------------------------------------------------- */

template <class Option>
int update_row(Call &call, const Option &option, int32_t share_id)
{
    Pairs set(call, Overflow::drop);
    if (const int rc = collect({call, share_id, set}, option))
        return rc;
    if (set.empty())
        return 0;
    const char *proto = protocol_of<Option>.word;
    return call.exec({"Failed DB Query for 'UPDATE %s_share_option'. %s", proto},
                     "UPDATE %s_share_option SET %s WHERE share_id=%d", proto, set.text(), share_id);
}

template <class Option>
int modify_option(Call &call, Option &option, int32_t share_id)
{
    const auto write = [&] {
        if (const int rc = ensure_row(call, option, share_id))
            return rc;
        if (const int rc = update_row(call, option, share_id))
            return rc;
        if (const int rc = write_lists(call, option, {share_id, protocol_of<Option>.word}))
            return rc;
        tell_service<Option>(call);
        return 0;
    };
    return tracked(call, watched<Option>, option.Changed, write);
}

} // namespace

int modify_protocols(Call &call, qbobj_Share_t &share, int32_t share_id)
{
    return each_option([&](auto &option) { return modify_option(call, option, share_id); }, share.Cifs,
                       share.Afp, share.Nfs, share.Ftp, share.Http, share.Dlna, share.Daap, share.Rsync);
}

} // namespace qbobj
