// Reading and creating users by hand.
#include "user_floor.h"

namespace qbobj_bench
{

std::string UserReader::listable(const char *selected, const char *order)
{
    return std::string("SELECT ") + selected +
           " FROM `$user` U WHERE U.is_privileged=0 AND U.group_id<>98 AND U.rid IS NULL AND "
           "U.uname<>'nobody' "
           "AND U.uname<>'guest' AND U.group_id<>IFNULL((SELECT id FROM `$group` G WHERE G.gname='guest'),"
           "(SELECT id FROM `$group` G WHERE G.gname='nogroup'))" +
           order;
}

void UserReader::read_all(qbobj_UserCollection_t &collection)
{
    transactions_.run([&] {
        finish(directory_mode_());
        for (int *count : {&collection.TotalEntries, &collection.Entries})
            if (auto row = count_(); row.next())
                row >> *count;
        qbdb_hf_stats_import(connection_.qbdb, connection_.db);
        Tail<qbobj_User_t> tail(connection_.qbdb->pool, collection.User);
        for (auto row = all_(); row.next();)
            read_user(row, tail.append());
    });
}

void UserReader::read_user(KeptRows &row, qbobj_User_t &user)
{
    row >> user.UserId >> user.UserName >> user.GroupName >> user.HomeDirectory >> OrEmpty{user.Email} >>
        OrEmpty{user.Password} >> user.IsDomainMember >> OrEmpty{user.FullName} >> user.IsLocked;
    if (*user.Password != '\0')
        user.Password = masked_password;
    user.resource_id = user.UserId;
    read_details(user);
}

void UserReader::read_details(qbobj_User_t &user)
{
    apr_pool_t *const pool = connection_.qbdb->pool;
    Tail<qbobj_Quota_t> quotas(pool, user.UserQuota);
    for (auto row = quotas_(user.UserId); row.next();) {
        qbobj_Quota_t &quota = quotas.append();
        quota.AccountId = user.UserId;
        row >> quota.ShareId >> quota.HardMB >> quota.UsedMB;
    }
    if (auto row = home_folder_(user.UserId); row.next()) {
        auto &settings = *(user.HomeFolderSettings = create<qbobj_UserHomeFolderSettings_t>(pool));
        settings.UserId = user.UserId;
        row >> settings.SnapshotProtectionEnabled >> settings.SizeLimit >> settings.SizeUsed >>
            OrEmpty{settings.VisibleSnapFolder};
        settings.VisibleSnapshot = *settings.VisibleSnapFolder != '\0' ? 1 : 0;
    }
    const char *path = nullptr;
    if (auto row = time_machine_path_(user.UserId); row.next())
        row >> path;
    if (auto row = time_machine_(user.UserId); row.next()) {
        auto &quota = *(user.TimeMachineQuota = create<qbobj_UserTimeMachineQuota_t>(pool));
        quota.UserId = user.UserId;
        row >> quota.Enabled >> quota.CapacityMB;
    }
}

void UserWriter::add(qbobj_User_t *users)
{
    transactions_.run([&] {
        finish(directory_mode_());
        for (qbobj_User_t *user = users; user != nullptr; user = user->_link)
            add_user(*user);
    });
}

void UserWriter::add_list(qbobj_User_t *users)
{
    transactions_.run([&] {
        finish(directory_mode_());
        for (qbobj_User_t *user = users; user != nullptr; user = user->_link)
            add_listed_user(*user);
    });
}

void UserWriter::add_user(qbobj_User_t &user)
{
    const int group_id = group_of(user);
    const char *home = nullptr;
    if (auto row = home_(user.UserName); row.next())
        row >> home;
    int same_names = 0;
    if (auto row = same_name_(user.UserName); row.next())
        row >> same_names;
    if (same_names != 0)
        throw std::runtime_error("cannot add a user");
    user.UserId = next_id();
    finish(user_(user.UserId, user.UserName, user.SysHash, user.Email, home, group_id, user.IsLocked));
    finish(home_folder_(user.UserId, ""));
    read_back(user);
}

void UserWriter::add_listed_user(qbobj_User_t &user)
{
    const int group_id = group_of(user);
    if (auto row = highest_id_(); row.next())
        row >> user.UserId;
    finish(listed_user_(user.UserId, user.UserName, user.Password, user.Email, "/home", group_id));
    read_back(user);
}

int UserWriter::group_of(const qbobj_User_t &user)
{
    int group_id = 0;
    if (auto row = group_(user.GroupName); row.next())
        row >> group_id;
    return group_id;
}

int UserWriter::next_id()
{
    int mark = 0;
    if (auto row = next_uid_(); row.next())
        row >> mark;
    int id = 0;
    if (auto row = free_uid_(mark, mark, mark); row.next())
        row >> id;
    finish(move_mark_(id + 1));
    return id;
}

void UserWriter::read_back(qbobj_User_t &user)
{
    if (auto row = stored_home_(user.UserId); row.next())
        row >> user.HomeDirectory;
    user.resource_id = user.UserId;
}

} // namespace qbobj_bench
