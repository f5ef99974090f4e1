// IP addresses, networks, hosts and lists of them, MAC addresses and TCP ports.
#include "core/call.h"
#include "validate/ascii.h"
#include "validate/validate.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <netdb.h>
#include <netinet/in.h>
#include <optional>
#include <span>
#include <string_view>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace qbobj
{
namespace
{

// Whether scanf() finds exactly the N numbers of the pattern, which ends with "%1s" to catch what follows
// them. The pattern is the rule, with all that scanf() lets pass: a sign, and blanks in front of a number or
// at the end.
template <std::size_t N>
bool scan(const char *text, const char *pattern, std::array<unsigned, N> &numbers)
{
    char rest[2];
    const auto fields = [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return std::sscanf(text, pattern, &numbers[I]..., rest);
    };
    return fields(std::make_index_sequence<N>{}) == static_cast<int>(N);
}

// A negative number has become a huge one.
bool are_bytes(std::span<const unsigned> numbers)
{
    return std::ranges::all_of(numbers, [](unsigned n) { return n <= 255; });
}

struct network {
    uint32_t address;
    unsigned length;
};

template <std::size_t N>
std::optional<std::array<unsigned, N>> scan_bytes(const char *text, const char *pattern)
{
    std::array<unsigned, N> numbers;
    if (scan(text, pattern, numbers) && are_bytes(numbers))
        return numbers;
    return std::nullopt;
}

uint32_t join(std::span<const unsigned> octets)
{
    uint32_t address = 0;
    unsigned shift = 24;
    for (const unsigned octet : octets) {
        address |= octet << shift;
        shift -= 8;
    }
    return address;
}

// Networks of class A, B and C by their leading octets alone.
std::optional<network> scan_classful(const char *net)
{
    if (const auto a = scan_bytes<1>(net, "%3u%1s"))
        return network{join(*a), 8};
    if (const auto b = scan_bytes<2>(net, "%3u.%3u%1s"))
        return network{join(*b), 16};
    if (const auto c = scan_bytes<3>(net, "%3u.%3u.%3u%1s"))
        return network{join(*c), 24};
    return std::nullopt;
}

// The address keeps its host bits here, unlike with a prefix length; callers depend on either.
std::optional<network> scan_with_mask(const char *net)
{
    const auto numbers = scan_bytes<8>(net, "%3u.%3u.%3u.%3u/%3u.%3u.%3u.%3u%1s");
    if (!numbers)
        return std::nullopt;
    const std::span<const unsigned, 8> octets(*numbers);
    const uint32_t mask = join(octets.last<4>());
    const int ones = std::countl_one(mask);
    if (ones < 1 || ones > 31 || ones != std::popcount(mask))
        return std::nullopt;
    return network{join(octets.first<4>()), static_cast<unsigned>(ones)};
}

std::optional<network> scan_with_length(const char *net)
{
    std::array<unsigned, 5> numbers;
    if (!scan(net, "%3u.%3u.%3u.%3u/%2u%1s", numbers))
        return std::nullopt;
    const std::span<const unsigned, 4> octets(numbers.data(), 4);
    const unsigned length = numbers[4];
    if (!are_bytes(octets) || length < 1 || length > 31)
        return std::nullopt;
    return network{join(octets) & ~uint32_t{0} << (32 - length), length};
}

std::optional<network> scan_net(const char *net)
{
    if (const auto found = scan_classful(net))
        return found;
    if (const auto found = scan_with_mask(net))
        return found;
    return scan_with_length(net);
}

const char *print_net(apr_pool_t *pool, const network &net)
{
    return qb::print(pool, "%u.%u.%u.%u/%u", net.address >> 24, net.address >> 16 & 255,
                     net.address >> 8 & 255, net.address & 255, net.length);
}

// Group lengths are not examined.
int check_ipv6(std::string_view text)
{
    if (text.empty())
        return 2;
    int singles = 0;
    int doubles = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with("::")) {
            ++doubles;
            ++i;
        } else if (text[i] == ':') {
            ++singles;
        } else if (!qbobj::ascii::is_hex_digit(text[i]) && text[i] != '.') {
            return 1;
        }
    }
    if (doubles == 0)
        return singles == 7 ? 0 : 2;
    if (doubles > 1)
        return 4;
    return singles >= 7 ? 3 : 0;
}

// The first failure among the items of a null-terminated list.
template <class Check>
int check_each(const char *const *items, Check check)
{
    int code = 0;
    while (code == 0 && *items != nullptr)
        code = check(*items++);
    return code;
}

// -1 when something accepts connections on the port, 0 when nothing does, -2 without a socket.
int probe(const addrinfo &address, int port)
{
    if (port < 0 || port > 65535)
        return 0; // nothing can listen there; the range is the caller's to check
    struct socket_handle {
        int fd;
        ~socket_handle()
        {
            if (fd >= 0)
                close(fd);
        }
    };
    const socket_handle handle{socket(address.ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    if (handle.fd < 0)
        return -2;
    const timeval patience{.tv_sec = 2, .tv_usec = 0};
    setsockopt(handle.fd, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    // The host's address with the port in its place.
    sockaddr_in target = *reinterpret_cast<const sockaddr_in *>(address.ai_addr);
    target.sin_port = htons(static_cast<uint16_t>(port));
    return connect(handle.fd, reinterpret_cast<const sockaddr *>(&target), sizeof target) == 0 ? -1 : 0;
}

} // namespace

int qbobj_validate_ipv4(const char *str)
{
    if (str == nullptr)
        return -1;
    std::array<unsigned, 4> octets;
    if (!scan(str, "%3u.%3u.%3u.%3u%1s", octets))
        return 1;
    return are_bytes(octets) ? 0 : 2;
}

int qbobj_validate_ipv4_address(const char *str)
{
    if (str == nullptr)
        return 2;
    in_addr address;
    return inet_pton(AF_INET, str, &address) == 1 ? 0 : 1;
}

int qbobj_validate_ipv6(const char *str)
{
    return str == nullptr ? -1 : check_ipv6(str);
}

int qbobj_validate_host(const char *host)
{
    return qbobj_validate_hostname(host) == 0 ? 0 : qbobj_validate_ip(host);
}

int qbobj_validate_host_array(const qbobj_env_t &, const char **array, const char ***host_list)
{
    *host_list = array;
    return array == nullptr ? 0 : check_each(array, qbobj_validate_host);
}

int qbobj_validate_host_csv(const qbobj_env_t &env, const char *csv, const char ***host_list)
{
    if (csv == nullptr) {
        *host_list = nullptr;
        return 0;
    }
    const int code = qbdb_csv_to_array(env.qbdb, csv, host_list, nullptr);
    return code != 0 ? code : check_each(*host_list, qbobj_validate_host);
}

int qbobj_validate_ip_csv(const qbobj_env_t &env, const char *csv)
{
    if (csv == nullptr)
        return -1;
    const char **items = nullptr;
    const int code = qbdb_csv_to_array(env.qbdb, csv, &items, nullptr);
    return code != 0 ? code : check_each(items, qbobj_validate_ip);
}

int qbobj_validate_net_ipv4(apr_pool_t *pool, const char *net, const char **canonicalized_net)
{
    const std::optional<network> found = net != nullptr ? scan_net(net) : std::nullopt;
    if (!found)
        return -1;
    if (canonicalized_net != nullptr)
        *canonicalized_net = print_net(pool, *found);
    return 0;
}

int qbobj_validate_net_ipv6(apr_pool_t *pool, const char *net, const char **canonicalized_net)
{
    const std::string_view text = net != nullptr ? net : "";
    const std::size_t slash = text.find('/');
    if (slash == text.npos || check_ipv6(text.substr(0, slash)) != 0)
        return -1;
    const long length = std::strtol(net + slash + 1, nullptr, 10);
    if (length < 1 || length > 127) // a single address is no network
        return -1;
    if (canonicalized_net != nullptr)
        *canonicalized_net = qbobj::copy_text(pool, net);
    return 0;
}

int qbobj_validate_net(apr_pool_t *pool, const char *net, const char **canonicalized_net)
{
    if (qbobj_validate_net_ipv4(pool, net, canonicalized_net) == 0)
        return 0;
    return qbobj_validate_net_ipv6(pool, net, canonicalized_net);
}

int qbobj_validate_allow_host(const qbobj_env_t &env, const char *csv)
{
    if (csv == nullptr)
        return -1;
    const char **items = nullptr;
    const int code = qbdb_csv_to_array(env.qbdb, csv, &items, nullptr);
    if (code != 0)
        return code;
    return check_each(items, [&](const char *item) {
        return qbobj_validate_host(item) == 0 ? 0 : qbobj_validate_net(env.qbdb->pool, item, nullptr);
    });
}

int qbobj_validate_host_or_net(apr_pool_t *pool, const char *host, const char **canonicalized_host)
{
    if (qbobj_validate_host(host) != 0)
        return qbobj_validate_net(pool, host, canonicalized_host);
    *canonicalized_host = host;
    return 0;
}

int qbobj_validate_mac(const char *str)
{
    std::array<unsigned, 6> fields;
    if (!scan(str, "%2x:%2x:%2x:%2x:%2x:%2x%1s", fields))
        return 1;
    return are_bytes(fields) ? 0 : 2;
}

int qbobj_validate_unused_tcp_port(int port)
{
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo("localhost", nullptr, &hints, &found) != 0)
        return -3;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, freeaddrinfo);
    return probe(*addresses, port);
}

} // namespace qbobj

int qbobj_validate_ip(const char *str)
{
    if (str == nullptr)
        return -1;
    return qbobj::qbobj_validate_ipv4(str) == 0 ? 0 : qbobj::qbobj_validate_ipv6(str);
}
