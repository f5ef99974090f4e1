// Values become JSON, and JSON becomes records.
#include "json/record_json.h"

#include "common/pool.h"
#include "json/nearest.h"

#include <climits>
#include <cmath>
#include <cstring>

namespace qbobj_json
{
namespace
{

// What a value is, for errors: the value itself may be a password in a wrong place.
std::string kind_of(const Json &json)
{
    switch (json.type()) {
    case Json::value_t::null:
        return "null";
    case Json::value_t::string:
        return "a text";
    case Json::value_t::boolean:
        return "true or false";
    case Json::value_t::object:
        return "an object";
    case Json::value_t::array:
        return "a list";
    case Json::value_t::number_float:
        return std::trunc(json.get<double>()) != json.get<double>()
                   ? "a fraction"
                   : "a number with a point, an exponent or too many digits";
    default:
        return json >= 0 ? "a number" : "a negative number";
    }
}

const qbobj_spec_t *find_row(const qbobj_spec_t *spec, const std::string &name)
{
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        if (name == row->name)
            return row;
    return nullptr;
}

void set_field(const qbobj_spec_t &row, void *record, const Json &json, apr_pool_t *pool,
               const std::string &where)
{
    const int at = row.offs_or_size;
    switch (row.type) {
    case QBOBJ_KIND_STRING:
        field_at<const char *>(record, at) = to_text(json, pool, where);
        break;
    case QBOBJ_KIND_INT:
        field_at<int>(record, at) = static_cast<int>(to_integer(json, INT_MIN, INT_MAX, where));
        break;
    case QBOBJ_KIND_UINT:
        field_at<unsigned>(record, at) = static_cast<unsigned>(to_integer(json, 0, UINT_MAX, where));
        break;
    case QBOBJ_KIND_INT64:
        field_at<int64_t>(record, at) = to_integer(json, INT64_MIN, INT64_MAX, where);
        break;
    case QBOBJ_KIND_UINT64:
        field_at<uint64_t>(record, at) = to_unsigned(json, where);
        break;
    case QBOBJ_KIND_RECORD:
        field_at<void *>(record, at) = from_json(row.ospec_ptr, json, pool, where);
        break;
    default:
        break;
    }
    if (has_void_flag(row))
        field_at<int>(record, void_flag_offset(row)) = 0;
}

void *one_from_json(const qbobj_spec_t *spec, const Json &json, apr_pool_t *pool, const std::string &where)
{
    if (!json.is_object())
        throw BadInput(where + " must be an object (a " + spec->name + ")");
    void *record = empty_record(spec, pool);
    for (const auto &[name, value] : json.items()) {
        const std::string field = where + "." + name;
        if (has_string_id(spec) && name == "resource_id") {
            field_at<const char *>(record, string_id_offset) = to_text(value, pool, field);
            continue;
        }
        const qbobj_spec_t *row = find_row(spec, name);
        if (row == nullptr)
            throw BadInput(field + ": a " + spec->name + " has no field '" + name + "'" +
                           suggestion(name, field_names(spec)));
        if (!value.is_null())
            set_field(*row, record, value, pool, field);
    }
    return record;
}

} // namespace

Json to_json(const Value &value)
{
    return std::visit(
        []<class Held>(const Held &held) {
            Json json;
            if constexpr (Object<Held>) {
                json = Json::object();
                for_each_member(held, [&json](const Member &member) {
                    json[std::string(member.name)] = to_json(member.value);
                });
            } else if constexpr (Array<Held>) {
                json = Json::array();
                for_each_element(held, [&json](const Value &element) { json.push_back(to_json(element)); });
            } else if constexpr (!std::same_as<Held, std::monostate>) {
                json = held;
            }
            return json;
        },
        value.held);
}

Json to_json(const qbobj_spec_t *spec, const void *record)
{
    return to_json(Value(spec, record));
}

void *from_json(const qbobj_spec_t *spec, const Json &json, apr_pool_t *pool, const std::string &where)
{
    if (json.is_null())
        return nullptr;
    if (!is_list(spec) || !json.is_array())
        return one_from_json(spec, json, pool, where);
    void *head = nullptr;
    void **tail = &head;
    std::size_t index = 0;
    for (const Json &element : json) {
        *tail = one_from_json(spec, element, pool, where + "[" + std::to_string(index++) + "]");
        tail = &field_at<void *>(*tail, link_offset);
    }
    return head;
}

void *empty_record(const qbobj_spec_t *spec, apr_pool_t *pool)
{
    void *record = qb::allocate(pool, static_cast<std::size_t>(spec->offs_or_size));
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        if (has_void_flag(*row))
            field_at<int>(record, void_flag_offset(*row)) = 1;
    return record;
}

const qbobj_spec_t *find_spec(const std::string &name)
{
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
        if (name == entry->name)
            return entry->spec;
    return nullptr;
}

std::vector<std::string> field_names(const qbobj_spec_t *spec)
{
    std::vector<std::string> names;
    if (has_string_id(spec))
        names.emplace_back("resource_id");
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        names.emplace_back(row->name);
    return names;
}

int64_t to_integer(const Json &json, int64_t min, int64_t max, const std::string &where)
{
    if (json.is_boolean())
        return json.get<bool>() ? 1 : 0;
    if (!json.is_number_integer())
        throw BadInput(where + " must be a whole number, not " + kind_of(json));
    if (json.is_number_unsigned() && json.get<uint64_t>() > static_cast<uint64_t>(max))
        throw BadInput(where + ": " + json.dump() + " is too large");
    const int64_t number = json.get<int64_t>();
    if (number < min || number > max)
        throw BadInput(where + ": " + json.dump() + " is out of range");
    return number;
}

uint64_t to_unsigned(const Json &json, const std::string &where)
{
    const bool negative = json.is_number_integer() && !json.is_number_unsigned() && json.get<int64_t>() < 0;
    if (!json.is_number_integer() || negative)
        throw BadInput(where + " must be a whole number of 0 or more, not " + kind_of(json));
    // The database would hold a larger one as a fraction.
    if (json.get<uint64_t>() > static_cast<uint64_t>(INT64_MAX))
        throw BadInput(where + ": " + json.dump() + " is too large");
    return json.get<uint64_t>();
}

const char *to_text(const Json &json, apr_pool_t *pool, const std::string &where)
{
    if (json.is_null())
        return nullptr;
    if (!json.is_string())
        throw BadInput(where + " must be a text, not " + kind_of(json));
    const auto &text = json.get_ref<const std::string &>();
    if (text.find('\0') != std::string::npos)
        throw BadInput(where + " must not hold a NUL character");
    return qb::copy_text(pool, std::string_view(text));
}

} // namespace qbobj_json
