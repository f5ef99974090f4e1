// Which shares may a user read or write? Answered from the protocol's default access and its access lists.
#pragma once

#include "core/call.h"

#include <set>

namespace qbobj
{

using ShareIds = std::set<int>;

// A user, and the shares whose ids are in a range. A negative user id is a guest.
struct AccessQuestion {
    Call &call;
    int first_share;
    int last_share;
    int user_id;

    bool is_guest() const { return user_id < 0; }
};

// Each adds the shares that the user may read, and those that they may write unless `writeable` is null; non-zero when there
// is no answer.
int may_use_cifs(const AccessQuestion &question, ShareIds &readable, ShareIds *writeable);
// By the protocol's word, of those that can be asked about.
bool can_be_asked_about(const char *protocol);
int may_read(const AccessQuestion &question, const char *protocol, ShareIds &granted);

} // namespace qbobj
