#include "http/Peer.hpp"

#include "http/NetworkAddress.hpp"

#include <sys/socket.h>

namespace cimom {

Peer peerOf(int socket) {
    NetworkAddress address;
    address.size = sizeof address.address;
    ::getpeername(socket, reinterpret_cast<sockaddr*>(&address.address), &address.size);
    const int family = address.address.ss_family;
    if (family == AF_INET || family == AF_INET6)
        return {textOf(address), Access::read, true};
    ucred user{};
    socklen_t size = sizeof user;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &user, &size) != 0 ||
        user.uid == static_cast<uid_t>(-1))
        return {"unknown user", Access::read, false};
    return {"uid " + std::to_string(user.uid), accessOf(user.uid), false};
}

} // namespace cimom
