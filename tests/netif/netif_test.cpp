// Network interfaces stored and read again, what is refused, and what a change touches.
#include "database.h"

using qbobj_test::dump;

namespace
{

using Netif = qbobj_NetworkInterface_t;
constexpr qbobj_error_t args = QBOBJ_ERROR_API_ARGS;

class NetworkInterface : public qbobj_test::Database
{
  protected:
    static Netif device(const char *name)
    {
        return {nullptr,    nullptr,    name,       "0:1:a:B:c:ff", "it's static",
                "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.1",     "any mask"};
    }
    int add(Netif netif) { return qbobj_addNetworkInterface(qbdb, db, &netif, &err); }
    int modify(Netif netif) { return qbobj_modifyNetworkInterface(qbdb, db, &netif, &err); }

    // Members with a value that is refused, last checked first: each is found before those that are wrong already.
    void
    expect_refused(decltype(qbobj_addNetworkInterface) operation, Netif netif,
                   const std::vector<std::tuple<const char * Netif::*, const char *, const char *>> &cases)
    {
        const std::string before = content();
        for (const auto &[member, value, message] : cases) {
            netif.*member = value;
            EXPECT_FAILS(operation(qbdb, db, &netif, &err), args, message);
        }
        EXPECT_EQ(before, content());
    }
};

TEST_F(NetworkInterface, WhatIsStoredIsReadAgainByName)
{
    for (const char *name : {"b", "C", "a"})
        ASSERT_OK(add(device(name)));
    qbobj_NetworkInterfaceCollection_t all{};
    ASSERT_OK(qbobj_getNetworkInterfaceCollection(qbdb, db, &all, &err));
    Netif expected[] = {device("a"), device("b"), device("C")};
    expected[0]._link = &expected[1];
    expected[1]._link = &expected[2];
    EXPECT_EQ(dump("NetworkInterface", expected), dump("NetworkInterface", all.NetworkInterface));

    Netif asked[2]{};
    asked[0].Name = "a";
    asked[0]._link = &asked[1];
    EXPECT_FAILS(qbobj_getNetworkInterface(qbdb, db, asked, &err), QBOBJ_ERROR_DB_MISC,
                 "NetworkInterface Name cannot be NULL.");
    asked[1].Name = "A";
    EXPECT_FAILS(qbobj_getNetworkInterface(qbdb, db, asked, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "NetworkInterface Name=A not exist.");
    asked[1].Name = "b";
    ASSERT_OK(qbobj_getNetworkInterface(qbdb, db, asked, &err));
    expected[1]._link = nullptr;
    EXPECT_EQ(dump("NetworkInterface", expected), dump("NetworkInterface", asked));
}

TEST_F(NetworkInterface, AdditionsThatAreRefused)
{
    expect_refused(qbobj_addNetworkInterface, device("x"),
                   {{&Netif::Gateway, "g", "Invalid NetworkInterface Gateway (g)"},
                    {&Netif::DNS2, "1.2.3", "Invalid NetworkInterface DNS2 (1.2.3)"},
                    {&Netif::DNS1, "::1", "Invalid NetworkInterface DNS1 (::1)"},
                    {&Netif::IP, "1.2.3.256", "Invalid NetworkInterface IP (1.2.3.256)"},
                    {&Netif::Mac, "", "Invalid NetworkInterface Mac ()"},
                    {&Netif::Mac, nullptr, "Invalid NetworkInterface Mac ((null))"},
                    {&Netif::Name, "a/b", "Invalid NetworkInterface Name (a/b)"},
                    {&Netif::Name, nullptr, "Invalid NetworkInterface Name ((null))"}});
    Netif bare{};
    bare.Name = bare.IP = "";
    bare.Mac = "1:2:3:4:5:6";
    ASSERT_OK(add(bare));
    EXPECT_EQ(std::vector<std::string>{"|1:2:3:4:5:6|NULL||NULL|NULL|NULL|NULL"},
              rows("SELECT * FROM network_if"));
    EXPECT_FAILS(add(bare), args, "NetworkInterface Name () is already exist.");
    EXPECT_OK(qbobj_addNetworkInterface(qbdb, db, nullptr, &err));
}

TEST_F(NetworkInterface, ChangeTouchesWhatIsGiven)
{
    const Netif given = device("a");
    ASSERT_OK(add(given));
    for (const auto member : {&Netif::Mac, &Netif::Protocol, &Netif::IP, &Netif::DNS1, &Netif::DNS2,
                              &Netif::Gateway, &Netif::Subnet}) {
        Netif change{};
        change.Name = "a";
        change.*member = member == &Netif::Mac ? "9:9:9:9:9:9" : "9.9.9.9";
        Netif expected = given;
        if (member == &Netif::Subnet)
            EXPECT_FAILS(modify(change), args, "Nothing to change of NetworkInterface (a).");
        else {
            EXPECT_OK(modify(change));
            expected.*member = change.*member;
        }
        Netif read{};
        read.Name = "a";
        EXPECT_OK(qbobj_getNetworkInterface(qbdb, db, &read, &err));
        EXPECT_EQ(dump("NetworkInterface", &expected), dump("NetworkInterface", &read));
        EXPECT_OK(modify(given));
    }
    Netif cleared{};
    cleared.Name = "a";
    cleared.IP = cleared.DNS1 = cleared.DNS2 = cleared.Gateway = "";
    EXPECT_OK(modify(cleared));
    EXPECT_EQ("", value("SELECT ip||dns1||dns2||gateway FROM network_if"));
    cleared.Name = "none";
    EXPECT_OK(modify(cleared));
}

TEST_F(NetworkInterface, ChangesThatAreRefused)
{
    ASSERT_OK(add(device("a")));
    const std::string long_text(500, 'x');
    expect_refused(
        qbobj_modifyNetworkInterface, device("a"),
        {{&Netif::Protocol, long_text.c_str(), "The value of column 'protocol' is too long for the update."},
         {&Netif::Gateway, "g", "NetworkInterface Gateway (g) is invalid."},
         {&Netif::DNS2, "1.2.3", "NetworkInterface DNS2 (1.2.3) is invalid."},
         {&Netif::DNS1, "::1", "NetworkInterface DNS1 (::1) is invalid."},
         {&Netif::IP, "1.2.3.256", "NetworkInterface IP (1.2.3.256) is invalid."},
         {&Netif::Mac, "", "NetworkInterface Mac () is invalid."},
         {&Netif::Name, nullptr, "NetworkInterface Name cannot be NULL."}});
}

TEST_F(NetworkInterface, DeletionIsWholeOrNothing)
{
    ASSERT_OK(add(device("a")));
    Netif chain[] = {device("a"), device("b")};
    chain[0]._link = &chain[1];
    EXPECT_FAILS(qbobj_deleteNetworkInterface(qbdb, db, chain, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                 "None of row is deleted. Specifie Name (b) is not exist.");
    chain[1].Name = nullptr;
    EXPECT_FAILS(qbobj_deleteNetworkInterface(qbdb, db, chain, &err), args,
                 "NetworkInterface Name cannot be NULL.");
    EXPECT_EQ("1", value("SELECT COUNT(*) FROM network_if"));
    chain[0]._link = nullptr;
    EXPECT_OK(qbobj_deleteNetworkInterface(qbdb, db, chain, &err));
    EXPECT_EQ("0", value("SELECT COUNT(*) FROM network_if"));
}

} // namespace
