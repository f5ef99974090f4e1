// Addresses, networks, hosts, lists of them, and ports.
#include "codes.h"
#include "pool_env.h"
#include "validate/validate.h"

#include <arpa/inet.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

using namespace qbobj;

namespace
{

using qbobj_test::expect_codes;
using qbobj_test::PoolEnv;
using Texts = std::vector<std::string>;

TEST(Addresses, Ipv4)
{
    const auto ipv4 = qbobj_validate_ipv4;
    expect_codes(ipv4, {{0, {"1.2.3.4", "255.255.255.255", "0.0.0.0", "001.002.003.004", " 1. 2.3.4 "}}});
    expect_codes(ipv4, {{1, {"", "1.2.3", "1.2.3.", "1.2.3.4x", "1.2.3.4 x", "1.2.3.4.5", "1.2.3.4567"}}});
    expect_codes(ipv4, {{1, {"1 .2.3.4", "a.b.c.d", "0x1.2.3.4"}}, {-1, {nullptr}}});
    expect_codes(ipv4, {{2, {"1.2.3.256", "999.2.3.4", "-1.2.3.4"}}});
    // The system's own reading.
    expect_codes(qbobj_validate_ipv4_address,
                 {{0, {"1.2.3.4"}}, {1, {" 1.2.3.4", "1.2.3.256", "1.2.3", "", "::1"}}, {2, {nullptr}}});
}

TEST(Addresses, Ipv6)
{
    // The lengths of groups do not count.
    const auto ipv6 = qbobj_validate_ipv6;
    expect_codes(ipv6, {{0, {"::", ":::", "fe80::1", "FE80::abcd", "::ffff:1.2.3.4", "1:2:3:4:5:6:7:8"}}});
    expect_codes(ipv6, {{0, {"12345::fffff", "1:2:3:4:5:6:7::"}}, {-1, {nullptr}}});
    expect_codes(ipv6, {{1, {"g::1", "fe80::1%eth0", "::1/64", "\xC3::"}}, {3, {"1:2:3:4:5:6:7:8::"}}});
    expect_codes(ipv6, {{2, {"", ":", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:8:9", "1.2.3.4"}}});
    expect_codes(ipv6, {{4, {"1::2::3", "::::"}}});
}

TEST(Addresses, AnIpIsEitherAndAHostAlsoAName)
{
    const auto ip = qbobj_validate_ip;
    expect_codes(ip, {{0, {"1.2.3.4", "::1"}}, {-1, {nullptr}}, {1, {"nas"}}, {2, {"1.2.3.256", ""}}});
    expect_codes(ip, {{3, {"1:2:3:4:5:6:7:8::"}}, {4, {"1::2::3"}}});
    const auto host = qbobj_validate_host;
    expect_codes(host, {{0, {"nas.local", "192.168.1.1", "fe80::1"}}, {-1, {nullptr}}, {1, {"my nas"}}});
    expect_codes(host, {{2, {"", "a..b", "300.1.1.1"}}});
}

TEST(Addresses, Mac)
{
    expect_codes(qbobj_validate_mac, {{0, {"00:1a:2B:ff:0:9"}},
                                      {1,
                                       {"", "00:1a:2b:3c:4d", "00:1a:2b:3c:4d:5e:6f", "00:1a:2b:3c:4d:5ex",
                                        "001:1a:2b:3c:4d:5e", "00-1a-2b-3c-4d-5e", "0g:1a:2b:3c:4d:5e"}},
                                      {2, {"-1:1a:2b:3c:4d:5e"}}});
}

// Each of the texts between bars is what is given, and, for an accepted one, "=" and its canonical form.
void expect_networks(int (*validate)(apr_pool_t *, const char *, const char **), const char *cases)
{
    PoolEnv env;
    std::istringstream texts(cases);
    for (std::string text; std::getline(texts, text, '|');) {
        const std::size_t end = text.find('=');
        const std::string given = text.substr(0, end);
        const char *net = nullptr;
        EXPECT_EQ(end == text.npos ? -1 : 0, validate(env.pool(), given.c_str(), &net)) << given;
        EXPECT_EQ(end == text.npos ? "" : text.substr(end + 1), or_empty(net));
    }
    EXPECT_EQ(-1, validate(env.pool(), nullptr, nullptr));
}

TEST(Networks, Ipv4)
{
    const char *const cases =
        "10=10.0.0.0/8|172.16=172.16.0.0/16|192.168.1=192.168.1.0/24|"
        "192.168.1.77/255.255.255.0=192.168.1.77/24|10.1.2.3/128.0.0.0=10.1.2.3/1|10.1.2.3/"
        "255.255.255.254=10.1.2.3/31|192.168.1.77/24=192.168.1.0/24|"
        "255.255.255.255/1=128.0.0.0/1|10.255.255.255/8=10.0.0.0/8|10.255.255.255/9=10.128.0.0/9|"
        "10.255.255.255/16=10.255.0.0/16|10.255.255.255/17=10.255.128.0/17|"
        "10.255.255.255/25=10.255.255.128/25|10.255.255.255/31=10.255.255.254/31|"
        // Refused, the last one without any text.
        "256|1234|172.256|192.168.256|192.168.1.|10x|-1|1.2.3.4|10.0.0.0/255.255.255.255|10.0.0.0/0.0.0.0|"
        "10.0.0.0/255.0.255.0|10.0.0.0/0.255.255.255|10.0.0.0/255.255.256.0|10.0.0.256/255.255.255.0|"
        "10.0.0.0/0|10.0.0.0/32|10.0.0.0/-1|10.0.0.0/240|10.0.0.0/|10.0.0.0/24x|10.0.0.256/24|10/8||";
    expect_networks(qbobj_validate_net_ipv4, cases);
    expect_networks(qbobj_validate_net, cases);
}

TEST(Networks, Ipv6IsKeptAsGiven)
{
    const char *const cases =
        "fe80::/64=fe80::/64|::/1=::/1|1:2:3:4:5:6:7:8/127=1:2:3:4:5:6:7:8/127|"
        "fe80::/64 trailing=fe80::/64 trailing|fe80::/128|fe80::/0|fe80::/|fe80::/x|fe80::/-1|fe80::|/64||"
        "g::/64|fe80::/99999999999999999999|fe80::/18446744073709551680";
    expect_networks(qbobj_validate_net_ipv6, cases);
    expect_networks(qbobj_validate_net, cases);
    PoolEnv env;
    const char *const given = "fe80::/64";
    const char *net = nullptr;
    EXPECT_EQ(0, qbobj_validate_net_ipv6(env.pool(), given, &net));
    EXPECT_NE(given, net) << "not a copy";
    EXPECT_EQ(0, qbobj_validate_net(env.pool(), given, nullptr));
}

TEST(Networks, HostOrNetYieldsTheHostItselfOrTheCanonicalNetwork)
{
    expect_networks(qbobj_validate_host_or_net,
                    "nas=nas|10.0.0.1=10.0.0.1|::1=::1|10.0.0.1/24=10.0.0.0/24|fe80::/64=fe80::/64|"
                    "10=10.0.0.0/8|10.0.0.1/32|my nas");
}

Texts items(const char *const *list)
{
    Texts found;
    for (; list != nullptr && *list != nullptr; ++list)
        found.emplace_back(*list);
    return found;
}

TEST(Lists, HostsAreAllChecked)
{
    PoolEnv env;
    const char **list = nullptr;
    EXPECT_EQ(0, qbobj_validate_host_csv(env, "nas.local,10.0.0.1,::1", &list));
    EXPECT_EQ((Texts{"nas.local", "10.0.0.1", "::1"}), items(list));
    EXPECT_EQ(1, qbobj_validate_host_csv(env, "nas,my nas,1::2::3", &list));
    EXPECT_EQ(4, qbobj_validate_host_csv(env, "nas,1::2::3,my nas", &list));
    EXPECT_EQ(0, qbobj_validate_host_csv(env, "", &list));
    EXPECT_TRUE(items(list).empty());
    EXPECT_EQ(0, qbobj_validate_host_csv(env, nullptr, &list));
    EXPECT_EQ(nullptr, list);

    const char *array[] = {"nas", "300.1.1.1", nullptr};
    EXPECT_EQ(2, qbobj_validate_host_array(env, array, &list));
    EXPECT_EQ(array, list);
    EXPECT_EQ(0, qbobj_validate_host_array(env, array + 2, &list));
    EXPECT_EQ(0, qbobj_validate_host_array(env, nullptr, &list));
    EXPECT_EQ(nullptr, list);
}

TEST(Lists, IpsAndAllowedHostsAreAllChecked)
{
    PoolEnv env;
    expect_codes([&](const char *csv) { return qbobj_validate_ip_csv(env, csv); },
                 {{0, {"10.0.0.1,::1"}},
                  {-1, {nullptr}},
                  {1, {"10.0.0.1,nas,1::2::3"}},
                  {4, {"10.0.0.1,1::2::3,nas"}}});
    expect_codes([&](const char *csv) { return qbobj_validate_allow_host(env, csv); },
                 {{0, {"nas,10.0.0.1,::1,10,10.0.0.0/8,fe80::/64"}},
                  {-1, {nullptr, "nas,10.0.0.0/32", "my nas,nas"}}});
}

TEST(Ports, APortIsUnusedUntilSomethingListens)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *any = reinterpret_cast<sockaddr *>(&address);
    ASSERT_EQ(0, ::bind(listener, any, size));
    ASSERT_EQ(0, ::getsockname(listener, any, &size));
    const int port = ntohs(address.sin_port);
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(port));
    ASSERT_EQ(0, ::listen(listener, 1));
    EXPECT_EQ(-1, qbobj_validate_unused_tcp_port(port));
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(port + 65536)) << "not the same port";
    EXPECT_EQ(0, qbobj_validate_unused_tcp_port(-1));
    ::close(listener);
}

} // namespace
