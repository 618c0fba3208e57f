#ifndef CIMOM_PROTOCOL_REQUEST_HEAD_HPP_INCLUDED
#define CIMOM_PROTOCOL_REQUEST_HEAD_HPP_INCLUDED
#include "http/Responder.hpp"
#include "protocol/Handler.hpp"

#include <optional>

namespace cimom {

/** The protocols of requests. */
enum class Protocol { binary, xml };

/** The protocol that the Content-Type of a request says; nothing for any other type. */
std::optional<Protocol> protocolOf(const http::Request& request);

/** What the head of a request says about the operation and its reply. */
struct RequestHead {
    Protocol protocol;
    /** The method is M-POST (RFC 2774). */
    bool isMPost;
    /** The client reads trailers. */
    bool takesTrailers;
    Announcement announced{};

    /**
     * Whether the extension fields of the reply have a prefix (RFC 2774): in a reply to M-POST, and in the
     * binary protocol, whose clients look for errors only in fields with a prefix.
     */
    bool isExtended() const { return isMPost || protocol == Protocol::binary; }
};

RequestHead requestHead(const http::Request& request, Protocol protocol);

} // namespace cimom
#endif
