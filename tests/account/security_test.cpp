// The directory service that accounts may come from.
#include "accounts.h"

namespace
{

using namespace qbobj_test;

class Security : public Accounts
{
  protected:
    static qbobj_Security_t domain()
    {
        qbobj_Security_t security{};
        security.Security = "ads";
        security.workGroup = "OFFICE";
        security.Realm = "office.example.org";
        security.orgUnit = "it's";
        security.restrictOU = "staff";
        security.noSyncADS = 1;
        security.domainAdministrator = "boss";
        security.passWord = "hunter2";
        security.passWordServer = "dc1.example.org";
        security.displayTrustedUsers = 1;
        return security;
    }
    int set(qbobj_Security_t &security) { return run(qbobj_setSecurity, security); }
};

TEST_F(Security, ReadsBackWhatWasWrittenButForThePassword)
{
    qbobj_Security_t written = domain();
    EXPECT_OK(set(written));
    sql("UPDATE service_cifs SET domain_sid='S-1-5',domain_admin_gid=NULL,domain_admin_uid=7");
    qbobj_Security_t read{};
    EXPECT_OK(run(qbobj_getSecurity, read));
    written.passWord = masked_password;
    written.domainSid = "S-1-5";
    written.domainGroupAdminGID = 98;
    written.domainAdminUID = 7;
    EXPECT_EQ(dump("Security", &written), dump("Security", &read));
    EXPECT_EQ(std::string::npos, content().find("hunter2"));

    sql("UPDATE service_cifs SET realm=NULL,orgunit=NULL,domain_sid=NULL");
    EXPECT_OK(run(qbobj_getSecurity, read));
    EXPECT_EQ("||", line({read.Realm, read.orgUnit, read.domainSid}));
}

TEST_F(Security, RefusesTheFirstValueThatIsWrong)
{
    const std::string long_unit(512, 'x');
    const struct {
        std::function<void(qbobj_Security_t &)> spoil;
        qbobj_error_t code;
        const char *message;
    } cases[] = {
        {[](auto &s) { s.Security = nullptr; }, bad_args, "Security is not valid"},
        {[](auto &s) { s.Security = "ads'", s.workGroup = nullptr; }, bad_args, "Security is not valid"},
        {[](auto &s) { s.workGroup = "A/B", s.Realm = "?"; }, QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP,
         "Bad workgroup"},
        {[](auto &s) { s.Realm = "a b", s.passWordServer = "?"; }, QBOBJ_ERROR_UI__ADS_BAD_REALM,
         "Bad realm (a b)"},
        {[](auto &s) { s.passWordServer = "a b"; }, QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER,
         "Bad login server (a b)"},
        {[&](auto &s) { s.orgUnit = long_unit.c_str(); }, bad_args,
         "The value of column 'orgunit' is too long for the update."},
    };
    for (const auto &c : cases) {
        qbobj_Security_t security = domain();
        c.spoil(security);
        refused(qbobj_setSecurity, security, c.code, c.message);
    }
}

TEST_F(Security, ChecksRealmAndServerOfADirectoryOnly)
{
    qbobj_Security_t local = domain();
    local.Security = "user";
    local.Realm = "a b";
    local.passWordServer = "?";
    EXPECT_OK(set(local));
    EXPECT_EQ("a b", value("SELECT realm FROM service_cifs"));

    qbobj_Security_t directory = domain();
    directory.passWordServer = "";
    EXPECT_OK(set(directory));
    EXPECT_EQ("", value("SELECT password_server FROM service_cifs"));
}

TEST_F(Security, TheModeDecidesWhichAccountsAreAsked)
{
    sql("INSERT INTO `$user` (id,uname,rid) VALUES (100,'anna',NULL),(-7,'anna',70)");
    int uid = 0;
    EXPECT_OK(qbobj_getUID(qbdb, db, "anna", &uid, &err));
    EXPECT_EQ(100, uid);
    qbobj_Security_t directory = domain();
    EXPECT_OK(set(directory));
    EXPECT_OK(qbobj_getUID(qbdb, db, "anna", &uid, &err));
    EXPECT_EQ(-7, uid);
}

TEST_F(Security, ReportsTheProgressOfTheImport)
{
    const struct {
        const char *row; // state, users and groups: total and done
        const char *state;
        int percent;
    } cases[] = {
        {"(0,0,0,0,0)", "idle", 0},     {"(1,20,10,0,0)", "running", 25}, {"(1,20,20,0,0)", "running", 50},
        {"(1,3,1,3,2)", "running", 49}, {"(2,3,3,3,3)", "complete", 100}, {"(7,0,0,4,4)", "error", 50},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.row);
        sql(std::string("UPDATE _ads_importer SET (state,total_user,curr_user,total_group,curr_group)=") +
            c.row + ",start_at=11,done_at=12");
        qbobj_SecurityAdsProgress_t progress{};
        EXPECT_OK(run(qbobj_getSecurityAdsProgress, progress));
        EXPECT_STREQ(c.state, progress.State);
        EXPECT_EQ(c.percent, progress.Percent);
        EXPECT_EQ(11, progress.StartAt);
        EXPECT_EQ(12, progress.DoneAt);
    }
}

} // namespace
