#include "users/PasswordCheck.hpp"

#include "service/ChildAnswer.hpp"
#include "service/Log.hpp"
#include "users/PasswordHash.hpp"

#include <boost/asio/post.hpp>
#include <optional>
#include <stdexcept>
#include <utility>

namespace cimom {
namespace {

// Answers of the child.
const char* const mayWrite = "write";
const char* const mayRead = "read";
const char* const isWrong = "wrong";

std::string checked(const Users& users, const std::string& user, const std::string& password) {
    if (!users.matches(user, password))
        return isWrong;
    return users.access(user) == Access::write ? mayWrite : mayRead;
}

Verdict verdictOf(const std::optional<std::string>& answer) {
    if (!answer)
        return Verdict::unchecked;
    if (*answer == mayWrite)
        return Verdict::mayWrite;
    return *answer == mayRead ? Verdict::mayRead : Verdict::wrong;
}

} // namespace

PasswordCheck::PasswordCheck(boost::asio::io_context& io, const Users& users, PasswordCheckLimits limits)
    : m_io(io)
    , m_users(users)
    , m_limits(limits) {}

void PasswordCheck::check(const std::string& user, const std::string& password, Done done) {
    Request request{user, password, std::move(done)};
    if (m_running < m_limits.running) {
        start(request);
    } else if (m_waiting.size() < m_limits.waiting) {
        m_waiting.push_back(std::move(request));
    } else {
        boost::asio::post(m_io, [done = std::move(request.done)] { done(Verdict::unchecked); });
    }
}

void PasswordCheck::start(Request& request) {
    try {
        service::askChild(
            m_io, [this, &request] { return checked(m_users, request.user, request.password); },
            m_limits.time,
            [this, done = request.done](const std::optional<std::string>& answer) {
                --m_running;
                startWaiting();
                done(verdictOf(answer));
            });
        ++m_running;
    } catch (const std::runtime_error& e) { // of Boost or the standard library
        service::log(std::string("cannot check a password: ") + e.what());
        boost::asio::post(m_io, [done = std::move(request.done)] { done(Verdict::unchecked); });
    }
}

void PasswordCheck::startWaiting() {
    while (m_running < m_limits.running && !m_waiting.empty()) {
        start(m_waiting.front());
        m_waiting.pop_front();
    }
}

} // namespace cimom
