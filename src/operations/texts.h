// What the comments of the public headers say about operations and records: a table that is made from them when the
// project is built. The one place where it stands which fields are secrets.
#pragma once

#include <qbobj/types.h>

#include <span>
#include <string_view>

namespace qbobj::texts
{

enum class Direction { in, out, in_out };

struct Parameter {
    std::string_view name;
    Direction direction;
    std::string_view text;
};

// A code that an operation reports, and when.
struct Error {
    qbobj_error_t code;
    std::string_view name; // "QBOBJ_ERROR_API_ARGS"
    std::string_view text;
};

struct Operation {
    std::string_view name;                 // "addShare"
    std::string_view symbol;               // "qbobj_addShare"
    std::string_view header;               // "qbobj/share_write.h"
    std::string_view brief;                // one sentence
    std::string_view text;                 // more about it, a line a paragraph; may be empty
    std::span<const Parameter> parameters; // in their order, without qbdb, db and err
    std::span<const std::string_view> reads;
    std::span<const std::string_view> writes;
    std::span<const Error> errors;
    std::string_view result;
};

// Empty texts where the header says nothing.
struct Field {
    std::string_view name;
    std::string_view text;
    std::string_view unit;
    std::string_view words; // those accepted: "\"user\", \"ads\"" or "0, 1"
    std::string_view range;
    bool required; // needed when the record is created
    bool readonly; // filled by reads, ignored on writes
    bool secret;   // never shown or echoed
    bool sql;      // becomes part of a statement as it is: never offered to people
};

struct Record {
    std::string_view name; // "Share"
    std::string_view header;
    std::string_view text;
    std::span<const Field> fields; // all members, `_link` and the `_void_` flags too
};

// A secret field of a record; the table is sorted.
struct Secret {
    std::string_view record;
    std::string_view field;
};

std::span<const Operation> operations();
std::span<const Record> records();
std::span<const Secret> secrets();

// By name, with or without "qbobj_", whatever the case; null when there is none.
const Operation *find_operation(std::string_view name);
// By name, whatever the case.
const Record *find_record(std::string_view name);
const Field *find_field(const Record &record, std::string_view name);

// By the exact names, as a schema has them.
bool is_secret(std::string_view record, std::string_view field);

// Equal but for the case of ASCII letters.
bool same_name(std::string_view a, std::string_view b);

} // namespace qbobj::texts
