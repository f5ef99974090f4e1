// Shares created: the rows that come to be, and what is refused.
#include "share_writing.h"

#include <algorithm>

using namespace qbobj_test;

namespace
{

class ShareAdd : public ShareWriting
{
};

TEST_F(ShareAdd, TheDatasetAndThePathFollowFromTheVolumeOrFromThePathGiven)
{
    ASSERT_OK(add("x"));
    EXPECT_EQ("data/x|data/x", fields(share->resource_id, share->ShareId));
    // The identifier is made of volume and name even where the dataset is called otherwise.
    ASSERT_OK(add("z", R"({"Path":"/data/y"})"));
    EXPECT_STREQ("data/z", share->ShareId);
    EXPECT_EQ((Rows{"share|x||NULL|data|data/x|/data/x", "share|z||NULL|data|data/y|/data/y"}),
              rows("SELECT type,name,comment,visible_snapdir,volume_id,zfs_name,path FROM share"));
}

constexpr const char *ownership =
    "SELECT user_id,group_id,user_access,group_access,everyone_access,non_owner_delete FROM share";
constexpr auto afp = "SELECT available,afp_access,afp_guest_access,afp_fperm,afp_dperm FROM afp_share_option";
constexpr auto ftp =
    "SELECT available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask FROM ftp_share_option";
TEST_F(ShareAdd, ARecordAndWhatItLeavesOutIsStored)
{
    const std::tuple<const char *, std::string, const char *> cases[] = {
        // Without a Stat the guest owns the share, and everyone may do everything.
        {"{}", ownership, "97|97|7|7|7|1"},
        // The owner is the account's id only where the resource_id is negative; else that one, which may be 0.
        {R"({"Stat":{"User":{"resource_id":-1,"UserId":1001},"Group":{"resource_id":1002,"GroupId":1003},
             "UserAccess":"ReadWrite","GroupAccess":"ReadOnly","EveryoneAccess":"Disabled","NonOwnerDelete":0}})",
         ownership, "1001|1002|7|5|0|0"},
        {R"({"Stat":{"User":{"UserId":1001},"Group":{}}})", ownership, "0|0|7|7|7|1"},
        {R"({"VisibleSnapFolder":"snaps","VisibleSnapshot":1})", "SELECT visible_snapdir FROM share",
         "snaps"},
        {R"({"VisibleSnapFolder":"snaps"})", "SELECT visible_snapdir FROM share", "NULL"},
        {"{}", attributes, "0|0|0|0|0|0|0|NULL|NULL"},
        {R"({"QuotaMB":1,"ReserveMB":2,"RefQuotaMB":3,"RefReserveMB":4,"Compression":5,"BitRotProtection":6,
             "Dedup":7,"LogBias":"latency","Sync":"always"})",
         attributes, "1|2|3|4|5|6|7|latency|always"},
        {R"({"Cifs":{}})", cifs, "writeable|1|0|6|6|1|7|7|1023|1|25000|0|0|1|0"},
        {R"({"Cifs":{"NotAvailable":1,"DefaultAccess":"ReadOnly","AllowGuestAccess":0,"ShareDisplayOption":2,
             "EnableRecycleBin":0,"RecycleSizeLimit":3,"RecycleAgeLimit":4,"NewFileFolderPermAutoset":0,
             "AclChangeRestrictionToggle":5,"FileCreateGroupRights":"Disabled","EnableDFS":1,"EnableOplocks":1,
             "FileCreateEveryoneRights":"ReadOnly","FolderCreateGroupRights":"ReadOnly"}})",
         cifs, "readonly|0|2|0|4|0|5|7|5|0|3|4|1|0|1"},
        // Rights of Apple's files are not even looked at while they are not set.
        {R"({"Afp":{"FileCreateGroupRights":"nonsense"}})", afp, "1|writeable|1|NULL|NULL"},
        {R"({"Afp":{"NotAvailable":1,"NewFileFolderPermAutoset":1,"FileCreateGroupRights":"ReadOnly",
             "FolderCreateEveryoneRights":"Disabled"}})",
         afp, "0|writeable|1|38|56"}, // group 4, everyone 6; group 7, everyone 0
        // A new share's writes always wait for the disk, whatever the record says.
        {R"({"Nfs":{"DefaultAccess":"ReadOnly","Sync":0}})",
         "SELECT available,nfs_access,nfs_sync FROM nfs_share_option", "1|readonly|1"},
        {R"({"Ftp":{"NewFileFolderPermAutoset":1,"FileCreateGroupRights":"ReadOnly",
             "FolderCreateEveryoneRights":"Disabled"}})",
         ftp, "1|writeable|1|16|7"},
        {R"({"Http":{"DefaultAccess":"Disabled","EnableWebDav":1}})",
         "SELECT available,http_access,http_webdav FROM http_share_option", "1|disabled|1"},
        {R"({"Dlna":{"MediaType":"Video,Audio","NotAvailable":1}})",
         "SELECT available,access,media_type FROM dlna_share_option", "0|readonly|3"},
        {R"({"Daap":{}})", "SELECT available FROM daap_share_option", "1"},
        {R"({"Rsync":{"PasswordProtection":"Enabled"}})",
         "SELECT available,rsync_access,passwordprotection FROM rsync_share_option", "1|writeable|enabled"},
        {R"({"Zvol":{"SizeKB":5000000000,"IsSparse":1}})", "SELECT kb_size,is_sparse FROM zvol_share_option",
         "5000000000|1"},
        // Snapshots are taken every hour unless a schedule is given.
        {"{}", schedule, "1|0|*|*|*|*|0|0|0|0"},
        {R"({"SnapshotSchedule":{"Enabled":1,"Minute":"30","Hour":"4","DayOfMonth":"1","DayOfWeek":"2","Month":"3",
             "LastTaken":5,"PurgeManualSnapshot":1,"LastDailyTaken":6,"LastWeeklyTaken":7}})",
         schedule, "1|30|4|1|2|3|5|1|6|7"}};
    int number = 0;
    for (const auto &[given, select, stored] : cases) {
        SCOPED_TRACE(given);
        ASSERT_OK(add(("s" + text(++number)).c_str(), given));
        EXPECT_EQ(stored, rows(select + " ORDER BY rowid DESC LIMIT 1").at(0));
    }
    join_directory(); // where guests are not welcome unless asked in
    ASSERT_OK(add("domain", R"({"Cifs":{},"Afp":{}})"));
    EXPECT_EQ("0", rows("SELECT cifs_guest_access FROM cifs_share_option ORDER BY rowid").back());
    EXPECT_EQ("0", rows("SELECT afp_guest_access FROM afp_share_option ORDER BY rowid").back());
}

TEST_F(ShareAdd, EveryProtocolGetsItsListsAndTwoServicesAreTold)
{
    ASSERT_OK(add("docs", everything()));
    const Rows protocols{"afp|1000", "cifs|1000", "ftp|1000", "http|1000"};
    EXPECT_EQ(protocols, rows("SELECT proto,user_id FROM user_acl ORDER BY proto"));
    EXPECT_EQ(protocols, rows("SELECT proto,group_id FROM group_acl ORDER BY proto"));
    EXPECT_EQ((Rows{"cifs", "ftp", "http", "nfs", "rsync"}), rows("SELECT proto FROM host_acl ORDER BY 1"));
    EXPECT_EQ("data|docs|far|files.example.com|pub",
              rows("SELECT volume,share,folder,address,remote_share FROM cifs_dfs_option").at(0));
    EXPECT_EQ("sync|secret", rows("SELECT user,password FROM rsync_user_password_acl").at(0));
    EXPECT_EQ("data/docs|media|index", rows("SELECT * FROM `$application_on_share`").at(0));
    EXPECT_NE(std::string::npos, journal().find("cifs"));
    EXPECT_NE(std::string::npos, journal().find("ftp"));
    EXPECT_EQ(std::string::npos, journal().find("afp"));
}

TEST_F(ShareAdd, ALimitIsComparedWithTheFreeSpaceIn32Bits)
{
    EXPECT_OK(add("fits", R"({"RefQuotaMB":10240})"));
    EXPECT_OK(add("wraps", R"({"RefQuotaMB":4294967301})"));
    EXPECT_OK(add("not_compared", R"({"QuotaMB":999999})"));
}

TEST_F(ShareAdd, AChainIsCreatedWholeOrNotAtAll)
{
    Json chain = Json::array({everything(R"({"ShareName":"one","VolumeId":"data"})"),
                              {{"ShareName", "two"}, {"VolumeId", "data"}, {"Sync", "no"}}});
    const std::string before = content();
    EXPECT_FAILS(add_chain(chain), bad_args, "Invalid Sync (no). One of 'standard', 'always', 'disabled'.");
    EXPECT_EQ(before, content());
    EXPECT_EQ("", journal());
    chain[1]["Sync"] = "";
    EXPECT_OK(add_chain(chain));
    EXPECT_EQ((Rows{"one", "two"}), rows("SELECT name FROM share"));
    EXPECT_OK(call(qbobj_addShare, nullptr));
}

TEST_F(ShareAdd, WhatIsGivenWronglyIsNamedAndLeavesNothing)
{
    const std::string long_name(200, 'n');
    std::vector<Refusal> refusals = {
        {R"({"RefQuotaMB":10241})", "Invalid quota value. Need to be less than Free Space."},
        {R"({"ShareName":"OTHER"})", "Sharename specified is already exist.", name_taken},
        // A dataset that exists only shows when the row is written.
        {R"({"Path":"/data/other"})",
         "Sharename specified is already exist. Or specified volume is not exist.", name_taken},
        {R"({"ShareType":"disk"})", "Invalid ShareType (disk)"},
        {R"({"ShareName":")" + long_name + "\"}", "ShareName is too long (" + long_name + ")",
         QBOBJ_ERROR_UI__NAME_TOO_LONG},
        {R"({"ShareName":"global"})", "ShareName (global) is reserved", QBOBJ_ERROR_UI__SHARENAME_RESERVED},
        {R"({"ShareName":null})", "Invalid ShareName ((null)), rc=-1"},
        {R"({"VolumeId":"tank"})", "Specified VolumeId (tank) is not valid."},
        {R"({"Stat":{"User":{"resource_id":-3,"UserId":-3}}})", "Invalid Stat->User (resource_id=-3)."},
        {R"({"Stat":{"User":null}})", "Invalid Stat->User (resource_id=-1)."},
        {R"({"Stat":{"Group":{"resource_id":-4,"GroupId":-4}}})", "Invalid Stat->Group (resource_id=-4)."},
        {R"({"Cifs":{"DefaultAccess":"rw"}})",
         "Invalid Cifs->DefaultAccess (rw). Valid value is ReadWrite, ReadOnly or DIsabled."},
        {R"({"Rsync":{"UserPasswordAcl":[{}]}})", "Invalid UserPasswordAcl->UserName cannot be NULL"},
        {R"({"Afp":{"UserAcl":[{}]}})", "Invalid UserAcl->User cannot be NULL"},
        {R"({"Afp":{"UserAcl":[{"User":{"UserName":"ann"}}]}})",
         "Invalid UserAcl->User (resource_id=0, UserName=ann)."},
        {R"({"Afp":{"UserAcl":[{"User":{"UserId":9}}]}})", "Invalid UserAcl->Access ((null))."},
        // The list of groups speaks of users here.
        {R"({"Afp":{"GroupAcl":[{}]}})", "Invalid UserAcl->Group cannot be NULL"},
        {R"({"Afp":{"GroupAcl":[{"Group":{}}]}})",
         "Invalid GroupAcl->Group (resource_id=0, GroupName=(null))."},
        {R"({"Afp":{"GroupAcl":[{"Group":{"GroupId":9},"Access":"x"}]}})", "Invalid GroupAcl->Access (x)."},
        {R"({"Nfs":{"HostAcl":[{}]}})", "Invalid HostAcl->Host cannot be NULL"},
        {R"({"Nfs":{"HostAcl":[{"Host":{"HostName":"no host"}}]}})",
         "Invalid HostName or Network specified (no host)."},
        {R"({"Nfs":{"HostAcl":[{"Host":{"HostName":"pc","HostId":42}}]}})",
         "Specified HostId (42) and/or HostName (pc) conflict with db. "},
        {R"({"Nfs":{"HostAcl":[{"Host":{"HostName":"pc"},"Access":"x"}]}})", "Invalid HostAcl->Access (x)."},
        {R"({"UsedBy":[{}]})",
         "Failed INSERT $application_on_share. (NOT NULL constraint failed: $application_on_share.app_name)",
         db_failed}};
    std::ranges::move(refused_words(true), std::back_inserter(refusals));
    ASSERT_OK(add("other"));
    const std::string before = content();
    for (const auto &[given, message, code] : refusals) {
        SCOPED_TRACE(given);
        Json json = everything(R"({"Stat":{"User":{},"Group":{}},"VolumeId":"data","ShareName":"docs"})");
        json.merge_patch(Json::parse(given));
        EXPECT_FAILS(add_chain(json), code, message.c_str());
        EXPECT_STREQ("qbobj_api2_add_share", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareAdd, WithoutAGuestAccountNoShareIsMade)
{
    sql("UPDATE `$user` SET uname='visitor' WHERE uname='guest'");
    EXPECT_FAILS(add("docs"), bad_args, "Cannot get UID for guest");
    sql("UPDATE `$user` SET uname='guest' WHERE uname='visitor';"
        "DELETE FROM `$group` WHERE gname IN ('guest','nogroup')");
    EXPECT_FAILS(add("docs"), bad_args, "Cannot get GID for guest");
}

/* ---- Access lists -------------------------------------------------------------------------------------- */

TEST_F(ShareAdd, EntriesThatRepeatTheDefaultAreNotListedExceptOfTheTwoGroups)
{
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES(1000,'ann',99),(1001,'boss',95),(1002,'cloud',98)");
    const std::tuple<const char *, int, const char *, const char *> cases[] = {
        {"ReadOnly", 1000, "ReadOnly", ""},     {"ReadOnly", 1000, "ReadWrite", "1|1"},
        {"ReadOnly", 1000, "Disabled", "0|0"},  {"ReadWrite", 1000, "ReadWrite", ""},
        {"ReadWrite", 1000, "ReadOnly", "1|0"}, {"ReadWrite", 1000, "Disabled", "0|0"},
        {"Disabled", 1000, "ReadOnly", "1|0"},  {"Disabled", 1000, "Disabled", "0|0"},
        {"ReadOnly", 1001, "ReadOnly", "1|0"},  {"ReadWrite", 1001, "ReadWrite", "1|1"},
        {"ReadWrite", 1002, "ReadWrite", "1|1"}};
    for (const auto &[default_access, user, access, listed] : cases) {
        SCOPED_TRACE(fields(default_access, access, user));
        sql("PRAGMA foreign_keys=OFF;DELETE FROM share;DELETE FROM user_acl;DELETE FROM group_acl");
        const Json entry = {{"User", {{"UserId", user}}}, {"Access", access}};
        const Json group = {{"Group", {{"GroupId", user}}}, {"Access", access}};
        ASSERT_OK(add("docs", Json{{"Cifs",
                                    {{"DefaultAccess", default_access},
                                     {"UserAcl", Json::array({entry})},
                                     {"GroupAcl", Json::array({group})}}}}));
        const Rows users = rows("SELECT read,write FROM user_acl");
        EXPECT_EQ(listed, users.empty() ? "" : users.front());
        // Groups know no exemption.
        const bool repeats = std::string(access) == default_access && access[0] == 'R';
        EXPECT_EQ(repeats ? 0U : 1U, rows("SELECT read,write FROM group_acl").size());
    }
}

TEST_F(ShareAdd, DirectoryAccountsThatAreNotMirroredAreFoundByTheirNames)
{
    join_directory();
    sql("UPDATE service_cifs SET no_sync_ads=1");
    ASSERT_OK(add("docs", R"({"Cifs":{"UserAcl":[{"User":{"UserName":"daemon"},"Access":"ReadOnly"}],
        "GroupAcl":[{"Group":{"GroupName":"daemon"},"Access":"ReadOnly"}]}})"));
    EXPECT_EQ("1", value("SELECT user_id FROM user_acl"));
    EXPECT_EQ("1", value("SELECT group_id FROM group_acl"));
    EXPECT_EQ("1|1", fields(share->Cifs->UserAcl->User->resource_id, share->Cifs->UserAcl->User->UserId));
    EXPECT_FAILS(add("other", R"({"Cifs":{"UserAcl":[{"User":{"UserName":"no-such-user"}}]}})"),
                 QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                 "Invalid UserAcl->User (resource_id=0, UserName=no-such-user).");
}

TEST_F(ShareAdd, EveryProtocolHasItsOwnWayWithHosts)
{
    // What is stored is read, write and root.
    const std::tuple<const char *, const char *, const char *, int, const char *> cases[] = {
        {"Cifs", "ReadWrite", "Disabled", 1, "1|1|0"}, {"Afp", "ReadWrite", "ReadOnly", 1, ""},
        {"Nfs", "ReadWrite", "Disabled", 1, "1|1|1"},  {"Nfs", "ReadOnly", "Disabled", 1, "1|0|1"},
        {"Nfs", "Disabled", "Disabled", 1, "0|0|1"},   {"Nfs", "ReadWrite", "ReadOnly", 1, "1|0|1"},
        {"Nfs", "ReadWrite", "Disabled", 0, "0|0|0"},  {"Ftp", "ReadOnly", "ReadOnly", 1, "0|0|0"},
        {"Ftp", "ReadOnly", "ReadWrite", 1, "1|1|0"},  {"Ftp", "ReadWrite", "ReadWrite", 0, "0|0|0"},
        {"Ftp", "ReadWrite", "ReadOnly", 0, "1|0|0"},  {"Http", "ReadOnly", "ReadOnly", 1, "1|0|0"},
        {"Rsync", "ReadWrite", "ReadOnly", 1, "1|0|0"}};
    for (const auto &[protocol, default_access, access, root, stored] : cases) {
        SCOPED_TRACE(fields(protocol, default_access, access, root));
        sql("PRAGMA foreign_keys=OFF;DELETE FROM share;DELETE FROM host_acl");
        const Json entry = {{"Host", {{"HostName", "10.0.0.9"}}}, {"Access", access}, {"Root", root}};
        ASSERT_OK(
            add("docs",
                Json{{protocol, {{"DefaultAccess", default_access}, {"HostAcl", Json::array({entry})}}}}));
        const Rows found = rows("SELECT read,write,root FROM host_acl");
        EXPECT_EQ(stored, found.empty() ? "" : found.front());
    }
}

TEST_F(ShareAdd, AHostIsKnownByItsIdOrByItsCanonicalNameAndStoredOnce)
{
    sql("INSERT INTO host (id,name) VALUES(7,'known')");
    // A host with an empty name is skipped.
    ASSERT_OK(add("docs", R"({"Nfs":{"HostAcl":[{"Host":{"HostName":"192.168.1.77/24"},"Access":"ReadOnly"},
        {"Host":{"HostName":""},"Access":"ReadOnly"},{"Host":{"HostId":7},"Access":"ReadOnly"},
        {"Host":{"resource_id":7,"HostName":"known"},"Access":"ReadWrite"}]}})"));
    EXPECT_EQ((Rows{"192.168.1.0/24|1|0", "known|1|1"}),
              rows("SELECT H.name,A.read,A.write FROM host_acl A JOIN host H ON H.id=A.host_id ORDER BY 1"));
    EXPECT_EQ("2", value("SELECT COUNT(*) FROM host"));
}

} // namespace
