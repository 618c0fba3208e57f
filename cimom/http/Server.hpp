#ifndef CIMOM_HTTP_SERVER_HPP_INCLUDED
#define CIMOM_HTTP_SERVER_HPP_INCLUDED
#include "http/ListeningSocket.hpp"
#include "http/Session.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <string>

namespace cimom {

/** Accepts connections on a Unix-domain socket and serves each in a session of its own, all in one thread. */
class Server {
public:
    /**
     * Listens from now on; connections are accepted while the io_context runs.
     *
     * @param path of the socket, see ListeningSocket, whose exceptions pass
     * @param handler must outlive the server and the io_context
     */
    Server(boost::asio::io_context& io, const std::string& path, const BinaryHandler& handler);

private:
    void accept();
    void retryAccept();

    ListeningSocket m_listening;
    boost::asio::local::stream_protocol::acceptor m_acceptor;
    boost::asio::steady_timer m_pause;
    ReplyFormat m_format;
    SessionContext m_context;
};

} // namespace cimom
#endif
