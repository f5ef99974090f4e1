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
        return joined("SELECT share_id||':'||pid||'='||blocking FROM process_on_share");
    }
    std::string markers() const
    {
        return joined(
            "SELECT zfs_name||':'||app_name||'='||IFNULL(app_data,'') FROM `$application_on_share`");
    }

    std::string joined(const std::string &select) const
    {
        std::string result;
        for (const std::string &row : rows(select + " ORDER BY 1"))
            result += (result.empty() ? "" : " ") + row;
        return result;
    }

    // The applications that hold a dataset or volume.
    std::string used_by(const char *name)
    {
        static qbobj_UsedBy_t stale{};
        qbobj_UsedBy_t *list = &stale; // must be replaced, not appended to
        EXPECT_OK(qbobj_getUsedByOn(qbdb, db, name, &list, &err));
        std::string result;
        for (; list != nullptr; list = list->_link)
            result += text(list->AppName) + "=" + text(list->AppData) + " ";
        return result;
    }
};

TEST_F(ShareMarkers, ProcessesAreListedWithTheTimeOfTheirRegistration)
{
    const auto before = static_cast<int>(std::time(nullptr));
    qbobj_Process_t second{nullptr, 20, 2, 0};
    qbobj_Process_t first{&second, 10, 0, 0};
    EXPECT_OK(qbobj_addShareProcess(qbdb, db, "data/a", &first, &err));
    qbobj_Process_t *procs = &first; // must be replaced
    EXPECT_OK(qbobj_getShareProcess(qbdb, db, "data/a", &procs, &err));
    ASSERT_NE(nullptr, procs);
    EXPECT_NE(&first, procs);
    EXPECT_EQ(10, procs->ProcessId);
    EXPECT_EQ(0, procs->Blocking);
    EXPECT_LE(before, procs->Timestamp);
    EXPECT_GE(before + 60, procs->Timestamp);
    ASSERT_NE(nullptr, procs->_link);
    EXPECT_EQ(20, procs->_link->ProcessId);
    EXPECT_EQ(2, procs->_link->Blocking);
    EXPECT_EQ(nullptr, procs->_link->_link);

    EXPECT_OK(qbobj_getShareProcess(qbdb, db, "data/none", &procs, &err));
    EXPECT_EQ(nullptr, procs);
    EXPECT_FAILS(qbobj_getShareProcess(qbdb, db, "data/a", nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "procs cannot be NULL.");
}

TEST_F(ShareMarkers, AProcessIsRegisteredOnceAShare)
{
    qbobj_Process_t process{nullptr, 10, 1, 0};
    EXPECT_OK(qbobj_addShareProcess(qbdb, db, "data/a", &process, &err));
    process.Blocking = 5;
    EXPECT_OK(qbobj_addShareProcess(qbdb, db, "data/a", &process, &err));
    EXPECT_OK(qbobj_addShareProcess(qbdb, db, "data/b", &process, &err));
    EXPECT_OK(qbobj_addShareProcess(qbdb, db, "data/b", nullptr, &err));
    EXPECT_EQ("1:10=5 2:10=5", processes());
}

TEST_F(ShareMarkers, ProcessesAreForgottenByPidOrAllTogether)
{
    qbobj_Process_t third{nullptr, 30, 0, 0};
    qbobj_Process_t second{&third, 20, 0, 0};
    qbobj_Process_t first{&second, 10, 0, 0};
    for (const char *share : {"data/a", "data/b"})
        EXPECT_OK(qbobj_addShareProcess(qbdb, db, share, &first, &err));
    second._link = nullptr;
    EXPECT_OK(qbobj_deleteShareProcess(qbdb, db, "data/a", &first, &err));
    EXPECT_EQ("1:30=0 2:10=0 2:20=0 2:30=0", processes());
    EXPECT_OK(qbobj_deleteShareProcess(qbdb, db, "data/none", nullptr, &err));
    EXPECT_OK(qbobj_deleteShareProcess(qbdb, db, "data/b", nullptr, &err));
    EXPECT_EQ("1:30=0", processes());
}

TEST_F(ShareMarkers, OneFailingProcessUndoesTheOthers)
{
    sql("CREATE TRIGGER refuse BEFORE INSERT ON process_on_share WHEN NEW.pid=20 BEGIN SELECT "
        "RAISE(ABORT,'no'); END");
    qbobj_Process_t second{nullptr, 20, 0, 0};
    qbobj_Process_t first{&second, 10, 0, 0};
    EXPECT_FAILS(qbobj_addShareProcess(qbdb, db, "data/a", &first, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT process_on_share'. no");
    EXPECT_EQ("", processes());
}

TEST_F(ShareMarkers, AnApplicationIsMarkedOnceADataset)
{
    qbobj_UsedBy_t ignored{nullptr, "second", "x"};
    qbobj_UsedBy_t marker{&ignored, "app", "1"};
    EXPECT_OK(qbobj_addShareUsedBy(qbdb, db, "data/a", &marker, &err));
    marker.AppData = "2";
    EXPECT_OK(qbobj_addShareUsedBy(qbdb, db, "data/a", &marker, &err));
    EXPECT_OK(qbobj_addShareUsedBy(qbdb, db, "data/b", &marker, &err));
    EXPECT_EQ("data/a:app=2 data/b:app=2", markers());
    EXPECT_OK(qbobj_deleteShareUsedBy(qbdb, db, "data/a", &marker, &err));
    EXPECT_OK(qbobj_deleteShareUsedBy(qbdb, db, "data/a", &marker, &err));
    EXPECT_EQ("data/b:app=2", markers());

    qbobj_UsedBy_t nameless{nullptr, nullptr, "x"};
    for (qbobj_UsedBy_t *wrong : {&nameless, static_cast<qbobj_UsedBy_t *>(nullptr)}) {
        EXPECT_FAILS(qbobj_addShareUsedBy(qbdb, db, "data/a", wrong, &err), QBOBJ_ERROR_API_ARGS,
                     "usedby and usedby->AppName cannot be NULL");
        EXPECT_FAILS(qbobj_deleteShareUsedBy(qbdb, db, "data/a", wrong, &err), QBOBJ_ERROR_API_ARGS,
                     "usedby and usedby->AppName cannot be NULL");
    }
}

TEST_F(ShareMarkers, AreFoundByDatasetOrByTheBeginningOfAVolumesName)
{
    sql("INSERT INTO `$application_on_share` VALUES "
        "('data/a','p','1'),('data/b','q','2'),('DATA2/x','r',NULL),"
        "('backup/data','s','4')");
    EXPECT_EQ("p=1 ", used_by("data/a"));
    EXPECT_EQ("", used_by("data/none"));
    EXPECT_EQ("p=1 q=2 r=NULL ", used_by("data"));
    EXPECT_EQ("s=4 ", used_by("backup"));
    EXPECT_EQ("", used_by("none"));
    EXPECT_FAILS(qbobj_getUsedByOn(qbdb, db, "data", nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "usedby cannot be NULL.");
    qbobj_UsedBy_t *list = nullptr;
    EXPECT_FAILS(qbobj_getUsedByOn(qbdb, db, nullptr, &list, &err), QBOBJ_ERROR_API_ARGS,
                 "ZfsName cannot be NULL.");
}

TEST_F(ShareMarkers, OfOneShareAreReplacedByAList)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','old','1'),('data/b','other','2')");
    qbobj_UsedBy_t second{nullptr, "y", nullptr};
    qbobj_UsedBy_t first{&second, "x", "1"};
    // The row id counts only without a dataset name.
    EXPECT_OK(qbobj_modifyShareUsedBy(qbdb, db, &first, "data/a", 2, &err));
    EXPECT_EQ("data/a:x=1 data/a:y= data/b:other=2", markers());
    EXPECT_OK(qbobj_modifyShareUsedBy(qbdb, db, &first, nullptr, 2, &err));
    EXPECT_EQ("data/a:x=1 data/a:y= data/b:x=1 data/b:y=", markers());
    EXPECT_OK(qbobj_modifyShareUsedBy(qbdb, db, nullptr, "data/a", 0, &err));
    EXPECT_EQ("data/b:x=1 data/b:y=", markers());
    EXPECT_FAILS(qbobj_modifyShareUsedBy(qbdb, db, &first, "data/none", 2, &err), QBOBJ_ERROR_API_ARGS,
                 "ShareId=data/none is not a valid ShareId");
    EXPECT_EQ("data/b:x=1 data/b:y=", markers());
}

TEST_F(ShareMarkers, AnExclusiveMarkerMovesAndIsReleased)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','app','1'),('data/a','other','2')");
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    EXPECT_OK(qbobj_modifyShareUsedByExclusive(qbdb, db, &marker, "data/b", &err));
    EXPECT_EQ("data/a:other=2 data/b:app=3", markers());
    EXPECT_OK(qbobj_modifyShareUsedByExclusive(qbdb, db, &marker, nullptr, &err));
    EXPECT_EQ("data/a:other=2", markers());
    EXPECT_FAILS(qbobj_modifyShareUsedByExclusive(qbdb, db, nullptr, "data/b", &err), QBOBJ_ERROR_API_ARGS,
                 "usedby cannot be NULL.");
}

TEST_F(ShareMarkers, AnUnknownShareIsRefusedAndNothingChanges)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/a','app','1')");
    const std::string before = content();
    qbobj_Process_t process{nullptr, 10, 0, 0};
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    EXPECT_FAILS(qbobj_addShareProcess(qbdb, db, "data/none", &process, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT process_on_share'. NOT NULL constraint failed: "
                 "process_on_share.share_id");
    EXPECT_FAILS(qbobj_addShareUsedBy(qbdb, db, nullptr, &marker, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT process_on_share'. NOT NULL constraint failed: "
                 "$application_on_share.zfs_name");
    EXPECT_FAILS(qbobj_modifyShareUsedBy(qbdb, db, &marker, nullptr, 77, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT $application_on_share'. NOT NULL constraint failed: "
                 "$application_on_share.zfs_name");
    EXPECT_FAILS(qbobj_modifyShareUsedByExclusive(qbdb, db, &marker, "data/none", &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT $application_on_share'. NOT NULL constraint failed: "
                 "$application_on_share.zfs_name");
    EXPECT_EQ(before, content());
}

TEST_F(ShareMarkers, AMissingTableIsTold)
{
    sql("DROP TABLE process_on_share");
    sql("DROP TABLE `$application_on_share`");
    qbobj_Process_t *procs = nullptr;
    qbobj_UsedBy_t *list = nullptr;
    qbobj_UsedBy_t marker{nullptr, "app", "3"};
    EXPECT_FAILS(qbobj_getShareProcess(qbdb, db, "data/a", &procs, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'SELECT process_on_share'. no such table: process_on_share");
    EXPECT_FAILS(qbobj_deleteShareProcess(qbdb, db, "data/a", nullptr, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'DELETE process_on_share'. no such table: process_on_share");
    EXPECT_FAILS(qbobj_deleteShareUsedBy(qbdb, db, "data/a", &marker, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'DELETE application_on_share'. no such table: $application_on_share");
    EXPECT_FAILS(qbobj_modifyShareUsedBy(qbdb, db, &marker, "data/a", 0, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'DELETE $application_on_share'. no such table: $application_on_share");
    EXPECT_FAILS(qbobj_modifyShareUsedByExclusive(qbdb, db, &marker, "data/a", &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'DELETE $application_on_share'. no such table: $application_on_share");
    EXPECT_FAILS(
        qbobj_getUsedByOn(qbdb, db, "data", &list, &err), QBOBJ_ERROR_DB_MISC,
        "Failed DB Query for 'SELECT FROM $application_on_share'. no such table: $application_on_share");
}

} // namespace
