// Users created one by one and inserted in bulk.
#include "accounts.h"

#include <ctime>

namespace
{

using namespace qbobj_test;
using User = qbobj_User_t;

class UserAdd : public Accounts
{
  protected:
    int add(User &user) { return run(qbobj_addUser, user); }
    int add_list(User &user) { return run(qbobj_addUserList, user); }
};
using UserAddList = UserAdd;

TEST_F(UserAdd, StoresTheUserAndTheDefaultSettings)
{
    sql("UPDATE account_default SET snapshot_protection=1,home_folder_capacity_limit=500");
    User user{.UserName = "anna", .Email = "anna@example.org", .IsLocked = 1};
    EXPECT_OK(add(user));
    EXPECT_EQ("100|100|", ids(user));
    EXPECT_STREQ("/home/anna", user.HomeDirectory);
    EXPECT_EQ("100||anna@example.org|/home/anna|99|/bin/false|0|1|1|NULL",
              of("anna", "id,passwd,email,home,group_id,shell,is_privileged,"
                         "last_changed=STRFTIME('%s','now')/86400,is_locked,rid"));
    EXPECT_EQ(Lines{"100|1|500|"}, rows("SELECT * FROM `$home_folder`"));
    EXPECT_EQ("", value("SELECT enabled FROM `$timemachine_quota` WHERE user_id=100"));
    EXPECT_EQ("101", value("SELECT next_uid FROM account_default"));
}

TEST_F(UserAdd, StoresTheSettingsThatAreGiven)
{
    add_shares();
    sql("UPDATE account_default SET diskquota_warn=90");
    qbobj_Quota_t quota{.ShareId = "data/photos", .HardMB = 5000000000};
    qbobj_UserHomeFolderSettings_t home{
        .SizeLimit = 0x100000000, .VisibleSnapshot = 1, .VisibleSnapFolder = "it's"};
    qbobj_UserTimeMachineQuota_t time_machine{.Enabled = 1, .CapacityMB = 70};
    User user{.UserName = "anna",
              .UserQuota = &quota,
              .TimeMachineQuota = &time_machine,
              .HomeFolderSettings = &home};
    EXPECT_OK(add(user));
    // A new user's soft limit is not divided by 100.
    EXPECT_EQ(Lines{"100|5|450000000000|5000000000"},
              rows("SELECT user_id,share_id,mb_soft,mb_hard FROM user_quota"));
    home.VisibleSnapshot = 0;
    time_machine.Enabled = 0;
    const std::string volume = value("SELECT id FROM _volume WHERE lv_name='backup'");
    User other{.UserName = "bert",
               .HomeVolumeId = volume.c_str(),
               .TimeMachineQuota = &time_machine,
               .HomeFolderSettings = &home};
    EXPECT_OK(add(other));
    EXPECT_STREQ("/backup/home/bert", other.HomeDirectory);
    EXPECT_EQ((Lines{"100|0|4294967296|it's", "101|0|4294967296|"}), rows("SELECT * FROM `$home_folder`"));
    EXPECT_EQ(Lines{"100|1|70"}, rows("SELECT * FROM `$timemachine_quota` WHERE user_id<>96"));
}

TEST_F(UserAdd, EncodesAPasswordButTakesAHashAsItIs)
{
    User hashed{.UserName = "bert", .Password = "ignored", .SysHash = "$1$it's');DROP TABLE share;--"};
    User plain{._link = &hashed, .UserName = "anna", .Password = "secret"};
    EXPECT_OK(add(plain));
    EXPECT_EQ("$1$|34", of("anna", "substr(passwd,1,3),length(passwd)"));
    EXPECT_EQ(hashed.SysHash, of("bert", "passwd"));
}

TEST_F(UserAdd, AUserWithoutGroupFollowsTheOneBefore)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff')");
    User third{.UserName = "cleo"};
    User second{._link = &third, .UserName = "bert", .GroupName = "staff"};
    User first{._link = &second, .UserName = "anna"};
    EXPECT_OK(add(first));
    EXPECT_EQ((Lines{"99", "200", "200"}), rows("SELECT group_id FROM `$user` WHERE id>=100 ORDER BY id"));
}

TEST_F(UserAdd, RefusesWhatIsWrongAndKeepsNothingOfTheChain)
{
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES (300,'taken',99),(301,'cloudy',98)");
    const std::string long_name(32, 'a');
    qbobj_Quota_t quota{.ShareId = "x' OR '1"};
    const Refusal<User> cases[] = {
        {{}, "UserName is required for 'add'"},
        {{.UserName = ""}, "UserName is required for 'add'"},
        {{.UserName = "-x"}, "Invalid UserName (-x), rc=1"},
        {{.UserName = "a b"}, "Invalid UserName (a b), rc=2"},
        {{.UserName = long_name.c_str()}, "UserName (" + long_name + ") is too long", too_long},
        {{.UserName = "usb_1"}, "UserName (usb_1) is reserved", reserved},
        {{.UserName = "Home"}, "UserName (Home) is reserved", reserved},
        {{.UserName = "bert", .Password = masked_password}, "Invalid Password (" + mask + ") rc=1"},
        {{.UserName = "bert", .Email = "nobody"}, "Invalid Email (nobody) rc=8"},
        {{.UserName = "bert", .GroupName = "no'ne"}, "Invalid GroupName (no'ne)"},
        {{.UserName = "bert", .HomeVolumeId = "none"},
         "Invalid HomeVolume or default home volume not exists"},
        {{.UserName = "Taken"}, "User (Taken) already exists.", name_taken},
        {{.UserName = "cloudy"},
         "Username (cloudy) is the same as existing remote username.",
         QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME},
        {{.UserId = 99, .UserName = "bert"}, "UserId=99 is out of valid range (100-32767)."},
        {{.UserId = 32768, .UserName = "bert"}, "UserId=32768 is out of valid range (100-32767)."},
        {{.UserId = 300, .UserName = "bert"},
         "UserId (300) already exists.",
         QBOBJ_ERROR_UI__UID_ALREADY_EXISTS},
        {{.UserName = "bert", .UserQuota = &quota},
         "Failed DB Query for 'INSERT user_quota'. NOT NULL constraint failed: user_quota.share_id",
         db_failed}};
    for (const auto &c : cases) {
        User bad = c.given;
        refused(qbobj_addUser, {._link = &bad, .UserName = "anna"}, c.code, c.message);
        EXPECT_STREQ("qbobj_api2_add_user", err.file);
    }
}

TEST_F(UserAdd, AcceptsBothEndsOfTheRangeOfIds)
{
    User high{.UserId = 32767, .UserName = "high"};
    User low{._link = &high, .UserId = 100, .UserName = "low"};
    EXPECT_OK(add(low));
    EXPECT_EQ("100|100|32767|32767|", ids(low) + ids(high));
    EXPECT_EQ("100", value("SELECT next_uid FROM account_default"));
}

TEST_F(UserAdd, ChoosesTheFirstFreeIdFromTheMarkOn)
{
    const struct {
        int mark;
        const char *taken;  // the ids in use
        const char *chosen; // null: no id
        const char *next_mark;
    } cases[] = {{150, "(150),(151),(153)", "152", "153"},
                 {150, "(100)", "150", "151"},
                 {150, "(151)", "150", "151"},
                 {32767, "(100)", "32767", "32768"},
                 {32766, "(32766)", "32767", "32768"},
                 {32767, "(32767)", nullptr, "32767"},
                 {32768, "(100)", nullptr, "32768"},
                 {99, "(100)", nullptr, "99"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(std::to_string(c.mark) + " with " + c.taken + " taken");
        sql("DELETE FROM `$user` WHERE id>97;DELETE FROM `$home_folder`;"
            "UPDATE account_default SET next_uid=" +
            std::to_string(c.mark) + ";WITH ids(id) AS (VALUES " + c.taken +
            ") INSERT INTO `$user` (id,uname) SELECT id,'t'||id FROM ids");
        User user{.UserName = "anna"};
        if (c.chosen == nullptr)
            EXPECT_FAILS(add(user), db_failed, "Could not get next available uid. ");
        else
            EXPECT_OK(add(user));
        EXPECT_EQ(c.chosen == nullptr ? "" : c.chosen, of("anna", "id"));
        EXPECT_EQ(c.next_mark, value("SELECT next_uid FROM account_default"));
    }
}

TEST_F(UserAdd, FindsAnIdBehindThousandsInARowAtOnce)
{
    sql("INSERT INTO `$user` (id,uname) WITH RECURSIVE n(id) AS (SELECT 100 UNION ALL SELECT id+1 FROM n "
        "WHERE id<30099) SELECT id,'t'||id FROM n");
    User user{.UserName = "anna"};
    const std::clock_t start = std::clock();
    EXPECT_OK(add(user));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 2);
    EXPECT_EQ(30100, user.UserId);
}

TEST_F(UserAddList, InsertsPreparedUsersAboveTheHighestId)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff');"
        "INSERT INTO `$user` (id,uname,rid,is_privileged) VALUES (140,'local',NULL,0),(150,'far',1,0),"
        "(160,'system',NULL,1),(170,'gone',NULL,-1)");
    User second{.UserName = "bert"};
    User first{._link = &second,
               .UserName = "anna",
               .GroupName = "staff",
               .Email = "a@example.org",
               .Password = "$1$stored"};
    EXPECT_OK(add_list(first));
    EXPECT_EQ("141|141|142|142|", ids(first) + ids(second));
    EXPECT_STREQ("/home", second.HomeDirectory);
    // last_changed of an import is not in days.
    EXPECT_EQ("$1$stored|a@example.org|/home|200|/bin/false|0|1",
              of("anna", "passwd,email,home,group_id,shell,is_privileged,"
                         "last_changed=STRFTIME('%s','now')/34560"));
    EXPECT_EQ("142|200", of("bert", "id,group_id"));
    EXPECT_EQ("100", value("SELECT next_uid FROM account_default"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM `$home_folder`"));
}

TEST_F(UserAddList, BeginsAt100AndEndsAt32767)
{
    User first{.UserName = "anna"};
    EXPECT_OK(add_list(first));
    EXPECT_EQ("100|99", of("anna", "id,group_id"));
    sql("UPDATE `$user` SET id=32766 WHERE id=100");
    User last{.UserName = "bert"};
    EXPECT_OK(add_list(last));
    EXPECT_EQ(32767, last.UserId);
    refused(qbobj_addUserList, {.UserName = "cleo"}, db_failed,
            "Failed DB Query for 'INSERT user'. UNIQUE constraint failed: $user.id");
}

TEST_F(UserAddList, AFaultUndoesTheWholeList)
{
    User nowhere{.UserName = "bert", .GroupName = "nowhere"};
    refused(qbobj_addUserList, {._link = &nowhere, .UserName = "anna"}, bad_args,
            "Invalid GroupName (nowhere)");
    User masked{.UserName = "bert", .Password = masked_password};
    refused(qbobj_addUserList, {._link = &masked, .UserName = "anna"}, bad_args,
            "Invalid Password (" + mask + ") rc=1");
}

} // namespace
