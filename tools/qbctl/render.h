// How results are shown: as JSON, or as a table for a person.
#pragma once

#include "json/record_json.h"

#include <ostream>
#include <string>
#include <vector>

namespace qbctl
{

// One line per record: the scalar fields that any record holds, or the fields named in `columns`.
// Throws BadInput for a column that no record has.
void print_table(std::ostream &out, const qbobj_json::Json &value, const std::vector<std::string> &columns);

// JSON text in which bytes that are not UTF-8 are replaced.
std::string json_text(const qbobj_json::Json &value, int indent);

// The text with its control characters written out, so that none of them reaches a terminal.
std::string escape_controls(const std::string &text);

} // namespace qbctl
