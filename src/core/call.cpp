// The parts of a call that need no template.
#include "core/call.h"

namespace qbobj
{

int Failure::raise(const qbobj_env_t &env, const char *database_text) const
{
    return named_ ? report_error(env, format_.site, code_, format_.text, word_, database_text)
                  : report_error(env, format_.site, code_, format_.text, database_text);
}

} // namespace qbobj
