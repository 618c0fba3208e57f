#ifndef CIMOM_USERS_PASSWORD_CHECK_HPP_INCLUDED
#define CIMOM_USERS_PASSWORD_CHECK_HPP_INCLUDED
#include "users/Users.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>

namespace cimom {

/** The outcome of the check of a password. */
enum class Verdict {
    /** The password is right, and its user may write. */
    mayWrite,
    /** The password is right, and its user may only read. */
    mayRead,
    wrong,
    /** Unknown: too many checks at a time, a timeout, or no child process. */
    unchecked,
    /** Not reported: too many logins from this address have failed. */
    tooOften
};

/** Limits of PasswordCheck. */
struct PasswordCheckLimits {
    /** Checks that run at a time. */
    std::size_t running = 2;
    /** Checks that wait for a running one to end. A further check ends unchecked. */
    std::size_t waiting = 64;
    /** Time of one check. */
    std::chrono::milliseconds time = std::chrono::seconds(10);
};

/**
 * Checks passwords without blocking the thread of the io_context: each check runs in a child process, see
 * askChild().
 */
class PasswordCheck {
public:
    using Done = std::function<void(Verdict)>;

    /**
     * @param io must not run after this object is destroyed
     * @param users must outlive this object; may change meanwhile
     */
    PasswordCheck(boost::asio::io_context& io, const Users& users,
                  PasswordCheckLimits limits = PasswordCheckLimits());
    PasswordCheck(const PasswordCheck&) = delete;
    PasswordCheck& operator=(const PasswordCheck&) = delete;

    /**
     * Checks whether a user exists and has this password, see Users::matches(). The io_context calls `done`
     * once, never from within this call.
     */
    void check(const std::string& user, const std::string& password, Done done);

private:
    struct Request {
        std::string user;
        std::string password;
        Done done;
    };

    void start(Request& request);
    void startWaiting();

    boost::asio::io_context& m_io;
    const Users& m_users;
    const PasswordCheckLimits m_limits;
    std::size_t m_running = 0;
    std::deque<Request> m_waiting;
};

} // namespace cimom
#endif
