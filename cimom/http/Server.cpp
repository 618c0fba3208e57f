#include "http/Server.hpp"

#include "Log.hpp"

#include <algorithm>
#include <sys/resource.h>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
using boost::system::error_code;

namespace {

/** Descriptors for all but the connections: standard streams, sockets, the files of the host. */
const rlim_t reservedDescriptors = 32;

long connectionLimit(std::size_t wanted) {
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    const rlim_t possible = std::max(descriptors.rlim_cur, reservedDescriptors + 1) - reservedDescriptors;
    return static_cast<long>(std::min<rlim_t>(wanted, possible));
}

} // namespace

Server::Server(asio::io_context& io, const std::string& path, mode_t mode, const BinaryHandler& handler,
               const ServerLimits& limits)
    : m_listening(path, mode)
    , m_acceptor(io, asio::local::stream_protocol(), m_listening.duplicate())
    , m_pause(io)
    , m_context(std::make_shared<const SessionContext>(SessionContext{handler, m_format, limits.session}))
    , m_connectionLimit(connectionLimit(limits.connections)) {
    accept();
}

void Server::accept() {
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
        serve(std::move(socket));
    });
}

void Server::serve(Session::Socket socket) {
    const long connections = m_context.use_count() - 1;
    const auto session = std::make_shared<Session>(std::move(socket), m_context);
    if (connections < m_connectionLimit)
        session->start();
    else
        session->refuse({503, "Service unavailable", "connection queue full"});
}

void Server::retryAccept() {
    // Out of descriptors or memory, most likely: trying again at once would do nothing else any more.
    m_pause.expires_after(std::chrono::seconds(1));
    m_pause.async_wait([this](const error_code& error) {
        if (!error)
            accept();
    });
}

} // namespace cimom
