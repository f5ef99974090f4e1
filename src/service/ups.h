// What the workers of UPS devices share.
#pragma once

#include "core/call.h"

#include <qbobj/service.h>

#include <span>
#include <strings.h>

namespace qbobj
{

using Ups = qbobj_UpsConfig_t;

// Types are words, and compare without regard to case.
inline bool is_type(const char *type, const char *word)
{
    return type != nullptr && word != nullptr && strcasecmp(type, word) == 0;
}

// What an operation does with a device of one type.
struct TypeWork {
    const char *type;
    int (*work)(Call &call, Ups &ups);
};

// Does the work of the device's type.
inline int do_by_type(Call &call, Ups &ups, std::span<const TypeWork> works)
{
    for (const TypeWork &entry : works)
        if (is_type(ups.Type, entry.type))
            return entry.work(call, ups);
    return 0;
}

// Does `work` for each record of a chain; the first failure ends it.
inline int for_each_ups(Call &call, Ups *chain, int (*work)(Call &call, Ups &ups))
{
    if (chain == nullptr)
        return QBOBJ_ERROR_API_ARGS; // without a message; callers depend on it
    return for_each(chain, work, call);
}

/* ---- Checks; an error stands where the check is asked for ---------------------------------------------- */

int check_ups_name(Call &call, const Ups &ups, const Site &site = here());
// `mibs` receives what is to be stored.
int check_ups_snmp(Call &call, const Ups &ups, const char *&mibs, const Site &site = here());
// The text about a wrong password is each operation's own.
int check_ups_login(Call &call, const Ups &ups, const Message<const char *> &wrong_password);

} // namespace qbobj
