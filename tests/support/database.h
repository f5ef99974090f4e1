// A database of its own for every test: a copy of one that is prepared once a program.
#pragma once

#include "temporary_folder.h"

#include <gtest/gtest.h>
#include <qbobj.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

// So that a failing comparison of an error record shows all of it.
void PrintTo(const qbobj_error_rec_t &err, std::ostream *out);

namespace qbobj_test
{

constexpr auto bad_args = QBOBJ_ERROR_API_ARGS;
constexpr auto db_failed = QBOBJ_ERROR_DB_MISC;

// A fresh appliance: the volumes "data" and "backup" (10 GB free each), root below a temporary folder, an
// open handle.
class Appliance
{
  public:
    Appliance();
    ~Appliance();
    Appliance(const Appliance &) = delete;
    Appliance &operator=(const Appliance &) = delete;

    // Runs SQL of the test's own on the connection; any failure fails the test.
    void sql(const std::string &text) const;
    // The rows of a SELECT: columns joined by '|', NULL as "NULL".
    std::vector<std::string> rows(const std::string &select) const;
    // The first column of the first row; "NULL" for a NULL, "" without a row.
    std::string value(const std::string &select) const;
    // The whole content of the database, to see that nothing changed.
    std::string content() const;
    void close();
    // Closes and opens again, e.g. with another log level. What was returned before is gone.
    void reopen(qbdb_loglevel_t loglvl = QBDB_LOG_ERROR, bool readonly = false);
    // Everything logged so far.
    std::string log() const;
    // The services that were told of a change so far.
    std::string journal() const;
    // Switches the appliance to a directory domain.
    void join_directory() const { sql("UPDATE service_cifs SET security='ads'"); }

    // Calls an operation with what it takes between the connection and the error record.
    template <class Operation, class... Value>
    int call(Operation operation, Value... values)
    {
        return operation(qbdb, db, values..., &err);
    }

    std::filesystem::path file() const { return folder_.path() / "appliance.db"; }
    std::filesystem::path root() const { return folder_.path() / "root"; }

    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    qbobj_error_rec_t err{};
    // What reopen() opens with beside its own.
    qbdb_options_t open_options{};

  private:
    TemporaryFolder folder_;
    FILE *log_ = nullptr;
    FILE *jnl_ = nullptr;
};

// The fixture of most tests.
class Database : public ::testing::Test, public Appliance
{
};

// The text of a record's dump, to compare whole records.
std::string dump(const char *type, void *record);

// A record that is cleared and then filled by name, e.g. `auto share = cleared(qbobj_clear_Share)`.
template <class Record>
Record cleared(int (*clear)(Record *))
{
    Record record;
    clear(&record);
    return record;
}

} // namespace qbobj_test

// An operation succeeded, or the failure shows its error record.
#define EXPECT_OK(call) EXPECT_EQ(0, (call)) << ::testing::PrintToString(err)
#define ASSERT_OK(call) ASSERT_EQ(0, (call)) << ::testing::PrintToString(err)
// An operation failed with this code and message.
#define EXPECT_FAILS(call, code, message)                                                                    \
    do {                                                                                                     \
        EXPECT_EQ(static_cast<int>(code), (call)) << ::testing::PrintToString(err);                          \
        EXPECT_EQ(code, err.ec);                                                                             \
        EXPECT_STREQ(message, err.msg);                                                                      \
    } while (false)
