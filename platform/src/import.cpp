// Reading system state into its tables: disks, volumes, and the usage of homes.
#include "volume.h"

#include <algorithm>
#include <dirent.h>
#include <fstream>
#include <sys/stat.h>
#include <sys/statvfs.h>

using namespace qbdb;

namespace
{

constexpr const char *unit = "import";
constexpr int sector_size = 512; // of the kernel's sizes, whatever the disk's own is

struct CloseDirectory {
    void operator()(DIR *directory) const { closedir(directory); }
};

// The first line of a file without the blanks at its end, or nothing.
std::optional<std::string> read_attribute(const std::string &path)
{
    std::ifstream in(path);
    std::string text;
    if (!std::getline(in, text))
        return std::nullopt;
    text.erase(text.find_last_not_of(" \t\r") + 1);
    text.erase(0, text.find_first_not_of(" \t"));
    return text;
}

sqlite3_int64 read_number(const std::string &path)
{
    return std::strtoll(read_attribute(path).value_or("0").c_str(), nullptr, 10);
}

const char *text_or_null(const std::optional<std::string> &text)
{
    return text ? text->c_str() : nullptr;
}

// The bus, by the place of the device in the kernel's tree.
const char *hardware_interface(const std::string &folder)
{
    const std::unique_ptr<char, void (*)(void *)> place(realpath(folder.c_str(), nullptr), std::free);
    const std::string_view path = place ? place.get() : "";
    constexpr std::pair<std::string_view, const char *> buses[] = {
        {"/usb", "USB"}, {"/nvme", "NVMe"}, {"/ata", "SATA"}, {"/virtio", "virtio"}};
    for (const auto &[mark, name] : buses)
        if (path.find(mark) != path.npos)
            return name;
    return "SCSI";
}

// Where the controller, port and channel of a disk are known, others have stored them; they stay.
int store_disk(const Call &call, const std::string &folder, const std::string &name)
{
    const std::optional<std::string> model = read_attribute(folder + "/device/model");
    const std::optional<std::string> serial = read_attribute(folder + "/device/serial");
    std::optional<std::string> firmware = read_attribute(folder + "/device/rev");
    if (!firmware)
        firmware = read_attribute(folder + "/device/firmware_rev");
    const sqlite3_int64 sectors = read_number(folder + "/size");
    // The kernel knows whether the disk turns, not how fast.
    const char *const rpm = read_attribute(folder + "/queue/rotational") == "0" ? "0" : nullptr;
    return execute(
        call,
        "INSERT INTO `$disk_info` (id,present,model,serial,fw_version,rpm,sectors,capacity,controller,hwif)"
        " VALUES(%Q,1,%Q,%Q,%Q,%Q,%lld,%lld,0,%Q)"
        " ON CONFLICT(id) DO UPDATE SET present=1,model=excluded.model,serial=excluded.serial,"
        "fw_version=excluded.fw_version,rpm=IFNULL(excluded.rpm,rpm),sectors=excluded.sectors,"
        "capacity=excluded.capacity,hwif=excluded.hwif",
        name.c_str(), text_or_null(model), text_or_null(serial), text_or_null(firmware), rpm, sectors,
        sectors * sector_size, hardware_interface(folder));
}

// A disk is a block device with hardware behind it and a medium of some size in it.
bool is_disk(const std::string &folder)
{
    return access((folder + "/device").c_str(), F_OK) == 0 && read_number(folder + "/size") > 0;
}

int import_disks(const Call &call)
{
    const std::string base = below_root(call.qbdb, "/sys/block/");
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(base.c_str()));
    if (!directory)
        return call.fail(SQLITE_CANTOPEN, ("cannot read " + base).c_str(), unit);
    std::vector<std::string> here;
    while (const dirent *entry = readdir(directory.get()))
        if (entry->d_name[0] != '.' && is_disk(base + entry->d_name))
            here.emplace_back(entry->d_name);
    std::sort(here.begin(), here.end());
    for (const std::string &name : here)
        if (const int rc = store_disk(call, base + name, name); rc != SQLITE_OK)
            return rc;

    std::vector<std::string> known;
    if (const int rc = read_texts(call, known, "SELECT id FROM `$disk_info` WHERE present<>0");
        rc != SQLITE_OK)
        return rc;
    for (const std::string &name : known) {
        if (std::binary_search(here.begin(), here.end(), name))
            continue;
        const int rc = execute(call, "UPDATE `$disk_info` SET present=0 WHERE id=%Q", name.c_str());
        if (rc != SQLITE_OK)
            return rc;
    }
    return SQLITE_OK;
}

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
