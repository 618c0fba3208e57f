#ifndef OPENWBEM_CLIENT_DEADLINE_HPP_INCLUDED
#define OPENWBEM_CLIENT_DEADLINE_HPP_INCLUDED
#include "OW_Socket.hpp"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>

namespace OpenWBEM {

/** The end of a wait that began with the construction. Signals and changes of the clock do not move it. */
class Deadline {
public:
    /** What is waited for, as in "receive", and how long at most. */
    Deadline(const char* what, std::chrono::milliseconds whole)
        : m_what(what)
        , m_whole(std::clamp(whole, Milliseconds(0), Milliseconds(std::numeric_limits<int>::max())))
        , m_end(Clock::now() + m_whole) {}

    /** Milliseconds that are left, for poll(2); 0 when it has passed. */
    int left() const {
        return static_cast<int>(
            std::max(std::chrono::ceil<Milliseconds>(m_end - Clock::now()), Milliseconds(0)).count());
    }

    /** Throws the SocketTimeoutException that says that this deadline has passed. */
    [[noreturn]] void expire() const {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(m_whole).count();
        const std::string message =
            std::string("Client ") + m_what + " timeout (" + std::to_string(seconds) + " seconds) expired.";
        OW_THROW(SocketTimeoutException, message.c_str());
    }

private:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    const char* m_what;
    Milliseconds m_whole;
    Clock::time_point m_end;
};

} // namespace OpenWBEM
#endif
