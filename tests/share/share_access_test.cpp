// What a user may do with a share.
#include "share_rows.h"

using namespace qbobj_test;

namespace
{

// The share "s", and the user ann (101), whose primary group is 201 and who is a listed member of 202.
class ShareAccess : public Shares
{
  protected:
    void SetUp() override
    {
        id_ = std::to_string(add_share("s"));
        add_group(201, "primary");
        add_group(202, "listed");
        add_user(101, "ann", 201);
        sql("INSERT INTO `$group_has_user` VALUES (101,202)");
    }

    void set_default(const std::string &proto, const std::string &access) const
    {
        sql("INSERT OR REPLACE INTO " + proto + "_share_option (share_id," + proto + "_access) VALUES (" +
            id_ + ",'" + access + "')");
    }
    // An entry such as {"user_acl", 101, "1,0"}: read, write.
    void add_entry(const std::string &table, int account, const std::string &proto,
                   const std::string &bits) const
    {
        sql("INSERT INTO " + table + " VALUES (" + id_ + "," + std::to_string(account) + ",'" + proto + "'," +
            bits + ")");
    }
    void clear_entries() const
    {
        sql("DELETE FROM user_acl");
        sql("DELETE FROM group_acl");
    }

    std::string access(const char *share, const char *user)
    {
        char *word = nullptr;
        EXPECT_OK(qbobj_getShareAccess(qbdb, db, share, user, &word, &err));
        return text(word);
    }

    // Is the share filled in the list of what the user may read?
    bool accessible(const char *user, const char *protocol)
    {
        auto collection = cleared(qbobj_clear_ShareCollection);
        EXPECT_OK(qbobj_getAccessibleShareCollection(qbdb, db, &collection, user, protocol, &err));
        EXPECT_NE(nullptr, collection.Share);
        return collection.Share != nullptr && collection.Share->ShareName != nullptr;
    }

    std::string id_;
};

constexpr const char *none = "", *no_access = "0,0", *read_only = "1,0", *read_write = "1,1";

TEST_F(ShareAccess, FollowsDefaultAndEntriesOfUserAndGroups)
{
    const struct {
        const char *stored;
        const char *user;    // ann's own entry
        const char *primary; // of her primary group
        const char *listed;  // of the group that lists her
        const char *access;
    } cases[] = {
        // A writeable default: entries only take writing away.
        {"writeable", none, none, none, "ReadWrite"},
        {"writeable", read_only, none, none, "ReadOnly"},
        {"writeable", read_only, none, read_write, "ReadOnly"},
        {"writeable", none, read_only, none, "ReadOnly"},
        {"writeable", none, none, read_only, "ReadOnly"},
        {"writeable", read_write, none, none, "ReadWrite"},
        {"writeable", no_access, none, none, "ReadOnly"},
        // A read-only default: entries only grant.
        {"readonly", none, none, none, "ReadOnly"},
        {"readonly", read_write, none, none, "ReadWrite"},
        {"readonly", none, read_write, none, "ReadWrite"},
        {"readonly", none, none, read_write, "ReadWrite"},
        {"readonly", no_access, none, none, "ReadOnly"},
        // No default access: reading too must be granted.
        {"disabled", none, none, none, "Disabled"},
        {"disabled", read_only, none, none, "ReadOnly"},
        {"disabled", none, read_only, none, "ReadOnly"},
        {"disabled", none, none, read_write, "ReadWrite"},
        {"disabled", no_access, no_access, no_access, "Disabled"},
        {"garbage", none, none, none, "Disabled"},
    };
    for (const auto &c : cases) {
        set_default("cifs", c.stored);
        clear_entries();
        if (c.user != none)
            add_entry("user_acl", 101, "cifs", c.user);
        if (c.primary != none)
            add_entry("group_acl", 201, "cifs", c.primary);
        if (c.listed != none)
            add_entry("group_acl", 202, "cifs", c.listed);
        // Of another protocol and another user: without effect.
        add_entry("user_acl", 101, "afp", no_access);
        add_entry("user_acl", 102, "cifs", read_only);
        EXPECT_EQ(c.access, access("s", "ann"))
            << c.stored << " user:" << c.user << " primary:" << c.primary << " listed:" << c.listed;
    }
}

TEST_F(ShareAccess, IsDisabledForWhateverIsNotKnown)
{
    EXPECT_EQ("Disabled", access("s", "ann")) << "no options for Windows clients";
    set_default("cifs", "writeable");
    EXPECT_EQ("ReadWrite", access("s", "ann"));
    EXPECT_EQ("Disabled", access("s", "nobody here"));
    EXPECT_EQ("Disabled", access("none", "ann"));
    EXPECT_EQ("Disabled", access("a/b", "ann"));
    EXPECT_EQ("Disabled", access(nullptr, "ann"));
    EXPECT_EQ("ReadWrite", access("s", nullptr)) << "the guest account";

    set_default("cifs", "disabled");
    sql("DROP TABLE user_acl");
    EXPECT_EQ("Disabled", access("s", "ann"));
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec) << "a failure is an answer";
    EXPECT_FAILS(qbobj_getShareAccess(qbdb, db, "s", "ann", nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "Access cannot be NULL.");
}

TEST_F(ShareAccess, OfAPathIsThatOfTheShareThatHoldsIt)
{
    set_default("cifs", "readonly");
    const struct {
        const char *path;
        const char *access;
    } cases[] = {{"/data/s", "ReadOnly"},
                 {"/data/s/deep/file", "ReadOnly"},
                 {"/data/sx", "Disabled"},
                 {"/data", "Disabled"},
                 {nullptr, "Disabled"}};
    for (const auto &c : cases) {
        char *word = nullptr;
        EXPECT_OK(qbobj_getPathAccess(qbdb, db, c.path, "ann", &word, &err));
        EXPECT_STREQ(c.access, word) << text(c.path);
    }
    EXPECT_FAILS(qbobj_getPathAccess(qbdb, db, "/data/s", "ann", nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "Access cannot be NULL.");
}

/* ---- The shares that a user may read ------------------------------------------------------------------- */

TEST_F(ShareAccess, ByCifsAGuestNeedsGuestAccess)
{
    EXPECT_FALSE(accessible("ann", "cifs")) << "no options";
    const struct {
        const char *stored;
        int guests;
        bool guest;
        bool ann;
    } cases[] = {{"readonly", 0, false, true},
                 {"readonly", 1, true, true},
                 {"writeable", 0, false, true},
                 {"disabled", 1, false, false}};
    for (const auto &c : cases) {
        set_default("cifs", c.stored);
        sql("UPDATE cifs_share_option SET cifs_guest_access=" + std::to_string(c.guests));
        EXPECT_EQ(c.guest, accessible(nullptr, "cifs")) << c.stored << c.guests;
        EXPECT_EQ(c.ann, accessible("ann", "cifs")) << c.stored << c.guests;
    }
    add_entry("group_acl", 201, "cifs", read_only);
    EXPECT_TRUE(accessible("ann", "cifs"));
    EXPECT_FALSE(accessible(nullptr, "cifs"));
}

TEST_F(ShareAccess, ByHttpTheListsDecide)
{
    EXPECT_FALSE(accessible("ann", "http")) << "no options";
    const struct {
        const char *stored;
        const char *table; // of the only entry; null: none
        int account;
        bool guest;
        bool ann;
    } cases[] = {
        {"readonly", nullptr, 0, true, true},
        {"writeable", nullptr, 0, true, true},
        {"readonly", "user_acl", 101, false, true},
        {"readonly", "user_acl", 102, false, false},
        {"readonly", "group_acl", 202, false, true},
        {"writeable", "group_acl", 201, false, false}, // a primary group does not count
        {"disabled", nullptr, 0, false, false},
        {"disabled", "user_acl", 101, false, true},
        {"disabled", "group_acl", 202, false, true},
        {"disabled", "group_acl", 201, false, true}, // here it does
    };
    for (const auto &c : cases) {
        set_default("http", c.stored);
        clear_entries();
        add_entry("user_acl", 102, "cifs", read_write);
        if (c.table != nullptr)
            add_entry(c.table, c.account, "http", no_access); // any entry, whatever it grants
        EXPECT_EQ(c.guest, accessible(nullptr, "http")) << c.stored << text(c.table) << c.account;
        EXPECT_EQ(c.ann, accessible("ann", "http")) << c.stored << text(c.table) << c.account;
    }
}

TEST_F(ShareAccess, DeniedSharesStayAsEmptyRecords)
{
    add_share("A");
    sql("INSERT INTO _zfs_stat (share_id,usedbysnapshots) SELECT id,3*1048576 FROM share WHERE name='A'");
    set_default("cifs", "readonly");
    auto collection = cleared(qbobj_clear_ShareCollection);
    EXPECT_OK(qbobj_getAccessibleShareCollection(qbdb, db, &collection, "ann", "cifs", &err));
    const qbobj_Share_t *denied = collection.Share;
    ASSERT_NE(nullptr, denied);
    EXPECT_EQ("3|NULL", fields(denied->resource_id, denied->ShareId));
    EXPECT_EQ(nullptr, denied->Stat);
    const qbobj_Share_t *granted = denied->_link;
    ASSERT_NE(nullptr, granted);
    EXPECT_EQ(nullptr, granted->resource_id) << "the space of its snapshots is not known";
    EXPECT_STREQ("data/s", granted->ShareId);
    EXPECT_NE(nullptr, granted->Cifs);
    EXPECT_NE(nullptr, granted->Stat);
    EXPECT_EQ(nullptr, granted->_link);
}

TEST_F(ShareAccess, RefusesUnknownUsersAndProtocols)
{
    auto collection = cleared(qbobj_clear_ShareCollection);
    const auto list = [&](const char *user, const char *protocol) {
        return qbobj_getAccessibleShareCollection(qbdb, db, &collection, user, protocol, &err);
    };
    EXPECT_FAILS(list("who", "nonsense"), QBOBJ_ERROR_API_ARGS, "User (who) is invalid.");
    EXPECT_FAILS(list("ann", "nonsense"), QBOBJ_ERROR_API_ARGS, "ProtocolName (nonsense) is invalid");
    EXPECT_FAILS(list("ann", nullptr), QBOBJ_ERROR_API_ARGS, "ProtocolName ((null)) is invalid");
    EXPECT_EQ(nullptr, collection.Share);
    EXPECT_FAILS(qbobj_getAccessibleShareCollection(qbdb, db, nullptr, "ann", "cifs", &err),
                 QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");

    add_share("second");
    EXPECT_FAILS(list("ann", "afp"), QBOBJ_ERROR_OOM, "Failed in access check.");
    ASSERT_NE(nullptr, collection.Share);
    EXPECT_EQ(nullptr, collection.Share->_link) << "the walk ends with the first share";
}

TEST_F(ShareAccess, AFailingCheckEndsTheList)
{
    set_default("cifs", "disabled");
    set_default("http", "readonly");
    const struct {
        const char *table;
        const char *protocol;
        const char *logged;
    } cases[] = {
        {"group_acl", "cifs", "Failed DB Query for 'SELECT user_acl(cifs)'. (no such table: group_acl)"},
        {"group_acl", "http", "Failed DB Query for 'SELECT group_acl(http)'. (no such table: group_acl)"},
        {"user_acl", "cifs", "Failed DB Query for 'SELECT user_acl(cifs)'. (no such table: user_acl)"},
        {"user_acl", "http", "Failed DB Query for 'SELECT user_acl(http)'. (no such table: user_acl)"},
        {"http_share_option", "http",
         "Failed DB Query for 'SELECT http_share_option'. (no such table: http_share_option)"},
    };
    for (const auto &c : cases) {
        sql(std::string("DROP TABLE IF EXISTS ") + c.table);
        auto collection = cleared(qbobj_clear_ShareCollection);
        EXPECT_FAILS(qbobj_getAccessibleShareCollection(qbdb, db, &collection, "ann", c.protocol, &err),
                     QBOBJ_ERROR_OOM, "Failed in access check.");
        EXPECT_STREQ("qbobj_api2_get_share", err.file);
        EXPECT_NE(std::string::npos, log().find(c.logged)) << log();
    }
}

} // namespace
