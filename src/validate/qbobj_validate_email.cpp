// E-mail addresses (after RFC 5321 and RFC 5322, with fixed character sets and limits).
#include "validate/ascii.h"
#include "validate/validate.h"

#include <algorithm>
#include <string_view>

namespace qbobj
{
namespace
{

using qbobj::ascii::is_digit;

constexpr std::size_t max_address = 319;
constexpr std::size_t max_local = 64;
constexpr std::size_t max_domain = 255;

constexpr std::string_view plain_set =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-/=?^_`{|}~.";
constexpr std::string_view quoted_set =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-/=?^_`{|}~()<>[]:;@,. ";
constexpr std::string_view domain_set = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.";

// Takes `"local"@` off the address and leaves the domain.
int take_quoted_local(std::string_view &address)
{
    const std::size_t close = address.find_first_not_of(quoted_set, 1);
    if (close == address.npos || address[close] != '"')
        return 3;
    const std::size_t length = close + 1; // with both quotes
    if (length < 3 || length > max_local)
        return 4;
    if (length == address.size() || address[length] != '@')
        return 5;
    address.remove_prefix(length + 1);
    return address.size() > max_domain ? 6 : 0;
}

// Takes `local@` off the address and leaves the domain.
int take_plain_local(std::string_view &address)
{
    const std::size_t at = address.find_first_not_of(plain_set);
    const std::string_view local = address.substr(0, at);
    if (local.find("..") != local.npos)
        return 7;
    if (at == address.npos || address[at] != '@')
        return 8;
    if (local.starts_with('.') || local.ends_with('.'))
        return 9;
    if (local.empty() || local.size() > max_local)
        return 10;
    address.remove_prefix(at + 1);
    return address.size() > max_domain ? 11 : 0;
}

bool take(std::string_view &text, char c)
{
    if (!text.starts_with(c))
        return false;
    text.remove_prefix(1);
    return true;
}

// An address literal behind its opening bracket.
int check_address_literal(std::string_view rest)
{
    constexpr int groups = 4;
    for (int group = 1; group <= groups; ++group) {
        if (rest.empty() || !is_digit(rest.front()))
            return 21;
        int value = 0;
        for (; !rest.empty() && is_digit(rest.front()); rest.remove_prefix(1))
            value = std::min(value * 10 + (rest.front() - '0'), 256);
        if (value > 255)
            return 22;
        if (group < groups && !take(rest, '.'))
            return 20;
    }
    if (!take(rest, ']'))
        return 23;
    return rest.empty() ? 0 : 24;
}

int _validate_email_domain(std::string_view domain)
{
    if (domain.empty())
        return 26;
    if (take(domain, '['))
        return check_address_literal(domain);
    if (domain.find_first_not_of(domain_set, 1) != domain.npos)
        return 25;
    // Beyond this the first character is free, and a dot at the end names the root.
    if (domain.front() == '-' || domain.front() == '.' || domain.back() == '-')
        return 26;
    return 0;
}

} // namespace

int qbobj_validate_email(const char *str, const char **email)
{
    std::string_view address = str != nullptr ? str : "";
    if (address.empty()) {
        if (email != nullptr)
            *email = nullptr;
        return 1;
    }
    if (address.size() > max_address)
        return 2;
    int code = address.front() == '"' ? take_quoted_local(address) : take_plain_local(address);
    if (code == 0)
        code = _validate_email_domain(address);
    if (code == 0 && email != nullptr)
        *email = str;
    return code;
}

} // namespace qbobj
