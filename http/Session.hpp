#ifndef HTTP_SESSION_HPP_INCLUDED
#define HTTP_SESSION_HPP_INCLUDED
#include "http/Counters.hpp"
#include "http/Peer.hpp"
#include "http/ReplyStream.hpp"
#include "http/RequestRules.hpp"
#include "http/SessionSettings.hpp"
#include "http/Sessions.hpp"
#include "system/AnswerPending.hpp"

#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cimom {

/**
 * One connection: reads requests and answers them, one after the other, until the client closes or gets an
 * error response. Pending I/O owns the session, so it lives as long as its connection is open. An exception
 * of a handler, which passes through the io_context, ends its session and closes the connection.
 *
 * A client on the network may write once it has logged in by the header Authorization of its request, scheme
 * Basic, unless its user may only read; one that has not is asked to by status 401 when it tries to write or,
 * where that requires a login, to read.
 *
 * A request that needs the answer of a child process waits for it, and is then carried out once more.
 */
class Session : public std::enable_shared_from_this<Session> {
public:
    using Socket = boost::asio::generic::stream_protocol::socket;

    /** All but the socket must outlive the io_context that the socket belongs to. */
    Session(Socket socket, const SessionSettings& settings, Counters& counters, Sessions& sessions);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** Reads and answers requests. */
    void start();
    /** Sends an error response, logs it, and closes the connection. */
    void refuse(const Refusal& refusal);
    /** Closes the connection, but not before the answer that is under way has been sent. */
    void finish();
    /** Has the client log in again with its next request. */
    void forgetLogin();
    /** Whether the client came over the network. */
    bool isOnNetwork() const { return m_peer.isOnNetwork; }

private:
    using Error = boost::system::error_code;

    enum class State {
        /** Waits for the first byte of a request. */
        idle,
        /** Reads a request. */
        reading,
        /** Waits for the check of a password. */
        checking,
        /** Waits for a child process to work out what the reply needs. */
        waiting,
        /** Sends the reply. */
        answering,
        /** Sends an error response, and reads nothing any more. */
        refusing,
        closed
    };

    // What happens to a request, in this order.
    void awaitRequest();
    void readHead();
    void readBody(std::size_t headSize);
    void answer(std::size_t);
    void logIn();
    void onChecked(Verdict verdict);
    bool isLoggedIn() const { return !m_accepted.empty() && m_request.authorization == m_accepted; }
    void carryOut(Access access);
    void carryOutLater(const AnswerPending& answer, Access access);
    void sendNext();
    void onSent();

    // How a request ends otherwise.
    void onReadError(const Error& error);
    void onTimeout();
    void refuseLogin(const char* why);
    void sendRefusal(const Refusal& refusal);
    void close();

    std::function<void(const Error&, std::size_t)> whenRead(void (Session::*next)(std::size_t size));
    void send(std::string bytes, void (Session::*next)());
    void limitTime(std::chrono::milliseconds time);
    void logOutcome();

    Socket m_socket;
    const Peer m_peer;
    const SessionSettings& m_settings;
    Counters& m_counters;
    Sessions& m_sessions;

    State m_state = State::idle;
    boost::asio::steady_timer m_timer;     // of the state
    boost::beast::flat_buffer m_buffer;    // bytes that have arrived and are not parsed
    std::optional<RequestParser> m_parser; // of the request until it is carried out
    RequestHead m_request{};               // that is being answered
    std::string m_title;                   // of its operation
    std::optional<ReplyStream> m_reply;    // that is being sent
    std::string m_sent;                    // bytes on their way to the client
    std::string m_checking;                // the header Authorization whose password is being checked
    std::string m_accepted;                // the header by which the client has logged in
    Access m_acceptedAccess{};             // what its user may do
    bool m_isUnderstood = false;           // the client has sent a head that could be read
};

} // namespace cimom
#endif
