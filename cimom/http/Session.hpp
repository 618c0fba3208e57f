#ifndef CIMOM_HTTP_SESSION_HPP_INCLUDED
#define CIMOM_HTTP_SESSION_HPP_INCLUDED
#include "Access.hpp"
#include "http/ReplyFormat.hpp"
#include "http/RequestRules.hpp"
#include "protocol/BinaryHandler.hpp"

#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cimom {

/** How long a client may take. */
struct SessionLimits {
    /** Until its next request begins. It is then told by status 408. */
    std::chrono::milliseconds idle = std::chrono::seconds(300);
    /** For one request to arrive whole, and again for its reply to be taken. */
    std::chrono::milliseconds request = std::chrono::seconds(60);
};

/** What the sessions of an object manager share. */
struct SessionContext {
    const BinaryHandler& handler;
    ReplyFormat& format;
    SessionLimits limits;
};

/**
 * One connection: reads requests and answers them, one after the other, until the client closes or is
 * refused. It keeps itself alive as long as the connection is open. An exception of a handler, which passes
 * through the io_context, ends its session and closes the connection.
 */
class Session : public std::enable_shared_from_this<Session> {
public:
    using Socket = boost::asio::local::stream_protocol::socket;

    /** What the client may do depends on the user that it connected as, see accessOfPeer(). */
    Session(Socket socket, std::shared_ptr<const SessionContext> context);
    /** Reads and answers requests. */
    void start();
    /** Says why the client is not served, in the place of an answer, and closes the connection. */
    void refuse(const Refusal& refusal);

private:
    using Error = boost::system::error_code;

    void awaitRequest();
    /** What follows a read: the next step, or an end to the connection. */
    std::function<void(const Error&, std::size_t)> whenRead(void (Session::*next)());
    void readHead();
    void readBody();
    void answer();
    void send(std::string reply, bool thenContinue);
    void onReadError(const Error& error);
    void onTimeout();
    void limitTime(std::chrono::milliseconds time);
    void close();

    Socket m_socket;
    Access m_access;
    std::shared_ptr<const SessionContext> m_context;
    boost::asio::steady_timer m_timer;
    boost::beast::flat_buffer m_buffer;
    std::optional<RequestParser> m_parser; // of the request that is being read
    std::string m_reply;                   // that is being sent, else empty
    bool m_isUnderstood = false;           // the client has sent a head that could be read
    bool m_isRefusing = false;             // nothing is read any more
};

} // namespace cimom
#endif
