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

template <class Name>
std::string valueOf(const RequestParser& parser, Name name) {
    return std::string(parser.get()[name]);
}

/** A text with the bytes that "%" and two hexadecimal digits stand for. */
std::string unescaped(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view digits = std::string_view(text).substr(i + 1, 2);
        const std::optional<unsigned char> byte =
            text[i] == '%' && digits.size() == 2 ? number<unsigned char>(digits, 16) : std::nullopt;

        result += byte ? static_cast<char>(*byte) : text[i];
        i += byte ? 2 : 0;
    }
    return result;
}

/** The prefix of the extension headers of a request by M-POST, as in "73-" (RFC 2774); else nothing. */
std::string extensionPrefix(const RequestParser& parser) {
    if (parser.get().method_string() != "M-POST")
        return std::string();
    const std::string man = valueOf(parser, "Man");
    const std::string parameter = "ns=";
    const std::size_t at = man.find(parameter);
    if (at == std::string::npos)
        return std::string();
    const std::size_t begin = at + parameter.size();
    return man.substr(begin, man.find_first_not_of("0123456789", begin) - begin) + "-";
}

/** The value of an extension header without its escapes; absent when there is none. */
std::optional<std::string> extension(const RequestParser& parser, const std::string& name) {
    const auto found = parser.get().find(extensionPrefix(parser) + name);
    if (found == parser.get().end())
        return std::nullopt;
    return unescaped(std::string(found->value()));
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
            valueOf(parser, http::field::authorization),
            {extension(parser, "CIMMethod"), extension(parser, "CIMObject")}};
}

std::optional<Refusal> refusalOf(const RequestParser& parser) {
    const auto& head = parser.get();
    const std::string method(head.method_string());
    if (method != "M-POST" && method != "POST")
        return Refusal{405, "Method not allowed", "Method not allowed by server: " + method, "Allow",
                       "POST, M-POST"};
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
