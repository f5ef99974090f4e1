// May a user read or write a share? Answered from the protocol's default access and its access lists.
#pragma once

#include "core/call.h"

namespace qbobj
{

// A user and a share. A negative user id is a guest.
struct AccessQuestion {
    Call &call;
    int share_id;
    int user_id;

    bool is_guest() const { return user_id < 0; }
};

// Each returns non-zero when there is no answer.
int may_read_cifs(const AccessQuestion &question, bool &granted);
int may_write_cifs(const AccessQuestion &question, bool &granted);
// By the protocol's word; only "cifs" and "http" can be asked about.
int may_read(const AccessQuestion &question, const char *protocol, bool &granted);

} // namespace qbobj
