// The dump of records into the log and to a stream.
#include <gtest/gtest.h>
#include <qbobj.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

namespace
{

struct Closer {
    void operator()(FILE *stream) const { std::fclose(stream); }
};

// A stream whose text can be asked for.
class TextStream
{
  public:
    TextStream() : stream_(open_memstream(&text_, &size_)) {}
    ~TextStream()
    {
        stream_.reset();
        std::free(text_);
    }
    TextStream(const TextStream &) = delete;
    TextStream &operator=(const TextStream &) = delete;

    FILE *get() const { return stream_.get(); }
    std::string text() const
    {
        std::fflush(stream_.get());
        return {text_, size_};
    }

  private:
    char *text_ = nullptr;
    std::size_t size_ = 0;
    std::unique_ptr<FILE, Closer> stream_;
};

// What the log receives, without the lines' heads; a line that is not the caller's own is kept whole.
std::string logged(const qbobj_spec_t *spec, void *obj, int level = 0)
{
    const TextStream stream;
    qbdb_handle_t handle{};
    handle.log = stream.get();
    handle.loglvl = QBDB_LOG_DEBUG;
    qbobj_api2_utils_dump_object(&handle, spec, obj, level, "the_unit", 17);
    const std::string head = " DEBUG the_unit:17 ";
    std::istringstream lines(stream.text());
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = line.find(head);
        text += (at == std::string::npos ? line : line.substr(at + head.size())) + '\n';
    }
    return text;
}

// Lines that a semicolon ends each.
std::string lines(std::string text)
{
    std::ranges::replace(text, ';', '\n');
    return text;
}

std::string dumped(const char *name, void *obj)
{
    const TextStream stream;
    qbobj_api2_dump_struct(stream.get(), name, obj);
    return stream.text();
}

TEST(Dump, OfAMissingListOrUnknownTypeIsEmptyAndOfARecordShowsTheMissingOne)
{
    EXPECT_EQ(logged(spec_Share, nullptr), "");
    EXPECT_EQ(dumped("Share", nullptr), "*** Dump Share ***\n");
    EXPECT_EQ(logged(spec_Vault, nullptr, 2), "  Vault = {\n    obj=NULL\n  }\n");
    EXPECT_EQ(dumped("Vault", nullptr), "*** Dump Vault ***\nVault = {\n  obj=NULL\n}\n");
    // A type is found by its exact name only.
    qbobj_Share_t share;
    qbobj_clear_Share(&share);
    for (const std::string name : {"share", ""})
        EXPECT_EQ(dumped(name.c_str(), &share), "*** Dump " + name + " ***\n");
}

TEST(Dump, ShowsANumberThatIsNotGivenAsVoidInTheLogOnly)
{
    qbobj_FileStat_t stat;
    qbobj_clear_FileStat(&stat);
    stat.NonOwnerDelete = 7;
    EXPECT_NE(logged(spec_FileStat, &stat).find("\n i NonOwnerDelete = void\n"), std::string::npos);
    EXPECT_NE(dumped("FileStat", &stat).find("\n i NonOwnerDelete = 7\n"), std::string::npos);
    stat._void_NonOwnerDelete = 0;
    EXPECT_NE(logged(spec_FileStat, &stat).find("\n i NonOwnerDelete = 7\n"), std::string::npos);
}

TEST(Dump, NumbersTheRecordsOfNestedLists)
{
    qbobj_Quota_t second{nullptr, 101, nullptr, "data/b", 18446744073709551615U, 0};
    qbobj_Quota_t first{&second, 100, "ann", "data/a", 20, 3};
    qbobj_UserTimeMachineQuota_t machine{nullptr, 100, 1, 5, 6, 0};
    qbobj_User_t user{};
    user.resource_id = 100;
    user.UserQuota = &first;
    user.TimeMachineQuota = &machine;
    qbobj_UserCollection_t users{&user, 1, -1};

    const std::string body =
        lines("UserCollection = {; o User[0] = {;  i resource_id = 100;  i UserId = 0;  s UserName = (null);"
              "  s OldUserName = (null);  s GroupName = (null);  s HomeVolumeId = (null);"
              "  s HomeDirectory = (null);  s OldHomeDirectory = (null);  s Email = (null);"
              "  s FullName = (null);  s Password = (null);  s SmbHash = (null);  s SysHash = (null);"
              "  i IsDomainMember = 0;  i no_invitation = 0;  i IsLocked = 0;  o UserQuota[0] = {;"
              "   i AccountId = 100;   s AccountName = ann;   s ShareId = data/a;   n HardMB = 20;"
              "   n UsedMB = 3;  };  o UserQuota[1] = {;   i AccountId = 101;   s AccountName = (null);"
              "   s ShareId = data/b;   n HardMB = 18446744073709551615;   n UsedMB = 0;  };"
              "  o TimeMachineQuota[0] = {;   i UserId = 100;   i Enabled = 1;   i CapacityMB = 5;"
              "   n UsedMB = 6;   i Delete = 0;  };  o HomeFolderSettings = NULL; }; i Entries = 1;"
              " i TotalEntries = -1;};");
    EXPECT_EQ(logged(spec_UserCollection, &users), body);
    EXPECT_EQ(dumped("UserCollection", &users), "*** Dump UserCollection ***\n" + body);
}

TEST(Dump, NumbersTheRecordsOfAListAndOpensASingleNestedRecordWithoutNumber)
{
    qbobj_CronSchedule_t often{"0", "*", "*", "*", "*"};
    qbobj_VolumeSchedule_t last{nullptr, "8", "backup", 8, 0, 2, nullptr};
    qbobj_VolumeSchedule_t first{&last, "7", "data", 7, 1, 2, &often};
    EXPECT_EQ(logged(spec_VolumeSchedule, &first, 1),
              lines(" VolumeSchedule[0] = {;  s VolumeName = data;  i JobID = 7;  i Enabled = 1;"
                    "  i Action = 2;  o Interval = {;   s Minute = 0;   s Hour = *;   s DayOfMonth = *;"
                    "   s Month = *;   s DayOfWeek = *;  }; }; VolumeSchedule[1] = {;"
                    "  s VolumeName = backup;  i JobID = 8;  i Enabled = 0;  i Action = 2;"
                    "  o Interval = NULL; };"));
}

TEST(Dump, ShowsSigned64BitNumbersAndUnsignedOnes)
{
    qbobj_Disk_t disk{};
    disk.Sectors = -5000000000;
    EXPECT_NE(logged(spec_Disk, &disk).find("\n l Sectors = -5000000000\n"), std::string::npos);

    struct Sensor {
        unsigned reading;
    } sensor{4000000000U};
    const qbobj_spec_t spec[] = {{QBOBJ_KIND_HEADER, "Sensor", sizeof(Sensor), nullptr, 0},
                                 {QBOBJ_KIND_UINT, "reading", 0, nullptr, 0},
                                 {'?', "unknown", 0, nullptr, 0},
                                 {QBOBJ_KIND_END, nullptr, 0, nullptr, 0}};
    EXPECT_EQ(logged(spec, &sensor), "Sensor = {\n u reading = 4000000000\n}\n");
}

TEST(Dump, WritesTextAsItIs)
{
    const std::string text(4000, 'x');
    qbobj_SnmpOptions_t options{"%s %n", text.c_str(), "a\tb"};
    EXPECT_EQ(logged(spec_SnmpOptions, &options), "SnmpOptions = {\n s AllowHost = %s %n\n s Community = " +
                                                      text + "\n s TrapDestination = a\tb\n}\n");
}

TEST(Dump, IndentsByAtMost15Blanks)
{
    qbobj_SshOptions_t options{22};
    const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
    const std::tuple<int, std::size_t, std::size_t> cases[] = {
        {0, 0, 1}, {14, 14, 15}, {15, 15, 15}, {16, 15, 15}, {1000, 15, 15}, {-2, 15, 15}, {-1, 15, 0}};
    for (const auto &[level, brace, field] : cases) {
        EXPECT_EQ(logged(spec_SshOptions, &options, level), blanks(brace) + "SshOptions = {\n" +
                                                                blanks(field) + "i Port = 22\n" +
                                                                blanks(brace) + "}\n")
            << level;
    }
}

} // namespace
