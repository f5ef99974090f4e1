// The SET list of a partial update: pairs "column=value" joined by commas, of limited size. With another
// separator, the conditions of a WHERE.
#pragma once

#include "core/error.h"
#include "core/members.h"

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

/* ---- What a record may carry, as a table --------------------------------------------------------------- */

// A text that changes its column when it is given.
template <class Record>
struct TextChange {
    const char *Record::*member;
    Statement<const char *> pair;

    bool is_given(const Record &record) const { return record.*member != nullptr; }
    const char *value(const Record &record) const { return record.*member; }
};

// A number that changes its column when its flag says that it is given.
template <class Record, class Value>
struct NumberChange {
    int Record::*flag;
    Value Record::*member;
    Statement<Value> pair;

    bool is_given(const Record &record) const { return record.*flag == 0; }
    Value value(const Record &record) const { return record.*member; }
};

// A switch, of which any number but 0 is written as 1.
template <class Record>
struct SwitchChange {
    int Record::*flag;
    int Record::*member;
    Statement<int> pair;

    bool is_given(const Record &record) const { return record.*flag == 0; }
    int value(const Record &record) const { return record.*member != 0 ? 1 : 0; }
};

// `change<&R::Comment>("comment=%Q")` and `change<&R::_void_QuotaMB, &R::QuotaMB>("mb_quota=%llu")`; several of them in
// a std::tuple are a table for SetList::add_given().
template <auto Member>
consteval auto change(Statement<ValueOf<Member>> pair)
{
    return TextChange<RecordOf<Member>>{Member, pair};
}
template <auto Flag, auto Member>
requires FlagOf<Flag, Member>
consteval auto change(Statement<ValueOf<Member>> pair)
{
    return NumberChange<RecordOf<Member>, ValueOf<Member>>{Flag, Member, pair};
}
// `change_switch<&R::_void_Guest, &R::Guest>("guest=%d")`
template <auto Flag, auto Member>
requires FlagOf<Flag, Member>
consteval auto change_switch(Statement<int> pair)
{
    return SwitchChange<RecordOf<Member>>{Flag, Member, pair};
}

/* ---- The list ------------------------------------------------------------------------------------------ */

template <std::size_t Size>
class SetList
{
  public:
    SetList(const qbobj_env_t &env, Overflow overflow, std::string_view separator = ",")
        : env_(env), overflow_(overflow), separator_(separator)
    {
    }

    // Adds a pair such as "comment=%Q".
    template <class... Args>
    void add(const Statement<Args...> &pair, Args... args)
    {
        const std::unique_ptr<char, decltype(&sqlite3_free)> text(sqlite3_mprintf(pair.text, args...),
                                                                  sqlite3_free);
        if (text == nullptr)
            throw std::bad_alloc();
        append(text.get(), pair.site);
    }

    // Adds those of a table of changes that the record carries.
    template <class Record, class... Changes>
    void add_given(const Record &record, const std::tuple<Changes...> &changes)
    {
        const auto add_one = [&](const auto &change) {
            if (change.is_given(record))
                add(change.pair, change.value(record));
        };
        std::apply([&](const auto &...change) { (add_one(change), ...); }, changes);
    }

    bool empty() const { return length_ == 0; }
    const char *text() const { return buffer_.data(); }
    // The first column that did not fit and must not be dropped; null when all fitted.
    const char *refused() const { return refused_; }

  private:
    void append(std::string_view pair, const Site &site)
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

    void overflowed(std::string_view column, const Site &site)
    {
        const char *name = copy_text(env_.qbdb->pool, column);
        if (overflow_ == Overflow::refuse)
            refused_ = refused_ == nullptr ? name : refused_;
        else if (logs(env_.qbdb, QBDB_LOG_WARN))
            qbdb_log(env_.qbdb, site.unit.data(), site.line, QBDB_LOG_WARN, 0,
                     "The value of column '%s' does not fit into the update and is left out.\n", name);
    }

    const qbobj_env_t &env_;
    Overflow overflow_;
    std::string_view separator_;
    const char *refused_ = nullptr;
    std::size_t length_ = 0;
    std::array<char, Size> buffer_{};
};

// The failure of an update whose pairs did not all fit.
template <std::size_t Size>
int raise_refused(const qbobj_env_t &env, const SetList<Size> &set, const Site &site = here())
{
    return raise_at(site, env, QBOBJ_ERROR_API_ARGS, "The value of column '%s' is too long for the update.",
                    set.refused());
}

} // namespace qbobj
