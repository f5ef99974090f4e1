// Copies of tables: what is found to be changed, and what the copies hold.
#include "platform.h"

#include <algorithm>
#include <random>

using namespace platform_test;

namespace
{

class Copies : public Platform
{
  protected:
    int duplicate()
    {
        return qbdb_sql_duplicate_tables(session->qbdb, session->db, "old_", tables, &session->error, unit,
                                         1);
    }
    int drop()
    {
        return qbdb_sql_delete_tables(session->qbdb, session->db, "old_", tables, &session->error, unit, 1);
    }
    Row changed()
    {
        const char **names = nullptr;
        EXPECT_EQ(0, qbdb_sql_compare_tables(session->qbdb, session->db, "old_", tables, &names,
                                             &session->error, unit, 1));
        int any = -1;
        EXPECT_EQ(0, qbdb_sql_compare_tables2(session->qbdb, session->db, "old_", tables, &any,
                                              &session->error, unit, 1));
        Row result;
        while (names && *names)
            result.emplace_back(*names++);
        EXPECT_EQ(result.empty() ? 0 : 1, any);
        return result;
    }
    int row_changed(const char *table, const char *copy, const char *where)
    {
        int result = -1;
        EXPECT_EQ(0, qbdb_sql_compare_table_row(session->qbdb, session->db, table, copy, where, &result,
                                                nullptr, unit, 1));
        return result;
    }
    std::string copies_made() { return session->one("SELECT count(*) FROM sqlite_temp_schema"); }

    const char *const *tables = two_tables;
    static constexpr const char *two_tables[] = {"t", "u", nullptr};
};

TEST_F(Copies, CountEqualRowsAndTreatNullsAsEqual)
{
    session->exec("INSERT INTO t VALUES(1,NULL,'x'),(1,NULL,'x'),(2,NULL,NULL)");
    // In a transaction the changes are counted, outside rows are copied; the answers are the same.
    for (const bool counted : {false, true}) {
        ASSERT_EQ(0, counted ? session->begin() : 0);
        ASSERT_EQ(0, duplicate());
        EXPECT_EQ(Row{}, changed());
        session->exec("DELETE FROM t WHERE rowid=(SELECT min(rowid) FROM t WHERE a=1)");
        EXPECT_EQ(Row{"t"}, changed()) << "one of two equal rows went";
        session->exec("INSERT INTO t VALUES(1,NULL,'x')");
        EXPECT_EQ(Row{}, changed()) << "an equal row came";
        session->exec("UPDATE t SET c='X' WHERE a=1");
        EXPECT_EQ(Row{"t"}, changed());
        session->exec("UPDATE t SET c='x' WHERE a=1");
        session->exec("INSERT INTO u VALUES(NULL,'n')");
        EXPECT_EQ(Row{"u"}, changed());
        session->exec("DELETE FROM u");
        EXPECT_EQ(Row{}, changed());
        EXPECT_EQ(0, drop());
        EXPECT_EQ("0", copies_made());
        EXPECT_EQ(0, drop()) << "a copy that is not there is no error";
    }
    session->commit();
}

TEST_F(Copies, CompareSelectedRowsToTheCaseOfTheirTexts)
{
    session->exec("CREATE TABLE names(id INTEGER, name TEXT COLLATE NOCASE)");
    session->exec("INSERT INTO names VALUES(1,'one'),(2,'two')");
    const auto copy = [&] {
        return qbdb_sql_duplicate_table(session->qbdb, session->db, "names", "before", nullptr, unit, 1);
    };
    // In a transaction the changes are counted, outside rows are copied.
    for (const bool counted : {false, true}) {
        ASSERT_EQ(0, counted ? session->begin() : 0);
        session->exec("UPDATE names SET name='two' WHERE id=2");
        ASSERT_EQ(0, copy());
        session->exec("UPDATE names SET name='TWO' WHERE id=2");
        EXPECT_EQ(0, row_changed("names", "before", "id=1"));
        EXPECT_EQ(1, row_changed("names", "before", "id=2"));
        ASSERT_EQ(0, copy());
        EXPECT_EQ(0, row_changed("names", "before", "id=2")) << "a copy that exists is replaced";
    }
    session->rollback();
}

TEST_F(Copies, AreReadableUnderTheirNamesAlsoAfterTheCommit)
{
    session->exec("INSERT INTO `$disk_info` (id,present,pool_state) VALUES('sda',1,2),('sdb',1,NULL)");
    const char *const disks[] = {"$disk_info", nullptr};
    tables = disks;
    for (int round = 0; round < 2; round++) { // the second time the statement is a kept one
        ASSERT_EQ(0, session->begin());
        ASSERT_EQ(0, duplicate());
        session->exec("DELETE FROM `$disk_info` WHERE id='sdb'");
        session->exec("INSERT INTO `$disk_info` (id,present) VALUES('sdc',1)");
        EXPECT_EQ(
            (Rows{{"sda", "2"}, {"sdb", "<null>"}}),
            session->ask("SELECT id,pool_state FROM %s$disk_info WHERE present=%d ORDER BY id", "old_", 1));
        EXPECT_EQ(Row{"$disk_info"}, changed()) << "also after the copy was made real";
        EXPECT_EQ(0, drop());
        session->rollback();
    }
    ASSERT_EQ(0, session->begin());
    ASSERT_EQ(0, duplicate());
    session->exec("DELETE FROM `$disk_info`");
    EXPECT_EQ("0", copies_made());
    ASSERT_EQ(0, session->commit());
    EXPECT_EQ("2", session->one("SELECT count(*) FROM old_$disk_info"));
}

TEST_F(Copies, CostNothingForTheRowsThatStay)
{
    session->exec("INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
                  "i<100000) SELECT i,i,'row '||i FROM n");
    ASSERT_EQ(0, session->begin());
    session->ask("SELECT 1");
    const sqlite3_int64 before = sqlite3_memory_used();
    ASSERT_EQ(0, duplicate());
    session->exec("UPDATE t SET b=-1 WHERE a=%d", 5);
    EXPECT_EQ(Row{"t"}, changed());
    EXPECT_LT(sqlite3_memory_used() - before, 200000);
    EXPECT_EQ("0", copies_made());
    session->rollback();
}

TEST_F(Copies, ForgetTheChangesOfAFailedStatement)
{
    session->exec("INSERT INTO u VALUES(1,'a'),(2,'b'),(3,'c')");
    ASSERT_EQ(0, session->begin());
    ASSERT_EQ(0, duplicate());
    EXPECT_EQ(SQLITE_CONSTRAINT, session->exec("UPDATE u SET name='z'||(id=3)"));
    EXPECT_EQ(SQLITE_CONSTRAINT, session->exec("INSERT INTO u VALUES(9,'n'),(1,'m')"));
    EXPECT_EQ(Row{}, changed());
    session->rollback();
    ASSERT_EQ(0, session->begin());
    EXPECT_EQ(SQLITE_ERROR, session->exec("SELECT * FROM old_u")) << "a rollback drops the copies";
    session->rollback();
}

// Whatever is done to a table, its copy is what it was, to the types.
TEST_F(Copies, HoldWhatStoodBeforeRandomChanges)
{
    session->exec("CREATE TABLE w(k TEXT PRIMARY KEY, v, r REAL) WITHOUT ROWID");
    session->exec("CREATE TABLE f(id INTEGER PRIMARY KEY, r REAL, p TEXT REFERENCES w(k) ON DELETE CASCADE "
                  "ON UPDATE CASCADE, n INTEGER UNIQUE)");
    static const char *const list[] = {"t", "u", "w", "f", nullptr};
    tables = list;
    std::mt19937 random(20261121);
    const auto content = [&](const std::string &name, const char *columns) {
        Rows rows = session->ask("SELECT %s FROM %s", columns, name.c_str());
        std::sort(rows.begin(), rows.end());
        return rows;
    };
    constexpr std::pair<const char *, const char *> tables_and_columns[] = {
        {"t", "quote(a),quote(b),quote(c)"},
        {"u", "quote(id),quote(name)"},
        {"w", "quote(k),quote(v),quote(r)"},
        {"f", "quote(id),quote(r),quote(p),quote(n)"}};
    constexpr const char *changes[] = {
        "INSERT INTO t VALUES(%d,%d,'x')",
        "INSERT INTO t VALUES(%d+0.5,NULL,X'00%02d')",
        "DELETE FROM t WHERE a<%d AND b>%d",
        "UPDATE t SET b=%d WHERE a>%d",
        "DELETE FROM t WHERE 0<%d-18 OR a=%d",
        "INSERT OR REPLACE INTO u VALUES(%d,'n'||%d)",
        "INSERT OR IGNORE INTO u VALUES(%d,'n'||%d)",
        "UPDATE OR REPLACE u SET id=%d WHERE id=%d",
        "INSERT INTO u VALUES(%d,'n'||%d) ON CONFLICT(id) DO UPDATE SET name='c'||excluded.name",
        "UPDATE u SET id=id+%d WHERE id>%d",
        "REPLACE INTO w VALUES('k'||%d,%d,3)",
        "DELETE FROM w WHERE k='k'||%d AND %d",
        "UPDATE w SET k=k||%d,r=%d WHERE v<9",
        "REPLACE INTO f VALUES(%d,4,NULL,%d)",
        "INSERT INTO f SELECT NULL,%d,k,%d FROM w LIMIT 1",
        "UPDATE f SET r=r+1,n=n+%d WHERE id<%d",
        "DELETE FROM f"};
    for (int round = 0; round < 60; round++) {
        ASSERT_EQ(0, session->begin());
        ASSERT_EQ(0, duplicate());
        std::vector<Rows> before;
        for (const auto &[name, columns] : tables_and_columns)
            before.push_back(content(name, columns));
        for (unsigned i = 0; i < 1 + random() % 12; i++)
            session->exec(changes[random() % std::size(changes)], static_cast<int>(random() % 20),
                          static_cast<int>(random() % 20));
        const Row found = changed();
        for (std::size_t i = 0; i < before.size(); i++) {
            const auto &[name, columns] = tables_and_columns[i];
            EXPECT_EQ(before[i] != content(name, columns), std::count(found.begin(), found.end(), name) == 1)
                << name;
            EXPECT_EQ(before[i], content(std::string("old_") + name, columns))
                << name << " in round " << round;
        }
        ASSERT_EQ(0, drop());
        ASSERT_EQ(0, session->commit());
    }
}

} // namespace
