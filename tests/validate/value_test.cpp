// Access words, switches, numbers, enumerations and the log's vocabulary.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <vector>

using namespace qbobj;

namespace
{

constexpr int refused = -99; // also: the result is as it was
using Given = std::vector<const char *>;

// Every text gives the word that it stands with; null: it is refused.
struct Stored {
    const char *word;
    Given texts;
};
void expect_words(const std::function<int(const char *, const char **)> &validate,
                  const std::vector<Stored> &cases)
{
    for (const auto &[expected, texts] : cases)
        for (const char *text : texts) {
            const char *word = nullptr;
            EXPECT_EQ(expected == nullptr ? 1 : 0, validate(text, &word)) << (text ? text : "(null)");
            EXPECT_STREQ(expected, word) << (text ? text : "(null)");
        }
}

// Every text gives the number that it stands with, or is refused.
struct Value {
    int number;
    Given texts;
};
void expect_numbers(const std::function<int(const char *, int *)> &validate, const std::vector<Value> &cases,
                    int code = 1)
{
    for (const auto &[expected, texts] : cases)
        for (const char *text : texts) {
            int number = refused;
            EXPECT_EQ(expected == refused ? code : 0, validate(text, &number)) << (text ? text : "(null)");
            EXPECT_EQ(expected, number) << (text ? text : "(null)");
        }
}

const Given no_access{"readonly", "READWRITE", "", "ReadOnly ", "Enabled"};

// Binds a validator's default.
template <class Validate>
auto with_default(Validate validate, const char *fallback)
{
    return [=](const char *text, auto *result) { return validate(text, fallback, result); };
}

TEST(AccessWords, AreStoredInLowerCase)
{
    const auto access = with_default(qbobj_validate_access, "ReadWrite");
    expect_words(access, {{"readonly", {"ReadOnly"}}, {"writeable", {"ReadWrite", nullptr}}});
    expect_words(access, {{"disabled", {"Disabled"}}, {nullptr, no_access}});
    const auto media = with_default(qbobj_validate_access2, "ReadOnly");
    expect_words(media, {{"readonly", {"ReadOnly", nullptr}}, {"disabled", {"Disabled"}}});
    expect_words(media, {{nullptr, {"ReadWrite"}}, {nullptr, no_access}});
    expect_words(with_default(qbobj_validate_access2, "ReadWrite"), {{nullptr, {nullptr}}});
    const auto enabling = with_default(qbobj_validate_enable_disable, "Disabled");
    expect_words(enabling, {{"enabled", {"Enabled"}}, {"disabled", {"Disabled", nullptr}}});
    expect_words(enabling, {{nullptr, {"enabled", "ReadOnly", "", "1"}}});
}

TEST(AccessWords, MeanTheSameToEveryoneWhoStoresThem)
{
    const auto expect = [](const std::function<int(const char *, int *)> &validate, int read_only, int all,
                           int nothing, int code = 1) {
        expect_numbers(validate,
                       {{read_only, {"ReadOnly"}},
                        {all, {"ReadWrite", nullptr}},
                        {nothing, {"Disabled"}},
                        {refused, no_access}},
                       code);
    };
    int other = 0;
    expect([&](auto text, int *bit) { return qbobj_validate_read_write(text, "ReadWrite", bit, &other); }, 1,
           1, 0);
    expect([&](auto text, int *bit) { return qbobj_validate_read_write(text, "ReadWrite", &other, bit); }, 0,
           1, 0);
    const auto rights = [](int is_dir) {
        return [=](auto text, int *bits) { return qbobj_validate_rights(text, "ReadWrite", bits, is_dir); };
    };
    const auto umask = [](int is_dir) {
        return [=](auto text, int *bits) { return qbobj_validate_umask(text, "ReadWrite", bits, is_dir); };
    };
    expect(rights(0), 4, 6, 0);
    expect(rights(1), 5, 7, 0);
    expect(umask(0), 2, 0, 6, 2);
    expect(umask(1), 2, 0, 7, 2);
}

TEST(Values, NeitherAValueNorADefaultIsRefused)
{
    const qbobj_enum_map_t map[] = {{"a", 1}, {nullptr, 0}};
    for (const auto validate : {qbobj_validate_access, qbobj_validate_access2, qbobj_validate_enable_disable})
        expect_words(with_default(validate, nullptr), {{nullptr, {nullptr}}});
    using Validator = std::function<int(const char *, int *)>;
    for (const Validator &validate : {
             Validator([](auto text, int *n) { return qbobj_validate_read_write(text, nullptr, n, n); }),
             Validator([](auto text, int *n) { return qbobj_validate_rights(text, nullptr, n, 1); }),
             Validator([](auto text, int *n) { return qbobj_validate_umask(text, nullptr, n, 1); }),
             Validator([](auto text, int *n) { return qbobj_validate_int(text, nullptr, 0, 1, n); }),
             Validator([&](auto text, int *n) { return qbobj_validate_enum(text, nullptr, map, n); }),
             Validator(with_default(qbobj_validate_boolean, nullptr)),
             Validator(with_default(qbobj_validate_media_type, nullptr)),
         })
        expect_numbers(validate, {{refused, {nullptr}}});
}

TEST(Numbers, AreReadWithTheirBaseAndHeldToTheirRange)
{
    const auto within = [](int min, int max) {
        return [=](auto text, int *n) { return qbobj_validate_int(text, "7", min, max, n); };
    };
    // Two of them are 0 and 10 in 32 bits.
    expect_numbers(within(0, 20), {{0, {"", "abc"}},
                                   {7, {nullptr}},
                                   {8, {"010"}},
                                   {12, {"12abc"}},
                                   {16, {"0x10"}},
                                   {20, {"20"}},
                                   {refused, {"-1", "21", "4294967296", "4294967306"}}});
    expect_numbers(within(-5, 1), {{-5, {" -5"}}, {refused, {"-6"}}});
    expect_numbers(within(1, 9), {{refused, {"abc"}}});
    expect_numbers(within(INT_MIN, INT_MAX),
                   {{INT_MAX, {"2147483647"}},
                    {INT_MIN, {"-2147483648"}},
                    {refused, {"2147483648", "99999999999999999999999", "-99999999999999999999999"}}});
    expect_numbers(with_default(qbobj_validate_boolean, "on"),
                   {{0, {"0", "Off", "off"}},
                    {1, {"1", "on", "ON", nullptr}},
                    {refused, {"true", "01", "", "2", "o", "onn", "00"}}});
}

TEST(Candidates, AreComparedInEitherWay)
{
    constexpr const char *end = nullptr;
    EXPECT_EQ(0, qbobj_validate_string("b", 0, "a", "b", end));
    EXPECT_EQ(0, qbobj_validate_string("B", 1, "a", "b", end));
    EXPECT_NE(0, qbobj_validate_string("B", 0, "a", "b", end));
    for (const char *text : {"c", "", static_cast<const char *>(nullptr)})
        EXPECT_NE(0, qbobj_validate_string(text, 1, "a", "b", end));
    EXPECT_EQ(1, qbobj_validate_string("a", 1, end));

    const char *none[] = {nullptr};
    EXPECT_EQ(1, qbobj_validate_string_array("a", 0, none));
    EXPECT_NE(0, qbobj_validate_string_array(nullptr, 0, valid_snmp_ups_mibs));
    EXPECT_EQ(0, qbobj_validate_string_array("cyberpower", 0, valid_snmp_ups_mibs));
    EXPECT_EQ(0, qbobj_validate_string_array("APHEL_genesisii", 1, valid_snmp_ups_mibs));
    EXPECT_NE(0, qbobj_validate_string_array("APHEL_genesisii", 0, valid_snmp_ups_mibs));
}

TEST(Enumerations, YieldTheValueOfTheExactWord)
{
    const qbobj_enum_map_t map[] = {{"one", 1}, {"two", 2}, {"one", 3}, {nullptr, 0}};
    expect_numbers([&](auto text, int *n) { return qbobj_validate_enum(text, "one", map, n); },
                   {{1, {nullptr, "one"}}, {2, {"two"}}, {refused, {"Two", ""}}});
    EXPECT_EQ(0, qbobj_validate_enum("two", nullptr, map, nullptr));
    EXPECT_EQ(1, qbobj_validate_enum("one", nullptr, map + 3, nullptr));
}

TEST(MediaTypes, AreABitSet)
{
    const Given words{"", "Audio", "Video", "Video,Audio", "Images", "Images,Audio", "Images,Video", "All"};
    for (int bits = 0; bits < 8; ++bits) {
        const char *word = words[static_cast<std::size_t>(bits)];
        expect_numbers(with_default(qbobj_validate_media_type, "All"), {{bits, {word}}});
        EXPECT_STREQ(word, qbobj_media_type_word(bits));
    }
    expect_numbers(with_default(qbobj_validate_media_type, "All"),
                   {{7, {nullptr}}, {refused, {"audio", "Audio,Video", "Audio ", "Images,Video,Audio"}}});
}

TEST(LogWords, SeveritiesAreKnownByTheirBeginningAndCategoriesAreWholeWords)
{
    const auto severity = qbobj_validate_log_severity;
    expect_words(severity,
                 {{"info", {nullptr, "Informational"}}, {"warning", {"WARN", "warning", "warnings"}}});
    expect_words(severity, {{"err", {"error"}}, {"emerge", {"emerg", "emergency"}}, {"crit", {"critical"}}});
    expect_words(severity, {{"alert", {"ALERT"}}, {"debug", {"debug2"}}, {"notice", {"Notice"}}});
    expect_words(severity, {{nullptr, {"notices", "noti", "deb", "war", "", "xinfo"}}});
    const auto category_of = qbobj_validate_log_category;
    expect_words(category_of, {{"misc", {nullptr, "misc"}}, {"system", {"System"}}, {"volume", {"VOLUME"}}});
    expect_words(category_of, {{nullptr, {"shares", "", "app"}}});
    for (const char *category : {"disk", "share", "account", "backup", "apps", "snapshot"})
        expect_words(qbobj_validate_log_category, {{category, {category}}});
}

} // namespace
