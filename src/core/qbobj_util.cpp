// Small helpers that several workers share.
#include "core/qbobj_util.h"

#include "core/error.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

template <class Visit>
void for_each_entry(const qbobj_env_t *qbobj, apr_hash_t *ht, Visit visit)
{
    for (apr_hash_index_t *entry = apr_hash_first(qbobj->qbdb->pool, ht); entry != nullptr;
         entry = apr_hash_next(entry)) {
        const void *key = nullptr;
        apr_ssize_t length = 0;
        void *value = nullptr;
        apr_hash_this(entry, &key, &length, &value);
        visit(key, length, value);
    }
}

} // namespace

char **qbobj_util_alloc_array_of_string(qbobj_env_t *qbobj, int n)
{
    void *slots = nullptr;
    if (n >= 0)
        slots = apr_palloc(qbobj->qbdb->pool, (static_cast<std::size_t>(n) + 1) * sizeof(char *));
    if (slots == nullptr)
        qbobj->err->ec = QBOBJ_ERROR_OOM;
    return static_cast<char **>(slots);
}

void qbobj_util_hash_clear(qbobj_env_t *qbobj, apr_hash_t *ht)
{
    for_each_entry(qbobj, ht, [ht](const void *key, apr_ssize_t length, void *) {
        apr_hash_set(ht, key, length, nullptr); // removing the current entry leaves the walk intact
    });
}

void qbobj_util_hash_append(qbobj_env_t *qbobj, apr_hash_t *hdst, apr_hash_t *hsrc)
{
    for_each_entry(qbobj, hsrc, [hdst](const void *key, apr_ssize_t length, void *value) {
        apr_hash_set(hdst, key, length, value);
    });
}

int qbobj_util_is_port_used(qbobj_env_t *, int)
{
    return 0;
}

std::size_t qbobj_strlcpy(char *d, const char *s, std::size_t n)
{
    const std::size_t length = std::strlen(s);
    const std::size_t copied = std::min(length, n - 1);
    std::memcpy(d, s, copied);
    std::memset(d + copied, 0, n - copied);
    return length;
}

const char *qbobj_get_pool_state_str(pool_state_t state, const char *name, uint64_t hostid)
{
    static constexpr std::array names{"ACTIVE",  "EXPORTED",      "DESTROYED", "SPARE",
                                      "L2CACHE", "UNINITIALIZED", "UNAVAIL",   "POTENTIALLY_ACTIVE"};
    if (hostid == 0 || qbobj::is_empty(name))
        return "NEW";
    const auto index = static_cast<std::size_t>(state);
    return index < names.size() ? names[index] : "UNKNOWN";
}
