// Files that are damaged, and files whose schema or rows are not what the library wrote: each is refused with a text, or
// used. Every trial is a process, since a crash, a sanitizer's finding or a call without end ends it.
#include "processes.h"
#include "scenarios.h"
#include "trials.h"
#include "json/json_writer.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <utility>

using namespace qbobj_test;

namespace
{

constexpr std::size_t page = 4096;

struct Image {
    std::string file;
    std::string log;
};

// An office with many objects, closed: as one file, and as one whose second half stands in the log.
class Damaged : public ::testing::Test
{
  protected:
    Damaged()
    {
        furnish(office);
        office.sql("PRAGMA wal_checkpoint(TRUNCATE)");
        crowd(office, 100);
        with_log = {read_file(office.file()), read_file(beside("-wal"))};
        qbdb_close(std::exchange(office.qbdb, nullptr));
        whole = {read_file(office.file()), ""};
    }

    std::string beside(const char *suffix) const { return office.file().string() + suffix; }

    // A process puts the image in the file's place, does to it what `change` does, and uses it in time.
    void run(const Image &image, Trials &trials, const std::function<void()> &change, std::size_t calls)
    {
        std::filesystem::remove(beside("-shm"));
        std::filesystem::resize_file(office.file().parent_path() / "log", 0);
        std::ofstream(office.file(), std::ios::binary) << image.file;
        std::ofstream(beside("-wal"), std::ios::binary) << image.log;
        const pid_t process = start_process([&] {
            alarm(30);
            change();
            use(trials, calls);
            return HasFailure() ? 1 : 0;
        });
        ASSERT_EQ(0, wait_for(process)) << "a signal: -1, and 14 is the deadline's";
    }

    // Opens the file and makes some of all calls, in any order.
    void use(Trials &trials, std::size_t calls)
    {
        try {
            office.reopen(trials.one_in(4) ? QBDB_LOG_ALL : QBDB_LOG_ERROR, trials.one_in(8));
        } catch (const std::runtime_error &refusal) {
            EXPECT_NE(nullptr, std::strstr(refusal.what(), office.file().c_str())) << refusal.what();
            return;
        }
        sqlite3_exec(office.db, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr); // no power is cut here
        std::vector<Scenario> order = scenarios();
        std::ranges::shuffle(order, trials.random());
        order.resize(std::min(calls, order.size()));
        for (const Scenario &scenario : order) {
            const qbobj_json::Outcome outcome = call(office, scenario.operation, scenario.input);
            EXPECT_TRUE(outcome.error.ec == QBOBJ_ERROR_OK || std::strlen(outcome.error.msg) > 0);
            EXPECT_TRUE(
                qbobj_json::Json::accept(json_text(outcome.output, qbobj_json::Layout::one_line, {})));
            qbdb_clear_pool(office.qbdb);
        }
        qbdb_close(office.qbdb);
    }

    Appliance office;
    Image whole, with_log;
};

/* ---- Bytes --------------------------------------------------------------------------------------------- */

void damage(std::string &bytes, Trials &trials)
{
    const auto any_page = [&] {
        return bytes.begin() + static_cast<std::ptrdiff_t>(trials.below(bytes.size() / page) * page);
    };
    for (std::size_t many = 1 + trials.below(8); many > 0; --many) {
        const std::size_t at = trials.below(bytes.size());
        const auto from = any_page();
        switch (trials.below(5)) {
        case 0:
            bytes[at] ^= static_cast<char>(1 << trials.below(8));
            break;
        case 1:
            std::generate_n(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                            std::min(1 + trials.below(200), bytes.size() - at),
                            [&] { return static_cast<char>(trials.below(256)); });
            break;
        case 2:
            std::swap_ranges(from, from + page, any_page());
            break;
        case 3:
            std::copy_n(from, page, any_page());
            break;
        default:
            std::fill_n(from, page, '\0');
        }
    }
    if (trials.one_in(8))
        bytes.resize(trials.below(bytes.size()));
}

TEST_F(Damaged, FilesAreRefusedOrUsed)
{
    for (Trials trials("damaged", 1200); trials.next();) {
        Image image = trials.one_in(3) ? with_log : whole;
        damage(!image.log.empty() && trials.one_in(2) ? image.log : image.file, trials);
        run(
            image, trials, [] {}, 40);
    }
}

/* ---- Schemas and rows ---------------------------------------------------------------------------------- */

const std::string twin = "CREATE TABLE twin AS SELECT * FROM [{table}]; DROP TABLE [{table}];"
                         "ALTER TABLE twin RENAME TO [{table}];";
const std::string instead =
    "CREATE TABLE [was {table}] AS SELECT * FROM [{table}]; DROP TABLE [{table}]; CREATE ";
const std::string from_it = "SELECT was.* FROM [was {table}] was";
const std::string endless = "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT * FROM n)";
const std::string trigger = "CREATE TRIGGER [on {table}] AFTER ";
const std::string body = " ON [{table}] BEGIN ";
const std::string schema = "UPDATE sqlite_schema SET ";
const std::string its = " WHERE name='{table}'";
const std::string largest_root = "rootpage=(SELECT max(rootpage) FROM sqlite_schema)";

// {table} is any table, {column} one of its columns, {columns} all of them.
const std::vector<std::string> lies{
    "DROP TABLE [{table}]",
    "DELETE FROM [{table}]",
    twin + "INSERT INTO [{table}] SELECT * FROM [{table}]",
    instead + "VIEW [{table}] AS " + from_it,
    instead + "VIEW [{table}] AS " + from_it + "," + endless,
    instead + "VIEW [{table}] AS SELECT * FROM [{table}]",
    instead + "VIRTUAL TABLE [{table}] USING fts5({columns}); INSERT INTO [{table}] " + from_it,
    instead + "VIRTUAL TABLE [{table}] USING rtree({columns})",
    instead + "TABLE [{table}] ({columns},PRIMARY KEY({column})) WITHOUT ROWID",
    trigger + "INSERT" + body + "DELETE FROM [{table}]; END",
    trigger + "UPDATE" + body + "SELECT RAISE(ROLLBACK,'no'); END",
    trigger + "UPDATE" + body + "UPDATE [{table}] SET {column}={column}; END",
    trigger + "DELETE" + body + "SELECT count(*) FROM " + endless + "; END",
    schema + "sql=replace(sql,'BEGIN','BEGIN SELECT count(*) FROM " + endless + ";') WHERE type='trigger'",
    "ALTER TABLE [{table}] DROP COLUMN {column}",
    "ALTER TABLE [{table}] RENAME COLUMN {column} TO lie",
    "ALTER TABLE [{table}] DROP COLUMN {column}; ALTER TABLE [{table}] ADD COLUMN {column} AS (zeroblob(9))",
    schema + "sql=substr(sql,1,length(sql)-1)||',CHECK({column} IS 7))'" + its,
    schema + "sql=sql||' WITHOUT ROWID'" + its,
    schema + "sql=replace(sql,' TEXT',' TEXT COLLATE absent')" + its,
    schema + "sql=replace(sql,' INTEGER',' INTEGER DEFAULT (absent(1))')" + its,
    schema + largest_root + its,
    schema + largest_root + " WHERE tbl_name='{table}' AND type='index'",
    schema + "type='view'" + its,
    schema + "sql='CREATE TABLE x('" + its,
    "DELETE FROM sqlite_schema WHERE tbl_name='{table}' AND type='index'",
    "DELETE FROM sqlite_schema WHERE name='sqlite_sequence'"};

// What stands in every column of a table, as far as its constraints let it, and in those of one without constraints.
const std::vector<std::string> values{
    "NULL",
    "''",
    "'text'",
    "X'00ff00'",
    "9223372036854775807",
    "-9223372036854775808",
    "4294967296",
    "-1",
    "0.5",
    "-1e999",
    "'0x7fffffffffffffffff'",
    "'a'||char(0)||'b'",
    "CAST(X'fffec328' AS TEXT)",
    "char(10,27,127)",
    "replace(hex(zeroblob(CASE rowid WHEN 1 THEN 524288 ELSE 5 END)),'0','x')"};

void replace_all(std::string &text, const std::string &word, const std::string &by)
{
    for (std::size_t at; (at = text.find(word)) != std::string::npos;)
        text.replace(at, word.size(), by);
}

// Tells one lie of some tables. Not every table lends itself to every lie.
void lie(Appliance &office, Trials &trials)
{
    ASSERT_EQ(SQLITE_OK, sqlite3_open(office.file().c_str(), &office.db));
    office.sql("PRAGMA writable_schema=ON; PRAGMA legacy_alter_table=ON; PRAGMA synchronous=OFF");
    const std::size_t number = trials.seed() % (lies.size() + 2 * values.size());
    const bool of_values = number >= lies.size();
    const std::size_t value = of_values ? (number - lies.size()) / 2 : 0;
    std::size_t many = 1 + trials.below(8);
    for (int attempts = 0; many > 0 && attempts < 1000; ++attempts) {
        const auto tables = office.rows(
            "SELECT name FROM sqlite_schema WHERE type='table' AND rootpage>0 AND name NOT LIKE 'sqlite%'");
        const std::string &table = tables[trials.below(tables.size())];
        const std::string columns =
            " FROM (SELECT '`'||name||'`' name FROM pragma_table_info('" + table + "'))";
        const auto names = office.rows("SELECT name" + columns);
        std::string sql = of_values
                              ? (number % 2 == 0 ? twin : "") + "UPDATE OR IGNORE [{table}] SET {values}"
                              : lies[number];
        replace_all(sql, "{values}", office.value("SELECT group_concat(name||'={value}')" + columns));
        replace_all(sql, "{value}", values[value]);
        replace_all(sql, "{columns}", office.value("SELECT group_concat(name)" + columns));
        replace_all(sql, "{column}", names[trials.below(names.size())]);
        replace_all(sql, "{table}", table);
        const bool told = sqlite3_exec(office.db, ("BEGIN;" + sql + ";COMMIT").c_str(), nullptr, nullptr,
                                       nullptr) == SQLITE_OK;
        if (told)
            --many;
        else
            sqlite3_exec(office.db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(0U, many) << "lie " << number;
    sqlite3_close(office.db);
}

TEST_F(Damaged, SchemasAndRowsThatLieAreRefusedOrUsed)
{
    const std::size_t all = lies.size() + 2 * values.size();
    for (Trials trials("lying schema", static_cast<int>(2 * all)); trials.next();)
        run(
            whole, trials, [&] { lie(office, trials); }, scenarios().size());
}

} // namespace
