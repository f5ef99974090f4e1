// Memory from the caller's pool, checked, and the empty text.
#pragma once

#include "common/pool.h"

#include <qbobj/types.h>

#include <type_traits>

namespace qbobj
{

// They throw std::bad_alloc, which the frame turns into QBOBJ_ERROR_OOM.
using qb::allocate;
using qb::copy_text;

// A zeroed record.
template <class Record>
Record *create(apr_pool_t *pool)
{
    static_assert(std::is_trivial_v<Record>);
    return static_cast<Record *>(allocate(pool, sizeof(Record)));
}

// `count` zeroed elements.
template <class Element>
Element *create_array(apr_pool_t *pool, std::size_t count)
{
    static_assert(std::is_trivial_v<Element>);
    if (count > static_cast<std::size_t>(-1) / 2 / sizeof(Element))
        throw std::bad_alloc();
    return static_cast<Element *>(allocate(pool, count * sizeof(Element)));
}

inline bool is_empty(const char *text)
{
    return text == nullptr || *text == '\0';
}

// For messages: a missing text reads as nothing.
inline const char *or_empty(const char *text)
{
    return text == nullptr ? empty_str : text;
}

} // namespace qbobj
