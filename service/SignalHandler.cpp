#include "service/SignalHandler.hpp"

#include <utility>

namespace service {

SignalHandler::SignalHandler(boost::asio::io_context& io, int signal, std::function<void()> handle)
    : m_signals(io, signal)
    , m_handle(std::move(handle)) {
    await();
}

void SignalHandler::cancel() {
    m_signals.cancel();
}

void SignalHandler::await() {
    m_signals.async_wait([this](const boost::system::error_code& error, int) {
        if (error)
            return;
        await(); // first: the function may throw
        m_handle();
    });
}

} // namespace service
