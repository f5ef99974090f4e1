// Names and ids of existing rows.
#include "database.h"
#include "validate/validate.h"

using namespace qbobj;

namespace
{

class ValidateDb : public qbobj_test::Database
{
  protected:
    ValidateDb()
    {
        sql("INSERT INTO `$user`(id,uname,rid,is_privileged) VALUES(100,'bob',NULL,0),(101,'carol',NULL,0),"
            "(-20,'Ada',20,0),(-21,'bob',21,0),(-22,'admin',22,0);"
            "INSERT INTO `$group`(id,gname,rid,is_privileged) VALUES(100,'staff',NULL,0),(-7,'Crew',7,0),"
            "(-8,'admin',8,0);"
            "INSERT INTO share(id,zfs_name,name,volume_id,path) VALUES"
            "(5,'data/photos','photos','data','/data/photos'),(6,'data/music','music','data','/data/music')");
    }

    static constexpr int untouched = -1000;
    Call call{{qbdb, &err}, db};
};

TEST_F(ValidateDb, AccountNames)
{
    // The ids of a user or group, untouched when the name is not found.
    const std::tuple<bool, const char *, int, int> cases[] = {
        {false, "bob", 100, -21},
        {false, "BOB", 100, untouched},
        {false, "Ada", untouched, -20},
        {false, "carol", 101, untouched},
        {false, "admin", 95, 95}, // the privileged one wins
        {false, "b' OR '1'='1", untouched, untouched},
        {false, nullptr, untouched, untouched},
        {true, "staff", 100, untouched},
        {true, "STAFF", 100, untouched},
        {true, "Crew", untouched, -7},
        {true, "crew", untouched, untouched},
        {true, "admin", 95, 95},
        {true, nullptr, untouched, untouched}};
    for (const bool directory : {false, true}) {
        if (directory)
            join_directory();
        Call anew({qbdb, &err}, db); // a call asks for the mode once
        for (const auto &[group, name, local, domain] : cases) {
            SCOPED_TRACE(testing::Message() << (name ? name : "(null)") << directory);
            const auto validate = group ? qbobj_validate_db_groupname : qbobj_validate_db_username;
            const int id = directory ? domain : local;
            for (const bool as_default : {false, true}) {
                int found = untouched;
                EXPECT_EQ(id == untouched ? 1 : 0, validate(anew, as_default ? nullptr : name, name, &found));
                EXPECT_EQ(id, found);
            }
        }
    }
    EXPECT_EQ(nullptr, err.msg);
}

TEST_F(ValidateDb, AccountIdsTellMissingFromFailing)
{
    for (const auto validate : {qbobj_validate_db_userid, qbobj_validate_db_groupid}) {
        EXPECT_EQ(0, validate(call, 100));
        EXPECT_EQ(1, validate(call, 999));
    }
    EXPECT_EQ(0, qbobj_validate_db_userid(call, -20));
    sql("ALTER TABLE `$user` RENAME TO a; ALTER TABLE `$group` RENAME TO b");
    EXPECT_EQ(2, qbobj_validate_db_userid(call, 100));
    EXPECT_EQ(2, qbobj_validate_db_groupid(call, 100));
    EXPECT_EQ(nullptr, err.msg);
    EXPECT_NE(std::string::npos, log().find("qbobj_validate_db:"));
}

TEST_F(ValidateDb, NamesOfOtherRows)
{
    sql("INSERT INTO backup(id,name) VALUES(3,'nightly');"
        "INSERT INTO `$iscsi_lun`(id,name) VALUES(11,'lun');"
        "INSERT INTO `$iscsi_lun_group`(id,name) VALUES(12,'target');"
        "INSERT INTO `$iscsi_initiator`(id,name) VALUES(13,'iqn')");
    using Validator = int (*)(Call &, const char *, const char *, int *);
    const Validator job = [](Call &one, const char *name, const char *, int *id) {
        return qbobj_validate_db_jobname(one, name, id);
    };
    const Validator path = [](Call &one, const char *name, const char *, int *id) {
        return qbobj_validate_db_path_in_share(one, name, id);
    };
    // The id of a row, 0 when it is not found.
    const std::tuple<Validator, const char *, int> cases[] = {{qbobj_validate_db_sharename, "Photos", 5},
                                                              {qbobj_validate_db_sharename, "films", 0},
                                                              {qbobj_validate_db_sharename, nullptr, 0},
                                                              {qbobj_validate_db_zfsname, "data/music", 6},
                                                              {qbobj_validate_db_zfsname, "music", 0},
                                                              {path, "/data/photos", 5},
                                                              {path, "/data/photos/2024/a.jpg", 5},
                                                              {path, "/DATA/Music/x", 6},
                                                              {path, "/data/photos2", 0},
                                                              {path, "/data", 0},
                                                              {path, nullptr, 0},
                                                              {job, "nightly", 3},
                                                              {job, "weekly", 0},
                                                              {job, nullptr, 0},
                                                              {qbobj_validate_db_lunname, "lun", 11},
                                                              {qbobj_validate_db_lunname, "target", 0},
                                                              {qbobj_validate_db_lungroupname, "target", 12},
                                                              {qbobj_validate_db_lungroupname, "iqn", 0},
                                                              {qbobj_validate_db_initiatorname, "iqn", 13},
                                                              {qbobj_validate_db_initiatorname, "lun", 0}};
    for (const auto &[validate, name, expected] : cases) {
        SCOPED_TRACE(name ? name : "(null)");
        int id = 0;
        EXPECT_EQ(expected == 0 ? 1 : 0, validate(call, name, nullptr, &id));
        EXPECT_EQ(expected, id);
    }
    // A default is only used without a name.
    int id = 0;
    EXPECT_EQ(1, qbobj_validate_db_sharename(call, "nothing here", "photos", &id));
    EXPECT_EQ(0, qbobj_validate_db_sharename(call, nullptr, "photos", &id));
    EXPECT_EQ(5, id);
}

TEST_F(ValidateDb, Volumes)
{
    sql("UPDATE _volume SET id='id-of-data' WHERE lv_name='data'");
    char *by_name = nullptr;
    EXPECT_EQ(0, qbobj_validate_db_volumename(call, "data", nullptr, &by_name));
    EXPECT_STREQ("id-of-data", by_name);
    EXPECT_EQ(0, qbobj_validate_db_volumename(call, "none", "data", &by_name));
    EXPECT_EQ(nullptr, by_name);
    EXPECT_EQ(1, qbobj_validate_db_volumename(call, nullptr, nullptr, &by_name));

    const char *id = nullptr;
    EXPECT_EQ(0, qbobj_validate_db_volumeid(call, "id-of-data", &id));
    EXPECT_STREQ("id-of-data", id);
    EXPECT_EQ(1, qbobj_validate_db_volumeid(call, "data", &id));
    EXPECT_EQ(1, qbobj_validate_db_volumeid(call, nullptr, &id));
    sql("UPDATE _volume SET lv_name='c' WHERE lv_name='data'");
    EXPECT_EQ(0, qbobj_validate_db_volumeid(call, nullptr, &id));
    EXPECT_STREQ("id-of-data", id);
    sql("ALTER TABLE _volume RENAME TO away");
    EXPECT_EQ(1, qbobj_validate_db_volumename(call, "data", nullptr, &by_name));
    EXPECT_EQ(1, qbobj_validate_db_volumeid(call, "id-of-data", &id));
}

TEST_F(ValidateDb, ListsOfNames)
{
    int nothing = 0;
    int *ids = nullptr;
    int length = 0;
    const auto outcome = [&](int code) {
        std::string text = std::to_string(code) + ":";
        for (int i = 0; ids != nullptr && i < length; ++i)
            text += " " + std::to_string(ids[i]);
        text += ids == nullptr ? " none" : "";
        ids = &nothing;
        length = 5;
        return text;
    };
    const auto users = [&](const char *csv) {
        return outcome(qbobj_validate_db_username_csv(call, csv, &ids, &length));
    };
    EXPECT_EQ("0: 100 101", users("bob, carol"));
    EXPECT_EQ("1: 101 0 0",
              users("carol,nobody here,bob")); // those behind the first unknown one are not filled
    EXPECT_EQ("0: none", users(nullptr));
    EXPECT_EQ("0: 100", outcome(qbobj_validate_db_groupname_csv(call, "staff", &ids, &length)));
    EXPECT_EQ("0:", outcome(qbobj_validate_db_groupname_csv(call, "", &ids, &length)));

    const char *names[] = {"carol", "BOB", nullptr};
    EXPECT_EQ("0: 101 100", outcome(qbobj_validate_db_username_array(call, names, &ids, &length)));
    EXPECT_EQ("0:", outcome(qbobj_validate_db_username_array(call, names + 2, &ids, &length)));
    const char *groups[] = {"staff", "users", nullptr};
    EXPECT_EQ("0: 100 99", outcome(qbobj_validate_db_groupname_array(call, groups, &ids, &length)));
    EXPECT_EQ("0: none", outcome(qbobj_validate_db_groupname_array(call, nullptr, &ids, &length)));
    EXPECT_EQ(0, qbobj_validate_db_groupname_array(call, groups, &ids, nullptr));
    EXPECT_EQ(99, ids[1]);
}

} // namespace
