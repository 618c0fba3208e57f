#include "http/Server.hpp"

#include <algorithm>
#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <utility>

namespace http {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

/** Descriptors that are not connections: standard streams, sockets, files of the responders. */
const rlim_t reservedDescriptors = 32;

std::size_t connectionLimit(std::size_t wanted) {
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    const rlim_t possible = std::max(descriptors.rlim_cur, reservedDescriptors + 1) - reservedDescriptors;
    return static_cast<std::size_t>(std::min<rlim_t>(wanted, possible));
}

/** Sets what accept(2) does not set. */
void prepare(int socket) {
    // Children of this process must not keep the connection open.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    // Sends the pieces of a reply at once; fails on a Unix-domain socket, which has no delay.
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    // Without it the kernel buffers megabytes for a client that does not read.
    const int bytes = 2 * ReplyStream::pieceSize;
    ::setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

} // namespace

/** Accepts the connections of one socket. */
class Server::Listener {
public:
    Listener(Server& server, int socket, int family, bool hasTls)
        : m_server(server)
        , m_hasTls(hasTls)
        , m_acceptor(server.m_io, asio::generic::stream_protocol(family, 0), socket)
        , m_pause(server.m_io) {
        m_acceptor.non_blocking(true);
        accept();
    }

    void stop() {
        error_code ignored;
        m_acceptor.close(ignored);
        m_pause.cancel();
    }

private:
    void accept() {
        m_acceptor.async_accept([this](const error_code& error, Session::Socket socket) {
            if (error == asio::error::operation_aborted)
                return;
            if (error) {
                m_server.m_sessions->settings.log("cannot accept a connection: " + error.message());
                acceptLater();
                return;
            }
            accept(); // before serve(): an exception then ends this connection only
            serve(std::move(socket));
            acceptPending();
        });
    }

    /** Accepts pending connections as well: the io_context may take long to come back if it serves many. */
    void acceptPending() {
        for (int i = 0; i < 64; ++i) {
            Session::Socket socket(m_acceptor.get_executor());
            error_code error;
            m_acceptor.accept(socket, error);
            if (error) // none is pending; async_accept() reports any other error
                return;
            serve(std::move(socket));
        }
    }

    void serve(Session::Socket socket) {
        prepare(socket.native_handle());
        m_server.serve(std::move(socket), m_hasTls ? m_server.m_tls.get() : nullptr);
    }

    /** Most likely descriptors or memory have run out: an immediate retry would fail again, in a busy loop.
     */
    void acceptLater() {
        m_pause.expires_after(std::chrono::seconds(1));
        m_pause.async_wait([this](const error_code& error) {
            if (!error)
                accept();
        });
    }

    Server& m_server;
    const bool m_hasTls;
    asio::basic_socket_acceptor<asio::generic::stream_protocol, Stream::executor_type> m_acceptor;
    asio::steady_timer m_pause;
};

Server::Server(asio::io_context& io, Settings settings)
    : m_io(io)
    , m_sessions(std::make_shared<Sessions>(std::move(settings)))
    , m_connectionLimit(connectionLimit(m_sessions->settings.limits.connections)) {}

Server::~Server() = default;

void Server::listen(int socket, int family, bool hasTls) {
    m_listeners.push_back(std::make_unique<Listener>(*this, socket, family, hasTls));
}

void Server::listen(int socket, int family) {
    listen(socket, family, false);
}

NetworkAddress Server::listenOn(const NetworkAddress& address) {
    const NetworkSocket network = http::listenOn(address);
    listen(network.descriptor, address.address.ss_family, false);
    return network.at;
}

NetworkAddress Server::listenWithTlsOn(const NetworkAddress& address) {
    const NetworkSocket network = http::listenOn(address);
    listen(network.descriptor, address.address.ss_family, true);
    return network.at;
}

/** Whether there is room for a session that has just begun. */
bool Server::hasRoomFor(const Session& session) const {
    const bool isBelowLimit = m_sessions->count() <= m_connectionLimit;
    if (!session.isOnNetwork())
        return isBelowLimit;
    // Clients on the network must not shut out the clients of this host.
    const std::size_t reservedForLocal = (m_connectionLimit + 3) / 4;
    return isBelowLimit && m_sessions->countOnNetwork() + reservedForLocal <= m_connectionLimit;
}

void Server::serve(Session::Socket socket, TlsContext* tls) {
    const auto session = std::make_shared<Session>(std::move(socket), m_sessions, tls);
    if (hasRoomFor(*session))
        session->start();
    else
        session->refuse({503, "Service unavailable", "connection queue full"});
}

void Server::stop() {
    for (const std::unique_ptr<Listener>& listener : m_listeners)
        listener->stop();
    m_sessions->finish();
}

} // namespace http
