// May a user read or write a share? Answered from the protocol's default access and its access lists.
#include "share/share_access.h"

#include <string_view>

namespace qbobj
{

namespace
{

/* ---- The default of a share over a protocol ------------------------------------------------------------ */

struct Default {
    const char *stored_access = empty_str;
    int guests = 0; // CIFS only

    std::string_view access() const { return stored_access; }
    bool lets_read() const { return access() == "readonly" || access() == "writeable"; }
};

constexpr auto cifs_default =
    select<int>("SELECT O.cifs_access,O.cifs_guest_access FROM cifs_share_option O WHERE O.share_id=%d",
                "Failed DB Query for 'SELECT cifs_share_option'. (%s)", or_empty(&Default::stored_access),
                &Default::guests);

constexpr auto http_default =
    select<int>("SELECT O.http_access FROM http_share_option O WHERE O.share_id=%d",
                "Failed DB Query for 'SELECT http_share_option'. (%s)", or_empty(&Default::stored_access));

/* ---- CIFS ---------------------------------------------------------------------------------------------- */

// Is there an entry for the user, or one for a group of theirs, that satisfies the condition?
int listed_for_cifs(const AccessQuestion &question, const char *condition, bool &listed)
{
    static constexpr Failure failed = "Failed DB Query for 'SELECT user_acl(cifs)'. (%s)";
    const auto &[call, share, user] = question;
    const int rc = call.exists(failed, listed,
                               "SELECT 1 FROM user_acl A WHERE A.share_id=%d AND A.proto='cifs' "
                               "AND A.user_id=%d AND %s",
                               share, user, condition);
    if (rc != 0 || listed)
        return rc;
    return call.exists(failed, listed,
                       R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='cifs' AND %s
        AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
        OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)) LIMIT 1)",
                       share, condition, user, user);
}

/* ---- HTTP ---------------------------------------------------------------------------------------------- */

int user_listed_for_http(const AccessQuestion &question, bool &listed)
{
    return question.call.exists(
        "Failed DB Query for 'SELECT user_acl(http)'. (%s)", listed,
        "SELECT 1 FROM user_acl A WHERE A.share_id=%d AND A.proto='http' AND A.user_id=%d", question.share_id,
        question.user_id);
}

// Only listed memberships count here, not the primary group.
int member_listed_for_http(const AccessQuestion &question, bool &listed)
{
    return question.call.exists("Failed DB Query for 'SELECT group_acl(http)'. (%s)", listed,
                                R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='http'
        AND EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d))",
                                question.share_id, question.user_id);
}

int group_listed_for_http(const AccessQuestion &question, bool &listed)
{
    return question.call.exists("Failed DB Query for 'SELECT group_acl(http)'. (%s)", listed,
                                R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='http'
        AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
        OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)) LIMIT 1)",
                                question.share_id, question.user_id, question.user_id);
}

// Without any access list a share that is on offer is open to everyone.
int http_lists_empty(const AccessQuestion &question, bool &empty)
{
    int32_t users = 0;
    int32_t groups = 0;
    if (const int rc = question.call.number(
            "Failed DB Query for 'SELECT user_acl(http)'. (%s)", users,
            "SELECT COUNT(*) FROM user_acl A WHERE A.share_id=%d AND A.proto='http'", question.share_id))
        return rc;
    if (const int rc = question.call.number(
            "Failed DB Query for 'SELECT group_acl(http)'. (%s)", groups,
            "SELECT COUNT(*) FROM group_acl A WHERE A.share_id=%d AND A.proto='http'", question.share_id))
        return rc;
    empty = users == 0 && groups == 0;
    return 0;
}

// Tests one after the other, until one grants or fails.
template <class... Tests>
int any(const AccessQuestion &question, bool &granted, Tests... tests)
{
    int rc = 0;
    static_cast<void>((... || ((rc = tests(question, granted)) != 0 || granted)));
    return rc;
}

int may_read_http(const AccessQuestion &question, bool &granted)
{
    granted = false;
    Default option;
    bool offered = false;
    const int rc = question.call.find(http_default, option, offered, question.share_id);
    if (rc != 0 || !offered)
        return rc;
    if (option.lets_read())
        return any(question, granted, http_lists_empty, user_listed_for_http, member_listed_for_http);
    if (question.is_guest())
        return 0;
    return any(question, granted, user_listed_for_http, group_listed_for_http);
}

} // namespace

int may_read_cifs(const AccessQuestion &question, bool &granted)
{
    granted = false;
    Default option;
    bool offered = false;
    const int rc = question.call.find(cifs_default, option, offered, question.share_id);
    if (rc != 0 || !offered)
        return rc;
    if (option.lets_read()) {
        granted = !question.is_guest() || option.guests != 0;
        return 0;
    }
    return question.is_guest() ? 0 : listed_for_cifs(question, "A.read<>0", granted);
}

// Under a writeable default entries only take the right away, under any other they only give it.
int may_write_cifs(const AccessQuestion &question, bool &granted)
{
    granted = false;
    Default option;
    bool offered = false;
    int rc = question.call.find(cifs_default, option, offered, question.share_id);
    if (rc != 0 || !offered)
        return rc;
    const bool writeable = option.access() == "writeable";
    if (question.is_guest()) {
        granted = writeable && option.guests != 0;
        return 0;
    }
    if (!writeable)
        return listed_for_cifs(question, "A.write<>0", granted);
    bool denied = false;
    rc = listed_for_cifs(question, "A.write=0", denied);
    granted = !denied;
    return rc;
}

int may_read(const AccessQuestion &question, const char *protocol, bool &granted)
{
    const std::string_view name = protocol;
    if (name == "cifs")
        return may_read_cifs(question, granted);
    if (name == "http")
        return may_read_http(question, granted);
    return -1;
}

} // namespace qbobj
