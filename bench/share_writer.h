// Shares created as a hand-written program would: the statements of the library, kept.
#pragma once

#include "lookup.h"

#include <array>

namespace qbobj_bench
{

// What a protocol needs to have its lists replaced.
struct ProtocolLists {
    ProtocolLists(const Connection &connection, const char *word);

    const char *proto;
    Kept default_access;
};

class ShareWriter
{
  public:
    explicit ShareWriter(const Connection &connection) : connection_(connection) {}

    // Creates a share with the options that it carries.
    void add(qbobj_Share_t &share);

  private:
    void check(qbobj_Share_t &share);
    int insert(const qbobj_Share_t &share);
    void insert_options(const qbobj_Share_t &share, int share_id);
    void insert_cifs(const qbobj_CifsShareOption_t &option, int share_id);

    int read_default_access(const ProtocolLists &lists, int share_id);
    void write_hosts(const ProtocolLists &lists, const qbobj_HostAcl_t *list, int share_id);
    void write_users(const ProtocolLists &lists, const qbobj_UserAcl_t *list, int share_id);
    void write_groups(const ProtocolLists &lists, const qbobj_GroupAcl_t *list, int share_id);
    template <class Option>
    void write_accounts(const ProtocolLists &lists, const Option &option, int share_id);

    const Connection &connection_;
    Transactions transactions_{connection_};
    Kept directory_mode_{connection_, "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END "
                                      "FROM service_cifs S LIMIT 1"};
    Kept id_of_name_{connection_, "SELECT id FROM share WHERE name=%Q"};
    Kept volume_{connection_, "SELECT id FROM _volume WHERE id=%Q"};
    Kept guest_{connection_, "SELECT U.id FROM `$user` U WHERE U.uname='guest' AND U.rid IS NULL"};
    Kept guest_group_{connection_, "SELECT G.id FROM `$group` G WHERE G.gname='guest' AND G.rid IS NULL"};
    Kept share_{connection_, R"(INSERT INTO share (zfs_name,type,name,comment,visible_snapdir,volume_id,path,
        user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
        VALUES((SELECT lv_name||'/'||%Q FROM _volume WHERE id=%Q),%Q,%Q,%Q,%Q,%Q,
        (SELECT '/'||lv_name||'/'||%Q FROM _volume WHERE id=%Q),%d,%d,%d,%d,%d,%d))"};
    Kept free_space_{connection_, "SELECT V.blk_free FROM share S LEFT JOIN _volume V ON V.id=%Q LIMIT 1"};
    Kept attributes_{connection_, R"(INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,
        mb_refreservation,compression,bit_rot_protection,dedup,logbias,sync)
        VALUES(%d,%llu,%llu,%llu,%llu,%d,%d,%d,%Q,%Q))"};
    Kept cifs_{connection_, R"(INSERT INTO cifs_share_option (share_id,cifs_access,cifs_guest_access,
        cifs_hide_share,cifs_group_create_mask,cifs_everyone_create_mask,cifs_enable_masks,
        cifs_group_directory_mask,cifs_everyone_directory_mask,cifs_enable_forced_minimum,cifs_recycle,
        cifs_recycle_mb_limit,cifs_recycle_age_limit,oplocks,available,cifs_enabledfs)
        VALUES(%d,%Q,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d))"};
    Kept afp_{connection_, R"(INSERT INTO afp_share_option
        (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm) VALUES(%d,%d,%Q,%d,NULL,NULL))"};
    Kept nfs_{connection_, "INSERT INTO nfs_share_option (share_id,available,nfs_access,nfs_sync) "
                           "VALUES(%d,%d,%Q,1)"};
    Kept ftp_{connection_, R"(INSERT INTO ftp_share_option
        (share_id,available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask) VALUES(%d,%d,%Q,%d,%d,%d))"};
    Kept rsync_{connection_,
                "INSERT INTO rsync_share_option (share_id,available,rsync_access,passwordprotection) "
                "VALUES(%d,%d,%Q,%Q)"};
    Kept dlna_{connection_, "INSERT INTO dlna_share_option (share_id,available,access,media_type) "
                            "VALUES(%d,%d,'readonly',%d)"};
    Kept daap_{connection_, "INSERT INTO daap_share_option (share_id,available) VALUES(%d,%d)"};
    Kept http_{connection_, "INSERT INTO http_share_option (share_id,available,http_access,http_webdav) "
                            "VALUES(%d,%d,%Q,%d)"};
    Kept schedule_{connection_, R"(INSERT OR REPLACE INTO snapshot_schedule (share_id,enabled,minute,hour,
        day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,last_daily_taken,last_weekly_taken)
        VALUES(%d,%d,%Q,%Q,%Q,%Q,%Q,%d,%d,%d,%d))"};

    ProtocolLists cifs_lists_{connection_, "cifs"};
    ProtocolLists afp_lists_{connection_, "afp"};
    ProtocolLists nfs_lists_{connection_, "nfs"};
    ProtocolLists ftp_lists_{connection_, "ftp"};
    ProtocolLists rsync_lists_{connection_, "rsync"};
    ProtocolLists http_lists_{connection_, "http"};
    Kept no_hosts_{connection_, "DELETE FROM `host_acl` WHERE share_id=%d AND proto=%Q"};
    Kept new_host_{connection_, "INSERT OR IGNORE INTO `host` (name) VALUES(%Q)"};
    Kept host_id_{connection_, "SELECT id FROM `host` WHERE name=%Q"};
    Kept host_{connection_, "INSERT OR REPLACE INTO `host_acl` (share_id,host_id,proto,read,write,root) "
                            "VALUES(%d,%d,%Q,%d,%d,%d)"};
    Kept no_users_{connection_, "DELETE FROM `user_acl` WHERE share_id=%d AND proto=%Q"};
    Kept user_{connection_,
               "INSERT INTO `user_acl` (share_id,user_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)"};
    Kept no_groups_{connection_, "DELETE FROM `group_acl` WHERE share_id=%d AND proto=%Q"};
    Kept group_{connection_,
                "INSERT INTO `group_acl` (share_id,group_id,proto,read,write) VALUES(%d,%d,%Q,%d,%d)"};
    Kept no_dfs_links_{connection_, "DELETE FROM `cifs_dfs_option` WHERE share_id=%d"};
    Kept dfs_share_{connection_, "SELECT S.volume_id,S.name FROM share S WHERE S.id=%d"};
    Kept logins_{connection_, "SELECT U.user FROM rsync_user_password_acl U WHERE share_id=%d"};
};

} // namespace qbobj_bench
