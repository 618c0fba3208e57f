#include "service/ServiceManager.hpp"

#include "service/Log.hpp"
#include "util/Descriptor.hpp"
#include "util/Number.hpp"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace service {
namespace {

std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

/** Sends a datagram to a socket. Returns 0 or the error. A name with "@" in front is an abstract one,
 * unix(7). */
int sendTo(std::string_view name, const std::string& message) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= sizeof address.sun_path)
        return ENAMETOOLONG;
    name.copy(address.sun_path, name.size());
    if (name.front() == '@')
        address.sun_path[0] = '\0';
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    const util::Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const auto* const to = reinterpret_cast<const sockaddr*>(&address);
    if (::sendto(socket.number(), message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT, to, size) < 0)
        return errno;
    return 0;
}

/** Half of the time that the service manager allows; 0 if it does not watch this process. */
std::chrono::microseconds watchdogPeriod() {
    const std::string_view process = environment("WATCHDOG_PID");
    if (!process.empty() && process != std::to_string(::getpid()))
        return std::chrono::microseconds(0);
    const std::string_view time = environment("WATCHDOG_USEC");
    return std::chrono::microseconds(util::number<std::int64_t>(time).value_or(0)) / 2;
}

} // namespace

void notifyServiceManager(const std::string& state) {
    const std::string_view name = environment("NOTIFY_SOCKET");
    if (name.empty())
        return;
    if (const int error = sendTo(name, state))
        log("cannot notify service manager: " + std::string(name) + ": " + std::strerror(error));
}

Watchdog::Watchdog(boost::asio::io_context& io)
    : m_timer(io)
    , m_period(watchdogPeriod()) {}

void Watchdog::start() {
    if (m_period <= std::chrono::microseconds(0))
        return;
    notifyServiceManager("WATCHDOG=1");
    m_timer.expires_after(m_period);
    m_timer.async_wait([this](const boost::system::error_code& error) {
        if (!error)
            start();
    });
}

} // namespace service
