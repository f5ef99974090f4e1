// What the headers say of operations, record types and their fields, for people.
#pragma once

#include <ostream>
#include <string>

namespace qbctl
{

// Every operation: its arguments and results, and what it does.
void print_operations(std::ostream &out);

// Every record type, a line each.
void print_record_types(std::ostream &out);

// An operation ("addShare"), a record type ("Share"), or a field and what it holds ("Share.Cifs.UserAcl"),
// whatever the case. Throws BadInput, with the nearest name, when there is none.
void describe(std::ostream &out, const std::string &name);

} // namespace qbctl
