// Values as JSON text, written as they are read.
#pragma once

#include "json/value.h"

#include <functional>
#include <ostream>
#include <string>

namespace qbobj_json
{

// Whether a text in the field of a name must not be shown; the mask of passwords stands in its place.
using Hides = std::function<bool(std::string_view field, std::string_view text)>;

// A member's value, or the mask.
const Value &shown(const Member &member, const Hides &hides);

// Writes JSON in which bytes that are not UTF-8 are replaced, in one line or indented,
// and a line end.
enum class Layout { one_line, indented };
void write_json(std::ostream &out, const Value &value, Layout layout, const Hides &hides);

// The same without the line end, as a text.
std::string json_text(const Value &value, Layout layout, const Hides &hides);

} // namespace qbobj_json
