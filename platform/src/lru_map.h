// A map of a bounded size that forgets what was not looked up for the longest time.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace qbdb
{

template <class Value>
class LruMap
{
  public:
    explicit LruMap(std::size_t capacity) : capacity_(capacity) {}

    // The value kept under the key, or null. It stays valid until the next insert().
    Value *find(std::string_view key)
    {
        const auto found = index_.find(key);
        if (found == index_.end())
            return nullptr;
        entries_.splice(entries_.begin(), entries_, found->second);
        return &found->second->second;
    }

    Value &insert(std::string_view key, Value value)
    {
        Entries fresh; // made whole before anything changes
        fresh.emplace_front(std::string(key), std::move(value));
        index_.emplace(fresh.front().first, fresh.begin());
        entries_.splice(entries_.begin(), fresh);
        if (entries_.size() > capacity_) {
            index_.erase(entries_.back().first);
            entries_.pop_back();
        }
        return entries_.front().second;
    }

  private:
    using Entries = std::list<std::pair<std::string, Value>>;

    std::size_t capacity_;
    Entries entries_;
    std::unordered_map<std::string_view, typename Entries::iterator> index_; // keys stand in the entries
};

} // namespace qbdb
