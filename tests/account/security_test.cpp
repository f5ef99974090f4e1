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
    EXPECT_EQ("ads", value("SELECT security FROM service_cifs"));
    EXPECT_EQ(std::string::npos, content().find("hunter2"));

    sql("UPDATE service_cifs SET realm=NULL,orgunit=NULL,domain_sid=NULL");
    EXPECT_OK(run(qbobj_getSecurity, read));
    EXPECT_EQ("||", line({read.Realm, read.orgUnit, read.domainSid}));
}

TEST_F(Security, RefusesTheFirstValueThatIsWrong)
{
    const std::string long_unit(512, 'x');
    const Refusal<std::function<void(qbobj_Security_t &)>> cases[] = {
        {[](auto &s) { s.Security = nullptr; }, "Security is not valid"},
        {[](auto &s) { s.Security = "ads'", s.workGroup = nullptr; }, "Security is not valid"},
        {[](auto &s) { s.workGroup = "A/B", s.Realm = "?"; }, "Bad workgroup",
         QBOBJ_ERROR_UI__ADS_BAD_WORKGROUP},
        {[](auto &s) { s.Realm = "a b", s.passWordServer = "?"; }, "Bad realm (a b)",
         QBOBJ_ERROR_UI__ADS_BAD_REALM},
        {[](auto &s) { s.passWordServer = "a b"; }, "Bad login server (a b)",
         QBOBJ_ERROR_UI__ADS_BAD_SEC_SERVER},
        {[&](auto &s) { s.orgUnit = long_unit.c_str(); },
         "The value of column 'orgunit' is too long for the update."}};
    for (const auto &c : cases) {
        qbobj_Security_t security = domain();
        c.given(security); // spoils it
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

TEST_F(Security, ReportsTheProgressOfTheImport)
{
    // A row is the state, then of users and of groups how many there are and how many are done.
    const std::tuple<const char *, const char *, int> cases[] = {
        {"(0,0,0,0,0)", "idle", 0},     {"(1,20,10,0,0)", "running", 25}, {"(1,20,20,0,0)", "running", 50},
        {"(1,3,1,3,2)", "running", 49}, {"(2,3,3,3,3)", "complete", 100}, {"(7,0,0,4,4)", "error", 50}};
    for (const auto &[row, state, percent] : cases) {
        SCOPED_TRACE(row);
        sql(std::string("UPDATE _ads_importer SET (state,total_user,curr_user,total_group,curr_group)=") +
            row + ",start_at=11,done_at=12");
        qbobj_SecurityAdsProgress_t progress{};
        EXPECT_OK(run(qbobj_getSecurityAdsProgress, progress));
        EXPECT_STREQ(state, progress.State);
        EXPECT_EQ(percent, progress.Percent);
        EXPECT_EQ(11, progress.StartAt);
        EXPECT_EQ(12, progress.DoneAt);
    }
}

} // namespace
