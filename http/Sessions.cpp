#include "http/Sessions.hpp"

#include "http/Session.hpp"

#include <algorithm>
#include <vector>

namespace http {

std::size_t Sessions::countOnNetwork() const {
    const auto isOnNetwork = [](const Session* session) { return session->isOnNetwork(); };
    return static_cast<std::size_t>(std::count_if(m_open.begin(), m_open.end(), isOnNetwork));
}

void Sessions::finish() {
    const std::vector<Session*> open(m_open.begin(),
                                     m_open.end()); // a session may end at once, and leave m_open
    for (Session* const session : open)
        session->finish();
}

} // namespace http
