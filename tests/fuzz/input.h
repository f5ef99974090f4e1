// What all fuzz targets share: the input as text, and a check that stops the run.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace qbobj_fuzz
{

// The input with its terminator in a buffer of exactly that size, so that a byte read beyond it is found.
inline std::unique_ptr<char[]> text(const uint8_t *data, std::size_t size)
{
    auto copy = std::make_unique<char[]>(size + 1);
    std::copy_n(data, size, copy.get());
    return copy;
}

inline void expect(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace qbobj_fuzz
