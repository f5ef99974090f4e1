// Formats, statements, their results and errors, and which statements are kept.
#include "platform.h"

#include <apr_pools.h>
#include <climits>
#include <cstring>

using namespace platform_test;

namespace
{

using Statements = Platform;

TEST_F(Statements, BindValuesWithTheirTypes)
{
    const Rows expected_numbers = {
        {"integer", "-5", "integer", "4000000000", "integer", "-9223372036854775808"}};
    EXPECT_EQ(expected_numbers, session->ask("SELECT typeof(%d),%i,typeof(%u),%lu,typeof(%ld),%lld", -5, -5,
                                             4000000000u, 4000000000ul, LONG_MIN, LLONG_MIN));
    // No integer holds it; the literal would be a real number too.
    EXPECT_EQ((Rows{{"real", "9223372036854775807"}}),
              session->ask("SELECT typeof(%llu),%llu", ULLONG_MAX, 9223372036854775807ull));
    EXPECT_EQ((Rows{{"real", "0.25"}}), session->ask("SELECT typeof(%f),%g", 1.0, 0.25));
    EXPECT_EQ((Rows{{"text", "", "null", "<null>"}}),
              session->ask("SELECT typeof(%Q),%Q,typeof(%Q),%Q", "x", "", static_cast<char *>(nullptr),
                           static_cast<char *>(nullptr)));
}

TEST_F(Statements, SpliceInsideQuotesAndBareTexts)
{
    EXPECT_EQ((Rows{{"7", "it's", "a'b%", "x"}}),
              session->ask("SELECT '%d','%q','a''b%%',%s", 7, "it's", "'x'"));
    EXPECT_EQ("it's", session->one("SELECT \"we\"\"ird\" FROM (SELECT 'it''s' AS \"%w\")", "we\"ird"));
    EXPECT_EQ("3", session->one("SELECT [a%d] FROM (SELECT 3 AS `a%d`)", 1, 1));
    EXPECT_EQ("4", session->one("SELECT a%d FROM (SELECT 4 AS a%d)", 12, 12))
        << "a number can be part of a name";
    EXPECT_EQ("1", session->one("SELECT %d%%%d", 7, 3)) << "the remainder of two values";
    EXPECT_EQ("5", session->one("SELECT /* it's %d */ %d -- don't", 1, 5));
    EXPECT_EQ("007", session->one("SELECT '%03d'", 7));
    EXPECT_EQ("2", session->one("SELECT count(*) FROM (%s) WHERE x<>%d",
                                "SELECT 1 x UNION SELECT 2 UNION SELECT 3", 2));
}

// Values behind an equals sign in a spliced text are bound, whatever they hold.
TEST_F(Statements, BindTheValuesOfSplicedTexts)
{
    const std::tuple<const char *, const char *> cases[] = {
        {"x='it''s =5', y=-7", "3|it's =5|-7|4"}, {"x='', y=9223372036854775807", "3||9223372036854775807|4"},
        {"x=NULL, y=1.5", "3|NULL|1.5|4"},        {"x=x'41', y=(2=2)", "3|A|1|4"},
        {"x='a'||'=9', y=12e1", "3|a=9|120.0|4"}, {"y=0x10, x=\"a=1\"", "3|10|16|4"},
    };
    session->exec("CREATE TABLE spliced (a, x, y, z, \"a=1\" DEFAULT 10)");
    for (const auto &[set, expected] : cases) {
        session->exec("DELETE FROM spliced");
        session->exec("INSERT INTO spliced (a) VALUES(2)");
        ASSERT_EQ(0, session->exec("UPDATE spliced SET a=%d,%s,z=%d WHERE a=%d", 3, set, 4, 2)) << set;
        EXPECT_EQ(expected, session->one("SELECT a||'|'||IFNULL(x,'NULL')||'|'||y||'|'||z FROM spliced"))
            << set;
    }
    EXPECT_EQ("10", session->one("SELECT `%s` FROM spliced", "a=1")) << "no value inside quotes";
}

TEST_F(Statements, RefuseUnsupportedConversions)
{
    for (const char *format :
         {"SELECT %x", "SELECT %", "SELECT '%c'", "SELECT %*d", "SELECT %lls", "SELECT %llld"}) {
        EXPECT_EQ(SQLITE_MISUSE, session->exec(format, 1)) << format;
        EXPECT_NE(nullptr, std::strstr(session->error, "unsupported conversion \"%")) << session->error;
    }
}

TEST_F(Statements, TakeHostileTextsAsData)
{
    const std::string quotes(4096, '\'');
    for (const std::string text : {"'", "''; DROP TABLE t; --", "\"`[]", "%s%n%Q", "\xc3\xa4\xe2\x97\x8f",
                                   "?1", ":x", "\\", "/*", "-- ", quotes.c_str(), "\x01\x7f\xff\xfe"}) {
        EXPECT_EQ(text, session->one("SELECT %Q", text.c_str()));
        EXPECT_EQ(text, session->one("SELECT '%q'", text.c_str()));
        EXPECT_EQ(text, session->one("SELECT name FROM (SELECT %Q AS name) WHERE name='%q'", text.c_str(),
                                     text.c_str()));
    }
    EXPECT_EQ("0", session->one("SELECT count(*) FROM t"));
}

TEST_F(Statements, RunExactlyOne)
{
    session->exec("INSERT INTO t VALUES(1,2,3)");
    for (const char *text : {"DELETE FROM t; DELETE FROM u", "DELETE FROM t;;x",
                             "DELETE FROM t; /* */ SELECT 1", "", " -- only a comment"}) {
        EXPECT_EQ(SQLITE_MISUSE, session->exec(text)) << text;
        EXPECT_EQ(SQLITE_MISUSE, session->exec("%s", text)) << text;
        EXPECT_NE(nullptr, session->error);
    }
    EXPECT_EQ("1", session->one("SELECT count(*) FROM t"));
    EXPECT_EQ(0, session->exec("DELETE FROM t ; ; -- ; x\n /* y */ ")) << session->error;
    EXPECT_EQ("0", session->one("SELECT count(*) FROM t"));
}

TEST_F(Statements, ShapeTablesAsSqliteDoes)
{
    session->exec("INSERT INTO t VALUES(NULL,'',X'4142'),('\xc3\xa4',1.5,-1)");
    char **table = nullptr;
    int rows = 7;
    int columns = 7;
    const auto get = [&](int after) {
        return qbdb_sql_get_table_mprintf(session->qbdb, session->db, &table, &rows, &columns,
                                          &session->error, unit, 1,
                                          "SELECT a,b AS second,c FROM t WHERE rowid>%d", after);
    };
    EXPECT_EQ(0, get(2));
    EXPECT_EQ(std::pair(0, 0), std::pair(rows, columns)) << "an empty result has not even columns";
    EXPECT_EQ(nullptr, session->error);
    sqlite3_free_table(table);
    const sqlite3_int64 before = sqlite3_memory_used();
    ASSERT_EQ(0, get(0));
    EXPECT_EQ(std::pair(2, 3), std::pair(rows, columns));
    const char *const cells[] = {"a", "second", "c", nullptr, "", "AB", "\xc3\xa4", "1.5", "-1"};
    for (std::size_t i = 0; i < std::size(cells); i++)
        EXPECT_STREQ(cells[i], table[i]);
    const sqlite3_int64 held = sqlite3_memory_used();
    sqlite3_free_table(table);
    EXPECT_LT(sqlite3_memory_used(), held) << "releasing the table frees its one block";
    EXPECT_LT(sqlite3_memory_used() - before, 100000);
}

TEST_F(Statements, ShowTheirRowsOneByOne)
{
    struct Seen {
        std::string text;
        int wanted;
    };
    const auto note = [](void *context, int columns, const char *const *cells) {
        auto &seen = *static_cast<Seen *>(context);
        for (int i = 0; i < columns; i++)
            seen.text += std::string(cells[i] == nullptr ? "NULL" : cells[i]) + (i + 1 < columns ? "|" : " ");
        return --seen.wanted == 0 ? 1 : 0;
    };
    const auto visit = [&](Seen &seen, const char *format, int argument) {
        return qbdb_sql_visit_mprintf(session->qbdb, session->db, note, &seen, nullptr, unit, 1, format,
                                      argument);
    };
    const char *const rows =
        "SELECT value,'a',NULL,1.5,-9223372036854775807 FROM json_each('[1,2,3]') WHERE value>%d";
    for (const auto &[wanted, text] : {std::pair{-1, "2|a|NULL|1.5|-9223372036854775807 "
                                                     "3|a|NULL|1.5|-9223372036854775807 "},
                                       {1, "2|a|NULL|1.5|-9223372036854775807 "}}) {
        Seen seen{"", wanted};
        EXPECT_EQ(0, visit(seen, rows, 1));
        EXPECT_EQ(text, seen.text);
    }
    Seen nothing{"", -1};
    EXPECT_EQ(0, visit(nothing, rows, 3));
    EXPECT_EQ(SQLITE_ERROR, visit(nothing, "SELECT %d FROM missing", 1));
    EXPECT_EQ("", nothing.text);
}

TEST_F(Statements, ReadSingleValues)
{
    session->exec("INSERT INTO t VALUES(42,'text',NULL)");
    const std::tuple<const char *, const char *, int, int, const char *> cases[] = {{"a", "1", 42, 1, "42"},
                                                                                    {"b", "1", 0, 1, "text"},
                                                                                    {"c", "1", 0, 1, nullptr},
                                                                                    {"a", "0", 0, 0, nullptr},
                                                                                    {"''", "1", 0, 1, ""}};
    for (const auto &[column, where, expected_number, expected_found, expected_text] : cases) {
        int32_t number = 99;
        char *text = session->error;
        int found = 99;
        EXPECT_EQ(0, qbdb_sql_get_int32_mprintf(session->qbdb, session->db, &number, &found, nullptr, unit, 1,
                                                "SELECT %s FROM t WHERE %s", column, where));
        EXPECT_EQ(expected_number, number) << column;
        EXPECT_EQ(expected_found, found) << column;
        EXPECT_EQ(0, qbdb_sql_get_scaler_mprintf(session->qbdb, session->db, &text, &found, nullptr, unit, 1,
                                                 "SELECT %s FROM t WHERE %s", column, where));
        EXPECT_STREQ(expected_text, text) << column;
        EXPECT_EQ(expected_found, found) << column;
    }
}

TEST_F(Statements, ReportFailuresWithTheCallerButWithoutValues)
{
    session->exec("INSERT INTO u VALUES(1,'x')");
    EXPECT_EQ(nullptr, session->error);
    EXPECT_EQ(SQLITE_CONSTRAINT,
              qbdb_sql_exec_mprintf(session->qbdb, session->db, &session->error, "the_unit", 321,
                                    "INSERT INTO u VALUES(1,%Q)", "secret"));
    EXPECT_STREQ("UNIQUE constraint failed: u.id", session->error);
    EXPECT_EQ(SQLITE_ERROR, session->exec("SELECT '%q' FROM nowhere", "secret"));
    EXPECT_STREQ("no such table: nowhere", session->error);
    const std::string text = log();
    EXPECT_NE(std::string::npos, text.find(" ERROR the_unit:321 UNIQUE constraint failed: u.id")) << text;
    EXPECT_NE(std::string::npos, text.find("INSERT INTO u VALUES(1,%Q)")) << text;
    EXPECT_EQ(std::string::npos, text.find("secret")) << text;
}

TEST_F(Statements, AreKeptUpToABoundAndFollowTheSchema)
{
    session->ask("SELECT a FROM t WHERE b=%d", 1);
    const int kept = session->statements();
    session->ask("SELECT a FROM t WHERE b=%d", 2);
    EXPECT_EQ(kept, session->statements()) << "the same format is the same statement";
    for (int i = 0; i < 1000; i++)
        session->ask("SELECT a FROM t WHERE b='%d'", i);
    EXPECT_EQ(kept, session->statements()) << "texts with values in quotes are not kept";
    for (int i = 0; i < 2000; i++) {
        session->ask("SELECT %s FROM t", ("a+" + std::to_string(i)).c_str());
        session->ask(("SELECT a FROM t WHERE c=" + std::to_string(i)).c_str());
    }
    EXPECT_LT(session->statements(), 400);

    session->exec("INSERT INTO t VALUES(1,2,3)");
    EXPECT_EQ(3u, session->ask("SELECT * FROM t WHERE a=%d", 1)[0].size());
    session->exec("ALTER TABLE t ADD COLUMN d");
    EXPECT_EQ(4u, session->ask("SELECT * FROM t WHERE a=%d", 1)[0].size());
}

TEST_F(Statements, LeaveNothingOnAConnectionOfTheCaller)
{
    sqlite3 *own = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(file.c_str(), &own));
    qbdb_handle_t *const qbdb = session->qbdb;
    const char *const tables[] = {"t", nullptr};
    int32_t number = 0;
    int changed = -1;
    EXPECT_EQ(0, qbdb_sql_begin(qbdb, own, nullptr, unit, 1));
    EXPECT_EQ(0, qbdb_sql_duplicate_tables(qbdb, own, "copy_", tables, nullptr, unit, 1));
    EXPECT_EQ(0, qbdb_sql_exec_mprintf(qbdb, own, nullptr, unit, 1, "INSERT INTO t VALUES(%d,%Q,'%q')", 1,
                                       "b", "c"));
    EXPECT_EQ(0, qbdb_sql_compare_tables2(qbdb, own, "copy_", tables, &changed, nullptr, unit, 1));
    EXPECT_EQ(1, changed);
    EXPECT_EQ(0, qbdb_sql_get_int32_mprintf(qbdb, own, &number, nullptr, nullptr, unit, 1, "SELECT %s FROM t",
                                            "a"));
    EXPECT_EQ(1, number);
    EXPECT_EQ(1, qbdb_sql_exec_mprintf(qbdb, own, nullptr, unit, 1, "SELECT nothing"));
    EXPECT_EQ(0, qbdb_sql_commit(qbdb, own, nullptr, unit, 1));
    EXPECT_EQ(SQLITE_OK, sqlite3_close(own));
    EXPECT_EQ((Rows{{"1", "b", "c"}}), session->ask("SELECT * FROM t"));
}

} // namespace
