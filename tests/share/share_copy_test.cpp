// A share's configuration cloned under a new name.
#include "share_writing.h"

using namespace qbobj_test;

namespace
{

constexpr const char *copied[] = {
    "user_quota",        "group_quota",       "user_acl",          "group_acl",         "host_acl",
    "cifs_share_option", "afp_share_option",  "nfs_share_option",  "http_share_option", "ftp_share_option",
    "dlna_share_option", "daap_share_option", "zvol_share_option", "snapshot_schedule", "zfs_attr"};
constexpr const char *left_out[] = {"rsync_share_option", "rsync_user_password_acl", "cifs_dfs_option",
                                    "process_on_share"};

class ShareCopy : public ShareWriting
{
  protected:
    void SetUp() override
    {
        ASSERT_OK(add("docs", everything(R"({"Comment":"papers","Zvol":{}})")));
        sql("INSERT INTO user_quota VALUES(1000,1,80,100),(1001,1,8,10);"
            "INSERT INTO group_quota VALUES(1000,1,80,100);"
            "INSERT INTO process_on_share (share_id,pid) VALUES(1,1);"
            "INSERT INTO `$snapshot` (zfs_name,name) VALUES('data/docs','s1')");
    }
    int copy(const char *source, const char *name)
    {
        return call(qbobj_copyShare, "data", source, "ignored", name);
    }
    // A share's rows of a table without the share's id.
    Rows of_share(const std::string &table, const std::string &id) const
    {
        const std::string columns =
            value("SELECT group_concat(name) FROM pragma_table_info('" + table + "') WHERE name<>'share_id'");
        return rows("SELECT " + columns + " FROM " + table + " WHERE share_id=" + id + " ORDER BY " +
                    columns);
    }
};

TEST_F(ShareCopy, EveryRowOfTheSourceIsRepeatedForTheClone)
{
    ASSERT_OK(copy("docs", "twin"));
    EXPECT_EQ("data/twin|share|data|/data/twin|papers|97|7",
              rows("SELECT zfs_name,type,volume_id,path,comment,user_id,user_access FROM share "
                   "WHERE name='twin'")
                  .at(0));
    const std::string id = value("SELECT id FROM share WHERE name='twin'");
    for (const char *table : copied) {
        EXPECT_FALSE(of_share(table, "1").empty()) << table;
        EXPECT_EQ(of_share(table, "1"), of_share(table, id)) << table;
    }
    for (const char *table : left_out) {
        EXPECT_FALSE(of_share(table, "1").empty()) << table;
        EXPECT_TRUE(of_share(table, id).empty()) << table;
    }
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$snapshot`"));
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$application_on_share`"));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM sqlite_temp_schema"));
    // The names of the working tables are free again.
    EXPECT_OK(copy("twin", "third"));
}

TEST_F(ShareCopy, WhatIsGivenWronglyOrCannotBeRepeatedIsNamedAndLeavesNoClone)
{
    const std::string before = content();
    EXPECT_FAILS(copy("papers", "twin"), bad_args, "VolumeName/ShareName data/papers is not exists.");
    EXPECT_FAILS(copy(nullptr, "twin"), bad_args, "VolumeName/ShareName data/(null) is not exists.");
    EXPECT_FAILS(copy("docs", "a/b"), bad_args, "NewShareName a/b is not valid.");
    EXPECT_FAILS(copy("docs", nullptr), bad_args, "NewShareName (null) is not valid.");
    EXPECT_FAILS(copy("docs", "DOCS"), name_taken, "Sharename specified is already exist.");
    sql("CREATE TEMP TRIGGER obstacle BEFORE INSERT ON nfs_share_option BEGIN SELECT RAISE(ABORT,'no'); END");
    EXPECT_FAILS(copy("docs", "twin"), db_failed, "Error in 'INSERT nfs_share_option'. (no)");
    EXPECT_EQ(before, content());
    sql("DROP TRIGGER obstacle");
    EXPECT_OK(copy("docs", "twin"));
}

} // namespace
