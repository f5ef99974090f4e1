// The disks that the kernel shows, and the slots that those without a backplane are given.
#pragma once

#include "execution.h"

namespace qbdb
{

// Reads the disks below the handle's root into their tables; those that went away stay as not present.
int import_disks(const Call &call);

} // namespace qbdb
