// Volumes: listed, their state stored, and deleted with what depends on them.
#include "database.h"

namespace
{

using Rows = std::vector<std::string>;

class Volumes : public qbobj_test::Database
{
  protected:
    Rows listed()
    {
        qbobj_VolumeCollection_t collection{};
        EXPECT_OK(qbobj_getVolumeCollection(qbdb, db, &collection, &err));
        mode = collection.SystemRaidMode;
        Rows result;
        for (const qbobj_Volume_t *volume = collection.Volume; volume != nullptr; volume = volume->_link) {
            EXPECT_STREQ(volume->resource_id, volume->VolumeId);
            result.push_back(std::string(volume->VolumeName) + " " + volume->RaidType + " " +
                             std::to_string(volume->BlockFree));
        }
        return result;
    }
    int remove(const char *id) { return qbobj_deleteVolume(qbdb, db, id, &err); }

    std::string mode;
};

TEST_F(Volumes, AreListedByNameWithoutTheUsbVolume)
{
    sql("INSERT INTO _volume (id,lv_name,raid_type,blk_free) VALUES('u','USB','RAID0',1),"
        "('v1','Big','RAID5',5000000000),('v2','archive',NULL,0)");
    EXPECT_EQ(
        (Rows{"archive QRAID 0", "backup QRAID 10485760", "Big RAID5 5000000000", "data QRAID 10485760"}),
        listed());
    const std::pair<const char *, const char *> modes[] = {
        {"UPDATE system_config SET raid_mode='JBOD'", "JBOD"},
        {"UPDATE system_config SET raid_mode=NULL", "QRAID"},
        {"DELETE FROM system_config", "QRAID"}};
    for (const auto &[change, expected] : modes) {
        sql(change);
        listed();
        EXPECT_EQ(expected, mode) << change;
    }
    EXPECT_FAILS(qbobj_getVolumeCollection(qbdb, db, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "collection cannot be NULL.");
}

TEST_F(Volumes, KeepNameAndRaidTypeWhenTheirStateIsStored)
{
    qbobj_Volume_t volume{};
    volume.VolumeId = "data";
    volume.VolumeName = "other";
    volume.RaidType = "RAID9";
    volume.BlockTotal = 5000000001;
    volume.BlockFree = 2;
    volume.BlockSize = 3;
    volume.VolumeHealth = "DEGRADED";
    volume.SentResilverEvent = 4;
    volume.SentScanEnd = 5;
    volume.KeyFile = "/key's";
    volume.BalanceStatus = 6;
    volume.DisktestStatus = 7;
    EXPECT_OK(qbobj_updateVolume(qbdb, db, &volume, &err));
    const char *select =
        "SELECT lv_name,raid_type,blk_total,blk_free,blk_size,volume_health,sent_resilver_event,"
        "sent_scan_end,keyfile,balance_status,disk_test_status FROM _volume ORDER BY id='data'";
    EXPECT_EQ((Rows{"backup|NULL|20971520|10485760|1024|NULL|0|0|NULL|0|0",
                    "data|NULL|5000000001|2|3|DEGRADED|4|5|/key's|6|7"}),
              rows(select));
    EXPECT_FAILS(qbobj_updateVolume(qbdb, db, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "volume is null. caller should specify volume.");
}

TEST_F(Volumes, TakeEverythingOnThemAlong)
{
    qbobj_Share_t docs{};
    qbobj_clear_Share(&docs);
    docs.ShareName = "docs";
    docs.VolumeId = "data";
    qbobj_Share_t kept = docs;
    kept.ShareName = "kept";
    kept.VolumeId = "backup";
    docs._link = &kept;
    ASSERT_OK(qbobj_addShare(qbdb, db, &docs, &err));
    sql("INSERT INTO _volume (nr,id,lv_name) VALUES(-1,'media','media');"
        "UPDATE service_afp SET "
        "timemachine_enabled=1,volume_timemachine='data',vol_size_limit_timemachine_mb=9;"
        "UPDATE `$timemachine_quota` SET enabled=1,capacity_mb=8; INSERT INTO `$timemachine_quota` "
        "VALUES(100,1,7)");
    EXPECT_OK(remove("data"));
    EXPECT_EQ((Rows{"kept"}), rows("SELECT name FROM share"));
    EXPECT_EQ((Rows{"media", "backup"}), rows("SELECT id FROM _volume ORDER BY nr"));
    const char *afp =
        "SELECT timemachine_enabled,volume_timemachine,vol_size_limit_timemachine_mb FROM service_afp";
    EXPECT_EQ((Rows{"0|NULL|0"}), rows(afp));
    EXPECT_EQ((Rows{"96|0|0"}), rows("SELECT * FROM `$timemachine_quota`"));
    EXPECT_EQ("backup", value("SELECT home_volume_id FROM account_default")) << "media never holds homes";

    sql("UPDATE service_afp SET timemachine_enabled=1,volume_timemachine='elsewhere';"
        "INSERT INTO `$timemachine_quota` VALUES(100,1,7)");
    EXPECT_OK(remove("backup"));
    EXPECT_EQ((Rows{"1|elsewhere|0"}), rows(afp)) << "an area on another volume stays";
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM `$timemachine_quota`")) << "quotas go with any volume";
    EXPECT_EQ("run", value("SELECT home_volume_id FROM account_default")) << "there is no volume left";
}

TEST_F(Volumes, StayWhenTheHomesCannotMove)
{
    sql("CREATE TRIGGER no_home BEFORE UPDATE ON account_default BEGIN SELECT RAISE(ABORT,'no'); END");
    const std::string before = content();
    EXPECT_EQ(QBOBJ_ERROR_SIGSEGV, remove("data"));
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_NE(log().npos, log().find("Failed to UPDATE account_default."));
    EXPECT_EQ(before, content());
    EXPECT_OK(remove("backup")) << "the homes are not on it";
}

} // namespace
