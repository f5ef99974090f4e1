// Shares deleted: what goes with them and what stays, what is refused, and that nothing half deleted remains.
#include "share_writing.h"

#include <map>
#include <set>

using namespace qbobj_test;

namespace
{

// Tables whose rows outlive their share; of host_acl, only rsync's rows do.
const std::set<std::string> outliving{"process_on_share", "dlna_share_option", "daap_share_option",
                                      "rsync_share_option", "rsync_user_password_acl"};

class ShareDelete : public ShareWriting
{
  protected:
    using ShareWriting::remove;
    int remove(const char *dataset) { return remove(Json{{"resource_id", dataset}}); }

    // Every table that refers to shares, with the condition that finds the rows of "docs". The one schedule of the
    // home folders refers to no share.
    std::map<std::string, std::string> references(const std::string &id) const
    {
        std::map<std::string, std::string> found;
        for (const std::string &row :
             rows("SELECT T.name,group_concat(C.name||'='||CASE C.name WHEN 'share_id' THEN " + id +
                  " WHEN 'zfs_name' THEN '''data/docs''' ELSE '''docs''' END,' OR ') FROM sqlite_schema T,"
                  "pragma_table_info(T.name) C WHERE T.type='table' AND "
                  "T.name<>'$home_folder_snapshot_schedule' "
                  "AND C.name IN ('share_id','zfs_name','cloned_zfs_name','parent_zfs_name') GROUP BY 1"))
            found[row.substr(0, row.find('|'))] = row.substr(row.find('|') + 1);
        return found;
    }
    // A row of "docs" in a table, whatever its columns are.
    void refer(const std::string &table, const std::string &id) const
    {
        sql("INSERT OR IGNORE INTO `" + table + "` VALUES(" +
            value("SELECT group_concat(CASE name WHEN 'share_id' THEN " + id +
                  " WHEN 'zfs_name' THEN '''data/docs''' WHEN 'cloned_zfs_name' THEN '''docs''' "
                  "WHEN 'proto' THEN '''cifs''' WHEN 'id' THEN 'NULL' ELSE 1 END) FROM pragma_table_info('" +
                  table + "')") +
            ")");
    }
    std::string id_of(const std::string &name) const
    {
        return value("SELECT id FROM share WHERE name='" + name + "'");
    }
};

TEST_F(ShareDelete, NothingOfTheShareIsLeftInAnyTableButThoseThatOutliveIt)
{
    ASSERT_OK(add("docs", everything()));
    ASSERT_OK(add("other", everything()));
    const std::string id = id_of("docs");
    sql("INSERT OR IGNORE INTO host (id,name) VALUES(1,'host')");
    const std::map<std::string, std::string> condition = references(id);
    for (const auto &[table, where] : condition) {
        if (table != "share")
            refer(table, id);
        EXPECT_NE("0", value("SELECT COUNT(*) FROM `" + table + "` WHERE " + where)) << table;
    }
    EXPECT_GT(condition.size(), 20U);
    std::map<std::string, std::string> others;
    for (const auto &[table, where] : condition)
        others[table] = value("SELECT COUNT(*) FROM `" + table + "` WHERE NOT (" + where + ")");

    ASSERT_OK(remove("data/docs"));

    for (const auto &[table, where] : condition) {
        const Rows left = rows("SELECT * FROM `" + table + "` WHERE " + where +
                               (table == "host_acl" ? " AND proto<>'rsync'" : ""));
        EXPECT_EQ(outliving.contains(table), !left.empty()) << table;
        EXPECT_EQ(others[table], value("SELECT COUNT(*) FROM `" + table + "` WHERE NOT (" + where + ")"))
            << table;
    }
    EXPECT_EQ(Rows{"rsync"}, rows("SELECT proto FROM host_acl WHERE share_id=" + id));

    // What stays cannot attach itself to a later share.
    ASSERT_OK(add("docs"));
    EXPECT_NE(id, id_of("docs"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM rsync_share_option WHERE share_id=" + id_of("docs")));
}

TEST_F(ShareDelete, AShareInWhichAnotherLiesIsNotDeleted)
{
    ASSERT_OK(add("media"));
    ASSERT_OK(add("med"));
    ASSERT_OK(add("sub", R"({"Path":"/data/media/sub"})"));
    const std::string before = content();
    const std::string message = "Cannot delete share (share_id=" + id_of("media") + ").";
    EXPECT_FAILS(remove("data/media"), bad_args, message.c_str());
    EXPECT_EQ(before, content());
    // Only a path that goes on behind a slash lies within.
    EXPECT_OK(remove("data/med"));
    EXPECT_OK(remove("data/media/sub"));
    EXPECT_OK(remove("data/media"));
}

TEST_F(ShareDelete, TheWebRootAndTheBackupJobsOfTheShareGoWithIt)
{
    ASSERT_OK(add("docs"));
    ASSERT_OK(add("other"));
    sql("UPDATE service_http SET share_name='docs';"
        "INSERT INTO backup (name,src_type,src_share_proto,dst_type,dst_share_proto) VALUES"
        "('from','share','docs','usb','1'),('to','usb','1','share','docs'),"
        "('user','home','docs','usb','1'),('else','share','other','usb','1')");
    ASSERT_OK(remove("data/other"));
    EXPECT_EQ("docs", value("SELECT share_name FROM service_http"));
    ASSERT_OK(remove("data/docs"));
    EXPECT_EQ("", value("SELECT share_name FROM service_http"));
    EXPECT_EQ(Rows{"user"}, rows("SELECT name FROM backup"));
}

TEST_F(ShareDelete, TheRecordTellsWhatTheShareWasAndWhichServicesHear)
{
    ASSERT_OK(add("Docs", R"({"VisibleSnapshot":1,"VisibleSnapFolder":"snaps"})"));
    ASSERT_OK(add("quiet"));
    ASSERT_OK(remove("data/quiet"));
    EXPECT_EQ("", journal());
    EXPECT_EQ(0, share->OldVisibleSnapshot);
    // The second identifier is tried when the first leads nowhere.
    ASSERT_OK(remove(Json::parse(R"({"resource_id":"data/gone","ShareId":"data/Docs","Ftp":{}})")));
    EXPECT_EQ("/data/Docs|/data/Docs|Docs|1",
              fields(share->Path, share->OldPath, share->OldShareName, share->OldVisibleSnapshot));
    EXPECT_NE(std::string::npos, journal().find("ftp"));
    EXPECT_EQ(std::string::npos, journal().find("cifs"));
}

TEST_F(ShareDelete, AChainIsDeletedWholeOrNotAtAll)
{
    ASSERT_OK(add("one", everything()));
    const std::string before = content();
    EXPECT_FAILS(remove(Json::parse(R"([{"resource_id":"data/one"},{"resource_id":"data/two"}])")), bad_args,
                 "Invalid resource_id (data/two).");
    EXPECT_EQ(before, content());
    EXPECT_FAILS(remove(Json::object()), bad_args, "Invalid resource_id ((null)).");
    EXPECT_OK(call(qbobj_deleteShare, nullptr));
}

TEST_F(ShareDelete, AFailingStatementLeavesTheShareWhole)
{
    const std::string abort = "BEGIN SELECT RAISE(ABORT,'no'); END";
    // Without a message the error record stays empty.
    const std::tuple<std::string, std::string, int, const char *> cases[] = {
        {"user_acl", abort, db_failed, "Failed DB Query for 'DELETE FROM user_acl'. no"},
        {"ftp_share_option", abort, db_failed, "Failed DB Query for 'DELETE FROM ftp_share_option'. no"},
        {"snapshot_schedule", abort, QBOBJ_ERROR_UNKNOWN, nullptr},
        {"zfs_attr", abort, QBOBJ_ERROR_UNKNOWN, nullptr},
        {"share", abort, db_failed, "Failed DB Query for share. no"},
        // The stray quote is the message's own.
        {"share", "BEGIN SELECT RAISE(IGNORE); END", QBOBJ_ERROR_DB_NOTEXISTS,
         "None of row is deleted. May be bad resource_id=1'"}};
    ASSERT_OK(add("docs", everything()));
    for (const auto &[table, trigger, code, message] : cases) {
        SCOPED_TRACE(table);
        sql("CREATE TEMP TRIGGER obstacle BEFORE DELETE ON " + table + " " + trigger);
        const std::string before = content();
        EXPECT_EQ(code, remove("data/docs"));
        EXPECT_STREQ(message, err.msg);
        EXPECT_EQ(message == nullptr ? QBOBJ_ERROR_OK : code, static_cast<int>(err.ec));
        EXPECT_EQ(before, content());
        sql("DROP TRIGGER obstacle");
    }
}

TEST_F(ShareDelete, AVolumesSharesGoWithoutRegardToNestingAndNoServiceIsTold)
{
    ASSERT_OK(add("media", everything()));
    ASSERT_OK(add("sub", R"({"Path":"/data/media/sub"})"));
    ASSERT_OK(add("kept", R"({"VolumeId":"backup"})"));
    const std::string told = journal();
    const std::string before = content();
    sql("CREATE TEMP TRIGGER obstacle BEFORE DELETE ON share WHEN OLD.name='sub' "
        "BEGIN SELECT RAISE(ABORT,'no'); END");
    EXPECT_FAILS(call(qbobj_deleteShareOnVolume, "data"), db_failed, "Failed DB Query for share. no");
    EXPECT_EQ(before, content()) << "a share that cannot go keeps all of them";
    sql("DROP TRIGGER obstacle");
    EXPECT_OK(call(qbobj_deleteShareOnVolume, "tank"));
    EXPECT_EQ(before, content());
    ASSERT_OK(call(qbobj_deleteShareOnVolume, "data"));
    EXPECT_EQ(Rows{"kept"}, rows("SELECT name FROM share"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM user_acl"));
    EXPECT_EQ(told, journal());
}

TEST_F(ShareDelete, ABlockVolumeIsDeletedByItsDataset)
{
    ASSERT_OK(add("disk", R"({"ShareType":"zvol","Zvol":{}})"));
    EXPECT_OK(call(qbobj_deleteZvol, "data/other"));
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM zvol_share_option"));
    ASSERT_OK(call(qbobj_deleteZvol, "data/disk"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM zvol_share_option"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM share"));
}

} // namespace
