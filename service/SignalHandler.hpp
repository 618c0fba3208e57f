#ifndef SERVICE_SIGNAL_HANDLER_HPP_INCLUDED
#define SERVICE_SIGNAL_HANDLER_HPP_INCLUDED
#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <functional>

namespace service {

/** Calls a function each time a signal arrives, in the thread that runs the io_context. From its beginning
 * the signal does not end the process. */
class SignalHandler {
public:
    SignalHandler(boost::asio::io_context& io, int signal, std::function<void()> handle);
    SignalHandler(const SignalHandler&) = delete;
    SignalHandler& operator=(const SignalHandler&) = delete;

    /** Leaves the io_context no work. The signal is ignored from then on. */
    void cancel();

private:
    void await();

    boost::asio::signal_set m_signals;
    const std::function<void()> m_handle;
};

} // namespace service
#endif
