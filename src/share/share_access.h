// May a user read or write a share? Answered from the protocol's default access and its access lists.
#pragma once

#include "share/share.h"

namespace qbobj
{

enum class Verdict {
    denied,
    granted,
    failed, // the error is raised
    unknown_protocol
};

// A user and a share. A negative user id is a guest.
struct AccessQuestion {
    Call &call;
    int share_id;
    int user_id;

    bool is_guest() const { return user_id < 0; }
};

Verdict may_read_cifs(const AccessQuestion &question);
Verdict may_write_cifs(const AccessQuestion &question);
// By the protocol's word; only "cifs" and "http" can be asked about.
Verdict may_read(const AccessQuestion &question, const char *protocol);

} // namespace qbobj
