#ifndef HTTP_REQUEST_RULES_HPP_INCLUDED
#define HTTP_REQUEST_RULES_HPP_INCLUDED
#include "http/Limits.hpp"
#include "protocol/Handler.hpp"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>
#include <optional>
#include <string>

namespace cimom {

using RequestParser = boost::beast::http::request_parser<boost::beast::http::string_body>;

/** What an error answer says: `<status> <reason>: <detail>`. */
struct Refusal {
    unsigned status;
    const char* reason;
    std::string detail;
    /** A header of the answer, and its value; null for none. */
    const char* header = nullptr;
    std::string value{};
};

/** The protocols that requests come in. */
enum class Protocol { binary, xml };

/** What of a request's head decides how it is answered. */
struct RequestHead {
    Protocol protocol;
    bool isMPost;
    /** The client reads chunks. */
    bool takesChunks;
    /** The client reads what stands behind the last chunk. */
    bool takesTrailers;
    /** The connection stays open for a further request. */
    bool keepsAlive;
    /** Value of the header Authorization. */
    std::string authorization;
    Announcement announced{};

    /** Whether the reply has a namespace of its own for its extension headers (RFC 2774): it answers M-POST,
     * or is in the binary protocol, whose clients look for errors nowhere else. */
    bool isExtended() const { return isMPost || protocol == Protocol::binary; }
};

/** Reads the head of a request that refusalOf() has nothing against. */
RequestHead requestHead(const RequestParser& parser);

/** Why a request is refused for its head; nothing when it is fine. */
std::optional<Refusal> refusalOf(const RequestParser& parser);

/** Why a request is refused that could not be read; nothing when the connection broke. */
std::optional<Refusal> refusalOf(const boost::system::error_code& error, const Limits& limits);

} // namespace cimom
#endif
