// Checked allocation from APR pools, for both libraries. Where APR returns null, or writes through it, these
// throw std::bad_alloc.
#pragma once

#include <apr_pools.h>
#include <apr_strings.h>

#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace qb
{

// `size` zeroed bytes, aligned for any type.
inline void *allocate(apr_pool_t *pool, std::size_t size)
{
    void *const memory = apr_palloc(pool, size);
    if (!memory)
        throw std::bad_alloc();
    return std::memset(memory, 0, size);
}

inline char *copy_text(apr_pool_t *pool, std::string_view text)
{
    auto *const copy = static_cast<char *>(allocate(pool, text.size() + 1));
    text.copy(copy, text.size());
    return copy;
}

// Null stays null.
inline char *copy_text(apr_pool_t *pool, const char *text)
{
    return text ? copy_text(pool, std::string_view(text)) : nullptr;
}

// As apr_pvsprintf().
#if defined(__GNUC__)
__attribute__((format(printf, 2, 0)))
#endif
inline char *
vprint(apr_pool_t *pool, const char *format, va_list arguments)
{
    char *const text = apr_pvsprintf(pool, format, arguments);
    if (!text)
        throw std::bad_alloc();
    return text;
}

#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
inline char *
print(apr_pool_t *pool, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    char *const text = apr_pvsprintf(pool, format, arguments);
    va_end(arguments);
    if (!text)
        throw std::bad_alloc();
    return text;
}

} // namespace qb
