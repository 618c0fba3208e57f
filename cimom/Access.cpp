#include "Access.hpp"

#include <sys/socket.h>
#include <unistd.h>

namespace cimom {

Access accessOf(uid_t user) {
    const uid_t root = 0;
    return user == root || user == ::geteuid() ? Access::write : Access::read;
}

Access accessOfPeer(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return Access::read;
    return accessOf(peer.uid);
}

} // namespace cimom
