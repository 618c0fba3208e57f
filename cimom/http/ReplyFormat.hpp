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
     * then throw the body away.
     */
    std::string answer(const OperationReply& reply, const RequestHead& request);

    /** An error of HTTP, after which the connection is closed. HTTP/1.0 answers a request that was not
     * understood. */
    std::string refusal(const Refusal& refusal, bool isHttp11) const;

private:
    unsigned m_nameSpaceNumber = 0; // of the last answer, see RFC 2774
};

} // namespace cimom
#endif
