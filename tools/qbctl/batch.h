// Many calls in one process.
#pragma once

#include "qbctl/settings.h"

#include <string>

namespace qbctl
{

// Each line: the operation's name and, behind a blank, its JSON. Empty lines and lines beginning with '#' are
// skipped. Stops at the first failure: what stood before it stays done.
void run_batch(const Settings &settings, const std::string &file);

} // namespace qbctl
