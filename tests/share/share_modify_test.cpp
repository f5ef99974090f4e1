// Shares changed: only what a record carries, renames with everything that knows the old name, and `Changed`.
#include "share_writing.h"

#include <algorithm>

using namespace qbobj_test;

namespace
{

class ShareModify : public ShareWriting
{
  protected:
    void SetUp() override { ASSERT_OK(add("Docs", everything())); }
};

/* ---- The share itself ---------------------------------------------------------------------------------- */

TEST_F(ShareModify, ARecordThatCarriesOnlyACommentChangesNothingElse)
{
    const std::string before = content();
    const std::string changed_at = value("SELECT update_ts FROM share");
    ASSERT_OK(modify(R"({"Comment":"it's new"})"));
    EXPECT_EQ("it's new", value("SELECT comment FROM share"));
    sql("UPDATE share SET comment=''");
    sql("UPDATE share SET update_ts='" + changed_at + "'");
    EXPECT_EQ(before, content());
    // Another spelling of the same letters is no rename.
    for (const char *nothing : {"{}", R"({"ShareName":"docs"})"}) {
        ASSERT_OK(modify(nothing));
        EXPECT_EQ(before, content());
    }
    EXPECT_OK(call(qbobj_modifyShare, nullptr, 0));
}

TEST_F(ShareModify, ARenameTakesEverythingAlongThatKnowsTheOldName)
{
    sql("INSERT INTO `$snapshot` (zfs_name,name) VALUES('data/Docs','s'),('data/other','s');"
        "INSERT INTO `$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES"
        "('Docs','s','origin'),('copy','s','Docs');"
        "INSERT INTO backup (name,src_type,src_share_proto,dst_type,dst_share_proto) VALUES"
        "('from','share','Docs','usb','Docs'),('to','home','Docs','share','Docs')");
    ASSERT_OK(modify(R"({"ShareName":"papers"})"));
    EXPECT_EQ("papers|data/papers|/data/papers", rows("SELECT name,zfs_name,path FROM share").at(0));
    EXPECT_EQ((Rows{"data/other", "data/papers"}), rows("SELECT zfs_name FROM `$snapshot` ORDER BY 1"));
    EXPECT_EQ((Rows{"papers|origin", "copy|papers"}),
              rows("SELECT cloned_zfs_name,parent_zfs_name FROM `$snapshot_clones`"));
    EXPECT_EQ((Rows{"papers|Docs", "Docs|papers"}),
              rows("SELECT src_share_proto,dst_share_proto FROM backup"));
    EXPECT_EQ("data/papers", value("SELECT zfs_name FROM `$application_on_share`"));
    EXPECT_EQ("Docs|/data/Docs|/data/papers", fields(share->OldShareName, share->OldPath, share->Path));
}

TEST_F(ShareModify, ARenameThatIsNotPossibleSaysWhy)
{
    ASSERT_OK(add("other"));
    ASSERT_OK(add("elsewhere", R"({"Path":"/data/taken"})"));
    sql("INSERT INTO share (zfs_name,name,volume_id,path) VALUES('data/dropnest','dropnest','data','/d')");
    const std::string long_name(200, 'n');
    const std::string too_long = "ShareName is too long (" + long_name + ")";
    const std::tuple<const char *, const char *, qbobj_error_t, const char *> cases[] = {
        {"data/Docs", long_name.c_str(), QBOBJ_ERROR_UI__NAME_TOO_LONG, too_long.c_str()},
        {"data/Docs", "global", QBOBJ_ERROR_UI__SHARENAME_RESERVED, "ShareName (global) is reserved"},
        {"data/Docs", "a/b", bad_args, "Invalid ShareName (a/b), rc=2"},
        {"data/Docs", "OTHER", name_taken, "Cannot rename to the name which already exist."},
        {"data/Docs", "taken", name_taken, "Sharename specified is already exist."},
        {"data/dropnest", "free", QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME,
         "Cannot rename to/from reserved share name"},
        {"data/none", "free", bad_args, "Invalid resource_id (data/none)."}};
    const std::string before = content();
    for (const auto &[renamed, name, code, message] : cases) {
        EXPECT_FAILS(modify(Json{{"resource_id", renamed}, {"ShareName", name}}), code, message);
        EXPECT_EQ(before, content());
    }
    // In the middle of a chain.
    EXPECT_FAILS(modify(Json::parse(R"([{"resource_id":"data/Docs","ShareName":"papers"},
                                        {"resource_id":"data/other","ShareName":"a/b"}])")),
                 bad_args, "Invalid ShareName (a/b), rc=2");
    EXPECT_EQ(before, content());
    sql("DELETE FROM share WHERE name='dropnest'");
    EXPECT_FAILS(modify(R"({"ShareName":"dropnest"})"), QBOBJ_ERROR_UI__SHARE_CANNOT_RENAME,
                 "Cannot rename to/from reserved share name");
}

TEST_F(ShareModify, OneRecordOrTheWholeChainIsChangedAndReadBack)
{
    ASSERT_OK(add("other"));
    const Json chain = Json::parse(
        R"([{"resource_id":"data/Docs","Comment":"new","Stat":{"User":null,"Group":null,"GroupAccess":"Disabled"}},
            {"resource_id":"data/other","Comment":"new"}])");
    ASSERT_OK(modify(chain, 1));
    EXPECT_EQ((Rows{"new", ""}), rows("SELECT comment FROM share ORDER BY id"));
    EXPECT_EQ("NULL|0", fields(share->Path, share->Stat->_PosixMode));
    ASSERT_OK(modify(chain));
    EXPECT_EQ((Rows{"new", "new"}), rows("SELECT comment FROM share ORDER BY id"));
    EXPECT_EQ(fields("/data/Docs", "Docs", 01707),
              fields(share->Path, share->OldShareName, share->Stat->_PosixMode));
    EXPECT_STREQ("/data/other", share->_link->Path);
    EXPECT_EQ(nullptr, share->_link->Stat);
}

TEST_F(ShareModify, TheSnapshotFolderIsShownAndHidden)
{
    ASSERT_OK(modify(R"({"VisibleSnapFolder":"snaps","VisibleSnapshot":1})"));
    EXPECT_EQ("snaps", value("SELECT visible_snapdir FROM share"));
    EXPECT_EQ(0, share->OldVisibleSnapshot);
    ASSERT_OK(modify(R"({"VisibleSnapFolder":"snaps","VisibleSnapshot":0})"));
    EXPECT_EQ("NULL", value("SELECT visible_snapdir FROM share"));
    EXPECT_EQ(1, share->OldVisibleSnapshot);
    for (const char *folder : {"it's", static_cast<const char *>(nullptr)}) {
        ASSERT_OK(call(qbobj_modifyShareVisibleSnapFolder, "data/Docs", folder));
        EXPECT_EQ(text(folder), value("SELECT visible_snapdir FROM share"));
    }
}

TEST_F(ShareModify, TheOwnerIsGivenByIdOrByName)
{
    sql("INSERT INTO `$user` (id,uname,group_id) VALUES(1000,'ann',99);"
        "INSERT INTO `$group` (id,gname) VALUES(1001,'team')");
    const auto owner = [this](const char *stat) {
        EXPECT_OK(modify(stat));
        return rows("SELECT user_id,group_id FROM share").at(0);
    };
    EXPECT_EQ("1000|1001", owner(R"({"Stat":{"User":{"UserName":"ann"},"Group":{"GroupName":"team"}}})"));
    EXPECT_EQ("5|6", owner(R"({"Stat":{"User":{"UserId":5},"Group":{"resource_id":6}}})"));
    // A directory account's internal id stands for its POSIX one.
    join_directory();
    sql("UPDATE service_cifs SET no_sync_ads=1");
    EXPECT_EQ("1|1", owner(R"({"Stat":{"User":{"resource_id":-1},"Group":{"GroupName":"daemon"}}})"));
}

TEST_F(ShareModify, AShareWithoutNameOrPathCanBeNamedAndDeleted)
{
    let_names_be_missing(*this);
    sql("UPDATE share SET name=NULL,path=NULL");
    ASSERT_OK(modify("{}"));
    EXPECT_EQ("||", fields(share->OldShareName, share->OldPath, share->Path));
    ASSERT_OK(modify(R"({"ShareName":"papers"})"));
    EXPECT_EQ("papers|data/papers|/data/papers", rows("SELECT name,zfs_name,path FROM share").at(0));
    sql("UPDATE share SET name=NULL,path=NULL");
    ASSERT_OK(remove({{"resource_id", "data/papers"}}));
    EXPECT_EQ("||", fields(share->OldShareName, share->OldPath, share->Path));
}

/* ---- Storage attributes and what else hangs on it ------------------------------------------------------ */

TEST_F(ShareModify, ALimitLiesBetweenWhatIsUsedAndWhatIsFree)
{
    // What is used, in bytes; a change; whether it is accepted.
    const std::tuple<const char *, const char *, bool> cases[] = {
        {"NULL", R"({"RefQuotaMB":10240})", true},
        {"NULL", R"({"RefQuotaMB":10241})", false},
        {"NULL", R"({"RefQuotaMB":4294967301})", false},
        {"104857600", R"({"RefQuotaMB":100})", true},
        {"104857600", R"({"RefQuotaMB":99})", false},
        {"999999999999", R"({"RefQuotaMB":0})", true},
        // A rename is checked as what it makes of the share.
        {"1048576000", R"({"RefQuotaMB":10,"ShareName":"papers"})", false}};
    sql("INSERT INTO _zfs_stat (share_id) VALUES(1)");
    for (const auto &[used, given, accepted] : cases) {
        SCOPED_TRACE(given);
        sql(std::string("UPDATE _zfs_stat SET used=") + used);
        const std::string before = content();
        if (accepted) {
            EXPECT_OK(modify(given));
            continue;
        }
        EXPECT_FAILS(modify(given), bad_args,
                     "Invalid quota value. Need to be larger than Consumed Space and less than Free Space.");
        EXPECT_EQ(before, content());
    }
    // A dataset with a quote in its name is found, too.
    sql("UPDATE share SET zfs_name='data/it''s';UPDATE _zfs_stat SET used=9000000");
    EXPECT_FAILS(modify(R"({"resource_id":"data/it's","RefQuotaMB":2})"), bad_args,
                 "Invalid quota value. Need to be larger than Consumed Space and less than Free Space.");
}

TEST_F(ShareModify, ABlockVolumeIsResizedAndRenamed)
{
    ASSERT_OK(modify(R"({"Zvol":{"SizeKB":5000000000}})"));
    EXPECT_EQ("5000000000|0", rows("SELECT kb_size,is_sparse FROM zvol_share_option").at(0));
    ASSERT_OK(call(qbobj_modifyZvol, "data/Docs", "disk", "it's", 7, 1));
    EXPECT_EQ("7|1", rows("SELECT kb_size,is_sparse FROM zvol_share_option").at(0));
    EXPECT_EQ("disk|it's|/data/Docs|data/Docs", rows("SELECT name,comment,path,zfs_name FROM share").at(0));
    ASSERT_OK(add("other"));
    EXPECT_FAILS(call(qbobj_modifyZvol, "data/other", "disk", "", 7, 1), db_failed,
                 "Failed DB Query for 'UPDATE share'. UNIQUE constraint failed: share.name");
}

TEST_F(ShareModify, MarkersAreReplacedAndQuotasMerged)
{
    sql("UPDATE account_default SET diskquota_warn=75");
    ASSERT_OK(
        modify(R"({"UsedBy":[{"AppName":"backup"}],"UserQuota":[{"AccountId":1000,"HardMB":5000000001}]})"));
    ASSERT_OK(modify(
        R"({"UserQuota":[{"AccountId":1001,"HardMB":11}],"GroupQuota":[{"AccountId":7,"HardMB":9}]})"));
    EXPECT_EQ(Rows{"data/Docs|backup|NULL"}, rows("SELECT * FROM `$application_on_share`"));
    // The soft limit is cut to whole megabytes.
    EXPECT_EQ((Rows{"1000|3750000000|5000000001", "1001|8|11"}),
              rows("SELECT user_id,mb_soft,mb_hard FROM user_quota ORDER BY 1"));
    EXPECT_EQ("7|6|9", rows("SELECT group_id,mb_soft,mb_hard FROM group_quota").at(0));
}

/* ---- Protocols ----------------------------------------------------------------------------------------- */

constexpr auto afp = "SELECT afp_access,afp_guest_access,afp_fperm,afp_dperm FROM afp_share_option";
constexpr auto ftp = "SELECT ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask FROM ftp_share_option";
constexpr const char *rsync = "SELECT rsync_access,passwordprotection FROM rsync_share_option";
constexpr const char *web_root = "SELECT share_name FROM service_http";

// One after the other, each on what the ones before it left.
TEST_F(ShareModify, OnlyWhatARecordCarriesIsWritten)
{
    const char *const cases[][3] = {
        {R"({"QuotaMB":1,"ReserveMB":1099511627776,"Dedup":1,"Sync":"disabled"})", attributes,
         "1|1099511627776|0|0|0|0|1|NULL|disabled"},
        {R"({"RefQuotaMB":3,"RefReserveMB":4,"Compression":5,"BitRotProtection":6,"LogBias":"latency"})",
         attributes, "1|1099511627776|3|4|5|6|1|latency|disabled"},
        {R"({"SnapshotSchedule":{"Hour":"3","LastTaken":9}})", schedule, "0|0|3|*|*|*|9|0|0|0"},
        // The bin is on, as stored.
        {R"({"Cifs":{"FolderCreateEveryoneRights":"Disabled","RecycleSizeLimit":11,"EnableDFS":5}})", cifs,
         "writeable|1|0|6|6|1|7|0|1023|1|11|0|0|1|1"},
        // Limits of a bin that is off stay as they are; switches become 0 or 1, numbers stay what they are.
        {R"({"Cifs":{"DefaultAccess":"ReadOnly","AllowGuestAccess":0,"ShareDisplayOption":2,"EnableRecycleBin":0,
             "RecycleSizeLimit":12,"RecycleAgeLimit":12,"NewFileFolderPermAutoset":0,"EnableOplocks":8,
             "AclChangeRestrictionToggle":511,"FileCreateGroupRights":"ReadOnly","NotAvailable":1,
             "FileCreateEveryoneRights":"ReadOnly","FolderCreateGroupRights":"ReadOnly"}})",
         cifs, "readonly|0|2|4|4|0|5|0|511|0|11|0|1|0|0"},
        // A stored bin that is off takes no limits either.
        {R"({"Cifs":{"RecycleSizeLimit":12,"RecycleAgeLimit":12,"NotAvailable":1}})", cifs,
         "readonly|0|2|4|4|0|5|0|511|0|11|0|1|0|0"},
        // The switch for rights alone sets them all; a right that is given counts without it, too.
        {R"({"Afp":{"DefaultAccess":"ReadOnly","NewFileFolderPermAutoset":1}})", afp, "readonly|1|54|63"},
        {R"({"Afp":{"NewFileFolderPermAutoset":1,"FileCreateGroupRights":"ReadOnly",
             "FileCreateEveryoneRights":"Disabled","FolderCreateEveryoneRights":"ReadOnly"}})",
         afp, "readonly|1|32|61"},
        {R"({"Afp":{"FileCreateEveryoneRights":"ReadOnly","AllowGuestAccess":0}})", afp, "readonly|0|52|61"},
        {R"({"Afp":{"FolderCreateGroupRights":"Disabled"}})", afp, "readonly|0|52|7"},
        {R"({"Afp":{}})", afp, "readonly|0|52|7"},
        {R"({"Afp":{"NewFileFolderPermAutoset":0,"FileCreateGroupRights":"ReadOnly"}})", afp,
         "readonly|0|NULL|NULL"},
        {R"({"Ftp":{"NewFileFolderPermAutoset":5,"FileCreateGroupRights":"ReadOnly"}})", ftp,
         "writeable|1|16|0"},
        {R"({"Ftp":{"DefaultAccess":"ReadOnly","FolderCreateEveryoneRights":"Disabled"}})", ftp,
         "readonly|1|16|7"},
        {R"({"Http":{"DefaultAccess":"ReadOnly","EnableWebDav":7}})", web_root, "Docs"},
        // A share that nobody reaches is not the web root.
        {R"({"Http":{"DefaultAccess":"Disabled"}})", web_root, ""},
        {R"({})", "SELECT http_access,http_webdav FROM http_share_option", "disabled|1"},
        {R"({"Dlna":{"MediaType":"Video"}})", "SELECT access,media_type FROM dlna_share_option",
         "readonly|2"},
        {R"({"Rsync":{"DefaultAccess":"ReadOnly","PasswordProtection":"Enabled"}})", rsync,
         "readonly|enabled"},
        {R"({"Rsync":{}})", rsync, "readonly|enabled"},
        // "Disabled" takes the rows of media players and rsync away.
        {R"({"Dlna":{"DefaultAccess":"Disabled"}})", "SELECT COUNT(*) FROM dlna_share_option", "0"},
        {R"({"Rsync":{"DefaultAccess":"Disabled"}})", "SELECT COUNT(*) FROM rsync_share_option", "0"}};
    sql("UPDATE service_http SET share_name='Docs'");
    for (const auto &[given, select, stored] : cases) {
        ASSERT_OK(modify(given));
        EXPECT_EQ(stored, rows(select).at(0)) << given;
    }
    sql("DELETE FROM snapshot_schedule");
    ASSERT_OK(modify(R"({"SnapshotSchedule":{"Enabled":1,"Minute":"5"}})"));
    EXPECT_EQ("1|5|*|*|*|*|0|0|0|0", rows(schedule).at(0)) << "a schedule that is missing is made";
}

constexpr const char *protocols[] = {"Cifs", "Afp", "Nfs", "Ftp", "Http", "Dlna", "Daap", "Rsync"};

std::string table_of(std::string protocol)
{
    protocol[0] = static_cast<char>(std::tolower(protocol[0]));
    return protocol + "_share_option";
}

// What the last write says of a protocol.
int changed(const qbobj_Share_t *share, const char *protocol)
{
    return qbobj_json::to_json(qbobj_json::find_spec("Share"), share)[0][protocol]["Changed"];
}

TEST_F(ShareModify, ChangedTellsWhatDiffersAndTwoServicesAreTold)
{
    for (const std::string protocol : protocols) {
        SCOPED_TRACE(protocol);
        const std::string row = "SELECT * FROM " + table_of(protocol);
        const std::string before = rows(row).at(0);
        ASSERT_OK(modify(Json{{protocol, everything()[protocol]}}));
        EXPECT_EQ(0, changed(share, protocol.c_str()));
        EXPECT_EQ(before, rows(row).at(0));
        // Of FTP nothing that every record carries is written.
        const std::string told = journal();
        ASSERT_OK(modify(protocol == "Ftp" ? Json{{"Ftp", {{"DefaultAccess", "Disabled"}}}}
                                           : Json{{protocol, {{"NotAvailable", 1}}}}));
        EXPECT_EQ(protocol == "Cifs" || protocol == "Ftp", told != journal());
        EXPECT_NE(before, rows(row).at(0));
        // rsync watches DLNA's table and never sees its own changes.
        EXPECT_EQ(protocol == "Rsync" ? 0 : 1, changed(share, protocol.c_str()));
    }
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM sqlite_temp_schema"));
}

TEST_F(ShareModify, AListThatDiffersIsAChangeAndANullListIsAnEmptyOne)
{
    ASSERT_OK(modify(everything(R"({"Cifs":{"GroupAcl":null,"DfolderAcl":null},"Afp":{"UserAcl":null},
        "Http":{"HostAcl":null},"Ftp":{"HostAcl":null},"Nfs":{"HostAcl":null}})")));
    for (const char *protocol : {"Cifs", "Afp", "Http", "Ftp", "Nfs"})
        EXPECT_EQ(1, changed(share, protocol)) << protocol;
    EXPECT_EQ((Rows{"afp", "ftp", "http"}), rows("SELECT proto FROM group_acl ORDER BY 1"));
    EXPECT_EQ((Rows{"cifs", "ftp", "http"}), rows("SELECT proto FROM user_acl ORDER BY 1"));
    EXPECT_EQ((Rows{"cifs", "rsync"}), rows("SELECT proto FROM host_acl ORDER BY 1"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM cifs_dfs_option"));
}

TEST_F(ShareModify, AMissingOptionRowIsMadeWithDefaultsExceptForWindows)
{
    ASSERT_OK(add("bare"));
    ASSERT_OK(
        modify(R"({"resource_id":"data/bare","Cifs":{},"Afp":{},"Nfs":{"Sync":1},"Ftp":{},"Http":{},"Dlna":{},
        "Daap":{},"Rsync":{}})"));
    // FTP is made unavailable, and NotAvailable is not looked at.
    const char *const made[] = {
        "",  "1|writeable|1|NULL|NULL", "1|writeable|1", "0|writeable|0|0|0", "1|writeable|0", "1|readonly|7",
        "1", "1|writeable|disabled"};
    for (std::size_t i = 0; i < std::size(made); ++i) {
        const std::string protocol = protocols[i];
        const Rows found = rows("SELECT * FROM " + table_of(protocol) + " WHERE share_id=2");
        EXPECT_EQ(made[i], found.empty() ? "" : found.front().substr(2)) << protocol;
        EXPECT_EQ(protocol == "Cifs" || protocol == "Rsync" ? 0 : 1, changed(share, protocols[i]))
            << protocol;
    }
}

TEST_F(ShareModify, RsyncLoginsThatComeBackMaskedKeepTheirPasswords)
{
    const Json masked = masked_password;
    const auto written = [this](const Json &logins) {
        EXPECT_OK(modify(Json{{"Rsync", {{"UserPasswordAcl", logins}}}}));
        return rows("SELECT user,password FROM rsync_user_password_acl ORDER BY 1");
    };
    const Json first = {{{"UserName", "sync"}, {"Password", masked}},
                        {{"UserName", "new"}, {"Password", "word"}},
                        {{"UserName", "unknown"}, {"Password", masked}},
                        {{"UserName", ""}, {"Password", "ends the list"}},
                        {{"UserName", "late"}, {"Password", "never read"}}};
    EXPECT_EQ((Rows{"new|word", "sync|secret"}), written(first));
    EXPECT_EQ(Rows{"sync|changed"}, written(Json::parse(R"([{"UserName":"sync","Password":"changed"}])")));
}

/* ---- Refusals ------------------------------------------------------------------------------------------ */

TEST_F(ShareModify, WhatIsGivenWronglyIsNamedAndLeavesNothing)
{
    std::vector<Refusal> refusals = {
        // Before the limit, which is too large.
        {R"({"Sync":"never","RefQuotaMB":99999})",
         "Invalid Sync (never). One of 'standard', 'always', 'disabled'."},
        {R"({"Cifs":{"DefaultAccess":"x"}})", "Invalid Cifs->DefaultAccess (x)."},
        {R"({"Stat":{"User":{}}})", "Invalid stat->User (resource_id=0, UserName=(null))."},
        {R"({"Stat":{"User":{"resource_id":-1}}})", "Invalid stat->User (resource_id=-1, UserName=(null))."},
        {R"({"Stat":{"User":{"UserName":"nobody-here"}}})", "Unknown User (nobody-here)."},
        {R"({"Stat":{"Group":{}}})", "Invalid stat->Group (resource_id=0, GroupName=(null))."},
        {R"({"Stat":{"Group":{"GroupName":"no-group"}}})", "Unknown Group (no-group)."},
        // A right is checked whether the switch is given or not.
        {R"({"Afp":{"FolderCreateGroupRights":"x"}})", "Invalid Afp->FolderCreateGroupRights (x)."},
        {R"({"Nfs":{"HostAcl":[{"Host":{"HostName":"no host"}}]}})",
         "Invalid HostName or Network specified (no host)."}};
    std::ranges::move(refused_words(false), std::back_inserter(refusals));
    const std::string before = content();
    for (const auto &[given, message, code] : refusals) {
        SCOPED_TRACE(given);
        Json json = everything(R"({"ShareName":"papers"})");
        json.merge_patch(Json::parse(given));
        EXPECT_FAILS(modify(json), code, message.c_str());
        // Lists are written by the unit that creates shares.
        EXPECT_STREQ(given.find("Host") != given.npos ? "qbobj_api2_add_share" : "qbobj_api2_modify_share",
                     err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(ShareModify, AFailingUpdateIsReportedByItsTable)
{
    constexpr struct {
        const char *table, *message;
        qbobj_error_t code = db_failed;
    } cases[] = {// A refused row counts as a name that exists.
                 {"share", "Sharename specified is already exist.", name_taken},
                 {"zfs_attr", "Failed DB Query for 'UPDATE zfs_attr'. no"},
                 {"cifs_share_option", "Failed DB Query for 'UPDATE cifs_share_option'. no"},
                 {"rsync_share_option", "Failed DB Query for 'UPDATE rsync_share_option'. no"},
                 // Callers know this spelling.
                 {"snapshot_schedule", "Failed DB Query for 'UPDATE snapstho_schedule'. no"}};
    for (const auto &[table, message, code] : cases) {
        sql(std::string("CREATE TEMP TRIGGER obstacle BEFORE UPDATE ON ") + table +
            " BEGIN SELECT RAISE(ABORT,'no'); END");
        const std::string before = content();
        EXPECT_FAILS(modify(everything(R"({"LogBias":"x","Comment":"new","SnapshotSchedule":{}})")), code,
                     message);
        EXPECT_EQ(before, content());
        sql("DROP TRIGGER obstacle");
    }
}

TEST_F(ShareModify, AValueThatDoesNotFitIsLeftOutAndLogged)
{
    reopen(QBDB_LOG_WARN);
    ASSERT_OK(modify(
        Json{{"Comment", std::string(600, 'c')}, {"VisibleSnapFolder", "snaps"}, {"VisibleSnapshot", 1}}));
    EXPECT_EQ("|snaps", rows("SELECT comment,visible_snapdir FROM share").at(0));
    EXPECT_NE(std::string::npos, log().find("'comment'"));
}

} // namespace
