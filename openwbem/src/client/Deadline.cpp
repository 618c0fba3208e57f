#include "client/Deadline.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_Socket.hpp"

#include <algorithm>
#include <limits>
#include <string>

namespace OpenWBEM {

using std::chrono::milliseconds;

ClientTimeouts& clientTimeouts() {
    static ClientTimeouts timeouts;
    return timeouts;
}

Deadline::Deadline(const char* what, milliseconds limit)
    : m_what(what)
    , m_limit(std::clamp(limit, milliseconds(0), milliseconds(std::numeric_limits<int>::max())))
    , m_end(Clock::now() + m_limit) {}

int Deadline::left() const {
    const auto remaining = std::chrono::ceil<milliseconds>(m_end - Clock::now());
    return static_cast<int>(std::max(remaining, milliseconds(0)).count());
}

void Deadline::expire() const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(m_limit).count();
    const std::string message =
        std::string("Client ") + m_what + " timeout (" + std::to_string(seconds) + " seconds) expired.";
    OW_THROW(SocketTimeoutException, message.c_str());
}

} // namespace OpenWBEM
