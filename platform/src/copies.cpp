// Copying tables and comparing them with their copies.
#include "common/pool.h"
#include "execution.h"

#include <algorithm>
#include <new>

using namespace qbdb;

namespace
{

constexpr const char *site = "table copies";

int check_names(const Call &call, std::string_view table, std::string_view copy)
{
    if (table.empty() || copy.empty() || sqlite3_stricmp(table.data(), copy.data()) == 0)
        return call.fail(SQLITE_MISUSE, "a copy needs a name of its own", site);
    return SQLITE_OK;
}

int drop_copy(const Call &call, const std::string &copy)
{
    qbdb_sysinfo *const state = call.state();
    if (state && state->copies.forget(copy)) // it was never made
        return SQLITE_OK;
    if (!has_temp_table(call.db, copy.c_str()))
        return SQLITE_OK;
    return execute(call, "DROP TABLE temp.\"%w\"", copy.c_str());
}

// So that qbdb_sql_compare_table_row() finds a row in the copy by its key, as it does in the table.
int index_copy(const Call &call, const char *table, const std::string &copy)
{
    Statement columns;
    const char *problem = nullptr;
    if (const int rc = prepare(call.db, "SELECT * FROM main." + quoted(table), 0, columns, &problem);
        rc != SQLITE_OK)
        return call.result(rc, site);
    for (int i = 0; i < sqlite3_column_count(columns.get()); i++) {
        const char *name = sqlite3_column_name(columns.get(), i);
        int is_key = 0;
        if (const int rc = name ? sqlite3_table_column_metadata(call.db, "main", table, name, nullptr,
                                                                nullptr, nullptr, &is_key, nullptr)
                                : SQLITE_NOMEM;
            rc != SQLITE_OK)
            return call.result(rc, site);
        if (is_key != 0)
            return execute(call, "CREATE INDEX temp.\"%w by key\" ON \"%w\"(\"%w\")", copy.c_str(),
                           copy.c_str(), name);
    }
    return SQLITE_OK;
}

int copy_now(const Call &call, const char *table, const std::string &copy)
{
    if (const int rc = check_names(call, table, copy); rc != SQLITE_OK)
        return rc;
    if (const int rc = drop_copy(call, copy); rc != SQLITE_OK)
        return rc;
    return execute(call, "CREATE TEMP TABLE \"%w\" AS SELECT * FROM main.\"%w\"", copy.c_str(), table);
}

// Inside a transaction of ours the changes are counted, which spares the copy.
bool counts_changes(const Call &call)
{
    const qbdb_sysinfo *const state = call.state();
    return state && state->transaction.open && state->copies.available() && !sqlite3_get_autocommit(call.db);
}

// `room` says that there is no temporary table at all, and so none that the copy would replace.
int copy_later(const Call &call, const char *table, const std::string &copy, bool room)
{
    if (const int rc = check_names(call, table, copy); rc != SQLITE_OK)
        return rc;
    if (sqlite3_table_column_metadata(call.db, "main", table, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      nullptr) != SQLITE_OK)
        return call.fail(SQLITE_ERROR, ("no such table: " + std::string(table)).c_str(), site);
    if (!room || call.state()->copies.changes(copy))
        if (const int rc = drop_copy(call, copy); rc != SQLITE_OK)
            return rc;
    call.state()->copies.watch(table, copy);
    return SQLITE_OK;
}

int add_rows(const Call &call, RowBag &bag, long count, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    Execution execution(call);
    RowImage row;
    int rc = execution.start(format, arguments);
    va_end(arguments);
    for (; rc == SQLITE_ROW; rc = execution.step()) {
        row.read(execution.statement());
        bag.add(row, count);
    }
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

int compare_rows(const Call &call, const char *table, const std::string &copy, const char *where,
                 bool &differ)
{
    RowBag bag;
    int rc = add_rows(call, bag, -1, "SELECT * FROM temp.\"%w\" WHERE %s", copy.c_str(), where);
    if (rc == SQLITE_OK)
        rc = add_rows(call, bag, +1, "SELECT * FROM main.\"%w\" WHERE %s", table, where);
    differ = !bag.empty();
    return rc;
}

int compare(const Call &call, const char *table, const std::string &copy, bool &differ)
{
    qbdb_sysinfo *const state = call.state();
    const RowBag *const changes = state ? state->copies.changes(copy) : nullptr;
    if (!changes)
        return compare_rows(call, table, copy, "1", differ);
    if (state->transaction.open && sqlite3_get_autocommit(call.db))
        return call.fail(SQLITE_ABORT, "the transaction was rolled back", site);
    if (!state->copies.reliable())
        throw std::bad_alloc();
    differ = !changes->empty();
    return SQLITE_OK;
}

// Calls visit(table, copy) for every table of the list up to the first failure.
template <class Visit>
int for_each_table(const char *tag, const char *const *tables, Visit visit)
{
    int rc = SQLITE_OK;
    for (; rc == SQLITE_OK && *tables; tables++)
        rc = visit(*tables, std::string(tag) + *tables);
    return rc;
}

} // namespace

int qbdb_sql_duplicate_table(qbdb_handle_t *qbdb, sqlite3 *db, const char *table, const char *copy,
                             char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    return guarded(call, [&] {
        const int rc = copy_now(call, table, copy);
        return rc == SQLITE_OK ? index_copy(call, table, copy) : rc;
    });
}

int qbdb_sql_duplicate_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                              char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    return guarded(call, [&] {
        if (!counts_changes(call))
            return for_each_table(tag, tables, [&](const char *table, const std::string &copy) {
                return copy_now(call, table, copy);
            });
        std::vector<std::string> temporary;
        if (const int rc = read_texts(call, temporary, "SELECT name FROM temp.sqlite_schema LIMIT 1");
            rc != SQLITE_OK)
            return rc;
        return for_each_table(tag, tables, [&](const char *table, const std::string &copy) {
            return copy_later(call, table, copy, temporary.empty());
        });
    });
}

int qbdb_sql_compare_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                            const char ***changed, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    *changed = nullptr;
    return guarded(call, [&] {
        std::vector<const char *> names;
        const int rc = for_each_table(tag, tables, [&](const char *table, const std::string &copy) {
            bool differ = false;
            const int compared = compare(call, table, copy, differ);
            if (compared == SQLITE_OK && differ)
                names.push_back(qb::copy_text(qbdb->pool, table));
            return compared;
        });
        if (rc != SQLITE_OK)
            return rc;
        names.push_back(nullptr);
        auto **const list =
            static_cast<const char **>(qb::allocate(qbdb->pool, names.size() * sizeof(const char *)));
        std::copy(names.begin(), names.end(), list);
        *changed = list;
        return SQLITE_OK;
    });
}

int qbdb_sql_compare_tables2(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                             int *changed, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    *changed = 0;
    return guarded(call, [&] {
        bool any = false;
        const int rc = for_each_table(tag, tables, [&](const char *table, const std::string &copy) {
            bool differ = false;
            const int compared = compare(call, table, copy, differ);
            any = any || differ;
            return compared;
        });
        *changed = rc == SQLITE_OK && any ? 1 : 0;
        return rc;
    });
}

int qbdb_sql_compare_table_row(qbdb_handle_t *qbdb, sqlite3 *db, const char *table, const char *copy,
                               const char *where, int *changed, char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    *changed = 0;
    return guarded(call, [&] {
        bool differ = false;
        const int rc = compare_rows(call, table, copy, where, differ);
        *changed = rc == SQLITE_OK && differ ? 1 : 0;
        return rc;
    });
}

int qbdb_sql_delete_tables(qbdb_handle_t *qbdb, sqlite3 *db, const char *tag, const char *const *tables,
                           char **errmsg, const char *file, int line)
{
    const Call call{qbdb, db, errmsg, file, line};
    return guarded(call, [&] {
        return for_each_table(tag, tables,
                              [&](const char *, const std::string &copy) { return drop_copy(call, copy); });
    });
}
