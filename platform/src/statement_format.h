// A printf format of a statement, compiled once: the statement's text with parameters, and how to take each
// argument of a call to a parameter or into the text.
#pragma once

#include <sqlite3.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
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
    bool sql;   // stands outside quotes and comments
};

// A value that stood in a spliced text.
struct Literal {
    std::size_t conversion; // which spliced it
    bool is_text;
    std::int64_t number;
    std::string text;
};

class SqlPlace;

class StatementFormat
{
  public:
    // False when the format holds something that is not supported; error() then says what.
    bool compile(std::string_view format);
    const std::string &error() const { return error_; }

    bool has_splices() const { return splices_; }
    // A text with values between its quotes differs from call to call, so that keeping it is no use.
    bool has_value_splices() const { return value_splices_; }

    // The statement's text, when nothing is spliced into it.
    const std::string &text() const { return text_; }
    // The statement's text of one call. Values behind an equals sign in what is spliced become parameters, too, so
    // that an update of the same columns has the same text.
    void build(Arguments &arguments, std::string &out, std::vector<Literal> &literals) const;
    // Binds one call's values. Texts are bound where they stand and must outlive the statement's run.
    int bind(sqlite3_stmt *statement, Arguments &arguments, const std::vector<Literal> &literals) const;

  private:
    bool add_conversion(std::string_view format, std::size_t &i, const SqlPlace &place);

    std::string text_;
    std::vector<Conversion> conversions_;
    std::string error_;
    bool splices_ = false;
    bool value_splices_ = false;
};

} // namespace qbdb
