// E-mail addresses: only the known codes, and the accepted address is the caller's own.
#include "fuzz/input.h"
#include "validate/validate.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const auto address = qbobj_fuzz::text(data, size);
    const char *accepted = nullptr;
    const int code = qbobj::qbobj_validate_email(address.get(), &accepted);
    qbobj_fuzz::expect((code >= 0 && code <= 11) || (code >= 20 && code <= 26));
    qbobj_fuzz::expect((code == 0) == (accepted == address.get()));
    if (code == 0)
        qbobj_fuzz::expect(std::string_view(accepted).find('@') != std::string_view::npos);
    return 0;
}
