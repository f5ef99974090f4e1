// May a user read or write a share? Answered from the protocol's default access and its access lists.
#include "share/share_access.h"

#include "core/call.h"

#include <string_view>

namespace qbobj
{
namespace
{

Verdict verdict(bool granted)
{
    return granted ? Verdict::granted : Verdict::denied;
}

// Granted when the statement finds a row.
Verdict found(const AccessQuestion &question, const char *table, const Number &result)
{
    if (!result) {
        raise(question.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT %s'. (%s)", table,
              result.error());
        return Verdict::failed;
    }
    return verdict(result.found != 0);
}

// The first of two tests that does not deny decides.
template <class Test>
Verdict otherwise(Verdict first, Test second)
{
    return first == Verdict::denied ? second() : first;
}

Verdict reversed(Verdict verdict)
{
    switch (verdict) {
    case Verdict::denied:
        return Verdict::granted;
    case Verdict::granted:
        return Verdict::denied;
    default:
        return verdict;
    }
}

/* ---- CIFS ---------------------------------------------------------------------------------------------- */

// A share's default by a protocol; `found` is false for a share that the protocol does not export.
struct Default {
    bool failed = false;
    bool found = false;
    std::string_view access; // as stored
    bool guests = false;     // CIFS only
};

struct CifsRow {
    const char *access;
    int guests;
};
constexpr auto cifs_columns = std::tuple{&CifsRow::access, &CifsRow::guests};

Default cifs_default(const AccessQuestion &question)
{
    const Table rows =
        question.call.table("SELECT O.cifs_access,O.cifs_guest_access FROM cifs_share_option O "
                            "WHERE O.share_id=%d",
                            question.share_id);
    Default result;
    if (!rows) {
        raise(question.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT cifs_share_option'. (%s)",
              rows.error());
        result.failed = true;
    } else if (!rows.empty()) {
        CifsRow row{};
        fill(question.call, row, cifs_columns, *rows.begin());
        result = {false, true, or_empty(row.access), row.guests != 0};
    }
    return result;
}

// Is there an entry for the user, or one for a group of theirs, that satisfies the condition?
Verdict listed_for_cifs(const AccessQuestion &question, const char *condition)
{
    const Verdict user =
        found(question, "user_acl(cifs)",
              question.call.ask_number("SELECT 1 FROM user_acl A WHERE A.share_id=%d AND A.proto='cifs' "
                                       "AND A.user_id=%d AND %s",
                                       question.share_id, question.user_id, condition));
    return otherwise(user, [&] {
        return found(question, "user_acl(cifs)",
                     question.call.ask_number(
                         R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='cifs' AND %s
            AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
            OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)) LIMIT 1)",
                         question.share_id, condition, question.user_id, question.user_id));
    });
}

/* ---- HTTP ---------------------------------------------------------------------------------------------- */

Verdict user_listed_for_http(const AccessQuestion &question)
{
    return found(question, "user_acl(http)",
                 question.call.ask_number(
                     "SELECT 1 FROM user_acl A WHERE A.share_id=%d AND A.proto='http' AND A.user_id=%d",
                     question.share_id, question.user_id));
}

// Only listed memberships count here, not the primary group.
Verdict member_listed_for_http(const AccessQuestion &question)
{
    return found(question, "group_acl(http)",
                 question.call.ask_number(R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='http'
            AND EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d))",
                                          question.share_id, question.user_id));
}

Verdict group_listed_for_http(const AccessQuestion &question)
{
    return found(question, "group_acl(http)",
                 question.call.ask_number(R"(SELECT 1 FROM group_acl A WHERE A.share_id=%d AND A.proto='http'
            AND(EXISTS(SELECT * FROM `$user` U WHERE U.id=%d AND U.group_id=A.group_id)
            OR EXISTS(SELECT * FROM `$group_has_user` GU WHERE GU.group_id=A.group_id AND GU.user_id=%d)) LIMIT 1)",
                                          question.share_id, question.user_id, question.user_id));
}

// Without any access list a share that is on offer is open to everyone.
Verdict http_lists_empty(const AccessQuestion &question)
{
    const Number users = question.call.ask_number(
        "SELECT COUNT(*) FROM user_acl A WHERE A.share_id=%d AND A.proto='http'", question.share_id);
    if (!users)
        return found(question, "user_acl(http)", users);
    const Number groups = question.call.ask_number(
        "SELECT COUNT(*) FROM group_acl A WHERE A.share_id=%d AND A.proto='http'", question.share_id);
    if (!groups)
        return found(question, "group_acl(http)", groups);
    return verdict(users.value == 0 && groups.value == 0);
}

Verdict may_read_http(const AccessQuestion &question)
{
    const Text access = question.call.ask_text(
        "SELECT O.http_access FROM http_share_option O WHERE O.share_id=%d", question.share_id);
    if (!access) {
        raise(question.call, QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT http_share_option'. (%s)",
              access.error());
        return Verdict::failed;
    }
    if (access.found == 0)
        return Verdict::denied;
    const std::string_view stored = or_empty(access.value);
    if (stored == "readonly" || stored == "writeable")
        return otherwise(http_lists_empty(question), [&] {
            return otherwise(user_listed_for_http(question),
                             [&] { return member_listed_for_http(question); });
        });
    if (question.is_guest())
        return Verdict::denied;
    return otherwise(user_listed_for_http(question), [&] { return group_listed_for_http(question); });
}

} // namespace

Verdict may_read_cifs(const AccessQuestion &question)
{
    const Default option = cifs_default(question);
    if (option.failed)
        return Verdict::failed;
    if (!option.found)
        return Verdict::denied;
    if (option.access == "readonly" || option.access == "writeable")
        return verdict(!question.is_guest() || option.guests);
    if (question.is_guest())
        return Verdict::denied;
    return listed_for_cifs(question, "A.read<>0");
}

// Under a writeable default entries only take the right away, under any other they only give it.
Verdict may_write_cifs(const AccessQuestion &question)
{
    const Default option = cifs_default(question);
    if (option.failed)
        return Verdict::failed;
    if (!option.found)
        return Verdict::denied;
    if (option.access == "writeable")
        return question.is_guest() ? verdict(option.guests)
                                   : reversed(listed_for_cifs(question, "A.write=0"));
    if (question.is_guest())
        return Verdict::denied;
    return listed_for_cifs(question, "A.write<>0");
}

Verdict may_read(const AccessQuestion &question, const char *protocol)
{
    const std::string_view name = protocol;
    if (name == "cifs")
        return may_read_cifs(question);
    if (name == "http")
        return may_read_http(question);
    return Verdict::unknown_protocol;
}

} // namespace qbobj
