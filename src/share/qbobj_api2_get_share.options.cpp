// A share's options for each protocol and its access lists, read.
#include "share/protocols.h"
#include "share/share_reading.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

using Cifs = qbobj_CifsShareOption_t;
using Afp = qbobj_AfpShareOption_t;
using Nfs = qbobj_NfsShareOption_t;
using Ftp = qbobj_FtpShareOption_t;
using Http = qbobj_HttpShareOption_t;
using Dlna = qbobj_DlnaShareOption_t;
using Daap = qbobj_DaapShareOption_t;
using Rsync = qbobj_RsyncShareOption_t;
using Zvol = qbobj_ZvolShareOption_t;

/* ---- Access lists -------------------------------------------------------------------------------------- */

constexpr auto hosts = select<int, const char *>(
    R"(SELECT H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite' WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,
    HA.root FROM host H INNER JOIN host_acl HA ON HA.host_id=H.id AND HA.share_id=%d AND HA.proto=%Q)",
    "Failed DB Query for 'SELECT FROM host,host_acl'. %s",
    of(&qbobj_HostAcl_t::Host, both(&qbobj_Host_t::resource_id, &qbobj_Host_t::HostId)),
    of(&qbobj_HostAcl_t::Host, &qbobj_Host_t::HostName), &qbobj_HostAcl_t::Access, &qbobj_HostAcl_t::Root);

// Users and groups of the kind that the appliance works with.
constexpr auto users = select<int, const char *, const char *>(
    R"(SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite' WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END
    FROM `$user` U INNER JOIN user_acl UA ON UA.user_id=U.id AND UA.share_id=%d AND UA.proto=%Q
    WHERE U.rid IS %sNULL ORDER BY U.uname COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM user,user_acl'. %s",
    of(&qbobj_UserAcl_t::User, both(&qbobj_SystemUser_t::resource_id, &qbobj_SystemUser_t::UserId)),
    of(&qbobj_UserAcl_t::User, &qbobj_SystemUser_t::UserName), &qbobj_UserAcl_t::Access);

constexpr auto groups = select<int, const char *, const char *>(
    R"(SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite' WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END
    FROM `$group` G INNER JOIN group_acl GA ON GA.group_id=G.id AND GA.share_id=%d AND GA.proto=%Q
    WHERE G.rid IS %sNULL ORDER BY G.gname COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM group,group_acl'. %s",
    of(&qbobj_GroupAcl_t::Group, both(&qbobj_SystemGroup_t::resource_id, &qbobj_SystemGroup_t::GroupId)),
    of(&qbobj_GroupAcl_t::Group, &qbobj_SystemGroup_t::GroupName), &qbobj_GroupAcl_t::Access);

constexpr auto links =
    select<int>("SELECT D.folder,D.address,D.remote_share FROM cifs_dfs_option D WHERE  D.share_id=%d",
                "Failed DB Query for 'SELECT FROM cifs_dfs_option'. %s", &qbobj_DfolderAcl_t::Name,
                &qbobj_DfolderAcl_t::Address, &qbobj_DfolderAcl_t::RemoteShare);

constexpr auto logins =
    select<int>("SELECT UP.user,UP.password FROM rsync_user_password_acl UP WHERE UP.share_id=%d",
                "Failed DB Query for 'SELECT FROM rsync_user_password_acl'. %s",
                &qbobj_UserPasswordAcl_t::UserName, &qbobj_UserPasswordAcl_t::Password);

// Puts one record a row into the list, in place of what it held.
template <class Select, class Record, class... Args>
int read_list(const ShareReading &reading, const Select &select, Record *&list, Args... args)
{
    list = nullptr;
    return reading.call.append(select, list, reading.share_id, args...);
}

template <class Option>
int read_accounts(const ShareReading &reading, Option &option)
{
    if (std::is_same_v<Option, Ftp> && reading.ftp_anonymous)
        return 0;
    const char *proto = protocol_of<Option>.word;
    const char *rid_not = reading.call.directory().rid_not();
    if (const int rc = read_list(reading, users, option.UserAcl, proto, rid_not))
        return rc;
    return read_list(reading, groups, option.GroupAcl, proto, rid_not);
}

// Every list that the protocol has.
template <class Option>
int read_lists(const ShareReading &reading, Option &option)
{
    int rc = 0;
    if constexpr (requires { option.HostAcl; })
        rc = read_list(reading, hosts, option.HostAcl, protocol_of<Option>.word);
    if constexpr (requires { option.UserAcl; })
        rc = rc != 0 ? rc : read_accounts(reading, option);
    if constexpr (requires { option.DfolderAcl; })
        rc = rc != 0 ? rc : read_list(reading, links, option.DfolderAcl);
    if constexpr (requires { option.UserPasswordAcl; })
        rc = rc != 0 ? rc : read_list(reading, logins, option.UserPasswordAcl);
    return rc;
}

/* ---- The option rows ----------------------------------------------------------------------------------- */

constexpr auto cifs = select<int>(
    R"(SELECT CASE WHEN CIFS.cifs_access='writeable' THEN 'ReadWrite'
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
    "Failed DB Query for 'SELECT FROM cifs_share_option'. %s", &Cifs::DefaultAccess,
    given<&Cifs::_void_AllowGuestAccess, &Cifs::AllowGuestAccess>,
    given<&Cifs::_void_ShareDisplayOption, &Cifs::ShareDisplayOption>,
    given<&Cifs::_void_EnableRecycleBin, &Cifs::EnableRecycleBin>,
    given<&Cifs::_void_RecycleAgeLimit, &Cifs::RecycleAgeLimit>,
    given<&Cifs::_void_RecycleSizeLimit, &Cifs::RecycleSizeLimit>,
    given<&Cifs::_void_NewFileFolderPermAutoset, &Cifs::NewFileFolderPermAutoset>,
    given<&Cifs::_void_AclChangeRestrictionToggle, &Cifs::AclChangeRestrictionToggle>,
    &Cifs::FileCreateGroupRights, &Cifs::FileCreateEveryoneRights, &Cifs::FolderCreateGroupRights,
    &Cifs::FolderCreateEveryoneRights, given<&Cifs::_void_EnableOplocks, &Cifs::EnableOplocks>,
    negated(&Cifs::NotAvailable), &Cifs::EnableDFS);

// The rights of group and everyone from the bits of a mode; only a mode that is set sets permissions.
constexpr auto mode_rights(const char *Afp::*group, const char *Afp::*everyone)
{
    return [group, everyone](const qbobj_env_t &, Afp &option, const char *cell) {
        if (cell != nullptr)
            option.NewFileFolderPermAutoset = 1;
        option.*group = access_word(to_int(cell) >> 3);
        option.*everyone = access_word(to_int(cell));
    };
}

constexpr auto afp = select<int>(
    R"(SELECT CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite'
    WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    AFP.afp_guest_access,AFP.afp_fperm,AFP.afp_dperm,AFP.available FROM afp_share_option AFP WHERE share_id=%d)",
    "Failed DB Query for 'SELECT FROM afp_share_option'. %s", &Afp::DefaultAccess,
    given<&Afp::_void_AllowGuestAccess, &Afp::AllowGuestAccess>,
    mode_rights(&Afp::FileCreateGroupRights, &Afp::FileCreateEveryoneRights),
    mode_rights(&Afp::FolderCreateGroupRights, &Afp::FolderCreateEveryoneRights),
    negated(&Afp::NotAvailable));

constexpr auto nfs = select<int>(
    R"(SELECT CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite'
    WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    NFS.available,NFS.nfs_sync FROM nfs_share_option NFS WHERE share_id=%d)",
    "Failed DB Query for 'SELECT FROM nfs_share_option'. %s", &Nfs::DefaultAccess,
    negated(&Nfs::NotAvailable), &Nfs::Sync);

// The access word of a umask's triplet. Without the right to write, a cleared read bit decides.
constexpr const char *umask_word(int bits)
{
    if ((bits & 2) == 0)
        return "ReadWrite";
    return (bits & 4) != 0 ? "Disabled" : "ReadOnly";
}

// The rights that a umask leaves; read only while permissions are set, which an earlier column says.
constexpr auto umask_rights(const char *Ftp::*group, const char *Ftp::*everyone)
{
    return [group, everyone](const qbobj_env_t &, Ftp &option, const char *cell) {
        if (option.NewFileFolderPermAutoset == 0)
            return;
        option.*group = umask_word(to_int(cell) >> 3);
        option.*everyone = umask_word(to_int(cell));
    };
}

constexpr auto ftp = select<int>(
    R"(SELECT CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite'
    WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    FTP.ftp_mask,FTP.ftp_create_mask,FTP.ftp_directory_mask,FTP.available
    FROM ftp_share_option FTP WHERE share_id=%d)",
    "Failed DB Query for 'SELECT FROM ftp_share_option'. %s", &Ftp::DefaultAccess,
    given<&Ftp::_void_NewFileFolderPermAutoset, &Ftp::NewFileFolderPermAutoset>,
    umask_rights(&Ftp::FileCreateGroupRights, &Ftp::FileCreateEveryoneRights),
    umask_rights(&Ftp::FolderCreateGroupRights, &Ftp::FolderCreateEveryoneRights),
    negated(&Ftp::NotAvailable));

constexpr auto media_type = [](const qbobj_env_t &, Dlna &option, const char *cell) {
    option.MediaType = qbobj_media_type_word(to_int(cell));
};

constexpr auto dlna = select<int>(
    R"(SELECT CASE WHEN DLNA.access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,DLNA.media_type,
    DLNA.available FROM dlna_share_option DLNA WHERE DLNA.share_id=%d AND DLNA.access='readonly')",
    "Failed DB Query for 'SELECT FROM dlna_share_option'. %s", &Dlna::DefaultAccess, media_type,
    negated(&Dlna::NotAvailable));

constexpr auto daap =
    select<int>("SELECT DAAP.available FROM daap_share_option DAAP WHERE DAAP.share_id=%d",
                "Failed DB Query for 'SELECT FROM daap_share_option'. %s", negated(&Daap::NotAvailable));

constexpr auto rsync = select<int>(
    R"(SELECT CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly' ELSE 'ReadWrite' END,
    CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled' ELSE 'Disabled' END,
    RSYNC.available FROM rsync_share_option RSYNC WHERE RSYNC.share_id=%d)",
    "Failed DB Query for 'SELECT FROM rsync_share_option'. %s", &Rsync::DefaultAccess,
    &Rsync::PasswordProtection, negated(&Rsync::NotAvailable));

constexpr auto http = select<int>(
    R"(SELECT CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite'
    WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    HTTP.available,HTTP.http_webdav FROM http_share_option HTTP WHERE share_id=%d)",
    "Failed DB Query for 'SELECT FROM http_share_option'. %s", &Http::DefaultAccess,
    negated(&Http::NotAvailable), given<&Http::_void_EnableWebDav, &Http::EnableWebDav>);

constexpr auto zvol = select<int>(
    R"(SELECT ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name FROM zvol_share_option ZVOL
    INNER JOIN share S ON S.id=ZVOL.share_id INNER JOIN _volume V ON V.id=S.volume_id WHERE share_id=%d)",
    "Failed DB Query for 'SELECT FROM zvol_share_option'. %s", &Zvol::SizeKB, &Zvol::IsSparse,
    &Zvol::ZfsName);

// The record of a protocol from its row and lists; without a row there is none.
template <class Select, class Option>
int read_option(const ShareReading &reading, const Select &select, Option *&option)
{
    const int rc = reading.call.read_new(select, option, reading.share_id);
    return rc != 0 || option == nullptr ? rc : read_lists(reading, *option);
}

int read_block_volume(const ShareReading &reading, Zvol *&volume)
{
    if (const int rc = reading.call.read_new(zvol, volume, reading.share_id))
        return rc;
    unsigned long used_bytes = 0;
    if (volume != nullptr && qbdb_fs_get_attr_scanf(reading.call.qbdb(), volume->ZfsName, "usedbydataset",
                                                    "%lu", &used_bytes) == 0)
        volume->UsedKB = used_bytes >> 10;
    return 0;
}

} // namespace

int read_share_options(const ShareReading &reading, qbobj_Share_t &share)
{
    if (const int rc = read_option(reading, cifs, share.Cifs))
        return rc;
    if (const int rc = read_option(reading, afp, share.Afp))
        return rc;
    if (const int rc = read_option(reading, nfs, share.Nfs))
        return rc;
    if (const int rc = read_option(reading, ftp, share.Ftp))
        return rc;
    if (const int rc = read_option(reading, dlna, share.Dlna))
        return rc;
    if (const int rc = read_option(reading, daap, share.Daap))
        return rc;
    if (const int rc = read_option(reading, rsync, share.Rsync))
        return rc;
    if (const int rc = read_option(reading, http, share.Http))
        return rc;
    return read_block_volume(reading, share.Zvol);
}

} // namespace qbobj
