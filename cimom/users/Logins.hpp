#ifndef CIMOM_USERS_LOGINS_HPP_INCLUDED
#define CIMOM_USERS_LOGINS_HPP_INCLUDED
#include "users/PasswordCheck.hpp"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace cimom {

/**
 * Checks the logins of clients. After `limit` failed logins within `period` an address is blocked until the
 * first of them is older than that: passwords cannot be guessed fast.
 */
class Logins {
public:
    using Time = std::chrono::steady_clock::time_point;
    using Now = std::function<Time()>;

    static constexpr std::size_t limit = 10;
    static constexpr std::chrono::seconds period{60};

    /** @param passwords must outlive this object */
    explicit Logins(PasswordCheck& passwords, Now now = std::chrono::steady_clock::now)
        : m_passwords(passwords)
        , m_now(std::move(now)) {}
    Logins(const Logins&) = delete;
    Logins& operator=(const Logins&) = delete;

    /**
     * Checks a password. Calls `done` once: before this returns, with Verdict::tooOften, if the address is
     * blocked, else as PasswordCheck::check() does. While the address is blocked, the outcome of a check that
     * began before is Verdict::tooOften, too: a client that sends many passwords at a time learns no more.
     */
    void logIn(const std::string& address, const std::string& user, const std::string& password,
               PasswordCheck::Done done);

private:
    bool isBlocked(const std::string& address) const;
    void addFailure(const std::string& address);

    PasswordCheck& m_passwords;
    Now m_now;
    std::map<std::string, std::deque<Time>>
        m_failures; // by address: times of the last failures, at most `limit`
};

} // namespace cimom
#endif
