// Calling an operation.
#pragma once

#include "qbctl/arguments.h"
#include "qbctl/database.h"

#include <string>

namespace qbctl
{

// The results of a call that succeeded, with the secrets that were given hidden. Throws Failed with the
// code's name and number and the administrator's message.
qbobj_json::Json call(const qbobj_json::Operation &operation, const Database &database,
                      const qbobj_json::Json &inputs, const Secrets &secrets);

// Calls one operation and shows its results.
void run_call(const Settings &settings, const std::string &name, const InputWords &given);

} // namespace qbctl
