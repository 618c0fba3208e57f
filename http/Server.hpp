#ifndef HTTP_SERVER_HPP_INCLUDED
#define HTTP_SERVER_HPP_INCLUDED
#include "http/NetworkAddress.hpp"
#include "http/Session.hpp"
#include "http/Sessions.hpp"

#include <boost/asio/io_context.hpp>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace http {

/**
 * An HTTP/1.0 and HTTP/1.1 server: accepts connections of any number of sockets and serves each in a Session,
 * all in the thread that runs the io_context. What it answers comes from Settings::makeResponder.
 */
class Server {
public:
    /** What the settings refer to must outlive the io_context, as must the io_context the server. */
    Server(boost::asio::io_context& io, Settings settings);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /**
     * Accepts connections while the io_context runs. A connection beyond the limit gets status 503.
     *
     * @param socket listens; the server owns it from now on
     * @param family of the socket: AF_UNIX, AF_INET or AF_INET6
     */
    void listen(int socket, int family);
    /** Listens on an address. Returns where: the kernel replaces port 0. Throws like http::listenOn(). */
    NetworkAddress listenOn(const NetworkAddress& address);
    /** The same for connections with TLS; requires setTls(). A connection beyond the limit is closed. */
    NetworkAddress listenWithTlsOn(const NetworkAddress& address);
    /** Certificates and keys of the connections that begin from now on; see readTlsFiles(). */
    void setTls(std::shared_ptr<TlsContext> tls) { m_tls = std::move(tls); }
    /**
     * Accepts no more connections, and closes each open connection after the reply to its current request.
     * After that the io_context has no work of the server.
     */
    void stop();

    const Counters& counters() const { return m_sessions->counters; }
    std::size_t openConnections() const { return m_sessions->count(); }

private:
    class Listener;

    void listen(int socket, int family, bool hasTls);
    bool hasRoomFor(const Session& session) const;
    void serve(Session::Socket socket, TlsContext* tls);

    boost::asio::io_context& m_io;
    std::vector<std::unique_ptr<Listener>> m_listeners;
    std::shared_ptr<Sessions> m_sessions;
    std::size_t m_connectionLimit;
    std::shared_ptr<TlsContext> m_tls;
};

} // namespace http
#endif
