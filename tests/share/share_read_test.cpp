// Shares read as whole records, one by one and as lists.
#include "share_rows.h"

#include <cstring>
#include <sstream>

using namespace qbobj_test;

namespace
{

class ShareRead : public Shares
{
  protected:
    // The row of "s" in an option table.
    void set_option(const std::string &table, const std::string &values) const
    {
        sql("INSERT OR REPLACE INTO " + table + " SELECT id," + values + " FROM share WHERE name='s'");
    }
};

std::string hosts(const qbobj_HostAcl_t *list)
{
    return joined(list, [](const qbobj_HostAcl_t &acl) {
        EXPECT_EQ(acl.Host->HostId, acl.Host->resource_id);
        return text(acl.Host->HostName) + "=" + text(acl.Access) + (acl.Root != 0 ? "+root" : "");
    });
}

std::string users(const qbobj_UserAcl_t *list)
{
    return joined(list, [](const qbobj_UserAcl_t &acl) {
        EXPECT_EQ(acl.User->UserId, acl.User->resource_id);
        return text(acl.User->UserId) + ":" + text(acl.User->UserName) + "=" + text(acl.Access);
    });
}

std::string groups(const qbobj_GroupAcl_t *list)
{
    return joined(list, [](const qbobj_GroupAcl_t &acl) {
        EXPECT_EQ(acl.Group->GroupId, acl.Group->resource_id);
        return text(acl.Group->GroupId) + ":" + text(acl.Group->GroupName) + "=" + text(acl.Access);
    });
}

std::string names(const qbobj_Share_t *list)
{
    return joined(list, [](const qbobj_Share_t &share) { return text(share.ShareName); });
}

template <class Option>
std::string rights(const Option *option)
{
    return fields(option->FileCreateGroupRights, option->FileCreateEveryoneRights,
                  option->FolderCreateGroupRights, option->FolderCreateEveryoneRights);
}

TEST_F(ShareRead, WithoutAnyOtherRowHasNoOptionsAndDefaults)
{
    add_share("plain");
    const qbobj_Share_t share = read("plain");
    EXPECT_EQ("data/plain|data/plain|data/plain|share|/data/plain|||0|standard|0|NULL|NULL",
              fields(share.resource_id, share.ShareId, share.ZfsName, share.ShareType, share.Path,
                     share.Comment, share.VisibleSnapFolder, share.VisibleSnapshot, share.Sync, share.Busy,
                     share.CloneOf, share.MigrateToVolumeId));
    EXPECT_EQ(value("SELECT volume_id FROM share"), share.VolumeId);
    for (const void *option : std::initializer_list<const void *>{
             share.Cifs, share.Afp, share.Ftp, share.Nfs, share.Dlna, share.Daap, share.Rsync, share.Http,
             share.Zvol, share.SnapshotSchedule, share.SnapshotClones, share.UserQuota, share.GroupQuota,
             share.UsedBy})
        EXPECT_EQ(nullptr, option);
    // Everything that was read counts as given.
    EXPECT_EQ(0, share._void_QuotaMB | share._void_ReserveMB | share._void_RefQuotaMB |
                     share._void_RefReserveMB | share._void_Compression | share._void_BitRotProtection |
                     share._void_Dedup);
}

TEST_F(ShareRead, CarriesAttributesUsageAndState)
{
    const std::string id = std::to_string(add_share("s"));
    sql("UPDATE share SET comment='c',visible_snapdir='.snap',migrate_to_volume_id='v2'");
    sql("UPDATE share SET update_ts='2001-09-09 01:46:40'");
    set_option("zfs_attr", "'0x10',20,30,40,1,2,3,'latency','data/o@s','always'");
    set_option("_zfs_stat", "9048576,3145728,9048576,2097152,9048576,9048576,'1.50x',9048576");
    sql("INSERT INTO `$snapshot` (zfs_name,name,type,created_on) VALUES ('data/s','a',1,100),"
        "('data/s','b',1,50),('data/s','c',2,70),('data/other','d',1,1)");
    sql("INSERT INTO process_on_share (share_id,pid,blocking) VALUES (" + id + ",1,0)");
    sql("INSERT INTO `$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name)"
        "VALUES ('s','s1','origin'),('copy','s2','s')");
    sql("INSERT INTO `$application_on_share` VALUES ('data/s','app','x'),('data/other','app','y')");
    set_option("snapshot_schedule", "1,'5','6','7','8','9',10,1,12,13");

    const qbobj_Share_t share = read("s");
    EXPECT_EQ("c|1|.snap|v2",
              fields(share.Comment, share.VisibleSnapshot, share.VisibleSnapFolder, share.MigrateToVolumeId));
    // The base of a size is told by its prefix.
    EXPECT_EQ("16|20|30|40|1|2|3|latency|data/o@s|always",
              fields(share.QuotaMB, share.ReserveMB, share.RefQuotaMB, share.RefReserveMB, share.Compression,
                     share.BitRotProtection, share.Dedup, share.LogBias, share.Origin, share.Sync));
    EXPECT_EQ("3|2|1.50x", fields(share.UsedMB, share.UsedByDatasetMB, share.CompressRatio));
    // Known to the table, but never told.
    EXPECT_EQ(0U, share.AvailableMB + share.UsedByChildrenMB + share.UsedByRefReservationMB +
                      share.UsedBySnapshotsMB + share.ReferencedMB);
    EXPECT_EQ("2|1|50|100|1000000000",
              fields(share.NrContinuousSnapshots, share.NrManualSnapshots, share.FirstSnapshotCreatedOn,
                     share.LastSnapshotCreatedOn, share.UpdateTS));
    EXPECT_EQ(std::string(share.VolumeId) + "/origin@s1", text(share.CloneOf));
    EXPECT_EQ("2|copy|s2|s", joined(share.SnapshotClones, [](const qbobj_SnapshotClone_t &clone) {
                  return fields(clone.resource_id, clone.ClonedShareName, clone.ParentSnapshotName,
                                clone.ParentShareName);
              }));
    EXPECT_EQ("app|x", joined(share.UsedBy, [](const qbobj_UsedBy_t &marker) {
                  return fields(marker.AppName, marker.AppData);
              }));
    qbobj_Schedule_t schedule{1, "5", "6", "7", "8", "9", 10, 1, 12, 13};
    EXPECT_EQ(dump("Schedule", &schedule), dump("Schedule", share.SnapshotSchedule));

    EXPECT_EQ(1, share.Busy) << "one process that does not block";
    sql("INSERT INTO process_on_share (share_id,pid,blocking) VALUES (" + id + ",2,3)");
    EXPECT_EQ(4, read("s").Busy);
}

TEST_F(ShareRead, WithoutNamePathOrProtocolReadsAsEmpty)
{
    add_share("s");
    let_names_be_missing(*this);
    sql("UPDATE share SET name=NULL,path=NULL; INSERT INTO cifs_share_option (share_id) SELECT id FROM share;"
        "DROP TABLE host_acl; CREATE TABLE host_acl (share_id,host_id,proto,read,write,root);"
        "INSERT INTO host VALUES(1,'h'); INSERT INTO host_acl SELECT id,1,NULL,1,1,0 FROM share");
    auto collection = cleared(qbobj_clear_ShareCollection);
    ASSERT_OK(call(qbobj_getShareCollection, &collection));
    EXPECT_EQ("data/s||",
              fields(collection.Share->ShareId, collection.Share->ShareName, collection.Share->Path));
    EXPECT_EQ(nullptr, collection.Share->Stat->User);
    auto light = cleared(qbobj_clear_SimpleShareCollection);
    ASSERT_OK(call(qbobj_getSimpleShareCollection, &light));
    EXPECT_STREQ("", light.SimpleShare->ShareName);
}

TEST_F(ShareRead, CarriesTheQuotasOfUsersAndGroups)
{
    const std::string id = std::to_string(add_share("s"));
    add_user(101, "ann");
    sql("INSERT INTO user_quota VALUES (101," + id + ",1,500),(102," + id + ",1,600)");
    sql("INSERT INTO _user_quota_stat VALUES (" + id + ",101,7)");
    sql("INSERT INTO group_quota VALUES (99," + id + ",1,800)");
    const auto quotas = [](const qbobj_Quota_t *list) {
        return joined(list, [](const qbobj_Quota_t &quota) {
            return fields(quota.AccountId, quota.AccountName, quota.ShareId, quota.UsedMB, quota.HardMB);
        });
    };
    const qbobj_Share_t share = read("s");
    EXPECT_EQ("101|ann|data/s|7|500 102|NULL|data/s|0|600", quotas(share.UserQuota));
    EXPECT_EQ("99|users|data/s|0|800", quotas(share.GroupQuota));
}

/* ---- Options of the protocols -------------------------------------------------------------------------- */

TEST_F(ShareRead, OptionsOfEveryProtocol)
{
    add_share("s", "zvol");
    set_option("cifs_share_option", "0,'readonly',1,2,0,300,4,1,6,4,0,7,1023,1,1");
    set_option("cifs_dfs_option", "'v','s','f1','a1','r1'");
    set_option("cifs_dfs_option", "'v','s','f2','a2','r2'");
    set_option("nfs_share_option", "0,'writeable',1");
    set_option("daap_share_option", "1");
    set_option("rsync_share_option", "1,'readonly','enabled'");
    set_option("rsync_user_password_acl", "'u','secret'");
    set_option("http_share_option", "1,'readonly',1");
    set_option("zvol_share_option", "1048576,1");
    const qbobj_Share_t share = read("s");
    ASSERT_TRUE(share.Cifs && share.Nfs && share.Daap && share.Rsync && share.Http && share.Zvol);
    const qbobj_CifsShareOption_t &cifs = *share.Cifs;
    EXPECT_EQ("1|ReadOnly|1|2|0|300|4|1|1023|1|1",
              fields(cifs.NotAvailable, cifs.DefaultAccess, cifs.AllowGuestAccess, cifs.ShareDisplayOption,
                     cifs.EnableRecycleBin, cifs.RecycleSizeLimit, cifs.RecycleAgeLimit,
                     cifs.NewFileFolderPermAutoset, cifs.AclChangeRestrictionToggle, cifs.EnableOplocks,
                     cifs.EnableDFS));
    EXPECT_EQ("ReadWrite|ReadOnly|Disabled|ReadWrite", rights(&cifs));
    EXPECT_EQ("f1|a1|r1 f2|a2|r2", joined(cifs.DfolderAcl, [](const qbobj_DfolderAcl_t &link) {
                  return fields(link.Name, link.Address, link.RemoteShare);
              }));
    EXPECT_EQ("1|ReadWrite|1", fields(share.Nfs->NotAvailable, share.Nfs->DefaultAccess, share.Nfs->Sync));
    EXPECT_EQ(0, share.Daap->NotAvailable);
    EXPECT_EQ("0|ReadOnly|Enabled",
              fields(share.Rsync->NotAvailable, share.Rsync->DefaultAccess, share.Rsync->PasswordProtection));
    EXPECT_EQ("u|secret", joined(share.Rsync->UserPasswordAcl, [](const qbobj_UserPasswordAcl_t &login) {
                  return fields(login.UserName, login.Password);
              }));
    EXPECT_EQ("0|ReadOnly|1",
              fields(share.Http->NotAvailable, share.Http->DefaultAccess, share.Http->EnableWebDav));
    EXPECT_EQ("zvol|data/s|1048576|1",
              fields(share.ShareType, share.Zvol->ZfsName, share.Zvol->SizeKB, share.Zvol->IsSparse));
}

TEST_F(ShareRead, RightsAreTheBitsOfAModeOrWhatAUmaskLeaves)
{
    add_share("s");
    const struct {
        std::string protocol,
            stored; // modes of files and folders, or a switch and masks of files and folders
        int autoset;
        const char *rights;
    } cases[] = {{"afp", "1,NULL,NULL", 0, "Disabled|Disabled|Disabled|Disabled"},
                 {"afp", "1,436,NULL", 1, "ReadWrite|ReadOnly|Disabled|Disabled"}, // 0664
                 {"afp", "1,NULL,493", 1, "Disabled|Disabled|ReadOnly|ReadOnly"},  // 0755
                 {"afp", "1,0,511", 1, "Disabled|Disabled|ReadWrite|ReadWrite"},   // 0777
                 {"ftp", "0,18,63", 0, "NULL|NULL|NULL|NULL"},                     // 022, 077
                 {"ftp", "NULL,18,63", 0, "NULL|NULL|NULL|NULL"},
                 {"ftp", "1,18,63", 1, "ReadOnly|ReadOnly|Disabled|Disabled"},
                 {"ftp", "1,6,56", 1, "ReadWrite|Disabled|Disabled|ReadWrite"}, // 006, 070
                 // Only the write bit takes writing away.
                 {"ftp", "1,32,4", 1, "ReadWrite|ReadWrite|ReadWrite|ReadWrite"}}; // 040, 004
    const auto described = [](const auto *option) {
        return fields(option->NotAvailable, option->NewFileFolderPermAutoset) + "|" + rights(option);
    };
    for (const auto &[protocol, stored, autoset, words] : cases) {
        set_option(protocol + "_share_option", "1,'writeable'," + stored);
        const qbobj_Share_t share = read("s");
        EXPECT_EQ(fields(0, autoset, words), protocol == "afp" ? described(share.Afp) : described(share.Ftp))
            << protocol << stored;
    }
}

// What a stored default access means differs between protocols.
TEST_F(ShareRead, DefaultAccessByStoredWord)
{
    const std::string id = std::to_string(add_share("s"));
    const char *const cases[][3] = {{"'writeable'", "ReadWrite", "ReadWrite"},
                                    {"'readonly'", "ReadOnly", "ReadOnly"},
                                    {"'disabled'", "Disabled", "ReadWrite"},
                                    {"'Readonly'", "Disabled", "ReadWrite"},
                                    {"NULL", "Disabled", "ReadWrite"}};
    for (const auto &[stored, word, rsync] : cases) {
        SCOPED_TRACE(stored);
        for (const std::string proto : {"cifs", "afp", "nfs", "ftp", "http", "rsync"})
            sql("INSERT OR REPLACE INTO " + proto + "_share_option (share_id," + proto + "_access) VALUES (" +
                id + "," + stored + ")");
        const qbobj_Share_t share = read("s");
        for (const char *access :
             {share.Cifs->DefaultAccess, share.Afp->DefaultAccess, share.Nfs->DefaultAccess,
              share.Ftp->DefaultAccess, share.Http->DefaultAccess})
            EXPECT_STREQ(word, access);
        EXPECT_STREQ(rsync, share.Rsync->DefaultAccess);
        EXPECT_STREQ("Disabled", share.Rsync->PasswordProtection);
    }
}

TEST_F(ShareRead, DlnaIsReadOnlyWhereItIsReadable)
{
    add_share("s");
    set_option("dlna_share_option", "1,'disabled',7");
    EXPECT_EQ(nullptr, read("s").Dlna);
    const char *const words[] = {"",       "Audio",        "Video",        "Video,Audio",
                                 "Images", "Images,Audio", "Images,Video", "All"};
    for (int bits = 0; bits < 8; ++bits) {
        set_option("dlna_share_option", "1,'readonly'," + text(bits));
        const qbobj_DlnaShareOption_t *dlna = read("s").Dlna;
        ASSERT_NE(nullptr, dlna);
        EXPECT_EQ(fields("ReadOnly", words[bits], 0),
                  fields(dlna->DefaultAccess, dlna->MediaType, dlna->NotAvailable));
    }
}

/* ---- Access lists -------------------------------------------------------------------------------------- */

class ShareLists : public Shares
{
  protected:
    // Every protocol has options, two hosts, two local users, a directory user, a local and a directory
    // group.
    void SetUp() override
    {
        const std::string id = std::to_string(add_share("s"));
        add_user(101, "Bob");
        add_user(102, "ann");
        add_user(500, "domain", 99, "7");
        add_group(201, "staff");
        add_group(600, "domain group", "8");
        sql("INSERT INTO host VALUES (1,'h1'),(2,'h2')");
        for (const std::string proto : {"cifs", "afp", "nfs", "ftp", "http", "rsync"}) {
            const std::string key = " SELECT " + id + ",column1,'" + proto + "',column2,column3";
            sql("INSERT INTO " + proto + "_share_option (share_id) VALUES (" + id + ")");
            sql("INSERT INTO host_acl" + key + ",column4 FROM (VALUES(1,1,1,1),(2,1,0,0))");
            sql("INSERT INTO user_acl" + key + " FROM (VALUES(101,1,1),(102,1,0),(500,0,0))");
            sql("INSERT INTO group_acl" + key + " FROM (VALUES(201,0,0),(600,1,1))");
        }
        // Of another share: must not show up.
        sql("INSERT INTO user_acl VALUES (" + id + "+1,101,'cifs',1,1)");
    }

    const std::string all_hosts = "h1=ReadWrite+root h2=ReadOnly";
    const std::string local_users = "102:ann=ReadOnly 101:Bob=ReadWrite";
};

TEST_F(ShareLists, HoldHostsAndTheAccountsInUseByName)
{
    const qbobj_Share_t share = read("s");
    for (const qbobj_HostAcl_t *list : {share.Cifs->HostAcl, share.Afp->HostAcl, share.Nfs->HostAcl,
                                        share.Ftp->HostAcl, share.Http->HostAcl, share.Rsync->HostAcl})
        EXPECT_EQ(all_hosts, hosts(list));
    for (const qbobj_UserAcl_t *list :
         {share.Cifs->UserAcl, share.Afp->UserAcl, share.Ftp->UserAcl, share.Http->UserAcl})
        EXPECT_EQ(local_users, users(list));
    for (const qbobj_GroupAcl_t *list :
         {share.Cifs->GroupAcl, share.Afp->GroupAcl, share.Ftp->GroupAcl, share.Http->GroupAcl})
        EXPECT_EQ("201:staff=Disabled", groups(list));

    sql("UPDATE service_ftp SET auth_mode='anonymous'");
    const qbobj_Share_t anonymous = read("s");
    EXPECT_EQ(all_hosts, hosts(anonymous.Ftp->HostAcl));
    EXPECT_EQ(nullptr, anonymous.Ftp->UserAcl);
    EXPECT_EQ(nullptr, anonymous.Ftp->GroupAcl);
    EXPECT_EQ(local_users, users(anonymous.Http->UserAcl));

    join_directory();
    const qbobj_Share_t domain = read("s");
    EXPECT_EQ("500:domain=Disabled", users(domain.Cifs->UserAcl));
    EXPECT_EQ("600:domain group=ReadWrite", groups(domain.Http->GroupAcl));
}

TEST_F(ShareLists, AreReplacedWhenARecordIsReadAgain)
{
    sql("INSERT INTO `$application_on_share` VALUES ('data/s','app','x')");
    sql("INSERT INTO user_quota SELECT 101,id,1,2 FROM share");
    sql("INSERT INTO group_quota SELECT 99,id,1,2 FROM share");
    sql("INSERT INTO `$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name) VALUES "
        "('c','n','s')");
    qbobj_Share_t share = read("s");
    const std::string first = dump("Share", &share);
    EXPECT_OK(call(qbobj_getShare, &share));
    EXPECT_EQ(first, dump("Share", &share));

    sql("DELETE FROM cifs_share_option;DELETE FROM user_quota");
    EXPECT_OK(call(qbobj_getShare, &share));
    EXPECT_EQ(nullptr, share.Cifs);
    EXPECT_EQ(nullptr, share.UserQuota);
}

// Every read names its table in its failure, at a place of its own unit.
TEST_F(ShareLists, TellWhichTableCouldNotBeRead)
{
    sql("INSERT INTO dlna_share_option (share_id) SELECT id FROM share");
    const auto fails_without = [this](const std::string &table, const std::string &read) {
        sql("DROP TABLE `" + table + "`");
        auto share = cleared(qbobj_clear_Share);
        share.ShareName = "s";
        EXPECT_FAILS(call(qbobj_getShare, &share), db_failed,
                     ("Failed DB Query for 'SELECT " + read + "'. no such table: " + table).c_str());
        EXPECT_STREQ("qbobj_api2_get_share", err.file);
    };
    // The reads before it still succeed: the tables go in the opposite order.
    std::istringstream tables(
        "group_quota user_quota $application_on_share zvol_share_option rsync_user_password_acl "
        "cifs_dfs_option group_acl user_acl host_acl http_share_option rsync_share_option daap_share_option "
        "dlna_share_option ftp_share_option nfs_share_option afp_share_option snapshot_schedule");
    for (std::string table; tables >> table;) {
        const std::size_t acl = table.find("_acl");
        const bool joins = acl != table.npos && table[0] != 'r';
        fails_without(table, "FROM " + (joins ? table.substr(0, acl) + "," : "") + table);
    }
    fails_without("_zfs_stat", "share");
    auto collection = cleared(qbobj_clear_ShareCollection);
    EXPECT_FAILS(call(qbobj_getShareCollection, &collection), db_failed,
                 "Failed DB Query for 'SELECT FROM share'. no such table: _zfs_stat");
}

/* ---- Finding shares ------------------------------------------------------------------------------------ */

TEST_F(ShareRead, IsFoundByTheFirstKeyThatLeadsToOne)
{
    add_share("one");
    add_share("two");
    const char *const cases[][4] = {{"data/one", "data/two", "two", "one"},
                                    {"nothing", "data/two", "one", "two"},
                                    {nullptr, nullptr, "TWO", "two"},
                                    {"one", "two", "one", "one"},
                                    {nullptr, "data/one", nullptr, "one"}};
    for (const auto &[resource_id, share_id, name, found] : cases) {
        auto share = cleared(qbobj_clear_Share);
        share.resource_id = resource_id;
        share.ShareId = share_id;
        share.ShareName = name;
        EXPECT_OK(call(qbobj_getShare, &share));
        EXPECT_EQ(fields(found, ("data/" + std::string(found)).c_str()),
                  fields(share.ShareName, share.resource_id));
    }
    auto share = cleared(qbobj_clear_Share);
    share.ShareId = "data/none";
    EXPECT_FAILS(call(qbobj_getShare, &share), db_failed, "Invalid ShareId=data/none.");
    EXPECT_FAILS(call(qbobj_getShare, nullptr), bad_args, "share cannot be NULL.");
}

TEST_F(ShareRead, CollectionsAreOrderedByNameAndChooseByType)
{
    for (const char *name : {"beta", "Alpha", "gamma"})
        add_share(name);
    add_share("Block", "zvol");
    add_share("copy", "replicate");
    auto collection = cleared(qbobj_clear_ShareCollection);
    EXPECT_OK(call(qbobj_getShareCollection, &collection));
    EXPECT_EQ("Alpha beta gamma", names(collection.Share));
    EXPECT_STREQ("data/Alpha", collection.Share->resource_id);
    EXPECT_NE(nullptr, collection.Share->Stat->User);

    collection = cleared(qbobj_clear_ShareCollection);
    EXPECT_OK(call(qbobj_getShareAndZvolCollection, &collection));
    EXPECT_EQ("Alpha beta Block gamma", names(collection.Share));

    for (const auto list : {qbobj_getShareCollection, qbobj_getShareAndZvolCollection})
        EXPECT_FAILS(call(list, nullptr), bad_args, "collection cannot be NULL.");
    EXPECT_FAILS(call(qbobj_getSimpleShareCollection, nullptr), bad_args, "collection cannot be NULL.");
}

TEST_F(ShareRead, QueriesCombineTheirCriteria)
{
    for (const char *name : {"alpha", "alpine", "beta"})
        add_share(name);
    add_share("block", "zvol");
    const std::string data = value("SELECT id FROM _volume WHERE lv_name='data'");
    const char *const cases[][4] = {{nullptr, nullptr, nullptr, "alpha alpine beta block"},
                                    {data.c_str(), "al%", nullptr, "alpha alpine"},
                                    {"other", "al%", nullptr, ""},
                                    {nullptr, "%", "data/beta", "beta"},
                                    {nullptr, "b%", "data/alpha", ""},
                                    {nullptr, "x' OR 1=1 --", nullptr, ""}};
    for (const auto &[volume, like, share_id, found] : cases) {
        qbobj_Share_t *shares = nullptr;
        EXPECT_OK(call(qbobj_queryShare, volume, like, share_id, &shares));
        EXPECT_EQ(found, names(shares));
    }
    EXPECT_DEATH(call(qbobj_queryShare, nullptr, nullptr, nullptr, nullptr),
                 ": qbobj_queryShare: Assertion `shares' failed");
}

TEST_F(ShareRead, AQueryRefusesCriteriaThatDoNotFit)
{
    add_share("s");
    qbobj_Share_t *shares = nullptr;
    const std::string fits(511 - std::strlen("S.name LIKE ''"), '%');
    EXPECT_OK(call(qbobj_queryShare, nullptr, fits.c_str(), nullptr, &shares));
    EXPECT_EQ("s", names(shares));
    EXPECT_FAILS(call(qbobj_queryShare, nullptr, (fits + "%").c_str(), nullptr, &shares), bad_args,
                 "The value of column 'S.name' is too long for the query.");
    EXPECT_FAILS(call(qbobj_queryShare, nullptr, fits.c_str(), "data/s", &shares), bad_args,
                 "The value of column 'S.zfs_name' is too long for the query.");
}

TEST_F(ShareRead, TheLightListNamesTheProtocolsThatOfferAShare)
{
    for (const char *name : {"all", "none", "Some"})
        add_share(name);
    add_share("block", "zvol");
    for (const std::string proto : {"nfs", "ftp", "afp", "cifs"})
        sql("INSERT INTO " + proto + "_share_option (share_id," + proto +
            "_access) SELECT id,'readonly' FROM share WHERE name<>'none'");
    sql("UPDATE cifs_share_option SET available=0 WHERE share_id=(SELECT id FROM share WHERE name='Some');"
        "UPDATE ftp_share_option SET ftp_access='disabled' WHERE share_id="
        "(SELECT id FROM share WHERE name='Some');"
        "INSERT INTO `$application_on_share` VALUES ('data/none','app','x')");
    auto collection = cleared(qbobj_clear_SimpleShareCollection);
    EXPECT_OK(call(qbobj_getSimpleShareCollection, &collection));
    EXPECT_EQ("data/all|all|cifs,afp,ftp,nfs| data/none|none||app data/Some|Some|afp,nfs|",
              joined(collection.SimpleShare, [](const qbobj_SimpleShare_t &share) {
                  EXPECT_STREQ(share.ShareId, share.resource_id);
                  return fields(share.ShareId, share.ShareName, share.CommonProtocolsCSV,
                                share.UsedBy == nullptr ? "" : share.UsedBy->AppName);
              }));
}

TEST_F(ShareRead, TheScheduleAloneCanBeRead)
{
    add_share("s");
    qbobj_Schedule_t *schedule = nullptr;
    EXPECT_OK(call(qbobj_getShareSnapshotSchedule, "s", &schedule));
    EXPECT_EQ(nullptr, schedule);
    sql("INSERT INTO snapshot_schedule (share_id,hour) SELECT id,'3' FROM share");
    EXPECT_OK(call(qbobj_getShareSnapshotSchedule, "s", &schedule));
    ASSERT_NE(nullptr, schedule);
    EXPECT_STREQ("3", schedule->Hour);
    EXPECT_FAILS(call(qbobj_getShareSnapshotSchedule, "none", &schedule), QBOBJ_ERROR_DB_NOTEXISTS,
                 "Share name (none) may be invalid.");
    EXPECT_FAILS(call(qbobj_getShareSnapshotSchedule, "s", nullptr), bad_args,
                 "snapshot_schedule cannot be NULL.");
}

TEST_F(ShareRead, TheRowIdIsFoundByName)
{
    const int id = add_share("s");
    EXPECT_EQ(id, call(qbobj_getShareId, "s"));
    EXPECT_EQ(-1, call(qbobj_getShareId, "none"));
    EXPECT_EQ(-2, call(qbobj_getShareId, "a/b"));
    EXPECT_EQ(-2, call(qbobj_getShareId, nullptr));
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec);
    EXPECT_NE(std::string::npos, log().find("Share name 'a/b' is invalid."));
}

} // namespace
