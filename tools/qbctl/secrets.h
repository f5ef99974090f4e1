// What must not be shown again: passwords and keys that a caller gave.
#pragma once

#include "json/json_writer.h"
#include "json/record_json.h"

#include <functional>
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

    // What a result must not show: a noted text in a secret field. Refers to these secrets.
    qbobj_json::Hides hides() const;
    // The message with the mask of passwords in their place.
    std::string hidden(std::string message) const;

  private:
    std::set<std::string, std::less<>> texts_;
};

} // namespace qbctl
