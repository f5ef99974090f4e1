// Addresses, networks, hosts, lists of them, and ports.
#include "pool_env.h"
#include "validate/validate.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace
{

using qbobj_test::PoolEnv;

struct Case {
    const char *text;
    int code;
};

void expect_codes(int (*validate)(const char *), const std::vector<Case> &cases)
{
    for (const Case &c : cases)
        EXPECT_EQ(c.code, validate(c.text)) << (c.text != nullptr ? c.text : "(null)");
}

TEST(Addresses, Ipv4)
{
    expect_codes(qbobj_validate_ipv4, {{nullptr, -1},
                                       {"1.2.3.4", 0},
                                       {"255.255.255.255", 0},
                                       {"0.0.0.0", 0},
                                       {"001.002.003.004", 0},
                                       {" 1. 2.3.4 ", 0}, // as scanf() reads numbers
                                       {"1.2.3.256", 2},
                                       {"999.2.3.4", 2},
                                       {"-1.2.3.4", 2},
                                       {"", 1},
                                       {"1.2.3", 1},
                                       {"1.2.3.", 1},
                                       {"1.2.3.4x", 1},
                                       {"1.2.3.4 x", 1},
                                       {"1.2.3.4.5", 1},
                                       {"1.2.3.4567", 1},
                                       {"1 .2.3.4", 1},
                                       {"a.b.c.d", 1},
                                       {"0x1.2.3.4", 1}});
}

TEST(Addresses, Ipv4AsTheSystemReadsIt)
{
    expect_codes(
        qbobj_validate_ipv4_address,
        {{nullptr, 2}, {"1.2.3.4", 0}, {" 1.2.3.4", 1}, {"1.2.3.256", 1}, {"1.2.3", 1}, {"", 1}, {"::1", 1}});
}

TEST(Addresses, Ipv6)
{
    expect_codes(qbobj_validate_ipv6, {{nullptr, -1},
                                       {"", 2},
                                       {"::", 0},
                                       {"fe80::1", 0},
                                       {"FE80::abcd", 0},
                                       {"::ffff:1.2.3.4", 0},
                                       {"1:2:3:4:5:6:7:8", 0},
                                       {"12345::fffff", 0}, // lengths of groups do not count
                                       {"1:2:3:4:5:6:7", 2},
                                       {"1:2:3:4:5:6:7:8:9", 2},
                                       {"1.2.3.4", 2},
                                       {":", 2},
                                       {"1::2::3", 4},
                                       {"::::", 4},
                                       {":::", 0},
                                       {"1:2:3:4:5:6:7:8::", 3},
                                       {"1:2:3:4:5:6:7::", 0},
                                       {"g::1", 1},
                                       {"fe80::1%eth0", 1},
                                       {"::1/64", 1},
                                       {"\xC3::", 1}});
}

TEST(Addresses, IpIsEitherAndReportsAsIpv6)
{
    expect_codes(qbobj_validate_ip, {{nullptr, -1},
                                     {"1.2.3.4", 0},
                                     {"::1", 0},
                                     {"1.2.3.256", 2},
                                     {"", 2},
                                     {"nas", 1},
                                     {"1::2::3", 4},
                                     {"1:2:3:4:5:6:7:8::", 3}});
}

TEST(Addresses, HostIsANameOrAnIp)
{
    expect_codes(qbobj_validate_host, {{nullptr, -1},
                                       {"nas.local", 0},
                                       {"192.168.1.1", 0},
                                       {"fe80::1", 0},
                                       {"", 2},
                                       {"a..b", 2},
                                       {"my nas", 1},
                                       {"300.1.1.1", 2}});
}

TEST(Addresses, Mac)
{
    expect_codes(qbobj_validate_mac, {{"00:1a:2B:ff:0:9", 0},
                                      {"", 1},
                                      {"00:1a:2b:3c:4d", 1},
                                      {"00:1a:2b:3c:4d:5e:6f", 1},
                                      {"00:1a:2b:3c:4d:5ex", 1},
                                      {"001:1a:2b:3c:4d:5e", 1},
                                      {"00-1a-2b-3c-4d-5e", 1},
                                      {"0g:1a:2b:3c:4d:5e", 1},
                                      {"-1:1a:2b:3c:4d:5e", 2}});
}

struct Network {
    const char *given;
    const char *canonical; // null: refused
};

TEST(Networks, Ipv4)
{
    PoolEnv env;
    for (const auto &[given, canonical] :
         std::vector<Network>{{"10", "10.0.0.0/8"},
                              {"256", nullptr},
                              {"1234", nullptr},
                              {"172.16", "172.16.0.0/16"},
                              {"172.256", nullptr},
                              {"192.168.1", "192.168.1.0/24"},
                              {"192.168.256", nullptr},
                              {"192.168.1.", nullptr},
                              {"10x", nullptr},
                              {"-1", nullptr},
                              {"1.2.3.4", nullptr},
                              {"192.168.1.77/255.255.255.0", "192.168.1.77/24"},
                              {"10.1.2.3/128.0.0.0", "10.1.2.3/1"},
                              {"10.1.2.3/255.255.255.254", "10.1.2.3/31"},
                              {"10.0.0.0/255.255.255.255", nullptr},
                              {"10.0.0.0/0.0.0.0", nullptr},
                              {"10.0.0.0/255.0.255.0", nullptr},
                              {"10.0.0.0/0.255.255.255", nullptr},
                              {"10.0.0.0/255.255.256.0", nullptr},
                              {"10.0.0.256/255.255.255.0", nullptr},
                              {"192.168.1.77/24", "192.168.1.0/24"},
                              {"255.255.255.255/1", "128.0.0.0/1"},
                              {"10.255.255.255/8", "10.0.0.0/8"},
                              {"10.255.255.255/9", "10.128.0.0/9"},
                              {"10.255.255.255/16", "10.255.0.0/16"},
                              {"10.255.255.255/17", "10.255.128.0/17"},
                              {"10.255.255.255/25", "10.255.255.128/25"},
                              {"10.255.255.255/31", "10.255.255.254/31"},
                              {"10.0.0.0/0", nullptr},
                              {"10.0.0.0/32", nullptr},
                              {"10.0.0.0/-1", nullptr},
                              {"10.0.0.0/240", nullptr},
                              {"10.0.0.0/", nullptr},
                              {"10.0.0.0/24x", nullptr},
                              {"10.0.0.256/24", nullptr},
                              {"10/8", nullptr},
                              {"", nullptr},
                              {nullptr, nullptr}}) {
        const char *net = nullptr;
        EXPECT_EQ(canonical != nullptr ? 0 : -1, qbobj_validate_net_ipv4(env.pool(), given, &net));
        EXPECT_STREQ(canonical, net) << (given != nullptr ? given : "(null)");
        net = nullptr;
        EXPECT_EQ(canonical != nullptr ? 0 : -1, qbobj_validate_net(env.pool(), given, &net));
        EXPECT_STREQ(canonical, net);
    }
}

TEST(Networks, Ipv6IsKeptAsGiven)
{
    PoolEnv env;
    const std::string longest = "1:2:3:4:5:6:7:8/127";
    for (const char *given : {"fe80::/64", "::/1", longest.c_str(), "fe80::/64 trailing"}) {
        const char *net = nullptr;
        EXPECT_EQ(0, qbobj_validate_net_ipv6(env.pool(), given, &net)) << given;
        EXPECT_STREQ(given, net);
        EXPECT_NE(given, net) << "not a copy";
        EXPECT_EQ(0, qbobj_validate_net(env.pool(), given, nullptr)) << given;
    }
    for (const char *given : {"fe80::/128", "fe80::/0", "fe80::/", "fe80::/x", "fe80::/-1", "fe80::", "/64",
                              "", "g::/64", "fe80::/99999999999999999999", "fe80::/18446744073709551680"}) {
        const char *net = nullptr;
        EXPECT_EQ(-1, qbobj_validate_net_ipv6(env.pool(), given, &net)) << given;
        EXPECT_EQ(nullptr, net) << given;
    }
    EXPECT_EQ(-1, qbobj_validate_net_ipv6(env.pool(), nullptr, nullptr));
}

TEST(Networks, HostOrNetYieldsTheHostItselfOrTheCanonicalNetwork)
{
    PoolEnv env;
    for (const auto &[given, canonical] : std::vector<Network>{{"nas", "nas"},
                                                               {"10.0.0.1", "10.0.0.1"},
                                                               {"::1", "::1"},
                                                               {"10.0.0.1/24", "10.0.0.0/24"},
                                                               {"fe80::/64", "fe80::/64"},
                                                               {"10", "10.0.0.0/8"},
                                                               {"10.0.0.1/32", nullptr},
                                                               {"my nas", nullptr},
                                                               {nullptr, nullptr}}) {
        const char *net = nullptr;
        EXPECT_EQ(canonical != nullptr ? 0 : -1, qbobj_validate_host_or_net(env.pool(), given, &net));
        EXPECT_STREQ(canonical, net);
    }
}

std::vector<std::string> items(const char *const *list)
{
    std::vector<std::string> found;
    for (; list != nullptr && *list != nullptr; ++list)
        found.emplace_back(*list);
    return found;
}

TEST(Lists, HostsAreAllChecked)
{
    PoolEnv env;
    const char **list = nullptr;
    EXPECT_EQ(0, qbobj_validate_host_csv(env.get(), "nas.local,10.0.0.1,::1", &list));
    EXPECT_EQ((std::vector<std::string>{"nas.local", "10.0.0.1", "::1"}), items(list));
    EXPECT_EQ(1, qbobj_validate_host_csv(env.get(), "nas,my nas,1::2::3", &list));
    EXPECT_EQ(4, qbobj_validate_host_csv(env.get(), "nas,1::2::3,my nas", &list));
    EXPECT_EQ(0, qbobj_validate_host_csv(env.get(), "", &list));
    EXPECT_TRUE(items(list).empty());
    EXPECT_EQ(0, qbobj_validate_host_csv(env.get(), nullptr, &list));
    EXPECT_EQ(nullptr, list);

    const char *array[] = {"nas", "300.1.1.1", nullptr};
    EXPECT_EQ(2, qbobj_validate_host_array(env.get(), array, &list));
    EXPECT_EQ(array, list);
    EXPECT_EQ(0, qbobj_validate_host_array(env.get(), array + 2, &list));
    EXPECT_EQ(0, qbobj_validate_host_array(env.get(), nullptr, &list));
    EXPECT_EQ(nullptr, list);
}

TEST(Lists, IpsAreAllChecked)
{
    PoolEnv env;
    EXPECT_EQ(-1, qbobj_validate_ip_csv(env.get(), nullptr));
    EXPECT_EQ(0, qbobj_validate_ip_csv(env.get(), "10.0.0.1,::1"));
    EXPECT_EQ(1, qbobj_validate_ip_csv(env.get(), "10.0.0.1,nas,1::2::3"));
    EXPECT_EQ(4, qbobj_validate_ip_csv(env.get(), "10.0.0.1,1::2::3,nas"));
}

TEST(Lists, AllowedHostsMayAlsoBeNetworks)
{
    PoolEnv env;
    EXPECT_EQ(-1, qbobj_validate_allow_host(env.get(), nullptr));
    EXPECT_EQ(0, qbobj_validate_allow_host(env.get(), "nas,10.0.0.1,::1,10,10.0.0.0/8,fe80::/64"));
    EXPECT_EQ(-1, qbobj_validate_allow_host(env.get(), "nas,10.0.0.0/32"));
    EXPECT_EQ(-1, qbobj_validate_allow_host(env.get(), "my nas,nas"));
}

// A socket bound to a free port of the local host.
class Listener
{
  public:
    Listener() : fd_(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        if (bind(fd_, reinterpret_cast<sockaddr *>(&address), size) == 0 &&
            getsockname(fd_, reinterpret_cast<sockaddr *>(&address), &size) == 0)
            port_ = ntohs(address.sin_port);
    }
    ~Listener() { close(fd_); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    int port() const { return port_; }
    bool start() const { return listen(fd_, 1) == 0; }

  private:
    int fd_;
    int port_ = 0;
};

TEST(Ports, APortIsUnusedUntilSomethingListens)
{
    const Listener listener;
    ASSERT_NE(0, listener.port());
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(listener.port()));
    ASSERT_TRUE(listener.start());
    EXPECT_EQ(-1, qbobj_validate_unused_tcp_port(listener.port()));
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(listener.port() + 65536)) << "not the same port";
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(-1));
}

} // namespace
