// What a person may have meant by a name that is none.
#pragma once

#include <string>
#include <vector>

namespace qbobj_json
{

// "; did you mean 'addShare'?" for the name that is written most like `word`, whatever its capitals; nothing
// when none is near.
std::string suggestion(const std::string &word, const std::vector<std::string> &names);

} // namespace qbobj_json
