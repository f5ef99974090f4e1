// Hosts, names and MAC addresses: any bytes give a code, and what is a host is also a host or network.
#include "fuzz/input.h"
#include "validate/pool_env.h"
#include "validate/validate.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static qbobj_test::PoolEnv env;
    apr_pool_clear(env.pool());
    const auto host = qbobj_fuzz::text(data, size);
    const char *canonical = nullptr;
    const int code = qbobj::qbobj_validate_host(host.get());
    qbobj_fuzz::expect(code >= 0 && code <= 4);
    const bool known = qbobj::qbobj_validate_host_or_net(env.pool(), host.get(), &canonical) == 0;
    qbobj_fuzz::expect(code != 0 || (known && canonical == host.get()));

    const int mac = qbobj::qbobj_validate_mac(host.get());
    qbobj_fuzz::expect(mac >= 0 && mac <= 2);
    const char *share = nullptr;
    qbobj_fuzz::expect((qbobj_validate_sharename(host.get(), &share) == 0) == (share == host.get()));
    return 0;
}
