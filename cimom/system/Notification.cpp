#include "system/Notification.hpp"

#include "system/Descriptor.hpp"
#include "system/Log.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>

namespace cimom {
namespace {

/** Sends a datagram to a socket; 0 or the error. A name that begins with "@" is an abstract one, unix(7). */
int sendTo(const std::string& name, const std::string& message) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= sizeof address.sun_path)
        return ENAMETOOLONG;
    name.copy(address.sun_path, name.size());
    if (name.front() == '@')
        address.sun_path[0] = '\0';
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const auto* const to = reinterpret_cast<const sockaddr*>(&address);
    if (::sendto(socket.number(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT, to, size) < 0)
        return errno;
    return 0;
}

} // namespace

void notifyServiceManager(const std::string& state) {
    const char* const name = std::getenv("NOTIFY_SOCKET");
    if (!name || !*name)
        return;
    if (const int error = sendTo(name, state))
        log("telling " + std::string(name) + " " + state + ": " + std::strerror(error));
}

} // namespace cimom
