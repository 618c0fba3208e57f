#include "users/PasswordCheck.hpp"

#include "system/Log.hpp"
#include "users/CheckingChild.hpp"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <memory>
#include <stdexcept>
#include <utility>

namespace cimom {
namespace {

/** A check that runs. It lives as long as the io_context holds its handlers, and the child does with it. */
class Running : public std::enable_shared_from_this<Running> {
public:
    Running(boost::asio::io_context& io, const std::function<bool()>& question)
        : m_child(question)
        , m_answer(io)
        , m_timer(io) {
        m_answer.assign(m_child.answer());
        m_child.releaseAnswer();
    }

    /** The io_context calls `done` once. */
    void run(std::chrono::milliseconds limit, PasswordCheck::Done done) {
        m_timer.expires_after(limit);
        m_timer.async_wait([self = shared_from_this()](const boost::system::error_code& error) {
            if (!error)
                self->m_child.kill();
        });
        m_answer.async_read_some(boost::asio::buffer(m_byte),
                                 [self = shared_from_this(), done = std::move(done)](
                                     const boost::system::error_code&, std::size_t size) {
                                     self->m_timer.cancel();
                                     self->m_child.wait();
                                     done(self->verdict(size));
                                 });
    }

private:
    Verdict verdict(std::size_t answered) const {
        if (answered == 0)
            return Verdict::unchecked;
        return m_byte[0] == CheckingChild::yes ? Verdict::right : Verdict::wrong;
    }

    CheckingChild m_child;
    boost::asio::posix::stream_descriptor m_answer;
    boost::asio::steady_timer m_timer;
    std::array<char, 1> m_byte{};
};

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
    std::shared_ptr<Running> running;
    try {
        running = std::make_shared<Running>(
            m_io, [this, &request] { return m_users.matches(request.user, request.password); });
    } catch (const std::runtime_error& e) { // of Boost or the standard library
        log(std::string("checking a password: ") + e.what());
        boost::asio::post(m_io, [done = std::move(request.done)] { done(Verdict::unchecked); });
        return;
    }
    running->run(m_limits.time, [this, done = std::move(request.done)](Verdict verdict) {
        --m_running;
        startWaiting();
        done(verdict);
    });
    ++m_running; // unless there was no memory
}

void PasswordCheck::startWaiting() {
    while (m_running < m_limits.running && !m_waiting.empty()) {
        start(m_waiting.front());
        m_waiting.pop_front();
    }
}

} // namespace cimom
