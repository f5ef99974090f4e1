// The TiVo archiver: its schedule and keys, and the devices in the bridge service's status file.
#include "database.h"

#include <ctime>
#include <fstream>
#include <functional>
#include <sys/stat.h>

namespace
{

std::function<void(double seconds)> slept; // takes the place of the library's waits

} // namespace

// Stands in for the C library's.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec *duration, timespec *rest)
{
    if (!slept)
        return clock_nanosleep(CLOCK_REALTIME, 0, duration, rest) == 0 ? 0 : -1;
    slept(static_cast<double>(duration->tv_sec) + static_cast<double>(duration->tv_nsec) / 1e9);
    return 0;
}

using namespace qbobj_test;

namespace
{

using Options = qbobj_TivoOptions_t;

class Tivo : public Database
{
  protected:
    void SetUp() override { std::filesystem::create_directories(status_file().parent_path()); }
    std::filesystem::path status_file() const { return root() / "var/lib/tivobridge/status"; }
    void report(const std::string &text) const { std::ofstream(status_file()) << text; }
    // Counts the seconds of the waits; each of them does `meanwhile`.
    int read(std::function<void()> meanwhile = [] {})
    {
        waited = 0;
        slept = [&](double seconds) {
            waited += seconds;
            meanwhile();
        };
        options = {};
        const int rc = qbobj_getTIVOSettings(qbdb, db, &options, &err);
        slept = nullptr;
        return rc;
    }
    // "name=status:active", joined by blanks.
    std::string devices() const
    {
        std::string all;
        for (const auto *device = options.TIVOhostsAcl; device != nullptr; device = device->_link) {
            const char *mark = all.empty() ? "" : " ";
            for (const char *text : {device->name, device->status, device->active}) {
                all += std::string(mark) + (text == nullptr ? "null" : text);
                mark = *mark == '=' ? ":" : "=";
            }
        }
        return all;
    }

    Options options{};
    double waited = 0;
};

TEST_F(Tivo, ReadsTheDevicesOfTheStatusFile)
{
    EXPECT_OK(read());
    EXPECT_EQ("", devices());
    const std::string longest = "status=ready" + std::string(498, 'x'); // 510 characters
    const std::string text = longest.substr(7);
    const struct {
        std::string file;
        std::string expected;
    } cases[] = {
        {"", ""},
        {"status=ready\n", ""},
        {"[info]\nstatus=ok\n[A]\nstatus=ready\n[B]\nstatus=offline\n", "A=ready:true B=offline:null"},
        {"[info]\n[A]\nport=1\nstatus=archiving", "A=archiving:true"},
        {"[A]\nstatus=ready, verifying\n", "A=ready, verifying:false"},
        {"[A]\nstatus=unconfigured\n[B]\nstatus=unauthorized\n", "A=unconfigured:false B=unauthorized:false"},
        {"[A]\nstatus=ready\nstatus=offline\n", "A=offline:true"},
        {"[A]\n[B]\nstatus=ready\n", "A=ready:true"},
        {"[A\nstatus=ready\n[info]\nstatus=idle\n", "null=idle:true"},
        {"[info]", ""},
        {"[A]", "A=null:null"},
        {"[A]\n the status=?\n", "A=atus=?:null"},
        {"[A]\n" + longest + "\n[B]\n", "A=" + text + ":true B=null:null"},
        {"[A]\n" + longest + "xx unauthorized\n[B]\n", "A=" + text + "x:true B=null:null"},
        // The second piece of the line begins with a bracket, and so do the fourth and the sixth.
        {"[A]\nstatus=" + std::string(511 * 6, '['),
         "A=" + std::string(504, '[') + ":null null=null:null null=null:null null=null:null"},
    };
    for (const auto &c : cases) {
        report(c.file);
        EXPECT_OK(read());
        EXPECT_EQ(c.expected, devices()) << c.file;
        EXPECT_EQ(0, waited);
    }
    std::filesystem::remove(status_file());
    ASSERT_EQ(0, mkfifo(status_file().c_str(), 0600)); // opened, it would wait for its writer
    EXPECT_OK(read());
}

TEST_F(Tivo, WaitsForTheBridgeForAWhileAndHoldsNoWriterUp)
{
    sqlite3 *writer = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(file().c_str(), &writer));
    const auto write = [&] {
        EXPECT_EQ(0, sqlite3_exec(writer, "BEGIN IMMEDIATE;ROLLBACK", nullptr, nullptr, nullptr));
    };
    const auto finish = [&] {
        if (waited > 1.5)
            report("[info]\nstatus=ok\n[A]\nstatus=ready\n");
    };
    for (const char *busy : {"[info]\nstatus=scanning\n[A]\nstatus=ready\n",
                             "[info]\nstatus=ok\n[A]\nstatus=ready\n[B]\nstatus=waiting\n"}) {
        report(busy);
        EXPECT_OK(read(write));
        EXPECT_NEAR(15, waited, 1e-6);
        EXPECT_EQ("", devices());
        EXPECT_OK(read(finish));
        EXPECT_NEAR(2, waited, 1e-6);
        EXPECT_EQ("A=ready:true", devices());
    }
    sqlite3_close(writer);
}

TEST_F(Tivo, AnInterruptEndsTheWaitAtOnce)
{
    report("[info]\nstatus=scanning\n");
    for (const double moment : {0.0, 0.5, 3.9}) {
        const auto interrupt = [&] {
            if (waited > moment)
                sqlite3_interrupt(db);
        };
        EXPECT_FAILS(read(interrupt), QBOBJ_ERROR_DB_MISC,
                     "Failed to wait for the TiVo devices. (interrupted)");
        EXPECT_LT(waited, moment + 0.2);
        EXPECT_NE(0, sqlite3_get_autocommit(db));
    }
    report("[A]\nstatus=ready\n");
    EXPECT_OK(read());
}

TEST_F(Tivo, KeepsTheFolderOfTheListOnly)
{
    const struct {
        std::string preparation;
        const char *list;
        const char *folder;
    } cases[] = {
        {"INSERT INTO service_tivo VALUES ('1','2','/data/Videos','Sun')", "", ""},
        {"INSERT INTO share (id,name,volume_id,zfs_name,path) VALUES (1,'a','data','data/a','/data/Music'),"
         "(2,'b','data','data/b','/data/Videos2');INSERT INTO dlna_share_option (share_id) VALUES (1)",
         "/data/Music", ""},
        {"INSERT INTO dlna_share_option (share_id) VALUES (2)", "/data/Music;/data/Videos2", "/data/Videos"},
        {"INSERT INTO service_tivo (path) VALUES ('/data/Music')", "/data/Music;/data/Videos2", nullptr},
    };
    for (const auto &c : cases) {
        sql(c.preparation);
        EXPECT_OK(read());
        EXPECT_STREQ(c.list, options.DLNAfolderlist);
        EXPECT_STREQ(c.folder, options.TIVOfolder);
        EXPECT_STREQ(c.folder == nullptr ? nullptr : "Sun", options.days);
    }
    sql("WITH RECURSIVE n(i) AS (SELECT 3 UNION ALL SELECT i+1 FROM n WHERE i<2000) INSERT INTO share"
        " (id,name,volume_id,zfs_name,path) SELECT i,i,'data','data/'||i,'/data/'||i FROM n;"
        "INSERT OR IGNORE INTO dlna_share_option (share_id) SELECT id FROM share");
    EXPECT_OK(read());
    EXPECT_TRUE(options.DLNAfolderlist == value("SELECT group_concat(S.path,';') FROM share S"
                                                " INNER JOIN dlna_share_option D ON D.share_id=S.id"));
}

TEST_F(Tivo, StoresTheScheduleAsAWhole)
{
    Options given{nullptr, "/data/x", "25", "it's", "", nullptr};
    for (int twice = 0; twice < 2; ++twice)
        EXPECT_OK(qbobj_setTIVOSettings(qbdb, db, &given, &err));
    EXPECT_EQ(std::vector<std::string>{"25|it's|/data/x|"}, rows("SELECT * FROM service_tivo"));
    const std::string before = content();
    for (const auto field : {&Options::hour, &Options::minute, &Options::TIVOfolder, &Options::days}) {
        Options partial = given;
        partial.*field = nullptr;
        EXPECT_EQ(-1, qbobj_setTIVOSettings(qbdb, db, &partial, &err));
        EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
        EXPECT_STREQ("Invalid TIVO settings!", err.msg);
        EXPECT_EQ(before, content());
    }
}

TEST_F(Tivo, StoresAndRemovesAKey)
{
    qbobj_TivoMak_t cases[] = {
        {"A", "true", "k1"}, {"A", "true", "k'2"},   {"A", "false", "k3"},
        {"A", "true", "k4"}, {"A", "true", nullptr},
    };
    for (qbobj_TivoMak_t &mak : cases) {
        EXPECT_OK(qbobj_setTIVOMak(qbdb, db, &mak, &err));
        EXPECT_EQ(*mak.status == 't' && mak.key != nullptr ? mak.key : "", value("SELECT key FROM tivo_mak"));
    }
    cases[0].status = nullptr;
    EXPECT_FAILS(qbobj_setTIVOMak(qbdb, db, cases, &err), QBOBJ_ERROR_API_ARGS, "status cannot be NULL.");
    cases[1].name = nullptr;
    EXPECT_EQ(-1, qbobj_setTIVOMak(qbdb, db, cases + 1, &err));
    EXPECT_STREQ("Failed DB Query for tivo_mak update. NOT NULL constraint failed: tivo_mak.name", err.msg);
}

} // namespace
