#include "http/NetworkAddress.hpp"

#include "util/Descriptor.hpp"
#include "util/Number.hpp"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <system_error>

namespace http {
namespace {

template <class Address>
Address& as(sockaddr_storage& storage) {
    return reinterpret_cast<Address&>(storage);
}

std::optional<NetworkAddress> ipv4(const std::string& text, std::uint16_t port) {
    NetworkAddress result;
    auto& address = as<sockaddr_in>(result.address);
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    result.size = sizeof address;
    if (::inet_pton(AF_INET, text.c_str(), &address.sin_addr) != 1)
        return std::nullopt;
    return result;
}

std::optional<NetworkAddress> ipv6(const std::string& text, std::uint16_t port) {
    NetworkAddress result;
    auto& address = as<sockaddr_in6>(result.address);
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(port);
    result.size = sizeof address;
    if (::inet_pton(AF_INET6, text.c_str(), &address.sin6_addr) != 1)
        return std::nullopt;
    return result;
}

[[noreturn]] void fail(const NetworkAddress& address) {
    throw std::system_error(errno, std::generic_category(), textOf(address));
}

} // namespace

std::optional<NetworkAddress> networkAddress(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const std::string address = colon == std::string::npos ? "" : text.substr(0, colon);
    const auto port = util::number<std::uint16_t>(text.substr(colon == std::string::npos ? 0 : colon + 1));
    if (!port)
        return std::nullopt;
    if (address.empty())
        return ipv4("127.0.0.1", *port);
    if (address.front() == '[' && address.back() == ']')
        return ipv6(address.substr(1, address.size() - 2), *port);
    return ipv4(address, *port);
}

std::optional<NetworkAddress> networkAddress(const std::string& text, std::uint16_t defaultPort) {
    const std::optional<NetworkAddress> complete = networkAddress(text);
    return complete ? complete : networkAddress(text + ":" + std::to_string(defaultPort));
}

bool isLoopback(const NetworkAddress& address) {
    if (address.address.ss_family == AF_INET6)
        return IN6_IS_ADDR_LOOPBACK(&reinterpret_cast<const sockaddr_in6&>(address.address).sin6_addr);
    const auto& ipv4 = reinterpret_cast<const sockaddr_in&>(address.address);
    return ntohl(ipv4.sin_addr.s_addr) >> 24 == IN_LOOPBACKNET;
}

std::string textOf(const NetworkAddress& address) {
    char text[INET6_ADDRSTRLEN] = "";
    if (address.address.ss_family == AF_INET6) {
        const auto& ipv6 = reinterpret_cast<const sockaddr_in6&>(address.address);
        ::inet_ntop(AF_INET6, &ipv6.sin6_addr, text, sizeof text);
        return "[" + std::string(text) + "]:" + std::to_string(ntohs(ipv6.sin6_port));
    }
    const auto& ipv4 = reinterpret_cast<const sockaddr_in&>(address.address);
    ::inet_ntop(AF_INET, &ipv4.sin_addr, text, sizeof text);
    return std::string(text) + ":" + std::to_string(ntohs(ipv4.sin_port));
}

NetworkSocket listenOn(const NetworkAddress& address) {
    const int family = address.address.ss_family;
    util::Descriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket.isOpen())
        fail(address);
    const int yes = 1;
    // Without it the port of a server that has just ended stays taken for a while.
    ::setsockopt(socket.number(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    // [::] means all addresses of IPv6, not those of IPv4, too.
    if (family == AF_INET6)
        ::setsockopt(socket.number(), IPPROTO_IPV6, IPV6_V6ONLY, &yes, sizeof yes);
    NetworkAddress at = address;
    const auto* const where = reinterpret_cast<const sockaddr*>(&address.address);
    if (::bind(socket.number(), where, address.size) != 0 || ::listen(socket.number(), SOMAXCONN) != 0 ||
        ::getsockname(socket.number(), reinterpret_cast<sockaddr*>(&at.address), &at.size) != 0)
        fail(address);
    return {socket.release(), at};
}

} // namespace http
