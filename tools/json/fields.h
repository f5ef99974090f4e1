// Where a record's fields stand, as its schema says.
#pragma once

#include <qbobj/schema.h>

#include <cstdint>

namespace qbobj_json
{

// The field of a record that a schema row describes.
template <class Field>
Field &field_at(void *record, int offset)
{
    return *reinterpret_cast<Field *>(static_cast<char *>(record) + offset);
}
template <class Field>
const Field &field_at(const void *record, int offset)
{
    return *reinterpret_cast<const Field *>(static_cast<const char *>(record) + offset);
}

// `_link` is the first field of a record in a list, a string resource_id the second.
constexpr int link_offset = 0;
constexpr int string_id_offset = sizeof(void *);

inline bool is_list(const qbobj_spec_t *spec)
{
    return (spec->attr & QBOBJ_ATTR_LIST) != 0;
}
inline bool has_string_id(const qbobj_spec_t *spec)
{
    return (spec->attr & QBOBJ_ATTR_STRING_ID) != 0;
}

inline int size_of_number(const qbobj_spec_t &row)
{
    switch (row.type) {
    case QBOBJ_KIND_INT:
    case QBOBJ_KIND_UINT:
        return sizeof(int);
    case QBOBJ_KIND_INT64:
    case QBOBJ_KIND_UINT64:
        return sizeof(int64_t);
    default:
        return 0;
    }
}

inline bool has_void_flag(const qbobj_spec_t &row)
{
    return (row.attr & QBOBJ_ATTR_VOIDABLE) != 0 && size_of_number(row) != 0;
}
inline int void_flag_offset(const qbobj_spec_t &row)
{
    return row.offs_or_size - size_of_number(row);
}

} // namespace qbobj_json
