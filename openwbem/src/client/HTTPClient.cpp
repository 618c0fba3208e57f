#include "client/HTTPClient.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_Socket.hpp"
#include "OW_SocketException.hpp"
#include "client/Socket.hpp"
#include "client/TlsSocket.hpp"
#include "util/Ascii.hpp"

#include <algorithm>
#include <atomic>
#include <utility>

namespace OpenWBEM {
namespace {

// HTTP status codes
const unsigned unauthorized = 401;
const unsigned methodNotAllowed = 405;
const unsigned requestTimeout = 408;
const unsigned notImplemented = 501;
const unsigned notExtended = 510; // RFC 2774

bool rejectsMethod(unsigned status) {
    return status == methodNotAllowed || status == notImplemented || status == notExtended;
}

// The extension headers of a request share a number (RFC 2774). Each attempt uses the next one.
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
        const char lower = ascii::toLower(c);
        const bool isAlphanumeric = ascii::isDigit(c) || (lower >= 'a' && lower <= 'z');
        if (isAlphanumeric || literal.find(c) != std::string::npos) {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded += '%';
            encoded += digits[byte >> 4];
            encoded += digits[byte & 0xF];
        }
    }
    return encoded;
}

std::string field(const std::string& name, const std::string& value) {
    if (std::any_of(value.begin(), value.end(), ascii::isControl)) // would end the line
        OW_THROW(HTTPException, ("Control characters in the value of the header " + name).c_str());
    return name + ": " + value + "\r\n";
}

// The head of a request as it is sent. Extension headers have a prefix, and the method is M-POST (RFC 2774),
// unless usesExtension is false. An empty authorization is omitted.
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

} // namespace

HTTPClient::HTTPClient(const URL& url, const ClientAuthCBIFCRef& callback)
    : m_host(url.host.c_str())
    , m_endpoint(endpointOf(url))
    , m_authentication(url, callback) {
    if (m_endpoint.usesTls)
        requireTls();
}

std::unique_ptr<HTTPReply> HTTPClient::exchange(const HTTPRequest& request) {
    std::string authorization = m_authentication.introduction();
    bool hasAnswered = false;
    while (true) {
        std::unique_ptr<HTTPReply> reply = send(request, authorization);
        const unsigned status = reply->message().status();
        if (status == unauthorized && !hasAnswered) {
            authorization = m_authentication.answer(reply->message().fields("WWW-Authenticate"));
            hasAnswered = true;
        } else if (rejectsMethod(status) && m_usesExtension) {
            m_usesExtension = false;
            authorization = m_authentication.introduction(); // an answer is valid once
            hasAnswered = false;
        } else {
            reply->expectBody();
            return reply;
        }
    }
}

// Sends a request. Repeats it once, on a new connection, if the kept connection ended instead of replying.
std::unique_ptr<HTTPReply> HTTPClient::send(const HTTPRequest& request, const std::string& authorization) {
    std::unique_ptr<Stream> kept = std::move(m_kept);
    if (kept && !kept->isQuiet())
        kept.reset();
    const bool isKept = kept != nullptr;
    std::unique_ptr<HTTPReply> reply = sendOn(isKept ? std::move(kept) : connect(), request, authorization);
    const bool isDropped = !reply || reply->message().status() == requestTimeout;
    if (isDropped && isKept && request.mayRepeat) {
        reply.reset(); // closes its connection
        reply = sendOn(connect(), request, authorization);
    }
    if (!reply)
        throwUnprocessed("");
    return reply;
}

// Null if the connection ends instead of replying.
std::unique_ptr<HTTPReply> HTTPClient::sendOn(std::unique_ptr<Stream> connection, const HTTPRequest& request,
                                              const std::string& authorization) {
    try {
        connection->send(requestHead(request, m_host, authorization, m_usesExtension) + request.body);
        auto reply = std::make_unique<HTTPReply>(std::move(connection), m_kept);
        return reply->message().readHead() ? std::move(reply) : nullptr;
    } catch (const SocketTimeoutException& e) {
        throwUnprocessed(e.getMessage());
    }
}

std::unique_ptr<Stream> HTTPClient::connect() const {
    const Deadline deadline("connect", clientTimeouts().connect);
    try {
        auto socket = std::make_unique<Socket>(m_endpoint, deadline);
        if (m_endpoint.usesTls)
            return startTls(std::move(socket), m_endpoint, deadline);
        return socket;
    } catch (const SocketTimeoutException& e) {
        OW_THROW(SocketException, e.getMessage());
    }
}

} // namespace OpenWBEM
