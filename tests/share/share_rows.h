// Shares put straight into the tables, for tests that read them.
#pragma once

#include "database.h"

#include <string>

namespace qbobj_test
{

constexpr auto name_taken = QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS;

class Shares : public Database
{
  protected:
    // A share on the volume "data" with its folder; returns its row id.
    int add_share(const std::string &name, const std::string &type = "share") const
    {
        std::filesystem::create_directories(folder(name));
        sql("INSERT INTO share (zfs_name,type,name,volume_id,path) SELECT 'data/" + name + "','" + type +
            "','" + name + "',id,'/data/" + name + "' FROM _volume WHERE lv_name='data'");
        return std::stoi(value("SELECT id FROM share WHERE name='" + name + "'"));
    }
    std::filesystem::path folder(const std::string &name) const { return root() / "data" / name; }

    void add_user(int id, const std::string &name, int group_id = 99, const std::string &rid = "NULL") const
    {
        sql("INSERT INTO `$user` (id,uname,group_id,rid) VALUES (" + std::to_string(id) + ",'" + name + "'," +
            std::to_string(group_id) + "," + rid + ")");
    }
    void add_group(int id, const std::string &name, const std::string &rid = "NULL") const
    {
        sql("INSERT INTO `$group` (id,gname,rid) VALUES (" + std::to_string(id) + ",'" + name + "'," + rid +
            ")");
    }

    // One share by name; a failure fails the test.
    qbobj_Share_t read(const char *name)
    {
        auto share = cleared(qbobj_clear_Share);
        share.ShareName = name;
        EXPECT_OK(call(qbobj_getShare, &share));
        return share;
    }
};

// Makes the file a damaged one, in which shares may lack a name and a path.
inline void let_names_be_missing(Appliance &appliance)
{
    sqlite3 *db = nullptr; // the appliance's own connection refuses
    ASSERT_EQ(SQLITE_OK, sqlite3_open(appliance.file().c_str(), &db));
    EXPECT_EQ(SQLITE_OK,
              sqlite3_exec(db,
                           "PRAGMA writable_schema=ON;UPDATE sqlite_schema SET sql=replace(replace(sql,"
                           "' name TEXT NOT NULL',' name TEXT'),' path TEXT NOT NULL',' path TEXT') "
                           "WHERE name='share'",
                           nullptr, nullptr, nullptr))
        << sqlite3_errmsg(db);
    sqlite3_close(db);
    appliance.reopen();
}

// A field as text; a text may be missing.
inline std::string text(const char *value)
{
    return value == nullptr ? "NULL" : value;
}
template <class Number>
requires std::is_integral_v<Number> std::string text(Number value)
{
    return std::to_string(value);
}

// Fields with bars between them, as rows() shows columns.
template <class First, class... Rest>
std::string fields(First first, Rest... rest)
{
    return (text(first) + ... + ("|" + text(rest)));
}

// The records of a list, each described, with blanks between them.
template <class Record, class Describe>
std::string joined(const Record *head, Describe describe)
{
    std::string result;
    for (const Record *record = head; record != nullptr; record = record->_link)
        result += (result.empty() ? "" : " ") + describe(*record);
    return result;
}

} // namespace qbobj_test
