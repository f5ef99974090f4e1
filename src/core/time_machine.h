// The space that Time Machine takes.
#pragma once

#include <cstdint>

namespace qbobj
{

// The size in MB (1,000,000 bytes) of the first sparse bundle in a folder; 0 when it holds none.
uint64_t time_machine_mb(const char *folder) noexcept;

} // namespace qbobj
