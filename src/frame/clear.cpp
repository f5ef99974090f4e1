// The directory of all schemas, and the functions that clear a record.
#include "core/schema.h"

namespace
{

int clear(const qbobj_spec_t *spec, void *record)
{
    if (record == nullptr)
        return -1;
    constexpr int not_given = 1;
    std::memset(record, 0, static_cast<std::size_t>(spec->offs_or_size));
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row) {
        if (qbobj::has_void_flag(*row))
            std::memcpy(static_cast<char *>(record) + qbobj::void_flag_offset(*row), &not_given,
                        sizeof not_given);
    }
    return 0;
}

} // namespace

#define ENTRY(Type) {#Type, spec_##Type},
constinit const struct all_spec all_spec[] = {QBOBJ_RECORD_TYPES(ENTRY){nullptr, nullptr}};

#define DEFINE_CLEAR(Type)                                                                                   \
    int qbobj_clear_##Type(qbobj_##Type##_t *obj)                                                            \
    {                                                                                                        \
        return clear(spec_##Type, obj);                                                                      \
    }
QBOBJ_RECORD_TYPES(DEFINE_CLEAR)
