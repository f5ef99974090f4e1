// From the words of a command line to the arguments of an operation.
#pragma once

#include "qbctl/secrets.h"
#include "json/operations.h"

#include <string>
#include <vector>

namespace qbctl
{

// What is given of an operation's input.
struct InputWords {
    std::vector<std::string> words;            // JSON, "-", "@FILE", NAME=VALUE
    std::vector<std::string> asked;            // PATH of a text that is typed unseen
    std::vector<std::string> from_descriptors; // PATH=N of a text that descriptor N holds
};

// Whether a word looks like a name. What does not is never shown in an error: it may hold a password.
bool is_name(const std::string &word);

// The operation of a name, or BadInput that names the nearest.
const qbobj_json::Operation &operation_named(const std::string &name);

// One value an argument; what is secret among them is noted. Throws BadInput.
qbobj_json::Json gather_inputs(const qbobj_json::Operation &operation, const InputWords &given,
                               Secrets &secrets);

} // namespace qbctl
