// Text helpers and random bits.
#include "common/pool.h"
#include "qbdb.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <sys/random.h>

namespace
{

constexpr std::string_view day_names[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Calls take(item) for the items between the commas, without the blanks round them.
template <class Take>
void for_each_item(std::string_view csv, Take take)
{
    while (true) {
        const std::size_t comma = csv.find(',');
        take(trimmed(csv.substr(0, comma)));
        if (comma == csv.npos)
            return;
        csv.remove_prefix(comma + 1);
    }
}

} // namespace

int qbdb_csv_to_array(qbdb_handle_t *qbdb, const char *csv, const char ***array, int *count)
try {
    const std::string_view text = trimmed(csv ? csv : "");
    std::size_t items = 0;
    if (!text.empty())
        for_each_item(text, [&](std::string_view) { items++; });
    auto **list = static_cast<const char **>(qb::allocate(qbdb->pool, (items + 1) * sizeof(char *)));
    std::size_t i = 0;
    if (!text.empty())
        for_each_item(text, [&](std::string_view item) { list[i++] = qb::copy_text(qbdb->pool, item); });
    *array = list;
    if (count)
        *count = static_cast<int>(items);
    return 0;
} catch (const std::bad_alloc &) {
    return SQLITE_NOMEM;
}

int qbdb_dow_to_i(const char *days)
{
    int set = 0;
    for_each_item(days ? days : "", [&](std::string_view word) {
        for (unsigned i = 0; i < std::size(day_names); i++)
            if (word.size() == day_names[i].size() &&
                sqlite3_strnicmp(word.data(), day_names[i].data(), static_cast<int>(word.size())) == 0)
                set |= 1 << i;
    });
    return set;
}

const char *qbdb_i_to_dow(qbdb_handle_t *qbdb, int days)
{
    char text[sizeof "Sun,Mon,Tue,Wed,Thu,Fri,Sat"] = "";
    for (unsigned i = 0; i < std::size(day_names); i++)
        if ((days & 1 << i) != 0) {
            if (text[0] != 0)
                strncat_safe(text, ",", sizeof text);
            strncat_safe(text, day_names[i].data(), sizeof text);
        }
    try {
        return qb::copy_text(qbdb->pool, text);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}

uint32_t qbdb_rand(void)
{
    uint32_t bits = 0;
    while (getrandom(&bits, sizeof bits, 0) != static_cast<ssize_t>(sizeof bits))
        ;
    return bits;
}

char *strncat_safe(char *dst, const char *src, size_t size)
{
    const std::size_t used = strnlen(dst, size);
    if (used + 1 < size && src) {
        const std::size_t taken = strnlen(src, size - used - 1);
        std::memcpy(dst + used, src, taken);
        dst[used + taken] = 0;
    }
    return dst;
}
