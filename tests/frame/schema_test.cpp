// The schemas of the record types, their directory, and the functions that clear a record.
#include <gtest/gtest.h>
#include <qbobj.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <ostream>
#include <set>
#include <span>
#include <string>
#include <vector>

extern "C" int caller_in_c(void);

namespace
{

std::span<const qbobj_spec_t> rows_of(const qbobj_spec_t *spec)
{
    const qbobj_spec_t *end = spec + 1;
    while (end->type != QBOBJ_KIND_END)
        ++end;
    return {spec + 1, end};
}

bool is_number(const qbobj_spec_t &row)
{
    return std::strchr("iuln", row.type) != nullptr;
}

std::size_t size_of(const qbobj_spec_t &row)
{
    return row.type == 'i' || row.type == 'u' ? 4 : 8;
}

// "kind name attr", and the nested schema's name.
std::string text_of(const qbobj_spec_t &row)
{
    std::string text = std::string(1, row.type) + ' ' + row.name + ' ' + std::to_string(row.attr);
    if (row.ospec_ptr != nullptr)
        text += std::string(" ") + row.ospec_ptr->name;
    return text;
}

// The rows with commas between them.
std::string text_of(const qbobj_spec_t *spec)
{
    std::string texts;
    for (const qbobj_spec_t &row : rows_of(spec))
        texts += (texts.empty() ? "" : ", ") + text_of(row);
    return texts;
}

TEST(SchemaDirectory, ListsEveryTypeInTheFixedOrder)
{
    std::string names;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        names += std::string(names.empty() ? "" : " ") + entry->name;
        EXPECT_STREQ(entry->spec->name, entry->name);
        EXPECT_EQ(entry->spec->type, QBOBJ_KIND_HEADER);
    }
    EXPECT_EQ(names, "SnapshotClone SnapshotCloneCollection ResourceId BackupJob_SourceOrDestination "
                     "BackupJob_Schedule BackupJob_Option BackupJob BackupJobCollection BackupTarget "
                     "BackupTargetCollection BackupButtonJob BackupButtonJobCollection Quota AdminPassword "
                     "UserPassword MyPassword UserHomeFolderSettings UserTimeMachineQuota User SystemUser "
                     "UserCollection AccountQuery Group SystemGroup GroupCollection Host AccountDefault "
                     "HomeFolderOptions Schedule HostAcl UserAcl GroupAcl DfolderAcl UserPasswordAcl "
                     "ZvolShareOption CifsShareOption AfpShareOption FtpShareOption NfsShareOption "
                     "DlnaShareOption DaapShareOption RsyncShareOption HttpShareOption PosixAcl FileStat "
                     "UsedBy Share ShareCollection Process SimpleShare SimpleShareCollection Timemachine "
                     "Vault CifsOptions BonjourOptions FtpOptions DaapOptions NfsOptions DlnaOptions "
                     "SnmpOptions SshOptions ReplicateOptions HttpOptions HttpsOptions Protocol "
                     "ProtocolCollection TIVOhostsAcl TivoOptions TivoMak Volume VolumeCollection Disk "
                     "DiskCollection DiskEnclosureCollection DiskDiff Snapshot SnapshotCollection "
                     "HfSnapshot HfSnapshotCollection NetworkInterface NetworkInterfaceCollection "
                     "DiskHealth DiskHealthCollection EnclosureHealthItem EnclosureHealth "
                     "EnclosureHealthCollection UpsHealth UpsHealthCollection Security SecurityAdsProgress "
                     "LogEntry LogQuery UpsConfig UpsConfigCollection LunGroup LunGroupCollection Initiator "
                     "InitiatorCollection Lun CronSchedule VolumeSchedule VolumeScheduleCollection");
}

TEST(SchemaDirectory, HeadersTellWhichTypesAreListsAndHowTheyAreKeyed)
{
    std::map<int, std::set<std::string>> types;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
        types[entry->spec->attr].insert(entry->name);
    EXPECT_EQ(types.size(), 4U);
    EXPECT_EQ(types[0].size(), 51U);
    EXPECT_EQ(types[QBOBJ_ATTR_LIST].size(), 27U);
    EXPECT_EQ(types[QBOBJ_ATTR_LIST | QBOBJ_ATTR_INT_ID],
              (std::set<std::string>{"Group", "User", "BackupJob", "HfSnapshot", "Snapshot", "Disk", "Host",
                                     "SystemGroup", "SystemUser", "SnapshotClone"}));
    EXPECT_EQ(types[QBOBJ_ATTR_LIST | QBOBJ_ATTR_STRING_ID],
              (std::set<std::string>{"VolumeSchedule", "EnclosureHealth", "DiskCollection", "Protocol",
                                     "SimpleShare", "Share", "Lun", "Initiator", "LunGroup", "UpsConfig",
                                     "UpsHealth", "DiskHealth", "NetworkInterface", "Volume"}));
}

TEST(SchemaDirectory, EveryCollectionHasAListOfRecords)
{
    int collections = 0;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        if (!std::string_view(entry->name).ends_with("Collection"))
            continue;
        ++collections;
        const auto rows = rows_of(entry->spec);
        EXPECT_TRUE(std::ranges::any_of(rows, [](const qbobj_spec_t &row) {
            return row.type == QBOBJ_KIND_RECORD && row.attr == 3 &&
                   (row.ospec_ptr->attr & QBOBJ_ATTR_LIST) != 0;
        })) << entry->name;
    }
    EXPECT_EQ(collections, 22);
}

TEST(Schema, OfAShareIsFixed)
{
    EXPECT_EQ(text_of(spec_Share),
              "s ShareId 0, s ZfsName 0, s ShareType 0, s ShareName 0, i VisibleSnapshot 0, i "
              "OldVisibleSnapshot 0, s VisibleSnapFolder 0, s OldShareName 0, s Comment 0, s "
              "VolumeId 0, s Path 0, s OldPath 0, n QuotaMB 2, n ReserveMB 2, n RefQuotaMB 2, n "
              "RefReserveMB 2, i Compression 2, i BitRotProtection 2, i Dedup 2, s LogBias 2, s "
              "Origin 2, s Sync 2, n AvailableMB 0, n UsedMB 0, n UsedByChildrenMB 0, n "
              "UsedByDatasetMB 0, n UsedByRefReservationMB 0, n UsedBySnapshotsMB 0, s CompressRatio "
              "0, n ReferencedMB 0, i NrContinuousSnapshots 0, i NrManualSnapshots 0, i "
              "FirstSnapshotCreatedOn 0, i LastSnapshotCreatedOn 0, s MigrateToVolumeId 0, o Stat 0 "
              "FileStat, o Zvol 0 ZvolShareOption, o Cifs 0 CifsShareOption, o Afp 0 AfpShareOption, "
              "o Ftp 0 FtpShareOption, o Nfs 0 NfsShareOption, o Dlna 0 DlnaShareOption, o Daap 0 "
              "DaapShareOption, o Rsync 0 RsyncShareOption, o Http 0 HttpShareOption, o "
              "SnapshotSchedule 0 Schedule, o SnapshotClones 0 SnapshotClone, o UserQuota 3 Quota, o "
              "GroupQuota 3 Quota, o UsedBy 3 UsedBy, i UpdateTS 0, i Busy 0, s CloneOf 0");
}

TEST(Schema, ListsAnIntegerKeyButNoTextKeyAndNoLink)
{
    EXPECT_EQ(text_of(spec_SystemUser), "i resource_id 0, i UserId 0, s UserName 0, i _PosixId 0");
    EXPECT_EQ(text_of(spec_Lun), "s Name 0, s LunGroup 0, i LunN 0");
    EXPECT_EQ(text_of(spec_VolumeCollection), "s SystemRaidMode 0, o Volume 3 Volume");
    EXPECT_EQ(text_of(spec_HostAcl), "o Host 0 Host, s Access 0, i Root 0");
    // Both kinds of 64-bit numbers.
    EXPECT_NE(text_of(spec_Disk).find(", l Capacity 0, "), std::string::npos);
    EXPECT_NE(text_of(spec_Disk).find(", n PoolHostId 0, "), std::string::npos);
}

TEST(Schema, KnowsWhichNumbersMayBeLeftOut)
{
    std::string voidable;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        std::string numbers;
        for (const qbobj_spec_t &row : rows_of(entry->spec))
            if (is_number(row) && row.attr == QBOBJ_ATTR_VOIDABLE)
                numbers += std::string(" ") + row.name;
        voidable += numbers.empty() ? "" : entry->name + numbers + "; ";
    }
    EXPECT_EQ(voidable,
              "CifsShareOption AllowGuestAccess ShareDisplayOption EnableRecycleBin RecycleSizeLimit "
              "RecycleAgeLimit NewFileFolderPermAutoset AclChangeRestrictionToggle EnableOplocks; "
              "AfpShareOption AllowGuestAccess NewFileFolderPermAutoset; FtpShareOption "
              "NewFileFolderPermAutoset; HttpShareOption EnableWebDav; FileStat NonOwnerDelete; Share "
              "QuotaMB ReserveMB RefQuotaMB RefReserveMB Compression BitRotProtection Dedup; ");
}

using Clear = int (*)(void *);
struct ClearCase {
    const qbobj_spec_t *spec;
    Clear clear;
};
#define CLEAR_CASE(Type)                                                                                     \
    {spec_##Type, [](void *record) { return qbobj_clear_##Type(static_cast<qbobj_##Type##_t *>(record)); }},
const ClearCase clear_cases[] = {QBOBJ_RECORD_TYPES(CLEAR_CASE)};

TEST(Clear, MarksEveryFieldOfEveryTypeAsNotGiven)
{
    for (const auto &[spec, clear] : clear_cases) {
        SCOPED_TRACE(spec->name);
        const auto size = static_cast<std::size_t>(spec->offs_or_size);
        std::vector<std::uint64_t> words(size / 8 + 1, ~std::uint64_t{0});
        auto *record = reinterpret_cast<unsigned char *>(words.data());
        EXPECT_EQ(clear(record), 0);

        std::vector<unsigned char> expected(size, 0);
        const int given = 1;
        for (const qbobj_spec_t &row : rows_of(spec)) {
            if (is_number(row) && row.attr == QBOBJ_ATTR_VOIDABLE)
                std::memcpy(&expected[static_cast<std::size_t>(row.offs_or_size) - size_of(row)], &given, 4);
        }
        EXPECT_EQ(std::vector<unsigned char>(record, record + size), expected);
        EXPECT_EQ(record[size], 0xFF) << "wrote behind the record";
        EXPECT_EQ(clear(nullptr), -1);
    }
}

TEST(Clear, SetsTheFlagsOfAShare)
{
    qbobj_Share_t share;
    std::memset(&share, 0x55, sizeof share);
    ASSERT_EQ(qbobj_clear_Share(&share), 0);
    for (const int flag :
         {share._void_QuotaMB, share._void_ReserveMB, share._void_RefQuotaMB, share._void_RefReserveMB,
          share._void_Compression, share._void_BitRotProtection, share._void_Dedup})
        EXPECT_EQ(flag, 1);
}

TEST(PublicHeaders, ServeACallerInC)
{
    EXPECT_EQ(caller_in_c(), 0) << "line of headers_c11.c";
}

} // namespace
