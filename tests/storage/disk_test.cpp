// Disks and their enclosures, and which disks came and went.
#include "database.h"

#include <fstream>

namespace fs = std::filesystem;

namespace
{

using Rows = std::vector<std::string>;

std::string text(const char *value)
{
    return value == nullptr ? "-" : value;
}

class Disks : public qbobj_test::Database
{
  protected:
    Disks()
    {
        sql("INSERT INTO _disk_enclosure (controller,name,nr_row,nr_column,disk_horizontal) VALUES"
            "(0,'Base',1,4,1),(3,'Shelf',2,12,0);"
            "INSERT INTO jbod_port VALUES(3,'Port 3');"
            "INSERT INTO disk_port VALUES(3,1,1,2),(3,2,2,2);"
            "INSERT INTO `$disk_info` (id,present,model,serial,sectors,capacity,controller,port,channel,hwif,"
            "volume_id,pool_type,pool_state,pool_hostid,replaced_with_spare,is_signed_by_mltx) VALUES"
            "('sda',1,'Model','S1',8589934592,4398046511104,3,2,10,'SAS','data','mirror',1,"
            "18446744073709551,1,1),"
            "('12',1,NULL,'S2',4,5,3,1,9,'SAS',NULL,NULL,0,0,0,0),"
            "('sdz',1,NULL,'S3',4,5,3,9,11,'SAS',NULL,NULL,0,0,0,0);"
            "INSERT INTO _disk_health (disk_id,temp,ata_errors,zpool_state) VALUES('sda',40,2,'FAULTED'),"
            "('12',41,0,NULL),('sdz',1,1,NULL)");
    }

    // The disks below the root, of which the platform takes those with a size.
    void plug(const std::string &name) const
    {
        fs::create_directories(root() / "sys/block" / name / "device");
        std::ofstream(root() / "sys/block" / name / "size") << "2048\n";
    }
    void pull(const std::string &name) const { fs::remove_all(root() / "sys/block" / name); }

    Rows disks(int controller)
    {
        collection = {};
        EXPECT_OK(qbobj_getDiskCollectionForController(qbdb, db, &collection, controller, &err));
        Rows result;
        for (const qbobj_Disk_t *disk = collection.Disk; disk != nullptr; disk = disk->_link)
            result.push_back(text(disk->DevName) + " " + text(disk->Pool) + " " + disk->PoolState + " " +
                             text(disk->SlotName) + " " + disk->DiskState + " " +
                             std::to_string(disk->Temperature));
        return result;
    }
    Rows difference()
    {
        diff = nullptr;
        EXPECT_EQ(0, qbobj_getDiskDiff(qbdb, db, &diff, &err));
        Rows result;
        for (const qbobj_DiskDiff_t *disk = diff; disk != nullptr; disk = disk->_link)
            result.push_back(std::to_string(disk->AddOrRemove) + " " + disk->DiskId + " " +
                             text(disk->DiskEnclosureName) + " " + text(disk->SlotName) + " " +
                             text(disk->Pool));
        return result;
    }

    qbobj_DiskCollection_t collection{};
    qbobj_DiskDiff_t *diff = nullptr;
};

TEST_F(Disks, OfAControllerAreListedByChannelWithTheirEnclosure)
{
    EXPECT_EQ((Rows{"12 - NEW 1x2 ONLINE 41", "sda data EXPORTED 2x2 FAULTED 40"}), disks(3))
        << "a disk without a slot is not listed";
    EXPECT_EQ(12, collection.Disk->resource_id);
    const qbobj_Disk_t &sda = *collection.Disk->_link;
    EXPECT_EQ(0, sda.resource_id);
    EXPECT_STREQ("sda", sda.DiskId);
    EXPECT_EQ(8589934592, sda.Sectors);
    EXPECT_EQ(4398046511104, sda.Capacity);
    EXPECT_EQ(18446744073709551u, sda.PoolHostId);
    EXPECT_EQ(10, sda.Channel);
    EXPECT_EQ(0, sda.ReplacedWithSpare) << "the list does not read it";
    EXPECT_EQ(3, collection.DiskEnclosureId);
    EXPECT_EQ(std::pair(2, 12), std::pair(collection.EnclosureRows, collection.EnclosureCols));
    EXPECT_STREQ("Port 3", collection.DiskEnclosurePort);
    EXPECT_STREQ("", collection.SESDevice);
    EXPECT_EQ(nullptr, collection.DeadSlots);

    sql("UPDATE `$disk_info` SET pool_state=9; DELETE FROM _disk_health WHERE disk_id='12'");
    EXPECT_EQ((Rows{"sda data UNKNOWN 2x2 FAULTED 40"}), disks(3)) << "nor is one without readings";
    EXPECT_OK(qbobj_getDiskCollection(qbdb, db, &(collection = {}), &err));
    EXPECT_EQ(nullptr, collection.Disk) << "controller 0 has none";
    EXPECT_EQ(nullptr, collection.EnclosureName) << "nor is its enclosure connected to a port";
}

TEST_F(Disks, AreFoundByTheirNameWithoutReadings)
{
    sql("DELETE FROM _disk_health");
    qbobj_Disk_t disk{};
    disk.DevName = "sda";
    EXPECT_OK(qbobj_getDiskByDevname(qbdb, db, &disk, &err));
    EXPECT_STREQ("S1", disk.Serial);
    EXPECT_EQ(std::pair(3, 3), std::pair(disk.Controller, disk.DiskEnclosureId));
    EXPECT_EQ(std::pair(1, 1), std::pair(disk.ReplacedWithSpare, disk.IsSignedByMaltrex));
    EXPECT_EQ(nullptr, disk.PoolState);
    disk.DevName = "none";
    EXPECT_OK(qbobj_getDiskByDevname(qbdb, db, &disk, &err));
    EXPECT_STREQ("S1", disk.Serial) << "the record stays as it was";

    EXPECT_OK(qbobj_setDiskSpare(qbdb, db, "12", 7, &err));
    disk.DevName = "sda";
    EXPECT_OK(qbobj_deleteDiskByDevname(qbdb, db, &disk, &err));
    EXPECT_EQ((Rows{"12|7", "sdz|0"}), rows("SELECT id,replaced_with_spare FROM `$disk_info`"));
}

TEST_F(Disks, EnclosuresAreListedWithoutDisks)
{
    qbobj_DiskEnclosureCollection_t enclosures{};
    EXPECT_OK(qbobj_getDiskEnclosureCollection(qbdb, db, &enclosures, &err));
    const qbobj_DiskCollection_t &shelf = *enclosures.DiskEnclosure->_link;
    EXPECT_STREQ("controller-3", shelf.resource_id);
    EXPECT_STREQ("Shelf", shelf.EnclosureName);
    EXPECT_EQ(std::pair(2, 12), std::pair(shelf.EnclosureRows, shelf.EnclosureCols));
    EXPECT_EQ(nullptr, shelf.Disk);
    char *label = nullptr;
    EXPECT_OK(qbobj_getDiskEnclosurePort(qbdb, db, 3, &label, &err));
    EXPECT_STREQ("Port 3", label);
    EXPECT_OK(qbobj_getDiskEnclosurePort(qbdb, db, 0, &label, &err));
    EXPECT_EQ(nullptr, label);
}

TEST_F(Disks, ThatComeAndGoAreTold)
{
    plug("sda");
    plug("12");
    EXPECT_EQ((Rows{"-1 sdz Shelf - -"}), difference());
    EXPECT_EQ((Rows{}), difference()) << "nothing has changed since";
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM temp.sqlite_schema")) << "the copy is dropped";

    // In the place of sda: the platform knows where sdb is.
    sql("INSERT INTO `$disk_info` (id,present,controller,port,channel) VALUES('sdb',NULL,3,2,10)");
    pull("sda");
    plug("sdb");
    EXPECT_EQ((Rows{"1 sdb Shelf 2x2 data", "-1 sda Shelf 2x2 -"}), difference());
    EXPECT_STREQ("controller-3", diff->DiskEnclosureId);
    EXPECT_STREQ("", diff->Serial);
    EXPECT_STREQ("NEW", diff->PoolState);
    EXPECT_EQ(2048, diff->Sectors);
    EXPECT_STREQ("EXPORTED", diff->_link->PoolState);
    pull("sdb");
    EXPECT_EQ((Rows{"-1 sdb Shelf 2x2 -"}), difference());
    plug("sdb");
    EXPECT_EQ((Rows{"1 sdb Shelf 2x2 data"}), difference()) << "sda was absent at the last look already";
}

TEST_F(Disks, AreTakenFromTheSlotOfADifference)
{
    sql("UPDATE `$disk_info` SET present=0,channel=10,port=1; "
        "INSERT INTO `$disk_info` (id,present,controller,port,channel) VALUES('last',0,3,1,10)");
    qbobj_DiskDiff_t place{};
    place.Controller = 3;
    place.Channel = 10;
    qbobj_Disk_t disk{};
    EXPECT_OK(qbobj_getDiskByDiskDiff(qbdb, db, &place, &disk, &err));
    EXPECT_STREQ("sda", disk.DevName);
    sql("UPDATE `$disk_info` SET volume_id=NULL");
    EXPECT_OK(qbobj_getDiskByDiskDiff(qbdb, db, &place, &disk, &err));
    EXPECT_STREQ("last", disk.DiskId) << "none of them belongs to a volume";
    place.Channel = 11;
    EXPECT_OK(qbobj_getDiskByDiskDiff(qbdb, db, &place, &disk, &err));
    EXPECT_STREQ("last", disk.DevName) << "the record stays as it was";
}

TEST_F(Disks, FailedStepsOfADifferenceAreLoggedOrTold)
{
    plug("new");
    sql("ALTER TABLE disk_port RENAME TO away");
    EXPECT_EQ("1 new Base - -", difference().front());
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
    EXPECT_STREQ("Failed DB Query for 'SELECT FROM disk_port'. no such table: disk_port", err.msg);
    EXPECT_STREQ("qbobj_api2_get_diskenc", err.file);

    sql("ALTER TABLE `$disk_info` RENAME COLUMN model TO kind");
    EXPECT_EQ((Rows{}), difference());
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_NE(log().npos,
              log().find("Error in SELECT disk_info EXCEPT old_$disk_info (no such column: model)"));
    EXPECT_NE(log().npos,
              log().find("Error in SELECT old_$disk_info EXCEPT disk_info (no such column: model)"));
    sql("ALTER TABLE `$disk_info` RENAME TO gone");
    EXPECT_EQ((Rows{}), difference());
    EXPECT_NE(log().npos, log().find("Error in qbdb_sql_duplicate_tables() no such table: $disk_info"));
}

TEST_F(Disks, MissingArgumentsAreRefused)
{
    const char *no_disk = "disk or disk->DevName is null. caller should specify devname.";
    const char *no_collection = "collection cannot be NULL.";
    qbobj_Disk_t disk{};
    qbobj_DiskDiff_t place{};
    const auto refused = [&](int rc, const char *message) {
        EXPECT_FAILS(rc, QBOBJ_ERROR_API_ARGS, message);
    };
    refused(qbobj_getDiskByDevname(qbdb, db, nullptr, &err), no_disk);
    refused(qbobj_getDiskByDevname(qbdb, db, &disk, &err), no_disk);
    refused(qbobj_deleteDiskByDevname(qbdb, db, &disk, &err), no_disk);
    refused(qbobj_setDiskSpare(qbdb, db, nullptr, 1, &err),
            "devname is null. caller should specify devname.");
    refused(qbobj_getDiskDiff(qbdb, db, nullptr, &err), "diff is NULL");
    refused(qbobj_getDiskByDiskDiff(qbdb, db, nullptr, &disk, &err), "disk or diff is null.");
    refused(qbobj_getDiskByDiskDiff(qbdb, db, &place, nullptr, &err), "disk or diff is null.");
    refused(qbobj_getDiskCollection(qbdb, db, nullptr, &err), no_collection);
    refused(qbobj_getDiskEnclosureCollection(qbdb, db, nullptr, &err), no_collection);
}

} // namespace
