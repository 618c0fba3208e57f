#ifndef SERVICE_SERVICE_MANAGER_HPP_INCLUDED
#define SERVICE_SERVICE_MANAGER_HPP_INCLUDED
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <string>

namespace service {

/**
 * Notifies the service manager that has started this process of a state such as "READY=1", by the protocol of
 * sd_notify(3): a datagram to the socket that the environment variable NOTIFY_SOCKET names. Does nothing
 * without this variable. Logs a failure.
 */
void notifyServiceManager(const std::string& state);

/**
 * Notifies the service manager that the io_context runs, twice as often as the environment variables
 * WATCHDOG_USEC and WATCHDOG_PID require (sd_watchdog_enabled(3)). Does nothing if they do not name this
 * process.
 */
class Watchdog {
public:
    explicit Watchdog(boost::asio::io_context& io);
    /** Notifies now, and periodically. */
    void start();
    /** Leaves the io_context no work. */
    void stop() { m_timer.cancel(); }

private:
    boost::asio::steady_timer m_timer;
    const std::chrono::microseconds m_period; // 0: not required
};

} // namespace service
#endif
