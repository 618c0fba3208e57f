#ifndef OPENWBEM_CLIENT_HTTP_MESSAGE_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_MESSAGE_HPP_INCLUDED
#include "client/Stream.hpp"
#include "io/Source.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace OpenWBEM {

/** Throws the HTTPException of a failed request. */
[[noreturn]] void throwUnprocessed(const std::string& reason);

/**
 * A reply, read as it arrives (RFC 7230): head, decoded chunks of the body, trailers. Memory grows with the
 * bytes that arrive, never with a length that the peer announces.
 */
class HTTPMessage : public io::Source {
public:
    /** Does not read. The stream must outlive the message. */
    explicit HTTPMessage(Stream& stream);
    ~HTTPMessage() override;

    /**
     * Reads the head, within clientTimeouts().receive. False if the connection ends before the first byte.
     * Throws HTTPException for a malformed head, SocketTimeoutException.
     */
    bool readHead();

    unsigned status() const;
    /** Reason phrase of the status line; may be empty. */
    const std::string& reason() const;
    /** All values of a header, whose name is compared without case. */
    std::vector<std::string> fields(const char* name) const;
    /** The values of a header, joined by ", "; "" if there is none. */
    std::string field(const char* name) const;
    /** Whether the head determines the end of the body. */
    bool isFramed() const;

    /**
     * Reads the body as it arrives. Waits at most clientTimeouts().receive for more of it; framing does not
     * restart the wait. Throws IOException "Failed reading data" if the body is truncated, also on every
     * later call.
     */
    std::size_t read(char* to, std::size_t size) override;
    /** The value of a trailer after the body; the name may have a prefix of three characters (RFC 2774). */
    std::string trailer(const char* name) const;
    /** Whether the reply is complete and the connection ready for the next request. */
    bool leavesConnection() const;

private:
    class Parser;

    std::size_t receive(const Deadline& deadline);
    void tryReceive(const Deadline& deadline);
    void parse();
    [[noreturn]] void throwMalformed() const;

    Stream& m_stream;
    const std::unique_ptr<Parser> m_parser;
    std::vector<char> m_input;
    std::size_t m_unparsed = 0;   // bytes at the front of m_input
    std::uint64_t m_received = 0; // all bytes so far
    bool m_isBroken = false;
};

} // namespace OpenWBEM
#endif
