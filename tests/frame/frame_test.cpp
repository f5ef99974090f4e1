// What every exported operation does around its worker: error record, trace, transaction, dumps.
#include "database.h"
#include "frame/frame.h"

#include <cstring>
#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>

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
    // Runs a worker in the frame of an operation that does not exist.
    template <class Worker>
    int run(ResultKind kind, Worker worker, std::span<const DumpedRecord> records = {})
    {
        const BoundWorker bound{
            [](const void *body, Call &call) { return (*static_cast<const Worker *>(body))(call); }, &worker};
        return run_framed({"qbobj_getThing", Effect::writes, kind},
                          {qbdb, db, &err, {"qbobj_api2.test.cpp", 1}}, records, bound);
    }
    int marks() const { return std::stoi(value("SELECT COUNT(*) FROM service_misc WHERE key='mark'")); }

  private:
    std::size_t seen_ = 0;
};

constexpr ResultKind kinds[] = {ResultKind::code, ResultKind::identifier};

// A worker that writes, so that one can see whether it was kept, and then returns `result`.
auto write_mark(int result)
{
    return [result](Call &call) {
        EXPECT_EQ(0, call.exec("No mark. %s", "INSERT INTO service_misc(key,val) VALUES('mark','x')"));
        return result;
    };
}

TEST_F(Frame, EntryAndExitAreTracedFromInfoOn)
{
    const Lines info{"INFO qbobj_api2 >>>> qbobj_getUID()",
                     "INFO qbobj_api2 <<<< qbobj_getUID() ==> rc=0 (0ms)"};
    const Lines debug{info[0], "DEBUG qbobj_api2 x_qbobj_getUID() rc=0", info[1]};
    const std::pair<qbdb_loglevel_t, Lines> cases[] = {{QBDB_LOG_NONE, {}},
                                                       {QBDB_LOG_WARN, {}},
                                                       {QBDB_LOG_INFO, info},
                                                       {QBDB_LOG_DEBUG, debug},
                                                       {QBDB_LOG_ALL, debug}};
    for (const auto &[level, lines] : cases) {
        reopen(level);
        int uid = -1;
        EXPECT_OK(qbobj_getUID(qbdb, db, "admin", &uid, &err));
        EXPECT_EQ(lines, logged()) << "level " << level;
    }
}

TEST_F(Frame, RecordsAreDumpedBeforeWhenTheyAreGivenAndAfterASuccess)
{
    const auto dumps_of = [&](int result) {
        qbobj_SystemUser_t user{};
        user.UserId = 7;
        // What is only a result holds anything until the worker has set it.
        auto *made = reinterpret_cast<qbobj_MyPassword_t *>(&user);
        const DumpedRecord records[] = {dump_of(&user, Direction::in_out), dump_of(&made, Direction::out)};
        const auto worker = [&](Call &call) {
            user.UserId = 8;
            made = create<qbobj_MyPassword_t>(call.pool());
            made->UserName = "anna";
            return result;
        };
        EXPECT_EQ(result, run(ResultKind::code, worker, records));
        std::string dumps;
        for (const std::string &line : logged())
            for (const char *word : {"SystemUser[0]", "UserId", "MyPassword[0]", "UserName", "x_qbobj"})
                if (line.find(word) != std::string::npos && line.find("(null)") == std::string::npos)
                    dumps += line.substr(std::string("DEBUG qbobj_api2 ").size()) + ";";
        return dumps;
    };
    reopen(QBDB_LOG_DEBUG);
    EXPECT_EQ("SystemUser[0] = {; i UserId = 7;x_qbobj_getThing() rc=0;SystemUser[0] = {; i UserId = 8;"
              "MyPassword[0] = {; s UserName = anna;",
              dumps_of(0));
    EXPECT_EQ("SystemUser[0] = {; i UserId = 7;x_qbobj_getThing() rc=5;", dumps_of(5));
    reopen(QBDB_LOG_INFO);
    EXPECT_EQ("", dumps_of(0));
}

TEST_F(Frame, TheResultDecidesBetweenCommitAndRollback)
{
    const std::tuple<ResultKind, int, bool> cases[] = {
        {ResultKind::code, 0, true},        {ResultKind::code, 7, false},
        {ResultKind::code, -1, false},      {ResultKind::plain_identifier, 7, false},
        {ResultKind::identifier, 0, true},  {ResultKind::identifier, 7, true},
        {ResultKind::identifier, -2, false}};
    reopen(QBDB_LOG_INFO);
    for (const auto &[kind, result, kept] : cases) {
        EXPECT_EQ(result, run(kind, write_mark(result)));
        EXPECT_EQ("INFO qbobj_api2 <<<< qbobj_getThing() ==> rc=" + std::to_string(result) + " (0ms)",
                  logged().back());
        EXPECT_EQ(kept ? 1 : 0, marks());
        EXPECT_NE(0, sqlite3_get_autocommit(db));
        sql("DELETE FROM service_misc WHERE key='mark'");
    }
}

TEST_F(Frame, ABeginThatFailsIsReturnedAndNothingElseIsDone)
{
    sqlite3 *raw = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(file().c_str(), &raw));
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> other(raw, sqlite3_close);
    reopen(QBDB_LOG_DEBUG);
    sqlite3_busy_timeout(db, 0);
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(other.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
    for (const ResultKind kind : kinds) {
        bool called = false;
        const auto worker = [&called](Call &) {
            called = true;
            return 0;
        };
        EXPECT_GT(0, run(kind, worker));
        EXPECT_FALSE(called);
        EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
        const Lines lines = logged();
        EXPECT_EQ("INFO qbobj_api2 >>>> qbobj_getThing()", lines.front());
        EXPECT_EQ("INFO qbobj_api2 <<<< qbobj_getThing() ==> rc=-5 (0ms)", lines.back());
        for (const std::string &line : lines)
            EXPECT_NE(0U, line.find("DEBUG")) << line;
    }
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(other.get(), "ROLLBACK", nullptr, nullptr, nullptr));
    EXPECT_EQ(0, run(ResultKind::code, write_mark(0)));
}

TEST_F(Frame, ATransactionThatTheDatabaseLostIsNoSuccess)
{
    const std::string before = content();
    for (const ResultKind kind : kinds) {
        const auto worker = [&](Call &call) {
            write_mark(0)(call);
            // As the database does when it has no space left.
            sqlite3_exec(call.db(), "ROLLBACK", nullptr, nullptr, nullptr);
            EXPECT_FALSE(call.run("DELETE FROM service_misc")); // it would be committed at once
            return 0;
        };
        EXPECT_EQ(kind == ResultKind::code ? QBOBJ_ERROR_DB_MISC : -1, run(kind, worker));
        EXPECT_EQ(QBOBJ_ERROR_DB_MISC, err.ec);
        EXPECT_STREQ("The transaction was rolled back by the database.", err.msg);
        EXPECT_STREQ("qbobj_api2", err.file);
        EXPECT_EQ(before, content());
    }
}

TEST_F(Frame, ACommitThatFailsLeavesTheResultAndUndoesTheCall)
{
    sql("CREATE TABLE parent(id INTEGER PRIMARY KEY);"
        "CREATE TABLE child(id REFERENCES parent(id) DEFERRABLE INITIALLY DEFERRED)");
    EXPECT_EQ(0,
              run(ResultKind::code, [](Call &call) { return call.run("INSERT INTO child VALUES(1)").rc; }));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM child"));
    EXPECT_EQ(Lines{"ERROR qbobj_api2 FOREIGN KEY constraint failed (19): COMMIT of qbobj_getThing"},
              logged());
    EXPECT_EQ(0, run(ResultKind::code, write_mark(0)));
    EXPECT_EQ(1, marks());
}

TEST_F(Frame, WhateverAWorkerThrowsIsAnErrorLikeAnyOther)
{
    for (const ResultKind kind : kinds) {
        const auto out_of_memory = [](Call &call) -> int {
            write_mark(0)(call);
            throw std::bad_alloc();
        };
        EXPECT_EQ(kind == ResultKind::code ? QBOBJ_ERROR_OOM : -1, run(kind, out_of_memory));
        EXPECT_EQ(QBOBJ_ERROR_OOM, err.ec);
        EXPECT_STREQ("Failed to allocate resource.", err.msg);
        const auto odd = [](Call &call) -> int {
            write_mark(0)(call);
            throw std::runtime_error("odd");
        };
        EXPECT_EQ(kind == ResultKind::code ? QBOBJ_ERROR_UNKNOWN : -1, run(kind, odd));
        EXPECT_EQ(QBOBJ_ERROR_UNKNOWN, err.ec);
        EXPECT_EQ(0, marks());
    }
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
    const auto worker = [](Call &call) {
        return raise(call, QBOBJ_ERROR_UNKNOWN, "%d of '%s' are 100%%", 3, "x%s");
    };
    for (const auto level : {QBDB_LOG_FATAL, QBDB_LOG_ERROR}) {
        reopen(level);
        EXPECT_FAILS(run(ResultKind::code, worker), QBOBJ_ERROR_UNKNOWN, "3 of 'x%s' are 100%");
        EXPECT_STREQ("frame_test", err.file);
        EXPECT_EQ(level == QBDB_LOG_ERROR ? Lines{"ERROR frame_test 3 of 'x%s' are 100%"} : Lines{},
                  logged());
    }
}

TEST_F(Frame, WithoutAnErrorRecordTheProcessEndsNamingTheOperation)
{
    int uid = -1;
    EXPECT_DEATH(qbobj_getUID(qbdb, db, "admin", &uid, nullptr), ": qbobj_getUID: Assertion `err' failed");
}

} // namespace
