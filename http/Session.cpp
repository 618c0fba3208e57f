#include "http/Session.hpp"

#include "OW_CIMException.hpp"
#include "system/Log.hpp"
#include "users/FailedLogins.hpp"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
namespace http = boost::beast::http;

namespace {

/** Numbers answers by two digits. */
std::string numberOf(unsigned long answer) {
    const std::string digits = std::to_string(answer % 100);
    return digits.size() < 2 ? "0" + digits : digits;
}

} // namespace

Session::Session(Socket socket, const SessionSettings& settings, Counters& counters, Sessions& sessions)
    : m_socket(std::move(socket))
    , m_peer(peerOf(m_socket.native_handle()))
    , m_settings(settings)
    , m_counters(counters)
    , m_sessions(sessions)
    , m_timer(m_socket.get_executor())
    , m_buffer(settings.limits.head + static_cast<std::size_t>(settings.limits.body)) {
    m_sessions.add(*this);
    ++m_counters.connections;
}

Session::~Session() {
    m_sessions.remove(*this);
}

void Session::start() {
    awaitRequest();
}

void Session::awaitRequest() {
    m_state = State::idle;
    if (m_buffer.size() > 0) {
        readHead();
        return;
    }
    limitTime(m_settings.limits.idle);
    m_socket.async_wait(Socket::wait_read, [self = shared_from_this()](const Error& error) {
        if (!error && self->m_state == State::idle)
            self->readHead();
    });
}

void Session::readHead() {
    m_state = State::reading;
    m_parser.emplace();
    m_parser->header_limit(m_settings.limits.head);
    m_parser->body_limit(m_settings.limits.body);
    limitTime(m_settings.limits.request);
    http::async_read_header(m_socket, m_buffer, *m_parser, whenRead(&Session::readBody));
}

void Session::readBody(std::size_t headSize) {
    m_isUnderstood = true;
    if (headSize > m_settings.limits.head) { // to which the parser allows its first line besides
        onReadError(http::error::header_limit);
        return;
    }
    if (const std::optional<Refusal> refusal = refusalOf(*m_parser)) {
        refuse(*refusal);
        return;
    }
    m_request = requestHead(*m_parser);
    http::async_read(m_socket, m_buffer, *m_parser, whenRead(&Session::answer));
}

/** What follows a read: the next step, which gets the number of bytes that the parser has taken. */
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

void Session::onReadError(const Error& error) {
    if (const std::optional<Refusal> refusal = refusalOf(error, m_settings.limits))
        refuse(*refusal);
    else
        close();
}

void Session::answer(std::size_t) {
    if (m_parser->get().body().empty())
        refuse({400, "Bad request", "The request has no body"});
    else if (m_peer.isOnNetwork && m_settings.logIn)
        logIn();
    else
        carryOut(m_peer.access);
}

void Session::logIn() {
    const std::optional<Credentials> given = basicCredentials(m_request.authorization);
    if (!given && m_settings.requiresLogin) {
        refuseLogin("log in to read");
        return;
    }
    if (!given) {
        carryOut(m_peer.access);
        return;
    }
    if (isLoggedIn()) {
        carryOut(m_acceptedAccess);
        return;
    }
    m_state = State::checking;
    m_checking = m_request.authorization;
    limitTime(m_settings.limits.request);
    m_settings.logIn(m_peer.address, *given,
                     [self = shared_from_this()](Verdict verdict) { self->onChecked(verdict); });
}

void Session::onChecked(Verdict verdict) {
    if (m_state != State::checking)
        return;
    if (verdict == Verdict::wrong) {
        refuseLogin("wrong name or password");
    } else if (verdict == Verdict::tooOften) {
        const std::string seconds = std::to_string(FailedLogins::period.count());
        refuse({429, "Too many requests", "too many logins have failed", "Retry-After", seconds});
    } else if (verdict == Verdict::unchecked) {
        refuse({503, "Service unavailable", "the password could not be checked"});
    } else {
        m_accepted = std::exchange(m_checking, std::string());
        m_acceptedAccess = verdict == Verdict::mayWrite ? Access::write : Access::read;
        carryOut(m_acceptedAccess);
    }
}

void Session::forgetLogin() {
    m_checking.clear();
    m_accepted.clear();
}

void Session::refuseLogin(const char* why) {
    refuse({401, "Unauthorized", why, "WWW-Authenticate", "Basic realm=\"owbcimomd\""});
}

void Session::carryOut(Access access) {
    m_state = State::answering;
    const Handler& handler = m_request.protocol == Protocol::binary ? m_settings.binary : m_settings.xml;
    try {
        OperationReply reply = handler.handle(m_parser->get().body(), access, m_request.announced);
        m_parser.reset();
        const bool isDenied = reply.error && reply.error->code == OpenWBEM::CIMException::ACCESS_DENIED;
        if (isDenied && m_peer.isOnNetwork && m_settings.logIn && !isLoggedIn()) {
            refuseLogin("log in to write");
            return;
        }
        m_title = reply.title;
        m_reply.emplace(std::move(reply), m_request, handler.contentType(), numberOf(++m_counters.requests));
    } catch (const AnswerPending& answer) {
        carryOutLater(answer, access);
        return;
    } catch (const UnreadableRequest& e) {
        refuse({e.status(), e.reason(), std::string("CIMError: ") + e.what(), "CIMError", e.what()});
        return;
    }
    sendNext();
}

void Session::carryOutLater(const AnswerPending& answer, Access access) {
    m_state = State::waiting;
    // The child that works out the answer has a time limit. A timer that is due already sees the new expiry.
    m_timer.expires_at(std::chrono::steady_clock::time_point::max());
    answer.wait([self = shared_from_this(), access] {
        if (self->m_state == State::waiting)
            self->carryOut(access);
    });
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
    const std::optional<OperationError>& error = m_reply->error();
    m_counters.failed += error ? 1 : 0;
    if (error || m_settings.isVerbose)
        log(m_peer.name + ": " + m_title +
            (error ? ": " + std::to_string(error->code) + " " + error->description : std::string()));
}

void Session::onSent() {
    m_reply.reset();
    if (m_request.keepsAlive)
        awaitRequest();
    else
        close();
}

void Session::refuse(const Refusal& refusal) {
    ++m_counters.refused;
    log(m_peer.name + ": refused: " + std::to_string(refusal.status) + " " + refusal.reason + ": " +
        refusal.detail);
    sendRefusal(refusal);
}

void Session::sendRefusal(const Refusal& refusal) {
    m_state = State::refusing;
    send(refusalHead(refusal, m_isUnderstood), &Session::close);
}

void Session::send(std::string bytes, void (Session::*next)()) {
    m_sent = std::move(bytes);
    limitTime(m_settings.limits.request);
    asio::async_write(m_socket, asio::buffer(m_sent),
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
    // Pending I/O owns the session; the timer holds a weak reference, so that a session which an exception
    // has ended goes at once.
    m_timer.async_wait([weak = weak_from_this()](const Error& error) {
        const std::shared_ptr<Session> self = weak.lock();
        // The timer may have been set anew after this call of it was due.
        if (!error && self && self->m_timer.expiry() <= std::chrono::steady_clock::now())
            self->onTimeout();
    });
}

void Session::onTimeout() {
    Error ignored;
    const Refusal refusal{408, "Request timeout", "Timeout waiting for request."};
    switch (m_state) {
    case State::idle: // which is no failure
        m_socket.cancel(ignored);
        sendRefusal(refusal);
        break;
    case State::reading:
    case State::checking:
        m_socket.cancel(ignored);
        refuse(refusal);
        break;
    case State::waiting: // which has no time limit of its own
    case State::answering:
    case State::refusing:
    case State::closed:
        close();
    }
}

void Session::finish() {
    if (m_state == State::idle || m_state == State::reading)
        close();
    else
        m_request.keepsAlive = false;
}

void Session::close() {
    m_state = State::closed;
    m_timer.cancel();
    Error ignored;
    m_socket.shutdown(Socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

} // namespace cimom
