// The options of a share's eight protocols changed. All follow one shape, modify_option(); what tells them
// apart stands before it, side by side.
#include "core/set_list.h"
#include "share/share_writing.h"

#include <cstring>

namespace qbobj
{

namespace
{

using Pairs = SetList<512>;

/* ---- The tables that tell whether something changed ---------------------------------------------------- */

template <class Option>
struct Watched;

template <>
struct Watched<qbobj_CifsShareOption_t> {
    static constexpr const char *tag = "_modify_cifs_";
    static constexpr const char *tables[] = {"cifs_share_option", "host_acl",        "user_acl",
                                             "group_acl",         "cifs_dfs_option", nullptr};
};

template <>
struct Watched<qbobj_AfpShareOption_t> {
    static constexpr const char *tag = "_modify_afp_";
    static constexpr const char *tables[] = {"afp_share_option", "host_acl", "user_acl", "group_acl",
                                             nullptr};
};

template <>
struct Watched<qbobj_NfsShareOption_t> {
    static constexpr const char *tag = "_modify_nfs_";
    static constexpr const char *tables[] = {"nfs_share_option", "host_acl", nullptr};
};

template <>
struct Watched<qbobj_FtpShareOption_t> {
    static constexpr const char *tag = "_modify_ftp_";
    static constexpr const char *tables[] = {"ftp_share_option", "host_acl", "user_acl", "group_acl",
                                             nullptr};
};

template <>
struct Watched<qbobj_HttpShareOption_t> {
    static constexpr const char *tag = "_modify_http_";
    static constexpr const char *tables[] = {"http_share_option", "host_acl", "user_acl", "group_acl",
                                             nullptr};
};

template <>
struct Watched<qbobj_DlnaShareOption_t> {
    static constexpr const char *tag = "_modify_dlna_";
    static constexpr const char *tables[] = {"dlna_share_option", nullptr};
};

template <>
struct Watched<qbobj_DaapShareOption_t> {
    static constexpr const char *tag = "_modify_daap_";
    static constexpr const char *tables[] = {"daap_share_option", nullptr};
};

// rsync watches DLNA's table, so its own changes never show; callers have always seen it so.
template <>
struct Watched<qbobj_RsyncShareOption_t> : Watched<qbobj_DlnaShareOption_t> {
};

/* ---- The option row, made when it is missing ----------------------------------------------------------- */

int inserted(Call &call, const char *proto, const Status &status)
{
    if (!status)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'INSERT INTO %s_share_option'. %s",
                     proto, status.error());
    return 0;
}

// Windows options are never made here: without a row only the lists are written.
int ensure_row(Call &, qbobj_CifsShareOption_t &, int32_t)
{
    return 0;
}

int ensure_row(Call &call, qbobj_AfpShareOption_t &, int32_t share_id)
{
    return inserted(call, "afp",
                    call.run("INSERT OR IGNORE INTO afp_share_option "
                             "(share_id,afp_access,afp_guest_access) VALUES(%d,'writeable',1)",
                             share_id));
}

int ensure_row(Call &call, qbobj_NfsShareOption_t &, int32_t share_id)
{
    return inserted(
        call, "nfs",
        call.run("INSERT OR IGNORE INTO nfs_share_option (share_id,nfs_access) VALUES(%d,'writeable')",
                 share_id));
}

// A row that is made here is not available, and nothing here makes it so.
int ensure_row(Call &call, qbobj_FtpShareOption_t &, int32_t share_id)
{
    return inserted(
        call, "ftp",
        call.run("INSERT OR IGNORE INTO ftp_share_option VALUES(%d,0,'writeable',0,0,0)", share_id));
}

int ensure_row(Call &call, qbobj_HttpShareOption_t &, int32_t share_id)
{
    return inserted(
        call, "http",
        call.run("INSERT OR IGNORE INTO http_share_option (share_id,http_access) VALUES(%d,'writeable')",
                 share_id));
}

template <class Option>
int ensure_by_writer(Call &call, Option &option, int32_t share_id, int (*writer)(Call &, Option *, int32_t))
{
    const char *proto = protocol_of<Option>;
    const Number row = call.ask_number("SELECT 1 FROM %s_share_option WHERE share_id=%d", proto, share_id);
    if (!row)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT %s_share_option'. %s", proto,
                     row.error());
    return row.found != 0 ? 0 : writer(call, &option, share_id);
}

bool is_disabled(const char *access)
{
    return access != nullptr && std::strcmp(access, "Disabled") == 0;
}

int ensure_row(Call &call, qbobj_DlnaShareOption_t &option, int32_t share_id)
{
    if (is_disabled(option.DefaultAccess))
        return qbobj_api2_deleteDlnaShareOption(call, share_id);
    return ensure_by_writer(call, option, share_id, qbobj_api2_addDlnaShareOption);
}

int ensure_row(Call &call, qbobj_DaapShareOption_t &option, int32_t share_id)
{
    return ensure_by_writer(call, option, share_id, qbobj_api2_addDaapShareOption);
}

int ensure_row(Call &call, qbobj_RsyncShareOption_t &option, int32_t share_id)
{
    if (is_disabled(option.DefaultAccess))
        return qbobj_api2_deleteRsyncShareOption(call, share_id);
    return ensure_by_writer(call, option, share_id, qbobj_api2_addRsyncShareOption);
}

/* ---- The columns that the record carries --------------------------------------------------------------- */

int add_access(Call &call, Pairs &set, Statement<const char *> pair, const char *field, const char *word)
{
    if (word == nullptr)
        return 0;
    const char *stored = nullptr;
    if (const int rc = read_access(call, field, word, nullptr, stored))
        return rc;
    set.add(pair, stored);
    return 0;
}

// The recycle bin's limits are written while it is on: by this record or, where that leaves it open, as
// stored.
int is_recycling(Call &call, const qbobj_CifsShareOption_t &option, int32_t share_id, bool &recycling)
{
    recycling = option._void_EnableRecycleBin == 0 && option.EnableRecycleBin != 0;
    if (option._void_EnableRecycleBin == 0)
        return 0;
    const Number stored =
        call.ask_number("SELECT cifs_recycle FROM cifs_share_option WHERE share_id=%d", share_id);
    if (!stored)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT cifs_share_option'. %s",
                     stored.error());
    recycling = stored.value != 0;
    return 0;
}

int collect_recycle_bin(Call &call, const qbobj_CifsShareOption_t &option, int32_t share_id, Pairs &set)
{
    if (option._void_EnableRecycleBin == 0)
        set.add("cifs_recycle=%d", option.EnableRecycleBin != 0);
    if (option._void_RecycleSizeLimit != 0 && option._void_RecycleAgeLimit != 0)
        return 0;
    bool recycling = false;
    if (const int rc = is_recycling(call, option, share_id, recycling))
        return rc;
    if (recycling && option._void_RecycleSizeLimit == 0)
        set.add("cifs_recycle_mb_limit=%d", option.RecycleSizeLimit);
    if (recycling && option._void_RecycleAgeLimit == 0)
        set.add("cifs_recycle_age_limit=%d", option.RecycleAgeLimit);
    return 0;
}

int collect_masks(Call &call, const qbobj_CifsShareOption_t &option, int32_t, Pairs &set)
{
    static constexpr RightNames names{"Cifs->FileCreateGroupRights", "Cifs->FileCreateEveryoneRights",
                                      "Cifs->FolderCreateGroupRights", "Cifs->FolderCreateEveryoneRights"};
    Rights rights;
    if (const int rc = read_rights(call, option, qbobj_validate_rights, names, rights))
        return rc;
    if (option.FileCreateGroupRights != nullptr)
        set.add("cifs_group_create_mask=%d", rights.file_group);
    if (option.FileCreateEveryoneRights != nullptr)
        set.add("cifs_everyone_create_mask=%d", rights.file_everyone);
    if (option.FolderCreateGroupRights != nullptr)
        set.add("cifs_group_directory_mask=%d", rights.folder_group);
    if (option.FolderCreateEveryoneRights != nullptr)
        set.add("cifs_everyone_directory_mask=%d", rights.folder_everyone);
    return 0;
}

int collect(Call &call, const qbobj_CifsShareOption_t &option, int32_t share_id, Pairs &set)
{
    if (const int rc = add_access(call, set, "cifs_access=%Q", "Cifs->DefaultAccess", option.DefaultAccess))
        return rc;
    if (option._void_AllowGuestAccess == 0)
        set.add("cifs_guest_access=%d", option.AllowGuestAccess != 0);
    if (option._void_ShareDisplayOption == 0)
        set.add("cifs_hide_share=%d", option.ShareDisplayOption);
    if (const int rc = collect_recycle_bin(call, option, share_id, set))
        return rc;
    if (option._void_NewFileFolderPermAutoset == 0)
        set.add("cifs_enable_masks=%d", option.NewFileFolderPermAutoset != 0);
    if (option._void_AclChangeRestrictionToggle == 0)
        set.add("cifs_enable_forced_minimum=%d", option.AclChangeRestrictionToggle);
    if (const int rc = collect_masks(call, option, share_id, set))
        return rc;
    if (option._void_EnableOplocks == 0)
        set.add("oplocks=%d", option.EnableOplocks != 0);
    set.add("cifs_enabledfs=%d", option.EnableDFS != 0);
    set.add("available=%d", option.NotAvailable == 0);
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

int collect(Call &call, const qbobj_AfpShareOption_t &option, int32_t, Pairs &set)
{
    static constexpr RightNames names{"Afp->FileCreateGroupRights", "Afp->FileCreateEveryoneRights",
                                      "Afp->FolderCreateGroupRights", "Afp->FolderCreateEveryoneRights"};
    if (const int rc = add_access(call, set, "afp_access=%Q", "Afp->DefaultAccess", option.DefaultAccess))
        return rc;
    if (option._void_AllowGuestAccess == 0)
        set.add("afp_guest_access=%d", option.AllowGuestAccess != 0);
    if (option._void_NewFileFolderPermAutoset == 0 && option.NewFileFolderPermAutoset == 0) {
        set.add("afp_fperm=NULL,afp_dperm=%s", "NULL");
    } else if (option._void_NewFileFolderPermAutoset == 0) {
        Rights rights;
        if (const int rc = read_rights(call, option, qbobj_validate_rights, names, rights))
            return rc;
        if (carries_file_rights(option))
            set.add("afp_fperm=%d", rights.file());
        if (carries_folder_rights(option))
            set.add("afp_dperm=%d", rights.folder());
    }
    set.add("available=%d", option.NotAvailable == 0);
    return 0;
}

int collect(Call &call, const qbobj_NfsShareOption_t &option, int32_t, Pairs &set)
{
    if (const int rc = add_access(call, set, "nfs_access=%Q", "Nfs->DefaultAccess", option.DefaultAccess))
        return rc;
    set.add("available=%d", option.NotAvailable == 0);
    set.add("nfs_sync=%d", option.Sync != 0);
    return 0;
}

// NotAvailable is not written: what FTP offers is decided when the share is created.
int collect(Call &call, const qbobj_FtpShareOption_t &option, int32_t, Pairs &set)
{
    static constexpr RightNames names{"Ftp->FileCreateGroupRights", "Ftp->FileCreateEveryoneRights",
                                      "Ftp->FolderCreateGroupRights", "Ftp->FolderCreateEveryoneRights"};
    if (const int rc = add_access(call, set, "ftp_access=%Q", "Ftp->DefaultAccess", option.DefaultAccess))
        return rc;
    Rights umasks;
    if (const int rc = read_rights(call, option, qbobj_validate_umask, names, umasks))
        return rc;
    if (option._void_NewFileFolderPermAutoset == 0)
        set.add("ftp_mask=%d", option.NewFileFolderPermAutoset != 0);
    if (carries_file_rights(option))
        set.add("ftp_create_mask=%d", umasks.file());
    if (carries_folder_rights(option))
        set.add("ftp_directory_mask=%d", umasks.folder());
    return 0;
}

int collect(Call &call, const qbobj_HttpShareOption_t &option, int32_t share_id, Pairs &set)
{
    if (const int rc = add_access(call, set, "http_access=%Q", "Http->DefaultAccess", option.DefaultAccess))
        return rc;
    if (is_disabled(option.DefaultAccess)) {
        // A share that nobody reaches cannot be the web root.
        const Status cleared = call.run("UPDATE service_http SET share_name='' WHERE share_name="
                                        "(select S.name from share S WHERE S.id=%d)",
                                        share_id);
        if (!cleared)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE service_http'. %s",
                         cleared.error());
    }
    set.add("available=%d", option.NotAvailable == 0);
    if (option._void_EnableWebDav == 0)
        set.add("http_webdav=%d", option.EnableWebDav != 0);
    return 0;
}

// The access of media players is fixed; the word is only checked.
int collect(Call &call, const qbobj_DlnaShareOption_t &option, int32_t, Pairs &set)
{
    const char *access = nullptr;
    if (const int rc = read_access(call, "Dlna->DefaultAccess", option.DefaultAccess, "ReadOnly", access))
        return rc;
    int media_type = 0;
    if (qbobj_validate_media_type(option.MediaType, "All", &media_type) != 0)
        return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Dlna->MediaType (%s).", option.MediaType);
    set.add("media_type=%d", media_type);
    set.add("available=%d", option.NotAvailable == 0);
    return 0;
}

int collect(Call &, const qbobj_DaapShareOption_t &option, int32_t, Pairs &set)
{
    set.add("available=%d", option.NotAvailable == 0);
    return 0;
}

int collect(Call &call, const qbobj_RsyncShareOption_t &option, int32_t, Pairs &set)
{
    if (const int rc = add_access(call, set, "rsync_access=%Q", "Rsync->DefaultAccess", option.DefaultAccess))
        return rc;
    if (option.PasswordProtection != nullptr) {
        const char *protection = nullptr;
        if (qbobj_validate_enable_disable(option.PasswordProtection, nullptr, &protection) != 0)
            return raise(call, QBOBJ_ERROR_API_ARGS, "Invalid Rsync->PasswordProtection (%s).",
                         option.PasswordProtection);
        set.add("passwordprotection=%Q", protection);
    }
    set.add("available=%d", option.NotAvailable == 0);
    return 0;
}

/* ---- The shape ----------------------------------------------------------------------------------------- */

template <class Option>
int update_row(Call &call, const Option &option, int32_t share_id)
{
    Pairs set(call, Overflow::drop);
    if (const int rc = collect(call, option, share_id, set))
        return rc;
    if (set.empty())
        return 0;
    const char *proto = protocol_of<Option>;
    const Status updated =
        call.run("UPDATE %s_share_option SET %s WHERE share_id=%d", proto, set.text(), share_id);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'UPDATE %s_share_option'. %s", proto,
                     updated.error());
    return 0;
}

template <class Option>
int modify_option(Call &call, Option *option, int32_t share_id)
{
    if (option == nullptr)
        return 0;
    using Tables = Watched<Option>;
    const char *proto = protocol_of<Option>;
    char *error = nullptr;
    if (qbdb_sql_duplicate_tables(call.qbdb(), call.db(), Tables::tag, Tables::tables, &error,
                                  here().unit.data(), here().line) != 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed to copy the tables of %s. %s", proto, error);

    if (const int rc = ensure_row(call, *option, share_id))
        return rc;
    if (const int rc = update_row(call, *option, share_id))
        return rc;
    if (const int rc = write_lists(call, *option, share_id))
        return rc;
    refresh_service<Option>(call);

    if (qbdb_sql_compare_tables2(call.qbdb(), call.db(), Tables::tag, Tables::tables, &option->Changed,
                                 &error, here().unit.data(), here().line) != 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed to compare the tables of %s. %s", proto, error);
    if (qbdb_sql_delete_tables(call.qbdb(), call.db(), Tables::tag, Tables::tables, &error,
                               here().unit.data(), here().line) != 0)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed to drop the copies of the tables of %s. %s", proto,
                     error);
    return 0;
}

// In the order given; the first failure ends it.
template <class... Options>
int modify_options(Call &call, int32_t share_id, Options *...options)
{
    int rc = 0;
    static_cast<void>((... || ((rc = modify_option(call, options, share_id)) != 0)));
    return rc;
}

} // namespace

int modify_protocols(Call &call, qbobj_Share_t &share, int32_t share_id)
{
    return modify_options(call, share_id, share.Cifs, share.Afp, share.Nfs, share.Ftp, share.Http, share.Dlna,
                          share.Daap, share.Rsync);
}

} // namespace qbobj
