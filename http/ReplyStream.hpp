#ifndef HTTP_REPLY_STREAM_HPP_INCLUDED
#define HTTP_REPLY_STREAM_HPP_INCLUDED
#include "http/ReplyHead.hpp"
#include "http/RequestRules.hpp"
#include "protocol/Handler.hpp"

#include <boost/beast/http/fields.hpp>
#include <cstddef>
#include <optional>
#include <string>

namespace cimom {

/**
 * The reply to an operation as it goes over the connection, made piece by piece.
 *
 * For a client that takes trailers it is chunked. An error halfway then stands in trailers, behind what had
 * been sent before, and in the binary protocol so does an error from the beginning. For others it has a
 * length when it is shorter than a piece, and is chunked, or ends with the connection, when it is longer. An
 * error from the beginning otherwise stands in the body.
 */
class ReplyStream {
public:
    /** Bytes of the body that a piece has, about: as many as are reached by a whole element. */
    static constexpr std::size_t pieceSize = 64 * 1024;

    /**
     * @param contentType of the reply; must outlive the stream
     * @param number see answerHead()
     */
    ReplyStream(OperationReply reply, const RequestHead& request, const char* contentType,
                std::string number);

    /**
     * The next bytes to send; empty when all have been handed out. For a client that cannot be told otherwise
     * that the operation has failed halfway it throws: the connection must end without the rest.
     */
    std::string next();
    /** Whether next() has handed out the end. */
    bool isDone() const { return m_isDone; }
    /** What the operation has failed with, if it has. */
    const std::optional<OperationError>& error() const { return m_reply.error; }

private:
    Framing framing() const;
    std::string content();
    std::string ended() const;
    boost::beast::http::fields trailers() const;

    OperationReply m_reply;
    RequestHead m_request;
    const char* m_contentType;
    std::string m_number;
    Framing m_framing = Framing::length;
    bool m_hasErrorTrailers = false;
    bool m_isBegun = false;
    bool m_isDone = false;
};

} // namespace cimom
#endif
