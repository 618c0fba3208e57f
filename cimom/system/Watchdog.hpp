#ifndef CIMOM_SYSTEM_WATCHDOG_HPP_INCLUDED
#define CIMOM_SYSTEM_WATCHDOG_HPP_INCLUDED
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>

namespace cimom {

/**
 * Tells the service manager that the loop runs, twice as often as it asks for by the environment variables
 * WATCHDOG_USEC and WATCHDOG_PID (sd_watchdog_enabled(3)); nothing when it does not ask this process.
 */
class Watchdog {
public:
    explicit Watchdog(boost::asio::io_context& io);
    /** Tells it now, and from now on. */
    void start();
    /** Leaves the io_context nothing to do. */
    void stop() { m_timer.cancel(); }

private:
    boost::asio::steady_timer m_timer;
    const std::chrono::microseconds m_period; // 0: not asked
};

} // namespace cimom
#endif
