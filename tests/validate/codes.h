// A validator's codes, each with what is refused with it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace qbobj_test
{

struct Code {
    int code;
    std::vector<const char *> texts;
};

inline void expect_codes(const std::function<int(const char *)> &validate, const std::vector<Code> &codes)
{
    for (const auto &[code, texts] : codes)
        for (const char *text : texts)
            EXPECT_EQ(code, validate(text)) << (text != nullptr ? text : "(null)");
}

} // namespace qbobj_test
