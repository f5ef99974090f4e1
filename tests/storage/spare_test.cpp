// Spare disks and the timed jobs of volumes.
#include "database.h"

namespace
{

using Rows = std::vector<std::string>;

class Spares : public qbobj_test::Database
{
};

TEST_F(Spares, AreListedWhenTheirDiskIsThere)
{
    sql("INSERT INTO `$disk_info` (id,present,model,rpm,capacity,controller,channel,hwif,volume_id,pool_type,"
        "pool_state,pool_hostid) "
        "VALUES('sda',1,'Model',7200,99,3,10,'SAS','data','spare',4,12),('sdb',1,'',0,0,"
        "0,0,'','','',0,0)");
    for (const char *name : {"sda", "gone", "sdb"})
        EXPECT_OK(qbobj_addVolumeSpare(qbdb, db, name, &err));
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, qbobj_addVolumeSpare(qbdb, db, "sda", &err));
    for (const char *name : {"sdb", "none"})
        EXPECT_OK(qbobj_deleteVolumeSpare(qbdb, db, name, &err));
    EXPECT_EQ((Rows{"gone", "sda"}), rows("SELECT disk_info_id FROM `$volume_spares` ORDER BY 1"));

    qbobj_DiskCollection_t spares{};
    ASSERT_OK(qbobj_getVolumeSparesCollection(qbdb, db, &spares, &err));
    qbobj_Disk_t expected{};
    expected.DiskId = expected.DevName = "sda";
    expected.Present = 1;
    expected.Model = "Model";
    expected.RPM = 7200;
    expected.Capacity = 99;
    expected.Controller = 3;
    expected.Channel = 10;
    expected.HardwareInterface = "SAS";
    expected.Pool = "data";
    expected.PoolType = "spare";
    expected.PoolState = "L2CACHE";
    expected.PoolHostId = 12;
    EXPECT_EQ(qbobj_test::dump("Disk", &expected), qbobj_test::dump("Disk", spares.Disk));
    EXPECT_EQ(nullptr, spares.Disk->_link);
}

class Jobs : public qbobj_test::Database
{
  protected:
    qbobj_VolumeSchedule_t job(int id, const char *volume = "data")
    {
        qbobj_VolumeSchedule_t made{};
        made.JobID = id;
        made.VolumeName = volume;
        made.Interval = &interval;
        return made;
    }
    int add(qbobj_VolumeSchedule_t made) { return qbobj_addVolumeSchedule(qbdb, db, &made, &err); }
    int update(qbobj_VolumeSchedule_t made) { return qbobj_updateVolumeSchedule(qbdb, db, &made, &err); }
    int remove(qbobj_VolumeSchedule_t made) { return qbobj_deleteVolumeSchedule(qbdb, db, &made, &err); }
    Rows ids() const { return rows("SELECT job_id FROM volume_schedule"); }

    qbobj_CronSchedule_t interval{"1", "2", "3", "4", nullptr};
};

TEST_F(Jobs, AreAddedChangedAndListed)
{
    qbobj_VolumeSchedule_t one = job(3);
    one.Enabled = 1;
    one.Action = 77;
    ASSERT_OK(add(one));
    qbobj_VolumeScheduleCollection_t listed{};
    ASSERT_OK(qbobj_getVolumeScheduleCollection(qbdb, db, &listed, &err));
    EXPECT_STREQ("3", listed.VolumeSchedule->resource_id);
    EXPECT_STREQ("", listed.VolumeSchedule->Interval->DayOfWeek);
    interval.DayOfWeek = "";
    EXPECT_EQ(qbobj_test::dump("VolumeSchedule", &one),
              qbobj_test::dump("VolumeSchedule", listed.VolumeSchedule));

    interval = {"5", "6", "7", "8", "9"};
    one = job(3, "backup");
    one.Action = 78;
    ASSERT_OK(update(one));
    EXPECT_EQ(Rows{"3|data|0|78|5|6|7|8|9"}, rows("SELECT * FROM volume_schedule")) << "the volume stays";
}

TEST_F(Jobs, AreRefusedWithoutAMessage)
{
    ASSERT_OK(add(job(3)));
    qbobj_VolumeSchedule_t without = job(4);
    without.Interval = nullptr;
    for (const int rc :
         {add(job(3)), add(without), update(without), update(job(4)), remove(job(4)), remove(job(0)),
          remove(job(-1, nullptr)), qbobj_addVolumeSchedule(qbdb, db, nullptr, &err)}) {
        EXPECT_EQ(QBOBJ_ERROR_DB_MISC, rc);
        EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    }
    EXPECT_EQ(Rows{"3"}, ids());
}

TEST_F(Jobs, GoOneByOneOrWithTheirVolume)
{
    for (const int id : {0, 1, 2})
        ASSERT_OK(add(job(id)));
    ASSERT_OK(add(job(5, "it's")));
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, add(job(0)));
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec) << "the table refuses the second job 0";
    EXPECT_OK(remove(job(1)));
    EXPECT_EQ((Rows{"0", "2", "5"}), ids());
    for (const char *volume : {"data", "none", "it's"})
        EXPECT_OK(remove(job(-1, volume)));
    EXPECT_TRUE(ids().empty());
}

} // namespace
