#ifndef CIMOM_HTTP_REPLY_FORMAT_HPP_INCLUDED
#define CIMOM_HTTP_REPLY_FORMAT_HPP_INCLUDED
#include "http/RequestRules.hpp"
#include "protocol/BinaryHandler.hpp"

#include <string>

namespace cimom {

/** Writes replies as they go over the connection. One serves all connections of an object manager. */
class ReplyFormat {
public:
    /**
     * The reply to an operation. With trailers it is chunked and an error stands in trailers, after an empty
     * body; else it has a length and an error stands in the body. It never has `Connection: close`: clients
     * then throw the body away. A description in trailers is cut after 1024 bytes.
     */
    std::string answer(const OperationReply& reply, const RequestHead& request);

    /**
     * An error of HTTP, after which the connection is closed. Its detail is cut after 1024 bytes.
     *
     * @param isUnderstood the client has sent the head of a request that could be read, of either version of
     *                     HTTP, and is answered by HTTP/1.1; else by HTTP/1.0, which every client reads
     */
    std::string refusal(const Refusal& refusal, bool isUnderstood) const;

private:
    unsigned m_nameSpaceNumber = 0; // of the last answer, see RFC 2774
};

} // namespace cimom
#endif
