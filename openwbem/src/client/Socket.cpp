#include "client/Socket.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_SocketException.hpp"

#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <string>
#include <sys/time.h>

namespace OpenWBEM {
namespace {

[[noreturn]] void throwNotConnected(const Endpoint& endpoint, int error) {
    const std::string reason = std::to_string(error) + "(" + std::strerror(error) + ")";
    if (endpoint.path.empty())
        OW_THROW(SocketException, ("SocketBaseImpl::connect() failed: " + reason).c_str());
    OW_THROW(SocketException, ("Failed to connect to: " + endpoint.path + ": " + reason).c_str());
}

[[noreturn]] void throwFailed(const char* call) {
    const int error = errno;
    OW_THROW(
        SocketException,
        (std::string(call) + " failed: " + std::to_string(error) + "(" + std::strerror(error) + ")").c_str());
}

[[noreturn]] void throwTimedOut(const Endpoint& endpoint) {
    if (endpoint.path.empty())
        OW_THROW(SocketException, "SocketBaseImpl::connect() select timedout");
    OW_THROW(SocketException, ("Failed to connect to: " + endpoint.path + ": timed out").c_str());
}

// Limits the time that connect() blocks.
bool setConnectTimeout(int socket, int milliseconds) {
    timeval limit{};
    limit.tv_sec = milliseconds / 1000;
    limit.tv_usec = milliseconds % 1000 * 1000;
    return ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) == 0;
}

// The socket blocks: on a non-blocking Unix-domain socket, connect() fails at once if the backlog is full
// (unix(7)). After SO_SNDTIMEO (socket(7)), connect() fails with EAGAIN on a Unix-domain socket and with
// EINPROGRESS in TCP, or with EALREADY if a signal interrupted an earlier call.
void connect(int socket, const Endpoint& endpoint, const Deadline& deadline) {
    const auto* const address = reinterpret_cast<const sockaddr*>(&endpoint.address);
    for (int left = deadline.left(); left > 0; left = deadline.left()) {
        if (!setConnectTimeout(socket, left))
            throwNotConnected(endpoint, errno);
        if (::connect(socket, address, endpoint.addressSize) == 0)
            return;
        if (errno == EAGAIN || errno == EINPROGRESS || errno == EALREADY)
            break;
        if (errno != EINTR)
            throwNotConnected(endpoint, errno);
    }
    throwTimedOut(endpoint);
}

} // namespace

Socket::Socket(const Endpoint& endpoint, const Deadline& deadline)
    : m_descriptor(::socket(endpoint.address.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (!m_descriptor.isOpen())
        throwNotConnected(endpoint, errno);
    connect(m_descriptor.number(), endpoint, deadline);
    if (endpoint.path.empty()) { // a request is sent in one piece: delaying it gains nothing
        const int yes = 1;
        ::setsockopt(m_descriptor.number(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    }
}

bool Socket::send(std::string_view bytes) {
    return sendBefore(bytes, nullptr);
}

bool Socket::send(std::string_view bytes, const Deadline& deadline) {
    return sendBefore(bytes, &deadline);
}

// Without a deadline, each wait has its own.
bool Socket::sendBefore(std::string_view bytes, const Deadline* deadline) {
    while (!bytes.empty()) {
        const ssize_t sent =
            ::send(m_descriptor.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno == EAGAIN)
            wait(POLLOUT, deadline ? *deadline : Deadline("send", clientTimeouts().send));
        else if (errno == EPIPE || errno == ECONNRESET)
            return false;
        else if (errno != EINTR)
            throwFailed("send()");
    }
    return true;
}

std::size_t Socket::receive(char* to, std::size_t size, const Deadline& deadline) {
    while (true) {
        const ssize_t received = ::recv(m_descriptor.number(), to, size, MSG_DONTWAIT);
        if (received >= 0)
            return static_cast<std::size_t>(received);
        if (errno == EAGAIN)
            wait(POLLIN, deadline);
        else if (errno != EINTR)
            return 0;
    }
}

bool Socket::isQuiet() {
    char byte;
    return ::recv(m_descriptor.number(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0 && errno == EAGAIN;
}

void Socket::wait(short event, const Deadline& deadline) const {
    pollfd waiting{m_descriptor.number(), event, 0};
    for (int ready = 0; ready <= 0;) {
        ready = ::poll(&waiting, 1, deadline.left());
        if (ready < 0 && errno != EINTR && errno != EAGAIN)
            throwFailed("poll()");
        if (ready <= 0 && deadline.left() == 0)
            deadline.expire();
    }
}

} // namespace OpenWBEM
