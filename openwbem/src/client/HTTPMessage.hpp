#ifndef OPENWBEM_CLIENT_HTTP_MESSAGE_HPP_INCLUDED
#define OPENWBEM_CLIENT_HTTP_MESSAGE_HPP_INCLUDED
#include "client/Stream.hpp"
#include "io/Source.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace OpenWBEM {

/** Throws the HTTPException of a request that has no good reply. */
[[noreturn]] void throwUnprocessed(const std::string& reason);

/**
 * A reply while it comes in (RFC 7230): its head, then its body, unchunked, then its trailers. Takes memory
 * for what has come only, whatever the peer announces.
 */
class HTTPMessage : public io::Source {
public:
    /** Nothing is read yet. The stream must outlive the message. */
    explicit HTTPMessage(Stream& stream);
    ~HTTPMessage() override;

    /**
     * Reads the head, within clientTimeouts().receive as a whole. False when the connection ended before any
     * byte of it. Throws HTTPException when it is none, SocketTimeoutException.
     */
    bool readHead();

    unsigned status() const;
    /** What follows the status; may be empty. */
    const std::string& reason() const;
    /** The values of a header, whatever the case of its name; empty when there is none. */
    std::vector<std::string> fields(const char* name) const;
    /** The same as one text, with ", " between the values. */
    std::string field(const char* name) const;
    /** Whether the head tells where the body ends. */
    bool isFramed() const;

    /**
     * The body as it arrives. Waits for more of it for clientTimeouts().receive; what frames it does not
     * count. Throws IOException "Failed reading data" when it breaks off, and again at every call after.
     */
    std::size_t read(char* to, std::size_t size) override;
    /** The value of a trailer behind the body. Its name may have a prefix of three characters (RFC 2774). */
    std::string trailer(const char* name) const;
    /** Whether the reply has ended and left the connection ready for the next request. */
    bool leavesConnection() const;

private:
    class Parser;

    std::size_t receive(const Deadline& deadline);
    void tryReceive(const Deadline& deadline);
    void parse();
    [[noreturn]] void throwJunk() const;

    Stream& m_stream;
    const std::unique_ptr<Parser> m_parser;
    std::vector<char> m_input; // what is not parsed yet stands at its front
    std::size_t m_unparsed = 0;
    std::uint64_t m_received = 0; // bytes of all kinds so far
    bool m_isBroken = false;
};

} // namespace OpenWBEM
#endif
