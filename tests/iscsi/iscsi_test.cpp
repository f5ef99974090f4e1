// LUN groups, initiators, LUNs and access lists stored and read again, what is refused, and the ids of names.
#include "database.h"

#include <algorithm>

using qbobj_test::dump;

namespace
{

using Rows = std::vector<std::string>;
using ISCSI = qbobj_test::Database;

TEST_F(ISCSI, WhatIsStoredIsReadAgain)
{
    qbobj_LunGroup_t groups[] = {{&groups[1], nullptr, "vault", "iqn.x:vault", 0, 1, "s'cret"},
                                 {nullptr, nullptr, "Archive", nullptr, 1, 0, nullptr}};
    ASSERT_OK(qbobj_addLunGroup(qbdb, db, groups, &err));
    qbobj_LunGroupCollection_t all_groups{};
    ASSERT_OK(qbobj_getLunGroupCollection(qbdb, db, &all_groups, &err));
    groups[0]._link = nullptr;
    groups[1]._link = &groups[0];
    groups[1].Target = groups[1].ChapSecret = "";
    EXPECT_EQ(dump("LunGroup", &groups[1]), dump("LunGroup", all_groups.LunGroup));
    qbobj_LunGroup_t group{};
    group.Name = "vault";
    ASSERT_OK(qbobj_getLunGroup(qbdb, db, &group, &err));
    EXPECT_EQ(dump("LunGroup", &groups[0]), dump("LunGroup", &group));

    qbobj_Initiator_t initiators[] = {{&initiators[1], nullptr, "iqn.x:b", 1, "se\"cret"},
                                      {nullptr, nullptr, "IQN.x:a", 0, nullptr}};
    ASSERT_OK(qbobj_addInitiator(qbdb, db, initiators, &err));
    qbobj_InitiatorCollection_t all_initiators{};
    ASSERT_OK(qbobj_getInitiatorCollection(qbdb, db, &all_initiators, &err));
    initiators[0]._link = nullptr;
    initiators[1]._link = &initiators[0];
    initiators[1].ChapSecret = "";
    EXPECT_EQ(dump("Initiator", &initiators[1]), dump("Initiator", all_initiators.Initiator));
    qbobj_Initiator_t initiator{};
    initiator.Name = "iqn.x:b";
    ASSERT_OK(qbobj_getInitiator(qbdb, db, &initiator, &err));
    EXPECT_EQ(dump("Initiator", &initiators[0]), dump("Initiator", &initiator));

    qbobj_Lun_t luns[] = {{&luns[1], nullptr, "disk", "vault", 7}, {nullptr, nullptr, "tape", nullptr, 0}};
    ASSERT_OK(qbobj_addLun(qbdb, db, luns, &err));
    qbobj_Lun_t lun{};
    lun.Name = "disk";
    ASSERT_OK(qbobj_getLun(qbdb, db, &lun, &err));
    luns[0]._link = nullptr;
    EXPECT_EQ(dump("Lun", &luns[0]), dump("Lun", &lun));
    lun.Name = "tape";
    ASSERT_OK(qbobj_getLun(qbdb, db, &lun, &err));
    EXPECT_STREQ("", lun.LunGroup);
}

TEST_F(ISCSI, ChangesRewriteAllButTheName)
{
    sql("INSERT INTO `$iscsi_lun_group` VALUES(1,'a','t',1,1,'s'),(2,'b','t',1,1,'s'),(3,'c','t',1,1,'s');"
        "INSERT INTO `$iscsi_initiator` VALUES(1,'a',1,'s'),(2,'b',1,'s'),(3,'c',1,'s')");
    qbobj_LunGroup_t groups[] = {{&groups[1], nullptr, "a", nullptr, 0, 1, "new"},
                                 {&groups[2], nullptr, "none", "x", 0, 0, "x"},
                                 {nullptr, nullptr, "b", "u", 1, 0, nullptr}};
    ASSERT_OK(qbobj_modifyLunGroup(qbdb, db, groups, &err));
    EXPECT_EQ((Rows{"1|a|NULL|0|1|new", "2|b|u|1|0|NULL", "3|c|t|1|1|s"}),
              rows("SELECT * FROM `$iscsi_lun_group`"));
    qbobj_Initiator_t initiators[] = {{&initiators[1], nullptr, "a", 0, "new"},
                                      {nullptr, nullptr, "b", 1, nullptr}};
    ASSERT_OK(qbobj_modifyInitiator(qbdb, db, initiators, &err));
    EXPECT_EQ((Rows{"1|a|0|new", "2|b|1|NULL", "3|c|1|s"}), rows("SELECT * FROM `$iscsi_initiator`"));
}

TEST_F(ISCSI, WhatIsDeletedLeavesWhatNamesIt)
{
    sql("INSERT INTO `$iscsi_lun_group` (name) VALUES('g'),('h'); INSERT INTO `$iscsi_initiator` (name) "
        "VALUES('i:1'),('j'); INSERT INTO `$iscsi_lun` (name,lun_group) VALUES('l','g'),('m','g');"
        "INSERT INTO `$iscsi_lun_group_access` VALUES('g','i:1')");
    for (int i = 0; i < 2; i++) { // what is gone is no error
        ASSERT_OK(qbobj_deleteLunGroup(qbdb, db, "g", &err));
        ASSERT_OK(qbobj_deleteInitiator(qbdb, db, "i:1", &err));
        ASSERT_OK(qbobj_deleteLun(qbdb, db, "l", &err));
    }
    EXPECT_EQ((Rows{"h"}), rows("SELECT name FROM `$iscsi_lun_group`"));
    EXPECT_EQ((Rows{"j"}), rows("SELECT name FROM `$iscsi_initiator`"));
    EXPECT_EQ((Rows{"m|g"}), rows("SELECT name,lun_group FROM `$iscsi_lun`"));
    EXPECT_EQ((Rows{"g|i:1"}), rows("SELECT * FROM `$iscsi_lun_group_access`"));
}

TEST_F(ISCSI, AccessLists)
{
    for (const auto &[group, initiator] :
         {std::pair{"g", "b"}, {"g", "a"}, {"g", "b"}, {"h", "b"}, {"h", "c"}})
        ASSERT_OK(qbobj_addLunGroupAccessList(qbdb, db, group, initiator, &err));
    sql("INSERT INTO `$iscsi_lun_group_access` VALUES('g',NULL)");
    const auto names = [this](const char *group) {
        unsigned int counted = 77;
        EXPECT_OK(qbobj_getLunGroupAccessList(qbdb, db, group, nullptr, &counted, &err));
        std::vector<char *> initiators(counted + 1);
        unsigned int entries = 77;
        EXPECT_OK(qbobj_getLunGroupAccessList(qbdb, db, group, initiators.data(), &entries, &err));
        EXPECT_EQ(counted, entries);
        EXPECT_EQ(nullptr, initiators[counted]);
        Rows found(initiators.begin(), initiators.begin() + entries);
        std::sort(found.begin(), found.end());
        return found;
    };
    EXPECT_EQ((Rows{"", "a", "b"}), names("g"));
    EXPECT_EQ((Rows{"b", "c"}), names("h"));
    EXPECT_EQ(Rows{}, names("none"));
    ASSERT_OK(qbobj_deleteIniFromLunGroupAccessList(qbdb, db, "b", &err));
    EXPECT_EQ((Rows{"", "a"}), names("g"));
    ASSERT_OK(qbobj_deleteLunGroupAccessList(qbdb, db, "g", &err));
    EXPECT_EQ((Rows{"h|c"}), rows("SELECT * FROM `$iscsi_lun_group_access`"));
}

TEST_F(ISCSI, WhatIsRefused)
{
    qbobj_LunGroup_t groups[] = {{&groups[1], nullptr, "g", "", 0, 0, ""}, {}};
    qbobj_Initiator_t initiators[] = {{&initiators[1], nullptr, "i", 0, ""}, {}};
    qbobj_Lun_t luns[] = {{&luns[1], nullptr, "l", "", 0}, {}};
    // Each call fails in its turn, and the log tells why.
    const std::pair<int, const char *> missing[] = {
        {qbobj_addLunGroup(qbdb, db, nullptr, &err), "LUN Group cannot be NULL."},
        {qbobj_addLunGroup(qbdb, db, groups, &err), "LUN Group Name cannot be NULL."},
        {qbobj_modifyLunGroup(qbdb, db, nullptr, &err), "LUN Group cannot be NULL."},
        {qbobj_deleteLunGroup(qbdb, db, nullptr, &err), "LUN Group Name cannot be NULL."},
        {qbobj_addInitiator(qbdb, db, nullptr, &err), "iSCSI Initiator cannot be NULL."},
        {qbobj_addInitiator(qbdb, db, initiators, &err), "iSCSI Initiator Name cannot be NULL."},
        {qbobj_modifyInitiator(qbdb, db, nullptr, &err), "iSCSI Initiator cannot be NULL."},
        {qbobj_deleteInitiator(qbdb, db, nullptr, &err), "iSCSI Initiator Name cannot be NULL."},
        {qbobj_addLun(qbdb, db, nullptr, &err), "iSCSI LUN cannot be NULL."},
        {qbobj_addLun(qbdb, db, luns, &err), "iSCSI LUN Name cannot be NULL."},
        {qbobj_deleteLun(qbdb, db, nullptr, &err), "iSCSI LUN Name cannot be NULL."},
    };
    const std::string logged = log();
    std::size_t at = 0;
    for (const auto &[rc, message] : missing) {
        EXPECT_EQ(QBOBJ_ERROR_API_ARGS, rc) << message;
        at = logged.find(std::string(" ") + message, at + 1);
        ASSERT_NE(logged.npos, at) << message;
    }
    for (const char *table : {"$iscsi_lun_group", "$iscsi_initiator", "$iscsi_lun"})
        EXPECT_EQ("0", value("SELECT COUNT(*) FROM `" + std::string(table) + "`")) << "a chain left rows";

    groups[1].Name = "g"; // twice
    EXPECT_FAILS(qbobj_addLunGroup(qbdb, db, groups, &err), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'INSERT INTO `$iscsi_lun_group`'. UNIQUE constraint failed: "
                 "$iscsi_lun_group.name");
    EXPECT_FAILS(qbobj_getLunGroup(qbdb, db, groups, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row selected from `$iscsi_lun_group` for resource_id=g.");
    EXPECT_FAILS(qbobj_getInitiator(qbdb, db, initiators, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row selected from `$iscsi_initiator` for resource_id=i.");
    EXPECT_FAILS(qbobj_getLun(qbdb, db, luns, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row selected from `$iscsi_lun` for resource_id=l.");
    EXPECT_FAILS(qbobj_getLunGroupAccessList(qbdb, db, "g", nullptr, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "Entries cannot be NULL.");
}

TEST_F(ISCSI, IdsOfNames)
{
    sql("INSERT INTO `$iscsi_lun` (id,name) VALUES(11,'l'); INSERT INTO `$iscsi_lun_group` (id,name) "
        "VALUES(12,'g:1'); INSERT INTO `$iscsi_initiator` (id,name) VALUES(13,'i'),(14,'iqn.x:i')");
    EXPECT_EQ(11, qbobj_getLunId(qbdb, db, "l", &err));
    EXPECT_EQ(-1, qbobj_getLunId(qbdb, db, "none", &err));
    EXPECT_EQ(-2, qbobj_getLunId(qbdb, db, "l:1", &err));
    EXPECT_EQ(-2, qbobj_getLunId(qbdb, db, nullptr, &err));
    EXPECT_EQ(12, qbobj_getLunGroupId(qbdb, db, "g:1", &err));
    EXPECT_EQ(-1, qbobj_getLunGroupId(qbdb, db, "none", &err));
    EXPECT_EQ(-1, qbobj_getLunGroupId(qbdb, db, nullptr, &err));
    EXPECT_EQ(13, qbobj_getInitiatorId(qbdb, db, "i", &err));
    EXPECT_EQ(-1, qbobj_getInitiatorId(qbdb, db, "none", &err));
    EXPECT_EQ(-2, qbobj_getInitiatorId(qbdb, db, "iqn.x:i", &err));
    EXPECT_EQ(nullptr, err.msg);
    EXPECT_NE(log().npos, log().find("LUN name 'l:1' is invalid."));
    EXPECT_NE(log().npos, log().find("Initiator name 'iqn.x:i' is invalid."));
}

} // namespace
