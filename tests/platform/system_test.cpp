// The log, the system's state, accounts and text helpers.
#include "platform.h"

#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace platform_test;
namespace fs = std::filesystem;

namespace
{

class System : public Platform
{
  protected:
    System()
    {
        fs::create_directories(folder / "root");
        session->qbdb->root = root.c_str();
    }
    void disk(const std::string &name, const std::string &sectors, const std::string &model)
    {
        const std::string block = root + "/sys/block/" + name;
        write_file(block + "/size", sectors + "\n");
        if (!model.empty())
            write_file(block + "/device/model", model + "   \n");
        write_file(block + "/queue/rotational", "0\n");
    }

    std::string root = folder / "root";
};

TEST_F(System, LogsWholeLinesUpToTheLevel)
{
    const auto write = [&](qbdb_loglevel_t level, const char *text) {
        qbdb_log(session->qbdb, "unit", 12, level, 0, "%s", text);
    };
    const std::string long_text(5000, 'x');
    session->qbdb->loglvl = QBDB_LOG_INFO;
    write(QBDB_LOG_DEBUG, "too detailed");
    write(QBDB_LOG_INFO, "with its end\n");
    write(QBDB_LOG_WARN, "forged\n2026-01-01T00:00:00 FATAL x:1 y");
    write(QBDB_LOG_ERROR, long_text.c_str());
    constexpr const char *time_format = "%Y-%m-%dT%H:%M:%S";
    std::istringstream lines(log());
    for (const std::string &expected : {std::string(" INFO unit:12 with its end"),
                                        std::string(" WARN unit:12 forged 2026-01-01T00:00:00 FATAL x:1 y"),
                                        " ERROR unit:12 " + long_text}) {
        std::string line;
        std::getline(lines, line);
        std::tm time{};
        const char *const text = strptime(line.c_str(), time_format, &time);
        ASSERT_NE(nullptr, text) << line;
        EXPECT_EQ(expected, text);
    }
    EXPECT_EQ(EOF, lines.peek());
    session->qbdb->log = nullptr;
    write(QBDB_LOG_ERROR, "nowhere");
}

TEST_F(System, ImportsDisksAndKeepsThoseThatWentAway)
{
    EXPECT_NE(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_DISK)) << "there is no tree to read";
    disk("sda", "2048", "ACME Disk");
    disk("sdb", "4096", "ACME Other");
    disk("sdc", "0", "Empty slot");
    disk("loop0", "100", "");
    ASSERT_EQ(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_DISK));
    EXPECT_EQ((Rows{{"sda", "1", "ACME Disk", "2048", "1048576", "0"},
                    {"sdb", "1", "ACME Other", "4096", "2097152", "0"}}),
              session->ask("SELECT id,present,model,sectors,capacity,rpm FROM `$disk_info` ORDER BY id"));
    session->exec("UPDATE `$disk_info` SET volume_id='data',controller=3,port=2");
    fs::remove_all(root + "/sys/block/sda");
    disk("sdb", "8192", "ACME Newer");
    ASSERT_EQ(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_DISK));
    EXPECT_EQ((Rows{{"sda", "0", "2048", "data", "3"}, {"sdb", "1", "8192", "data", "3"}}),
              session->ask("SELECT id,present,sectors,volume_id,controller FROM `$disk_info` ORDER BY id"));
    EXPECT_EQ(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_REPLICATE_SERVICE));
}

TEST_F(System, GivesSlotsToDisksThatComeAndGo)
{
    const std::pair<std::vector<std::string>, const char *> steps[] = {
        {{"sdaa", "sdb", "sda"}, "sda 1x1,sdb 2x1,sdaa 3x1"},
        {{"sdb", "sdaa"}, "sdb 2x1,sdaa 3x1"},
        {{"sda", "sdb", "sdaa"}, "sda 1x1,sdb 2x1,sdaa 3x1"}, // back in its slot
        {{"sdb", "sdc", "sdaa"}, "sdc 1x1,sdb 2x1,sdaa 3x1"}, // another one in it
        {{"sda", "sdb", "sdc"}, "sdc 1x1,sdb 2x1,sda 3x1"},   // taken meanwhile: the next free one
        {{"sda", "sdb", "sdc", "sdd"}, "sdc 1x1,sdb 2x1,sda 3x1,sdd 4x1"},
        {{}, "<null>"}};
    for (const auto &[here, slots] : steps) {
        fs::remove_all(root + "/sys/block");
        fs::create_directories(root + "/sys/block");
        for (const std::string &name : here)
            disk(name, "2048", "ACME Disk");
        ASSERT_EQ(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_DISK));
        EXPECT_EQ(
            slots,
            session->one(
                "SELECT group_concat(id||' '||slot,',') FROM (SELECT D.id,P.slot_col||'x'||P.slot_row slot "
                "FROM `$disk_info` D JOIN disk_port P USING(controller,port) JOIN _disk_health H ON "
                "H.disk_id=D.id WHERE D.present AND D.channel=D.port ORDER BY D.channel)"));
    }
    EXPECT_EQ((Rows{{"0", "Internal", "1", "4", ""}}),
              session->ask("SELECT controller,name,nr_row,nr_column,label FROM _disk_enclosure JOIN "
                           "jbod_port USING(controller)"));
}

TEST_F(System, ReadsTheUsageOfHomesThatAreFileSystems)
{
    struct stat shared {
    };
    struct stat parent {
    };
    if (stat("/dev/shm", &shared) != 0 || stat("/dev", &parent) != 0 || shared.st_dev == parent.st_dev)
        GTEST_SKIP() << "no file system to look at";
    session->qbdb->root = "/";
    session->exec("INSERT INTO `$user` (id,uname,home,rid) "
                  "VALUES(901,'shm','/dev/shm',NULL),(902,'tmp','/dev/no',NULL)");
    session->exec("INSERT INTO _hf_zfs_stat VALUES(901,-7)");
    ASSERT_EQ(0, qbdb_hf_stats_import(session->qbdb, session->db));
    EXPECT_EQ((Rows{{"901", "1"}}),
              session->ask("SELECT user_id,used>=0 FROM _hf_zfs_stat WHERE user_id>900"));
}

class StorageTool : public System
{
  protected:
    // A tool that does what the shell script says.
    void tool(const std::string &script)
    {
        write_file(folder / "tool", "#!/bin/sh\n" + script);
        fs::permissions(folder / "tool", fs::perms::owner_all);
        const std::string path = folder / "tool";
        options.storage_tool = path.c_str();
        session = std::make_unique<Session>(file, options);
    }
    int read(const char *dataset, const char *property)
    {
        return qbdb_fs_get_attr_scanf(session->qbdb, dataset, property, "%lu", &value);
    }

    unsigned long value = 0;
};

TEST_F(StorageTool, IsAskedWithoutAShellAndByItsOwnPath)
{
    const std::string old_path = std::getenv("PATH");
    tool("case \"$6\" in none) exit 1;; 'data/a b;$(x)') echo \"$#$5\";; path) echo \"$PATH\" | grep -c "
         "/usr/bin;; "
         "*) echo -;; esac\n");
    setenv("PATH", (folder / "bin").c_str(), 1);
    EXPECT_EQ(0, read("data/a b;$(x)", "77"));
    EXPECT_EQ(677u, value);
    EXPECT_EQ(0, read("path", "used"));
    EXPECT_EQ(1u, value) << "the caller's environment is not the tool's";
    EXPECT_NE(0, read("none", "used"));
    EXPECT_NE(0, read("data/vol", "used")) << "a dash is no value";
    EXPECT_NE(0, read("-r", "used"));
    fs::create_directory(folder / "bin");
    fs::rename(folder / "tool", folder / "bin/zfs");
    EXPECT_NE(0, read("path", "used")) << "there is no tool";
    session = std::make_unique<Session>(file);
    if (access("/usr/sbin/zfs", X_OK) != 0 && access("/sbin/zfs", X_OK) != 0) {
        EXPECT_NE(0, read("path", "used")) << "the caller's PATH is not searched";
    }
    setenv("PATH", old_path.c_str(), 1);
}

TEST_F(StorageTool, IsKilledWhenItHangs)
{
    using namespace std::chrono;
    options.tool_timeout_ms = 100;
    const std::string late = "sleep 1; touch '" + (folder / "late") + "'";
    for (const std::string &script :
         {"echo 7; " + late, "echo 7; exec >&-; " + late, "(" + late + ") & echo 7",
          std::string("while :; do echo 7777777777777777777777777777; done"), std::string("kill -STOP $$")}) {
        tool(script + "\n");
        const auto begun = steady_clock::now();
        EXPECT_NE(0, read("data/vol", "used")) << script;
        EXPECT_LT(steady_clock::now() - begun, milliseconds(900)) << script;
    }
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG)) << "a process was not reaped";
    std::this_thread::sleep_for(milliseconds(1200));
    EXPECT_FALSE(fs::exists(folder / "late")) << "what the tool had started went on";
}

TEST_F(System, KnowsAccountsOfTheNameService)
{
    qbdb_handle_t *const qbdb = session->qbdb;
    for (const auto by_name : {qbdb_util_get_posix_uid_by_name, qbdb_util_get_posix_gid_by_name}) {
        EXPECT_EQ(0, by_name(qbdb, "root", 0));
        EXPECT_GT(0, by_name(qbdb, "root", 1)) << "it is no directory account";
        EXPECT_EQ(by_name(qbdb, "daemon", 0), by_name(qbdb, "daemon", 1));
    }
    const passwd *const daemon = getpwnam("daemon");
    ASSERT_NE(nullptr, daemon);
    const int id = static_cast<int>(daemon->pw_uid);
    EXPECT_EQ(id, qbdb_util_get_posix_uid(qbdb, -id));
    EXPECT_STREQ("daemon", qbdb_util_get_domain_uname_by_uid(qbdb, -id));
    EXPECT_STREQ("daemon", qbdb_util_get_domain_gname_by_gid(
                               qbdb, -qbdb_util_get_posix_gid_by_name(qbdb, "daemon", 0)));
    for (const int unknown : {-1999999999, INT_MIN}) {
        EXPECT_GT(0, qbdb_util_get_posix_uid(qbdb, unknown));
        EXPECT_GT(0, qbdb_util_get_posix_gid(qbdb, unknown));
        EXPECT_EQ(nullptr, qbdb_util_get_domain_uname_by_uid(qbdb, unknown));
    }
    for (const char *name : {"no such account", ""})
        EXPECT_GT(0, qbdb_util_get_posix_uid_by_name(qbdb, name, 1)) << name;
    EXPECT_GT(0, qbdb_util_get_posix_gid_by_name(qbdb, nullptr, 1));
    EXPECT_EQ(0, qbdb_get_no_sync_ads(qbdb, session->db));
    session->exec("UPDATE service_cifs SET no_sync_ads=1");
    EXPECT_EQ(1, qbdb_get_no_sync_ads(qbdb, session->db));
    session->exec("DROP TABLE service_cifs");
    EXPECT_EQ(0, qbdb_get_no_sync_ads(qbdb, session->db));
}

TEST_F(System, RemovesDeletedAccountsWithWhatHangsOnThem)
{
    session->exec("INSERT INTO share (id,zfs_name,name,volume_id,path,user_id,group_id) "
                  "VALUES(1,'d/s','s','d','/d/s',150,150)");
    session->exec("INSERT INTO `$user` (id,uname,is_privileged) VALUES(150,'ann',-1),(151,'bob',0)");
    session->exec("INSERT INTO `$group` (id,gname,is_privileged) VALUES(150,'staff',-1),(151,'guests',0)");
    const struct {
        const char *table, *columns, *values;
    } rows[] = {{"user_quota", "user_id,share_id", "%d,1"},
                {"_user_quota_stat", "user_id,share_id", "%d,1"},
                {"user_acl", "user_id,share_id,proto", "%d,1,'cifs'"},
                {"$home_folder", "user_id", "%d"},
                {"_hf_zfs_stat", "user_id", "%d"},
                {"$timemachine_quota", "user_id", "%d"},
                {"$group_has_user", "user_id,group_id", "%d,99"},
                {"$group_has_user", "group_id,user_id", "%d,99"},
                {"group_quota", "group_id,share_id", "%d,1"},
                {"_group_quota_stat", "group_id,share_id", "%d,1"},
                {"group_acl", "group_id,share_id,proto", "%d,1,'cifs'"}};
    for (const auto &row : rows)
        for (const int id : {150, 151})
            ASSERT_EQ(
                0, session->exec(("INSERT INTO \"%w\" (%s) VALUES(" + std::string(row.values) + ")").c_str(),
                                 row.table, row.columns, id));
    ASSERT_EQ(0, qbdb_remove_deleted_accounts(session->qbdb, session->db, &session->error)) << session->error;
    for (const auto &row : rows) {
        const std::string column = std::string(row.columns).substr(0, std::strcspn(row.columns, ","));
        EXPECT_EQ("1", session->one("SELECT sum(\"%w\"=151)+10*sum(\"%w\"=150) FROM \"%w\"", column.c_str(),
                                    column.c_str(), row.table))
            << row.table;
    }
    EXPECT_EQ(0, session->exec("INSERT INTO `$user` (id,uname) VALUES(150,'Ann')")) << session->error;
    EXPECT_EQ(0, session->exec("INSERT INTO `$group` (id,gname) VALUES(150,'Staff')")) << session->error;
    EXPECT_EQ("150", session->one("SELECT user_id FROM share"));
    const Session writer(file);
    ASSERT_EQ(0, qbdb_sql_begin(writer.qbdb, writer.db, nullptr, unit, 1));
    sqlite3_busy_timeout(session->db, 0);
    EXPECT_EQ(SQLITE_BUSY, qbdb_remove_deleted_accounts(session->qbdb, session->db, &session->error));
}

TEST_F(System, SplitsLists)
{
    const std::pair<const char *, Row> cases[] = {
        {"a", {"a"}}, {" a , b c,d\t", {"a", "b c", "d"}}, {"", {}},
        {"  ", {}},   {"a,,b,", {"a", "", "b", ""}},       {nullptr, {}}};
    for (const auto &[text, expected] : cases) {
        const char **array = nullptr;
        int count = -1;
        ASSERT_EQ(0, qbdb_csv_to_array(session->qbdb, text, &array, &count));
        Row items;
        for (const char **item = array; *item; item++)
            items.emplace_back(*item);
        EXPECT_EQ(expected, items) << (text ? text : "null");
        EXPECT_EQ(expected.size(), static_cast<std::size_t>(count));
    }
}

TEST_F(System, EncodesDays)
{
    EXPECT_EQ(1 | 2 | 64, qbdb_dow_to_i("Sun,MON, sat"));
    EXPECT_EQ(8, qbdb_dow_to_i("Wed,Someday,Mo,Tuesday"));
    EXPECT_EQ(0, qbdb_dow_to_i(""));
    EXPECT_EQ(0, qbdb_dow_to_i(nullptr));
    EXPECT_STREQ("Sun,Tue,Sat", qbdb_i_to_dow(session->qbdb, 1 | 4 | 64 | 128));
    EXPECT_STREQ("", qbdb_i_to_dow(session->qbdb, 0));
    for (int days = 0; days < 128; days++)
        EXPECT_EQ(days, qbdb_dow_to_i(qbdb_i_to_dow(session->qbdb, days)));
}

TEST_F(System, AppendsWithinTheBuffer)
{
    char text[8] = "abc";
    EXPECT_STREQ("abcdefg", strncat_safe(text, "defghij", sizeof text));
    EXPECT_STREQ("abcdefg", strncat_safe(text, "x", sizeof text));
    EXPECT_STREQ("abcdefg", strncat_safe(text, nullptr, sizeof text));
    char none = 'z';
    strncat_safe(&none, "x", 0);
    EXPECT_EQ('z', none);
    EXPECT_STREQ("/data/.zfs/snapshot/s1", snapshot_get_path(session->qbdb, "/data", "s1"));
    EXPECT_EQ(nullptr, snapshot_get_path(session->qbdb, "/data", nullptr));
    EXPECT_EQ(nullptr, snapshot_get_path(session->qbdb, "/data", ""));
    EXPECT_TRUE(qbdb_rand() != qbdb_rand() || qbdb_rand() != qbdb_rand());
}

} // namespace
