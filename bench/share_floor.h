// Shares read and created as a hand-written program would: the same look-ups into the same records.
#pragma once

#include "lookup.h"

namespace qbobj_bench
{

// `Lookup` is Kept or Fresh.
template <class Lookup>
class ShareReader
{
  public:
    explicit ShareReader(const Connection &connection) : connection_(connection) {}

    void read_all(qbobj_ShareCollection_t &collection);
    void read_named(const char *name, qbobj_Share_t &share);
    int id_of(const char *name);

  private:
    apr_pool_t *pool() const { return connection_.qbdb->pool; }

    void read_settings();
    template <class Row>
    int read_row(Row &row, qbobj_Share_t &share);
    void complete(int share_id, qbobj_Share_t &share);
    void read_folder(const char *path, qbobj_FileStat_t &stat);
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
    void read_use(int share_id, qbobj_Share_t &share);
    void read_quotas(const Lookup &quotas, int share_id, qbobj_Quota_t *&list);

    static std::string shares(const char *condition);
    static std::string quotas(const char *account, const char *name);

    const Connection &connection_;
    int ftp_anonymous_ = 0;
    Transactions<Lookup> transactions_{connection_};
    Lookup ftp_mode_{connection_, "SELECT IFNULL(CASE WHEN auth_mode='anonymous' THEN 1 ELSE 0 END, 0) "
                                  "FROM service_ftp LIMIT 1"};
    Lookup directory_mode_{connection_, "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END "
                                        "FROM service_cifs S LIMIT 1"};
    Lookup id_of_name_{connection_, "SELECT id FROM share WHERE name=%Q"};
    Lookup all_{connection_, shares("S.type='share'")};
    Lookup one_{connection_, shares("S.id=%d")};
    Lookup user_name_{connection_, "SELECT U.uname FROM `$user` U WHERE U.id=%d "
                                   "OR (%d AND U.id=%d AND U.rid IS NOT NULL)"};
    Lookup group_name_{connection_, "SELECT G.gname FROM `$group` G WHERE G.id=%d "
                                    "OR (%d AND G.id=%d AND G.rid IS NOT NULL)"};
    Lookup schedule_{connection_,
                     R"(SELECT SS.enabled,SS.minute,SS.hour,SS.day_of_month,SS.day_of_week,SS.month,
        SS.last_taken,SS.purge_manual_snapshot,SS.last_daily_taken,SS.last_weekly_taken
        FROM snapshot_schedule SS WHERE share_id=%d)"};
    Lookup hosts_{connection_, R"(SELECT H.id,H.name,CASE WHEN HA.write THEN 'ReadWrite'
        WHEN HA.read THEN 'ReadOnly' ELSE 'Disabled' END,HA.root FROM host H
        INNER JOIN host_acl HA ON HA.host_id=H.id AND HA.share_id=%d AND HA.proto=%Q)"};
    Lookup users_{connection_, R"(SELECT U.id,U.uname,CASE WHEN UA.write THEN 'ReadWrite'
        WHEN UA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$user` U
        INNER JOIN user_acl UA ON UA.user_id=U.id AND UA.share_id=%d AND UA.proto=%Q
        WHERE U.rid IS NULL ORDER BY U.uname COLLATE NOCASE)"};
    Lookup groups_{connection_, R"(SELECT G.id,G.gname,CASE WHEN GA.write THEN 'ReadWrite'
        WHEN GA.read THEN 'ReadOnly' ELSE 'Disabled' END FROM `$group` G
        INNER JOIN group_acl GA ON GA.group_id=G.id AND GA.share_id=%d AND GA.proto=%Q
        WHERE G.rid IS NULL ORDER BY G.gname COLLATE NOCASE)"};
    Lookup cifs_{connection_, R"(SELECT CASE WHEN CIFS.cifs_access='writeable' THEN 'ReadWrite'
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
        CIFS.oplocks,NOT CIFS.available,CIFS.cifs_enabledfs FROM cifs_share_option CIFS WHERE share_id=%d)"};
    Lookup dfs_links_{connection_,
                      "SELECT D.folder,D.address,D.remote_share FROM cifs_dfs_option D WHERE D.share_id=%d"};
    Lookup afp_{connection_, R"(SELECT CASE WHEN AFP.afp_access='writeable' THEN 'ReadWrite'
        WHEN AFP.afp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        AFP.afp_guest_access,NOT AFP.available,AFP.afp_fperm IS NOT NULL OR AFP.afp_dperm IS NOT NULL,
        AFP.afp_fperm,AFP.afp_dperm FROM afp_share_option AFP WHERE share_id=%d)"};
    Lookup nfs_{connection_, R"(SELECT CASE WHEN NFS.nfs_access='writeable' THEN 'ReadWrite'
        WHEN NFS.nfs_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        NOT NFS.available,NFS.nfs_sync FROM nfs_share_option NFS WHERE share_id=%d)"};
    Lookup ftp_{connection_, R"(SELECT CASE WHEN FTP.ftp_access='writeable' THEN 'ReadWrite'
        WHEN FTP.ftp_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        FTP.ftp_mask,NOT FTP.available,FTP.ftp_create_mask,FTP.ftp_directory_mask
        FROM ftp_share_option FTP WHERE share_id=%d)"};
    Lookup dlna_{connection_, R"(SELECT CASE WHEN DLNA.access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        NOT DLNA.available,DLNA.media_type FROM dlna_share_option DLNA
        WHERE DLNA.share_id=%d AND DLNA.access='readonly')"};
    Lookup daap_{connection_, "SELECT NOT DAAP.available FROM daap_share_option DAAP WHERE DAAP.share_id=%d"};
    Lookup rsync_{connection_, R"(SELECT CASE WHEN RSYNC.rsync_access='readonly' THEN 'ReadOnly'
        ELSE 'ReadWrite' END,CASE WHEN RSYNC.passwordprotection='enabled' THEN 'Enabled'
        ELSE 'Disabled' END,NOT RSYNC.available FROM rsync_share_option RSYNC WHERE RSYNC.share_id=%d)"};
    Lookup logins_{connection_,
                   "SELECT UP.user,UP.password FROM rsync_user_password_acl UP WHERE UP.share_id=%d"};
    Lookup http_{connection_, R"(SELECT CASE WHEN HTTP.http_access='writeable' THEN 'ReadWrite'
        WHEN HTTP.http_access='readonly' THEN 'ReadOnly' ELSE 'Disabled' END,
        NOT HTTP.available,HTTP.http_webdav FROM http_share_option HTTP WHERE share_id=%d)"};
    Lookup zvol_{connection_, R"(SELECT ZVOL.kb_size,ZVOL.is_sparse,V.lv_name||'/'||S.name
        FROM zvol_share_option ZVOL INNER JOIN share S ON S.id=ZVOL.share_id
        INNER JOIN _volume V ON V.id=S.volume_id WHERE share_id=%d)"};
    Lookup used_by_{connection_, R"(SELECT A.app_name,A.app_data FROM `$application_on_share` A
        WHERE zfs_name=(SELECT S.zfs_name FROM share S WHERE S.id=%d))"};
    Lookup clones_{connection_, R"(SELECT id,cloned_zfs_name,parent_snapshot_name,parent_zfs_name
        FROM `$snapshot_clones` WHERE parent_zfs_name=(SELECT S.name FROM share S WHERE S.id=%d))"};
    Lookup user_quotas_{connection_, quotas("user", "uname")};
    Lookup group_quotas_{connection_, quotas("group", "gname")};
};

extern template class ShareReader<Kept>;
extern template class ShareReader<Fresh>;

} // namespace qbobj_bench
