// Files that are damaged, and files whose schema or rows are not what the library wrote: each is refused with a text, or
// used. Every trial is a process, since a crash, a sanitizer's finding or a call without end ends it.
#include "processes.h"
#include "scenarios.h"
#include "trials.h"
#include "json/json_writer.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <utility>

using namespace qbobj_test;
using qbobj_json::Json;

namespace
{

using Image = std::pair<std::string, std::string>; // the file and its log

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
    void run(const Image &image, Trials &trials, std::size_t calls, const std::function<void()> &change)
    {
        std::filesystem::remove(beside("-shm"));
        std::filesystem::resize_file(office.file().parent_path() / "log", 0);
        std::ofstream(office.file(), std::ios::binary) << image.first;
        std::ofstream(beside("-wal"), std::ios::binary) << image.second;
        const pid_t process = start_process([&] {
            constexpr rlimit of_its_own{60, 60}; // seconds: others may load the machine
            setrlimit(RLIMIT_CPU, &of_its_own);
            change();
            use(trials, calls);
            return HasFailure() ? 1 : 0;
        });
        ASSERT_EQ(0, wait_for(process));
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
            EXPECT_TRUE(Json::accept(json_text(outcome.output, qbobj_json::Layout::one_line, {})));
            qbdb_clear_pool(office.qbdb);
        }
        qbdb_close(office.qbdb);
    }

    Appliance office;
    Image whole, with_log;
};

void damage(std::string &bytes, Trials &trials)
{
    for (std::size_t many = 1 + trials.below(8); many > 0; --many) {
        const std::size_t length = trials.one_in(2) ? 4096 : 1 + trials.below(200);
        const auto any_place = [&] {
            return bytes.begin() + static_cast<std::ptrdiff_t>(trials.below(bytes.size() / length) * length);
        };
        const auto at = any_place();
        const std::function<void()> faults[] = {
            [&] { *at = static_cast<char>(*at ^ 1 << trials.below(8)); },
            [&] { std::generate_n(at, length, [&] { return static_cast<char>(trials.below(256)); }); },
            [&] { std::swap_ranges(at, at + static_cast<std::ptrdiff_t>(length), any_place()); },
            [&] { std::copy_n(at, length, any_place()); }, [&] { std::fill_n(at, length, '\0'); }};
        faults[trials.below(std::size(faults))]();
    }
    if (trials.one_in(8))
        bytes.resize(trials.below(bytes.size()));
}

TEST_F(Damaged, FilesAreRefusedOrUsed)
{
    for (Trials trials("damaged", 400); trials.next();) {
        Image image = trials.one_in(3) ? with_log : whole;
        damage(!image.second.empty() && trials.one_in(2) ? image.second : image.first, trials);
        run(image, trials, 40, [] {});
    }
}

const std::string twin = "CREATE TABLE twin AS SELECT * FROM [{table}]; DROP TABLE [{table}];"
                         "ALTER TABLE twin RENAME TO [{table}];";
const std::string instead =
    "CREATE TABLE [was {table}] AS SELECT * FROM [{table}]; DROP TABLE [{table}]; CREATE ";
const std::string endless = "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT * FROM n)";
const std::string schema = "UPDATE sqlite_schema SET ";
const std::string its = " WHERE name='{table}'";

// {table} is any table, {column} one of its columns, {columns} all of them.
const std::vector<std::string> lies{
    "DROP TABLE [{table}]",
    twin + "INSERT INTO [{table}] SELECT * FROM [{table}]",
    instead + "VIEW [{table}] AS SELECT was.* FROM [was {table}] was," + endless,
    instead + "VIRTUAL TABLE [{table}] USING fts5({columns})",
    "CREATE TRIGGER [on {table}] AFTER DELETE ON [{table}] BEGIN SELECT count(*) FROM " + endless + "; END",
    schema + "sql=replace(sql,'BEGIN','BEGIN SELECT count(*) FROM " + endless + ";') WHERE type='trigger'",
    "ALTER TABLE [{table}] DROP COLUMN {column}",
    "ALTER TABLE [{table}] RENAME COLUMN {column} TO lie",
    "ALTER TABLE [{table}] DROP COLUMN {column}; ALTER TABLE [{table}] ADD COLUMN {column} AS (zeroblob(9))",
    schema + "sql=substr(sql,1,length(sql)-1)||',CHECK({column} IS 7))'" + its,
    schema + "sql=sql||' WITHOUT ROWID'" + its,
    schema + "sql=replace(sql,' TEXT',' TEXT COLLATE absent')" + its,
    schema + "rootpage=(SELECT max(rootpage) FROM sqlite_schema) WHERE tbl_name='{table}'",
    "DELETE FROM sqlite_schema WHERE tbl_name='{table}' AND type='index'",
    "DELETE FROM sqlite_schema WHERE name='sqlite_sequence'"};

// What stands in a third of a table's columns, as far as its constraints let it, or in those of one that has none.
const std::vector<std::string> values = [] {
    std::istringstream words(
        "NULL '' 'text' X'00ff00' 9223372036854775807 -9223372036854775808 4294967296 -1 0.5 -1e999 "
        "'0x7fffffffffffffffff' 'a'||char(0)||'b' CAST(X'fffec328'AS[TEXT]) char(10,27,127) "
        "hex(zeroblob(9+(rowid=1)*524288))");
    return std::vector<std::string>{std::istream_iterator<std::string>(words), {}};
}();
const std::size_t all_lies = lies.size() + 2 * values.size();

// Tells one lie of some tables. Not every table lends itself to every lie.
void lie(Appliance &office, Trials &trials)
{
    ASSERT_EQ(SQLITE_OK, sqlite3_open(office.file().c_str(), &office.db));
    const auto tell = [&](const std::string &sql) {
        return sqlite3_exec(office.db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    ASSERT_TRUE(tell("PRAGMA writable_schema=ON; PRAGMA legacy_alter_table=ON; PRAGMA synchronous=OFF"));
    const std::size_t number = trials.seed() % all_lies;
    std::string lie = "UPDATE OR IGNORE [{table}] SET {values}";
    if (number % 2 == 0) // in few rows: equal keys everywhere would multiply
        lie = twin + lie + " WHERE rowid%50=1";
    if (number < lies.size())
        lie = lies[number];
    const std::string &value = values[number / 2 % values.size()];
    std::size_t many = number < lies.size() || value == values.back() ? 1 + trials.below(8) : 100;
    for (int attempts = 0; many > 0 && attempts < 1000; ++attempts) {
        const auto tables = office.rows(
            "SELECT name FROM sqlite_schema WHERE type='table' AND rootpage>0 AND name NOT LIKE 'sqlite%'");
        const std::string &table = tables[trials.below(tables.size())];
        const std::string columns = " FROM pragma_table_info('" + table + "')";
        const std::string some = " WHERE (cid+" + std::to_string(trials.below(3)) + ")%3=0";
        const auto names = office.rows("SELECT '`'||name||'`'" + columns);
        const std::pair<const char *, std::string> words[] = {
            {"{values}", office.value("SELECT group_concat('`'||name||'`={value}')" + columns + some)},
            {"{value}", value},
            {"{columns}", office.value("SELECT group_concat('`'||name||'`')" + columns)},
            {"{column}", names[trials.below(names.size())]},
            {"{table}", table}};
        std::string sql = lie;
        for (const auto &[word, by] : words)
            for (std::size_t at; (at = sql.find(word)) != std::string::npos;)
                sql.replace(at, std::strlen(word), by);
        many -= tell("BEGIN;" + sql + ";COMMIT") ? 1 : 0;
        tell("ROLLBACK"); // of what failed
    }
    EXPECT_EQ(0U, many) << "lie " << number;
    sqlite3_close(office.db);
}

TEST_F(Damaged, SchemasAndRowsThatLieAreRefusedOrUsed)
{
    for (Trials trials("lying schema", static_cast<int>(all_lies)); trials.next();)
        run(whole, trials, scenarios().size(), [&] { lie(office, trials); });
}

} // namespace
