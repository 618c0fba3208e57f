#include "client/HTTPClient.hpp"

#include "OW_ClientTimeouts.hpp"
#include "OW_HTTPException.hpp"
#include "OW_SocketException.hpp"
#include "client/Socket.hpp"
#include "client/TlsSocket.hpp"

#include <utility>

namespace OpenWBEM {
namespace {

// HTTP status codes
const unsigned unauthorized = 401;
const unsigned methodNotAllowed = 405;
const unsigned requestTimeout = 408;
const unsigned notImplemented = 501;
const unsigned notExtended = 510; // RFC 2774

bool refusesMethod(unsigned status) {
    return status == methodNotAllowed || status == notImplemented || status == notExtended;
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
        } else if (refusesMethod(status) && m_usesExtension) {
            m_usesExtension = false;
            authorization = m_authentication.introduction(); // an answer serves once
            hasAnswered = false;
        } else {
            reply->expectBody();
            return reply;
        }
    }
}

// Sends once, or once more when a kept connection turns out to have ended.
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

// Null when the connection ends instead of a reply.
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
        std::unique_ptr<Stream> socket = std::make_unique<Socket>(m_endpoint, deadline);
        return m_endpoint.usesTls ? startTls(std::move(socket), m_endpoint.serverName, deadline)
                                  : std::move(socket);
    } catch (const SocketTimeoutException& e) {
        OW_THROW(SocketException, e.getMessage());
    }
}

} // namespace OpenWBEM
