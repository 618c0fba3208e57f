#include "http/Listener.hpp"

#include "system/Log.hpp"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

/** What a connection needs that accept(2) does not give it. */
void prepare(int socket) {
    // Or the children of this process would keep the connection open.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    // The pieces of a reply go out at once; fails on a Unix-domain socket, which knows no delay.
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}

} // namespace

Listener::Listener(asio::io_context& io, int socket, int family,
                   std::function<void(Session::Socket)> onConnection)
    : m_acceptor(io, asio::generic::stream_protocol(family, 0), socket)
    , m_pause(io)
    , m_onConnection(std::move(onConnection)) {
    accept();
}

void Listener::stop() {
    error_code ignored;
    m_acceptor.close(ignored);
    m_pause.cancel();
}

void Listener::accept() {
    m_acceptor.async_accept([this](const error_code& error, Session::Socket socket) {
        if (error == asio::error::operation_aborted)
            return;
        if (error) {
            log("accepting a connection: " + error.message());
            retryAccept();
            return;
        }
        // First, so that an exception ends this connection only.
        accept();
        prepare(socket.native_handle());
        m_onConnection(std::move(socket));
    });
}

void Listener::retryAccept() {
    // Out of descriptors or memory, most likely: trying again at once would do nothing else any more.
    m_pause.expires_after(std::chrono::seconds(1));
    m_pause.async_wait([this](const error_code& error) {
        if (!error)
            accept();
    });
}

} // namespace cimom
