// What the tests of accounts share.
#pragma once

#include "database.h"

#include <functional>
#include <type_traits>

// Records are given by the fields that a test is about.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace qbobj_test
{

using Lines = std::vector<std::string>;

constexpr auto too_long = QBOBJ_ERROR_UI__NAME_TOO_LONG;
constexpr auto name_taken = QBOBJ_ERROR_UI__USERNAME_ALREADY_EXISTS;
constexpr auto group_taken = QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS;
constexpr auto reserved = QBOBJ_ERROR_UI__USERNAME_RESERVED;

inline const std::string mask = masked_password;

// Texts joined by '|', null as "NULL".
inline std::string line(std::initializer_list<const char *> texts)
{
    std::string joined;
    for (const char *text : texts)
        joined += std::string(text == nullptr ? "NULL" : text) + "|";
    return joined.substr(0, joined.size() - 1);
}
template <class User>
std::string ids(const User &user)
{
    return std::to_string(user.resource_id) + "|" + std::to_string(user.UserId) + "|";
}
inline std::string quota_line(const qbobj_Quota_t &quota)
{
    return std::to_string(quota.AccountId) + "|" + quota.ShareId + "|" + std::to_string(quota.HardMB) + "|" +
           std::to_string(quota.UsedMB);
}
// What `describe` says of every record of a chain.
template <class Record, class Describe>
Lines each(const Record *list, Describe describe)
{
    Lines found;
    for (; list != nullptr; list = list->_link)
        found.push_back(describe(*list));
    return found;
}

// What an operation must refuse, and how.
template <class Record>
struct Refusal {
    Record given;
    std::string message;
    qbobj_error_t code = bad_args;
};

class Accounts : public Database
{
  protected:
    template <class Record>
    using Operation = int (*)(qbdb_handle_t *, sqlite3 *, Record *, qbobj_error_rec_t *);

    template <class Record>
    int run(Operation<Record> operation, Record &record)
    {
        return operation(qbdb, db, &record, &err);
    }
    // The operation fails so, and nothing has changed.
    template <class Record>
    void refused(Operation<Record> operation, std::type_identity_t<Record> record, qbobj_error_t code,
                 const std::string &message)
    {
        SCOPED_TRACE(message);
        const std::string before = content();
        EXPECT_FAILS(run(operation, record), code, message.c_str());
        EXPECT_EQ(before, content());
    }
    // A column of a chain of records.
    template <class Record>
    static std::string all(const Record *list, const char *Record::*text)
    {
        std::string found;
        for (; list != nullptr; list = list->_link)
            found += (found.empty() ? "" : " ") + std::string(list->*text);
        return found;
    }
    // Columns of the users of a name.
    std::string of(const char *name, const std::string &columns) const
    {
        const auto found = rows("SELECT " + columns + " FROM `$user` WHERE uname='" + name + "'");
        return found.empty() ? "" : found.front();
    }
    // Shares 5, "data/photos", and 6, "data/music".
    void add_shares() const
    {
        sql("INSERT INTO share(id,zfs_name,name,volume_id,path) VALUES"
            "(5,'data/photos','photos','data','/data/photos'),(6,'data/music','music','data','/data/music')");
    }
};

} // namespace qbobj_test
