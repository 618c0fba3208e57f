#include "http/Server.hpp"

#include <algorithm>
#include <sys/resource.h>
#include <utility>
#include <vector>

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

Server::Server(boost::asio::io_context& io, SessionContext context)
    : m_io(io)
    , m_context(std::make_shared<SessionContext>(std::move(context)))
    , m_connectionLimit(connectionLimit(m_context->limits.connections)) {}

void Server::listen(int socket, int family) {
    m_listeners.emplace_back(m_io, socket, family,
                             [this](Session::Socket connection) { serve(std::move(connection)); });
}

/** Whether a session that has just begun is one of those that are served. */
bool Server::hasPlaceFor(const Session& session) const {
    const std::set<Session*>& all = m_context->sessions;
    if (!session.isOnNetwork())
        return all.size() <= m_connectionLimit;
    // Whoever can reach a port must not shut out the agents of this host.
    const std::size_t keptForLocal = (m_connectionLimit + 3) / 4;
    const auto onNetwork =
        std::count_if(all.begin(), all.end(), [](const Session* each) { return each->isOnNetwork(); });
    return all.size() <= m_connectionLimit &&
           static_cast<std::size_t>(onNetwork) + keptForLocal <= m_connectionLimit;
}

void Server::serve(Session::Socket socket) {
    const auto session = std::make_shared<Session>(std::move(socket), m_context);
    if (hasPlaceFor(*session))
        session->start();
    else
        session->refuse({503, "Service unavailable", "connection queue full"});
}

void Server::forgetLogins() {
    ++m_context->usersVersion;
}

void Server::stop() {
    for (Listener& listener : m_listeners)
        listener.stop();
    // A copy, since some of them end at once.
    const std::vector<Session*> open(m_context->sessions.begin(), m_context->sessions.end());
    for (Session* const session : open)
        session->finish();
}

} // namespace cimom
