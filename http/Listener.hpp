#ifndef HTTP_LISTENER_HPP_INCLUDED
#define HTTP_LISTENER_HPP_INCLUDED
#include "http/Session.hpp"

#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <functional>

namespace cimom {

/** Accepts the connections of a socket that listens, and hands each on. */
class Listener {
public:
    /**
     * @param socket which it takes over
     * @param family of the socket: AF_UNIX, AF_INET or AF_INET6
     */
    Listener(boost::asio::io_context& io, int socket, int family,
             std::function<void(Session::Socket)> onConnection);
    /** Accepts no more. */
    void stop();

private:
    using Acceptor = boost::asio::basic_socket_acceptor<boost::asio::generic::stream_protocol>;

    void accept();
    void takeOthers();
    void take(Session::Socket socket);
    void retryAccept();

    Acceptor m_acceptor;
    boost::asio::steady_timer m_pause;
    std::function<void(Session::Socket)> m_onConnection;
};

} // namespace cimom
#endif
