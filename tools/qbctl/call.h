// Calling an operation.
#pragma once

#include "qbctl/arguments.h"
#include "qbctl/database.h"

#include <string>

namespace qbctl
{

// The results of a call that succeeded, in the memory of the database's pool. Throws Failed with the code's
// name and number and the administrator's message, in which the secrets are hidden.
qbobj_json::Value call(const qbobj_json::Operation &operation, const Database &database,
                       const qbobj_json::Json &inputs, const Secrets &secrets);

// Calls one operation and shows its results.
void run_call(const Settings &settings, const std::string &name, const InputWords &given);

} // namespace qbctl
