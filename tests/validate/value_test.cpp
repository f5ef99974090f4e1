// Access words, switches, numbers, enumerations and the log's vocabulary.
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

constexpr int untouched = -99;

TEST(AccessWords, MeanTheSameToEveryoneWhoStoresThem)
{
    struct {
        const char *given;
        const char *fallback;
        const char *stored; // null: refused
        int read, write, file_rights, directory_rights, file_umask, directory_umask;
    } const cases[] = {
        {"ReadOnly", nullptr, "readonly", 1, 0, 4, 5, 2, 2},
        {"ReadWrite", nullptr, "writeable", 1, 1, 6, 7, 0, 0},
        {"Disabled", nullptr, "disabled", 0, 0, 0, 0, 6, 7},
        {nullptr, "ReadWrite", "writeable", 1, 1, 6, 7, 0, 0},
        {"ReadOnly", "ReadWrite", "readonly", 1, 0, 4, 5, 2, 2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.stored);
        const char *stored = nullptr;
        EXPECT_EQ(0, qbobj_validate_access(c.given, c.fallback, &stored));
        EXPECT_STREQ(c.stored, stored);
        int first = untouched;
        int second = untouched;
        EXPECT_EQ(0, qbobj_validate_read_write(c.given, c.fallback, &first, &second));
        EXPECT_EQ(c.read, first);
        EXPECT_EQ(c.write, second);
        EXPECT_EQ(0, qbobj_validate_rights(c.given, c.fallback, &first, 0));
        EXPECT_EQ(0, qbobj_validate_rights(c.given, c.fallback, &second, 1));
        EXPECT_EQ(c.file_rights, first);
        EXPECT_EQ(c.directory_rights, second);
        EXPECT_EQ(0, qbobj_validate_umask(c.given, c.fallback, &first, 0));
        EXPECT_EQ(0, qbobj_validate_umask(c.given, c.fallback, &second, 1));
        EXPECT_EQ(c.file_umask, first);
        EXPECT_EQ(c.directory_umask, second);
    }
}

TEST(AccessWords, AnythingElseIsRefusedAndStoresNothing)
{
    for (const char *given : {"readonly", "READWRITE", "", "ReadOnly ", "Enabled"}) {
        SCOPED_TRACE(given);
        const char *word = nullptr;
        int number = untouched;
        EXPECT_EQ(1, qbobj_validate_access(given, "ReadOnly", &word));
        EXPECT_EQ(1, qbobj_validate_access2(given, "ReadOnly", &word));
        EXPECT_EQ(1, qbobj_validate_read_write(given, "ReadOnly", &number, &number));
        EXPECT_EQ(1, qbobj_validate_rights(given, "ReadOnly", &number, 0));
        EXPECT_EQ(2, qbobj_validate_umask(given, "ReadOnly", &number, 0));
        EXPECT_EQ(nullptr, word);
        EXPECT_EQ(untouched, number);
    }
}

TEST(AccessWords, TheReadOnlyVariantRefusesReadWrite)
{
    const char *word = nullptr;
    EXPECT_EQ(1, qbobj_validate_access2("ReadWrite", nullptr, &word));
    EXPECT_EQ(1, qbobj_validate_access2(nullptr, "ReadWrite", &word));
    EXPECT_EQ(nullptr, word);
    EXPECT_EQ(0, qbobj_validate_access2("ReadOnly", nullptr, &word));
    EXPECT_STREQ("readonly", word);
    EXPECT_EQ(0, qbobj_validate_access2("Disabled", nullptr, &word));
    EXPECT_STREQ("disabled", word);
}

TEST(Values, NeitherAValueNorADefaultIsRefused)
{
    const char *word = nullptr;
    int number = untouched;
    const qbobj_enum_map_t map[] = {{"a", 1}, {nullptr, 0}};
    EXPECT_EQ(1, qbobj_validate_access(nullptr, nullptr, &word));
    EXPECT_EQ(1, qbobj_validate_access2(nullptr, nullptr, &word));
    EXPECT_EQ(1, qbobj_validate_enable_disable(nullptr, nullptr, &word));
    EXPECT_EQ(1, qbobj_validate_read_write(nullptr, nullptr, &number, &number));
    EXPECT_EQ(1, qbobj_validate_rights(nullptr, nullptr, &number, 1));
    EXPECT_EQ(1, qbobj_validate_umask(nullptr, nullptr, &number, 1));
    EXPECT_EQ(1, qbobj_validate_boolean(nullptr, nullptr, &number));
    EXPECT_EQ(1, qbobj_validate_int(nullptr, nullptr, 0, 1, &number));
    EXPECT_EQ(1, qbobj_validate_enum(nullptr, nullptr, map, &number));
    EXPECT_EQ(1, qbobj_validate_media_type(nullptr, nullptr, &number));
    EXPECT_EQ(nullptr, word);
    EXPECT_EQ(untouched, number);
}

TEST(Switches, EnabledAndDisabled)
{
    const char *word = nullptr;
    EXPECT_EQ(0, qbobj_validate_enable_disable("Enabled", nullptr, &word));
    EXPECT_STREQ("enabled", word);
    EXPECT_EQ(0, qbobj_validate_enable_disable(nullptr, "Disabled", &word));
    EXPECT_STREQ("disabled", word);
    for (const char *given : {"enabled", "ReadOnly", "", "1"})
        EXPECT_EQ(1, qbobj_validate_enable_disable(given, "Enabled", &word)) << given;
}

TEST(Switches, Booleans)
{
    struct {
        const char *given;
        int value; // `untouched`: refused
    } const cases[] = {{"0", 0},         {"1", 1},         {"on", 1},           {"ON", 1},
                       {"Off", 0},       {"off", 0},       {"true", untouched}, {"01", untouched},
                       {"", untouched},  {"2", untouched}, {"o", untouched},    {"onn", untouched},
                       {"00", untouched}};
    for (const auto &c : cases) {
        int value = untouched;
        EXPECT_EQ(c.value == untouched ? 1 : 0, qbobj_validate_boolean(c.given, "1", &value)) << c.given;
        EXPECT_EQ(c.value, value) << c.given;
    }
    int value = untouched;
    EXPECT_EQ(0, qbobj_validate_boolean(nullptr, "on", &value));
    EXPECT_EQ(1, value);
}

TEST(Numbers, AreReadWithTheirBaseAndHeldToTheirRange)
{
    struct {
        const char *given;
        int min, max;
        int value; // `untouched`: refused
    } const cases[] = {
        {"0x10", 0, 20, 16},
        {"010", 0, 20, 8},
        {"12abc", 0, 20, 12},
        {"", 0, 20, 0},
        {"abc", 0, 20, 0},
        {"abc", 1, 20, untouched},
        {" -5", -5, 20, -5},
        {"-6", -5, 20, untouched},
        {"20", 0, 20, 20},
        {"21", 0, 20, untouched},
        {"4294967296", 0, 20, untouched}, // 0 in 32 bits
        {"4294967306", 0, 20, untouched}, // 10 in 32 bits
        {"2147483648", INT_MIN, INT_MAX, untouched},
        {"2147483647", INT_MIN, INT_MAX, INT_MAX},
        {"-2147483648", INT_MIN, INT_MAX, INT_MIN},
        {"99999999999999999999999", INT_MIN, INT_MAX, untouched},
        {"-99999999999999999999999", INT_MIN, INT_MAX, untouched},
    };
    for (const auto &c : cases) {
        int value = untouched;
        EXPECT_EQ(c.value == untouched ? 1 : 0, qbobj_validate_int(c.given, "7", c.min, c.max, &value))
            << c.given;
        EXPECT_EQ(c.value, value) << c.given;
    }
    int value = untouched;
    EXPECT_EQ(0, qbobj_validate_int(nullptr, "7", 0, 9, &value));
    EXPECT_EQ(7, value);
}

TEST(Candidates, AreComparedInEitherWay)
{
    constexpr const char *end = nullptr;
    EXPECT_EQ(0, qbobj_validate_string("b", 0, "a", "b", end));
    EXPECT_NE(0, qbobj_validate_string("B", 0, "a", "b", end));
    EXPECT_EQ(0, qbobj_validate_string("B", 1, "a", "b", end));
    EXPECT_NE(0, qbobj_validate_string("c", 1, "a", "b", end));
    EXPECT_NE(0, qbobj_validate_string("", 1, "a", "b", end));
    EXPECT_NE(0, qbobj_validate_string(nullptr, 1, "a", "b", end));
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
    int value = untouched;
    EXPECT_EQ(0, qbobj_validate_enum("two", "one", map, &value));
    EXPECT_EQ(2, value);
    EXPECT_EQ(0, qbobj_validate_enum(nullptr, "one", map, &value));
    EXPECT_EQ(1, value);
    EXPECT_EQ(0, qbobj_validate_enum("two", nullptr, map, nullptr));
    EXPECT_EQ(1, qbobj_validate_enum("Two", "one", map, &value));
    EXPECT_EQ(1, qbobj_validate_enum("one", nullptr, map + 3, &value));
    EXPECT_EQ(1, value);
}

TEST(MediaTypes, AreABitSet)
{
    const char *const words[] = {"",       "Audio",        "Video",        "Video,Audio",
                                 "Images", "Images,Audio", "Images,Video", "All"};
    int bits = 0;
    for (const char *word : words) {
        int value = untouched;
        EXPECT_EQ(0, qbobj_validate_media_type(word, "All", &value)) << word;
        EXPECT_EQ(bits++, value) << word;
    }
    int value = untouched;
    for (const char *word : {"audio", "Audio,Video", "Audio ", "Images,Video,Audio"})
        EXPECT_EQ(1, qbobj_validate_media_type(word, "All", &value)) << word;
    EXPECT_EQ(untouched, value);
    EXPECT_EQ(0, qbobj_validate_media_type(nullptr, "All", &value));
    EXPECT_EQ(7, value);
}

struct LogWord {
    const char *given;
    const char *stored; // null: refused
};

TEST(LogWords, SeveritiesAreKnownByTheirBeginning)
{
    for (const auto &[given, stored] :
         {LogWord{nullptr, "info"}, LogWord{"Informational", "info"}, LogWord{"WARN", "warning"},
          LogWord{"warning", "warning"}, LogWord{"warnings", "warning"}, LogWord{"error", "err"},
          LogWord{"emerg", "emerge"}, LogWord{"emergency", "emerge"}, LogWord{"critical", "crit"},
          LogWord{"ALERT", "alert"}, LogWord{"debug2", "debug"}, LogWord{"Notice", "notice"},
          LogWord{"notices", nullptr}, LogWord{"noti", nullptr}, LogWord{"deb", nullptr},
          LogWord{"war", nullptr}, LogWord{"", nullptr}, LogWord{"xinfo", nullptr}}) {
        const char *word = nullptr;
        EXPECT_EQ(given == nullptr || stored != nullptr ? 0 : 1, qbobj_validate_log_severity(given, &word));
        EXPECT_STREQ(stored, word) << (given != nullptr ? given : "(null)");
    }
}

TEST(LogWords, CategoriesAreWholeWords)
{
    for (const auto &[given, stored] :
         {LogWord{nullptr, "misc"}, LogWord{"misc", "misc"}, LogWord{"System", "system"},
          LogWord{"disk", "disk"}, LogWord{"VOLUME", "volume"}, LogWord{"share", "share"},
          LogWord{"account", "account"}, LogWord{"backup", "backup"}, LogWord{"apps", "apps"},
          LogWord{"snapshot", "snapshot"}, LogWord{"shares", nullptr}, LogWord{"", nullptr},
          LogWord{"app", nullptr}}) {
        const char *word = nullptr;
        EXPECT_EQ(given == nullptr || stored != nullptr ? 0 : 1, qbobj_validate_log_category(given, &word));
        EXPECT_STREQ(stored, word) << (given != nullptr ? given : "(null)");
    }
}

} // namespace
