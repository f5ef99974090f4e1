// Finding out what a write changed.
#include "core/change_tracking.h"

#include <new>

namespace qbobj
{
namespace
{

// Without memory no operation goes on, whatever it makes of other failures.
int checked(int rc)
{
    if (rc == SQLITE_NOMEM)
        throw std::bad_alloc();
    return rc;
}

} // namespace

int copy_tables(Call &call, const WatchedTables &watched, const char **error, const Site &site)
{
    char *text = nullptr;
    const int rc = qbdb_sql_duplicate_tables(call.qbdb(), call.db(), watched.tag, watched.tables, &text,
                                             site.unit.data(), site.line);
    *error = or_empty(text);
    return checked(rc);
}

int compare_tables(Call &call, const WatchedTables &watched, const char *const *&changed, const char **error,
                   const Site &site)
{
    char *text = nullptr;
    const char **names = nullptr;
    const int rc = qbdb_sql_compare_tables(call.qbdb(), call.db(), watched.tag, watched.tables, &names, &text,
                                           site.unit.data(), site.line);
    changed = names;
    *error = or_empty(text);
    return checked(rc);
}

int drop_copies(Call &call, const WatchedTables &watched, const char **error, const Site &site)
{
    char *text = nullptr;
    const int rc = qbdb_sql_delete_tables(call.qbdb(), call.db(), watched.tag, watched.tables, &text,
                                          site.unit.data(), site.line);
    *error = or_empty(text);
    return checked(rc);
}

int copy_table(Call &call, const char *table, const char *copy, const char **error, const Site &site)
{
    char *text = nullptr;
    const int rc =
        qbdb_sql_duplicate_table(call.qbdb(), call.db(), table, copy, &text, site.unit.data(), site.line);
    *error = or_empty(text);
    return checked(rc);
}

int compare_rows(Call &call, const char *table, const char *copy, const char *where, int &changed,
                 const char **error, const Site &site)
{
    char *text = nullptr;
    const int rc = qbdb_sql_compare_table_row(call.qbdb(), call.db(), table, copy, where, &changed, &text,
                                              site.unit.data(), site.line);
    *error = or_empty(text);
    return checked(rc);
}

int tracked(Call &call, const WatchedTables &watched, int &changed, int (*write)(void *), void *context,
            const Site &site)
{
    const char *error = nullptr;
    if (copy_tables(call, watched, &error, site) != 0)
        return raise_at(site, call, QBOBJ_ERROR_DB_MISC, "Failed to copy the tables of %s. %s",
                        watched.subject, error);
    if (const int rc = write(context); rc != 0)
        return rc;
    char *text = nullptr;
    if (qbdb_sql_compare_tables2(call.qbdb(), call.db(), watched.tag, watched.tables, &changed, &text,
                                 site.unit.data(), site.line) != 0)
        return raise_at(site, call, QBOBJ_ERROR_DB_MISC, "Failed to compare the tables of %s. %s",
                        watched.subject, or_empty(text));
    if (drop_copies(call, watched, &error, site) != 0)
        return raise_at(site, call, QBOBJ_ERROR_DB_MISC, "Failed to drop the copies of the tables of %s. %s",
                        watched.subject, error);
    return 0;
}

} // namespace qbobj
