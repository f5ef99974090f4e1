// What every worker uses of its call: raising an error, logging, and memory from the caller's pool.
#pragma once

#include "frame/format.h"

#include <apr_pools.h>
#include <apr_strings.h>
#include <qbobj/env.h>

#include <new>
#include <type_traits>

namespace qbobj
{

// Fills the error record and logs its message; `format` may be null. Returns `code`.
int report_error(const qbobj_env_t *env, Site site, qbobj_error_t code, const char *format, ...);

// Ends the process with the standard report of a failed assertion, in every build type.
[[noreturn]] void assertion_failed(const char *expression, Site site, const char *function);

namespace
{

// An argument that a caller must never leave out.
inline void require(bool holds, const char *expression, const char *function, Site site = here())
{
    if (!holds)
        assertion_failed(expression, site, function);
}

// The way a worker fails: `return raise(env, code, "message", ...)`.
template <class... Args>
int raise(const qbobj_env_t *env, qbobj_error_t code, Message<Args...> message, Args... args)
{
    return report_error(env, message.site, code, message.text, args...);
}

// A failure that has a code but no message.
inline int raise(const qbobj_env_t *env, qbobj_error_t code, Site site = here())
{
    return report_error(env, site, code, nullptr);
}

// A line of the platform's log.
template <class... Args>
void log(const qbobj_env_t *env, qbdb_loglevel_t level, Message<Args...> message, Args... args)
{
    if (static_cast<unsigned>(env->qbdb->loglvl) >= static_cast<unsigned>(level)) {
        // The format was checked against its arguments when it was compiled.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
        qbdb_log(env->qbdb, message.site.unit, message.site.line, level, level <= QBDB_LOG_ERROR ? 1 : 0,
                 message.text, args...);
#pragma GCC diagnostic pop
    }
}

} // namespace

// Memory from the pool. The frame turns std::bad_alloc into QBOBJ_ERROR_OOM.
inline void *allocate(apr_pool_t *pool, std::size_t size)
{
    void *memory = apr_pcalloc(pool, size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

// A zeroed record.
template <class Record>
Record *create(const qbobj_env_t *env)
{
    static_assert(std::is_trivial_v<Record>);
    return static_cast<Record *>(allocate(env->qbdb->pool, sizeof(Record)));
}

inline char *copy_text(apr_pool_t *pool, const char *text)
{
    char *copy = apr_pstrdup(pool, text);
    if (copy == nullptr && text != nullptr)
        throw std::bad_alloc();
    return copy;
}

inline bool is_empty(const char *text)
{
    return text == nullptr || *text == '\0';
}

// An absolute path that the library itself reads, below the handle's root. In the pool when it differs from
// `path`.
const char *path_below_root(const qbobj_env_t *env, const char *path);

// For messages: a missing text reads as nothing.
inline const char *or_empty(const char *text)
{
    return text == nullptr ? empty_str : text;
}

namespace
{

// Text formatted into the pool.
template <class... Args>
char *print(const qbobj_env_t *env, Message<Args...> format, Args... args)
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
    char *text = apr_psprintf(env->qbdb->pool, format.text, args...);
#pragma GCC diagnostic pop
    if (text == nullptr)
        throw std::bad_alloc();
    return text;
}

} // namespace

} // namespace qbobj
