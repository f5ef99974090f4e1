// E-mail addresses: every code, and the limits.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string run(std::size_t length)
{
    return std::string(length, 'x');
}

TEST(Email, EveryRuleHasItsCode)
{
    struct {
        std::string address;
        int code;
    } const cases[] = {
        {"a@b", 0},
        {"first.last+tag@mail.example.com", 0},
        {"!#$%&'*+-/=?^_`{|}~@b", 0},
        {run(64) + "@" + run(254), 0}, // 319 in all
        {run(64) + "@" + run(255), 2},
        {run(63) + "@" + run(255), 0},
        {"", 1},
        // quoted local part
        {"\"a b\"@b", 0},
        {"\"()<>[]:;@,..\"@b", 0},
        {"\"", 3},
        {"\"abc", 3},
        {"\"a\\b\"@b", 3},
        {"\"\xC3\xA4\"@b", 3},
        {"\"\"@b", 4},
        {"\"a\"@b", 0},
        {"\"" + run(62) + "\"@b", 0},
        {"\"" + run(63) + "\"@b", 4},
        {"\"a\"", 5},
        {"\"a\"b@c", 5},
        {"\"a\"@" + run(255), 0},
        {"\"a\"@" + run(256), 6},
        // plain local part
        {"a..b@c", 7},
        {"..", 7},
        {".a..b@c", 7},
        {"abc", 8},
        {"a b@c", 8},
        {"a\"b@c", 8},
        {"\xC3\xA4@c", 8},
        {".a", 8},
        {".a@b", 9},
        {"a.@b", 9},
        {".@b", 9},
        {"@b", 10},
        {run(65) + "@b", 10},
        {"a@" + run(255), 0},
        {"a@" + run(256), 11},
        // address literal
        {"a@[1.2.3.4]", 0},
        {"a@[255.255.255.255]", 0},
        {"a@[001.0000002.3.4]", 0},
        {"a@[1.2.3]", 20},
        {"a@[1,2.3.4]", 20},
        {"a@[1", 20},
        {"a@[", 21},
        {"a@[]", 21},
        {"a@[1.", 21},
        {"a@[1..2.3]", 21},
        {"a@[+1.2.3.4]", 21},
        {"a@[1.2.3.256]", 22},
        {"a@[4294967297.2.3.4]", 22},
        {"a@[99999999999999999999999.2.3.4]", 22},
        {"a@[1.2.3.4", 23},
        {"a@[1.2.3.4.5]", 23},
        {"a@[1.2.3.4]x", 24},
        // domain name
        {"a@b c", 25},
        {"a@b_c", 25},
        {"a@b@c", 25},
        {"a@b\xC3", 25},
        {"a@-b_", 25},
        {"a@-b", 26},
        {"a@.b", 26},
        {"a@b-", 26},
        {"a@-", 26},
        {"a@", 26},
        {"\"a\"@", 26},
        {"a@b.", 0},
        {"a@b..c", 0},
        {"a@_b", 0}, // the first character is free
    };
    for (const auto &c : cases) {
        const char *const before = "before";
        const char *email = before;
        EXPECT_EQ(c.code, qbobj_validate_email(c.address.c_str(), &email)) << c.address;
        EXPECT_EQ(c.code, qbobj_validate_email(c.address.c_str(), nullptr)) << c.address;
        const char *const expected = c.code == 0 ? c.address.c_str() : c.code == 1 ? nullptr : before;
        EXPECT_EQ(expected, email) << c.address;
    }
}

TEST(Email, NoAddress)
{
    const char *email = "before";
    EXPECT_EQ(1, qbobj_validate_email(nullptr, &email));
    EXPECT_EQ(nullptr, email);
}

} // namespace
