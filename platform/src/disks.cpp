// Reading the kernel's disks, and giving slots to those that hang on no backplane.
#include "disks.h"
#include "volume.h"

#include <algorithm>
#include <dirent.h>
#include <fstream>
#include <set>

namespace qbdb
{

namespace
{

constexpr const char *unit = "disks";
constexpr int sector_size = 512; // of the kernel's sizes, whatever the disk's own is

struct CloseDirectory {
    void operator()(DIR *directory) const { closedir(directory); }
};

// The first line of a file without the blanks round it, or nothing.
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

// A disk is a block device with hardware behind it and a medium of some size in it.
bool is_disk(const std::string &folder)
{
    return access((folder + "/device").c_str(), F_OK) == 0 && read_number(folder + "/size") > 0;
}

// The kernel's order of names: sdz stands before sdaa.
bool stands_before(const std::string &a, const std::string &b)
{
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

int mark_missing(const Call &call, const std::vector<std::string> &here)
{
    std::vector<std::string> known;
    if (const int rc = read_texts(call, known, "SELECT id FROM `$disk_info` WHERE present<>0");
        rc != SQLITE_OK)
        return rc;
    for (const std::string &name : known) {
        if (std::binary_search(here.begin(), here.end(), name, stands_before))
            continue;
        const int rc = execute(call, "UPDATE `$disk_info` SET present=0 WHERE id=%Q", name.c_str());
        if (rc != SQLITE_OK)
            return rc;
    }
    return SQLITE_OK;
}

// A disk keeps its controller, port and channel, which others may have stored; but one that comes back finds its
// slot taken when another disk was put there.
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
        "capacity=excluded.capacity,hwif=excluded.hwif,port=CASE WHEN present=0 AND EXISTS(SELECT 1 FROM"
        " `$disk_info` O WHERE O.controller=`$disk_info`.controller AND O.channel=`$disk_info`.channel"
        " AND O.port=`$disk_info`.port AND O.present<>0) THEN NULL ELSE port END",
        name.c_str(), text_or_null(model), text_or_null(serial), text_or_null(firmware), rpm, sectors,
        sectors * sector_size, hardware_interface(folder));
}

// Puts a disk into the slot that the port leads to: one row of slots, as wide as the highest port.
int store_slot(const Call &call, const std::string &name, int port)
{
    int rc = execute(call, "UPDATE `$disk_info` SET controller=0,port=%d,channel=%d WHERE id=%Q", port, port,
                     name.c_str());
    if (rc == SQLITE_OK)
        rc = execute(call,
                     "INSERT OR IGNORE INTO disk_port (controller,port,slot_col,slot_row) VALUES(0,%d,%d,1)",
                     port, port + 1);
    if (rc == SQLITE_OK)
        rc =
            execute(call,
                    "INSERT INTO _disk_enclosure (controller,name,nr_row,nr_column) VALUES(0,'Internal',1,%d)"
                    " ON CONFLICT(controller) DO UPDATE SET nr_column=MAX(nr_column,excluded.nr_column)"
                    " WHERE ses_device IS NULL AND nr_row=1",
                    port + 1);
    if (rc == SQLITE_OK)
        rc = execute(call, "INSERT OR IGNORE INTO jbod_port (controller,label) VALUES(0,'')");
    return rc;
}

// Without a backplane nobody knows the slots: disks take the free ports of controller 0 in the order of their
// names, so that a disk that is put in for another one takes its place.
int give_slots(const Call &call)
{
    std::vector<std::string> taken;
    int rc = read_texts(
        call, taken, "SELECT port FROM `$disk_info` WHERE controller=0 AND present<>0 AND port IS NOT NULL");
    std::vector<std::string> waiting;
    if (rc == SQLITE_OK)
        rc = read_texts(call, waiting,
                        "SELECT id FROM `$disk_info` WHERE controller=0 AND present<>0 AND port IS NULL");
    std::set<int> ports;
    for (const std::string &port : taken)
        ports.insert(std::atoi(port.c_str()));
    std::sort(waiting.begin(), waiting.end(), stands_before);
    int port = 0;
    for (const std::string &name : waiting) {
        while (ports.contains(port))
            port++;
        if (rc == SQLITE_OK)
            rc = store_slot(call, name, port++);
    }
    return rc;
}

} // namespace

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
    std::sort(here.begin(), here.end(), stands_before);

    int rc = mark_missing(call, here);
    for (const std::string &name : here)
        if (rc == SQLITE_OK)
            rc = store_disk(call, base + name, name);
    if (rc == SQLITE_OK)
        rc = give_slots(call);
    // The lists of disks show only those that somebody watches; nothing has been read yet.
    if (rc == SQLITE_OK)
        rc = execute(
            call,
            "INSERT OR IGNORE INTO _disk_health (disk_id) SELECT id FROM `$disk_info` WHERE present<>0");
    return rc;
}

} // namespace qbdb
