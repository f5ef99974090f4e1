// Users as they are read: which are listed, with what, and the small questions of identity.
#include "accounts.h"

#include <fstream>

namespace
{

using namespace qbobj_test;
using User = qbobj_User_t;
using SystemUser = qbobj_SystemUser_t;
using Query = qbobj_AccountQuery_t; // limit, offset, name_like, opt, order, ads

class UsersRead : public Accounts
{
  protected:
    UsersRead()
    {
        sql("INSERT INTO `$group`(id,gname,is_privileged,rid) VALUES"
            "(100,'staff',0,NULL),(-7,'domain crew',0,7);"
            "INSERT INTO `$user`(id,uname,passwd,email,home,group_id,fullname,is_locked,rid) VALUES"
            "(100,'bob','$6$secret','bob@example.com','/data/home/bob',99,'Bob B.',1,NULL),"
            "(101,'alice','',NULL,'/data/home/alice',100,NULL,0,NULL),"
            "(102,'carol','$6$other','c@example.org','/data/home/carol',99,'Carol',0,NULL),"
            "(110,'cloudy','x','','',98,'',0,NULL),"
            "(111,'visitor','x','','',97,'',0,NULL),"
            "(-20,'Ada',NULL,'','/home/Ada',-7,'',0,20),(-21,'bob',NULL,'','/home/bob',-1,'',0,21);"
            "INSERT INTO `$user`(id,uname,group_id,is_privileged) VALUES(112,'removed',99,-1)");
    }
    // The names of the listed users, in their order.
    std::string listed(Query *query = nullptr, int encrypt_flag = 0)
    {
        users = {};
        EXPECT_OK(call(qbobj_getUserCollection, &users, query, encrypt_flag));
        return all(users.User, &User::UserName);
    }

    qbobj_UserCollection_t users{};
};

TEST_F(UsersRead, ListFilterOrderAndPage)
{
    const std::tuple<Query, const char *, int, int> cases[] = {
        {{0, 0, nullptr, nullptr, 0, 0}, "alice bob carol", 3, 3},
        {{0, 0, "", "", 1, 0}, "alice bob carol", 3, 3},
        {{0, 0, nullptr, nullptr, -1, 0}, "carol bob alice", 3, 3},
        {{0, 0, nullptr, nullptr, 2, 0}, "bob alice carol", 3, 3},
        {{0, 0, nullptr, nullptr, -2, 0}, "carol alice bob", 3, 3},
        {{0, 0, nullptr, nullptr, 7, 0}, "alice bob carol", 3, 3},
        {{2, 0, nullptr, nullptr, 1, 0}, "alice bob", 3, 3},
        {{2, 1, nullptr, nullptr, 1, 0}, "bob carol", 3, 3},
        {{0, 2, nullptr, nullptr, 1, 0}, "alice bob carol", 3, 3},
        {{0, 0, "ALI%", nullptr, 1, 0}, "alice", 1, 3},
        {{0, 0, "%b.", nullptr, 1, 0}, "bob", 1, 3},
        {{0, 0, "%example.org", nullptr, 1, 0}, "carol", 1, 3},
        {{1, 0, "%example%", nullptr, -1, 0}, "carol", 2, 3},
        {{0, 0, "x' OR 'a'='a", nullptr, 1, 0}, "", 0, 3},
        {{0, 0, nullptr, nullptr, 1, 1}, "Ada bob", 2, 2}};
    for (const auto &[given, names, entries, total] : cases) {
        Query query = given;
        SCOPED_TRACE(testing::Message() << "order " << query.order << " like "
                                        << (query.name_like ? query.name_like : "(none)"));
        EXPECT_EQ(names, listed(&query));
        EXPECT_EQ(entries, users.Entries);
        EXPECT_EQ(total, users.TotalEntries);
    }
}

TEST_F(UsersRead, WithoutQueryTheApplianceDecidesWhichKindIsListed)
{
    EXPECT_EQ("alice bob carol", listed());
    // Guests are people of nogroup where there is no group of guests.
    sql("DELETE FROM `$group` WHERE gname='guest'; UPDATE `$user` SET group_id=94 WHERE uname='carol'");
    EXPECT_EQ("alice bob visitor", listed());
    join_directory();
    EXPECT_EQ("Ada bob", listed());
    EXPECT_EQ(2, users.TotalEntries);
    // A group that only the directory knows is named by it: the system's group 1.
    EXPECT_EQ("domain crew daemon", all(users.User, &User::GroupName));
    EXPECT_EQ(1, users.User->IsDomainMember);
    Query local{};
    EXPECT_EQ("alice bob visitor", listed(&local));
}

TEST_F(UsersRead, LongPatternIsRefused)
{
    std::string pattern(256, '\'');
    Query query{.name_like = pattern.c_str()};
    EXPECT_EQ("", listed(&query));
    pattern += '%';
    query.name_like = pattern.c_str();
    EXPECT_FAILS(call(qbobj_getUserCollection, &users, &query, 0), bad_args, "Query string is too long.");
    EXPECT_STREQ("qbobj_api2_get_user", err.file);
}

TEST_F(UsersRead, OptionWordSelects)
{
    sql("INSERT INTO `$timemachine_quota`(user_id,enabled) VALUES(100,1),(101,0);"
        "INSERT INTO `$home_folder`(user_id,snapshot_protection_enabled,visible_snapdir) VALUES"
        "(100,0,''),(101,1,''),(102,1,'snaps')");
    const std::string late = std::string(250, ' ') + "||HF_SNAPSHOT_ACCESS==1";
    const char *const cases[][2] = {
        {"TM_ON", "bob"},
        {"TM_ON ", "alice bob carol"},
        {"HF_SNAPSHOT_PROTECTION==0", "alice bob carol"}, // without its bars it is no option
        {"||HF_SNAPSHOT_PROTECTION==0", "bob"},
        {"||HF_SNAPSHOT_PROTECTION==1", "alice carol"},
        {"||HF_SNAPSHOT_ACCESS==0", "alice bob"},
        {"||HF_SNAPSHOT_ACCESS==1", "carol"},
        {"||HF_SNAPSHOT_PROTECTION==0||HF_SNAPSHOT_ACCESS", "bob carol"},
        {"||HF_SNAPSHOT_PROTECTION HF_SNAPSHOT_PROTECTION==0 ||HF_SNAPSHOT_ACCESS", "bob carol"},
        {"HF_SNAPSHOT_ACCESS==0||HF_SNAPSHOT_PROTECTION", "alice bob carol"},
        {late.c_str(), "alice bob carol"}};
    for (const auto &[option, names] : cases) {
        SCOPED_TRACE(option);
        Query query{.opt = option};
        EXPECT_EQ(names, listed(&query));
        EXPECT_EQ(3, users.TotalEntries);
    }
}

TEST_F(UsersRead, ExistingHomesAreSelectedButNotCounted)
{
    std::filesystem::create_directories(root() / "data/home/bob");
    std::ofstream(root() / "data/home/alice") << "a file";
    sql("UPDATE `$user` SET home=NULL WHERE uname='carol'");
    Query query{.opt = "HF_EXISTS"};
    EXPECT_EQ("bob", listed(&query));
    EXPECT_EQ(3, users.Entries);
    EXPECT_EQ(3, users.TotalEntries);
}

TEST_F(UsersRead, ListedUserIsComplete)
{
    add_shares();
    sql("INSERT INTO user_quota(user_id,share_id,mb_soft,mb_hard) VALUES(100,5,80,100),(100,6,1,5000000000);"
        "INSERT INTO _user_quota_stat(user_id,share_id,mb_used) VALUES(100,5,42),(101,6,7);"
        "INSERT INTO `$home_folder`(user_id,snapshot_protection_enabled,quota,visible_snapdir) "
        "VALUES(100,1,'0x10','snaps'),(101,0,10,NULL);"
        "INSERT INTO _hf_zfs_stat(user_id,used) VALUES(100,9);"
        "INSERT INTO `$timemachine_quota`(user_id,enabled,capacity_mb) VALUES(100,1,2000);"
        "UPDATE account_default SET home_volume_id='/data'");
    const std::filesystem::path bundle = root() / "data/.timemachine/bob/mac.sparsebundle";
    std::filesystem::create_directories(bundle / "bands");
    for (const char *band : {"0", "1", "2"})
        std::ofstream(bundle / "bands" / band) << "";
    std::ofstream(bundle / "Info.plist") << "\t<key>band-size</key>\n\t<integer>8000000</integer>\n";

    ASSERT_EQ("alice bob carol", listed());
    const auto texts = [](const User &user) {
        return ids(user) + line({user.GroupName, user.HomeDirectory, user.Email, user.FullName}) +
               (user.IsLocked ? "|locked" : "") + (user.IsDomainMember ? "|far" : "");
    };
    EXPECT_EQ((Lines{"101|101|staff|/data/home/alice||",
                     "100|100|users|/data/home/bob|bob@example.com|Bob B.|locked",
                     "102|102|users|/data/home/carol|c@example.org|Carol"}),
              each(users.User, texts));

    const User &alice = *users.User;
    const User &bob = *alice._link;
    EXPECT_EQ((Lines{"100|data/photos|100|42", "100|data/music|5000000000|0"}),
              each(bob.UserQuota, quota_line));
    EXPECT_EQ(nullptr, alice.UserQuota);
    const auto home = [](const qbobj_UserHomeFolderSettings_t &folder) {
        return testing::PrintToString(std::tuple(folder.UserId, folder.SnapshotProtectionEnabled,
                                                 folder.SizeLimit, folder.SizeUsed, folder.VisibleSnapshot)) +
               folder.VisibleSnapFolder;
    };
    EXPECT_EQ(Lines{"(100, 1, 16, 9, 1)snaps"}, each(bob.HomeFolderSettings, home));
    EXPECT_EQ(Lines{"(101, 0, 10, 0, 0)"}, each(alice.HomeFolderSettings, home));
    EXPECT_EQ(nullptr, bob._link->HomeFolderSettings);
    EXPECT_EQ(Lines{"(100, 1, 2000, 24)"},
              each(bob.TimeMachineQuota, [](const qbobj_UserTimeMachineQuota_t &quota) {
                  return testing::PrintToString(
                      std::tuple(quota.UserId, quota.Enabled, quota.CapacityMB, quota.UsedMB));
              }));
    EXPECT_EQ(nullptr, alice.TimeMachineQuota);
}

TEST_F(UsersRead, PasswordsAreMaskedUnlessAskedFor)
{
    for (const auto &[encrypt_flag, passwords] :
         {std::pair{0, " " + mask + " " + mask}, std::pair{1, std::string(" $6$secret $6$other")}}) {
        listed(nullptr, encrypt_flag);
        EXPECT_EQ(passwords, " " + all(users.User->_link, &User::Password));
        EXPECT_STREQ("", users.User->Password);
    }
    User alice{.resource_id = 101};
    User bob{._link = &alice, .resource_id = 100};
    ASSERT_OK(run(qbobj_getUser, bob));
    EXPECT_STREQ(masked_password, bob.Password);
    EXPECT_STREQ("", alice.Password);
}

TEST_F(UsersRead, ListsAreAppendedToWhatTheCollectionHolds)
{
    User first{};
    users.User = &first;
    ASSERT_OK(call(qbobj_getUserCollection, &users, nullptr, 0));
    EXPECT_EQ(&first, users.User);
    EXPECT_EQ("alice bob carol", all(first._link, &User::UserName));
    EXPECT_EQ(3, users.Entries);
}

TEST_F(UsersRead, AFailingDetailEndsTheListButForTheTimeMachinePath)
{
    sql("INSERT INTO `$timemachine_quota`(user_id,enabled) VALUES(100,1); DROP TABLE account_default");
    EXPECT_EQ("alice bob carol", listed());
    EXPECT_EQ(nullptr, users.User->_link->TimeMachineQuota);
    EXPECT_EQ(db_failed, err.ec);
    EXPECT_STREQ("Failed DB Query for 'SELECT account_default and $user'.", err.msg);
    sql("DROP TABLE user_quota");
    EXPECT_FAILS(call(qbobj_getUserCollection, &users, nullptr, 0), db_failed,
                 "Failed DB Query for user_quota. no such table: user_quota");
}

TEST_F(UsersRead, SingleUsersAreFoundByEitherKey)
{
    qbobj_UserHomeFolderSettings_t given{};
    User second{.UserId = 110, .HomeFolderSettings = &given}; // remote users are only left out of lists
    User first{._link = &second, .resource_id = 100, .UserId = 101};
    ASSERT_OK(run(qbobj_getUser, first));
    EXPECT_EQ((Lines{"100|100|bob|NULL", "110|110|cloudy|NULL"}), each(&first, [](const User &user) {
                  return ids(user) + line({user.UserName, user.FullName});
              }));
    EXPECT_EQ(1, first.IsLocked);
    EXPECT_EQ(nullptr, second.HomeFolderSettings);
}

TEST_F(UsersRead, UserThatIsNotThereIsReported)
{
    const std::tuple<int, const char *, qbobj_error_t, const char *> cases[] = {
        {999, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=999."},
        {97, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=97."},
        {111, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=111."},
        {0, "bob", bad_args, "Invalid User (resource_id=0, UserName=bob)."},
        {0, nullptr, bad_args, "Invalid User (resource_id=0, UserName=(null))."},
        {-20, nullptr, db_failed, "Invalid resouce_id=-20."}};
    for (const auto &[id, name, code, message] : cases)
        refused(qbobj_getUser, {.UserId = id, .UserName = name}, code, message);
}

TEST_F(UsersRead, DirectoryUsersAreFoundByNegativeIdAndUnmirroredByName)
{
    join_directory();
    User user{.UserId = -20};
    ASSERT_OK(run(qbobj_getUser, user));
    EXPECT_STREQ("Ada", user.UserName);
    EXPECT_EQ(-20, user.resource_id);

    sql("UPDATE service_cifs SET no_sync_ads=1;"
        "INSERT INTO `$user`(id,uname,group_id,rid) VALUES(1,'a daemon',-7,1)");
    User by_name{.UserName = "daemon"};
    ASSERT_OK(run(qbobj_getUser, by_name));
    EXPECT_EQ(1, by_name.resource_id);
    EXPECT_STREQ("a daemon", by_name.UserName);
    for (const std::string name : {"no such person", "root"}) // the superuser's id is no key
        refused(qbobj_getUser, {.UserName = name.c_str()}, QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                "Invalid User (resource_id=0, UserName=" + name + ").");
}

TEST_F(UsersRead, SystemUsersAreNamedWhateverTheyAre)
{
    sql("INSERT INTO `$user`(id,uname,rid) VALUES(30,'mirrored',30)");
    const std::tuple<bool, int, const char *> cases[] = {
        {false, 100, "bob"},     {false, 0, "root"},   {false, 999, "999"},         {true, -20, "Ada"},
        {true, -30, "mirrored"}, {true, -1, "daemon"}, {true, -1999999999, nullptr}};
    refused(qbobj_getSystemUser, {.resource_id = -30}, db_failed, "Invalid resouce_id=-30.");
    EXPECT_STREQ("qbobj_api2_get_user", err.file);
    for (const auto &[directory, id, name] : cases) {
        SCOPED_TRACE(id);
        if (directory)
            join_directory();
        SystemUser user{.resource_id = id};
        ASSERT_OK(run(qbobj_getSystemUser, user));
        EXPECT_STREQ(name, user.UserName);
        EXPECT_EQ(id, user.UserId);
    }
}

TEST_F(UsersRead, RemoteUsersAndMembersAreListedByName)
{
    sql("INSERT INTO `$user`(id,uname,group_id) VALUES(120,'Beam',98);"
        "INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,100),(101,100),(101,99),(102,99)");
    SystemUser *found = nullptr;
    ASSERT_OK(call(qbobj_getCloudUser, &found));
    EXPECT_EQ((Lines{"120|120|Beam", "110|110|cloudy"}),
              each(found, [](const SystemUser &user) { return ids(user) + user.UserName; }));

    const std::tuple<const char *, int, const char *> cases[] = {{"staff", 1, "alice"},
                                                                 {"STAFF", 1, "alice"},
                                                                 {"staff", 0, "alice alice bob"},
                                                                 {"users", 1, "bob carol removed"},
                                                                 {"nobody's", 0, ""},
                                                                 {nullptr, 0, ""}};
    for (const auto &[group, primary_only, names] : cases) {
        SCOPED_TRACE(names);
        ASSERT_OK(call(qbobj_getUserInGroupName, group, primary_only, &found));
        EXPECT_EQ(names, all(found, &SystemUser::UserName));
    }
}

TEST_F(UsersRead, IdsOfNames)
{
    sql("UPDATE `$user` SET group_id=NULL WHERE uname='carol'");
    constexpr int unknown = -1000;
    const std::tuple<decltype(&qbobj_getUID), const char *, int, int> cases[] = {
        {qbobj_getUID, "BOB", 100, -21},
        {qbobj_getUID, "Ada", unknown, -20},
        {qbobj_getUID, nullptr, 97, 97},
        {qbobj_getGID, "staff", 100, 100},
        {qbobj_getGID, "domain crew", unknown, unknown}, // never by name
        {qbobj_getGID, nullptr, 97, 97},
        {qbobj_getPrimaryGID, "alice", 100, 100},
        {qbobj_getPrimaryGID, "Ada", -7, -7},
        {qbobj_getPrimaryGID, "carol", unknown, unknown},
        {qbobj_getPrimaryGID, nullptr, 97, 97}};
    for (const bool directory : {false, true}) {
        for (const auto &[look_up, name, local, domain] : cases) {
            SCOPED_TRACE(testing::Message() << (name ? name : "(null)") << directory);
            int id = unknown;
            const int found = directory ? domain : local;
            EXPECT_EQ(found == unknown ? -1 : 0, call(look_up, name, &id));
            EXPECT_EQ(found, id);
            EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
        }
        join_directory();
    }
    sql("UPDATE `$group` SET gname='visitors' WHERE gname='guest'");
    int gid = 0;
    EXPECT_OK(call(qbobj_getGID, nullptr, &gid));
    EXPECT_EQ(94, gid);
}

TEST_F(UsersRead, NamesOfIds)
{
    const std::tuple<decltype(&qbobj_getUserName), int, const char *> cases[] = {
        {qbobj_getUserName, 100, "bob"},    {qbobj_getUserName, -20, "Ada"},
        {qbobj_getUserName, 7, "7"},        {qbobj_getUserName, -5, "guest"},
        {qbobj_getGroupName, 100, "staff"}, {qbobj_getGroupName, -7, "domain crew"},
        {qbobj_getGroupName, 7, "7"},       {qbobj_getGroupName, -5, "guest"}};
    char *name = nullptr;
    for (const auto &[look_up, id, expected] : cases) {
        EXPECT_OK(call(look_up, id, &name));
        EXPECT_STREQ(expected, name);
    }
    sql("ALTER TABLE `$user` RENAME TO away");
    EXPECT_EQ(-1, call(qbobj_getUserName, 100, &name));
    EXPECT_STREQ("guest", name);
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_DEATH(call(qbobj_getGroupName, 1, nullptr), ": qbobj_getGroupName: Assertion `gname' failed");
}

TEST_F(UsersRead, PosixIds)
{
    sql("INSERT INTO `$user`(id,uname,group_id,rid) VALUES(-1,'domain daemon',-1,1),(-9999999,'gone',-7,2),"
        "(-2,'half',-9999999,3)");
    const std::tuple<decltype(&qbobj_getPosixUID), const char *, int, int> by_name[] = {
        {qbobj_getPosixUID, "carol", 102, -1},        {qbobj_getPosixGID, "staff", 100, 100},
        {qbobj_getPosixUID, "daemon", -1, 1}, // local names are not asked of the system
        {qbobj_getPosixGID, "daemon", -1, 1},         {qbobj_getPosixUID, nullptr, 97, 97},
        {qbobj_getPosixUID, "domain daemon", -1, 1},  {qbobj_getPosixUID, "gone", -1, -1},
        {qbobj_getPosixUID, "no such person", -1, -1}};
    for (const bool directory : {false, true}) {
        for (const auto &[look_up, name, local, domain] : by_name)
            EXPECT_EQ(directory ? domain : local, call(look_up, name))
                << (name ? name : "(null)") << directory;
        join_directory();
    }
    for (const auto by_id : {qbobj_getPosixUIDbyUID, qbobj_getPosixGIDbyGID})
        for (const auto &[id, posix] : {std::pair{100, 100}, std::pair{-1, 1}, std::pair{-9999999, -1}})
            EXPECT_EQ(posix, call(by_id, id));

    int uid = -5;
    int gid = -5;
    for (const char *name : {"gone", "half", "no such person"}) {
        EXPECT_EQ(-1, call(qbobj_getPosixUIDGID, name, &uid, &gid)) << name;
        EXPECT_EQ(-5, uid);
        EXPECT_EQ(-5, gid);
    }
    EXPECT_OK(call(qbobj_getPosixUIDGID, "domain daemon", &uid, &gid));
    EXPECT_EQ(1, uid);
    EXPECT_EQ(1, gid);
}

TEST_F(UsersRead, Membership)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,100)");
    const std::tuple<const char *, const char *, int> cases[] = {
        {"alice", "staff", 0}, {"bob", "users", 0},         {"Bob", "Staff", 0},
        {"carol", "staff", 1}, {"nobody else", "staff", 1}, {nullptr, nullptr, 1}};
    for (const auto &[user, group, result] : cases)
        EXPECT_EQ(result, call(qbobj_isMemberOfGroup, user, group));
    sql("DROP TABLE `$group_has_user`");
    EXPECT_EQ(0, call(qbobj_isMemberOfGroup, "alice", "staff"));
    EXPECT_EQ(-1, call(qbobj_isMemberOfGroup, "carol", "staff"));
}

TEST_F(UsersRead, AMissingResultIsNamed)
{
    int id = 0;
    EXPECT_FAILS(call(qbobj_getUserCollection, nullptr, nullptr, 0), bad_args, "collection cannot be NULL.");
    EXPECT_FAILS(call(qbobj_getGroupCollection, nullptr, nullptr), bad_args, "collection cannot be NULL.");
    EXPECT_FAILS(call(qbobj_getUser, nullptr), bad_args, "user cannot be NULL.");
    EXPECT_FAILS(call(qbobj_getUID, "bob", nullptr), bad_args, "uid cannot be NULL.");
    EXPECT_FAILS(call(qbobj_getPosixUIDGID, "bob", &id, nullptr), bad_args, "gid cannot be NULL.");
}

} // namespace
