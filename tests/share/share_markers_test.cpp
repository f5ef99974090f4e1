// Who uses a share: running processes and applications.
#include "share_rows.h"

#include <ctime>

using namespace qbobj_test;

namespace
{

class ShareMarkers : public Shares
{
  protected:
    void SetUp() override
    {
        add_share("a");
        add_share("b");
    }

    std::string processes() const
    {
        return value("SELECT IFNULL(GROUP_CONCAT(share_id||':'||pid||'='||blocking,' '),'') FROM "
                     "(SELECT * FROM process_on_share ORDER BY share_id,pid)");
    }
    std::string markers() const
    {
        return value("SELECT GROUP_CONCAT(zfs_name||':'||app_name||'='||IFNULL(app_data,''),' ') FROM "
                     "(SELECT * FROM `$application_on_share` ORDER BY zfs_name,app_name)");
    }
    // The applications that hold a dataset or volume.
    std::string used_by(const char *name)
    {
        static qbobj_UsedBy_t stale{};
        qbobj_UsedBy_t *list = &stale; // must be replaced, not appended to
        EXPECT_OK(call(qbobj_getUsedByOn, name, &list));
        return joined(list, [](const qbobj_UsedBy_t &marker) {
            return text(marker.AppName) + "=" + text(marker.AppData);
        });
    }
    // The call could not run its statement.
    void failed(int result, const std::string &statement, const std::string &cause)
    {
        EXPECT_FAILS(result, db_failed, ("Failed DB Query for '" + statement + "'. " + cause).c_str());
    }
};

TEST_F(ShareMarkers, ProcessesAreListedWithTheTimeOfTheirRegistration)
{
    const auto before = static_cast<int>(std::time(nullptr));
    qbobj_Process_t second{nullptr, 20, 2, 0};
    qbobj_Process_t first{&second, 10, 0, 0};
    EXPECT_OK(call(qbobj_addShareProcess, "data/a", &first));
    qbobj_Process_t *procs = &first; // must be replaced
    EXPECT_OK(call(qbobj_getShareProcess, "data/a", &procs));
    EXPECT_NE(&first, procs);
    EXPECT_EQ("10|0 20|2", joined(procs, [&](const qbobj_Process_t &process) {
                  EXPECT_TRUE(process.Timestamp >= before && process.Timestamp <= before + 60);
                  return fields(process.ProcessId, process.Blocking);
              }));

    EXPECT_OK(call(qbobj_getShareProcess, "data/none", &procs));
    EXPECT_EQ(nullptr, procs);
    EXPECT_FAILS(call(qbobj_getShareProcess, "data/a", nullptr), bad_args, "procs cannot be NULL.");
}

TEST_F(ShareMarkers, AProcessIsRegisteredOnceAShare)
{
    qbobj_Process_t process{nullptr, 10, 1, 0};
    EXPECT_OK(call(qbobj_addShareProcess, "data/a", &process));
    process.Blocking = 5;
    EXPECT_OK(call(qbobj_addShareProcess, "data/a", &process));
    EXPECT_OK(call(qbobj_addShareProcess, "data/b", &process));
    EXPECT_OK(call(qbobj_addShareProcess, "data/b", nullptr));
    EXPECT_EQ("1:10=5 2:10=5", processes());
}

TEST_F(ShareMarkers, ProcessesAreForgottenByPidOrAllTogether)
{
    qbobj_Process_t third{nullptr, 30, 0, 0};
    qbobj_Process_t second{&third, 20, 0, 0};
    qbobj_Process_t first{&second, 10, 0, 0};
    for (const char *share : {"data/a", "data/b"})
        EXPECT_OK(call(qbobj_addShareProcess, share, &first));
    second._link = nullptr;
    EXPECT_OK(call(qbobj_deleteShareProcess, "data/a", &first));
    EXPECT_EQ("1:30=0 2:10=0 2:20=0 2:30=0", processes());
    EXPECT_OK(call(qbobj_deleteShareProcess, "data/none", nullptr));
    EXPECT_OK(call(qbobj_deleteShareProcess, "data/b", nullptr));
    EXPECT_EQ("1:30=0", processes());
}

TEST_F(ShareMarkers, AnApplicationIsMarkedOnceADataset)
{
    qbobj_UsedBy_t ignored{nullptr, "second", "x"};
    qbobj_UsedBy_t marker{&ignored, "app", "1"};
    EXPECT_OK(call(qbobj_addShareUsedBy, "data/a", &marker));
    marker.AppData = "2";
    EXPECT_OK(call(qbobj_addShareUsedBy, "data/a", &marker));
    EXPECT_OK(call(qbobj_addShareUsedBy, "data/b", &marker));
    EXPECT_EQ("data/a:app=2 data/b:app=2", markers());
    EXPECT_OK(call(qbobj_deleteShareUsedBy, "data/a", &marker));
    EXPECT_OK(call(qbobj_deleteShareUsedBy, "data/a", &marker));
    EXPECT_EQ("data/b:app=2", markers());

    qbobj_UsedBy_t nameless{nullptr, nullptr, "x"};
    for (qbobj_UsedBy_t *wrong : {&nameless, static_cast<qbobj_UsedBy_t *>(nullptr)}) {
        EXPECT_FAILS(call(qbobj_addShareUsedBy, "data/a", wrong), bad_args,
                     "usedby and usedby->AppName cannot be NULL");
        EXPECT_FAILS(call(qbobj_deleteShareUsedBy, "data/a", wrong), bad_args,
                     "usedby and usedby->AppName cannot be NULL");
    }
}

TEST_F(ShareMarkers, AreFoundByDatasetOrByTheBeginningOfAVolumesName)
{
    sql("INSERT INTO `$application_on_share` VALUES "
        "('data/a','p','1'),('data/b','q','2'),('DATA2/x','r',NULL),"
        "('backup/data','s','4')");
    EXPECT_EQ("p=1", used_by("data/a"));
    EXPECT_EQ("", used_by("data/none"));
    EXPECT_EQ("p=1 q=2 r=NULL", used_by("data"));
    EXPECT_EQ("s=4", used_by("backup"));
    EXPECT_EQ("", used_by("none"));
    EXPECT_FAILS(call(qbobj_getUsedByOn, "data", nullptr), bad_args, "usedby cannot be NULL.");
    qbobj_UsedBy_t *list = nullptr;
    EXPECT_FAILS(call(qbobj_getUsedByOn, nullptr, &list), bad_args, "ZfsName cannot be NULL.");
}

TEST_F(ShareMarkers, OfOneShareAreReplacedByAList)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','old','1'),('data/b','other','2')");
    qbobj_UsedBy_t second{nullptr, "y", nullptr};
    qbobj_UsedBy_t first{&second, "x", "1"};
    // The row id counts only without a dataset name.
    EXPECT_OK(call(qbobj_modifyShareUsedBy, &first, "data/a", 2));
    EXPECT_EQ("data/a:x=1 data/a:y= data/b:other=2", markers());
    EXPECT_OK(call(qbobj_modifyShareUsedBy, &first, nullptr, 2));
    EXPECT_EQ("data/a:x=1 data/a:y= data/b:x=1 data/b:y=", markers());
    EXPECT_OK(call(qbobj_modifyShareUsedBy, nullptr, "data/a", 0));
    EXPECT_EQ("data/b:x=1 data/b:y=", markers());
    EXPECT_FAILS(call(qbobj_modifyShareUsedBy, &first, "data/none", 2), bad_args,
                 "ShareId=data/none is not a valid ShareId");
    EXPECT_EQ("data/b:x=1 data/b:y=", markers());
}

TEST_F(ShareMarkers, AnExclusiveMarkerMovesAndIsReleased)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','app','1'),('data/a','other','2')");
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    EXPECT_OK(call(qbobj_modifyShareUsedByExclusive, &marker, "data/b"));
    EXPECT_EQ("data/a:other=2 data/b:app=3", markers());
    EXPECT_OK(call(qbobj_modifyShareUsedByExclusive, &marker, nullptr));
    EXPECT_EQ("data/a:other=2", markers());
    EXPECT_FAILS(call(qbobj_modifyShareUsedByExclusive, nullptr, "data/b"), bad_args,
                 "usedby cannot be NULL.");
}

TEST_F(ShareMarkers, AnUnknownShareIsRefusedAndNothingChanges)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','app','1')");
    const std::string before = content();
    qbobj_Process_t process{nullptr, 10, 0, 0};
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    const std::string no_share = "NOT NULL constraint failed: process_on_share.share_id";
    const std::string no_dataset = "NOT NULL constraint failed: $application_on_share.zfs_name";
    failed(call(qbobj_addShareProcess, "data/none", &process), "INSERT process_on_share", no_share);
    failed(call(qbobj_addShareUsedBy, nullptr, &marker), "INSERT process_on_share", no_dataset);
    failed(call(qbobj_modifyShareUsedBy, &marker, nullptr, 77), "INSERT $application_on_share", no_dataset);
    failed(call(qbobj_modifyShareUsedByExclusive, &marker, "data/none"), "INSERT $application_on_share",
           no_dataset);
    EXPECT_EQ(before, content());
}

TEST_F(ShareMarkers, AMissingTableIsTold)
{
    sql("DROP TABLE process_on_share");
    sql("DROP TABLE `$application_on_share`");
    qbobj_Process_t *procs = nullptr;
    qbobj_UsedBy_t *list = nullptr;
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    std::string gone = "no such table: process_on_share";
    failed(call(qbobj_getShareProcess, "data/a", &procs), "SELECT process_on_share", gone);
    failed(call(qbobj_deleteShareProcess, "data/a", nullptr), "DELETE process_on_share", gone);
    gone = "no such table: $application_on_share";
    failed(call(qbobj_deleteShareUsedBy, "data/a", &marker), "DELETE application_on_share", gone);
    failed(call(qbobj_modifyShareUsedBy, &marker, "data/a", 0), "DELETE $application_on_share", gone);
    failed(call(qbobj_modifyShareUsedByExclusive, &marker, "data/a"), "DELETE $application_on_share", gone);
    failed(call(qbobj_getUsedByOn, "data", &list), "SELECT FROM $application_on_share", gone);
}

} // namespace
