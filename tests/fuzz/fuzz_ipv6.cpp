// IP addresses: whatever the system reads as one is one here too.
#include "fuzz/input.h"
#include "validate/validate.h"

#include <arpa/inet.h>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const auto address = qbobj_fuzz::text(data, size);
    const int code = qbobj::qbobj_validate_ipv6(address.get());
    qbobj_fuzz::expect(code >= 0 && code <= 4);
    in6_addr ipv6;
    // A dotted tail stands for two groups, which the count of colons does not know.
    const bool dotted = std::string_view(address.get()).find('.') != std::string_view::npos;
    if (!dotted && inet_pton(AF_INET6, address.get(), &ipv6) == 1)
        qbobj_fuzz::expect(code == 0);
    if (qbobj::qbobj_validate_ipv4_address(address.get()) == 0)
        qbobj_fuzz::expect(qbobj_validate_ip(address.get()) == 0);
    return 0;
}
