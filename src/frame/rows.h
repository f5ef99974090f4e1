// From result rows to records: a record is filled by a table of its members in the order of the SELECT's
// columns.
//
//     constexpr auto columns = std::tuple{&qbobj_UsedBy_t::AppName, or_empty(&qbobj_UsedBy_t::AppData)};
//
// A member pointer alone takes the column as it is (a NULL text is null, a NULL number 0); the functions
// below name the other ways. An element may also be a function object taking (env, record, cell).
#pragma once

#include "frame/sql.h"

#include <concepts>
#include <cstdlib>
#include <tuple>

namespace qbobj
{

inline int to_int(const char *cell)
{
    return cell == nullptr ? 0 : static_cast<int>(std::strtol(cell, nullptr, 10));
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

// A text that is "" when the column is NULL.
template <class Record>
constexpr auto or_empty(const char *Record::*member)
{
    return [member](const qbobj_env_t *env, Record &record, const char *cell) {
        record.*member = cell == nullptr ? empty_str : copy_text(env->qbdb->pool, cell);
    };
}

// An optional number together with its `_void_` flag: read, it is given.
template <class Record, class Number>
constexpr auto given(int Record::*flag, Number Record::*member)
{
    return [flag, member](const qbobj_env_t *env, Record &record, const char *cell) {
        record.*flag = 0;
        convert(env->qbdb->pool, record.*member, cell);
    };
}

// A switch stored the other way round: NotAvailable from `available`.
template <class Record>
constexpr auto negated(int Record::*member)
{
    return [member](const qbobj_env_t *, Record &record, const char *cell) {
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

template <class Record, class Value>
void fill_column(const qbobj_env_t *env, Record &record, Value Record::*const &member, const char *cell)
{
    convert(env->qbdb->pool, record.*member, cell);
}
template <class Record>
void fill_column(const qbobj_env_t *, Record &, const Skipped &, const char *)
{
}
template <class Record, std::invocable<const qbobj_env_t *, Record &, const char *> Column>
void fill_column(const qbobj_env_t *env, Record &record, const Column &column, const char *cell)
{
    column(env, record, cell);
}
template <class Record, class First, class Second>
void fill_column(const qbobj_env_t *env, Record &record, const std::pair<First, Second> &members,
                 const char *cell)
{
    fill_column(env, record, members.first, cell);
    fill_column(env, record, members.second, cell);
}

// Fills a record from a row, whose columns must be as many as the table's.
template <class Record, class... Columns>
void fill(const qbobj_env_t *env, Record &record, const std::tuple<Columns...> &columns, const Row &row)
{
    if (row.columns() != static_cast<int>(sizeof...(Columns)))
        assertion_failed("row.columns() == columns", {"rows", __LINE__}, __func__);
    std::apply(
        [&](const auto &...column) {
            int next = 0;
            (fill_column(env, record, column, row[next++]), ...);
        },
        columns);
}

// The end of a list; appending costs the same however long the list is.
template <class Record>
class Tail
{
  public:
    explicit Tail(Record *&head) : end_(&head)
    {
        while (*end_ != nullptr)
            end_ = &(*end_)->_link;
    }
    // Appends a new, zeroed record.
    Record &append(const qbobj_env_t *env)
    {
        Record *record = create<Record>(env);
        *end_ = record;
        end_ = &record->_link;
        return *record;
    }

  private:
    Record **end_;
};

// Appends one record a row to the list.
template <class Record, class... Columns>
void append_rows(const qbobj_env_t *env, Record *&head, const std::tuple<Columns...> &columns,
                 const Table &table)
{
    Tail<Record> tail(head);
    for (const Row row : table)
        fill(env, tail.append(env), columns, row);
}

// The records of a chain, for a range-for.
template <class Record>
class Chain
{
  public:
    explicit Chain(Record *head) : head_(head) {}
    class Iterator
    {
      public:
        explicit Iterator(Record *record) : record_(record) {}
        Record &operator*() const { return *record_; }
        Iterator &operator++()
        {
            record_ = record_->_link;
            return *this;
        }
        bool operator==(const Iterator &) const = default;

      private:
        Record *record_;
    };
    Iterator begin() const { return Iterator(head_); }
    Iterator end() const { return Iterator(nullptr); }

  private:
    Record *head_;
};

} // namespace qbobj
