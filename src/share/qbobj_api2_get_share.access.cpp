// Which shares may a user read or write? Answered from the protocol's default access and its access lists.
#include "share/share_access.h"
#include "share/share_reading.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>

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

// What the entries for a user and for their groups say of a share.
struct Entries {
    int share_id;
    int reads;
    int writes;
    int withholds_writing;
};

// The plus keeps to the index on the share: a user may stand in the lists of all shares.
constexpr auto cifs_entries = select<int, int, int, int, int, int, int>(
    R"(SELECT A.share_id,A.read<>0,A.write<>0,A.write=0 FROM user_acl A
    WHERE A.share_id BETWEEN %d AND %d AND A.proto='cifs' AND +A.user_id=%d
    UNION ALL SELECT A.share_id,A.read<>0,A.write<>0,A.write=0 FROM group_acl A
    WHERE A.share_id BETWEEN %d AND %d AND A.proto='cifs'
    AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
    OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)))",
    "Failed DB Query for 'SELECT user_acl(cifs)'. (%s)", &Entries::share_id, &Entries::reads,
    &Entries::writes, &Entries::withholds_writing);

struct Listed {
    int share_id;
};

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

// All entries of the user, by share.
int read_cifs_entries(const AccessQuestion &question, std::map<int, Entries> &entries)
{
    const auto add = [&](const Entries &row) {
        Entries &share = entries[row.share_id];
        share.reads |= row.reads;
        share.writes |= row.writes;
        share.withholds_writing |= row.withholds_writing;
    };
    const auto [call, first, last, user] = question;
    return call.scan<Entries>(cifs_entries, add, first, last, user, first, last, user, user);
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

int may_use_cifs(const AccessQuestion &question, ShareIds &readable, ShareIds *writeable)
{
    std::vector<Default> defaults;
    if (const int rc = for_each_default(question, cifs_defaults,
                                        [&](const Default &option) { defaults.push_back(option); }))
        return rc;
    const bool guest = question.is_guest();
    std::map<int, Entries> entries;
    if (!guest && (writeable != nullptr || !std::ranges::all_of(defaults, &Default::lets_read)))
        if (const int rc = read_cifs_entries(question, entries))
            return rc;
    for (const Default &option : defaults) {
        const Entries &entry = entries[option.share_id];
        if (guest ? option.lets_read() && option.guests != 0 : option.lets_read() || entry.reads != 0)
            readable.insert(option.share_id);
        if (writeable == nullptr)
            continue;
        // Under a writeable default entries only take the right away, under any other they only give it.
        const bool by_default = option.access() == "writeable";
        if (guest ? by_default && option.guests != 0
                  : (by_default ? entry.withholds_writing == 0 : entry.writes != 0))
            writeable->insert(option.share_id);
    }
    return 0;
}

bool can_be_asked_about(const char *protocol)
{
    const std::string_view name = protocol;
    return name == protocol_id_cifs || name == protocol_id_http;
}

int may_read(const AccessQuestion &question, const char *protocol, ShareIds &granted)
{
    return std::string_view(protocol) == protocol_id_cifs ? may_use_cifs(question, granted, nullptr)
                                                          : may_read_http(question, granted);
}

} // namespace qbobj
