// Users as they are read: which are listed, with what, and the small questions of identity.
#include "database.h"

#include <apr_pools.h>

#include <fstream>
#include <optional>
#include <pwd.h>

namespace
{

class UsersRead : public qbobj_test::Database
{
  protected:
    UsersRead()
    {
        sql("INSERT INTO `$group`(id,gname,is_privileged,rid) VALUES(100,'staff',0,NULL),(-7,'domain "
            "crew',0,7);"
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
    std::string listed(qbobj_AccountQuery_t *query)
    {
        qbobj_UserCollection_t users{};
        EXPECT_OK(qbobj_getUserCollection(qbdb, db, &users, query, 0, &err));
        entries = users.Entries;
        total = users.TotalEntries;
        return names(users.User);
    }

    template <class User>
    static std::string names(const User *user)
    {
        std::string text;
        for (; user != nullptr; user = user->_link)
            text += (text.empty() ? "" : " ") + std::string(user->UserName);
        return text;
    }

    qbobj_User_t *find(int id)
    {
        auto *user = static_cast<qbobj_User_t *>(apr_pcalloc(qbdb->pool, sizeof(qbobj_User_t)));
        user->resource_id = id;
        EXPECT_OK(qbobj_getUser(qbdb, db, user, &err));
        return user;
    }

    int entries = 0;
    int total = 0;
};

TEST_F(UsersRead, ListFilterOrderAndPage)
{
    const struct {
        qbobj_AccountQuery_t query; // limit, offset, name_like, opt, order, ads
        const char *names;
        int entries;
        int total;
    } cases[] = {
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
        {{0, 0, nullptr, nullptr, 1, 1}, "Ada bob", 2, 2},
    };
    for (const auto &expected : cases) {
        qbobj_AccountQuery_t query = expected.query;
        SCOPED_TRACE(testing::Message() << "order " << query.order << " like "
                                        << (query.name_like ? query.name_like : "(none)"));
        EXPECT_EQ(expected.names, listed(&query));
        EXPECT_EQ(expected.entries, entries);
        EXPECT_EQ(expected.total, total);
    }
}

TEST_F(UsersRead, WithoutQueryTheApplianceDecidesWhichKindIsListed)
{
    EXPECT_EQ("alice bob carol", listed(nullptr));
    join_directory();
    EXPECT_EQ("Ada bob", listed(nullptr));
    EXPECT_EQ(2, total);
    qbobj_AccountQuery_t local{};
    EXPECT_EQ("alice bob carol", listed(&local));
}

TEST_F(UsersRead, DebugLogShowsTheQueryAndTheUsers)
{
    reopen(QBDB_LOG_DEBUG);
    qbobj_AccountQuery_t query{};
    query.name_like = "ali%";
    EXPECT_EQ("alice", listed(&query));
    EXPECT_NE(std::string::npos, log().find("ali%"));
    EXPECT_NE(std::string::npos, log().find("/data/home/alice"));
    EXPECT_EQ("alice bob carol", listed(nullptr));
}

TEST_F(UsersRead, GuestsArePeopleOfNogroupWhereThereIsNoGuestGroup)
{
    sql("DELETE FROM `$group` WHERE gname='guest'; UPDATE `$user` SET group_id=94 WHERE uname='carol'");
    EXPECT_EQ("alice bob visitor", listed(nullptr));
}

TEST_F(UsersRead, LongPatternIsRefused)
{
    std::string pattern(256, '\'');
    qbobj_AccountQuery_t query{};
    query.name_like = pattern.c_str();
    EXPECT_EQ("", listed(&query));
    pattern += '%';
    query.name_like = pattern.c_str();
    qbobj_UserCollection_t users{};
    EXPECT_FAILS(qbobj_getUserCollection(qbdb, db, &users, &query, 0, &err), QBOBJ_ERROR_API_ARGS,
                 "Query string is too long.");
    EXPECT_STREQ("qbobj_api2_get_user", err.file);
    EXPECT_FAILS(qbobj_getUserCollection(qbdb, db, nullptr, nullptr, 0, &err), QBOBJ_ERROR_API_ARGS,
                 "collection cannot be NULL.");
}

TEST_F(UsersRead, OptionWordSelects)
{
    sql("INSERT INTO `$timemachine_quota`(user_id,enabled) VALUES(100,1),(101,0);"
        "INSERT INTO `$home_folder`(user_id,snapshot_protection_enabled,visible_snapdir) VALUES"
        "(100,0,''),(101,1,''),(102,1,'snaps')");
    const struct {
        const char *option;
        const char *names;
    } cases[] = {
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
    };
    for (const auto &expected : cases) {
        SCOPED_TRACE(expected.option);
        qbobj_AccountQuery_t query{};
        query.opt = expected.option;
        EXPECT_EQ(expected.names, listed(&query));
        EXPECT_EQ(3, total);
    }
    const std::string late = std::string(250, ' ') + "||HF_SNAPSHOT_ACCESS==1";
    qbobj_AccountQuery_t query{};
    query.opt = late.c_str();
    EXPECT_EQ("alice bob carol", listed(&query));
}

TEST_F(UsersRead, ExistingHomesAreSelectedButNotCounted)
{
    std::filesystem::create_directories(root() / "data/home/bob");
    std::ofstream(root() / "data/home/alice") << "a file";
    sql("UPDATE `$user` SET home=NULL WHERE uname='carol'");
    qbobj_AccountQuery_t query{};
    query.opt = "HF_EXISTS";
    EXPECT_EQ("bob", listed(&query));
    EXPECT_EQ(3, entries);
    EXPECT_EQ(3, total);
}

TEST_F(UsersRead, ListedUserIsComplete)
{
    sql("INSERT INTO share(id,zfs_name,name,volume_id,path) "
        "VALUES(5,'data/photos','photos','data','/data/photos'),"
        "(6,'data/music','music','data','/data/music');"
        "INSERT INTO user_quota(user_id,share_id,mb_soft,mb_hard) VALUES(100,5,80,100),(100,6,1,5000000000);"
        "INSERT INTO _user_quota_stat(user_id,share_id,mb_used) VALUES(100,5,42),(101,6,7);"
        "INSERT INTO `$home_folder`(user_id,snapshot_protection_enabled,quota,visible_snapdir) "
        "VALUES(100,1,'0x10','snaps'),(101,0,'010',NULL);"
        "INSERT INTO _hf_zfs_stat(user_id,used) VALUES(100,9);"
        "INSERT INTO `$timemachine_quota`(user_id,enabled,capacity_mb) VALUES(100,1,2000);"
        "UPDATE account_default SET home_volume_id='/data'");
    const std::filesystem::path bundle = root() / "data/.timemachine/bob/mac.sparsebundle";
    std::filesystem::create_directories(bundle / "bands");
    for (const char *band : {"0", "1", "2"})
        std::ofstream(bundle / "bands" / band) << "";
    std::ofstream(bundle / "Info.plist") << "\t<key>band-size</key>\n\t<integer>8000000</integer>\n";

    qbobj_UserCollection_t users{};
    ASSERT_OK(qbobj_getUserCollection(qbdb, db, &users, nullptr, 0, &err));
    const qbobj_User_t &alice = *users.User;
    const qbobj_User_t &bob = *alice._link;
    EXPECT_EQ(100, bob.resource_id);
    EXPECT_EQ(100, bob.UserId);
    EXPECT_STREQ("users", bob.GroupName);
    EXPECT_STREQ("/data/home/bob", bob.HomeDirectory);
    EXPECT_STREQ("bob@example.com", bob.Email);
    EXPECT_STREQ("Bob B.", bob.FullName);
    EXPECT_EQ(0, bob.IsDomainMember);
    EXPECT_EQ(1, bob.IsLocked);
    EXPECT_STREQ("", alice.Email);
    EXPECT_STREQ("", alice.FullName);

    ASSERT_NE(nullptr, bob.UserQuota);
    ASSERT_NE(nullptr, bob.UserQuota->_link);
    const qbobj_Quota_t &photos = *bob.UserQuota;
    const qbobj_Quota_t &music = *bob.UserQuota->_link;
    EXPECT_EQ(100, photos.AccountId);
    EXPECT_STREQ("data/photos", photos.ShareId);
    EXPECT_EQ(100U, photos.HardMB);
    EXPECT_EQ(42U, photos.UsedMB);
    EXPECT_EQ(5000000000U, music.HardMB);
    EXPECT_EQ(0U, music.UsedMB);
    EXPECT_EQ(nullptr, alice.UserQuota);

    ASSERT_NE(nullptr, bob.HomeFolderSettings);
    EXPECT_EQ(100, bob.HomeFolderSettings->UserId);
    EXPECT_EQ(1, bob.HomeFolderSettings->SnapshotProtectionEnabled);
    EXPECT_EQ(16U, bob.HomeFolderSettings->SizeLimit);
    EXPECT_EQ(9U, bob.HomeFolderSettings->SizeUsed);
    EXPECT_EQ(1, bob.HomeFolderSettings->VisibleSnapshot);
    EXPECT_STREQ("snaps", bob.HomeFolderSettings->VisibleSnapFolder);
    ASSERT_NE(nullptr, alice.HomeFolderSettings);
    EXPECT_EQ(0U, alice.HomeFolderSettings->SizeUsed);
    EXPECT_EQ(0, alice.HomeFolderSettings->VisibleSnapshot);
    EXPECT_STREQ("", alice.HomeFolderSettings->VisibleSnapFolder);
    EXPECT_EQ(nullptr, bob._link->HomeFolderSettings);

    ASSERT_NE(nullptr, bob.TimeMachineQuota);
    EXPECT_EQ(100, bob.TimeMachineQuota->UserId);
    EXPECT_EQ(1, bob.TimeMachineQuota->Enabled);
    EXPECT_EQ(2000, bob.TimeMachineQuota->CapacityMB);
    EXPECT_EQ(24U, bob.TimeMachineQuota->UsedMB);
    EXPECT_EQ(nullptr, alice.TimeMachineQuota);
}

TEST_F(UsersRead, PasswordsAreMaskedUnlessAskedFor)
{
    const struct {
        int encrypt_flag;
        const char *alice;
        const char *bob;
    } cases[] = {{0, "", masked_password}, {1, "", "$6$secret"}};
    for (const auto &expected : cases) {
        qbobj_UserCollection_t users{};
        ASSERT_OK(qbobj_getUserCollection(qbdb, db, &users, nullptr, expected.encrypt_flag, &err));
        EXPECT_STREQ(expected.alice, users.User->Password);
        EXPECT_STREQ(expected.bob, users.User->_link->Password);
    }
    EXPECT_STREQ(masked_password, find(100)->Password);
    EXPECT_STREQ("", find(101)->Password);
}

TEST_F(UsersRead, GroupThatOnlyTheDirectoryKnowsIsNamedByIt)
{
    join_directory();
    qbobj_UserCollection_t users{};
    ASSERT_OK(qbobj_getUserCollection(qbdb, db, &users, nullptr, 0, &err));
    EXPECT_STREQ("domain crew", users.User->GroupName);
    EXPECT_EQ(1, users.User->IsDomainMember);
    EXPECT_STREQ("daemon", users.User->_link->GroupName); // the system's group 1
}

TEST_F(UsersRead, ListsAreAppendedToWhatTheCollectionHolds)
{
    qbobj_User_t first{};
    qbobj_UserCollection_t users{&first, 0, 0};
    ASSERT_OK(qbobj_getUserCollection(qbdb, db, &users, nullptr, 0, &err));
    EXPECT_EQ(&first, users.User);
    EXPECT_EQ("alice bob carol", names(first._link));
    EXPECT_EQ(3, users.Entries);
}

TEST_F(UsersRead, FailingDetailEndsTheList)
{
    sql("DROP TABLE user_quota");
    qbobj_UserCollection_t users{};
    EXPECT_FAILS(qbobj_getUserCollection(qbdb, db, &users, nullptr, 0, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for user_quota. no such table: user_quota");
}

TEST_F(UsersRead, FailingTimeMachinePathDoesNotEndTheList)
{
    sql("INSERT INTO `$timemachine_quota`(user_id,enabled) VALUES(100,1); DROP TABLE account_default");
    qbobj_UserCollection_t users{};
    ASSERT_OK(qbobj_getUserCollection(qbdb, db, &users, nullptr, 0, &err));
    EXPECT_EQ("alice bob carol", names(users.User));
    EXPECT_EQ(nullptr, users.User->_link->TimeMachineQuota);
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
    EXPECT_STREQ("Failed DB Query for 'SELECT account_default and $user'.", err.msg);
}

TEST_F(UsersRead, SingleUsersAreFoundByEitherKey)
{
    qbobj_User_t second{};
    second.UserId = 110; // remote users are only left out of lists
    second.HomeFolderSettings = reinterpret_cast<qbobj_UserHomeFolderSettings_t *>(&second);
    qbobj_User_t first{};
    first._link = &second;
    first.resource_id = 100;
    first.UserId = 101;
    ASSERT_OK(qbobj_getUser(qbdb, db, &first, &err));
    EXPECT_STREQ("bob", first.UserName);
    EXPECT_EQ(100, first.UserId);
    EXPECT_EQ(1, first.IsLocked);
    EXPECT_EQ(nullptr, first.FullName);
    EXPECT_STREQ("cloudy", second.UserName);
    EXPECT_EQ(110, second.resource_id);
    EXPECT_EQ(nullptr, second.HomeFolderSettings);
}

TEST_F(UsersRead, UserThatIsNotThereIsReported)
{
    const struct {
        int id;
        const char *name;
        qbobj_error_t code;
        const char *message;
    } cases[] = {
        {999, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=999."},
        {97, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=97."},
        {111, nullptr, QBOBJ_ERROR_DB_NOTEXISTS, "None of row selected for resource_id=111."},
        {0, "bob", QBOBJ_ERROR_API_ARGS, "Invalid User (resource_id=0, UserName=bob)."},
        {0, nullptr, QBOBJ_ERROR_API_ARGS, "Invalid User (resource_id=0, UserName=(null))."},
        {-20, nullptr, QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=-20."},
    };
    for (const auto &expected : cases) {
        qbobj_User_t user{};
        user.UserId = expected.id;
        user.UserName = expected.name;
        EXPECT_FAILS(qbobj_getUser(qbdb, db, &user, &err), expected.code, expected.message);
    }
    EXPECT_FAILS(qbobj_getUser(qbdb, db, nullptr, &err), QBOBJ_ERROR_API_ARGS, "user cannot be NULL.");
}

TEST_F(UsersRead, DirectoryUsersAreFoundByNegativeIdAndUnmirroredByName)
{
    join_directory();
    qbobj_User_t user{};
    user.UserId = -20;
    ASSERT_OK(qbobj_getUser(qbdb, db, &user, &err));
    EXPECT_STREQ("Ada", user.UserName);
    EXPECT_EQ(-20, user.resource_id);

    sql("UPDATE service_cifs SET no_sync_ads=1;"
        "INSERT INTO `$user`(id,uname,group_id,rid) VALUES(1,'a daemon',-7,1)");
    qbobj_User_t by_name{};
    by_name.UserName = "daemon";
    ASSERT_OK(qbobj_getUser(qbdb, db, &by_name, &err));
    EXPECT_EQ(1, by_name.resource_id);
    EXPECT_STREQ("a daemon", by_name.UserName);

    qbobj_User_t unknown{};
    unknown.UserName = "no such person";
    EXPECT_FAILS(qbobj_getUser(qbdb, db, &unknown, &err), QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                 "Invalid User (resource_id=0, UserName=no such person).");
}

TEST_F(UsersRead, SystemUsersAreNamedWhateverTheyAre)
{
    sql("INSERT INTO `$user`(id,uname,rid) VALUES(30,'mirrored',30)");
    const passwd *account = getpwuid(1);
    const std::string system_name = account != nullptr ? account->pw_name : "";
    int unknown = 1000000;
    while (getpwuid(static_cast<uid_t>(unknown)) != nullptr)
        ++unknown;
    const struct {
        bool directory;
        int id;
        std::optional<const char *> name; // none: refused
    } cases[] = {
        {false, 100, "bob"},
        {false, 0, "root"},
        {false, 999, "999"},
        {false, -30, {}},
        {true, -20, "Ada"},
        {true, -30, "mirrored"},
        {true, -1, account != nullptr ? system_name.c_str() : nullptr},
        {true, -unknown, nullptr},
    };
    for (const auto &expected : cases) {
        SCOPED_TRACE(expected.id);
        sql(expected.directory ? "UPDATE service_cifs SET security='ads'"
                               : "UPDATE service_cifs SET security='user'");
        qbobj_SystemUser_t user{};
        user.resource_id = expected.id;
        if (!expected.name) {
            EXPECT_FAILS(qbobj_getSystemUser(qbdb, db, &user, &err), QBOBJ_ERROR_DB_MISC,
                         "Invalid resouce_id=-30.");
            continue;
        }
        ASSERT_OK(qbobj_getSystemUser(qbdb, db, &user, &err));
        EXPECT_STREQ(*expected.name, user.UserName);
        EXPECT_EQ(expected.id, user.UserId);
    }
}

TEST_F(UsersRead, RemoteUsersAndMembersAreListedByName)
{
    sql("INSERT INTO `$user`(id,uname,group_id) VALUES(120,'Beam',98);"
        "INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,100),(101,100),(102,99)");
    qbobj_SystemUser_t *users = nullptr;
    ASSERT_OK(qbobj_getCloudUser(qbdb, db, &users, &err));
    EXPECT_EQ("Beam cloudy", names(users));
    EXPECT_EQ(120, users->resource_id);
    EXPECT_EQ(120, users->UserId);

    const struct {
        const char *group;
        int primary_only;
        const char *names;
    } cases[] = {
        {"staff", 1, "alice"},     {"STAFF", 1, "alice"},
        {"staff", 0, "alice bob"}, {"users", 1, "bob carol removed"},
        {"nobody's", 0, ""},       {nullptr, 0, ""},
    };
    for (const auto &expected : cases) {
        SCOPED_TRACE(expected.names);
        ASSERT_OK(qbobj_getUserInGroupName(qbdb, db, expected.group, expected.primary_only, &users, &err));
        EXPECT_EQ(expected.names, names(users));
    }
}

TEST_F(UsersRead, IdsOfNames)
{
    sql("UPDATE `$user` SET group_id=NULL WHERE uname='carol'");
    using LookUp = int (*)(qbdb_handle_t *, sqlite3 *, const char *, int *, qbobj_error_rec_t *);
    constexpr int unknown = -1000;
    const struct {
        LookUp look_up;
        const char *name;
        int local;
        int directory;
    } cases[] = {
        {qbobj_getUID, "BOB", 100, -21},
        {qbobj_getUID, "Ada", unknown, -20},
        {qbobj_getUID, "admin", 95, 95},
        {qbobj_getUID, nullptr, 97, 97},
        {qbobj_getUID, "o'hara", unknown, unknown},
        {qbobj_getGID, "staff", 100, 100},
        {qbobj_getGID, "domain crew", unknown, unknown}, // never by name
        {qbobj_getGID, nullptr, 97, 97},
        {qbobj_getPrimaryGID, "alice", 100, 100},
        {qbobj_getPrimaryGID, "Ada", -7, -7},
        {qbobj_getPrimaryGID, "carol", unknown, unknown},
        {qbobj_getPrimaryGID, nullptr, 97, 97},
    };
    for (const bool directory : {false, true}) {
        for (const auto &expected : cases) {
            SCOPED_TRACE(testing::Message() << (expected.name ? expected.name : "(null)") << directory);
            int id = unknown;
            const int found = directory ? expected.directory : expected.local;
            EXPECT_EQ(found == unknown ? -1 : 0, expected.look_up(qbdb, db, expected.name, &id, &err));
            EXPECT_EQ(found, id);
            EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
        }
        join_directory();
    }
    sql("UPDATE `$group` SET gname='visitors' WHERE gname='guest'");
    int gid = 0;
    EXPECT_OK(qbobj_getGID(qbdb, db, nullptr, &gid, &err));
    EXPECT_EQ(94, gid);
    EXPECT_FAILS(qbobj_getUID(qbdb, db, "bob", nullptr, &err), QBOBJ_ERROR_API_ARGS, "uid cannot be NULL.");
}

TEST_F(UsersRead, NamesOfIds)
{
    using LookUp = int (*)(qbdb_handle_t *, sqlite3 *, int, char **, qbobj_error_rec_t *);
    const struct {
        LookUp look_up;
        int id;
        const char *name;
    } cases[] = {
        {qbobj_getUserName, 100, "bob"},    {qbobj_getUserName, -20, "Ada"},
        {qbobj_getUserName, 7, "7"},        {qbobj_getUserName, -5, "guest"},
        {qbobj_getGroupName, 100, "staff"}, {qbobj_getGroupName, -7, "domain crew"},
        {qbobj_getGroupName, 7, "7"},       {qbobj_getGroupName, -5, "guest"},
    };
    char *name = nullptr;
    for (const auto &expected : cases) {
        EXPECT_OK(expected.look_up(qbdb, db, expected.id, &name, &err));
        EXPECT_STREQ(expected.name, name);
    }
    sql("ALTER TABLE `$user` RENAME TO away");
    EXPECT_EQ(-1, qbobj_getUserName(qbdb, db, 100, &name, &err));
    EXPECT_STREQ("guest", name);
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_DEATH(qbobj_getGroupName(qbdb, db, 1, nullptr, &err),
                 ": qbobj_getGroupName: Assertion `gname' failed");
}

TEST_F(UsersRead, PosixIds)
{
    sql("INSERT INTO `$user`(id,uname,group_id,rid) VALUES(-1,'domain daemon',-1,1),(-9999999,'gone',-7,2),"
        "(-2,'half',-9999999,3)");
    EXPECT_EQ(100, qbobj_getPosixUID(qbdb, db, "bob", &err));
    EXPECT_EQ(-1, qbobj_getPosixUID(qbdb, db, "daemon", &err)); // local names are not asked of the system
    EXPECT_EQ(100, qbobj_getPosixGID(qbdb, db, "staff", &err));
    EXPECT_EQ(-1, qbobj_getPosixGID(qbdb, db, "daemon", &err));
    EXPECT_EQ(97, qbobj_getPosixUID(qbdb, db, nullptr, &err));
    EXPECT_EQ(100, qbobj_getPosixUIDbyUID(qbdb, db, 100, &err));
    EXPECT_EQ(1, qbobj_getPosixUIDbyUID(qbdb, db, -1, &err));
    EXPECT_EQ(1, qbobj_getPosixGIDbyGID(qbdb, db, -1, &err));
    EXPECT_EQ(-1, qbobj_getPosixGIDbyGID(qbdb, db, -9999999, &err));

    join_directory();
    EXPECT_EQ(1, qbobj_getPosixUID(qbdb, db, "domain daemon", &err));
    EXPECT_EQ(1, qbobj_getPosixUID(qbdb, db, "daemon", &err));
    EXPECT_EQ(1, qbobj_getPosixGID(qbdb, db, "daemon", &err));
    EXPECT_EQ(-1, qbobj_getPosixUID(qbdb, db, "gone", &err));
    EXPECT_EQ(-1, qbobj_getPosixUID(qbdb, db, "no such person", &err));

    int uid = -5;
    int gid = -5;
    for (const char *name : {"gone", "half", "no such person"}) {
        EXPECT_EQ(-1, qbobj_getPosixUIDGID(qbdb, db, name, &uid, &gid, &err)) << name;
        EXPECT_EQ(-5, uid);
        EXPECT_EQ(-5, gid);
    }
    EXPECT_OK(qbobj_getPosixUIDGID(qbdb, db, "domain daemon", &uid, &gid, &err));
    EXPECT_EQ(1, uid);
    EXPECT_EQ(1, gid);
}

TEST_F(UsersRead, Membership)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,100)");
    const struct {
        const char *user;
        const char *group;
        int result;
    } cases[] = {
        {"alice", "staff", 0}, {"bob", "users", 0},         {"Bob", "Staff", 0},
        {"carol", "staff", 1}, {"nobody else", "staff", 1}, {nullptr, nullptr, 1},
    };
    for (const auto &expected : cases)
        EXPECT_EQ(expected.result, qbobj_isMemberOfGroup(qbdb, db, expected.user, expected.group, &err));
    sql("DROP TABLE `$group_has_user`");
    EXPECT_EQ(0, qbobj_isMemberOfGroup(qbdb, db, "alice", "staff", &err));
    EXPECT_EQ(-1, qbobj_isMemberOfGroup(qbdb, db, "carol", "staff", &err));
}

} // namespace
