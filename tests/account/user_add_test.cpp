// Users created one by one and inserted in bulk.
#include "database.h"

#include <ctime>
#include <deque>
#include <functional>
#include <string>

using namespace qbobj_test;

namespace
{

const std::string day = "STRFTIME('%s','now')/86400";

qbobj_User_t new_user(const char *name)
{
    qbobj_User_t user = cleared(qbobj_clear_User);
    user.UserName = name;
    return user;
}

// Users "u0", "u1", ... in one chain.
struct Crowd {
    explicit Crowd(int size)
    {
        for (int i = 0; i < size; ++i) {
            names.push_back("u" + std::to_string(i));
            users.push_back(new_user(names.back().c_str()));
            users.back().Password = "";
            users.back().Email = "";
            if (i > 0)
                users[static_cast<std::size_t>(i) - 1]._link = &users.back();
        }
    }
    std::deque<std::string> names;
    std::deque<qbobj_User_t> users;
};

class UserAdd : public Database
{
  protected:
    int add(qbobj_User_t &user) { return qbobj_addUser(qbdb, db, &user, &err); }
    std::string of(const char *name, const std::string &columns) const
    {
        const auto found = rows("SELECT " + columns + " FROM `$user` WHERE uname='" + name + "'");
        return found.empty() ? "" : found.front();
    }
    void add_share() const
    {
        sql("INSERT INTO share (id,zfs_name,name,volume_id,path) VALUES "
            "(7,'pics','pics','data','/data/pics')");
    }
    // Processor seconds of a call.
    static double cost(const std::function<void()> &call)
    {
        const std::clock_t start = std::clock();
        call();
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    }
};

TEST_F(UserAdd, StoresTheUserAndTheDefaultSettings)
{
    sql("UPDATE account_default SET snapshot_protection=1,home_folder_capacity_limit=500");
    qbobj_User_t user = new_user("anna");
    user.Email = "anna@example.org";
    user.IsLocked = 1;
    EXPECT_OK(add(user));
    EXPECT_EQ(100, user.UserId);
    EXPECT_EQ(100, user.resource_id);
    EXPECT_STREQ("/home/anna", user.HomeDirectory);
    EXPECT_EQ("100||anna@example.org|/home/anna|99|/bin/false|0|1|1|NULL",
              of("anna",
                 "id,passwd,email,home,group_id,shell,is_privileged,last_changed=" + day + ",is_locked,rid"));
    EXPECT_EQ(std::vector<std::string>{"100|1|500|"}, rows("SELECT * FROM `$home_folder`"));
    EXPECT_EQ("", value("SELECT enabled FROM `$timemachine_quota` WHERE user_id=100"));
    EXPECT_EQ("101", value("SELECT next_uid FROM account_default"));
}

TEST_F(UserAdd, StoresTheSettingsThatAreGiven)
{
    add_share();
    sql("UPDATE account_default SET diskquota_warn=90");
    qbobj_Quota_t quota = cleared(qbobj_clear_Quota);
    quota.ShareId = "pics";
    quota.HardMB = 5000000000;
    qbobj_UserHomeFolderSettings_t home = cleared(qbobj_clear_UserHomeFolderSettings);
    home.SizeLimit = 0x100000000;
    home.VisibleSnapshot = 1;
    home.VisibleSnapFolder = "it's";
    qbobj_UserTimeMachineQuota_t time_machine = cleared(qbobj_clear_UserTimeMachineQuota);
    time_machine.Enabled = 1;
    time_machine.CapacityMB = 70;
    qbobj_User_t user = new_user("anna");
    user.UserQuota = &quota;
    user.HomeFolderSettings = &home;
    user.TimeMachineQuota = &time_machine;
    EXPECT_OK(add(user));
    // A new user's soft limit is not divided by 100.
    EXPECT_EQ(std::vector<std::string>{"100|7|450000000000|5000000000"},
              rows("SELECT user_id,share_id,mb_soft,mb_hard FROM user_quota"));
    EXPECT_EQ(std::vector<std::string>{"100|0|4294967296|it's"}, rows("SELECT * FROM `$home_folder`"));
    EXPECT_EQ(std::vector<std::string>{"100|1|70"},
              rows("SELECT * FROM `$timemachine_quota` WHERE user_id<>96"));

    qbobj_User_t other = new_user("bert");
    home.VisibleSnapshot = 0;
    time_machine.Enabled = 0;
    other.HomeFolderSettings = &home;
    other.TimeMachineQuota = &time_machine;
    EXPECT_OK(add(other));
    EXPECT_EQ("", value("SELECT visible_snapdir FROM `$home_folder` WHERE user_id=101"));
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$timemachine_quota` WHERE user_id<>96"));
}

TEST_F(UserAdd, EncodesAPasswordButTakesAHashAsItIs)
{
    qbobj_User_t plain = new_user("anna");
    plain.Password = "secret";
    qbobj_User_t hashed = new_user("bert");
    hashed.Password = "ignored";
    hashed.SysHash = "$1$it's');DROP TABLE share;--";
    plain._link = &hashed;
    EXPECT_OK(add(plain));
    EXPECT_EQ("$1$|34", of("anna", "substr(passwd,1,3),length(passwd)"));
    EXPECT_EQ(hashed.SysHash, of("bert", "passwd"));
}

TEST_F(UserAdd, PutsTheHomeOnTheVolumeThatIsGiven)
{
    qbobj_User_t user = new_user("anna");
    const std::string volume = value("SELECT id FROM _volume WHERE lv_name='backup'");
    user.HomeVolumeId = volume.c_str();
    EXPECT_OK(add(user));
    EXPECT_STREQ("/backup/home/anna", user.HomeDirectory);
}

TEST_F(UserAdd, AUserWithoutGroupFollowsTheOneBefore)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff')");
    qbobj_User_t first = new_user("anna");
    qbobj_User_t second = new_user("bert");
    qbobj_User_t third = new_user("cleo");
    first._link = &second;
    second._link = &third;
    second.GroupName = "staff";
    EXPECT_OK(add(first));
    EXPECT_EQ("99", of("anna", "group_id"));
    EXPECT_EQ("200", of("bert", "group_id"));
    EXPECT_EQ("200", of("cleo", "group_id"));
}

TEST_F(UserAdd, RefusesWhatIsWrongAndKeepsNothingOfTheChain)
{
    add_share();
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES (300,'taken',99),(301,'cloudy',98)");
    struct Case {
        std::function<void(qbobj_User_t &)> spoil;
        qbobj_error_t code;
        const char *message;
    };
    const std::string long_name(32, 'a');
    const std::string long_message = "UserName (" + long_name + ") is too long";
    const Case cases[] = {
        {[](auto &u) { u.UserName = nullptr; }, QBOBJ_ERROR_API_ARGS, "UserName is required for 'add'"},
        {[](auto &u) { u.UserName = ""; }, QBOBJ_ERROR_API_ARGS, "UserName is required for 'add'"},
        {[](auto &u) { u.UserName = "-x"; }, QBOBJ_ERROR_API_ARGS, "Invalid UserName (-x), rc=1"},
        {[](auto &u) { u.UserName = "a b"; }, QBOBJ_ERROR_API_ARGS, "Invalid UserName (a b), rc=2"},
        {[&](auto &u) { u.UserName = long_name.c_str(); }, QBOBJ_ERROR_UI__NAME_TOO_LONG,
         long_message.c_str()},
        {[](auto &u) { u.UserName = "usb_1"; }, QBOBJ_ERROR_UI__USERNAME_RESERVED,
         "UserName (usb_1) is reserved"},
        {[](auto &u) { u.UserName = "Home"; }, QBOBJ_ERROR_UI__USERNAME_RESERVED,
         "UserName (Home) is reserved"},
        {[](auto &u) { u.Email = "nobody"; }, QBOBJ_ERROR_API_ARGS, "Invalid Email (nobody) rc=8"},
        {[](auto &u) { u.GroupName = "no'ne"; }, QBOBJ_ERROR_API_ARGS, "Invalid GroupName (no'ne)"},
        {[](auto &u) { u.HomeVolumeId = "none"; }, QBOBJ_ERROR_API_ARGS,
         "Invalid HomeVolume or default home volume not exists"},
        {[](auto &u) { u.UserName = "Taken"; }, QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS,
         "User (Taken) already exists."},
        {[](auto &u) { u.UserName = "cloudy"; }, QBOBJ_ERROR_UI__USERNAME_IS_SAME_AS_REMOTE_USERNAME,
         "Username (cloudy) is the same as existing remote username."},
        {[](auto &u) { u.UserId = 99; }, QBOBJ_ERROR_API_ARGS,
         "UserId=99 is out of valid range (100-32767)."},
        {[](auto &u) { u.UserId = 32768; }, QBOBJ_ERROR_API_ARGS,
         "UserId=32768 is out of valid range (100-32767)."},
        {[](auto &u) { u.UserId = 300; }, QBOBJ_ERROR_UI__UID_ALREADY_EXISTS, "UserId (300) already exists."},
    };
    const std::string before = content();
    for (const Case &c : cases) {
        SCOPED_TRACE(c.message);
        qbobj_User_t good = new_user("anna");
        qbobj_User_t bad = new_user("bert");
        good._link = &bad;
        c.spoil(bad);
        EXPECT_FAILS(add(good), c.code, c.message);
        EXPECT_EQ(before, content());
    }
}

TEST_F(UserAdd, AQuotaOnAnUnknownShareNamesTheStatement)
{
    qbobj_Quota_t quota = cleared(qbobj_clear_Quota);
    quota.ShareId = "x' OR '1";
    qbobj_User_t user = new_user("anna");
    user.UserQuota = &quota;
    const std::string before = content();
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, add(user));
    EXPECT_EQ(0U, std::string(err.msg).find("Failed DB Query for 'INSERT user_quota'. NOT NULL"));
    EXPECT_STREQ("qbobj_api2_add_user", err.file);
    EXPECT_EQ(before, content());
}

TEST_F(UserAdd, AcceptsBothEndsOfTheRangeOfIds)
{
    for (const int id : {100, 32767}) {
        qbobj_User_t user = new_user(id == 100 ? "low" : "high");
        user.UserId = id;
        EXPECT_OK(add(user));
        EXPECT_EQ(id, user.resource_id);
    }
    EXPECT_EQ("100", value("SELECT next_uid FROM account_default"));
}

TEST_F(UserAdd, ChoosesTheFirstFreeIdFromTheMarkOn)
{
    const std::string none = "no id";
    const struct {
        int mark;
        const char *taken; // the ids in use
        std::string chosen;
        const char *next_mark;
    } cases[] = {
        {150, "150,151,153", "152", "153"}, {150, "100", "150", "151"},
        {150, "151", "150", "151"},         {32767, "100", "32767", "32768"},
        {32766, "32766", "32767", "32768"}, {32767, "32767", none, "32767"},
        {32768, "100", none, "32768"},      {99, "100", none, "99"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::to_string(c.mark) + " with " + c.taken + " taken");
        sql("DELETE FROM `$user` WHERE id>97;DELETE FROM `$home_folder`;"
            "UPDATE account_default SET next_uid=" +
            std::to_string(c.mark));
        std::string ids = c.taken;
        for (std::size_t comma = 0; (comma = ids.find(',', comma)) != ids.npos; comma += 3)
            ids.replace(comma, 1, "),(");
        sql("CREATE TEMP TABLE ids (id); INSERT INTO ids VALUES (" + ids +
            "); INSERT INTO `$user` (id,uname) SELECT id,'t'||id FROM ids; DROP TABLE ids");
        qbobj_User_t user = new_user("anna");
        if (c.chosen == none)
            EXPECT_FAILS(add(user), QBOBJ_ERROR_DB_MISC, "Could not get next available uid. ");
        else
            EXPECT_OK(add(user));
        EXPECT_EQ(c.chosen == none ? "" : c.chosen, of("anna", "id"));
        EXPECT_EQ(c.next_mark, value("SELECT next_uid FROM account_default"));
    }
}

TEST_F(UserAdd, FindsAnIdBehindThousandsInARowAtOnce)
{
    sql("INSERT INTO `$user` (id,uname) WITH RECURSIVE n(id) AS (SELECT 100 UNION ALL SELECT id+1 FROM n "
        "WHERE id<30099) SELECT id,'t'||id FROM n");
    qbobj_User_t user = new_user("anna");
    EXPECT_LT(cost([&] { EXPECT_OK(add(user)); }), 0.5);
    EXPECT_EQ(30100, user.UserId);
}

TEST_F(UserAdd, GrowsInAStraightLineWithTheChain)
{
    Crowd few(1000);
    Crowd many(10000);
    const double small = cost([&] { EXPECT_OK(add(few.users.front())); });
    sql("DELETE FROM `$user` WHERE id>97;DELETE FROM `$home_folder`");
    const double large = cost([&] { EXPECT_OK(add(many.users.front())); });
    EXPECT_EQ("10000", value("SELECT COUNT(*) FROM `$home_folder`"));
    EXPECT_LT(large, 25 * small + 0.1);
}

class UserAddList : public UserAdd
{
  protected:
    int add_list(qbobj_User_t &user) { return qbobj_addUserList(qbdb, db, &user, &err); }
};

TEST_F(UserAddList, InsertsPreparedUsersAboveTheHighestId)
{
    sql("INSERT INTO `$group` (id,gname) VALUES (200,'staff')");
    sql("INSERT INTO `$user` (id,uname,rid,is_privileged) VALUES (140,'local',NULL,0),(150,'far',1,0),"
        "(160,'system',NULL,1),(170,'gone',NULL,-1)");
    qbobj_User_t first = new_user("anna");
    first.Password = "$1$stored";
    first.Email = "a@example.org";
    first.GroupName = "staff";
    qbobj_User_t second = new_user("bert");
    first._link = &second;
    EXPECT_OK(add_list(first));
    EXPECT_EQ(141, first.UserId);
    EXPECT_EQ(142, second.resource_id);
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
    qbobj_User_t first = new_user("anna");
    EXPECT_OK(add_list(first));
    EXPECT_EQ(100, first.UserId);
    EXPECT_EQ("99", of("anna", "group_id"));

    sql("UPDATE `$user` SET id=32766 WHERE id=100");
    qbobj_User_t last = new_user("bert");
    EXPECT_OK(add_list(last));
    EXPECT_EQ(32767, last.UserId);
    qbobj_User_t beyond = new_user("cleo");
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, add_list(beyond));
    EXPECT_EQ(0U, std::string(err.msg).find("Failed DB Query for 'INSERT user'. "));
}

TEST_F(UserAddList, AnUnknownGroupUndoesTheWholeList)
{
    qbobj_User_t first = new_user("anna");
    qbobj_User_t second = new_user("bert");
    first._link = &second;
    second.GroupName = "nowhere";
    const std::string before = content();
    EXPECT_FAILS(add_list(first), QBOBJ_ERROR_API_ARGS, "Invalid GroupName (nowhere)");
    EXPECT_EQ(before, content());
}

TEST_F(UserAddList, GrowsInAStraightLineWithTheList)
{
    Crowd few(1000);
    Crowd many(10000);
    const double small = cost([&] { EXPECT_OK(add_list(few.users.front())); });
    sql("DELETE FROM `$user` WHERE id>97");
    const double large = cost([&] { EXPECT_OK(add_list(many.users.front())); });
    EXPECT_EQ(10099, many.users.back().UserId);
    EXPECT_LT(large, 25 * small + 0.1);
}

} // namespace
