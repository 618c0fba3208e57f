#include "client/UnixSocket.hpp"

#include "OW_SocketException.hpp"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace OpenWBEM {
namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
    OW_THROW(SocketException, ("Failed to connect to: " + path + ": " + reason).c_str());
}

[[noreturn]] void fail(const std::string& path, int error) {
    fail(path, std::to_string(error) + "(" + std::strerror(error) + ")");
}

// Bounds how long connect() may block; false when nothing of the time is left.
bool boundConnect(int socket, Clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
    if (left.count() <= 0)
        return false;
    timeval bound{};
    bound.tv_sec = static_cast<time_t>(left.count() / 1000000);
    bound.tv_usec = static_cast<suseconds_t>(left.count() % 1000000);
    return ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &bound, sizeof bound) == 0;
}

// Connects while the socket still blocks: a full backlog makes connect() wait here, and SO_SNDTIMEO bounds
// the wait (unix(7)), while on a non-blocking socket it would fail at once.
void connect(int socket, const std::string& path, std::chrono::milliseconds timeout) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const Clock::time_point deadline = Clock::now() + timeout;
    while (boundConnect(socket, deadline)) {
        if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            return;
        if (errno == EAGAIN)
            break;
        if (errno != EINTR)
            fail(path, errno);
    }
    fail(path, "timed out");
}

} // namespace

UnixSocket::UnixSocket(const std::string& path, std::chrono::milliseconds timeout)
    : m_number(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (m_number < 0)
        fail(path, errno);
    try {
        connect(m_number, path, timeout);
    } catch (...) {
        ::close(m_number);
        throw;
    }
}

UnixSocket::~UnixSocket() {
    if (m_number >= 0)
        ::close(m_number);
}

} // namespace OpenWBEM
