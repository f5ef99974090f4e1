// The allocators of the whole program, asked after the plan.
#include "memory/failing_memory.h"

#include <apr_pools.h>
#include <sqlite3.h>

#include <cstdlib>
#include <dlfcn.h>
#include <new>

namespace qbobj_test
{

thread_local MemoryPlan memory_plan;

namespace
{

bool fails(Memory kind)
{
    MemoryPlan &plan = memory_plan;
    if (kind != plan.kind || plan.left == 0 || --plan.left > 0)
        return false;
    plan.left = plan.lasting ? 1 : 0;
    return plan.failed = true;
}

// Set before anything else uses SQLite.
sqlite3_mem_methods real;
const bool watching = [] {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &real);
    sqlite3_mem_methods failing = real;
    failing.xMalloc = [](int size) { return fails(Memory::sqlite) ? nullptr : real.xMalloc(size); };
    failing.xRealloc = [](void *memory, int size) {
        return fails(Memory::sqlite) ? nullptr : real.xRealloc(memory, size);
    };
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &failing) == SQLITE_OK;
}();

} // namespace

bool watches_sqlite()
{
    return watching;
}

} // namespace qbobj_test

using namespace qbobj_test;

__attribute__((visibility("default"))) void *apr_palloc(apr_pool_t *pool, apr_size_t size)
{
    static const auto real_palloc = reinterpret_cast<decltype(&apr_palloc)>(dlsym(RTLD_NEXT, "apr_palloc"));
    return fails(Memory::pool) ? nullptr : real_palloc(pool, size);
}

void *operator new(std::size_t size)
{
    void *const memory = fails(Memory::heap) ? nullptr : std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

#if !defined(__SANITIZE_ADDRESS__)
// Those of the C library, under the names that it keeps for whoever replaces them.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);

void *malloc(std::size_t size)
{
    return fails(Memory::system) ? nullptr : __libc_malloc(size);
}
void *calloc(std::size_t count, std::size_t size)
{
    return fails(Memory::system) ? nullptr : __libc_calloc(count, size);
}
void *realloc(void *memory, std::size_t size)
{
    return fails(Memory::system) ? nullptr : __libc_realloc(memory, size);
}
}
#endif
