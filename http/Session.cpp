#include "http/Session.hpp"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <utility>

namespace http {

namespace asio = boost::asio;
namespace beast = boost::beast;

namespace {

/** Bytes of the first read of a request: most heads fit. */
const std::size_t firstRead = 1024;

} // namespace

Session::Session(Socket socket, std::shared_ptr<Sessions> sessions, TlsContext* tls)
    : m_sessions(std::move(sessions))
    , m_stream(std::move(socket), tls)
    , m_peer(peerOf(m_stream.descriptor()))
    , m_timer(m_stream.get_executor())
    , m_buffer(settings().limits.head + static_cast<std::size_t>(settings().limits.body)) {
    m_sessions->add(*this);
    ++m_sessions->counters.connections;
}

Session::~Session() {
    m_sessions->remove(*this);
}

void Session::start() {
    if (m_stream.hasTls())
        shakeHands();
    else
        serve();
}

void Session::shakeHands() {
    m_state = State::shakingHands;
    limitTime(settings().limits.request);
    m_stream.shakeHands([self = shared_from_this()](const std::optional<std::string>& failure) {
        if (self->m_state != State::shakingHands)
            return;
        if (failure) {
            self->failHandshake(*failure);
            return;
        }
        self->m_peer.subject = self->m_stream.subject();
        self->serve();
    });
}

void Session::serve() {
    m_responder = settings().makeResponder(m_peer);
    awaitRequest();
}

void Session::failHandshake(const std::string& why) {
    ++m_sessions->counters.refused;
    settings().log(m_peer.name + ": TLS handshake failed: " + why);
    close();
}

void Session::awaitRequest() {
    m_state = State::idle;
    if (m_buffer.size() > 0) {
        readHead();
        return;
    }
    limitTime(settings().limits.idle);
    const std::size_t size = std::min(firstRead, m_buffer.max_size());
    m_stream.async_read_some(m_buffer.prepare(size),
                             [self = shared_from_this()](const Error& error, std::size_t received) {
                                 if (self->m_state != State::idle)
                                     return;
                                 self->m_buffer.commit(received);
                                 if (error)
                                     self->close();
                                 else
                                     self->readHead();
                             });
}

void Session::readHead() {
    m_state = State::reading;
    m_parser.emplace();
    m_parser->header_limit(settings().limits.head);
    m_parser->body_limit(settings().limits.body);
    limitTime(settings().limits.request);
    beast::http::async_read_header(m_stream, m_buffer, *m_parser, whenRead(&Session::readBody));
}

void Session::readBody(std::size_t headSize) {
    m_isHeadRead = true;
    if (headSize > settings().limits.head) { // the parser does not count the first line
        onReadError(beast::http::error::header_limit);
        return;
    }
    std::optional<ErrorResponse> error = headError(*m_parser, settings().methods);
    if (!error)
        error = m_responder->check(m_parser->get());
    if (error) {
        refuse(*error);
        return;
    }
    m_form = replyForm(m_parser->get());
    beast::http::async_read(m_stream, m_buffer, *m_parser, whenRead(&Session::authorize));
}

/** The callback of a read: calls the next step with the number of bytes that the parser has consumed. */
std::function<void(const Session::Error&, std::size_t)>
Session::whenRead(void (Session::*next)(std::size_t size)) {
    return [self = shared_from_this(), next](const Error& error, std::size_t size) {
        if (self->m_state != State::reading)
            return;
        if (error)
            self->onReadError(error);
        else
            (self.get()->*next)(size);
    };
}

void Session::onReadError(const Error& code) {
    if (const std::optional<ErrorResponse> error = readError(code, settings().limits))
        refuse(*error);
    else
        close();
}

void Session::authorize(std::size_t) {
    m_state = State::authorizing;
    limitTime(settings().limits.request);
    m_responder->authorize(m_parser->get(),
                           [self = shared_from_this()](const std::optional<ErrorResponse>& error) {
                               if (self->m_state != State::authorizing)
                                   return;
                               if (error)
                                   self->refuse(*error);
                               else
                                   self->answer();
                           });
}

void Session::answer() {
    m_state = State::answering;
    // No time limit. A wait of the timer that is already due sees the new expiry.
    m_timer.expires_at(std::chrono::steady_clock::time_point::max());
    m_responder->answer(m_parser->get(), [self = shared_from_this()](Answer answer) {
        if (self->m_state == State::answering)
            self->onAnswer(std::move(answer));
    });
}

void Session::onAnswer(Answer answer) {
    m_parser.reset();
    if (const auto* const error = std::get_if<ErrorResponse>(&answer)) {
        refuse(*error);
        return;
    }
    m_state = State::sending;
    ++m_sessions->counters.requests;
    m_reply.emplace(std::move(std::get<std::unique_ptr<Reply>>(answer)), m_form, settings().name);
    sendNext();
}

void Session::sendNext() {
    std::string piece = m_reply->next();
    if (piece.empty()) {
        onSent();
        return;
    }
    if (m_reply->isDone())
        logOutcome();
    send(std::move(piece), &Session::sendNext);
}

void Session::logOutcome() {
    const std::optional<std::string> failure = m_reply->reply().failure();
    m_sessions->counters.failed += failure ? 1 : 0;
    if (failure || settings().isVerbose)
        settings().log(m_peer.name + ": " + m_reply->reply().title() +
                       (failure ? ": " + *failure : std::string()));
}

void Session::onSent() {
    m_reply.reset();
    if (m_form.keepsAlive)
        awaitRequest();
    else
        close();
}

void Session::refuse(const ErrorResponse& error) {
    ++m_sessions->counters.refused;
    settings().log(m_peer.name + ": refused: " + std::to_string(error.status) + " " + error.reason + ": " +
                   error.detail);
    if (m_stream.isReady())
        sendError(error);
    else
        close();
}

void Session::sendError(const ErrorResponse& error) {
    m_state = State::refusing;
    send(bytesOf(error, m_isHeadRead, settings().name), &Session::close);
}

void Session::send(std::string bytes, void (Session::*next)()) {
    m_sent = std::move(bytes);
    limitTime(settings().limits.request);
    asio::async_write(m_stream, asio::buffer(m_sent),
                      [self = shared_from_this(), next](const Error& error, std::size_t) {
                          self->m_sent = std::string();
                          if (error)
                              self->close();
                          else
                              (self.get()->*next)();
                      });
}

void Session::limitTime(std::chrono::milliseconds time) {
    m_timer.expires_after(time);
    // The timer holds a weak reference: a session that an exception ends is destroyed at once.
    m_timer.async_wait([weak = weak_from_this()](const Error& error) {
        const std::shared_ptr<Session> self = weak.lock();
        // A wait that was due when the timer was set again gets no error.
        if (!error && self && self->m_timer.expiry() <= std::chrono::steady_clock::now())
            self->onTimeout();
    });
}

void Session::onTimeout() {
    const ErrorResponse timeout{408, "Request timeout", "Timeout waiting for request."};
    switch (m_state) {
    case State::shakingHands:
        failHandshake("timed out after " + std::to_string(settings().limits.request.count() / 1000) + " s");
        break;
    case State::idle: // not logged: it is no failure
        m_stream.cancel();
        sendError(timeout);
        break;
    case State::reading:
    case State::authorizing:
        m_stream.cancel();
        refuse(timeout);
        break;
    case State::answering: // has no time limit
    case State::sending:
    case State::refusing:
    case State::closed:
        close();
    }
}

void Session::finish() {
    if (m_state == State::shakingHands || m_state == State::idle || m_state == State::reading)
        close();
    else
        m_form.keepsAlive = false;
}

void Session::close() {
    m_state = State::closed;
    m_timer.cancel();
    m_stream.close(shared_from_this());
}

} // namespace http
