// Builds the schemas of the record types from the records themselves, and finds a field of a record through
// its schema. A schema that disagrees with its record does not compile.
#pragma once

#include "core/schema_of.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <type_traits>

namespace qbobj
{

// ---- Reading a record through its schema ---------------------------------------------------------------

constexpr bool is_number(const qbobj_spec_t &row)
{
    return row.type == QBOBJ_KIND_INT || row.type == QBOBJ_KIND_UINT || row.type == QBOBJ_KIND_INT64 ||
           row.type == QBOBJ_KIND_UINT64;
}

constexpr int size_of(const qbobj_spec_t &row)
{
    const bool is_32_bit = row.type == QBOBJ_KIND_INT || row.type == QBOBJ_KIND_UINT;
    return is_32_bit ? sizeof(int) : sizeof(std::int64_t);
}

// Whether the field has a `_void_` flag.
constexpr bool has_void_flag(const qbobj_spec_t &row)
{
    return (row.attr & QBOBJ_ATTR_VOIDABLE) != 0 && is_number(row);
}

constexpr int void_flag_offset(const qbobj_spec_t &row)
{
    return row.offs_or_size - size_of(row);
}

template <class T>
T value_at(const void *record, int offset)
{
    T value;
    std::memcpy(&value, static_cast<const char *>(record) + offset, sizeof value);
    return value;
}

// ---- Describing a record -------------------------------------------------------------------------------

template <class Record>
concept HasLink = std::same_as<decltype(Record::_link), Record *>;
template <class Record, class Id>
concept HasId = std::same_as<decltype(Record::resource_id), Id>;
template <class Record>
concept HasStringId = HasId<Record, const char *>;
template <class Member>
concept RecordPointer = std::same_as<decltype(schema_of(Member{})), const qbobj_spec_t *>;

template <class Record>
constexpr qbobj_spec_t header_row(const char *name)
{
    int attr = 0;
    if (HasLink<Record>)
        attr |= QBOBJ_ATTR_LIST;
    if (HasId<Record, int>)
        attr |= QBOBJ_ATTR_INT_ID;
    if (HasStringId<Record>)
        attr |= QBOBJ_ATTR_STRING_ID;
    return {QBOBJ_KIND_HEADER, name, static_cast<int>(sizeof(Record)), nullptr, attr};
}

template <class Member>
constexpr char kind_of()
{
    if constexpr (std::same_as<Member, const char *>)
        return QBOBJ_KIND_STRING;
    else if constexpr (std::same_as<Member, int>)
        return QBOBJ_KIND_INT;
    else if constexpr (std::same_as<Member, unsigned>)
        return QBOBJ_KIND_UINT;
    else if constexpr (std::same_as<Member, std::int64_t>)
        return QBOBJ_KIND_INT64;
    else if constexpr (std::same_as<Member, std::uint64_t>)
        return QBOBJ_KIND_UINT64;
    else {
        static_assert(RecordPointer<Member>, "a member of this type cannot be described");
        return QBOBJ_KIND_RECORD;
    }
}

template <class Member>
constexpr qbobj_spec_t field_row(const char *name, std::size_t offset, int attr)
{
    const qbobj_spec_t *nested = nullptr;
    if constexpr (kind_of<Member>() == QBOBJ_KIND_RECORD)
        nested = schema_of(Member{});
    return {kind_of<Member>(), name, static_cast<int>(offset), nested, attr};
}

// A number with a flag; `flag` is where the record has the flag of that name.
template <class Member, class Flag>
constexpr qbobj_spec_t voidable_row(const char *name, std::size_t offset, std::size_t flag)
{
    static_assert(std::same_as<Flag, int>, "a _void_ flag is an int");
    const qbobj_spec_t row = field_row<Member>(name, offset, QBOBJ_ATTR_VOIDABLE);
    // The dump finds the flag by its distance alone; the throw makes any other place a compile error.
    if (!is_number(row) || void_flag_offset(row) != static_cast<int>(flag))
        throw "the _void_ flag does not stand the field's size before the field";
    return row;
}

template <class Member>
constexpr qbobj_spec_t list_row(const char *name, std::size_t offset)
{
    static_assert(HasLink<std::remove_pointer_t<Member>>, "a list consists of records with _link");
    return field_row<Member>(name, offset, QBOBJ_ATTR_LIST_FIELD | QBOBJ_ATTR_VOIDABLE);
}

template <class Member>
constexpr qbobj_spec_t optional_row(const char *name, std::size_t offset)
{
    static_assert(std::is_pointer_v<Member>, "an optional number is voidable");
    return field_row<Member>(name, offset, QBOBJ_ATTR_VOIDABLE);
}

inline constexpr qbobj_spec_t end_row = {QBOBJ_KIND_END, nullptr, 0, nullptr, 0};

// ---- Checking a description ----------------------------------------------------------------------------

// Stands for a member of any type, to count members by trying how many initialisers a record takes.
struct AnyMember {
    template <class Member>
    operator Member() const;
};

template <class Record, class... Members>
constexpr std::size_t member_count(Members... members)
{
    if constexpr (requires { Record{members..., AnyMember{}}; })
        return member_count<Record>(members..., AnyMember{});
    else
        return sizeof...(members);
}

constexpr int aligned(int offset, int alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

// Whether the rows lie one behind the other as in the record: behind `_link` and a string `resource_id`,
// which are not listed, each at the next place that suits it, and up to the record's end.
template <class Record>
constexpr bool rows_fill_record(std::span<const qbobj_spec_t> rows)
{
    constexpr int pointer = sizeof(void *);
    int end = (HasLink<Record> ? pointer : 0) + (HasStringId<Record> ? pointer : 0);
    for (const qbobj_spec_t &row : rows) {
        if (has_void_flag(row))
            end = aligned(end, sizeof(int)) + static_cast<int>(sizeof(int));
        end = aligned(end, size_of(row));
        if (row.offs_or_size != end)
            return false;
        end += size_of(row);
    }
    return aligned(end, alignof(Record)) == sizeof(Record);
}

// Whether the names are right: an int `resource_id` comes first, and no flag is listed.
template <class Record>
constexpr bool names_fit(std::span<const qbobj_spec_t> rows)
{
    const auto is_flag = [](const qbobj_spec_t &row) {
        return std::string_view(row.name).starts_with("_void_");
    };
    const bool id_comes_first = rows.front().name == std::string_view("resource_id");
    return id_comes_first == HasId<Record, int> && std::ranges::none_of(rows, is_flag);
}

// Whether the rows list every member of the record, once and in order.
template <class Record, std::size_t Size>
constexpr bool describes(const qbobj_spec_t (&spec)[Size])
{
    const auto rows = std::span<const qbobj_spec_t>(spec).subspan(1, Size - 2);
    const auto flags = static_cast<std::size_t>(std::ranges::count_if(rows, has_void_flag));
    const std::size_t unlisted = (HasLink<Record> ? 1 : 0) + (HasStringId<Record> ? 1 : 0) + flags;
    return std::is_standard_layout_v<Record> && rows_fill_record<Record>(rows) && names_fit<Record>(rows) &&
           member_count<Record>() == rows.size() + unlisted;
}

} // namespace qbobj

// The rows of a schema. Only a macro gets at a member's name and position; all else is deduced from its type.
// FIELD: always given. VOIDABLE: a number with a `_void_` flag. LIST: the head of a list. OPTIONAL: a string
// or record that may be left out.
#define FIELD(name) qbobj::field_row<decltype(Record::name)>(#name, offsetof(Record, name), 0)
#define VOIDABLE(name)                                                                                       \
    qbobj::voidable_row<decltype(Record::name), decltype(Record::_void_##name)>(                             \
        #name, offsetof(Record, name), offsetof(Record, _void_##name))
#define LIST(name) qbobj::list_row<decltype(Record::name)>(#name, offsetof(Record, name))
#define OPTIONAL(name) qbobj::optional_row<decltype(Record::name)>(#name, offsetof(Record, name))

// Defines spec_<Type>. A variable with C linkage is the same one in every namespace; the namespace of its own
// is what lets the rows speak of `Record`.
#define QBOBJ_SCHEMA(Type, ...)                                                                              \
    namespace schema_of_##Type                                                                               \
    {                                                                                                        \
        using Record = qbobj_##Type##_t;                                                                     \
        extern "C" QBOBJ_API constexpr qbobj_spec_t spec_##Type[] = {qbobj::header_row<Record>(#Type),       \
                                                                     __VA_ARGS__, qbobj::end_row};           \
        static_assert(qbobj::describes<Record>(spec_##Type), "spec_" #Type " disagrees with its record");    \
    }
