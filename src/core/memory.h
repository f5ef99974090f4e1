// Memory from the caller's pool, checked: the pool's own functions write into what they could not get.
#pragma once

#include <apr_pools.h>
#include <qbobj/types.h>

#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>

namespace qbobj
{

// Zeroed memory. The frame turns std::bad_alloc into QBOBJ_ERROR_OOM.
inline void *allocate(apr_pool_t *pool, std::size_t size)
{
    void *memory = apr_palloc(pool, size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return std::memset(memory, 0, size);
}

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

inline char *copy_text(apr_pool_t *pool, std::string_view text)
{
    char *copy = static_cast<char *>(allocate(pool, text.size() + 1));
    text.copy(copy, text.size());
    return copy;
}

// Null stays null.
inline char *copy_text(apr_pool_t *pool, const char *text)
{
    return text == nullptr ? nullptr : copy_text(pool, std::string_view(text));
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
