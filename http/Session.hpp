#ifndef HTTP_SESSION_HPP_INCLUDED
#define HTTP_SESSION_HPP_INCLUDED
#include "http/Peer.hpp"
#include "http/ReplyStream.hpp"
#include "http/RequestRules.hpp"
#include "http/Responder.hpp"
#include "http/Sessions.hpp"
#include "http/Stream.hpp"

#include <boost/asio/basic_waitable_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace http {

/**
 * One connection: begins TLS if it is to be encrypted, reads requests, has its Responder answer them one
 * after the other, and sends the replies, until the client closes or gets an error response.
 *
 * Pending I/O, and a callback that the responder holds, own the session; its connection is open as long as it
 * lives. An exception of the responder passes through the io_context, ends the session and closes the
 * connection.
 */
class Session : public std::enable_shared_from_this<Session> {
public:
    using Socket = Stream::Socket;

    /** @param tls null: without TLS */
    Session(Socket socket, std::shared_ptr<Sessions> sessions, TlsContext* tls = nullptr);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** Reads and answers requests, after a handshake if the connection has TLS. */
    void start();
    /** Sends an error response, logs it, and closes the connection. Before the handshake nothing is sent. */
    void refuse(const ErrorResponse& error);
    /** Closes the connection, after the reply to the current request. */
    void finish();
    /** Whether the client came over the network. */
    bool isOnNetwork() const { return m_peer.isOnNetwork(); }

private:
    using Error = boost::system::error_code;
    using Clock = std::chrono::steady_clock;
    using Timer =
        boost::asio::basic_waitable_timer<Clock, boost::asio::wait_traits<Clock>, Stream::executor_type>;

    enum class State {
        /** Waits for the end of the handshake. */
        shakingHands,
        /** Waits for the first byte of a request. */
        idle,
        /** Reads a request. */
        reading,
        /** Waits for Responder::authorize(). */
        authorizing,
        /** Waits for Responder::answer(). */
        answering,
        /** Sends the reply. */
        sending,
        /** Sends an error response, and reads nothing more. */
        refusing,
        closed
    };

    void shakeHands();
    void serve();
    void failHandshake(const std::string& why);

    // The steps of a request, in this order.
    void awaitRequest();
    void readHead();
    void readBody(std::size_t headSize);
    void authorize(std::size_t bodySize);
    void answer();
    void onAnswer(Answer answer);
    void sendNext();
    void onSent();

    // Other ends of a request.
    void onReadError(const Error& error);
    void onTimeout();
    void sendError(const ErrorResponse& error);
    void close();

    const Settings& settings() const { return m_sessions->settings; }
    std::function<void(const Error&, std::size_t)> whenRead(void (Session::*next)(std::size_t size));
    void send(std::string bytes, void (Session::*next)());
    void limitTime(std::chrono::milliseconds time);
    void logOutcome();

    const std::shared_ptr<Sessions> m_sessions;
    Stream m_stream;
    Peer m_peer;
    std::unique_ptr<Responder> m_responder; // null until the handshake is done

    State m_state = State::shakingHands;
    Timer m_timer;                         // of the state
    boost::beast::flat_buffer m_buffer;    // bytes received and not parsed
    std::optional<RequestParser> m_parser; // of the current request, until it is answered
    ReplyForm m_form{};                    // of the reply to the current request
    std::optional<ReplyStream> m_reply;    // being sent
    std::string m_sent;                    // bytes being sent
    bool m_isHeadRead = false;             // the client has sent a complete head
};

} // namespace http
#endif
