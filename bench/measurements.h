// The measurements by subject. Each checks first that its floor does what the library does.
#pragma once

#include "appliance.h"
#include "figures.h"

#include <json/record_json.h>

#include <apr_pools.h>

#include <concepts>
#include <stdexcept>

namespace qbobj_bench
{

void add_share_figures(Figures &figures);
void add_new_share_figures(Figures &figures);
void add_modification_figures(Figures &figures);
void add_share_beside_figures(Figures &figures);
void add_group_beside_figures(Figures &figures);
void add_user_figures(Figures &figures);
void add_new_user_figures(Figures &figures);
void add_disk_figures(Figures &figures);
void add_protocol_figures(Figures &figures);
void add_snapshot_figures(Figures &figures);
void add_start_figures(Figures &figures);
void add_backup_figures(Figures &figures);
void add_dictionary_figures(Figures &figures);
void add_log_figures(Figures &figures);
void add_durable_figures(Figures &figures);
void add_listing_figures(Figures &figures);

// Calls `work` once a run and gives back afterwards what it returned in the pool.
template <std::invocable Work>
auto timed(const Connection &connection, Work work)
{
    return [&connection, work](benchmark::State &state) {
        for (auto _ : state)
            work();
        qbdb_clear_pool(connection.qbdb);
    };
}

inline void require_equal(const std::string &what, const auto &floor, const auto &library)
{
    if (floor != library)
        throw std::runtime_error(what + ": the floor's result differs from the library's");
}

// Both read the same into records of the type, e.g. "Share".
template <class Record>
void require_same_records(const std::string &type, const Record &floor, const Record &library)
{
    const qbobj_spec_t *spec = qbobj_json::find_spec(type);
    require_equal(type, qbobj_json::to_json(spec, &floor).dump(), qbobj_json::to_json(spec, &library).dump());
}

// The bytes of pool memory that a call takes which has been made before.
size_t pool_bytes(const Connection &connection, const std::function<void()> &call);

} // namespace qbobj_bench
