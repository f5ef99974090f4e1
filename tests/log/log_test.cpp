// Entries of the log added, read page by page, deleted and trimmed.
#include "database.h"

#include <ctime>

namespace
{

using Query = qbobj_LogQuery_t;
using Texts = std::vector<std::string>;

class Log : public qbobj_test::Database
{
  protected:
    // Entry n is made at 1000 + n; the severities take turns, the last is an emergency.
    void fill(int entries)
    {
        sql("INSERT INTO `$log` (tstamp,severity,category,msg_tag,msg_args_xml) WITH RECURSIVE n(i) AS"
            "(SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT " +
            std::to_string(entries) +
            ") SELECT 1000+i,CASE i%8 WHEN 1 THEN 'debug' WHEN 2 THEN 'info' WHEN 3 THEN 'notice' WHEN 4 "
            "THEN "
            "'warning' WHEN 5 THEN 'err' WHEN 6 THEN 'crit' WHEN 7 THEN 'alert' ELSE 'emerge' END,"
            "CASE i%2 WHEN 1 THEN 'disk' ELSE 'share' END,'LOGMSG_'||(i%3),NULL FROM n");
    }
    int add(int when, const char *severity, const char *category, const char *tag, const char *arguments)
    {
        return qbobj_addLog(qbdb, db, when, severity, category, tag, arguments, &err);
    }
    // The ids of what is read.
    std::string read(Query query)
    {
        qbobj_LogEntry_t *entries = nullptr;
        EXPECT_OK(qbobj_getLog(qbdb, db, &entries, &matching, &total, &query, &err));
        std::string ids;
        for (; entries != nullptr; entries = entries->_link)
            ids += (ids.empty() ? "" : " ") + std::to_string(entries->LogId);
        return ids;
    }
    std::string ids()
    {
        return value("SELECT group_concat(id,' ') FROM (SELECT id FROM `$log` ORDER BY id)");
    }

    int matching = -1;
    int total = -1;
};

TEST_F(Log, WordsAreCompletedAndDefaultsTaken)
{
    const Texts expected{"7|info|misc|LOGMSG_UNKNOWN|", "7|warning|disk|LOGMSG_A|<a x='1'/>",
                         "7|emerge|share|LOGMSG_UNKNOWN|", "7|err|apps|LOGMSG_|"};
    ASSERT_OK(add(7, nullptr, nullptr, nullptr, nullptr));
    ASSERT_OK(add(7, "Warn", "DISK", "LOGMSG_A", "<a x='1'/>"));
    ASSERT_OK(add(7, "emerg", "share", "", ""));
    ASSERT_OK(add(7, "error", "apps", "LOGMSG_", ""));
    EXPECT_EQ(expected, rows("SELECT tstamp,severity,category,msg_tag,msg_args_xml FROM `$log`"));

    for (const int when : {0, -5}) {
        const std::time_t before = std::time(nullptr);
        ASSERT_OK(add(when, "info", "misc", nullptr, nullptr));
        const std::time_t made = std::stoll(value("SELECT tstamp FROM `$log` ORDER BY id DESC"));
        EXPECT_TRUE(before <= made && made <= std::time(nullptr)) << made;
    }
    Query query{};
    query.timestamp_max = 8;
    query.order = 1;
    query.limit = 3;
    qbobj_LogEntry_t held{};
    qbobj_LogEntry_t *entries = &held;
    ASSERT_OK(qbobj_getLog(qbdb, db, &entries, nullptr, nullptr, &query, &err));
    ASSERT_EQ(&held, entries) << "appended behind what the list holds";
    qbobj_LogEntry_t third{nullptr, 2, 7, "warning", "disk", "LOGMSG_A", "<a x='1'/>"};
    qbobj_LogEntry_t second{&third, 3, 7, "emerge", "share", "LOGMSG_UNKNOWN", ""};
    qbobj_LogEntry_t first{&second, 4, 7, "err", "apps", "LOGMSG_", ""};
    EXPECT_EQ(qbobj_test::dump("LogEntry", &first), qbobj_test::dump("LogEntry", held._link));
}

TEST_F(Log, EntriesThatAreRefused)
{
    constexpr struct {
        const char *severity, *category, *tag, *message;
    } cases[] = {
        {"loud", "weather", "x", "Specified Severity (loud) is invalid."},
        {"warn", "weather", "x", "Specified Category (warn) is invalid."},
        {nullptr, "weather", "x", "Specified Category ((null)) is invalid."},
        {"warn", "disk", "logmsg_A", "MessageTag (logmsg_A) should beging with 'LOGMSG_'"},
        {"warn", "disk", "LOGMSG", "MessageTag (LOGMSG) should beging with 'LOGMSG_'"},
    };
    for (const auto &c : cases)
        EXPECT_FAILS(add(0, c.severity, c.category, c.tag, nullptr), QBOBJ_ERROR_API_ARGS, c.message);
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM `$log`"));
}

TEST_F(Log, Pages)
{
    fill(30);
    for (const auto &[limit, offset, order, expected] :
         {std::tuple{10, 20, 1, "10 9 8 7 6 5 4 3 2 1"},
          {3, 0, 1, "30 29 28"},
          {3, 2, 0, "3 4 5"},
          {5, 28, 0, "29 30"},
          {0, 20, 7, "30 29 28 27 26 25 24 23 22 21 20 19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1"}}) {
        EXPECT_EQ(expected, read({limit, offset, order, 0, 0, nullptr, nullptr, nullptr, nullptr}));
        EXPECT_EQ(std::pair(30, 30), std::pair(matching, total));
    }
}

// What each filter reads of eight entries, and what is left when it deletes.
TEST_F(Log, FiltersReadAndDelete)
{
    const struct {
        Query query;
        const char *read, *left;
    } cases[] = {
        {{0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr}, "1 2 3 4 5 6 7 8", "NULL"},
        {{0, 0, 0, 1003, 0, nullptr, nullptr, nullptr, nullptr}, "4 5 6 7 8", "1 2 3"},
        {{0, 0, 0, 0, 1003, nullptr, nullptr, nullptr, nullptr}, "1 2", "3 4 5 6 7 8"},
        {{0, 0, 0, 1003, 1006, nullptr, nullptr, nullptr, nullptr}, "4 5", "1 2 3 6 7 8"},
        {{2, 1, 1, 1003, 0, nullptr, nullptr, nullptr, nullptr}, "7 6", "1 2 3"},
        {{0, 0, 0, 0, 0, "INFO", nullptr, nullptr, nullptr}, "2 3 4 5 6 7", "1 8"},
        {{0, 0, 0, 0, 0, "notice", nullptr, nullptr, nullptr}, "3 4 5 6 7", "1 2 8"},
        {{0, 0, 0, 0, 0, "Warnings", nullptr, nullptr, nullptr}, "4 5 6 7", "1 2 3 8"},
        {{0, 0, 0, 0, 0, "error", nullptr, nullptr, nullptr}, "5 6 7", "1 2 3 4 8"},
        {{0, 0, 0, 0, 0, "critical", nullptr, nullptr, nullptr}, "6 7", "1 2 3 4 5 8"},
        {{0, 0, 0, 0, 0, "alert", nullptr, nullptr, nullptr}, "7", "1 2 3 4 5 6 8"},
        {{0, 0, 0, 0, 0, "emerg", nullptr, nullptr, nullptr}, "", "1 2 3 4 5 6 7 8"},
        {{0, 0, 0, 0, 0, "emerge", nullptr, nullptr, nullptr}, "1 2 3 4 5 6 7 8", "NULL"},
        {{0, 0, 0, 0, 0, "infos", nullptr, nullptr, nullptr}, "1 2 3 4 5 6 7 8", "NULL"},
        {{0, 0, 0, 0, 0, nullptr, "'err','emerge'", nullptr, nullptr}, "5 8", "NULL"},
        {{0, 0, 0, 0, 0, "alert", "'err'", nullptr, nullptr}, "7", "1 2 3 4 5 6 8"},
        {{0, 0, 0, 0, 0, nullptr, nullptr, "'disk','volume'", nullptr}, "1 3 5 7", "2 4 6 8"},
        {{0, 0, 0, 0, 0, nullptr, nullptr, nullptr, "LOGMSG_1"}, "1 4 7", "NULL"},
        {{0, 0, 0, 0, 0, nullptr, nullptr, nullptr, "x' OR 'a'='a"}, "", "NULL"},
        {{0, 0, 0, 1001, 1008, "info", nullptr, "'share'", "LOGMSG_1"}, "4", "1 3 5 7 8"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.read) + " / " + c.left);
        sql("DELETE FROM `$log`; DELETE FROM sqlite_sequence WHERE name='$log'");
        fill(8);
        EXPECT_EQ(c.read, read(c.query));
        EXPECT_EQ(8, total);
        if (c.query.limit == 0) {
            EXPECT_EQ((static_cast<int>(std::string_view(c.read).size()) + 1) / 2, matching);
        }
        Query query = c.query;
        EXPECT_OK(qbobj_deleteLog(qbdb, db, &query, &err));
        EXPECT_EQ(c.left, ids());
    }
    EXPECT_OK(qbobj_deleteLog(qbdb, db, nullptr, &err));
    EXPECT_EQ("NULL", ids());
}

// A condition that lost its end would mean entries that nobody meant.
TEST_F(Log, ConditionsAreRunWholeOrNotAtAll)
{
    fill(8);
    std::string categories =
        "'disk'" + std::string(255 - 20 - std::string_view("1003<tstamp AND ").size(), ' ');
    for (const bool fits : {true, false}) {
        Query query{};
        query.timestamp_min = 1003;
        query.category_in = categories.c_str();
        qbobj_LogEntry_t *entries = nullptr;
        matching = -1;
        if (fits) {
            EXPECT_EQ("5 7", read(query));
            EXPECT_OK(qbobj_deleteLog(qbdb, db, &query, &err));
        } else {
            EXPECT_FAILS(qbobj_getLog(qbdb, db, &entries, &matching, &total, &query, &err),
                         QBOBJ_ERROR_DB_MISC,
                         "Failed DB Query for 'SELECT $log'. The conditions do not fit into 255 bytes.");
            EXPECT_EQ(-1, matching);
            EXPECT_STREQ("qbobj_api2_get_log", err.file);
            EXPECT_FAILS(qbobj_deleteLog(qbdb, db, &query, &err), QBOBJ_ERROR_DB_MISC,
                         "Failed DB Query for 'DELETE $log'. The conditions do not fit into 255 bytes.");
        }
        EXPECT_EQ("1 2 3 4 6 8", ids());
        categories += ' ';
    }
    Query query{};
    query.category_in = "'disk' nonsense";
    qbobj_LogEntry_t *entries = nullptr;
    EXPECT_EQ(QBOBJ_ERROR_DB_MISC, qbobj_getLog(qbdb, db, &entries, nullptr, nullptr, &query, &err));
    EXPECT_FAILS(qbobj_getLog(qbdb, db, &entries, nullptr, nullptr, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "query cannot be NULL.");
    EXPECT_FAILS(qbobj_getLog(qbdb, db, nullptr, nullptr, nullptr, &query, &err), QBOBJ_ERROR_API_ARGS,
                 "Log cannot be NULL.");
}

TEST_F(Log, TrimmingKeepsTheSecondOfTheCut)
{
    for (const auto &[keep, left] : {std::pair{7, "1 2 3 4 5 6 7 8"},
                                     {6, "2 3 4 5 6 7 8"},
                                     {4, "3 4 5 6 7 8"},
                                     {3, "5 6 7 8"},
                                     {0, "7 8"},
                                     {100, "1 2 3 4 5 6 7 8"}}) {
        sql("DELETE FROM `$log`; DELETE FROM sqlite_sequence WHERE name='$log'");
        fill(8);
        sql("UPDATE `$log` SET tstamp=1004 WHERE id=3; UPDATE `$log` SET tstamp=1008 WHERE id=7");
        EXPECT_OK(qbobj_truncateLog(qbdb, db, keep, &err));
        EXPECT_EQ(left, ids()) << keep;
    }
}

} // namespace
