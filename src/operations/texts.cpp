// Looking up the texts of the public headers.
#include "operations/texts.h"

#include <algorithm>
#include <utility>

namespace qbobj::texts
{
namespace
{

constexpr std::string_view prefix = "qbobj_";

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

template <class Item>
const Item *find_named(std::span<const Item> items, std::string_view name)
{
    const auto found =
        std::ranges::find_if(items, [name](const Item &item) { return same_name(item.name, name); });
    return found == items.end() ? nullptr : &*found;
}

} // namespace

bool same_name(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

const Operation *find_operation(std::string_view name)
{
    if (same_name(name.substr(0, prefix.size()), prefix))
        name.remove_prefix(prefix.size());
    return find_named(operations(), name);
}

const Record *find_record(std::string_view name)
{
    return find_named(records(), name);
}

const Field *find_field(const Record &record, std::string_view name)
{
    return find_named(record.fields, name);
}

bool is_secret(std::string_view record, std::string_view field)
{
    const auto key = [](const Secret &secret) { return std::pair(secret.record, secret.field); };
    return std::ranges::binary_search(secrets(), std::pair(record, field), {}, key);
}

} // namespace qbobj::texts
