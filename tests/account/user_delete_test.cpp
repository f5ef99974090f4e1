// Users deleted.
#include "database.h"

#include <string>

using namespace qbobj_test;

namespace
{

// "anna", user 100, and "bert", user 101, each with a row in every table that refers to users.
class UserDelete : public Database
{
  protected:
    UserDelete()
    {
        sql("INSERT INTO share (id,zfs_name,name,volume_id,path) VALUES "
            "(7,'pics','pics','data','/data/pics')");
        for (const char *user : {"100,'anna'", "101,'bert'"})
            sql(std::string("CREATE TEMP TABLE new (id,uname); INSERT INTO new VALUES (") + user +
                "); INSERT INTO `$user` (id,uname,home,group_id) SELECT id,uname,'/home/'||uname,99 FROM new;"
                "INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) SELECT id,7,1,2 FROM new;"
                "INSERT INTO user_acl (share_id,user_id,proto) SELECT 7,id,'cifs' FROM new;"
                "INSERT INTO _user_quota_stat (share_id,user_id,mb_used) SELECT 7,id,1 FROM new;"
                "INSERT INTO `$home_folder` (user_id) SELECT id FROM new;"
                "INSERT INTO `$timemachine_quota` SELECT id,1,5 FROM new;"
                "INSERT INTO `$group_has_user` SELECT id,99 FROM new;"
                "INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) "
                "SELECT uname,'/home/'||uname,'s' FROM new; DROP TABLE new");
        sql("UPDATE service_afp SET timemachine_enabled=1");
    }

    // How many rows refer to the user.
    std::string traces(int id) const
    {
        const std::string user = "user_id=" + std::to_string(id);
        return value("SELECT (SELECT COUNT(*) FROM user_quota WHERE " + user +
                     ")||(SELECT COUNT(*) FROM user_acl WHERE " + user +
                     ")||(SELECT COUNT(*) FROM _user_quota_stat WHERE " + user +
                     ")||(SELECT COUNT(*) FROM `$home_folder` WHERE " + user +
                     ")||(SELECT COUNT(*) FROM `$timemachine_quota` WHERE " + user +
                     ")||' '||(SELECT COUNT(*) FROM `$group_has_user` WHERE " + user +
                     ")||(SELECT COUNT(*) FROM `$home_folder_snapshot` WHERE user_name=(SELECT uname FROM "
                     "`$user` WHERE id=" +
                     std::to_string(id) + "))");
    }
    std::string mark(int id) const
    {
        return value("SELECT is_privileged FROM `$user` WHERE id=" + std::to_string(id));
    }
    static qbobj_User_t user_of(int id, const char *name = nullptr)
    {
        qbobj_User_t user = cleared(qbobj_clear_User);
        user.UserId = id;
        user.UserName = name;
        return user;
    }
};

TEST_F(UserDelete, ClearsWhatRefersToTheUserAndMarksTheRow)
{
    qbobj_User_t user = user_of(100);
    EXPECT_OK(qbobj_deleteUser(qbdb, db, &user, &err));
    EXPECT_STREQ("anna", user.UserName);
    EXPECT_STREQ("/home/anna", user.HomeDirectory);
    EXPECT_STREQ("/home/anna", user.OldHomeDirectory);
    EXPECT_EQ("00000 00", traces(100));
    EXPECT_EQ("-1", mark(100));
    EXPECT_EQ("11111 11", traces(101));
    EXPECT_EQ("0", mark(101));
    EXPECT_EQ("1", value("SELECT timemachine_enabled FROM service_afp"));

    qbobj_UserCollection_t listed{};
    EXPECT_OK(qbobj_getUserCollection(qbdb, db, &listed, nullptr, 0, &err));
    EXPECT_EQ(1, listed.Entries);
}

TEST_F(UserDelete, ByNameFindsTheAccountsInUse)
{
    qbobj_User_t user = user_of(0, "Anna");
    EXPECT_OK(qbobj_deleteUserByName(qbdb, db, &user, &err));
    EXPECT_STREQ("/home/anna", user.OldHomeDirectory);
    EXPECT_EQ("00000 00", traces(100));
    EXPECT_EQ("-1", mark(100));

    join_directory();
    const std::string before = content();
    qbobj_User_t local = user_of(0, "bert");
    local.resource_id = 101;
    EXPECT_FAILS(qbobj_deleteUserByName(qbdb, db, &local, &err), QBOBJ_ERROR_API_ARGS,
                 "Invalid resource_id (101). Not exist.");
    EXPECT_EQ(before, content());
}

TEST_F(UserDelete, SwitchesTimeMachineOffWithItsLastUser)
{
    const struct {
        const char *shared_area;
        const char *enabled_then;
    } cases[] = {
        {"UPDATE `$timemachine_quota` SET enabled=1 WHERE user_id=96", "1"},
        {"UPDATE `$timemachine_quota` SET enabled=0 WHERE user_id=96", "0"},
    };
    for (const auto &c : cases) {
        sql("UPDATE `$user` SET is_privileged=0 WHERE id>=100; UPDATE service_afp SET timemachine_enabled=1");
        sql(c.shared_area);
        qbobj_User_t first = user_of(100);
        qbobj_User_t last = user_of(101);
        first._link = &last;
        EXPECT_OK(qbobj_deleteUser(qbdb, db, &first, &err));
        EXPECT_EQ(c.enabled_then, value("SELECT timemachine_enabled FROM service_afp"));
        EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$timemachine_quota`"));
    }
}

TEST_F(UserDelete, SwitchesTimeMachineOffWhenTheSharedAreaHasNoRow)
{
    sql("DELETE FROM `$timemachine_quota` WHERE user_id=96");
    qbobj_User_t user = user_of(100);
    EXPECT_OK(qbobj_deleteUser(qbdb, db, &user, &err));
    EXPECT_EQ("0", value("SELECT timemachine_enabled FROM service_afp"));
}

// The deletion ends early but counts as a success.
TEST_F(UserDelete, AFailingSwitchLeavesTheUserUnmarked)
{
    sql("DELETE FROM `$timemachine_quota` WHERE user_id=101");
    sql("CREATE TRIGGER refuse BEFORE UPDATE ON service_afp BEGIN SELECT RAISE(ABORT,'no'); END");
    qbobj_User_t user = user_of(100);
    EXPECT_EQ(0, qbobj_deleteUser(qbdb, db, &user, &err));
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
    EXPECT_STREQ("Failed DB Query for 'UPDATE service_afp'. no", err.msg);
    EXPECT_EQ("00000 11", traces(100));
    EXPECT_EQ("0", mark(100));
    EXPECT_STREQ("anna", user.UserName);
}

TEST_F(UserDelete, NamesTheStatementThatFails)
{
    const struct {
        const char *table;
        const char *event;
        const char *message;
    } cases[] = {
        {"user_quota", "DELETE", "Failed DELETE user_quota. no"},
        {"user_acl", "DELETE", "Failed DELETE user_acl. no"},
        {"_user_quota_stat", "DELETE", "Failed DELETE _user_quota_stat. no"},
        {"$home_folder", "DELETE", "Failed DELETE $home_folder. no"},
        {"$timemachine_quota", "DELETE", "Failed DELETE $timemachine_quota. no"},
        {"$group_has_user", "DELETE", "Failed DELETE group_has_user. no"},
        {"$home_folder_snapshot", "DELETE", "Failed DELETE $home_folder_snapshot. no"},
        {"$user", "UPDATE", "Failed DB Query for 'UPDATE user'. no"},
    };
    const std::string before = content();
    for (const auto &c : cases) {
        sql(std::string("CREATE TRIGGER refuse BEFORE ") + c.event + " ON `" + c.table +
            "` BEGIN SELECT RAISE(ABORT,'no'); END");
        qbobj_User_t user = user_of(100);
        EXPECT_FAILS(qbobj_deleteUser(qbdb, db, &user, &err), QBOBJ_ERROR_DB_MISC, c.message);
        sql("DROP TRIGGER refuse");
        EXPECT_EQ(before, content());
    }
}

TEST_F(UserDelete, AnUnknownUserUndoesTheChain)
{
    const struct {
        int id;
        const char *message;
    } cases[] = {
        {0, "Invalid resource_id (0)"},
        {-3, "Invalid resource_id (-3)"},
        {4711, "Invalid resource_id (4711). Not exist."},
    };
    const std::string before = content();
    for (const auto &c : cases) {
        qbobj_User_t good = user_of(100);
        qbobj_User_t bad = user_of(c.id);
        good._link = &bad;
        EXPECT_FAILS(qbobj_deleteUser(qbdb, db, &good, &err), QBOBJ_ERROR_API_ARGS, c.message);
        EXPECT_EQ(before, content());
    }
    for (const char *name : {static_cast<const char *>(nullptr), "x' OR '1"}) {
        qbobj_User_t user = user_of(100, name);
        EXPECT_FAILS(qbobj_deleteUserByName(qbdb, db, &user, &err), QBOBJ_ERROR_API_ARGS,
                     "Invalid resource_id (0). Not exist.");
        EXPECT_EQ(before, content());
    }
}

} // namespace
