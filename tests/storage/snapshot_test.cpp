// Snapshots of shares and of home folders: listed by pages, recorded, thinned out; and the register of clones.
#include "database.h"

namespace
{

using Rows = std::vector<std::string>;

constexpr int ever = 2147483647;

class Snapshots : public qbobj_test::Database
{
  protected:
    // Dataset data2/docs belongs to no share, and its volume's name begins with another's.
    Snapshots()
    {
        sql("INSERT INTO share (id,zfs_name,name,volume_id,path) VALUES"
            "(1,'data/docs','docs','data','/data/docs'),(2,'data/pics','pics','data','/data/pics');"
            "INSERT INTO `$user` (id,uname,home) VALUES(500,'ann','/data/home/ann'),(501,'bob',NULL)");
        fill();
    }
    void fill() const
    {
        sql("DELETE FROM `$snapshot`; DELETE FROM `$home_folder_snapshot`;"
            "INSERT INTO `$snapshot` (zfs_name,name,type,created_on) VALUES('data/docs','a',1,10),"
            "('data/docs','b',2,20),('data/docs','c',3,30),('data/docs','d',4,40),('data/pics','b',1,25),"
            "('data2/docs','b',1,50);"
            "INSERT INTO `$home_folder_snapshot` (user_name,home_dir,name,type,created_on) VALUES"
            "('ann','/data/home/ann','a',1,10),('ann','/data/home/ann','b',2,20),('ann','/old','b',1,30),"
            "('bob',NULL,'b',1,15),('gone','/data/home/gone','b',1,1)");
    }

    struct Query {
        const char *name = nullptr;  // share or user
        const char *place = nullptr; // volume or home
        int type = 0;
        int from = 0;
        int to = ever;
        const char *order_by = nullptr;
        int order = 0;
        int limit = 0;
        int offset = 0;
    };
    // The names as "name@snapshot:path", or the message.
    std::string listed(const Query &q)
    {
        qbobj_SnapshotCollection_t page{};
        if (qbobj_getSnapshotCollection(qbdb, db, &page, q.name, q.place, q.type, q.from, q.to, q.order_by,
                                        q.order, q.limit, q.offset, &err) != 0)
            return err.msg;
        std::string result;
        for (const auto *one = page.Snapshot; one != nullptr; one = one->_link)
            result += std::string(one->ShareName) + "@" + one->SnapshotName + " ";
        return counted(result, q, qbobj_getSnapshotCollectionCount);
    }
    std::string homes(const Query &q)
    {
        qbobj_HfSnapshotCollection_t page{};
        if (qbobj_getHfSnapshotCollection(qbdb, db, &page, q.name, q.place, q.type, q.from, q.to, q.order_by,
                                          q.order, q.limit, q.offset, &err) != 0)
            return err.msg;
        std::string result;
        for (const auto *one = page.HfSnapshot; one != nullptr; one = one->_link)
            result += std::string(one->UserName) + "@" + one->SnapshotName + " ";
        return counted(result, q, qbobj_getHfSnapshotCollectionCount);
    }

    // What a deletion leaves, or its code and message.
    std::string after(const char *volume, const char *share, int newer, const char *name, int time)
    {
        fill();
        if (const int rc = qbobj_deleteSnapshot(qbdb, db, volume, share, newer, name, time, &err))
            return std::to_string(rc) + " " + err.msg;
        return value("SELECT group_concat(substr(zfs_name,-4)||'@'||name,' ') FROM "
                     "(SELECT * FROM `$snapshot` ORDER BY rowid)");
    }
    std::string homes_after(const char *user, int newer, const char *name, int time)
    {
        fill();
        if (const int rc = qbobj_deleteHfSnapshot(qbdb, db, user, "/unused", newer, name, time, &err))
            return std::to_string(rc) + " " + err.msg;
        return value("SELECT group_concat(home_dir||'@'||name,' ') FROM `$home_folder_snapshot` "
                     "WHERE user_name='ann'");
    }

  private:
    template <class Count>
    std::string counted(const std::string &list, const Query &q, Count count)
    {
        int number = -1;
        EXPECT_OK(count(qbdb, db, &number, q.name, q.place, q.type, q.from, q.to, &err));
        return list + std::to_string(number);
    }
};

/* ---- Lists --------------------------------------------------------------------------------------------- */

TEST_F(Snapshots, AreListedByFiltersAndPages)
{
    const std::pair<Query, const char *> cases[] = {
        {{}, "docs@a docs@b pics@b docs@c 4"},
        {{.type = 4}, "docs@a docs@b pics@b docs@c 4"},
        {{.type = 3}, "docs@c 1"},
        {{.name = "docs"}, "docs@a docs@b docs@c 3"},
        {{.name = "docs", .place = "backup"}, "0"},
        {{.name = "DOCS", .place = "data", .type = 1}, "docs@a 1"},
        {{.place = "data", .from = 20, .to = 25}, "docs@b pics@b 2"},
        {{.name = "docs", .order = 1, .limit = 2}, "docs@c docs@b 3"},
        {{.name = "docs", .order = 1, .offset = 2}, "docs@a 3"},
        {{.order_by = "name", .order = 1, .limit = 1}, "docs@c 4"},
        {{.order_by = "nowhere"}, "Failed DB Query for 'SELECT FROM $snapshot'. no such column: S.nowhere"},
        {{.order_by = "id\" DESC--"},
         "Failed DB Query for 'SELECT FROM $snapshot'. no such column: S.id\" DESC--"},
    };
    for (const auto &[query, expected] : cases)
        EXPECT_EQ(expected, listed(query));
    qbobj_SnapshotCollection_t page{};
    EXPECT_OK(
        qbobj_getSnapshotCollection(qbdb, db, &page, "pics", nullptr, 0, 0, ever, nullptr, 0, 0, 0, &err));
    const qbobj_Snapshot_t expected{nullptr, 5, "pics", "data", "b", 1, 25, "/data/pics/.zfs/snapshot/b"};
    qbobj_Snapshot_t same = expected;
    EXPECT_EQ(qbobj_test::dump("Snapshot", &same), qbobj_test::dump("Snapshot", page.Snapshot));
}

TEST_F(Snapshots, OfHomesAreListedByFiltersAndPages)
{
    const std::pair<Query, const char *> cases[] = {
        {{}, "ann@a bob@b ann@b ann@b 4"},
        {{.name = "ANN", .type = 2}, "ann@b 1"},
        {{.name = "bob", .place = "/data/home/ann"}, "0"},
        {{.place = "/data/home/ann", .from = 11, .order = 1, .limit = 1}, "ann@b 2"},
        {{.from = 10, .to = 15}, "ann@a bob@b 2"},
        {{.order_by = "zfs_name"},
         "Failed DB Query for 'SELECT FROM $home_folder_snapshot'. no such column: S.zfs_name"},
    };
    for (const auto &[query, expected] : cases)
        EXPECT_EQ(expected, homes(query));
    qbobj_HfSnapshotCollection_t page{};
    EXPECT_OK(
        qbobj_getHfSnapshotCollection(qbdb, db, &page, nullptr, nullptr, 0, 10, 15, nullptr, 0, 0, 0, &err));
    EXPECT_STREQ("/data/home/ann/.zfs/snapshot/a", page.HfSnapshot->Path);
    EXPECT_STREQ("", page.HfSnapshot->_link->HomeDir);
}

/* ---- Recording ----------------------------------------------------------------------------------------- */

TEST_F(Snapshots, AreRecordedForWhatIsThere)
{
    const auto message = [&](qbobj_Snapshot_t one) {
        const int rc = qbobj_addSnapshot(qbdb, db, &one, &err);
        EXPECT_EQ(rc == 0 ? QBOBJ_ERROR_OK : QBOBJ_ERROR_API_ARGS, err.ec);
        return std::string(rc == 0 ? "recorded" : err.msg);
    };
    EXPECT_EQ("recorded", message({nullptr, 0, "docs", "data", "new", 2, 60, nullptr}));
    EXPECT_EQ(Rows{"data/docs|new|2|60"},
              rows("SELECT zfs_name,name,type,created_on FROM `$snapshot` WHERE name='new'"));
    const std::pair<qbobj_Snapshot_t, const char *> cases[] = {
        {{nullptr, 0, "no", "none", "n", 1, 1, nullptr}, "Specified ShareName(no) is not exist."},
        {{nullptr, 0, "docs", "none", "n", 1, 1, nullptr}, "Specified VolumeName(none) is not exist."},
        {{nullptr, 0, "docs", "backup", "n", 1, 1, nullptr},
         "Specified ShareName(docs) is not on VolumeName(backup)."},
        {{nullptr, 0, "docs", "data", "a", 1, 1, nullptr}, "Probably share_id=1 is invalid or name is NULL"},
    };
    for (const auto &[snapshot, expected] : cases)
        EXPECT_EQ(expected, message(snapshot));

    qbobj_HfSnapshot_t home{nullptr, 0, "ann", "/h", "new", 2, 60, nullptr};
    EXPECT_OK(qbobj_addHfSnapshot(qbdb, db, &home, &err));
    EXPECT_EQ(Rows{"ann|/h|new|2|60"}, rows("SELECT user_name,home_dir,name,type,created_on FROM "
                                            "`$home_folder_snapshot` WHERE name='new'"));
    home.SnapshotName = nullptr;
    EXPECT_FAILS(qbobj_addHfSnapshot(qbdb, db, &home, &err), QBOBJ_ERROR_API_ARGS,
                 "Probably user_id=500 is invalid");
    home.UserName = "gone";
    EXPECT_FAILS(qbobj_addHfSnapshot(qbdb, db, &home, &err), QBOBJ_ERROR_API_ARGS,
                 "Specified UserName(gone) is not exist.");
}

/* ---- Deleting ------------------------------------------------------------------------------------------ */

TEST_F(Snapshots, AreThinnedOutInTheirScope)
{
    struct Case {
        const char *volume;
        const char *share;
        int newer;
        const char *name;
        int time;
        const char *left;
    };
    const Case cases[] = {
        {"data", "docs", 1, nullptr, 20, "docs@a docs@b pics@b docs@b"},
        {"data", "docs", 2, "a", 0, "docs@a pics@b docs@b"},
        {"data", "docs", 3, "a", 30, "docs@a docs@b docs@d pics@b docs@b"},
        {"data", "docs", 0, "b", 0, "docs@a docs@c docs@d pics@b docs@b"},
        {"data", "docs", 9, nullptr, 0, "pics@b docs@b"},
        {"data", nullptr, 1, nullptr, 24, "docs@a docs@b docs@b"},
        {"data", nullptr, 0, "b", 0, "docs@a docs@c docs@d docs@b"},
        {"data", nullptr, 0, nullptr, 0, "docs@b"},
        {"data", "docs", 1, nullptr, 99, "6 None of row is deleted."},
        {"data", "docs", 2, "none", 0, "6 None of row is deleted."},
        {"data", nullptr, 2, nullptr, 0, "5 SnapshotName cannot be NULL when DeleteNewer==2."},
        {"none", "none", 2, nullptr, 0, "8 Specified VolumeName(none) is not exist."},
        {"data", "none", 0, nullptr, 0, "8 Specified ShareName(none) is not exist."},
        {"backup", "docs", 0, nullptr, 0, "8 Specified ShareName(docs) is not on VolumeName(backup)."},
    };
    for (const auto &[volume, share, newer, name, time, left] : cases)
        EXPECT_EQ(left, after(volume, share, newer, name, time));
    EXPECT_EQ("/data/home/ann@a /old@b", homes_after("ann", 2, "a", 0));
    EXPECT_EQ("/old@b", homes_after("ann", 0, nullptr, 0));
    EXPECT_EQ("6 None of row is deleted.", homes_after("bob", 0, nullptr, 0)) << "no home is not every home";
    EXPECT_EQ("8 Specified UserName(gone) is not exist.", homes_after("gone", 0, nullptr, 0));
}

TEST_F(Snapshots, OfALongNameAreDeletedByTheWholeCondition)
{
    const std::string home = "/data/" + std::string(400, 'h');
    sql("UPDATE `$user` SET home='" + home + "' WHERE uname='ann'");
    EXPECT_EQ("6 None of row is deleted.", homes_after("ann", 1, nullptr, 0));
    sql("UPDATE `$home_folder_snapshot` SET home_dir='" + home + "' WHERE created_on=30");
    EXPECT_OK(qbobj_deleteHfSnapshot(qbdb, db, "ann", nullptr, 1, nullptr, 0, &err));
    EXPECT_EQ("4", value("SELECT COUNT(*) FROM `$home_folder_snapshot`"));
}

/* ---- The schedule, clones ------------------------------------------------------------------------------ */

TEST_F(Snapshots, OfHomesHaveOneSchedule)
{
    const char *const all = "SELECT * FROM `$home_folder_snapshot_schedule`";
    const std::string factory = value("SELECT COUNT(*) FROM `$home_folder_snapshot_schedule`");
    EXPECT_EQ("1", factory);
    qbobj_Schedule_t *read = nullptr;
    qbobj_Schedule_t change{};
    change.Hour = "4";
    change.LastTaken = 7;
    EXPECT_OK(qbobj_modifyHfSnapshotSchedule(qbdb, db, &change, &err));
    EXPECT_EQ(Rows{"0|0|0|4|*|*|*|7|0|0|0"}, rows(all));
    qbobj_Schedule_t added{1, "1", "2", "3", "4", "5", 6, 7, 8, 9};
    EXPECT_OK(qbobj_addHfSnapshotSchedule(qbdb, db, &added, &err));
    EXPECT_EQ(Rows{"0|1|1|2|3|4|5|6|7|8|9"}, rows(all));
    EXPECT_OK(qbobj_getHfSnapshotSchedule(qbdb, db, &read, &err));
    EXPECT_EQ(qbobj_test::dump("Schedule", &added), qbobj_test::dump("Schedule", read));
    const std::string long_text(600, '*');
    change.Hour = long_text.c_str();
    EXPECT_EQ(QBOBJ_ERROR_API_ARGS, qbobj_modifyHfSnapshotSchedule(qbdb, db, &change, &err));
}

TEST_F(Snapshots, HaveClones)
{
    const auto clones = [&](const char *snapshot, const char *share) {
        qbobj_SnapshotCloneCollection_t collection{};
        EXPECT_OK(qbobj_getSnapshotClones(qbdb, db, snapshot, share, &collection, &err));
        std::string result;
        for (const auto *one = collection.SnapshotClone; one != nullptr; one = one->_link)
            result += std::string(one->ClonedShareName) + "=" + one->ParentShareName + "@" +
                      one->ParentSnapshotName + " ";
        return result;
    };
    for (const auto &[clone, snapshot, share] :
         {std::tuple{"c1", "a", "docs"}, {"c2", "a", "pics"}, {"c3", "b", "docs"}, {"c4", "b", "docs"}})
        ASSERT_OK(qbobj_addSnapshotClone(qbdb, db, clone, snapshot, share, &err));
    EXPECT_EQ("c1=docs@a c2=pics@a c3=docs@b c4=docs@b ", clones(nullptr, nullptr));
    EXPECT_EQ("c1=docs@a c2=pics@a ", clones("a", nullptr));
    EXPECT_EQ("c1=docs@a c3=docs@b c4=docs@b ", clones(nullptr, "docs"));
    EXPECT_EQ("c1=docs@a ", clones("a", "docs"));

    const auto remove = [&](const char *clone, const char *snapshot, const char *share) {
        return qbobj_deleteSnapshotClone(qbdb, db, clone, snapshot, share, &err);
    };
    EXPECT_EQ(QBOBJ_ERROR_API_ARGS, remove(nullptr, nullptr, nullptr));
    EXPECT_OK(remove(nullptr, "a", nullptr));
    EXPECT_OK(remove("c3", "a", "docs"));
    EXPECT_EQ("c2=pics@a c3=docs@b c4=docs@b ", clones(nullptr, nullptr))
        << "both parents win over the clone";
    EXPECT_OK(remove("c3", nullptr, "pics"));
    EXPECT_EQ("c2=pics@a c4=docs@b ", clones(nullptr, nullptr)) << "the clone wins over one parent";
    EXPECT_OK(remove(nullptr, nullptr, "docs"));
    EXPECT_EQ("c2=pics@a ", clones(nullptr, nullptr));
}

} // namespace
