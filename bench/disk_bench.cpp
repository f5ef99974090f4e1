// Disks and enclosures listed, and one sensor's reading stored.
#include "lookup.h"
#include "measurements.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 2; // enclosures
constexpr int many = 20;
constexpr int readings = 500; // in a run

// Enclosures of 50 disks and 8 sensors each, all with readings.
void furnish(const Connection &connection, int enclosures)
{
    const std::string numbers =
        "CREATE TEMP TABLE n AS WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n "
        "LIMIT " +
        std::to_string(enclosures * 50) + ") SELECT i,i/50 c,i%50 p FROM n;";
    connection.run((numbers + R"(
        INSERT INTO _disk_enclosure SELECT c,'Shelf '||c,5,10,0,'/dev/bsg/'||c,NULL,1,4,2,1 FROM n WHERE p=0;
        INSERT INTO jbod_port SELECT c,'Port '||c FROM n WHERE p=0;
        INSERT INTO disk_port SELECT c,p,p%10,p/10 FROM n;
        INSERT INTO `$disk_info` SELECT printf('sd%04d',i),1,'Model','SN'||i,'1.0',7200,7814037168,4000787030016,
            c,p,p,'SAS','data','raidz2',0,12345,0,0 FROM n;
        INSERT INTO _disk_health (disk_id,temp,ata_errors,zpool_state) SELECT printf('sd%04d',i),40,0,'ONLINE' FROM n;
        INSERT INTO enclosure_health_spec SELECT c,'Fan',p,100,9000,'Fan '||p FROM n WHERE p<8;
        INSERT INTO _enclosure_health SELECT c,'Fan',p,4000,4000,4000,4000 FROM n WHERE p<8)")
                       .c_str());
}

/* ---- The lists ----------------------------------------------------------------------------------------- */

// All that there is on enclosures, disks and sensors.
struct Lists {
    qbobj_DiskEnclosureCollection_t enclosures;
    qbobj_EnclosureHealthCollection_t sensors;
};

void read_by_library(const Connection &connection, Lists &lists)
{
    qbobj_error_rec_t err{};
    check(qbobj_getDiskEnclosureCollection(connection.qbdb, connection.db, &lists.enclosures, &err), err);
    for (auto *enclosure = lists.enclosures.DiskEnclosure; enclosure != nullptr; enclosure = enclosure->_link)
        check(qbobj_getDiskCollectionForController(connection.qbdb, connection.db, enclosure,
                                                   enclosure->DiskEnclosureId, &err),
              err);
    check(qbobj_getEnclosureHealthCollection(connection.qbdb, connection.db, &lists.sensors, &err), err);
}

class Reader
{
  public:
    explicit Reader(const Connection &connection) : connection_(connection) {}

    void read(Lists &lists)
    {
        apr_pool_t *const pool = connection_.qbdb->pool;
        Tail<qbobj_DiskCollection_t> tail(pool, lists.enclosures.DiskEnclosure);
        in_transaction([&] {
            for (auto row = enclosures_(); row.next();) {
                qbobj_DiskCollection_t &enclosure = tail.append();
                row >> enclosure.DiskEnclosureId >> enclosure.EnclosureName >> enclosure.EnclosureRows >>
                    enclosure.EnclosureCols >> enclosure.IsSlotHorizontal;
                enclosure.resource_id = key(enclosure.DiskEnclosureId);
            }
        });
        for (auto *enclosure = lists.enclosures.DiskEnclosure; enclosure != nullptr;
             enclosure = enclosure->_link)
            in_transaction([&] { read_disks(*enclosure); });
        in_transaction([&] { read_sensors(lists.sensors); });
    }

  private:
    // As the library begins a call that only reads.
    template <class Work>
    void in_transaction(Work work)
    {
        finish(begin_());
        work();
        finish(commit_());
    }
    const char *key(int controller) const
    {
        return apr_psprintf(connection_.qbdb->pool, "controller-%d", controller);
    }
    void read_disks(qbobj_DiskCollection_t &enclosure)
    {
        Tail<qbobj_Disk_t> tail(connection_.qbdb->pool, enclosure.Disk);
        for (auto row = disks_(enclosure.DiskEnclosureId); row.next();) {
            qbobj_Disk_t &disk = tail.append();
            uint64_t sectors = 0;
            uint64_t capacity = 0;
            row >> disk.DiskId >> disk.Present >> disk.Model >> disk.Serial >> disk.FirmwareVersion >>
                disk.RPM >> sectors >> capacity >> disk.Temperature >> disk.ATAError >> disk.Pool >>
                disk.SlotName >> disk.HardwareInterface >> disk.PoolType;
            row.skip(1) >> disk.PoolHostId >> disk.DiskEnclosureId >> disk.DiskState >> disk.Controller >>
                disk.Channel;
            disk.DevName = apr_pstrdup(connection_.qbdb->pool, disk.DiskId);
            disk.Sectors = static_cast<int64_t>(sectors);
            disk.Capacity = static_cast<int64_t>(capacity);
            disk.PoolState = "ACTIVE";
        }
        if (auto row = enclosure_(enclosure.DiskEnclosureId); row.next())
            row >> enclosure.DiskEnclosureId >> enclosure.EnclosureCols >> enclosure.EnclosureRows >>
                enclosure.IsSlotHorizontal >> OrEmpty{enclosure.EnclosureName} >>
                OrEmpty{enclosure.DiskEnclosurePort} >> OrEmpty{enclosure.SESDevice} >> enclosure.DeadSlots;
    }
    void read_sensors(qbobj_EnclosureHealthCollection_t &collection)
    {
        apr_pool_t *const pool = connection_.qbdb->pool;
        Tail<qbobj_EnclosureHealth_t> tail(pool, collection.Health);
        for (auto row = health_(); row.next();) {
            qbobj_EnclosureHealth_t &enclosure = tail.append();
            row >> enclosure.Controller >> enclosure.NrCpu >> enclosure.NrFan >> enclosure.NrPsu >>
                enclosure.NrVolt >> enclosure.PortLabel;
            enclosure.resource_id = key(enclosure.Controller);
            Tail<qbobj_EnclosureHealthItem_t> items(pool, enclosure.Health);
            for (auto sensor = sensors_(enclosure.Controller); sensor.next();) {
                qbobj_EnclosureHealthItem_t &item = items.append();
                sensor >> item.Name >> item.DevId >> item.Value >> item.ValuePrev1 >> item.ValuePrev2 >>
                    item.ValuePrev3 >> item.Min >> item.Max >> item.Label;
            }
        }
    }

    const Connection &connection_;
    Kept begin_{connection_, "BEGIN"};
    Kept commit_{connection_, "COMMIT"};
    Kept enclosures_{connection_,
                     "SELECT controller,name,nr_row,nr_column,disk_horizontal FROM _disk_enclosure"};
    Kept disks_{connection_,
                R"(SELECT D.id,D.present,D.model,D.serial,D.fw_version,D.rpm,D.sectors,D.capacity,
        H.temp,H.ata_errors,D.volume_id,P.slot_col||'x'||P.slot_row,D.hwif,D.pool_type,D.pool_state,D.pool_hostid,
        P.controller,IFNULL(H.zpool_state,'ONLINE'),D.controller,D.channel FROM `$disk_info` D
        INNER JOIN disk_port P ON P.controller=D.controller AND P.port=D.port
        INNER JOIN _disk_health H ON H.disk_id=D.id WHERE D.controller=%d ORDER BY 20 COLLATE NOCASE)"};
    Kept enclosure_{connection_, R"(SELECT E.controller,E.nr_column,E.nr_row,E.disk_horizontal,E.name,J.label,
        E.ses_device,E.dead_slots FROM _disk_enclosure E INNER JOIN jbod_port J ON J.controller=E.controller
        WHERE E.controller=%d)"};
    Kept health_{connection_, R"(SELECT DE.controller,DE.nr_cpu,DE.nr_fan,DE.nr_psu,DE.nr_volt,JP.label
        FROM _disk_enclosure DE INNER JOIN jbod_port JP ON JP.controller=DE.controller)"};
    Kept sensors_{connection_, R"(SELECT E.name,E.devid,E.value,E.value_prev1,E.value_prev2,E.value_prev3,
        IFNULL(S.min,0),IFNULL(S.max,0),S.label FROM enclosure_health_spec S LEFT JOIN _enclosure_health E
        ON E.controller=S.controller AND E.name=S.name AND E.devid=S.devid WHERE S.controller=%d
        ORDER BY E.name,S.Label)"};
};

struct Subject {
    explicit Subject(int enclosures) { furnish(appliance.connect(), enclosures); }

    Appliance appliance{{.users = 0}};
    Connection library = appliance.connect();
    Connection kept = appliance.connect();
    Reader reader{kept};
};

void compare(Subject &subject)
{
    Lists library{};
    Lists kept{};
    read_by_library(subject.library, library);
    subject.reader.read(kept);
    require_same_records("DiskEnclosureCollection", kept.enclosures, library.enclosures);
    require_same_records("EnclosureHealthCollection", kept.sensors, library.sensors);
}

/* ---- A reading ----------------------------------------------------------------------------------------- */

void store_by_library(const Connection &connection, int value)
{
    qbobj_EnclosureHealthItem_t item{};
    item.Name = "Fan";
    item.DevId = "3";
    item.Value = value;
    qbobj_EnclosureHealth_t enclosure{};
    enclosure.Controller = 1;
    enclosure.Health = &item;
    qbobj_error_rec_t err{};
    check(qbobj_setEnclosureHealth(connection.qbdb, connection.db, &enclosure, &err), err);
}

class Writer
{
  public:
    explicit Writer(const Connection &connection)
        : transactions_(connection),
          insert_(connection,
                  "INSERT OR IGNORE INTO _enclosure_health(controller,name,devid,value,value_prev1,"
                  "value_prev2,value_prev3) VALUES(%d,%Q,%Q,%d,%d,%d,%d)"),
          update_(connection,
                  "UPDATE _enclosure_health SET value=%d,value_prev1=value,value_prev2=value_prev1,"
                  "value_prev3=value_prev2 WHERE controller=%d AND name=%Q AND devid=%Q")
    {
    }
    void store(int value) const
    {
        transactions_.run([&] {
            finish(insert_(1, "Fan", "3", value, value, value, value));
            finish(update_(value, 1, "Fan", "3"));
        });
    }

  private:
    Transactions transactions_;
    Kept insert_;
    Kept update_;
};

void measure_reading(Figures &figures, const std::shared_ptr<Subject> &subject)
{
    figures.measure("setEnclosureHealth/library", [subject](benchmark::State &state) {
        const Copy copy(subject->appliance);
        for (auto _ : state)
            for (int i = 0; i < readings; i++)
                store_by_library(copy.connection, i);
    });
    figures.measure("setEnclosureHealth/kept", [subject](benchmark::State &state) {
        const Copy copy(subject->appliance);
        const Writer writer(copy.connection);
        for (auto _ : state)
            for (int i = 0; i < readings; i++)
                writer.store(i);
    });
    figures.ratio_at_most("setEnclosureHealth-to-kept-statements", "setEnclosureHealth/library",
                          "setEnclosureHealth/kept", 1.5);
}

} // namespace

void add_disk_figures(Figures &figures)
{
    const auto small = figures.keep<Subject>(few);
    const auto large = figures.keep<Subject>(many);
    compare(*small);
    for (const auto &[subject, suffix] : {std::pair(small, "/100"), std::pair(large, "/1000")}) {
        figures.measure(std::string("disks/library") + suffix, timed(subject->library, [subject] {
                            Lists lists{};
                            read_by_library(subject->library, lists);
                        }));
        figures.measure(std::string("disks/kept") + suffix, timed(subject->kept, [subject] {
                            Lists lists{};
                            subject->reader.read(lists);
                        }));
    }
    figures.ratio_at_most("disks-to-kept-statements", "disks/library/1000", "disks/kept/1000", 1.5);
    figures.ratio_at_most("disks-time-of-10x-disks", "disks/library/1000", "disks/library/100", 11);
    measure_reading(figures, large);
}

} // namespace qbobj_bench
