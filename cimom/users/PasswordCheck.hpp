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

/** What came of the check of a password. */
enum class Verdict {
    /** It is right, and its user may write. */
    mayWrite,
    /** It is right, and its user may only read. */
    mayRead,
    wrong,
    /** Nobody knows: too much was to be checked at once, it took too long, or the system had no process. */
    unchecked,
    /** It was not checked, or what came of it is not told: too many logins from there have failed. */
    tooOften
};

/** How much PasswordCheck does. */
struct PasswordCheckLimits {
    /** Checks that run at a time. */
    std::size_t running = 2;
    /** Checks that wait for one of these to end; a further one ends unchecked. */
    std::size_t waiting = 64;
    /** Of one check. */
    std::chrono::milliseconds time = std::chrono::seconds(10);
};

/**
 * Checks passwords without holding up the thread that serves: each check runs in a child process, of which
 * nothing is left when its end has been told. The children end with the io_context, with this process, or
 * when their time is up.
 */
class PasswordCheck {
public:
    using Done = std::function<void(Verdict)>;

    /**
     * @param io must not run any more when this object is gone
     * @param users must outlive this object; may be changed meanwhile
     */
    PasswordCheck(boost::asio::io_context& io, const Users& users,
                  PasswordCheckLimits limits = PasswordCheckLimits());
    PasswordCheck(const PasswordCheck&) = delete;
    PasswordCheck& operator=(const PasswordCheck&) = delete;

    /**
     * Checks whether a user is there and has this password, see Users::matches(). The io_context calls
     * `done` once, never from within this call; not at all when it does not run that long.
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
