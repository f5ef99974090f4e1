// Handing a problem to a caller that has no handle yet.
#pragma once

#include "database_file.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdio>
#include <new>

namespace qbdb
{

// Runs the body and puts the text of its Problem (empty for none) into the caller's buffer. Returns its
// primary code. The C interface lets no exception through.
template <class Body>
int answer(char *message, std::size_t size, Body &&body)
{
    const auto tell = [&](const char *text) {
        if (message && size > 0)
            std::snprintf(message, size, "%s", text);
    };
    try {
        const Problem problem = body();
        tell(problem.text.c_str());
        return problem.code & 0xff;
    } catch (const std::bad_alloc &) {
        tell("out of memory");
        return SQLITE_NOMEM;
    }
}

} // namespace qbdb
