// The snapshots of shares and those of home folders are one shape with two sets of words; here is the shape. A set of
// words is a struct of the unit that uses it, so that its failures carry that unit's name:
//
//     site             where the words stand
//     columns, source  of the list; `source` is FROM and WHERE, and takes two times and the condition on the type
//     first, second    the conditions of the two names by which snapshots may be chosen
//     list<...>(sql), failure
#pragma once

#include "core/call.h"

#include <array>

namespace qbobj
{

/* ---- Lists --------------------------------------------------------------------------------------------- */

// Which snapshots are meant; a name that is null is any.
struct SnapshotFilter {
    const char *first;
    const char *second;
    int type;
    int from;
    int to;
};

struct SnapshotPage {
    const char *order_by;
    int order;
    int limit;
    int offset;
};

inline const char *type_condition(int type)
{
    constexpr std::array conditions{" AND S.type>0 AND S.type<4", " AND S.type=1", " AND S.type=2",
                                    " AND S.type=3"};
    return conditions[type >= 1 && type <= 3 ? static_cast<std::size_t>(type) : 0];
}

// A column of the snapshots by a caller's name for it. Behind "S." it is never anything else, so that a name that is no
// column fails; alone, SQLite would take it for a text.
const char *snapshot_column(const Call &call, const char *name);

// Where a snapshot of a folder can be seen; "" when the platform does not know.
const char *snapshot_path(const qbobj_env_t &env, const char *folder, const char *snapshot);

// The statements, by whether the first and the second name are given. They have a format each, so that all values are
// bound and the statements stay prepared.
template <class Words, bool First, bool Second>
struct SnapshotTexts {
    static constexpr auto conditions = [] {
        if constexpr (First && Second)
            return joined(Words::first, Words::second);
        else if constexpr (First)
            return joined(Words::first);
        else if constexpr (Second)
            return joined(Words::second);
        else
            return joined("");
    }();
    static constexpr auto list =
        joined(Words::columns, Words::source, conditions.text, " ORDER BY S.%s %s LIMIT %d OFFSET %d");
    static constexpr auto count = joined("SELECT COUNT(*)", Words::source, conditions.text);
};

// Calls `use` with the texts for the names that are given, and with these.
template <class Words, class Use>
int with_given(const SnapshotFilter &filter, Use use)
{
    if (filter.first != nullptr && filter.second != nullptr)
        return use(SnapshotTexts<Words, true, true>{}, filter.first, filter.second);
    if (filter.first != nullptr)
        return use(SnapshotTexts<Words, true, false>{}, filter.first);
    if (filter.second != nullptr)
        return use(SnapshotTexts<Words, false, true>{}, filter.second);
    return use(SnapshotTexts<Words, false, false>{});
}

template <class Words, class Record>
int append_snapshots(Call &call, Record *&list, const SnapshotFilter &filter, const SnapshotPage &page)
{
    const char *column = snapshot_column(call, page.order_by == nullptr ? "created_on" : page.order_by);
    const char *direction = page.order == 0 ? "ASC" : "DESC";
    const int limit = page.limit == 0 ? 2147483647 : page.limit;
    return with_given<Words>(filter, [&]<class Texts, class... Names>(const Texts &, Names... names) {
        constexpr auto rows =
            Words::template list<int, int, const char *, Names..., const char *, const char *, int, int>(
                {Texts::list, Words::site});
        return call.append(rows, list, filter.from, filter.to, type_condition(filter.type), names..., column,
                           direction, limit, page.offset);
    });
}

template <class Words>
int count_snapshots(Call &call, int &count, const SnapshotFilter &filter)
{
    return with_given<Words>(filter, [&]<class Texts, class... Names>(const Texts &, Names... names) {
        return call.number<int, int, const char *, Names...>(
            Words::failure, count, {Texts::count, Words::site}, filter.from, filter.to,
            type_condition(filter.type), names...);
    });
}

/* ---- Deletions ----------------------------------------------------------------------------------------- */

// The statements that delete in one scope; the scope's value comes first.
struct SnapshotDeletions {
    Statement<const char *, int> newer;
    Statement<const char *, const char *, const char *> newer_than_named;
    Statement<const char *, int> made_on;
    Statement<const char *, const char *> named;
    Statement<const char *> all;
    Failure thinning_failure; // of the first three
    Failure failure;
};

// A set of words for them: `table`, and `scope` with one %Q.
template <class Words>
struct DeletionTexts {
    static constexpr auto all = joined("DELETE FROM ", Words::table, " WHERE ", Words::scope);
    static constexpr auto newer = joined(all.text, " AND created_on>%d");
    static constexpr auto newer_than_named =
        joined(all.text, " AND created_on > (SELECT S2.created_on FROM ", Words::table, " S2 WHERE ",
               Words::scope, " AND S2.name = %Q)");
    static constexpr auto made_on = joined(all.text, " AND created_on=%d");
    static constexpr auto named = joined(all.text, " AND name=%Q");
};

template <class Words>
consteval SnapshotDeletions snapshot_deletions(const Failure &thinning_failure, const Failure &failure,
                                               const Site &site = here())
{
    using Texts = DeletionTexts<Words>;
    return {{Texts::newer, site},
            {Texts::newer_than_named, site},
            {Texts::made_on, site},
            {Texts::named, site},
            {Texts::all, site},
            thinning_failure,
            failure};
}

// What a caller asks to delete.
struct SnapshotDeletion {
    int newer; // 1 newer than `created_on`, 2 newer than the named one, 3 made at `created_on`; else the named one or all
    const char *name;
    int created_on;
};

// Runs the one that is asked for; at least one row must go.
int delete_snapshots(Call &call, const SnapshotDeletions &deletions, const char *scope,
                     const SnapshotDeletion &deletion, const Site &site = here());

/* ---- The share of a snapshot --------------------------------------------------------------------------- */

struct SnapshotShare {
    const char *share_name;
    const char *volume_name;
    int share_id = 0;
    char *volume_id = nullptr;
};

// Each fills the id that belongs to its name, which must be there.
int find_share(Call &call, SnapshotShare &share, const Site &site = here());
int find_volume(Call &call, SnapshotShare &share, const Site &site = here());
// The share must lie on the volume.
int check_share_on_volume(Call &call, const SnapshotShare &share, const Site &site = here());

} // namespace qbobj
