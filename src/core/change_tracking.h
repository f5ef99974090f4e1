// Finding out what a write changed: tables are copied, written, compared with their copies, and the copies dropped.
#pragma once

#include "core/call.h"

namespace qbobj
{

// Tables that are watched together. On the embedded platform watching costs what is changed, not what is there.
struct WatchedTables {
    const char *tag;           // of the copies' names
    const char *const *tables; // null ends them
    const char *subject;       // whose tables they are, in messages
};

// The steps. The texts of failures are the caller's; each returns the platform's result.
int copy_tables(Call &call, const WatchedTables &watched, const char **error, const Site &site = here());
// The null-terminated list of those that differ from their copies.
int compare_tables(Call &call, const WatchedTables &watched, const char *const *&changed, const char **error,
                   const Site &site = here());
int drop_copies(Call &call, const WatchedTables &watched, const char **error, const Site &site = here());

// One table under a name of its own, and those of its rows that satisfy `where` (SQL text): `changed` becomes 1 when they
// differ from the copy's, else 0.
int copy_table(Call &call, const char *table, const char *copy, const char **error,
               const Site &site = here());
int compare_rows(Call &call, const char *table, const char *copy, const char *where, int &changed,
                 const char **error, const Site &site = here());

// All of them around `write`; `changed` becomes 1 when any table differs, else 0. A failing `write` ends it.
int tracked(Call &call, const WatchedTables &watched, int &changed, int (*write)(void *), void *context,
            const Site &site);

template <class Write>
int tracked(Call &call, const WatchedTables &watched, int &changed, Write write, const Site &site = here())
{
    return tracked(
        call, watched, changed, [](void *context) -> int { return (*static_cast<Write *>(context))(); },
        &write, site);
}

} // namespace qbobj
