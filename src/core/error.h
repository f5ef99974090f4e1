// How a worker fails and what it logs.
#pragma once

#include "core/format.h"
#include "core/memory.h"

#include <qbobj/env.h>

#include <tuple>

namespace qbobj
{

// Fills the error record and logs its message; `format` may be null. Returns `code`.
int report_error(const qbobj_env_t &env, const Site &site, qbobj_error_t code, const char *format, ...);

// Ends the process with the standard report of a failed assertion, in every build type.
[[noreturn]] void assertion_failed(const char *expression, const Site &site, const char *function);

// An argument that a caller must never leave out.
inline void require(bool holds, const char *expression, const char *function, const Site &site = here())
{
    if (!holds)
        assertion_failed(expression, site, function);
}

inline bool logs(const qbdb_handle_t *qbdb, qbdb_loglevel_t level)
{
    return static_cast<unsigned>(qbdb->loglvl) >= static_cast<unsigned>(level);
}

// The formats below were checked against their arguments when they were compiled.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"

// The way a worker fails: `return raise(call, code, "message", ...)`. `Env` is a call or an environment.
template <class... Args>
int raise(const qbobj_env_t &env, qbobj_error_t code, const Message<Args...> &message, Args... args)
{
    return report_error(env, message.site, code, message.text, args...);
}

// For a helper that several units share: the place of the error is its caller's.
template <class... Args>
int raise_at(const Site &site, const qbobj_env_t &env, qbobj_error_t code, const Message<Args...> &message,
             Args... args)
{
    return report_error(env, site, code, message.text, args...);
}

// A line of the platform's log.
template <class... Args>
void log_at(const Site &site, const qbobj_env_t &env, qbdb_loglevel_t level, const Message<Args...> &message,
            Args... args)
{
    if (logs(env.qbdb, level))
        qbdb_log(env.qbdb, site.unit.data(), site.line, level, level <= QBDB_LOG_ERROR ? 1 : 0, message.text,
                 args...);
}
template <class... Args>
void log(const qbobj_env_t &env, qbdb_loglevel_t level, const Message<Args...> &message, Args... args)
{
    log_at<Args...>(message.site, env, level, message, args...);
}

// Text formatted into the pool.
template <class... Args>
char *print(const qbobj_env_t &env, const Message<Args...> &format, Args... args)
{
    return qb::print(env.qbdb->pool, format.text, args...);
}

#pragma GCC diagnostic pop

// An error that is raised when it comes to it; see error().
template <class... Args>
struct Error {
    qbobj_error_t code;
    Message<Args...> message;
    std::tuple<Args...> args;

    int raise(const qbobj_env_t &env) const
    {
        return std::apply([&](auto... arg) { return qbobj::raise<Args...>(env, code, message, arg...); },
                          args);
    }
};

// `call.require(select, error(QBOBJ_ERROR_DB_NOTEXISTS, "No share %d.", id), record, id)`
template <class... Args>
Error<Args...> error(qbobj_error_t code, const Message<Args...> &message, Args... args)
{
    return {code, message, {args...}};
}

// An absolute path that the library itself reads, below the handle's root. In the pool when it differs from
// `path`.
const char *path_below_root(const qbobj_env_t &env, const char *path);

} // namespace qbobj
