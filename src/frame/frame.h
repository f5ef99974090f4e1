// The front door: what every exported operation does around its worker, written once.
#pragma once

#include "frame/env.h"
#include "frame/schema.h"

#include <array>
#include <cstddef>
#include <span>

namespace qbobj
{

// An exported call: its name, its common arguments, and the place of its frame.
struct Operation {
    const char *name;
    qbdb_handle_t *qbdb;
    sqlite3 *db;
    qbobj_error_rec_t *err;
    Site site;
};

// Which results roll back.
enum class RollbackOn { nonzero, negative };

// A record argument that the debug log shows before and after the worker. `indirect`: the argument points to
// a pointer to the record, and nothing is shown when either is null.
struct DumpedRecord {
    const qbobj_spec_t *spec;
    void *record;
    bool indirect;
};

// The worker with its arguments bound, without their types.
struct BoundWorker {
    int (*invoke)(const void *bound, qbobj_env_t *env);
    const void *bound;
};

int run_framed(const Operation &operation, RollbackOn rollback, std::span<const DumpedRecord> records,
               BoundWorker worker);

// Marks an argument as a record to be dumped.
template <class Pointer>
struct Dumped {
    Pointer argument;
};
template <class Pointer>
Dumped<Pointer> dumped(Pointer argument)
{
    return {argument};
}

template <class Argument>
Argument bare(Argument argument)
{
    return argument;
}
template <class Pointer>
Pointer bare(Dumped<Pointer> dumped)
{
    return dumped.argument;
}

template <class Record>
DumpedRecord dump_of(Dumped<Record *> dumped)
{
    return {spec_of(dumped.argument), dumped.argument, false};
}
template <class Record>
DumpedRecord dump_of(Dumped<Record **> dumped)
{
    return {spec_of(static_cast<Record *>(nullptr)), static_cast<void *>(dumped.argument), true};
}

template <class Argument>
inline constexpr bool is_dumped = false;
template <class Pointer>
inline constexpr bool is_dumped<Dumped<Pointer>> = true;

template <class Worker, class... Arguments>
int run(const Operation &operation, RollbackOn rollback, Worker worker, Arguments... arguments)
{
    std::array<DumpedRecord, (0 + ... + static_cast<int>(is_dumped<Arguments>)) + 1> records{};
    std::size_t count = 0;
    [[maybe_unused]] const auto collect = [&](auto argument) {
        if constexpr (is_dumped<decltype(argument)>)
            records[count++] = dump_of(argument);
    };
    (collect(arguments), ...);

    const auto bound = [&](qbobj_env_t *env) { return worker(env, operation.db, bare(arguments)...); };
    const BoundWorker erased{
        [](const void *call, qbobj_env_t *env) { return (*static_cast<const decltype(bound) *>(call))(env); },
        &bound};
    return run_framed(operation, rollback, std::span(records).first(count), erased);
}

// The frame of an operation that returns 0 or an error code.
template <class Worker, class... Arguments>
int framed(const Operation &operation, Worker worker, Arguments... arguments)
{
    return run(operation, RollbackOn::nonzero, worker, arguments...);
}

// The frame of an identifier look-up, which returns the identifier or a negative number.
template <class Worker, class... Arguments>
int framed_lookup(const Operation &operation, Worker worker, Arguments... arguments)
{
    return run(operation, RollbackOn::negative, worker, arguments...);
}

} // namespace qbobj
