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
    // Else the kernel would keep megabytes for a client that does not read.
    const int bytes = 2 * ReplyStream::pieceSize;
    ::setsockopt(socket, SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes);
}

} // namespace

Listener::Listener(asio::io_context& io, int socket, int family,
                   std::function<void(Session::Socket)> onConnection)
    : m_acceptor(io, asio::generic::stream_protocol(family, 0), socket)
    , m_pause(io)
    , m_onConnection(std::move(onConnection)) {
    m_acceptor.non_blocking(true);
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
        take(std::move(socket));
        takeOthers();
    });
}

/** Takes some of those that wait as well: the next turn may be long in coming when many are being served. */
void Listener::takeOthers() {
    for (int i = 0; i < 64; ++i) {
        Session::Socket socket(m_acceptor.get_executor());
        error_code error;
        m_acceptor.accept(socket, error);
        if (error)
            return; // there are no more, or the next turn will tell
        take(std::move(socket));
    }
}

void Listener::take(Session::Socket socket) {
    prepare(socket.native_handle());
    m_onConnection(std::move(socket));
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
