// Names that callers may give: which are accepted, and with which code the others are refused.
#include "codes.h"
#include "validate/validate.h"

#include <cctype>
#include <sstream>
#include <string>

using namespace qbobj;

namespace
{

using qbobj_test::expect_codes;
using Validator = std::function<int(const char *)>;

int sharename(const char *str)
{
    return qbobj_validate_sharename(str, nullptr);
}

// The code alone of a validator that also yields the name.
Validator code_of(int (*validate)(const char *, const char **))
{
    return [validate](const char *str) {
        const char *accepted = nullptr;
        return validate(str, &accepted);
    };
}
const Validator username = code_of(qbobj_validate_username);
const Validator groupname = code_of(qbobj_validate_groupname);

int simplename(const char *str)
{
    return qbobj_validate_simplename(str, 0);
}

const std::string lower = "abcdefghijklmnopqrstuvwxyz";
const std::string letters = lower + "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string alnum = letters + "0123456789";

std::string bytes_from(int first)
{
    std::string bytes;
    for (int b = first; b <= 0xFF; ++b)
        bytes += static_cast<char>(b);
    return bytes;
}

// A validator's bytes, limits and codes.
struct Alphabet {
    const char *what;
    Validator validate;
    std::string first, later;
    int bad_first, bad_later;
    std::size_t longest;
};

const std::vector<Alphabet> alphabets = {
    {"share", sharename, alnum + "$" + bytes_from(0xC0), alnum + "_$-." + bytes_from(0x80), 1, 2, 31},
    {"snapshot", qbobj_validate_snapshotname, alnum + "$" + bytes_from(0xC0),
     alnum + "_$-." + bytes_from(0x80), 1, 2, 49},
    {"user", username, alnum + "_&" + bytes_from(0xC0), alnum + "_-.@&" + bytes_from(0x80), 1, 2, 31},
    {"group", groupname, alnum + "_&" + bytes_from(0xC0), alnum + "_-.@&" + bytes_from(0x80), 1, 2, 31},
    {"workgroup", qbobj_validate_workgroup, alnum, alnum + "_-. ", 1, 2, 15},
    {"host", qbobj_validate_hostname, alnum, alnum + "_-.", 1, 2, 255},
    {"own host", qbobj_validate_myhostname, letters, alnum + "_-", 1, 2, 15},
    {"community", qbobj_validate_community, alnum, alnum + "_-.!", 1, 2, 31},
    {"interface", qbobj_validate_netif_name, alnum + "_.-", alnum + "_.-", 2, 2, 16},
    {"identifier", simplename, letters, alnum, 2, 4, 8},
};

TEST(Names, EveryByteIsAcceptedOrRefusedInItsPlace)
{
    for (const Alphabet &a : alphabets) {
        for (int b = 1; b <= 0xFF; ++b) {
            const char byte = static_cast<char>(b);
            const std::string first = std::string(1, byte) + "q";
            const std::string later = std::string("q") + byte + "q";
            EXPECT_EQ(a.first.find(byte) != a.first.npos ? 0 : a.bad_first, a.validate(first.c_str()))
                << a.what << ", first byte " << b;
            EXPECT_EQ(a.later.find(byte) != a.later.npos ? 0 : a.bad_later, a.validate(later.c_str()))
                << a.what << ", later byte " << b;
        }
    }
}

TEST(Names, LengthsAreCountedInBytesAndReportedAfterAWrongByteExceptInIdentifiers)
{
    for (const Alphabet &a : alphabets) {
        const std::string longest(a.longest, 'q');
        EXPECT_EQ(0, a.validate(longest.c_str())) << a.what;
        EXPECT_EQ(3, a.validate((longest + "q").c_str())) << a.what;
        const int code = a.what == std::string("identifier") ? 3 : a.bad_later;
        EXPECT_EQ(code, a.validate((longest + "q?").c_str())) << a.what;
    }
    std::string umlauts;
    for (int i = 0; i < 15; ++i)
        umlauts += "\xC3\xA4";
    EXPECT_EQ(0, sharename((umlauts + "a").c_str()));
    EXPECT_EQ(3, sharename((umlauts + "\xC3\xA4").c_str()));
}

TEST(Names, NoName)
{
    const std::tuple<int, int, std::vector<Validator>> cases[] = {
        {-1, -1, {sharename, qbobj_validate_snapshotname, qbobj_validate_protected_sharename}},
        {1, 1, {username, groupname, simplename}},
        {-1, 1, {qbobj_validate_workgroup, qbobj_validate_community}},
        {-11, -11, {qbobj_validate_hostname, qbobj_validate_myhostname}},
        {1, 0, {qbobj_validate_netif_name}},
        {2, 1, {qbobj_validate_protocol_name}}};
    for (const auto &[null, empty, validators] : cases)
        for (const Validator &validate : validators)
            expect_codes(validate, {{null, {nullptr}}, {empty, {""}}});
}

// The word, with a capital, and in capitals.
std::vector<std::string> spellings(const std::string &word)
{
    std::string upper;
    for (const char c : word)
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return {word, upper[0] + word.substr(1), upper};
}

TEST(ReservedNames, AreRefusedInEverySpelling)
{
    std::istringstream words("home theme password_recovery my_password html aquota.user css extjs legacy "
                             "raphael recovery xml utest "
                             "cgi-bin np panelview fsbroker recover mypasswd stimg fonts aquota.group shares "
                             "homes printers everyone "
                             "anyone pool zpool zfs usb global diag purge core");
    for (std::string word; words >> word;) {
        for (const std::string &spelling : spellings(word)) {
            EXPECT_EQ(5, sharename(spelling.c_str())) << spelling;
            EXPECT_EQ(5, username(spelling.c_str())) << spelling;
            EXPECT_EQ(0, groupname(spelling.c_str())) << spelling;
            EXPECT_EQ(0, qbobj_validate_snapshotname(spelling.c_str())) << spelling;
        }
        EXPECT_EQ(0, sharename((word + "2").c_str())) << word;
    }
}

TEST(ReservedNames, FamiliesAreRefusedByTheirBeginning)
{
    for (const std::string prefix : {"c_", "m_", "v_", "r_", "b_", "usb_", "usb_port_", "job_"}) {
        for (const std::string &name : spellings(prefix + "data")) {
            EXPECT_EQ(4, sharename(name.c_str())) << name;
            EXPECT_EQ(4, username(name.c_str())) << name;
            EXPECT_EQ(0, groupname(name.c_str())) << name;
        }
        EXPECT_EQ(0, sharename(("x" + prefix).c_str())) << prefix;
    }
    expect_codes(sharename, {{0, {"c-data", "job-1", "usb-1"}}, {4, {"c_", "USB_port_3", "Usb_"}}});
    // Bytes and length come before.
    expect_codes(
        sharename,
        {{2, {"c_?"}}, {4, {"job_567890123456789012345678901"}}, {3, {"job_5678901234567890123456789012"}}});
}

TEST(Names, TheAcceptedNameIsTheCallersOwnText)
{
    const char *const before = "before";
    enum Left { name, nothing, as_it_was }; // in the result
    const std::tuple<decltype(&qbobj_validate_sharename), const char *, int, Left> cases[] = {
        {qbobj_validate_sharename, "$backup", 0, name}, {qbobj_validate_sharename, "", -1, nothing},
        {qbobj_validate_sharename, "_x", 1, nothing},   {qbobj_validate_sharename, "x?", 2, nothing},
        {qbobj_validate_sharename, "home", 5, nothing}, {qbobj_validate_sharename, "c_x", 4, nothing},
        {qbobj_validate_username, "&user", 0, name},    {qbobj_validate_username, "x?", 2, as_it_was},
        {qbobj_validate_username, "", 1, nothing},      {qbobj_validate_username, "home", 5, as_it_was},
        {qbobj_validate_groupname, "&user", 0, name},   {qbobj_validate_groupname, "x?", 2, as_it_was},
        {qbobj_validate_groupname, "", 1, nothing}};
    for (const auto &[validate, given, code, left] : cases) {
        const char *result = before;
        EXPECT_EQ(code, validate(given, &result)) << given;
        EXPECT_EQ(left == name ? given : left == nothing ? nullptr : before, result) << given;
    }
}

TEST(Names, ThatAreProtectedOrOfHosts)
{
    expect_codes(qbobj_validate_protected_sharename,
                 {{0, {"dropnest", "DropNest"}}, {1, {"dropnest2", "dropnes", "home"}}});
    // Every label has a letter.
    expect_codes(qbobj_validate_hostname,
                 {{0, {"nas.local", "nas", "1a.a2.3b", "a.-b"}},
                  {1, {".a", "-a"}},
                  {2, {"my nas"}},
                  {4, {"1.a2.3b", "192.168.1.1", "192", "a..b", "nas.local.", "a.", "a.-_"}}});
    // One label that begins with a letter.
    expect_codes(qbobj_validate_myhostname, {{0, {"myNAS-1"}}, {1, {"1nas"}}, {2, {"nas.local"}}});
    // The limit is the caller's.
    for (const auto &[name, limit, code] :
         {std::tuple("ab1", 0U, 0), std::tuple("abcdefghi", 9U, 0), std::tuple("abcdefghi", 0U, 3),
          std::tuple("abc", 2U, 3), std::tuple("a-b", 3U, 4)})
        EXPECT_EQ(code, qbobj_validate_simplename(name, limit)) << name;
    expect_codes(qbobj_validate_protocol_name,
                 {{0, {"cifs", "afp", "nfs", "ftp", "http", "rsync", "dlna", "daap"}},
                  {1, {"CIFS", "https", "cif", "cifs ", "ssh"}}});
}

TEST(ShareTypes, YieldTheStoredSpelling)
{
    const std::tuple<const char *, int, const char *> cases[] = {
        {nullptr, 0, "share"},  {"", 0, "share"},      {"Share", 0, "share"},
        {"ZVOL", 0, "zvol"},    {"zvol", 0, "zvol"},   {"rePlicate", 0, "replicate"},
        {"volume", 1, nullptr}, {"zvol2", 1, nullptr}, {"zvo", 1, nullptr}};
    for (const auto &[given, code, expected] : cases) {
        const char *stored = "before";
        EXPECT_EQ(code, qbobj_validate_sharetype(given, &stored));
        EXPECT_STREQ(expected, stored);
    }
    EXPECT_DEATH(qbobj_validate_sharetype("share", nullptr), "sharetype");
}

} // namespace
