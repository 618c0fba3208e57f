#ifndef HTTP_LIMITS_HPP_INCLUDED
#define HTTP_LIMITS_HPP_INCLUDED
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace cimom {

/** What the clients may take, together and one by one. */
struct Limits {
    /** Connections at a time, a quarter of which, and at least one, are kept for local clients; fewer when
     * the process may not open enough descriptors. */
    std::size_t connections = 256;
    /** Bytes of the head of a request. */
    std::uint32_t head = 16 * 1024;
    /** Bytes of the body of a request. */
    std::uint64_t body = 1024ULL * 1024;
    /** Until the next request of a client begins. It is then told by status 408. */
    std::chrono::milliseconds idle = std::chrono::seconds(300);
    /** For a request to arrive whole, again for its password to be checked, and again for each piece of the
     * reply (ReplyStream::pieceSize) to be taken. */
    std::chrono::milliseconds request = std::chrono::seconds(60);
};

} // namespace cimom
#endif
