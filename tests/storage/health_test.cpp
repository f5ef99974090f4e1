// Readings of disks, enclosures and UPS devices.
#include "database.h"

#include <fstream>

namespace
{

using Rows = std::vector<std::string>;

class Health : public qbobj_test::Database
{
  protected:
    int store(int controller, const char *name, const char *devid, int value)
    {
        qbobj_EnclosureHealthItem_t item{};
        item.Name = name;
        item.DevId = devid;
        item.Value = value;
        qbobj_EnclosureHealth_t enclosure{};
        enclosure.Controller = controller;
        enclosure.Health = &item;
        return qbobj_setEnclosureHealth(qbdb, db, &enclosure, &err);
    }
    Rows readings() const
    {
        return rows("SELECT controller,name,devid,value,value_prev1,value_prev2,value_prev3 "
                    "FROM _enclosure_health ORDER BY 1,2,3");
    }
    void expect_no_data(int rc)
    {
        EXPECT_FAILS(rc, QBOBJ_ERROR_DB_NOTEXISTS, "No data in _enclosure_health table");
    }
};

TEST_F(Health, DiskReadingsAreReplacedAndListedWithTheirPlace)
{
    qbobj_DiskHealthCollection_t collection{};
    EXPECT_FAILS(qbobj_getDiskHealthCollection(qbdb, db, &collection, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "No data in _disk_healt table");
    sql("INSERT INTO `$disk_info` (id,controller,channel) VALUES('sda',3,1),('sdb',0,2)");
    qbobj_DiskHealth_t forgotten{};
    forgotten.DiskId = "sdx";
    qbobj_DiskHealth_t sdb{};
    sdb._link = &forgotten;
    sdb.DiskId = "sdb";
    qbobj_DiskHealth_t sda{nullptr, nullptr, "sda", 99, 98, 1,  2,  3,        4,  5,  6,
                           7,       8,       9,     10, 11, 12, 13, "ONLINE", 14, 15, 16};
    sda._link = &sdb;
    EXPECT_OK(qbobj_setDiskHealth(qbdb, db, &sda, &err));
    EXPECT_OK(qbobj_setDiskHealth(qbdb, db, &sda, &err));
    ASSERT_OK(qbobj_getDiskHealthCollection(qbdb, db, &collection, &err));
    qbobj_DiskHealth_t &first = *collection.Health;
    EXPECT_STREQ("controller-3", first.resource_id);
    sda.Controller = 3;
    sda.Channel = 1;
    sdb._link = nullptr; // the third disk is forgotten
    sdb.Channel = 2;
    sdb.ZpoolState = "UNKNOWN";
    EXPECT_EQ(qbobj_test::dump("DiskHealth", &sda), qbobj_test::dump("DiskHealth", &first));
    sdb.DiskId = nullptr;
    EXPECT_FAILS(qbobj_setDiskHealth(qbdb, db, &sdb, &err), QBOBJ_ERROR_API_ARGS,
                 "Fail 'INSERT INTO _disk_health");
}

TEST_F(Health, AReadingKeepsTheThreeBeforeIt)
{
    for (const int value : {40, 42, 45, 47, 50})
        EXPECT_OK(store(3, "Fan", "1", value));
    EXPECT_EQ((Rows{"3|Fan|1|50|47|45|42"}), readings());
    struct Case {
        int controller;
        const char *name;
        const char *devid;
        bool stored;
    };
    for (const auto &[controller, name, devid, stored] :
         {Case{0, "Fan", "1", false}, {0, "Fan", "2", true}, {0, "Cpu", "1", true}, {3, "Fan", "1", true}}) {
        sql("DELETE FROM _enclosure_health");
        EXPECT_OK(store(controller, name, devid, 1));
        EXPECT_OK(store(controller, name, devid, -481));
        const std::string kept = std::to_string(controller) + "|" + name + "|" + devid + "|-481|1|1|1";
        EXPECT_EQ(stored ? Rows{kept} : Rows{}, readings());
    }
    sql("DROP TABLE _enclosure_health");
    EXPECT_FAILS(store(0, "Fan", "2", 1), QBOBJ_ERROR_API_ARGS,
                 "Fail 'INSERT INTO _enclousre_health. no such table: _enclosure_health");
    EXPECT_FAILS(qbobj_setEnclosureHealth(qbdb, db, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "enc_health cannot be NULL.");
}

TEST_F(Health, SensorsAreListedWithAndWithoutReadings)
{
    qbobj_EnclosureHealthCollection_t collection{};
    qbobj_EnclosureHealth_t base{};
    expect_no_data(qbobj_getEnclosureHealth(qbdb, db, &base, &err));
    expect_no_data(qbobj_getEnclosureHealthCollection(qbdb, db, &collection, &err));
    sql("INSERT INTO _disk_enclosure (controller,name,nr_cpu,nr_fan,nr_psu,nr_volt) VALUES(0,'Base',1,2,3,4),"
        "(3,'Shelf',0,0,0,0),(4,'Loose',0,0,0,0); INSERT INTO jbod_port VALUES(0,'Port 0'),(3,'Port 3');"
        "INSERT INTO enclosure_health_spec VALUES(0,'Fan','2',100,900,'rear'),(0,'Fan','1',100,901,'front'),"
        "(0,'Volt','1',NULL,NULL,NULL)");
    EXPECT_OK(store(0, "Fan", "1", 500));
    EXPECT_OK(store(0, "Fan", "2", 600));
    EXPECT_OK(store(3, "Fan", "1", 700));
    ASSERT_OK(qbobj_getEnclosureHealthCollection(qbdb, db, &collection, &err));
    const qbobj_EnclosureHealth_t &first = *collection.Health;
    EXPECT_STREQ("controller-0", first.resource_id);
    EXPECT_STREQ("Port 0", first.PortLabel);
    EXPECT_EQ(10, first.NrCpu + first.NrFan + first.NrPsu + first.NrVolt);
    EXPECT_EQ(nullptr, first._link->Health) << "a reading without a sensor is not listed";
    EXPECT_EQ(nullptr, first._link->_link) << "an enclosure that is on no port is not listed";

    ASSERT_OK(qbobj_getEnclosureHealth(qbdb, db, &base, &err));
    EXPECT_EQ(qbobj_test::dump("EnclosureHealthItem", first.Health),
              qbobj_test::dump("EnclosureHealthItem", base.Health));
    EXPECT_EQ(nullptr, base.Health->Name) << "there is no reading yet";
    const qbobj_EnclosureHealthItem_t &fan = *base.Health->_link;
    EXPECT_STREQ("front", fan.Label);
    EXPECT_EQ((std::pair{500, 901}), (std::pair{fan.Value, fan.Max}));
    EXPECT_STREQ("rear", fan._link->Label);
}

TEST_F(Health, TestReadingsComeFromAFileOrTheMiddleOfTheRange)
{
    sql("INSERT INTO enclosure_health_spec VALUES(0,'Fan','1',100,901,'front'),(2,'Volt','1',10,20,NULL)");
    const std::string name31(31, 'n');
    std::ofstream(root() / "readings") << "0,Fan,1,7,and more\r\n2,Volt,1,8\n2," << name31 << "," << name31
                                       << ",9\n2," << name31 << "n,1,10\n2,Volt,2,11\n";
    EXPECT_OK(qbobj_setEnclosureHealthForTest(qbdb, db, "/readings", &err));
    EXPECT_EQ((Rows{"0|Fan|1|7|7|7|7", "2|Volt|1|8|8|8|8", "2|" + name31 + "|" + name31 + "|9|9|9|9"}),
              readings())
        << "a longer name ends the file";
    for (const char *path : {static_cast<const char *>(nullptr), "/none", "/"}) {
        sql("DELETE FROM _enclosure_health WHERE controller=2");
        EXPECT_OK(qbobj_setEnclosureHealthForTest(qbdb, db, path, &err));
        EXPECT_EQ((Rows{"0|Fan|1|7|7|7|7", "2|Volt|1|15|15|15|15"}), readings());
    }
}

TEST_F(Health, UpsReadingsAreShownWithTheirUnits)
{
    sql("INSERT INTO _ups_config (name,host,port,ups_model) "
        "VALUES('a','localhost','auto','Model'),('b','10.0.0.1','auto',NULL)");
    qbobj_UpsHealth_t second{};
    second.UpsName = "a";
    second.ServerHost = "localhost";
    second.UpsStatus = "OL CHRG";
    second.UpsModel = "not stored";
    second.BatteryCharge = "93";
    second.BatteryRunTime = "40";
    second.BatteryVoltage = "27.1";
    qbobj_UpsHealth_t first = second;
    first.UpsStatus = "OB";
    first._link = &second;
    EXPECT_OK(qbobj_setUpsHealth(qbdb, db, &first, &err));
    qbobj_UpsHealthCollection_t collection{};
    ASSERT_OK(qbobj_getUpsHealthCollection(qbdb, db, &collection, &err));
    Rows shown;
    for (const qbobj_UpsHealth_t *ups = collection.Health; ups != nullptr; ups = ups->_link)
        shown.push_back(std::string(ups->resource_id) + "," + ups->UpsName + "," + ups->ServerHost + "," +
                        ups->UpsModel + "," + ups->UpsStatus + "," + ups->BatteryCharge + "," +
                        ups->BatteryRunTime + "," + ups->BatteryVoltage);
    EXPECT_EQ((Rows{"a@localhost,a,localhost,Model,OL_CHRG,93 %,40 min,27.1 V",
                    "b@10.0.0.1,b,10.0.0.1,?,?,? %,? min,? V"}),
              shown);
    second.ServerHost = nullptr;
    EXPECT_FAILS(qbobj_setUpsHealth(qbdb, db, &second, &err), QBOBJ_ERROR_API_ARGS,
                 "Fail 'INSERT INTO _ups_health");
}

} // namespace
