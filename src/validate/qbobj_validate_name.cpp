// Names of shares, snapshots, accounts, hosts and interfaces, and the words of share types and protocols.
#include "core/call.h"
#include "validate/ascii.h"
#include "validate/validate.h"
#include "validate/word_table.h"

#include <algorithm>
#include <string_view>

namespace qbobj
{
namespace
{

namespace ascii = qbobj::ascii;
using qbobj::find_word;
using qbobj::is_empty;

constexpr string_len reserved_name[] = {
    {"home", 0},         {"theme", 0},     {"password_recovery", 0},
    {"my_password", 0},  {"html", 0},      {"aquota.user", 0},
    {"css", 0},          {"extjs", 0},     {"legacy", 0},
    {"raphael", 0},      {"recovery", 0},  {"xml", 0},
    {"utest", 0},        {"cgi-bin", 0},   {"np", 0},
    {"panelview", 0},    {"fsbroker", 0},  {"recover", 0},
    {"mypasswd", 0},     {"stimg", 0},     {"fonts", 0},
    {"aquota.group", 0}, {"shares", 0},    {"homes", 0},
    {"printers", 0},     {"everyone", 0},  {"anyone", 0},
    {"c_", 2},           {"m_", 2},        {"v_", 2},
    {"r_", 2},           {"b_", 2},        {"pool", 0},
    {"zpool", 0},        {"zfs", 0},       {"usb", 0},
    {"usb_", 4},         {"usb_port_", 9}, {"global", 0},
    {"diag", 0},         {"purge", 0},     {"core", 0},
    {"job_", 4},
};

constexpr string_len protected_sharename[] = {{"dropnest", 0}};

constexpr string_len sharetype_str[] = {{"share", 0}, {"zvol", 0}, {"replicate", 0}};

constexpr std::string_view protocol_name_str[] = {"cifs", "afp",   "nfs",  "ftp",
                                                  "http", "rsync", "dlna", "daap"};

// Which bytes may stand at a place of a name: letters always.
struct byte_class {
    std::string_view signs = {};
    bool digits = true;
    int high_from = 0x100; // this byte and all above it are in the class

    constexpr bool contains(char c) const
    {
        return ascii::is_letter(c) || (digits && ascii::is_digit(c)) ||
               static_cast<unsigned char>(c) >= high_from || signs.find(c) != signs.npos;
    }
};

struct name_rule {
    byte_class first;
    byte_class later;
    std::size_t max_length;

    // 1 wrong first byte (or none at all), 2 wrong later byte, 3 too long.
    constexpr int check(std::string_view name) const
    {
        if (name.empty() || !first.contains(name.front()))
            return 1;
        if (!std::ranges::all_of(name.substr(1), [this](char c) { return later.contains(c); }))
            return 2;
        return name.size() > max_length ? 3 : 0;
    }
};

// A name begins with a whole UTF-8 character, so its first byte is never a continuation byte (0x80-0xBF).
constexpr int utf8_lead = 0xC0;
constexpr int utf8_any = 0x80;

constexpr byte_class share_first{.signs = "$", .high_from = utf8_lead};
constexpr byte_class share_later{.signs = "_$-.", .high_from = utf8_any};
constexpr name_rule share_rule{share_first, share_later, 31};
constexpr name_rule snapshot_rule{share_first, share_later, 49};
constexpr name_rule account_rule{
    {.signs = "_&", .high_from = utf8_lead}, {.signs = "_-.@&", .high_from = utf8_any}, 31};
constexpr name_rule workgroup_rule{{}, {.signs = "_-. "}, 15};
constexpr name_rule hostname_rule{{}, {.signs = "_-."}, 255};
constexpr name_rule myhostname_rule{{.digits = false}, {.signs = "_-"}, 15};
constexpr name_rule community_rule{{}, {.signs = "_-.!"}, 31};
constexpr name_rule netif_rule{{.signs = "_.-"}, {.signs = "_.-"}, 16};

// 4 begins like a family of reserved names, 5 is a reserved name.
int check_reserved(const char *name)
{
    const string_len *entry = find_word(reserved_name, name);
    if (entry == nullptr)
        return 0;
    return entry->len > 0 ? 4 : 5;
}

int check_account(const char *str, const char **name, bool may_be_reserved)
{
    if (is_empty(str)) {
        *name = nullptr;
        return 1;
    }
    int code = account_rule.check(str);
    if (code == 0 && !may_be_reserved)
        code = check_reserved(str);
    if (code == 0)
        *name = str;
    return code;
}

bool every_label_has_a_letter(std::string_view name)
{
    for (;;) {
        const std::size_t dot = name.find('.');
        if (!std::ranges::any_of(name.substr(0, dot), ascii::is_letter))
            return false;
        if (dot == name.npos)
            return true;
        name.remove_prefix(dot + 1);
    }
}

} // namespace

int qbobj_validate_protected_sharename(const char *str)
{
    if (is_empty(str))
        return -1;
    return find_word(protected_sharename, str) != nullptr ? 0 : 1;
}

int qbobj_validate_username(const char *str, const char **uname)
{
    return check_account(str, uname, false);
}

int qbobj_validate_groupname(const char *str, const char **gname)
{
    return check_account(str, gname, true);
}

int qbobj_validate_sharetype(const char *str, const char **sharetype)
{
    qbobj::require(sharetype != nullptr, "sharetype", __func__);
    const string_len *entry = is_empty(str) ? &sharetype_str[0] : find_word(sharetype_str, str);
    *sharetype = entry != nullptr ? entry->word : nullptr;
    return entry != nullptr ? 0 : 1;
}

int qbobj_validate_workgroup(const char *name)
{
    return name == nullptr ? -1 : workgroup_rule.check(name);
}

int qbobj_validate_hostname(const char *hostname)
{
    if (is_empty(hostname))
        return -11;
    const int code = hostname_rule.check(hostname);
    if (code != 0)
        return code;
    // So a dotted IPv4 address is no host name.
    return every_label_has_a_letter(hostname) ? 0 : 4;
}

int qbobj_validate_community(const char *str)
{
    return str == nullptr ? -1 : community_rule.check(str);
}

int qbobj_validate_netif_name(const char *str)
{
    if (str == nullptr)
        return 1;
    // An interface may be left unnamed, although null is refused: callers depend on the difference.
    if (*str == '\0')
        return 0;
    const int code = netif_rule.check(str);
    return code == 1 ? 2 : code; // the first byte is like any other here
}

int qbobj_validate_simplename(const char *str, size_t maxlen)
{
    constexpr std::size_t default_maxlen = 8;
    if (is_empty(str))
        return 1;
    const std::string_view name = str;
    if (!ascii::is_letter(name.front()))
        return 2;
    if (name.size() > (maxlen == 0 ? default_maxlen : maxlen))
        return 3; // the length comes before the other bytes
    return std::ranges::all_of(name, [](char c) { return byte_class{}.contains(c); }) ? 0 : 4;
}

int qbobj_validate_protocol_name(const char *str)
{
    if (str == nullptr)
        return 2;
    return std::ranges::find(protocol_name_str, std::string_view(str)) != std::end(protocol_name_str) ? 0 : 1;
}

} // namespace qbobj

int qbobj_validate_sharename(const char *str, const char **sharename)
{
    if (sharename != nullptr)
        *sharename = nullptr;
    if (qbobj::is_empty(str))
        return -1;
    int code = qbobj::share_rule.check(str);
    if (code == 0)
        code = qbobj::check_reserved(str);
    if (code == 0 && sharename != nullptr)
        *sharename = str;
    return code;
}

int qbobj_validate_snapshotname(const char *str)
{
    return qbobj::is_empty(str) ? -1 : qbobj::snapshot_rule.check(str);
}

int qbobj_validate_myhostname(const char *hostname)
{
    return qbobj::is_empty(hostname) ? -11 : qbobj::myhostname_rule.check(hostname);
}
