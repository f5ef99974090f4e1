// A share's move to another volume: marked, committed, given up.
#include "share_writing.h"

using namespace qbobj_test;

namespace
{

class ShareMigrate : public ShareWriting
{
  protected:
    void SetUp() override
    {
        ASSERT_OK(add("docs"));
        // A volume whose id and name differ.
        sql("INSERT INTO _volume (id,lv_name,blk_free) VALUES('v2','tank',1000);"
            "INSERT INTO `$snapshot` (zfs_name,name) VALUES('data/docs','s1'),('data/docs','s2'),"
            "('data/other','s1')");
    }
    int pre(const char *dataset, const char *volume) { return call(qbobj_preMigrateShare, dataset, volume); }
    int post(int commit, char **path = nullptr)
    {
        return call(qbobj_postMigrateShare, "data/docs", commit, path);
    }
    Rows shares() const { return rows("SELECT volume_id,zfs_name,path,migrate_to_volume_id FROM share"); }
};

TEST_F(ShareMigrate, OnlyOneShareMovesAtATime)
{
    ASSERT_OK(add("other"));
    ASSERT_OK(pre("data/docs", "v2"));
    const std::string before = content();
    for (const char *dataset : {"data/docs", "data/other", "data/none"})
        EXPECT_FAILS(pre(dataset, "backup"), QBOBJ_ERROR_UI__SHARE_CANNOT_MIGRATE,
                     "Only one migration at a time");
    EXPECT_EQ(before, content());
    ASSERT_OK(post(0));
    EXPECT_OK(pre("data/other", "v2"));
}

TEST_F(ShareMigrate, AShareDoesNotMoveToWhereItLives)
{
    EXPECT_FAILS(pre("data/docs", "data"), bad_args, "Destination VolumeId is the same as source");
    EXPECT_FAILS(pre(nullptr, "v2"), bad_args, "ShareId cannot be NULL.");
    EXPECT_FAILS(pre("data/docs", nullptr), bad_args, "VolumeId cannot be NULL.");
    // The beginning of a volume's name is another volume's.
    EXPECT_OK(pre("data/docs", "dat"));
}

TEST_F(ShareMigrate, CommittedTheShareAndItsSnapshotsBelongToTheDestination)
{
    ASSERT_OK(pre("data/docs", "v2"));
    char *path = nullptr;
    ASSERT_OK(post(1, &path));
    // The path that is told is made of the volume's id, the one that is stored of its name.
    EXPECT_STREQ("/v2/docs", path);
    EXPECT_EQ(Rows{"v2|v2/docs|/tank/docs|NULL"}, shares());
    EXPECT_EQ((Rows{"data/other|s1", "v2/docs|s1", "v2/docs|s2"}),
              rows("SELECT zfs_name,name FROM `$snapshot` ORDER BY 1,2"));
}

TEST_F(ShareMigrate, GivenUpOnlyTheMarkGoesAway)
{
    const Rows before = shares();
    ASSERT_OK(pre("data/docs", "v2"));
    EXPECT_EQ(Rows{"data|data/docs|/data/docs|v2"}, shares());
    char *path = nullptr;
    ASSERT_OK(post(0, &path));
    EXPECT_STREQ("/v2/docs", path);
    EXPECT_EQ(before, shares());
    EXPECT_EQ("2", value("SELECT COUNT(*) FROM `$snapshot` WHERE zfs_name='data/docs'"));
}

TEST_F(ShareMigrate, AShareThatIsNotMovingOrWhoseDatasetIsTakenIsNotCommitted)
{
    const std::string before = content();
    EXPECT_FAILS(post(1), db_failed, "Error in 'UPDATE `$snapshot`'.");
    EXPECT_EQ(before, content());
    sql("DELETE FROM `$snapshot`");
    EXPECT_FAILS(post(1), db_failed, "Error in 'UPDATE share'.");
    char *path = nullptr;
    EXPECT_OK(post(0, &path));
    EXPECT_EQ(nullptr, path);

    ASSERT_OK(add("taken", R"({"Path":"/v2/docs"})"));
    ASSERT_OK(pre("data/docs", "v2"));
    sql("INSERT INTO `$snapshot` (zfs_name,name) VALUES('data/docs','s1')");
    const std::string taken = content();
    EXPECT_FAILS(post(1), db_failed, "Error in 'UPDATE share'.");
    EXPECT_EQ(taken, content());
}

} // namespace
