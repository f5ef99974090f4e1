// Users read and created as a hand-written program would, on kept statements.
#pragma once

#include "lookup.h"

namespace qbobj_bench
{

class UserReader
{
  public:
    explicit UserReader(const Connection &connection) : connection_(connection) {}

    // The local users, by name, with their details.
    void read_all(qbobj_UserCollection_t &collection);

  private:
    void read_user(KeptRows &row, qbobj_User_t &user);
    void read_details(qbobj_User_t &user);

    static std::string listable(const char *selected, const char *order = "");

    const Connection &connection_;
    Transactions transactions_{connection_};
    Kept directory_mode_{connection_, "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END "
                                      "FROM service_cifs S LIMIT 1"};
    Kept count_{connection_, listable("COUNT(*)")};
    Kept all_{
        connection_,
        listable(
            "U.id,U.uname,(SELECT G.gname FROM `$group` G WHERE G.id=U.group_id),U.home,U.email,U.passwd,"
            "CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END,U.fullname,U.is_locked,U.group_id",
            " ORDER BY U.uname")};
    Kept quotas_{connection_, R"(SELECT S.zfs_name,Q.mb_hard,QS.mb_used FROM user_quota Q
        INNER JOIN share S ON S.id=Q.share_id
        LEFT JOIN _user_quota_stat QS ON QS.share_id=Q.share_id AND QS.user_id=Q.user_id WHERE Q.user_id=%d)"};
    Kept home_folder_{connection_, R"(SELECT H.snapshot_protection_enabled,H.quota,
        (SELECT S.used FROM `_hf_zfs_stat` S WHERE S.user_id=H.user_id),H.visible_snapdir
        FROM `$home_folder` H WHERE H.user_id=%d)"};
    Kept time_machine_path_{connection_, "SELECT A.home_volume_id || '/.timemachine/' || U.uname "
                                         "FROM account_default A, `$user` U WHERE U.id=%d"};
    Kept time_machine_{connection_,
                       "SELECT T.enabled,T.capacity_mb FROM `$timemachine_quota` T WHERE T.user_id=%d"};
};

class UserWriter
{
  public:
    explicit UserWriter(const Connection &connection) : connection_(connection) {}

    void add(qbobj_User_t *users);      // with all checks and settings
    void add_list(qbobj_User_t *users); // prepared records

  private:
    void add_user(qbobj_User_t &user);
    void add_listed_user(qbobj_User_t &user);
    int group_of(const qbobj_User_t &user);
    int next_id();
    void read_back(qbobj_User_t &user);

    const Connection &connection_;
    Transactions transactions_{connection_};
    Kept directory_mode_{connection_, "SELECT CASE WHEN S.security='ads' THEN 1 ELSE 0 END "
                                      "FROM service_cifs S LIMIT 1"};
    Kept group_{connection_, "SELECT id FROM `$group` WHERE gname=%Q AND rid IS NULL"};
    Kept home_{connection_, "SELECT '/home/'||%Q"};
    Kept same_name_{connection_, "SELECT COUNT(*) FROM `$user` WHERE uname=%Q"};
    Kept next_uid_{connection_, "SELECT next_uid FROM account_default"};
    Kept free_uid_{connection_, R"(SELECT CASE WHEN NOT EXISTS (SELECT 1 FROM `$user` WHERE id=%d) THEN %d
        ELSE (SELECT U.id+1 FROM `$user` U WHERE U.id>=%d
        AND NOT EXISTS (SELECT 1 FROM `$user` N WHERE N.id=U.id+1) ORDER BY U.id LIMIT 1) END)"};
    Kept move_mark_{connection_, "UPDATE account_default SET next_uid=%d"};
    Kept user_{connection_, R"(INSERT INTO `$user` (id,uname,passwd,email,home,group_id,shell,is_privileged,
        last_changed,is_locked)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/60/24,%d))"};
    Kept home_folder_{connection_, R"(INSERT INTO `$home_folder`
        (user_id,snapshot_protection_enabled,quota,visible_snapdir)
        VALUES (%d,(SELECT snapshot_protection FROM account_default LIMIT 1),
        (SELECT home_folder_capacity_limit FROM account_default LIMIT 1),%Q))"};
    Kept highest_id_{connection_, R"(SELECT IFNULL(MAX(U.id)+1,100) FROM `$user` U
        WHERE U.is_privileged=0 AND U.rid IS NULL AND U.id<32767)"};
    Kept listed_user_{connection_, R"(INSERT INTO `$user`
        (id,uname,passwd,email,home,group_id,shell,is_privileged,last_changed)
        VALUES(%d,%Q,%Q,%Q,%Q,%d,'/bin/false',0,STRFTIME('%%s',DATETIME('NOW'))/60/24/24))"};
    Kept stored_home_{connection_, "SELECT home FROM `$user` WHERE id=%d"};
};

} // namespace qbobj_bench
