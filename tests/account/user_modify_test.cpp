// Users changed.
#include "database.h"

#include <functional>
#include <string>

using namespace qbobj_test;

namespace
{

// "anna", user 100 of group 99, and "bert", user 101.
class UserModify : public Database
{
  protected:
    UserModify()
    {
        sql("INSERT INTO `$user` (id,uname,passwd,email,home,group_id,is_locked) VALUES "
            "(100,'anna','$1$abcdefgh$anna','a@example.org','/data/home/anna',99,0),"
            "(101,'bert','','','/home/bert',99,0)");
    }

    static qbobj_User_t change(int id = 100)
    {
        qbobj_User_t user = cleared(qbobj_clear_User);
        user.resource_id = id;
        return user;
    }
    int modify(qbobj_User_t &user) { return qbobj_modifyUser(qbdb, db, &user, &err); }
    std::string anna(const std::string &columns) const
    {
        return rows("SELECT " + columns + " FROM `$user` WHERE id=100").front();
    }
};

TEST_F(UserModify, WritesEverythingThatIsGiven)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff')");
    qbobj_User_t user = change(0);
    user.UserId = 100;
    user.UserName = "anita";
    user.Password = "secret";
    user.Email = "new@example.org";
    user.GroupName = "staff";
    user.IsLocked = 1;
    EXPECT_OK(modify(user));
    EXPECT_EQ("anita|/home/anita|$1$|new@example.org|200|1",
              anna("uname,home,substr(passwd,1,3),email,group_id,is_locked"));
    EXPECT_NE("$1$abcdefgh$anna", anna("passwd"));
    EXPECT_STREQ("anna", user.OldUserName);
    EXPECT_STREQ("/data/home/anna", user.OldHomeDirectory);
    EXPECT_STREQ("/home/anita", user.HomeDirectory);
}

TEST_F(UserModify, KeepsWhatIsNotGivenButForAddressAndLock)
{
    sql("UPDATE `$user` SET is_locked=1 WHERE id=100");
    for (const char *password : {static_cast<const char *>(nullptr), masked_password}) {
        qbobj_User_t user = change();
        user.Password = password;
        EXPECT_OK(modify(user));
        EXPECT_EQ("anna|$1$abcdefgh$anna||/data/home/anna|99|0",
                  anna("uname,passwd,email,home,group_id,is_locked"));
        EXPECT_EQ(nullptr, user.OldUserName);
        EXPECT_EQ(nullptr, user.HomeDirectory);
    }
    qbobj_User_t user = change();
    user.Password = "";
    EXPECT_OK(modify(user));
    EXPECT_EQ("", anna("passwd"));
}

TEST_F(UserModify, OneAndTheSameNameResetsTheHomeAndNothingElse)
{
    sql("INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) VALUES "
        "('anna','/data/home/anna','s')");
    for (const char *name : {"anna", "Anna"}) {
        qbobj_User_t user = change();
        user.UserName = name;
        EXPECT_OK(modify(user));
        EXPECT_EQ(std::string(name) + "|/home/" + name, anna("uname,home"));
        EXPECT_EQ(nullptr, user.OldUserName);
        EXPECT_EQ(nullptr, user.OldHomeDirectory);
        EXPECT_EQ(std::string("/home/") + name, user.HomeDirectory);
        EXPECT_EQ("/data/home/anna", value("SELECT home_dir FROM `$home_folder_snapshot`"));
    }
}

TEST_F(UserModify, ANewNameTakesTheSnapshotsAlong)
{
    sql("INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) VALUES "
        "('anna','/data/home/anna','s'),('bert','/home/bert','s')");
    qbobj_User_t user = change();
    user.UserName = "anita";
    EXPECT_OK(modify(user));
    EXPECT_EQ((std::vector<std::string>{"anita|/home/anita", "bert|/home/bert"}),
              rows("SELECT user_name,home_dir FROM `$home_folder_snapshot` ORDER BY id"));
}

TEST_F(UserModify, ADirectoryUserKeepsTheHome)
{
    join_directory();
    sql("INSERT INTO `$user` (id,uname,home,rid) VALUES (-7,'dora','/far/dora',70)");
    qbobj_User_t user = change(0);
    user.UserId = -7;
    user.UserName = "doris";
    EXPECT_OK(modify(user));
    EXPECT_EQ(std::vector<std::string>{"doris|/far/dora"},
              rows("SELECT uname,home FROM `$user` WHERE id=-7"));
    EXPECT_STREQ("dora", user.OldUserName);
}

TEST_F(UserModify, ValuesAreNeverSql)
{
    const char *email = "\"',is_privileged=1,home='\"@example.org";
    const char *hash = "x',is_privileged=1,home='";
    qbobj_User_t user = change();
    user.Email = email;
    user.SysHash = hash;
    user.Password = "ignored";
    EXPECT_OK(modify(user));
    EXPECT_EQ(email, anna("email"));
    EXPECT_EQ(hash, anna("passwd"));
    EXPECT_EQ("0|/data/home/anna", anna("is_privileged,home"));
}

TEST_F(UserModify, RefusesWhatIsWrongAndKeepsNothingOfTheChain)
{
    const std::string long_name(32, 'a');
    const std::string long_hash(600, 'x');
    const struct {
        std::function<void(qbobj_User_t &)> spoil;
        qbobj_error_t code;
        std::string message;
    } cases[] = {
        {[](auto &u) { u.resource_id = 0; }, QBOBJ_ERROR_API_ARGS,
         "Invalid User (resource_id=0, UserName=(null))."},
        {[](auto &u) { u.resource_id = 0, u.UserName = "bert"; }, QBOBJ_ERROR_API_ARGS,
         "Invalid User (resource_id=0, UserName=bert)."},
        {[](auto &u) { u.resource_id = 0, u.UserId = -5; }, QBOBJ_ERROR_API_ARGS,
         "Invalid resource_id (-5)."},
        {[](auto &u) { u.resource_id = 4711; }, QBOBJ_ERROR_API_ARGS,
         "Invalid resource_id (4711). Not exist."},
        {[&](auto &u) { u.UserName = long_name.c_str(); }, QBOBJ_ERROR_UI__NAME_TOO_LONG,
         "UserName is too long (" + long_name + ")"},
        {[](auto &u) { u.UserName = "c_x"; }, QBOBJ_ERROR_UI__USERNAME_RESERVED,
         "UserName (c_x) is reserved"},
        {[](auto &u) { u.UserName = "pool"; }, QBOBJ_ERROR_UI__USERNAME_RESERVED,
         "UserName (pool) is reserved"},
        {[](auto &u) { u.UserName = ""; }, QBOBJ_ERROR_API_ARGS, "Invalid UserName (), rc=1"},
        {[](auto &u) { u.UserName = "anna"; }, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS,
         "Cannot rename to user which already exists (anna)."},
        {[](auto &u) { u.Email = "x"; }, QBOBJ_ERROR_API_ARGS, "Invalid Email (x) rc=8"},
        {[&](auto &u) { u.Password = long_hash.c_str(); }, QBOBJ_ERROR_API_ARGS,
         "Invalid Password (" + long_hash + ") rc=1"},
        {[](auto &u) { u.GroupName = "none"; }, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (none)"},
        {[&](auto &u) { u.SysHash = long_hash.c_str(); }, QBOBJ_ERROR_API_ARGS,
         "The value of column 'passwd' is too long for the update."},
    };
    const std::string before = content();
    for (const auto &c : cases) {
        SCOPED_TRACE(c.message);
        qbobj_User_t good = change();
        good.Email = "good@example.org";
        qbobj_User_t bad = change(101);
        good._link = &bad;
        c.spoil(bad);
        EXPECT_FAILS(modify(good), c.code, c.message.c_str());
        EXPECT_STREQ("qbobj_api2_modify_user", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(UserModify, AFailedUpdateKeepsItsValuesOutOfTheLog)
{
    sql("ALTER TABLE `$user` RENAME COLUMN is_locked TO away");
    qbobj_User_t user = change();
    user.SysHash = "$1$hashhash$hunter";
    user.Email = "hunter@example.org";
    EXPECT_FAILS(modify(user), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'UPDATE user'. no such column: is_locked");
    EXPECT_NE(std::string::npos, log().find("no such column: is_locked (1): UPDATE `$user` SET"));
    EXPECT_EQ(std::string::npos, log().find("hunter"));
}

TEST_F(UserModify, AConstraintCountsAsANameThatIsTaken)
{
    sql("CREATE TRIGGER refuse BEFORE UPDATE ON `$user` BEGIN SELECT RAISE(ABORT,'no'); END");
    qbobj_User_t user = change();
    EXPECT_FAILS(modify(user), QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS,
                 "Specified uname already exists'. no");
}

TEST_F(UserModify, AnUnmirroredDirectoryUserIsFoundByName)
{
    join_directory();
    sql("UPDATE service_cifs SET no_sync_ads=1");
    qbobj_User_t user = change(0);
    user.UserName = "no-such-account";
    EXPECT_FAILS(modify(user), QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                 "Invalid User (resource_id=0, UserName=no-such-account).");
    user.UserName = nullptr;
    EXPECT_FAILS(modify(user), QBOBJ_ERROR_API_ARGS, "Invalid User (resource_id=0, UserName=(null)).");
    // An account of the system that is no user here.
    user.UserName = "daemon";
    EXPECT_FAILS(modify(user), QBOBJ_ERROR_API_ARGS, "Invalid resource_id (1). Not exist.");
    EXPECT_EQ(1, user.UserId);
}

TEST_F(UserModify, SetsAndRemovesQuotas)
{
    sql("UPDATE account_default SET diskquota_warn=90");
    sql("INSERT INTO share (id,zfs_name,name,volume_id,path) VALUES (7,'pics','pics','data','/data/pics'),"
        "(8,'docs','docs','data','/data/docs')");
    sql("INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) VALUES (100,7,1,2),(101,8,1,2)");
    qbobj_Quota_t removed = cleared(qbobj_clear_Quota);
    removed.ShareId = "pics";
    qbobj_Quota_t set = cleared(qbobj_clear_Quota);
    set.ShareId = "docs";
    set.HardMB = 100;
    removed._link = &set;
    qbobj_User_t user = change();
    user.UserQuota = &removed;
    EXPECT_OK(modify(user));
    // A change divides the soft limit by 100, which a creation does not.
    EXPECT_EQ((std::vector<std::string>{"100|8|90|100", "101|8|1|2"}),
              rows("SELECT user_id,share_id,mb_soft,mb_hard FROM user_quota ORDER BY user_id"));

    set.ShareId = "none";
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, modify(user));
    EXPECT_EQ(0U, std::string(err.msg).find("Failed DB Query for 'UPDATE user_quota. "));
}

TEST_F(UserModify, HidesTheSnapshotFolderButNeverMovesIt)
{
    sql("INSERT INTO `$home_folder` VALUES (100,0,0,'old')");
    qbobj_UserHomeFolderSettings_t home = cleared(qbobj_clear_UserHomeFolderSettings);
    home.SizeLimit = 7;
    home.SnapshotProtectionEnabled = 1;
    home.VisibleSnapFolder = "new";
    qbobj_User_t user = change();
    user.HomeFolderSettings = &home;
    home.VisibleSnapshot = 1;
    EXPECT_OK(modify(user));
    EXPECT_EQ(std::vector<std::string>{"100|1|7|old"}, rows("SELECT * FROM `$home_folder`"));
    home.VisibleSnapshot = 0;
    EXPECT_OK(modify(user));
    EXPECT_EQ(std::vector<std::string>{"100|1|7|"}, rows("SELECT * FROM `$home_folder`"));

    EXPECT_OK(qbobj_modifyUserVisibleSnapFolder(qbdb, db, 100, "it's", &err));
    EXPECT_EQ("it's", value("SELECT visible_snapdir FROM `$home_folder`"));
    EXPECT_OK(qbobj_modifyUserVisibleSnapFolder(qbdb, db, 100, nullptr, &err));
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
    } cases[] = {
        {"first", "", 0, 1, 0, "96:0 100:1", "1|data|900"},
        {"first is not enabled", "", 0, 0, 0, "96:0", "0|NULL|0"},
        {"removal while off", "", 0, 1, 1, "96:0 100:1", "1|data|900"},
        {"already on", "", 1, 1, 0, "96:0 100:1", "1|NULL|0"},
        {"last", "", 1, 1, 1, "96:0", "0|data|900"},
        {"last, not enabled", "", 1, 0, 1, "96:0", "0|data|900"},
        {"another is left", "INSERT INTO `$timemachine_quota` VALUES (101,1,5)", 1, 1, 1, "96:0 101:1",
         "1|NULL|0"},
        {"only disabled ones are left", "INSERT INTO `$timemachine_quota` VALUES (101,0,5)", 1, 1, 1, "96:0",
         "0|data|900"},
        {"the shared area is in use", "UPDATE `$timemachine_quota` SET enabled=1", 1, 1, 1, "96:1",
         "1|NULL|0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        sql("DELETE FROM `$timemachine_quota`;INSERT INTO `$timemachine_quota` VALUES (96,0,900);"
            "UPDATE service_afp SET volume_timemachine=NULL,vol_size_limit_timemachine_mb=0,"
            "timemachine_enabled=" +
            std::to_string(c.on));
        sql(c.prepare);
        qbobj_UserTimeMachineQuota_t quota = cleared(qbobj_clear_UserTimeMachineQuota);
        quota.Enabled = c.enabled;
        quota.Delete = c.remove;
        qbobj_User_t user = change();
        user.TimeMachineQuota = &quota;
        EXPECT_OK(modify(user));
        EXPECT_EQ(c.quotas, value("SELECT GROUP_CONCAT(user_id||':'||enabled,' ') FROM "
                                  "(SELECT * FROM `$timemachine_quota` ORDER BY user_id)"));
        EXPECT_EQ(c.service, rows("SELECT timemachine_enabled,volume_timemachine,"
                                  "vol_size_limit_timemachine_mb FROM service_afp")
                                 .front());
    }
}

TEST_F(UserModify, SetsThePrimaryGroupOfTheAccountsInUse)
{
    sql("INSERT INTO `$group` (id,gname,rid) VALUES (200,'staff',NULL),(-200,'staff',5)");
    sql("INSERT INTO `$user` (id,uname,group_id,rid) VALUES (-7,'anna',-1,70)");
    EXPECT_OK(qbobj_setPrimaryGroupByName(qbdb, db, "anna", "staff", &err));
    EXPECT_EQ("200", anna("group_id"));
    EXPECT_OK(qbobj_setPrimaryGroupByName(qbdb, db, "nobody here", "staff", &err));
    // A group that is not there leaves the user without one.
    EXPECT_OK(qbobj_setPrimaryGroupByName(qbdb, db, "anna", "x' OR '1", &err));
    EXPECT_EQ("NULL", anna("group_id"));
    EXPECT_EQ("-1", value("SELECT group_id FROM `$user` WHERE id=-7"));

    join_directory();
    EXPECT_OK(qbobj_setPrimaryGroupByName(qbdb, db, "anna", "staff", &err));
    EXPECT_EQ("-200", value("SELECT group_id FROM `$user` WHERE id=-7"));
    EXPECT_EQ("NULL", anna("group_id"));
}

TEST_F(UserModify, LocksAndUnlocksHashesOfOrdinaryLocalUsersOnly)
{
    sql("INSERT INTO `$user` (id,uname,passwd,group_id,is_privileged,rid) VALUES "
        "(102,'cloudy','$1$x',98,0,NULL),(103,'far','$1$x',99,0,5),(104,'system','$1$x',99,1,NULL),"
        "(105,'odd','secret',99,0,NULL),(106,'cleo','$6$x',99,0,NULL)");
    const auto passwords = [this] {
        return value(
            "SELECT GROUP_CONCAT(passwd,' ') FROM (SELECT * FROM `$user` WHERE id>=100 ORDER BY id)");
    };
    const struct {
        int enable;
        const char *name;
        const char *anna_then;
        const char *cleo_then;
    } steps[] = {
        {1, nullptr, "$1$abcdefgh$anna", "$6$x"},   {0, "ANNA", "!$1$abcdefgh$anna", "$6$x"},
        {0, "anna", "!$1$abcdefgh$anna", "$6$x"},   {0, "' OR '1", "!$1$abcdefgh$anna", "$6$x"},
        {0, nullptr, "!$1$abcdefgh$anna", "!$6$x"}, {1, "cleo", "!$1$abcdefgh$anna", "$6$x"},
        {1, nullptr, "$1$abcdefgh$anna", "$6$x"},
    };
    for (const auto &step : steps) {
        EXPECT_OK(qbobj_disableEnableLocalUserByName(qbdb, db, step.enable, step.name, &err));
        EXPECT_EQ(std::string(step.anna_then) + "  $1$x $1$x $1$x secret " + step.cleo_then, passwords());
    }
}

} // namespace
