// Access words, switches, numbers, enumerations, media types and the vocabulary of the log.
#include "validate/ascii.h"
#include "validate/validate.h"
#include "validate/word_table.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace qbobj
{
namespace
{

using qbobj::ascii::equal_ignoring_case;

// Permission triplets (read 4, write 2, execute 1) of files and directories.
struct triplets {
    int file;
    int directory;

    int of(int is_dir) const { return is_dir != 0 ? directory : file; }
};

// What each access word means in the terms of those who store it.
struct access_word {
    std::string_view input;
    const char *stored;
    int read;
    int write;
    triplets rights;
    triplets umask; // the bits to clear
};

constexpr access_word access_words[] = {
    {"ReadOnly", "readonly", 1, 0, {4, 5}, {2, 2}},
    {"ReadWrite", "writeable", 1, 1, {6, 7}, {0, 0}},
    {"Disabled", "disabled", 0, 0, {0, 0}, {6, 7}},
};

constexpr std::string_view media_type_str[] = {
    "", "Audio", "Video", "Video,Audio", "Images", "Images,Audio", "Images,Video", "All",
};

constexpr string_len log_severity[] = {
    {"debug", 5}, {"info", 4}, {"notice", 0}, {"warning", 4},
    {"err", 3},   {"crit", 4}, {"alert", 5},  {"emerge", 5}, // stored rows depend on this spelling
};

constexpr string_len log_category[] = {
    {"misc", 0},    {"system", 0}, {"disk", 0}, {"volume", 0},   {"share", 0},
    {"account", 0}, {"backup", 0}, {"apps", 0}, {"snapshot", 0},
};

const char *chosen(const char *str, const char *defstr)
{
    return str != nullptr ? str : defstr;
}

// Null when there is no value or it is none of the words.
const access_word *find_access(const char *str, const char *defstr)
{
    const char *value = chosen(str, defstr);
    if (value == nullptr)
        return nullptr;
    const auto *word = std::ranges::find(access_words, std::string_view(value), &access_word::input);
    return word != std::end(access_words) ? word : nullptr;
}

// Orders two texts; 0 when they are equal.
int compare(const char *a, const char *b, bool ignore_case)
{
    if (!ignore_case)
        return std::strcmp(a, b);
    return equal_ignoring_case(a, b) ? 0 : 1;
}

// The table's own spelling of a word, or `fallback` when no word is given.
int check_log_word(std::span<const string_len> table, const char *str, const char *fallback,
                   const char **validated_str)
{
    if (str == nullptr) {
        *validated_str = fallback;
        return 0;
    }
    const string_len *entry = qbobj::find_word(table, str);
    if (entry == nullptr)
        return 1;
    *validated_str = entry->word;
    return 0;
}

} // namespace

int qbobj_validate_access(const char *str, const char *defstr, const char **access)
{
    const access_word *word = find_access(str, defstr);
    if (word == nullptr)
        return 1;
    *access = word->stored;
    return 0;
}

int qbobj_validate_access2(const char *str, const char *defstr, const char **access)
{
    const access_word *word = find_access(str, defstr);
    if (word == nullptr || word->write != 0)
        return 1;
    *access = word->stored;
    return 0;
}

int qbobj_validate_enable_disable(const char *str, const char *defstr, const char **access)
{
    const char *value = chosen(str, defstr);
    if (value == nullptr)
        return 1;
    if (std::strcmp(value, "Enabled") == 0)
        *access = "enabled";
    else if (std::strcmp(value, "Disabled") == 0)
        *access = "disabled";
    else
        return 1;
    return 0;
}

int qbobj_validate_read_write(const char *str, const char *defstr, int *read, int *write)
{
    const access_word *word = find_access(str, defstr);
    if (word == nullptr)
        return 1;
    *read = word->read;
    *write = word->write;
    return 0;
}

int qbobj_validate_rights(const char *str, const char *defstr, int *rights, int is_dir)
{
    const access_word *word = find_access(str, defstr);
    if (word == nullptr)
        return 1;
    *rights = word->rights.of(is_dir);
    return 0;
}

int qbobj_validate_umask(const char *str, const char *defstr, int *umask, int is_dir)
{
    if (chosen(str, defstr) == nullptr)
        return 1;
    const access_word *word = find_access(str, defstr);
    if (word == nullptr)
        return 2; // not 1, as from its siblings
    *umask = word->umask.of(is_dir);
    return 0;
}

int qbobj_validate_boolean(const char *str, const char *defstr, int *bool_val)
{
    const char *value = chosen(str, defstr);
    if (value == nullptr)
        return 1;
    if (std::strcmp(value, "0") == 0 || equal_ignoring_case(value, "off"))
        *bool_val = 0;
    else if (std::strcmp(value, "1") == 0 || equal_ignoring_case(value, "on"))
        *bool_val = 1;
    else
        return 1;
    return 0;
}

int qbobj_validate_int(const char *str, const char *defstr, int min, int max, int *intval)
{
    const char *text = chosen(str, defstr);
    if (text == nullptr)
        return 1;
    // Text behind the number is ignored, and no number at all is 0. A number that no long holds becomes the
    // nearest long, which no int range reaches.
    const long value = std::strtol(text, nullptr, 0);
    if (value < min || value > max)
        return 1;
    *intval = static_cast<int>(value);
    return 0;
}

int qbobj_validate_string(const char *str, int ignore_case, ...)
{
    int result = 1;
    va_list candidates;
    va_start(candidates, ignore_case);
    const char *candidate = nullptr;
    while (str != nullptr && result != 0 && (candidate = va_arg(candidates, const char *)) != nullptr)
        result = compare(str, candidate, ignore_case != 0);
    va_end(candidates);
    return result;
}

int qbobj_validate_string_array(const char *str, int ignore_case, const char *const *valid_strings)
{
    int result = 1;
    for (; str != nullptr && result != 0 && *valid_strings != nullptr; ++valid_strings)
        result = compare(str, *valid_strings, ignore_case != 0);
    return result;
}

int qbobj_validate_enum(const char *str, const char *defstr, const qbobj_enum_map_t *map, int *intval)
{
    const char *value = chosen(str, defstr);
    if (value == nullptr)
        return 1;
    for (; map->enumval != nullptr; ++map) {
        if (std::strcmp(map->enumval, value) != 0)
            continue;
        if (intval != nullptr)
            *intval = map->intval;
        return 0;
    }
    return 1;
}

int qbobj_validate_media_type(const char *str, const char *defstr, int *media_type)
{
    const char *value = chosen(str, defstr);
    if (value == nullptr)
        return 1;
    const auto *word = std::ranges::find(media_type_str, std::string_view(value));
    if (word == std::end(media_type_str))
        return 1;
    *media_type = static_cast<int>(word - media_type_str);
    return 0;
}

const char *qbobj_media_type_word(int media_type)
{
    return media_type_str[static_cast<unsigned>(media_type) % std::size(media_type_str)].data();
}

int qbobj_validate_log_severity(const char *str, const char **validated_str)
{
    return check_log_word(log_severity, str, "info", validated_str);
}

int qbobj_validate_log_category(const char *str, const char **validated_str)
{
    return check_log_word(log_category, str, "misc", validated_str);
}

} // namespace qbobj
