// Groups: listed, created, renamed, given members and quotas, deleted.
#include "accounts.h"

namespace
{

using namespace qbobj_test;
using Group = qbobj_Group_t;

const std::string long_name(40, 'a');
const std::string long_message = "GroupName is too long (" + long_name + ")";

class Groups : public Accounts
{
  protected:
    Groups()
    {
        add_shares();
        sql("INSERT INTO `$group`(id,gname,is_privileged,rid) VALUES"
            "(100,'staff',0,NULL),(101,'guild',0,NULL),(-7,'crew',0,7);"
            "INSERT INTO `$user`(id,uname,passwd,email,home,group_id) VALUES"
            "(100,'bob','','b@example.com','/data/home/bob',99),(101,'Al','x',NULL,NULL,100),"
            "(102,'cy',NULL,'','/data/home/cy',99);"
            "UPDATE account_default SET diskquota_warn=80");
    }
    std::string listed(qbobj_AccountQuery_t *query)
    {
        groups = {};
        EXPECT_OK(call(qbobj_getGroupCollection, &groups, query));
        return all(groups.Group, &Group::GroupName);
    }
    std::string group(int id) const
    {
        return value("SELECT gname||' '||is_privileged FROM `$group` WHERE id=" + std::to_string(id));
    }
    std::string members(int id) const
    {
        return value("SELECT group_concat(user_id) FROM `$group_has_user` WHERE group_id=" +
                     std::to_string(id));
    }

    qbobj_GroupCollection_t groups{};
};

TEST_F(Groups, ListFilterOrderAndPage)
{
    sql("INSERT INTO `$group`(id,gname,is_privileged) VALUES(102,'removed',-1)");
    // A query is limit, offset, name_like, opt, order and ads.
    const std::tuple<qbobj_AccountQuery_t, const char *, int, int> cases[] = {
        {{0, 0, nullptr, nullptr, 0, 0}, "guild staff users", 3, 3},
        {{0, 0, nullptr, nullptr, -1, 0}, "users staff guild", 3, 3},
        {{0, 0, nullptr, nullptr, 2, 0}, "users staff guild", 3, 3},
        {{0, 0, nullptr, nullptr, -2, 0}, "guild staff users", 3, 3},
        {{1, 1, nullptr, "TM_ON", 1, 0}, "staff", 3, 3},
        {{1, 0, "%S%", nullptr, 1, 0}, "staff", 2, 3},
        {{0, 0, "x' OR '1", nullptr, 1, 0}, "", 0, 3},
        {{0, 0, nullptr, nullptr, 1, 1}, "crew", 1, 1}};
    for (const auto &[given, names, entries, total] : cases) {
        qbobj_AccountQuery_t query = given;
        SCOPED_TRACE(names);
        EXPECT_EQ(names, listed(&query));
        EXPECT_EQ(entries, groups.Entries);
        EXPECT_EQ(total, groups.TotalEntries);
    }
    EXPECT_EQ("guild staff users", listed(nullptr));
    join_directory();
    EXPECT_EQ("crew", listed(nullptr));
    EXPECT_EQ(1, groups.Group->IsDomainMember);

    const std::string pattern(257, '%');
    qbobj_AccountQuery_t query{.name_like = pattern.c_str()};
    EXPECT_FAILS(call(qbobj_getGroupCollection, &groups, &query), bad_args, "Query string is too long.");
}

TEST_F(Groups, ListedGroupHasMembersAndQuotas)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(102,101),(100,101),(101,101),(100,100);"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) VALUES(101,5,80,100),(101,6,8,10);"
        "INSERT INTO _group_quota_stat(share_id,group_id,mb_used) VALUES(6,101,3)");
    ASSERT_EQ("guild staff users", listed(nullptr));
    const Group &guild = *groups.Group;
    EXPECT_EQ(101, guild.resource_id);
    EXPECT_EQ(101, guild.GroupId);
    // Bob's password is empty, cy has none.
    EXPECT_EQ(
        (Lines{"101|101|Al|staff|NULL||" + mask, "100|100|bob|users|/data/home/bob|b@example.com|" + mask,
               "102|102|cy|users|/data/home/cy||"}),
        each(guild.SecondaryMember, [](const qbobj_User_t &user) {
            return ids(user) +
                   line({user.UserName, user.GroupName, user.HomeDirectory, user.Email, user.Password});
        }));
    EXPECT_EQ((Lines{"101|data/photos|100|0", "101|data/music|10|3"}), each(guild.GroupQuota, quota_line));
    EXPECT_EQ(nullptr, guild._link->GroupQuota);
}

TEST_F(Groups, SingleGroupCannotBeRead)
{
    refused(qbobj_getGroup, {.GroupId = 100}, db_failed,
            "Failed DB Query for 'group'. no such column: U.rid");
    refused(qbobj_getGroup, {.GroupId = -7}, db_failed, "Invalid resouce_id=-7.");
}

TEST_F(Groups, SystemGroupsAreNamedWhateverTheyAre)
{
    sql("INSERT INTO `$group`(id,gname,rid) VALUES(30,'mirrored',30)");
    qbobj_SystemGroup_t second{.resource_id = 999};
    qbobj_SystemGroup_t first{._link = &second};
    ASSERT_OK(run(qbobj_getSystemGroup, first));
    EXPECT_EQ("root 999", all(&first, &qbobj_SystemGroup_t::GroupName));
    EXPECT_EQ(999, second.GroupId);
    refused(qbobj_getSystemGroup, {.resource_id = -30}, db_failed, "Invalid resouce_id=-30.");
    EXPECT_STREQ("qbobj_api2_get_group", err.file);

    join_directory();
    first.resource_id = -1;
    second.resource_id = -30;
    ASSERT_OK(run(qbobj_getSystemGroup, first));
    EXPECT_EQ("daemon mirrored", all(&first, &qbobj_SystemGroup_t::GroupName)); // the system's group 1
    EXPECT_EQ(-30, second.GroupId);
}

TEST_F(Groups, NewGroupTakesTheLowestFreeId)
{
    const std::pair<const char *, int> cases[] = {
        {"", 102},
        {"INSERT INTO `$group`(id,gname) VALUES(104,'d')", 103}, // 102 is the group just made
        {"DELETE FROM `$group` WHERE id=100", 100},
        {"DELETE FROM `$group` WHERE id>101; UPDATE `$group` SET id=32767 WHERE id=101", 101}};
    int number = 0;
    for (const auto &[before, id] : cases) {
        sql(before);
        const std::string name = "new" + std::to_string(number++);
        Group group{.GroupId = -1, .GroupName = name.c_str()};
        EXPECT_OK(run(qbobj_addGroup, group));
        EXPECT_EQ(id, group.GroupId);
        EXPECT_EQ(id, group.resource_id);
        EXPECT_EQ(name + " 0", this->group(id));
    }
    sql("WITH RECURSIVE n(id) AS (SELECT 100 UNION ALL SELECT id+1 FROM n WHERE id<32767) "
        "INSERT OR IGNORE INTO `$group`(id,gname) SELECT id,'g'||id FROM n");
    refused(qbobj_addGroup, {.GroupName = "late"}, db_failed, "No more gid available");
}

TEST_F(Groups, NewGroupsGetQuotasAndMembers)
{
    qbobj_Quota_t music{.ShareId = "data/music", .HardMB = 5000000000};
    qbobj_Quota_t photos{._link = &music, .ShareId = "data/photos", .HardMB = 100};
    qbobj_User_t second{.UserId = 102}; // only a modification minds a missing name
    qbobj_User_t first{._link = &second, .resource_id = 101, .UserId = 100};
    Group last{.GroupId = 32767, .GroupName = "Zweite"};
    Group group{._link = &last,
                .GroupId = 500,
                .GroupName = "Erste",
                .SecondaryMember = &first,
                .GroupQuota = &photos};
    ASSERT_OK(run(qbobj_addGroup, group));
    EXPECT_EQ("Erste 0", this->group(500));
    EXPECT_EQ("Zweite 0", this->group(32767));
    EXPECT_EQ((Lines{"5|8000|100", "6|400000000000|5000000000"}),
              rows("SELECT share_id,mb_soft,mb_hard FROM group_quota WHERE group_id=500 ORDER BY 1"));
    EXPECT_EQ("101,102", members(500));
}

TEST_F(Groups, CreationIsRefused)
{
    const Refusal<Group> cases[] = {
        {{}, "GroupName is required for 'add'"},
        {{.GroupName = ""}, "GroupName is required for 'add'"},
        {{.GroupName = long_name.c_str()}, long_message, too_long},
        {{.GroupName = "a'b"}, "Invalid GroupName (a'b)"},
        {{.GroupName = "STAFF"}, "Group (STAFF) already exists.", group_taken},
        {{.GroupId = 99, .GroupName = "new"}, "GroupId=99 is out of valid range (100-32767)."},
        {{.GroupId = 32768, .GroupName = "new"}, "GroupId=32768 is out of valid range (100-32767)."},
        {{.GroupId = 100, .GroupName = "new"},
         "GroupId (100) already exists.",
         QBOBJ_ERROR_UI__GID_ALREADY_EXISTS}};
    for (const auto &expected : cases)
        refused(qbobj_addGroup, expected.given, expected.code, expected.message);

    qbobj_User_t nobody{.UserId = -20};
    Group bad_member{.GroupName = "second", .SecondaryMember = &nobody};
    refused(qbobj_addGroup, {._link = &bad_member, .GroupName = "first"}, bad_args,
            "Invalid resource_id (0) in SecondaryMember.");
    EXPECT_STREQ("qbobj_api2_add_group", err.file);
    qbobj_Quota_t nowhere{.ShareId = "data/none", .HardMB = 5};
    refused(qbobj_addGroup, {.GroupName = "third", .GroupQuota = &nowhere}, db_failed,
            "Failed DB Query for 'INSERT group_quota'. NOT NULL constraint failed: group_quota.share_id");
}

TEST_F(Groups, DeletedGroupIsMarkedAndHoldsItsName)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,101),(100,100);"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) VALUES(101,5,8,10),(100,5,8,10);"
        "INSERT INTO _group_quota_stat(share_id,group_id,mb_used) VALUES(5,101,3),(5,100,3);"
        "INSERT INTO group_acl(share_id,group_id,proto) VALUES(5,101,'cifs')");
    Group group{.GroupId = 101};
    ASSERT_OK(run(qbobj_deleteGroup, group));
    EXPECT_STREQ("guild", group.GroupName);
    EXPECT_EQ("guild -1", this->group(101));
    for (const char *table : {"group_quota", "_group_quota_stat", "`$group_has_user`"})
        EXPECT_EQ("100", value(std::string("SELECT group_concat(group_id) FROM ") + table)) << table;
    EXPECT_EQ("101", value("SELECT group_id FROM group_acl"));
    refused(qbobj_addGroup, {.GroupName = "guild"}, group_taken, "Group (guild) already exists.");
}

TEST_F(Groups, DeletionIsRefused)
{
    refused(qbobj_deleteGroup, {}, bad_args, "Invalid resource_id (0)");
    refused(qbobj_deleteGroup, {.GroupId = 999}, bad_args, "Invalid resource_id (999). Not exist.");
    Group primary{.GroupId = 100};
    refused(qbobj_deleteGroup, {._link = &primary, .GroupId = 101}, QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP,
            "Cannot remove group, has users.");
}

TEST_F(Groups, RenameReportsTheOldName)
{
    const char *const cases[][3] = {{"lodge", "guild", "lodge 0"},
                                    {"lodge", nullptr, "lodge 0"},
                                    {"Lodge", "lodge", "Lodge 0"}, // a change of capitals is a change
                                    {nullptr, nullptr, "Lodge 0"}};
    for (const auto &[name, old_name, stored] : cases) {
        Group group{.GroupId = 101, .GroupName = name, .OldGroupName = "before"};
        ASSERT_OK(run(qbobj_modifyGroup, group));
        EXPECT_STREQ(old_name, group.OldGroupName);
        EXPECT_EQ(stored, this->group(101));
    }
}

TEST_F(Groups, ModificationIsRefused)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,101)");
    qbobj_User_t nobody{.UserName = "somebody"};
    const Refusal<Group> cases[] = {
        {{.GroupName = "x"}, "Invalid resource_id (0)."},
        {{.GroupId = 999, .GroupName = "x"}, "Invalid resource_id (999). Not exist."},
        {{.GroupId = 101, .GroupName = ""}, "Invalid GroupName ()"},
        {{.GroupId = 101, .GroupName = long_name.c_str()}, long_message, too_long},
        {{.GroupId = 101, .GroupName = "Staff"},
         "Cannot rename to group which already exists (Staff).",
         group_taken},
        {{.resource_id = 101, .GroupName = "lodge", .SecondaryMember = &nobody},
         "Invalid resource_id (101) in SecondaryMember."}};
    for (const auto &expected : cases) {
        refused(qbobj_modifyGroup, expected.given, expected.code, expected.message);
        EXPECT_STREQ("qbobj_api2_modify_group", err.file);
    }
    // In directory mode names are compared with directory groups only; the database still refuses the clash.
    join_directory();
    refused(qbobj_modifyGroup, {.GroupId = 101, .GroupName = "staff"}, group_taken,
            "Specified group name already exists");
}

TEST_F(Groups, APersonIsAMemberOnce)
{
    sql("CREATE UNIQUE INDEX once ON `$group_has_user`(user_id,group_id)");
    qbobj_User_t again{.UserId = 100, .UserName = "bob"};
    qbobj_User_t bob{._link = &again, .UserId = 100, .UserName = "bob"};
    const std::string message = "Failed DB Query for 'INSERT group_has_user. UNIQUE constraint failed: "
                                "$group_has_user.user_id, $group_has_user.group_id";
    refused(qbobj_addGroup, {.GroupName = "new", .SecondaryMember = &bob}, db_failed, message);
    refused(qbobj_modifyGroup, {.GroupId = 101, .SecondaryMember = &bob}, db_failed, message);
    EXPECT_STREQ("qbobj_api2_modify_group", err.file);
}

TEST_F(Groups, ModificationSetsQuotasByShare)
{
    sql("INSERT INTO share(id,zfs_name,name,volume_id,path) "
        "VALUES(7,'data/films','films','data','/data/films');"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) "
        "VALUES(101,5,8,10),(101,6,8,10),(100,5,1,1)");
    qbobj_Quota_t films{.ShareId = "data/films", .HardMB = 3};
    qbobj_Quota_t music{._link = &films, .ShareId = "data/music"};
    Group group{.GroupId = 101, .GroupQuota = &music};
    ASSERT_OK(run(qbobj_modifyGroup, group));
    EXPECT_EQ((Lines{"100|5|1|1", "101|5|8|10", "101|7|240|3"}),
              rows("SELECT group_id,share_id,mb_soft,mb_hard FROM group_quota ORDER BY 1,2"));
}

TEST_F(Groups, ModificationReplacesMembers)
{
    qbobj_User_t third{.UserId = 102, .UserName = "cy"};
    qbobj_User_t second{._link = &third, .UserId = 101};
    qbobj_User_t first{._link = &second, .UserId = 100, .UserName = "bob"};
    const std::pair<qbobj_User_t *, const char *> cases[] = {
        {&third, "102"},
        {&first, "100"}, // up to the first without a name
        {&second, "NULL"},
        {&third, "102"},
        {nullptr, "NULL"}};
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(101,100),(101,101)");
    for (const auto &[list, ids] : cases) {
        Group group{.GroupId = 101, .SecondaryMember = list};
        ASSERT_OK(run(qbobj_modifyGroup, group));
        EXPECT_EQ(ids, members(101));
    }
    EXPECT_EQ("101", members(100));
}

} // namespace
