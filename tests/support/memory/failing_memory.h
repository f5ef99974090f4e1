// Memory that runs out on demand: SQLite's, the pools', the language's own, and the system's, on which all of them stand.
#pragma once

namespace qbobj_test
{

enum class Memory { none, sqlite, pool, heap, system };

// Those that a program can let run out: a sanitizer keeps the system's for itself.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr Memory failing_memory[] = {Memory::sqlite, Memory::pool, Memory::heap};
#else
inline constexpr Memory failing_memory[] = {Memory::sqlite, Memory::pool, Memory::heap, Memory::system};
#endif

// Which allocations of the thread fail.
struct MemoryPlan {
    Memory kind = Memory::none;
    int left = 0; // allocations of the kind until the one that fails
    bool lasting = false;
    bool failed = false;
};

extern thread_local MemoryPlan memory_plan;

// False when SQLite was in use before its allocator could be replaced.
bool watches_sqlite();

} // namespace qbobj_test
