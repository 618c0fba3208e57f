#ifndef HTTP_REQUEST_RULES_HPP_INCLUDED
#define HTTP_REQUEST_RULES_HPP_INCLUDED
#include "http/Responder.hpp"
#include "http/Settings.hpp"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace http {

using RequestParser = boost::beast::http::request_parser<boost::beast::http::string_body>;

/** The value of a header field; empty if the request has none. */
std::string valueOf(const Request& request, std::string_view field);

/** What the client of a request can read. */
struct ReplyForm {
    /** Chunks (HTTP/1.1). */
    bool mayHaveChunks;
    /** Fields after the last chunk (field TE). */
    bool mayHaveTrailers;
    /** Another reply: the connection stays open. */
    bool keepsAlive;
};

ReplyForm replyForm(const Request& request);

/** Why a server cannot read the request that a head begins; nothing if it can. */
std::optional<ErrorResponse> headError(const RequestParser& parser, const std::string& methods);

/** The error response to a request that could not be read; nothing if the connection ended. */
std::optional<ErrorResponse> readError(const boost::system::error_code& error, const Limits& limits);

} // namespace http
#endif
