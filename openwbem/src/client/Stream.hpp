#ifndef OPENWBEM_CLIENT_STREAM_HPP_INCLUDED
#define OPENWBEM_CLIENT_STREAM_HPP_INCLUDED
#include "client/Deadline.hpp"

#include <cstddef>
#include <string_view>

namespace OpenWBEM {

/** A connection to a peer, closed by the destructor. */
class Stream {
public:
    virtual ~Stream() = default;

    /**
     * Sends all bytes. False if the peer has closed the connection, possibly after a reply. Throws
     * SocketTimeoutException if the peer accepts no bytes for clientTimeouts().send, SocketException for any
     * other error.
     */
    virtual bool send(std::string_view bytes) = 0;
    /**
     * Receives up to size bytes, which must be at least 1. Returns the number of bytes; 0 at the end of the
     * connection, also after an error. Throws SocketTimeoutException at the deadline, SocketException if
     * waiting fails.
     */
    virtual std::size_t receive(char* to, std::size_t size, const Deadline& deadline) = 0;
    /** Whether receive() would block: neither bytes nor the end have arrived. */
    virtual bool isQuiet() = 0;
};

} // namespace OpenWBEM
#endif
