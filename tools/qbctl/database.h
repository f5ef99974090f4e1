// An open database for as long as a command runs.
#pragma once

#include "qbctl/settings.h"
#include "json/operations.h"

namespace qbctl
{

enum class Access { reads, writes };

// What an operation may do to the database that it is called on.
Access access_of(const qbobj_json::Operation &operation);

class Database
{
  public:
    Database(const Settings &settings, Access access);
    ~Database() { qbdb_close(qbdb_); }
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    qbobj_json::Connection connection() const { return {qbdb_, db_}; }
    void clear() const { qbdb_clear_pool(qbdb_); }
    void register_volume(const std::string &name) const;

  private:
    qbdb_handle_t *qbdb_ = nullptr;
    sqlite3 *db_ = nullptr;
};

// Makes a fresh database.
void create_database(const std::string &file);

// The failure that one of SQLite's codes stands for; `text` says what else it is than a busy database.
Failed database_failure(int code, const std::string &text);

} // namespace qbctl
