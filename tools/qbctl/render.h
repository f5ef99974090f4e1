// How results are shown to a person.
#pragma once

#include "json/json_writer.h"

#include <ostream>
#include <string>
#include <vector>

namespace qbctl
{

// One line per record: the scalar fields that any record holds, or the fields named in `columns`.
// Throws BadInput for a column that no record has.
void print_table(std::ostream &out, const qbobj_json::Value &value, const std::vector<std::string> &columns,
                 const qbobj_json::Hides &hides);

// The text with its control characters written out, so that none of them reaches a terminal.
std::string escape_controls(const std::string &text);

} // namespace qbctl
