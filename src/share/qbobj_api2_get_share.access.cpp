// Which shares may a user read or write? Answered from the protocol's default access and its access lists.
#include "share/share_access.h"
#include "share/share_reading.h"

#include <algorithm>
#include <string_view>

namespace qbobj
{

namespace
{

/* ---- The default of a share over a protocol ------------------------------------------------------------ */

struct Default {
    int share_id;
    const char *stored_access;
    int guests; // CIFS only

    std::string_view access() const { return or_empty(stored_access); }
    bool lets_read() const { return access() == "readonly" || access() == "writeable"; }
};

constexpr auto cifs_defaults =
    select_of_shares("SELECT O.cifs_access,O.cifs_guest_access,O.share_id FROM cifs_share_option O "
                     "WHERE O.share_id BETWEEN %d AND %d ORDER BY O.share_id",
                     "Failed DB Query for 'SELECT cifs_share_option'. (%s)",
                     or_empty(&Default::stored_access), &Default::guests);

constexpr auto http_defaults = select_of_shares(
    "SELECT O.http_access,O.share_id FROM http_share_option O WHERE O.share_id BETWEEN %d AND %d "
    "ORDER BY O.share_id",
    "Failed DB Query for 'SELECT http_share_option'. (%s)", or_empty(&Default::stored_access));

template <class Defaults, class Visit>
int for_each_default(const AccessQuestion &question, const Defaults &defaults, Visit visit)
{
    return question.call.scan<Default>(defaults, visit, question.first_share, question.last_share);
}

/* ---- Shares by their lists ----------------------------------------------------------------------------- */

struct Listed {
    int share_id;
};

// The plus keeps to the index on the share: a user may stand in the lists of all shares.
constexpr auto cifs_users = select<int, int, int, const char *>(
    "SELECT A.share_id FROM user_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='cifs' "
    "AND +A.user_id=%d AND %s",
    "Failed DB Query for 'SELECT user_acl(cifs)'. (%s)", &Listed::share_id);

constexpr auto cifs_groups = select<int, int, const char *, int, int>(
    R"(SELECT A.share_id FROM group_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='cifs' AND %s
    AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
    OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)))",
    "Failed DB Query for 'SELECT user_acl(cifs)'. (%s)", &Listed::share_id);

constexpr auto http_users = select<int, int, int>(
    "SELECT A.share_id FROM user_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='http' "
    "AND +A.user_id=%d",
    "Failed DB Query for 'SELECT user_acl(http)'. (%s)", &Listed::share_id);

// Only listed memberships count here, not the primary group.
constexpr auto http_members = select<int, int, int>(
    R"(SELECT A.share_id FROM group_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='http'
    AND EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d))",
    "Failed DB Query for 'SELECT group_acl(http)'. (%s)", &Listed::share_id);

constexpr auto http_groups = select<int, int, int, int>(
    R"(SELECT A.share_id FROM group_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='http'
    AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
    OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)))",
    "Failed DB Query for 'SELECT group_acl(http)'. (%s)", &Listed::share_id);

constexpr auto any_http_users = select<int, int>(
    "SELECT A.share_id FROM user_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='http'",
    "Failed DB Query for 'SELECT user_acl(http)'. (%s)", &Listed::share_id);

constexpr auto any_http_groups = select<int, int>(
    "SELECT A.share_id FROM group_acl A WHERE A.share_id BETWEEN %d AND %d AND A.proto='http'",
    "Failed DB Query for 'SELECT group_acl(http)'. (%s)", &Listed::share_id);

// Adds the shares that the statement finds. It is not run when all that are asked about are found already.
template <class Select, class... Args>
int find(const AccessQuestion &question, const ShareIds &asked, const Select &select, ShareIds &found,
         Args... args)
{
    if (std::ranges::includes(found, asked))
        return 0;
    const auto add = [&](const Listed &row) { found.insert(row.share_id); };
    return question.call.scan<Listed>(select, add, question.first_share, question.last_share, args...);
}

void add_common(ShareIds &to, const ShareIds &a, const ShareIds &b)
{
    std::ranges::set_intersection(a, b, std::inserter(to, to.end()));
}

void add_difference(ShareIds &to, const ShareIds &from, const ShareIds &without)
{
    std::ranges::set_difference(from, without, std::inserter(to, to.end()));
}

/* ---- CIFS ---------------------------------------------------------------------------------------------- */

// Adds those of the shares asked about that list the user, or a group of theirs, with the condition.
int add_listed_for_cifs(const AccessQuestion &question, const char *condition, const ShareIds &asked,
                        ShareIds &listed)
{
    const int user = question.user_id;
    ShareIds found;
    if (const int rc = find(question, asked, cifs_users, found, user, condition))
        return rc;
    if (const int rc = find(question, asked, cifs_groups, found, condition, user, user))
        return rc;
    add_common(listed, asked, found);
    return 0;
}

/* ---- HTTP ---------------------------------------------------------------------------------------------- */

// Without any access list a share that is on offer is open to everyone.
int add_open_for_http(const AccessQuestion &question, const ShareIds &asked, ShareIds &granted)
{
    ShareIds with_list;
    if (const int rc = find(question, asked, any_http_users, with_list))
        return rc;
    if (const int rc = find(question, asked, any_http_groups, with_list))
        return rc;
    add_difference(granted, asked, with_list);
    return 0;
}

int may_read_http(const AccessQuestion &question, ShareIds &granted)
{
    const int user = question.user_id;
    ShareIds offered;
    ShareIds closed;
    if (const int rc = for_each_default(question, http_defaults, [&](const Default &option) {
            if (option.lets_read())
                offered.insert(option.share_id);
            else if (!question.is_guest())
                closed.insert(option.share_id);
        }))
        return rc;
    if (const int rc = add_open_for_http(question, offered, granted))
        return rc;

    ShareIds members;
    add_common(members, offered, granted); // nobody asks about those any more
    if (const int rc = find(question, offered, http_users, members, user))
        return rc;
    if (const int rc = find(question, offered, http_members, members, user))
        return rc;
    add_common(granted, offered, members);

    ShareIds users;
    if (const int rc = find(question, closed, http_users, users, user))
        return rc;
    if (const int rc = find(question, closed, http_groups, users, user, user))
        return rc;
    add_common(granted, closed, users);
    return 0;
}

} // namespace

int may_read_cifs(const AccessQuestion &question, ShareIds &granted)
{
    ShareIds closed;
    const int rc = for_each_default(question, cifs_defaults, [&](const Default &option) {
        if (option.lets_read() && (!question.is_guest() || option.guests != 0))
            granted.insert(option.share_id);
        else if (!option.lets_read() && !question.is_guest())
            closed.insert(option.share_id);
    });
    return rc != 0 ? rc : add_listed_for_cifs(question, "A.read<>0", closed, granted);
}

// Under a writeable default entries only take the right away, under any other they only give it.
int may_write_cifs(const AccessQuestion &question, ShareIds &granted)
{
    ShareIds writeable;
    ShareIds others;
    const int rc = for_each_default(question, cifs_defaults, [&](const Default &option) {
        const bool is_writeable = option.access() == "writeable";
        if (!question.is_guest())
            (is_writeable ? writeable : others).insert(option.share_id);
        else if (is_writeable && option.guests != 0)
            granted.insert(option.share_id);
    });
    if (rc != 0)
        return rc;
    if (const int failure = add_listed_for_cifs(question, "A.write<>0", others, granted))
        return failure;
    ShareIds denied;
    if (const int failure = add_listed_for_cifs(question, "A.write=0", writeable, denied))
        return failure;
    add_difference(granted, writeable, denied);
    return 0;
}

bool can_be_asked_about(const char *protocol)
{
    const std::string_view name = protocol;
    return name == protocol_id_cifs || name == protocol_id_http;
}

int may_read(const AccessQuestion &question, const char *protocol, ShareIds &granted)
{
    return std::string_view(protocol) == protocol_id_cifs ? may_read_cifs(question, granted)
                                                          : may_read_http(question, granted);
}

} // namespace qbobj
