// Tables of words that are recognised whole or by their beginning, ignoring case.
#pragma once

#include "validate/ascii.h"

#include <cstddef>
#include <span>
#include <string_view>

struct string_len {
    const char *word;
    int len; // 0: the whole text must be the word; n: the text must begin with the word's first n characters
};

namespace qbobj
{

// The first entry that matches `text` decides; null when none does.
constexpr const string_len *find_word(std::span<const string_len> table, std::string_view text)
{
    for (const string_len &entry : table) {
        const std::string_view word = entry.word;
        const auto len = static_cast<std::size_t>(entry.len);
        if (len > 0 ? ascii::equal_ignoring_case(text.substr(0, len), word.substr(0, len))
                    : ascii::equal_ignoring_case(text, word))
            return &entry;
    }
    return nullptr;
}

} // namespace qbobj
