// The dictionary.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple dictionary_operations{
    reads<qbobj_getDictionary>(optional("code"), out("node")),
    reads<qbobj_getTranslatedString>(optional("code"), in("key"), out("str")),
};

} // namespace qbobj
