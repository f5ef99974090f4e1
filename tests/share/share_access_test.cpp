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
    // An entry such as {"user_acl", 101, "1,0"}: read, write. Without them there is none.
    void add_entry(const std::string &table, int account, const std::string &proto,
                   const std::string &bits) const
    {
        if (!bits.empty())
            sql("INSERT INTO " + table + " VALUES (" + id_ + "," + std::to_string(account) + ",'" + proto +
                "'," + bits + ")");
    }
    void clear_entries() const
    {
        sql("DELETE FROM user_acl");
        sql("DELETE FROM group_acl");
    }

    std::string access(const char *share, const char *user)
    {
        char *word = nullptr;
        EXPECT_OK(call(qbobj_getShareAccess, share, user, &word));
        return text(word);
    }

    // Is the share filled in the list of what the user may read?
    bool accessible(const char *user, const char *protocol)
    {
        auto collection = cleared(qbobj_clear_ShareCollection);
        EXPECT_OK(call(qbobj_getAccessibleShareCollection, &collection, user, protocol));
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
    } cases[] = {// A writeable default: entries only take writing away.
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
                 {"garbage", none, none, none, "Disabled"}};
    for (const auto &c : cases) {
        set_default("cifs", c.stored);
        clear_entries();
        add_entry("user_acl", 101, "cifs", c.user);
        add_entry("group_acl", 201, "cifs", c.primary);
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
    for (const char *share : {"none", "a/b", static_cast<const char *>(nullptr)})
        EXPECT_EQ("Disabled", access(share, "ann")) << text(share);
    EXPECT_EQ("ReadWrite", access("s", nullptr)) << "the guest account";

    set_default("cifs", "disabled");
    sql("DROP TABLE user_acl");
    EXPECT_EQ("Disabled", access("s", "ann"));
    EXPECT_EQ(QBOBJ_ERROR_OK, err.ec) << "a failure is an answer";
    EXPECT_FAILS(call(qbobj_getShareAccess, "s", "ann", nullptr), bad_args, "Access cannot be NULL.");
}

TEST_F(ShareAccess, OfAPathIsThatOfTheShareThatHoldsIt)
{
    set_default("cifs", "readonly");
    const char *const cases[][2] = {{"/data/s", "ReadOnly"},
                                    {"/data/s/deep/file", "ReadOnly"},
                                    {"/data/sx", "Disabled"},
                                    {nullptr, "Disabled"}};
    for (const auto &[path, access] : cases) {
        char *word = nullptr;
        EXPECT_OK(call(qbobj_getPathAccess, path, "ann", &word));
        EXPECT_STREQ(access, word) << text(path);
    }
    EXPECT_FAILS(call(qbobj_getPathAccess, "/data/s", "ann", nullptr), bad_args, "Access cannot be NULL.");
}

/* ---- The shares that a user may read ------------------------------------------------------------------- */

TEST_F(ShareAccess, ByCifsAGuestNeedsGuestAccess)
{
    EXPECT_FALSE(accessible("ann", "cifs")) << "no options";
    const std::tuple<const char *, int, bool, bool> cases[] = {{"readonly", 0, false, true},
                                                               {"readonly", 1, true, true},
                                                               {"writeable", 0, false, true},
                                                               {"disabled", 1, false, false}};
    for (const auto &[stored, guests, guest, ann] : cases) {
        set_default("cifs", stored);
        sql("UPDATE cifs_share_option SET cifs_guest_access=" + std::to_string(guests));
        EXPECT_EQ(guest, accessible(nullptr, "cifs")) << stored << guests;
        EXPECT_EQ(ann, accessible("ann", "cifs")) << stored << guests;
    }
    add_entry("group_acl", 201, "cifs", read_only);
    EXPECT_TRUE(accessible("ann", "cifs"));
    EXPECT_FALSE(accessible(nullptr, "cifs"));
}

TEST_F(ShareAccess, ByHttpTheListsDecide)
{
    EXPECT_FALSE(accessible("ann", "http")) << "no options";
    // The table of the only entry, null for none.
    const std::tuple<const char *, const char *, int, bool, bool> cases[] = {
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
    for (const auto &[stored, table, account, guest, ann] : cases) {
        set_default("http", stored);
        clear_entries();
        add_entry("user_acl", 102, "cifs", read_write);
        if (table != nullptr)
            add_entry(table, account, "http", no_access); // any entry, whatever it grants
        EXPECT_EQ(guest, accessible(nullptr, "http")) << stored << text(table) << account;
        EXPECT_EQ(ann, accessible("ann", "http")) << stored << text(table) << account;
    }
}

TEST_F(ShareAccess, DeniedSharesStayAsEmptyRecords)
{
    add_share("A");
    sql("INSERT INTO _zfs_stat (share_id,usedbysnapshots) SELECT id,3*1048576 FROM share WHERE name='A'");
    set_default("cifs", "readonly");
    auto collection = cleared(qbobj_clear_ShareCollection);
    EXPECT_OK(call(qbobj_getAccessibleShareCollection, &collection, "ann", "cifs"));
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
        return call(qbobj_getAccessibleShareCollection, &collection, user, protocol);
    };
    EXPECT_FAILS(list("who", "nonsense"), bad_args, "User (who) is invalid.");
    EXPECT_FAILS(list("ann", "nonsense"), bad_args, "ProtocolName (nonsense) is invalid");
    EXPECT_FAILS(list("ann", nullptr), bad_args, "ProtocolName ((null)) is invalid");
    EXPECT_EQ(nullptr, collection.Share);
    EXPECT_FAILS(call(qbobj_getAccessibleShareCollection, nullptr, "ann", "cifs"), bad_args,
                 "collection cannot be NULL.");

    add_share("second");
    EXPECT_FAILS(list("ann", "afp"), QBOBJ_ERROR_OOM, "Failed in access check.");
    ASSERT_NE(nullptr, collection.Share);
    EXPECT_EQ(nullptr, collection.Share->_link) << "the walk ends with the first share";
}

TEST_F(ShareAccess, AFailingCheckEndsTheList)
{
    set_default("cifs", "disabled");
    set_default("http", "readonly");
    const std::string cases[][3] = {{"group_acl", "cifs", "user_acl(cifs)"},
                                    {"group_acl", "http", "group_acl(http)"},
                                    {"user_acl", "cifs", "user_acl(cifs)"},
                                    {"user_acl", "http", "user_acl(http)"},
                                    {"http_share_option", "http", "http_share_option"}};
    for (const auto &[table, protocol, read] : cases) {
        const std::string logged =
            "Failed DB Query for 'SELECT " + read + "'. (no such table: " + table + ")";
        sql("ALTER TABLE " + table + " RENAME TO gone");
        auto collection = cleared(qbobj_clear_ShareCollection);
        EXPECT_FAILS(call(qbobj_getAccessibleShareCollection, &collection, "ann", protocol.c_str()),
                     QBOBJ_ERROR_OOM, "Failed in access check.");
        EXPECT_STREQ("qbobj_api2_get_share", err.file);
        EXPECT_NE(std::string::npos, log().find(logged)) << log();
        sql("ALTER TABLE gone RENAME TO " + table);
    }
}

} // namespace
