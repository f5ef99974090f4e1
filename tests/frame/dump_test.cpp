// The dump of records into the log and to a stream.
#include <gtest/gtest.h>
#include <qbobj.h>

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

std::string dumped(const char *name, void *obj)
{
    const TextStream stream;
    qbobj_api2_dump_struct(stream.get(), name, obj);
    return stream.text();
}

TEST(Dump, OfAListIsEmptyAndOfARecordShowsTheMissingOne)
{
    EXPECT_EQ(logged(spec_Share, nullptr), "");
    EXPECT_EQ(dumped("Share", nullptr), "*** Dump Share ***\n");
    EXPECT_EQ(logged(spec_Vault, nullptr, 2), "  Vault = {\n    obj=NULL\n  }\n");
    EXPECT_EQ(dumped("Vault", nullptr), "*** Dump Vault ***\nVault = {\n  obj=NULL\n}\n");
}

TEST(Dump, FindsATypeByItsExactNameOnly)
{
    qbobj_Share_t share;
    qbobj_clear_Share(&share);
    EXPECT_EQ(dumped("share", &share), "*** Dump share ***\n");
    EXPECT_EQ(dumped("", &share), "*** Dump  ***\n");
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

    const std::string body = "UserCollection = {\n"
                             " o User[0] = {\n"
                             "  i resource_id = 100\n"
                             "  i UserId = 0\n"
                             "  s UserName = (null)\n"
                             "  s OldUserName = (null)\n"
                             "  s GroupName = (null)\n"
                             "  s HomeVolumeId = (null)\n"
                             "  s HomeDirectory = (null)\n"
                             "  s OldHomeDirectory = (null)\n"
                             "  s Email = (null)\n"
                             "  s FullName = (null)\n"
                             "  s Password = (null)\n"
                             "  s SmbHash = (null)\n"
                             "  s SysHash = (null)\n"
                             "  i IsDomainMember = 0\n"
                             "  i no_invitation = 0\n"
                             "  i IsLocked = 0\n"
                             "  o UserQuota[0] = {\n"
                             "   i AccountId = 100\n"
                             "   s AccountName = ann\n"
                             "   s ShareId = data/a\n"
                             "   n HardMB = 20\n"
                             "   n UsedMB = 3\n"
                             "  }\n"
                             "  o UserQuota[1] = {\n"
                             "   i AccountId = 101\n"
                             "   s AccountName = (null)\n"
                             "   s ShareId = data/b\n"
                             "   n HardMB = 18446744073709551615\n"
                             "   n UsedMB = 0\n"
                             "  }\n"
                             "  o TimeMachineQuota[0] = {\n"
                             "   i UserId = 100\n"
                             "   i Enabled = 1\n"
                             "   i CapacityMB = 5\n"
                             "   n UsedMB = 6\n"
                             "   i Delete = 0\n"
                             "  }\n"
                             "  o HomeFolderSettings = NULL\n"
                             " }\n"
                             " i Entries = 1\n"
                             " i TotalEntries = -1\n"
                             "}\n";
    EXPECT_EQ(logged(spec_UserCollection, &users), body);
    EXPECT_EQ(dumped("UserCollection", &users), "*** Dump UserCollection ***\n" + body);
}

TEST(Dump, NumbersTheRecordsOfAListAndOpensASingleNestedRecordWithoutNumber)
{
    qbobj_CronSchedule_t often{"0", "*", "*", "*", "*"};
    qbobj_VolumeSchedule_t last{nullptr, "8", "backup", 8, 0, 2, nullptr};
    qbobj_VolumeSchedule_t first{&last, "7", "data", 7, 1, 2, &often};
    EXPECT_EQ(logged(spec_VolumeSchedule, &first, 1), " VolumeSchedule[0] = {\n"
                                                      "  s VolumeName = data\n"
                                                      "  i JobID = 7\n"
                                                      "  i Enabled = 1\n"
                                                      "  i Action = 2\n"
                                                      "  o Interval = {\n"
                                                      "   s Minute = 0\n"
                                                      "   s Hour = *\n"
                                                      "   s DayOfMonth = *\n"
                                                      "   s Month = *\n"
                                                      "   s DayOfWeek = *\n"
                                                      "  }\n"
                                                      " }\n"
                                                      " VolumeSchedule[1] = {\n"
                                                      "  s VolumeName = backup\n"
                                                      "  i JobID = 8\n"
                                                      "  i Enabled = 0\n"
                                                      "  i Action = 2\n"
                                                      "  o Interval = NULL\n"
                                                      " }\n");
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
    struct {
        int level;
        std::size_t brace;
        std::size_t field;
    } const cases[] = {{0, 0, 1},      {14, 14, 15}, {15, 15, 15}, {16, 15, 15},
                       {1000, 15, 15}, {-2, 15, 15}, {-1, 15, 0}};
    for (const auto &c : cases) {
        EXPECT_EQ(logged(spec_SshOptions, &options, c.level), blanks(c.brace) + "SshOptions = {\n" +
                                                                  blanks(c.field) + "i Port = 22\n" +
                                                                  blanks(c.brace) + "}\n")
            << c.level;
    }
}

} // namespace
