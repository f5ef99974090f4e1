// What must not be shown again: passwords and keys that a caller gave.
#pragma once

#include "json/record_json.h"

#include <set>
#include <string>

namespace qbctl
{

class Secrets
{
  public:
    // Takes note of a text, and of the texts of secret fields in a value.
    void add(const std::string &text);
    void add_all(const qbobj_json::Json &given);

    // Puts the mask of passwords in their place: in the secret fields of a result, and in a message.
    void hide_in(qbobj_json::Json &shown) const;
    std::string hidden(std::string message) const;

  private:
    std::set<std::string> texts_;
};

} // namespace qbctl
