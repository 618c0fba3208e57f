#ifndef CIMOM_HTTP_SESSION_HPP_INCLUDED
#define CIMOM_HTTP_SESSION_HPP_INCLUDED
#include "http/Limits.hpp"
#include "http/Peer.hpp"
#include "http/ReplyStream.hpp"
#include "http/RequestRules.hpp"
#include "protocol/Handler.hpp"
#include "users/PasswordCheck.hpp"

#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace cimom {

class Session;

/** Tells later whether a user has a password, see PasswordCheck::check(). */
using CheckPassword =
    std::function<void(const std::string& user, const std::string& password, PasswordCheck::Done done)>;

/** What the sessions of an object manager share. */
struct SessionContext {
    const Handler& binary;
    const Handler& xml;
    Limits limits;
    /** Null when nobody may log in. */
    CheckPassword checkPassword{};
    /** Goes up when the users have been read again, which ends all logins. */
    unsigned usersVersion = 0;
    /** Requests that are answered well are logged, too. */
    bool isVerbose = false;

    /** Those that are open. */
    std::set<Session*> sessions{};
    /** Of the last answer. */
    unsigned answers = 0;
};

/**
 * One connection: reads requests and answers them, one after the other, until the client closes or is
 * refused. It keeps itself alive as long as the connection is open. An exception of a handler, which passes
 * through the io_context, ends its session and closes the connection.
 *
 * A client on the network may write once it has logged in by the header Authorization of its request, scheme
 * Basic; one that has not is asked to by status 401 when it tries to write.
 */
class Session : public std::enable_shared_from_this<Session> {
public:
    using Socket = boost::asio::generic::stream_protocol::socket;

    Session(Socket socket, std::shared_ptr<SessionContext> context);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** Reads and answers requests. */
    void start();
    /** Says why the client is not served, in the place of an answer, and closes the connection. */
    void refuse(const Refusal& refusal);
    /** Closes the connection, but not before the answer that is under way has been sent. */
    void finish();
    /** Whether the client came over the network. */
    bool isOnNetwork() const { return m_peer.isOnNetwork; }

private:
    using Error = boost::system::error_code;

    // Reading
    void awaitRequest();
    std::function<void(const Error&, std::size_t)> whenRead(void (Session::*next)(std::size_t size));
    void readHead();
    void readBody(std::size_t headSize);
    void onReadError(const Error& error);

    // Answering
    void answer(std::size_t);
    void logIn(const std::string& authorization);
    void onChecked(Verdict verdict, unsigned usersVersion);
    void refuseLogin(const char* why);
    void carryOut(Access access);
    void sendNext();
    void onSent();

    void send(std::string bytes, void (Session::*next)());
    void onTimeout();
    void sendRefusal(const Refusal& refusal);
    void limitTime(std::chrono::milliseconds time);
    void close();

    Socket m_socket;
    const Peer m_peer;
    std::shared_ptr<SessionContext> m_context;
    boost::asio::steady_timer m_timer;
    boost::beast::flat_buffer m_buffer;
    std::optional<RequestParser> m_parser; // of the request that is being read or answered
    std::optional<RequestHead> m_request;  // that is being answered
    std::optional<ReplyStream> m_reply;    // that is being sent
    std::string m_title;                   // of what is being answered, and for whom
    bool m_hasFailed = false;              // which has been logged
    std::string m_accepted;                // the header by which the client has logged in
    unsigned m_acceptedVersion = 0;        // of the users that it was checked against
    std::string m_sent;                    // bytes on their way to the client, else empty
    bool m_isUnderstood = false;           // the client has sent a head that could be read
    bool m_isRefusing = false;             // nothing is read any more
    bool m_isLast = false;                 // the answer that is under way
};

} // namespace cimom
#endif
