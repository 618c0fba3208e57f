#ifndef TESTS_SUPPORT_TAMPERING_RELAY_HPP
#define TESTS_SUPPORT_TAMPERING_RELAY_HPP
#include "support/Relay.hpp"

#include <atomic>
#include <string>

namespace support {

/** Passes on what a server sends up to a byte, and then misbehaves. */
class TamperingRelay {
public:
    enum class Then {
        /** Closes the connection. */
        close,
        /** Keeps it open and passes on nothing more, in either direction. */
        stall,
        /** Inverts that byte, and passes on all others. */
        invert,
        /** Inserts a byte, and passes on all others. */
        insert
    };

    TamperingRelay(unsigned short serverPort, std::size_t at, Then then);

    std::string url() const { return m_relay.url("owbinary.wbems", "localhost"); }
    /** Bytes of the server so far, of all connections. */
    std::size_t passed() const { return m_passed; }

private:
    void pump(int client, int server);

    const std::size_t m_at;
    const Then m_then;
    std::atomic<std::size_t> m_passed{0};
    Relay m_relay;
};

} // namespace support
#endif
