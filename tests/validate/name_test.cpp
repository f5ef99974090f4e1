// Names that callers may give: which are accepted, and with which code the others are refused.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>
#include <vector>

namespace
{

using Validator = std::function<int(const char *)>;

struct Case {
    const char *name;
    int code;
};

void expect_codes(const Validator &validate, const std::vector<Case> &cases)
{
    for (const Case &c : cases)
        EXPECT_EQ(c.code, validate(c.name)) << (c.name != nullptr ? c.name : "(null)");
}

int sharename(const char *str)
{
    return qbobj_validate_sharename(str, nullptr);
}

int username(const char *str)
{
    const char *accepted = nullptr;
    return qbobj_validate_username(str, &accepted);
}

int groupname(const char *str)
{
    const char *accepted = nullptr;
    return qbobj_validate_groupname(str, &accepted);
}

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
    std::string first;
    std::string later;
    int bad_first;
    int bad_later;
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

TEST(Names, LengthsAreCountedInBytesUpToTheLimit)
{
    for (const Alphabet &a : alphabets) {
        EXPECT_EQ(0, a.validate(std::string(a.longest, 'q').c_str())) << a.what;
        EXPECT_EQ(3, a.validate(std::string(a.longest + 1, 'q').c_str())) << a.what;
    }
    std::string umlauts;
    for (int i = 0; i < 15; ++i)
        umlauts += "\xC3\xA4";
    EXPECT_EQ(0, sharename((umlauts + "a").c_str()));
    EXPECT_EQ(3, sharename((umlauts + "\xC3\xA4").c_str()));
}

TEST(Names, AWrongByteIsReportedBeforeTheLengthExceptInIdentifiers)
{
    for (const Alphabet &a : alphabets) {
        const int code = a.what == std::string("identifier") ? 3 : a.bad_later;
        EXPECT_EQ(code, a.validate((std::string(a.longest + 1, 'q') + "?").c_str())) << a.what;
    }
}

TEST(Names, NoName)
{
    struct {
        const char *what;
        int null;
        int empty;
        int (*validate)(const char *);
    } const cases[] = {
        {"share", -1, -1, sharename},
        {"snapshot", -1, -1, qbobj_validate_snapshotname},
        {"protected", -1, -1, qbobj_validate_protected_sharename},
        {"user", 1, 1, username},
        {"group", 1, 1, groupname},
        {"workgroup", -1, 1, qbobj_validate_workgroup},
        {"host", -11, -11, qbobj_validate_hostname},
        {"own host", -11, -11, qbobj_validate_myhostname},
        {"community", -1, 1, qbobj_validate_community},
        {"interface", 1, 0, qbobj_validate_netif_name},
        {"identifier", 1, 1, simplename},
        {"protocol", 2, 1, qbobj_validate_protocol_name},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.null, c.validate(nullptr)) << c.what;
        EXPECT_EQ(c.empty, c.validate("")) << c.what;
    }
}

std::string capitalised(std::string word)
{
    word[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
    return word;
}

std::string upper(std::string word)
{
    for (char &c : word)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return word;
}

TEST(ReservedNames, AreRefusedInEverySpelling)
{
    for (const std::string word : {"home",         "theme",    "password_recovery",
                                   "my_password",  "html",     "aquota.user",
                                   "css",          "extjs",    "legacy",
                                   "raphael",      "recovery", "xml",
                                   "utest",        "cgi-bin",  "np",
                                   "panelview",    "fsbroker", "recover",
                                   "mypasswd",     "stimg",    "fonts",
                                   "aquota.group", "shares",   "homes",
                                   "printers",     "everyone", "anyone",
                                   "pool",         "zpool",    "zfs",
                                   "usb",          "global",   "diag",
                                   "purge",        "core"}) {
        for (const std::string &spelling : {word, capitalised(word), upper(word)}) {
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
        for (const std::string &name :
             {prefix, prefix + "data", capitalised(prefix) + "data", upper(prefix) + "DATA"}) {
            EXPECT_EQ(4, sharename(name.c_str())) << name;
            EXPECT_EQ(4, username(name.c_str())) << name;
            EXPECT_EQ(0, groupname(name.c_str())) << name;
        }
        EXPECT_EQ(0, sharename(("x" + prefix).c_str())) << prefix;
    }
    expect_codes(sharename, {{"c-data", 0}, {"job-1", 0}, {"usb-1", 0}, {"USB_port_3", 4}, {"Usb_", 4}});
}

TEST(ReservedNames, ComeAfterBytesAndLength)
{
    expect_codes(
        sharename,
        {{"c_?", 2}, {"job_567890123456789012345678901", 4}, {"job_5678901234567890123456789012", 3}});
}

TEST(Names, TheAcceptedNameIsTheCallersOwnText)
{
    const char *const before = "before";
    const char *name = before;
    const char *const share = "$backup";
    EXPECT_EQ(0, qbobj_validate_sharename(share, &name));
    EXPECT_EQ(share, name);
    for (const char *refused : {"", "_x", "x?", "home", "c_x"}) {
        name = before;
        EXPECT_NE(0, qbobj_validate_sharename(refused, &name));
        EXPECT_EQ(nullptr, name) << refused;
    }

    for (const auto validate : {qbobj_validate_username, qbobj_validate_groupname}) {
        const char *const account = "&user";
        EXPECT_EQ(0, validate(account, &name));
        EXPECT_EQ(account, name);
        name = before;
        EXPECT_EQ(2, validate("x?", &name));
        EXPECT_EQ(before, name);
        EXPECT_EQ(1, validate("", &name));
        EXPECT_EQ(nullptr, name);
    }
    name = before;
    EXPECT_EQ(5, qbobj_validate_username("home", &name));
    EXPECT_EQ(before, name);
}

TEST(ProtectedShares, ZeroMeansProtected)
{
    expect_codes(qbobj_validate_protected_sharename,
                 {{"dropnest", 0}, {"DropNest", 0}, {"dropnest2", 1}, {"dropnes", 1}, {"home", 1}});
}

TEST(HostNames, EveryLabelHasALetter)
{
    expect_codes(qbobj_validate_hostname, {{"nas.local", 0},
                                           {"nas", 0},
                                           {"1.a2.3b", 4},
                                           {"1a.a2.3b", 0},
                                           {"192.168.1.1", 4},
                                           {"192", 4},
                                           {"a..b", 4},
                                           {"nas.local.", 4},
                                           {"a.", 4},
                                           {".a", 1},
                                           {"a.-_", 4},
                                           {"a.-b", 0},
                                           {"-a", 1},
                                           {"my nas", 2}});
}

TEST(OwnHostName, IsOneLabelThatBeginsWithALetter)
{
    expect_codes(qbobj_validate_myhostname, {{"myNAS-1", 0}, {"1nas", 1}, {"nas.local", 2}});
}

TEST(ShareTypes, YieldTheStoredSpelling)
{
    struct {
        const char *given;
        int code;
        const char *stored;
    } const cases[] = {
        {nullptr, 0, "share"},  {"", 0, "share"},      {"Share", 0, "share"},
        {"ZVOL", 0, "zvol"},    {"zvol", 0, "zvol"},   {"rePlicate", 0, "replicate"},
        {"volume", 1, nullptr}, {"zvol2", 1, nullptr}, {"zvo", 1, nullptr},
    };
    for (const auto &c : cases) {
        const char *stored = "before";
        EXPECT_EQ(c.code, qbobj_validate_sharetype(c.given, &stored));
        EXPECT_STREQ(c.stored, stored);
    }
}

TEST(ShareTypesDeathTest, AResultPointerIsRequired)
{
    EXPECT_DEATH(qbobj_validate_sharetype("share", nullptr), "sharetype");
}

TEST(Identifiers, TheLimitIsTheCallers)
{
    EXPECT_EQ(0, qbobj_validate_simplename("ab1", 0));
    EXPECT_EQ(0, qbobj_validate_simplename("abcdefghi", 9));
    EXPECT_EQ(3, qbobj_validate_simplename("abcdefghi", 0));
    EXPECT_EQ(3, qbobj_validate_simplename("abc", 2));
    EXPECT_EQ(4, qbobj_validate_simplename("a-b", 3));
}

TEST(Protocols, AreKnownByTheirExactWord)
{
    for (const char *known : {"cifs", "afp", "nfs", "ftp", "http", "rsync", "dlna", "daap"})
        EXPECT_EQ(0, qbobj_validate_protocol_name(known)) << known;
    for (const char *unknown : {"CIFS", "https", "cif", "cifs ", "ssh"})
        EXPECT_EQ(1, qbobj_validate_protocol_name(unknown)) << unknown;
}

} // namespace
