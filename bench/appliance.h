// Databases to measure on, filled with plain SQL, in a folder that goes away.
#pragma once

#include "temporary_folder.h"

#include <qbobj.h>

#include <filesystem>
#include <string>

namespace qbobj_bench
{

using qbobj_test::TemporaryFolder;

// Whether a commit waits for the disk.
enum class Commits { relaxed, durable };

// An open database. Commits do not wait for the disk, neither the library's nor a floor's, unless they are what
// is measured.
class Connection
{
  public:
    Connection(const std::filesystem::path &file, const std::filesystem::path &root,
               Commits commits = Commits::relaxed);
    ~Connection() { qbdb_close(qbdb); }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    void run(const char *sql) const;
    // Every row of every table, without the times of the last change.
    std::string content() const;

    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;

  private:
    std::string root_;
};

// What an appliance holds.
struct Contents {
    int shares = 0;        // each with the options of all eight protocols and a folder
    int users_on_list = 1; // of each share, over CIFS
    int groups_on_list = 1;
    int hosts_on_list = 1;
    int users = 100; // their ids begin at 100; each has home settings, and a quota on the first share
};

constexpr int first_account_id = 100;
constexpr int listed_accounts = 20; // users, groups and hosts among which those of the lists are

std::string share_name(int number);
std::string user_name(int number);

class Appliance
{
  public:
    explicit Appliance(const Contents &contents);

    std::filesystem::path file() const { return folder_.path() / "appliance.db"; }
    std::filesystem::path root() const { return folder_.path() / "root"; }
    Connection connect() const { return {file(), root()}; }

  private:
    TemporaryFolder folder_;
};

// A copy to write to, so that every run begins with the same content.
class Copy
{
  public:
    explicit Copy(const Appliance &appliance, Commits commits = Commits::relaxed);

  private:
    TemporaryFolder folder_;
    std::filesystem::path copied_;

  public:
    const Connection connection;
};

// Fails when an operation did; the error record says why.
void check(int rc, const qbobj_error_rec_t &err);

} // namespace qbobj_bench
