// What a statement gives back, and how its failure is told.
#pragma once

#include "core/error.h"

#include <cstddef>
#include <utility>

namespace qbobj
{

inline constexpr int constraint_violation = 19; // SQLITE_CONSTRAINT

void failure_text_with_more_than_the_database_text(); // never defined: reaching it stops the compilation

// The text of a failed statement: `Words` times %s, and at most once more for the database's text.
template <std::size_t Words>
struct FailureText {
    template <std::size_t Size>
    consteval FailureText(const char (&literal)[Size], const Site &at = here()) : text(literal), site(at)
    {
        const std::size_t texts = conversions({literal, Size - 1});
        if (texts != Words && texts != Words + 1)
            failure_text_with_more_than_the_database_text();
    }

    const char *text;
    Site site;

  private:
    static constexpr std::size_t conversions(std::string_view format)
    {
        std::size_t count = 0;
        for (std::size_t at = format.find('%'); at != format.npos; at = format.find('%', at + 2)) {
            const std::string_view conversion = format.substr(at, 2);
            if (conversion == "%s")
                ++count;
            else if (conversion != "%%")
                failure_text_with_more_than_the_database_text();
        }
        return count;
    }
};

// How the failure of a statement is reported. A literal is one: "Failed DB Query for 'DELETE x'. %s"; so are
// {"Failed DB Query for 'DELETE %s'. %s", table} and {QBOBJ_ERROR_API_ARGS, "Unknown volume."}.
class Failure
{
  public:
    template <std::size_t Size>
    consteval Failure(const char (&literal)[Size], const Site &at = here())
        : Failure(QBOBJ_ERROR_DB_MISC, FailureText<0>(literal, at))
    {
    }
    constexpr Failure(qbobj_error_t code, FailureText<0> format)
        : format_{format.text, format.site}, code_(code)
    {
    }
    constexpr Failure(FailureText<1> format, const char *word)
        : format_{format.text, format.site}, word_(word), named_(true)
    {
    }

    const Site &site() const { return format_.site; }
    // For a helper that several units share: the place of the failure is its caller's.
    constexpr Failure at(const Site &site) const
    {
        Failure moved = *this;
        moved.format_.site = site;
        return moved;
    }
    int raise(const qbobj_env_t &env, const char *database_text) const;

  private:
    struct Format {
        const char *text;
        Site site;
    };
    Format format_;
    const char *word_ = nullptr;
    bool named_ = false;
    qbobj_error_t code_ = QBOBJ_ERROR_DB_MISC;
};

// How a statement ended; `if (!status)` asks whether it failed.
struct Status {
    int rc = 0;
    const char *message = nullptr; // the database's error text

    explicit operator bool() const { return rc == 0; }
    const char *error() const { return or_empty(message); }
};

struct Number : Status {
    int32_t value = 0; // 0 for a NULL and for no row
    int found = 0;     // non-zero when there was a row
};

struct Text : Status {
    char *value = nullptr; // in the pool; null for a NULL and for no row
    int found = 0;         // non-zero when there was a row
};

// One row of a result: its cells as text, null for NULL.
using Row = const char *const *;

// A result table; it owns its cells.
class Table : public Status
{
  public:
    Table() = default;
    Table(Table &&other) noexcept { *this = std::move(other); }
    Table &operator=(Table &&other) noexcept
    {
        std::swap(rc, other.rc);
        std::swap(message, other.message);
        std::swap(cells_, other.cells_);
        std::swap(rows_, other.rows_);
        std::swap(columns_, other.columns_);
        return *this;
    }
    Table(const Table &) = delete;
    Table &operator=(const Table &) = delete;
    ~Table() { sqlite3_free_table(cells_); }

    class Iterator
    {
      public:
        Iterator(Row row, int columns) : row_(row), columns_(columns) {}
        Row operator*() const { return row_; }
        Iterator &operator++()
        {
            row_ += columns_;
            return *this;
        }
        bool operator==(const Iterator &other) const { return row_ == other.row_; }

      private:
        Row row_;
        int columns_;
    };

    int size() const { return rows_; }
    bool empty() const { return rows_ == 0; }
    // Row 0 of the platform's table holds the column names.
    Iterator begin() const { return {cells_ == nullptr ? nullptr : cells_ + columns_, columns_}; }
    Iterator end() const
    {
        return {cells_ == nullptr ? nullptr : cells_ + static_cast<std::ptrdiff_t>(rows_ + 1) * columns_,
                columns_};
    }

  private:
    friend class Call;
    char **cells_ = nullptr;
    int rows_ = 0;
    int columns_ = 0;
};

} // namespace qbobj
