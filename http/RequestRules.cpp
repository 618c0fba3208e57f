#include "http/RequestRules.hpp"

#include "util/Ascii.hpp"

#include <boost/beast/http/error.hpp>
#include <boost/beast/http/rfc7230.hpp>

namespace http {

namespace beast = boost::beast;
using beast::http::error;

namespace {

/** Whether a list like "GET, HEAD" holds a method; methods are case-sensitive. */
bool holds(const std::string& methods, const std::string& method) {
    return !method.empty() && (", " + methods + ",").find(" " + method + ",") != std::string::npos;
}

/** Whether the request says where its body ends. GET has no body. */
bool hasLength(const RequestParser& parser) {
    return parser.get().method() == beast::http::verb::get || parser.chunked() || parser.content_length();
}

} // namespace

std::string valueOf(const Request& request, std::string_view field) {
    return std::string(request[beast::string_view(field.data(), field.size())]);
}

ReplyForm replyForm(const Request& request) {
    const bool isHttp11 = request.version() == 11;
    return {isHttp11, isHttp11 && beast::http::ext_list(request[beast::http::field::te]).exists("trailers"),
            isHttp11 && request.keep_alive()};
}

std::optional<ErrorResponse> headError(const RequestParser& parser, const std::string& methods) {
    const Request& request = parser.get();
    const std::string method(request.method_string());
    if (!holds(methods, method))
        return ErrorResponse{405, "Method not allowed", "Method not allowed by server: " + method, "Allow",
                             methods};
    if (!hasLength(parser))
        return ErrorResponse{411, "Length required", "No Content-Length or Transfer-Encoding was specified."};
    const std::string coding = valueOf(request, "Transfer-Encoding");
    if (!coding.empty() && !ascii::equalsIgnoreCase(coding, "chunked"))
        return ErrorResponse{501, "Not implemented",
                             "Transfer-Encoding \"" + coding + "\" is not supported."};
    const std::string encoding = valueOf(request, "Content-Encoding");
    if (!encoding.empty() && !ascii::equalsIgnoreCase(encoding, "identity"))
        return ErrorResponse{406, "Not acceptable",
                             "Content-Encoding \"" + encoding + "\" is not supported."};
    return std::nullopt;
}

std::optional<ErrorResponse> readError(const boost::system::error_code& code, const Limits& limits) {
    const bool isAboutRequest = code.category() == beast::http::make_error_code(error::bad_method).category();
    if (!isAboutRequest || code == error::end_of_stream)
        return std::nullopt;
    if (code == error::body_limit)
        return ErrorResponse{413, "Request entity too large",
                             "The body exceeds " + std::to_string(limits.body) + " bytes."};
    if (code == error::header_limit)
        return ErrorResponse{431, "Request header fields too large",
                             "The header exceeds " + std::to_string(limits.head) + " bytes."};
    if (code == error::bad_version)
        return ErrorResponse{505, "HTTP version not supported", "Only HTTP/1.0 and HTTP/1.1 are supported."};
    if (code == error::bad_chunk || code == error::bad_chunk_extension)
        return ErrorResponse{400, "Bad request", "There was a problem parsing the chunks of the request"};
    return ErrorResponse{400, "Bad request", "There was a problem parsing the request Header"};
}

} // namespace http
