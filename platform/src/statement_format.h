// A printf format of a statement, compiled once: the statement's text with parameters, and how to take each
// argument of a call to a parameter or into the text.
#pragma once

#include <sqlite3.h>

#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qbdb
{

// An argument list that functions can share by reference; it walks a copy of the caller's.
class Arguments
{
  public:
    explicit Arguments(va_list source) { va_copy(list_, source); }
    ~Arguments() { va_end(list_); }
    Arguments(const Arguments &) = delete;
    Arguments &operator=(const Arguments &) = delete;

    template <class T>
    T next()
    {
        return va_arg(list_, T);
    }

  private:
    va_list list_;
};

struct Conversion {
    enum class Use { parameter, splice };
    enum class Length { plain, l, ll };

    std::size_t at; // where a splice goes in the text of literals
    Use use;
    Length length;
    char type; // the conversion's letter
    std::string pattern;
    bool plain; // no flags, width or precision
};

class StatementFormat
{
  public:
    // False when the format holds something that is not supported; error() then says what.
    bool compile(std::string_view format);
    const std::string &error() const { return error_; }

    bool has_splices() const { return splices_; }
    // A text with values between its quotes differs from call to call, so that keeping it is no use.
    bool has_quoted_splices() const { return quoted_splices_; }

    // The statement's text, when nothing is spliced into it.
    const std::string &text() const { return text_; }
    // The statement's text of one call.
    void build(Arguments &arguments, std::string &out) const;
    // Binds one call's values. Texts are bound where they stand and must outlive the statement's run.
    int bind(sqlite3_stmt *statement, Arguments &arguments) const;

  private:
    bool add_conversion(std::string_view format, std::size_t &i, bool quoted);

    std::string text_;
    std::vector<Conversion> conversions_;
    std::string error_;
    bool splices_ = false;
    bool quoted_splices_ = false;
};

} // namespace qbdb
