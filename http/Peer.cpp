#include "http/Peer.hpp"

#include "http/NetworkAddress.hpp"

#include <algorithm>
#include <cstdint>
#include <netinet/in.h>
#include <sys/socket.h>

namespace http {
namespace {

/** The address without its port; of IPv6 the first half. */
std::string hostOf(NetworkAddress address) {
    if (address.address.ss_family == AF_INET6) {
        auto& ipv6 = reinterpret_cast<sockaddr_in6&>(address.address);
        std::fill(ipv6.sin6_addr.s6_addr + 8, ipv6.sin6_addr.s6_addr + 16, std::uint8_t{0});
    }
    const std::string text = textOf(address);
    return text.substr(0, text.rfind(':'));
}

} // namespace

Peer peerOf(int socket) {
    NetworkAddress address;
    address.size = sizeof address.address;
    ::getpeername(socket, reinterpret_cast<sockaddr*>(&address.address), &address.size);
    const int family = address.address.ss_family;
    if (family == AF_INET || family == AF_INET6)
        return {textOf(address), std::nullopt, hostOf(address)};
    ucred user{};
    socklen_t size = sizeof user;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &user, &size) != 0 ||
        user.uid == static_cast<uid_t>(-1))
        return {"unknown user"};
    return {"uid " + std::to_string(user.uid), user.uid};
}

} // namespace http
