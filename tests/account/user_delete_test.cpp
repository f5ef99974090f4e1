// Users deleted.
#include "accounts.h"

namespace
{

using namespace qbobj_test;
using User = qbobj_User_t;

// "anna", user 100, and "bert", user 101, each with a row in every table that refers to users.
class UserDelete : public Accounts
{
  protected:
    UserDelete()
    {
        add_shares();
        sql("INSERT INTO `$user` (id,uname,home,group_id) VALUES "
            "(100,'anna','/home/anna',99),(101,'bert','/home/bert',99);"
            "CREATE TEMP VIEW new AS SELECT id,uname,home FROM `$user` WHERE id>=100;"
            "INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) SELECT id,5,1,2 FROM new;"
            "INSERT INTO user_acl (share_id,user_id,proto) SELECT 5,id,'cifs' FROM new;"
            "INSERT INTO _user_quota_stat (share_id,user_id,mb_used) SELECT 5,id,1 FROM new;"
            "INSERT INTO `$home_folder` (user_id) SELECT id FROM new;"
            "INSERT INTO `$timemachine_quota` SELECT id,1,5 FROM new;"
            "INSERT INTO `$group_has_user` (user_id,group_id) SELECT id,99 FROM new;"
            "INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name) SELECT uname,home,'s' FROM new;"
            "DROP VIEW new; UPDATE service_afp SET timemachine_enabled=1");
    }
    // How many rows refer to the user, and the user's mark.
    std::string traces(int id) const
    {
        std::string counts;
        for (const char *table : {"user_quota", "user_acl", "_user_quota_stat", "`$home_folder`",
                                  "`$timemachine_quota`", "`$group_has_user`"})
            counts +=
                value(std::string("SELECT COUNT(*) FROM ") + table + " WHERE user_id=" + std::to_string(id));
        return counts + rows("SELECT (SELECT COUNT(*) FROM `$home_folder_snapshot` WHERE user_name=uname),"
                             "is_privileged FROM `$user` WHERE id=" +
                             std::to_string(id))
                            .front();
    }
};

TEST_F(UserDelete, ClearsWhatRefersToTheUserAndMarksTheRow)
{
    User user{.UserId = 100};
    EXPECT_OK(run(qbobj_deleteUser, user));
    EXPECT_EQ("anna|/home/anna|/home/anna", line({user.UserName, user.HomeDirectory, user.OldHomeDirectory}));
    EXPECT_EQ("0000000|-1", traces(100));
    EXPECT_EQ("1111111|0", traces(101));
    EXPECT_EQ("1", value("SELECT timemachine_enabled FROM service_afp"));

    qbobj_UserCollection_t listed{};
    EXPECT_OK(call(qbobj_getUserCollection, &listed, nullptr, 0));
    EXPECT_EQ(1, listed.Entries);
}

TEST_F(UserDelete, ByNameFindsTheAccountsInUse)
{
    User user{.UserName = "Anna"};
    EXPECT_OK(run(qbobj_deleteUserByName, user));
    EXPECT_STREQ("/home/anna", user.OldHomeDirectory);
    EXPECT_EQ("0000000|-1", traces(100));

    for (const char *name : {static_cast<const char *>(nullptr), "x' OR '1"})
        refused(qbobj_deleteUserByName, {.UserId = 100, .UserName = name}, bad_args,
                "Invalid resource_id (0). Not exist.");
    join_directory();
    refused(qbobj_deleteUserByName, {.resource_id = 101, .UserName = "bert"}, bad_args,
            "Invalid resource_id (101). Not exist.");
}

TEST_F(UserDelete, SwitchesTimeMachineOffWithItsLastUser)
{
    const char *const cases[][2] = {
        {"UPDATE `$timemachine_quota` SET enabled=1 WHERE user_id=96", "1"},
        {"UPDATE `$timemachine_quota` SET enabled=0 WHERE user_id=96", "0"},
        {"DELETE FROM `$timemachine_quota`; INSERT INTO `$timemachine_quota` VALUES (300,1,5)", "0"}};
    for (const auto &[shared_area, enabled_then] : cases) {
        sql("UPDATE `$user` SET is_privileged=0 WHERE id>=100; UPDATE service_afp SET timemachine_enabled=1");
        sql(shared_area);
        User last{.UserId = 101};
        User first{._link = &last, .UserId = 100};
        EXPECT_OK(run(qbobj_deleteUser, first));
        EXPECT_EQ(enabled_then, value("SELECT timemachine_enabled FROM service_afp"));
        EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$timemachine_quota`"));
    }
}

// The deletion ends early but counts as a success.
TEST_F(UserDelete, AFailingSwitchLeavesTheUserUnmarked)
{
    sql("DELETE FROM `$timemachine_quota` WHERE user_id=101;"
        "CREATE TRIGGER refuse BEFORE UPDATE ON service_afp BEGIN SELECT RAISE(ABORT,'no'); END");
    User user{.UserId = 100};
    EXPECT_EQ(0, run(qbobj_deleteUser, user));
    EXPECT_EQ(db_failed, err.ec);
    EXPECT_STREQ("Failed DB Query for 'UPDATE service_afp'. no", err.msg);
    EXPECT_EQ("0000011|0", traces(100));
    EXPECT_STREQ("anna", user.UserName);
}

TEST_F(UserDelete, AnUnknownUserUndoesTheChain)
{
    for (const auto &[id, message] :
         {std::pair{0, "Invalid resource_id (0)"}, std::pair{-3, "Invalid resource_id (-3)"},
          std::pair{4711, "Invalid resource_id (4711). Not exist."}}) {
        User bad{.UserId = id};
        refused(qbobj_deleteUser, {._link = &bad, .UserId = 100}, bad_args, message);
    }
}

} // namespace
