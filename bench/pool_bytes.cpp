// How much memory a call's results take.
#include "measurements.h"

#include <unistd.h>

#include <fstream>
#include <utility>

namespace qbobj_bench
{
namespace
{

size_t address_space()
{
    size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

// APR does not tell a pool's size. A pool with an allocator of its own maps every block that it takes, and
// nothing else grows in a call that has been made before, so the process grows by just the pool.
size_t pool_bytes(const Connection &connection, const std::function<void()> &call)
{
    call();
    qbdb_clear_pool(connection.qbdb);

    apr_allocator_t *allocator = nullptr;
    apr_pool_t *fresh = nullptr;
    if (apr_allocator_create(&allocator) != APR_SUCCESS ||
        apr_pool_create_ex(&fresh, nullptr, nullptr, allocator) != APR_SUCCESS)
        throw std::bad_alloc();
    apr_allocator_owner_set(allocator, fresh);
    apr_pool_t *const pool = std::exchange(connection.qbdb->pool, fresh);
    const size_t before = address_space();
    call();
    const size_t after = address_space();
    connection.qbdb->pool = pool;
    apr_pool_destroy(fresh);
    return after - before;
}

} // namespace qbobj_bench
