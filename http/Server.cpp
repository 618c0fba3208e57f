#include "http/Server.hpp"

#include <algorithm>
#include <memory>
#include <sys/resource.h>
#include <utility>

namespace cimom {
namespace {

/** Descriptors for all but the connections: standard streams, sockets, the files of the host. */
const rlim_t reservedDescriptors = 32;

std::size_t connectionLimit(std::size_t wanted) {
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    const rlim_t possible = std::max(descriptors.rlim_cur, reservedDescriptors + 1) - reservedDescriptors;
    return static_cast<std::size_t>(std::min<rlim_t>(wanted, possible));
}

} // namespace

Server::Server(boost::asio::io_context& io, const SessionSettings& settings, Counters& counters,
               Sessions& sessions)
    : m_io(io)
    , m_settings(settings)
    , m_counters(counters)
    , m_sessions(sessions)
    , m_connectionLimit(connectionLimit(settings.limits.connections)) {}

void Server::listen(int socket, int family) {
    m_listeners.emplace_back(m_io, socket, family,
                             [this](Session::Socket connection) { serve(std::move(connection)); });
}

/** Whether a session that has just begun is one of those that are served. */
bool Server::hasPlaceFor(const Session& session) const {
    const bool isFree = m_sessions.count() <= m_connectionLimit;
    if (!session.isOnNetwork())
        return isFree;
    // Whoever can reach a port must not shut out the agents of this host.
    const std::size_t keptForLocal = (m_connectionLimit + 3) / 4;
    return isFree && m_sessions.countOnNetwork() + keptForLocal <= m_connectionLimit;
}

void Server::serve(Session::Socket socket) {
    const auto session = std::make_shared<Session>(std::move(socket), m_settings, m_counters, m_sessions);
    if (hasPlaceFor(*session))
        session->start();
    else
        session->refuse({503, "Service unavailable", "connection queue full"});
}

void Server::stop() {
    for (Listener& listener : m_listeners)
        listener.stop();
    m_sessions.finish();
}

} // namespace cimom
