// JSON text that a person or a program gives.
#pragma once

#include "json/record_json.h"

#include <string>

namespace qbobj_json
{

// The value of a JSON text. Throws BadInput for what is no JSON, is nested deeper than any record, or names a
// field twice; the error never shows the text itself, which may hold a password.
Json parse(const std::string &text);

} // namespace qbobj_json
