#include "client/HTTPRequest.hpp"

#include "OW_HTTPException.hpp"
#include "OW_config.h"

#include <algorithm>
#include <atomic>

namespace OpenWBEM {
namespace {

// The extension headers of a request carry a common number (RFC 2774), new each time it is sent.
std::string nextPrefix() {
    static std::atomic<unsigned> sent{0};
    const unsigned number = ++sent % 100;
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string percentEncoded(const std::string& text) {
    static const char digits[] = "0123456789ABCDEF";
    static const std::string literal = "-_.!~*'()";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isAlphanumeric =
            (byte >= '0' && byte <= '9') || ((byte | 0x20) >= 'a' && (byte | 0x20) <= 'z');
        if (isAlphanumeric || literal.find(c) != std::string::npos) {
            encoded += c;
        } else {
            encoded += '%';
            encoded += digits[byte >> 4];
            encoded += digits[byte & 0xF];
        }
    }
    return encoded;
}

std::string field(const std::string& name, const std::string& value) {
    const bool isOneLine =
        std::none_of(value.begin(), value.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; });
    if (!isOneLine)
        OW_THROW(HTTPException, ("Control characters in the value of the header " + name).c_str());
    return name + ": " + value + "\r\n";
}

} // namespace

std::string requestHead(const HTTPRequest& request, const std::string& host, const std::string& authorization,
                        bool usesExtension) {
    const std::string number = nextPrefix();
    const std::string prefix = usesExtension ? number + "-" : "";
    std::string head = usesExtension ? "M-POST" : "POST";
    head += " /cimom HTTP/1.1\r\n";
    head += field("Host", host);
    head += field("User-Agent", OW_PACKAGE "/" OW_VERSION);
    head += field("Content-Type", request.contentType);
    head += field("Content-Length", std::to_string(request.body.size()));
    head += field("TE", "trailers");
    head += field("Accept-Encoding", "deflate");
    if (request.isVersion11)
        head += field("CIMProtocolVersion", "1.1");
    if (!authorization.empty())
        head += field("Authorization", authorization);
    if (usesExtension)
        head += field("Man", "http://www.dmtf.org/cim/mapping/http/v1.0; ns=" + number);
    head += field(prefix + "CIMOperation", "MethodCall");
    head += field(prefix + "CIMMethod", percentEncoded(request.cimMethod));
    head += field(prefix + "CIMObject", percentEncoded(request.cimObject));
    return head + "\r\n";
}

} // namespace OpenWBEM
