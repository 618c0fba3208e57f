#include "http/RequestRules.hpp"

#include "system/Text.hpp"

#include <boost/beast/core/string.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/rfc7230.hpp>

namespace cimom {

namespace http = boost::beast::http;
using boost::beast::iequals;
using boost::beast::string_view;

namespace {

const unsigned http11 = 11;

/** The protocol of a Content-Type; nothing when no protocol has it. */
std::optional<Protocol> protocolOf(std::string_view contentType) {
    const std::string_view trimmedType = trimmed(contentType.substr(0, contentType.find(';')));
    const string_view type(trimmedType.data(), trimmedType.size());
    if (iequals(type, "application/x-owbinary"))
        return Protocol::binary;
    if (iequals(type, "application/xml") || iequals(type, "text/xml"))
        return Protocol::xml;
    return std::nullopt;
}

std::string valueOf(const RequestParser& parser, http::field name) {
    return std::string(parser.get()[name]);
}

} // namespace

RequestHead requestHead(const RequestParser& parser) {
    const auto& head = parser.get();
    const bool isHttp11 = head.version() == http11;
    return {*protocolOf(valueOf(parser, http::field::content_type)),
            head.method_string() == "M-POST",
            isHttp11,
            isHttp11 && http::ext_list(head[http::field::te]).exists("trailers"),
            isHttp11 && head.keep_alive(),
            valueOf(parser, http::field::authorization)};
}

std::optional<Refusal> refusalOf(const RequestParser& parser) {
    const auto& head = parser.get();
    const std::string method(head.method_string());
    if (method != "M-POST" && method != "POST")
        return Refusal{405, "Method not allowed", "Method not allowed by server: " + method};
    if (!parser.chunked() && !parser.content_length())
        return Refusal{411, "Length required", "No Content-Length or Transfer-Encoding was specified."};
    const std::string coding = valueOf(parser, http::field::transfer_encoding);
    if (!coding.empty() && !iequals(coding, "chunked"))
        return Refusal{501, "Not implemented", "Transfer-Encoding \"" + coding + "\" is not supported."};
    const std::string encoding = valueOf(parser, http::field::content_encoding);
    if (!encoding.empty() && !iequals(encoding, "identity"))
        return Refusal{406, "Not acceptable", "Content-Encoding \"" + encoding + "\" is not supported."};
    const std::string contentType = valueOf(parser, http::field::content_type);
    if (!protocolOf(contentType))
        return Refusal{415, "Unsupported media type",
                       "Content-Type \"" + contentType + "\" is not supported."};
    return std::nullopt;
}

std::optional<Refusal> refusalOf(const boost::system::error_code& error, const Limits& limits) {
    const bool isFaultOfRequest =
        error.category() == http::make_error_code(http::error::bad_method).category();
    if (!isFaultOfRequest || error == http::error::end_of_stream)
        return std::nullopt;
    if (error == http::error::body_limit)
        return Refusal{413, "Request entity too large",
                       "The body exceeds " + std::to_string(limits.body) + " bytes."};
    if (error == http::error::header_limit)
        return Refusal{431, "Request header fields too large",
                       "The header exceeds " + std::to_string(limits.head) + " bytes."};
    if (error == http::error::bad_version)
        return Refusal{505, "HTTP version not supported", "Only HTTP/1.0 and HTTP/1.1 are supported."};
    if (error == http::error::bad_chunk || error == http::error::bad_chunk_extension)
        return Refusal{400, "Bad request", "There was a problem parsing the chunks of the request"};
    return Refusal{400, "Bad request", "There was a problem parsing the request Header"};
}

} // namespace cimom
