// Networks: the canonical text of a network is a network again, and of IPv4 in its final form.
#include "fuzz/input.h"
#include "validate/pool_env.h"
#include "validate/validate.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static qbobj_test::PoolEnv env;
    apr_pool_clear(env.pool());
    const auto given = qbobj_fuzz::text(data, size);
    const char *net = nullptr;
    const int code = qbobj::qbobj_validate_net(env.pool(), given.get(), &net);
    qbobj_fuzz::expect(code == 0 ? net != nullptr : code == -1 && net == nullptr);
    if (code != 0)
        return 0;
    const char *again = nullptr;
    const char *final_form = nullptr;
    qbobj_fuzz::expect(qbobj::qbobj_validate_net(env.pool(), net, &again) == 0);
    qbobj_fuzz::expect(qbobj::qbobj_validate_net(env.pool(), again, &final_form) == 0);
    qbobj_fuzz::expect(std::string_view(again) == final_form);
    return 0;
}
