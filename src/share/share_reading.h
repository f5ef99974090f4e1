// Reading the parts of shares' records, for one share or for many at once.
#pragma once

#include "core/call.h"

#include <qbobj/share.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace qbobj
{

// A row of a table about shares, with the id of its share.
template <class Record>
struct OfShare : Record {
    int share_id;
};

// The column of that id, which is passed over where a record has no place for it.
inline constexpr auto id_of_share = [](const qbobj_env_t &, auto &record, const char *cell) {
    if constexpr (requires { record.share_id; })
        record.share_id = to_int(cell);
};

// As select(), of the rows of the shares whose ids are in a range: the first two arguments are the range, the last
// column is the share's id, and the rows are in the order of the ids.
template <class... Args, class... Columns>
consteval auto select_of_shares(std::type_identity_t<Statement<int, int, Args...>> sql, Failure failure,
                                Columns... columns)
{
    return select<int, int, Args...>(sql, failure, columns..., id_of_share);
}

template <class Share>
struct ShareEntry {
    int id;
    Share *share;
};

// Shares that are read together: one statement answers for all of them.
template <class Share>
class Batch
{
  public:
    using Entry = ShareEntry<Share>;

    // One or more, in the order of their ids.
    Batch(Call &call, std::span<const Entry> entries) : call_(call), entries_(entries) {}

    Call &call() const { return call_; }
    std::span<const Entry> entries() const { return entries_; }

    // Hands every row to take(share, row).
    template <class Row, class Columns, class Take, class... Args>
    int each(const Select<Columns, int, int, Args...> &select, Take take,
             std::type_identity_t<Args>... args) const
    {
        auto entry = entries_.begin();
        const auto visit = [&](const Row &row) {
            while (entry != entries_.end() && entry->id < row.share_id)
                ++entry;
            if (entry != entries_.end() && entry->id == row.share_id)
                take(*entry->share, row);
        };
        return call_.scan<Row>(select, visit, entries_.front().id, entries_.back().id, args...);
    }

    // A share's part is made from its first row; without a row there is none.
    template <class Select, class Part>
    int read_new(const Select &select, Part *Share::*part) const
    {
        for (const Entry &entry : entries_)
            entry.share->*part = nullptr;
        return each<OfShare<Part>>(select, [&](Share &share, const Part &row) {
            if (share.*part == nullptr)
                *(share.*part = create<Part>(call_.pool())) = row;
        });
    }

    // Every row becomes a record of its share's list.
    template <class Select, class Record>
    int read_list(const Select &select, Record *Share::*list) const
    {
        for (const Entry &entry : entries_)
            entry.share->*list = nullptr;
        return append<OfShare<Record>>(select,
                                       [list](Share &share, const Record &) { return &(share.*list); });
    }

    // Every row becomes a record of the list that list_of(share, row) points to; null leaves the row out.
    template <class Row, class Select, class ListOf, class... Args>
    int append(const Select &select, ListOf list_of, Args... args) const
    {
        std::invoke_result_t<ListOf, Share &, const Row &> list = nullptr;
        std::optional<Tail<std::remove_pointer_t<std::remove_pointer_t<decltype(list)>>>> tail;
        const auto take = [&](Share &share, const Row &row) {
            const auto wanted = list_of(share, row);
            if (wanted == nullptr)
                return;
            if (wanted != list)
                tail.emplace(*(list = wanted));
            tail->append(call_.pool(), row);
        };
        return each<Row>(select, take, args...);
    }

  private:
    Call &call_;
    std::span<const Entry> entries_;
};

using ShareBatch = Batch<qbobj_Share_t>;

// Calls work(batch) for some hundred shares at a time. The rows of shares whose ids lie between those of a batch are read
// in vain, so that a batch ends where the next id is far.
template <class Share, class Work>
int for_each_batch(Call &call, std::vector<ShareEntry<Share>> &shares, Work work)
{
    constexpr std::ptrdiff_t most = 256;
    constexpr std::int64_t far = 8;
    std::ranges::sort(shares, {}, &ShareEntry<Share>::id);
    for (auto first = shares.begin(); first != shares.end();) {
        auto last = first + 1;
        while (last != shares.end() && last - first < most && std::int64_t{last->id} - (last - 1)->id < far)
            ++last;
        if (const int rc = work(Batch<Share>(call, {first, last})))
            return rc;
        first = last;
    }
    return 0;
}

// The access word of permission bits.
constexpr const char *access_word(int bits)
{
    constexpr int may_write = 2;
    constexpr int may_read = 4;
    if ((bits & may_write) != 0)
        return "ReadWrite";
    return (bits & may_read) != 0 ? "ReadOnly" : "Disabled";
}

// The folders of shares. Accounts that own them or stand in their lists are looked up once.
class FolderReader
{
  public:
    explicit FolderReader(Call &call) : call_(call) {}

    // Owner, permissions and access control list of the folder at `path`. A folder that cannot be examined leaves
    // them empty; only a failing account look-up is an error.
    int read(const char *path, qbobj_FileStat_t &stat);

    // Of an account that stands in a list; null when there is none.
    const char *user_name(int id);
    const char *group_name(int id);

  private:
    Call &call_;
    std::map<unsigned, qbobj_SystemUser_t> users_; // by the number that owns
    std::map<unsigned, qbobj_SystemGroup_t> groups_;
    std::map<int, const char *> user_names_;
    std::map<int, const char *> group_names_;
};

// The options of every protocol that a share has a row for, with their access lists, and its block volume.
int read_share_options(const ShareBatch &batch, bool ftp_anonymous);

} // namespace qbobj
