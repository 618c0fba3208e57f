#ifndef CIMOM_HTTP_REQUEST_RULES_HPP_INCLUDED
#define CIMOM_HTTP_REQUEST_RULES_HPP_INCLUDED
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>
#include <cstdint>
#include <optional>
#include <string>

namespace cimom {

using RequestParser = boost::beast::http::request_parser<boost::beast::http::string_body>;

/** The largest head of a request, and the largest body, in bytes. */
const std::uint32_t headLimit = 16 * 1024;
const std::uint64_t bodyLimit = 1024ULL * 1024;

/** What an error answer says: `<status> <reason>: <detail>`. */
struct Refusal {
    unsigned status;
    const char* reason;
    std::string detail;
};

/** What of a request's head decides how it is answered. */
struct RequestHead {
    bool isMPost;
    /** The client reads chunks and trailers. */
    bool takesTrailers;
    /** The connection stays open for a further request. */
    bool keepsAlive;
};

/** Reads the head of a request that has been parsed. */
RequestHead requestHead(const RequestParser& parser);

/** Why a request is refused for its head; nothing when it is fine. */
std::optional<Refusal> refusalOf(const RequestParser& parser);

/** Why a request is refused that could not be read; nothing when the connection broke. */
std::optional<Refusal> refusalOf(const boost::system::error_code& error);

} // namespace cimom
#endif
