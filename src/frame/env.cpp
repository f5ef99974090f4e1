// The parts of the call environment that need no template.
#include "frame/env.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace qbobj
{

int report_error(const qbobj_env_t *env, Site site, qbobj_error_t code, const char *format, ...)
{
    qbobj_error_rec_t &err = *env->err;
    err.ec = code;
    err.file = site.unit;
    err.lineno = site.line;
    err.msg = nullptr;
    if (format == nullptr)
        return code;

    va_list args;
    va_start(args, format);
    err.msg = apr_pvsprintf(env->qbdb->pool, format, args);
    va_end(args);
    if (err.msg != nullptr && static_cast<unsigned>(env->qbdb->loglvl) >= QBDB_LOG_ERROR)
        qbdb_log(env->qbdb, site.unit, site.line, QBDB_LOG_ERROR, 1, "%s", err.msg);
    return code;
}

void assertion_failed(const char *expression, Site site, const char *function)
{
    // Callers know a worker by its exported operation.
    if (std::strncmp(function, "x_", 2) == 0)
        function += 2;
    std::fprintf(stderr, "%s: %s:%d: %s: Assertion `%s' failed.\n", program_invocation_short_name, site.unit,
                 site.line, function, expression);
    std::fflush(stderr);
    std::abort();
}

const char *path_below_root(const qbobj_env_t *env, const char *path)
{
    const char *root = env->qbdb->root;
    if (is_empty(root) || std::strcmp(root, "/") == 0 || path == nullptr || *path != '/')
        return path;
    return print(env, "%s%s", root, path);
}

} // namespace qbobj
