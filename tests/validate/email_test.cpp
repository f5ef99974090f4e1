// E-mail addresses: every code, and the limits.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace qbobj;

namespace
{

std::string run(std::size_t length)
{
    return std::string(length, 'x');
}

TEST(Email, EveryRuleHasItsCode)
{
    const std::pair<int, std::vector<std::string>> cases[] = {
        {0,
         {"a@b", "first.last+tag@mail.example.com", "!#$%&'*+-/=?^_`{|}~@b", run(64) + "@" + run(254),
          run(63) + "@" + run(255), "a@" + run(255)}},
        {1, {""}},
        {2, {run(64) + "@" + run(255)}}, // 320 in all
        // quoted local part
        {0, {"\"a b\"@b", "\"()<>[]:;@,..\"@b", "\"a\"@b", "\"" + run(62) + "\"@b", "\"a\"@" + run(255)}},
        {3, {"\"", "\"abc", "\"a\\b\"@b", "\"\xC3\xA4\"@b"}},
        {4, {"\"\"@b", "\"" + run(63) + "\"@b"}},
        {5, {"\"a\"", "\"a\"b@c"}},
        {6, {"\"a\"@" + run(256)}},
        // plain local part
        {7, {"a..b@c", "..", ".a..b@c"}},
        {8, {"abc", "a b@c", "a\"b@c", "\xC3\xA4@c", ".a"}},
        {9, {".a@b", "a.@b", ".@b"}},
        {10, {"@b", run(65) + "@b"}},
        {11, {"a@" + run(256)}},
        // address literal
        {0, {"a@[1.2.3.4]", "a@[255.255.255.255]", "a@[001.0000002.3.4]"}},
        {20, {"a@[1.2.3]", "a@[1,2.3.4]", "a@[1"}},
        {21, {"a@[", "a@[]", "a@[1.", "a@[1..2.3]", "a@[+1.2.3.4]"}},
        {22, {"a@[1.2.3.256]", "a@[4294967297.2.3.4]", "a@[99999999999999999999999.2.3.4]"}},
        {23, {"a@[1.2.3.4", "a@[1.2.3.4.5]"}},
        {24, {"a@[1.2.3.4]x"}},
        // domain name, whose first character is free
        {0, {"a@b.", "a@b..c", "a@_b"}},
        {25, {"a@b c", "a@b_c", "a@b@c", "a@b\xC3", "a@-b_"}},
        {26, {"a@-b", "a@.b", "a@b-", "a@-", "a@", "\"a\"@"}}};
    const char *const before = "before";
    const char *email = before;
    for (const auto &[code, addresses] : cases)
        for (const std::string &address : addresses) {
            email = before;
            EXPECT_EQ(code, qbobj_validate_email(address.c_str(), &email)) << address;
            EXPECT_EQ(code, qbobj_validate_email(address.c_str(), nullptr)) << address;
            EXPECT_EQ(code == 0 ? address.c_str() : code == 1 ? nullptr : before, email) << address;
        }
    email = before;
    EXPECT_EQ(1, qbobj_validate_email(nullptr, &email));
    EXPECT_EQ(nullptr, email);
}

} // namespace
