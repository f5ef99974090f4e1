// Transactions: waiting, losing, failing; and the journal that follows them.
#include "platform.h"

#include <chrono>
#include <cstring>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace platform_test;

namespace
{

class Transactions : public Platform
{
  protected:
    std::string count() { return session->one("SELECT count(*) FROM t"); }
    std::string journal() const { return read_file(folder / "journal"); }
};

TEST_F(Transactions, WaitForABusyDatabaseUpToTheTimeout)
{
    using namespace std::chrono;
    options.busy_timeout_ms = 60;
    Session impatient(file, options);
    ASSERT_EQ(0, session->begin());
    const auto begun = steady_clock::now();
    EXPECT_EQ(-SQLITE_BUSY, impatient.begin());
    EXPECT_STREQ("database is locked", impatient.error);
    EXPECT_EQ(SQLITE_BUSY, qbdb_last_commit(impatient.qbdb, nullptr));
    EXPECT_GE(steady_clock::now() - begun, milliseconds(55));
    EXPECT_LT(steady_clock::now() - begun, seconds(3));

    Session patient(file);
    std::thread holder([&] {
        std::this_thread::sleep_for(milliseconds(100));
        session->commit();
    });
    EXPECT_EQ(0, patient.begin()) << patient.error;
    holder.join();
}

TEST_F(Transactions, LetManyProcessesWrite)
{
    constexpr int processes = 8;
    constexpr int rounds = 25;
    session->exec("INSERT INTO t VALUES(0,0,0)");
    session.reset(); // no connection crosses a fork
    std::vector<pid_t> children;
    for (int i = 0; i < processes; i++) {
        const pid_t child = fork();
        if (child == 0) {
            int failures = 0;
            {
                Session own(file, qbdb_options_t{});
                for (int n = 0; n < rounds; n++)
                    failures += own.begin() != 0 || own.exec("UPDATE t SET a=a+1") != 0 || own.commit() != 0;
            }
            _exit(failures == 0 ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(0, status);
    }
    EXPECT_EQ(std::to_string(processes * rounds), Session(file).one("SELECT a FROM t"));
}

TEST_F(Transactions, ReadBesideAWriterWhenReadOnly)
{
    qbdb_options_t reading = options;
    reading.readonly = 1;
    Session reader(file, reading);
    ASSERT_EQ(0, session->begin());
    ASSERT_EQ(0, session->exec("INSERT INTO t VALUES(1,1,1)"));
    EXPECT_EQ(0, reader.begin()) << reader.error;
    EXPECT_EQ("0", reader.one("SELECT count(*) FROM t"));
    EXPECT_EQ(SQLITE_READONLY, reader.exec("DELETE FROM t"));
    EXPECT_EQ(0, reader.commit());
    EXPECT_EQ(0, session->commit());
}

TEST_F(Transactions, ReadBesideAWriterWhenAnnounced)
{
    options.busy_timeout_ms = 1;
    Session reader(file, options);
    session->exec("INSERT INTO t VALUES(1,1,1)");
    ASSERT_EQ(0, session->begin());
    qbdb_announce(reader.qbdb, "getThings", 1);
    EXPECT_EQ(0, reader.begin()) << reader.error;
    EXPECT_EQ("1", reader.one("SELECT count(*) FROM t"));
    EXPECT_EQ(0, session->exec("INSERT INTO t VALUES(2,2,2)"));
    EXPECT_EQ(0, session->commit()) << "the reader holds nobody up";
    EXPECT_EQ("1", reader.one("SELECT count(*) FROM t")) << "and sees what it saw first";
    EXPECT_EQ(0, reader.commit());

    ASSERT_EQ(0, session->begin());
    EXPECT_EQ(-SQLITE_BUSY, reader.begin()) << "an announcement is good for one transaction";
    qbdb_announce(reader.qbdb, "setThings", 0);
    EXPECT_EQ(-SQLITE_BUSY, reader.begin());
    EXPECT_NE(std::string::npos, log().find("BEGIN IMMEDIATE of setThings\n")) << log();
    EXPECT_EQ(0, session->rollback());
}

TEST_F(Transactions, DoNotWriteAFileThatWasMigratedMeanwhile)
{
    Session other(file);
    const std::string version = session->one("PRAGMA user_version");
    for (int round = 0; round < 2; round++) {
        ASSERT_EQ(0, session->begin());
        ASSERT_EQ(0, session->commit());
        other.exec("PRAGMA user_version=99");
        EXPECT_EQ(-SQLITE_SCHEMA, session->begin());
        EXPECT_STREQ(
            ("another program has brought the database to schema 99 (this is " + version + ")").c_str(),
            session->error);
        qbdb_announce(session->qbdb, "getThings", 1);
        EXPECT_EQ(0, session->begin());
        EXPECT_EQ(0, session->commit());
        other.exec(("PRAGMA user_version=" + version).c_str());
    }
}

TEST_F(Transactions, TellWhatBecameOfThem)
{
    const auto outcome = [&] {
        const char *text = nullptr;
        const int code = qbdb_last_commit(session->qbdb, &text);
        return std::to_string(code) + " " + text;
    };
    for (const int decides : {0, 1}) {
        options.commit_decides = decides;
        session = std::make_unique<Session>(file, options);
        session->exec("INSERT OR IGNORE INTO u VALUES(1,'x')");
        const std::string before = count();
        EXPECT_EQ(decides, qbdb_commit_decides(session->qbdb));
        EXPECT_EQ(0, session->begin());
        EXPECT_EQ("0 ", outcome());
        EXPECT_EQ(SQLITE_CONSTRAINT, session->exec("INSERT OR ROLLBACK INTO u VALUES(1,'y')"));
        EXPECT_EQ(SQLITE_ABORT, session->exec("DELETE FROM t"));
        EXPECT_EQ(0, session->rollback());
        EXPECT_EQ("19 UNIQUE constraint failed: u.id", outcome()) << "the cause, not what followed";
        EXPECT_EQ(0, session->begin());
        EXPECT_EQ(SQLITE_CONSTRAINT, session->exec("INSERT INTO u VALUES(1,'y')"));
        EXPECT_EQ(0, session->rollback());
        EXPECT_EQ("0 ", outcome()) << "its caller wanted it so";
        EXPECT_EQ(before, count());
    }
}

TEST_F(Transactions, RefuseStatementsOnceLost)
{
    session->exec("INSERT INTO u VALUES(1,'x')");
    ASSERT_EQ(0, session->begin());
    ASSERT_EQ(0, session->exec("INSERT INTO t VALUES(1,1,1)"));
    EXPECT_EQ(SQLITE_CONSTRAINT, session->exec("INSERT OR ROLLBACK INTO u VALUES(1,'y')"));
    EXPECT_EQ(SQLITE_ABORT, session->exec("INSERT INTO t VALUES(2,2,2)"));
    EXPECT_STREQ("the transaction was rolled back", session->error);
    EXPECT_EQ(SQLITE_ABORT, session->commit()) << "nothing was stored, and the caller must learn of it";
    EXPECT_EQ("0", count());
}

TEST_F(Transactions, LeaveNothingOfAFailedCommit)
{
    session->exec("CREATE TABLE child(p REFERENCES u(id) DEFERRABLE INITIALLY DEFERRED)");
    ASSERT_EQ(0, session->begin());
    ASSERT_EQ(0, session->exec("INSERT INTO t VALUES(1,1,1)"));
    ASSERT_EQ(0, session->exec("INSERT INTO child VALUES(77)"));
    EXPECT_EQ(SQLITE_CONSTRAINT, session->commit());
    EXPECT_STREQ("FOREIGN KEY constraint failed", session->error);
    EXPECT_EQ(SQLITE_CONSTRAINT, qbdb_last_commit(session->qbdb, nullptr));
    EXPECT_NE(0, sqlite3_get_autocommit(session->db));
    EXPECT_EQ("0", count());
    EXPECT_EQ(0, session->begin());
    EXPECT_EQ(0, session->rollback());
    EXPECT_EQ(0, session->rollback()) << "without a transaction there is nothing to do";
}

// Interrupts the next ROLLBACK of the connection.
int interrupt_rollback(unsigned, void *db, void *, void *text)
{
    if (std::strcmp(static_cast<const char *>(text), "ROLLBACK") == 0) {
        sqlite3_interrupt(static_cast<sqlite3 *>(db));
        sqlite3_trace_v2(static_cast<sqlite3 *>(db), 0, nullptr, nullptr);
    }
    return 0;
}

TEST_F(Transactions, AreEndedByTheNextOneWhenTheirRollbackFailed)
{
    options.busy_timeout_ms = 1;
    session->exec("CREATE TABLE child(p REFERENCES u(id) DEFERRABLE INITIALLY DEFERRED)");
    Session other(file, options);
    for (const bool commit : {false, true}) {
        ASSERT_EQ(0, session->begin());
        ASSERT_EQ(0, session->exec("INSERT INTO child VALUES(77)"));
        sqlite3_trace_v2(session->db, SQLITE_TRACE_STMT, interrupt_rollback, session->db);
        EXPECT_EQ(commit ? SQLITE_CONSTRAINT : SQLITE_INTERRUPT,
                  commit ? session->commit() : session->rollback());
        EXPECT_EQ(SQLITE_ABORT, session->exec("INSERT INTO t VALUES(1,1,1)")) << "it would be lost";
        EXPECT_EQ(-SQLITE_BUSY, other.begin());
        EXPECT_EQ(0, session->begin()) << session->error;
        EXPECT_EQ("0", session->one("SELECT count(*) FROM child"));
        EXPECT_EQ(0, session->rollback());
        EXPECT_EQ(0, other.begin());
        EXPECT_EQ(0, other.rollback());
    }
}

TEST_F(Transactions, OfTheCallersOwnStayTheCallers)
{
    for (const bool commit : {false, true}) {
        ASSERT_EQ(SQLITE_OK,
                  sqlite3_exec(session->db, "BEGIN; INSERT INTO t VALUES(1,2,3)", nullptr, nullptr, nullptr));
        EXPECT_NE(0, session->begin());
        EXPECT_EQ(commit ? SQLITE_MISUSE : SQLITE_OK, commit ? session->commit() : session->rollback());
        EXPECT_EQ(0, sqlite3_get_autocommit(session->db));
        ASSERT_EQ(SQLITE_OK, sqlite3_exec(session->db, "ROLLBACK", nullptr, nullptr, nullptr));
    }
    EXPECT_EQ("0", count());
}

TEST_F(Transactions, TellServicesOnlyWhatIsCommitted)
{
    options.jnl = std::fopen((folder / "journal").c_str(), "w");
    session = std::make_unique<Session>(file, options);
    const auto tell = [&](const char *service) {
        EXPECT_EQ(0, qbdb_service_update_setting_by_share(session->qbdb, session->db, service));
    };
    session->begin();
    tell("cifs");
    session->rollback();
    EXPECT_EQ("", journal());
    session->begin();
    tell("ftp");
    tell("ftp");
    EXPECT_EQ("", journal());
    session->commit();
    EXPECT_NE(std::string::npos, journal().find(" ftp\n")) << journal();
    EXPECT_EQ(journal().find(" ftp\n"), journal().rfind(" ftp\n")) << "told more than once";
    EXPECT_EQ(std::string::npos, journal().find("cifs"));
    tell("cifs");
    EXPECT_NE(std::string::npos, journal().find(" cifs\n")) << "outside a transaction it is told at once";
    std::fclose(options.jnl);
    session->qbdb->jnl = nullptr;
    tell("cifs");
}

} // namespace
