// A database of its own for every test of the platform, and short ways to ask it.
#pragma once

#include "qbdb.h"
#include "temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

namespace platform_test
{

using Row = std::vector<std::string>; // NULL is "<null>"
using Rows = std::vector<Row>;

inline constexpr const char *unit = "a_unit";

using qbobj_test::read_file;
using qbobj_test::write_file;

class Folder
{
  public:
    std::string operator/(const std::string &name) const { return folder_.path() / name; }
    std::vector<std::string> names() const;

  private:
    qbobj_test::TemporaryFolder folder_;
};

// One connection with its handle: opened by qbdb_open(), or by the caller.
class Session
{
  public:
    explicit Session(const std::string &file, const qbdb_options_t &options = {});
    ~Session() { qbdb_close(qbdb); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    template <class... Value>
    int exec(const char *format, Value... value)
    {
        return qbdb_sql_exec_mprintf(qbdb, db, &error, unit, __LINE__, format, value...);
    }
    template <class... Value>
    Rows ask(const char *format, Value... value)
    {
        char **table = nullptr;
        int rows = -1;
        int columns = -1;
        EXPECT_EQ(0, qbdb_sql_get_table_mprintf(qbdb, db, &table, &rows, &columns, &error, unit, __LINE__,
                                                format, value...))
            << format << ": " << error;
        const Rows result = copy(table, rows, columns);
        sqlite3_free_table(table);
        return result;
    }
    template <class... Value>
    std::string one(const char *format, Value... value)
    {
        const Rows rows = ask(format, value...);
        return rows.empty() ? "<none>" : rows[0][0];
    }
    int begin() { return qbdb_sql_begin(qbdb, db, &error, unit, __LINE__); }
    int commit() { return qbdb_sql_commit(qbdb, db, &error, unit, __LINE__); }
    int rollback() { return qbdb_sql_rollback(qbdb, db, &error, unit, __LINE__); }
    int statements() const;

    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    char *error = nullptr;

  private:
    static Rows copy(char **table, int rows, int columns);
};

// A fresh database with the tables t(a, b, c) and u(id PRIMARY KEY, name UNIQUE), and its log.
class Platform : public ::testing::Test
{
  protected:
    Platform();
    ~Platform() override;
    std::string log() const;

    Folder folder;
    std::string file = folder / "a.db";
    FILE *stream = nullptr;
    qbdb_options_t options{};
    std::unique_ptr<Session> session;
};

} // namespace platform_test
