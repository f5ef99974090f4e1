// A share's options for each protocol and its access lists, read.
#include "share/protocols.h"
#include "share/share_reading.h"
#include "validate/validate.h"

#include <string_view>

namespace qbobj
{

namespace
{

using Zvol = qbobj_ZvolShareOption_t;

/* ---- Access lists -------------------------------------------------------------------------------------- */

// An entry of a list, with its share and the word of its protocol; the word lives as long as the row.
template <class Record>
struct ListRow : OfShare<Record> {
    const char *proto;
};
constexpr auto protocol = [](const qbobj_env_t &, auto &row, const char *cell) {
    row.proto = or_empty(cell);
};

constexpr auto hosts = select_of_shares(
    R"(SELECT H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite' WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,
    HA.root,HA.proto,HA.share_id FROM host_acl HA CROSS JOIN host H ON H.id=HA.host_id
    WHERE HA.share_id BETWEEN %d AND %d ORDER BY HA.share_id,HA.proto)",
    "Failed DB Query for 'SELECT FROM host,host_acl'. %s",
    of(&qbobj_HostAcl_t::Host, both(&qbobj_Host_t::resource_id, &qbobj_Host_t::HostId)),
    of(&qbobj_HostAcl_t::Host, &qbobj_Host_t::HostName), &qbobj_HostAcl_t::Access, &qbobj_HostAcl_t::Root,
    protocol);

// Users and groups of the kind that the appliance works with.
constexpr auto users = select_of_shares<const char *>(
    R"(SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite' WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END,
    UA.proto,UA.share_id FROM user_acl UA CROSS JOIN `$user` U ON U.id=UA.user_id
    WHERE UA.share_id BETWEEN %d AND %d AND U.rid IS %sNULL
    ORDER BY UA.share_id,UA.proto,U.uname COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM user,user_acl'. %s",
    of(&qbobj_UserAcl_t::User, both(&qbobj_SystemUser_t::resource_id, &qbobj_SystemUser_t::UserId)),
    of(&qbobj_UserAcl_t::User, &qbobj_SystemUser_t::UserName), &qbobj_UserAcl_t::Access, protocol);

constexpr auto groups = select_of_shares<const char *>(
    R"(SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite' WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END,
    GA.proto,GA.share_id FROM group_acl GA CROSS JOIN `$group` G ON G.id=GA.group_id
    WHERE GA.share_id BETWEEN %d AND %d AND G.rid IS %sNULL
    ORDER BY GA.share_id,GA.proto,G.gname COLLATE NOCASE)",
    "Failed DB Query for 'SELECT FROM group,group_acl'. %s",
    of(&qbobj_GroupAcl_t::Group, both(&qbobj_SystemGroup_t::resource_id, &qbobj_SystemGroup_t::GroupId)),
    of(&qbobj_GroupAcl_t::Group, &qbobj_SystemGroup_t::GroupName), &qbobj_GroupAcl_t::Access, protocol);

constexpr auto links = select_of_shares(
    R"(SELECT D.folder,D.address,D.remote_share,D.share_id FROM cifs_dfs_option D
    WHERE D.share_id BETWEEN %d AND %d ORDER BY D.share_id)",
    "Failed DB Query for 'SELECT FROM cifs_dfs_option'. %s", &qbobj_DfolderAcl_t::Name,
    &qbobj_DfolderAcl_t::Address, &qbobj_DfolderAcl_t::RemoteShare);

constexpr auto logins = select_of_shares(
    R"(SELECT UP.user,UP.password,UP.share_id FROM rsync_user_password_acl UP
    WHERE UP.share_id BETWEEN %d AND %d ORDER BY UP.share_id)",
    "Failed DB Query for 'SELECT FROM rsync_user_password_acl'. %s", &qbobj_UserPasswordAcl_t::UserName,
    &qbobj_UserPasswordAcl_t::Password);

// Calls visit(option) for every option that the share has and that may have lists.
template <class Visit>
void for_each_option(const qbobj_Share_t &share, Visit visit)
{
    const auto visit_existing = [&](auto *option) {
        if (option != nullptr)
            visit(*option);
    };
    visit_existing(share.Cifs);
    visit_existing(share.Afp);
    visit_existing(share.Nfs);
    visit_existing(share.Ftp);
    visit_existing(share.Rsync);
    visit_existing(share.Http);
}

// Where an entry goes: the list of its kind of the option for its protocol. FTP knows no users and groups while it is
// anonymous.
template <class Record>
Record **list_of(const qbobj_Share_t &share, std::string_view proto, bool ftp_anonymous)
{
    Record **list = nullptr;
    for_each_option(share, [&](auto &option) {
        using Option = std::remove_reference_t<decltype(option)>;
        if (proto != protocol_of<Option>.word)
            return;
        if constexpr (std::is_same_v<Record, qbobj_HostAcl_t> && requires { option.HostAcl; })
            list = &option.HostAcl;
        if (std::is_same_v<Option, Ftp> && ftp_anonymous)
            return;
        if constexpr (std::is_same_v<Record, qbobj_UserAcl_t> && requires { option.UserAcl; })
            list = &option.UserAcl;
        if constexpr (std::is_same_v<Record, qbobj_GroupAcl_t> && requires { option.GroupAcl; })
            list = &option.GroupAcl;
    });
    return list;
}

template <class Record, class Select, class... Args>
int read_acl(const ShareBatch &batch, const Select &select, bool ftp_anonymous, Args... args)
{
    const auto list = [=](qbobj_Share_t &share, const ListRow<Record> &row) {
        return list_of<Record>(share, row.proto, ftp_anonymous);
    };
    return batch.append<ListRow<Record>>(select, list, args...);
}

int read_lists(const ShareBatch &batch, bool ftp_anonymous)
{
    bool needed = false;
    for (const ShareBatch::Entry &entry : batch.entries())
        for_each_option(*entry.share, [&](auto &) { needed = true; });
    if (!needed)
        return 0;
    const char *rid_not = batch.call().directory().rid_not();
    if (const int rc = read_acl<qbobj_HostAcl_t>(batch, hosts, ftp_anonymous))
        return rc;
    if (const int rc = read_acl<qbobj_UserAcl_t>(batch, users, ftp_anonymous, rid_not))
        return rc;
    if (const int rc = read_acl<qbobj_GroupAcl_t>(batch, groups, ftp_anonymous, rid_not))
        return rc;
    const auto links_of = [](qbobj_Share_t &share, const auto &) {
        return share.Cifs == nullptr ? nullptr : &share.Cifs->DfolderAcl;
    };
    if (const int rc = batch.append<OfShare<qbobj_DfolderAcl_t>>(links, links_of))
        return rc;
    const auto logins_of = [](qbobj_Share_t &share, const auto &) {
        return share.Rsync == nullptr ? nullptr : &share.Rsync->UserPasswordAcl;
    };
    return batch.append<OfShare<qbobj_UserPasswordAcl_t>>(logins, logins_of);
}

/* ---- The option rows ----------------------------------------------------------------------------------- */

constexpr auto cifs = select_of_shares(
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
    CIFS.oplocks,CIFS.available,CIFS.cifs_enabledfs,CIFS.share_id FROM cifs_share_option CIFS
    WHERE CIFS.share_id BETWEEN %d AND %d ORDER BY CIFS.share_id)",
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

constexpr auto afp = select_of_shares(
    R"(SELECT CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite'
    WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    AFP.afp_guest_access,AFP.afp_fperm,AFP.afp_dperm,AFP.available,AFP.share_id
    FROM afp_share_option AFP WHERE AFP.share_id BETWEEN %d AND %d ORDER BY AFP.share_id)",
    "Failed DB Query for 'SELECT FROM afp_share_option'. %s", &Afp::DefaultAccess,
    given<&Afp::_void_AllowGuestAccess, &Afp::AllowGuestAccess>,
    mode_rights(&Afp::FileCreateGroupRights, &Afp::FileCreateEveryoneRights),
    mode_rights(&Afp::FolderCreateGroupRights, &Afp::FolderCreateEveryoneRights),
    negated(&Afp::NotAvailable));

constexpr auto nfs = select_of_shares(
    R"(SELECT CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite'
    WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    NFS.available,NFS.nfs_sync,NFS.share_id FROM nfs_share_option NFS
    WHERE NFS.share_id BETWEEN %d AND %d ORDER BY NFS.share_id)",
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

constexpr auto ftp = select_of_shares(
    R"(SELECT CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite'
    WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    FTP.ftp_mask,FTP.ftp_create_mask,FTP.ftp_directory_mask,FTP.available,FTP.share_id
    FROM ftp_share_option FTP WHERE FTP.share_id BETWEEN %d AND %d ORDER BY FTP.share_id)",
    "Failed DB Query for 'SELECT FROM ftp_share_option'. %s", &Ftp::DefaultAccess,
    given<&Ftp::_void_NewFileFolderPermAutoset, &Ftp::NewFileFolderPermAutoset>,
    umask_rights(&Ftp::FileCreateGroupRights, &Ftp::FileCreateEveryoneRights),
    umask_rights(&Ftp::FolderCreateGroupRights, &Ftp::FolderCreateEveryoneRights),
    negated(&Ftp::NotAvailable));

constexpr auto media_type = [](const qbobj_env_t &, Dlna &option, const char *cell) {
    option.MediaType = qbobj_media_type_word(to_int(cell));
};

constexpr auto dlna = select_of_shares(
    R"(SELECT CASE WHEN DLNA.access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,DLNA.media_type,
    DLNA.available,DLNA.share_id FROM dlna_share_option DLNA
    WHERE DLNA.share_id BETWEEN %d AND %d AND DLNA.access='readonly' ORDER BY DLNA.share_id)",
    "Failed DB Query for 'SELECT FROM dlna_share_option'. %s", &Dlna::DefaultAccess, media_type,
    negated(&Dlna::NotAvailable));

constexpr auto daap =
    select_of_shares(R"(SELECT DAAP.available,DAAP.share_id FROM daap_share_option DAAP
    WHERE DAAP.share_id BETWEEN %d AND %d ORDER BY DAAP.share_id)",
                     "Failed DB Query for 'SELECT FROM daap_share_option'. %s", negated(&Daap::NotAvailable));

constexpr auto rsync = select_of_shares(
    R"(SELECT CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly' ELSE 'ReadWrite' END,
    CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled' ELSE 'Disabled' END,
    RSYNC.available,RSYNC.share_id FROM rsync_share_option RSYNC
    WHERE RSYNC.share_id BETWEEN %d AND %d ORDER BY RSYNC.share_id)",
    "Failed DB Query for 'SELECT FROM rsync_share_option'. %s", &Rsync::DefaultAccess,
    &Rsync::PasswordProtection, negated(&Rsync::NotAvailable));

constexpr auto http = select_of_shares(
    R"(SELECT CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite'
    WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
    HTTP.available,HTTP.http_webdav,HTTP.share_id FROM http_share_option HTTP
    WHERE HTTP.share_id BETWEEN %d AND %d ORDER BY HTTP.share_id)",
    "Failed DB Query for 'SELECT FROM http_share_option'. %s", &Http::DefaultAccess,
    negated(&Http::NotAvailable), given<&Http::_void_EnableWebDav, &Http::EnableWebDav>);

constexpr auto zvol = select_of_shares(
    R"(SELECT ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name,ZVOL.share_id FROM zvol_share_option ZVOL
    CROSS JOIN share S ON S.id=ZVOL.share_id CROSS JOIN _volume V ON V.id=S.volume_id
    WHERE ZVOL.share_id BETWEEN %d AND %d ORDER BY ZVOL.share_id)",
    "Failed DB Query for 'SELECT FROM zvol_share_option'. %s", &Zvol::SizeKB, &Zvol::IsSparse,
    &Zvol::ZfsName);

int read_block_volumes(const ShareBatch &batch)
{
    if (const int rc = batch.read_new(zvol, &qbobj_Share_t::Zvol))
        return rc;
    for (const ShareBatch::Entry &entry : batch.entries()) {
        Zvol *const volume = entry.share->Zvol;
        unsigned long used_bytes = 0;
        if (volume != nullptr && qbdb_fs_get_attr_scanf(batch.call().qbdb(), volume->ZfsName, "usedbydataset",
                                                        "%lu", &used_bytes) == 0)
            volume->UsedKB = used_bytes >> 10;
    }
    return 0;
}

// Read one after the other; the first failure ends it.
template <class Select, class Option, class... Others>
int read_options(const ShareBatch &batch, const Select &select, Option *qbobj_Share_t::*option,
                 const Others &...others)
{
    if (const int rc = batch.read_new(select, option))
        return rc;
    if constexpr (sizeof...(others) > 0)
        return read_options(batch, others...);
    return 0;
}

} // namespace

int read_share_options(const ShareBatch &batch, bool ftp_anonymous)
{
    using Share = qbobj_Share_t;
    if (const int rc =
            read_options(batch, cifs, &Share::Cifs, afp, &Share::Afp, nfs, &Share::Nfs, ftp, &Share::Ftp,
                         dlna, &Share::Dlna, daap, &Share::Daap, rsync, &Share::Rsync, http, &Share::Http))
        return rc;
    if (const int rc = read_lists(batch, ftp_anonymous))
        return rc;
    return read_block_volumes(batch);
}

} // namespace qbobj
