// Passwords and the administrator's recovery data.
#include "accounts.h"

namespace
{

using namespace qbobj_test;

class Password : public Accounts
{
  protected:
    Password() { sql("INSERT INTO `$user` (id,uname,passwd,group_id) VALUES (100,'anna','x',99)"); }
    std::string hash_of(const char *name) const { return of(name, "passwd"); }
    int set_admin(qbobj_AdminPassword_t passwd) { return run(qbobj_setAdminPassword, passwd); }
    int set_user(int id, const char *password)
    {
        qbobj_UserPassword_t passwd{.UserId = id, .Password = password};
        return run(qbobj_setUserPassword, passwd);
    }
    int set_my(const char *name, const char *old_password, const char *new_password)
    {
        qbobj_MyPassword_t passwd{.UserName = name, .OldPassword = old_password, .NewPassword = new_password};
        return run(qbobj_setMyPassword, passwd);
    }
};

TEST_F(Password, AdministratorAndSuperuserShareOne)
{
    EXPECT_OK(set_admin({.Password = "secret"}));
    EXPECT_EQ(0U, hash_of("admin").find("$1$"));
    EXPECT_EQ(hash_of("admin"), hash_of("root"));
    EXPECT_OK(set_my("admin", "secret", "new secret"));
    EXPECT_NE(hash_of("admin"), hash_of("root"));
}

TEST_F(Password, RecoveryDataIsReplacedAsAWholeOrNotAtAll)
{
    EXPECT_OK(set_admin({"secret", "Pet's name?", "Rex", "a@example.org"}));
    const auto recovery = [this] { return rows("SELECT question,answer,email FROM passwordrecovery"); };
    const Lines stored{"Pet's name?|Rex|a@example.org"};
    EXPECT_EQ(stored, recovery());
    EXPECT_OK(set_admin({"secret", nullptr, "no", "no"}));
    EXPECT_OK(set_admin({"secret", "no", nullptr, "no"}));
    EXPECT_OK(set_admin({"secret", "no", "no", nullptr}));
    EXPECT_EQ(stored, recovery());

    qbobj_AdminPassword_t read{};
    EXPECT_OK(run(qbobj_getAdminPassword, read));
    EXPECT_EQ(mask + "|Pet's name?|Rex|a@example.org",
              line({read.Password, read.Question, read.Answer, read.Email}));
    sql("UPDATE passwordrecovery SET question=NULL,answer=NULL,email=NULL");
    EXPECT_OK(run(qbobj_getAdminPassword, read));
    EXPECT_STREQ("", read.Answer);
    sql("DELETE FROM passwordrecovery");
    refused(qbobj_getAdminPassword, {}, db_failed,
            "DB may be corrupted? 'passwordrecovery' table is not populated.");
}

TEST_F(Password, RefusesWhatIsWrongAndChangesNothing)
{
    EXPECT_OK(set_user(100, "secret"));
    const std::string locked = "!" + hash_of("anna");
    sql("INSERT INTO `$user` (id,uname,passwd,group_id) VALUES (101,'bert',NULL,99),(102,'cleo','" + locked +
        "',99),(103,'dora','$1$abc',99),(104,'emil','',99)");
    const std::string endless(600, 'x');
    const std::pair<std::function<int()>, std::string> cases[] = {
        {[&] { return set_admin({}); }, "Admin password cannot be empty."},
        {[&] { return set_admin({.Password = ""}); }, "Admin password cannot be empty."},
        {[&] { return set_admin({.Password = endless.c_str()}); }, "Invalid Password."},
        {[&] { return set_user(100, nullptr); }, "Invalid Password. (null)."},
        {[&] { return set_user(100, endless.c_str()); }, "Invalid Password. " + endless + "."},
        {[&] { return set_my("anna", "wrong", "new"); }, "Bad Credential."},
        {[&] { return set_my("bert", "secret", "new"); }, "Bad Credential."},
        {[&] { return set_my("cleo", "secret", "new"); }, "Bad Credential."},
        {[&] { return set_my("dora", "secret", "new"); }, "Bad Credential."},
        {[&] { return set_my("emil", "secret", "new"); }, "Bad Credential."},
        {[&] { return set_my("none", "secret", "new"); }, "Invalid UserName."},
        {[&] { return set_my("x' OR '1", "secret", "new"); }, "Invalid UserName."},
        {[&] { return set_my("anna", "secret", endless.c_str()); }, "Invalid NewPassword."},
        {[&] { return set_my(nullptr, "secret", "new"); }, "My password cannot be empty."},
        {[&] { return set_my("anna", "", "new"); }, "My password cannot be empty."},
        {[&] { return set_my("anna", "secret", ""); }, "My password cannot be empty."},
        {[&] { return call(qbobj_setMyPassword, nullptr); }, "passwd cannot be NULL."}};
    const std::string before = content();
    for (const auto &[call, message] : cases) {
        SCOPED_TRACE(message);
        EXPECT_FAILS(call(), bad_args, message.c_str());
        EXPECT_EQ(before, content());
    }
}

TEST_F(Password, AUserProvesTheOldOneToSetANewOne)
{
    sql("UPDATE account_default SET disallow_password_change=1");
    EXPECT_OK(set_user(100, "p\xC3\xA4ss'wort"));
    const std::string first = hash_of("anna");
    EXPECT_OK(set_my("anna", "p\xC3\xA4ss'wort", "second"));
    EXPECT_NE(first, hash_of("anna"));
    EXPECT_FAILS(set_my("anna", "p\xC3\xA4ss'wort", "third"), bad_args, "Bad Credential.");
    EXPECT_OK(set_my("anna", "second", "third"));
}

TEST_F(Password, AnUnknownIdIsNoErrorAndAnEmptyPasswordIsNone)
{
    const std::string before = content();
    EXPECT_OK(set_user(4711, "secret"));
    EXPECT_EQ(before, content());
    EXPECT_OK(set_user(100, ""));
    EXPECT_EQ("", hash_of("anna"));
}

// Written back as it was read, it leaves the stored one.
TEST_F(Password, TheMaskIsNeverOne)
{
    EXPECT_OK(set_user(100, "secret"));
    EXPECT_OK(set_admin({.Password = "secret"}));
    const std::string before = content();
    EXPECT_OK(set_user(100, masked_password));
    EXPECT_OK(set_my("anna", "secret", masked_password));
    EXPECT_FAILS(set_my("anna", "wrong", masked_password), bad_args, "Bad Credential.");
    EXPECT_FAILS(set_my("anna", masked_password, "new"), bad_args, "Bad Credential.");
    EXPECT_EQ(before, content());
    const std::string stored = hash_of("admin");
    EXPECT_OK(set_admin({masked_password, "Pet's name?", "Rex", "a@example.org"}));
    EXPECT_EQ(Lines{"Rex"}, rows("SELECT answer FROM passwordrecovery"));
    EXPECT_EQ(stored + stored, hash_of("admin") + hash_of("root"));
}

// An offered password is only repeated where the message has a place for it.
TEST_F(Password, StaysOutOfTheLog)
{
    EXPECT_OK(set_user(100, "right"));
    EXPECT_FAILS(set_my("anna", "hunter2", "hunter3"), bad_args, "Bad Credential.");
    EXPECT_NE(std::string::npos, log().find("Bad Credential."));
    sql("CREATE TRIGGER refuse BEFORE UPDATE ON `$user` BEGIN SELECT RAISE(ABORT,'no'); END");
    EXPECT_FAILS(set_user(100, "hunter4"), db_failed, "Failed DB Query for user table update. no");
    EXPECT_FAILS(set_admin({"hunter5", "q", "hunter6", "e"}), db_failed,
                 "Failed DB Query for user update. no");
    EXPECT_EQ(std::string::npos, log().find("$1$"));
    EXPECT_EQ(std::string::npos, log().find("hunter"));
}

} // namespace
