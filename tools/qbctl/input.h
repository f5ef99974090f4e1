// Where input comes from: files, descriptors, the terminal.
#pragma once

#include "json/record_json.h"

#include <string>

namespace qbctl
{

// All that a file, or for "-" standard input, holds. Throws BadInput.
std::string read_file(const std::string &name);

// All that an open descriptor holds; `name` names it in errors.
std::string read_descriptor(int descriptor, const std::string &name);

// The value of a JSON text, of "-" for standard input, or of "@FILE".
qbobj_json::Json read_json(const std::string &word);

// A line that is typed at the terminal and not shown.
std::string ask(const std::string &prompt);

} // namespace qbctl
