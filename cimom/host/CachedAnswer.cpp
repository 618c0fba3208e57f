#include "host/CachedAnswer.hpp"

#include "service/ChildAnswer.hpp"
#include "service/Log.hpp"

#include <boost/asio/post.hpp>
#include <stdexcept>
#include <utility>

namespace cimom {

CachedAnswer::CachedAnswer(boost::asio::io_context& io, AnswerTimes times)
    : m_io(io)
    , m_times(times) {}

std::shared_ptr<const std::string> CachedAnswer::get(const FileVersions& versions,
                                                     const service::Question& question) {
    if (!m_waiting && !isValid(versions))
        ask(versions, question);
    if (m_waiting)
        throw AnswerPending(m_waiting);
    m_isReturned = true;
    return m_answer;
}

bool CachedAnswer::isValid(const FileVersions& versions) const {
    if (!m_hasAnswered || !m_isReturned)
        return m_hasAnswered;
    const std::chrono::milliseconds lifetime = m_answer ? m_times.lifetime : m_times.failureLifetime;
    return versions == m_versions && std::chrono::steady_clock::now() - m_since < lifetime;
}

void CachedAnswer::ask(const FileVersions& versions, const service::Question& question) {
    auto waiting = std::make_shared<Waiting>();
    m_versions = versions;
    try {
        service::askChild(m_io, question, m_times.timeout,
                          [this](std::optional<std::string> answer) { take(std::move(answer)); });
        m_waiting = std::move(waiting);
    } catch (const std::runtime_error& e) { // from Boost or the standard library
        service::log(std::string("cannot run a program of the host: ") + e.what());
        store(nullptr);
    }
}

void CachedAnswer::store(std::shared_ptr<const std::string> answer) {
    m_answer = std::move(answer);
    m_hasAnswered = true;
    m_isReturned = false;
    m_since = std::chrono::steady_clock::now();
}

void CachedAnswer::take(std::optional<std::string> answer) {
    store(answer ? std::make_shared<const std::string>(std::move(*answer)) : nullptr);
    const std::shared_ptr<Waiting> waiting = std::exchange(m_waiting, nullptr);
    // Posted, because each may throw.
    for (std::function<void()>& then : *waiting)
        boost::asio::post(m_io, std::move(then));
}

} // namespace cimom
