// Compiling formats, building texts from them and binding their values.
#include "statement_format.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <system_error>

namespace qbdb
{

// What the text at a place of a statement belongs to.
class SqlPlace
{
  public:
    bool outside() const { return closing_ == 0; }
    bool in_value() const { return closing_ == '\''; }

    // Takes one character of the statement and the one behind it.
    void advance(char c, char next)
    {
        if (closing_ != 0) {
            if (closing_ == '*' ? previous_ == '*' && c == '/' : c == closing_)
                closing_ = 0;
        } else if (c == '\'' || c == '"' || c == '`') {
            closing_ = c;
        } else if (c == '[') {
            closing_ = ']';
        } else if (c == '-' && next == '-') {
            closing_ = '\n';
        } else if (c == '/' && next == '*') {
            closing_ = '*';
        }
        previous_ = c;
    }

  private:
    char closing_ = 0; // what ends the present quotes or comment ('*' a block comment); 0 outside
    char previous_ = 0;
};

namespace
{

struct SqliteFree {
    void operator()(char *text) const { sqlite3_free(text); }
};

bool is_word(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || c == '_' || c == '$' || c == '.' || byte >= 0x80;
}

bool is_signed(char type)
{
    return type == 'd' || type == 'i';
}
bool is_real(char type)
{
    return type == 'f' || type == 'g' || type == 'e';
}
bool is_text(char type)
{
    return type == 's' || type == 'q' || type == 'Q' || type == 'w';
}

std::int64_t next_signed(const Conversion &conversion, Arguments &arguments)
{
    switch (conversion.length) {
    case Conversion::Length::ll:
        return arguments.next<long long>();
    case Conversion::Length::l:
        return arguments.next<long>();
    default:
        return arguments.next<int>();
    }
}

std::uint64_t next_unsigned(const Conversion &conversion, Arguments &arguments)
{
    switch (conversion.length) {
    case Conversion::Length::ll:
        return arguments.next<unsigned long long>();
    case Conversion::Length::l:
        return arguments.next<unsigned long>();
    default:
        return arguments.next<unsigned>();
    }
}

template <class... Value>
void append_formatted(std::string &out, const char *pattern, Value... value)
{
    const std::unique_ptr<char, SqliteFree> text(sqlite3_mprintf(pattern, value...));
    if (!text)
        throw std::bad_alloc();
    out += text.get();
}

void append_doubling(std::string &out, const char *text, char quote)
{
    for (const char *p = text ? text : "(NULL)"; *p != 0; p++) {
        out += *p;
        if (*p == quote)
            out += quote;
    }
}

const char *or_nothing(const char *text)
{
    return text ? text : "";
}

void append_text(std::string &out, const Conversion &conversion, const char *text)
{
    if (!conversion.plain || conversion.type == 'Q')
        append_formatted(out, conversion.pattern.c_str(), text);
    else if (conversion.type == 's')
        out += or_nothing(text);
    else
        append_doubling(out, text, conversion.type == 'q' ? '\'' : '"');
}

void append_number(std::string &out, const Conversion &conversion, Arguments &arguments)
{
    // The length of the pattern's own conversion is always "ll", see add_conversion().
    if (is_real(conversion.type))
        append_formatted(out, conversion.pattern.c_str(), arguments.next<double>());
    else if (is_signed(conversion.type))
        append_formatted(out, conversion.pattern.c_str(),
                         static_cast<long long>(next_signed(conversion, arguments)));
    else
        append_formatted(out, conversion.pattern.c_str(),
                         static_cast<unsigned long long>(next_unsigned(conversion, arguments)));
}

int bind_unsigned(sqlite3_stmt *statement, int index, std::uint64_t value)
{
    // As SQLite reads a literal that no integer holds.
    if (value > static_cast<std::uint64_t>(INT64_MAX))
        return sqlite3_bind_double(statement, index, static_cast<double>(value));
    return sqlite3_bind_int64(statement, index, static_cast<sqlite3_int64>(value));
}

int bind_text(sqlite3_stmt *statement, int index, const char *text)
{
    if (!text)
        return sqlite3_bind_null(statement, index);
    const std::size_t size = std::strlen(text);
    if (size > INT_MAX)
        return SQLITE_TOOBIG;
    return sqlite3_bind_text(statement, index, text, static_cast<int>(size), SQLITE_STATIC);
}

// Reads the literal at the start of `text` and returns its length; 0 when there is none that could be bound.
std::size_t read_literal(std::string_view text, Literal &literal)
{
    constexpr std::size_t most_digits = 18; // of any 64-bit number
    literal.is_text = text.starts_with('\'');
    if (!literal.is_text) {
        const std::size_t digits = text.starts_with('-') ? 1 : 0;
        const std::size_t end = std::min(text.find_first_not_of("0123456789", digits), text.size());
        if (end == digits || end - digits > most_digits ||
            (end < text.size() && (is_word(text[end]) || text[end] == '.')))
            return 0;
        const char *const first = text.data();
        return std::from_chars(first, first + end, literal.number).ec == std::errc() ? end : 0;
    }
    for (std::size_t i = 1; i < text.size(); i++) {
        if (text[i] == '\'' && !text.substr(i + 1).starts_with('\''))
            return i + 1;
        if (text[i] == '\'')
            i++;
        literal.text += text[i];
    }
    return 0;
}

// Appends a text that may hold assignments and comparisons. Blobs and expressions stay as they stand.
void append_taking_literals(std::string &out, std::string_view text, std::size_t conversion,
                            std::vector<Literal> &literals)
{
    SqlPlace place;
    for (std::size_t i = 0; i < text.size(); i++) {
        place.advance(text[i], i + 1 < text.size() ? text[i + 1] : '\0');
        out += text[i];
        if (text[i] != '=' || !place.outside())
            continue;
        Literal literal{conversion, false, 0, {}};
        const std::size_t length = read_literal(text.substr(i + 1), literal);
        if (length == 0)
            continue;
        out += '?';
        i += length;
        literals.push_back(std::move(literal));
    }
}

int bind_literal(sqlite3_stmt *statement, int index, const Literal &literal)
{
    if (!literal.is_text)
        return sqlite3_bind_int64(statement, index, literal.number);
    return sqlite3_bind_text64(statement, index, literal.text.data(), literal.text.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

void skip_argument(const Conversion &conversion, Arguments &arguments)
{
    if (is_text(conversion.type))
        arguments.next<const char *>();
    else if (is_real(conversion.type))
        arguments.next<double>();
    else
        next_unsigned(conversion, arguments);
}

int bind_argument(sqlite3_stmt *statement, int index, const Conversion &conversion, Arguments &arguments)
{
    if (is_text(conversion.type))
        return bind_text(statement, index, arguments.next<const char *>());
    if (is_real(conversion.type))
        return sqlite3_bind_double(statement, index, arguments.next<double>());
    if (is_signed(conversion.type))
        return sqlite3_bind_int64(statement, index, next_signed(conversion, arguments));
    return bind_unsigned(statement, index, next_unsigned(conversion, arguments));
}

} // namespace

bool StatementFormat::compile(std::string_view format)
{
    SqlPlace place;
    for (std::size_t i = 0; i < format.size(); i++) {
        if (format[i] != '%') {
            place.advance(format[i], i + 1 < format.size() ? format[i + 1] : '\0');
            text_ += format[i];
        } else if (i + 1 < format.size() && format[i + 1] == '%') {
            place.advance('%', '\0');
            text_ += '%';
            i++;
        } else if (!add_conversion(format, i, place)) {
            return false;
        }
    }
    return true;
}

// Reads the conversion at format[i] and leaves i on its last character.
bool StatementFormat::add_conversion(std::string_view format, std::size_t &i, const SqlPlace &place)
{
    const std::size_t begin = i++;
    const auto skip = [&](std::string_view set) {
        while (i < format.size() && set.find(format[i]) != set.npos)
            i++;
    };
    skip("-+ 0#!,123456789.");
    const std::size_t flags_end = i;
    skip("l");
    const std::size_t ls = i - flags_end;
    const char type = i < format.size() ? format[i] : '\0';
    const bool number = is_signed(type) || type == 'u' || is_real(type);
    if (type == 0 || ls > 2 || !(number || is_text(type)) || (ls > 0 && (is_real(type) || is_text(type)))) {
        error_ = "unsupported conversion \"" + std::string(format.substr(begin, i + 1 - begin)) + "\"";
        return false;
    }

    Conversion conversion{text_.size(),
                          Conversion::Use::splice,
                          static_cast<Conversion::Length>(ls),
                          type,
                          std::string(format.substr(begin, flags_end - begin)),
                          flags_end == begin + 1,
                          place.outside()};
    if (number && !is_real(type))
        conversion.pattern += "ll";
    conversion.pattern += type;

    // A number that touches a word or another conversion is a piece of it, one with a width is a text.
    const std::string_view behind = format.substr(i + 1, 2);
    const bool touches = (begin > 0 && is_word(format[begin - 1])) ||
                         (!behind.empty() && is_word(behind[0])) ||
                         (behind.size() == 2 && behind[0] == '%' && behind[1] != '%');
    if (conversion.sql && conversion.plain && (type == 'Q' || (number && !touches))) {
        conversion.use = Conversion::Use::parameter;
        text_ += '?';
    } else {
        splices_ = true;
        value_splices_ = value_splices_ || place.in_value();
    }
    conversions_.push_back(std::move(conversion));
    return true;
}

void StatementFormat::build(Arguments &arguments, std::string &out, std::vector<Literal> &literals) const
{
    out.clear();
    literals.clear();
    std::size_t copied = 0;
    for (std::size_t i = 0; i < conversions_.size(); i++) {
        const Conversion &conversion = conversions_[i];
        if (conversion.use == Conversion::Use::parameter) {
            skip_argument(conversion, arguments);
            continue;
        }
        out.append(text_, copied, conversion.at - copied);
        copied = conversion.at;
        if (conversion.sql && conversion.plain && conversion.type == 's')
            append_taking_literals(out, or_nothing(arguments.next<const char *>()), i, literals);
        else if (is_text(conversion.type))
            append_text(out, conversion, arguments.next<const char *>());
        else
            append_number(out, conversion, arguments);
    }
    out.append(text_, copied);
}

int StatementFormat::bind(sqlite3_stmt *statement, Arguments &arguments,
                          const std::vector<Literal> &literals) const
{
    int index = 0;
    auto literal = literals.begin();
    for (std::size_t i = 0; i < conversions_.size(); i++) {
        const Conversion &conversion = conversions_[i];
        int rc = SQLITE_OK;
        if (conversion.use == Conversion::Use::splice) {
            skip_argument(conversion, arguments);
            for (; rc == SQLITE_OK && literal != literals.end() && literal->conversion == i; ++literal)
                rc = bind_literal(statement, ++index, *literal);
        } else {
            rc = bind_argument(statement, ++index, conversion, arguments);
        }
        if (rc != SQLITE_OK)
            return rc;
    }
    return SQLITE_OK;
}

} // namespace qbdb
