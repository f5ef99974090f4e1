// The life of a database: making, opening, refusing, closing; and its volumes.
#include "platform.h"

#include <array>
#include <atomic>
#include <barrier>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace platform_test;
namespace fs = std::filesystem;

namespace
{

class Create : public ::testing::Test
{
  protected:
    int create(const std::string &path) { return qbdb_create(path.c_str(), message, sizeof message); }

    Folder folder;
    char message[512] = "";
};

TEST_F(Create, MakesOneFileThatOpens)
{
    ASSERT_EQ(0, create(folder / "new.db")) << message;
    EXPECT_STREQ("", message);
    EXPECT_EQ(std::vector<std::string>{"new.db"}, folder.names());
    Session session(folder / "new.db");
    EXPECT_EQ("wal", session.one("PRAGMA journal_mode"));
    EXPECT_EQ("2", session.one("PRAGMA synchronous"));
    EXPECT_EQ("1", session.one("PRAGMA foreign_keys"));
    EXPECT_NE("0", session.one("SELECT count(*) FROM service_cifs"));
    EXPECT_EQ("ok", session.one("PRAGMA integrity_check"));
}

TEST_F(Create, RefusesWhatStandsAlready)
{
    write_file(folder / "file", "mine");
    fs::create_directory(folder / "directory");
    fs::create_symlink("nowhere", folder / "link");
    write_file(folder / "fresh.db-wal", "somebody's log");
    const std::vector<std::string> before = folder.names();
    for (const char *name : {"file", "directory", "link", "fresh.db", "missing/new.db", "file/new.db"}) {
        EXPECT_EQ(SQLITE_CANTOPEN, create(folder / name)) << name;
        EXPECT_NE(nullptr, std::strstr(message, name)) << message;
    }
    EXPECT_EQ(SQLITE_MISUSE, create(""));
    EXPECT_EQ("mine", read_file(folder / "file"));
    EXPECT_EQ(before, folder.names());
}

TEST_F(Create, LeavesNothingWhenThereIsNoSpace)
{
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{65536, 65536};
        setrlimit(RLIMIT_FSIZE, &small);
        const bool refused = create(folder / "new.db") != 0 && std::strstr(message, "new.db\": ") != nullptr;
        _exit(refused && folder.names().empty() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
}

class Open : public Platform
{
  protected:
    // Changes bytes of the closed file, which has no log beside it then.
    void patch(std::size_t at, const std::string &bytes)
    {
        std::string content = read_file(file);
        content.replace(at, bytes.size(), bytes);
        write_file(file, content);
    }
};

TEST_F(Open, RefusesBadFilesAndChangesNothing)
{
    session.reset();
    const std::string good = read_file(file);
    const std::tuple<std::function<void()>, int, const char *> cases[] = {
        {[&] { fs::remove(file); }, SQLITE_CANTOPEN, "No such file or directory"},
        {[&] { fs::remove(file), fs::create_directory(file); }, SQLITE_CANTOPEN, "is a directory"},
        {[&] { fs::remove(file), mkfifo(file.c_str(), 0600); }, SQLITE_CANTOPEN, "is not a regular file"},
        {[&] { write_file(file, "some text that is no database"); }, SQLITE_NOTADB, "is not a database"},
        {[&] { write_file(file, ""); }, SQLITE_NOTADB, "is not a database"},
        {[&] { fs::resize_file(file, 60); }, SQLITE_CORRUPT, "cut short"},
        {[&] { fs::resize_file(file, good.size() / 2); }, SQLITE_CORRUPT, "cut short"},
        {[&] { fs::resize_file(file, good.size() - 1); }, SQLITE_CORRUPT, "cut short"},
        {[&] { patch(68, "abcd"); }, SQLITE_NOTADB, "another application"},
        {[&] { patch(60, std::string("\0\0\0\7", 4)); }, SQLITE_CANTOPEN,
         "was made by a newer version (schema 7, this is 4)"},
        {[&] { patch(60, std::string(4, '\0')); }, SQLITE_CORRUPT, "it has schema 0"},
        {[&] { patch(100, std::string(3000, '\x55')); }, SQLITE_CORRUPT, "is damaged"}};
    for (const auto &[spoil, code, text] : cases) {
        for (const char *suffix : {"", "-wal", "-shm"})
            fs::remove_all(file + suffix);
        write_file(file, good);
        spoil();
        const std::vector<std::string> names = folder.names();
        const std::string spoilt = fs::is_regular_file(file) ? read_file(file) : "";
        for (const int readonly : {0, 1}) {
            char message[512] = "";
            qbdb_handle_t *qbdb = nullptr;
            sqlite3 *db = nullptr;
            options.readonly = readonly;
            EXPECT_EQ(code, qbdb_open(file.c_str(), &options, &qbdb, &db, message, sizeof message)) << text;
            EXPECT_NE(nullptr, std::strstr(message, text)) << message;
            EXPECT_NE(nullptr, std::strstr(message, file.c_str())) << message;
            EXPECT_EQ(nullptr, qbdb);
            EXPECT_EQ(nullptr, db);
            EXPECT_TRUE(readonly || names == folder.names()) << text;
        }
        EXPECT_EQ(spoilt, fs::is_regular_file(file) ? read_file(file) : "") << text;
    }
}

TEST_F(Open, RefusesAFileThatCannotBeRead)
{
    session.reset();
    fs::permissions(fs::path(file).parent_path(), fs::perms::all);
    fs::permissions(file, fs::perms::none);
    // The superuser reads everything, so that the test stops being it for a moment.
    const bool superuser = geteuid() == 0;
    constexpr uid_t nobody = 65534;
    ASSERT_TRUE(!superuser || seteuid(nobody) == 0);
    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    std::array<char, 256> message{};
    const int refused = qbdb_open(file.c_str(), nullptr, &qbdb, &db, message.data(), message.size());
    ASSERT_TRUE(!superuser || seteuid(0) == 0);
    EXPECT_NE(0, refused);
    EXPECT_EQ("cannot read \"" + file + "\": Permission denied", message.data());
}

TEST_F(Open, LetsNoViewOrTriggerOfAnotherProgramIn)
{
    session->exec("CREATE VIEW v AS SELECT 1");
    EXPECT_NE(0, session->exec("SELECT * FROM v"));
    session->exec("CREATE TRIGGER mine AFTER INSERT ON t BEGIN DELETE FROM t; END");
    session.reset();
    EXPECT_THROW(Session(file, options), std::runtime_error);
    options.readonly = 1;
    EXPECT_EQ("0", Session(file, options).one("SELECT count(*) FROM t"));
}

TEST_F(Open, FindsWhatAnInterruptedProcessLeftInTheLog)
{
    session->exec("INSERT INTO t VALUES(1,2,3)");
    // A copy of both files is what a crash would have left.
    fs::copy_file(file, folder / "crashed.db");
    fs::copy_file(file + "-wal", folder / "crashed.db-wal");
    EXPECT_EQ("1", Session(folder / "crashed.db").one("SELECT count(*) FROM t"));
}

TEST_F(Open, TakesPathsWithSignsOfAUri)
{
    session.reset();
    fs::copy_file(file, folder / "a b%41?mode=ro#c.db");
    EXPECT_EQ(0, Session(folder / "a b%41?mode=ro#c.db").exec("INSERT INTO t VALUES(1,2,3)"));
}

TEST_F(Open, ClosesToOneFileAndAcceptsNull)
{
    session->exec("INSERT INTO t VALUES(1,2,3)");
    session.reset();
    qbdb_close(nullptr);
    EXPECT_FALSE(fs::exists(file + "-wal"));
    Session again(file);
    EXPECT_EQ("1", again.one("SELECT count(*) FROM t"));
    qbdb_clear_pool(again.qbdb);
    EXPECT_EQ("1", again.one("SELECT count(*) FROM t"));
}

// What the tables and indexes of the file are, without the words in which they were made.
Rows shape(Session &session)
{
    Rows rows = session.ask(
        "SELECT T.name,C.* FROM sqlite_schema T,pragma_table_xinfo(T.name) C WHERE T.type='table' "
        "ORDER BY 1,C.cid");
    const Rows indexes = session.ask(
        "SELECT T.name,L.[unique],L.origin,I.seqno,I.name FROM sqlite_schema T,pragma_index_list(T.name) L,"
        "pragma_index_info(L.name) I WHERE T.type='table' ORDER BY 1,L.origin,L.name,I.seqno");
    rows.insert(rows.end(), indexes.begin(), indexes.end());
    return rows;
}

TEST_F(Open, MigratesAnOlderSchema)
{
    const Rows fresh = shape(*session);
    const std::string first_schema = R"(PRAGMA user_version=1;
        DROP INDEX share_folder;
        DROP INDEX user_home_folder;
        DROP INDEX user_listed;
        DROP INDEX timemachine_quota_off;
        DROP INDEX backup_source;
        DROP INDEX backup_destination;
        DROP TABLE `$group_has_user`;
        CREATE TABLE `$group_has_user` (user_id INTEGER NOT NULL, group_id INTEGER NOT NULL);
        CREATE INDEX group_has_user_user ON `$group_has_user` (user_id, group_id);
        CREATE INDEX group_has_user_group ON `$group_has_user` (group_id);
        INSERT INTO `$group_has_user` VALUES(102,99),(100,99),(102,99),(102,100);
        DROP TABLE `$home_folder_snapshot`;
        CREATE TABLE `$home_folder_snapshot` (id INTEGER PRIMARY KEY, user_name TEXT NOT NULL COLLATE NOCASE,
            home_dir TEXT, name TEXT NOT NULL, type INTEGER, created_on INTEGER, UNIQUE (home_dir, name, user_name));
        CREATE INDEX home_folder_snapshot_created ON `$home_folder_snapshot` (created_on);
        CREATE INDEX home_folder_snapshot_user ON `$home_folder_snapshot` (user_name, created_on);
        CREATE INDEX home_folder_snapshot_home ON `$home_folder_snapshot` (home_dir, created_on);
        INSERT INTO `$home_folder_snapshot` VALUES(7,'ann','/home/ann','s',2,5);)";
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(session->db, first_schema.c_str(), nullptr, nullptr, nullptr));
    session.reset();
    options.readonly = 1;
    EXPECT_THROW(Session(file, options), std::runtime_error) << "who only reads cannot migrate";
    options.readonly = 0;
    for (int round = 0; round < 2; round++) {
        Session migrated(file, options);
        EXPECT_EQ(fresh, shape(migrated));
        EXPECT_EQ("4", migrated.one("PRAGMA user_version"));
        EXPECT_EQ((Rows{{"102", "99"}, {"100", "99"}, {"102", "100"}}),
                  migrated.ask("SELECT * FROM `$group_has_user` ORDER BY rowid"));
        EXPECT_EQ((Rows{{"7", "ann", "/home/ann", "s", "2", "5"}}),
                  migrated.ask("SELECT * FROM `$home_folder_snapshot`"));
        EXPECT_EQ("ok", migrated.one("PRAGMA integrity_check"));
    }
}

// Opens and closes handles in several threads at once; the process ends with 0 when all of it worked.
[[noreturn]] void open_in_threads(const std::string &file)
{
    constexpr int threads = 8;
    std::barrier start(threads);
    std::atomic<int> failures = 0;
    {
        std::vector<std::jthread> running;
        for (int i = 0; i < threads; i++)
            running.emplace_back([&] {
                start.arrive_and_wait();
                for (int round = 0; round < 3; round++) {
                    qbdb_handle_t *qbdb = nullptr;
                    sqlite3 *db = nullptr;
                    failures += qbdb_open(file.c_str(), nullptr, &qbdb, &db, nullptr, 0);
                    qbdb_close(qbdb);
                }
            });
    }
    _exit(failures == 0 ? 0 : 1);
}

TEST_F(Open, WorksInSeveralThreadsAtOnce)
{
    session.reset(); // no connection crosses a fork
    for (int process = 0; process < 40; process++) {
        const pid_t child = fork();
        if (child == 0)
            open_in_threads(file);
        int status = -1;
        waitpid(child, &status, 0);
        ASSERT_EQ(0, status) << "process " << process;
    }
}

class Volumes : public Platform
{
  protected:
    Volumes()
    {
        fs::create_directories(folder / "root/data");
        root = folder / "root";
        options.root = root.c_str();
        session = std::make_unique<Session>(file, options);
    }
    int add(const char *name)
    {
        return qbdb_register_volume(session->qbdb, session->db, name, &session->error);
    }

    std::string root;
};

TEST_F(Volumes, HaveTheSizesOfTheirFileSystem)
{
    ASSERT_EQ(0, add("data")) << session->error;
    ASSERT_EQ(0, add("absent"));
    EXPECT_EQ((Rows{{"data", "1024", "1", "1"}}),
              session->ask("SELECT id,blk_size,blk_total>0,blk_free BETWEEN 1 AND blk_total FROM _volume "
                           "WHERE lv_name='data'"));
    EXPECT_EQ((Rows{{"0", "0"}}), session->ask("SELECT blk_total,blk_free FROM _volume WHERE id='absent'"));
    session->exec("UPDATE _volume SET blk_total=5,volume_health='OK'");
    ASSERT_EQ(0, qbdb_import_nolock(session->qbdb, session->db, QBDB_CAT_VOLUME));
    EXPECT_EQ((Rows{{"absent", "0"}, {"data", "1"}}),
              session->ask("SELECT id,blk_total>5 FROM _volume ORDER BY id"));
    ASSERT_EQ(0, add("data")) << "again";
    EXPECT_EQ("OK", session->one("SELECT volume_health FROM _volume WHERE id='data'"));
    EXPECT_EQ("2", session->one("SELECT count(*) FROM _volume"));
}

TEST_F(Volumes, RefuseBadNames)
{
    const std::string longest(31, 'v');
    for (const std::string &name :
         {std::string(), std::string("a/b"), std::string(".."), std::string(".hidden"), std::string("o'b"),
          std::string("a\"b"), std::string("a\nb"), longest + "v"}) {
        EXPECT_EQ(SQLITE_MISUSE, add(name.c_str())) << name;
        EXPECT_NE(nullptr, std::strstr(session->error, name.c_str())) << session->error;
    }
    EXPECT_EQ(SQLITE_MISUSE, add(nullptr));
    EXPECT_EQ("0", session->one("SELECT count(*) FROM _volume"));
    EXPECT_EQ(0, add(longest.c_str()));
}

} // namespace
