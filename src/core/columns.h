// From result rows to records: a SELECT, its failure and the members that its columns fill are one constant.
//
//     constexpr auto one_marker = select<int>("SELECT A.app_name,A.app_data FROM `$application_on_share` A WHERE A.id=%d",
//                                             "Failed DB Query for 'SELECT application_on_share'. %s",
//                                             &qbobj_UsedBy_t::AppName, or_empty(&qbobj_UsedBy_t::AppData));
//
// The types of the statement's arguments stand in the angle brackets. A member pointer alone takes its column as it is
// (a NULL text is null, a NULL number 0); the functions below name the other ways. A column may also be a function
// object taking (env, record, cell). One member too few or too many does not compile.
#pragma once

#include "core/list.h"
#include "core/members.h"
#include "core/statement.h"

#include <charconv>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <tuple>

namespace qbobj
{

/* ---- Cells --------------------------------------------------------------------------------------------- */

inline int to_int(const char *cell)
{
    if (cell == nullptr)
        return 0;
    // What the database writes of a number; anything else is read as far as it goes.
    const char *const end = cell + std::strlen(cell);
    int number = 0;
    if (const auto [rest, error] = std::from_chars(cell, end, number); error == std::errc() && rest == end)
        return number;
    return static_cast<int>(std::strtol(cell, nullptr, 10));
}

// Sizes: "0x" and a leading "0" choose the base.
inline uint64_t to_uint64(const char *cell)
{
    return cell == nullptr ? 0 : std::strtoull(cell, nullptr, 0);
}

inline void convert(apr_pool_t *pool, const char *&field, const char *cell)
{
    field = copy_text(pool, cell);
}
inline void convert(apr_pool_t *, int &field, const char *cell)
{
    field = to_int(cell);
}
inline void convert(apr_pool_t *, int64_t &field, const char *cell)
{
    field = cell == nullptr ? 0 : std::strtoll(cell, nullptr, 0);
}
inline void convert(apr_pool_t *, uint64_t &field, const char *cell)
{
    field = to_uint64(cell);
}

/* ---- Columns ------------------------------------------------------------------------------------------- */

// A text that is "" when the column is NULL.
template <class Record>
constexpr auto or_empty(const char *Record::*member)
{
    return [member](const qbobj_env_t &env, Record &record, const char *cell) {
        record.*member = cell == nullptr ? empty_str : copy_text(env.qbdb->pool, cell);
    };
}

// An optional number: read, it is given. `given<&R::_void_X, &R::X>`
template <auto Flag, auto Number>
requires FlagOf<Flag, Number>
inline constexpr auto given = [](const qbobj_env_t &env, auto &record, const char *cell) {
    record.*Flag = 0;
    convert(env.qbdb->pool, record.*Number, cell);
};

// A switch stored the other way round: NotAvailable from `available`.
template <class Record>
constexpr auto negated(int Record::*member)
{
    return [member](const qbobj_env_t &, Record &record, const char *cell) {
        record.*member = to_int(cell) == 0;
    };
}

// Two members that receive the same column.
template <class First, class Second>
constexpr auto both(First first, Second second)
{
    return std::pair{first, second};
}

// A column that no member receives.
struct Skipped {
};
inline constexpr Skipped skipped{};

// A member of the record, or of the one that it is derived from.
template <class Record, class Base, class Value>
requires std::derived_from<Record, Base>
void fill_column(const qbobj_env_t &env, Record &record, Value Base::*const &member, const char *cell)
{
    convert(env.qbdb->pool, record.*member, cell);
}
template <class Record>
void fill_column(const qbobj_env_t &, Record &, const Skipped &, const char *)
{
}
template <class Record, std::invocable<const qbobj_env_t &, Record &, const char *> Column>
void fill_column(const qbobj_env_t &env, Record &record, const Column &column, const char *cell)
{
    column(env, record, cell);
}
template <class Record, class First, class Second>
void fill_column(const qbobj_env_t &env, Record &record, const std::pair<First, Second> &members,
                 const char *cell)
{
    fill_column(env, record, members.first, cell);
    fill_column(env, record, members.second, cell);
}

// A column of a record's part, which is made when there is none yet.
template <class Record, class Part, class Column>
constexpr auto of(Part *Record::*member, Column column)
{
    return [member, column](const qbobj_env_t &env, Record &record, const char *cell) {
        if (record.*member == nullptr)
            record.*member = create<Part>(env.qbdb->pool);
        fill_column(env, *(record.*member), column, cell);
    };
}

/* ---- The constant -------------------------------------------------------------------------------------- */

void number_of_columns_differs_from_the_members(); // never defined: reaching it stops the compilation

// The columns of a SELECT: the commas up to its FROM that stand in no parentheses and no quotes, and one.
constexpr std::size_t count_columns(std::string_view sql)
{
    constexpr std::string_view all_of_another = "SELECT * FROM (";
    if (sql.starts_with(all_of_another))
        sql.remove_prefix(all_of_another.size());
    std::size_t columns = 1;
    int depth = 0;
    char quote = '\0';
    const auto is_blank = [](char c) { return c == ' ' || c == '\n' || c == '\t'; };
    for (std::size_t at = 0; at < sql.size(); ++at) {
        const char c = sql[at];
        if (quote != '\0') {
            if (c == quote)
                quote = '\0';
        } else if (c == '\'' || c == '"' || c == '`') {
            quote = c;
        } else if (c == '(' || c == ')') {
            depth += c == '(' ? 1 : -1;
        } else if (depth == 0 && c == ',') {
            ++columns;
        } else if (depth == 0 && at > 0 && (is_blank(sql[at - 1]) || sql[at - 1] == ')') &&
                   (sql.substr(at, 4) == "FROM" || sql.substr(at, 4) == "from") && at + 4 < sql.size() &&
                   is_blank(sql[at + 4])) {
            break;
        }
    }
    return columns;
}

template <class Columns, class... Args>
struct Select {
    Statement<Args...> sql;
    Failure failure;
    Columns columns;

    // For a helper that several units share: the place of the failure is its caller's.
    constexpr Select at(const Site &site) const { return {sql, failure.at(site), columns}; }
};

// As select(), with the columns as one tuple, which several SELECTs share.
template <class... Args, class... Columns>
consteval auto select_into(std::type_identity_t<Statement<Args...>> sql, Failure failure,
                           std::tuple<Columns...> columns)
{
    if (count_columns(sql.text) != sizeof...(Columns))
        number_of_columns_differs_from_the_members();
    return Select<std::tuple<Columns...>, Args...>{sql, failure, columns};
}

// See the top of this file.
template <class... Args, class... Columns>
consteval auto select(std::type_identity_t<Statement<Args...>> sql, Failure failure, Columns... columns)
{
    return select_into<Args...>(sql, failure, std::tuple<Columns...>{columns...});
}

// Fills a record from a row.
template <class Record, class... Columns>
void fill(const qbobj_env_t &env, Record &record, const std::tuple<Columns...> &columns, Row row)
{
    std::apply([&](const auto &...column) { (fill_column(env, record, column, *row++), ...); }, columns);
}

} // namespace qbobj
