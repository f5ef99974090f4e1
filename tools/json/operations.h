// Operations called with JSON: what an operation takes and gives follows from the table of operations and the
// functions' types.
#pragma once

#include "operations/table.h"
#include "json/record_json.h"

#include <qbobj.h>

#include <span>
#include <string>

namespace qbobj_json
{

using Argument = qbobj::ArgumentEntry;

// An open database.
struct Connection {
    qbdb_handle_t *qbdb;
    sqlite3 *db;
};

struct Outcome {
    int result = 0; // what the operation returned
    qbobj_error_rec_t error{};
    Value output; // the only one, or all of them by argument name, in memory from the database's pool
};

struct Operation {
    const qbobj::OperationEntry *entry = nullptr;
    // Calls it with one JSON value an argument; null where none is given. Throws BadInput.
    Outcome (*call)(const Operation &, const Connection &, const Json &inputs) = nullptr;

    std::string name() const { return std::string(entry->name); }
    std::span<const Argument> arguments() const { return entry->arguments; }
    bool failed(int returned) const { return entry->fails(returned); }
    // Whether it changes nothing, so that a database that is open for reading is enough.
    bool only_reads() const { return entry->effect == qbobj::Effect::reads; }
};

std::span<const Operation> operations();
const Operation *find_operation(std::string_view name);

// From what a person gives to a value an argument: an object of arguments by name, or the value of the only
// input argument itself. Throws BadInput for an unknown or missing argument.
Json arrange_inputs(const Operation &operation, const Json &given);

} // namespace qbobj_json
