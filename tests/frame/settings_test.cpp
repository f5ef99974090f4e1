// Single settings by key, folder attributes, and Time Machine space.
#include "database.h"

#include <fstream>
#include <sstream>

using namespace qbobj_test;

namespace fs = std::filesystem;

namespace
{

class Settings : public Database
{
};

TEST_F(Settings, ServiceEntryIsCreatedReadReplacedAndEmptied)
{
    char *val = nullptr;
    EXPECT_FAILS(call(getServiceEntry, "COLOUR", &val), QBOBJ_ERROR_DB_NOTEXISTS,
                 "ServiceEntry='COLOUR' not exist.");
    ASSERT_OK(call(setServiceEntry, "COLOUR", "it's blue"));
    ASSERT_OK(call(setServiceEntry, "COLOUR", "red"));
    ASSERT_OK(call(getServiceEntry, "COLOUR", &val));
    EXPECT_STREQ("red", val);
    // An entry that stands with no value is there all the same.
    ASSERT_OK(call(setServiceEntry, "COLOUR", nullptr));
    ASSERT_OK(call(getServiceEntry, "COLOUR", &val));
    EXPECT_EQ(nullptr, val);

    const std::string before = content();
    EXPECT_OK(call(setServiceEntry, "UNKNOWN", nullptr));
    EXPECT_EQ(before, content());
}

TEST_F(Settings, LanguageMustBeListedWhereverItStandsInTheList)
{
    sql("UPDATE service_misc SET val='en-us/utf-8,de/utf-8,fr/utf-8' WHERE key='LANGUAGES_SUPPORTED'");
    for (const char *listed : {"en-us", "de", "fr"})
        EXPECT_OK(call(setServiceEntry, "LANGUAGE", listed)) << listed;
    EXPECT_EQ("fr", value("SELECT val FROM service_misc WHERE key='LANGUAGE'"));
    sql("UPDATE service_misc SET val='de/utf-8' WHERE key='LANGUAGES_SUPPORTED'");
    EXPECT_OK(call(setServiceEntry, "LANGUAGE", "de"));
    for (const char *unlisted : {"fr", "en", "d", "", "x' OR '1'='1"}) {
        EXPECT_EQ(bad_args, call(setServiceEntry, "LANGUAGE", unlisted)) << unlisted;
        EXPECT_EQ(std::string("Specified LANGUAGE=") + unlisted + " is not supported by system.", err.msg);
    }
    EXPECT_EQ("de", value("SELECT val FROM service_misc WHERE key='LANGUAGE'"));
}

TEST_F(Settings, LinkedColumnFollowsItsEntryAndTheLinkEndsWithTheValue)
{
    sql("CREATE TABLE \"odd $table\" (\"the column\" TEXT, other TEXT);"
        "INSERT INTO \"odd $table\" VALUES ('a','x'),('b','y');"
        "INSERT INTO service_misc (key,val,table_name,column_name) VALUES('LINKED','old','odd $table','the "
        "column')");
    ASSERT_OK(call(setServiceEntry, "LINKED", "new'"));
    EXPECT_EQ((std::vector<std::string>{"new'|x", "new'|y"}), rows("SELECT * FROM \"odd $table\""));
    ASSERT_OK(call(setServiceEntry, "LINKED", nullptr));
    EXPECT_EQ((std::vector<std::string>{"NULL|x", "NULL|y"}), rows("SELECT * FROM \"odd $table\""));
    const std::string entry = "SELECT val,table_name,column_name FROM service_misc WHERE key='LINKED'";
    EXPECT_EQ("NULL|NULL|NULL", rows(entry).front());
    sql("UPDATE service_misc SET val='old',table_name='missing',column_name='c' WHERE key='LINKED'");
    EXPECT_FAILS(call(setServiceEntry, "LINKED", "new"), db_failed,
                 "Failed 'UPDATE missing'. no such table: missing");
    EXPECT_STREQ("qbobj_api", err.file);
    EXPECT_EQ("old|missing|c", rows(entry).front());
}

TEST_F(Settings, RegistryEntryIsReplacedButNeverRemoved)
{
    const char *val = nullptr;
    EXPECT_FAILS(call(getRegistryEntry, "serial", &val), QBOBJ_ERROR_DB_NOTEXISTS,
                 "RegistryEntry='serial' not exist.");
    ASSERT_OK(call(setRegistryEntry, "serial", "1"));
    ASSERT_OK(call(setRegistryEntry, "serial", "2"));
    // Callers rely on it that an entry cannot be taken away.
    EXPECT_EQ(db_failed, call(setRegistryEntry, "serial", nullptr));
    EXPECT_EQ(0U, std::string(err.msg).find("Failed 'UPDATE $registry'. "));
    ASSERT_OK(call(getRegistryEntry, "serial", &val));
    EXPECT_STREQ("2", val);
}

TEST_F(Settings, FolderAttributesOfSharesAndHomes)
{
    sql("INSERT INTO share (id,zfs_name,type,name,comment,volume_id,path) VALUES"
        "(7,'data/media','share','media','films','data','/data/media'),"
        "(8,'data/plain','share','plain','','data','/data/plain');"
        "INSERT INTO cifs_share_option (share_id,cifs_access,cifs_hide_share) VALUES(7,'writeable',1);"
        "INSERT INTO dlna_share_option (share_id,available,access,media_type) VALUES(7,1,'readonly',5);"
        "INSERT INTO `$user` (id,uname,home,group_id,is_privileged) VALUES(100,'ann','/data/home/ann',99,0)");
    const char *const cases[][2] = {{"/data/media", "3|5|films|0|0"},   {"/data/media/a/b", "3|5|films|0|1"},
                                    {"/data/plain", "0|0||0|0"},        {"/data/mediathek", "0|0|NULL|0|0"},
                                    {"/data/home/ann", "1|0|NULL|1|0"}, {"/data/home/ann/mail", "0|0||1|1"},
                                    {"/nowhere'", "0|0|NULL|0|0"}};
    for (const auto &[path, attributes] : cases) {
        qbobj_folder_attribute_t attr{9, 9, "stale", 9, 9};
        ASSERT_OK(call(getFolderAttribute, path, &attr));
        std::ostringstream found;
        found << attr.cifs_flags << '|' << attr.dlna_flags << '|' << (attr.comment ? attr.comment : "NULL")
              << '|' << attr.is_homeshare << '|' << attr.is_subfolder;
        EXPECT_EQ(attributes, found.str()) << path;
    }
    sql("DROP TABLE `$home_folder`; ALTER TABLE `$user` RENAME TO gone");
    qbobj_folder_attribute_t attr{};
    EXPECT_FAILS(call(getFolderAttribute, "/x", &attr), db_failed,
                 "Failed DB Query for user. sq3rc=1:1 (no such table: $user)");
}

TEST_F(Settings, ExitIsTracedWithKeyAndValue)
{
    reopen(QBDB_LOG_INFO);
    char *val = nullptr;
    EXPECT_NE(0, call(getServiceEntry, "NONE", &val));
    EXPECT_OK(call(setServiceEntry, "K", "V"));
    EXPECT_NE(std::string::npos, log().find("<<<< getServiceEntry(NONE) .. rc=6 (0ms)")) << log();
    EXPECT_NE(std::string::npos, log().find("<<<< setServiceEntry(K,V) .. rc=0 (0ms)")) << log();
}

TEST_F(Settings, MissingArgumentsEndTheProcessNamingTheFunction)
{
    char *val = nullptr;
    EXPECT_DEATH(getServiceEntry(qbdb, db, "K", &val, nullptr), "getServiceEntry: Assertion `err' failed");
    EXPECT_DEATH(call(getServiceEntry, nullptr, &val), "getServiceEntry: Assertion `key' failed");
    EXPECT_DEATH(call(getServiceEntry, "K", nullptr), "getServiceEntry: Assertion `val' failed");
    EXPECT_DEATH(setRegistryEntry(nullptr, db, "K", "V", &err), "setRegistryEntry: Assertion `qbdb' failed");
    EXPECT_DEATH(call(getFolderAttribute, "/", nullptr), "getFolderAttribute: Assertion `attr' failed");
}

void write_file(const fs::path &path, const std::string &text)
{
    std::ofstream(path, std::ios::binary) << text;
}

TEST(TimeMachineSpace, IsBandSizeTimesBands)
{
    const TemporaryFolder folder;
    EXPECT_EQ(0U, get_tm_used_mb(folder.path().c_str()));
    EXPECT_EQ(0U, get_tm_used_mb((folder.path() / "missing").c_str()));

    const fs::path bundle = folder.path() / "Mac.sparsebundle";
    fs::create_directories(bundle);
    EXPECT_EQ(0U, get_tm_used_mb(folder.path().c_str()));
    write_file(bundle / "Info.plist", "<dict>\n\t<key>band-size</key>\n\t<string>x</string>\n"
                                      "\t<key>band-size</key>\n\t<integer>8388608</integer>\n</dict>\n");
    EXPECT_EQ(0U, get_tm_used_mb(folder.path().c_str()));
    fs::create_directories(bundle / "bands");
    for (int band = 0; band < 120; ++band)
        write_file(bundle / "bands" / std::to_string(band), "");
    EXPECT_EQ(1006U, get_tm_used_mb(folder.path().c_str()));
    write_file(bundle / "Info.plist", "<dict>\n  <key>band-size</key>\n\t<integer>8388608</integer>\n");
    EXPECT_EQ(0U, get_tm_used_mb(folder.path().c_str()));
}

} // namespace
