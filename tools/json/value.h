// What a call gives, where it stands in memory: a record is read field by field as its schema says.
#pragma once

#include "json/fields.h"

#include <concepts>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace qbobj_json
{

struct Member;

// A record of a type, and a list of such.
struct Record {
    const qbobj_spec_t *spec;
    const void *at;
};
struct List {
    const qbobj_spec_t *spec;
    const void *first;
};

// Some in a row, which live elsewhere.
template <class T>
struct Row {
    const T *first;
    std::size_t count;
    const T *begin() const { return first; }
    const T *end() const { return first + count; }
};

// Refers to texts, records and rows in the memory of the call: its pool.
struct Value {
    using Elements = Row<Value>;
    using Members = Row<Member>;

    Value() = default;
    template <std::integral Number>
    Value(Number number)
    {
        if constexpr (std::is_same_v<Number, bool>)
            held = number;
        else if constexpr (std::is_signed_v<Number>)
            held = int64_t{number};
        else
            held = uint64_t{number};
    }
    Value(const char *text)
    {
        if (text != nullptr)
            held = std::string_view(text);
    }
    Value(Record record) : held(record) {}
    Value(List list) : held(list) {}
    Value(Elements elements) : held(elements) {}
    Value(Members members) : held(members) {}
    // A record, or a list where the type stands in lists.
    Value(const qbobj_spec_t *spec, const void *record);

    bool is_null() const { return held.index() == 0; }
    const std::string_view *text() const { return std::get_if<std::string_view>(&held); }
    bool is_object() const
    {
        return std::holds_alternative<Record>(held) || std::holds_alternative<Members>(held);
    }
    bool is_array() const
    {
        return std::holds_alternative<List>(held) || std::holds_alternative<Elements>(held);
    }

    std::variant<std::monostate, bool, int64_t, uint64_t, std::string_view, Record, List, Elements, Members>
        held;
};

struct Member {
    std::string_view name;
    Value value;
};

// What a field holds; null where it is not given.
Value value_of(const qbobj_spec_t &row, const void *record);

// Calls `visit` with each member of an object.
template <class Visit>
void for_each_member(Record record, Visit visit)
{
    if (has_string_id(record.spec))
        visit(Member{"resource_id", field_at<const char *>(record.at, string_id_offset)});
    for (const qbobj_spec_t *row = record.spec + 1; row->type != QBOBJ_KIND_END; ++row)
        visit(Member{row->name, value_of(*row, record.at)});
}
template <class Visit>
void for_each_member(Value::Members members, Visit visit)
{
    for (const Member &member : members)
        visit(member);
}

// Calls `visit` with each element of an array.
template <class Visit>
void for_each_element(List list, Visit visit)
{
    for (const void *record = list.first; record != nullptr;
         record = field_at<const void *>(record, link_offset))
        visit(Value(Record{list.spec, record}));
}
template <class Visit>
void for_each_element(Value::Elements elements, Visit visit)
{
    for (const Value &element : elements)
        visit(element);
}

template <class Held>
concept Object = std::same_as<Held, Record> || std::same_as<Held, Value::Members>;
template <class Held>
concept Array = std::same_as<Held, List> || std::same_as<Held, Value::Elements>;

// The members or elements; none of what is no object or array.
std::vector<Member> members_of(const Value &value);
std::vector<Value> elements_of(const Value &value);

} // namespace qbobj_json
