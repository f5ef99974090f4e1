// Which disks were inserted and pulled since the table of disks was last brought up to date.
#include "core/change_tracking.h"
#include "storage/disk_rows.h"
#include "storage/storage.h"

#include <map>

namespace qbobj
{
namespace
{

using Diff = qbobj_DiskDiff_t;

constexpr std::array<const char *, 2> disk_tables{"$disk_info", nullptr};
constexpr WatchedTables watched{.tag = "_old_", .tables = disk_tables.data(), .subject = "disks"};

// A disk that came or went, as its table holds it.
struct DiffRow : Diff {
    int port;
    int present;
};

/* ---- The two directions -------------------------------------------------------------------------------- */

constexpr char row_columns[] = "SELECT id,model,serial,fw_version,rpm,sectors,capacity,controller,port,hwif,"
                               "volume_id,pool_type,pool_state,pool_hostid,controller,channel,"
                               "replaced_with_spare,is_signed_by_mltx,present";
constexpr auto inserted_text = joined(
    row_columns, " FROM `$disk_info` WHERE id NOT IN (SELECT id FROM _old_$disk_info WHERE present=1)");
constexpr auto removed_text = joined(
    row_columns, " FROM _old_$disk_info WHERE id NOT IN (SELECT id FROM `$disk_info` WHERE present=1)");
constexpr std::tuple row_members{or_empty(&Diff::DiskId),
                                 or_empty(&Diff::Model),
                                 or_empty(&Diff::Serial),
                                 or_empty(&Diff::FirmwareVersion),
                                 &Diff::RPM,
                                 &Diff::Sectors,
                                 &Diff::Capacity,
                                 controller_and_key(&Diff::Controller, &Diff::DiskEnclosureId),
                                 &DiffRow::port,
                                 &Diff::HardwareInterface,
                                 &Diff::Pool,
                                 &Diff::PoolType,
                                 pool_state,
                                 pool_host,
                                 &Diff::Controller,
                                 &Diff::Channel,
                                 &Diff::ReplacedWithSpare,
                                 &Diff::IsSignedByMaltrex,
                                 &DiffRow::present};
static_assert(count_columns(row_columns) == std::tuple_size_v<decltype(row_members)>);

struct Direction {
    int add_or_remove;
    Statement<> rows;
    Message<int> count;
    Message<const char *, int> one;
    Message<const char *> failed;
};
constexpr Direction inserted{1, inserted_text, "%d disks are added\n", "Disk id=%s at %d is added\n",
                             "Error in SELECT disk_info EXCEPT old_$disk_info (%s)\n"};
constexpr Direction removed{-1, removed_text, "%d disks are deleted\n", "Disk id=%s at %d is removed\n",
                            "Error in SELECT old_$disk_info EXCEPT disk_info (%s)\n"};

/* ---- The steps ----------------------------------------------------------------------------------------- */

// A look-up that fails leaves its field null and the error in the record; the others go on.
void find_place(Call &call, DiffRow &row)
{
    call.text("Failed DB Query for 'SELECT FROM _disk_enclosure'. %s", row.DiskEnclosureName,
              "SELECT name FROM _disk_enclosure WHERE controller=%d", row.Controller);
    call.text("Failed DB Query for 'SELECT FROM disk_port'. %s", row.SlotName,
              "SELECT slot_col||'x'||slot_row FROM disk_port WHERE controller=%d AND port=%d", row.Controller,
              row.port);
}

// Appends the disks of one direction. A failure is only logged.
void append_disks(Call &call, const Direction &direction, Tail<Diff> &tail)
{
    const Table rows = call.table(direction.rows);
    if (!rows)
        return log(call, QBDB_LOG_ERROR, direction.failed, rows.error());
    log(call, QBDB_LOG_INFO, direction.count, rows.size());
    for (const Row cells : rows) {
        DiffRow row{};
        fill(call, row, row_members, cells);
        if (row.present == 0)
            continue;
        log(call, QBDB_LOG_INFO, direction.one, row.DiskId, row.Controller);
        find_place(call, row);
        row.AddOrRemove = direction.add_or_remove;
        row.Pool = nullptr; // that of the disk before it, which is not known yet
        tail.append(call.pool(), row);
    }
}

constexpr std::tuple slot_and_volume{&Diff::Controller, &Diff::Channel, or_empty(&Diff::Pool)};

// A disk in the place of one that was absent at the last look, or was pulled since, names the volume that it is to
// rejoin. Asked once for all of them: the copy has no index.
void name_volumes_to_rejoin(Call &call, Diff *disks)
{
    if (disks == nullptr)
        return;
    const Table rows =
        call.table("SELECT controller,channel,volume_id FROM _old_$disk_info WHERE controller IS NOT NULL "
                   "AND channel IS NOT NULL AND present=0 UNION ALL SELECT controller,channel,volume_id "
                   "FROM `$disk_info` WHERE controller IS NOT NULL AND channel IS NOT NULL AND present=0");
    if (!rows)
        return log(call, QBDB_LOG_ERROR, inserted.failed, rows.error());
    std::map<std::pair<int, int>, const char *> volumes; // by slot; its first disk counts
    for (const Row cells : rows) {
        Diff absent{};
        fill(call, absent, slot_and_volume, cells);
        volumes.try_emplace({absent.Controller, absent.Channel}, absent.Pool);
    }
    for (Diff &disk : Chain(disks))
        if (const auto before = volumes.find({disk.Controller, disk.Channel}); before != volumes.end())
            disk.Pool = before->second;
}

} // namespace

int x_qbobj_getDiskDiff(Call &call, qbobj_DiskDiff_t **diff)
{
    if (diff == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "diff is NULL");
    *diff = nullptr;
    const char *error = nullptr;
    if (copy_tables(call, watched, &error) != 0) {
        log(call, QBDB_LOG_ERROR, "Error in qbdb_sql_duplicate_tables() %s\n", error);
        return 0;
    }
    qbdb_import_nolock(call.qbdb(), call.db(), QBDB_CAT_DISK);
    Tail<Diff> tail(*diff);
    append_disks(call, inserted, tail);
    name_volumes_to_rejoin(call, *diff);
    append_disks(call, removed, tail);
    if (drop_copies(call, watched, &error) != 0)
        log(call, QBDB_LOG_ERROR, "Error in qbdb_sql_delete_tables() %s\n", error);
    return 0;
}

} // namespace qbobj
