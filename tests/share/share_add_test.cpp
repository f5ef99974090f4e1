// Shares created: the rows that come to be, and what is refused.
#include "share_writing.h"

using namespace qbobj_test;

namespace
{

using Rows = std::vector<std::string>;

class ShareAdd : public qbobj_test::ShareWriting
{
};

TEST_F(ShareAdd, TheDatasetAndThePathFollowFromTheVolumeOrFromThePathGiven)
{
    ShareRecord derived;
    ShareRecord given;
    given.share.Path = "/data/y";
    ASSERT_OK(add(derived.named("x")));
    ASSERT_OK(add(given.named("z")));
    EXPECT_EQ((Rows{"share|x||NULL|data|data/x|/data/x", "share|z||NULL|data|data/y|/data/y"}),
              rows("SELECT type,name,comment,visible_snapdir,volume_id,zfs_name,path FROM share"));
    EXPECT_STREQ("data/x", derived.share.resource_id);
    EXPECT_STREQ("data/x", derived.share.ShareId);
    // The identifier is made of volume and name even where the dataset is called otherwise.
    EXPECT_STREQ("data/z", given.share.ShareId);
}

TEST_F(ShareAdd, WithoutAStatTheGuestOwnsTheShareAndEveryoneMayDoEverything)
{
    add_plain("docs");
    EXPECT_EQ("97|97|7|7|7|1",
              rows("SELECT user_id,group_id,user_access,group_access,everyone_access,non_owner_delete "
                   "FROM share")
                  .at(0));
}

TEST_F(ShareAdd, TheStatsOwnerIsTheAccountIdOnlyWhereTheResourceIdIsNegative)
{
    ShareRecord record;
    record.with_stat();
    record.user.resource_id = -1;
    record.user.UserId = 1001;
    record.group.resource_id = 1002;
    record.group.GroupId = 1003;
    record.stat.UserAccess = "ReadWrite";
    record.stat.GroupAccess = "ReadOnly";
    record.stat.EveryoneAccess = "Disabled";
    record.stat._void_NonOwnerDelete = 0;
    ASSERT_OK(add(record.named("docs")));
    // A record that only carries UserId has resource_id 0: the administrator owns the share.
    ShareRecord root;
    root.with_stat().user.UserId = 1001;
    ASSERT_OK(add(root.named("roots")));
    EXPECT_EQ(
        (Rows{"1001|1002|7|5|0|0", "0|0|7|7|7|1"}),
        rows("SELECT user_id,group_id,user_access,group_access,everyone_access,non_owner_delete FROM share"));
}

TEST_F(ShareAdd, ASnapshotFolderIsOnlyKeptWhenSnapshotsAreVisible)
{
    ShareRecord shown;
    ShareRecord hidden;
    shown.share.VisibleSnapFolder = hidden.share.VisibleSnapFolder = "snaps";
    shown.share.VisibleSnapshot = 1;
    ASSERT_OK(add(shown.named("a")));
    ASSERT_OK(add(hidden.named("b")));
    EXPECT_EQ((Rows{"snaps", "NULL"}), rows("SELECT visible_snapdir FROM share"));
}

TEST_F(ShareAdd, AttributesThatAreLeftOutAreZero)
{
    ShareRecord record;
    record.share._void_RefQuotaMB = 0;
    record.share.RefQuotaMB = 100;
    record.share.QuotaMB = 77; // left out: its flag is set
    record.share.Sync = "always";
    ASSERT_OK(add(record.named("docs")));
    EXPECT_EQ("0|0|100|0|0|0|0|NULL|always",
              rows("SELECT mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,"
                   "bit_rot_protection,dedup,logbias,sync FROM zfs_attr")
                  .at(0));
}

TEST_F(ShareAdd, ALimitIsComparedWithTheFreeSpaceIn32Bits)
{
    ShareRecord fits;
    ShareRecord wraps;
    ShareRecord exceeds;
    fits.share._void_RefQuotaMB = wraps.share._void_RefQuotaMB = exceeds.share._void_RefQuotaMB = 0;
    fits.share.RefQuotaMB = 10240;
    wraps.share.RefQuotaMB = (uint64_t{1} << 32) + 5;
    exceeds.share.RefQuotaMB = 10241;
    exceeds.share._void_QuotaMB = 0;
    EXPECT_OK(add(fits.named("fits")));
    EXPECT_OK(add(wraps.named("wraps")));
    const std::string before = content();
    EXPECT_FAILS(add(exceeds.named("exceeds")), QBOBJ_ERROR_API_ARGS,
                 "Invalid quota value. Need to be less than Free Space.");
    EXPECT_EQ(before, content());
    // The other limit is not compared.
    exceeds.share._void_RefQuotaMB = 1;
    exceeds.share.QuotaMB = 999999;
    EXPECT_OK(add(exceeds));
}

TEST_F(ShareAdd, WindowsOptionsThatAreLeftOutGetTheirDefaults)
{
    const std::string columns =
        "SELECT cifs_access,cifs_guest_access,cifs_hide_share,cifs_group_create_mask,"
        "cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,cifs_everyone_directory_mask,"
        "cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,cifs_recycle_age_limit,oplocks,"
        "available,cifs_enabledfs FROM cifs_share_option";
    ShareRecord record;
    record.share.Cifs = &record.cifs;
    ASSERT_OK(add(record.named("local")));
    join_directory();
    ShareRecord guestless;
    guestless.share.Cifs = &guestless.cifs;
    ASSERT_OK(add(guestless.named("domain")));
    EXPECT_EQ((Rows{"writeable|1|0|6|6|1|7|7|1023|1|25000|0|0|1|0",
                    "writeable|0|0|6|6|1|7|7|1023|1|25000|0|0|1|0"}),
              rows(columns));
}

TEST_F(ShareAdd, EveryProtocolGetsItsRowAndItsLists)
{
    ShareRecord record;
    record.with_everything();
    record.afp.NotAvailable = record.dlna.NotAvailable = 1;
    record.afp._void_NewFileFolderPermAutoset = record.ftp._void_NewFileFolderPermAutoset = 0;
    record.afp.NewFileFolderPermAutoset = record.ftp.NewFileFolderPermAutoset = 1;
    record.afp.FileCreateGroupRights = record.ftp.FileCreateGroupRights = "ReadOnly";
    record.afp.FolderCreateEveryoneRights = record.ftp.FolderCreateEveryoneRights = "Disabled";
    record.nfs.DefaultAccess = "ReadOnly";
    record.nfs.Sync = 0;
    record.http.DefaultAccess = "Disabled";
    record.http._void_EnableWebDav = 0;
    record.http.EnableWebDav = 1;
    record.dlna.MediaType = "Video,Audio";
    record.rsync.PasswordProtection = "Enabled";
    record.share.Zvol = &record.zvol;
    record.zvol.SizeKB = 5000000000;
    record.zvol.IsSparse = 1;
    ASSERT_OK(add(record.named("docs")));

    EXPECT_EQ(
        "0|writeable|1|38|56", // group 4, everyone 6; group 7, everyone 0
        rows("SELECT available,afp_access,afp_guest_access,afp_fperm,afp_dperm FROM afp_share_option").at(0));
    // A new share's writes always wait for the disk, whatever the record says.
    EXPECT_EQ("1|readonly|1", rows("SELECT available,nfs_access,nfs_sync FROM nfs_share_option").at(0));
    EXPECT_EQ("1|writeable|1|16|7",
              rows("SELECT available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask "
                   "FROM ftp_share_option")
                  .at(0));
    EXPECT_EQ("1|disabled|1", rows("SELECT available,http_access,http_webdav FROM http_share_option").at(0));
    EXPECT_EQ("0|readonly|3", rows("SELECT available,access,media_type FROM dlna_share_option").at(0));
    EXPECT_EQ("1", value("SELECT available FROM daap_share_option"));
    EXPECT_EQ("1|writeable|enabled",
              rows("SELECT available,rsync_access,passwordprotection FROM rsync_share_option").at(0));
    EXPECT_EQ("5000000000|1", rows("SELECT kb_size,is_sparse FROM zvol_share_option").at(0));

    EXPECT_EQ((Rows{"afp|1000", "cifs|1000", "ftp|1000", "http|1000"}),
              rows("SELECT proto,user_id FROM user_acl ORDER BY proto"));
    EXPECT_EQ((Rows{"afp|1000", "cifs|1000", "ftp|1000", "http|1000"}),
              rows("SELECT proto,group_id FROM group_acl ORDER BY proto"));
    EXPECT_EQ((Rows{"cifs", "ftp", "http", "nfs", "rsync"}),
              rows("SELECT proto FROM host_acl ORDER BY proto"));
    EXPECT_EQ("data|docs|far|files.example.com|pub",
              rows("SELECT volume,share,folder,address,remote_share FROM cifs_dfs_option").at(0));
    EXPECT_EQ("sync|secret", rows("SELECT user,password FROM rsync_user_password_acl").at(0));
    EXPECT_EQ("data/docs|media|index", rows("SELECT * FROM `$application_on_share`").at(0));
    EXPECT_NE(std::string::npos, journal().find("cifs"));
    EXPECT_NE(std::string::npos, journal().find("ftp"));
    EXPECT_EQ(std::string::npos, journal().find("afp"));
}

TEST_F(ShareAdd, AppleRightsAreOnlyKeptWhenTheyAreSet)
{
    ShareRecord record;
    record.share.Afp = &record.afp;
    record.afp.FileCreateGroupRights = "nonsense"; // not even looked at
    ASSERT_OK(add(record.named("docs")));
    EXPECT_EQ("NULL|NULL", rows("SELECT afp_fperm,afp_dperm FROM afp_share_option").at(0));
}

TEST_F(ShareAdd, SnapshotsAreTakenEveryHourUnlessAScheduleIsGiven)
{
    add_plain("usual");
    ShareRecord record;
    record.share.SnapshotSchedule = &record.schedule;
    record.schedule = {1, "30", "4", "1", "2", "3", 5, 1, 6, 7};
    ASSERT_OK(add(record.named("own")));
    EXPECT_EQ((Rows{"1|0|*|*|*|*|0|0|0|0", "1|30|4|1|2|3|5|1|6|7"}),
              rows("SELECT enabled,minute,hour,day_of_month,day_of_week,month,last_taken,"
                   "purge_manual_snapshot,last_daily_taken,last_weekly_taken FROM snapshot_schedule"));
}

TEST_F(ShareAdd, AChainIsCreatedWholeOrNotAtAll)
{
    ShareRecord first;
    ShareRecord second;
    first.named("one").with_everything().share._link = &second.named("two").share;
    second.share.Sync = "sometimes";
    const std::string before = content();
    EXPECT_FAILS(add(first), QBOBJ_ERROR_API_ARGS,
                 "Invalid Sync (sometimes). One of 'standard', 'always', 'disabled'.");
    EXPECT_EQ(before, content());
    EXPECT_EQ("", journal());
    second.share.Sync = "";
    EXPECT_OK(add(first));
    EXPECT_EQ((Rows{"one", "two"}), rows("SELECT name FROM share"));
    EXPECT_OK(qbobj_addShare(qbdb, db, nullptr, &err));
}

TEST_F(ShareAdd, ANameThatExistsIsRefusedBeforeAnythingIsWritten)
{
    add_plain("docs");
    ShareRecord same;
    EXPECT_FAILS(add(same.named("Docs")), QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                 "Sharename specified is already exist.");
    // A dataset that exists only shows when the row is written.
    ShareRecord dataset;
    dataset.share.Path = "/data/docs";
    EXPECT_FAILS(add(dataset.named("other")), QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                 "Sharename specified is already exist. Or specified volume is not exist.");
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM share"));
}

TEST_F(ShareAdd, AWordThatIsNotKnownIsNamedAndLeavesNothing)
{
    const std::string before = content();
    for (const CheckedWord &word : checked_words) {
        if (word.created == nullptr)
            continue;
        ShareRecord record;
        record.named("docs").with_everything().with_stat();
        record.afp._void_NewFileFolderPermAutoset = 0;
        record.afp.NewFileFolderPermAutoset = 1;
        word.of(record) = "x";
        EXPECT_FAILS(add(record), QBOBJ_ERROR_API_ARGS,
                     ("Invalid " + std::string(word.created) + " (x).").c_str());
        EXPECT_STREQ("qbobj_api2_add_share", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareAdd, WhatIsGivenWronglyIsNamedAndLeavesNothing)
{
    const std::string long_name(200, 'n');
    const std::string too_long = "ShareName is too long (" + long_name + ")";
    const Refusal refusals[] = {
        {[](ShareRecord &r) { r.share.ShareType = "disk"; }, "Invalid ShareType (disk)"},
        {[&](ShareRecord &r) { r.share.ShareName = long_name.c_str(); }, too_long.c_str(),
         QBOBJ_ERROR_UI__NAME_TOO_LONG},
        {[](ShareRecord &r) { r.share.ShareName = "global"; }, "ShareName (global) is reserved",
         QBOBJ_ERROR_UI__SHARENAME_RESERVED},
        {[](ShareRecord &r) { r.share.ShareName = nullptr; }, "Invalid ShareName ((null)), rc=-1"},
        {[](ShareRecord &r) { r.share.VolumeId = "tank"; }, "Specified VolumeId (tank) is not valid."},
        {[](ShareRecord &r) { r.with_stat().user.resource_id = r.user.UserId = -3; },
         "Invalid Stat->User (resource_id=-3)."},
        {[](ShareRecord &r) { r.with_stat().stat.User = nullptr; }, "Invalid Stat->User (resource_id=-1)."},
        {[](ShareRecord &r) { r.with_stat().group.resource_id = r.group.GroupId = -4; },
         "Invalid Stat->Group (resource_id=-4)."},
        {[](ShareRecord &r) { r.cifs.DefaultAccess = "rw"; },
         "Invalid Cifs->DefaultAccess (rw). Valid value is ReadWrite, ReadOnly or DIsabled."},
        {[](ShareRecord &r) { r.login.UserName = nullptr; },
         "Invalid UserPasswordAcl->UserName cannot be NULL"},
        {[](ShareRecord &r) { r.user_acl.User = nullptr; }, "Invalid UserAcl->User cannot be NULL"},
        {[](ShareRecord &r) { r.listed_user.UserId = 0, r.listed_user.UserName = "ann"; },
         "Invalid UserAcl->User (resource_id=0, UserName=ann)."},
        {[](ShareRecord &r) { r.user_acl.Access = nullptr; }, "Invalid UserAcl->Access ((null))."},
        // The list of groups speaks of users here.
        {[](ShareRecord &r) { r.group_acl.Group = nullptr; }, "Invalid UserAcl->Group cannot be NULL"},
        {[](ShareRecord &r) { r.listed_group.GroupId = 0; },
         "Invalid GroupAcl->Group (resource_id=0, GroupName=(null))."},
        {[](ShareRecord &r) { r.host_acl.Host = nullptr; }, "Invalid HostAcl->Host cannot be NULL"},
        {[](ShareRecord &r) { r.host.HostName = "no host"; },
         "Invalid HostName or Network specified (no host)."},
        {[](ShareRecord &r) { r.host.HostId = 42; },
         "Specified HostId (42) and/or HostName (10.0.0.9) conflict with db. "},
        {[](ShareRecord &r) { r.used_by.AppName = nullptr; },
         "Failed INSERT $application_on_share. (NOT NULL constraint failed: $application_on_share.app_name)",
         QBOBJ_ERROR_DB_MISC},
    };
    const std::string before = content();
    for (const Refusal &refusal : refusals) {
        ShareRecord record;
        refusal.spoil(record.named("docs").with_everything());
        EXPECT_FAILS(add(record), refusal.code, refusal.message);
        EXPECT_STREQ("qbobj_api2_add_share", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareAdd, WithoutAGuestAccountNoShareIsMade)
{
    ShareRecord record;
    sql("UPDATE `$user` SET uname='visitor' WHERE uname='guest'");
    EXPECT_FAILS(add(record.named("docs")), QBOBJ_ERROR_API_ARGS, "Cannot get UID for guest");
    sql("UPDATE `$user` SET uname='guest' WHERE uname='visitor';"
        "DELETE FROM `$group` WHERE gname IN ('guest','nogroup')");
    EXPECT_FAILS(add(record), QBOBJ_ERROR_API_ARGS, "Cannot get GID for guest");
}

TEST_F(ShareAdd, EntriesThatRepeatTheDefaultAreNotListedExceptOfTheTwoGroups)
{
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES(1000,'ann',99),(1001,'boss',95),(1002,'cloud',98);"
        "INSERT INTO `$group` (id,gname) VALUES(1001,'bosses')");
    constexpr struct {
        const char *default_access;
        int user;
        const char *access;
        const char *listed;
    } cases[] = {
        {"ReadOnly", 1000, "ReadOnly", ""},      {"ReadOnly", 1000, "ReadWrite", "1|1"},
        {"ReadOnly", 1000, "Disabled", "0|0"},   {"ReadWrite", 1000, "ReadWrite", ""},
        {"ReadWrite", 1000, "ReadOnly", "1|0"},  {"ReadWrite", 1000, "Disabled", "0|0"},
        {"Disabled", 1000, "ReadOnly", "1|0"},   {"Disabled", 1000, "Disabled", "0|0"},
        {"ReadOnly", 1001, "ReadOnly", "1|0"},   {"ReadWrite", 1001, "ReadWrite", "1|1"},
        {"ReadWrite", 1002, "ReadWrite", "1|1"},
    };
    for (const auto &[default_access, user, access, listed] : cases) {
        SCOPED_TRACE(std::string(default_access) + access + std::to_string(user));
        sql("PRAGMA foreign_keys=OFF;DELETE FROM share;DELETE FROM user_acl;DELETE FROM group_acl");
        ShareRecord record;
        record.share.Cifs = &record.cifs;
        record.cifs.DefaultAccess = default_access;
        record.cifs.UserAcl = &record.user_acl;
        record.cifs.GroupAcl = &record.group_acl;
        record.listed_user.resource_id = record.listed_group.resource_id = user;
        record.user_acl.Access = record.group_acl.Access = access;
        ASSERT_OK(add(record.named("docs")));
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
    ShareRecord record;
    record.share.Cifs = &record.cifs;
    record.cifs.UserAcl = &record.user_acl;
    record.cifs.GroupAcl = &record.group_acl;
    record.listed_user.UserId = record.listed_group.GroupId = 0;
    record.listed_user.UserName = record.listed_group.GroupName = "daemon";
    ASSERT_OK(add(record.named("docs")));
    EXPECT_EQ("1", value("SELECT user_id FROM user_acl"));
    EXPECT_EQ("1", value("SELECT group_id FROM group_acl"));
    EXPECT_EQ(1, record.listed_user.resource_id);
    EXPECT_EQ(1, record.listed_user.UserId);

    ShareRecord unknown;
    unknown.share.Cifs = &unknown.cifs;
    unknown.cifs.UserAcl = &unknown.user_acl;
    unknown.listed_user.UserId = 0;
    unknown.listed_user.UserName = "no-such-user";
    EXPECT_FAILS(add(unknown.named("other")), QBOBJ_ERROR_UI__NO_LDAP_OBJECT,
                 "Invalid UserAcl->User (resource_id=0, UserName=no-such-user).");
}

TEST_F(ShareAdd, EveryProtocolHasItsOwnWayWithHosts)
{
    constexpr struct {
        const char *proto;
        const char *default_access;
        const char *access;
        int root;
        const char *stored; // read, write, root
    } cases[] = {
        {"cifs", "ReadWrite", "Disabled", 1, "1|1|0"},  {"afp", "ReadWrite", "ReadOnly", 1, ""},
        {"nfs", "ReadWrite", "Disabled", 1, "1|1|1"},   {"nfs", "ReadOnly", "Disabled", 1, "1|0|1"},
        {"nfs", "Disabled", "Disabled", 1, "0|0|1"},    {"nfs", "ReadWrite", "ReadOnly", 1, "1|0|1"},
        {"nfs", "ReadWrite", "Disabled", 0, "0|0|0"},   {"ftp", "ReadOnly", "ReadOnly", 1, "0|0|0"},
        {"ftp", "ReadOnly", "ReadWrite", 1, "1|1|0"},   {"ftp", "ReadWrite", "ReadWrite", 0, "0|0|0"},
        {"ftp", "ReadWrite", "ReadOnly", 0, "1|0|0"},   {"http", "ReadOnly", "ReadOnly", 1, "1|0|0"},
        {"rsync", "ReadWrite", "ReadOnly", 1, "1|0|0"},
    };
    for (const auto &[proto, default_access, access, root, stored] : cases) {
        SCOPED_TRACE(std::string(proto) + default_access + access);
        sql("PRAGMA foreign_keys=OFF;DELETE FROM share;DELETE FROM host_acl");
        ShareRecord record;
        record.with_everything();
        record.cifs.DefaultAccess = record.afp.DefaultAccess = record.nfs.DefaultAccess =
            record.ftp.DefaultAccess = record.http.DefaultAccess = record.rsync.DefaultAccess =
                default_access;
        record.host_acl.Access = access;
        record.host_acl.Root = root;
        ASSERT_OK(add(record.named("docs")));
        const Rows found =
            rows("SELECT read,write,root FROM host_acl WHERE proto='" + std::string(proto) + "'");
        EXPECT_EQ(stored, found.empty() ? "" : found.front());
    }
}

TEST_F(ShareAdd, AHostIsKnownByItsIdOrByItsCanonicalNameAndStoredOnce)
{
    ShareRecord record;
    record.share.Nfs = &record.nfs;
    qbobj_Host_t hosts[] = {{nullptr, 0, 0, "192.168.1.77/24"},
                            {nullptr, 0, 0, ""}, // skipped
                            {nullptr, 0, 7, nullptr},
                            {nullptr, 7, 0, "known"}};
    sql("INSERT INTO host (id,name) VALUES(7,'known')");
    qbobj_HostAcl_t entries[] = {{&entries[1], &hosts[0], "ReadOnly", 0},
                                 {&entries[2], &hosts[1], "ReadOnly", 0},
                                 {&entries[3], &hosts[2], "ReadOnly", 0},
                                 {nullptr, &hosts[3], "ReadWrite", 0}};
    record.nfs.HostAcl = entries;
    ASSERT_OK(add(record.named("docs")));
    EXPECT_EQ((Rows{"192.168.1.0/24|1|0", "known|1|1"}),
              rows("SELECT H.name,A.read,A.write FROM host_acl A JOIN host H ON H.id=A.host_id ORDER BY 1"));
    EXPECT_EQ("2", value("SELECT COUNT(*) FROM host"));
}

} // namespace
