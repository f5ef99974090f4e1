// Comma-separated lists: what is accepted as a whole is accepted item by item.
#include "fuzz/input.h"
#include "validate/pool_env.h"
#include "validate/validate.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static qbobj_test::PoolEnv env;
    apr_pool_clear(env.pool());
    const auto csv = qbobj_fuzz::text(data, size);
    const char **hosts = nullptr;
    const int code = qbobj::qbobj_validate_host_csv(env, csv.get(), &hosts);
    qbobj_fuzz::expect(hosts != nullptr);
    bool all_valid = true;
    for (const char **host = hosts; *host != nullptr; ++host)
        all_valid = all_valid && qbobj::qbobj_validate_host(*host) == 0;
    qbobj_fuzz::expect(all_valid == (code == 0));

    const bool all_ips = qbobj::qbobj_validate_ip_csv(env, csv.get()) == 0;
    const bool allowed = qbobj::qbobj_validate_allow_host(env, csv.get()) == 0;
    qbobj_fuzz::expect(!all_ips || all_valid); // every IP is a host
    qbobj_fuzz::expect(!all_valid || allowed); // and every host may be allowed
    return 0;
}
