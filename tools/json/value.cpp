// Fields read as their schema rows say.
#include "json/value.h"

namespace qbobj_json
{
namespace
{

// A field holds a list when its row says so or when its name is the plural of its type's.
bool is_list_field(const qbobj_spec_t &row)
{
    const std::string_view name = row.name;
    return (row.attr & QBOBJ_ATTR_LIST_FIELD) != 0 ||
           (name.ends_with('s') && name.substr(0, name.size() - 1) == row.ospec_ptr->name);
}

Value record_or_null(const qbobj_spec_t *spec, const void *record)
{
    return record == nullptr ? Value() : Value(Record{spec, record});
}

} // namespace

Value::Value(const qbobj_spec_t *spec, const void *record)
    : Value(is_list(spec) ? Value(List{spec, record}) : record_or_null(spec, record))
{
}

Value value_of(const qbobj_spec_t &row, const void *record)
{
    if (has_void_flag(row) && field_at<int>(record, void_flag_offset(row)) != 0)
        return {};
    switch (row.type) {
    case QBOBJ_KIND_STRING:
        return field_at<const char *>(record, row.offs_or_size);
    case QBOBJ_KIND_INT:
        return field_at<int>(record, row.offs_or_size);
    case QBOBJ_KIND_UINT:
        return field_at<unsigned>(record, row.offs_or_size);
    case QBOBJ_KIND_INT64:
        return field_at<int64_t>(record, row.offs_or_size);
    case QBOBJ_KIND_UINT64:
        return field_at<uint64_t>(record, row.offs_or_size);
    case QBOBJ_KIND_RECORD: {
        const auto *nested = field_at<const void *>(record, row.offs_or_size);
        // A type that can stand in lists stands alone in other fields.
        return is_list_field(row) ? Value(row.ospec_ptr, nested) : record_or_null(row.ospec_ptr, nested);
    }
    default:
        return {};
    }
}

std::vector<Member> members_of(const Value &value)
{
    std::vector<Member> members;
    std::visit(
        [&members]<class Held>(const Held &held) {
            if constexpr (Object<Held>)
                for_each_member(held, [&](const Member &member) { members.push_back(member); });
        },
        value.held);
    return members;
}

std::vector<Value> elements_of(const Value &value)
{
    std::vector<Value> elements;
    std::visit(
        [&elements]<class Held>(const Held &held) {
            if constexpr (Array<Held>)
                for_each_element(held, [&](const Value &element) { elements.push_back(element); });
        },
        value.held);
    return elements;
}

} // namespace qbobj_json
