// Memory that runs out on demand: SQLite's, the pools', and the language's own.
#pragma once

namespace qbobj_test
{

enum class Memory { none, sqlite, pool, heap };

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
