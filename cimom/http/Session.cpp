#include "http/Session.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
namespace http = boost::beast::http;

Session::Session(Socket socket, std::shared_ptr<const SessionContext> context)
    : m_socket(std::move(socket))
    , m_access(accessOfPeer(m_socket.native_handle()))
    , m_context(std::move(context))
    , m_timer(m_socket.get_executor())
    , m_buffer(headLimit + bodyLimit) {}

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

std::function<void(const Session::Error&, std::size_t)> Session::whenRead(void (Session::*next)()) {
    return [self = shared_from_this(), next](const Error& error, std::size_t) {
        if (self->m_isRefusing)
            return;
        if (error)
            self->onReadError(error);
        else
            (self.get()->*next)();
    };
}

void Session::readHead() {
    m_parser.emplace();
    m_parser->header_limit(headLimit);
    m_parser->body_limit(bodyLimit);
    limitTime(m_context->limits.request);
    http::async_read_header(m_socket, m_buffer, *m_parser, whenRead(&Session::readBody));
}

void Session::readBody() {
    m_isUnderstood = true;
    if (const std::optional<Refusal> refusal = refusalOf(*m_parser)) {
        refuse(*refusal);
        return;
    }
    http::async_read(m_socket, m_buffer, *m_parser, whenRead(&Session::answer));
}

void Session::answer() {
    const std::string& body = m_parser->get().body();
    if (body.empty()) {
        refuse({400, "Bad request", "The request has no body"});
        return;
    }
    const RequestHead request = requestHead(*m_parser);
    send(m_context->format.answer(m_context->handler.handle(body, m_access), request), request.keepsAlive);
}

void Session::onReadError(const Error& error) {
    if (const std::optional<Refusal> refusal = refusalOf(error))
        refuse(*refusal);
    else
        close();
}

void Session::refuse(const Refusal& refusal) {
    m_isRefusing = true;
    send(m_context->format.refusal(refusal, m_isUnderstood), false);
}

void Session::send(std::string reply, bool thenContinue) {
    m_reply = std::move(reply);
    limitTime(m_context->limits.request);
    asio::async_write(m_socket, asio::buffer(m_reply),
                      [self = shared_from_this(), thenContinue](const Error& error, std::size_t) {
                          self->m_reply = std::string();
                          if (!error && thenContinue)
                              self->awaitRequest();
                          else
                              self->close();
                      });
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
    const bool isSending = !m_reply.empty();
    if (isSending) {
        close();
        return;
    }
    Error ignored;
    m_socket.cancel(ignored);
    refuse({408, "Request timeout", "Timeout waiting for request."});
}

void Session::close() {
    m_timer.cancel();
    Error ignored;
    m_socket.close(ignored);
}

} // namespace cimom
