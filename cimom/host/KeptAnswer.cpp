#include "host/KeptAnswer.hpp"

#include "system/ChildAnswer.hpp"
#include "system/Log.hpp"

#include <boost/asio/post.hpp>
#include <stdexcept>
#include <utility>

namespace cimom {

KeptAnswer::KeptAnswer(boost::asio::io_context& io, AnswerTimes times)
    : m_io(io)
    , m_times(times) {}

std::shared_ptr<const std::string> KeptAnswer::get(const FileVersions& versions, const Question& question) {
    if (!m_waiting && !isKept(versions))
        ask(versions, question);
    if (m_waiting)
        throw AnswerPending(m_waiting);
    m_isHandedOut = true;
    return m_answer;
}

bool KeptAnswer::isKept(const FileVersions& versions) const {
    if (!m_hasAnswered || !m_isHandedOut)
        return m_hasAnswered;
    const std::chrono::milliseconds time = m_answer ? m_times.kept : m_times.failureKept;
    return versions == m_versions && std::chrono::steady_clock::now() - m_since < time;
}

void KeptAnswer::ask(const FileVersions& versions, const Question& question) {
    auto waiting = std::make_shared<Waiting>();
    m_versions = versions;
    try {
        askChild(m_io, question, m_times.answer,
                 [this](std::optional<std::string> answer) { take(std::move(answer)); });
        m_waiting = std::move(waiting);
    } catch (const std::runtime_error& e) { // of Boost or the standard library
        log(std::string("cannot ask a program of the host: ") + e.what());
        keep(nullptr);
    }
}

void KeptAnswer::keep(std::shared_ptr<const std::string> answer) {
    m_answer = std::move(answer);
    m_hasAnswered = true;
    m_isHandedOut = false;
    m_since = std::chrono::steady_clock::now();
}

void KeptAnswer::take(std::optional<std::string> answer) {
    keep(answer ? std::make_shared<const std::string>(std::move(*answer)) : nullptr);
    const std::shared_ptr<Waiting> waiting = std::exchange(m_waiting, nullptr);
    // One after the other, since each may throw.
    for (std::function<void()>& then : *waiting)
        boost::asio::post(m_io, std::move(then));
}

} // namespace cimom
