#ifndef CIMOM_HTTP_SERVER_HPP_INCLUDED
#define CIMOM_HTTP_SERVER_HPP_INCLUDED
#include "http/ListeningSocket.hpp"
#include "http/Session.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstddef>
#include <memory>
#include <string>

namespace cimom {

/** What the clients may take together and one by one. */
struct ServerLimits {
    /** Connections at a time; fewer when the process may not open enough descriptors. */
    std::size_t connections = 256;
    SessionLimits session;
};

/** Accepts connections on a Unix-domain socket and serves each in a session of its own, all in one thread. */
class Server {
public:
    /**
     * Listens from now on; connections are accepted while the io_context runs. One beyond the limit is told
     * so by status 503 and closed.
     *
     * @param path and
     * @param mode of the socket, see ListeningSocket, whose exceptions pass
     * @param handler must outlive the server and the io_context
     */
    Server(boost::asio::io_context& io, const std::string& path, mode_t mode, const BinaryHandler& handler,
           const ServerLimits& limits = {});

private:
    void accept();
    void retryAccept();
    void serve(Session::Socket socket);

    ListeningSocket m_listening;
    boost::asio::local::stream_protocol::acceptor m_acceptor;
    boost::asio::steady_timer m_pause;
    ReplyFormat m_format;
    std::shared_ptr<const SessionContext> m_context; // shared by the sessions, whose number it tells
    long m_connectionLimit;
};

} // namespace cimom
#endif
