// The table of operations at run time: what tools, sweeps and bindings walk.
#pragma once

#include "operations/operation.h"

#include <span>

namespace qbobj
{

struct ArgumentEntry {
    std::string_view name;
    Direction direction;
    bool optional;
    Shape shape;
    const qbobj_spec_t *spec; // of a record; else null
    std::string_view count;   // see out_array()

    bool is_input() const { return direction != Direction::out; }
    bool is_output() const { return direction != Direction::in; }
};

struct OperationEntry {
    std::string_view name;     // "addShare"
    std::string_view exported; // "qbobj_addShare"
    Effect effect;
    ResultKind result;
    std::span<const ArgumentEntry> arguments;

    bool fails(int returned) const { return result == ResultKind::code ? returned != 0 : returned < 0; }
    bool identifies() const
    {
        return result == ResultKind::identifier || result == ResultKind::plain_identifier;
    }
};

// In the order of the umbrella header.
std::span<const OperationEntry> operation_table();
// By its name, with or without "qbobj_"; null when there is none.
const OperationEntry *find_operation(std::string_view name);

} // namespace qbobj
