// Records to JSON and back, driven by the record schemas alone.
#pragma once

#include "json/value.h"

#include <apr_pools.h>
#include <nlohmann/json.hpp>
#include <qbobj/schema.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace qbobj_json
{

// Fields stand in the order of the schema.
using Json = nlohmann::ordered_json;

// Input that does not describe a record; the text names the field.
class BadInput : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

// A record as an object, or a list as an array of objects. What is not given is null.
Json to_json(const qbobj_spec_t *spec, const void *record);
Json to_json(const Value &value);

// A record from an object, or a list from an array of objects (or from one object), in memory from `pool`.
// Fields that are left out or null count as not given. `where` names the value in error texts. Throws
// BadInput.
void *from_json(const qbobj_spec_t *spec, const Json &json, apr_pool_t *pool, const std::string &where);

// An empty record of the type: nothing given.
void *empty_record(const qbobj_spec_t *spec, apr_pool_t *pool);

// The schema of a type by its name; null when there is none.
const qbobj_spec_t *find_spec(const std::string &name);

// The names of a record's fields.
std::vector<std::string> field_names(const qbobj_spec_t *spec);

// A scalar in a JSON value, or BadInput naming `where`.
int64_t to_integer(const Json &json, int64_t min, int64_t max, const std::string &where);
uint64_t to_unsigned(const Json &json, const std::string &where);
const char *to_text(const Json &json, apr_pool_t *pool, const std::string &where);

} // namespace qbobj_json
