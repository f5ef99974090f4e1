// Single settings by key, and folder attributes: operations with a transaction of their own and no records.
#include "core/call.h"

#include <qbobj/settings.h>

#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

using namespace qbobj;

namespace
{

// What ends the transaction of a call that succeeded decides its result, or does not.
enum class CommitResult { returned, ignored };

template <class Body>
int in_transaction(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_error_rec_t *err, CommitResult commit_result,
                   Body body)
{
    *err = {};
    qbobj_env_t env{qbdb, err};
    int result = qbdb_sql_begin(qbdb, db, nullptr, unit_name.data(), __LINE__);
    if (result != 0)
        return result;
    try {
        result = body(&call, Sql(&call));
    } catch (const std::bad_alloc &) {
        result = raise(&call, QBOBJ_ERROR_OOM, "Failed to allocate resource.");
    }
    if (result != 0) {
        qbdb_sql_rollback(qbdb, db, nullptr, unit_name.data(), __LINE__);
        return result;
    }
    const int committed = qbdb_sql_commit(qbdb, db, nullptr, unit_name.data(), __LINE__);
    return commit_result == CommitResult::returned ? committed : 0;
}

// Traces the end of a call when it is left.
class ExitTrace
{
  public:
    ExitTrace(qbdb_handle_t *qbdb, const char *name) : qbdb_(qbdb), name_(name) {}

    int of_read(const char *key, int result) const
    {
        if (enabled())
            qbdb_log(qbdb_, unit_name.data(), __LINE__, QBDB_LOG_INFO, 0, "<<<< %s(%s) .. rc=%d (%llums)\n",
                     name_, key, result, elapsed());
        return result;
    }
    int of_write(const char *key, const char *val, int result) const
    {
        if (enabled())
            qbdb_log(qbdb_, unit_name.data(), __LINE__, QBDB_LOG_INFO, 0,
                     "<<<< %s(%s,%s) .. rc=%d (%llums)\n", name_, key, val == nullptr ? "(null)" : val,
                     result, elapsed());
        return result;
    }

  private:
    bool enabled() const { return static_cast<unsigned>(qbdb_->loglvl) >= QBDB_LOG_INFO; }
    // The difference of two readings of whole seconds, as in the trace of every operation.
    unsigned long long elapsed() const { return static_cast<unsigned long long>(second_ - start_); }

    qbdb_handle_t *qbdb_;
    const char *name_;
    std::time_t start_ = std::time(nullptr);
    std::time_t second_ = std::time(nullptr);
};

int check_language(Call &call, const char *language)
{
    const Table supported = call.table(R"(SELECT 1 FROM service_misc WHERE key='LANGUAGES_SUPPORTED' AND
        (val='%q/utf-8' OR val LIKE '%q/utf-8,%%' OR val LIKE '%%,%q/utf-8' OR val LIKE '%%,%q/utf-8,%%'))",
                                      language, language, language, language);
    if (!supported)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'SELECT service_misc'. %s", supported.error());
    if (supported.empty())
        return raise(call, QBOBJ_ERROR_API_ARGS, "Specified LANGUAGE=%s is not supported by system.",
                     language);
    return 0;
}

// Writes the column that an entry is linked to, in every row of its table.
int mirror(Call &call, const char *table, const char *column, const char *val)
{
    if (table == nullptr || column == nullptr)
        return 0;
    const Status updated = call.run(R"(UPDATE "%w" SET "%w"=%Q)", table, column, val);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'UPDATE %s'. %s", table, updated.error());
    return 0;
}

int write_existing_entry(Call &call, const char *key, const char *val, const Row &link)
{
    const Status updated =
        val != nullptr
            ? call.run("UPDATE service_misc SET val=%Q WHERE key=%Q", val, key)
            : call.run("UPDATE service_misc SET val=NULL,table_name=NULL,column_name=NULL WHERE key=%Q", key);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'INSERT service_misc'. %s", updated.error());
    enum LinkColumn { table_name, column_name };
    return mirror(call, link[table_name], link[column_name], val);
}

int write_service_entry(Call &call, const char *key, const char *val)
{
    if (std::strcmp(key, "LANGUAGE") == 0 && val != nullptr) {
        if (const int rc = check_language(call, val); rc != 0)
            return rc;
    }
    const Table links = call.table("SELECT table_name,column_name FROM service_misc WHERE key=%Q", key);
    if (!links)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'SELECT service_misc'. %s", links.error());
    if (!links.empty())
        return write_existing_entry(call, key, val, links.front());

    if (val != nullptr) {
        const Status inserted = call.run(
            "INSERT OR IGNORE INTO service_misc (key,val,table_name,column_name) VALUES(%Q,%Q,NULL,NULL)",
            key, val);
        if (!inserted)
            return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'INSERT service_misc'. %s", inserted.error());
        return 0;
    }
    const Status deleted = call.run("DELETE FROM service_misc WHERE key=%Q", key);
    if (!deleted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'DELETE service_misc'. %s", deleted.error());
    return 0;
}

int write_registry_entry(Call &call, const char *key, const char *val)
{
    if (val == nullptr) {
        // Not valid SQL: entries cannot be removed through this interface, and callers depend on the failure.
        const Status refused = call.run("DELETE FROM `$registry` SET value=%Q WHERE key=%Q", val, key);
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'UPDATE $registry'. %s", refused.error());
    }
    const Status inserted = call.run("INSERT OR IGNORE INTO `$registry` (value,key) VALUES(%Q,%Q)", val, key);
    if (!inserted)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'INSERT $registry'. %s", inserted.error());
    const Status updated = call.run("UPDATE `$registry` SET value=%Q WHERE key=%Q", val, key);
    if (!updated)
        return raise(call, QBOBJ_ERROR_DB_MISC, "Failed 'UPDATE $registry'. %s", updated.error());
    return 0;
}

// The two tables of entries, which differ in names alone.
struct EntryTable {
    Statement<const char *> select;
    Message<const char *> select_failed;
    Message<const char *> missing;
};
constexpr EntryTable service_entries{"SELECT val FROM service_misc WHERE key=%Q",
                                     "Failed 'SELECT service_misc'. %s", "ServiceEntry='%s' not exist."};
constexpr EntryTable registry_entries{"SELECT value FROM `$registry` WHERE key=%Q",
                                      "Failed 'SELECT $registry'. %s", "RegistryEntry='%s' not exist."};

// `function` is the exported one.
template <class Value>
int read_entry(const EntryTable &table, const char *function, qbdb_handle_t *qbdb, sqlite3 *db,
               const char *key, Value **val, qbobj_error_rec_t *err)
{
    require(qbdb != nullptr, "qbdb", function);
    require(err != nullptr, "err", function);
    require(key != nullptr, "key", function);
    require(val != nullptr, "val", function);
    const ExitTrace trace(qbdb, function);
    const auto read = [&](Call &call) {
        const Text entry = call.ask_text(table.select, key);
        if (!entry)
            return raise(call, QBOBJ_ERROR_DB_MISC, table.select_failed, entry.error());
        if (entry.found == 0)
            return raise(call, QBOBJ_ERROR_DB_NOTEXISTS, table.missing, key);
        *val = entry.value;
        return 0;
    };
    return trace.of_read(key, in_transaction(qbdb, db, err, CommitResult::ignored, read));
}

template <class Write>
int write_entry(Write write, const char *function, qbdb_handle_t *qbdb, sqlite3 *db, const char *key,
                const char *val, qbobj_error_rec_t *err)
{
    require(qbdb != nullptr, "qbdb", function);
    require(err != nullptr, "err", function);
    require(key != nullptr, "key", function);
    const ExitTrace trace(qbdb, function);
    const auto body = [&](Call &call) { return write(call, key, val); };
    return trace.of_write(key, val, in_transaction(qbdb, db, err, CommitResult::returned, body));
}

/* ---- Folder attributes --------------------------------------------------------------------------------- */

constexpr auto share_flag_columns =
    std::tuple{&qbobj_folder_attribute_t::cifs_flags, &qbobj_folder_attribute_t::dlna_flags,
               &qbobj_folder_attribute_t::comment};

constexpr const char *share_flags = R"(SELECT CASE WHEN CIFS.share_id NOT NULL THEN 1 ELSE 0 END|
    CASE WHEN CIFS.cifs_hide_share THEN 2 ELSE 0 END,IFNULL(DLNA.media_type,0),S.comment FROM share S
    LEFT JOIN cifs_share_option CIFS ON CIFS.share_id=S.id LEFT JOIN dlna_share_option DLNA ON DLNA.share_id=S.id)";

// The attributes of the four kinds of places, tried in order: the first query that returns a row decides.
int read_folder_attribute(Call &call, sqlite3 *db, const char *path,
                          qbobj_folder_attribute_t &attr)
{
    attr = {};
    const auto failed = [&](const Table &rows, bool share) {
        const int extended = sqlite3_extended_errcode(db);
        return share ? raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for cifs share. sq3rc=%d:%d (%s)",
                             rows.rc, extended, rows.error())
                     : raise(call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for user. sq3rc=%d:%d (%s)", rows.rc,
                             extended, rows.error());
    };
    const Table share = call.table("%s WHERE S.path=%Q", share_flags, path);
    if (!share)
        return failed(share, true);
    if (!share.empty()) {
        fill(call, attr, share_flag_columns, share.front());
        return 0;
    }
    const Table in_share = call.table("%s WHERE %Q LIKE S.path||'/%%'", share_flags, path);
    if (!in_share)
        return failed(in_share, true);
    if (!in_share.empty()) {
        fill(call, attr, share_flag_columns, in_share.front());
        attr.is_subfolder = 1;
        return 0;
    }
    const Table home = call.table("SELECT 1 FROM `$user` U WHERE U.home=%Q", path);
    if (!home)
        return failed(home, false);
    if (!home.empty()) {
        attr.is_homeshare = 1;
        attr.cifs_flags = 1;
        return 0;
    }
    const Table in_home = call.table("SELECT 1 FROM `$user` U WHERE %Q LIKE U.home||'/%%'", path);
    if (!in_home)
        return failed(in_home, false);
    if (!in_home.empty()) {
        attr.comment = empty_str;
        attr.is_homeshare = 1;
        attr.is_subfolder = 1;
    }
    return 0;
}

/* ---- Time Machine space -------------------------------------------------------------------------------- */

// The first entry of a folder, in directory order, that is a sparse bundle; empty when there is none.
std::filesystem::path find_sparse_bundle(const std::filesystem::path &folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().string().find(".sparsebundle") != std::string::npos)
            return entry->path();
    return {};
}

// The number behind "<integer>" in the line that follows the band-size key of a bundle's property list; else
// 0.
uint64_t read_band_size(const std::filesystem::path &property_list)
{
    constexpr std::string_view integer = "\t<integer>";
    std::ifstream file(property_list);
    std::string line;
    while (std::getline(file, line)) {
        if (line != "\t<key>band-size</key>" || !std::getline(file, line))
            continue;
        if (line.starts_with(integer))
            return std::strtoull(line.c_str() + integer.size(), nullptr, 10);
    }
    return 0;
}

} // namespace

int getServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, char **val, qbobj_error_rec_t *err)
{
    return read_entry(service_entries, __func__, qbdb, db, key, val, err);
}

int setServiceEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                    qbobj_error_rec_t *err)
{
    return write_entry(write_service_entry, __func__, qbdb, db, key, val, err);
}

int getRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char **val,
                     qbobj_error_rec_t *err)
{
    return read_entry(registry_entries, __func__, qbdb, db, key, val, err);
}

int setRegistryEntry(qbdb_handle_t *qbdb, sqlite3 *db, const char *key, const char *val,
                     qbobj_error_rec_t *err)
{
    return write_entry(write_registry_entry, __func__, qbdb, db, key, val, err);
}

int getFolderAttribute(qbdb_handle_t *qbdb, sqlite3 *db, const char *path, qbobj_folder_attribute_t *attr,
                       qbobj_error_rec_t *err)
{
    require(qbdb != nullptr, "qbdb", __func__);
    require(err != nullptr, "err", __func__);
    require(attr != nullptr, "attr", __func__);
    const ExitTrace trace(qbdb, __func__);
    const auto read = [&](Call &call) {
        return read_folder_attribute(call, db, path, *attr);
    };
    return trace.of_read(path == nullptr ? "(null)" : path,
                         in_transaction(qbdb, db, err, CommitResult::ignored, read));
}

uint64_t get_tm_used_mb(const char *path)
{
    constexpr uint64_t megabyte = 1000000;
    if (path == nullptr)
        return 0;
    try {
        const std::filesystem::path bundle = find_sparse_bundle(path);
        if (bundle.empty())
            return 0;
        const uint64_t band_size = read_band_size(bundle / "Info.plist");
        std::error_code error;
        uint64_t bands = 0;
        for (std::filesystem::directory_iterator band(bundle / "bands", error), end; !error && band != end;
             band.increment(error))
            ++bands;
        return band_size * bands / megabyte;
    } catch (const std::bad_alloc &) {
        return 0;
    }
}
