// Backup jobs stored and read again, what is refused, what a partial change touches, the places and the button.
#include "database.h"

using qbobj_test::dump;

namespace
{

using Rows = std::vector<std::string>;

// A job with all of its records; it copies from share "docs" to share "vault" on Sundays.
struct JobRecord {
    JobRecord()
    {
        source.Type = destination.Type = "share";
        source.ShareNameOrProtocol = "docs";
        destination.ShareNameOrProtocol = "vault";
        schedule.Enabled = 1;
        schedule.DayOfWeek = "Sun";
        job.JobName = "nightly";
        job.Source = &source;
        job.Destination = &destination;
        job.Schedule = &schedule;
        job.Option = &option;
    }
    JobRecord(const JobRecord &) = delete;
    JobRecord &operator=(const JobRecord &) = delete;

    JobRecord &named(const char *name)
    {
        job.JobName = name;
        return *this;
    }

    qbobj_BackupJob_t job{};
    qbobj_BackupJob_SourceOrDestination_t source{};
    qbobj_BackupJob_SourceOrDestination_t destination{};
    qbobj_BackupJob_Schedule_t schedule{};
    qbobj_BackupJob_Option_t option{};
};

class Backup : public qbobj_test::Database
{
  protected:
    int add(JobRecord &record) { return qbobj_addBackupJob(qbdb, db, &record.job, &err); }
    int modify(JobRecord &record) { return qbobj_modifyBackupJob(qbdb, db, &record.job, &err); }
    int add_named(const char *name)
    {
        JobRecord record;
        EXPECT_OK(add(record.named(name)));
        return record.job.JobId;
    }
};

TEST_F(Backup, WhatIsStoredIsReadAgain)
{
    JobRecord written;
    written.source = {"share", "docs", "/a'b", "ann", "s3cret", 873, 0, 1};
    written.destination = {"usb", "usb_port_1_1", "/", "", "", 0, 0, 1};
    written.schedule = {1, 2, 3, 4, "Sun,Wed"};
    written.option = {"weekly", 7, 0, 5, "*.tmp", 6, 8, "00:11:22:33:44:55"};
    ASSERT_OK(add(written));
    EXPECT_EQ(
        Rows{"1|nightly|1|share|docs|/a'b|ann|s3cret|873|1|usb|usb_port_1_1|/|||0|1|2|3|4|9|weekly|1|0|5"
             "|*.tmp|6|8|00:11:22:33:44:55"},
        rows("SELECT * FROM backup"));

    written.option.RemovePreviousBackup = 1; // a switch
    written.job.JobId = 1;
    qbobj_BackupJob_t one{};
    one.JobId = 1;
    ASSERT_OK(qbobj_getBackupJob(qbdb, db, &one, &err));
    EXPECT_EQ(1, one.resource_id);
    EXPECT_EQ(0, one.Source->Eject) << "told by the list only";
    one.Source->Eject = one.Destination->Eject = 1;
    EXPECT_EQ(dump("BackupJob", &written.job), dump("BackupJob", &one));

    written.destination.Ejectable = 1;
    qbobj_BackupJobCollection_t all{};
    ASSERT_OK(qbobj_getBackupJobCollection(qbdb, db, &all, &err));
    EXPECT_EQ(dump("BackupJob", &written.job), dump("BackupJob", all.BackupJob));

    sql("INSERT INTO share (name,zfs_name,path,type,volume_id) "
        "VALUES('docs','media/docs','/m','share','media')");
    qbobj_BackupJobCollection_t again{};
    ASSERT_OK(qbobj_getBackupJobCollection(qbdb, db, &again, &err));
    EXPECT_EQ(1, again.BackupJob->Source->Ejectable) << "a share on removable storage";

    one.resource_id = 0;
    one.JobId = 9;
    EXPECT_FAILS(qbobj_getBackupJob(qbdb, db, &one, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row selected for resource_id=9.");
    one.JobId = 0;
    EXPECT_FAILS(qbobj_getBackupJob(qbdb, db, &one, &err), QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=0.");
}

TEST_F(Backup, EndsInConflict)
{
    constexpr struct {
        const char *source, *source_name, *destination, *destination_name, *message;
    } cases[] = {
        {"share", "a", "share", "a", "Source/Destination cannot be the same share"},
        {"share", "a", "share", "A", nullptr},
        {"share", "a", "home", "a", nullptr},
        {"home", "ann", "home", "ann", "Source/Destination cannot be the same user's home"},
        {"home", "ann", "home", "*", nullptr},
        {"home", "*", "home", "ann", "Cannot backup all homes to one's home"},
        {"home", "*", "home", "*", "Cannot backup all homes to one's home"},
        {"home", "*", "share", "*", nullptr},
        {"volume", "data", "volume", "data", "Source/Destination cannot be the same volume"},
        {"volume", "data", "share", "data", nullptr},
        {"usb", "usb_port_1", "usb", "usb_port_1", "Source/Destination cannot be the same usb port"},
        {"usb", "usb_port_1", "usb", "usb_port_2", nullptr},
        {"remote", "nfs", "remote", "rsync", "Source/Destination cannot be remote"},
        {"remote", "nfs", "share", "nfs", nullptr},
        {"timemachine", "x", "timemachine", "x", nullptr},
        {nullptr, "a", "share", "b", "Source->Type or  Destination->Type is NULL"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.source == nullptr ? "" : c.source) + " " + c.source_name);
        JobRecord record;
        record.source.Type = c.source;
        record.source.ShareNameOrProtocol = c.source_name;
        record.destination.Type = c.destination;
        record.destination.ShareNameOrProtocol = c.destination_name;
        if (c.message == nullptr)
            EXPECT_OK(add(record));
        else
            EXPECT_FAILS(add(record), QBOBJ_ERROR_API_ARGS, c.message);
        sql("DELETE FROM backup");
    }
    JobRecord record;
    record.job.Option = nullptr;
    EXPECT_FAILS(add(record), QBOBJ_ERROR_API_ARGS, "Source, Destination, Schedule or Option is NULL");
}

TEST_F(Backup, JobWithoutADayIsSwitchedOff)
{
    reopen(QBDB_LOG_WARN);
    JobRecord record;
    record.schedule.DayOfWeek = "";
    ASSERT_OK(add(record));
    EXPECT_EQ(0, record.schedule.Enabled);
    EXPECT_EQ("0", value("SELECT enabled FROM backup"));
    record.schedule.Enabled = 1;
    ASSERT_OK(modify(record));
    EXPECT_EQ(0, record.schedule.Enabled);
    EXPECT_EQ("0", value("SELECT enabled FROM backup"));
    EXPECT_NE(log().npos, log().find("no schedule (DayOfWeek=). Force it to Disabled"));
    EXPECT_NE(log().npos, log().find("no schedule. Force it to Disabled"));
}

TEST_F(Backup, NamesAreUnique)
{
    const int first = add_named("first");
    const int second = add_named("second");
    JobRecord chain;
    JobRecord taken;
    chain.named("third").job._link = &taken.named("first").job;
    EXPECT_FAILS(add(chain), QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS, "JobName specified is already exist.");
    EXPECT_EQ((Rows{"first", "second"}), rows("SELECT name FROM backup ORDER BY id"));

    taken.job.resource_id = second;
    EXPECT_FAILS(modify(taken), QBOBJ_ERROR_UI__JOBNAME_ALREADY_EXISTS,
                 "JobName specified is already exist.");
    taken.job.resource_id = first;
    EXPECT_OK(modify(taken));
    EXPECT_EQ(0, taken.job.Changed);
}

TEST_F(Backup, PartialChange)
{
    JobRecord record;
    record.source.Password = "s3cret";
    record.destination.Path = "docs"; // the path counts as the name of the stored destination
    ASSERT_OK(add(record));
    const std::string ends =
        "SELECT src_type,src_share_proto,src_password,dst_path,opt_rsync_exclude FROM backup";
    const Rows before = rows(ends);
    record.job.Source = record.job.Destination = nullptr;
    record.job.Option = nullptr;
    record.schedule.Frequency = 4;
    ASSERT_OK(modify(record.named("renamed")));
    EXPECT_EQ(1, record.job.Changed);
    EXPECT_EQ(before, rows(ends));
    EXPECT_EQ(Rows{"renamed|4"}, rows("SELECT name,sch_every FROM backup"));
    ASSERT_OK(modify(record));
    EXPECT_EQ(0, record.job.Changed);

    record.job.Source = &record.source;
    EXPECT_FAILS(modify(record), QBOBJ_ERROR_API_ARGS, "Source/Destination cannot be the same share");
    record.source.ShareNameOrProtocol = "vault";
    EXPECT_OK(modify(record));
    record.job.Source = nullptr;
    record.job.Destination = &record.destination;
    EXPECT_OK(modify(record));
    record.destination.ShareNameOrProtocol = "other";
    record.destination.Path = "other";
    EXPECT_OK(modify(record));
    EXPECT_FAILS(modify(record), QBOBJ_ERROR_API_ARGS, "Source/Destination cannot be the same share");

    record.destination.Type = nullptr;
    EXPECT_OK(modify(record)) << "an end without a type is in no conflict, and written whole";
    EXPECT_EQ("", value("SELECT dst_type FROM backup"));

    const std::string too_long(1700, 'x');
    JobRecord large;
    large.job.JobId = record.job.JobId;
    large.source.Path = large.destination.Path = too_long.c_str();
    EXPECT_OK(modify(large));
    EXPECT_EQ(Rows{"1700|5|vault"},
              rows("SELECT length(src_path),length(dst_path),dst_share_proto FROM backup"));
}

TEST_F(Backup, ChangesThatAreRefused)
{
    JobRecord record;
    EXPECT_FAILS(modify(record), QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=0.");
    record.job.JobId = 7;
    EXPECT_OK(modify(record)) << "of no job";
    record.schedule.Start = 10;
    record.schedule.End = 9;
    EXPECT_FAILS(modify(record), QBOBJ_ERROR_DB_MISC, "Invalid schedule time of Backup job nightly.");
    record.job.Schedule = nullptr;
    EXPECT_FAILS(modify(record), QBOBJ_ERROR_API_ARGS, "Schedule cannot be NULL.");
    EXPECT_OK(qbobj_addBackupJob(qbdb, db, nullptr, &err));
    EXPECT_OK(qbobj_modifyBackupJob(qbdb, db, nullptr, &err));
    EXPECT_OK(qbobj_deleteBackupJob(qbdb, db, nullptr, &err));
}

TEST_F(Backup, ButtonStartsItsJobsInOrder)
{
    const int ids[] = {add_named("a"), add_named("b"), add_named("c")};
    qbobj_BackupButtonJob_t jobs[3]{};
    for (int i = 0; i < 3; i++)
        jobs[i].JobId = ids[2 - i];
    jobs[0]._link = &jobs[1];
    jobs[1]._link = &jobs[2];
    qbobj_BackupButtonJobCollection_t button{nullptr, jobs};
    ASSERT_OK(qbobj_setBackupButtonJobCollection(qbdb, db, &button, &err));
    ASSERT_OK(qbobj_setBackupButtonJobCollection(qbdb, db, &button, &err));
    EXPECT_EQ((Rows{"1|3", "2|2", "3|1"}), rows("SELECT * FROM backup_button_jobs"));

    qbobj_BackupJob_t gone{};
    gone.JobId = ids[1];
    ASSERT_OK(qbobj_deleteBackupJob(qbdb, db, &gone, &err));
    EXPECT_STREQ("b", gone.JobName);
    EXPECT_EQ((Rows{"1|3", "3|1"}), rows("SELECT * FROM backup_button_jobs"));
    EXPECT_FAILS(qbobj_deleteBackupJob(qbdb, db, &gone, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row is deleted. May be bad resource_id=2'");
    gone.JobId = 0;
    EXPECT_FAILS(qbobj_deleteBackupJob(qbdb, db, &gone, &err), QBOBJ_ERROR_API_ARGS,
                 "Invalid resource_id (0)");

    qbobj_BackupButtonJobCollection_t read{};
    ASSERT_OK(qbobj_getBackupButtonJobCollection(qbdb, db, &read, &err));
    EXPECT_STREQ("c", read.Jobs->JobName);
    EXPECT_STREQ("a", read.Jobs->_link->JobName);
    EXPECT_EQ(nullptr, read.Jobs->_link->_link);
}

Rows texts(const qbobj_BackupTarget_t *target)
{
    Rows all;
    for (; target != nullptr; target = target->_link)
        all.push_back(std::string(target->Type) + "|" + target->UsbSubType + "|" +
                      target->ShareNameOrProtocol + "|" + target->Path + "|" + std::to_string(target->Id) +
                      "|" + std::to_string(target->Ejectable));
    return all;
}

TEST_F(Backup, Places)
{
    sql("UPDATE account_default SET home_volume_id='data'; DELETE FROM backup_protocol;"
        "INSERT INTO backup_protocol VALUES(1,'ftp',1),(2,'rsync',0);"
        "INSERT INTO usb_port VALUES(1,'1_1','2_1','front'),(2,'3_1','1_4',NULL);"
        "INSERT INTO usb_storage VALUES(1,'2:1.0','/media/stick');"
        "INSERT INTO share (id,name,zfs_name,path,type,volume_id) "
        "VALUES(1,'b','data/b','/data/b','share','data'),"
        "(2,'A','media/A','/media/A','share','media'),(3,'z','data/z','','zvol','data');"
        "INSERT INTO `$user` (id,uname,home,group_id,is_privileged,rid) VALUES"
        "(200,'zoe','/data/home/zoe',99,0,NULL),(201,'bob','/data/home/bob',99,0,NULL),"
        "(202,'far','/data/home/far',99,0,5)");
    const Rows shares{"share||A|/media/A|2|1", "share||b|/data/b|1|0"};
    const Rows ports{"usb|BACKUP_front|usb_port_1_1|/media/stick|1|1", "usb||usb_port_3_1||2|1"};
    const auto places = [](std::initializer_list<Rows> parts) {
        Rows all;
        for (const Rows &part : parts)
            all.insert(all.end(), part.begin(), part.end());
        return all;
    };
    qbobj_BackupTarget_t stale{};
    qbobj_BackupTargetCollection_t targets{&stale, &stale};
    ASSERT_OK(qbobj_getBackupTargetCollection(qbdb, db, &targets, &err));
    const Rows bob{"home||bob|/data/home/bob|201|0"};
    const Rows zoe{"home||zoe|/data/home/zoe|200|0"};
    const Rows volumes{"volume||backup|/backup|2|0", "volume||data|/data|1|0"};
    EXPECT_EQ(places({shares,
                      {"home||*|/data/home|0|0"},
                      bob,
                      zoe,
                      volumes,
                      {"remote||ftp||1|0", "remote||rsync||2|0"},
                      ports}),
              texts(targets.AvailableSourceTarget));
    EXPECT_EQ(places({shares, bob, zoe, {"remote||rsync||2|0"}, ports}),
              texts(targets.AvailableDestinationTarget));

    join_directory();
    sql("UPDATE `$user` SET passwd='$1$x' WHERE id=96; DELETE FROM share; DELETE FROM usb_port");
    ASSERT_OK(qbobj_getBackupTargetCollection(qbdb, db, &targets, &err));
    EXPECT_EQ("timemachine||~timemachine~|/c/.timemachine|0|0", texts(targets.AvailableSourceTarget).back());
    EXPECT_EQ((Rows{"home||far|/data/home/far|202|0", "remote||rsync||2|0"}),
              texts(targets.AvailableDestinationTarget));
}

TEST_F(Backup, KindOfAUsbPort)
{
    sql("INSERT INTO usb_port VALUES(1,'1_1','2_1','front')");
    for (const auto &[port, kind] : {std::pair{"usb_port_1_1", "BACKUP_front"},
                                     {"usb_port_2_1", "BACKUP_front"},
                                     {"1_1", static_cast<const char *>(nullptr)},
                                     {nullptr, nullptr}}) {
        char *found = nullptr;
        EXPECT_OK(qbobj_getBackupUSBSubType(qbdb, db, port, &found, &err));
        EXPECT_STREQ(kind, found);
    }
}

} // namespace
