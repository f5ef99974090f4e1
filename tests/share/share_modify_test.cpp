// Shares changed: only what a record carries, renames with everything that knows the old name, and `Changed`.
#include "share_rows.h"
#include "share_writing.h"

#include <tuple>

using namespace qbobj_test;

namespace
{

using Rows = std::vector<std::string>;

class ShareModify : public qbobj_test::ShareWriting
{
  protected:
    void SetUp() override { add_with_everything("Docs"); }
};

/* ---- The share itself ---------------------------------------------------------------------------------- */

TEST_F(ShareModify, ARecordThatCarriesOnlyACommentChangesNothingElse)
{
    const std::string before = content();
    const std::string changed_at = value("SELECT update_ts FROM share");
    ShareRecord record;
    record.share.Comment = "it's new";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("it's new", value("SELECT comment FROM share"));
    sql("UPDATE share SET comment=''");
    sql("UPDATE share SET update_ts='" + changed_at + "'");
    EXPECT_EQ(before, content());
    ShareRecord nothing;
    ASSERT_OK(modify(nothing.of("data/Docs")));
    EXPECT_EQ(before, content());
    EXPECT_OK(qbobj_modifyShare(qbdb, db, nullptr, 0, &err));
}

TEST_F(ShareModify, ARenameTakesEverythingAlongThatKnowsTheOldName)
{
    sql("INSERT INTO `$snapshot` (zfs_name,name) VALUES('data/Docs','s'),('data/other','s');"
        "INSERT INTO `$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES"
        "('Docs','s','origin'),('copy','s','Docs');"
        "INSERT INTO backup (name,src_type,src_share_proto,dst_type,dst_share_proto) VALUES"
        "('from','share','Docs','usb','Docs'),('to','home','Docs','share','Docs')");
    ShareRecord record;
    record.share.ShareName = "papers";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("papers|data/papers|/data/papers", rows("SELECT name,zfs_name,path FROM share").at(0));
    EXPECT_EQ((Rows{"data/other", "data/papers"}), rows("SELECT zfs_name FROM `$snapshot` ORDER BY 1"));
    EXPECT_EQ((Rows{"papers|origin", "copy|papers"}),
              rows("SELECT cloned_zfs_name,parent_zfs_name FROM `$snapshot_clones`"));
    EXPECT_EQ((Rows{"papers|Docs", "Docs|papers"}),
              rows("SELECT src_share_proto,dst_share_proto FROM backup"));
    EXPECT_EQ("data/papers", value("SELECT zfs_name FROM `$application_on_share`"));
    EXPECT_STREQ("Docs", record.share.OldShareName);
    EXPECT_STREQ("/data/Docs", record.share.OldPath);
    EXPECT_STREQ("/data/papers", record.share.Path);
}

TEST_F(ShareModify, AnotherSpellingOfTheSameLettersIsNoRename)
{
    const std::string before = content();
    ShareRecord record;
    record.share.ShareName = "docs";
    EXPECT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ(before, content());
}

TEST_F(ShareModify, ARenameThatIsNotPossibleSaysWhy)
{
    add_plain("other");
    add_plain("dropnest2");
    sql("INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/dropnest','dropnest','data','/d')");
    const std::string long_name(200, 'n');
    const std::string too_long = "ShareName is too long (" + long_name + ")";
    struct Case {
        const char *share;
        const char *name;
        qbobj_error_t code;
        const char *message;
    };
    const Case cases[] = {
        {"data/Docs", long_name.c_str(), QBOBJ_ERROR_UI__NAME_TOO_LONG, too_long.c_str()},
        {"data/Docs", "global", QBOBJ_ERROR_UI__SHARENAME_RESERVED, "ShareName (global) is reserved"},
        {"data/Docs", "a/b", QBOBJ_ERROR_API_ARGS, "Invalid ShareName (a/b), rc=2"},
        {"data/Docs", "OTHER", QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
         "Cannot rename to the name which already exist."},
        {"data/dropnest", "free", QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME,
         "Cannot rename to/from reserved share name"},
        {"data/none", "free", QBOBJ_ERROR_API_ARGS, "Invalid resource_id (data/none)."},
    };
    const std::string before = content();
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        ShareRecord record;
        record.share.ShareName = one.name;
        EXPECT_FAILS(modify(record.of(one.share)), one.code, one.message);
        EXPECT_EQ(before, content());
    }
    sql("DELETE FROM share WHERE name='dropnest'");
    ShareRecord record;
    record.share.ShareName = "dropnest";
    EXPECT_FAILS(modify(record.of("data/Docs")), QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME,
                 "Cannot rename to/from reserved share name");
}

TEST_F(ShareModify, ADatasetThatIsTakenStopsARename)
{
    ShareRecord taken;
    taken.named("elsewhere").share.Path = "/data/papers";
    ASSERT_OK(add(taken));
    const std::string before = content();
    ShareRecord record;
    record.share.ShareName = "papers";
    EXPECT_FAILS(modify(record.of("data/Docs")), QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS,
                 "Sharename specified is already exist.");
    EXPECT_EQ(before, content());
}

TEST_F(ShareModify, AChainThatFailsInItsMiddleLeavesNothingRenamed)
{
    add_plain("other");
    ShareRecord first;
    ShareRecord second;
    first.of("data/Docs").share._link = &second.of("data/other").share;
    first.share.ShareName = "papers";
    second.share.ShareName = "a/b";
    const std::string before = content();
    EXPECT_FAILS(modify(first), QBOBJ_ERROR_API_ARGS, "Invalid ShareName (a/b), rc=2");
    EXPECT_EQ(before, content());
}

TEST_F(ShareModify, OneRecordOrTheWholeChainIsChangedAndReadBack)
{
    add_plain("other");
    const auto chain = [](ShareRecord &first, ShareRecord &second) {
        first.of("data/Docs").with_stat().share._link = &second.of("data/other").share;
        first.stat.User = nullptr;
        first.stat.Group = nullptr;
        first.stat.GroupAccess = "Disabled";
        first.share.Comment = second.share.Comment = "new";
    };
    ShareRecord alone;
    ShareRecord untouched;
    chain(alone, untouched);
    ASSERT_OK(modify(alone, 1));
    EXPECT_EQ((Rows{"new", ""}), rows("SELECT comment FROM share ORDER BY id"));
    EXPECT_EQ(nullptr, alone.share.Path);
    EXPECT_EQ(0, alone.stat._PosixMode);

    ShareRecord first;
    ShareRecord second;
    chain(first, second);
    ASSERT_OK(modify(first));
    EXPECT_EQ((Rows{"new", "new"}), rows("SELECT comment FROM share ORDER BY id"));
    EXPECT_STREQ("/data/Docs", first.share.Path);
    EXPECT_STREQ("/data/other", second.share.Path);
    EXPECT_STREQ("Docs", first.share.OldShareName);
    EXPECT_EQ(01707, first.stat._PosixMode);
    EXPECT_EQ(nullptr, second.share.Stat);
}

TEST_F(ShareModify, TheSnapshotFolderIsShownAndHidden)
{
    ShareRecord record;
    record.share.VisibleSnapFolder = "snaps";
    record.share.VisibleSnapshot = 1;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("snaps", value("SELECT visible_snapdir FROM share"));
    EXPECT_EQ(0, record.share.OldVisibleSnapshot);
    record.share.VisibleSnapshot = 0;
    ASSERT_OK(modify(record));
    EXPECT_EQ("NULL", value("SELECT visible_snapdir FROM share"));
    EXPECT_EQ(1, record.share.OldVisibleSnapshot);

    ASSERT_OK(qbobj_modifyShareVisibleSnapFolder(qbdb, db, "data/Docs", "it's", &err));
    EXPECT_EQ("it's", value("SELECT visible_snapdir FROM share"));
    ASSERT_OK(qbobj_modifyShareVisibleSnapFolder(qbdb, db, "data/Docs", nullptr, &err));
    EXPECT_EQ("NULL", value("SELECT visible_snapdir FROM share"));
}

TEST_F(ShareModify, TheOwnerIsGivenByIdOrByName)
{
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES(1000,'ann',99);"
        "INSERT INTO `$group` (id,gname) VALUES(1001,'team')");
    const std::string owner = "SELECT user_id,group_id FROM share";
    ShareRecord by_name;
    by_name.with_stat().user.UserName = "ann";
    by_name.group.GroupName = "team";
    ASSERT_OK(modify(by_name.of("data/Docs")));
    EXPECT_EQ(Rows{"1000|1001"}, rows(owner));
    ShareRecord by_account;
    by_account.with_stat().user.UserId = 5;
    by_account.group.resource_id = 6;
    ASSERT_OK(modify(by_account.of("data/Docs")));
    EXPECT_EQ(Rows{"5|6"}, rows(owner));
    // A directory account's internal id stands for its POSIX one.
    join_directory();
    sql("UPDATE service_cifs SET no_sync_ads=1");
    ShareRecord directory;
    directory.with_stat().user.resource_id = -1;
    directory.group.GroupName = "daemon";
    ASSERT_OK(modify(directory.of("data/Docs")));
    EXPECT_EQ(Rows{"1|1"}, rows(owner));
}

/* ---- Storage attributes and what else hangs on it ------------------------------------------------------ */

TEST_F(ShareModify, OnlyTheAttributesGivenAreWritten)
{
    sql("UPDATE zfs_attr SET mb_quota=1,mb_reservation=2,compression=1,logbias='latency'");
    ShareRecord record;
    record.share._void_ReserveMB = record.share._void_Dedup = 0;
    record.share.ReserveMB = uint64_t{1} << 40;
    record.share.Dedup = 1;
    record.share.Sync = "disabled";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("1|1099511627776|0|0|1|0|1|latency|disabled",
              rows("SELECT mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,"
                   "bit_rot_protection,dedup,logbias,sync FROM zfs_attr")
                  .at(0));
}

TEST_F(ShareModify, ALimitLiesBetweenWhatIsUsedAndWhatIsFree)
{
    struct Case {
        const char *used; // bytes
        uint64_t limit_mb;
        bool accepted;
    };
    constexpr Case cases[] = {
        {"NULL", 10240, true},
        {"NULL", 10241, false},
        {"NULL", 0, true},
        {"104857600", 100, true},
        {"104857600", 99, false},
        {"999999999999", 0, true}, // 0 is no limit
        {"NULL", (uint64_t{1} << 32) + 5, false},
    };
    sql("INSERT INTO _zfs_stat (share_id) VALUES(1)");
    for (const Case &one : cases) {
        SCOPED_TRACE(one.limit_mb);
        sql(std::string("UPDATE _zfs_stat SET used=") + one.used);
        ShareRecord record;
        record.share._void_RefQuotaMB = 0;
        record.share.RefQuotaMB = one.limit_mb;
        record.of("data/Docs");
        if (one.accepted)
            EXPECT_OK(modify(record));
        else
            EXPECT_FAILS(modify(record), QBOBJ_ERROR_API_ARGS,
                         "Invalid quota value. Need to be larger than Consumed Space and less than Free "
                         "Space.");
    }
}

TEST_F(ShareModify, ALimitIsCheckedForTheNewNameOfAShare)
{
    sql("INSERT INTO _zfs_stat (share_id,used) VALUES(1,1048576000)");
    ShareRecord record;
    record.share.ShareName = "papers";
    record.share._void_RefQuotaMB = 0;
    record.share.RefQuotaMB = 10;
    const std::string before = content();
    EXPECT_EQ(QBOBJ_ERROR_API_ARGS, modify(record.of("data/Docs")));
    EXPECT_EQ(before, content());
}

TEST_F(ShareModify, ABlockVolumeIsResizedAndRenamed)
{
    ShareRecord record;
    record.share.Zvol = &record.zvol;
    record.zvol.SizeKB = 5000000000;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("5000000000|0", rows("SELECT kb_size,is_sparse FROM zvol_share_option").at(0));

    ASSERT_OK(qbobj_modifyZvol(qbdb, db, "data/Docs", "disk", "it's", 7, 1, &err));
    EXPECT_EQ("7|1", rows("SELECT kb_size,is_sparse FROM zvol_share_option").at(0));
    EXPECT_EQ("disk|it's|/data/Docs|data/Docs", rows("SELECT name,comment,path,zfs_name FROM share").at(0));
    add_plain("other");
    EXPECT_FAILS(qbobj_modifyZvol(qbdb, db, "data/other", "disk", "", 7, 1, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'UPDATE share'. UNIQUE constraint failed: share.name");
}

TEST_F(ShareModify, MarkersAreReplacedAndQuotasMerged)
{
    sql("UPDATE account_default SET diskquota_warn=75");
    ShareRecord record;
    record.share.UsedBy = &record.used_by;
    record.used_by.AppName = "backup";
    record.share.UserQuota = record.share.GroupQuota = &record.quota;
    record.quota.AccountId = 1000;
    record.quota.HardMB = 5000000001;
    ASSERT_OK(modify(record.of("data/Docs")));
    record.quota.AccountId = 1001;
    record.quota.HardMB = 11;
    ASSERT_OK(modify(record));
    EXPECT_EQ(Rows{"data/Docs|backup|NULL"}, rows("SELECT * FROM `$application_on_share`"));
    // The soft limit is cut to whole megabytes.
    EXPECT_EQ((Rows{"1000|3750000000|5000000001", "1001|8|11"}),
              rows("SELECT user_id,mb_soft,mb_hard FROM user_quota ORDER BY 1"));
    EXPECT_EQ("2", value("SELECT COUNT(*) FROM group_quota"));
}

TEST_F(ShareModify, AScheduleThatIsMissingIsMadeAndOtherwiseChangedFieldByField)
{
    const std::string columns =
        "SELECT enabled,minute,hour,day_of_month,day_of_week,month,last_taken,purge_manual_snapshot,"
        "last_daily_taken,last_weekly_taken FROM snapshot_schedule";
    ShareRecord record;
    record.share.SnapshotSchedule = &record.schedule;
    record.schedule.Hour = "3";
    record.schedule.LastTaken = 9;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ(Rows{"0|0|3|*|*|*|9|0|0|0"}, rows(columns));
    sql("DELETE FROM snapshot_schedule");
    record.schedule.Enabled = 1;
    ASSERT_OK(modify(record));
    EXPECT_EQ(Rows{"1|0|3|*|*|*|9|0|0|0"}, rows(columns));
}

/* ---- Protocols ----------------------------------------------------------------------------------------- */

// The protocols' records of a share.
struct CarriedProtocol {
    std::string word;
    int &(*changed)(ShareRecord &record);
    void (*carry)(ShareRecord &record);
};

using R = ShareRecord;
const CarriedProtocol protocols[] = {
    {"cifs", [](R &r) -> int & { return r.cifs.Changed; }, [](R &r) { r.share.Cifs = &r.cifs; }},
    {"afp", [](R &r) -> int & { return r.afp.Changed; }, [](R &r) { r.share.Afp = &r.afp; }},
    {"nfs", [](R &r) -> int & { return r.nfs.Changed; }, [](R &r) { r.share.Nfs = &r.nfs; }},
    {"ftp", [](R &r) -> int & { return r.ftp.Changed; }, [](R &r) { r.share.Ftp = &r.ftp; }},
    {"http", [](R &r) -> int & { return r.http.Changed; }, [](R &r) { r.share.Http = &r.http; }},
    {"dlna", [](R &r) -> int & { return r.dlna.Changed; }, [](R &r) { r.share.Dlna = &r.dlna; }},
    {"daap", [](R &r) -> int & { return r.daap.Changed; }, [](R &r) { r.share.Daap = &r.daap; }},
    {"rsync", [](R &r) -> int & { return r.rsync.Changed; }, [](R &r) { r.share.Rsync = &r.rsync; }},
};

TEST_F(ShareModify, ChangedTellsWhatDiffersAndTwoServicesAreTold)
{
    for (const auto &[word, changed, carry] : protocols) {
        SCOPED_TRACE(word);
        const std::string row = "SELECT * FROM " + word + "_share_option";
        ShareRecord same;
        same.with_everything();
        qbobj_clear_Share(&same.share);
        same.nfs.Sync = 1;
        carry(same.of("data/Docs"));
        const std::string row_before = rows(row).at(0);
        ASSERT_OK(modify(same));
        EXPECT_EQ(0, changed(same));
        EXPECT_EQ(row_before, rows(row).at(0));
        // Of FTP nothing that every record carries is written.
        ShareRecord other;
        other.cifs.NotAvailable = other.afp.NotAvailable = other.nfs.NotAvailable = other.http.NotAvailable =
            other.dlna.NotAvailable = other.daap.NotAvailable = other.rsync.NotAvailable = 1;
        other.ftp.DefaultAccess = "Disabled";
        carry(other.of("data/Docs"));
        const std::string told = journal();
        ASSERT_OK(modify(other));
        EXPECT_EQ(word == "cifs" || word == "ftp", told != journal());
        EXPECT_NE(row_before, rows(row).at(0));
        // rsync watches DLNA's table and never sees its own changes.
        EXPECT_EQ(word == "rsync" ? 0 : 1, changed(other));
    }
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM sqlite_temp_schema"));
}

TEST_F(ShareModify, AListThatDiffersIsAChangeAndANullListIsAnEmptyOne)
{
    ShareRecord record;
    record.with_everything();
    record.share.UsedBy = nullptr;
    record.cifs.GroupAcl = nullptr;
    record.afp.UserAcl = nullptr;
    record.http.HostAcl = nullptr;
    record.ftp.HostAcl = nullptr;
    record.nfs.HostAcl = nullptr;
    record.nfs.Sync = 1;
    record.cifs.DfolderAcl = nullptr;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ(std::tuple(1, 1, 1, 1, 1),
              std::tuple(record.cifs.Changed, record.afp.Changed, record.http.Changed, record.ftp.Changed,
                         record.nfs.Changed));
    EXPECT_EQ((Rows{"afp", "ftp", "http"}), rows("SELECT proto FROM group_acl ORDER BY 1"));
    EXPECT_EQ((Rows{"cifs", "ftp", "http"}), rows("SELECT proto FROM user_acl ORDER BY 1"));
    EXPECT_EQ((Rows{"cifs", "rsync"}), rows("SELECT proto FROM host_acl ORDER BY 1"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM cifs_dfs_option"));
}

TEST_F(ShareModify, AMissingOptionRowIsMadeWithDefaultsExceptForWindows)
{
    add_plain("bare");
    ShareRecord record;
    for (const auto &protocol : protocols)
        protocol.carry(record);
    record.nfs.Sync = 1;
    ASSERT_OK(modify(record.of("data/bare")));
    // FTP is made unavailable, and NotAvailable is not looked at.
    const std::string made[] = {"",
                                "2|1|writeable|1|NULL|NULL",
                                "2|1|writeable|1",
                                "2|0|writeable|0|0|0",
                                "2|1|writeable|0",
                                "2|1|readonly|7",
                                "2|1",
                                "2|1|writeable|disabled"};
    for (std::size_t i = 0; i < std::size(made); ++i) {
        const std::string &word = protocols[i].word;
        const Rows found = rows("SELECT * FROM " + word + "_share_option WHERE share_id=2");
        EXPECT_EQ(made[i], found.empty() ? "" : found.front()) << word;
        EXPECT_EQ(word == "cifs" || word == "rsync" ? 0 : 1, protocols[i].changed(record)) << word;
    }
}

TEST_F(ShareModify, WindowsOptionsAreWrittenAsFarAsTheyAreCarried)
{
    const std::string columns =
        "SELECT cifs_access,cifs_guest_access,cifs_hide_share,cifs_group_create_mask,"
        "cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,cifs_everyone_directory_mask,"
        "cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,cifs_recycle_age_limit,oplocks,"
        "available,cifs_enabledfs FROM cifs_share_option";
    ShareRecord record;
    record.share.Cifs = &record.cifs;
    record.cifs.FolderCreateEveryoneRights = "Disabled";
    record.cifs._void_RecycleSizeLimit = 0;
    record.cifs.RecycleSizeLimit = 11; // the bin is on, as stored
    record.cifs.EnableDFS = 5;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ(Rows{"writeable|1|0|6|6|1|7|0|1023|1|11|0|0|1|1"}, rows(columns));

    // Limits of a bin that is off stay as they are; switches become 0 or 1, numbers stay what they are.
    record.cifs.DefaultAccess = "ReadOnly";
    record.cifs._void_AllowGuestAccess = record.cifs._void_ShareDisplayOption = 0;
    record.cifs.ShareDisplayOption = 2;
    record.cifs._void_EnableRecycleBin = record.cifs._void_RecycleAgeLimit = 0;
    record.cifs.RecycleSizeLimit = record.cifs.RecycleAgeLimit = 12;
    record.cifs._void_NewFileFolderPermAutoset = record.cifs._void_AclChangeRestrictionToggle = 0;
    record.cifs.AclChangeRestrictionToggle = 511;
    record.cifs._void_EnableOplocks = 0;
    record.cifs.EnableOplocks = 8;
    record.cifs.FileCreateGroupRights = record.cifs.FileCreateEveryoneRights =
        record.cifs.FolderCreateGroupRights = "ReadOnly";
    record.cifs.NotAvailable = 1;
    record.cifs.EnableDFS = 0;
    ASSERT_OK(modify(record));
    EXPECT_EQ(Rows{"readonly|0|2|4|4|0|5|0|511|0|11|0|1|0|0"}, rows(columns));
    // A stored bin that is off takes no limits either.
    record.cifs._void_EnableRecycleBin = 1;
    ASSERT_OK(modify(record));
    EXPECT_EQ("11|0",
              rows("SELECT cifs_recycle_mb_limit,cifs_recycle_age_limit FROM cifs_share_option").at(0));
}

TEST_F(ShareModify, RightsOfNewAppleFilesAreSetAndGivenUp)
{
    constexpr int open = -1; // the record leaves the switch open
    const struct {
        const char *what;
        int autoset;
        const char *given[4]; // group and everyone of files, then of folders
        const char *stored;
    } cases[] = {
        {"the switch alone sets them all", 1, {}, "54|63"},
        {"what is given", 1, {"ReadOnly", "Disabled", nullptr, "ReadOnly"}, "32|61"},
        {"one of a pair", open, {nullptr, "ReadOnly", nullptr, nullptr}, "52|61"},
        {"without the switch", open, {"Disabled", "Disabled", "Disabled", nullptr}, "0|7"},
        {"nothing", open, {}, "0|7"},
        {"given up", 0, {"ReadWrite", nullptr, nullptr, nullptr}, "NULL|NULL"},
    };
    for (const auto &[what, autoset, given, stored] : cases) {
        ShareRecord record;
        record.share.Afp = &record.afp;
        record.afp._void_NewFileFolderPermAutoset = autoset == open ? 1 : 0;
        record.afp.NewFileFolderPermAutoset = autoset;
        record.afp.FileCreateGroupRights = given[0];
        record.afp.FileCreateEveryoneRights = given[1];
        record.afp.FolderCreateGroupRights = given[2];
        record.afp.FolderCreateEveryoneRights = given[3];
        ASSERT_OK(modify(record.of("data/Docs")));
        EXPECT_EQ(Rows{stored}, rows("SELECT afp_fperm,afp_dperm FROM afp_share_option")) << what;
    }
}

TEST_F(ShareModify, FtpUmasksAreWrittenWhenTheirRightsAreCarried)
{
    ShareRecord record;
    record.share.Ftp = &record.ftp;
    record.ftp._void_NewFileFolderPermAutoset = 0;
    record.ftp.NewFileFolderPermAutoset = 1;
    record.ftp.FileCreateGroupRights = "ReadOnly";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("1|16|0",
              rows("SELECT ftp_mask,ftp_create_mask,ftp_directory_mask FROM ftp_share_option").at(0));
}

TEST_F(ShareModify, AShareThatHttpNoLongerReachesIsNotTheWebRoot)
{
    sql("UPDATE service_http SET share_name='Docs'");
    ShareRecord record;
    record.share.Http = &record.http;
    record.http.DefaultAccess = "ReadOnly";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("Docs", value("SELECT share_name FROM service_http"));
    record.http.DefaultAccess = "Disabled";
    ASSERT_OK(modify(record));
    EXPECT_EQ("", value("SELECT share_name FROM service_http"));
}

TEST_F(ShareModify, DisabledTakesTheRowOfMediaPlayersAndRsyncAway)
{
    ShareRecord record;
    record.share.Dlna = &record.dlna;
    record.share.Rsync = &record.rsync;
    record.dlna.DefaultAccess = record.rsync.DefaultAccess = "Disabled";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM dlna_share_option"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM rsync_share_option"));
    EXPECT_EQ(1, record.dlna.Changed);
}

TEST_F(ShareModify, RsyncLoginsThatComeBackMaskedKeepTheirPasswords)
{
    qbobj_UserPasswordAcl_t logins[] = {{&logins[1], "sync", masked_password},
                                        {&logins[2], "new", "word"},
                                        {&logins[3], "unknown", masked_password},
                                        {&logins[4], "", "ends the list"},
                                        {nullptr, "late", "never read"}};
    ShareRecord record;
    record.share.Rsync = &record.rsync;
    record.rsync.UserPasswordAcl = logins;
    record.rsync.PasswordProtection = "Enabled";
    ASSERT_OK(modify(record.of("data/Docs")));
    const std::string stored = "SELECT user,password FROM rsync_user_password_acl ORDER BY 1";
    EXPECT_EQ((Rows{"new|word", "sync|secret"}), rows(stored));
    EXPECT_EQ("enabled", value("SELECT passwordprotection FROM rsync_share_option"));
    logins[0] = {nullptr, "sync", "changed"};
    ASSERT_OK(modify(record));
    EXPECT_EQ(Rows{"sync|changed"}, rows(stored));
}

TEST_F(ShareModify, AWordThatIsNotKnownIsNamedAndLeavesNothing)
{
    const std::string before = content();
    for (const CheckedWord &word : checked_words) {
        ShareRecord record;
        record.of("data/Docs").with_everything().share.Stat = &record.stat;
        word.of(record) = "x";
        EXPECT_FAILS(modify(record), QBOBJ_ERROR_API_ARGS,
                     ("Invalid " + std::string(word.modified) + " (x).").c_str());
        // Lists are written by the unit that creates shares.
        const bool of_list = std::string_view(word.modified).find("Acl") != std::string_view::npos;
        EXPECT_STREQ(of_list ? "qbobj_api2_add_share" : "qbobj_api2_modify_share", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareModify, WhatIsGivenWronglyIsNamedAndLeavesNothing)
{
    const Refusal refusals[] = {
        // Before the limit, which is too large.
        {[](ShareRecord &r) {
             r.share.Sync = "never", r.share._void_RefQuotaMB = 0, r.share.RefQuotaMB = 99999;
         },
         "Invalid Sync (never). One of 'standard', 'always', 'disabled'."},
        {[](ShareRecord &r) { r.stat.User = &r.user; },
         "Invalid stat->User (resource_id=0, UserName=(null))."},
        {[](ShareRecord &r) { r.stat.User = &r.user, r.user.resource_id = -1; },
         "Invalid stat->User (resource_id=-1, UserName=(null))."},
        {[](ShareRecord &r) { r.stat.User = &r.user, r.user.UserName = "nobody-here"; },
         "Unknown User (nobody-here)."},
        {[](ShareRecord &r) { r.stat.Group = &r.group; },
         "Invalid stat->Group (resource_id=0, GroupName=(null))."},
        {[](ShareRecord &r) { r.stat.Group = &r.group, r.group.GroupName = "no-group"; },
         "Unknown Group (no-group)."},
        {[](ShareRecord &r) { r.host.HostName = "no host"; },
         "Invalid HostName or Network specified (no host)."},
    };
    const std::string before = content();
    for (const Refusal &refusal : refusals) {
        ShareRecord record;
        record.of("data/Docs").with_everything().share.Stat = &record.stat;
        record.share.ShareName = "papers";
        refusal.spoil(record);
        EXPECT_FAILS(modify(record), refusal.code, refusal.message);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareModify, AFailingUpdateIsReportedByItsTable)
{
    constexpr struct {
        const char *table;
        const char *message;
        qbobj_error_t code = QBOBJ_ERROR_DB_MISC;
    } cases[] = {
        // A refused row counts as a name that exists.
        {"share", "Sharename specified is already exist.", QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS},
        {"zfs_attr", "Failed DB Query for 'UPDATE zfs_attr'. no"},
        {"cifs_share_option", "Failed DB Query for 'UPDATE cifs_share_option'. no"},
        {"rsync_share_option", "Failed DB Query for 'UPDATE rsync_share_option'. no"},
        // Callers know this spelling.
        {"snapshot_schedule", "Failed DB Query for 'UPDATE snapstho_schedule'. no"},
    };
    for (const auto &[table, message, code] : cases) {
        sql(std::string("CREATE TEMP TRIGGER obstacle BEFORE UPDATE ON ") + table +
            " BEGIN SELECT RAISE(ABORT,'no'); END");
        ShareRecord record;
        record.of("data/Docs").with_everything().share.SnapshotSchedule = &record.schedule;
        record.share.LogBias = "x";
        record.share.Comment = "new";
        const std::string before = content();
        EXPECT_FAILS(modify(record), code, message);
        EXPECT_EQ(before, content());
        sql("DROP TRIGGER obstacle");
    }
}

TEST_F(ShareModify, AValueThatDoesNotFitIsLeftOutAndLogged)
{
    reopen(QBDB_LOG_WARN);
    const std::string long_text(600, 'c');
    ShareRecord record;
    record.share.Comment = long_text.c_str();
    record.share.VisibleSnapFolder = "snaps";
    record.share.VisibleSnapshot = 1;
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("|snaps", rows("SELECT comment,visible_snapdir FROM share").at(0));
    EXPECT_NE(std::string::npos, log().find("'comment'"));
}

TEST_F(ShareModify, ADatasetWithAQuoteIsFoundByItsLimitToo)
{
    sql("UPDATE share SET zfs_name='data/it''s'");
    ShareRecord record;
    record.of("data/it's").share._void_RefQuotaMB = 0;
    record.share.RefQuotaMB = 2;
    EXPECT_OK(modify(record));
    EXPECT_EQ("2", value("SELECT mb_refquota FROM zfs_attr"));
}

TEST_F(ShareModify, AShareWithoutNameOrPathCanBeNamedAndDeleted)
{
    let_names_be_missing(*this);
    sql("UPDATE share SET name=NULL,path=NULL");
    ShareRecord unnamed;
    ASSERT_OK(modify(unnamed.of("data/Docs")));
    EXPECT_EQ("||", fields(unnamed.share.OldShareName, unnamed.share.OldPath, unnamed.share.Path));
    ShareRecord record;
    record.share.ShareName = "papers";
    ASSERT_OK(modify(record.of("data/Docs")));
    EXPECT_EQ("papers|data/papers|/data/papers", rows("SELECT name,zfs_name,path FROM share").at(0));
    sql("UPDATE share SET name=NULL,path=NULL");
    ShareRecord removed;
    ASSERT_OK(qbobj_deleteShare(qbdb, db, &removed.of("data/papers").share, &err));
    EXPECT_EQ("||", fields(removed.share.OldShareName, removed.share.OldPath, removed.share.Path));
}

} // namespace
