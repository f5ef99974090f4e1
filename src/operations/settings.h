// Single settings and folder attributes.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple settings_operations{
    reads<getServiceEntry>(in("key"), out("val")),      writes<setServiceEntry>(in("key"), optional("val")),
    reads<getRegistryEntry>(in("key"), out("val")),     writes<setRegistryEntry>(in("key"), optional("val")),
    reads<getFolderAttribute>(in("path"), out("attr")),
};

} // namespace qbobj
