// Format strings that are checked against their arguments when they are compiled, and that know where they
// stand: the source unit and line which errors and failed statements are attributed to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace qbobj
{

// A place in a source file. The unit is the file's name up to the first dot: "unit.cpp" and "unit.part.cpp" are one
// unit in two files.
struct Site {
    std::array<char, 48> unit{};
    int line = 0;

    constexpr Site(std::string_view file, int at) : line(at)
    {
        file.remove_prefix(file.rfind('/') + 1); // npos + 1 is 0
        const std::string_view name = file.substr(0, file.find('.'));
        name.copy(unit.data(), unit.size() - 1);
    }
};

// Where the caller stands; as a default argument, where its function's caller stands.
constexpr Site here(const char *file = __builtin_FILE(), int line = __builtin_LINE())
{
    return {file, line};
}

void mismatch_between_format_and_arguments(); // never defined: reaching it stops the compilation

// What a variadic argument is, as far as a format conversion is concerned.
template <class T>
consteval char kind_of_argument()
{
    if constexpr (std::is_convertible_v<T, const char *>)
        return 's';
    else if constexpr (std::is_floating_point_v<T>)
        return 'f';
    else if constexpr (std::is_enum_v<T>)
        return 'd';
    else if constexpr (std::is_integral_v<T> && sizeof(T) <= sizeof(int))
        return std::is_unsigned_v<T> && sizeof(T) == sizeof(int) ? 'u' : 'd';
    else if constexpr (std::is_integral_v<T>)
        return std::is_unsigned_v<T> ? 'U' : 'D';
    else
        return '?';
}

// The kind of argument that the conversion at the start of `text` (behind the percent sign) takes; the
// conversion is removed from `text`.
consteval char kind_of_conversion(std::string_view &text, bool sql)
{
    int longs = 0;
    while (!text.empty() && text.front() == 'l') {
        ++longs;
        text.remove_prefix(1);
    }
    if (text.empty())
        return '?';
    const char conversion = text.front();
    text.remove_prefix(1);
    switch (conversion) {
    case 'd':
        return longs > 0 ? 'D' : 'd';
    case 'u':
        return longs > 0 ? 'U' : 'u';
    case 's':
        return 's';
    case 'Q':
    case 'q':
    case 'w':
        return sql ? 's' : '?';
    default:
        return '?';
    }
}

template <class... Args>
consteval void check_format(std::string_view text, bool sql)
{
    const std::array<char, sizeof...(Args) + 1> given{kind_of_argument<Args>()..., '\0'};
    std::size_t next = 0;
    while (!text.empty()) {
        // Character by character: with -fsanitize=undefined find() is no constant expression on a joined text.
        const bool percent = text.front() == '%';
        text.remove_prefix(1);
        if (!percent)
            continue;
        if (!text.empty() && text.front() == '%') {
            text.remove_prefix(1);
            continue;
        }
        if (next >= sizeof...(Args) || kind_of_conversion(text, sql) != given[next])
            mismatch_between_format_and_arguments();
        ++next;
    }
    if (next != sizeof...(Args))
        mismatch_between_format_and_arguments();
}

// A text of several literals that is put together when it is compiled; as a constant it is a format like any literal.
template <std::size_t Size>
struct JoinedText {
    char text[Size]{};
};
template <std::size_t... Sizes>
consteval auto joined(const char (&...pieces)[Sizes])
{
    JoinedText<(Sizes + ...) - sizeof...(Sizes) + 1> whole;
    std::size_t length = 0;
    const auto append = [&](std::string_view piece) {
        length += piece.copy(whole.text + length, piece.size());
    };
    (append({pieces, Sizes - 1}), ...);
    return whole;
}

// A checked format. `Sql` allows SQLite's own conversions %Q, %q and %w.
template <bool Sql, class... Args>
struct CheckedFormat {
    // Implicit, so that a string literal is a format.
    template <std::size_t Size>
    consteval CheckedFormat(const char (&literal)[Size], const Site &at = here()) : text(literal), site(at)
    {
        check_format<Args...>(std::string_view(literal, Size - 1), Sql);
    }
    template <std::size_t Size>
    consteval CheckedFormat(const JoinedText<Size> &joined, const Site &at = here())
        : CheckedFormat(joined.text, at)
    {
    }

    const char *text;
    Site site;
};

template <class... Args>
using Message = CheckedFormat<false, std::type_identity_t<Args>...>;
template <class... Args>
using Statement = CheckedFormat<true, std::type_identity_t<Args>...>;

} // namespace qbobj
