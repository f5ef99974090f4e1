// A map of a bounded size that forgets what was not looked up for the longest time.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <list>
#include <optional>
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

    // The value kept under the key, or null. It stays valid until the next insert(). A key that stands where it stood
    // at its last look-up, as literals do, is compared and not hashed.
    Value *find(std::string_view key)
    {
        Slot &slot = slots_[reinterpret_cast<std::uintptr_t>(key.data()) / alignof(void *) % slots_.size()];
        if (!slot || (*slot)->first != key) {
            const auto found = index_.find(key);
            if (found == index_.end())
                return nullptr;
            slot = found->second;
        }
        entries_.splice(entries_.begin(), entries_, *slot);
        return &(*slot)->second;
    }

    Value &insert(std::string_view key, Value value)
    {
        Entries fresh; // made whole before anything changes
        fresh.emplace_front(std::string(key), std::move(value));
        index_.emplace(fresh.front().first, fresh.begin());
        entries_.splice(entries_.begin(), fresh);
        if (entries_.size() > capacity_) {
            index_.erase(entries_.back().first);
            std::ranges::replace(slots_, Slot(std::prev(entries_.end())), Slot());
            entries_.pop_back();
        }
        return entries_.front().second;
    }

  private:
    using Entries = std::list<std::pair<std::string, Value>>;

    using Slot = std::optional<typename Entries::iterator>;

    std::size_t capacity_;
    Entries entries_;
    std::unordered_map<std::string_view, typename Entries::iterator> index_; // keys stand in the entries
    std::array<Slot, 256> slots_;                                            // by where a key stood
};

} // namespace qbdb
