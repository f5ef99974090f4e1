// What there is: operations and record types.
#pragma once

#include <string>
#include <vector>

namespace qbctl
{

// Lists the operations with their arguments and results.
void run_list();

// Shows the fields of record types; without any, lists the types.
void run_describe(const std::vector<std::string> &types);

} // namespace qbctl
