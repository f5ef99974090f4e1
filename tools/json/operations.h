// The table of operations: every operation of the library with its arguments, callable with JSON.
#pragma once

#include "json/record_json.h"

#include <qbobj.h>

#include <span>
#include <string>
#include <vector>

namespace qbobj_json
{

// What an argument is to the caller.
enum class ArgumentKind {
    integer,        // int
    size,           // uint64_t
    text,           // const char *
    record,         // a record or list that the caller gives and gets back filled
    record_result,  // a record or list that the operation makes
    text_result,    // char **
    integer_result, // int *
    folder_result   // the attributes of a folder
};

struct Argument {
    std::string name;
    bool optional = false; // may be left out: null
    ArgumentKind kind{};
    const qbobj_spec_t *spec = nullptr; // of a record

    bool is_input() const
    {
        return kind == ArgumentKind::integer || kind == ArgumentKind::size || kind == ArgumentKind::text ||
               kind == ArgumentKind::record;
    }
    bool is_output() const
    {
        return kind >= ArgumentKind::record && !(kind == ArgumentKind::record && optional);
    }
};

// What an operation's own result says.
enum class ResultKind {
    code,       // 0 or an error code
    identifier, // an identifier, or a negative number
    answer      // 0 for yes, 1 for no, or a negative number
};

// An open database.
struct Connection {
    qbdb_handle_t *qbdb;
    sqlite3 *db;
};

struct Outcome {
    int result = 0; // what the operation returned
    qbobj_error_rec_t error{};
    Json outputs = Json::object(); // by argument name

    // The only output, or all of them by name.
    Json value() const { return outputs.size() == 1 ? outputs.front() : outputs; }
};

struct Operation {
    std::string name; // "addShare"
    std::vector<Argument> arguments;
    ResultKind result = ResultKind::code;
    // Calls it with one JSON value an input argument; null where none is given. Throws BadInput.
    Outcome (*call)(const Operation &, const Connection &, const Json &inputs) = nullptr;

    bool failed(int returned) const { return result == ResultKind::code ? returned != 0 : returned < 0; }
    // Whether it may change the database.
    bool writes() const;
};

std::span<const Operation> operations();
const Operation *find_operation(const std::string &name);

// From what a person gives to a value an argument: an object of arguments by name, or the value of the only
// input argument itself. Throws BadInput for an unknown or missing argument.
Json arrange_inputs(const Operation &operation, const Json &given);

// "QBOBJ_ERROR_API_ARGS" for 8; "QBOBJ_ERROR_UNKNOWN" for a number that is no code.
const char *error_name(int code);

} // namespace qbobj_json
