#ifndef OPENWBEM_CLIENT_STREAM_HPP_INCLUDED
#define OPENWBEM_CLIENT_STREAM_HPP_INCLUDED
#include "client/Deadline.hpp"

#include <cstddef>
#include <string_view>

namespace OpenWBEM {

/** A connection to a peer: bytes in both directions, closed when destroyed. */
class Stream {
public:
    virtual ~Stream() = default;

    /**
     * Sends all bytes. False when the peer takes no more of them, which does not mean that it has not
     * answered. Throws SocketTimeoutException when the peer takes none for clientTimeouts().send, and
     * SocketException when the system refuses.
     */
    virtual bool send(std::string_view bytes) = 0;
    /**
     * Receives up to size bytes, size being at least 1, and returns how many; 0 when the connection has
     * ended, in whatever way. Throws SocketTimeoutException when none come before the deadline, and
     * SocketException when it cannot be waited for them.
     */
    virtual std::size_t receive(char* to, std::size_t size, const Deadline& deadline) = 0;
    /** Whether nothing waits to be received, neither bytes nor the end. */
    virtual bool isQuiet() = 0;
};

} // namespace OpenWBEM
#endif
