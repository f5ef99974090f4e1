// Groups: listed, created, renamed, given members and quotas, deleted.
#include "database.h"

namespace
{

class Groups : public qbobj_test::Database
{
  protected:
    Groups()
    {
        sql("INSERT INTO `$group`(id,gname,is_privileged,rid) VALUES"
            "(100,'staff',0,NULL),(101,'guild',0,NULL),(-7,'crew',0,7);"
            "INSERT INTO `$user`(id,uname,passwd,email,home,group_id) VALUES"
            "(100,'bob','','b@example.com','/data/home/bob',99),(101,'Al','x',NULL,NULL,100),"
            "(102,'cy',NULL,'','/data/home/cy',99);"
            "INSERT INTO share(id,zfs_name,name,volume_id,path) VALUES"
            "(5,'data/photos','photos','data','/data/photos'),(6,'data/music','music','data','/data/music');"
            "UPDATE account_default SET diskquota_warn=80");
    }

    std::string listed(qbobj_AccountQuery_t *query)
    {
        groups = {};
        groups = {};
        EXPECT_OK(qbobj_getGroupCollection(qbdb, db, &groups, query, &err));
        std::string text;
        for (const qbobj_Group_t *group = groups.Group; group != nullptr; group = group->_link)
            text += (text.empty() ? "" : " ") + std::string(group->GroupName);
        return text;
    }

    std::string group(int id) const
    {
        return value("SELECT gname||' '||is_privileged FROM `$group` WHERE id=" + std::to_string(id));
    }

    using Operation = int (*)(qbdb_handle_t *, sqlite3 *, qbobj_Group_t *, qbobj_error_rec_t *);

    // The operation fails so, and nothing has changed.
    void refused(Operation operation, qbobj_Group_t group, qbobj_error_t code, const char *message)
    {
        SCOPED_TRACE(message);
        const std::string before = content();
        EXPECT_FAILS(operation(qbdb, db, &group, &err), code, message);
        EXPECT_EQ(before, content());
    }

    static qbobj_Group_t named(const char *name, int id = 0)
    {
        qbobj_Group_t group{};
        group.GroupName = name;
        group.GroupId = id;
        return group;
    }

    static qbobj_Quota_t quota(const char *share, uint64_t mb)
    {
        qbobj_Quota_t quota{};
        quota.ShareId = share;
        quota.HardMB = mb;
        return quota;
    }

    static qbobj_User_t member(int id, const char *name = "somebody")
    {
        qbobj_User_t user{};
        user.UserId = id;
        user.UserName = name;
        return user;
    }

    qbobj_GroupCollection_t groups{};
};

TEST_F(Groups, ListFilterOrderAndPage)
{
    sql("INSERT INTO `$group`(id,gname,is_privileged) VALUES(102,'removed',-1)");
    const struct {
        qbobj_AccountQuery_t query; // limit, offset, name_like, opt, order, ads
        const char *names;
        int entries;
        int total;
    } cases[] = {
        {{0, 0, nullptr, nullptr, 0, 0}, "guild staff users", 3, 3},
        {{0, 0, nullptr, nullptr, -1, 0}, "users staff guild", 3, 3},
        {{0, 0, nullptr, nullptr, 2, 0}, "users staff guild", 3, 3},
        {{0, 0, nullptr, nullptr, -2, 0}, "guild staff users", 3, 3},
        {{1, 1, nullptr, "TM_ON", 1, 0}, "staff", 3, 3},
        {{1, 0, "%S%", nullptr, 1, 0}, "staff", 2, 3},
        {{0, 0, "x' OR '1", nullptr, 1, 0}, "", 0, 3},
        {{0, 0, nullptr, nullptr, 1, 1}, "crew", 1, 1},
    };
    for (const auto &expected : cases) {
        qbobj_AccountQuery_t query = expected.query;
        SCOPED_TRACE(expected.names);
        EXPECT_EQ(expected.names, listed(&query));
        EXPECT_EQ(expected.entries, groups.Entries);
        EXPECT_EQ(expected.total, groups.TotalEntries);
    }
    EXPECT_EQ("guild staff users", listed(nullptr));
    join_directory();
    EXPECT_EQ("crew", listed(nullptr));
    EXPECT_EQ(1, groups.Group->IsDomainMember);

    const std::string pattern(257, '%');
    qbobj_AccountQuery_t query{};
    query.name_like = pattern.c_str();
    EXPECT_FAILS(qbobj_getGroupCollection(qbdb, db, &groups, &query, &err), QBOBJ_ERROR_API_ARGS,
                 "Query string is too long.");
}

TEST_F(Groups, ListedGroupHasMembersAndQuotas)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(102,101),(100,101),(101,101),(100,100);"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) VALUES(101,5,80,100),(101,6,8,10);"
        "INSERT INTO _group_quota_stat(share_id,group_id,mb_used) VALUES(6,101,3)");
    ASSERT_EQ("guild staff users", listed(nullptr));
    const qbobj_Group_t &guild = *groups.Group;
    EXPECT_EQ(101, guild.resource_id);
    EXPECT_EQ(101, guild.GroupId);

    const struct {
        int id;
        const char *name, *group, *home, *email, *password;
    } members[] = {
        {101, "Al", "staff", nullptr, "", masked_password},
        {100, "bob", "users", "/data/home/bob", "b@example.com", masked_password}, // its password is empty
        {102, "cy", "users", "/data/home/cy", "", ""},
    };
    const qbobj_User_t *user = guild.SecondaryMember;
    for (const auto &expected : members) {
        ASSERT_NE(nullptr, user);
        EXPECT_EQ(expected.id, user->resource_id);
        EXPECT_EQ(expected.id, user->UserId);
        EXPECT_STREQ(expected.name, user->UserName);
        EXPECT_STREQ(expected.group, user->GroupName);
        EXPECT_STREQ(expected.home, user->HomeDirectory);
        EXPECT_STREQ(expected.email, user->Email);
        EXPECT_STREQ(expected.password, user->Password);
        user = user->_link;
    }
    EXPECT_EQ(nullptr, user);

    const qbobj_Quota_t *photos = guild.GroupQuota;
    ASSERT_NE(nullptr, photos);
    ASSERT_NE(nullptr, photos->_link);
    EXPECT_EQ(101, photos->AccountId);
    EXPECT_STREQ("data/photos", photos->ShareId);
    EXPECT_EQ(100U, photos->HardMB);
    EXPECT_EQ(0U, photos->UsedMB);
    EXPECT_EQ(3U, photos->_link->UsedMB);
    EXPECT_EQ(nullptr, guild._link->GroupQuota);
}

TEST_F(Groups, SingleGroupCannotBeRead)
{
    refused(qbobj_getGroup, named(nullptr, 100), QBOBJ_ERROR_DB_MISC,
            "Failed DB Query for 'group'. no such column: U.rid");
    refused(qbobj_getGroup, named(nullptr, -7), QBOBJ_ERROR_DB_MISC, "Invalid resouce_id=-7.");
}

TEST_F(Groups, SystemGroupsAreNamedWhateverTheyAre)
{
    sql("INSERT INTO `$group`(id,gname,rid) VALUES(30,'mirrored',30)");
    qbobj_SystemGroup_t second{};
    second.resource_id = 999;
    qbobj_SystemGroup_t first{};
    first._link = &second;
    ASSERT_OK(qbobj_getSystemGroup(qbdb, db, &first, &err));
    EXPECT_STREQ("root", first.GroupName);
    EXPECT_STREQ("999", second.GroupName);
    EXPECT_EQ(999, second.GroupId);
    second.resource_id = -30;
    EXPECT_FAILS(qbobj_getSystemGroup(qbdb, db, &first, &err), QBOBJ_ERROR_DB_MISC,
                 "Invalid resouce_id=-30.");

    join_directory();
    first.resource_id = -1;
    ASSERT_OK(qbobj_getSystemGroup(qbdb, db, &first, &err));
    EXPECT_STREQ("daemon", first.GroupName); // the system's group 1
    EXPECT_STREQ("mirrored", second.GroupName);
    EXPECT_EQ(-30, second.GroupId);
}

TEST_F(Groups, NewGroupTakesTheLowestFreeId)
{
    const struct {
        const char *before;
        int id;
    } cases[] = {
        {"", 102},
        {"INSERT INTO `$group`(id,gname) VALUES(104,'d')", 103}, // 102 is the group just made
        {"DELETE FROM `$group` WHERE id=100", 100},
        {"DELETE FROM `$group` WHERE id>101; UPDATE `$group` SET id=32767 WHERE id=101", 101},
    };
    int number = 0;
    for (const auto &expected : cases) {
        sql(expected.before);
        const std::string name = "new" + std::to_string(number++);
        qbobj_Group_t group = named(name.c_str(), -1);
        EXPECT_OK(qbobj_addGroup(qbdb, db, &group, &err));
        EXPECT_EQ(expected.id, group.GroupId);
        EXPECT_EQ(expected.id, group.resource_id);
        EXPECT_EQ(name + " 0", this->group(expected.id));
    }
    sql("WITH RECURSIVE n(id) AS (SELECT 100 UNION ALL SELECT id+1 FROM n WHERE id<32767) "
        "INSERT OR IGNORE INTO `$group`(id,gname) SELECT id,'g'||id FROM n");
    refused(qbobj_addGroup, named("late"), QBOBJ_ERROR_DB_MISC, "No more gid available");
}

TEST_F(Groups, NewGroupsGetQuotasAndMembers)
{
    qbobj_Quota_t music = quota("data/music", 5000000000);
    qbobj_Quota_t photos = quota("data/photos", 100);
    photos._link = &music;
    qbobj_User_t second = member(102, nullptr); // only a modification minds a missing name
    qbobj_User_t first = member(100);
    first.resource_id = 101;
    first._link = &second;
    qbobj_Group_t last = named("Zweite", 32767);
    qbobj_Group_t group = named("Erste", 500);
    group.GroupQuota = &photos;
    group.SecondaryMember = &first;
    group._link = &last;
    ASSERT_OK(qbobj_addGroup(qbdb, db, &group, &err));
    EXPECT_EQ("Erste 0", this->group(500));
    EXPECT_EQ("Zweite 0", this->group(32767));
    EXPECT_EQ((std::vector<std::string>{"5|8000|100", "6|400000000000|5000000000"}),
              rows("SELECT share_id,mb_soft,mb_hard FROM group_quota WHERE group_id=500 ORDER BY 1"));
    EXPECT_EQ((std::vector<std::string>{"101", "102"}),
              rows("SELECT user_id FROM `$group_has_user` WHERE group_id=500 ORDER BY 1"));
}

TEST_F(Groups, CreationIsRefused)
{
    const std::string long_name(40, 'a');
    const std::string too_long = "GroupName is too long (" + long_name + ")";
    const struct {
        qbobj_Group_t group;
        qbobj_error_t code;
        const char *message;
    } cases[] = {
        {named(nullptr), QBOBJ_ERROR_API_ARGS, "GroupName is required for 'add'"},
        {named(""), QBOBJ_ERROR_API_ARGS, "GroupName is required for 'add'"},
        {named(long_name.c_str()), QBOBJ_ERROR_UI__NAME_TOO_LONG, too_long.c_str()},
        {named("a'b"), QBOBJ_ERROR_API_ARGS, "Invalid GroupName (a'b)"},
        {named("STAFF"), QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS, "Group (STAFF) already exists."},
        {named("new", 99), QBOBJ_ERROR_API_ARGS, "GroupId=99 is out of valid range (100-32767)."},
        {named("new", 32768), QBOBJ_ERROR_API_ARGS, "GroupId=32768 is out of valid range (100-32767)."},
        {named("new", 100), QBOBJ_ERROR_UI__GID_ALREADY_EXISTS, "GroupId (100) already exists."},
    };
    for (const auto &expected : cases)
        refused(qbobj_addGroup, expected.group, expected.code, expected.message);

    qbobj_Group_t bad_member = named("second");
    qbobj_User_t nobody = member(-20);
    bad_member.SecondaryMember = &nobody;
    qbobj_Group_t good = named("first");
    good._link = &bad_member;
    refused(qbobj_addGroup, good, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (0) in SecondaryMember.");

    qbobj_Group_t bad_quota = named("third");
    qbobj_Quota_t nowhere = quota("data/none", 5);
    bad_quota.GroupQuota = &nowhere;
    refused(qbobj_addGroup, bad_quota, QBOBJ_ERROR_DB_MISC,
            "Failed DB Query for 'INSERT group_quota'. NOT NULL constraint failed: group_quota.share_id");
}

TEST_F(Groups, DeletedGroupIsMarkedAndHoldsItsName)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,101),(100,100);"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) VALUES(101,5,8,10),(100,5,8,10);"
        "INSERT INTO _group_quota_stat(share_id,group_id,mb_used) VALUES(5,101,3),(5,100,3);"
        "INSERT INTO group_acl(share_id,group_id,proto) VALUES(5,101,'cifs')");
    qbobj_Group_t group = named(nullptr, 101);
    ASSERT_OK(qbobj_deleteGroup(qbdb, db, &group, &err));
    EXPECT_STREQ("guild", group.GroupName);
    EXPECT_EQ("guild -1", this->group(101));
    for (const char *table : {"group_quota", "_group_quota_stat", "`$group_has_user`"})
        EXPECT_EQ("100", value(std::string("SELECT group_concat(group_id) FROM ") + table)) << table;
    EXPECT_EQ("101", value("SELECT group_id FROM group_acl"));
    refused(qbobj_addGroup, named("guild"), QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS,
            "Group (guild) already exists.");
}

TEST_F(Groups, DeletionIsRefused)
{
    refused(qbobj_deleteGroup, named(nullptr, 0), QBOBJ_ERROR_API_ARGS, "Invalid resource_id (0)");
    refused(qbobj_deleteGroup, named(nullptr, 999), QBOBJ_ERROR_API_ARGS,
            "Invalid resource_id (999). Not exist.");
    qbobj_Group_t primary = named(nullptr, 100);
    qbobj_Group_t first = named(nullptr, 101);
    first._link = &primary;
    refused(qbobj_deleteGroup, first, QBOBJ_ERROR_UI__CANT_DELETE_PRIMARY_GROUP,
            "Cannot remove group, has users.");
}

TEST_F(Groups, RenameReportsTheOldName)
{
    const struct {
        const char *name;
        const char *old_name;
        const char *stored;
    } cases[] = {
        {"lodge", "guild", "lodge 0"},
        {"lodge", nullptr, "lodge 0"},
        {nullptr, nullptr, "lodge 0"},
    };
    for (const auto &expected : cases) {
        qbobj_Group_t group = named(expected.name, 101);
        group.OldGroupName = "before";
        ASSERT_OK(qbobj_modifyGroup(qbdb, db, &group, &err));
        EXPECT_STREQ(expected.old_name, group.OldGroupName);
        EXPECT_EQ(expected.stored, this->group(101));
    }
}

TEST_F(Groups, ModificationIsRefused)
{
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(100,101)");
    const std::string long_name(40, 'a');
    const std::string too_long = "GroupName is too long (" + long_name + ")";
    const struct {
        qbobj_Group_t group;
        qbobj_error_t code;
        const char *message;
    } cases[] = {
        {named("x", 0), QBOBJ_ERROR_API_ARGS, "Invalid resource_id (0)."},
        {named("x", 999), QBOBJ_ERROR_API_ARGS, "Invalid resource_id (999). Not exist."},
        {named("", 101), QBOBJ_ERROR_API_ARGS, "Invalid GroupName ()"},
        {named(long_name.c_str(), 101), QBOBJ_ERROR_UI__NAME_TOO_LONG, too_long.c_str()},
        {named("Staff", 101), QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS,
         "Cannot rename to group which already exists (Staff)."},
    };
    for (const auto &expected : cases) {
        refused(qbobj_modifyGroup, expected.group, expected.code, expected.message);
        EXPECT_STREQ("qbobj_api2_modify_group", err.file);
    }

    qbobj_User_t nobody = member(0);
    qbobj_Group_t group = named("lodge");
    group.resource_id = 101;
    group.SecondaryMember = &nobody;
    refused(qbobj_modifyGroup, group, QBOBJ_ERROR_API_ARGS, "Invalid resource_id (101) in SecondaryMember.");
    EXPECT_STREQ("qbobj_api2_modify_group", err.file);
    // In directory mode names are compared with directory groups only; the database still refuses the clash.
    join_directory();
    refused(qbobj_modifyGroup, named("staff", 101), QBOBJ_ERROR_UI__GROUPNAME_ALREADY_EXISTS,
            "Specified group name already exists");
}

TEST_F(Groups, ModificationSetsQuotasByShare)
{
    sql("INSERT INTO share(id,zfs_name,name,volume_id,path) "
        "VALUES(7,'data/films','films','data','/data/films');"
        "INSERT INTO group_quota(group_id,share_id,mb_soft,mb_hard) "
        "VALUES(101,5,8,10),(101,6,8,10),(100,5,1,1)");
    qbobj_Quota_t films = quota("data/films", 3);
    qbobj_Quota_t music = quota("data/music", 0);
    music._link = &films;
    qbobj_Group_t group = named(nullptr, 101);
    group.GroupQuota = &music;
    ASSERT_OK(qbobj_modifyGroup(qbdb, db, &group, &err));
    EXPECT_EQ((std::vector<std::string>{"100|5|1|1", "101|5|8|10", "101|7|240|3"}),
              rows("SELECT group_id,share_id,mb_soft,mb_hard FROM group_quota ORDER BY 1,2"));
}

TEST_F(Groups, ModificationReplacesMembers)
{
    qbobj_User_t third = member(102);
    qbobj_User_t second = member(101, nullptr);
    second._link = &third;
    qbobj_User_t first = member(100);
    first._link = &second;
    const struct {
        qbobj_User_t *members;
        const char *ids;
    } cases[] = {
        {&third, "102"},   {&first, "100"}, // up to the first without a name
        {&second, "NULL"}, {&third, "102"}, {nullptr, "NULL"},
    };
    sql("INSERT INTO `$group_has_user`(user_id,group_id) VALUES(101,100),(101,101)");
    for (const auto &expected : cases) {
        qbobj_Group_t group = named(nullptr, 101);
        group.SecondaryMember = expected.members;
        ASSERT_OK(qbobj_modifyGroup(qbdb, db, &group, &err));
        EXPECT_EQ(expected.ids,
                  value("SELECT group_concat(user_id) FROM `$group_has_user` WHERE group_id=101"));
    }
    EXPECT_EQ("101", value("SELECT user_id FROM `$group_has_user` WHERE group_id=100"));
}

TEST_F(Groups, NothingGivenIsNothingToDo)
{
    const std::string before = content();
    for (const Operation operation : {qbobj_addGroup, qbobj_deleteGroup, qbobj_modifyGroup})
        EXPECT_OK(operation(qbdb, db, nullptr, &err));
    EXPECT_EQ(before, content());
}

} // namespace
