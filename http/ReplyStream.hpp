#ifndef HTTP_REPLY_STREAM_HPP_INCLUDED
#define HTTP_REPLY_STREAM_HPP_INCLUDED
#include "http/RequestRules.hpp"
#include "http/Responder.hpp"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace http {

/**
 * The bytes of a reply, made piece by piece.
 *
 * A reply with trailers is chunked if the client reads trailers. Any other reply has a length if its body
 * fits into one piece. A longer reply is chunked, or ends with the connection if the client reads no chunks.
 *
 * A head never says `Connection: close`: some clients discard the body then.
 */
class ReplyStream {
public:
    /** Bytes of the body after which a piece ends, at the end of a part. */
    static constexpr std::size_t pieceSize = 64 * 1024;

    /** @param server value of the field Server; must outlive the stream */
    ReplyStream(std::unique_ptr<Reply> reply, const ReplyForm& form, const std::string& server);

    /** The next bytes to send; empty after the end. Throws what Reply::append() throws. */
    std::string next();
    /** Whether next() has returned the last bytes. */
    bool isDone() const { return m_isDone; }
    const Reply& reply() const { return *m_reply; }

private:
    /** How the client finds the end of the body. */
    enum class Framing { length, chunks, chunksAndTrailers, connection };

    std::string piece();
    Framing framing(const ReplyHead& head) const;
    std::string headOf(std::size_t length);
    std::string end() const;

    std::unique_ptr<Reply> m_reply;
    ReplyForm m_form;
    const std::string& m_server;
    std::optional<Framing> m_framing; // once the head is made
    bool m_isDone = false;
};

/**
 * The bytes of an error response.
 *
 * @param isHeadRead the client has sent a complete head, and gets HTTP/1.1; else it gets HTTP/1.0, which
 * every client reads
 * @param server value of the field Server
 */
std::string bytesOf(const ErrorResponse& error, bool isHeadRead, const std::string& server);

} // namespace http
#endif
