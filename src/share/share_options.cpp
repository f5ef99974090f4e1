// A share's options for each protocol and its access lists, read.
#include "share/share_reading.h"
#include "validate/validate.h"

namespace qbobj
{
namespace
{

/* ---- Access lists -------------------------------------------------------------------------------------- */

constexpr auto host_columns =
    std::tuple_cat(parts(&qbobj_HostAcl_t::Host, both(&qbobj_Host_t::resource_id, &qbobj_Host_t::HostId),
                         &qbobj_Host_t::HostName),
                   std::tuple{&qbobj_HostAcl_t::Access, &qbobj_HostAcl_t::Root});

constexpr auto user_columns = std::tuple_cat(
    parts(&qbobj_UserAcl_t::User, both(&qbobj_SystemUser_t::resource_id, &qbobj_SystemUser_t::UserId),
          &qbobj_SystemUser_t::UserName),
    std::tuple{&qbobj_UserAcl_t::Access});

constexpr auto group_columns = std::tuple_cat(
    parts(&qbobj_GroupAcl_t::Group, both(&qbobj_SystemGroup_t::resource_id, &qbobj_SystemGroup_t::GroupId),
          &qbobj_SystemGroup_t::GroupName),
    std::tuple{&qbobj_GroupAcl_t::Access});

constexpr auto dfolder_columns = std::tuple{
    &qbobj_DfolderAcl_t::Name,
    &qbobj_DfolderAcl_t::Address,
    &qbobj_DfolderAcl_t::RemoteShare,
};

constexpr auto login_columns =
    std::tuple{&qbobj_UserPasswordAcl_t::UserName, &qbobj_UserPasswordAcl_t::Password};

// Puts one record a row into the list, in place of what it held.
template <class Record, class... Columns>
FailedRead read_list(const ShareReading &reading, Record *&list, const char *table,
                     const std::tuple<Columns...> &columns, const Table &rows)
{
    list = nullptr;
    if (!rows)
        return {table, rows.error()};
    append_rows(reading.call, list, columns, rows);
    return {};
}

template <class Option>
FailedRead read_hosts(const ShareReading &reading, int share_id, const char *proto, Option &option)
{
    return read_list(reading, option.HostAcl, "host,host_acl", host_columns,
                     reading.call.table(R"(SELECT H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite'
        WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,HA.root FROM host H
        INNER JOIN host_acl HA ON HA.host_id=H.id AND HA.share_id=%d AND HA.proto=%Q)",
                                        share_id, proto));
}

// Users and groups of the kind that the appliance works with.
template <class Option>
FailedRead read_accounts(const ShareReading &reading, int share_id, const char *proto, Option &option)
{
    const FailedRead failed =
        read_list(reading, option.UserAcl, "user,user_acl", user_columns,
                  reading.call.table(R"(SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite'
        WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$user` U
        INNER JOIN user_acl UA ON UA.user_id=U.id AND UA.share_id=%d AND UA.proto=%Q
        WHERE U.rid IS %sNULL ORDER BY U.uname COLLATE NOCASE)",
                                     share_id, proto, reading.call.directory().rid_not()));
    if (failed)
        return failed;
    return read_list(reading, option.GroupAcl, "group,group_acl", group_columns,
                     reading.call.table(R"(SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite'
        WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$group` G
        INNER JOIN group_acl GA ON GA.group_id=G.id AND GA.share_id=%d AND GA.proto=%Q
        WHERE G.rid IS %sNULL ORDER BY G.gname COLLATE NOCASE)",
                                        share_id, proto, reading.call.directory().rid_not()));
}

template <class Option>
FailedRead read_hosts_and_accounts(const ShareReading &reading, int share_id, const char *proto,
                                   Option &option)
{
    const FailedRead failed = read_hosts(reading, share_id, proto, option);
    return failed ? failed : read_accounts(reading, share_id, proto, option);
}

/* ---- Columns of the option rows ------------------------------------------------------------------------ */

constexpr auto cifs_columns = std::tuple{
    &qbobj_CifsShareOption_t::DefaultAccess,
    given<&qbobj_CifsShareOption_t::_void_AllowGuestAccess, &qbobj_CifsShareOption_t::AllowGuestAccess>,
    given<&qbobj_CifsShareOption_t::_void_ShareDisplayOption, &qbobj_CifsShareOption_t::ShareDisplayOption>,
    given<&qbobj_CifsShareOption_t::_void_EnableRecycleBin, &qbobj_CifsShareOption_t::EnableRecycleBin>,
    given<&qbobj_CifsShareOption_t::_void_RecycleAgeLimit, &qbobj_CifsShareOption_t::RecycleAgeLimit>,
    given<&qbobj_CifsShareOption_t::_void_RecycleSizeLimit, &qbobj_CifsShareOption_t::RecycleSizeLimit>,
    given<&qbobj_CifsShareOption_t::_void_NewFileFolderPermAutoset,
          &qbobj_CifsShareOption_t::NewFileFolderPermAutoset>,
    given<&qbobj_CifsShareOption_t::_void_AclChangeRestrictionToggle,
          &qbobj_CifsShareOption_t::AclChangeRestrictionToggle>,
    &qbobj_CifsShareOption_t::FileCreateGroupRights,
    &qbobj_CifsShareOption_t::FileCreateEveryoneRights,
    &qbobj_CifsShareOption_t::FolderCreateGroupRights,
    &qbobj_CifsShareOption_t::FolderCreateEveryoneRights,
    given<&qbobj_CifsShareOption_t::_void_EnableOplocks, &qbobj_CifsShareOption_t::EnableOplocks>,
    negated(&qbobj_CifsShareOption_t::NotAvailable),
    &qbobj_CifsShareOption_t::EnableDFS,
};

// The rights of group and everyone from the bits of a mode; only a mode that is set sets permissions.
template <class Option>
constexpr auto mode_rights(const char *Option::*group, const char *Option::*everyone)
{
    return [group, everyone](const qbobj_env_t &, Option &option, const char *cell) {
        if (cell != nullptr)
            option.NewFileFolderPermAutoset = 1;
        option.*group = access_word(to_int(cell) >> 3);
        option.*everyone = access_word(to_int(cell));
    };
}

constexpr auto afp_columns = std::tuple{
    &qbobj_AfpShareOption_t::DefaultAccess,
    given<&qbobj_AfpShareOption_t::_void_AllowGuestAccess, &qbobj_AfpShareOption_t::AllowGuestAccess>,
    mode_rights(&qbobj_AfpShareOption_t::FileCreateGroupRights,
                &qbobj_AfpShareOption_t::FileCreateEveryoneRights),
    mode_rights(&qbobj_AfpShareOption_t::FolderCreateGroupRights,
                &qbobj_AfpShareOption_t::FolderCreateEveryoneRights),
    negated(&qbobj_AfpShareOption_t::NotAvailable),
};

constexpr auto nfs_columns = std::tuple{
    &qbobj_NfsShareOption_t::DefaultAccess,
    negated(&qbobj_NfsShareOption_t::NotAvailable),
    &qbobj_NfsShareOption_t::Sync,
};

// The access word of a umask's triplet. Without the right to write, a cleared read bit decides.
constexpr const char *umask_word(int bits)
{
    if ((bits & 2) == 0)
        return "ReadWrite";
    return (bits & 4) != 0 ? "Disabled" : "ReadOnly";
}

// The rights that a umask leaves; read only while permissions are set, which an earlier column says.
template <class Option>
constexpr auto umask_rights(const char *Option::*group, const char *Option::*everyone)
{
    return [group, everyone](const qbobj_env_t &, Option &option, const char *cell) {
        if (option.NewFileFolderPermAutoset == 0)
            return;
        option.*group = umask_word(to_int(cell) >> 3);
        option.*everyone = umask_word(to_int(cell));
    };
}

constexpr auto ftp_columns = std::tuple{
    &qbobj_FtpShareOption_t::DefaultAccess,
    given<&qbobj_FtpShareOption_t::_void_NewFileFolderPermAutoset,
          &qbobj_FtpShareOption_t::NewFileFolderPermAutoset>,
    umask_rights(&qbobj_FtpShareOption_t::FileCreateGroupRights,
                 &qbobj_FtpShareOption_t::FileCreateEveryoneRights),
    umask_rights(&qbobj_FtpShareOption_t::FolderCreateGroupRights,
                 &qbobj_FtpShareOption_t::FolderCreateEveryoneRights),
    negated(&qbobj_FtpShareOption_t::NotAvailable),
};

constexpr auto dlna_columns = std::tuple{
    &qbobj_DlnaShareOption_t::DefaultAccess,
    [](const qbobj_env_t &, qbobj_DlnaShareOption_t &option, const char *cell) {
        option.MediaType = qbobj_media_type_word(to_int(cell));
    },
    negated(&qbobj_DlnaShareOption_t::NotAvailable),
};

constexpr auto daap_columns = std::tuple{negated(&qbobj_DaapShareOption_t::NotAvailable)};

constexpr auto rsync_columns = std::tuple{
    &qbobj_RsyncShareOption_t::DefaultAccess,
    &qbobj_RsyncShareOption_t::PasswordProtection,
    negated(&qbobj_RsyncShareOption_t::NotAvailable),
};

constexpr auto http_columns = std::tuple{
    &qbobj_HttpShareOption_t::DefaultAccess,
    negated(&qbobj_HttpShareOption_t::NotAvailable),
    given<&qbobj_HttpShareOption_t::_void_EnableWebDav, &qbobj_HttpShareOption_t::EnableWebDav>,
};

constexpr auto zvol_columns = std::tuple{
    &qbobj_ZvolShareOption_t::SizeKB,
    &qbobj_ZvolShareOption_t::IsSparse,
    &qbobj_ZvolShareOption_t::ZfsName,
};

/* ---- One reader a protocol ----------------------------------------------------------------------------- */

// Makes the option record from its row; without a row there is none.
template <class Option, class... Columns>
FailedRead read_option(const ShareReading &reading, Option *&option, const char *table,
                       const std::tuple<Columns...> &columns, const Table &rows)
{
    option = nullptr;
    if (!rows)
        return {table, rows.error()};
    if (!rows.empty()) {
        option = create<Option>(reading.call.pool());
        fill(reading.call, *option, columns, *rows.begin());
    }
    return {};
}

FailedRead read_cifs(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    FailedRead failed =
        read_option(reading, share.Cifs, "cifs_share_option", cifs_columns,
                    reading.call.table(R"(SELECT CASE WHEN CIFS.cifs_access='writeable' THEN 'ReadWrite'
        WHEN CIFS.cifs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        CIFS.cifs_guest_access,CIFS.cifs_hide_share,CIFS.cifs_recycle,CIFS.cifs_recycle_age_limit,
        CIFS.cifs_recycle_mb_limit,CIFS.cifs_enable_masks,CIFS.cifs_enable_forced_minimum,
        CASE WHEN CIFS.cifs_group_create_mask&2=2 THEN 'ReadWrite'
        WHEN CIFS.cifs_group_create_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
        CASE WHEN CIFS.cifs_everyone_create_mask&2=2 THEN 'ReadWrite'
        WHEN CIFS.cifs_everyone_create_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
        CASE WHEN CIFS.cifs_group_directory_mask&2=2 THEN 'ReadWrite'
        WHEN CIFS.cifs_group_directory_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
        CASE WHEN CIFS.cifs_everyone_directory_mask&2=2 THEN 'ReadWrite'
        WHEN CIFS.cifs_everyone_directory_mask&4=4 THEN 'ReadOnly' ELSE 'Disabled' END,
        CIFS.oplocks,CIFS.available,CIFS.cifs_enabledfs FROM cifs_share_option CIFS WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Cifs == nullptr)
        return failed;
    failed = read_hosts_and_accounts(reading, share_id, "cifs", *share.Cifs);
    if (failed)
        return failed;
    return read_list(reading, share.Cifs->DfolderAcl, "cifs_dfs_option", dfolder_columns,
                     reading.call.table("SELECT D.folder,D.address,D.remote_share FROM cifs_dfs_option D "
                                        "WHERE  D.share_id=%d",
                                        share_id));
}

FailedRead read_afp(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    const FailedRead failed =
        read_option(reading, share.Afp, "afp_share_option", afp_columns,
                    reading.call.table(R"(SELECT CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite'
        WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        AFP.afp_guest_access,AFP.afp_fperm,AFP.afp_dperm,AFP.available
        FROM afp_share_option AFP WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Afp == nullptr)
        return failed;
    return read_hosts_and_accounts(reading, share_id, "afp", *share.Afp);
}

FailedRead read_nfs(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    const FailedRead failed =
        read_option(reading, share.Nfs, "nfs_share_option", nfs_columns,
                    reading.call.table(R"(SELECT CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite'
        WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        NFS.available,NFS.nfs_sync FROM nfs_share_option NFS WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Nfs == nullptr)
        return failed;
    return read_hosts(reading, share_id, "nfs", *share.Nfs);
}

FailedRead read_ftp(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    FailedRead failed =
        read_option(reading, share.Ftp, "ftp_share_option", ftp_columns,
                    reading.call.table(R"(SELECT CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite'
        WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        FTP.ftp_mask,FTP.ftp_create_mask,FTP.ftp_directory_mask,FTP.available
        FROM ftp_share_option FTP WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Ftp == nullptr)
        return failed;
    failed = read_hosts(reading, share_id, "ftp", *share.Ftp);
    if (failed || reading.ftp_anonymous)
        return failed;
    return read_accounts(reading, share_id, "ftp", *share.Ftp);
}

FailedRead read_dlna(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    return read_option(reading, share.Dlna, "dlna_share_option", dlna_columns,
                       reading.call.table(R"(SELECT CASE WHEN DLNA.access='readonly' THEN 'ReadOnly'
        ELSE 'Disabled' END,DLNA.media_type,DLNA.available
        FROM dlna_share_option DLNA WHERE DLNA.share_id=%d AND DLNA.access='readonly')",
                                          share_id));
}

FailedRead read_daap(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    return read_option(
        reading, share.Daap, "daap_share_option", daap_columns,
        reading.call.table("SELECT DAAP.available FROM daap_share_option DAAP WHERE DAAP.share_id=%d",
                           share_id));
}

FailedRead read_rsync(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    FailedRead failed =
        read_option(reading, share.Rsync, "rsync_share_option", rsync_columns,
                    reading.call.table(R"(SELECT CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly'
        ELSE 'ReadWrite' END,CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled'
        ELSE 'Disabled' END,RSYNC.available FROM rsync_share_option RSYNC WHERE RSYNC.share_id=%d)",
                                       share_id));
    if (failed || share.Rsync == nullptr)
        return failed;
    failed = read_hosts(reading, share_id, "rsync", *share.Rsync);
    if (failed)
        return failed;
    return read_list(reading, share.Rsync->UserPasswordAcl, "rsync_user_password_acl", login_columns,
                     reading.call.table("SELECT UP.user,UP.password FROM rsync_user_password_acl UP "
                                        "WHERE UP.share_id=%d",
                                        share_id));
}

FailedRead read_http(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    const FailedRead failed =
        read_option(reading, share.Http, "http_share_option", http_columns,
                    reading.call.table(R"(SELECT CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite'
        WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        HTTP.available,HTTP.http_webdav FROM http_share_option HTTP WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Http == nullptr)
        return failed;
    return read_hosts_and_accounts(reading, share_id, "http", *share.Http);
}

FailedRead read_zvol(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    const FailedRead failed =
        read_option(reading, share.Zvol, "zvol_share_option", zvol_columns,
                    reading.call.table(R"(SELECT ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name
        FROM zvol_share_option ZVOL INNER JOIN share S ON S.id=ZVOL.share_id
        INNER JOIN _volume V ON V.id=S.volume_id WHERE share_id=%d)",
                                       share_id));
    if (failed || share.Zvol == nullptr)
        return failed;
    unsigned long used_bytes = 0;
    if (qbdb_fs_get_attr_scanf(reading.call.qbdb(), share.Zvol->ZfsName, "usedbydataset", "%lu",
                               &used_bytes) == 0)
        share.Zvol->UsedKB = used_bytes >> 10;
    return {};
}

} // namespace

FailedRead read_share_options(const ShareReading &reading, int share_id, qbobj_Share_t &share)
{
    for (const auto &read :
         {read_cifs, read_afp, read_nfs, read_ftp, read_dlna, read_daap, read_rsync, read_http, read_zvol})
        if (const FailedRead failed = read(reading, share_id, share); failed)
            return failed;
    return {};
}

} // namespace qbobj
