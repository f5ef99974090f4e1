// The statement operations of the platform interface.
#include "common/pool.h"
#include "execution.h"
#include "result_table.h"

using namespace qbdb;

namespace
{

int read_table(const Call &call, char ***table, int *nrow, int *ncol, const char *format, va_list arguments)
{
    Execution execution(call);
    int rc = execution.start(format, arguments);
    if (rc != SQLITE_ROW)
        return rc == SQLITE_DONE ? SQLITE_OK : rc;
    ResultTable result(execution.scratch());
    result.add_names(execution.statement(), execution.names());
    int rows = 0;
    for (; rc == SQLITE_ROW; rc = execution.step(), rows++)
        result.add_row(execution.statement());
    if (rc != SQLITE_DONE)
        return rc;
    char **const cells = result.release();
    if (!cells)
        throw std::bad_alloc();
    *table = cells;
    *nrow = rows;
    *ncol = sqlite3_column_count(execution.statement());
    return SQLITE_OK;
}

int visit_rows(const Call &call, qbdb_row_visitor_t visit, void *context, const char *format,
               va_list arguments)
{
    Execution execution(call);
    int rc = execution.start(format, arguments);
    RowTexts texts(execution.scratch());
    for (; rc == SQLITE_ROW; rc = execution.step()) {
        const std::span<const char *const> cells = texts.read(execution.statement());
        if (visit(context, static_cast<int>(cells.size()), cells.data()) != 0)
            return SQLITE_OK;
    }
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

// Reads the first cell of the first row, if there is one.
template <class Take>
int read_cell(const Call &call, int *found, const char *format, va_list arguments, Take take)
{
    Execution execution(call);
    const int rc = execution.start(format, arguments);
    if (rc != SQLITE_ROW)
        return rc == SQLITE_DONE ? SQLITE_OK : rc;
    take(execution.statement());
    if (found)
        *found = 1;
    return SQLITE_OK;
}

} // namespace

int qbdb_sql_exec_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char **errmsg, const char *file, int line,
                          const char *format, ...)
{
    const Call call{qbdb, db, errmsg, file, line};
    va_list arguments;
    va_start(arguments, format);
    const int result = guarded(call, [&] {
        Execution execution(call);
        int rc = execution.start(format, arguments);
        while (rc == SQLITE_ROW)
            rc = execution.step();
        return rc == SQLITE_DONE ? SQLITE_OK : rc;
    });
    va_end(arguments);
    return result;
}

int qbdb_sql_get_table_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char ***table, int *nrow, int *ncol,
                               char **errmsg, const char *file, int line, const char *format, ...)
{
    const Call call{qbdb, db, errmsg, file, line};
    int rows = 0;
    int columns = 0;
    *table = nullptr;
    va_list arguments;
    va_start(arguments, format);
    const int rc = guarded(call, [&] { return read_table(call, table, &rows, &columns, format, arguments); });
    va_end(arguments);
    if (nrow)
        *nrow = rows;
    if (ncol)
        *ncol = columns;
    return rc;
}

int qbdb_sql_visit_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, qbdb_row_visitor_t visit, void *context,
                           char **errmsg, const char *file, int line, const char *format, ...)
{
    const Call call{qbdb, db, errmsg, file, line};
    va_list arguments;
    va_start(arguments, format);
    const int rc = guarded(call, [&] { return visit_rows(call, visit, context, format, arguments); });
    va_end(arguments);
    return rc;
}

int qbdb_sql_get_int32_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, int32_t *value, int *found, char **errmsg,
                               const char *file, int line, const char *format, ...)
{
    const Call call{qbdb, db, errmsg, file, line};
    *value = 0;
    if (found)
        *found = 0;
    va_list arguments;
    va_start(arguments, format);
    const int rc = guarded(call, [&] {
        return read_cell(call, found, format, arguments,
                         [&](sqlite3_stmt *row) { *value = sqlite3_column_int(row, 0); });
    });
    va_end(arguments);
    return rc;
}

int qbdb_sql_get_scaler_mprintf(qbdb_handle_t *qbdb, sqlite3 *db, char **value, int *found, char **errmsg,
                                const char *file, int line, const char *format, ...)
{
    const Call call{qbdb, db, errmsg, file, line};
    *value = nullptr;
    if (found)
        *found = 0;
    va_list arguments;
    va_start(arguments, format);
    const int rc = guarded(call, [&] {
        return read_cell(call, found, format, arguments, [&](sqlite3_stmt *row) {
            const std::string_view text = cell_text(row, 0);
            *value = text.data() ? qb::copy_text(qbdb->pool, text) : nullptr;
        });
    });
    va_end(arguments);
    return rc;
}
