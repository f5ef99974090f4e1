// The front door: what every exported operation does around its worker, written once. Everything that it needs to know
// of an operation stands in the table of operations.
#pragma once

#include "frame/transaction.h"

#include <span>
#include <utility>

namespace qbobj
{

// The common arguments of an exported call, and the place of its frame.
struct Caller {
    qbdb_handle_t *qbdb;
    sqlite3 *db;
    qbobj_error_rec_t *err;
    Site site;
};

// An exported operation, as the frame needs it.
struct FramedOperation {
    const char *name;
    Effect effect;
    ResultKind result;
};

// A record argument that the debug log shows: before the worker when it is given, and after it. `indirect`: the argument
// points to a pointer to the record; nothing is shown when either is null.
struct DumpedRecord {
    const qbobj_spec_t *spec;
    void *record;
    bool indirect;
    bool is_given;
};

// The worker with its arguments bound, without their types.
struct BoundWorker {
    int (*invoke)(const void *bound, Call &call);
    const void *bound;
};

int run_framed(const FramedOperation &operation, const Caller &caller, std::span<const DumpedRecord> records,
               BoundWorker worker) noexcept;

template <class Type>
DumpedRecord dump_of(Type argument, Direction direction)
{
    const bool is_given = direction != Direction::out;
    if constexpr (RecordResult<Type>)
        return {schema_of(static_cast<std::remove_pointer_t<Type>>(nullptr)), argument, true, is_given};
    else
        return {schema_of(argument), argument, false, is_given};
}

// The frame of the operation `Function`, one of `family`.
template <auto Function, class Family, class Worker, class... Arguments>
int framed(const Family &family, const Caller &caller, Worker worker, Arguments... arguments) noexcept
{
    const Operation<Function> &operation = std::get<Operation<Function>>(family);
    std::array<DumpedRecord, sizeof...(Arguments) + 1> records{};
    std::size_t count = 0;
    std::size_t index = 0;
    [[maybe_unused]] const auto collect = [&](auto argument) {
        using Type = decltype(argument);
        const Direction direction = operation.arguments[index++].direction;
        if constexpr (RecordArgument<Type> || RecordResult<Type>)
            records[count++] = dump_of(argument, direction);
    };
    (collect(arguments), ...);

    const auto bound = [&](Call &call) { return worker(call, arguments...); };
    const BoundWorker erased{[](const void *call_worker, Call &call) {
                                 return (*static_cast<const decltype(bound) *>(call_worker))(call);
                             },
                             &bound};
    return run_framed({operation.exported(), operation.effect, operation.result}, caller,
                      std::span(records).first(count), erased);
}

} // namespace qbobj
