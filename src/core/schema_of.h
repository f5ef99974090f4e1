// The schema that a pointer to a record type leads to.
#pragma once

#include <qbobj/schema.h>

namespace qbobj
{

#define QBOBJ_SCHEMA_OF(Type)                                                                                \
    constexpr const qbobj_spec_t *schema_of(const qbobj_##Type##_t *)                                        \
    {                                                                                                        \
        return spec_##Type;                                                                                  \
    }
QBOBJ_RECORD_TYPES(QBOBJ_SCHEMA_OF)
#undef QBOBJ_SCHEMA_OF

} // namespace qbobj
