// What every exported operation does around its worker: error record, trace, transaction, dumps.
#include "database.h"
#include "frame/frame.h"
#include "frame/rows.h"

#include <cstring>
#include <functional>
#include <memory>
#include <sstream>

using namespace qbobj;

namespace
{

using Lines = std::vector<std::string>;

class Frame : public qbobj_test::Database
{
  protected:
    // The lines logged since the last call, each "LEVEL unit text".
    Lines logged()
    {
        std::istringstream lines(log().substr(seen_));
        seen_ = log().size();
        Lines texts;
        for (std::string line; std::getline(lines, line);) {
            const std::size_t level = line.find(' ') + 1;
            const std::size_t colon = line.find(':', level);
            texts.push_back(line.substr(level, colon - level) + line.substr(line.find(' ', colon)));
        }
        return texts;
    }
    Operation thing() { return {"qbobj_getThing", qbdb, db, &err, here()}; }
    int marks() const { return std::stoi(value("SELECT COUNT(*) FROM service_misc WHERE key='mark'")); }

  private:
    std::size_t seen_ = 0;
};

// A worker that writes, so that one can see whether it was kept, and then returns `result`.
int write_mark(qbobj_env_t *env, sqlite3 *db, int result)
{
    EXPECT_TRUE(Sql(env, db).exec("INSERT INTO service_misc(key,val) VALUES('mark','x')"));
    return result;
}

TEST_F(Frame, EntryAndExitAreTracedFromInfoOn)
{
    const Lines info{"INFO qbobj_api2 >>>> qbobj_getUID()",
                     "INFO qbobj_api2 <<<< qbobj_getUID() ==> rc=0 (0ms)"};
    const Lines debug{info[0], "DEBUG qbobj_api2 x_qbobj_getUID() rc=0", info[1]};
    const struct {
        qbdb_loglevel_t level;
        Lines lines;
    } cases[] = {{QBDB_LOG_NONE, {}},
                 {QBDB_LOG_WARN, {}},
                 {QBDB_LOG_INFO, info},
                 {QBDB_LOG_DEBUG, debug},
                 {QBDB_LOG_ALL, debug}};
    for (const auto &c : cases) {
        reopen(c.level);
        int uid = -1;
        EXPECT_OK(qbobj_getUID(qbdb, db, "admin", &uid, &err));
        EXPECT_EQ(c.lines, logged()) << "level " << c.level;
    }
}

TEST_F(Frame, RecordsAreDumpedInArgumentOrderBeforeAndAfterASuccess)
{
    const auto worker = [](qbobj_env_t *, sqlite3 *, qbobj_SystemUser_t *user, int result,
                           qbobj_MyPassword_t *password) {
        user->UserId = 8;
        password->UserName = "anna";
        return result;
    };
    const auto call = [&](int result) {
        qbobj_SystemUser_t user{};
        user.UserId = 7;
        qbobj_MyPassword_t password{};
        const int returned = framed(thing(), worker, dumped(&user), result, dumped(&password));
        EXPECT_EQ(result, returned);
        Lines dumps;
        for (const std::string &line : logged())
            for (const char *word : {"SystemUser[0]", "UserId", "MyPassword[0]", "UserName", "x_qbobj"})
                if (line.find(word) != std::string::npos && line.find("(null)") == std::string::npos)
                    dumps.push_back(line);
        return dumps;
    };
    const auto at_debug = [](std::initializer_list<const char *> texts) {
        Lines lines;
        for (const char *text : texts)
            lines.push_back(std::string("DEBUG qbobj_api2 ") + text);
        return lines;
    };
    reopen(QBDB_LOG_DEBUG);
    EXPECT_EQ(at_debug({"SystemUser[0] = {", " i UserId = 7", "MyPassword[0] = {", "x_qbobj_getThing() rc=0",
                        "SystemUser[0] = {", " i UserId = 8", "MyPassword[0] = {", " s UserName = anna"}),
              call(0));
    for (const int failure : {5, -1})
        EXPECT_EQ(at_debug({"SystemUser[0] = {", " i UserId = 7", "MyPassword[0] = {",
                            failure == 5 ? "x_qbobj_getThing() rc=5" : "x_qbobj_getThing() rc=-1"}),
                  call(failure));
    reopen(QBDB_LOG_INFO);
    EXPECT_EQ(Lines{}, call(0));
}

TEST_F(Frame, APointerToARecordIsDumpedOnlyWhenThereIsARecord)
{
    const auto worker = [](qbobj_env_t *env, sqlite3 *, qbobj_SystemUser_t **user, bool found) {
        if (found)
            *user = create<qbobj_SystemUser_t>(env);
        return 0;
    };
    const auto dumps_of = [&](qbobj_SystemUser_t **user, bool found) {
        EXPECT_EQ(0, framed(thing(), worker, dumped(user), found));
        Lines lines = logged();
        std::erase_if(lines, [](const std::string &line) { return line.find("SystemUser") == line.npos; });
        return lines.size();
    };
    reopen(QBDB_LOG_DEBUG);
    qbobj_SystemUser_t *user = nullptr;
    EXPECT_EQ(0U, dumps_of(nullptr, false));
    EXPECT_EQ(0U, dumps_of(&user, false));
    EXPECT_EQ(1U, dumps_of(&user, true)); // there was none before
    EXPECT_EQ(2U, dumps_of(&user, false));
}

TEST_F(Frame, TheResultDecidesBetweenCommitAndRollback)
{
    const struct {
        bool look_up;
        int result;
        bool kept;
    } cases[] = {{false, 0, true}, {false, 7, false}, {false, -1, false},
                 {true, 0, true},  {true, 7, true},   {true, -2, false}};
    reopen(QBDB_LOG_INFO);
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << (c.look_up ? "look-up " : "") << c.result);
        EXPECT_EQ(c.result, c.look_up ? framed_lookup(thing(), write_mark, c.result)
                                      : framed(thing(), write_mark, c.result));
        EXPECT_EQ("INFO qbobj_api2 <<<< qbobj_getThing() ==> rc=" + std::to_string(c.result) + " (0ms)",
                  logged().back());
        EXPECT_EQ(c.kept ? 1 : 0, marks());
        EXPECT_NE(0, sqlite3_get_autocommit(db));
        sql("DELETE FROM service_misc WHERE key='mark'");
    }
}

TEST_F(Frame, TheIdOfALookUpIsItsResult)
{
    sql("INSERT INTO share(id,zfs_name,name,volume_id,path) "
        "VALUES(7,'data/docs','docs','data','/data/docs')");
    reopen(QBDB_LOG_INFO);
    EXPECT_EQ(7, qbobj_getShareId(qbdb, db, "docs", &err));
    EXPECT_EQ("INFO qbobj_api2 <<<< qbobj_getShareId() ==> rc=7 (0ms)", logged().back());
    EXPECT_GT(0, qbobj_getShareId(qbdb, db, "films", &err));
}

TEST_F(Frame, ABeginThatFailsIsReturnedAndNothingElseIsDone)
{
    sqlite3 *raw = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(file().c_str(), &raw));
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> other(raw, sqlite3_close);
    reopen(QBDB_LOG_DEBUG);
    sqlite3_busy_timeout(db, 0);
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(other.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
    for (const bool look_up : {false, true}) {
        bool called = false;
        const auto worker = [&called](qbobj_env_t *, sqlite3 *, qbobj_SystemUser_t *) {
            called = true;
            return 0;
        };
        qbobj_SystemUser_t user{};
        EXPECT_EQ(-SQLITE_BUSY, look_up ? framed_lookup(thing(), worker, dumped(&user))
                                        : framed(thing(), worker, dumped(&user)));
        EXPECT_FALSE(called);
        EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
        const Lines lines = logged();
        EXPECT_EQ("INFO qbobj_api2 >>>> qbobj_getThing()", lines.front());
        EXPECT_EQ("INFO qbobj_api2 <<<< qbobj_getThing() ==> rc=-5 (0ms)", lines.back());
        for (const std::string &line : lines)
            EXPECT_NE(0U, line.find("DEBUG")) << line;
    }
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(other.get(), "ROLLBACK", nullptr, nullptr, nullptr));
    EXPECT_EQ(0, framed(thing(), write_mark, 0));
}

TEST_F(Frame, ATransactionThatTheDatabaseLostIsNoSuccess)
{
    // As the database does when it has no space left.
    const auto worker = [](qbobj_env_t *env, sqlite3 *database, int result) {
        write_mark(env, database, 0);
        sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
        EXPECT_FALSE(Sql(env, database).exec("DELETE FROM service_misc")); // it would be committed at once
        return result;
    };
    const std::string before = content();
    for (const int success : {0, 7}) {
        err = {};
        EXPECT_EQ(success == 0 ? QBOBJ_ERROR_DB_MISC : -1,
                  success == 0 ? framed(thing(), worker, success) : framed_lookup(thing(), worker, success));
        EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
        EXPECT_EQ(0U, std::string(err.msg).find("The transaction was rolled back. "));
        EXPECT_STREQ("qbobj_api2", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(Frame, ACommitThatFailsLeavesTheResultAndUndoesTheCall)
{
    sql("CREATE TABLE parent(id INTEGER PRIMARY KEY);"
        "CREATE TABLE child(id REFERENCES parent(id) DEFERRABLE INITIALLY DEFERRED)");
    const auto orphan = [](qbobj_env_t *env, sqlite3 *database) {
        return Sql(env, database).exec("INSERT INTO child VALUES(1)").rc;
    };
    EXPECT_EQ(0, framed(thing(), orphan));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM child"));
    EXPECT_EQ(Lines{"ERROR qbobj_api2 FOREIGN KEY constraint failed (19): COMMIT"}, logged());
    EXPECT_EQ(0, framed(thing(), write_mark, 0));
    EXPECT_EQ(1, marks());
}

TEST_F(Frame, MemoryThatRunsOutIsAnErrorLikeAnyOther)
{
    const auto worker = [](qbobj_env_t *env, sqlite3 *database) -> int {
        write_mark(env, database, 0);
        throw std::bad_alloc();
    };
    EXPECT_FAILS(framed(thing(), worker), QBOBJ_ERROR_OOM, "Failed to allocate resource.");
    EXPECT_EQ(-1, framed_lookup(thing(), worker));
    EXPECT_EQ(QBOBJ_ERROR_OOM, err.ec);
    EXPECT_EQ(0, marks());
}

TEST_F(Frame, TheErrorRecordIsOfThisCallAlone)
{
    err = {QBOBJ_ERROR_OOM, "stale", 3, "stale"};
    int uid = -1;
    EXPECT_EQ(-1, qbobj_getUID(qbdb, db, "nobody here", &uid, &err)); // fails without a word
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_EQ(nullptr, err.file);
    EXPECT_EQ(0, err.lineno);
    EXPECT_EQ(nullptr, err.msg);
    EXPECT_FAILS(qbobj_getUserCollection(qbdb, db, nullptr, nullptr, 0, &err), QBOBJ_ERROR_API_ARGS,
                 "collection cannot be NULL.");
    EXPECT_STREQ("qbobj_api2_get_user", err.file);
    EXPECT_LT(0, err.lineno);
}

TEST_F(Frame, ErrorsAreLoggedWhereTheyWereRaisedAndOnlyFromErrorOn)
{
    const auto worker = [](qbobj_env_t *env, sqlite3 *, bool message) {
        return message ? raise(env, QBOBJ_ERROR_UNKNOWN, "%d of '%s' are 100%%", 3, "x%s")
                       : raise(env, QBOBJ_ERROR_UNKNOWN);
    };
    for (const auto level : {QBDB_LOG_FATAL, QBDB_LOG_ERROR}) {
        reopen(level);
        EXPECT_FAILS(framed(thing(), worker, true), QBOBJ_ERROR_UNKNOWN, "3 of 'x%s' are 100%");
        EXPECT_STREQ("frame_test", err.file);
        EXPECT_EQ(level == QBDB_LOG_ERROR ? Lines{"ERROR frame_test 3 of 'x%s' are 100%"} : Lines{},
                  logged());
    }
    EXPECT_EQ(QBOBJ_ERROR_UNKNOWN, framed(thing(), worker, false));
    EXPECT_EQ(nullptr, err.msg);
    EXPECT_LT(0, err.lineno);
    EXPECT_EQ(Lines{}, logged());
}

TEST_F(Frame, WithoutAnErrorRecordTheProcessEndsNamingTheOperation)
{
    int uid = -1;
    EXPECT_DEATH(qbobj_getUID(qbdb, db, "admin", &uid, nullptr), ": qbobj_getUID: Assertion `err' failed");
}

TEST_F(Frame, ASelectWithAnotherNumberOfColumnsThanTheTableEndsTheProcess)
{
    qbobj_env_t env{qbdb, &err};
    const Table rows = Sql(&env, db).table("SELECT 7,'anna'");
    ASSERT_EQ(1, rows.size());
    qbobj_SystemUser_t user{};
    fill(&env, user, std::tuple{&qbobj_SystemUser_t::UserId, &qbobj_SystemUser_t::UserName}, rows.front());
    EXPECT_EQ(7, user.UserId);
    EXPECT_STREQ("anna", user.UserName);
    EXPECT_DEATH(fill(&env, user, std::tuple{&qbobj_SystemUser_t::UserId}, rows.front()),
                 "Assertion `row.columns\\(\\) == columns' failed");
}

} // namespace
