// Making, filling and copying the databases.
#include "appliance.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace qbobj_bench
{
namespace
{

// Tables that the options of a share stand in; a row's columns have fit defaults.
constexpr std::array share_tables{"cifs_share_option", "afp_share_option",  "nfs_share_option",
                                  "ftp_share_option",  "http_share_option", "rsync_share_option",
                                  "dlna_share_option", "daap_share_option", "snapshot_schedule"};

template <class... Values>
std::string format(const char *text, Values... values)
{
    const std::unique_ptr<char, decltype(&sqlite3_free)> formatted(sqlite3_mprintf(text, values...),
                                                                   sqlite3_free);
    if (formatted == nullptr)
        throw std::bad_alloc();
    return formatted.get();
}

template <class... Values>
void run(const Connection &connection, const char *text, Values... values)
{
    connection.run(format(text, values...).c_str());
}

// A temporary table of the numbers from 0 on.
void make_numbers(const Connection &connection, const char *table, int count)
{
    run(connection,
        "CREATE TEMP TABLE %s AS WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n LIMIT %d) "
        "SELECT i FROM n",
        table, count);
}

void add_accounts(const Connection &connection, int users)
{
    make_numbers(connection, "listed", listed_accounts);
    run(connection, "INSERT INTO `$group` (id,gname) SELECT %d+i,printf('group%%05d',i) FROM listed",
        first_account_id);
    run(connection, "INSERT INTO host (id,name) SELECT i+1,printf('10.0.0.%%d',i+1) FROM listed");
    if (users == 0)
        return;
    make_numbers(connection, "users", users);
    run(connection,
        "INSERT INTO `$user` (id,uname,passwd,email,home,group_id,last_changed,fullname) "
        "SELECT %d+i,printf('user%%05d',i),'$6$salt$hash',printf('user%%05d@example.org',i),"
        "printf('/home/user%%05d',i),99,20000,printf('User %%05d',i) FROM users",
        first_account_id);
    run(connection,
        "INSERT INTO `$home_folder` (user_id,snapshot_protection_enabled,quota) SELECT %d+i,1,4096 FROM "
        "users",
        first_account_id);
}

void add_shares(const Connection &connection, const Contents &contents)
{
    make_numbers(connection, "shares", contents.shares);
    run(connection,
        "INSERT INTO share (id,zfs_name,name,comment,volume_id,path,user_id,group_id) "
        "SELECT i+1,printf('data/share%%05d',i),printf('share%%05d',i),printf('Share %%05d',i),'data',"
        "printf('/data/share%%05d',i),97,97 FROM shares");
    for (const char *table : share_tables)
        run(connection, "INSERT INTO %s (share_id) SELECT i+1 FROM shares", table);
    run(connection, "INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,mb_refreservation,"
                    "compression,bit_rot_protection,dedup,logbias,sync) "
                    "SELECT i+1,2000,0,1000,0,1,1,0,'latency','standard' FROM shares");
    run(connection,
        "INSERT INTO _zfs_stat (share_id,available,used,usedbydataset,usedbysnapshots,compressratio) "
        "SELECT i+1,1<<33,1<<30,1<<29,1<<29,'1.50x' FROM shares");

    const auto add_list = [&](const char *account, int first_id, int entries) {
        run(connection,
            "INSERT INTO %s_acl (share_id,%s_id,proto,read,write) SELECT "
            "shares.i+1,%d+(shares.i+listed.i)%%%d,"
            "'cifs',1,0 FROM shares,listed WHERE listed.i<%d",
            account, account, first_id, listed_accounts, entries);
    };
    add_list("user", first_account_id, contents.users_on_list);
    add_list("group", first_account_id, contents.groups_on_list);
    add_list("host", 1, contents.hosts_on_list);
    if (contents.users > 0)
        run(connection,
            "INSERT INTO user_quota (user_id,share_id,mb_soft,mb_hard) SELECT %d+i,1,800,1000 FROM users",
            first_account_id);
}

} // namespace

Connection::Connection(const std::filesystem::path &file, const std::filesystem::path &root, Commits commits)
    : root_(root)
{
    qbdb_options_t options{};
    options.relaxed_durability = commits == Commits::relaxed ? 1 : 0;
    options.root = root_.c_str();
    std::array<char, 512> message{};
    if (qbdb_open(file.c_str(), &options, &qbdb, &db, message.data(), message.size()) != 0)
        throw std::runtime_error(message.data());
}

void Connection::run(const char *sql) const
{
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(std::string(sqlite3_errmsg(db)) + ": " + sql);
}

std::string Connection::content() const
{
    const auto rows = [this](const std::string &select) {
        std::string text;
        const auto add_row = [](void *all, int columns, char **cells, char **) {
            for (int i = 0; i < columns; i++)
                static_cast<std::string *>(all)->append(cells[i] == nullptr ? "NULL" : cells[i]).append("|");
            static_cast<std::string *>(all)->append("\n");
            return 0;
        };
        if (sqlite3_exec(db, select.c_str(), add_row, &text, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db));
        return text;
    };
    // One SELECT a table, of all columns but the times.
    const std::string selects = rows("SELECT 'SELECT '''||T.name||''','||(SELECT "
                                     "group_concat('\"'||name||'\"') FROM pragma_table_info(T.name) "
                                     "WHERE name<>'update_ts')||' FROM \"'||T.name||'\"' FROM sqlite_schema "
                                     "T WHERE type='table' ORDER BY name");
    std::string content;
    for (std::size_t begin = 0; begin < selects.size();) {
        const std::size_t end = selects.find("|\n", begin);
        content += rows(selects.substr(begin, end - begin));
        begin = end + 2;
    }
    return content;
}

std::string share_name(int number)
{
    return format("share%05d", number);
}

std::string user_name(int number)
{
    return format("user%05d", number);
}

Appliance::Appliance(const Contents &contents)
{
    const std::filesystem::path volume = root() / "data";
    std::filesystem::create_directories(volume);
    for (int i = 0; i < contents.shares; i++)
        std::filesystem::create_directory(volume / share_name(i));
    std::array<char, 512> message{};
    if (qbdb_create(file().c_str(), message.data(), message.size()) != 0)
        throw std::runtime_error(message.data());

    const Connection connection = connect();
    char *error = nullptr;
    if (qbdb_register_volume(connection.qbdb, connection.db, "data", &error) != 0)
        throw std::runtime_error(error);
    connection.run("BEGIN");
    add_accounts(connection, contents.users);
    if (contents.shares > 0)
        add_shares(connection, contents);
    connection.run("COMMIT");
}

Copy::Copy(const Appliance &appliance, Commits commits)
    : copied_(folder_.path() / "copy.db"),
      connection((std::filesystem::copy_file(appliance.file(), copied_), copied_), appliance.root(), commits)
{
}

void check(int rc, const qbobj_error_rec_t &err)
{
    if (rc != 0)
        throw std::runtime_error(err.msg == nullptr ? "failed with code " + std::to_string(rc) : err.msg);
}

} // namespace qbobj_bench
