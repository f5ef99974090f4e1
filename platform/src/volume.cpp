// Registering volumes and reading their sizes.
#include "volume.h"

#include <apr_strings.h>
#include <sys/statvfs.h>

namespace qbdb
{

namespace
{

constexpr int block_size = 1024; // of the sizes in `_volume`
constexpr const char *unit = "volume";

struct Sizes {
    sqlite3_int64 total = 0;
    sqlite3_int64 free = 0;
};

std::optional<Sizes> read_sizes(const qbdb_handle_t *qbdb, const std::string &name)
{
    struct statvfs status {
    };
    if (statvfs(below_root(qbdb, "/" + name).c_str(), &status) != 0)
        return std::nullopt;
    const auto in_blocks = [&](fsblkcnt_t count) {
        return static_cast<sqlite3_int64>(static_cast<double>(count) * static_cast<double>(status.f_frsize) /
                                          block_size);
    };
    return Sizes{in_blocks(status.f_blocks), in_blocks(status.f_bavail)};
}

int store_sizes(const Call &call, const std::string &name, const Sizes &sizes)
{
    return execute(call, "UPDATE _volume SET blk_total=%lld,blk_free=%lld,blk_size=%d WHERE lv_name=%Q",
                   sizes.total, sizes.free, block_size, name.c_str());
}

const char *name_problem(std::string_view name)
{
    constexpr std::size_t longest = 31;
    if (name.empty())
        return "a volume needs a name";
    if (name.size() > longest)
        return "the volume's name is longer than 31 bytes";
    if (name.front() == '.')
        return "the volume's name begins with a dot";
    for (const char c : name)
        if (static_cast<unsigned char>(c) < 0x20 ||
            std::string_view("/'\"`\\").find(c) != std::string_view::npos)
            return "the volume's name holds a slash, a quote or a control character";
    return nullptr;
}

int store_volume(const Call &call, const std::string &name)
{
    const Sizes sizes = read_sizes(call.qbdb, name).value_or(Sizes{});
    const int rc = store_sizes(call, name, sizes);
    if (rc != SQLITE_OK || sqlite3_changes(call.db) > 0)
        return rc;
    return execute(call,
                   "INSERT INTO _volume (id,lv_name,blk_total,blk_free,blk_size) VALUES(%Q,%Q,%lld,%lld,%d)",
                   name.c_str(), name.c_str(), sizes.total, sizes.free, block_size);
}

} // namespace

std::string below_root(const qbdb_handle_t *qbdb, std::string_view path)
{
    std::string_view root = qbdb->root ? qbdb->root : "";
    while (root.ends_with('/'))
        root.remove_suffix(1);
    return std::string(root) + std::string(path);
}

int refresh_volumes(const Call &call)
{
    std::vector<std::string> names;
    const int rc = read_texts(call, names, "SELECT lv_name FROM _volume");
    if (rc != SQLITE_OK)
        return rc;
    for (const std::string &name : names)
        if (const auto sizes = read_sizes(call.qbdb, name))
            if (const int stored = store_sizes(call, name, *sizes); stored != SQLITE_OK)
                return stored;
    return SQLITE_OK;
}

} // namespace qbdb

using namespace qbdb;

int qbdb_register_volume(qbdb_handle_t *qbdb, sqlite3 *db, const char *name, char **errmsg)
{
    const Call call{qbdb, db, errmsg, unit, __LINE__};
    return guarded(call, [&] {
        const std::string wanted = name ? name : "";
        if (const char *problem = name_problem(wanted))
            return call.fail(SQLITE_MISUSE, (problem + std::string(": \"") + wanted + "\"").c_str(), unit);
        return in_transaction(call, [&] { return store_volume(call, wanted); });
    });
}
