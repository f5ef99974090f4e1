// The parts of account queries that need no template. Their errors carry their caller's place.
#include "account/queries.h"

#include <algorithm>
#include <cstring>

namespace qbobj
{

/* ---- Listings ------------------------------------------------------------------------------------------ */

const char *Orders::chosen(int order) const
{
    switch (order) {
    case 2:
        return by_id;
    case -1:
        return by_name_descending;
    case -2:
        return by_id_descending;
    default:
        return by_name;
    }
}

int read_query(Call &call, const qbobj_AccountQuery_t *given, qbobj_AccountQuery_t &query, const Site &site)
{
    query = {};
    if (given != nullptr)
        query = *given;
    else
        query.ads = call.directory().ads ? 1 : 0;
    if (!is_empty(query.name_like) && std::strlen(query.name_like) > 256)
        return raise_at(site, call, QBOBJ_ERROR_API_ARGS, "Query string is too long.");
    return 0;
}

const char *limit_clause(Call &call, const qbobj_AccountQuery_t &query)
{
    if (query.limit == 0)
        return "";
    if (query.offset == 0)
        return print(call, "LIMIT %d", query.limit);
    return print(call, "LIMIT %d,%d", query.offset, query.limit);
}

/* ---- Keys ---------------------------------------------------------------------------------------------- */

int find_user_key(Call &call, qbobj_User_t &user, int &key, const Site &site)
{
    key = key_of(user.resource_id, user.UserId);
    if (key != 0)
        return 0;
    qbobj_error_t code = QBOBJ_ERROR_API_ARGS;
    if (call.directory().no_sync && user.UserName != nullptr) {
        // The superuser's id 0 is no key of a user.
        key = posix_users.of_domain_name(call, user.UserName);
        if (key >= 1) {
            user.resource_id = key;
            user.UserId = key;
            return 0;
        }
        code = QBOBJ_ERROR_UI__NO_LDAP_OBJECT;
    }
    return raise_at(site, call, code, "Invalid User (resource_id=%d, UserName=%s).", user.resource_id,
                    user.UserName);
}

int exec_each(Call &call, std::span<const AccountStatement> statements, int id)
{
    for (const AccountStatement &statement : statements)
        if (const int rc = call.exec(statement.failure, statement.sql, id))
            return rc;
    return 0;
}

/* ---- Free ids ------------------------------------------------------------------------------------------ */

// A range without a gap holds as many accounts as ids. Ranges are doubled until one has a gap, and that one is halved, so
// that the cost is that of the accounts in a row and not of all.
int find_first_gap(Call &call, const IdQuestions &questions, int mark, int last, int &gap)
{
    bool full = true;
    const auto count = [&](int first, int end) {
        int taken = 0;
        const int rc = call.number(questions.failure, taken, questions.range, first, end);
        full = taken == end - first + 1;
        return rc;
    };
    gap = mark;
    int end = mark;
    for (int width = 1; gap <= last; width *= 2) {
        end = gap + std::min(width, last - gap + 1) - 1;
        if (const int rc = count(gap, end))
            return rc;
        if (!full)
            break;
        gap = end + 1;
    }
    while (gap < end) {
        const int middle = gap + (end - gap) / 2;
        if (const int rc = count(gap, middle))
            return rc;
        if (full)
            gap = middle + 1;
        else
            end = middle;
    }
    return 0;
}

/* ---- Identity ------------------------------------------------------------------------------------------ */

int PosixIds::of_id(Call &call, int id) const
{
    return id < 0 ? std::max(by_id(call.qbdb(), id), -1) : id;
}

int PosixIds::of_domain_name(Call &call, const char *name) const
{
    return name == nullptr ? -1 : std::max(by_name(call.qbdb(), name, 1), -1);
}

int found_id(const Text &row, int *id)
{
    if (!row || row.value == nullptr)
        return -1;
    *id = to_int(row.value);
    return 0;
}

int found_name(Call &call, const Text &row, int id, char **name)
{
    if (row && row.found != 0)
        *name = row.value;
    else if (row && id >= 0)
        *name = print(call, "%d", id);
    else
        *name = copy_text(call.pool(), guest_str);
    return row ? 0 : -1;
}

} // namespace qbobj
