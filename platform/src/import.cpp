// Reading system state into its tables, and the usage of homes.
#include "disks.h"
#include "volume.h"

#include <algorithm>
#include <fstream>
#include <sys/stat.h>
#include <sys/statvfs.h>

using namespace qbdb;

namespace
{

constexpr const char *unit = "import";

// The kernel writes a blank, a tab, a line end and a backslash of a path as a backslash and three octal
// digits.
std::string decode_octal(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            out += static_cast<char>(std::strtol(std::string(text.substr(i + 1, 3)).c_str(), nullptr, 8));
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

// The places below the root at which a file system of its own begins, as the appliance names them.
std::vector<std::string> mount_points(const qbdb_handle_t *qbdb)
{
    const std::string root = below_root(qbdb, "");
    std::vector<std::string> points;
    std::ifstream in("/proc/self/mountinfo");
    for (std::string line; std::getline(in, line);) {
        std::string_view rest = line;
        constexpr int fields_before = 4; // ids, device and the mounted folder stand before the mount point
        for (int i = 0; i < fields_before; i++)
            rest.remove_prefix(std::min(rest.find(' '), rest.size() - 1) + 1);
        const std::string point = decode_octal(rest.substr(0, rest.find(' ')));
        if (point.size() > root.size() + 1 && point.starts_with(root + "/"))
            points.push_back(point.substr(root.size()));
    }
    return points;
}

// A bind mount shows a folder of a file system that has its own place elsewhere.
bool begins_file_system(const std::string &path)
{
    struct stat here {
    };
    struct stat parent {
    };
    return stat(path.c_str(), &here) == 0 && S_ISDIR(here.st_mode) &&
           stat((path + "/..").c_str(), &parent) == 0 && here.st_dev != parent.st_dev;
}

int store_usage(const Call &call, const std::string &home)
{
    const std::string path = below_root(call.qbdb, home);
    struct statvfs status {
    };
    if (!begins_file_system(path) || statvfs(path.c_str(), &status) != 0)
        return SQLITE_OK;
    const auto used = static_cast<unsigned long long>(status.f_blocks - status.f_bfree) * status.f_frsize;
    return execute(call,
                   "INSERT INTO _hf_zfs_stat (user_id,used) SELECT id,%llu FROM `$user` WHERE home=%Q"
                   " ON CONFLICT(user_id) DO UPDATE SET used=excluded.used WHERE used<>excluded.used",
                   used, home.c_str());
}

} // namespace

int qbdb_import_nolock(qbdb_handle_t *qbdb, sqlite3 *db, qbdb_category_t category)
{
    const Call call{qbdb, db, nullptr, unit, __LINE__};
    return guarded(call, [&] {
        switch (category) {
        case QBDB_CAT_DISK:
            return import_disks(call);
        case QBDB_CAT_VOLUME:
            return refresh_volumes(call);
        case QBDB_CAT_REPLICATE_SERVICE:
            return SQLITE_OK; // its row is all there is
        }
        return call.fail(SQLITE_MISUSE, "unknown category", unit);
    });
}

int qbdb_hf_stats_import(qbdb_handle_t *qbdb, sqlite3 *db)
{
    const Call call{qbdb, db, nullptr, unit, __LINE__};
    if (qbdb->readonly)
        return SQLITE_OK;
    return guarded(call, [&] {
        // Few places are mounted, many users have homes.
        for (const std::string &point : mount_points(qbdb))
            if (const int rc = store_usage(call, point); rc != SQLITE_OK)
                return rc;
        return SQLITE_OK;
    });
}
