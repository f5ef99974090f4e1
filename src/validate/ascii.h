// Character classes of ASCII text. They never depend on the process locale, and no byte from 0x80 on is in
// any of them.
#pragma once

#include <algorithm>
#include <string_view>

namespace qbobj::ascii
{

constexpr bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool is_letter(char c)
{
    return lower(c) >= 'a' && lower(c) <= 'z';
}

constexpr bool is_hex_digit(char c)
{
    return is_digit(c) || (lower(c) >= 'a' && lower(c) <= 'f');
}

constexpr bool equal_ignoring_case(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

} // namespace qbobj::ascii
