// The prepared database and what tests ask of it.
#include "database.h"

#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace fs = std::filesystem;

void PrintTo(const qbobj_error_rec_t &err, std::ostream *out)
{
    *out << "error " << err.ec << " at " << (err.file ? err.file : "-") << ":" << err.lineno << ": "
         << (err.msg ? err.msg : "(no message)");
}

namespace qbobj_test
{
namespace
{

// The database that every test gets a copy of.
class Prepared
{
  public:
    Prepared()
    {
        std::array<char, 512> message{};
        fs::create_directories(folder_.path() / "root");
        if (qbdb_create(file().c_str(), message.data(), message.size()) != 0)
            throw std::runtime_error(message.data());
        qbdb_handle_t *qbdb = nullptr;
        sqlite3 *db = nullptr;
        const std::string root = folder_.path() / "root";
        qbdb_options_t options{};
        options.root = root.c_str();
        if (qbdb_open(file().c_str(), &options, &qbdb, &db, message.data(), message.size()) != 0)
            throw std::runtime_error(message.data());
        qbdb_register_volume(qbdb, db, "data", nullptr);
        qbdb_register_volume(qbdb, db, "backup", nullptr);
        sqlite3_exec(db,
                     "UPDATE _volume SET blk_size=1024,blk_total=20971520,blk_free=10485760;"
                     "UPDATE account_default SET home_volume_id='data';",
                     nullptr, nullptr, nullptr);
        sqlite3_wal_checkpoint_v2(db, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
        qbdb_close(qbdb);
    }
    fs::path file() const { return folder_.path() / "prepared.db"; }

  private:
    TemporaryFolder folder_;
};

} // namespace

Appliance::Appliance()
{
    static const Prepared prepared;
    fs::copy_file(prepared.file(), file());
    fs::create_directories(root());
    log_ = std::fopen((folder_.path() / "log").c_str(), "a");
    jnl_ = std::fopen((folder_.path() / "journal").c_str(), "a");
    open_options.relaxed_durability = 1;
    GTEST_FLAG_SET(death_test_style,
                   "threadsafe"); // begins anew: a child's calls on an inherited handle are refused
    reopen();
}

Appliance::~Appliance()
{
    qbdb_close(qbdb);
    std::fclose(log_);
    std::fclose(jnl_);
}

void Appliance::close()
{
    qbdb_close(qbdb);
    qbdb = nullptr;
}

void Appliance::reopen(qbdb_loglevel_t loglvl, bool readonly)
{
    close();
    std::array<char, 512> message{};
    const std::string root_path = root();
    qbdb_options_t whole = open_options;
    whole.root = root_path.c_str();
    whole.loglvl = loglvl;
    whole.log = log_;
    whole.jnl = jnl_;
    whole.readonly = readonly ? 1 : 0;
    if (qbdb_open(file().c_str(), &whole, &qbdb, &db, message.data(), message.size()) != 0)
        throw std::runtime_error(message.data());
}

void Appliance::sql(const std::string &text) const
{
    char *message = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(db, text.c_str(), nullptr, nullptr, &message))
        << text << ": " << message;
    sqlite3_free(message);
}

std::vector<std::string> Appliance::rows(const std::string &select) const
{
    std::vector<std::string> result;
    sqlite3_stmt *statement = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_prepare_v2(db, select.c_str(), -1, &statement, nullptr))
        << select << ": " << sqlite3_errmsg(db);
    while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
        std::string row;
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            row += (column == 0 ? "" : "|") + std::string(text == nullptr ? "NULL" : text);
        }
        result.push_back(row);
    }
    sqlite3_finalize(statement);
    return result;
}

std::string Appliance::value(const std::string &select) const
{
    const std::vector<std::string> all = rows(select);
    return all.empty() ? "" : all.front().substr(0, all.front().find('|'));
}

std::string Appliance::content() const
{
    std::string text;
    for (const std::string &table : rows("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name"))
        for (const std::string &row : rows("SELECT * FROM \"" + table + "\""))
            text += table + ": " + row + "\n";
    return text;
}

std::string Appliance::log() const
{
    std::fflush(log_);
    return read_file(folder_.path() / "log");
}

std::string Appliance::journal() const
{
    std::fflush(jnl_);
    return read_file(folder_.path() / "journal");
}

std::string dump(const char *type, void *record)
{
    char *text = nullptr;
    size_t size = 0;
    FILE *stream = open_memstream(&text, &size);
    qbobj_api2_dump_struct(stream, type, record);
    std::fclose(stream);
    std::string result(text, size);
    std::free(text);
    return result;
}

} // namespace qbobj_test
