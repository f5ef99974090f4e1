// Shares read and created as a hand-written program would: the same look-ups into the same records.
#pragma once

#include "lookup.h"

namespace qbobj_bench
{

// `Lookup` finds what belongs to a share: EachShare or InOneScan.
template <class Lookup>
class ShareReader
{
  public:
    explicit ShareReader(const Connection &connection) : connection_(connection) {}

    // Without folders nothing but the database is read.
    void read_all(qbobj_ShareCollection_t &collection, bool with_folders = true);
    void read_named(const char *name, qbobj_Share_t &share);
    int id_of(const char *name);

  private:
    apr_pool_t *pool() const { return connection_.qbdb->pool; }

    void read_settings();
    int read_row(Row &row, qbobj_Share_t &share);
    void complete(int share_id, qbobj_Share_t &share);
    void read_folder(qbobj_Share_t &share);
    void read_owners(qbobj_FileStat_t &stat, int uid, int gid);
    void read_schedule(int share_id, qbobj_Share_t &share);
    template <class Option>
    void read_hosts(int share_id, const char *proto, Option &option);
    template <class Option>
    void read_accounts(int share_id, const char *proto, Option &option);
    void read_cifs(int share_id, qbobj_Share_t &share);
    void read_afp(int share_id, qbobj_Share_t &share);
    void read_nfs(int share_id, qbobj_Share_t &share);
    void read_ftp(int share_id, qbobj_Share_t &share);
    void read_media(int share_id, qbobj_Share_t &share);
    void read_rsync(int share_id, qbobj_Share_t &share);
    void read_http(int share_id, qbobj_Share_t &share);
    void read_zvol(int share_id, qbobj_Share_t &share);
    void read_snapshots(int share_id, qbobj_Share_t &share);
    void read_use(int share_id, qbobj_Share_t &share);
    void read_quotas(Lookup &quotas, int share_id, qbobj_Quota_t *&list);

    static std::string shares(const char *condition);
    static ShareRows quotas(const std::string &account, const std::string &name);
    static ShareRows accounts(const std::string &account, const std::string &name);

    const Connection &connection_;
    int ftp_anonymous_ = 0;
    qbobj_SystemUser_t owner_{}; // of the last folder
    qbobj_SystemGroup_t group_{};
    Transactions transactions_{connection_, "BEGIN"};
    Kept ftp_mode_{connection_, "SELECT IFNULL(CASE WHEN auth_mode='anonymous' THEN 1 ELSE 0 END, 0) "
                                "FROM service_ftp LIMIT 1"};
    Kept directory_mode_{connection_, "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END "
                                      "FROM service_cifs S LIMIT 1"};
    Kept id_of_name_{connection_, "SELECT id FROM share WHERE name=%Q"};
    Kept all_{connection_, shares("S.type='share'")};
    Kept one_{connection_, shares("S.id=%d")};
    Kept user_name_{connection_, "SELECT U.uname FROM `$user` U WHERE U.id=%d "
                                 "OR (%d AND U.id=%d AND U.rid IS NOT NULL)"};
    Kept group_name_{connection_, "SELECT G.gname FROM `$group` G WHERE G.id=%d "
                                  "OR (%d AND G.id=%d AND G.rid IS NOT NULL)"};
    Lookup schedule_{connection_,
                     {R"(SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,
        SS.last_taken,SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken)",
                      "snapshot_schedule SS", "SS.share_id"}};
    Lookup hosts_{connection_,
                  {R"(H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite'
        WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,HA.root)",
                   "host_acl HA CROSS JOIN host H ON H.id=HA.host_id", "HA.share_id", "HA.proto"}};
    Lookup users_{connection_, accounts("user", "uname")};
    Lookup groups_{connection_, accounts("group", "gname")};
    Lookup cifs_{connection_,
                 {R"(CASE WHEN CIFS.cifs_access='writeable' THEN 'ReadWrite'
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
        CIFS.oplocks,NOT CIFS.available,CIFS.cifs_enabledfs)",
                  "cifs_share_option CIFS", "CIFS.share_id"}};
    Lookup dfs_links_{connection_, {"D.folder,D.address,D.remote_share", "cifs_dfs_option D", "D.share_id"}};
    Lookup afp_{connection_,
                {R"(CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite'
        WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        AFP.afp_guest_access,NOT AFP.available,AFP.afp_fperm IS NOT NULL OR AFP.afp_dperm IS NOT NULL,
        AFP.afp_fperm,AFP.afp_dperm)",
                 "afp_share_option AFP", "AFP.share_id"}};
    Lookup nfs_{connection_,
                {R"(CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite'
        WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,NOT NFS.available,NFS.nfs_sync)",
                 "nfs_share_option NFS", "NFS.share_id"}};
    Lookup ftp_{connection_,
                {R"(CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite'
        WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        FTP.ftp_mask,NOT FTP.available,FTP.ftp_create_mask,FTP.ftp_directory_mask)",
                 "ftp_share_option FTP", "FTP.share_id"}};
    Lookup dlna_{connection_,
                 {.columns = "'ReadOnly',NOT DLNA.available,DLNA.media_type",
                  .from = "dlna_share_option DLNA",
                  .share_id = "DLNA.share_id",
                  .condition = "DLNA.access='readonly'"}};
    Lookup daap_{connection_, {"NOT DAAP.available", "daap_share_option DAAP", "DAAP.share_id"}};
    Lookup rsync_{connection_,
                  {R"(CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly' ELSE 'ReadWrite' END,
        CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled' ELSE 'Disabled' END,NOT RSYNC.available)",
                   "rsync_share_option RSYNC", "RSYNC.share_id"}};
    Lookup logins_{connection_, {"UP.user,UP.password", "rsync_user_password_acl UP", "UP.share_id"}};
    Lookup http_{connection_,
                 {R"(CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite'
        WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,NOT HTTP.available,HTTP.http_webdav)",
                  "http_share_option HTTP", "HTTP.share_id"}};
    Lookup zvol_{connection_,
                 {"ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name",
                  "zvol_share_option ZVOL INNER JOIN share S ON S.id=ZVOL.share_id "
                  "INNER JOIN _volume V ON V.id=S.volume_id",
                  "ZVOL.share_id"}};
    Lookup snapshots_{connection_,
                      {.columns = "SS.type,SS.created_on",
                       .from = "`$snapshot` SS INNER JOIN share S ON S.zfs_name=SS.zfs_name",
                       .share_id = "S.id",
                       .by_name = true}};
    Lookup processes_{connection_, {"PS.blocking", "process_on_share PS", "PS.share_id"}};
    Lookup used_by_{connection_,
                    {.columns = "A.app_name,A.app_data",
                     .from = "`$application_on_share` A INNER JOIN share S ON S.zfs_name=A.zfs_name",
                     .share_id = "S.id",
                     .by_name = true}};
    Lookup clones_{connection_,
                   {.columns = "C.id,C.cloned_zfs_name,C.parent_snapshot_name,C.parent_zfs_name",
                    .from = "`$snapshot_clones` C INNER JOIN share S ON S.name=C.parent_zfs_name",
                    .share_id = "S.id",
                    .by_name = true}};
    Lookup user_quotas_{connection_, quotas("user", "uname")};
    Lookup group_quotas_{connection_, quotas("group", "gname")};
};

extern template class ShareReader<EachShare>;
extern template class ShareReader<InOneScan>;

} // namespace qbobj_bench
