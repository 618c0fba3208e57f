#include "system/Watchdog.hpp"

#include "system/Notification.hpp"
#include "system/Text.hpp"

#include <cstdlib>
#include <unistd.h>

namespace cimom {
namespace {

std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

std::chrono::microseconds period() {
    const std::string_view process = environment("WATCHDOG_PID");
    if (!process.empty() && process != std::to_string(::getpid()))
        return std::chrono::microseconds(0);
    return std::chrono::microseconds(number<std::int64_t>(environment("WATCHDOG_USEC")).value_or(0)) / 2;
}

} // namespace

Watchdog::Watchdog(boost::asio::io_context& io)
    : m_timer(io)
    , m_period(period()) {}

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

} // namespace cimom
