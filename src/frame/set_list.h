// The SET list of a partial update: pairs "column=value" joined by commas, of limited size. With another
// separator, the conditions of a WHERE.
#pragma once

#include "frame/sql.h"

#include <array>
#include <memory>
#include <string_view>

namespace qbobj
{

// What becomes of a pair that no longer fits.
enum class Overflow {
    drop,  // left out, and a warning naming the column is logged
    refuse // the whole update must fail: see SetList::refused()
};

template <std::size_t Size>
class SetList
{
  public:
    SetList(const qbobj_env_t *env, Overflow overflow, std::string_view separator = ",")
        : env_(env), overflow_(overflow), separator_(separator)
    {
    }

    // Adds a pair such as "comment=%Q".
    template <class... Args>
    void add(Statement<Args...> pair, Args... args)
    {
        const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_mprintf(pair.text, args...),
                                                                  sqlite3_free);
        if (text == nullptr)
            throw std::bad_alloc();
        append(text.get(), pair.site);
    }

    bool empty() const { return length_ == 0; }
    const char *text() const { return buffer_.data(); }
    // The first column that did not fit and must not be dropped; null when all fitted.
    const char *refused() const { return refused_; }

  private:
    void append(std::string_view pair, Site site)
    {
        const std::string_view separator = empty() ? std::string_view() : separator_;
        if (length_ + separator.size() + pair.size() + 1 > Size) {
            overflowed(pair.substr(0, pair.find_first_of("= ")), site);
            return;
        }
        length_ += separator.copy(&buffer_[length_], separator.size());
        length_ += pair.copy(&buffer_[length_], pair.size());
        buffer_[length_] = '\0';
    }

    void overflowed(std::string_view column, Site site)
    {
        const char *name = apr_pstrmemdup(env_->qbdb->pool, column.data(), column.size());
        if (overflow_ == Overflow::refuse)
            refused_ = refused_ == nullptr ? name : refused_;
        else if (static_cast<unsigned>(env_->qbdb->loglvl) >= QBDB_LOG_WARN)
            qbdb_log(env_->qbdb, site.unit, site.line, QBDB_LOG_WARN, 0,
                     "The value of column '%s' does not fit into the update and is left out.\n", name);
    }

    const qbobj_env_t *env_;
    Overflow overflow_;
    std::string_view separator_;
    const char *refused_ = nullptr;
    std::size_t length_ = 0;
    std::array<char, Size> buffer_{};
};

namespace
{

// The failure of an update whose pairs did not all fit.
template <std::size_t Size>
int raise_refused(const qbobj_env_t *env, const SetList<Size> &set)
{
    return raise(env, QBOBJ_ERROR_API_ARGS, "The value of column '%s' is too long for the update.",
                 set.refused());
}

} // namespace

} // namespace qbobj
