#include "http/Sessions.hpp"

#include "http/Session.hpp"

#include <algorithm>
#include <vector>

namespace cimom {

std::size_t Sessions::countOnNetwork() const {
    const auto count =
        std::count_if(m_all.begin(), m_all.end(), [](const Session* each) { return each->isOnNetwork(); });
    return static_cast<std::size_t>(count);
}

void Sessions::forgetLogins() {
    for (Session* const session : m_all)
        session->forgetLogin();
}

void Sessions::finish() {
    const std::vector<Session*> open(m_all.begin(), m_all.end()); // some of them end at once
    for (Session* const session : open)
        session->finish();
}

} // namespace cimom
