// Shares deleted: what goes with them and what stays, what is refused, and that nothing half deleted remains.
#include "share_writing.h"

#include <algorithm>
#include <map>
#include <set>

using qbobj_test::ShareRecord;

namespace
{

using Rows = std::vector<std::string>;

// Tables whose rows outlive their share; of host_acl, only rsync's rows do.
const std::set<std::string> outliving{"process_on_share", "dlna_share_option", "daap_share_option",
                                      "rsync_share_option", "rsync_user_password_acl"};

class ShareDelete : public qbobj_test::ShareWriting
{
  protected:
    int remove(ShareRecord &record) { return qbobj_deleteShare(qbdb, db, &record.share, &err); }

    // For every table that refers to shares, the condition that finds the rows of one.
    std::map<std::string, std::string> references(const std::string &id, const std::string &dataset,
                                                  const std::string &name) const
    {
        const std::map<std::string, std::string> keys{{"share_id", id},
                                                      {"zfs_name", "'" + dataset + "'"},
                                                      {"cloned_zfs_name", "'" + name + "'"},
                                                      {"parent_zfs_name", "'" + name + "'"}};
        std::map<std::string, std::string> found;
        for (const std::string &table : tables()) {
            for (const std::string &column : rows("SELECT name FROM pragma_table_info('" + table + "')")) {
                const auto key = keys.find(column);
                if (key != keys.end())
                    found[table] += (found[table].empty() ? "" : " OR ") + column + "=" + key->second;
            }
        }
        // Holds the one schedule of the home folders and refers to no share.
        found.erase("$home_folder_snapshot_schedule");
        return found;
    }

    // A row of the share in a table, whatever its columns are.
    void refer(const std::string &table, const std::string &id) const
    {
        const std::map<std::string, std::string> values{{"share_id", id},
                                                        {"zfs_name", "'data/docs'"},
                                                        {"cloned_zfs_name", "'docs'"},
                                                        {"proto", "'cifs'"},
                                                        {"id", "NULL"}};
        std::string list;
        for (const std::string &column : rows("SELECT name FROM pragma_table_info('" + table + "')")) {
            const auto value = values.find(column);
            list += (list.empty() ? "" : ",") + (value == values.end() ? "1" : value->second);
        }
        sql("INSERT OR IGNORE INTO `" + table + "` VALUES(" + list + ")");
    }

    Rows tables() const
    {
        return rows(
            "SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite_%' ORDER BY 1");
    }
    std::string id_of(const std::string &name) const
    {
        return value("SELECT id FROM share WHERE name='" + name + "'");
    }
};

TEST_F(ShareDelete, NothingOfTheShareIsLeftInAnyTableButThoseThatOutliveIt)
{
    add_with_everything("docs");
    add_with_everything("other");
    const std::string id = id_of("docs");
    sql("INSERT OR IGNORE INTO host (id,name) VALUES(1,'host')");
    const std::map<std::string, std::string> condition = references(id, "data/docs", "docs");
    for (const auto &[table, where] : condition) {
        if (table != "share")
            refer(table, id);
        EXPECT_NE("0", value("SELECT COUNT(*) FROM `" + table + "` WHERE " + where)) << table;
    }
    EXPECT_GT(condition.size(), 20U);
    std::map<std::string, std::string> others;
    for (const auto &[table, where] : condition)
        others[table] = value("SELECT COUNT(*) FROM `" + table + "` WHERE NOT (" + where + ")");

    ShareRecord record;
    ASSERT_OK(remove(record.of("data/docs")));

    for (const auto &[table, where] : condition) {
        const Rows left = rows("SELECT * FROM `" + table + "` WHERE " + where +
                               (table == "host_acl" ? " AND proto<>'rsync'" : ""));
        EXPECT_EQ(outliving.contains(table), !left.empty()) << table;
        EXPECT_EQ(others[table], value("SELECT COUNT(*) FROM `" + table + "` WHERE NOT (" + where + ")"))
            << table;
    }
    EXPECT_EQ(Rows{"rsync"}, rows("SELECT proto FROM host_acl WHERE share_id=" + id));

    // What stays cannot attach itself to a later share.
    add_plain("docs");
    EXPECT_NE(id, id_of("docs"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM rsync_share_option WHERE share_id=" + id_of("docs")));
}

TEST_F(ShareDelete, AShareInWhichAnotherLiesIsNotDeleted)
{
    add_plain("media");
    add_plain("med");
    ShareRecord nested;
    nested.share.Path = "/data/media/sub";
    ASSERT_OK(add(nested.named("sub")));
    ShareRecord outer;
    const std::string before = content();
    const std::string message = "Cannot delete share (share_id=" + id_of("media") + ").";
    EXPECT_FAILS(remove(outer.of("data/media")), QBOBJ_ERROR_API_ARGS, message.c_str());
    EXPECT_EQ(before, content());
    // Only a path that goes on behind a slash lies within.
    ShareRecord shorter;
    EXPECT_OK(remove(shorter.of("data/med")));
    ShareRecord inner;
    EXPECT_OK(remove(inner.of("data/media/sub")));
    EXPECT_OK(remove(outer));
}

TEST_F(ShareDelete, TheWebRootAndTheBackupJobsOfTheShareGoWithIt)
{
    add_plain("docs");
    add_plain("other");
    sql("UPDATE service_http SET share_name='docs';"
        "INSERT INTO backup (name,src_type,src_share_proto,dst_type,dst_share_proto) VALUES"
        "('from','share','docs','usb','1'),('to','usb','1','share','docs'),"
        "('user','home','docs','usb','1'),('else','share','other','usb','1')");
    ShareRecord other;
    ASSERT_OK(remove(other.of("data/other")));
    EXPECT_EQ("docs", value("SELECT share_name FROM service_http"));
    ShareRecord record;
    ASSERT_OK(remove(record.of("data/docs")));
    EXPECT_EQ("", value("SELECT share_name FROM service_http"));
    EXPECT_EQ(Rows{"user"}, rows("SELECT name FROM backup"));
}

TEST_F(ShareDelete, TheRecordTellsWhatTheShareWasAndWhichServicesHear)
{
    ShareRecord made;
    made.share.VisibleSnapshot = 1;
    made.share.VisibleSnapFolder = "snaps";
    ASSERT_OK(add(made.named("Docs")));
    add_plain("quiet");
    ShareRecord quiet;
    ASSERT_OK(remove(quiet.of("data/quiet")));
    EXPECT_EQ("", journal());
    EXPECT_EQ(0, quiet.share.OldVisibleSnapshot);

    ShareRecord record;
    record.share.resource_id = "data/gone"; // the second identifier is tried then
    record.share.ShareId = "data/Docs";
    record.share.Ftp = &record.ftp;
    ASSERT_OK(remove(record));
    EXPECT_STREQ("/data/Docs", record.share.Path);
    EXPECT_STREQ("/data/Docs", record.share.OldPath);
    EXPECT_STREQ("Docs", record.share.OldShareName);
    EXPECT_EQ(1, record.share.OldVisibleSnapshot);
    EXPECT_NE(std::string::npos, journal().find("ftp"));
    EXPECT_EQ(std::string::npos, journal().find("cifs"));
}

TEST_F(ShareDelete, AChainIsDeletedWholeOrNotAtAll)
{
    add_with_everything("one");
    ShareRecord first;
    ShareRecord second;
    first.of("data/one").share._link = &second.of("data/two").share;
    const std::string before = content();
    EXPECT_FAILS(remove(first), QBOBJ_ERROR_API_ARGS, "Invalid resource_id (data/two).");
    EXPECT_EQ(before, content());
    ShareRecord none;
    EXPECT_FAILS(remove(none), QBOBJ_ERROR_API_ARGS, "Invalid resource_id ((null)).");
    EXPECT_OK(qbobj_deleteShare(qbdb, db, nullptr, &err));
}

TEST_F(ShareDelete, AFailingStatementLeavesTheShareWhole)
{
    struct Case {
        const char *trigger;
        int code;
        const char *message; // null: the error record stays empty
    };
    const Case cases[] = {
        {"BEFORE DELETE ON user_acl BEGIN SELECT RAISE(ABORT,'no'); END", QBOBJ_ERROR_DB_MISC,
         "Failed DB Query for 'DELETE FROM user_acl'. no"},
        {"BEFORE DELETE ON ftp_share_option BEGIN SELECT RAISE(ABORT,'no'); END", QBOBJ_ERROR_DB_MISC,
         "Failed DB Query for 'DELETE FROM ftp_share_option'. no"},
        {"BEFORE DELETE ON snapshot_schedule BEGIN SELECT RAISE(ABORT,'no'); END", QBOBJ_ERROR_UNKNOWN,
         nullptr},
        {"BEFORE DELETE ON zfs_attr BEGIN SELECT RAISE(ABORT,'no'); END", QBOBJ_ERROR_UNKNOWN, nullptr},
        {"BEFORE DELETE ON share BEGIN SELECT RAISE(ABORT,'no'); END", QBOBJ_ERROR_DB_MISC,
         "Failed DB Query for share. no"},
        // The stray quote is the message's own.
        {"BEFORE DELETE ON share BEGIN SELECT RAISE(IGNORE); END", QBOBJ_ERROR_DB_NOTEXISTS,
         "None of row is deleted. May be bad resource_id=1'"},
    };
    add_with_everything("docs");
    for (const Case &one : cases) {
        SCOPED_TRACE(one.trigger);
        sql(std::string("CREATE TEMP TRIGGER obstacle ") + one.trigger);
        const std::string before = content();
        ShareRecord record;
        EXPECT_EQ(one.code, remove(record.of("data/docs")));
        EXPECT_STREQ(one.message, err.msg);
        EXPECT_EQ(one.message == nullptr ? QBOBJ_ERROR_OK : one.code, static_cast<int>(err.ec));
        EXPECT_EQ(before, content());
        sql("DROP TRIGGER obstacle");
    }
}

TEST_F(ShareDelete, AVolumesSharesGoWithoutRegardToNestingAndNoServiceIsTold)
{
    add_with_everything("media");
    ShareRecord nested;
    nested.share.Path = "/data/media/sub";
    ASSERT_OK(add(nested.named("sub")));
    ShareRecord elsewhere;
    elsewhere.named("kept").share.VolumeId = "backup";
    ASSERT_OK(add(elsewhere));
    const std::string told = journal();

    EXPECT_OK(qbobj_deleteShareOnVolume(qbdb, db, "tank", &err));
    EXPECT_EQ("3", value("SELECT COUNT(*) FROM share"));
    ASSERT_OK(qbobj_deleteShareOnVolume(qbdb, db, "data", &err));
    EXPECT_EQ(Rows{"kept"}, rows("SELECT name FROM share"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM user_acl"));
    EXPECT_EQ(told, journal());
}

TEST_F(ShareDelete, AVolumeWithAShareThatCannotGoKeepsAllOfThem)
{
    add_plain("one");
    add_plain("two");
    sql("CREATE TEMP TRIGGER obstacle BEFORE DELETE ON share WHEN OLD.name='two' "
        "BEGIN SELECT RAISE(ABORT,'no'); END");
    const std::string before = content();
    EXPECT_FAILS(qbobj_deleteShareOnVolume(qbdb, db, "data", &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for share. no");
    EXPECT_EQ(before, content());
}

TEST_F(ShareDelete, ABlockVolumeIsDeletedByItsDataset)
{
    ShareRecord volume;
    volume.named("disk").share.ShareType = "zvol";
    volume.share.Zvol = &volume.zvol;
    ASSERT_OK(add(volume));
    EXPECT_OK(qbobj_deleteZvol(qbdb, db, "data/other", &err));
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM zvol_share_option"));
    ASSERT_OK(qbobj_deleteZvol(qbdb, db, "data/disk", &err));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM zvol_share_option"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM share"));
}

} // namespace
