#include "http/Session.hpp"

#include "OW_CIMException.hpp"
#include "http/Credentials.hpp"
#include "system/Log.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
namespace http = boost::beast::http;

namespace {

/** Numbers answers by two digits. */
std::string numberOf(unsigned answer) {
    const std::string digits = std::to_string(answer % 100);
    return digits.size() < 2 ? "0" + digits : digits;
}

std::string textOf(const OperationError& error) {
    return std::to_string(error.code) + " " + error.description;
}

} // namespace

Session::Session(Socket socket, std::shared_ptr<SessionContext> context)
    : m_socket(std::move(socket))
    , m_peer(peerOf(m_socket.native_handle()))
    , m_context(std::move(context))
    , m_timer(m_socket.get_executor())
    , m_buffer(m_context->limits.head + static_cast<std::size_t>(m_context->limits.body)) {
    m_context->sessions.insert(this);
}

Session::~Session() {
    m_context->sessions.erase(this);
}

void Session::start() {
    awaitRequest();
}

void Session::awaitRequest() {
    if (m_buffer.size() > 0) {
        readHead();
        return;
    }
    limitTime(m_context->limits.idle);
    m_socket.async_wait(Socket::wait_read, [self = shared_from_this()](const Error& error) {
        if (error || self->m_isRefusing)
            return;
        self->readHead();
    });
}

/** What follows a read: the next step, which is told how many bytes it took, or an end to the connection. */
std::function<void(const Session::Error&, std::size_t)>
Session::whenRead(void (Session::*next)(std::size_t size)) {
    return [self = shared_from_this(), next](const Error& error, std::size_t size) {
        if (self->m_isRefusing)
            return;
        if (error)
            self->onReadError(error);
        else
            (self.get()->*next)(size);
    };
}

void Session::readHead() {
    m_parser.emplace();
    m_parser->header_limit(m_context->limits.head);
    m_parser->body_limit(m_context->limits.body);
    limitTime(m_context->limits.request);
    http::async_read_header(m_socket, m_buffer, *m_parser, whenRead(&Session::readBody));
}

void Session::readBody(std::size_t headSize) {
    m_isUnderstood = true;
    if (headSize > m_context->limits.head) { // to which the parser allows its first line besides
        onReadError(http::error::header_limit);
        return;
    }
    if (const std::optional<Refusal> refusal = refusalOf(*m_parser)) {
        refuse(*refusal);
        return;
    }
    http::async_read(m_socket, m_buffer, *m_parser, whenRead(&Session::answer));
}

void Session::onReadError(const Error& error) {
    if (const std::optional<Refusal> refusal = refusalOf(error, m_context->limits))
        refuse(*refusal);
    else
        close();
}

void Session::answer(std::size_t) {
    if (m_parser->get().body().empty()) {
        refuse({400, "Bad request", "The request has no body"});
        return;
    }
    m_request = requestHead(*m_parser);
    if (m_peer.isOnNetwork && m_context->checkPassword)
        logIn(m_request->authorization);
    else
        carryOut(m_peer.access);
}

void Session::logIn(const std::string& authorization) {
    const std::optional<Credentials> given = basicCredentials(authorization);
    if (!given) {
        carryOut(m_peer.access);
        return;
    }
    const unsigned version = m_context->usersVersion;
    if (authorization == m_accepted && version == m_acceptedVersion) {
        carryOut(Access::write);
        return;
    }
    limitTime(m_context->limits.request);
    m_context->checkPassword(
        given->user, given->password,
        [self = shared_from_this(), version](Verdict verdict) { self->onChecked(verdict, version); });
}

void Session::onChecked(Verdict verdict, unsigned usersVersion) {
    if (m_isRefusing)
        return;
    if (verdict == Verdict::wrong) {
        refuseLogin("wrong name or password");
    } else if (verdict == Verdict::unchecked) {
        refuse({503, "Service unavailable", "the password could not be checked"});
    } else {
        m_accepted = m_request->authorization;
        m_acceptedVersion = usersVersion;
        carryOut(Access::write);
    }
}

void Session::refuseLogin(const char* why) {
    refuse({401, "Unauthorized", why, "WWW-Authenticate", "Basic realm=\"owbcimomd\""});
}

void Session::carryOut(Access access) {
    const bool isBinary = m_request->protocol == Protocol::binary;
    const Handler& handler = isBinary ? m_context->binary : m_context->xml;
    try {
        OperationReply reply = handler.handle(m_parser->get().body(), access);
        m_parser.reset();
        const bool isDenied = reply.error && reply.error->code == OpenWBEM::CIMException::ACCESS_DENIED;
        if (isDenied && m_peer.isOnNetwork && m_context->checkPassword) {
            refuseLogin("log in to write");
            return;
        }
        m_title = m_peer.name + ": " + reply.title;
        if (reply.error)
            log(m_title + ": " + textOf(*reply.error));
        else if (m_context->isVerbose)
            log(m_title);
        m_hasFailed = reply.error.has_value();
        m_reply.emplace(std::move(reply), *m_request, handler.contentType(), numberOf(++m_context->answers));
    } catch (const UnreadableRequest& e) {
        refuse({e.status(), e.reason(), std::string("CIMError: ") + e.what(), "CIMError", e.what()});
        return;
    }
    sendNext();
}

void Session::sendNext() {
    std::string piece = m_reply->next();
    if (m_reply->error() && !std::exchange(m_hasFailed, true))
        log(m_title + ": " + textOf(*m_reply->error()));
    if (!piece.empty())
        send(std::move(piece), &Session::sendNext);
    else
        onSent();
}

/** What follows an answer. */
void Session::onSent() {
    const bool isLast = m_isLast || !m_request->keepsAlive;
    m_reply.reset();
    m_request.reset();
    if (isLast)
        close();
    else
        awaitRequest();
}

void Session::refuse(const Refusal& refusal) {
    log(m_peer.name + ": refused: " + std::to_string(refusal.status) + " " + refusal.reason + ": " +
        refusal.detail);
    sendRefusal(refusal);
}

void Session::sendRefusal(const Refusal& refusal) {
    m_isRefusing = true;
    send(refusalHead(refusal, m_isUnderstood), &Session::close);
}

void Session::send(std::string bytes, void (Session::*next)()) {
    m_sent = std::move(bytes);
    limitTime(m_context->limits.request);
    asio::async_write(m_socket, asio::buffer(m_sent),
                      [self = shared_from_this(), next](const Error& error, std::size_t) {
                          self->m_sent = std::string();
                          if (error)
                              self->close();
                          else
                              (self.get()->*next)();
                      });
}

void Session::finish() {
    m_isLast = true;
    if (!m_request && m_sent.empty())
        close();
}

void Session::limitTime(std::chrono::milliseconds time) {
    m_timer.expires_after(time);
    // What is read or written keeps the session alive, not its timer: a session that an exception has stopped
    // goes at once.
    m_timer.async_wait([weak = weak_from_this()](const Error& error) {
        const std::shared_ptr<Session> self = weak.lock();
        // The timer may have been set anew after this call of it was due.
        if (!error && self && self->m_timer.expiry() <= std::chrono::steady_clock::now())
            self->onTimeout();
    });
}

void Session::onTimeout() {
    const bool isSending = !m_sent.empty();
    if (isSending) {
        close();
        return;
    }
    Error ignored;
    m_socket.cancel(ignored);
    const Refusal refusal{408, "Request timeout", "Timeout waiting for request."};
    const bool isIdle = !m_parser;
    if (isIdle) // which is no failure
        sendRefusal(refusal);
    else
        refuse(refusal);
}

void Session::close() {
    m_timer.cancel();
    Error ignored;
    m_socket.shutdown(Socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

} // namespace cimom
