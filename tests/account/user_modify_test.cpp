// Users changed.
#include "accounts.h"

namespace
{

using namespace qbobj_test;
using User = qbobj_User_t;

// "anna", user 100 of group 99, and "bert", user 101.
class UserModify : public Accounts
{
  protected:
    UserModify()
    {
        sql("INSERT INTO `$user` (id,uname,passwd,email,home,group_id,is_locked) VALUES "
            "(100,'anna','$1$abcdefgh$anna','a@example.org','/data/home/anna',99,0),"
            "(101,'bert','','','/home/bert',99,0)");
    }
    int modify(User &user) { return run(qbobj_modifyUser, user); }
    std::string anna(const std::string &columns) const
    {
        return rows("SELECT " + columns + " FROM `$user` WHERE id=100").front();
    }
};

TEST_F(UserModify, WritesEverythingThatIsGiven)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff')");
    const std::string email = "\"',is_privileged=1,home='\"@example.org"; // a value is never SQL
    User user{.UserId = 100, .UserName = "anita", .GroupName = "staff", .Email = email.c_str()};
    user.Password = "secret";
    user.IsLocked = 1;
    EXPECT_OK(modify(user));
    EXPECT_EQ("anita|/home/anita|$1$|" + email + "|200|1|0",
              anna("uname,home,substr(passwd,1,3),email,group_id,is_locked,is_privileged"));
    EXPECT_NE("$1$abcdefgh$anna", anna("passwd"));
    EXPECT_EQ("anna|/data/home/anna|/home/anita",
              line({user.OldUserName, user.OldHomeDirectory, user.HomeDirectory}));
}

TEST_F(UserModify, KeepsWhatIsNotGivenButForAddressAndLock)
{
    sql("UPDATE `$user` SET is_locked=1 WHERE id=100");
    for (const char *password : {static_cast<const char *>(nullptr), masked_password}) {
        User user{.resource_id = 100, .Password = password};
        EXPECT_OK(modify(user));
        EXPECT_EQ("anna|$1$abcdefgh$anna||/data/home/anna|99|0",
                  anna("uname,passwd,email,home,group_id,is_locked"));
        EXPECT_EQ(nullptr, user.OldUserName);
        EXPECT_EQ(nullptr, user.HomeDirectory);
    }
    User user{.resource_id = 100, .Password = ""};
    EXPECT_OK(modify(user));
    EXPECT_EQ("", anna("passwd"));
}

TEST_F(UserModify, HomeAndSnapshotsFollowTheName)
{
    // The new name, what is told of the old name and home, the snapshots of both.
    const std::tuple<const char *, const char *, const char *> steps[] = {
        {"anna", "NULL|NULL", "anna|/data/home/anna"},  // the same name only resets the home
        {"Anna", "anna|/home/anna", "Anna|/home/Anna"}, // a change of capitals is a change
        {"anita", "Anna|/home/Anna", "anita|/home/anita"}};
    sql("INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) VALUES "
        "('anna','/data/home/anna','s'),('bert','/home/bert','s')");
    for (const auto &[name, old, snapshots] : steps) {
        User user{.resource_id = 100, .UserName = name};
        EXPECT_OK(modify(user));
        EXPECT_EQ(std::string(name) + "|/home/" + name, anna("uname,home"));
        EXPECT_EQ(std::string("/home/") + name, user.HomeDirectory);
        EXPECT_EQ(old, line({user.OldUserName, user.OldHomeDirectory}));
        EXPECT_EQ((Lines{snapshots, "bert|/home/bert"}),
                  rows("SELECT user_name,home_dir FROM `$home_folder_snapshot` ORDER BY id"));
    }
}

TEST_F(UserModify, ADirectoryUserKeepsTheHome)
{
    join_directory();
    sql("INSERT INTO `$user` (id,uname,home,rid) VALUES (-7,'dora','/far/dora',70)");
    User user{.UserId = -7, .UserName = "doris"};
    EXPECT_OK(modify(user));
    EXPECT_EQ("-7|/far/dora", of("doris", "id,home"));
    EXPECT_STREQ("dora", user.OldUserName);
}

TEST_F(UserModify, RefusesWhatIsWrongAndKeepsNothingOfTheChain)
{
    const std::string long_name(32, 'a');
    const std::string long_hash(600, 'x');
    const Refusal<User> cases[] = {
        {{}, "Invalid User (resource_id=0, UserName=(null))."},
        {{.UserName = "bert"}, "Invalid User (resource_id=0, UserName=bert)."},
        {{.UserId = -5}, "Invalid resource_id (-5)."},
        {{.resource_id = 4711}, "Invalid resource_id (4711). Not exist."},
        {{.UserId = 101, .UserName = long_name.c_str()},
         "UserName is too long (" + long_name + ")",
         too_long},
        {{.UserId = 101, .UserName = "c_x"}, "UserName (c_x) is reserved", reserved},
        {{.UserId = 101, .UserName = "pool"}, "UserName (pool) is reserved", reserved},
        {{.UserId = 101, .UserName = ""}, "Invalid UserName (), rc=1"},
        {{.UserId = 101, .UserName = "anna"},
         "Cannot rename to user which already exists (anna).",
         name_taken},
        {{.UserId = 101, .Email = "x"}, "Invalid Email (x) rc=8"},
        {{.UserId = 101, .Password = long_hash.c_str()}, "Invalid Password (" + long_hash + ") rc=1"},
        {{.UserId = 101, .GroupName = "none"}, "Invalid GroupName (none)"},
        {{.UserId = 101, .SysHash = long_hash.c_str()},
         "The value of column 'passwd' is too long for the update."}};
    for (const auto &c : cases) {
        User bad = c.given;
        refused(qbobj_modifyUser, {._link = &bad, .resource_id = 100, .Email = "good@example.org"}, c.code,
                c.message);
        EXPECT_STREQ("qbobj_api2_modify_user", err.file);
    }
}

TEST_F(UserModify, AConstraintCountsAsANameThatIsTakenAndAFailedUpdateKeepsItsValuesOutOfTheLog)
{
    sql("CREATE TRIGGER refuse BEFORE UPDATE ON `$user` BEGIN SELECT RAISE(ABORT,'no'); END");
    refused(qbobj_modifyUser, {.resource_id = 100}, name_taken, "Specified uname already exists'. no");
    sql("DROP TRIGGER refuse");
    sql("ALTER TABLE `$user` RENAME COLUMN is_locked TO away");
    refused(qbobj_modifyUser,
            {.resource_id = 100, .Email = "hunter@example.org", .SysHash = "$1$hashhash$hunter"}, db_failed,
            "Failed DB Query for 'UPDATE user'. no such column: is_locked");
    EXPECT_NE(std::string::npos, log().find("no such column: is_locked (1): UPDATE `$user` SET"));
    EXPECT_EQ(std::string::npos, log().find("hunter"));
}

TEST_F(UserModify, AnUnmirroredDirectoryUserIsFoundByName)
{
    join_directory();
    sql("UPDATE service_cifs SET no_sync_ads=1");
    for (const std::string name : {"no-such-account", "root"}) // the superuser's id is no key
        refused(qbobj_modifyUser, {.UserName = name.c_str()}, QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                "Invalid User (resource_id=0, UserName=" + name + ").");
    refused(qbobj_modifyUser, {}, bad_args, "Invalid User (resource_id=0, UserName=(null)).");
    // An account of the system that is no user here.
    User daemon{.UserName = "daemon"};
    EXPECT_FAILS(modify(daemon), bad_args, "Invalid resource_id (1). Not exist.");
    EXPECT_EQ(1, daemon.UserId);
}

TEST_F(UserModify, SetsAndRemovesQuotas)
{
    add_shares();
    sql("UPDATE account_default SET diskquota_warn=90;"
        "INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES (100,5,1,2),(101,6,1,2)");
    qbobj_Quota_t set{.ShareId = "data/music", .HardMB = 100};
    qbobj_Quota_t removed{._link = &set, .ShareId = "data/photos"};
    User user{.resource_id = 100, .UserQuota = &removed};
    EXPECT_OK(modify(user));
    // A change divides the soft limit by 100, which a creation does not.
    EXPECT_EQ((Lines{"100|6|90|100", "101|6|1|2"}),
              rows("SELECT user_id,share_id,mb_soft,mb_hard FROM user_quota ORDER BY user_id"));

    set.ShareId = "none";
    refused(qbobj_modifyUser, user, db_failed,
            "Failed DB Query for 'UPDATE user_quota. NOT NULL constraint failed: user_quota.share_id");
}

TEST_F(UserModify, HidesTheSnapshotFolderButNeverMovesIt)
{
    sql("INSERT INTO `$home_folder` VALUES (100,0,0,'old')");
    qbobj_UserHomeFolderSettings_t home{
        .SizeLimit = 7, .SnapshotProtectionEnabled = 1, .VisibleSnapFolder = "new"};
    User user{.resource_id = 100, .HomeFolderSettings = &home};
    for (const auto &[visible, stored] : {std::pair{1, "100|1|7|old"}, std::pair{0, "100|1|7|"}}) {
        home.VisibleSnapshot = visible;
        EXPECT_OK(modify(user));
        EXPECT_EQ(Lines{stored}, rows("SELECT * FROM `$home_folder`"));
    }
    EXPECT_OK(call(qbobj_modifyUserVisibleSnapFolder, 100, "it's"));
    EXPECT_EQ("it's", value("SELECT visible_snapdir FROM `$home_folder`"));
    EXPECT_OK(call(qbobj_modifyUserVisibleSnapFolder, 100, nullptr));
    EXPECT_EQ("", value("SELECT visible_snapdir FROM `$home_folder`"));
}

TEST_F(UserModify, TheFirstTimeMachineUserSwitchesItOnAndTheLastOff)
{
    const struct {
        const char *name;
        const char *prepare; // user 96's row is disabled, its size 900
        int on, enabled, remove;
        const char *quotas; // user and switch
        const char *service;
    } cases[] = {{"first", "", 0, 1, 0, "96:0 100:1", "1|data|900"},
                 {"first is not enabled", "", 0, 0, 0, "96:0", "0|NULL|0"},
                 {"removal while off", "", 0, 1, 1, "96:0 100:1", "1|data|900"},
                 {"already on", "", 1, 1, 0, "96:0 100:1", "1|NULL|0"},
                 {"last", "", 1, 1, 1, "96:0", "0|data|900"},
                 {"last, not enabled", "", 1, 0, 1, "96:0", "0|data|900"},
                 {"another is left", "INSERT INTO `$timemachine_quota` VALUES (101,1,5)", 1, 1, 1,
                  "96:0 101:1", "1|NULL|0"},
                 {"only disabled ones are left", "INSERT INTO `$timemachine_quota` VALUES (101,0,5)", 1, 1, 1,
                  "96:0", "0|data|900"},
                 {"the shared area is in use", "UPDATE `$timemachine_quota` SET enabled=1", 1, 1, 1, "96:1",
                  "1|NULL|0"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        sql("DELETE FROM `$timemachine_quota`;INSERT INTO `$timemachine_quota` VALUES (96,0,900);"
            "UPDATE service_afp SET volume_timemachine=NULL,vol_size_limit_timemachine_mb=0,"
            "timemachine_enabled=" +
            std::to_string(c.on));
        sql(c.prepare);
        qbobj_UserTimeMachineQuota_t quota{.Enabled = c.enabled, .Delete = c.remove};
        User user{.resource_id = 100, .TimeMachineQuota = &quota};
        EXPECT_OK(modify(user));
        EXPECT_EQ(c.quotas, value("SELECT GROUP_CONCAT(user_id||':'||enabled,' ') FROM "
                                  "(SELECT * FROM `$timemachine_quota` ORDER BY user_id)"));
        EXPECT_EQ(Lines{c.service}, rows("SELECT timemachine_enabled,volume_timemachine,"
                                         "vol_size_limit_timemachine_mb FROM service_afp"));
    }
}

TEST_F(UserModify, SetsThePrimaryGroupOfTheAccountsInUse)
{
    sql("INSERT INTO `$group` (id,gname,rid) VALUES (200,'staff',NULL),(-200,'staff',5);"
        "INSERT INTO `$user` (id,uname,group_id,rid) VALUES (-7,'anna',-1,70)");
    const struct {
        const char *user, *group, *local_then, *directory_then;
    } steps[] = {
        {"anna", "staff", "200", "-1"},
        {"nobody here", "staff", "200", "-1"},
        {"anna", "x' OR '1", "NULL", "-1"}, // a group that is not there leaves the user without one
        {"anna", "staff", "NULL", "-200"},  // in directory mode
    };
    for (const auto &step : steps) {
        if (&step == std::end(steps) - 1)
            join_directory();
        EXPECT_OK(call(qbobj_setPrimaryGroupByName, step.user, step.group));
        EXPECT_EQ(step.local_then, anna("group_id"));
        EXPECT_EQ(step.directory_then, value("SELECT group_id FROM `$user` WHERE id=-7"));
    }
}

TEST_F(UserModify, LocksAndUnlocksHashesOfOrdinaryLocalUsersOnly)
{
    sql("INSERT INTO `$user` (id,uname,passwd,group_id,is_privileged,rid) VALUES "
        "(102,'cloudy','$1$x',98,0,NULL),(103,'far','$1$x',99,0,5),(104,'system','$1$x',99,1,NULL),"
        "(105,'odd','secret',99,0,NULL),(106,'cleo','$6$x',99,0,NULL)");
    const std::tuple<int, const char *, const char *, const char *> steps[] = {
        {1, nullptr, "$1$abcdefgh$anna", "$6$x"},   {0, "ANNA", "!$1$abcdefgh$anna", "$6$x"},
        {0, "anna", "!$1$abcdefgh$anna", "$6$x"},   {0, "' OR '1", "!$1$abcdefgh$anna", "$6$x"},
        {0, nullptr, "!$1$abcdefgh$anna", "!$6$x"}, {1, "cleo", "!$1$abcdefgh$anna", "$6$x"},
        {1, nullptr, "$1$abcdefgh$anna", "$6$x"}};
    for (const auto &[enable, name, anna_then, cleo_then] : steps) {
        EXPECT_OK(call(qbobj_disableEnableLocalUserByName, enable, name));
        EXPECT_EQ(std::string(anna_then) + "  $1$x $1$x $1$x secret " + cleo_then,
                  value("SELECT GROUP_CONCAT(passwd,' ') FROM "
                        "(SELECT * FROM `$user` WHERE id>=100 ORDER BY id)"));
    }
}

} // namespace
