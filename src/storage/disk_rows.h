// What the readers of disks share: the columns of a disk itself, and those that make more than one field.
#pragma once

#include "core/call.h"
#include "core/qbobj_util.h"

#include <qbobj/storage.h>

namespace qbobj
{

// The number of an enclosure's controller, and the enclosure's key that is made of it.
template <class Record>
constexpr auto controller_and_key(int Record::*controller, const char *Record::*key)
{
    return [controller, key](const qbobj_env_t &env, Record &record, const char *cell) {
        record.*controller = to_int(cell);
        record.*key = print(env, "controller-%d", record.*controller);
    };
}

// A pool's state is named from three columns, of which the host comes last: the state's number waits in the place of
// its name, and the volume stands in `Pool`.
inline constexpr auto pool_state = [](const qbobj_env_t &, auto &record, const char *cell) {
    record.PoolState = cell;
};
inline constexpr auto pool_host = [](const qbobj_env_t &, auto &record, const char *cell) {
    record.PoolHostId = to_uint64(cell);
    record.PoolState = qbobj_get_pool_state_str(static_cast<pool_state_t>(to_int(record.PoolState)),
                                                record.Pool, record.PoolHostId);
};

// The columns of the disk itself, with which every reader of disks begins, and the members that they fill; the reader's
// own columns come behind them.
inline constexpr char disk_columns[] =
    "SELECT D.id,D.present,D.model,D.serial,D.fw_version,D.rpm,D.sectors,D.capacity";

template <class... Args, class... Columns>
consteval auto select_disks(std::type_identity_t<Statement<Args...>> sql, Failure failure, Columns... columns)
{
    using Disk = qbobj_Disk_t;
    return select<Args...>(sql, failure, both(both(&Disk::DiskId, &Disk::DevName), &Disk::resource_id),
                           &Disk::Present, &Disk::Model, &Disk::Serial, &Disk::FirmwareVersion, &Disk::RPM,
                           &Disk::Sectors, &Disk::Capacity, columns...);
}

} // namespace qbobj
